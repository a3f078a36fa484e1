// Cost of the EV arithmetic the EV/FE page runs on every change of a size, a stack or the
// rake: all reactions of a variant, then its overall result, texts included.

#include "Range/HandRange.h"
#include "Range/HandRangeStringManipulator.h"
#include "Range/TreeRangeNode.h"
#include "evfe/LineFactory.h"

#include <benchmark/benchmark.h>

namespace {

LineVariant preparedBetShip() {
    LineVariant variant = LineFactory::create("Bet/Ship", "Main Variant", "Player1");
    variant.deadmoney = 20;
    variant.player1sEffectiveStackSize = 80;
    variant.player2sEffectiveStackSize = 60;
    variant.actions[0].size = 15;
    variant.actions[3].size = 45;
    const unsigned int combinations[] = {30, 40, 20, 10};
    for (std::size_t i = 1; i < variant.actions.size(); ++i) {
        variant.actions[i].rangeCombinations = combinations[i - 1];
        variant.actions[i].equityP1 = 0.55f;
        variant.actions[i].equityP2 = 0.45f;
    }
    variant.updateActionInputs(4, 5);
    return variant;
}

void BM_ReactionEV_Shove(benchmark::State& state) {
    LineVariant variant = preparedBetShip();
    LineAction& shove = variant.actions[4];
    for (auto _ : state) {
        shove.calculateEV();
        benchmark::DoNotOptimize(shove.EV_P1);
    }
}
BENCHMARK(BM_ReactionEV_Shove);

void BM_VariantEVAndOverall_BetShip(benchmark::State& state) {
    LineVariant variant = preparedBetShip();
    for (auto _ : state) {
        variant.calculateEVs();
        variant.calculateOverall();
        benchmark::DoNotOptimize(variant.EV_P1);
    }
}
BENCHMARK(BM_VariantEVAndOverall_BetShip);

void BM_CreateAndCopyVariant_BetShip(benchmark::State& state) {
    for (auto _ : state) {
        LineVariant variant = LineFactory::create("Bet/Ship", "Main Variant", "Player1");
        LineVariant copy(variant);
        benchmark::DoNotOptimize(copy.actions.data());
    }
}
BENCHMARK(BM_CreateAndCopyVariant_BetShip);

// What the tab pays when the other player's full range narrows: group 0 of the reactions'
// set is assigned a narrower range, and its changeNotifier refilters all four reaction groups.
// Each round then widens group 0 again and refills the four groups (five more assigns).
void BM_NarrowAndRefillReactionGroups_BetShip(benchmark::State& state) {
    LineVariant variant = LineFactory::create("Bet/Ship", "Main Variant", "Player1");
    Range::HandRange wide;
    Range::HandRangeStringManipulator(wide).setFree("22+,A2s+,K9s+,QTs+,JTs,A9o+,KTo+,QJo");
    Range::HandRange narrow;
    Range::HandRangeStringManipulator(narrow).setFree("TT+,AQs+,AKo");
    Range::HandRange& full = variant.secondActorRanges.group(0)->handRange;
    for (auto _ : state) {
        full.assign(wide.elements());
        for (std::size_t i = 1; i < variant.actions.size(); ++i)
            variant.actions[i].range->handRange.assign(wide.elements());
        full.assign(narrow.elements());
        benchmark::DoNotOptimize(variant.actions[4].range->handRange.combinationCount());
    }
}
BENCHMARK(BM_NarrowAndRefillReactionGroups_BetShip);

} // namespace
