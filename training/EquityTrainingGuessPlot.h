#pragma once

#include "training/EquityTrainingItemResults.h"

#include <qcustomplot.h>

#include <vector>

// The guesses of a training as points over the true equities, with the diagonal of perfect
// guesses: points above it were overestimated, points below underestimated. One colour per
// villain range. Both axes run from 0 to 100 %.
class EquityTrainingGuessPlot : public QCustomPlot {
    Q_OBJECT

public:
    explicit EquityTrainingGuessPlot(QWidget* parent = nullptr);

    // Replaces the points; items whose true equity is not known are left out.
    void showGuesses(const std::vector<EquityTrainingItemResults>& results);

    QCPGraph* diagonal() const { return perfect; }
    // The points against villain's range 1 or 2: key the true equity, value the guess.
    QCPGraph* guesses(int range) const { return range == 2 ? guesses2 : guesses1; }

private:
    QCPGraph* perfect;
    QCPGraph* guesses1;
    QCPGraph* guesses2;
};
