// The window as built: object names, tabs, actions, menus, tool bar, keys, settings, title.

#include "MainWindowDriver.h"

#include "app/Quorvane.h"
#include "ui_Quorvane.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QSettings>
#include <QTest>
#include <QTextDocumentFragment>
#include <QTimer>
#include <QToolBar>
#include <gtest/gtest.h>

namespace {

QStringList actionNames(const QList<QAction*>& actions) {
    QStringList names;
    for (QAction* action : actions)
        names << (action->isSeparator() ? QStringLiteral("|") : action->objectName());
    return names;
}

// Presses `button` on the next message box that opens, and records its texts.
struct MessageBoxAnswer {
    QString title;
    QString text;
    void answerWith(QMessageBox::StandardButton button) {
        QTimer::singleShot(0, [this, button] {
            MainWindowDriver::waitUntil(
                [] { return qobject_cast<QMessageBox*>(QApplication::activeModalWidget()); }, 5000);
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (!box)
                return;
            title = box->windowTitle();
            text = box->text();
            box->button(button)->click();
        });
    }
};

class MainWindowLayout : public ::testing::Test {
protected:
    void SetUp() override {
        QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
        settings.clear();
        settings.sync();
    }
};

TEST_F(MainWindowLayout, ObjectNamesSizesAndTitle) {
    MainWindowDriver driver;
    Quorvane& window = driver.window();
    EXPECT_EQ(window.objectName(), QStringLiteral("QuorvaneClass"));
    EXPECT_EQ(window.windowTitle(), QStringLiteral("untitled.qva - Quorvane "));
    EXPECT_EQ(window.minimumSize(), QSize(874, 450));
    EXPECT_EQ(window.locale(), QLocale(QLocale::English, QLocale::UnitedStates));
    for (const char* name : {"centralWidget",
                             "secondRowWidget",
                             "mainRangesWidget",
                             "scenarios",
                             "editScenario",
                             "addScenario",
                             "deleteScenario",
                             "player1Range",
                             "selectPlayer1RangeButton",
                             "selectPlayer1CardsButton",
                             "clearPlayer1RangeButton",
                             "player2Range",
                             "selectPlayer2RangeButton",
                             "selectPlayer2CardsButton",
                             "clearPlayer2RangeButton",
                             "boardCardsWidget",
                             "equityBlockWidget",
                             "calculateEquityPermanently",
                             "player1Wins",
                             "player2Wins",
                             "thirdRowWidget",
                             "tabWidgetContainer",
                             "tabWidget",
                             "explanatoryWidget",
                             "hideExplanationButton",
                             "explanatoryText",
                             "toolBar"})
        EXPECT_NE(window.findChild<QWidget*>(QString::fromLatin1(name)), nullptr) << name;
    Ui::QuorvaneClass* ui = window.form();
    EXPECT_EQ(ui->editScenario->toolTip(), QStringLiteral("Edit Scenario Name"));
    EXPECT_EQ(ui->addScenario->toolTip(), QStringLiteral("Create New Scenario"));
    EXPECT_EQ(ui->deleteScenario->toolTip(), QStringLiteral("Delete Scenario"));
    EXPECT_EQ(ui->hideExplanationButton->text(), QStringLiteral("Hide Help"));
    EXPECT_EQ(ui->player1Wins->textFormat(), Qt::RichText);
    EXPECT_EQ(ui->scenarios->count(), 1);
    EXPECT_EQ(ui->scenarios->itemText(0), QStringLiteral("Standard"));
    EXPECT_FALSE(ui->deleteScenario->isEnabled());
    EXPECT_TRUE(ui->editScenario->isEnabled());
    EXPECT_TRUE(window.isSaved());
}

TEST_F(MainWindowLayout, TabsInOrderStartingOnTheGraphs) {
    MainWindowDriver driver;
    QTabWidget* tabs = driver.window().form()->tabWidget;
    const QStringList names = {
        "boardHitsTab",       "twoPlayerBoardHitsTab", "winEvaluationTab",  "equityTableTab",
        "equityEvolutionTab", "EV_FE_calculationsTab", "equityTrainingTab", "equityGraphTab"};
    const QStringList texts = {"Board Hits",      "Two Player Board Hits", "Win Evaluation",
                               "Equity Tables",   "Equity Evolutions",     "EV/FE Calculations",
                               "Equity Training", "Equity Graphs"};
    ASSERT_EQ(tabs->count(), 8);
    for (int index = 0; index < 8; ++index) {
        EXPECT_EQ(tabs->widget(index)->objectName(), names[index]);
        EXPECT_EQ(tabs->tabText(index), texts[index]);
        EXPECT_FALSE(tabs->widget(index)->whatsThis().isEmpty()) << index;
    }
    EXPECT_EQ(tabs->currentIndex(), 7);
    EXPECT_EQ(tabs->widget(0)->whatsThis(),
              QStringLiteral("In this tab, you get an overview of the different types of hands "
                             "Player 1 or Player 2 have hit on the board."));
    // The explanation shows the current tab's whatsThis.
    EXPECT_EQ(driver.window().form()->explanatoryText->toPlainText(),
              QTextDocumentFragment::fromHtml(tabs->widget(7)->whatsThis()).toPlainText());
}

TEST_F(MainWindowLayout, FunctionKeysSwitchTabs) {
    MainWindowDriver driver;
    QTabWidget* tabs = driver.window().form()->tabWidget;
    for (int index = 0; index < 8; ++index) {
        QTest::keyClick(&driver.window(), static_cast<Qt::Key>(Qt::Key_F1 + index));
        EXPECT_EQ(tabs->currentIndex(), index);
        EXPECT_EQ(driver.window().form()->explanatoryText->toPlainText(),
                  QTextDocumentFragment::fromHtml(tabs->widget(index)->whatsThis()).toPlainText());
    }
}

TEST_F(MainWindowLayout, ActionsWithTextsKeysAndIcons) {
    MainWindowDriver driver;
    Ui::QuorvaneClass* ui = driver.window().form();
    struct Expected {
        QAction* action;
        const char* text;
        const char* key;
        bool icon;
    };
    const std::vector<Expected> expected = {
        {ui->action_New, "&New", "Ctrl+N", true},
        {ui->actionOpen_Analysis, "Open Scenarios...", "Ctrl+O", true},
        {ui->actionImportHandHistory, "Import From HEM/PT Hand History in Clipboard", "Ctrl+I",
         true},
        {ui->actionSave_All_Scenarios, "Save All Scenarios", "Ctrl+S", true},
        {ui->actionSave_All_Scenarios_As, "Save All Scenarios As...", "", false},
        {ui->actionTake_Screenshot, "Save &Screenshot...", "", true},
        {ui->action_Quit, "&Quit", "", true},
        {ui->actionUndo, "Undo ", "Ctrl+Z", true},
        {ui->actionRedo, "Redo ", "Ctrl+Y", true},
        {ui->actionShow_Hint_Tooltips, "Show Hint Tooltips", "", false},
        {ui->actionCalculate_Equity_Permanently, "Calculate Equity &Permanently", "", false},
        {ui->action_Hide_Empty_Lines_in_Board_Hits_Tabs, "&Hide Empty Lines in Evaluation Tabs", "",
         false},
        {ui->actionShow_Tab_Explanations, "Show Tab Explanations", "", false},
        {ui->actionShow_Plot_Explanation, "Show Plot Explanation", "", false},
        {ui->actionShow_EV_of_Single_Reactions, "Show EV of Single Reactions", "", false},
        {ui->actionColor_Coding, "Color Coding...", "", false},
        {ui->actionOnline_Help, "Online Tutorials", "", true},
        {ui->actionRelease_Notes, "Release Notes", "", false},
        {ui->actionAbout, "&About", "", true},
        {ui->actionCheck_for_Updates_at_Startup, "Check for &Updates at Startup", "", false},
        {ui->actionSelect_Cards_with_Right_Button, "Unselect Cards/Hands with &Right Button", "",
         false},
        {ui->actionImport_From_HEM_PT_Tourney_Hand_History,
         "Import From HEM/PT Tourney Hand History", "", true},
        {ui->actionFlop_Lines, "Flop Lines", "", false},
        {ui->actionCut, "Cut", "", false},
    };
    for (const Expected& entry : expected) {
        EXPECT_EQ(entry.action->text(), QString::fromLatin1(entry.text))
            << entry.action->objectName().toStdString();
        EXPECT_EQ(entry.action->shortcut(), QKeySequence(QString::fromLatin1(entry.key)))
            << entry.action->objectName().toStdString();
        EXPECT_EQ(!entry.action->icon().isNull(), entry.icon)
            << entry.action->objectName().toStdString();
    }
    EXPECT_EQ(ui->actionSelect_Cards_with_Right_Button->toolTip(),
              QStringLiteral("If unselected, cards will be unselected with left mouse button."));
    EXPECT_FALSE(ui->actionUndo->isEnabled());
    EXPECT_FALSE(ui->actionRedo->isEnabled());
}

TEST_F(MainWindowLayout, MenusAndToolBar) {
    MainWindowDriver driver;
    Quorvane& window = driver.window();
    QStringList titles;
    for (QAction* menu : window.menuBar()->actions())
        titles << menu->text();
    EXPECT_EQ(titles, QStringList({"&File", "&Edit", "&Options", "Hel&p"}));

    const auto menuActions = [&window](const char* name) {
        return actionNames(window.findChild<QMenu*>(QString::fromLatin1(name))->actions());
    };
    EXPECT_EQ(menuActions("menu_File"),
              QStringList({"action_New", "actionOpen_Analysis", "actionImportHandHistory", "|",
                           "actionSave_All_Scenarios", "actionSave_All_Scenarios_As",
                           "actionTake_Screenshot", "|", "action_Quit"}));
    EXPECT_EQ(menuActions("menu_Edit"), QStringList({"actionUndo", "actionRedo"}));
    EXPECT_EQ(menuActions("menuHelp_Texts"),
              QStringList({"actionShow_Tab_Explanations", "actionShow_Plot_Explanation"}));
    EXPECT_EQ(menuActions("menuEV_FE_Calculations"),
              QStringList({"actionShow_EV_of_Single_Reactions", "actionColor_Coding"}));
    EXPECT_EQ(menuActions("menuHel_p"),
              QStringList({"actionOnline_Help", "actionRelease_Notes", "|", "actionAbout"}));
    QMenu* options = window.findChild<QMenu*>(QStringLiteral("menu_Options"));
    EXPECT_EQ(options->title(), QStringLiteral("&Options"));
    QStringList optionTexts;
    for (QAction* action : options->actions())
        optionTexts << (action->isSeparator() ? QStringLiteral("|") : action->text());
    EXPECT_EQ(optionTexts, QStringList({"Show Hint Tooltips", "Calculate Equity &Permanently",
                                        "&Hide Empty Lines in Evaluation Tabs", "|", "Help Texts",
                                        "EV/FE Calculations"}));

    EXPECT_EQ(actionNames(window.form()->toolBar->actions()),
              QStringList({"action_New", "actionOpen_Analysis", "actionSave_All_Scenarios",
                           "actionImportHandHistory", "actionTake_Screenshot", "|", "actionUndo",
                           "actionRedo", "|", "actionOnline_Help", "actionRelease_Notes",
                           "actionAbout"}));
}

TEST_F(MainWindowLayout, DefaultSettings) {
    MainWindowDriver driver;
    Ui::QuorvaneClass* ui = driver.window().form();
    EXPECT_TRUE(ui->action_Hide_Empty_Lines_in_Board_Hits_Tabs->isChecked());
    EXPECT_TRUE(ui->actionShow_Hint_Tooltips->isChecked());
    EXPECT_FALSE(ui->actionShow_EV_of_Single_Reactions->isChecked());
    EXPECT_TRUE(ui->actionCalculate_Equity_Permanently->isChecked());
    EXPECT_TRUE(ui->calculateEquityPermanently->isChecked());
    EXPECT_TRUE(ui->actionShow_Tab_Explanations->isChecked());
    EXPECT_TRUE(ui->explanatoryWidget->isVisible());
    EXPECT_TRUE(ui->actionShow_Plot_Explanation->isChecked());
    EXPECT_TRUE(ui->actionCheck_for_Updates_at_Startup->isChecked());
}

TEST_F(MainWindowLayout, StoredSettingsAreAppliedAndClosingWritesThem) {
    {
        QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
        settings.setValue(QStringLiteral("optionmenu/calculateEquityPermanently"), false);
        settings.setValue(QStringLiteral("optionmenu/showTabExplanations"), false);
        settings.setValue(QStringLiteral("optionmenu/EV_FE_ShowEVOfSingleReactions"), true);
        settings.setValue(QStringLiteral("mainwindow/size"), QSize(1000, 700));
        settings.sync();
    }
    MainWindowDriver driver;
    Quorvane& window = driver.window();
    Ui::QuorvaneClass* ui = window.form();
    EXPECT_FALSE(ui->actionCalculate_Equity_Permanently->isChecked());
    EXPECT_FALSE(ui->calculateEquityPermanently->isChecked());
    EXPECT_FALSE(ui->explanatoryWidget->isVisible());
    EXPECT_TRUE(ui->actionShow_EV_of_Single_Reactions->isChecked());
    EXPECT_EQ(window.size(), QSize(1000, 700));

    // Toggled options: hint tips and empty lines are written at once.
    ui->actionShow_Hint_Tooltips->setChecked(false);
    ui->action_Hide_Empty_Lines_in_Board_Hits_Tabs->setChecked(false);
    {
        QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
        EXPECT_FALSE(settings.value(QStringLiteral("optionmenu/showHintTooltips")).toBool());
        EXPECT_FALSE(
            settings.value(QStringLiteral("optionmenu/removeEmptyLinesFromBoardEvaluationTabs"))
                .toBool());
        EXPECT_FALSE(settings.contains(QStringLiteral("mainwindow/pos")));
    }
    ui->calculateEquityPermanently->setChecked(true);
    EXPECT_TRUE(ui->actionCalculate_Equity_Permanently->isChecked());
    window.resize(1100, 720);
    EXPECT_TRUE(window.close()); // saved: no question
    QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
    EXPECT_TRUE(settings.value(QStringLiteral("optionmenu/calculateEquityPermanently")).toBool());
    EXPECT_EQ(settings.value(QStringLiteral("mainwindow/size")).toSize(), QSize(1100, 720));
    EXPECT_TRUE(settings.contains(QStringLiteral("mainwindow/pos")));
    EXPECT_FALSE(settings.value(QStringLiteral("mainwindow/maximized")).toBool());
}

TEST_F(MainWindowLayout, HelpPanelHidesAndComesBack) {
    MainWindowDriver driver;
    Ui::QuorvaneClass* ui = driver.window().form();
    QTest::mouseClick(ui->hideExplanationButton, Qt::LeftButton);
    EXPECT_FALSE(ui->explanatoryWidget->isVisible());
    EXPECT_FALSE(ui->actionShow_Tab_Explanations->isChecked());
    ui->actionShow_Tab_Explanations->setChecked(true);
    EXPECT_TRUE(ui->explanatoryWidget->isVisible());
}

TEST_F(MainWindowLayout, AnUnsavedWindowAsksBeforeClosing) {
    MainWindowDriver driver;
    driver.typeRange(1, QStringLiteral("AA"));
    EXPECT_EQ(driver.window().windowTitle(), QStringLiteral("*untitled.qva - Quorvane "));
    EXPECT_FALSE(driver.window().isSaved());

    MessageBoxAnswer cancel;
    cancel.answerWith(QMessageBox::Cancel);
    EXPECT_FALSE(driver.window().close());
    EXPECT_EQ(cancel.title, QStringLiteral("Save File?"));
    EXPECT_EQ(cancel.text, QStringLiteral("Do you want to save \"untitled.qva\"?"));
    EXPECT_TRUE(driver.window().isVisible());

    MessageBoxAnswer no;
    no.answerWith(QMessageBox::No);
    EXPECT_TRUE(driver.window().close());
    EXPECT_FALSE(driver.window().isVisible());
}

TEST_F(MainWindowLayout, AboutNamesTheVersion) {
    MainWindowDriver driver;
    MessageBoxAnswer ok;
    ok.answerWith(QMessageBox::Ok);
    driver.window().showAbout();
    EXPECT_EQ(ok.title, QStringLiteral("About Quorvane"));
    EXPECT_TRUE(ok.text.contains(QStringLiteral("Quorvane")));
    EXPECT_TRUE(ok.text.contains(QStringLiteral("v1.20.2")));
}

} // namespace
