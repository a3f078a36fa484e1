// The equity evolution and equity graph tabs inside the main window: what the window hands
// them and when, driven by typing into the window as a user does.

#include "EquityPlotsTestSupport.h"
#include "MainWindowDriver.h"

#include "app/Quorvane.h"
#include "tabs/EquityEvolutionTab.h"
#include "tabs/EquityGraphTab.h"
#include "ui_Quorvane.h"

#include <QPushButton>
#include <QTabWidget>
#include <gtest/gtest.h>
#include <qcustomplot.h>

#include <cmath>

using namespace EquityPlotsTestSupport;

namespace {

const QString hero = QStringLiteral("QQ+,AKs");
const QString villain = QStringLiteral("22-JJ,AQs+");
const std::string flop = "Ah7d2c";

enum TabIndex { EquityEvolutions = 4, EquityGraphs = 7 };

EquityGraphTab* graphTab(MainWindowDriver& driver) {
    return driver.window().form()->equityGraphTab;
}

EquityEvolutionTab* evolutionTab(MainWindowDriver& driver) {
    return driver.window().form()->equityEvolutionTab;
}

} // namespace

TEST(EquityPlotsInTheWindow, TheWindowOpensOnTheGraphTabReadyToCalculate) {
    MainWindowDriver driver;
    QTabWidget* tabs = driver.window().form()->tabWidget;
    EXPECT_EQ(tabs->currentIndex(), EquityGraphs);
    EquityGraphTab* graph = graphTab(driver);
    ASSERT_EQ(tabs->currentWidget(), graph);
    EXPECT_EQ(graph->getThreadPool(), &driver.window().pool());
    // The evolution tab has the pool from the start, though it was never shown.
    EXPECT_EQ(evolutionTab(driver)->getThreadPool(), &driver.window().pool());
    EXPECT_EQ(graph->message(),
              "Enter a range for both players, then press \"Start Calculation\".");

    driver.typeRange(1, hero);
    driver.typeRange(2, villain);
    driver.typeFlop(QString::fromStdString(flop));
    ASSERT_TRUE(driver.waitForEquity());
    // Told, not started.
    EXPECT_FALSE(graph->isCalculating());
    EXPECT_EQ(graph->message(),
              "Press \"Start Calculation\" to plot the equity of every hand of both ranges.");

    QTest::mouseClick(graph->calculationButton(), Qt::LeftButton);
    ASSERT_TRUE(waitUntil([graph] { return !graph->isCalculating(); }));
    const std::string h = technical(hero.toStdString());
    const std::string v = technical(villain.toStdString());
    const Curve expected[2] = {expectedCurve(referenceByHand(h, v, flop, ""), false),
                               expectedCurve(referenceByHand(v, h, flop, ""), false)};
    for (int player = 0; player < 2; ++player) {
        const Curve drawn = pointsOf(graph->plot()->graph(player));
        ASSERT_EQ(drawn.values.size(), expected[player].values.size());
        for (std::size_t i = 0; i < drawn.values.size(); ++i)
            EXPECT_FLOAT_EQ(static_cast<float>(drawn.values[i]),
                            static_cast<float>(expected[player].values[i]));
    }
}

TEST(EquityPlotsInTheWindow, TheEvolutionTabCatchesUpWhenShownAndDropsOldBars) {
    MainWindowDriver driver;
    driver.typeRange(1, hero);
    driver.typeRange(2, villain);
    driver.typeFlop(QString::fromStdString(flop));
    ASSERT_TRUE(driver.waitForEquity());
    EquityEvolutionTab* evolution = evolutionTab(driver);
    auto* turnButton = evolution->findChild<QPushButton*>("analyzeTurnButton");
    auto* riverButton = evolution->findChild<QPushButton*>("analyzeRiverButton");
    // Hidden tabs hear nothing.
    EXPECT_FALSE(turnButton->isEnabled());

    QTest::keyClick(&driver.window(), Qt::Key_F5);
    ASSERT_EQ(driver.window().form()->tabWidget->currentIndex(), EquityEvolutions);
    EXPECT_TRUE(turnButton->isEnabled());
    EXPECT_FALSE(riverButton->isEnabled());
    QTest::mouseClick(turnButton, Qt::LeftButton);
    ASSERT_TRUE(waitUntil([evolution] { return !evolution->isAnalysing(); }));
    const std::string h = technical(hero.toStdString());
    const std::string v = technical(villain.toStdString());
    for (const char* card : {"Ks", "2d", "7h", "Jc"})
        EXPECT_DOUBLE_EQ(evolution->barOf(card), referenceEquity(h, v, flop + card, "")) << card;

    // Away and back with the same inputs: the picture stays.
    QTest::keyClick(&driver.window(), Qt::Key_F8);
    QTest::keyClick(&driver.window(), Qt::Key_F5);
    EXPECT_DOUBLE_EQ(evolution->barOf("Ks"), referenceEquity(h, v, flop + "Ks", ""));

    // A turn card changes the inputs: the old picture goes, the river opens.
    driver.typeTurn(QStringLiteral("Ks"));
    ASSERT_TRUE(driver.waitForEquity());
    EXPECT_TRUE(std::isnan(evolution->barOf("Ks")));
    EXPECT_TRUE(riverButton->isEnabled());
    QTest::mouseClick(riverButton, Qt::LeftButton);
    ASSERT_TRUE(waitUntil([evolution] { return !evolution->isAnalysing(); }));
    EXPECT_DOUBLE_EQ(evolution->barOf("9h"), referenceEquity(h, v, flop + "Ks9h", ""));
    EXPECT_EQ(evolution->kindOf("Ks"), EquityEvolutionTab::BarKind::OnBoard);
}
