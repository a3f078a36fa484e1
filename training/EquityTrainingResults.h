#pragma once

#include "training/EquityTrainingSummary.h"

#include <QWidget>

#include <vector>

class EquityTrainingGuessPlot;
class QDoubleSpinBox;
class QLabel;
namespace Ui {
class EquityTrainingResults;
}

// The last page of a training: how many items and guesses there were, the average absolute
// difference, how many guesses were off by more than each of three thresholds (and how many
// were closer than the smallest), every guess as a point over its true equity, and the items
// one by one. "Start New Training" leads back to the start page.
class EquityTrainingResults : public QWidget {
    Q_OBJECT

public:
    explicit EquityTrainingResults(const std::vector<EquityTrainingItemResults>& results,
                                   QWidget* parent = nullptr);
    ~EquityTrainingResults() override;

    const EquityTrainingSummary& summary() const { return numbers; }
    EquityTrainingGuessPlot* guessPlot() const;

signals:
    void startNewTraining();

public slots:
    void onStartNewTraining();
    // Counts the guesses against the three thresholds and the smallest of them again.
    void updateGuessDistribution();

private:
    // count " (" share " of all guesses)".
    QString countText(int count) const;

    Ui::EquityTrainingResults* ui;
    EquityTrainingSummary numbers;
};
