#pragma once

// Shared by the tests of the equity evolution and equity graph tabs: reference numbers straight
// from the evaluator, the graph's step formula written out on its own, and small helpers to
// wait for the event loop and to look at a plot.

#include "Range/HandRange.h"
#include "Range/HandRangeStringManipulator.h"
#include "Range/HandRangeStringReader.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QMouseEvent>
#include <QTest>
#include <QVector>
#include <VelmaraEvaluatorBase.h>
#include <qcustomplot.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

namespace EquityPlotsTestSupport {

inline void initializeEvaluatorOnce() {
    static const bool done = [] {
        initializeAllBoardsBeforeCalculation();
        return true;
    }();
    (void)done;
}

// A range from free text ("QQ+,AKs").
inline Range::HandRange rangeOf(const std::string& freeText) {
    Range::HandRange range;
    Range::HandRangeStringManipulator(range).setFree(freeText);
    return range;
}

inline std::string technical(const std::string& freeText) {
    return Range::HandRangeStringReader(rangeOf(freeText)).technicalText();
}

// The equity of the first range on a board, by the evaluator, in this thread.
inline double referenceEquity(const std::string& range1, const std::string& range2,
                              const std::string& board, const std::string& dead) {
    volatile bool stop = false;
    const LongedEvaluation result = getEquity(range1, range2, board, dead, stop);
    return (static_cast<double>(result.wins1) + static_cast<double>(result.ties) * 0.5) /
           static_cast<double>(result.total);
}

inline WinEvaluationsByHand referenceByHand(const std::string& range1, const std::string& range2,
                                            const std::string& board, const std::string& dead) {
    volatile bool stop = false;
    return board.empty() ? getWinEvaluationByHand(range1, range2, dead, stop)
                         : getWinEvaluationByHand(range1, range2, board, dead, stop);
}

struct Curve {
    std::vector<double> keys;
    std::vector<double> values;
};

// The points of one curve of the graph, computed from the records as the graph's rule says:
// records of total 0 dropped; in single precision, each record a flat step of width 1/n
// (with a gap of 0.00001 at both ends) at its equity, or with cumulation at the running sum;
// the heights alone sorted from the largest down; with cumulation divided by the last sum.
inline Curve expectedCurve(const WinEvaluationsByHand& all, bool cumulate) {
    std::vector<WinEvaluationByHand> records;
    for (const WinEvaluationByHand& record : all)
        if (record.total != 0)
            records.push_back(record);
    Curve curve;
    if (records.empty())
        return curve;
    const float w = 1.0f / static_cast<float>(records.size());
    float s = 0.0f;
    std::vector<float> heights;
    for (std::size_t k = 0; k < records.size(); ++k) {
        const float equity =
            (static_cast<float>(records[k].ties) * 0.5f + static_cast<float>(records[k].wins)) /
            static_cast<float>(records[k].total);
        s = cumulate ? s + equity : equity;
        const float c = (static_cast<float>(k) + 0.5f) * w;
        curve.keys.push_back(c - w * 0.5f + 0.00001f);
        curve.keys.push_back(c + w * 0.5f - 0.00001f);
        heights.push_back(s);
        heights.push_back(s);
    }
    std::sort(heights.begin(), heights.end(), [](float a, float b) { return a > b; });
    for (float h : heights)
        curve.values.push_back(cumulate ? h / s : h);
    return curve;
}

// What a graph of the plot holds.
inline Curve pointsOf(const QCPGraph* graph) {
    Curve curve;
    for (auto it = graph->data()->constBegin(); it != graph->data()->constEnd(); ++it) {
        curve.keys.push_back(it->key);
        curve.values.push_back(it->value);
    }
    return curve;
}

inline bool waitUntil(const std::function<bool()>& done, int limitMs = 30000) {
    return QTest::qWaitFor(done, limitMs);
}

// Lets the event loop run for `ms`, whatever happens.
inline void runEventLoopFor(int ms) {
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < ms)
        QTest::qWait(5);
}

// A plain mouse move to `position` of `widget`, as the window system delivers it.
inline void moveMouse(QWidget* widget, const QPoint& position) {
    QMouseEvent move(QEvent::MouseMove, position, widget->mapToGlobal(position), Qt::NoButton,
                     Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &move);
}

} // namespace EquityPlotsTestSupport
