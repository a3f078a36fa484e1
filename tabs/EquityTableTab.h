#pragma once

#include "calculation/ThreadPool.h"
#include "calculation/WinEvaluationByHandHandle.h"
#include "tabs/EquityTableTypes.h"

#include <QPointer>
#include <QSettings>
#include <QWidget>
#include <VelmaraEvaluatorBase.h>

#include <memory>
#include <string>
#include <vector>

class QMovie;
class ThreadHandle;

namespace Ui {
class EquityTableTab;
}

// The "Equity Tables" tab: the equity of every hand of one player's range against the
// other range on the board, as a 13 x 13 coloured matrix (classes) and as a table (classes,
// or concrete hands on a board). Equity bounds and "Only Best" percentile bounds filter
// both; the filtered hands go to the clipboard as range text, the table to a CSV file.
//
// The window talks to the tab only while it is visible: on a tab switch it hands over its
// ThreadPool (setThreadPool) and then the four input texts (updateInputs). The tab runs one
// getWinEvaluationByHand at a time under its own WinEvaluationByHandHandle; new inputs stop
// the running one, and a result whose handle is not the tab's current one is dropped, so a
// stale result never reaches the display. While calculating the previous result stays on
// display.
//
// Main thread only.
class EquityTableTab : public QWidget {
    Q_OBJECT

public:
    explicit EquityTableTab(QWidget* parent = nullptr);
    ~EquityTableTab() override;

    EquityTableTab(const EquityTableTab&) = delete;
    EquityTableTab& operator=(const EquityTableTab&) = delete;

    // The pool that runs the calculations. Given by the window on every switch to this
    // tab; connecting to its result signal happens once per pool.
    void setThreadPool(ThreadPool* pool);
    ThreadPool* getThreadPool() const { return threadPool.data(); }

    // State for the window and for tests.
    const WinEvaluationByHandHandle& currentHandle() const { return handle; }
    bool isCalculating() const { return calculating; }
    const WinEvaluationsByHand& getAllEvaluations() const { return allEvaluations; }
    // The records that passed the filters, best equity first, each hand written with its
    // higher card first.
    const WinEvaluationsByHand& getDisplayedEvaluations() const { return displayedEvaluations; }
    const AggregatedHands& getAggregatedHands() const { return aggregatedHands; }
    const DisplayedHands& getDisplayedHands() const { return displayedHands; }
    int getResultingCombinationCount() const { return resultingCombinationCount; }

    // Equity of a record as the filters see it: (ties x 0.5 + wins) / total in single
    // precision; NaN for a record with total 0 (a hand the board or dead cards block).
    static float equityOfRecord(const WinEvaluationByHand& record);

public slots:
    // The window's update: range texts of player 1 and player 2 (free, normal, compact or
    // technical spelling), board and dead card texts ("AhKd2c", may be empty). Starts a
    // new calculation for the selected player; bad board or dead card text shows its
    // reason in the tab instead.
    void updateInputs(const std::string& player1, const std::string& player2,
                      const std::string& board, const std::string& deadCards);
    // updateInputs with the texts of the last call.
    void Refresh();
    void RefreshDetailTable();
    void ExportTableToCSV();
    void onEquityLowerBoundChange(double value);
    void onEquityUpperBoundChange(double value);
    void onPercentileLowerBoundChange(double value);
    void onPercentileUpperBoundChange(double value);
    void onCopyRangeToClipBoardButton();
    void onSingularCombinationsStateChanged();
    void reactToFinishedCalculation(const ThreadHandle& handle,
                                    const WinEvaluationsByHand& winEvaluationsByHand);
    // Filter, matrix, table.
    void UpdateDisplay();
    void createTableWithDetailHands();
    void createTableWithAggregatedHands(AggregatedHands aggregatedHands);

private:
    void filter();
    void showLoading(bool loading);
    void showInputError(const QString& message);
    // The listed player's range text in technical form.
    const std::string& selectedRangeText() const;
    void fillTableRow(int row, const QString& hand, unsigned long long wins,
                      unsigned long long ties, unsigned long long total, int combinations);

    std::unique_ptr<Ui::EquityTableTab> ui;
    QSettings settings;
    QPointer<ThreadPool> threadPool;
    WinEvaluationByHandHandle handle;
    // The four texts of the last call, ranges in technical form.
    std::string range1;
    std::string range2;
    std::string board;
    std::string deadCards;
    QMovie* loadingMovie = nullptr;
    int resultingCombinationCount = 0;
    WinEvaluationsByHand allEvaluations;
    WinEvaluationsByHand displayedEvaluations;
    DisplayedHands displayedHands;
    AggregatedHands aggregatedHands;
    bool calculating = false;
};
