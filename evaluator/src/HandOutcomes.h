#pragma once

// Showdown counters per hand of range1, as card masks: what getWinEvaluationByHand reports,
// without the hand texts, for callers inside the library that go on with the masks.

#include "Cards.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace qve {

struct HandOutcome {
    CardMask hand = 0;       // two cards
    std::uint64_t total = 0; // 0: blocked by the board or the dead cards, or no opponent
    std::uint64_t wins = 0;
    std::uint64_t ties = 0;
};

// One record per combination of range1, in ascending order of the hand's mask; units and
// errors as getWinEvaluationByHand. Throws TerminationOccured when `stop` turns true.
std::vector<HandOutcome> handOutcomes(const std::string& range1, const std::string& range2,
                                      const std::string& board, const std::string& dead,
                                      const volatile bool& stop);

// Showdown counters of range1's hands summed per key: `keyOf` gives every hand of range1 that
// the board and the dead cards leave live its key, and hands with equal keys count together.
// One record per distinct key, in ascending key order. A key decided by the hand and the board
// alone lets the enumeration use the board's suit symmetries; any other key is still counted
// exactly, only more slowly. Units and errors as handOutcomes.
struct KeyedOutcome {
    std::uint64_t key = 0;
    std::uint64_t total = 0;
    std::uint64_t wins = 0;
    std::uint64_t ties = 0;
};

std::vector<KeyedOutcome> outcomesByKey(const std::string& range1, const std::string& range2,
                                        const std::string& board, const std::string& dead,
                                        const std::function<std::uint64_t(CardMask)>& keyOf,
                                        const volatile bool& stop);

} // namespace qve
