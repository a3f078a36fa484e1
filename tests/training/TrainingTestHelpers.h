#pragma once

#include "Range/HandRange.h"
#include "Range/HandRangeStringManipulator.h"
#include "Range/HandRangeStringReader.h"
#include "training/EquityTrainingPrompts.h"

#include <QApplication>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QString>
#include <QTest>
#include <QWidget>
#include <VelmaraEvaluatorBase.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace TrainingTestHelpers {

// The evaluator's board tables, built once per process as the splash does in the program.
inline void prepareEvaluator() {
    static const bool prepared = [] {
        initializeAllBoardsBeforeCalculation();
        return true;
    }();
    (void)prepared;
}

// What the pages asked the player, answered without modal windows.
struct PromptLog {
    std::vector<std::pair<QString, QString>> warnings;
    int cancelQuestions = 0;
    bool answerYes = true;
};

inline EquityTrainingPrompts recordingPrompts(const std::shared_ptr<PromptLog>& log) {
    EquityTrainingPrompts prompts;
    prompts.warn = [log](QWidget*, const QString& title, const QString& text) {
        log->warnings.emplace_back(title, text);
    };
    prompts.confirmCancel = [log](QWidget*) {
        ++log->cancelQuestions;
        return log->answerYes;
    };
    return prompts;
}

inline bool waitUntil(const std::function<bool()>& done, int limitMs = 60000) {
    return QTest::qWaitFor(done, limitMs);
}

inline Range::HandRange rangeOf(const std::string& text) {
    Range::HandRange range;
    Range::HandRangeStringManipulator(range).setFree(text);
    return range;
}

inline std::string technical(const std::string& freeText) {
    return Range::HandRangeStringReader(rangeOf(freeText)).technicalText();
}

// Hero's equity in percent, counted here in the test's own thread: the formula of a
// showdown count, wins and half the ties over all boards.
inline double equityInTest(const std::string& hand, const std::string& villainTechnical,
                           const std::string& board, const std::string& dead) {
    volatile bool stop = false;
    const LongedEvaluation counted = board.empty()
                                         ? getEquity(hand, villainTechnical, dead, stop)
                                         : getEquity(hand, villainTechnical, board, dead, stop);
    return (static_cast<double>(counted.wins1) + static_cast<double>(counted.ties) * 0.5) /
           static_cast<double>(counted.total) * 100.0;
}

template <typename T>
T* child(const QWidget* parent, const char* name) {
    T* found = parent->findChild<T*>(QString::fromLatin1(name));
    EXPECT_NE(found, nullptr) << name;
    return found;
}

// Types a guess into a box as the player does: the number replaces what the box shows.
inline void typeGuess(QDoubleSpinBox* box, const QString& number) {
    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, number);
    QTest::keyClick(box, Qt::Key_Tab);
}

// Types a range into a line and confirms it with Return.
inline void typeRange(QLineEdit* line, const QString& text) {
    line->setFocus();
    line->selectAll();
    QTest::keyClicks(line, text);
    QTest::keyClick(line, Qt::Key_Return);
}

} // namespace TrainingTestHelpers
