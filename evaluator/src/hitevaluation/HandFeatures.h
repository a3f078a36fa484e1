#pragma once

// The feature word of a two-card hand on a board: the 64 bits that hand strength keys test.
// Every hit evaluation and the showdown evaluation by strength decide features here and
// nowhere else. docs/hand-strength.md states what each bit means; this file is its code.

#include "Cards.h"

#include <cstdint>

namespace qve {

using FeatureWord = std::uint64_t;

// Bit positions of the feature word. Bits 25, 40-45, 48, 50 and 57-63 are never set; bit 50
// marks the custom sum row of a schema and is no feature of a hand.
namespace feature {
constexpr FeatureWord StraightFlush = 1ULL << 0;
constexpr FeatureWord FourOfAKind = 1ULL << 1;
constexpr FeatureWord FullHouse = 1ULL << 2;
constexpr FeatureWord Flush = 1ULL << 3;
constexpr FeatureWord Straight = 1ULL << 4;
constexpr FeatureWord ThreeOfAKind = 1ULL << 5;
constexpr FeatureWord TwoPair = 1ULL << 6;
constexpr FeatureWord Pair = 1ULL << 7;
constexpr FeatureWord HighCard = 1ULL << 8;
constexpr FeatureWord FirstRank = 1ULL << 9; // next four bits: 2nd to 5th rank
constexpr FeatureWord MadeHandOnBoard = 1ULL << 14;
constexpr FeatureWord Overpair = 1ULL << 15;
constexpr FeatureWord TwoHoleCards = 1ULL << 16;
constexpr FeatureWord OneHoleCard = 1ULL << 17;
constexpr FeatureWord TopKicker = 1ULL << 18; // next two bits: 2nd and 3rd kicker
constexpr FeatureWord FlushDrawOneHoleCard = 1ULL << 21;
constexpr FeatureWord TwoPairWithPocketPair = 1ULL << 22;
constexpr FeatureWord PocketPairMiddle = 1ULL << 23;
constexpr FeatureWord PocketPairUnder = 1ULL << 24;
constexpr FeatureWord FlushDraw = 1ULL << 26;
constexpr FeatureWord Oesd = 1ULL << 27;
constexpr FeatureWord Gutshot = 1ULL << 28;
constexpr FeatureWord BackdoorFlushDraw = 1ULL << 29;
constexpr FeatureWord BackdoorStraightDraw = 1ULL << 30;
constexpr FeatureWord NutFlushDraw = 1ULL << 31; // next four bits: 2nd to 5th nut draw
constexpr FeatureWord BackdoorTwoOesdTwoGutshots = 1ULL << 36;
constexpr FeatureWord BackdoorOneOesdTwoGutshots = 1ULL << 37;
constexpr FeatureWord BackdoorFourGutshots = 1ULL << 38;
constexpr FeatureWord BackdoorTwoGutshots = 1ULL << 39;
constexpr FeatureWord TwoOvercards = 1ULL << 46;
constexpr FeatureWord OneOvercard = 1ULL << 47;
constexpr FeatureWord AceOvercard = 1ULL << 49;
constexpr FeatureWord PocketPairBetweenTopAndSecond = 1ULL << 51;
constexpr FeatureWord PocketPairBetweenSecondAndThird = 1ULL << 52;
constexpr FeatureWord PocketPairBelowThird = 1ULL << 53;
constexpr FeatureWord FlushDrawTwoHoleCards = 1ULL << 54;
constexpr FeatureWord StraightDrawOneHoleCard = 1ULL << 55;
constexpr FeatureWord StraightDrawTwoHoleCards = 1ULL << 56;

constexpr FeatureWord HandValues = 0x1FF;
} // namespace feature

// The features of `hand` (two cards) on `board` (3, 4 or 5 cards, disjoint from the hand).
// Throws std::invalid_argument when the masks are not of that form. Pure and re-entrant.
FeatureWord handFeatures(CardMask hand, CardMask board);

// Whether a hand with `features` satisfies the key words: all of `positive`, none of
// `exclusive`.
inline bool meetsKey(FeatureWord features, std::uint64_t positive, std::uint64_t exclusive) {
    return (features & positive) == positive && (features & exclusive) == 0;
}

} // namespace qve
