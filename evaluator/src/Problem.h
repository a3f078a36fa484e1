#pragma once

// One equity question, parsed from the boundary texts and reduced to the hands that can
// still be dealt.

#include "Cards.h"

#include <cstdint>
#include <string>
#include <vector>

namespace qve {

struct Problem {
    std::vector<CardMask> hands1; // all combinations of range1, ascending masks
    std::vector<CardMask> hands2;
    std::vector<CardMask> live1; // those avoiding board and dead cards, same order
    std::vector<CardMask> live2;
    CardMask board = 0;
    CardMask dead = 0;
    int boardCards = 0;
    int deadCards = 0;
    // Boards completing the given board for any one matchup: every matchup has the same
    // number, since its four cards avoid board and dead cards.
    std::uint64_t completions = 0;
    // Pairs of live hands without a common card.
    std::uint64_t matchups = 0;
};

// Throws std::invalid_argument naming the bad token or card.
Problem prepareProblem(const std::string& range1, const std::string& range2,
                       const std::string& board, const std::string& dead);

// Number of hands of `hands` holding `card`, for every card.
void countHandsByCard(const std::vector<CardMask>& hands, std::int64_t counts[52]);

} // namespace qve
