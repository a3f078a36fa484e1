#pragma once

#include "Range/HandRangeElementConversion.h"

#include <string>

// Card masks built by hand from the lane layout (d, h, s, c lanes of 13 bits, deuce at bit
// 0 of each lane), independently of the evaluator library.
inline Range::CardMask cardMask(const std::string& card) {
    const std::string values = "23456789TJQKA";
    const std::string suits = "dhsc";
    const auto value = values.find(card.at(0));
    const auto lane = suits.find(card.at(1));
    if (value == std::string::npos || lane == std::string::npos)
        return 0;
    return 1ULL << (13 * lane + value);
}

// Mask of concatenated two-character cards.
inline Range::CardMask cardsMask(const std::string& cards) {
    Range::CardMask mask = 0;
    for (std::size_t i = 0; i + 1 < cards.size(); i += 2)
        mask |= cardMask(cards.substr(i, 2));
    return mask;
}
