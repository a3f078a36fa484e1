// The feature word of one hand, the inner step of every hit evaluation and of the showdown
// evaluation by strength: every hand disjoint from a fixed flop, turn and river, time per
// call. Kh9h4c keeps flush, straight and backdoor draws all in play.

#include "Cards.h"
#include "hitevaluation/HandFeatures.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <vector>

namespace {

std::vector<qve::CardMask> handsDisjointFrom(qve::CardMask board) {
    std::vector<qve::CardMask> hands;
    for (int a = 0; a < 52; ++a)
        for (int b = a + 1; b < 52; ++b) {
            const qve::CardMask hand = (1ULL << a) | (1ULL << b);
            if (!(hand & board))
                hands.push_back(hand);
        }
    return hands;
}

void runFeatures(benchmark::State& state, const std::string& boardText) {
    const qve::CardMask board = qve::cardsOfText(boardText);
    const std::vector<qve::CardMask> hands = handsDisjointFrom(board);
    for (auto _ : state) {
        for (qve::CardMask hand : hands)
            benchmark::DoNotOptimize(qve::handFeatures(hand, board));
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(hands.size()));
    // Seconds per hand, shown with an SI prefix ("38n" is 38 ns per call).
    state.counters["per_hand"] = benchmark::Counter(static_cast<double>(hands.size()),
                                                    benchmark::Counter::kIsIterationInvariantRate |
                                                        benchmark::Counter::kInvert);
}

void BM_HandFeatures_Flop(benchmark::State& state) {
    runFeatures(state, "Kh9h4c");
}
void BM_HandFeatures_Turn(benchmark::State& state) {
    runFeatures(state, "Kh9h4c2d");
}
void BM_HandFeatures_River(benchmark::State& state) {
    runFeatures(state, "Kh9h4c2d7s");
}

} // namespace

BENCHMARK(BM_HandFeatures_Flop)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_HandFeatures_Turn)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_HandFeatures_River)->Unit(benchmark::kMicrosecond);
