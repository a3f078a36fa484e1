#pragma once

#include "training/EquityTrainingItemResults.h"

#include <cmath>
#include <string>

namespace TrainingResultsSamples {

// A solved item with the differences of its guesses worked out here; villain's second
// range only when `villain2` is given.
inline EquityTrainingItemResults item(double guess1, double correct1,
                                      const std::string& villain2 = "", double guess2 = 0.0,
                                      double correct2 = 0.0) {
    EquityTrainingItemResults result;
    result.heroHand = "AdKh";
    result.board = "Qs7d2c";
    result.villainRange2 = villain2;
    result.guess1 = guess1;
    result.correct1 = correct1;
    result.absoluteDifference1 =
        std::fabs(static_cast<float>(guess1) - static_cast<float>(correct1));
    result.guess2 = guess2;
    result.correct2 = correct2;
    result.absoluteDifference2 =
        std::fabs(static_cast<float>(guess2) - static_cast<float>(correct2));
    return result;
}

} // namespace TrainingResultsSamples
