#include "handhistory/HandHistoryScenario.h"

#include "Range/HandRange.h"
#include "Range/HandRangeStringManipulator.h"
#include "evfe/LineList.h"
#include "handhistory/HandHistoryLines.h"
#include "handhistory/HandHistoryRecord.h"

std::optional<Scenario> HandHistoryScenario::build(const HandHistoryRecord& hand,
                                                   const std::string& name, bool withLines) {
    std::vector<Range::NodeMemento> player1 = Scenario::emptyRange();
    if (!hand.holeCards.empty()) {
        Range::HandRange range;
        Range::HandRangeStringManipulator(range).setFree(hand.holeCards);
        player1.front().suits = range.suitsVector();
    }
    Scenario scenario(name, std::move(player1), Scenario::emptyRange(), hand.board, std::string());

    // The preflop lines name the hero of a hand that shows none; without either there is
    // nobody whose lines these would be.
    HandHistoryLines builder(hand);
    LineList preflop;
    builder.preflopLines(preflop);
    if (builder.hero().empty())
        return std::nullopt;
    if (withLines) {
        LineList& lines = scenario.lines.list();
        lines = std::move(preflop);
        builder.flopLines(lines);
        builder.riverLines(lines);
        builder.turnLines(lines);
    }
    return scenario;
}
