#pragma once

#include <VelmaraEvaluatorBase.h>

#include <string>

// What a detail win evaluation task receives: a private copy of everything it reads, so that
// the worker thread shares nothing with the main thread but the stop flag.
struct WinEvaluationInput {
    std::string range1;               // technical range text of the first player
    std::string range2;               // technical range text of the second player
    std::string board;                // at least a flop
    std::string dead;                 // possibly empty
    DetailWinEvaluations evaluations; // prepared with keys and names, counters zero
};
