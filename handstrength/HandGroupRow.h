#pragma once

#include <VelmaraEvaluatorBase.h>

#include <cstdint>

// One row of a hand group: a hand strength, its place in the group's tree and the last
// evaluation's numbers. The rows of a group form a tree through `parent`, an index into the
// same group's row list.
struct HandGroupRow {
    // `parent` of a root row.
    static constexpr std::uint32_t noParent = 0xFFFFFFFF;

    // The hand strength; a non-empty displayName is the row's own caption.
    HandStrengthKey key;
    std::uint32_t parent = noParent;
    // Combinations of player 1 and player 2 with this hand strength (0 for a player that
    // took no part in the evaluation).
    std::uint32_t combinations1 = 0;
    std::uint32_t combinations2 = 0;
    // Shares as fractions, 0 to 1: of the parent row's combinations, or of all combinations
    // for a root row or a flat evaluation. After a win evaluation: wins and losses over all
    // showdowns of this hand strength.
    float percentage1 = 0.0f;
    float percentage2 = 0.0f;
    // Whether the row is shown. Roots start visible, children hidden (collapsed parent).
    bool visible = true;
};
