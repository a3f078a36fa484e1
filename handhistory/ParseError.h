#pragma once

#include <string>
#include <utility>

namespace HandHistory {

// The text does not have the shape of a hand history, or it holds something no played hand
// can (an amount that is no plain number, a card twice, a game other than No Limit
// Hold'em). `reason` says what, for messages only; the import flow shows its own text.
// Thrown by `normalise` and HandHistoryParser (which spells it
// HandHistoryParser::ParseError).
struct ParseError {
    ParseError() = default;
    explicit ParseError(std::string reason, bool refusesHand = false)
        : reason(std::move(reason)), refusesHand(refusesHand) {}

    std::string reason;
    // Set for faults that refuse the whole hand even where the parser otherwise passes over
    // a line it cannot read.
    bool refusesHand = false;
};

} // namespace HandHistory
