#pragma once

#include "evfe/LineList.h"
#include "handhistory/HandHistoryRecord.h"

#include <string>
#include <vector>

// The EV/FE lines of a played hand: for every bet and raise of a street (the first nine of
// each), three variants "/Fold", "/Call" and "/Ship" with the real size, the stacks, the pot
// and both players' last investments, all in big blinds. A variant joins the line of its
// name and street when the list has one, else a new line is made.
//
// The raiser of a line is "Hero" when it is the hand's hero, and the first preflop raiser
// becomes the hero of a hand that has none, so `preflopLines` runs first.
class HandHistoryLines {
public:
    // Keeps a copy of what it needs; `hand.bigBlind` must not be 0 (the parser ensures it).
    explicit HandHistoryLines(const HandHistoryRecord& hand);

    void preflopLines(LineList& lines);
    void flopLines(LineList& lines);
    void turnLines(LineList& lines);
    void riverLines(LineList& lines);

    // The hand's hero, or the first preflop raiser once `preflopLines` ran.
    const std::string& hero() const { return heroName; }

private:
    void streetLines(LineList& lines, int street, const std::vector<HandHistoryAction>& actions,
                     const HandHistoryRecord::Stacks& stacks, float pot);
    void lineFor(LineList& lines, int raiseIndex, int street,
                 const std::vector<HandHistoryAction>& actions,
                 const HandHistoryRecord::Stacks& stacks, float pot);

    HandHistoryRecord hand;
    std::string heroName;
};
