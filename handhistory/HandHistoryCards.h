#pragma once

#include <string>
#include <string_view>

// Cards as the dialects write them, to the canonical two characters (rank, then a lower-case
// suit): "Ah", "10h", "Th", "HA", "S10", "ah". Unknown cards ("X", "Xx") and words that are
// no card are left out.
namespace HandHistoryCards {

// The concatenated cards of `text` ("[ Ah, 3s, 4s ]" gives "Ah3s4s"), in order.
std::string cardsIn(std::string_view text);

// The cards of the last "[...]" group of `line`, or of the whole line when it has none.
std::string cardsOfLastBrackets(std::string_view line);

} // namespace HandHistoryCards
