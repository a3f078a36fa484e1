#pragma once

// Named groups of feature bits of a HandStrengthKey word. The bit layout is shared with the
// evaluator library and persisted in the settings, so these values never change.

// The nine hand values, bits 0 (straight flush) to 8 (high card).
constexpr unsigned long long handValueMask = 0x1FFULL;
// Bits 9 to 13, 16, 17 and 22: a made hand that uses hole cards. As `exclusive` word of the
// draw rows it keeps such hands out.
constexpr unsigned long long madeHandWithHoleCardsMask = 0x433E00ULL;
// Bits 31 to 35: nut rank of a flush draw.
constexpr unsigned long long nutRankMask = 0xF80000000ULL;
// Bits 18 to 20: top, second and third kicker.
constexpr unsigned long long kickerMask = 0x1C0000ULL;
// Bits 9 to 11: first, second and third rank.
constexpr unsigned long long topThreeRanksMask = 0xE00ULL;
// Bits 9 to 14: every named kind of flush (five ranks and the board flush).
constexpr unsigned long long otherFlushMask = 0x7E00ULL;
// Bits 9 to 13: the five ranked flushes.
constexpr unsigned long long weakerFlushMask = 0x3E00ULL;
// Bits 9, 10, 11, 14, 15, 51, 52, 53: every named kind of pair; a pair with none of them is
// "Other non-PP".
constexpr unsigned long long otherPairMask = 0x003800000000CE00ULL;
// Bits 46 and 47: two overcards, one overcard.
constexpr unsigned long long overcardMask = 0xC00000000000ULL;
// Bits 0 to 8, 26 to 30, 46, 47: what may always start a key.
constexpr unsigned long long baseSelectableMask = 0x0000C0007C0001FFULL;
// Bit 50: marker of the custom sum row; no hand ever has it.
constexpr unsigned long long customSumMarker = 0x0004000000000000ULL;
