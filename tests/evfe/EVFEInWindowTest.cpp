// The EV/FE page inside the real main window: the lines of the scenario shown, the players'
// ranges, the board, the change signals reaching the window's title and undo, the options.

#include "MainWindowDriver.h"
#include "ModalDriver.h"

#include "Range/HandRangeStringReader.h"
#include "Range/TreeRangeNode.h"
#include "app/Quorvane.h"
#include "app/document/AnalysisFile.h"
#include "evfe/EV_FE_TabState.h"
#include "evfe/LineFactory.h"
#include "evfe/Street.h"
#include "evfe/ui/EV_FE_CalculationsColorCodingDialog.h"
#include "evfe/ui/EV_FE_CalculationsTab.h"
#include "evfe/ui/LineActionWidget.h"
#include "selection/HandRangeLine.h"
#include "ui_EV_FE_CalculationsTab.h"
#include "ui_Quorvane.h"

#include <QInputDialog>
#include <QMessageBox>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

#include <fstream>

namespace {

const int evfeTabIndex = 5;

class PageInWindow : public ::testing::Test {
protected:
    void SetUp() override {
        QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
        settings.clear();
        settings.sync();
        driver = std::make_unique<MainWindowDriver>();
        ui = driver->window().form();
        tab = ui->EV_FE_calculationsTab;
    }
    void TearDown() override { driver.reset(); }

    void addLine(const QString& name) {
        ModalDriver modal;
        modal.onOtherModal([name](QWidget* widget) {
            auto* dialog = qobject_cast<QInputDialog*>(widget);
            ASSERT_NE(dialog, nullptr);
            dialog->setTextValue(name);
            QTimer::singleShot(20, dialog, &QDialog::accept);
        });
        tab->form()->addLineButton->click();
    }

    LineList* shownScenariosLines() {
        const Scenario* shown = driver->window().document().currentScenario();
        return shown != nullptr ? shown->lines.get() : nullptr;
    }

    std::unique_ptr<MainWindowDriver> driver;
    Ui::QuorvaneClass* ui = nullptr;
    EV_FE_CalculationsTab* tab = nullptr;
};

TEST_F(PageInWindow, TheEmptyPageIsTheEVFETab) {
    EXPECT_EQ(ui->tabWidget->widget(evfeTabIndex), tab);
    EXPECT_EQ(ui->tabWidget->tabText(evfeTabIndex), QStringLiteral("EV/FE Calculations"));
    EXPECT_TRUE(tab->whatsThis().startsWith(QStringLiteral("In this tab you can calculate EV")));
    EXPECT_EQ(tab->lineList(), shownScenariosLines());
    EXPECT_TRUE(ui->actionColor_Coding->isEnabled());
}

TEST_F(PageInWindow, ALineTakesTheFullRangesAndTheBoardOfTheWindow) {
    driver->typeRange(1, QStringLiteral("QQ+,AKs"));
    driver->typeRange(2, QStringLiteral("22+,AQs+"));
    driver->typeFlop(QStringLiteral("Kh9h4c"));
    ui->tabWidget->setCurrentIndex(evfeTabIndex);
    EXPECT_TRUE(tab->form()->flopButton->isEnabled());
    EXPECT_FALSE(tab->form()->turnButton->isEnabled());
    tab->form()->flopButton->click();
    addLine(QStringLiteral("Bet/Call"));
    ASSERT_EQ(shownScenariosLines()->size(), 1u);
    const LineVariant& variant = shownScenariosLines()->front().variants.front();
    EXPECT_EQ(
        Range::HandRangeStringReader(variant.firstActorRanges.group(0)->handRange).compactText(),
        "QQ+,AKs");
    EXPECT_EQ(
        Range::HandRangeStringReader(variant.secondActorRanges.group(0)->handRange).compactText(),
        "22+,AQs+");
    EXPECT_EQ(tab->firstActionWidget()->board(), "Kh9h4c");
    // The line is a change of the analysis: the title has its star.
    EXPECT_FALSE(driver->window().isSaved());
    EXPECT_TRUE(driver->window().windowTitle().startsWith(QStringLiteral("*")));
    // A range typed into the first action stays inside the player's range.
    HandRangeLine* line = tab->firstActionWidget()->rangeLine();
    line->setFocus();
    QTest::keyClicks(line, QStringLiteral("JJ+"));
    EXPECT_EQ(Range::HandRangeStringReader(variant.actions[0].range->handRange).compactText(),
              "QQ+");
}

TEST_F(PageInWindow, EachScenarioHasItsOwnLines) {
    ui->tabWidget->setCurrentIndex(evfeTabIndex);
    addLine(QStringLiteral("Raise/Fold"));
    LineList* first = shownScenariosLines();
    ASSERT_EQ(first->size(), 1u);
    // More scenarios move the list of scenarios; the page follows the one shown.
    for (int i = 0; i < 20; ++i)
        driver->window().document().appendScenario("Spot " + std::to_string(i));
    EXPECT_EQ(tab->lineList(), shownScenariosLines());
    EXPECT_EQ(tab->form()->lineBox->currentText(), QStringLiteral("Raise/Fold"));
    driver->window().updateScenariosAndSelectSpecificOne(0);
    ASSERT_EQ(ui->scenarios->count(), 21);
    ui->scenarios->setCurrentIndex(3);
    EXPECT_EQ(tab->lineList(), shownScenariosLines());
    EXPECT_TRUE(tab->lineList()->empty());
    EXPECT_EQ(tab->form()->lineBox->count(), 0);
    addLine(QStringLiteral("4-Bet/Ship"));
    ui->scenarios->setCurrentIndex(0);
    EXPECT_EQ(tab->form()->lineBox->currentText(), QStringLiteral("Raise/Fold"));
    EXPECT_EQ(driver->window().allScenarios()[3].lines->front().name, "4-Bet/Ship");
    // Deleting the scenario shown: the page shows the first one, never the deleted lines.
    ui->scenarios->setCurrentIndex(3);
    {
        ModalDriver modal;
        modal.press(QMessageBox::Yes);
        QTest::mouseClick(ui->deleteScenario, Qt::LeftButton);
    }
    EXPECT_EQ(ui->scenarios->currentIndex(), 0);
    EXPECT_EQ(tab->lineList(), shownScenariosLines());
    EXPECT_EQ(tab->form()->lineBox->currentText(), QStringLiteral("Raise/Fold"));
    for (const Scenario& scenario : driver->window().allScenarios())
        EXPECT_TRUE(scenario.lines->empty() || scenario.lines->front().name == "Raise/Fold");
}

TEST_F(PageInWindow, AStateOpenedWhileThePageIsHiddenShowsWhenThePageComesIntoView) {
    // The page has never been shown: it has not been told the board yet.
    ASSERT_NE(ui->tabWidget->currentIndex(), evfeTabIndex);
    driver->typeRange(1, QStringLiteral("QQ+,AKs"));
    driver->typeRange(2, QStringLiteral("22+,AQs+"));
    driver->typeFlop(QStringLiteral("Kh9h4c"));
    LineList& lines = *shownScenariosLines();
    ::addLine(lines, "Bet/Fold", Street::Flop, "Player1");
    ::addLine(lines, "Bet/Call", Street::Flop, "Player1");
    EV_FE_TabState state;
    state.rakePercentage = 2.5;
    state.rakeCap = 1.0;
    state.selectedStreet = static_cast<int>(Street::Flop);
    state.selectedPlayer = 0;
    state.selectedLine = 1;
    state.selectedVariant = 0;
    QTemporaryDir folder;
    ASSERT_TRUE(folder.isValid());
    const QString path = folder.filePath(QStringLiteral("flop.qva"));
    {
        std::ofstream file(path.toStdString());
        AnalysisFile::write(file, driver->window().allScenarios(), 0, state.toText());
    }
    driver->window().document().markSaved(QString());
    ASSERT_TRUE(driver->window().openAnalysisFile(path));

    ui->tabWidget->setCurrentIndex(evfeTabIndex);
    EXPECT_TRUE(tab->form()->flopButton->isChecked());
    EXPECT_TRUE(tab->form()->flopButton->isEnabled());
    EXPECT_EQ(tab->form()->lineBox->currentText(), QStringLiteral("Bet/Call"));
    EXPECT_EQ(tab->form()->rakePercentage->value(), 2.5);
    ASSERT_NE(tab->firstActionWidget(), nullptr);
    EXPECT_EQ(tab->firstActionWidget()->board(), "Kh9h4c");
    // What the page would save now is what was opened.
    std::vector<std::string> problems;
    EXPECT_EQ(EV_FE_TabState::fromText(tab->stateText(), problems), state);
}

TEST_F(PageInWindow, ANewLineIsUndoneAndRedone) {
    driver->typeRange(1, QStringLiteral("QQ+,AKs"));
    driver->typeRange(2, QStringLiteral("22+,AQs+"));
    driver->typeFlop(QStringLiteral("Kh9h4c"));
    ui->tabWidget->setCurrentIndex(evfeTabIndex);
    tab->form()->flopButton->click();
    addLine(QStringLiteral("Bet/Call"));
    addLine(QStringLiteral("Check/Raise"));
    ASSERT_EQ(shownScenariosLines()->size(), 2u);
    EXPECT_EQ(tab->form()->lineBox->currentText(), QStringLiteral("Check/Raise"));

    ui->actionUndo->trigger();
    // The page shows the restored lines, never the ones the undo replaced.
    EXPECT_EQ(tab->lineList(), shownScenariosLines());
    ASSERT_EQ(shownScenariosLines()->size(), 1u);
    EXPECT_EQ(shownScenariosLines()->front().name, "Bet/Call");
    EXPECT_TRUE(tab->form()->flopButton->isChecked());
    EXPECT_EQ(tab->form()->lineBox->count(), 1);
    EXPECT_EQ(tab->form()->lineBox->currentText(), QStringLiteral("Bet/Call"));
    ASSERT_NE(tab->firstActionWidget(), nullptr);
    EXPECT_EQ(tab->firstActionWidget()->lineAction(),
              &shownScenariosLines()->front().variants.front().actions[0]);

    ui->actionRedo->trigger();
    EXPECT_EQ(tab->lineList(), shownScenariosLines());
    ASSERT_EQ(shownScenariosLines()->size(), 2u);
    EXPECT_EQ(tab->form()->lineBox->count(), 2);
    EXPECT_EQ(tab->form()->lineBox->currentText(), QStringLiteral("Check/Raise"));
}

TEST_F(PageInWindow, TheOptionsReachThePage) {
    driver->typeRange(1, QStringLiteral("QQ+"));
    driver->typeRange(2, QStringLiteral("JJ+"));
    ui->tabWidget->setCurrentIndex(evfeTabIndex);
    addLine(QStringLiteral("Raise/Call"));
    LineActionWidget* call = tab->reactionWidgets()[1];
    EXPECT_TRUE(call->evLabel(1)->isHidden());
    ui->actionShow_EV_of_Single_Reactions->setChecked(true);
    EXPECT_FALSE(call->evLabel(1)->isHidden());
    QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
    EXPECT_TRUE(
        settings.value(QStringLiteral("optionmenu/EV_FE_ShowEVOfSingleReactions")).toBool());

    ModalDriver modal;
    QString title;
    modal.onOtherModal([&title](QWidget* widget) {
        title = widget->windowTitle();
        auto* dialog = qobject_cast<EV_FE_CalculationsColorCodingDialog*>(widget);
        ASSERT_NE(dialog, nullptr);
        dialog->borderBox(1)->setValue(-30.0);
        QTimer::singleShot(20, dialog, &QDialog::accept);
    });
    ui->actionColor_Coding->trigger();
    EXPECT_EQ(title, QStringLiteral("EV/FE Calculations: Color Coding"));
    EXPECT_EQ(tab->colorCoding().borders[0], -30.0f);
}

} // namespace
