#pragma once

#include <VelmaraEvaluatorBase.h>

// How a guess is scored against the true equity. Equities, guesses and absolute
// differences are in percentage points; a relative difference is a fraction of the true
// equity (0.1 for a guess 10 % off).
class EquityTrainingScore {
public:
    // Hero's equity of an evaluation in which hero is the first range:
    // ((wins + ties * 0.5) / total) * 100 in double precision. Not a number when nothing was
    // counted (total 0: no matchup is possible).
    static double correctEquity(const LongedEvaluation& evaluation);
    // |guess - correct| with both taken as 32-bit floats.
    static float absoluteDifference(double guess, double correct);
    // absolute / correct as 32-bit floats: infinite for a true equity of 0 and a guess off
    // it, not a number for a guess of exactly 0 on it.
    static float relativeDifference(float absolute, double correct);
};
