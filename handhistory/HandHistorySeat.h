#pragma once

#include <string>

// One seat of a hand history. `positionKind` is 0 for the small blind, 1 for the big blind
// and 2 for every other seat.
struct HandHistorySeat {
    std::string name;
    int seat = 0;
    int positionKind = 2;
};
