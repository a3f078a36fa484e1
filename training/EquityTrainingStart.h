#pragma once

#include "Range/HandRange.h"
#include "training/EquityTrainingPrompts.h"
#include "training/EquityTrainingRandomness.h"

#include <QPointer>
#include <QWidget>

#include <string>

class BoardCardsWidget;
class HandRangeLine;
class ThreadPool;
namespace Range {
class RandomSource;
}
namespace Ui {
class EquityTrainingStart;
}

// The first page of the training: hero's range, one or two villain ranges, the board with
// the cards that stay for every item, and which board cards are dealt anew for each item.
// "Start Training" checks the inputs and hands them on in trainingStarted.
//
// The random cards radios decide which board fields can be given: with a random flop the
// turn and river are closed ("stronglyDisabled") and emptied, with a random turn the river;
// "None" and a random river leave the board rules alone.
//
// The page owns its three ranges and keeps them, and the board, from one training to the
// next.
class EquityTrainingStart : public QWidget {
    Q_OBJECT

public:
    explicit EquityTrainingStart(QWidget* parent = nullptr);
    ~EquityTrainingStart() override;

    // Handed to the hand selection dialog (its equity selector); not owned, may be null.
    void setThreadPool(ThreadPool* pool);
    // The generator the board's shuffle buttons draw from; not owned.
    void setRandomSource(Range::RandomSource* random);
    void setPrompts(EquityTrainingPrompts prompts);

    EquityTrainingRandomness randomness() const;
    const Range::HandRange& heroRange() const { return hero; }
    const Range::HandRange& villainRange1() const { return villain1; }
    const Range::HandRange& villainRange2() const { return villain2; }
    BoardCardsWidget* boardCards() const;
    HandRangeLine* heroLine() const;
    HandRangeLine* villain1Line() const;
    HandRangeLine* villain2Line() const;

signals:
    void trainingStarted(const Range::HandRange& heroRange, const Range::HandRange& villainRange1,
                         const Range::HandRange& villainRange2, const std::string& board,
                         const std::string& deadCards, EquityTrainingRandomness randomness);

public slots:
    // The checks in order; the first that fails shows its warning and nothing starts.
    void onStartTraining();
    void reactToRadioChanges();
    // The range lines' hovers count without the board and dead cards.
    void updateBoardForRanges();
    void onHeroSelectRange();
    void onHeroSelectCards();
    void onHeroClearRange();
    void onVillainRange1SelectRange();
    void onVillainRange1SelectCards();
    void onVillainRange1ClearRange();
    void onVillainRange2SelectRange();
    void onVillainRange2SelectCards();
    void onVillainRange2ClearRange();

private:
    // What the three rows share: the dialogs run on the row's own range, and the line shows
    // the result.
    void selectRange(HandRangeLine* line, Range::HandRange& range, const QString& who);
    void selectCards(HandRangeLine* line, Range::HandRange& range, const QString& who);
    void clearRange(HandRangeLine* line, Range::HandRange& range);
    void warn(const char* title, const char* text);

    Ui::EquityTrainingStart* ui;
    Range::HandRange hero;
    Range::HandRange villain1;
    Range::HandRange villain2;
    QPointer<ThreadPool> pool;
    EquityTrainingPrompts prompts;
};
