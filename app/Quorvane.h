#pragma once

#include "Range/HandRange.h"
#include "Range/Tree.h"
#include "app/Scenario.h"
#include "calculation/EquityCalculationHandle.h"
#include "calculation/ThreadPool.h"
#include "handstrength/HandGroupSchemaPool.h"
#include "handstrength/HandGroupTickSchemaPool.h"

#include <QMainWindow>
#include <QPixmap>
#include <QSettings>
#include <QString>

#include <cstdint>
#include <string>
#include <vector>

class QCloseEvent;
class QLabel;
class QMovie;
class ManagedHandRangeLine;
namespace Ui {
class QuorvaneClass;
}

// A snapshot of the whole analysis for undo and redo: what changed, and the analysis as
// file text. The list is filled once the analysis file exists; see onMementoRelevantChange.
struct Memento {
    std::string label;
    std::string data;
};

// The main window: owns the two players' ranges with their groups, the board, the
// scenarios, the calculation pool and all tabs, and is the one place where a change of the
// inputs becomes work. Every change of a range line or of the board ends in
// updateEquitiesAndTabs, which stores the inputs in the current scenario, tells the visible
// tab, and (with "Calculate Equity Permanently") restarts the headline equity calculation;
// publishEquityCalculatorResult shows its result when it is still the newest.
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
    ThreadPool& pool() { return threadPool; }
    const EquityCalculationHandle& currentEquityHandle() const { return equityHandle; }
    HandGroupSchemaPool& handGroupSchemaPool() { return schemaPool; }
    HandGroupTickSchemaPool& handGroupTickSchemaPool() { return tickSchemaPool; }
    Range::Tree& player1Groups() { return player1Range; }
    Range::Tree& player2Groups() { return player2Range; }
    const std::vector<Scenario>& allScenarios() const { return scenarios; }
    bool isSaved() const { return saved; }
    QMovie* equityMovie() const { return loadingMovie; }
    Ui::QuorvaneClass* form() const { return ui; }

    // Asks "Save File?" when there are unsaved changes. False means cancelled.
    bool askToSave();

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
    void onImportHandHistory();
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
    void onNewPlayer1Group(std::string groupName, Range::HandRange range);
    void onNewPlayer2Group(std::string groupName, Range::HandRange range);
    void onNewPlayer1Range(Range::HandRange range);
    void onNewPlayer2Range(Range::HandRange range);
    void onSomethingChangedRelevantForFile();
    void onBoardCardsChange();
    void onPlayer1SelectRange();
    void onPlayer2SelectRange();
    void onPlayer1SelectCards();
    void onPlayer2SelectCards();
    void onPlayer1Clear();
    void onPlayer2Clear();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    struct Inputs {
        std::string player1;
        std::string player2;
        std::string board;
        std::string deadCards;
    };

    // Technical texts of the ranges the lines show, and the board widget's texts.
    Inputs readInputs() const;
    void calculateEquity();
    void showEquity(QLabel* label, double wins, double otherWins, double ties, double total);
    void clearEquityLabels();
    void tellVisibleTab(const Inputs& inputs, bool alwaysRefresh);

    void updateTitle();
    void updateUndoActions();
    void loadSettings();
    void saveSettings();
    void refreshScenarioList();
    void addFirstScenario();
    // Stores the live ranges and board in the scenario shown.
    void storeCurrentScenario(const Inputs& inputs);
    void restoreRange(Range::Tree& tree, ManagedHandRangeLine* line,
                      const std::vector<Range::NodeMemento>& memento);

    // The common end of every range change that does not come from typing.
    void onRangeChangedBy(const std::string& label);
    void clearPlayer(Range::Tree& tree, ManagedHandRangeLine* line, const std::string& label);
    void selectCards(ManagedHandRangeLine* line, const QString& title, const std::string& label);
    // Opens the hand selection dialog on the player's tree; the tree's nodes are replaced
    // when it is accepted.
    void selectRange(Range::Tree& tree, ManagedHandRangeLine* line, const QString& title,
                     const std::string& label);
    void addGroup(Range::Tree& tree, ManagedHandRangeLine* line, std::string name,
                  const Range::HandRange& range, const QString& labelFormat);
    void overwriteRange(Range::Tree& tree, ManagedHandRangeLine* line,
                        const Range::HandRange& range, const std::string& label);
    void saveAnalysisTo(const QString& name);

    void wireRangeLines();
    void wireBoardTabControls();
    void wireBoardTabOffers();
    void wireActions();
    void setUpFunctionKeys();

    QString fileName;
    bool restoring = false;
    bool saved = true;
    Ui::QuorvaneClass* ui;
    HandGroupSchemaPool schemaPool;
    HandGroupTickSchemaPool tickSchemaPool;
    QPixmap picture;
    ThreadPool threadPool;
    EquityCalculationHandle equityHandle;
    // The players' ranges with their groups: node 0 is the full range ("Parent" at start).
    Range::Tree player1Range;
    Range::Tree player2Range;
    std::string lastPlayer1;
    std::string lastPlayer2;
    std::string lastBoard;
    std::string lastDeadCards;
    std::vector<Scenario> scenarios;
    QMovie* loadingMovie;
    QSettings settings;
    bool tabsReady = false;
    std::vector<Memento> mementos;
    std::int32_t mementoIndex = 0;
};
