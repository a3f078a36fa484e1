// How fast the EV/FE page answers, through its real widgets on the offscreen platform:
//  - a change of a size, a stack or the pot: every EV label and the overall result printed
//    again, with no equity started anew (the target is one frame, 16 ms);
//  - a change of a reaction's range on the flop: from the new range to its equity shown
//    (the target is 50 ms for ranges up to 30 % of all hands).
// The page shows "Bet/Ship" on Kh9h4c; Player1 bets a range of 366 combinations (28 %),
// Player2's reactions split a range of 30 %.

#include "Range/GroupColor.h"
#include "Range/HandRangeStringManipulator.h"
#include "Range/Tree.h"
#include "Range/TreeRangeNode.h"
#include "calculation/ThreadPool.h"
#include "evfe/LineAction.h"
#include "evfe/LineList.h"
#include "evfe/Street.h"
#include "evfe/ui/EV_FE_CalculationsTab.h"
#include "evfe/ui/LineActionWidget.h"
#include "selection/HandRangeLine.h"
#include "ui_EV_FE_CalculationsTab.h"

#include <QApplication>
#include <QDoubleSpinBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QSettings>
#include <QTemporaryDir>
#include <VelmaraEvaluatorBase.h>
#include <benchmark/benchmark.h>

#include <memory>

namespace {

// 366 combinations, 28 % of all hands.
const char* const thirtyPercent = "22+,A2s+,K5s+,Q8s+,J8s+,T8s+,98s,A7o+,K9o+,QTo+,JTo";
const char* const wide = "22+,A2s+,K2s+,Q2s+,J2s+,T2s+,92s+,82s+,72s+,62s+,52s+,42s+,32s,A2o+,"
                         "K2o+,Q2o+,J2o+,T2o+,92o+,82o+";

struct Page {
    Page() {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qputenv("HOME", home.path().toUtf8());
        qputenv("XDG_CONFIG_HOME", home.path().toUtf8());
        application = std::make_unique<QApplication>(argc, argv);
        QSettings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"))
            .setValue(QStringLiteral("optionmenu/EV_FE_ShowEVOfSingleReactions"), true);
        initializeAllBoardsBeforeCalculation();
        for (Range::Tree* tree : {&player1, &player2}) {
            tree->addRange(Range::Tree::noNode, "Full Range", false, Range::GroupColor());
            Range::HandRangeStringManipulator(tree->handRange(0)).setFree(wide);
        }
        addLine(lines, "Bet/Ship", Street::Flop, "Player1");
        tab = std::make_unique<EV_FE_CalculationsTab>();
        tab->setUp(&pool, &player1, &player2, nullptr, nullptr);
        tab->setLines(&lines);
        tab->updateBoardConstraints("Kh9h4c", "");
        tab->form()->flopButton->click();
        tab->resize(1300, 760);
        tab->show();
        tab->form()->potBox->setValue(10.0);
        tab->form()->rakePercentage->setValue(5.0);
        tab->form()->rakeCap->setValue(3.0);
        setRange(0, thirtyPercent);
        const char* reactions[4] = {"22-66,A2s-A5s,K5s-K8s,Q8s-QTs,J8s+,T8s+,98s",
                                    "77-JJ,A6s-AJs,K9s-KJs,QJs,A7o-AJo,K9o-KJo,QTo+,JTo",
                                    "QQ,AQs,AQo", "KK+,AKs,KQs,AKo,KQo"};
        for (std::size_t i = 0; i < 4; ++i)
            setRange(i + 1, reactions[i]);
        tab->firstActionWidget()->sizeBox()->setValue(7.5);
        waitForEquities();
    }

    LineActionWidget* widget(std::size_t index) const {
        return index == 0 ? tab->firstActionWidget() : tab->reactionWidgets()[index - 1];
    }

    void setRange(std::size_t index, const char* text) {
        HandRangeLine* line = widget(index)->rangeLine();
        line->setText(QString::fromLatin1(text));
        line->validateRange();
    }

    bool calculating() const {
        for (std::size_t i = 0; i < 5; ++i) {
            if (widget(i)->isCalculating())
                return true;
        }
        return false;
    }

    bool waitForEquities() {
        QElapsedTimer clock;
        clock.start();
        while (calculating()) {
            if (clock.elapsed() > 60000)
                return false;
            QCoreApplication::processEvents(QEventLoop::AllEvents);
        }
        return true;
    }

    unsigned int handleSum() const {
        unsigned int sum = 0;
        for (std::size_t i = 1; i < 5; ++i)
            sum += widget(i)->currentHandle().getId();
        return sum;
    }

    QTemporaryDir home;
    int argc = 1;
    char name[32] = "evfe_page_bench";
    char* argv[2] = {name, nullptr};
    std::unique_ptr<QApplication> application;
    ThreadPool pool;
    Range::Tree player1;
    Range::Tree player2;
    LineList lines;
    std::unique_ptr<EV_FE_CalculationsTab> tab;
};

Page& thePage() {
    static Page page;
    return page;
}

// One spin box step of the money: every reaction's EV and the overall result, synchronously.
void moneyChange(benchmark::State& state, QDoubleSpinBox* box, double low, double high) {
    Page& page = thePage();
    const unsigned int handlesBefore = page.handleSum();
    bool up = false;
    for (auto _ : state) {
        box->setValue(up ? high : low);
        up = !up;
        benchmark::DoNotOptimize(page.tab->form()->evPlayer1->text());
    }
    // No equity may start for a change of money.
    state.counters["equities_started"] = page.handleSum() - handlesBefore;
    state.counters["running"] = page.tab->runningSubrangeCalculations();
}

void BM_FirstSizeChangeUpdatesEveryLabel(benchmark::State& state) {
    Page& page = thePage();
    moneyChange(state, page.tab->firstActionWidget()->sizeBox(), 7.5, 8.5);
}
BENCHMARK(BM_FirstSizeChangeUpdatesEveryLabel)->Unit(benchmark::kMillisecond);

void BM_StackChangeUpdatesEveryLabel(benchmark::State& state) {
    Page& page = thePage();
    moneyChange(state, page.tab->form()->player2Stack, 80.0, 90.0);
}
BENCHMARK(BM_StackChangeUpdatesEveryLabel)->Unit(benchmark::kMillisecond);

void BM_PotChangeUpdatesEveryLabel(benchmark::State& state) {
    Page& page = thePage();
    moneyChange(state, page.tab->form()->potBox, 10.0, 11.0);
}
BENCHMARK(BM_PotChangeUpdatesEveryLabel)->Unit(benchmark::kMillisecond);

// From a new range of the call reaction to its equity on the labels: the range is read, the
// combinations counted, the equity against the bettor's 30 % computed on the pool and shown,
// the overall result added up. Two ranges of the call take turns.
void BM_ReactionRangeChangeToEquity(benchmark::State& state) {
    Page& page = thePage();
    const char* ranges[2] = {"77-JJ,A6s-AJs,K9s-KJs,QJs,A7o-AJo,K9o-KJo,QTo+,JTo",
                             "66-TT,A5s-ATs,K8s-KTs,QTs-QJs,A8o-AJo,KTo-KJo,QJo"};
    int turn = 0;
    for (auto _ : state) {
        QElapsedTimer clock;
        clock.start();
        page.setRange(2, ranges[turn]);
        if (!page.waitForEquities()) {
            state.SkipWithError("no equity shown");
            break;
        }
        state.SetIterationTime(static_cast<double>(clock.nsecsElapsed()) * 1e-9);
        turn = 1 - turn;
    }
    // Before and after the board and the other range.
    state.counters["call_range"] =
        page.widget(2)->lineAction()->range->handRange.combinationCount();
    state.counters["call_left"] = page.widget(2)->lineAction()->rangeCombinations;
    state.counters["bettor_range"] =
        page.widget(0)->lineAction()->range->handRange.combinationCount();
}
BENCHMARK(BM_ReactionRangeChangeToEquity)->UseManualTime()->Unit(benchmark::kMillisecond);

// The same for the bettor's range: all four reactions recount and three equities run.
void BM_FirstRangeChangeToEveryEquity(benchmark::State& state) {
    Page& page = thePage();
    const char* ranges[2] = {thirtyPercent, "22+,A2s+,K6s+,Q8s+,J8s+,T8s+,98s,A8o+,K9o+,QTo+,JTo"};
    int turn = 0;
    for (auto _ : state) {
        QElapsedTimer clock;
        clock.start();
        page.setRange(0, ranges[turn]);
        if (!page.waitForEquities()) {
            state.SkipWithError("no equity shown");
            break;
        }
        state.SetIterationTime(static_cast<double>(clock.nsecsElapsed()) * 1e-9);
        turn = 1 - turn;
    }
}
BENCHMARK(BM_FirstRangeChangeToEveryEquity)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace
