#include "training/EquityTrainingScore.h"

#include <cmath>

double EquityTrainingScore::correctEquity(const LongedEvaluation& evaluation) {
    const double wins = static_cast<double>(evaluation.wins1);
    const double ties = static_cast<double>(evaluation.ties);
    const double total = static_cast<double>(evaluation.total);
    // 0 / 0 gives the NaN that stands for "no equity" on purpose.
    return ((wins + ties * 0.5) / total) * 100.0;
}

float EquityTrainingScore::absoluteDifference(double guess, double correct) {
    return std::fabs(static_cast<float>(guess) - static_cast<float>(correct));
}

float EquityTrainingScore::relativeDifference(float absolute, double correct) {
    return absolute / static_cast<float>(correct);
}
