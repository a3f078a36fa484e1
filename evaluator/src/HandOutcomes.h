#pragma once

// Showdown counters per hand of range1, as card masks: what getWinEvaluationByHand reports,
// without the hand texts, for callers inside the library that go on with the masks.

#include "Cards.h"

#include <cstdint>
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

} // namespace qve
