// What a switch to a board hit tab costs on the main thread: the schema's hit evaluation of
// the "Standard" schema plus filling the table's rows (and, in the "Painted" rows, painting
// the tab once), full range against full range, with the program's style sheet applied.
// "FirstFill" makes every row's widgets in the timed call; "Fill" is a new evaluation of a
// tab whose rows exist already (the widgets are kept, only numbers change).

#include "Range/HandRange.h"
#include "Range/HandRangeStringReader.h"
#include "handstrength/HandGroupSchema.h"
#include "tabs/BoardHitEvaluationTable.h"
#include "tabs/BoardHitsTab.h"
#include "tabs/TwoPlayerBoardHitsTab.h"

#include <QApplication>
#include <QFile>
#include <QPixmap>
#include <QTemporaryDir>
#include <VelmaraEvaluatorBase.h>
#include <benchmark/benchmark.h>

#include <memory>
#include <string>

namespace {

const std::string& fullRange() {
    static const std::string text = [] {
        const Range::HandRange full(true);
        return Range::HandRangeStringReader(full).technicalText();
    }();
    return text;
}

// Every row that has children is opened, so that all rows with hits are made.
void expandAll(BoardEvaluationTab& tab) {
    auto* schema = const_cast<HandGroupSchema*>(tab.schema());
    for (int round = 0; round < 3; ++round) {
        for (const HandGroup& group : schema->getGroups()) {
            for (const HandGroupRow& row : group.rows) {
                if (schema->isExpandable(row.key) && !schema->isExpanded(row.key))
                    schema->toggleChildren(row.key);
            }
        }
    }
}

template <typename Tab>
void fill(benchmark::State& state, const std::string& board, bool expanded, bool painted) {
    Tab tab;
    tab.resize(1180, 860);
    if (painted)
        tab.show();
    tab.updateEvaluation(fullRange(), fullRange(), board, "", true);
    if (expanded)
        expandAll(tab);
    for (auto _ : state) {
        tab.updateEvaluation(fullRange(), fullRange(), board, "", true);
        if (painted) {
            QPixmap picture = tab.grab();
            benchmark::DoNotOptimize(picture);
        }
        // Throws the old rows away, as the event loop would.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    state.counters["rows"] = static_cast<double>(tab.table()->rows().size());
}

// A tab seen for the first time: every row's widgets are made in the timed call.
template <typename Tab>
void firstFill(benchmark::State& state, const std::string& board, bool expanded) {
    std::size_t rows = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto tab = std::make_unique<Tab>();
        tab->resize(1180, 860);
        if (expanded)
            expandAll(*tab);
        state.ResumeTiming();
        tab->updateEvaluation(fullRange(), fullRange(), board, "", true);
        state.PauseTiming();
        rows = tab->table()->rows().size();
        tab.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        state.ResumeTiming();
    }
    state.counters["rows"] = static_cast<double>(rows);
}

void BM_BoardHitsTabFirstFill_Flop(benchmark::State& state) {
    firstFill<BoardHitsTab>(state, "Kh9h4c", false);
}
void BM_BoardHitsTabFirstFill_River(benchmark::State& state) {
    firstFill<BoardHitsTab>(state, "Kh9h4c2d7s", false);
}
void BM_TwoPlayerBoardHitsTabFirstFill_FlopAllExpanded(benchmark::State& state) {
    firstFill<TwoPlayerBoardHitsTab>(state, "Kh9h4c", true);
}

void BM_BoardHitsTabFill_Flop(benchmark::State& state) {
    fill<BoardHitsTab>(state, "Kh9h4c", false, false);
}
void BM_BoardHitsTabFill_River(benchmark::State& state) {
    fill<BoardHitsTab>(state, "Kh9h4c2d7s", false, false);
}
void BM_TwoPlayerBoardHitsTabFill_Flop(benchmark::State& state) {
    fill<TwoPlayerBoardHitsTab>(state, "Kh9h4c", false, false);
}
void BM_TwoPlayerBoardHitsTabFill_River(benchmark::State& state) {
    fill<TwoPlayerBoardHitsTab>(state, "Kh9h4c2d7s", false, false);
}
void BM_TwoPlayerBoardHitsTabFill_FlopAllExpanded(benchmark::State& state) {
    fill<TwoPlayerBoardHitsTab>(state, "Kh9h4c", true, false);
}
void BM_TwoPlayerBoardHitsTabFill_FlopAllExpandedPainted(benchmark::State& state) {
    fill<TwoPlayerBoardHitsTab>(state, "Kh9h4c", true, true);
}
void BM_TwoPlayerBoardHitsTabFill_RiverAllExpandedPainted(benchmark::State& state) {
    fill<TwoPlayerBoardHitsTab>(state, "Kh9h4c2d7s", true, true);
}

BENCHMARK(BM_BoardHitsTabFirstFill_Flop)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BoardHitsTabFirstFill_River)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TwoPlayerBoardHitsTabFirstFill_FlopAllExpanded)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BoardHitsTabFill_Flop)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BoardHitsTabFill_River)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TwoPlayerBoardHitsTabFill_Flop)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TwoPlayerBoardHitsTabFill_River)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TwoPlayerBoardHitsTabFill_FlopAllExpanded)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TwoPlayerBoardHitsTabFill_FlopAllExpandedPainted)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TwoPlayerBoardHitsTabFill_RiverAllExpandedPainted)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // The tables read one option from the settings; keep a user's settings out of it.
    QTemporaryDir settingsFolder;
    qputenv("XDG_CONFIG_HOME", settingsFolder.path().toUtf8());
    QApplication application(argc, argv);
    QFile style(QStringLiteral(":/style.qss"));
    if (style.open(QIODevice::ReadOnly))
        application.setStyleSheet(QString::fromUtf8(style.readAll()));
    initializeAllBoardsBeforeCalculation();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
