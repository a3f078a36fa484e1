// The equity loop through the real window: typing, the background calculation, the labels
// with their tool tips and colours, and calculations that replace each other.

#include "MainWindowDriver.h"

#include "app/Quorvane.h"
#include "calculation/ThreadPool.h"
#include "selection/BoardCardsWidget.h"
#include "selection/HandRangeLine.h"
#include "selection/ManagedHandRangeLine.h"
#include "ui_Quorvane.h"
#include "utils/ui/EquityColor.h"
#include "utils/ui/PlayerColor.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QMovie>
#include <QSettings>
#include <QTest>
#include <gtest/gtest.h>

namespace {

// The label texts as the window must write them, computed from the evaluator's counters.
struct ExpectedLabel {
    QString text;
    QString toolTip;
    QString styleSheet;
};

ExpectedLabel expectedFor(const LongedEvaluation& result, int player) {
    const double total = static_cast<double>(result.total);
    const double wins = static_cast<double>(player == 1 ? result.wins1 : result.wins2);
    const double other = static_cast<double>(player == 1 ? result.wins2 : result.wins1);
    const double ties = static_cast<double>(result.ties);
    const double equity = (wins + ties * 0.5) / total * 100.0;
    ExpectedLabel expected;
    expected.text = QString::number(equity, 'f', 2) + QStringLiteral(" %");
    expected.toolTip =
        QStringLiteral("<b>Player %1's equity</b>").arg(player) +
        QStringLiteral("<table border=\"0\"><tr><td><b>Wins:</b></td><td>%1 %"
                       "</td></tr><tr><td><b>Ties:</b></td><td>%2 %</td></tr>"
                       "<tr><td><b>Losses:</b></td><td>%3% </td></tr></table>")
            .arg(QString::number(wins / total * 100.0), QString::number(ties * 0.5 / total * 100.0),
                 QString::number(other * 0.5 / total * 100.0));
    const QColor color = colorForEquity(static_cast<float>(equity / 100.0));
    expected.styleSheet =
        PlayerColor::markerStyle(player) +
        QStringLiteral("background-color:rgb(%1,%2,0);").arg(color.red()).arg(color.green());
    return expected;
}

void expectLabels(MainWindowDriver& driver, const LongedEvaluation& exact) {
    for (int player : {1, 2}) {
        const ExpectedLabel expected = expectedFor(exact, player);
        QLabel* label = driver.equityLabel(player);
        EXPECT_EQ(label->text(), expected.text) << "player " << player;
        EXPECT_EQ(label->toolTip(), expected.toolTip) << "player " << player;
        EXPECT_EQ(label->styleSheet(), expected.styleSheet) << "player " << player;
        EXPECT_EQ(label->movie(), nullptr);
    }
}

class EquityLoop : public ::testing::Test {
protected:
    void SetUp() override {
        QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
        settings.clear();
        settings.sync();
    }
};

TEST_F(EquityLoop, TypedRangesAndFlopGiveTheEvaluatorsExactEquity) {
    MainWindowDriver driver;
    driver.typeRange(1, QStringLiteral("QQ+,AKs"));
    driver.typeRange(2, QStringLiteral("JJ-22,AQs+"));
    driver.typeFlop(QStringLiteral("Ah7d2c"));
    ASSERT_EQ(driver.window().form()->boardCardsWidget->getBoard(), "Ah7d2c");
    ASSERT_TRUE(driver.waitForEquity());

    const LongedEvaluation exact =
        MainWindowDriver::exactEquity(MainWindowDriver::technical("QQ+,AKs"),
                                      MainWindowDriver::technical("JJ-22,AQs+"), "Ah7d2c", "");
    ASSERT_GT(exact.total, 0u);
    expectLabels(driver, exact);
    // Player 1 is ahead here: a green-ish light for 1, red-ish for 2.
    EXPECT_GT(driver.equityLabel(1)->text().section(QLatin1Char(' '), 0, 0).toDouble(), 50.0);
}

TEST_F(EquityLoop, PreflopEquityOfTheSameRanges) {
    MainWindowDriver driver;
    driver.typeRange(1, QStringLiteral("QQ+,AKs"));
    driver.typeRange(2, QStringLiteral("JJ-22,AQs+"));
    ASSERT_TRUE(driver.waitForEquity());
    const LongedEvaluation exact = MainWindowDriver::exactEquity(
        MainWindowDriver::technical("QQ+,AKs"), MainWindowDriver::technical("JJ-22,AQs+"), "", "");
    expectLabels(driver, exact);
}

TEST_F(EquityLoop, FastTypingReplacesEveryCalculationAndShowsOnlyTheLast) {
    MainWindowDriver driver;
    driver.typeFlop(QStringLiteral("Kd9s4h"));
    driver.typeRange(1, QStringLiteral("AA,KK"));
    driver.typeRange(2, QStringLiteral("KK"));
    ASSERT_TRUE(driver.window().currentEquityHandle().isValid());
    const unsigned int before = driver.window().currentEquityHandle().getId();
    // Each keystroke that changes the range starts a new calculation at once: "22", "22+",
    // "A2", "A2s", "A2s+" (the others don't change the range).
    driver.typeRange(2, QStringLiteral(",22+,A2s+"));
    const unsigned int last = driver.window().currentEquityHandle().getId();
    EXPECT_GE(last - before, 5u);
    ASSERT_TRUE(driver.waitForEquity());
    // Let every older task end as well: none of them may reach the labels.
    QTest::qWait(300);
    ASSERT_FALSE(driver.publishedIds().empty());
    for (unsigned int id : driver.publishedIds())
        EXPECT_EQ(id, last);
    const LongedEvaluation exact =
        MainWindowDriver::exactEquity(MainWindowDriver::technical("AA,KK"),
                                      MainWindowDriver::technical("KK,22+,A2s+"), "Kd9s4h", "");
    expectLabels(driver, exact);
}

TEST_F(EquityLoop, TheSameTextAgainStartsNothingButATabSwitchRestarts) {
    MainWindowDriver driver;
    driver.typeRange(1, QStringLiteral("AA"));
    driver.typeRange(2, QStringLiteral("KK"));
    ASSERT_TRUE(driver.waitForEquity());
    const unsigned int id = driver.window().currentEquityHandle().getId();
    // A reformat of the same range is no new text.
    Ui::QuorvaneClass* ui = driver.window().form();
    ui->player2Range->rangeLine()->setText(QStringLiteral("kk"));
    QTest::keyClick(ui->player2Range->rangeLine(), Qt::Key_Return);
    driver.window().updateEquitiesAndTabs(false);
    EXPECT_EQ(driver.window().currentEquityHandle().getId(), id);
    // A tab switch refreshes whatever the texts.
    ui->tabWidget->setCurrentIndex(3);
    EXPECT_GT(driver.window().currentEquityHandle().getId(), id);
    ASSERT_TRUE(driver.waitForEquity());
}

TEST_F(EquityLoop, AnEmptyRangeLeavesBothLabelsEmptyWithoutAMovie) {
    MainWindowDriver driver;
    driver.typeRange(1, QStringLiteral("AA"));
    driver.typeRange(2, QStringLiteral("KK"));
    ASSERT_TRUE(driver.waitForEquity());
    HandRangeLine* line = driver.window().form()->player2Range->rangeLine();
    line->setFocus();
    line->selectAll();
    QTest::keyClick(line, Qt::Key_Backspace);
    const std::size_t publishedBefore = driver.publishedIds().size();
    QTest::qWait(200);
    for (int player : {1, 2}) {
        EXPECT_TRUE(driver.equityLabel(player)->text().isEmpty());
        EXPECT_EQ(driver.equityLabel(player)->movie(), nullptr);
        // Only the player's marker, no traffic light.
        EXPECT_EQ(driver.equityLabel(player)->styleSheet(), PlayerColor::markerStyle(player));
    }
    EXPECT_EQ(driver.publishedIds().size(), publishedBefore);
}

TEST_F(EquityLoop, WhileCalculatingTheLabelsShowTheMovie) {
    MainWindowDriver driver;
    driver.window().form()->calculateEquityPermanently->setChecked(false);
    driver.typeRange(1, QStringLiteral("22+,A2s+,K2s+"));
    driver.typeRange(2, QStringLiteral("22+,A2+"));
    EXPECT_TRUE(driver.equityLabel(1)->text().isEmpty());
    driver.window().form()->calculateEquityPermanently->setChecked(true);
    EXPECT_EQ(driver.equityLabel(1)->movie(), driver.window().equityMovie());
    EXPECT_EQ(driver.equityLabel(2)->movie(), driver.window().equityMovie());
    ASSERT_TRUE(driver.waitForEquity());
    EXPECT_EQ(driver.equityLabel(1)->movie(), nullptr);
}

TEST_F(EquityLoop, AnOlderHandlesResultIsDropped) {
    MainWindowDriver driver;
    driver.typeRange(1, QStringLiteral("AA"));
    driver.typeRange(2, QStringLiteral("KK"));
    ASSERT_TRUE(driver.waitForEquity());
    const QString shown = driver.equityLabel(1)->text();
    const ThreadHandle older(&driver.window().pool(),
                             driver.window().currentEquityHandle().getId() - 1);
    LongedEvaluation fake;
    fake.total = 10;
    fake.wins2 = 10;
    driver.window().publishEquityCalculatorResult(older, fake);
    EXPECT_EQ(driver.equityLabel(1)->text(), shown);
    // An invalid handle equals nothing either.
    driver.window().publishEquityCalculatorResult(ThreadHandle(), fake);
    EXPECT_EQ(driver.equityLabel(1)->text(), shown);
}

TEST_F(EquityLoop, PureWinAndPureLossToolTipsAndColours) {
    MainWindowDriver driver;
    driver.typeRange(1, QStringLiteral("AA"));
    driver.typeRange(2, QStringLiteral("KK"));
    ASSERT_TRUE(driver.waitForEquity());
    LongedEvaluation pureWin;
    pureWin.total = 40;
    pureWin.wins1 = 40;
    driver.window().publishEquityCalculatorResult(driver.window().currentEquityHandle(), pureWin);
    EXPECT_EQ(driver.equityLabel(1)->text(), QStringLiteral("100.00 %"));
    EXPECT_EQ(driver.equityLabel(1)->toolTip(),
              QStringLiteral("<b>Player 1's equity</b>"
                             "<table border=\"0\"><tr><td><b>Wins:</b></td><td>100 %</td></tr>"
                             "<tr><td><b>Ties:</b></td><td>0 %</td></tr><tr><td><b>Losses:</b>"
                             "</td><td>0% </td></tr></table>"));
    EXPECT_EQ(driver.equityLabel(1)->styleSheet(),
              PlayerColor::markerStyle(1) + QStringLiteral("background-color:rgb(0,255,0);"));
    EXPECT_EQ(driver.equityLabel(2)->text(), QStringLiteral("0.00 %"));
    // The losses are halved like the ties.
    EXPECT_EQ(driver.equityLabel(2)->toolTip(),
              QStringLiteral("<b>Player 2's equity</b>"
                             "<table border=\"0\"><tr><td><b>Wins:</b></td><td>0 %</td></tr>"
                             "<tr><td><b>Ties:</b></td><td>0 %</td></tr><tr><td><b>Losses:</b>"
                             "</td><td>50% </td></tr></table>"));
    EXPECT_EQ(driver.equityLabel(2)->styleSheet(),
              PlayerColor::markerStyle(2) + QStringLiteral("background-color:rgb(255,0,0);"));

    LongedEvaluation allTies;
    allTies.total = 8;
    allTies.ties = 8;
    driver.window().publishEquityCalculatorResult(driver.window().currentEquityHandle(), allTies);
    EXPECT_EQ(driver.equityLabel(1)->text(), QStringLiteral("50.00 %"));
    EXPECT_EQ(driver.equityLabel(2)->styleSheet(),
              PlayerColor::markerStyle(2) + QStringLiteral("background-color:rgb(255,255,0);"));
}

TEST_F(EquityLoop, NoPossibleMatchupShowsNoNumber) {
    MainWindowDriver driver;
    driver.typeRange(1, QStringLiteral("AhAd"));
    driver.typeRange(2, QStringLiteral("AsAc"));
    driver.typeFlop(QStringLiteral("Ac7d2h")); // player 2's only hand is dead
    ASSERT_TRUE(driver.waitForEquity());
    EXPECT_FALSE(driver.equityLabel(1)->text().contains(QLatin1Char('%')));
    EXPECT_FALSE(driver.equityLabel(1)->toolTip().isEmpty());
    EXPECT_EQ(driver.equityLabel(1)->styleSheet(), PlayerColor::markerStyle(1));
}

TEST_F(EquityLoop, AnUnfinishedFlopCalculatesNothingAndSaysWhy) {
    MainWindowDriver driver;
    driver.typeRange(1, QStringLiteral("QQ+"));
    driver.typeRange(2, QStringLiteral("AKs"));
    ASSERT_TRUE(driver.waitForEquity());
    const std::size_t publishedBefore = driver.publishedIds().size();
    driver.typeFlop(QStringLiteral("Ah7d"));
    ASSERT_EQ(driver.window().form()->boardCardsWidget->getBoard(), "Ah7d");
    QTest::qWait(200);
    EXPECT_FALSE(driver.window().currentEquityHandle().IsRunning());
    EXPECT_EQ(driver.publishedIds().size(), publishedBefore);
    for (int player : {1, 2}) {
        EXPECT_EQ(driver.equityLabel(player)->text(), QStringLiteral("&ndash;"));
        EXPECT_EQ(driver.equityLabel(player)->toolTip(),
                  QStringLiteral("A board has 0, 3, 4 or 5 cards, not 2."));
        EXPECT_EQ(driver.equityLabel(player)->movie(), nullptr);
    }
    // The third card completes the flop, and the equity is there again.
    driver.typeFlop(QStringLiteral("2c"));
    ASSERT_TRUE(driver.waitForEquity());
    expectLabels(driver,
                 MainWindowDriver::exactEquity(MainWindowDriver::technical("QQ+"),
                                               MainWindowDriver::technical("AKs"), "Ah7d2c", ""));
}

TEST_F(EquityLoop, TheToggleStopsAndRestarts) {
    MainWindowDriver driver;
    driver.typeRange(1, QStringLiteral("22+"));
    driver.typeRange(2, QStringLiteral("A2+,K2+"));
    Ui::QuorvaneClass* ui = driver.window().form();
    const std::size_t publishedBefore = driver.publishedIds().size();
    ui->actionCalculate_Equity_Permanently->setChecked(false);
    EXPECT_FALSE(ui->calculateEquityPermanently->isChecked());
    // The running calculation was stopped: nothing reaches the labels.
    QTest::qWait(200);
    EXPECT_EQ(driver.publishedIds().size(), publishedBefore);
    EXPECT_TRUE(driver.equityLabel(1)->text().isEmpty());
    EXPECT_EQ(driver.equityLabel(1)->movie(), nullptr);
    // Typing now starts nothing.
    const unsigned int id = driver.window().currentEquityHandle().getId();
    driver.typeRange(2, QStringLiteral(",QJs"));
    EXPECT_EQ(driver.window().currentEquityHandle().getId(), id);
    ui->calculateEquityPermanently->setChecked(true);
    EXPECT_TRUE(ui->actionCalculate_Equity_Permanently->isChecked());
    EXPECT_GT(driver.window().currentEquityHandle().getId(), id);
    ASSERT_TRUE(driver.waitForEquity());
    const LongedEvaluation exact = MainWindowDriver::exactEquity(
        MainWindowDriver::technical("22+"), MainWindowDriver::technical("A2+,K2+,QJs"), "", "");
    expectLabels(driver, exact);
}

TEST_F(EquityLoop, TurningTheBoxOffClearsAndOnComputesTheSameAgain) {
    MainWindowDriver driver;
    driver.typeRange(1, QStringLiteral("AA"));
    driver.typeRange(2, QStringLiteral("KK"));
    ASSERT_TRUE(driver.waitForEquity());
    const QString shown = driver.equityLabel(1)->text();
    driver.window().form()->calculateEquityPermanently->setChecked(false);
    EXPECT_TRUE(driver.equityLabel(1)->text().isEmpty());
    driver.window().form()->calculateEquityPermanently->setChecked(true);
    ASSERT_TRUE(driver.waitForEquity());
    EXPECT_EQ(driver.equityLabel(1)->text(), shown);
}

} // namespace
