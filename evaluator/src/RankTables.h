#pragma once

// The lookup tables behind rankCards and the inline fast paths the enumeration uses.
//
// Non-flush hands: a hand is a multiset of card values. Its values 2-8 are written as a
// base-5 number (one digit per value: how many cards of it) and its values 9-A as a
// second one; both sums are built by adding a per-lane table entry (laneKey), since the
// digit of a value is the number of lanes holding it. The high number selects a block
// (highBase, per number of cards), the low number an offset inside it (lowIndex); the
// block entry holds the rank. 73,775 ranks serve all hands of 5, 6 and 7 cards.
//
// Flushes: with at most 7 cards only one lane can hold five, and then neither a full house
// nor four of a kind is possible, so the rank is that of the lane alone (flush table).
//
// rankCards (any 5 to 7 cards) avoids needing the card count up front: the low multisets of
// at most 7 cards are numbered by size and then by lowIndex (lowPosition), and every high
// number owns one block of valueRank covering every low multiset it can combine with into
// at most 7 cards (highBlock: start and length). Entries of fewer than 5 cards hold 0; more
// than 7 cards fall outside the block. So a hand of any size costs the same four lane loads
// and three table loads as the seven-card path.
//
// Incremental keys (cardKey): the same two base-5 numbers plus a 4-bit card counter per
// suit, started at 3 so that bit 3 of a counter is set exactly when the suit has 5 or more
// cards. A board's key plus the keys of two hole cards ranks the 7 cards without touching
// the masks unless a flush is possible.

#include "HandRank.h"
#include "Platform.h"

#include <cstdint>

namespace qve {

// The dense form of a HandRank: the 7,462 distinct five-card ranks numbered from 0 (7-5-4-3-2)
// to 7,461 (the royal flush), in the same order. The hot loops compare and sort these.
using Strength = std::uint16_t;
constexpr int strengthCount = 7462;

struct RankTables {
    static constexpr int lowNumbers = 78125;  // 5^7
    static constexpr int highNumbers = 15625; // 5^6
    static constexpr int nonFlushEntries = 73775;
    static constexpr int valueRankEntries = 76155;
    static constexpr std::uint32_t flushFlag = 0x80000000u;
    static constexpr std::uint64_t keyBias = 0x3333ull << 32;
    static constexpr std::uint64_t keyFlushBits = 0x8888ull << 32;
    static constexpr std::uint16_t noLowPosition = 0xFFFF;
    static constexpr int blockShift = 17; // valueRank has fewer than 2^17 entries

    std::uint32_t laneKey[8192];            // low number | high number << 17 | flushFlag (>= 5)
    Strength flush[8192];                   // strength of a lane of >= 5 cards, 0 otherwise
    std::uint16_t lowIndex[lowNumbers];     // offset of a low multiset among those of its size
    std::uint32_t highBase[3][highNumbers]; // [cards - 5][high number]: start of the block
    Strength nonFlush[nonFlushEntries];
    HandRank rankOfStrength[strengthCount]; // ascending
    // Ranks rather than strengths, for rankCards: one dependent load less.
    HandRank flushRank[8192];
    std::uint16_t lowPosition[lowNumbers]; // by size, then lowIndex; noLowPosition beyond 7
    std::uint32_t highBlock[highNumbers];  // start in valueRank | block length << blockShift
    HandRank valueRank[valueRankEntries];  // 0 for fewer than 5 cards
    std::uint64_t cardKey[52];             // incremental key of one card, by bit of the card mask
};

// The tables are constant data of the library, written at build time by
// tools/TableGenerator.cpp from buildRankTables: a process that ranks hands builds nothing
// and touches only the pages it reads.
extern const RankTables generatedRankTables;

QVE_ALWAYS_INLINE const RankTables& rankTables() {
    return generatedRankTables;
}

// Fills `tables` from the ranking rules alone (about 1 MB, some tens of milliseconds): what
// the generator writes out, and what the tests compare the constant data with. Throws
// std::logic_error when an encoding outgrows its bits.
void buildRankTables(RankTables& tables);

// Strength of exactly 7 cards.
QVE_ALWAYS_INLINE Strength strengthSeven(const RankTables& t, CardMask cards) {
    const unsigned a = unsigned(cards) & 0x1FFF;
    const unsigned b = unsigned(cards >> 13) & 0x1FFF;
    const unsigned c = unsigned(cards >> 26) & 0x1FFF;
    const unsigned d = unsigned(cards >> 39) & 0x1FFF;
    const std::uint32_t key = t.laneKey[a] + t.laneKey[b] + t.laneKey[c] + t.laneKey[d];
    if (QVE_UNLIKELY(key & RankTables::flushFlag))
        return t.flush[a] | t.flush[b] | t.flush[c] | t.flush[d];
    return t.nonFlush[t.highBase[2][(key >> 17) & 0x3FFF] + t.lowIndex[key & 0x1FFFF]];
}

// Sum of keyBias and the cardKey of each card of `cards`.
QVE_ALWAYS_INLINE std::uint64_t keyOfCards(const RankTables& t, CardMask cards) {
    std::uint64_t key = RankTables::keyBias;
    for (; cards; cards &= cards - 1)
        key += t.cardKey[lowestBit64(cards)];
    return key;
}

// Strength of 7 cards from their incremental key and their mask.
QVE_ALWAYS_INLINE Strength strengthSevenOfKey(const RankTables& t, std::uint64_t key,
                                              CardMask cards) {
    const std::uint64_t flushBits = key & RankTables::keyFlushBits;
    if (QVE_UNLIKELY(flushBits != 0)) {
        const int lane = (lowestBit64(flushBits) - 35) >> 2;
        return t.flush[unsigned(cards >> (13 * lane)) & 0x1FFF];
    }
    const unsigned low = unsigned(key) & 0x1FFFF;
    const unsigned high = unsigned(key >> 17) & 0x3FFF;
    return t.nonFlush[t.highBase[2][high] + t.lowIndex[low]];
}

} // namespace qve
