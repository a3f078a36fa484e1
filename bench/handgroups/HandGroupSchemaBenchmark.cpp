// Board hit evaluation of the built-in "Standard" schema, the work behind a switch to the
// "Board Hits" tabs: every group, the full range against the full range.

#include "handstrength/HandGroupSchema.h"

#include <VelmaraEvaluatorBase.h>
#include <benchmark/benchmark.h>

#include <string>

namespace {

// The evaluator's one-time preparation comes before any call into it.
const bool prepared = (initializeAllBoardsBeforeCalculation(), true);

// All 169 hand classes in technical text.
std::string fullRange() {
    const std::string values = "AKQJT98765432";
    std::string text;
    for (std::size_t i = 0; i < values.size(); ++i) {
        for (std::size_t j = i; j < values.size(); ++j) {
            if (!text.empty())
                text += ',';
            if (i == j) {
                text += values.substr(i, 1) + values.substr(i, 1);
            } else {
                text += values.substr(i, 1) + values.substr(j, 1) + "s,";
                text += values.substr(i, 1) + values.substr(j, 1) + "o";
            }
        }
    }
    return text;
}

void twoPlayers(benchmark::State& state, const std::string& board) {
    benchmark::DoNotOptimize(prepared);
    const std::string range = fullRange();
    HandGroupSchema schema;
    schema.setCustomSum({HandStrengthKey(0x80, 0), HandStrengthKey(0x4000000, 0x433E00)});
    for (auto _ : state) {
        schema.evaluateTwoPlayers(range, range, board, "", false);
        benchmark::DoNotOptimize(schema.getGroups().data());
    }
    state.counters["combinations"] = static_cast<double>(schema.getGroups()[1].evaluations.total);
}

void onePlayer(benchmark::State& state, const std::string& board) {
    benchmark::DoNotOptimize(prepared);
    const std::string range = fullRange();
    HandGroupSchema schema;
    for (auto _ : state) {
        schema.evaluateOnePlayer(range, board, "", false);
        benchmark::DoNotOptimize(schema.getGroups().data());
    }
}

void BM_StandardSchemaTwoPlayersFlop(benchmark::State& state) {
    twoPlayers(state, "Ks7d2c");
}
void BM_StandardSchemaTwoPlayersTurn(benchmark::State& state) {
    twoPlayers(state, "Ks7d2c9s");
}
void BM_StandardSchemaTwoPlayersRiver(benchmark::State& state) {
    twoPlayers(state, "Ks7d2c9s4h");
}
void BM_StandardSchemaOnePlayerFlop(benchmark::State& state) {
    onePlayer(state, "Ks7d2c");
}
void BM_StandardSchemaOnePlayerRiver(benchmark::State& state) {
    onePlayer(state, "Ks7d2c9s4h");
}

} // namespace

BENCHMARK(BM_StandardSchemaTwoPlayersFlop)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_StandardSchemaTwoPlayersTurn)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_StandardSchemaTwoPlayersRiver)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_StandardSchemaOnePlayerFlop)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_StandardSchemaOnePlayerRiver)->Unit(benchmark::kMillisecond);
