#pragma once

#include <string>

namespace HandHistory {

// The text does not have the shape of a hand history. `reason` says what was missing, for
// messages only; the import flow shows its own text. Thrown by `normalise` and
// HandHistoryParser (which spells it HandHistoryParser::ParseError).
struct ParseError {
    std::string reason;
};

} // namespace HandHistory
