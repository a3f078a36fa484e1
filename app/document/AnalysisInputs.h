#pragma once

#include <string>

// The four texts an analysis is calculated from: both ranges as technical range text, the
// board and the dead cards as card text. Every calculation of the window and its tabs starts
// from one of these.
struct AnalysisInputs {
    std::string player1;
    std::string player2;
    std::string board;
    std::string deadCards;

    bool operator==(const AnalysisInputs& other) const {
        return player1 == other.player1 && player2 == other.player2 && board == other.board &&
               deadCards == other.deadCards;
    }
    bool operator!=(const AnalysisInputs& other) const { return !(*this == other); }
};
