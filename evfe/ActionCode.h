#pragma once

#include <string>

// One node of a line's action tree, named by how the street ends when it happens. A is the
// player who acts first on the street, B the other one. The numbers and the texts are
// stored in analysis files.
enum class ActionCode : int {
    Check = 0,             // "x":    A's opening check; no money moves, no EV of its own
    Bet = 1,               // "b":    A's opening bet or raise; no EV of its own
    Call = 2,              // "c":    A bets, B calls
    Fold = 3,              // "f":    A bets, B folds
    CheckCheck = 4,        // "xx":   A checks, B checks
    CheckBetFold = 5,      // "xbf":  A checks, B bets, A folds
    CheckBetCall = 6,      // "xbc":  A checks, B bets, A calls
    CheckBetRaiseFold = 7, // "xbrf": A checks, B bets, A raises, B folds
    CheckBetRaiseCall = 8, // "xbrc": A checks, B bets, A raises, B calls
    RaiseFold = 9,         // "rf":   A bets, B raises, A folds
    RaiseCall = 10,        // "rc":   A bets, B raises, A calls
    RaiseShipFold = 11,    // "rsf":  A bets, B raises, A ships, B folds
    RaiseShipCall = 12     // "rsc":  A bets, B raises, A ships, B calls
};

// Text to code. Also reads the two texts of old files: "xbr" gives CheckBetRaiseFold and
// "rs" gives RaiseShipCall. Anything else throws std::runtime_error "Unknown Action "
// followed by the text.
ActionCode actionCodeFromText(const std::string& text);

// Code to text. A number outside 0 to 12 throws std::runtime_error
// "Unknown Action w/number: " followed by the number.
std::string actionCodeToText(int code);
std::string actionCodeToText(ActionCode code);
