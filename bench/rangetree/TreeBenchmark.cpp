// Range trees in the dialogs: every stroke on a group's range runs its filter per class and
// its notifier through the family, and every tree operation in the hand selection dialog
// saves the whole tree as text for its undo list.

#include "Range/HandRangeStringManipulator.h"
#include "Range/Tree.h"
#include "Range/TreeRangeNode.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

const char* const groupTexts[] = {"QQ+,AKs",     "JJ-99,AQs-ATs", "AKo,AQo",     "88-22",
                                  "KQs,KJs,QJs", "A5s-A2s",       "T9s,98s,87s", "KQo,KJo"};

// A player's range with eight exclusive overwrite groups below it, each with one plain
// child holding half of it.
void buildPlayerTree(Range::Tree& tree) {
    tree.addRange(Range::Tree::noNode, "", false, Range::GroupColor());
    Range::HandRangeStringManipulator(tree.handRange(0))
        .setFree("22+,A2s+,K9s+,QTs+,JTs,T9s,98s,87s,ATo+,KJo+,QJo");
    for (const char* text : groupTexts) {
        Range::TreeRangeNode* group = tree.addExclusiveRange(
            0, "group", Range::TreeRangeNode::Overwrite, true, Range::GroupColor());
        Range::HandRangeStringManipulator(group->handRange).setFree(text);
        Range::TreeRangeNode* child =
            tree.addRange(group->index, "child", true, Range::GroupColor());
        Range::HandRangeStringManipulator(child->handRange).setFree(text);
    }
}

// A stroke that takes one combination into group 1 and gives it back: two filtered
// changes, each pushing the seven siblings and refiltering their children.
void BM_GroupStroke(benchmark::State& state) {
    Range::Tree tree;
    buildPlayerTree(tree);
    const unsigned int aces = 1U << 12;
    const unsigned int original = tree.handRange(3).find(aces, false)->suits;
    for (auto _ : state) {
        tree.setSuits(3, aces, false, 0x2);
        tree.setSuits(3, aces, false, original);
        benchmark::DoNotOptimize(tree.handRange(1).combinationCount());
    }
}
BENCHMARK(BM_GroupStroke);

// A saved-range tree of state.range(0) ranges in folders of ten, written and read back.
void buildSavedTree(Range::Tree& tree, int ranges) {
    for (int i = 0; i < ranges; ++i) {
        if (i % 10 == 0)
            tree.addFolder(Range::Tree::noNode, "folder " + std::to_string(i / 10));
        const unsigned int folder = tree.count() - 1 - static_cast<unsigned int>(i % 10);
        Range::TreeRangeNode* range =
            tree.addRange(folder, "range " + std::to_string(i), false, Range::GroupColor());
        Range::HandRangeStringManipulator(range->handRange).setFree(groupTexts[i % 8]);
    }
}

void BM_SaveToText(benchmark::State& state) {
    Range::Tree tree;
    buildSavedTree(tree, static_cast<int>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(tree.saveToText());
}
BENCHMARK(BM_SaveToText)->Arg(100)->Arg(1000);

void BM_RestoreFromText(benchmark::State& state) {
    Range::Tree tree;
    buildSavedTree(tree, static_cast<int>(state.range(0)));
    const std::string text = tree.saveToText();
    Range::Tree read;
    for (auto _ : state) {
        read.restoreFromText(text);
        benchmark::DoNotOptimize(read.count());
    }
}
BENCHMARK(BM_RestoreFromText)->Arg(100)->Arg(1000);

void BM_MementoRoundTrip(benchmark::State& state) {
    Range::Tree tree;
    buildSavedTree(tree, static_cast<int>(state.range(0)));
    std::vector<Range::NodeMemento> memento;
    Range::Tree restored;
    for (auto _ : state) {
        tree.CreateMemento(memento);
        restored.RestoreMemento(memento);
        benchmark::DoNotOptimize(restored.count());
    }
}
BENCHMARK(BM_MementoRoundTrip)->Arg(100)->Arg(1000);

} // namespace
