#pragma once

// Parsing and checking of the text inputs shared by the hit evaluations and the showdown
// evaluation by hand strength.

#include "Cards.h"

#include <string>
#include <vector>

namespace qve {

// The board of a hit evaluation: a card mask of 3 to 5 cards. Throws std::invalid_argument
// with a message naming the text when it is not such a board.
CardMask boardOfText(const std::string& board);

// The dead cards: a card mask of any number of cards, possibly none. Throws
// std::invalid_argument on bad text or on a dead card that is also on the board.
CardMask deadOfText(const std::string& dead, CardMask board);

// The hands of a technical range text that share no card with `blocked`, each once, in
// ascending order of the mask.
std::vector<CardMask> possibleHands(const std::string& range, CardMask blocked);

} // namespace qve
