#pragma once

#include "Range/NodeMemento.h"
#include "evfe/ScenarioLines.h"

#include <string>
#include <utility>
#include <vector>

// One complete problem of an analysis: both players' ranges with their groups, the board
// and the dead cards, under a name shown in the scenario combo box.
//
// The ranges are kept as tree mementos (one record per node of the player's group tree,
// node 0 being the full range), so that a scenario is a plain value that restores a tree
// exactly. Reading and writing scenarios to the analysis file is added with the file; until
// then a scenario lives only as long as the window.
struct Scenario {
    std::string name;
    std::vector<Range::NodeMemento> player1;
    std::vector<Range::NodeMemento> player2;
    std::string board;
    std::string deadCards;
    // The EV/FE lines, in display order; copied deeply with the scenario. The EV/FE page
    // edits the lines of the scenario shown in place (see ScenarioLines).
    ScenarioLines lines;

    Scenario() = default;
    Scenario(std::string name, std::vector<Range::NodeMemento> player1,
             std::vector<Range::NodeMemento> player2, std::string board, std::string deadCards)
        : name(std::move(name)), player1(std::move(player1)), player2(std::move(player2)),
          board(std::move(board)), deadCards(std::move(deadCards)) {}

    // The range of a new scenario: one group named "Full Range" with the empty range.
    static std::vector<Range::NodeMemento> emptyRange() {
        Range::NodeMemento root;
        root.isRange = true;
        root.name = "Full Range";
        root.suits.assign(169, 0u);
        return {root};
    }
};
