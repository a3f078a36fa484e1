// Hit evaluations of a schema the size of "Standard" (its made hand, draw and combo draw
// groups: 127 keys in three calls), full range against full range, on flop, turn and river;
// and showdown by hand strength against plain equity for the same input.

#include "VelmaraEvaluatorBase.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <string>
#include <thread>
#include <vector>

namespace {

std::string fullRange() {
    const std::string ranks = "AKQJT98765432";
    std::string text;
    for (std::size_t i = 0; i < ranks.size(); ++i)
        for (std::size_t j = i; j < ranks.size(); ++j) {
            const std::string two = std::string(1, ranks[i]) + ranks[j];
            text += text.empty() ? "" : ",";
            text += i == j ? two : two + "s," + two + "o";
        }
    return text;
}

const std::string typical1 = "22,33,44,55,66,77,88,99,TT,JJ,QQ,KK,AA,A2s,A3s,A4s,A5s,A6s,A7s,"
                             "A8s,A9s,ATs,AJs,AQs,AKs,KTs,KJs,KQs,QTs,QJs,JTs,T9s,98s,87s,76s,"
                             "ATo,AJo,AQo,AKo,KJo,KQo,QJo";
const std::string typical2 = "66,77,88,99,TT,JJ,QQ,KK,AA,ATs,AJs,AQs,AKs,KQs,AQo,AKo";

using Keys = std::vector<std::pair<unsigned long long, unsigned long long>>;

// The made hand rows, the draw rows (excluding made hands with hole cards) and the combo
// draw rows of the built-in schema.
const Keys madeHands = {{0x1, 0},
                        {0x2, 0},
                        {0x4, 0},
                        {0x8, 0},
                        {0x208, 0},
                        {0x408, 0},
                        {0x808, 0},
                        {0x1008, 0},
                        {0x2008, 0},
                        {0x4008, 0},
                        {0x8, 0x7E00},
                        {0x10, 0},
                        {0x20, 0},
                        {0x10020, 0},
                        {0x20020, 0},
                        {0x60020, 0},
                        {0xA0020, 0},
                        {0x120020, 0},
                        {0x20020, 0x1C0000},
                        {0x40, 0},
                        {0x400040, 0},
                        {0x408040, 0},
                        {0xC00040, 0},
                        {0x1400040, 0},
                        {0x10040, 0},
                        {0x10240, 0},
                        {0x10440, 0},
                        {0x10840, 0},
                        {0x10040, 0xE00},
                        {0x20040, 0},
                        {0x20240, 0},
                        {0x20440, 0},
                        {0x20840, 0},
                        {0x4040, 0},
                        {0x80, 0},
                        {0x8080, 0},
                        {0x280, 0},
                        {0x40280, 0},
                        {0x80280, 0},
                        {0x100280, 0},
                        {0x280, 0x1C0000},
                        {0x8000000000080, 0},
                        {0x480, 0},
                        {0x40480, 0},
                        {0x80480, 0},
                        {0x100480, 0},
                        {0x480, 0x1C0000},
                        {0x10000000000080, 0},
                        {0x880, 0},
                        {0x40880, 0},
                        {0x80880, 0},
                        {0x100880, 0},
                        {0x880, 0x1C0000},
                        {0x20000000000080, 0},
                        {0x80, 0x3800000000CE00},
                        {0x4080, 0},
                        {0x100, 0}};
const Keys draws = {{0xC000000, 0x433E00},         {0x14000000, 0x433E00},
                    {0x4000000, 0x433E00},         {0x40000004000000, 0x433E00},
                    {0x40000084000000, 0x433E00},  {0x40000104000000, 0x433E00},
                    {0x40000204000000, 0x433E00},  {0x40000404000000, 0x433E00},
                    {0x40000804000000, 0x433E00},  {0x40000004000000, 0xF80433E00},
                    {0x4200000, 0x433E00},         {0x84200000, 0x433E00},
                    {0x104200000, 0x433E00},       {0x204200000, 0x433E00},
                    {0x404200000, 0x433E00},       {0x804200000, 0x433E00},
                    {0x4200000, 0xF80433E00},      {0x8000000, 0x433E00},
                    {0x100000008000000, 0x433E00}, {0x80000008000000, 0x433E00},
                    {0x10000000, 0x433E00},        {0x100000010000000, 0x433E00},
                    {0x80000010000000, 0x433E00},  {0x400000000000, 0x433E00},
                    {0x2400000000000, 0x433E00},   {0x400000000000, 0x2000000433E00},
                    {0x20000000, 0x433E00},        {0x40000020000000, 0x433E00},
                    {0x400000A0000000, 0x433E00},  {0x40000120000000, 0x433E00},
                    {0x40000220000000, 0x433E00},  {0x40000420000000, 0x433E00},
                    {0x40000820000000, 0x433E00},  {0x40000020000000, 0xF80433E00},
                    {0x20200000, 0x433E00},        {0xA0200000, 0x433E00},
                    {0x120200000, 0x433E00},       {0x220200000, 0x433E00},
                    {0x420200000, 0x433E00},       {0x820200000, 0x433E00},
                    {0x20200000, 0xF80433E00},     {0x40000000, 0x433E00},
                    {0x100000040000000, 0x433E00}, {0x100001040000000, 0x433E00},
                    {0x100002040000000, 0x433E00}, {0x100004040000000, 0x433E00},
                    {0x100008040000000, 0x433E00}, {0x80000040000000, 0x433E00},
                    {0x80001040000000, 0x433E00},  {0x80002040000000, 0x433E00},
                    {0x80004040000000, 0x433E00},  {0x80008040000000, 0x433E00}};
const Keys combos = {{0x4000080, 0},
                     {0x84000080, 0},
                     {0x4000080, 0x80000000},
                     {0x8000080, 0},
                     {0x10000080, 0},
                     {0x4000040, 0},
                     {0x84000040, 0},
                     {0x4000040, 0x80000000},
                     {0x8000040, 0},
                     {0x10000040, 0},
                     {0x400004000000, 0},
                     {0x400084000000, 0},
                     {0x400004000000, 0x80000000},
                     {0x400008000000, 0},
                     {0x400010000000, 0},
                     {0x400060000000, 0},
                     {0x4000E0000000, 0},
                     {0x400060000000, 0x80000000}};

DetailHandEvaluations group(const Keys& keys) {
    DetailHandEvaluations evaluations;
    for (const auto& k : keys) {
        DetailHandEvaluation entry;
        entry.key = HandStrengthKey(k.first, k.second);
        evaluations.details.push_back(entry);
    }
    return evaluations;
}

void standardSchemaHits(benchmark::State& state, const std::string& board) {
    const std::string range = fullRange();
    std::size_t keys = 0;
    for (auto _ : state) {
        keys = 0;
        for (const Keys* g : {&madeHands, &draws, &combos}) {
            DetailHandEvaluations evaluations = group(*g);
            getHitEvaluationClassical(range, range, board, "", evaluations);
            keys += evaluations.details.size();
            benchmark::DoNotOptimize(evaluations.total);
        }
    }
    state.counters["keys"] = double(keys);
}

void BM_StandardSchemaHits_Flop(benchmark::State& s) {
    standardSchemaHits(s, "Kh9h4c");
}
void BM_StandardSchemaHits_Turn(benchmark::State& s) {
    standardSchemaHits(s, "Kh9h4c2d");
}
void BM_StandardSchemaHits_River(benchmark::State& s) {
    standardSchemaHits(s, "Kh9h4c2d7s");
}
BENCHMARK(BM_StandardSchemaHits_Flop)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_StandardSchemaHits_Turn)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_StandardSchemaHits_River)->Unit(benchmark::kMillisecond);

std::vector<DetailWinEvaluation> winEntries() {
    std::vector<DetailWinEvaluation> entries;
    for (const auto& k : madeHands)
        entries.emplace_back(HandStrengthKey(k.first, k.second), "");
    return entries;
}

void detailWin(benchmark::State& state, const std::string& r1, const std::string& r2,
               const std::string& board) {
    volatile bool stop = false;
    // The call overwrites the counters of the entries it is given: one list serves every
    // round, and building it stays out of the figure.
    auto entries = winEntries();
    for (auto _ : state) {
        getDetailWinEvaluation(r1, r2, board, "", entries, stop);
        benchmark::DoNotOptimize(entries.front().wins);
    }
}

void equity(benchmark::State& state, const std::string& r1, const std::string& r2,
            const std::string& board) {
    volatile bool stop = false;
    for (auto _ : state) {
        const LongedEvaluation result = getEquity(r1, r2, board, "", stop);
        benchmark::DoNotOptimize(result.total);
    }
}

void BM_DetailWinEvaluation_FullFlop(benchmark::State& s) {
    detailWin(s, fullRange(), fullRange(), "Kh9h4c");
}
void BM_Equity_FullFlop(benchmark::State& s) {
    equity(s, fullRange(), fullRange(), "Kh9h4c");
}
void BM_DetailWinEvaluation_TypicalFlop(benchmark::State& s) {
    detailWin(s, typical1, typical2, "Kh9h4c");
}
void BM_Equity_TypicalFlop(benchmark::State& s) {
    equity(s, typical1, typical2, "Kh9h4c");
}
void BM_DetailWinEvaluation_TypicalTurn(benchmark::State& s) {
    detailWin(s, typical1, typical2, "Kh9h4c2d");
}
void BM_Equity_TypicalTurn(benchmark::State& s) {
    equity(s, typical1, typical2, "Kh9h4c2d");
}
void BM_DetailWinEvaluation_FullTurn(benchmark::State& s) {
    detailWin(s, fullRange(), fullRange(), "Kh9h4c2d");
}
void BM_Equity_FullTurn(benchmark::State& s) {
    equity(s, fullRange(), fullRange(), "Kh9h4c2d");
}
void BM_DetailWinEvaluation_TypicalRiver(benchmark::State& s) {
    detailWin(s, typical1, typical2, "Kh9h4c2d7s");
}
void BM_Equity_TypicalRiver(benchmark::State& s) {
    equity(s, typical1, typical2, "Kh9h4c2d7s");
}
BENCHMARK(BM_DetailWinEvaluation_FullFlop)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Equity_FullFlop)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DetailWinEvaluation_TypicalFlop)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Equity_TypicalFlop)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DetailWinEvaluation_TypicalTurn)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Equity_TypicalTurn)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DetailWinEvaluation_FullTurn)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Equity_FullTurn)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DetailWinEvaluation_TypicalRiver)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Equity_TypicalRiver)->Unit(benchmark::kMicrosecond);

// The two calls alternate on the same input, so that a noisy machine slows both alike; the
// "ratio" counter is the showdown evaluation's time over the equity's, the figure the 2x
// target is about. The iteration time is that of both calls together.
void detailOverEquity(benchmark::State& state, const std::string& r1, const std::string& r2,
                      const std::string& board) {
    volatile bool stop = false;
    auto entries = winEntries();
    std::chrono::steady_clock::duration detail{}, plain{};
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        getDetailWinEvaluation(r1, r2, board, "", entries, stop);
        const auto middle = std::chrono::steady_clock::now();
        const LongedEvaluation result = getEquity(r1, r2, board, "", stop);
        const auto end = std::chrono::steady_clock::now();
        benchmark::DoNotOptimize(result.total);
        detail += middle - start;
        plain += end - middle;
    }
    state.counters["ratio"] = double(detail.count()) / double(plain.count());
}

void BM_DetailOverEquity_FullFlop(benchmark::State& s) {
    detailOverEquity(s, fullRange(), fullRange(), "Kh9h4c");
}
void BM_DetailOverEquity_TypicalFlop(benchmark::State& s) {
    detailOverEquity(s, typical1, typical2, "Kh9h4c");
}
void BM_DetailOverEquity_FullTurn(benchmark::State& s) {
    detailOverEquity(s, fullRange(), fullRange(), "Kh9h4c2d");
}
void BM_DetailOverEquity_TypicalTurn(benchmark::State& s) {
    detailOverEquity(s, typical1, typical2, "Kh9h4c2d");
}
void BM_DetailOverEquity_TypicalRiver(benchmark::State& s) {
    detailOverEquity(s, typical1, typical2, "Kh9h4c2d7s");
}
BENCHMARK(BM_DetailOverEquity_FullFlop)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DetailOverEquity_TypicalFlop)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DetailOverEquity_FullTurn)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DetailOverEquity_TypicalTurn)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DetailOverEquity_TypicalRiver)->Unit(benchmark::kMicrosecond);

// Time from setting the stop flag to the return by TerminationOccured, during a full flop.
void BM_DetailWinEvaluation_StopLatency(benchmark::State& state) {
    const std::string range = fullRange();
    for (auto _ : state) {
        volatile bool stop = false;
        std::chrono::steady_clock::time_point stoppedAt;
        std::thread worker([&] {
            auto entries = winEntries();
            try {
                getDetailWinEvaluation(range, range, "Kh9h4c", "", entries, stop);
            } catch (const TerminationOccured&) {
            }
        });
        std::this_thread::sleep_for(std::chrono::milliseconds(3));
        stoppedAt = std::chrono::steady_clock::now();
        stop = true;
        worker.join();
        const std::chrono::duration<double> latency = std::chrono::steady_clock::now() - stoppedAt;
        state.SetIterationTime(latency.count());
    }
}
BENCHMARK(BM_DetailWinEvaluation_StopLatency)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace
