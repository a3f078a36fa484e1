#pragma once

#include <list>
#include <string>

#include "evfe/LineKind.h"
#include "evfe/LineVariant.h"

// A named shape of one street's betting, seen from the player who acts first ("Bet/Call",
// "Check/Raise", "5-Bet/Ship"), with its worked variants. Lines of different streets are
// unrelated even when their names are equal.
struct Line {
    std::string name;
    int street = 0;                  // 0 preflop to 3 river, see Street
    std::list<LineVariant> variants; // creation order, both first actors side by side
    LineKind actionSequence = LineKind::CheckFold;
};
