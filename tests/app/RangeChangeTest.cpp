// Range changes from outside the line edit, the board, the title, and the scenarios.

#include "MainWindowDriver.h"

#include "Range/HandRangeStringManipulator.h"
#include "Range/TreeRangeNode.h"
#include "app/Quorvane.h"
#include "selection/BoardCardsWidget.h"
#include "selection/CardSelectionDialog.h"
#include "selection/CardSelectionTable.h"
#include "selection/HandRangeLine.h"
#include "selection/ManagedHandRangeLine.h"
#include "ui_Quorvane.h"

#include <QApplication>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

namespace {

std::string compactOf(const Range::HandRange& range) {
    return Range::HandRangeStringReader(range).compactText();
}

// Runs `act` on the next modal dialog of type T once it is open.
template <class T>
void onNextDialog(std::function<void(T*)> act, int limitMs = 5000) {
    QTimer::singleShot(0, [act, limitMs] {
        MainWindowDriver::waitUntil(
            [] { return qobject_cast<T*>(QApplication::activeModalWidget()) != nullptr; }, limitMs);
        if (auto* dialog = qobject_cast<T*>(QApplication::activeModalWidget()))
            act(dialog);
    });
}

class RangeChanges : public ::testing::Test {
protected:
    void SetUp() override {
        QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
        settings.clear();
        settings.sync();
    }
};

TEST_F(RangeChanges, ClearButtonsEmptyTheRangeAndMarkTheFileChanged) {
    MainWindowDriver driver;
    driver.typeRange(1, QStringLiteral("AA,KK"));
    driver.typeRange(2, QStringLiteral("QQ"));
    Ui::QuorvaneClass* ui = driver.window().form();
    QTest::mouseClick(ui->clearPlayer1RangeButton, Qt::LeftButton);
    EXPECT_TRUE(driver.window().player1Groups().handRange(0).isEmpty());
    EXPECT_TRUE(ui->player1Range->rangeLine()->text().isEmpty());
    EXPECT_EQ(ui->player1Range->itemText(0), QStringLiteral("<b>Full Range: </b> "));
    EXPECT_TRUE(driver.equityLabel(1)->text().isEmpty());
    EXPECT_EQ(driver.window().windowTitle(), QStringLiteral("*untitled.qva - Quorvane "));
    QTest::mouseClick(ui->clearPlayer2RangeButton, Qt::LeftButton);
    EXPECT_TRUE(driver.window().player2Groups().handRange(0).isEmpty());
}

TEST_F(RangeChanges, ANewRangeFromATabOverwritesTheFullRange) {
    MainWindowDriver driver;
    driver.typeRange(2, QStringLiteral("AA"));
    Range::HandRange offered;
    Range::HandRangeStringManipulator(offered).setFree("TT+,AQs+");
    driver.window().onNewPlayer1Range(offered);
    EXPECT_EQ(compactOf(driver.window().player1Groups().handRange(0)), "TT+,AQs+");
    EXPECT_EQ(driver.window().form()->player1Range->rangeLine()->text(),
              QStringLiteral("TT+,AQs+"));
    EXPECT_FALSE(driver.window().isSaved());
    // The headline calculation follows.
    ASSERT_TRUE(driver.waitForEquity());
    const LongedEvaluation exact = MainWindowDriver::exactEquity(
        MainWindowDriver::technical("TT+,AQs+"), MainWindowDriver::technical("AA"), "", "");
    const double equity =
        (static_cast<double>(exact.wins1) + static_cast<double>(exact.ties) * 0.5) /
        static_cast<double>(exact.total) * 100.0;
    EXPECT_EQ(driver.equityLabel(1)->text(), QString::number(equity, 'f', 2) + " %");
}

TEST_F(RangeChanges, ANewGroupGetsANumberedNameAColourAndStaysInTheRange) {
    MainWindowDriver driver;
    driver.typeRange(1, QStringLiteral("QQ+"));
    Range::HandRange offered;
    Range::HandRangeStringManipulator(offered).setFree("AA,22");
    driver.window().onNewPlayer1Group("", offered);
    Range::Tree& groups = driver.window().player1Groups();
    ASSERT_EQ(groups.count(), 2u);
    EXPECT_EQ(groups.rangeNode(1)->name, "Group 1");
    EXPECT_TRUE(groups.rangeNode(1)->color.usesColor);
    // 22 is not in the player's range: the group keeps AA only.
    EXPECT_EQ(compactOf(groups.handRange(1)), "AA");
    ManagedHandRangeLine* line = driver.window().form()->player1Range;
    ASSERT_EQ(line->count(), 2);
    EXPECT_EQ(line->itemText(1), QStringLiteral("<b>Group 1:</b> AA"));
    EXPECT_FALSE(line->itemIcon(1).isNull());

    driver.window().onNewPlayer1Group("Value", offered);
    EXPECT_EQ(groups.rangeNode(2)->name, "Value");
    EXPECT_EQ(line->count(), 3);
}

TEST_F(RangeChanges, ChoosingAGroupCalculatesWithThatGroup) {
    MainWindowDriver driver;
    driver.typeRange(1, QStringLiteral("QQ+,AKs"));
    driver.typeRange(2, QStringLiteral("JJ"));
    Range::HandRange offered;
    Range::HandRangeStringManipulator(offered).setFree("AKs");
    driver.window().onNewPlayer1Group("Bluff", offered);
    driver.window().form()->player1Range->setCurrentIndex(1);
    ASSERT_TRUE(driver.waitForEquity());
    const LongedEvaluation exact = MainWindowDriver::exactEquity(
        MainWindowDriver::technical("AKs"), MainWindowDriver::technical("JJ"), "", "");
    const double equity =
        (static_cast<double>(exact.wins1) + static_cast<double>(exact.ties) * 0.5) /
        static_cast<double>(exact.total) * 100.0;
    EXPECT_EQ(driver.equityLabel(1)->text(), QString::number(equity, 'f', 2) + " %");
}

TEST_F(RangeChanges, TheBoardChangesTheTitleAndTheLinesHoverBoard) {
    MainWindowDriver driver;
    driver.typeFlop(QStringLiteral("Ah7d2c"));
    EXPECT_EQ(driver.window().windowTitle(), QStringLiteral("*untitled.qva - Quorvane "));
    EXPECT_EQ(driver.window().form()->player1Range->rangeLine()->boardText(), "Ah7d2c");
    EXPECT_EQ(driver.window().allScenarios()[0].board, "Ah7d2c");
}

TEST_F(RangeChanges, TheScenarioHoldsTheLiveState) {
    MainWindowDriver driver;
    driver.typeRange(1, QStringLiteral("AA"));
    driver.typeRange(2, QStringLiteral("KK,QQ"));
    const Scenario& scenario = driver.window().allScenarios()[0];
    EXPECT_EQ(scenario.name, "Standard");
    ASSERT_EQ(scenario.player1.size(), 1u);
    ASSERT_EQ(scenario.player2.size(), 1u);
    Range::HandRange stored;
    stored.setSuitsVector(scenario.player2[0].suits);
    EXPECT_EQ(compactOf(stored), "QQ-KK");
    EXPECT_EQ(stored.combinationCount(), 12u);
}

TEST_F(RangeChanges, ScenariosAreAddedRenamedAndDeleted) {
    MainWindowDriver driver;
    driver.typeRange(1, QStringLiteral("AA"));
    Ui::QuorvaneClass* ui = driver.window().form();

    onNextDialog<QInputDialog>([](QInputDialog* dialog) {
        dialog->setTextValue(QStringLiteral("River spot"));
        dialog->accept();
    });
    QTest::mouseClick(ui->addScenario, Qt::LeftButton);
    ASSERT_EQ(driver.window().allScenarios().size(), 2u);
    EXPECT_EQ(ui->scenarios->currentIndex(), 1);
    EXPECT_EQ(ui->scenarios->itemText(1), QStringLiteral("River spot"));
    EXPECT_TRUE(ui->player1Range->rangeLine()->text().isEmpty()); // a new scenario is empty
    EXPECT_TRUE(ui->deleteScenario->isEnabled());

    // Back to the first: its range returns.
    ui->scenarios->setCurrentIndex(0);
    EXPECT_EQ(ui->player1Range->rangeLine()->text(), QStringLiteral("AA"));

    // Renaming to an empty text does nothing.
    onNextDialog<QInputDialog>([](QInputDialog* dialog) {
        dialog->setTextValue(QString());
        dialog->accept();
    });
    QTest::mouseClick(ui->editScenario, Qt::LeftButton);
    EXPECT_EQ(ui->scenarios->itemText(0), QStringLiteral("Standard"));
    onNextDialog<QInputDialog>([](QInputDialog* dialog) {
        EXPECT_EQ(dialog->textValue(), QStringLiteral("Standard"));
        EXPECT_EQ(dialog->labelText(), QStringLiteral("What is the new name of the scenario?"));
        dialog->setTextValue(QStringLiteral("Flop spot"));
        dialog->accept();
    });
    QTest::mouseClick(ui->editScenario, Qt::LeftButton);
    EXPECT_EQ(ui->scenarios->itemText(0), QStringLiteral("Flop spot"));

    // Deleting the second shows the first.
    ui->scenarios->setCurrentIndex(1);
    onNextDialog<QMessageBox>([](QMessageBox* box) {
        EXPECT_EQ(box->windowTitle(), QStringLiteral("Delete scenario?"));
        box->button(QMessageBox::Yes)->click();
    });
    QTest::mouseClick(ui->deleteScenario, Qt::LeftButton);
    ASSERT_EQ(driver.window().allScenarios().size(), 1u);
    EXPECT_EQ(ui->scenarios->currentIndex(), 0);
    EXPECT_EQ(ui->player1Range->rangeLine()->text(), QStringLiteral("AA"));
    EXPECT_FALSE(ui->deleteScenario->isEnabled());
    // The slot checks as well.
    driver.window().onDeleteScenario();
    EXPECT_EQ(driver.window().allScenarios().size(), 1u);
}

TEST_F(RangeChanges, SelectingTwoCardsMakesThemTheRange) {
    MainWindowDriver driver;
    driver.typeFlop(QStringLiteral("Ah7d2c"));
    onNextDialog<CardSelectionDialog>([](CardSelectionDialog* dialog) {
        EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Select Player1 Cards"));
        CardSelectionTable* table = dialog->table();
        // The board's ace is refused.
        EXPECT_EQ(table->stateOf(QStringLiteral("Ah")), CardSelectionTable::CellState::Forbidden);
        for (const char* card : {"Ks", "Kd"}) {
            for (int column = 0; column < CardSelectionTable::Columns; ++column)
                for (int row = 0; row < CardSelectionTable::Rows; ++row)
                    if (CardSelectionTable::cardOfCell(column, row) == QLatin1String(card))
                        QTest::mouseClick(table, Qt::LeftButton, Qt::NoModifier,
                                          CardSelectionTable::cellRect(column, row).center());
        }
        EXPECT_TRUE(dialog->okButton()->isEnabled());
        dialog->okButton()->click();
    });
    QTest::mouseClick(driver.window().form()->selectPlayer1CardsButton, Qt::LeftButton);
    EXPECT_EQ(compactOf(driver.window().player1Groups().handRange(0)), "KdKs");
}

TEST_F(RangeChanges, ACancelledCardDialogChangesNothing) {
    MainWindowDriver driver;
    driver.typeRange(2, QStringLiteral("QQ"));
    onNextDialog<CardSelectionDialog>([](CardSelectionDialog* dialog) { dialog->reject(); });
    driver.window().onPlayer2SelectCards();
    EXPECT_EQ(compactOf(driver.window().player2Groups().handRange(0)), "QQ");
}

TEST_F(RangeChanges, ReadOnlyLinesOpenNoDialog) {
    MainWindowDriver driver;
    driver.window().form()->player1Range->rangeLine()->setReadOnlyMode(true);
    bool opened = false;
    onNextDialog<CardSelectionDialog>(
        [&opened](CardSelectionDialog* dialog) {
            opened = true;
            dialog->reject();
        },
        300);
    driver.window().onPlayer1SelectCards();
    QTest::qWait(400);
    EXPECT_FALSE(opened);
}

TEST_F(RangeChanges, NewStartsAnEmptyAnalysis) {
    MainWindowDriver driver;
    driver.typeRange(1, QStringLiteral("AA"));
    driver.typeFlop(QStringLiteral("Ah7d2c"));
    onNextDialog<QMessageBox>([](QMessageBox* box) { box->button(QMessageBox::No)->click(); });
    driver.window().onNew();
    EXPECT_TRUE(driver.window().isSaved());
    EXPECT_EQ(driver.window().windowTitle(), QStringLiteral("untitled.qva - Quorvane "));
    EXPECT_TRUE(driver.window().player1Groups().handRange(0).isEmpty());
    EXPECT_EQ(driver.window().form()->boardCardsWidget->getBoard(), "");
    ASSERT_EQ(driver.window().allScenarios().size(), 1u);
    EXPECT_EQ(driver.window().allScenarios()[0].name, "Standard");
}

} // namespace
