// The "Equity Graphs" tab driven through its button and check box, with every point of both
// curves checked against the step rule applied here to getWinEvaluationByHand.

#include "EquityPlotsTestSupport.h"

#include "calculation/ThreadPool.h"
#include "support/AssertionRecorder.h"
#include "tabs/EquityGraphTab.h"
#include "utils/ui/EquityColor.h"
#include "utils/ui/PlotHoverTip.h"

#include <QCheckBox>
#include <QPushButton>
#include <gtest/gtest.h>
#include <qcustomplot.h>

#include <memory>

using namespace EquityPlotsTestSupport;

namespace {

const std::string heroText = "QQ+,AKs";
const std::string villainText = "22-JJ,AQs+";
const std::string flop = "Ah7d2c";

class EquityGraphTabTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() { initializeEvaluatorOnce(); }

    void SetUp() override {
        tab = std::make_unique<EquityGraphTab>();
        tab->resize(1000, 600);
        tab->show();
        tab->setThreadPool(&pool);
    }

    bool waitForGraphs() {
        return waitUntil([this] { return !tab->isCalculating(); });
    }
    void calculate(const std::string& board, const std::string& dead = "") {
        tab->updateInputs(&hero, &villain, board, dead);
        QTest::mouseClick(tab->calculationButton(), Qt::LeftButton);
        ASSERT_TRUE(tab->isCalculating());
        ASSERT_EQ(tab->calculationButton()->text(), "Stop Calculation");
        ASSERT_TRUE(waitForGraphs());
    }
    // Both curves against the rule applied to the evaluator's records, point by point.
    void expectCurves(const std::string& board, const std::string& dead, bool cumulate) {
        const std::string h = technical(heroText);
        const std::string v = technical(villainText);
        const Curve expected[2] = {expectedCurve(referenceByHand(h, v, board, dead), cumulate),
                                   expectedCurve(referenceByHand(v, h, board, dead), cumulate)};
        ASSERT_EQ(tab->plot()->graphCount(), 2);
        for (int player = 0; player < 2; ++player) {
            const QCPGraph* graph = tab->plot()->graph(player);
            EXPECT_EQ(graph->name(), QString("Player %1").arg(player + 1));
            const Curve drawn = pointsOf(graph);
            ASSERT_EQ(drawn.keys.size(), expected[player].keys.size()) << player;
            ASSERT_FALSE(drawn.keys.empty());
            for (std::size_t i = 0; i < drawn.keys.size(); ++i) {
                EXPECT_FLOAT_EQ(static_cast<float>(drawn.keys[i]),
                                static_cast<float>(expected[player].keys[i]))
                    << player << " " << i;
                EXPECT_FLOAT_EQ(static_cast<float>(drawn.values[i]),
                                static_cast<float>(expected[player].values[i]))
                    << player << " " << i;
            }
        }
    }

    ThreadPool pool;
    Range::HandRange hero = rangeOf(heroText);
    Range::HandRange villain = rangeOf(villainText);
    std::unique_ptr<EquityGraphTab> tab;
};

} // namespace

TEST_F(EquityGraphTabTest, FormTextsAndAnEmptyPlotThatSaysWhatToDo) {
    EXPECT_EQ(tab->calculationButton()->text(), "&Start Calculation");
    EXPECT_EQ(tab->cumulateFlag()->text(), "Cumulate Equities");
    EXPECT_EQ(tab->cumulateFlag()->toolTip(),
              "If checked, the equities of the graphs are cumulated");
    EXPECT_FALSE(tab->cumulateFlag()->isChecked());
    QCustomPlot* plot = tab->plot();
    EXPECT_EQ(plot->xAxis->label(), "Hands Sorted by Equity");
    EXPECT_EQ(plot->yAxis->label(), "Equity of Hand vs. Other Range");
    EXPECT_DOUBLE_EQ(plot->xAxis->range().upper, 1.00001);
    EXPECT_DOUBLE_EQ(plot->yAxis->range().upper, 1.00001);
    EXPECT_FALSE(tab->whatsThis().isEmpty());
    // The empty curves show whose colour is whose.
    ASSERT_EQ(plot->graphCount(), 2);
    EXPECT_EQ(plot->graph(0)->pen().color(), QColor(255, 0, 0));
    EXPECT_EQ(plot->graph(1)->pen().color(), QColor(0, 0, 255));
    EXPECT_TRUE(plot->legend->visible());
    EXPECT_EQ(plot->legend->itemCount(), 2);
    EXPECT_EQ(tab->message(), "Enter a range for both players, then press \"Start Calculation\".");
    tab->updateInputs(&hero, &villain, flop, "");
    EXPECT_EQ(tab->message(),
              "Press \"Start Calculation\" to plot the equity of every hand of both ranges.");
    EXPECT_EQ(tab->csvText(), "");
}

TEST_F(EquityGraphTabTest, CurvesFollowTheStepRule) {
    calculate(flop);
    EXPECT_EQ(tab->calculationButton()->text(), "Start Calculation");
    EXPECT_EQ(tab->runningCount(), 0);
    expectCurves(flop, "", false);
    EXPECT_EQ(tab->plot()->graph(0)->pen().color(), QColor(255, 0, 0));
    EXPECT_EQ(tab->plot()->graph(1)->pen().color(), QColor(0, 0, 255));
    EXPECT_DOUBLE_EQ(tab->plot()->xAxis->range().lower, 0.0);
    EXPECT_DOUBLE_EQ(tab->plot()->xAxis->range().upper, 1.00001);
    EXPECT_DOUBLE_EQ(tab->plot()->yAxis->range().lower, 0.0);
    EXPECT_DOUBLE_EQ(tab->plot()->yAxis->range().upper, 1.00001);
    EXPECT_EQ(tab->message(), "");
    EXPECT_EQ(tab->title(), "Equity of every hand against the other range on Ah7d2c");
    // Every step's hand, in falling order of its own equity.
    for (int player = 0; player < 2; ++player) {
        const auto& steps = tab->stepsOf(player);
        for (std::size_t k = 1; k < steps.size(); ++k)
            EXPECT_GE(steps[k - 1].equity, steps[k].equity);
    }
}

TEST_F(EquityGraphTabTest, CumulatedCurvesAndTheToggleRedrawWithoutCalculating) {
    calculate(flop);
    const unsigned int firstId = tab->handleOf(0).getId();
    tab->cumulateFlag()->setChecked(true);
    EXPECT_FALSE(tab->isCalculating());
    EXPECT_EQ(tab->handleOf(0).getId(), firstId);
    expectCurves(flop, "", true);
    for (int player = 0; player < 2; ++player) {
        const Curve drawn = pointsOf(tab->plot()->graph(player));
        ASSERT_FALSE(drawn.values.empty());
        // Scaled to 1: the leftmost step is the largest and equals 1; all lie within 0 and 1.
        EXPECT_FLOAT_EQ(static_cast<float>(drawn.values.front()), 1.0f);
        for (double value : drawn.values) {
            EXPECT_LE(value, drawn.values.front());
            EXPECT_GE(value, 0.0);
            EXPECT_LE(value, 1.0);
        }
    }
    tab->cumulateFlag()->setChecked(false);
    expectCurves(flop, "", false);
    EXPECT_EQ(tab->handleOf(0).getId(), firstId);
}

TEST_F(EquityGraphTabTest, PreflopAndDeadCardsToo) {
    calculate("");
    expectCurves("", "", false);
    EXPECT_EQ(tab->title(), "Equity of every hand against the other range preflop");
    calculate(flop, "Ks");
    expectCurves(flop, "Ks", false);
}

TEST_F(EquityGraphTabTest, HandsTheCardsBlockAreLeftOut) {
    // On Ah7d2c the aces keep three combinations, the others four or six.
    calculate(flop);
    const WinEvaluationsByHand all = tab->resultOf(0);
    int possible = 0;
    for (const WinEvaluationByHand& record : all)
        possible += record.total != 0 ? 1 : 0;
    EXPECT_LT(possible, static_cast<int>(all.size()));
    EXPECT_EQ(tab->stepsOf(0).size(), static_cast<std::size_t>(possible));
    for (const auto& step : tab->stepsOf(0))
        EXPECT_EQ(step.hand.find("Ah"), std::string::npos) << step.hand;
}

TEST_F(EquityGraphTabTest, PressingTheButtonDuringARunStopsItAndDrawsNothing) {
    tab->updateInputs(&hero, &villain, flop, "");
    QTest::mouseClick(tab->calculationButton(), Qt::LeftButton);
    ASSERT_EQ(tab->runningCount(), 2);
    const WinEvaluationByHandHandle first = tab->handleOf(0);
    const WinEvaluationByHandHandle second = tab->handleOf(1);
    QTest::mouseClick(tab->calculationButton(), Qt::LeftButton);
    EXPECT_EQ(tab->plot()->graphCount(), 0);
    EXPECT_EQ(tab->message(), "Calculation stopped.");
    // The button offers a new start once the stopped tasks have ended.
    ASSERT_TRUE(waitUntil([this] { return tab->runningCount() == 0; }));
    EXPECT_EQ(tab->calculationButton()->text(), "Start Calculation");
    runEventLoopFor(300);
    EXPECT_EQ(tab->plot()->graphCount(), 0);
    EXPECT_TRUE(tab->resultOf(0).empty());
    EXPECT_TRUE(tab->resultOf(1).empty());
    EXPECT_FALSE(pool.isKnown(first));
    EXPECT_FALSE(pool.isKnown(second));
    EXPECT_EQ(tab->message(),
              "Press \"Start Calculation\" to plot the equity of every hand of both ranges.");
    // Toggling afterwards draws two empty curves, nothing of the stopped run.
    tab->cumulateFlag()->setChecked(true);
    ASSERT_EQ(tab->plot()->graphCount(), 2);
    EXPECT_EQ(tab->plot()->graph(0)->dataCount(), 0);
    EXPECT_EQ(tab->plot()->graph(1)->dataCount(), 0);
    // And a new press calculates anew.
    tab->cumulateFlag()->setChecked(false);
    QTest::mouseClick(tab->calculationButton(), Qt::LeftButton);
    ASSERT_TRUE(waitForGraphs());
    expectCurves(flop, "", false);
}

TEST_F(EquityGraphTabTest, NewInputsDuringARunDoNotStopIt) {
    tab->updateInputs(&hero, &villain, flop, "");
    QTest::mouseClick(tab->calculationButton(), Qt::LeftButton);
    const Range::HandRange other = rangeOf("AA");
    tab->updateInputs(&other, &other, "Kh8h3d", "");
    EXPECT_EQ(tab->runningCount(), 2);
    ASSERT_TRUE(waitForGraphs());
    expectCurves(flop, "", false);
}

TEST_F(EquityGraphTabTest, TheRangesAreTakenAsTheyWereWhenTold) {
    // The window may replace its range objects (a restore, another scenario) before the
    // button is pressed; the curves are those of the ranges as they were told.
    auto told1 = std::make_unique<Range::HandRange>(rangeOf(heroText));
    auto told2 = std::make_unique<Range::HandRange>(rangeOf(villainText));
    tab->updateInputs(told1.get(), told2.get(), flop, "");
    *told1 = rangeOf("22");
    told2.reset();
    QTest::mouseClick(tab->calculationButton(), Qt::LeftButton);
    ASSERT_TRUE(waitForGraphs());
    expectCurves(flop, "", false);
}

TEST_F(EquityGraphTabTest, ResultsOfOtherHandlesAreDropped) {
    tab->updateInputs(&hero, &villain, flop, "");
    const WinEvaluationsByHand fake(3, WinEvaluationByHand{"AsAd", 10, 5, 5, 0, {0, 0}});
    tab->onCalculationFinished(pool.createWinEvaluationByHandHandle(), fake);
    tab->onCalculationFinished(ThreadHandle(), fake);
    EXPECT_EQ(tab->runningCount(), 0);
    EXPECT_EQ(tab->plot()->graph(0)->dataCount(), 0);
    QTest::mouseClick(tab->calculationButton(), Qt::LeftButton);
    tab->onCalculationFinished(pool.createWinEvaluationByHandHandle(), fake);
    EXPECT_EQ(tab->runningCount(), 2);
    ASSERT_TRUE(waitForGraphs());
    expectCurves(flop, "", false);
}

TEST_F(EquityGraphTabTest, RangesThatCannotBePlayedGiveEmptyGraphs) {
    // Every hand of both ranges holds a card of the board.
    const Range::HandRange blocked1 = rangeOf("AhAd");
    const Range::HandRange blocked2 = rangeOf("7d7s");
    tab->updateInputs(&blocked1, &blocked2, flop, "");
    QTest::mouseClick(tab->calculationButton(), Qt::LeftButton);
    ASSERT_TRUE(waitForGraphs());
    ASSERT_EQ(tab->plot()->graphCount(), 2);
    EXPECT_EQ(tab->plot()->graph(0)->dataCount(), 0);
    EXPECT_EQ(tab->plot()->graph(1)->dataCount(), 0);
    EXPECT_EQ(tab->message(), "No hand of either range can be dealt with these cards.");
    EXPECT_EQ(tab->csvText(), "");
}

TEST_F(EquityGraphTabTest, InputsThatCannotBeCalculatedStartNothing) {
    const Range::HandRange empty;
    tab->updateInputs(&hero, &empty, flop, "");
    QTest::mouseClick(tab->calculationButton(), Qt::LeftButton);
    EXPECT_FALSE(tab->isCalculating());
    EXPECT_FALSE(tab->handleOf(0).isValid());
    EXPECT_EQ(tab->message(), "Enter a range for both players first.");
    tab->updateInputs(nullptr, &villain, flop, "");
    QTest::mouseClick(tab->calculationButton(), Qt::LeftButton);
    EXPECT_FALSE(tab->isCalculating());
    EXPECT_EQ(tab->message(), "Enter a range for both players first.");
    tab->updateInputs(&hero, &villain, "Ah7d", "");
    QTest::mouseClick(tab->calculationButton(), Qt::LeftButton);
    EXPECT_FALSE(tab->isCalculating());
    EXPECT_EQ(tab->message(), "A board has 0, 3, 4 or 5 cards, not 2.");
    tab->updateInputs(&hero, &villain, flop, "7d");
    QTest::mouseClick(tab->calculationButton(), Qt::LeftButton);
    EXPECT_FALSE(tab->isCalculating());
    EXPECT_EQ(tab->message(), "The card 7d is given twice.");
    EXPECT_FALSE(tab->handleOf(0).isValid());
    EXPECT_EQ(tab->calculationButton()->text(), "&Start Calculation");

    EquityGraphTab lonely;
    lonely.updateInputs(&hero, &villain, flop, "");
    AssertionRecorder assertions;
    lonely.onCalculationButtonClicked();
    EXPECT_FALSE(lonely.isCalculating());
    EXPECT_EQ(assertions.messages().size(), 1u);
}

TEST_F(EquityGraphTabTest, HoveringAStepShowsTheHandItsEquityAndItsPlace) {
    calculate(flop);
    QCustomPlot* plot = tab->plot();
    plot->replot();
    const auto& steps1 = tab->stepsOf(0);
    const auto& steps2 = tab->stepsOf(1);
    ASSERT_GT(steps2.size(), 10u);
    auto pixelY = [plot](double value) { return plot->yAxis->coordToPixel(value); };
    // A step of player 2 where player 1's curve is far away, so that only one can answer.
    std::size_t place = steps2.size();
    double x = 0.0;
    for (std::size_t k = 0; k < steps2.size(); ++k) {
        x = (static_cast<double>(k) + 0.5) / static_cast<double>(steps2.size());
        const std::size_t other = static_cast<std::size_t>(x * static_cast<double>(steps1.size()));
        if (std::abs(pixelY(steps1[other].height) - pixelY(steps2[k].height)) > 20 &&
            steps2[k].height < 0.8 && steps1[other].height < 0.8) {
            place = k;
            break;
        }
    }
    ASSERT_LT(place, steps2.size());
    const int column = static_cast<int>(plot->xAxis->coordToPixel(x));
    const QPoint at(column, static_cast<int>(pixelY(steps2[place].height)));
    EXPECT_EQ(tab->toolTipAt(at),
              QString::fromStdString(steps2[place].hand) + ": " +
                  equityPercentText(steps2[place].equity) +
                  QString("\nPlayer 2, hand %1 of %2").arg(place + 1).arg(steps2.size()));
    // Well above both curves there: nothing.
    EXPECT_EQ(tab->toolTipAt(QPoint(column, static_cast<int>(pixelY(0.95)))), "");

    auto* tip = plot->findChild<PlotHoverTip*>();
    ASSERT_NE(tip, nullptr);
    moveMouse(plot, at);
    EXPECT_EQ(tip->shownText(), tab->toolTipAt(at));
    moveMouse(plot, QPoint(column, static_cast<int>(pixelY(0.95))));
    EXPECT_EQ(tip->shownText(), "");

    // With cumulation the leftmost step is the whole sum.
    tab->cumulateFlag()->setChecked(true);
    const auto& cumulated = tab->stepsOf(0);
    const QPoint top(static_cast<int>(plot->xAxis->coordToPixel(0.5 / cumulated.size())),
                     static_cast<int>(pixelY(cumulated.front().height)));
    EXPECT_TRUE(tab->toolTipAt(top).endsWith("\nCumulated: 100.00 %"))
        << tab->toolTipAt(top).toStdString();
}

TEST_F(EquityGraphTabTest, CsvHoldsEveryStepOfBothCurves) {
    calculate(flop);
    const QStringList lines = tab->csvText().split('\n', Qt::SkipEmptyParts);
    const std::size_t steps0 = tab->stepsOf(0).size();
    const std::size_t steps1 = tab->stepsOf(1).size();
    ASSERT_EQ(static_cast<std::size_t>(lines.size()), 1 + steps0 + steps1);
    EXPECT_EQ(lines[0], "Player;Place;Hand;Equity;Plotted");
    const auto& best = tab->stepsOf(0).front();
    EXPECT_EQ(lines[1],
              QString("Player 1;1;%1;%2;%2")
                  .arg(QString::fromStdString(best.hand))
                  .arg(QString::number(static_cast<double>(best.equity) * 100.0, 'f', 2)));
    EXPECT_TRUE(lines[static_cast<int>(steps0) + 1].startsWith("Player 2;1;"));
}
