#include "hitevaluation/HitInput.h"

#include "Platform.h"

#include <stdexcept>

namespace qve {

CardMask boardOfText(const std::string& board) {
    const CardMask mask = cardsOfText(board);
    const int count = qve::popcount64(mask);
    if (count < 3 || count > 5)
        throw std::invalid_argument("A board needs 3, 4 or 5 cards: '" + board + "'");
    return mask;
}

CardMask deadOfText(const std::string& dead, CardMask board) {
    const CardMask mask = cardsOfText(dead);
    if (mask & board)
        throw std::invalid_argument("A dead card lies on the board: '" + dead + "'");
    return mask;
}

std::vector<CardMask> possibleHands(const std::string& range, CardMask blocked) {
    std::vector<CardMask> hands = handsOfRange(range);
    std::vector<CardMask> possible;
    possible.reserve(hands.size());
    for (CardMask hand : hands)
        if (!(hand & blocked))
            possible.push_back(hand);
    return possible;
}

} // namespace qve
