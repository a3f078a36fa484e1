#include "app/Quorvane.h"
#include "ui_Quorvane.h"

#include "Range/HandRangeElementConversion.h"
#include "app/AboutBox.h"
#include "app/AnalysisFileCommands.h"
#include "app/AnalysisTabs.h"
#include "app/HeadlineEquity.h"
#include "app/MainWindowSettings.h"
#include "app/PlayerRangeController.h"
#include "app/ProductServer.h"
#include "app/ReleaseNoteDialog.h"
#include "app/ScenarioSelector.h"
#include "selection/BoardCardsWidget.h"
#include "selection/HandRangeLine.h"
#include "selection/ManagedHandRangeLine.h"
#include "utils/ui/Screenshot.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QFile>
#include <QMessageBox>
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
    headline = new HeadlineEquity(threadPool, ui->player1Wins, ui->player2Wins, this);
    files = new AnalysisFileCommands(analysis, this);
    tabs = new AnalysisTabs(ui->tabWidget,
                            {ui->boardHitsTab, ui->twoPlayerBoardHitsTab, ui->winEvaluationTab},
                            threadPool, schemaPool, tickSchemaPool, this);
    scenarioBar =
        new ScenarioSelector(analysis, ui->scenarios, ui->editScenario, ui->deleteScenario, this);
    for (PlayerRangeController* row : {player1Row.get(), player2Row.get()})
        connect(row, &PlayerRangeController::changedBy, this, &Quorvane::onRangeChangedBy);
    connect(&analysis, &AnalysisDocument::titleChanged, this, &QWidget::setWindowTitle);

    // 4. The board and table tabs get the pools on every switch to them
    //    (reactToSwitchedTab); the explanation shows the current tab's whatsThis.
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

    // 7. Keys, title, undo state, and the first memento.
    tabs->setUpFunctionKeys();
    analysis.markSaved(analysis.fileName());
    updateTitle();
    // 9. (the EV/FE tab's change signals join here.)
    updateUndoActions();
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

    // Not offered until their parts of the program exist: the analysis file, the hand
    // history import and the EV/FE colour coding.
    for (QAction* waiting :
         {ui->actionOpen_Analysis, ui->actionSave_All_Scenarios, ui->actionSave_All_Scenarios_As,
          ui->actionImportHandHistory, ui->actionColor_Coding})
        waiting->setEnabled(false);
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
    // (The EV/FE tab gets the first group of each range and the scenario's lines here.)
    ui->boardCardsWidget->setBoard(scenario.board);
    ui->boardCardsWidget->setDeadCards(scenario.deadCards);
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
    updateTitle();
    analysis.clearMementos();
    onMementoRelevantChange("");
}

// ---- Undo and the analysis file (seams) -----------------------------------------------------

void Quorvane::onMementoRelevantChange(std::string label) {
    // The one way into the undo list. A memento is the whole analysis as file text, so the
    // list is kept from the day the analysis file can be written; until then no entry is
    // made and undo and redo stay disabled.
    if (restoring)
        return;
    Q_UNUSED(label);
    updateUndoActions();
}

void Quorvane::updateUndoActions() {
    ui->actionUndo->setEnabled(analysis.canUndo());
    ui->actionRedo->setEnabled(analysis.canRedo());
    ui->actionUndo->setText(
        QStringLiteral("Undo %1").arg(QString::fromStdString(analysis.undoLabel())));
    ui->actionRedo->setText(
        QStringLiteral("Redo %1").arg(QString::fromStdString(analysis.redoLabel())));
}

void Quorvane::onUndo() {}

void Quorvane::onRedo() {}

void Quorvane::onOpenAnalysis() {
    if (!askToSave())
        return;
}

void Quorvane::onSaveAnalysis() {
    saveAnalysisTo(analysis.fileName());
}

void Quorvane::onSaveAnalysisAs() {
    saveAnalysisTo(QString());
}

void Quorvane::saveAnalysisTo(const QString& name) {
    if (files->save(name))
        updateTitle();
}

void Quorvane::onImportHandHistory() {}

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
    // (The EV/FE tab refreshes here once it exists.)
}

void Quorvane::onShowHintTooltipsToggled(bool checked) {
    settings.setValue(QStringLiteral("optionmenu/showHintTooltips"), checked);
}

void Quorvane::onEV_FE_ColorCodingOptions() {
    // The EV/FE colour coding dialog runs here, modally, once it exists.
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
    ReleaseNoteDialog dialog(this);
    dialog.exec();
}

void Quorvane::showAbout() {
    AboutBox::show(this);
}

void Quorvane::onTakeScreenshot() {
    Screenshot::saveActiveWindow(this);
}
