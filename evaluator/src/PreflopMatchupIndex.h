#pragma once

// The matchup classes of PreflopMatchupNumbering in a compact constant form, generated at
// build time (tools/TableGenerator.cpp), so that a preflop lookup needs no start-up work.
//
// A permutation of the suits keeps a matchup's class. Each hand has a chosen permutation that
// maps it onto the representative of its hand class (169 of them, one row each); the pair
// (hand1, hand2) then has the class of (representative, image of hand2), which the row of the
// representative holds. So a lookup is three loads: the hand's row and permutation, the
// image of the other hand, the row's entry.

#include "Platform.h"

#include <cstdint>

namespace qve {

struct PreflopMatchupIndexData {
    static constexpr int hands = 1326;
    static constexpr int rows = 169;
    static constexpr int permutations = 24;

    std::uint8_t rowOfHand[hands];
    std::uint8_t permutationOfHand[hands];
    // [permutation][hand]: the hand index of the hand's image.
    std::uint16_t imageOfHand[permutations][hands];
    // [row][hand]: the entry of the row's representative against that hand.
    std::int32_t rowEntry[rows][hands];
    std::int32_t classCount;
};

extern const PreflopMatchupIndexData generatedPreflopMatchupIndex;

class PreflopMatchupIndex {
public:
    // -1 when the hands share a card; otherwise class * 2 + swapped, where swapped means
    // that `hand1` sits at the class's second hand and its counts are seen from the other
    // seat (hand indices of SuitSymmetry.h).
    QVE_ALWAYS_INLINE std::int32_t entry(int hand1, int hand2) const {
        const PreflopMatchupIndexData& d = generatedPreflopMatchupIndex;
        return d.rowEntry[d.rowOfHand[hand1]][d.imageOfHand[d.permutationOfHand[hand1]][hand2]];
    }

    // The entries of one hand against every other: for loops over a range.
    struct Row {
        const std::int32_t* entries;
        const std::uint16_t* image;
        QVE_ALWAYS_INLINE std::int32_t entry(int hand2) const { return entries[image[hand2]]; }
    };
    QVE_ALWAYS_INLINE Row row(int hand1) const {
        const PreflopMatchupIndexData& d = generatedPreflopMatchupIndex;
        return {d.rowEntry[d.rowOfHand[hand1]], d.imageOfHand[d.permutationOfHand[hand1]]};
    }

    int classCount() const { return generatedPreflopMatchupIndex.classCount; }
};

} // namespace qve
