// The two equity results say whose they are: a tool tip and an accessible name naming the
// player, and the player's colour as a thin marker, the same as on the player's range line.

#include "MainWindowDriver.h"

#include "app/Quorvane.h"
#include "selection/ManagedHandRangeLine.h"
#include "tabs/BoardHitEvaluationTable.h"
#include "ui_Quorvane.h"

#include <QLabel>
#include <QSettings>
#include <QTest>
#include <gtest/gtest.h>

namespace {

class HeadlineEquityPlayers : public ::testing::Test {
protected:
    void SetUp() override {
        QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
        settings.clear();
        settings.sync();
    }
};

// The colour the window shows at the middle of the left edge of `widget`, `inset` pixels in.
QColor leftEdgeColour(QWidget& window, QWidget* widget, int inset) {
    const QImage picture = window.grab().toImage();
    const QPoint at = widget->mapTo(&window, QPoint(inset, widget->height() / 2));
    return picture.pixelColor(at * window.devicePixelRatioF());
}

bool near(const QColor& seen, const QColor& expected) {
    return std::abs(seen.red() - expected.red()) <= 12 &&
           std::abs(seen.green() - expected.green()) <= 12 &&
           std::abs(seen.blue() - expected.blue()) <= 12;
}

TEST_F(HeadlineEquityPlayers, EachResultNamesItsPlayer) {
    MainWindowDriver driver;
    Ui::QuorvaneClass* ui = driver.window().form();
    EXPECT_EQ(ui->player1Wins->accessibleName(), QStringLiteral("Player 1's equity"));
    EXPECT_EQ(ui->player2Wins->accessibleName(), QStringLiteral("Player 2's equity"));
    // The two captions keep their text.
    EXPECT_EQ(ui->player1EquityLabel->text(), QStringLiteral("Equity:"));
    EXPECT_EQ(ui->player2EquityLabel->text(), QStringLiteral("Equity:"));

    driver.typeRange(1, QStringLiteral("AA"));
    driver.typeRange(2, QStringLiteral("KK"));
    ASSERT_TRUE(driver.waitForEquity());
    const QString table1 = ui->player1Wins->toolTip();
    const QString table2 = ui->player2Wins->toolTip();
    EXPECT_TRUE(table1.startsWith(QStringLiteral("<b>Player 1's equity</b><table border=\"0\">")))
        << table1.toStdString();
    EXPECT_TRUE(table2.startsWith(QStringLiteral("<b>Player 2's equity</b><table border=\"0\">")))
        << table2.toStdString();
    EXPECT_TRUE(table1.contains(QStringLiteral("<tr><td><b>Wins:</b></td>")));
    EXPECT_EQ(ui->player1Wins->accessibleName(), QStringLiteral("Player 1's equity"));
}

TEST_F(HeadlineEquityPlayers, ResultsAndRangeLinesCarryThePlayersColour) {
    MainWindowDriver driver;
    driver.window().resize(1432, 1036);
    Ui::QuorvaneClass* ui = driver.window().form();
    driver.typeRange(1, QStringLiteral("QQ+,AKs"));
    driver.typeRange(2, QStringLiteral("JJ-22,AQs+"));
    driver.typeFlop(QStringLiteral("Ah7d2c"));
    ASSERT_TRUE(driver.waitForEquity());
    QTest::qWait(100);

    const QColor player1 = BoardHitEvaluationTable::player1Color;
    const QColor player2 = BoardHitEvaluationTable::player2Color;
    ASSERT_FALSE(near(player1, player2));
    QWidget& window = driver.window();
    EXPECT_TRUE(near(leftEdgeColour(window, ui->player1Wins, 1), player1));
    EXPECT_TRUE(near(leftEdgeColour(window, ui->player2Wins, 1), player2));
    EXPECT_TRUE(near(leftEdgeColour(window, ui->player1Range, 1), player1));
    EXPECT_TRUE(near(leftEdgeColour(window, ui->player2Range, 1), player2));
    // A thin marker: a few pixels further in, the traffic light or the field's ground.
    EXPECT_FALSE(near(leftEdgeColour(window, ui->player1Wins, 12), player1));
    EXPECT_FALSE(near(leftEdgeColour(window, ui->player1Range, 12), player1));
    EXPECT_EQ(ui->player1Range->property("player").toInt(), 1);
    EXPECT_EQ(ui->player2Range->property("player").toInt(), 2);

    // Without a result the marker stays: a glance still tells which is which.
    ui->calculateEquityPermanently->setChecked(false);
    ASSERT_TRUE(ui->player1Wins->text().isEmpty());
    QTest::qWait(50);
    EXPECT_TRUE(near(leftEdgeColour(window, ui->player1Wins, 1), player1));
    EXPECT_TRUE(near(leftEdgeColour(window, ui->player2Wins, 1), player2));
}

} // namespace
