#include "evfe/LineKind.h"

LineKind lineKindFromCode(const std::string& code) {
    if (code.size() < 2)
        return LineKind::CheckFold;
    if (code[0] == 'b') {
        switch (code[1]) {
        case 'c':
            return LineKind::BetCall;
        case 'f':
            return LineKind::BetFold;
        case 's':
            return LineKind::BetShip;
        default:
            return LineKind::CheckFold;
        }
    }
    if (code[0] == 'x') {
        switch (code[1]) {
        case 'c':
            return LineKind::CheckCall;
        case 'r':
            return LineKind::CheckRaise;
        default:
            return LineKind::CheckFold;
        }
    }
    return LineKind::CheckFold;
}

std::string lineKindToCode(int kind) {
    switch (kind) {
    case 0:
        return "xf";
    case 1:
        return "xc";
    case 2:
        return "xr";
    case 3:
        return "bf";
    case 4:
        return "bc";
    case 5:
        return "bs";
    default:
        return std::string();
    }
}

std::string lineKindToCode(LineKind kind) {
    return lineKindToCode(static_cast<int>(kind));
}
