#pragma once

#include "Range/NodeMemento.h"

#include <string>
#include <utility>
#include <vector>

// One complete problem of an analysis: both players' ranges with their groups, the board
// and the dead cards, under a name shown in the scenario combo box.
//
// The ranges are kept as tree mementos (one record per node of the player's group tree,
// node 0 being the full range), so that a scenario is a plain value that restores a tree
// exactly. The EV/FE lines of a scenario, and reading and writing scenarios to the analysis
// file, are added with the file and the EV/FE tab; until then a scenario lives only as
// long as the window.
struct Scenario {
    std::string name;
    std::vector<Range::NodeMemento> player1;
    std::vector<Range::NodeMemento> player2;
    std::string board;
    std::string deadCards;

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
