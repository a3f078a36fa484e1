// The two plot tabs from the click to the drawn picture, as the user waits for them.
//
// Each case drives a real tab on the offscreen platform with a real ThreadPool: the click
// (the button's slot), the calculations on Qt's global pool, the results coming back through
// the event loop, the bars or curves added and the plot drawn. Wall time is what counts, since
// the work is spread over the worker threads and the main thread.

#include "Range/HandRange.h"
#include "Range/HandRangeStringReader.h"
#include "calculation/ThreadPool.h"
#include "tabs/EquityEvolutionTab.h"
#include "tabs/EquityGraphTab.h"

#include <QApplication>
#include <QEventLoop>
#include <VelmaraEvaluatorBase.h>
#include <benchmark/benchmark.h>
#include <qcustomplot.h>

#include <memory>
#include <string>
#include <type_traits>

namespace {

// 266 combinations, 20.06 % of 1326.
const std::string twentyPercent = "22+,A2s+,K9s+,QTs+,JTs,T9s,98s,87s,76s,ATo+,KTo+,QJo";
const std::string flop = "Ah7d2c";

const std::string& fullRange() {
    static const std::string text =
        Range::HandRangeStringReader(Range::HandRange(true)).technicalText();
    return text;
}

void initialize() {
    static const bool done = [] {
        initializeAllBoardsBeforeCalculation();
        return true;
    }();
    (void)done;
}

QApplication& application() {
    static int argc = 1;
    static char name[] = "equityplots_bench";
    static char* argv[] = {name, nullptr};
    static std::unique_ptr<QApplication> app = [] {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        return std::make_unique<QApplication>(argc, argv);
    }();
    return *app;
}

// Runs the event loop until `done`, then once more, so that a replot queued by the last
// result has drawn.
// The loop sleeps while it waits, so that the CPU column is the main thread's own work.
template <typename Done>
void runUntil(Done done) {
    QEventLoop loop;
    while (!done())
        loop.processEvents(QEventLoop::WaitForMoreEvents);
    QApplication::processEvents();
}

// The evaluator's tables and the application, made once for all cases.
struct Prepared {
    Prepared() {
        initialize();
        application();
    }
};

// A tab shown on the offscreen platform with a pool of its own. The evolution tab is told the
// full range against the 20 % range on the flop, the graph tab the full range twice.
template <typename Tab>
struct ShownTab {
    Prepared prepared;
    ThreadPool pool;
    Range::HandRange full{true};
    Tab tab;

    ShownTab() {
        tab.resize(1100, 640);
        tab.show();
        tab.setThreadPool(&pool);
        if constexpr (std::is_same_v<Tab, EquityEvolutionTab>)
            tab.updateInputs(fullRange(), twentyPercent, flop, "");
        else
            tab.updateInputs(&full, &full, flop, "");
    }
    // One press of the tab's button, waited for until the picture is drawn.
    void run() {
        if constexpr (std::is_same_v<Tab, EquityEvolutionTab>) {
            tab.analyzeTurnCards();
            runUntil([this] { return !tab.isAnalysing(); });
        } else {
            tab.onCalculationButtonClicked();
            runUntil([this] { return !tab.isCalculating(); });
        }
    }
};

// Full range against a 20 % range on a flop: 49 turn cards, one getEquity after the other.
void BM_TurnAnalysisFullVs20Flop(benchmark::State& state) {
    ShownTab<EquityEvolutionTab> shown;
    for (auto _ : state)
        shown.run();
    int bars = 0;
    for (int suit = 0; suit < 4; ++suit)
        bars += shown.tab.bars(suit)->dataCount();
    state.counters["bars"] = bars;
}
BENCHMARK(BM_TurnAnalysisFullVs20Flop)->Unit(benchmark::kMillisecond)->UseRealTime();

// Full range against full range on a flop: two getWinEvaluationByHand at the same time, then
// 2 x 1326 steps sorted and drawn.
void BM_GraphFullVsFullFlop(benchmark::State& state) {
    ShownTab<EquityGraphTab> shown;
    for (auto _ : state)
        shown.run();
    state.counters["steps"] =
        static_cast<double>(shown.tab.stepsOf(0).size() + shown.tab.stepsOf(1).size());
}
BENCHMARK(BM_GraphFullVsFullFlop)->Unit(benchmark::kMillisecond)->UseRealTime();

// The main thread's share of the graph: both curves built from finished results and drawn,
// as the check box does it.
void BM_GraphRedrawFullVsFull(benchmark::State& state) {
    ShownTab<EquityGraphTab> shown;
    shown.run();
    for (auto _ : state)
        shown.tab.RedrawGraphs();
}
BENCHMARK(BM_GraphRedrawFullVsFull)->Unit(benchmark::kMillisecond);

// One drawing of the evolution plot with all 52 bars.
void BM_EvolutionReplotAllBars(benchmark::State& state) {
    ShownTab<EquityEvolutionTab> shown;
    shown.run();
    for (auto _ : state)
        shown.tab.plot()->replot();
}
BENCHMARK(BM_EvolutionReplotAllBars)->Unit(benchmark::kMillisecond);

} // namespace
