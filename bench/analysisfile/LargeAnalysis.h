#pragma once

#include "app/document/Scenario.h"

#include <vector>

// Analyses for the undo benchmarks: `scenarios` scenarios with groups on both sides and a
// flop, each with `linesEach` of the EV/FE sample lines (every line with its variants).
std::vector<Scenario> largeAnalysis(int scenarios, int linesEach);
