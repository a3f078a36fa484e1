#include "evfe/ActionCode.h"

#include <stdexcept>

namespace {

const char* const actionTexts[] = {"x",    "b",    "c",  "f",  "xx",  "xbf", "xbc",
                                   "xbrf", "xbrc", "rf", "rc", "rsf", "rsc"};
const int actionCount = static_cast<int>(sizeof(actionTexts) / sizeof(actionTexts[0]));

} // namespace

ActionCode actionCodeFromText(const std::string& text) {
    for (int code = 0; code < actionCount; ++code) {
        if (text == actionTexts[code])
            return static_cast<ActionCode>(code);
    }
    if (text == "xbr")
        return ActionCode::CheckBetRaiseFold;
    if (text == "rs")
        return ActionCode::RaiseShipCall;
    throw std::runtime_error("Unknown Action " + text);
}

std::string actionCodeToText(int code) {
    if (code < 0 || code >= actionCount)
        throw std::runtime_error("Unknown Action w/number: " + std::to_string(code));
    return actionTexts[code];
}

std::string actionCodeToText(ActionCode code) {
    return actionCodeToText(static_cast<int>(code));
}
