#pragma once

#include "calculation/EquityCalculationHandle.h"

#include <QObject>

#include <VelmaraEvaluatorBase.h>

struct AnalysisInputs;
class QLabel;
class QMovie;
class QWidget;
class ThreadPool;

// The equity of the two ranges beside the range lines, the headline of the window.
//
// calculate() cancels the calculation before and starts a new one on the inputs; publish()
// shows a result only when its handle is the one held, so a late result of a replaced
// calculation never reaches the labels. Each label then shows its player's equity with two
// decimals, a tool tip naming the player above its wins, ties and losses, and the traffic
// light colour; while a calculation runs both show the loading movie. Whose equity a label
// shows never depends on its place alone: each has the accessible name "Player 1's equity"
// (or 2) and carries its player's colour as a thin marker on its left edge, the same as the
// player's range line, in every state.
//
// The labels are the window's; the pool must outlive this object.
class HeadlineEquity : public QObject {
    Q_OBJECT

public:
    HeadlineEquity(ThreadPool& pool, QLabel* player1, QLabel* player2, QWidget* window);

    // Starts getEquity on the inputs, after cancelling the calculation before. Without a
    // range on either side, or with cards that cannot be analysed, nothing starts; the labels
    // then stay empty, or show why the cards cannot be analysed.
    void calculate(const AnalysisInputs& inputs);
    // Shows `result` when `handle` is the current one; false when it was dropped.
    bool publish(const ThreadHandle& handle, const LongedEvaluation& result);
    // Stops a running calculation; the labels keep what they show.
    void cancel();
    // Empties both labels, their colours and tool tips.
    void clear();

    const EquityCalculationHandle& handle() const { return equityHandle; }
    QMovie* movie() const { return loadingMovie; }

private:
    void show(QLabel* label, double wins, double otherWins, double ties, double total);
    void showUnavailable(const QString& reason);
    // The label's style sheet: the player's marker, then `more`.
    static void setStyle(QLabel* label, const QString& more);
    static int playerOf(const QLabel* label);

    ThreadPool& threadPool;
    QLabel* player1Wins;
    QLabel* player2Wins;
    QWidget* window;
    QMovie* loadingMovie;
    EquityCalculationHandle equityHandle;
};
