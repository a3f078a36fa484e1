// Benchmarks of the evaluator library, one per row of the performance table in
// docs/performance.md. All are single-threaded, exact and complete.
//
//   build/bench/evaluator/evaluator_benchmark --benchmark_filter=Preflop

#include "HandRank.h"
#include "Platform.h"
#include "PreflopMatchupNumbering.h"
#include "RankTables.h"
#include "ValueClasses.h"
#include "VelmaraEvaluatorBase.h"

#include <benchmark/benchmark.h>

#include <atomic>
#include <chrono>
#include <fstream>
#include <memory>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace {

std::string allHands() {
    const std::string values = "23456789TJQKA";
    std::string text;
    for (int high = 12; high >= 0; --high)
        for (int low = high; low >= 0; --low)
            text += (text.empty() ? "" : ",") + std::string{values[high], values[low]};
    return text;
}

// Technical text of the ranges of the table.
const std::string premiumsAndAKs = "QQ,KK,AA,AKs";                                   // QQ+,AKs
const std::string smallPairsAndAQs = "JJ,TT,99,88,77,66,55,44,33,22,AQs,AKs";        // JJ-22,AQs+
const std::string twentyPercent = "22,33,44,55,66,77,88,99,TT,JJ,QQ,KK,AA,"          // 22+
                                  "A2s,A3s,A4s,A5s,A6s,A7s,A8s,A9s,ATs,AJs,AQs,AKs," // A2s+
                                  "K9s,KTs,KJs,KQs,QTs,QJs,JTs,"                // K9s+,QTs+,JTs
                                  "ATo,AJo,AQo,AKo,KJo,KQo";                    // ATo+,KJo+
const std::string pairsAndBroadways = "22,33,44,55,66,77,88,99,TT,JJ,QQ,KK,AA," // 22+
                                      "ATs,AJs,AQs,AKs,KQs,AJo,AQo,AKo";        // ATs+,KQs,AJo+
const std::string premiums = "TT,JJ,QQ,KK,AA,AKs,AKo";                          // TT+,AKs,AKo

// 662 combinations (49.9 %): 22+,A2s+,K2s+,Q2s+,J4s+,T6s+,96s+,86s+,75s+,65s,54s,
// A2o+,K5o+,Q7o+,J8o+,T8o+,98o.
std::string topHalf() {
    const std::string values = "23456789TJQKA";
    std::string text;
    const auto add = [&](const std::string& token) { text += (text.empty() ? "" : ",") + token; };
    for (char v : values)
        add(std::string{v, v});
    const auto run = [&](char high, char lowestLow, char kind) {
        for (auto low = values.find(lowestLow); low < values.find(high); ++low)
            add(std::string{high, values[low], kind});
    };
    run('A', '2', 's');
    run('K', '2', 's');
    run('Q', '2', 's');
    run('J', '4', 's');
    run('T', '6', 's');
    run('9', '6', 's');
    run('8', '6', 's');
    run('7', '5', 's');
    run('6', '5', 's');
    run('5', '4', 's');
    run('A', '2', 'o');
    run('K', '5', 'o');
    run('Q', '7', 'o');
    run('J', '8', 'o');
    run('T', '8', 'o');
    run('9', '8', 'o');
    return text;
}

void reportEquity(benchmark::State& state, const LongedEvaluation& e) {
    state.counters["total"] = static_cast<double>(e.total);
    state.counters["equity1"] =
        e.total ? (double(e.wins1) + double(e.ties) * 0.5) / double(e.total) : 0.0;
}

void runEquity(benchmark::State& state, const std::string& r1, const std::string& r2,
               const std::string& board, const std::string& dead) {
    initializeAllBoardsBeforeCalculation();
    volatile bool stop = false;
    LongedEvaluation e;
    for (auto _ : state) {
        e = board.empty() ? getEquity(r1, r2, dead, stop) : getEquity(r1, r2, board, dead, stop);
        benchmark::DoNotOptimize(e);
    }
    reportEquity(state, e);
}

void BM_PreflopAhAsVsKdKc(benchmark::State& state) {
    runEquity(state, "AhAs", "KdKc", "", "");
}
BENCHMARK(BM_PreflopAhAsVsKdKc)->Unit(benchmark::kMillisecond);

void BM_PreflopAAvsKK(benchmark::State& state) {
    runEquity(state, "AA", "KK", "", "");
}
BENCHMARK(BM_PreflopAAvsKK)->Unit(benchmark::kMillisecond);

void BM_PreflopPremiumsVsSmallPairs(benchmark::State& state) {
    runEquity(state, premiumsAndAKs, smallPairsAndAQs, "", "");
}
BENCHMARK(BM_PreflopPremiumsVsSmallPairs)->Unit(benchmark::kMillisecond);

void BM_Preflop20PercentVs20Percent(benchmark::State& state) {
    runEquity(state, twentyPercent, twentyPercent, "", "");
}
BENCHMARK(BM_Preflop20PercentVs20Percent)->Unit(benchmark::kMillisecond);

void BM_PreflopAllVsAll(benchmark::State& state) {
    const std::string all = allHands();
    runEquity(state, all, all, "", "");
}
BENCHMARK(BM_PreflopAllVsAll)->Unit(benchmark::kMillisecond);

void BM_Preflop20PercentOneDeadCard(benchmark::State& state) {
    runEquity(state, twentyPercent, twentyPercent, "", "2d");
}
BENCHMARK(BM_Preflop20PercentOneDeadCard)->Unit(benchmark::kMillisecond);

// All hands against all hands with 1 to 8 dead cards of mixed suits: the most hands and
// the least suit symmetry a preflop case with dead cards can have.
void BM_PreflopAllVsAllDeadCards(benchmark::State& state) {
    const std::string cards = "2d3h4s5c6d7h8s9c";
    runEquity(state, allHands(), allHands(), "", cards.substr(0, 2 * state.range(0)));
}
BENCHMARK(BM_PreflopAllVsAllDeadCards)
    ->DenseRange(1, 8)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);

// The same dead cards against a single matchup, a few classes against a few, and the 20 %
// range against itself.
void BM_PreflopAhAsVsKdKcDeadCards(benchmark::State& state) {
    const std::string cards = "2d3h4s5c6d7h8s9c";
    runEquity(state, "AhAs", "KdKc", "", cards.substr(0, 2 * state.range(0)));
}
BENCHMARK(BM_PreflopAhAsVsKdKcDeadCards)->DenseRange(1, 8)->Unit(benchmark::kMillisecond);

void BM_PreflopPremiumsDeadCards(benchmark::State& state) {
    const std::string cards = "2d3h4s5c6d7h8s9c";
    runEquity(state, premiums, premiums, "", cards.substr(0, 2 * state.range(0)));
}
BENCHMARK(BM_PreflopPremiumsDeadCards)->DenseRange(1, 8)->Unit(benchmark::kMillisecond);

void BM_Preflop20PercentDeadCards(benchmark::State& state) {
    const std::string cards = "2d3h4s5c6d7h8s9c";
    runEquity(state, twentyPercent, twentyPercent, "", cards.substr(0, 2 * state.range(0)));
}
BENCHMARK(BM_Preflop20PercentDeadCards)
    ->DenseRange(1, 8)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(2);

void BM_FlopPairsAndBroadwaysVsPremiums(benchmark::State& state) {
    runEquity(state, pairsAndBroadways, premiums, "Ah7d2c", "");
}
BENCHMARK(BM_FlopPairsAndBroadwaysVsPremiums)->Unit(benchmark::kMillisecond);

void BM_TurnPairsAndBroadwaysVsPremiums(benchmark::State& state) {
    runEquity(state, pairsAndBroadways, premiums, "Ah7d2cKs", "");
}
BENCHMARK(BM_TurnPairsAndBroadwaysVsPremiums)->Unit(benchmark::kMicrosecond);

void BM_FlopTopHalfVsTopHalf(benchmark::State& state) {
    runEquity(state, topHalf(), topHalf(), "Ah7d2c", "");
}
BENCHMARK(BM_FlopTopHalfVsTopHalf)->Unit(benchmark::kMillisecond);

void BM_FlopAllVsAll(benchmark::State& state) {
    runEquity(state, allHands(), allHands(), "Ah7d2c", "");
}
BENCHMARK(BM_FlopAllVsAll)->Unit(benchmark::kMillisecond);

void BM_WinEvaluationByHandFlopAllVsAll(benchmark::State& state) {
    initializeAllBoardsBeforeCalculation();
    const std::string all = allHands();
    volatile bool stop = false;
    std::size_t hands = 0;
    for (auto _ : state) {
        const auto result = getWinEvaluationByHand(all, all, "Ah7d2c", "", stop);
        hands = result.size();
        benchmark::DoNotOptimize(result.data());
    }
    state.counters["hands"] = static_cast<double>(hands);
}
BENCHMARK(BM_WinEvaluationByHandFlopAllVsAll)->Unit(benchmark::kMillisecond);

std::vector<qve::CardMask> randomSevenCardHands(std::size_t count) {
    std::mt19937_64 random(42);
    std::vector<qve::CardMask> hands(count);
    for (qve::CardMask& hand : hands) {
        hand = 0;
        while (qve::popcount64(hand) < 7)
            hand |= qve::CardMask(1) << (random() % 52);
    }
    return hands;
}

// The public ranking entry (any 5 to 7 cards).
void BM_RankCardsRandomSevenCardHands(benchmark::State& state) {
    const auto hands = randomSevenCardHands(1 << 16);
    qve::rankCards(hands[0]);
    for (auto _ : state) {
        std::uint32_t sum = 0;
        for (qve::CardMask hand : hands)
            sum += qve::rankCards(hand);
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * std::int64_t(hands.size()));
}
BENCHMARK(BM_RankCardsRandomSevenCardHands);

// The seven-card path the enumeration uses.
void BM_StrengthSevenRandomHands(benchmark::State& state) {
    const auto hands = randomSevenCardHands(1 << 16);
    const qve::RankTables& tables = qve::rankTables();
    for (auto _ : state) {
        std::uint32_t sum = 0;
        for (qve::CardMask hand : hands)
            sum += qve::strengthSeven(tables, hand);
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * std::int64_t(hands.size()));
}
BENCHMARK(BM_StrengthSevenRandomHands);

long peakResidentKilobytes() {
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line))
        if (line.rfind("VmHWM:", 0) == 0)
            return std::stol(line.substr(6));
    return -1;
}

// What initializeAllBoardsBeforeCalculation builds: the grid counts and the value class
// order of every board value set (the ranking tables, the preflop matchup index and the
// matchup counts are constant data of the library, written at build time).
// The counter peak_rss_kb is the peak resident size of the benchmark process after the
// real call.
void BM_InitializeAllBoards(benchmark::State& state) {
    for (auto _ : state) {
        auto classes = std::make_unique<qve::ValueClassTables>();
        classes->rankAllValueSets();
        benchmark::DoNotOptimize(classes.get());
    }
    initializeAllBoardsBeforeCalculation();
    state.counters["peak_rss_kb"] = static_cast<double>(peakResidentKilobytes());
}
BENCHMARK(BM_InitializeAllBoards)->Unit(benchmark::kMillisecond);

// The ranking tables built from the rules, as the table generator does at build time (and as
// every process did at start-up before the tables became constant data).
void BM_BuildRankTablesFromRules(benchmark::State& state) {
    for (auto _ : state) {
        auto tables = std::make_unique<qve::RankTables>();
        qve::buildRankTables(*tables);
        benchmark::DoNotOptimize(tables.get());
    }
}
BENCHMARK(BM_BuildRankTablesFromRules)->Unit(benchmark::kMillisecond);

// The matchup classes worked out pair by pair, as the table generator does at build time
// (and as every process did at start-up before the compact index became constant data).
void BM_NumberPreflopMatchups(benchmark::State& state) {
    for (auto _ : state) {
        auto numbering = std::make_unique<qve::PreflopMatchupNumbering>();
        benchmark::DoNotOptimize(numbering.get());
    }
}
BENCHMARK(BM_NumberPreflopMatchups)->Unit(benchmark::kMillisecond);

// Time from setting the stop flag to TerminationOccured arriving, on a long calculation.
void BM_StopLatency(benchmark::State& state) {
    initializeAllBoardsBeforeCalculation();
    const std::string all = allHands();
    const bool byHand = state.range(0) != 0;
    double worst = 0.0;
    for (auto _ : state) {
        volatile bool stop = false;
        std::atomic<bool> running{false};
        std::chrono::steady_clock::time_point stopped;
        std::thread stopper([&] {
            while (!running)
                std::this_thread::yield();
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            stopped = std::chrono::steady_clock::now();
            stop = true;
        });
        try {
            running = true;
            if (byHand)
                getWinEvaluationByHand(all, all, "", "2d3h4s5c6d7h", stop);
            else
                getEquity(all, all, "2d3h4s5c6d7h", stop);
        } catch (const TerminationOccured&) {
        }
        const auto left = std::chrono::steady_clock::now();
        stopper.join();
        const double latency = std::chrono::duration<double>(left - stopped).count();
        worst = std::max(worst, latency);
        state.SetIterationTime(latency);
    }
    state.counters["worst_ms"] = worst * 1000.0;
}
BENCHMARK(BM_StopLatency)
    ->Arg(0)
    ->Arg(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(20);

} // namespace
