// The range selectors and the tree of saved ranges of the hand selection dialog:
//   a hand strength selection of the full range on a flop (it blocks the window: < 20 ms),
//   an equity selection of the full range against a 20 % range on a flop (< 100 ms),
//   the opening of the tree with 1,000 saved ranges (< 200 ms).

#include "Range/GroupColor.h"
#include "Range/HandRange.h"
#include "Range/HandRangeElementConversion.h"
#include "Range/HandRangeStringManipulator.h"
#include "Range/HandRangeStringReader.h"
#include "Range/Tree.h"
#include "Range/TreeRangeNode.h"
#include "handstrength/HandStrengthSelectorOptions.h"
#include "selection/EquityRangeSelector.h"
#include "selection/HandPercentOrder.h"
#include "selection/HandSelectionDialog.h"
#include "selection/HandSelectionTreeModel.h"
#include "selection/HandStrengthSelection.h"
#include "selection/SavedRangeTreeSettings.h"

#include <QApplication>
#include <QSettings>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace HSO = HandStrengthSelectorOptions;

namespace {

const std::string flop = "Kh9h4c";

std::vector<BoardType> fullRange() {
    std::vector<BoardType> hands;
    for (int first = 0; first < 52; ++first)
        for (int second = first + 1; second < 52; ++second)
            hands.push_back((1ULL << first) | (1ULL << second));
    return hands;
}

void runSelection(benchmark::State& state, const HandStrengthSelection& request) {
    std::size_t selected = 0;
    for (auto _ : state) {
        const std::vector<BoardType> hands = request.select();
        selected = hands.size();
        benchmark::DoNotOptimize(hands.data());
    }
    state.counters["keys"] = static_cast<double>(request.keys().size());
    state.counters["hands"] = static_cast<double>(selected);
}

// "Pair", "Or Better": eight keys.
void BM_HandStrengthPairOrBetterOnAFlop(benchmark::State& state) {
    HandStrengthSelection request;
    request.hands = fullRange();
    request.board = Range::maskOfText(flop);
    request.handValue = {HSO::HandValue::Pair, HSO::Comparator::OrBetter};
    runSelection(state, request);
}
BENCHMARK(BM_HandStrengthPairOrBetterOnAFlop)->Unit(benchmark::kMillisecond);

// The widest walk the combo boxes allow: every draw level walks, and the hand value too.
void BM_HandStrengthWidestWalkOnAFlop(benchmark::State& state) {
    HandStrengthSelection request;
    request.hands = fullRange();
    request.board = Range::maskOfText(flop);
    request.handValue = {HSO::HandValue::Highcards, HSO::Comparator::OrBetter};
    request.flushDrawValue = {HSO::FlushDrawValue::BackdoorFlushdraw, HSO::Comparator::OrBetter};
    request.flushDrawStrength = {HSO::FlushDrawStrength::ToNuts, HSO::Comparator::OrWorse};
    request.flushDrawCardNumberValue = {HSO::FlushDrawCardNumberValue::WithOneHoleCard,
                                        HSO::Comparator::OrBetter};
    request.straightDrawValue = {HSO::StraightDrawValue::Oesd, HSO::Comparator::OrWorse};
    request.straightDrawCardNumberValue = {HSO::StraightDrawCardNumberValue::WithOneHoleCard,
                                           HSO::Comparator::OrBetter};
    runSelection(state, request);
}
BENCHMARK(BM_HandStrengthWidestWalkOnAFlop)->Unit(benchmark::kMillisecond);

// The background part of an equity selection: the by-hand evaluation of all 1,326 hands
// against the best 20 % of the slider, then the ranking and the cut.
void BM_EquitySelectionFullRangeAgainstTwentyPercentOnAFlop(benchmark::State& state) {
    const std::string range = Range::HandRangeStringReader(Range::HandRange(true)).technicalText();
    const std::string other =
        Range::HandRangeStringReader(HandPercentOrder::rangeFor(20)).technicalText();
    const BoardType dead = Range::maskOfText(flop);
    std::size_t selected = 0;
    for (auto _ : state) {
        volatile bool stop = false;
        const WinEvaluationsByHand records = getWinEvaluationByHand(range, other, flop, "", stop);
        const std::vector<BoardType> hands =
            EquityRangeSelector::selectFrom(records, 0.0f, 1.0f, 0.0f, 0.3f, dead);
        selected = hands.size();
        benchmark::DoNotOptimize(hands.data());
    }
    state.counters["hands"] = static_cast<double>(selected);
}
BENCHMARK(BM_EquitySelectionFullRangeAgainstTwentyPercentOnAFlop)->Unit(benchmark::kMillisecond);

// 1,000 saved ranges in 20 folders, each with two groups, stored as the dialog stores them.
void storeThousandRanges() {
    HandSelectionTreeModel model;
    Range::Tree source;
    source.addRange(Range::Tree::noNode, "", false, Range::GroupColor());
    const unsigned int value =
        source.addExclusiveRange(0, "Value", 0, true, Range::GroupColor())->index;
    const unsigned int bluff =
        source.addExclusiveRange(0, "Bluff", 0, true, Range::GroupColor())->index;
    std::vector<unsigned int> open;
    for (int folder = 0; folder < 20; ++folder) {
        const QModelIndex category = model.addCategory("Folder " + std::to_string(folder));
        open.push_back(model.nodeOf(category));
        for (int range = 0; range < 50; ++range) {
            const int percent = 5 + (folder * 50 + range) % 60;
            Range::HandRangeStringManipulator(source.handRange(0))
                .set(Range::HandRangeStringReader(HandPercentOrder::rangeFor(percent))
                         .technicalText());
            Range::HandRangeStringManipulator(source.handRange(value)).setFree("TT+,AQs+,AKo");
            Range::HandRangeStringManipulator(source.handRange(bluff)).setFree("A2s-A5s");
            model.addRange(category, "Range " + std::to_string(range), source, 0);
        }
    }
    QSettings file(QSettings::IniFormat, QSettings::UserScope, "Velmara", "Quorvane");
    file.setValue("HandSelection/HandSelectionTreeNew",
                  SavedRangeTreeSettings::encode(model.memento(), open));
}

// The parts of a load: the value out of the INI file, its decoding, the tree and the model.
void BM_SavedTreeOfThousandRangesReadFromTheFileStore(benchmark::State& state) {
    storeThousandRanges();
    for (auto _ : state) {
        QSettings file(QSettings::IniFormat, QSettings::UserScope, "Velmara", "Quorvane");
        const QByteArray bytes = file.value("HandSelection/HandSelectionTreeNew").toByteArray();
        benchmark::DoNotOptimize(bytes.data());
        state.counters["bytes"] = bytes.size();
    }
}
BENCHMARK(BM_SavedTreeOfThousandRangesReadFromTheFileStore)->Unit(benchmark::kMillisecond);

void BM_SavedTreeOfThousandRangesDecoded(benchmark::State& state) {
    storeThousandRanges();
    QSettings file(QSettings::IniFormat, QSettings::UserScope, "Velmara", "Quorvane");
    const QByteArray bytes = file.value("HandSelection/HandSelectionTreeNew").toByteArray();
    for (auto _ : state) {
        std::vector<Range::NodeMemento> nodes;
        std::vector<unsigned int> open;
        SavedRangeTreeSettings::decode(bytes, nodes, open);
        benchmark::DoNotOptimize(nodes.data());
    }
}
BENCHMARK(BM_SavedTreeOfThousandRangesDecoded)->Unit(benchmark::kMillisecond);

void BM_SavedTreeOfThousandRangesRestored(benchmark::State& state) {
    storeThousandRanges();
    QSettings file(QSettings::IniFormat, QSettings::UserScope, "Velmara", "Quorvane");
    const QByteArray bytes = file.value("HandSelection/HandSelectionTreeNew").toByteArray();
    std::vector<Range::NodeMemento> nodes;
    std::vector<unsigned int> open;
    SavedRangeTreeSettings::decode(bytes, nodes, open);
    HandSelectionTreeModel model;
    for (auto _ : state) {
        model.restore(nodes);
        benchmark::DoNotOptimize(&model);
    }
}
BENCHMARK(BM_SavedTreeOfThousandRangesRestored)->Unit(benchmark::kMillisecond);

void BM_SavedTreeOfThousandRangesLoads(benchmark::State& state) {
    storeThousandRanges();
    for (auto _ : state) {
        HandSelectionTreeModel model;
        const SavedRangeTreeSettings::Loaded loaded = SavedRangeTreeSettings::load(model);
        benchmark::DoNotOptimize(loaded.openNodes.data());
    }
}
BENCHMARK(BM_SavedTreeOfThousandRangesLoads)->Unit(benchmark::kMillisecond);

// What each closing of the dialog writes: the records, the file text for older versions,
// and the open folders.
void BM_SavedTreeOfThousandRangesSaved(benchmark::State& state) {
    storeThousandRanges();
    HandSelectionTreeModel model;
    const SavedRangeTreeSettings::Loaded loaded = SavedRangeTreeSettings::load(model);
    for (auto _ : state) {
        SavedRangeTreeSettings::save(model, loaded.openNodes);
        SavedRangeTreeSettings::saveOpenness(loaded.openNodes);
    }
}
BENCHMARK(BM_SavedTreeOfThousandRangesSaved)->Unit(benchmark::kMillisecond);

// The whole dialog, opened as the main window opens it, the tree's folders open.
void BM_DialogWithThousandSavedRangesOpens(benchmark::State& state) {
    storeThousandRanges();
    Range::Tree player;
    player.addRange(Range::Tree::noNode, "Player1", false, Range::GroupColor());
    for (auto _ : state) {
        HandSelectionDialog dialog(player, flop, "");
        benchmark::DoNotOptimize(&dialog);
    }
}
BENCHMARK(BM_DialogWithThousandSavedRangesOpens)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    // Private settings: the benchmark writes a tree of its own.
    QTemporaryDir settings;
    setenv("XDG_CONFIG_HOME", settings.path().toLocal8Bit().constData(), 1);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    initializeAllBoardsBeforeCalculation();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
