#pragma once

#include <string>

// One solved training item: what was dealt, what the player guessed and what was right.
// Equities and differences are in percentage points (37.5 means 37.5 %).
struct EquityTrainingItemResults {
    // The dealt hand ("AdKh") and the whole board of the item ("AdKh2c" or more).
    std::string heroHand;
    std::string board;
    // Compact text of villain's second range; empty when the training had only one villain,
    // which is how a one-villain item is told from a two-villain one.
    std::string villainRange2;
    double guess1 = 0.0;
    double guess2 = 0.0;
    double correct1 = 0.0;
    double correct2 = 0.0;
    float absoluteDifference1 = 0.0f;
    float absoluteDifference2 = 0.0f;

    bool hasSecondVillain() const { return !villainRange2.empty(); }
};
