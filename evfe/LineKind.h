#pragma once

#include <string>

// The shape of a line's action tree. Values and two-letter file codes are fixed:
// 0 "xf", 1 "xc", 2 "xr", 3 "bf", 4 "bc", 5 "bs".
enum class LineKind : int {
    CheckFold = 0,
    CheckCall = 1,
    CheckRaise = 2,
    BetFold = 3,
    BetCall = 4,
    BetShip = 5
};

// File code to kind. Lenient by design: a text shorter than two letters, or any pair of
// letters that is not one of the six codes, gives CheckFold. Letters after the second are
// ignored.
LineKind lineKindFromCode(const std::string& code);

// Kind to file code; a number outside 0 to 5 gives the empty text.
std::string lineKindToCode(int kind);
std::string lineKindToCode(LineKind kind);
