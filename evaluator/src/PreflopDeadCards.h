#pragma once

// Preflop with dead cards: range1 against range2 on every board of five cards that avoids the
// dead cards, counted per board value multiset rather than board by board.
//
// Without flushes, a hand's strength on a board depends only on its value class and on the
// board's values V, so the order of the 91 classes is that of V (ValueClasses.h). What the
// boards of V still differ in is which hands they block. Summed over every way of giving the
// board's cards their suits, a pair of hands counts once for each such way that avoids its four
// cards and the dead cards: per value x of V, C(free suits of x - hand cards of value x,
// cards of value x on the board). That number depends on the two hands' classes only, so the
// boards of V are summed in one walk over the classes, with the card-removal arithmetic of the
// board walk (Enumeration.h) and weights per class pair. That is the non-flush part.
//
// Flushes change the outcome only on boards with three or more cards of one suit s, and only
// for pairs where a hand makes the flush. Those boards are taken in families: the values U of
// the board's s-cards and the values W of its other cards; within a family a hand's outcome
// depends on its class and on which of its cards are of suit s, and the ways to give W its
// suits are again a product over values. The flush correction of a family is what the flushes
// win and tie minus what the non-flush part counted for the pairs touching a flush hand.
//
// Every count is exact. The cost hardly depends on the number of dead cards (6,175 value
// multisets and about 150,000 families, each a walk over the classes holding hands of either
// range) and grows with the classes the ranges hold; a suit that a suit symmetry of the ranges
// and the dead cards maps to an earlier suit takes that suit's correction.

#include "Enumeration.h"
#include "Problem.h"

#include <cstdint>

namespace qve {

struct PreflopCounts {
    std::int64_t wins = 0; // boards won by range1, one unit per matchup per board
    std::int64_t ties = 0;
};

// The counts of getEquity for a problem without board cards (dead cards allowed).
PreflopCounts preflopByValueSets(const Problem& p, const volatile bool& stop);

// The two parts, apart for the tests: every board as if no hand could make a flush, and what
// flushes change.
PreflopCounts preflopNonFlushPart(const Problem& p, const volatile bool& stop);
PreflopCounts preflopFlushCorrection(const Problem& p, const volatile bool& stop);

} // namespace qve
