// "Hide Empty Lines in Evaluation Tabs" through the real window: both states in the three
// board tabs, and the choice kept over a restart of the window.

#include "MainWindowDriver.h"

#include "app/Quorvane.h"
#include "tabs/BoardHitEvaluationTable.h"
#include "tabs/BoardHitsBar.h"
#include "tabs/BoardHitsTab.h"
#include "tabs/HandStrengthLabel.h"
#include "tabs/TwoPlayerBoardHitsTab.h"
#include "tabs/WinEvaluationTab.h"
#include "ui_Quorvane.h"

#include <QAction>
#include <QSettings>
#include <QTabWidget>
#include <gtest/gtest.h>

#include <functional>

namespace {

// Straight flush: no hand of the ranges below makes one on Ah7d2c.
const HandStrengthKey straightflush(0x1, 0);

class EmptyLinesOption : public ::testing::Test {
protected:
    void SetUp() override {
        QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
        settings.clear();
        settings.sync();
    }
    void TearDown() override { SetUp(); }

    static void enterSituation(MainWindowDriver& driver) {
        driver.typeRange(1, QStringLiteral("QQ+,AKs"));
        driver.typeRange(2, QStringLiteral("JJ-22,AQs+"));
        driver.typeFlop(QStringLiteral("Ah7d2c"));
    }

    // Shows the tab at `index` and waits until its rows are there.
    static const BoardEvaluationTab* showTab(MainWindowDriver& driver, int index) {
        Ui::QuorvaneClass* ui = driver.window().form();
        ui->tabWidget->setCurrentIndex(index);
        const auto* tab = qobject_cast<const BoardEvaluationTab*>(ui->tabWidget->currentWidget());
        EXPECT_NE(tab, nullptr);
        if (tab == nullptr)
            return nullptr;
        const bool done = MainWindowDriver::waitUntil(
            [ui, tab] {
                if (tab->table()->rows().empty())
                    return false;
                return tab != ui->winEvaluationTab || !ui->winEvaluationTab->isCalculating();
            },
            60000);
        EXPECT_TRUE(done) << "tab " << index;
        return tab;
    }

    static const BoardHitEvaluationTable::Row* straightflushRow(const BoardEvaluationTab& tab) {
        return tab.table()->rowOf(straightflush);
    }
};

TEST_F(EmptyLinesOption, BothStatesWorkInTheThreeBoardTabsAndSurviveARestart) {
    std::size_t hiddenRows[3] = {0, 0, 0};
    {
        MainWindowDriver driver;
        QAction* option = driver.window().form()->action_Hide_Empty_Lines_in_Board_Hits_Tabs;
        ASSERT_TRUE(option->isChecked());
        enterSituation(driver);
        for (int index = 0; index < 3; ++index) {
            const BoardEvaluationTab* tab = showTab(driver, index);
            ASSERT_NE(tab, nullptr);
            EXPECT_EQ(straightflushRow(*tab), nullptr) << "tab " << index;
            hiddenRows[index] = tab->table()->rows().size();
        }

        // Unticked: the visible tab shows the empty rows at once, the others when shown.
        showTab(driver, 0);
        option->trigger();
        ASSERT_FALSE(option->isChecked());
        for (int index = 0; index < 3; ++index) {
            const BoardEvaluationTab* tab = showTab(driver, index);
            ASSERT_NE(tab, nullptr);
            EXPECT_GT(tab->table()->rows().size(), hiddenRows[index]) << "tab " << index;
            const BoardHitEvaluationTable::Row* row = straightflushRow(*tab);
            ASSERT_NE(row, nullptr) << "tab " << index;
            if (index < 2) {
                // Board Hits and Two Player Board Hits: 0.00 % and no combinations.
                for (BoardHitsBar* bar : row->bars)
                    EXPECT_EQ(bar->texts().value(0), QStringLiteral("0.00 % (0)"))
                        << "tab " << index;
            }
        }
        QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
        EXPECT_FALSE(
            settings.value(QStringLiteral("optionmenu/removeEmptyLinesFromBoardEvaluationTabs"))
                .toBool());
    }

    // A new window reads the choice back: still unticked, still all rows.
    {
        MainWindowDriver driver;
        QAction* option = driver.window().form()->action_Hide_Empty_Lines_in_Board_Hits_Tabs;
        EXPECT_FALSE(option->isChecked());
        enterSituation(driver);
        for (int index = 0; index < 3; ++index) {
            const BoardEvaluationTab* tab = showTab(driver, index);
            ASSERT_NE(tab, nullptr);
            EXPECT_NE(straightflushRow(*tab), nullptr) << "tab " << index;
            EXPECT_GT(tab->table()->rows().size(), hiddenRows[index]) << "tab " << index;
        }

        // Ticked again, the empty rows go.
        option->trigger();
        ASSERT_TRUE(option->isChecked());
        for (int index = 0; index < 3; ++index) {
            const BoardEvaluationTab* tab = showTab(driver, index);
            ASSERT_NE(tab, nullptr);
            EXPECT_EQ(straightflushRow(*tab), nullptr) << "tab " << index;
            EXPECT_EQ(tab->table()->rows().size(), hiddenRows[index]) << "tab " << index;
        }
    }
    MainWindowDriver driver;
    EXPECT_TRUE(driver.window().form()->action_Hide_Empty_Lines_in_Board_Hits_Tabs->isChecked());
}

} // namespace
