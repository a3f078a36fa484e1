#pragma once

#include "app/document/Scenario.h"

#include <random>
#include <string>
#include <vector>

// Analyses for the file and undo tests: the fixed three scenarios of the golden files under
// data/, and random ones.
namespace AnalysisFileSamples {

// "Flop c-bet" (groups on both sides, a flop, the three sample lines of the EV/FE tests),
// "Turn <probe> & \"check\"" (no groups, a turn, a dead card, no lines) and an empty
// "Standard".
std::vector<Scenario> threeScenarios();
// The EV/FE page's state of the golden file.
std::string tabState();

// A player's ranges as one line of text: "name: compact text" per node, joined by "; ".
std::string groupsText(const std::vector<Range::NodeMemento>& memento);

// A file under tests/app/data, whole; the test fails when it cannot be read.
std::string readData(const std::string& name);
std::string dataPath(const std::string& name);

struct Random {
    std::vector<Scenario> scenarios;
    int selected = -1;
    std::string tabState;
};
// One to six scenarios with random names (XML's special characters and bytes above 127
// included), ranges with zero to three groups, boards of 0, 3, 4 or 5 cards, dead cards,
// and some of the sample lines where the ranges are the samples' full ranges.
Random randomAnalysis(std::mt19937& random);

} // namespace AnalysisFileSamples
