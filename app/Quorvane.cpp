#include "app/Quorvane.h"
#include "ui_Quorvane.h"

#include "Range/HandRangeElementConversion.h"
#include "app/AboutBox.h"
#include "app/AnalysisFileCommands.h"
#include "app/AnalysisHistory.h"
#include "app/AnalysisTabs.h"
#include "app/HeadlineEquity.h"
#include "app/MainWindowSettings.h"
#include "app/PlayerRangeController.h"
#include "app/ProductServer.h"
#include "app/ReleaseNoteDialog.h"
#include "app/ScenarioSelector.h"
#include "evfe/ui/EV_FE_CalculationsColorCodingDialog.h"
#include "evfe/ui/EV_FE_CalculationsTab.h"
#include "selection/BoardCardsWidget.h"
#include "selection/HandRangeLine.h"
#include "selection/ManagedHandRangeLine.h"
#include "utils/ui/Screenshot.h"
#include "utils/ui/TabRowFit.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QFile>
#include <QTextStream>

Quorvane::Quorvane(QWidget* parent)
    : QMainWindow(parent), ui(new Ui::QuorvaneClass),
      settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane")) {
    // 1. Fields. The user's hand group schemas and tick schemas; the board tabs work on these.
    schemaPool.load();
    tickSchemaPool.load();

    // 2. The form, then the program's style sheet for the whole application.
    ui->setupUi(this);
    QFile styleSheet(QStringLiteral(":/style.qss"));
    if (styleSheet.open(QIODevice::ReadOnly | QIODevice::Text))
        qApp->setStyleSheet(QTextStream(&styleSheet).readAll());

    // 3. The live ranges of the document, each with its one group "Parent", handed to the
    //    players' rows; the headline equity on its two labels; the file flows, the tabs and
    //    the scenario row.
    player1Row = std::make_unique<PlayerRangeController>(1, analysis.range(1), ui->player1Range,
                                                         ui->boardCardsWidget, &threadPool, this);
    player2Row = std::make_unique<PlayerRangeController>(2, analysis.range(2), ui->player2Range,
                                                         ui->boardCardsWidget, &threadPool, this);
    player1Row->setOpponent(*player2Row);
    player2Row->setOpponent(*player1Row);
    headline = new HeadlineEquity(threadPool, ui->player1Wins, ui->player2Wins, this);
    files = new AnalysisFileCommands(
        analysis, [this] { return tabStateText(); }, this);
    files->setShow([this](AnalysisContent content) { showContent(std::move(content)); });
    history = new AnalysisHistory(analysis, *files, ui->actionUndo, ui->actionRedo, this);
    tabs = new AnalysisTabs(ui->tabWidget,
                            {ui->boardHitsTab, ui->twoPlayerBoardHitsTab, ui->winEvaluationTab},
                            threadPool, schemaPool, tickSchemaPool, this);
    scenarioBar =
        new ScenarioSelector(analysis, ui->scenarios, ui->editScenario, ui->deleteScenario, this);
    for (PlayerRangeController* row : {player1Row.get(), player2Row.get()})
        connect(row, &PlayerRangeController::changedBy, this, &Quorvane::onRangeChangedBy);
    connect(&analysis, &AnalysisDocument::titleChanged, this, &QWidget::setWindowTitle);
    // The EV/FE tab edits the lines of the scenario shown, which a change of the list may move.
    connect(&analysis, &AnalysisDocument::scenarioListChanged, this, [this] {
        const Scenario* shown = analysis.currentScenario();
        ui->EV_FE_calculationsTab->setLines(shown != nullptr ? shown->lines.get() : nullptr);
    });

    // 4. The board and table tabs get the pools on every switch to them
    //    (reactToSwitchedTab), the training tab gets it once here; the explanation shows the
    //    current tab's whatsThis.
    ui->equityTrainingTab->setThreadPool(&threadPool);
    ui->EV_FE_calculationsTab->setUp(&threadPool, &analysis.range(1), &analysis.range(2),
                                     ui->explanatoryText, ui->actionShow_Plot_Explanation);
    ui->explanatoryText->setHtml(ui->tabWidget->currentWidget()->whatsThis());

    // 5. Connections 1 to 8, in this order: slots of one signal run in connection order.
    connect(ui->scenarios, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &Quorvane::onScenarioSelectionChange);
    connect(ui->editScenario, &QToolButton::clicked, this, &Quorvane::onEditScenario);
    connect(ui->addScenario, &QToolButton::clicked, this, &Quorvane::onAddScenario);
    connect(ui->deleteScenario, &QToolButton::clicked, this, &Quorvane::onDeleteScenario);
    wirePlayerButtons();
    connect(ui->actionUndo, &QAction::triggered, this, &Quorvane::onUndo);
    connect(ui->actionRedo, &QAction::triggered, this, &Quorvane::onRedo);
    wireRangeLines();
    connect(ui->boardCardsWidget, &BoardCardsWidget::changeOccured, this,
            &Quorvane::onBoardCardsChange);
    connect(tabs, &AnalysisTabs::refreshRequested, this,
            &Quorvane::updateEquitiesAndTabsWithRefresh);
    connect(&threadPool, &ThreadPool::EquityCalculationFinished, this,
            &Quorvane::publishEquityCalculatorResult);
    connect(tabs, &AnalysisTabs::Player1RangeChange, this, &Quorvane::onNewPlayer1Range);
    connect(tabs, &AnalysisTabs::Player2RangeChange, this, &Quorvane::onNewPlayer2Range);
    connect(tabs, &AnalysisTabs::NewPlayer1Group, this, &Quorvane::onNewPlayer1Group);
    connect(tabs, &AnalysisTabs::NewPlayer2Group, this, &Quorvane::onNewPlayer2Group);
    connect(ui->tabWidget, &QTabWidget::currentChanged, this, &Quorvane::reactToSwitchedTab);
    connect(this, &Quorvane::constraintsChanged, this, [this] { updateEquitiesAndTabs(); });
    connect(this, &Quorvane::constraintsChanged, this,
            &Quorvane::onSomethingChangedRelevantForFile);
    wireActions();

    // 6. The first scenario, then the tabs count, then the settings.
    showFirstScenario();
    tabsReady = true;
    reactToSwitchedTab();
    MainWindowSettings::load(settings, *this, *ui);
    // The tabs ask for the room of the page shown; on narrow screens the explanations step
    // aside for them.
    new TabRowFit(ui->centralScrollArea, ui->thirdRowWidget, ui->tabWidget, ui->explanatoryWidget,
                  ui->actionShow_Tab_Explanations, this);

    // 7. Keys, title, undo state, and the first memento.
    tabs->setUpFunctionKeys();
    analysis.markSaved(analysis.fileName());
    updateTitle();
    // 9.
    connect(ui->EV_FE_calculationsTab, &EV_FE_CalculationsTab::SomeThingChanged, this,
            &Quorvane::onSomethingChangedRelevantForFile);
    connect(ui->EV_FE_calculationsTab, &EV_FE_CalculationsTab::SomeThingMementoRelevantChanged,
            this, &Quorvane::onMementoRelevantChange);
    history->updateActions();
    onMementoRelevantChange("");
}

Quorvane::~Quorvane() {
    // The lines hold pointers into the document's trees: they let go before the form goes.
    player1Row.reset();
    player2Row.reset();
    delete ui;
}

const EquityCalculationHandle& Quorvane::currentEquityHandle() const {
    return headline->handle();
}

QMovie* Quorvane::equityMovie() const {
    return headline->movie();
}

// What the window wires for one player: the row, its buttons and the window's slots for them.
struct Quorvane::PlayerWiring {
    PlayerRangeController* row;
    QToolButton* selectRange;
    QToolButton* selectCards;
    QToolButton* clear;
    void (Quorvane::*onSelectRange)();
    void (Quorvane::*onSelectCards)();
    void (Quorvane::*onClear)();
};

std::vector<Quorvane::PlayerWiring> Quorvane::playerWiring() const {
    return {{player1Row.get(), ui->selectPlayer1RangeButton, ui->selectPlayer1CardsButton,
             ui->clearPlayer1RangeButton, &Quorvane::onPlayer1SelectRange,
             &Quorvane::onPlayer1SelectCards, &Quorvane::onPlayer1Clear},
            {player2Row.get(), ui->selectPlayer2RangeButton, ui->selectPlayer2CardsButton,
             ui->clearPlayer2RangeButton, &Quorvane::onPlayer2SelectRange,
             &Quorvane::onPlayer2SelectCards, &Quorvane::onPlayer2Clear}};
}

void Quorvane::wirePlayerButtons() {
    for (const PlayerWiring& player : playerWiring()) {
        connect(player.selectRange, &QToolButton::clicked, this, player.onSelectRange);
        connect(player.selectCards, &QToolButton::clicked, this, player.onSelectCards);
        connect(player.clear, &QToolButton::clicked, this, player.onClear);
    }
}

void Quorvane::wireRangeLines() {
    // The managed line connected its own onRangeTextChange when it was built, so a typed
    // change first updates the mapping (MappingChanged -> updateEquitiesAndTabs stores it
    // in the scenario) before the functor below records the memento.
    for (const PlayerWiring& player : playerWiring()) {
        const std::string changed = player.row->name().toStdString() + "'s Range Changed";
        HandRangeLine* line = player.row->line()->rangeLine();
        connect(line, &HandRangeLine::RangeChanged, this, [this, changed] {
            analysis.markChanged();
            updateTitle();
            onMementoRelevantChange(changed);
        });
        connect(line, &HandRangeLine::RangeChanged, this, [this] { updateEquitiesAndTabs(); });
        connect(player.row->line(), &ManagedHandRangeLine::MappingChanged, this,
                [this] { updateEquitiesAndTabs(); });
        connect(player.row->line(), &ManagedHandRangeLine::doubleClicked, this,
                player.onSelectRange);
    }
}

void Quorvane::wireActions() {
    using Slot = void (Quorvane::*)();
    const std::pair<QAction*, Slot> triggered[] = {
        {ui->action_New, &Quorvane::onNew},
        {ui->actionOpen_Analysis, &Quorvane::onOpenAnalysis},
        {ui->actionImportHandHistory, &Quorvane::onImportHandHistory},
        {ui->actionOnly_Board_and_Hero_s_Hand, &Quorvane::onImportBoardAndHeroOnly},
        {ui->actionImport_From_HEM_PT_Tourney_Hand_History, &Quorvane::onImportTourneyHandHistory},
        {ui->actionSave_All_Scenarios, &Quorvane::onSaveAnalysis},
        {ui->actionSave_All_Scenarios_As, &Quorvane::onSaveAnalysisAs},
        {ui->actionTake_Screenshot, &Quorvane::onTakeScreenshot},
        {ui->actionColor_Coding, &Quorvane::onEV_FE_ColorCodingOptions},
        {ui->actionOnline_Help, &Quorvane::onOnlineHelp},
        {ui->actionRelease_Notes, &Quorvane::onShowReleaseNotes},
        {ui->actionAbout, &Quorvane::showAbout}};
    for (const auto& [action, slot] : triggered)
        connect(action, &QAction::triggered, this, slot);
    using Toggle = void (Quorvane::*)(bool);
    const std::pair<QAction*, Toggle> toggled[] = {
        {ui->actionShow_Hint_Tooltips, &Quorvane::onShowHintTooltipsToggled},
        {ui->actionCalculate_Equity_Permanently, &Quorvane::reactToEquityToggle},
        {ui->action_Hide_Empty_Lines_in_Board_Hits_Tabs, &Quorvane::onHideEmptyRowsInBoardHitsTabs},
        {ui->actionShow_Tab_Explanations, &Quorvane::onTabHelpToggled},
        {ui->actionShow_EV_of_Single_Reactions, &Quorvane::onEV_FE_ShowEVOfSingleReactions}};
    for (const auto& [action, slot] : toggled)
        connect(action, &QAction::toggled, this, slot);
    connect(ui->action_Quit, &QAction::triggered, this, &QWidget::close);
    connect(ui->calculateEquityPermanently, &QCheckBox::toggled, this,
            &Quorvane::reactToEquityToggle);
    connect(ui->hideExplanationButton, &QPushButton::clicked, this, &Quorvane::onHideHelpButton);
}

// ---- The equity loop --------------------------------------------------------------------

AnalysisInputs Quorvane::readInputs() const {
    return AnalysisInputs{player1Row->technicalText(), player2Row->technicalText(),
                          ui->boardCardsWidget->getBoard(), ui->boardCardsWidget->getDeadCards()};
}

void Quorvane::updateEquitiesAndTabs(bool alwaysRefresh) {
    // 1.
    const AnalysisInputs inputs = readInputs();
    // 2. The lines show their ranges again (a restore may have swapped the nodes).
    player1Row->showRangeAgain();
    player2Row->showRangeAgain();
    // 3. and 4.
    if (!analysis.takeInputs(inputs) && !alwaysRefresh)
        return;
    // 5. The combinations left by the other range and the cards; nothing uses them here.
    volatile bool noStop = false;
    getRangeCombinations(inputs.player1, inputs.player2, inputs.board, inputs.deadCards, noStop);
    // 6.
    analysis.storeLiveState();
    // 7.
    const std::vector<unsigned long long> dead = Range::cardsOfText(inputs.deadCards);
    player1Row->setCards(inputs.board, dead);
    player2Row->setCards(inputs.board, dead);
    // 8.
    // Only the visible tab hears of new inputs; a tab coming into view catches up through
    // reactToSwitchedTab.
    tabs->tellCurrent(inputs, alwaysRefresh);
    // 9.
    if (ui->calculateEquityPermanently->isChecked())
        calculateEquity();
}

void Quorvane::updateEquitiesAndTabsWithRefresh() {
    updateEquitiesAndTabs(true);
}

void Quorvane::calculateEquity() {
    headline->calculate(readInputs());
}

void Quorvane::publishEquityCalculatorResult(const ThreadHandle& handle,
                                             const LongedEvaluation& result) {
    headline->publish(handle, result);
}

void Quorvane::reactToEquityToggle(bool enabled) {
    {
        const QSignalBlocker actionBlocker(ui->actionCalculate_Equity_Permanently);
        const QSignalBlocker boxBlocker(ui->calculateEquityPermanently);
        ui->actionCalculate_Equity_Permanently->setChecked(enabled);
        ui->calculateEquityPermanently->setChecked(enabled);
    }
    if (enabled && player1Row->hasText() && player2Row->hasText()) {
        calculateEquity();
        return;
    }
    if (!enabled)
        headline->cancel();
    headline->clear();
}

void Quorvane::reactToSwitchedTab() {
    if (!tabsReady)
        return;
    QWidget* tab = tabs->current();
    ui->explanatoryText->setHtml(tab ? tab->whatsThis() : QString());
    tabs->prepareCurrent();
    updateEquitiesAndTabs(true);
}

// ---- Range changes from outside the line edit ---------------------------------------------

void Quorvane::onRangeChangedBy(const std::string& label) {
    analysis.markChanged();
    updateTitle();
    onMementoRelevantChange(label);
    updateEquitiesAndTabs(false);
}

void Quorvane::onBoardCardsChange() {
    updateEquitiesAndTabs(false);
    analysis.markChanged();
    updateTitle();
    onMementoRelevantChange("Board Cards Changed");
}

void Quorvane::onSomethingChangedRelevantForFile() {
    analysis.markChanged();
    updateTitle();
}

void Quorvane::updateTitle() {
    setWindowTitle(analysis.title());
}

// ---- Scenarios ------------------------------------------------------------------------------

void Quorvane::showFirstScenario() {
    analysis.resetScenarios();
    refreshScenarioList();
    onScenarioSelectionChange();
}

void Quorvane::refreshScenarioList() {
    scenarioBar->refresh();
}

void Quorvane::updateScenariosAndSelectSpecificOne(int index) {
    scenarioBar->refresh();
    scenarioBar->selectSilently(index);
    onScenarioSelectionChange();
}

void Quorvane::onScenarioSelectionChange() {
    const int index = scenarioBar->currentIndex();
    if (index < 0 || index >= static_cast<int>(analysis.scenarios().size()))
        return;
    analysis.setCurrentIndex(index);
    // A copy: the restores below store into the scenario again.
    const Scenario scenario = analysis.scenario(index);
    player1Row->restore(scenario.player1);
    player2Row->restore(scenario.player2);
    ui->EV_FE_calculationsTab->setFullRanges(&analysis.range(1), &analysis.range(2));
    ui->boardCardsWidget->setBoard(scenario.board);
    ui->boardCardsWidget->setDeadCards(scenario.deadCards);
    ui->EV_FE_calculationsTab->showScenario(*analysis.currentScenario());
    updateEquitiesAndTabs(false);
}

void Quorvane::onAddScenario() {
    if (scenarioBar->add())
        onScenarioSelectionChange();
}

void Quorvane::onEditScenario() {
    if (scenarioBar->rename())
        onScenarioSelectionChange();
}

void Quorvane::onDeleteScenario() {
    if (scenarioBar->remove())
        onScenarioSelectionChange();
}

void Quorvane::onNew() {
    if (!askToSave())
        return;
    ui->boardCardsWidget->clearAll();
    showFirstScenario();
    analysis.markSaved(QString());
    history->restart();
}

// ---- Undo and the analysis file ------------------------------------------------------------

std::string Quorvane::tabStateText() const {
    return ui->EV_FE_calculationsTab->stateText();
}

void Quorvane::onMementoRelevantChange(std::string label) {
    history->record(label);
}

void Quorvane::onUndo() {
    history->undo();
}

void Quorvane::onRedo() {
    history->redo();
}

void Quorvane::showContent(AnalysisContent content) {
    const int count = static_cast<int>(content.scenarios.size());
    const int selected = content.selectedScenario;
    analysis.replaceScenarios(std::move(content.scenarios), 0, content.snapshotParts);
    refreshScenarioList();
    onScenarioSelectionChange();
    // Not blocked: a changed index shows that scenario (restoring keeps it out of the list).
    if (selected < 0 || selected >= count) {
        ui->scenarios->setCurrentIndex(count - 1);
        return;
    }
    ui->scenarios->setCurrentIndex(selected);
    ui->EV_FE_calculationsTab->restoreState(content.tabState);
}

void Quorvane::onOpenAnalysis() {
    files->openChosen();
}

bool Quorvane::openAnalysisFile(const QString& path) {
    return files->openFile(path);
}

bool Quorvane::offerRecovery() {
    return files->restoreRecovered();
}

// Save and Save As are one flow, the file commands' save: an empty name asks for one.
void Quorvane::onSaveAnalysis() {
    files->save(analysis.fileName());
}

void Quorvane::onSaveAnalysisAs() {
    files->save(QString());
}

void Quorvane::importHandHistory(HandHistoryImport::Mode mode) {
    if (const std::optional<Scenario> scenario = HandHistoryImport(this).run(mode))
        updateScenariosAndSelectSpecificOne(analysis.appendScenario(*scenario));
}

bool Quorvane::askToSave() {
    return files->askToSave();
}

void Quorvane::closeEvent(QCloseEvent* event) {
    if (!askToSave()) {
        event->ignore();
        return;
    }
    MainWindowSettings::save(settings, *this, *ui);
    schemaPool.save();
    tickSchemaPool.save();
    files->endCleanly();
    event->accept();
}

// ---- Options, help and the rest ------------------------------------------------------------

void Quorvane::onHideEmptyRowsInBoardHitsTabs(bool checked) {
    settings.setValue(QStringLiteral("optionmenu/removeEmptyLinesFromBoardEvaluationTabs"),
                      checked);
    updateEquitiesAndTabs(true);
}

void Quorvane::onEV_FE_ShowEVOfSingleReactions(bool checked) {
    settings.setValue(QStringLiteral("optionmenu/EV_FE_ShowEVOfSingleReactions"), checked);
    ui->EV_FE_calculationsTab->DoRefresh();
}

void Quorvane::onShowHintTooltipsToggled(bool checked) {
    settings.setValue(QStringLiteral("optionmenu/showHintTooltips"), checked);
}

void Quorvane::onEV_FE_ColorCodingOptions() {
    EV_FE_CalculationsColorCodingDialog dialog(this);
    if (dialog.exec() == QDialog::Accepted)
        ui->EV_FE_calculationsTab->DoRefresh();
}

void Quorvane::onTabHelpToggled(bool checked) {
    ui->explanatoryWidget->setVisible(checked);
}

void Quorvane::onHideHelpButton() {
    ui->explanatoryWidget->hide();
    ui->actionShow_Tab_Explanations->setChecked(false);
}

void Quorvane::onOnlineHelp() {
    QDesktopServices::openUrl(ProductServer::url(QStringLiteral("/Features")));
}

void Quorvane::onShowReleaseNotes() {
    ReleaseNoteDialog(this).exec();
}

void Quorvane::showAbout() {
    AboutBox::show(this);
}

void Quorvane::onTakeScreenshot() {
    Screenshot::saveActiveWindow(this);
}
