#pragma once

#include "Range/HandRange.h"
#include "app/PlayerRangeController.h"
#include "app/document/AnalysisDocument.h"
#include "calculation/EquityCalculationHandle.h"
#include "calculation/ThreadPool.h"
#include "handhistory/ui/HandHistoryImport.h"
#include "handstrength/HandGroupSchemaPool.h"
#include "handstrength/HandGroupTickSchemaPool.h"

#include <QMainWindow>
#include <QPixmap>
#include <QSettings>
#include <QString>

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

class AnalysisFileCommands;
class AnalysisHistory;
class AnalysisTabs;
class HeadlineEquity;
class ScenarioSelector;
class QCloseEvent;
class QMovie;
namespace Ui {
class QuorvaneClass;
}

// The main window: shows one analysis document (scenarios, the two live ranges with their
// groups, the file state) and owns the calculation pool and all tabs. It is the wiring
// between the document and the widgets, and the one place where a change of the inputs
// becomes work: every change of a range line or of the board ends in updateEquitiesAndTabs,
// which stores the inputs in the current scenario, tells the visible tab, and (with
// "Calculate Equity Permanently") restarts the headline equity.
//
// The two players' rows are one PlayerRangeController each; the Player1/Player2 slots are
// forwards to them. The headline equity is a HeadlineEquity.
//
// Main thread only. Not copyable.
class Quorvane : public QMainWindow {
    Q_OBJECT

public:
    explicit Quorvane(QWidget* parent = nullptr);
    ~Quorvane() override;

    Quorvane(const Quorvane&) = delete;
    Quorvane& operator=(const Quorvane&) = delete;

    // --- For the tabs and for tests -------------------------------------------------------
    AnalysisDocument& document() { return analysis; }
    ThreadPool& pool() { return threadPool; }
    const EquityCalculationHandle& currentEquityHandle() const;
    HandGroupSchemaPool& handGroupSchemaPool() { return schemaPool; }
    HandGroupTickSchemaPool& handGroupTickSchemaPool() { return tickSchemaPool; }
    Range::Tree& player1Groups() { return analysis.range(1); }
    Range::Tree& player2Groups() { return analysis.range(2); }
    const std::vector<Scenario>& allScenarios() const { return analysis.scenarios(); }
    bool isSaved() const { return analysis.isSaved(); }
    QMovie* equityMovie() const;
    Ui::QuorvaneClass* form() const { return ui; }
    AnalysisFileCommands& fileCommands() { return *files; }

    // Asks "Save File?" when there are unsaved changes. False means cancelled.
    bool askToSave();
    // Opens the analysis file `path` as File > Open does after its dialog: asks to save
    // first, tells the user when the file cannot be read. True when it is shown.
    bool openAnalysisFile(const QString& path);
    // At start-up: offers the analysis an earlier run left unsaved when it ended without
    // closing. True when it was restored.
    bool offerRecovery();

signals:
    // Connected to updateEquitiesAndTabs and onSomethingChangedRelevantForFile; nothing
    // emits it in this version.
    void constraintsChanged();

public slots:
    void updateEquitiesAndTabs(bool alwaysRefresh = false);
    void updateEquitiesAndTabsWithRefresh();
    void publishEquityCalculatorResult(const ThreadHandle& handle, const LongedEvaluation& result);
    void showAbout();
    void reactToSwitchedTab();
    void onNew();
    void onHideEmptyRowsInBoardHitsTabs(bool checked);
    // The three imports of a played hand; the choice of what is imported is the entry's.
    void onImportHandHistory() { importHandHistory(HandHistoryImport::Mode::Lines); }
    void onImportBoardAndHeroOnly() {
        importHandHistory(HandHistoryImport::Mode::BoardAndHeroOnly);
    }
    void onImportTourneyHandHistory() { importHandHistory(HandHistoryImport::Mode::TourneyLines); }
    void onTakeScreenshot();
    void onOpenAnalysis();
    void onSaveAnalysis();
    void onSaveAnalysisAs();
    void onOnlineHelp();
    void onShowReleaseNotes();
    void onHideHelpButton();
    void onTabHelpToggled(bool checked);
    void onShowHintTooltipsToggled(bool checked);
    void onEV_FE_ColorCodingOptions();
    void onEV_FE_ShowEVOfSingleReactions(bool checked);
    void reactToEquityToggle(bool enabled);
    void onUndo();
    void onRedo();
    void onMementoRelevantChange(std::string label = "");
    void onScenarioSelectionChange();
    void onEditScenario();
    void onAddScenario();
    void onDeleteScenario();
    void updateScenariosAndSelectSpecificOne(int index);
    // The players' rows, one forward each.
    void onNewPlayer1Group(std::string groupName, Range::HandRange range) {
        player1Row->addGroup(std::move(groupName), range);
    }
    void onNewPlayer2Group(std::string groupName, Range::HandRange range) {
        player2Row->addGroup(std::move(groupName), range);
    }
    void onNewPlayer1Range(Range::HandRange range) { player1Row->overwrite(range); }
    void onNewPlayer2Range(Range::HandRange range) { player2Row->overwrite(range); }
    void onSomethingChangedRelevantForFile();
    void onBoardCardsChange();
    void onPlayer1SelectRange() { player1Row->selectRange(); }
    void onPlayer2SelectRange() { player2Row->selectRange(); }
    void onPlayer1SelectCards() { player1Row->selectCards(); }
    void onPlayer2SelectCards() { player2Row->selectCards(); }
    void onPlayer1Clear() { player1Row->clear(); }
    void onPlayer2Clear() { player2Row->clear(); }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    // Technical texts of the ranges the lines show, and the board widget's texts.
    AnalysisInputs readInputs() const;
    void calculateEquity();

    void updateTitle();
    void refreshScenarioList();
    void showFirstScenario();

    // The common end of every range change that does not come from typing.
    void onRangeChangedBy(const std::string& label);
    // Appends the imported scenario, if any, and shows it.
    void importHandHistory(HandHistoryImport::Mode mode);
    std::string tabStateText() const;
    // Puts what a file or a snapshot holds into the window: its scenarios, the one it had
    // selected, and (with a selection) the EV/FE page's state.
    void showContent(AnalysisContent content);

    struct PlayerWiring;
    std::vector<PlayerWiring> playerWiring() const;
    void wirePlayerButtons();
    void wireRangeLines();
    void wireActions();

    Ui::QuorvaneClass* ui;
    HandGroupSchemaPool schemaPool;
    HandGroupTickSchemaPool tickSchemaPool;
    QPixmap picture;
    ThreadPool threadPool;
    // Scenarios, the live ranges (each starts with one group "Parent"), the inputs of the
    // last update, the file name and saved state.
    AnalysisDocument analysis;
    std::unique_ptr<PlayerRangeController> player1Row;
    std::unique_ptr<PlayerRangeController> player2Row;
    HeadlineEquity* headline = nullptr;
    AnalysisTabs* tabs = nullptr;
    AnalysisFileCommands* files = nullptr;
    AnalysisHistory* history = nullptr;
    ScenarioSelector* scenarioBar = nullptr;
    QSettings settings;
    bool tabsReady = false;
};
