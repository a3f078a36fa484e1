#pragma once

#include "Range/HandRange.h"
#include "calculation/EquityCalculationHandle.h"
#include "training/EquityTrainingItemResults.h"
#include "training/EquityTrainingPrompts.h"
#include "training/EquityTrainingRandomness.h"

#include <QPointer>
#include <QWidget>
#include <VelmaraEvaluatorBase.h>

#include <string>
#include <vector>

class QDoubleSpinBox;
class QMovie;
class QSlider;
class ThreadHandle;
class ThreadPool;
namespace Range {
class RandomSource;
}
namespace Ui {
class EquityTrainingItem;
}

// The page of a running training, one item after the other: a hand dealt from hero's range
// on a board completed by random cards, and the player's guess of hero's equity against
// villain's range (or, separately, against each of two ranges).
//
// States: input (the guesses can be typed or slid; the true equities are calculated in the
// background meanwhile), waiting (Solve was pressed before the calculations ended), result
// (the true equities and the differences are shown and the item joins the results). From
// the result state Continue deals the next item and Finish ends the training.
//
// The guesses are boxes of 0 to 100 % each with a slider that follows it, and the other way
// round; the slider runs over sliderMaximum steps.
//
// Each item runs its calculations under its own handles on the pool and takes only their
// results; results of an item before, or of a page cancelled meanwhile, are dropped.
class EquityTrainingItem : public QWidget {
    Q_OBJECT

public:
    static constexpr int sliderMaximum = 1000;

    // `pool` and `random` must outlive the page (the pool is watched and may go first at
    // the program's end). Villain's second range may be empty.
    EquityTrainingItem(ThreadPool* pool, Range::RandomSource& random,
                       const Range::HandRange& heroRange, const Range::HandRange& villainRange1,
                       const Range::HandRange& villainRange2, const std::string& board,
                       const std::string& deadCards, EquityTrainingRandomness randomness,
                       EquityTrainingPrompts prompts, QWidget* parent = nullptr);
    ~EquityTrainingItem() override;

    EquityTrainingRandomness getRandomness() const { return randomness; }
    bool hasSecondVillain() const { return !villain2Text.empty(); }
    // The item shown: its number (1 for the first), the dealt hand and the whole board.
    int itemNumber() const { return items; }
    const std::string& heroHand() const { return dealtHand; }
    const std::string& board() const { return dealtBoard; }
    // The true equity against villain's range 1 or 2 in percent, not a number while its
    // calculation runs.
    double correctEquity(int range) const;
    const ThreadHandle& calculationHandle(int range) const;
    int runningCalculationCount() const { return runningCalculations; }
    bool isSolveRequested() const { return solveRequested; }
    bool isInResultState() const { return inResultState; }
    const std::vector<EquityTrainingItemResults>& getResults() const { return results; }

signals:
    void trainingCanceled();
    void trainingFinished(const std::vector<EquityTrainingItemResults>& results);

public slots:
    // Deals the next item and starts its calculations; ends the training with a warning when
    // no hand of hero's range fits the board.
    void ProceedToInputState();
    // Solve: the result state at once when the true equities are known, else after them.
    void proceedToResultState();
    void spinValue1Changed(double value);
    void sliderValue1Changed(int value);
    void correctSpinValue1Changed(double value);
    void spinValue2Changed(double value);
    void sliderValue2Changed(int value);
    void correctSpinValue2Changed(double value);
    void onCancel();
    void onFinish();
    // Takes the selection from the guess boxes, so that a guess set with a slider is not
    // replaced by the next key typed into its box.
    void deselectSpin();
    void calculationFinished(const ThreadHandle& handle, const LongedEvaluation& result);

private:
    void startCalculations();
    void stopCalculations();
    void enterResultState();
    void showWaiting(bool waiting);
    // The true equities with their sliders and the differences, of both ranges.
    std::vector<QWidget*> resultControls() const;
    void showResultControls(bool shown);
    void enableInputs(bool enabled);
    // A guess box and its slider follow each other: the slider is the box's value scaled to
    // its range.
    void placeSlider(QSlider* slider, double percent);
    void placeGuess(QDoubleSpinBox* box, int sliderValue);

    Ui::EquityTrainingItem* ui;
    QPointer<ThreadPool> pool;
    Range::RandomSource& random;
    EquityTrainingPrompts prompts;
    Range::HandRange hero;
    Range::HandRange villain1;
    Range::HandRange villain2;
    std::string villain1Text;
    std::string villain2Text;
    std::string givenBoard;
    std::string deadCards;
    EquityTrainingRandomness randomness;

    EquityCalculationHandle handle1;
    EquityCalculationHandle handle2;
    int runningCalculations = 0;
    bool solveRequested = false;
    bool inResultState = false;
    std::vector<EquityTrainingItemResults> results;

    int items = 0;
    std::string dealtHand;
    std::string dealtBoard;
    double correct1;
    double correct2;
    QMovie* waitingMovie;
};
