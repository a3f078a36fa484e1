#pragma once

// Two-card hand numbering and the permutations of the four suits.
//
// A hand index numbers the 1,326 two-card hands: for cards of mask bits a < b the index is
// b * (b - 1) / 2 + a. A suit permutation maps lane i to lane perm[i]; permuting a card mask
// moves each 13-bit lane as a whole, so card values stay put.

#include "Cards.h"
#include "Platform.h"

#include <array>
#include <cstdint>
#include <vector>

namespace qve {

constexpr int handCount = 1326;

QVE_ALWAYS_INLINE int handIndexOfCards(int low, int high) {
    return high * (high - 1) / 2 + low;
}

QVE_ALWAYS_INLINE int handIndex(CardMask hand) {
    const int low = lowestBit64(hand);
    const int high = highestBit64(hand);
    return handIndexOfCards(low, high);
}

// The two-bit mask of a hand index.
CardMask handOfIndex(int index);

using SuitPermutation = std::array<std::uint8_t, 4>;

// All 24 permutations; the first is the identity.
const std::array<SuitPermutation, 24>& allSuitPermutations();

QVE_ALWAYS_INLINE CardMask permuteCards(CardMask cards, const SuitPermutation& perm) {
    CardMask result = 0;
    for (int lane = 0; lane < 4; ++lane)
        result |= ((cards >> (13 * lane)) & 0x1FFF) << (13 * perm[lane]);
    return result;
}

// A set of hands by hand index.
using HandSet = std::vector<bool>;
HandSet handSetOf(const std::vector<CardMask>& hands);

// The permutations (identity first) that map each of `cardSets` onto itself and each of
// `handSets` onto itself.
std::vector<SuitPermutation>
suitSymmetries(const std::vector<CardMask>& cardSets,
               const std::vector<const std::vector<CardMask>*>& handSets);

} // namespace qve
