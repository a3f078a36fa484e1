#include "MainWindowDriver.h"

#include "Range/HandRange.h"
#include "Range/HandRangeStringManipulator.h"
#include "app/Quorvane.h"
#include "selection/BoardCardsWidget.h"
#include "selection/CardRangeText.h"
#include "selection/HandRangeLine.h"
#include "selection/ManagedHandRangeLine.h"
#include "ui_Quorvane.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QTest>
#include <gtest/gtest.h>

MainWindowDriver::MainWindowDriver() {
    static const bool boardsReady = [] {
        initializeAllBoardsBeforeCalculation();
        return true;
    }();
    Q_UNUSED(boardsReady);
    mainWindow = std::make_unique<Quorvane>();
    // Connected after the window's own slot: the window has decided by the time we look.
    QObject::connect(&mainWindow->pool(), &ThreadPool::EquityCalculationFinished, mainWindow.get(),
                     [this](const ThreadHandle& handle, const LongedEvaluation&) {
                         finished.push_back(handle.getId());
                         if (handle == mainWindow->currentEquityHandle())
                             published.push_back(handle.getId());
                     });
    mainWindow->show();
    QApplication::setActiveWindow(mainWindow.get());
    if (!QTest::qWaitForWindowExposed(mainWindow.get()))
        ADD_FAILURE() << "the main window was never shown";
}

MainWindowDriver::~MainWindowDriver() = default;

void MainWindowDriver::typeRange(int player, const QString& text) {
    ManagedHandRangeLine* managed =
        player == 1 ? mainWindow->form()->player1Range : mainWindow->form()->player2Range;
    HandRangeLine* line = managed->rangeLine();
    line->setFocus();
    QTest::keyClicks(line, text);
}

void MainWindowDriver::typeFlop(const QString& cards) {
    CardRangeText* flop = mainWindow->form()->boardCardsWidget->flopText();
    flop->setFocus();
    QTest::keyClicks(flop, cards);
}

void MainWindowDriver::typeTurn(const QString& cards) {
    CardRangeText* turn = mainWindow->form()->boardCardsWidget->turnText();
    turn->setFocus();
    QTest::keyClicks(turn, cards);
}

QLabel* MainWindowDriver::equityLabel(int player) const {
    return player == 1 ? mainWindow->form()->player1Wins : mainWindow->form()->player2Wins;
}

bool MainWindowDriver::waitForEquity(int limitMs) {
    return waitUntil(
        [this] {
            const unsigned int current = mainWindow->currentEquityHandle().getId();
            return mainWindow->currentEquityHandle().isValid() && !published.empty() &&
                   published.back() == current;
        },
        limitMs);
}

LongedEvaluation MainWindowDriver::exactEquity(const std::string& range1, const std::string& range2,
                                               const std::string& board, const std::string& dead) {
    volatile bool stop = false;
    return board.empty() ? getEquity(range1, range2, dead, stop)
                         : getEquity(range1, range2, board, dead, stop);
}

std::string MainWindowDriver::technical(const std::string& freeText) {
    Range::HandRange range;
    Range::HandRangeStringManipulator(range).setFree(freeText);
    return Range::HandRangeStringReader(range).technicalText();
}

bool MainWindowDriver::waitUntil(const std::function<bool()>& done, int limitMs) {
    QElapsedTimer clock;
    clock.start();
    while (!done() && clock.elapsed() < limitMs)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    return done();
}
