#pragma once

#include "Range/HandRange.h"
#include "evfe/LineList.h"

#include <string>

// Lines as a user builds them on the page, for the file tests: fixed content, so that the
// text they write can be compared with the golden files under data/.
namespace SampleLines {

// A range from free range text, without any filter.
Range::HandRange rangeOf(const std::string& text);

// The scenario's full ranges the samples are cut from.
Range::HandRange player1FullRange();
Range::HandRange player2FullRange();

// Three lines: "Bet/Ship" on the flop with a Player1 and a Player2 variant (the second one's
// name holds the characters XML escapes), "Check/Raise" on the turn for Player2, and
// "3-Bet/Call" preflop with both last investments; every number set, some to NaN, infinity
// and -0.
LineList golden();

// Sets the group of action `index` of `variant` to `text`, through the group's filter (as
// typing does).
void setActionRange(LineVariant& variant, std::size_t index, const std::string& text);

} // namespace SampleLines
