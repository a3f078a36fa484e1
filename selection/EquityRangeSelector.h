#pragma once

#include "calculation/ThreadHandle.h"
#include "calculation/WinEvaluationByHandHandle.h"
#include "selection/HandStrengthSelection.h"

#include <QObject>
#include <VelmaraEvaluatorBase.h>

#include <string>
#include <vector>

class ThreadPool;

// Picks the hands of a range by their equity against another range: each hand's equity
// comes from a by-hand win evaluation in the background; the hands within the equity bounds
// are ranked best first, and those within the percentile bounds of that ranking are the
// result. All bounds are shares between 0 and 1.
//
// Percentiles count hands, or, when the records are hand classes, combinations: the classes
// are taken from the first whose preceding combinations reach the lower bound up to (not
// including) the first whose preceding combinations reach the upper bound.
//
// One calculation at a time: a new start or abort() stops the one running, and a result of
// any handle but the current one is dropped.
class EquityRangeSelector : public QObject {
    Q_OBJECT

public:
    // Uses `pool`, or a pool of its own when it is null.
    explicit EquityRangeSelector(ThreadPool* pool, QObject* parent = nullptr);

    // Starts the evaluation of `rangeText` (technical) against `otherText` on `board` with
    // `deadCards` (card text). Bounds are between 0 and 1.
    void start(const std::string& rangeText, const std::string& otherText, const std::string& board,
               const std::string& deadCards, float equityLower, float equityUpper,
               float percentileLower, float percentileUpper);
    void abort();
    bool isRunning() const;

    // The hands that a finished evaluation yields for the bounds, `deadMask` the board and
    // dead cards as a card mask: steps 5 to 8 of a selection, without threads.
    static std::vector<BoardType> selectFrom(const WinEvaluationsByHand& records, float equityLower,
                                             float equityUpper, float percentileLower,
                                             float percentileUpper, BoardType deadMask);

signals:
    void calculationFinished(std::vector<BoardType> hands);
    // The pool's result, relayed for listeners of this selector.
    void WinEvaluationByHandFinished(ThreadHandle handle,
                                     WinEvaluationsByHand winEvaluationsByHand);

private:
    void reactToFinishedCalculation(const ThreadHandle& handle,
                                    const WinEvaluationsByHand& records);

    ThreadPool* pool;
    WinEvaluationByHandHandle handle;
    std::string rangeText;
    std::string otherText;
    std::string board;
    std::string deadCards;
    float equityLower = 0.0f;
    float equityUpper = 1.0f;
    float percentileLower = 0.0f;
    float percentileUpper = 1.0f;
};
