#pragma once

// Numbering of heads-up preflop matchups up to suit permutation and seat order.
//
// Two ordered matchups (hand1 against hand2) fall into one class when a suit permutation,
// possibly together with swapping the seats, maps one onto the other: they have the same
// outcomes on the empty board, seen from the matching seat. A class is represented by its
// smallest key first * 1326 + second over all permutations and both seat orders (hand
// indices of SuitSymmetry.h); classes are numbered by ascending key. The preflop table
// generator and the library share this numbering.
//
// This is the numbering worked out the slow way, for the generators and the tests: it tries
// every permutation on every pair of hands (a 1326 x 1326 table, about 7 MB, and a tenth of
// a second). The library looks matchups up in the compact constant form of
// PreflopMatchupIndex, which the table generator writes from this numbering.

#include <cstdint>
#include <utility>
#include <vector>

namespace qve {

class PreflopMatchupNumbering {
public:
    // Builds the whole index (a 1326 x 1326 table, about 7 MB); takes some tens of ms.
    PreflopMatchupNumbering();

    // -1 when the hands share a card; otherwise class * 2 + swapped, where swapped means
    // that `first` sits at `hand2` and the class's counts are seen from the other seat.
    std::int32_t entry(int hand1, int hand2) const { return table[hand1 * 1326 + hand2]; }

    int classCount() const { return static_cast<int>(keys.size()); }

    // The representative (first, second) hand indices of a class.
    std::pair<int, int> representative(int matchupClass) const {
        return {keys[matchupClass] / 1326, keys[matchupClass] % 1326};
    }

private:
    std::vector<std::int32_t> table;
    std::vector<std::int32_t> keys;
};

} // namespace qve
