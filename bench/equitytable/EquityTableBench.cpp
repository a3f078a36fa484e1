// Per-hand equities for the equity table tab, and the cost of showing them.
//
// The calculation rows call the evaluator as the tab's task does (full range listed,
// against a 20 % range); the display rows feed a finished result to a real EquityTableTab
// on the offscreen platform and time filter, matrix and table together, which is what
// runs on the main thread when a result arrives.

#include "Range/HandRange.h"
#include "Range/HandRangeStringReader.h"
#include "Range/RangeStringOperations.h"
#include "calculation/ThreadPool.h"
#include "tabs/EquityTableTab.h"

#include <QApplication>
#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QElapsedTimer>
#include <VelmaraEvaluatorBase.h>
#include <benchmark/benchmark.h>

#include <memory>
#include <string>

namespace {

// 266 combinations, 20.06 % of 1326.
const std::string twentyPercent = "22+,A2s+,K9s+,QTs+,JTs,T9s,98s,87s,76s,ATo+,KTo+,QJo";
const std::string flop = "Kh9h4c";

const std::string& fullRange() {
    static const std::string text =
        Range::HandRangeStringReader(Range::HandRange(true)).technicalText();
    return text;
}
const std::string& twentyPercentTechnical() {
    static const std::string text = Range::expand(twentyPercent);
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
    static char name[] = "equitytable_bench";
    static char* argv[] = {name, nullptr};
    static std::unique_ptr<QApplication> app = [] {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        return std::make_unique<QApplication>(argc, argv);
    }();
    return *app;
}

void BM_WinEvaluationByHand_FullVs20Preflop(benchmark::State& state) {
    initialize();
    volatile bool stop = false;
    for (auto _ : state) {
        auto result = getWinEvaluationByHand(fullRange(), twentyPercentTechnical(), "", stop);
        benchmark::DoNotOptimize(result.data());
    }
}
BENCHMARK(BM_WinEvaluationByHand_FullVs20Preflop)->Unit(benchmark::kMillisecond);

void BM_WinEvaluationByHand_FullVs20Flop(benchmark::State& state) {
    initialize();
    volatile bool stop = false;
    for (auto _ : state) {
        auto result = getWinEvaluationByHand(fullRange(), twentyPercentTechnical(), flop, "", stop);
        benchmark::DoNotOptimize(result.data());
    }
}
BENCHMARK(BM_WinEvaluationByHand_FullVs20Flop)->Unit(benchmark::kMillisecond);

// A tab with a finished calculation of its own, so that fed results count as its own.
struct PreparedTab {
    ThreadPool pool;
    EquityTableTab tab;

    explicit PreparedTab(const std::string& board) {
        tab.setThreadPool(&pool);
        tab.updateInputs(fullRange(), twentyPercent, board, "");
        QElapsedTimer clock;
        clock.start();
        while (tab.isCalculating() && clock.elapsed() < 60000) {
            QApplication::processEvents(QEventLoop::AllEvents, 10);
        }
    }
};

// All 1326 hands of the preflop result as single combinations, sorted by equity.
void BM_TabShowsResult_1326Rows(benchmark::State& state) {
    initialize();
    application();
    PreparedTab prepared(flop); // a board opens "Show Singular Combinations"
    prepared.tab.findChild<QCheckBox*>("showCombinationsFlag")->setChecked(true);
    volatile bool stop = false;
    const WinEvaluationsByHand preflop =
        getWinEvaluationByHand(fullRange(), twentyPercentTechnical(), "", stop);
    for (auto _ : state) {
        prepared.tab.reactToFinishedCalculation(prepared.tab.currentHandle(), preflop);
    }
    state.counters["rows"] = static_cast<double>(prepared.tab.getDisplayedEvaluations().size());
}
BENCHMARK(BM_TabShowsResult_1326Rows)->Unit(benchmark::kMillisecond);

// The flop result by class: 169 rows.
void BM_TabShowsResult_Classes(benchmark::State& state) {
    initialize();
    application();
    PreparedTab prepared(flop);
    prepared.tab.findChild<QCheckBox*>("showCombinationsFlag")->setChecked(false);
    const WinEvaluationsByHand result = prepared.tab.getAllEvaluations();
    for (auto _ : state) {
        prepared.tab.reactToFinishedCalculation(prepared.tab.currentHandle(), result);
    }
}
BENCHMARK(BM_TabShowsResult_Classes)->Unit(benchmark::kMillisecond);

// Preflop by class: the combinations of every class are recounted against the range.
void BM_TabShowsResult_PreflopClasses(benchmark::State& state) {
    initialize();
    application();
    PreparedTab prepared("");
    const WinEvaluationsByHand result = prepared.tab.getAllEvaluations();
    for (auto _ : state) {
        prepared.tab.reactToFinishedCalculation(prepared.tab.currentHandle(), result);
    }
}
BENCHMARK(BM_TabShowsResult_PreflopClasses)->Unit(benchmark::kMillisecond);

// One move of a bound spin box on the 1326 rows: filter and refill without calculating.
void BM_TabBoundChange_1326Rows(benchmark::State& state) {
    initialize();
    application();
    PreparedTab prepared(flop);
    prepared.tab.findChild<QCheckBox*>("showCombinationsFlag")->setChecked(true);
    volatile bool stop = false;
    prepared.tab.reactToFinishedCalculation(
        prepared.tab.currentHandle(),
        getWinEvaluationByHand(fullRange(), twentyPercentTechnical(), "", stop));
    auto* lower = prepared.tab.findChild<QDoubleSpinBox*>("equityLowerBound");
    double value = 0.0;
    for (auto _ : state) {
        value = value == 0.0 ? 0.01 : 0.0; // keeps all rows, forces the refill
        lower->setValue(value);
    }
}
BENCHMARK(BM_TabBoundChange_1326Rows)->Unit(benchmark::kMillisecond);

} // namespace
