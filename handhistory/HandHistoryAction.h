#pragma once

#include <string>

// One action line of a hand, as the parser read it. Amounts are in the hand's currency
// (or chips); for a raise `amount` is the total the raise goes to.
struct HandHistoryAction {
    std::string player;
    // "fold", "check", "call", "bet", "raise" or "post".
    std::string verb;
    // For "post": "small blind", "big blind" or "ante"; empty when the line names none.
    std::string blind;
    float amount = 0.0f;
    // False when the line had the shape of an action but its verb is none of the six.
    bool sane = true;
};
