// The true equity of a training item: one dealt hand against a range of about half of all
// hands, on each street. The player is typing a guess meanwhile, so the answer should be
// there within 50 ms. The "Direct" rows call the evaluator as the item's task does; the
// "ThroughPool" rows add what the page adds: the task on Qt's global pool, the watcher and
// the queued result on the main thread's event loop.

#include "Range/HandRange.h"
#include "Range/HandRangeStringManipulator.h"
#include "Range/HandRangeStringReader.h"
#include "Range/RandomSource.h"
#include "calculation/ThreadPool.h"
#include "training/EquityTrainingDeal.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <VelmaraEvaluatorBase.h>
#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <vector>

namespace {

// About half of all hands (the count is reported as the counter "villainCombinations").
const char* const halfOfAllHands = "22+,A2s+,K2s+,Q4s+,J6s+,T6s+,96s+,86s+,75s+,64s+,54s,A2o+,"
                                   "K5o+,Q7o+,J8o+,T8o+,98o";

Range::HandRange rangeOf(const std::string& text) {
    Range::HandRange range;
    Range::HandRangeStringManipulator(range).setFree(text);
    return range;
}

void initialize() {
    static const bool done = [] {
        initializeAllBoardsBeforeCalculation();
        return true;
    }();
    (void)done;
}

QCoreApplication& application() {
    static int argc = 1;
    static char name[] = "training_bench";
    static char* argv[] = {name, nullptr};
    static std::unique_ptr<QCoreApplication> app = std::make_unique<QCoreApplication>(argc, argv);
    return *app;
}

// 64 items dealt from any hand, on boards completed for the street, so that the rows time
// many different hands rather than one lucky one.
std::vector<EquityTrainingDeal::Cards> items(EquityTrainingRandomness street) {
    Range::RandomSource random(2024);
    const Range::HandRange anyHand(true);
    std::vector<EquityTrainingDeal::Cards> dealt;
    for (int index = 0; index < 64; ++index)
        dealt.push_back(*EquityTrainingDeal::deal(anyHand, "", "", street, random));
    return dealt;
}

void reportRange(benchmark::State& state, const std::string& technical) {
    state.counters["villainCombinations"] =
        static_cast<double>(rangeOf(technical).combinationCount());
}

void BM_CorrectEquityDirect(benchmark::State& state) {
    initialize();
    const auto street = static_cast<EquityTrainingRandomness>(state.range(0));
    const std::string villain =
        Range::HandRangeStringReader(rangeOf(halfOfAllHands)).technicalText();
    const std::vector<EquityTrainingDeal::Cards> dealt = items(street);
    std::size_t next = 0;
    for (auto _ : state) {
        const EquityTrainingDeal::Cards& item = dealt[next++ % dealt.size()];
        volatile bool stop = false;
        const LongedEvaluation result =
            street == EquityTrainingRandomness::None
                ? getEquity(item.heroHand, villain, "", stop)
                : getEquity(item.heroHand, villain, item.board, "", stop);
        benchmark::DoNotOptimize(result.total);
    }
    reportRange(state, villain);
}

void BM_CorrectEquityThroughPool(benchmark::State& state) {
    initialize();
    QCoreApplication& app = application();
    (void)app;
    const auto street = static_cast<EquityTrainingRandomness>(state.range(0));
    const std::string villain =
        Range::HandRangeStringReader(rangeOf(halfOfAllHands)).technicalText();
    const std::vector<EquityTrainingDeal::Cards> dealt = items(street);
    ThreadPool pool;
    QEventLoop loop;
    EquityCalculationHandle handle;
    QObject::connect(&pool, &ThreadPool::EquityCalculationFinished, &loop,
                     [&](const ThreadHandle& finished, const LongedEvaluation& result) {
                         if (finished == handle) {
                             benchmark::DoNotOptimize(result.total);
                             loop.quit();
                         }
                     });
    std::size_t next = 0;
    for (auto _ : state) {
        const EquityTrainingDeal::Cards& item = dealt[next++ % dealt.size()];
        handle = pool.createEquityCalculationHandle();
        handle.Start(item.heroHand, villain,
                     street == EquityTrainingRandomness::None ? std::string() : item.board, "");
        loop.exec();
    }
    reportRange(state, villain);
}

// The argument is the street: 0 preflop (no board), 1 flop, 2 turn, 3 river.
BENCHMARK(BM_CorrectEquityDirect)->DenseRange(0, 3)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CorrectEquityThroughPool)
    ->DenseRange(0, 3)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

} // namespace
