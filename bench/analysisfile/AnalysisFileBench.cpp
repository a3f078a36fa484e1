// One memento (the whole analysis written as file text), one undo's reading of it, and the
// memory 10,000 mementos of a typical analysis take, for a large analysis (50 scenarios of 20
// lines each, every line with its variants) and a typical one (2 scenarios, 3 lines).

#include "Range/HandRangeStringManipulator.h"
#include "Range/Tree.h"
#include "Range/TreeRangeNode.h"
#include "app/document/AnalysisDocument.h"
#include "app/document/AnalysisFile.h"
#include "evfe/EV_FE_TabState.h"
#include "evfe/SampleLines.h"

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace {

std::vector<Range::NodeMemento> range(const std::string& full,
                                      const std::vector<std::string>& groups) {
    Range::Tree tree;
    Range::TreeRangeNode* root =
        tree.addRange(Range::Tree::noNode, "Full Range", false, Range::GroupColor());
    Range::HandRangeStringManipulator(root->handRange).setFree(full);
    for (const std::string& group : groups) {
        Range::TreeRangeNode* node = tree.addExclusiveRange(0, "Group", Range::TreeRangeNode::Block,
                                                            true, Range::GroupColor());
        Range::HandRangeStringManipulator(node->handRange).setFree(group);
    }
    std::vector<Range::NodeMemento> memento;
    tree.CreateMemento(memento);
    return memento;
}

std::vector<Scenario> analysis(int scenarios, int linesEach) {
    const LineList sample = SampleLines::golden();
    std::vector<Scenario> list;
    for (int i = 0; i < scenarios; ++i) {
        list.emplace_back(
            "Scenario " + std::to_string(i),
            range("22+,A2s+,K9s+,QTs+,JTs,T9s,98s,ATo+,KJo+", {"TT+,AQs+,AKo", "A2s-A5s", "22-66"}),
            range("22+,A2s+,K2s+,Q8s+,J8s+,T8s+,97s+,86s+,75s+,65s,54s,A9o+,KTo+,"
                  "QTo+,JTo",
                  {"77-JJ,ATs-AJs,KQs"}),
            "Ah7d2c", "");
        auto next = sample.begin();
        for (int line = 0; line < linesEach; ++line) {
            list.back().lines->push_back(*next);
            if (++next == sample.end())
                next = sample.begin();
        }
    }
    return list;
}

std::string tabState() {
    EV_FE_TabState state;
    state.rakePercentage = 5;
    state.selectedStreet = 1;
    return state.toText();
}

void memento(benchmark::State& state, int scenarios, int lines) {
    AnalysisDocument document;
    document.replaceScenarios(analysis(scenarios, lines), 0);
    const std::string tab = tabState();
    std::size_t bytes = 0;
    for (auto _ : state) {
        const Memento memento = document.createMemento("Board Cards Changed", tab);
        bytes = memento.data().size();
        benchmark::DoNotOptimize(bytes);
    }
    state.counters["text_KB"] = static_cast<double>(bytes) / 1024.0;
}

void undoRead(benchmark::State& state, int scenarios, int lines) {
    const std::string text = AnalysisFile::write(analysis(scenarios, lines), 0, tabState());
    for (auto _ : state) {
        AnalysisContent content = AnalysisFile::read(text);
        benchmark::DoNotOptimize(content.scenarios.data());
    }
}

void BM_Memento_50ScenariosOf20Lines(benchmark::State& state) {
    memento(state, 50, 20);
}
void BM_Memento_Typical(benchmark::State& state) {
    memento(state, 2, 3);
}
void BM_UndoRead_50ScenariosOf20Lines(benchmark::State& state) {
    undoRead(state, 50, 20);
}
void BM_UndoRead_Typical(benchmark::State& state) {
    undoRead(state, 2, 3);
}

// 10,000 relevant changes of a typical analysis kept in the undo list: the bytes the list
// holds (the compressed texts, the labels and the snapshots themselves).
void BM_TenThousandMementos_Typical(benchmark::State& state) {
    std::size_t bytes = 0;
    for (auto _ : state) {
        AnalysisDocument document;
        document.replaceScenarios(analysis(2, 3), 0);
        const std::string tab = tabState();
        for (int i = 0; i < 10000; ++i)
            document.recordMemento(document.createMemento("Player1's Range Changed", tab));
        bytes = 0;
        for (const Memento& memento : document.mementos())
            bytes += memento.size();
    }
    state.counters["MB"] = static_cast<double>(bytes) / (1024.0 * 1024.0);
}

BENCHMARK(BM_Memento_50ScenariosOf20Lines)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Memento_Typical)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_UndoRead_50ScenariosOf20Lines)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_UndoRead_Typical)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TenThousandMementos_Typical)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace
