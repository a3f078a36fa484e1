#pragma once

// Exact Texas Hold'em ranking of 5, 6 or 7 cards given as a card mask: the best five-card
// hand, compared by the full rules (kickers, the wheel A-2-3-4-5 as the lowest straight).

#include "Cards.h"

#include <cstdint>

namespace qve {

// Hand categories, in ascending strength.
enum class HandCategory : std::uint32_t {
    HighCard = 0,
    Pair = 1,
    TwoPair = 2,
    ThreeOfAKind = 3,
    Straight = 4,
    Flush = 5,
    FullHouse = 6,
    FourOfAKind = 7,
    StraightFlush = 8,
};

// A rank that orders hands: greater is stronger, equal is a split. The category sits in
// bits 28-31 (see categoryOf); below it up to five card values (value bit 0 = deuce ..
// 12 = ace) of 4 bits each, from bits 16-19 down, in the order that decides within the
// category: the straight's top card (3 for the wheel), the quads then the kicker, the
// trips then the pair, the pairs then the kicker, and so on. Every 5-card hand of the same
// strength has the same rank, so ranks of different hands compare directly.
using HandRank = std::uint32_t;

// Rank of the best five of the 5, 6 or 7 cards of `cards`; 0 for fewer or more cards. Bits
// 52-63 are not cards and are ignored. About as fast as the enumeration's inline seven-card
// path: no card count up front (see RankTables.h).
HandRank rankCards(CardMask cards);

inline HandCategory categoryOf(HandRank rank) {
    return static_cast<HandCategory>(rank >> 28);
}

} // namespace qve
