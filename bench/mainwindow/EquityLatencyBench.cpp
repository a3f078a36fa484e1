// Undo and redo in a large analysis, and the time from the last keystroke in player 2's range line
// to the equity the window publishes, for the ranges QQ+,AKs against JJ-22,AQs+ on a flop and
// preflop. The keystroke itself (parsing, the mapping, stopping the previous calculation and
// starting the new one) is part of the time, as is the queued result reaching the labels.

#include "LargeAnalysis.h"
#include "app/Quorvane.h"
#include "app/document/AnalysisFile.h"
#include "selection/BoardCardsWidget.h"
#include "selection/CardRangeText.h"
#include "selection/HandRangeLine.h"
#include "selection/ManagedHandRangeLine.h"
#include "ui_Quorvane.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QTemporaryDir>
#include <QTest>
#include <benchmark/benchmark.h>

#include <memory>

namespace {

struct Window {
    Window() {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        // Settings of this run stay private.
        qputenv("HOME", home.path().toUtf8());
        qputenv("XDG_CONFIG_HOME", home.path().toUtf8());
        application = std::make_unique<QApplication>(argc, argv);
        initializeAllBoardsBeforeCalculation();
        window = std::make_unique<Quorvane>();
        window->show();
        QObject::connect(&window->pool(), &ThreadPool::EquityCalculationFinished, window.get(),
                         [this](const ThreadHandle& handle, const LongedEvaluation&) {
                             if (handle == window->currentEquityHandle())
                                 publishedId = static_cast<long long>(handle.getId());
                         });
    }

    bool waitForCurrent() {
        QElapsedTimer clock;
        clock.start();
        while (clock.elapsed() < 60000) {
            if (window->currentEquityHandle().isValid() &&
                publishedId == static_cast<long long>(window->currentEquityHandle().getId()))
                return true;
            QCoreApplication::processEvents(QEventLoop::AllEvents);
        }
        return false;
    }

    QTemporaryDir home;
    int argc = 1;
    char name[32] = "mainwindow_bench";
    char* argv[2] = {name, nullptr};
    std::unique_ptr<QApplication> application;
    std::unique_ptr<Quorvane> window;
    long long publishedId = -1;
};

Window& theWindow() {
    static Window window;
    return window;
}

void lastKeystrokeToEquity(benchmark::State& state, const char* flop) {
    Window& w = theWindow();
    Ui::QuorvaneClass* ui = w.window->form();
    ui->boardCardsWidget->clearAll();
    ui->boardCardsWidget->setBoard(flop);
    HandRangeLine* line1 = ui->player1Range->rangeLine();
    HandRangeLine* line2 = ui->player2Range->rangeLine();
    line1->setFocus();
    line1->selectAll();
    QTest::keyClicks(line1, QStringLiteral("QQ+,AKs"));
    for (auto _ : state) {
        // Player 2 one keystroke short of "JJ-22,AQs+", and everything before settled.
        line2->setFocus();
        line2->selectAll();
        QTest::keyClicks(line2, QStringLiteral("JJ-22,AQs"));
        if (!w.waitForCurrent()) {
            state.SkipWithError("no equity published");
            break;
        }
        QElapsedTimer clock;
        clock.start();
        QTest::keyClick(line2, Qt::Key_Plus);
        if (!w.waitForCurrent()) {
            state.SkipWithError("no equity published");
            break;
        }
        state.SetIterationTime(static_cast<double>(clock.nsecsElapsed()) * 1e-9);
    }
    state.counters["equity_percent_p1"] =
        ui->player1Wins->text().section(QLatin1Char(' '), 0, 0).toDouble();
}

void BM_LastKeystrokeToEquity_Flop(benchmark::State& state) {
    lastKeystrokeToEquity(state, "Ah7d2c");
}
void BM_LastKeystrokeToEquity_Preflop(benchmark::State& state) {
    lastKeystrokeToEquity(state, "");
}

// Undo and redo through the window in an analysis of 50 scenarios of 20 lines each: the
// snapshot read back and shown, scenario list, ranges, board and EV/FE page included.
void BM_UndoInWindow_50ScenariosOf20Lines(benchmark::State& state) {
    Window& w = theWindow();
    const QString file = w.home.filePath(QStringLiteral("large.qva"));
    {
        QFile out(file);
        out.open(QIODevice::WriteOnly);
        const std::string text = AnalysisFile::write(largeAnalysis(50, 20), 0, std::string());
        out.write(text.data(), static_cast<qint64>(text.size()));
    }
    w.window->document().markSaved(QString());
    if (!w.window->openAnalysisFile(file)) {
        state.SkipWithError("the analysis cannot be opened");
        return;
    }
    // Two relevant changes of the scenario shown, so that undo and redo have somewhere to go.
    Ui::QuorvaneClass* ui = w.window->form();
    ui->boardCardsWidget->setBoard("Kh9s4c");
    w.window->onMementoRelevantChange("Board Cards Changed");
    ui->boardCardsWidget->setBoard("Kh9s4c2d");
    w.window->onMementoRelevantChange("Board Cards Changed");
    bool back = true;
    for (auto _ : state) {
        QElapsedTimer clock;
        clock.start();
        if (back)
            w.window->onUndo();
        else
            w.window->onRedo();
        state.SetIterationTime(static_cast<double>(clock.nsecsElapsed()) * 1e-9);
        back = !back;
        QCoreApplication::processEvents(QEventLoop::AllEvents);
    }
    state.counters["scenarios"] = static_cast<double>(w.window->allScenarios().size());
}

BENCHMARK(BM_UndoInWindow_50ScenariosOf20Lines)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LastKeystrokeToEquity_Flop)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LastKeystrokeToEquity_Preflop)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace
