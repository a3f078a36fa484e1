#pragma once

#include "calculation/WinEvaluationByHandHandle.h"

#include <QPen>
#include <QPointer>
#include <QString>
#include <QWidget>
#include <VelmaraEvaluatorBase.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

class PlotContextMenu;
class PlotMessage;
class QCPTextElement;
class QCheckBox;
class QCustomPlot;
class QPoint;
class QPushButton;
class QTimer;
class ThreadHandle;
class ThreadPool;
namespace Range {
class HandRange;
}
namespace Ui {
class EquityGraph;
}

// The "Equity Graphs" tab: the equity distribution of both ranges. Every hand of a range is
// one flat step of a curve, the hands sorted by their equity against the other range, the
// best on the left; each curve spans the width 0 to 1 whatever the number of its hands. With
// "Cumulate Equities" a curve shows running sums of the hands' equities instead, scaled to 1.
//
// It calculates only on demand: the window tells it the inputs, and "&Start Calculation"
// starts one getWinEvaluationByHand per player at the same time; the curves are drawn when
// both have come back. Pressing the button during a run stops both and draws nothing. New
// inputs during a run do not stop it: the picture shows what was asked for at the start.
//
// The window hands over its ThreadPool on every switch to this tab. The ranges are taken as
// text when they are told: the window's range objects may be replaced (a restore, another
// scenario) before the button is pressed. Main thread only.
class EquityGraphTab : public QWidget {
    Q_OBJECT

public:
    // One step of a drawn curve, from left to right: the hand, its own equity, and the
    // height drawn (with cumulation, the scaled running sum that the step stands for).
    struct Step {
        std::string hand;
        float equity = 0.0f;
        double height = 0.0;
    };

    explicit EquityGraphTab(QWidget* parent = nullptr);
    ~EquityGraphTab() override;

    EquityGraphTab(const EquityGraphTab&) = delete;
    EquityGraphTab& operator=(const EquityGraphTab&) = delete;

    // The pool that runs the calculations; connecting to its result signal happens once per
    // pool, and a run on another pool is stopped.
    void setThreadPool(ThreadPool* pool);
    ThreadPool* getThreadPool() const { return threadPool.data(); }

    // The window's update: the ranges the two lines show (null counts as empty), board and
    // dead card texts. Stores them, the ranges in technical text, and starts nothing.
    void updateInputs(const Range::HandRange* player1Range, const Range::HandRange* player2Range,
                      const std::string& board, const std::string& deadCards);

    // --- State, for the window and for tests ---------------------------------------------
    // Calculations that have not come back: 2, 1 or 0.
    int runningCount() const { return running; }
    bool isCalculating() const { return running > 0; }
    // Player 0 or 1.
    const WinEvaluationByHandHandle& handleOf(int player) const { return handles[player]; }
    const WinEvaluationsByHand& resultOf(int player) const { return results[player]; }
    const std::vector<Step>& stepsOf(int player) const { return steps[player]; }
    QCustomPlot* plot() const;
    QPushButton* calculationButton() const;
    QCheckBox* cumulateFlag() const;
    // "AhKh: 62.40 %" with the player and the hand's place on the curve, for the step under a
    // position of the plot's pixels; empty off the curves.
    QString toolTipAt(const QPoint& position) const;
    // "Player;Place;Hand;Equity;Plotted" and one line per step of both curves, numbers in
    // percent with two decimals; empty without steps.
    QString csvText() const;
    // The sentence shown in the plot while it has no curve to show; empty otherwise.
    QString message() const;
    QString title() const;
    PlotContextMenu* contextMenu() const { return menu; }

public slots:
    void onCalculationButtonClicked();
    void onCalculationFinished(const ThreadHandle& handle, const WinEvaluationsByHand& evaluations);
    void RedrawGraphs();

private:
    void startCalculations();
    void stopCalculations();
    // Once both stopped tasks have ended, the button offers a new start.
    void checkStoppedTasks();
    // Why a calculation cannot start with the stored inputs; empty when it can.
    QString refusal() const;
    void drawCurve(int player);
    void showState();

    std::unique_ptr<Ui::EquityGraph> ui;
    QPointer<ThreadPool> threadPool;
    std::string player1Range;
    std::string player2Range;
    std::string board;
    std::string deadCards;
    int running = 0;
    std::array<WinEvaluationByHandHandle, 2> handles;
    std::array<WinEvaluationsByHand, 2> results;
    std::array<std::vector<Step>, 2> steps;
    std::array<QPen, 2> pens;
    // Why the last press started nothing; shown until the next press or update.
    QString refused;
    // Whether the curves show a finished calculation.
    bool calculated = false;
    QTimer* stoppedTasks = nullptr;
    QCPTextElement* titleElement = nullptr;
    std::unique_ptr<PlotMessage> messageItem;
    PlotContextMenu* menu = nullptr;
};
