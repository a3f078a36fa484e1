// One memento (the whole analysis written as file text), one undo's reading of it, and the
// memory 10,000 mementos of a typical analysis take, for a large analysis (50 scenarios of 20
// lines each, every line with its variants) and a typical one (2 scenarios, 3 lines).

#include "LargeAnalysis.h"
#include "Range/HandRangeStringManipulator.h"
#include "Range/Tree.h"
#include "Range/TreeRangeNode.h"
#include "app/document/AnalysisDocument.h"
#include "app/document/AnalysisFile.h"
#include "evfe/EV_FE_TabState.h"
#include "evfe/SampleLines.h"

#include <benchmark/benchmark.h>

#include <set>
#include <string>
#include <vector>

namespace {

std::string tabState() {
    EV_FE_TabState state;
    state.rakePercentage = 5;
    state.selectedStreet = 1;
    return state.toText();
}

// A relevant change of the scenario shown: the snapshot writes that scenario again and
// shares the others' texts with the snapshot before it.
void memento(benchmark::State& state, int scenarios, int lines) {
    AnalysisDocument document;
    document.replaceScenarios(largeAnalysis(scenarios, lines), 0);
    document.setCurrentIndex(0);
    document.createMemento("", tabState());
    const std::string tab = tabState();
    for (auto _ : state) {
        const Memento memento = document.createMemento("Board Cards Changed", tab);
        benchmark::DoNotOptimize(memento.parts().data());
    }
    state.counters["text_KB"] = static_cast<double>(document.text(tab).size()) / 1024.0;
}

void undoRead(benchmark::State& state, int scenarios, int lines) {
    const std::string text = AnalysisFile::write(largeAnalysis(scenarios, lines), 0, tabState());
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

// 10,000 relevant changes of a typical analysis kept in the undo list, each a change of the
// scenario shown: the bytes the list holds (each snapshot's own bytes, and every compressed
// scenario text once, however many snapshots share it).
void BM_TenThousandMementos_Typical(benchmark::State& state) {
    std::size_t bytes = 0;
    for (auto _ : state) {
        AnalysisDocument document;
        document.replaceScenarios(largeAnalysis(2, 3), 0);
        document.setCurrentIndex(0);
        const std::string tab = tabState();
        for (int i = 0; i < 10000; ++i) {
            document.storeLiveState();
            document.recordMemento(document.createMemento("Player1's Range Changed", tab));
        }
        bytes = 0;
        std::set<const QByteArray*> parts;
        for (const Memento& memento : document.mementos()) {
            bytes += memento.ownSize();
            for (const Memento::Part& part : memento.parts())
                if (parts.insert(part.get()).second)
                    bytes += static_cast<std::size_t>(part->capacity()) + sizeof(QByteArray);
        }
    }
    state.counters["MB"] = static_cast<double>(bytes) / (1024.0 * 1024.0);
}

// An undo as the window does it: the snapshot before the present one read back, where only
// the scenario shown differs.
void undoContent(benchmark::State& state, int scenarios, int lines) {
    AnalysisDocument document;
    document.replaceScenarios(largeAnalysis(scenarios, lines), 0);
    document.setCurrentIndex(0);
    const std::string tab = tabState();
    document.recordMemento(document.createMemento("", tab));
    document.storeLiveState();
    document.recordMemento(document.createMemento("Board Cards Changed", tab));
    const Memento before = document.mementos().front();
    const Memento present = document.mementos().back();
    for (auto _ : state) {
        // Undo, then redo outside the clock, so that every undo finds the list as it was.
        AnalysisContent content = document.contentOf(before);
        document.replaceScenarios(std::move(content.scenarios), 0, content.snapshotParts);
        document.setCurrentIndex(0);
        state.PauseTiming();
        AnalysisContent again = document.contentOf(present);
        document.replaceScenarios(std::move(again.scenarios), 0, again.snapshotParts);
        document.setCurrentIndex(0);
        state.ResumeTiming();
    }
}

void BM_UndoContent_50ScenariosOf20Lines(benchmark::State& state) {
    undoContent(state, 50, 20);
}
void BM_UndoContent_Typical(benchmark::State& state) {
    undoContent(state, 2, 3);
}

BENCHMARK(BM_Memento_50ScenariosOf20Lines)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Memento_Typical)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_UndoRead_50ScenariosOf20Lines)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_UndoRead_Typical)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_UndoContent_50ScenariosOf20Lines)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_UndoContent_Typical)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TenThousandMementos_Typical)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace
