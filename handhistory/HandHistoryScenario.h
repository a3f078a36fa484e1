#pragma once

#include "app/document/Scenario.h"

#include <optional>
#include <string>

struct HandHistoryRecord;

// The scenario of a played hand: its board, the hero's two cards as Player1's "Full Range",
// an empty "Full Range" for Player2, no dead cards, and (with `withLines`) the EV/FE lines
// of every bet and raise. Nothing when the hand has no hero and no preflop raise that
// would name one.
class HandHistoryScenario {
public:
    static std::optional<Scenario> build(const HandHistoryRecord& hand, const std::string& name,
                                         bool withLines);
};
