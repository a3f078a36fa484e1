#pragma once

// Card texts and card masks inside the library. A card mask has four 13-bit lanes
// d (bits 0-12), h (13-25), s (26-38), c (39-51); bit 0 of a lane is the deuce.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qve {

using CardMask = std::uint64_t;

// The one-bit mask of a card text such as "Ad". Throws std::invalid_argument naming the
// text when it is not a card.
CardMask cardOfText(std::string_view card);

// The or of all cards of a text of concatenated two-character cards ("AhKd2c"); throws
// std::invalid_argument on a bad card or on a card given twice.
CardMask cardsOfText(std::string_view cards);

// All two-bit hand masks of a technical range text ("QQ,AKs,AKo,AdKh"), each once, in
// ascending order of the mask. Throws std::invalid_argument naming a bad token.
std::vector<CardMask> handsOfRange(std::string_view technicalRange);

// The two-character text of a one-bit card mask, e.g. "Ad".
std::string textOfCard(CardMask card);

} // namespace qve
