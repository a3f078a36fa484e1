#include "app/Quorvane.h"
#include "ui_Quorvane.h"

#include "Range/HandRangeElementConversion.h"
#include "Range/HandRangeStringManipulator.h"
#include "Range/TreeRangeNode.h"
#include "app/EquityColor.h"
#include "app/HintTooltip.h"
#include "app/ProductServer.h"
#include "app/ReleaseNoteDialog.h"
#include "app/Version.h"
#include "selection/BoardCardsWidget.h"
#include "selection/CardRange.h"
#include "selection/CardSelectionDialog.h"
#include "selection/HandRangeLine.h"
#include "selection/HandSelectionDialog.h"
#include "selection/ManagedHandRangeLine.h"
#include "tabs/BoardEvaluationTab.h"
#include "tabs/BoardHitsTab.h"
#include "tabs/EquityTableTab.h"
#include "tabs/TwoPlayerBoardHitsTab.h"
#include "tabs/WinEvaluationTab.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QMovie>
#include <QShortcut>
#include <QSignalMapper>
#include <QTextStream>

#include <cmath>
#include <cstdlib>
#include <ctime>

namespace {

const char* const hintText = "<b>Did you know</b><p align=\"justify\">You can calculate the "
                             "equity permanently witout clicking on any buttons.</p>";

std::string technicalTextOf(const HandRangeLine* line) {
    const Range::HandRange* range = line->handRange();
    return range ? Range::HandRangeStringReader(range).technicalText() : std::string();
}

} // namespace

Quorvane::Quorvane(QWidget* parent)
    : QMainWindow(parent), ui(new Ui::QuorvaneClass),
      loadingMovie(new QMovie(QStringLiteral(":/loading.gif"), QByteArray(), this)),
      settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane")) {
    // 1. Fields; the random hands of the range text draw from rand().
    std::srand(static_cast<unsigned int>(std::time(nullptr)));
    // The user's hand group schemas and tick schemas; the board tabs work on these.
    schemaPool.load();
    tickSchemaPool.load();

    // 2. The form, then the program's style sheet for the whole application.
    ui->setupUi(this);
    QFile styleSheet(QStringLiteral(":/style.qss"));
    if (styleSheet.open(QIODevice::ReadOnly | QIODevice::Text))
        qApp->setStyleSheet(QTextStream(&styleSheet).readAll());

    // 3. The live ranges, each with its one group "Parent", handed to the lines.
    player1Range.addRange(Range::Tree::noNode, "Parent", false, Range::GroupColor());
    player2Range.addRange(Range::Tree::noNode, "Parent", false, Range::GroupColor());
    ui->player1Range->setGroups(&player1Range);
    ui->player2Range->setGroups(&player2Range);
    ui->player1Wins->setTextFormat(Qt::RichText);
    ui->player2Wins->setTextFormat(Qt::RichText);

    // 4. The board and table tabs get the pools on every switch to them
    //    (reactToSwitchedTab); the explanation shows the current tab's whatsThis.
    ui->explanatoryText->setHtml(ui->tabWidget->currentWidget()->whatsThis());

    // 5. Connections 1 to 8, in this order: slots of one signal run in connection order.
    connect(ui->scenarios, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &Quorvane::onScenarioSelectionChange);
    connect(ui->editScenario, &QToolButton::clicked, this, &Quorvane::onEditScenario);
    connect(ui->addScenario, &QToolButton::clicked, this, &Quorvane::onAddScenario);
    connect(ui->deleteScenario, &QToolButton::clicked, this, &Quorvane::onDeleteScenario);
    connect(ui->selectPlayer1RangeButton, &QToolButton::clicked, this,
            &Quorvane::onPlayer1SelectRange);
    connect(ui->selectPlayer2RangeButton, &QToolButton::clicked, this,
            &Quorvane::onPlayer2SelectRange);
    connect(ui->selectPlayer1CardsButton, &QToolButton::clicked, this,
            &Quorvane::onPlayer1SelectCards);
    connect(ui->selectPlayer2CardsButton, &QToolButton::clicked, this,
            &Quorvane::onPlayer2SelectCards);
    connect(ui->clearPlayer1RangeButton, &QToolButton::clicked, this, &Quorvane::onPlayer1Clear);
    connect(ui->clearPlayer2RangeButton, &QToolButton::clicked, this, &Quorvane::onPlayer2Clear);
    connect(ui->actionUndo, &QAction::triggered, this, &Quorvane::onUndo);
    connect(ui->actionRedo, &QAction::triggered, this, &Quorvane::onRedo);
    wireRangeLines();
    connect(ui->boardCardsWidget, &BoardCardsWidget::changeOccured, this,
            &Quorvane::onBoardCardsChange);
    wireBoardTabControls();
    connect(&threadPool, &ThreadPool::EquityCalculationFinished, this,
            &Quorvane::publishEquityCalculatorResult);
    wireBoardTabOffers();
    connect(ui->tabWidget, &QTabWidget::currentChanged, this, &Quorvane::reactToSwitchedTab);
    connect(this, &Quorvane::constraintsChanged, this, [this] { updateEquitiesAndTabs(); });
    connect(this, &Quorvane::constraintsChanged, this,
            &Quorvane::onSomethingChangedRelevantForFile);
    wireActions();

    // 6. The first scenario, then the tabs count, then the settings.
    addFirstScenario();
    tabsReady = true;
    reactToSwitchedTab();
    loadSettings();

    // 7. Keys, title, undo state, and the first memento.
    setUpFunctionKeys();
    saved = true;
    updateTitle();
    // 9. (the EV/FE tab's change signals join here.)
    updateUndoActions();
    onMementoRelevantChange("");
}

Quorvane::~Quorvane() {
    // The lines hold pointers into the trees, which die after the form.
    ui->player1Range->setGroups(nullptr);
    ui->player2Range->setGroups(nullptr);
    delete ui;
}

void Quorvane::wireRangeLines() {
    // The managed line connected its own onRangeTextChange when it was built, so a typed
    // change first updates the mapping (MappingChanged -> updateEquitiesAndTabs stores it
    // in the scenario) before the functor below records the memento.
    HandRangeLine* line1 = ui->player1Range->rangeLine();
    HandRangeLine* line2 = ui->player2Range->rangeLine();
    connect(line1, &HandRangeLine::RangeChanged, this, [this] {
        saved = false;
        updateTitle();
        onMementoRelevantChange("Player1's Range Changed");
    });
    connect(line1, &HandRangeLine::RangeChanged, this, [this] { updateEquitiesAndTabs(); });
    connect(ui->player1Range, &ManagedHandRangeLine::MappingChanged, this,
            [this] { updateEquitiesAndTabs(); });
    connect(ui->player1Range, &ManagedHandRangeLine::doubleClicked, this,
            &Quorvane::onPlayer1SelectRange);
    connect(line2, &HandRangeLine::RangeChanged, this, [this] {
        saved = false;
        updateTitle();
        onMementoRelevantChange("Player2's Range Changed");
    });
    connect(line2, &HandRangeLine::RangeChanged, this, [this] { updateEquitiesAndTabs(); });
    connect(ui->player2Range, &ManagedHandRangeLine::MappingChanged, this,
            [this] { updateEquitiesAndTabs(); });
    connect(ui->player2Range, &ManagedHandRangeLine::doubleClicked, this,
            &Quorvane::onPlayer2SelectRange);
}

void Quorvane::wireBoardTabControls() {
    // A different player in "Range:" or a different way of counting percentages: the tab
    // must evaluate again although no input changed.
    for (QComboBox* rangeBox :
         {ui->boardHitsTab->rangeSelection(), ui->winEvaluationTab->rangeSelection()})
        connect(rangeBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
                &Quorvane::updateEquitiesAndTabsWithRefresh);
    for (QCheckBox* absolute : {ui->boardHitsTab->absolutePercentages(),
                                ui->twoPlayerBoardHitsTab->absolutePercentages()})
        connect(absolute, &QCheckBox::stateChanged, this,
                &Quorvane::updateEquitiesAndTabsWithRefresh);
}

void Quorvane::wireBoardTabOffers() {
    // The hands behind a row, offered from the rows' context menus. The win tab's rows
    // offer theirs to the same slots.
    for (BoardEvaluationTab* tab : {static_cast<BoardEvaluationTab*>(ui->boardHitsTab),
                                    static_cast<BoardEvaluationTab*>(ui->twoPlayerBoardHitsTab),
                                    static_cast<BoardEvaluationTab*>(ui->winEvaluationTab)}) {
        connect(tab, &BoardEvaluationTab::Player1RangeChange, this, &Quorvane::onNewPlayer1Range);
        connect(tab, &BoardEvaluationTab::Player2RangeChange, this, &Quorvane::onNewPlayer2Range);
        connect(tab, &BoardEvaluationTab::NewPlayer1Group, this, &Quorvane::onNewPlayer1Group);
        connect(tab, &BoardEvaluationTab::NewPlayer2Group, this, &Quorvane::onNewPlayer2Group);
    }
}

void Quorvane::wireActions() {
    connect(ui->action_New, &QAction::triggered, this, &Quorvane::onNew);
    connect(ui->actionOpen_Analysis, &QAction::triggered, this, &Quorvane::onOpenAnalysis);
    connect(ui->actionImportHandHistory, &QAction::triggered, this, &Quorvane::onImportHandHistory);
    connect(ui->actionSave_All_Scenarios, &QAction::triggered, this, &Quorvane::onSaveAnalysis);
    connect(ui->actionSave_All_Scenarios_As, &QAction::triggered, this,
            &Quorvane::onSaveAnalysisAs);
    connect(ui->actionTake_Screenshot, &QAction::triggered, this, &Quorvane::onTakeScreenshot);
    connect(ui->action_Quit, &QAction::triggered, this, &QWidget::close);
    connect(ui->actionShow_Hint_Tooltips, &QAction::toggled, this,
            &Quorvane::onShowHintTooltipsToggled);
    connect(ui->actionCalculate_Equity_Permanently, &QAction::toggled, this,
            &Quorvane::reactToEquityToggle);
    connect(ui->calculateEquityPermanently, &QCheckBox::toggled, this,
            &Quorvane::reactToEquityToggle);
    connect(ui->action_Hide_Empty_Lines_in_Board_Hits_Tabs, &QAction::toggled, this,
            &Quorvane::onHideEmptyRowsInBoardHitsTabs);
    connect(ui->actionShow_Tab_Explanations, &QAction::toggled, this, &Quorvane::onTabHelpToggled);
    connect(ui->actionShow_EV_of_Single_Reactions, &QAction::toggled, this,
            &Quorvane::onEV_FE_ShowEVOfSingleReactions);
    connect(ui->actionColor_Coding, &QAction::triggered, this,
            &Quorvane::onEV_FE_ColorCodingOptions);
    connect(ui->actionOnline_Help, &QAction::triggered, this, &Quorvane::onOnlineHelp);
    connect(ui->actionRelease_Notes, &QAction::triggered, this, &Quorvane::onShowReleaseNotes);
    connect(ui->actionAbout, &QAction::triggered, this, &Quorvane::showAbout);
    connect(ui->hideExplanationButton, &QPushButton::clicked, this, &Quorvane::onHideHelpButton);

    // Not offered until their parts of the program exist: the analysis file, the hand
    // history import and the EV/FE colour coding.
    for (QAction* waiting :
         {ui->actionOpen_Analysis, ui->actionSave_All_Scenarios, ui->actionSave_All_Scenarios_As,
          ui->actionImportHandHistory, ui->actionColor_Coding})
        waiting->setEnabled(false);
}

void Quorvane::setUpFunctionKeys() {
    auto* mapper = new QSignalMapper(this);
    for (int index = 0; index < ui->tabWidget->count(); ++index) {
        auto* shortcut = new QShortcut(QKeySequence(QStringLiteral("F%1").arg(index + 1)), this);
        shortcut->setContext(Qt::ApplicationShortcut);
        connect(shortcut, &QShortcut::activated, mapper,
                static_cast<void (QSignalMapper::*)()>(&QSignalMapper::map));
        mapper->setMapping(shortcut, index);
    }
    connect(mapper, &QSignalMapper::mappedInt, ui->tabWidget, &QTabWidget::setCurrentIndex);
}

// ---- The equity loop --------------------------------------------------------------------

Quorvane::Inputs Quorvane::readInputs() const {
    Inputs inputs;
    inputs.player1 = technicalTextOf(ui->player1Range->rangeLine());
    inputs.player2 = technicalTextOf(ui->player2Range->rangeLine());
    inputs.board = ui->boardCardsWidget->getBoard();
    inputs.deadCards = ui->boardCardsWidget->getDeadCards();
    return inputs;
}

void Quorvane::updateEquitiesAndTabs(bool alwaysRefresh) {
    // 1.
    const Inputs inputs = readInputs();
    // 2. The lines show their ranges again (a restore may have swapped the nodes).
    for (ManagedHandRangeLine* managed : {ui->player1Range, ui->player2Range}) {
        HandRangeLine* line = managed->rangeLine();
        if (line->handRange() && !line->hasFocus())
            line->setHandRange(line->handRange());
    }
    // 3.
    if (!alwaysRefresh && inputs.player1 == lastPlayer1 && inputs.player2 == lastPlayer2 &&
        inputs.board == lastBoard && inputs.deadCards == lastDeadCards)
        return;
    // 4.
    lastPlayer1 = inputs.player1;
    lastPlayer2 = inputs.player2;
    lastBoard = inputs.board;
    lastDeadCards = inputs.deadCards;
    // 5. The combinations left by the other range and the cards; nothing uses them here.
    volatile bool noStop = false;
    getRangeCombinations(inputs.player1, inputs.player2, inputs.board, inputs.deadCards, noStop);
    // 6.
    storeCurrentScenario(inputs);
    // 7.
    const std::vector<unsigned long long> dead = Range::cardsOfText(inputs.deadCards);
    for (ManagedHandRangeLine* managed : {ui->player1Range, ui->player2Range}) {
        managed->rangeLine()->setBoard(inputs.board);
        managed->rangeLine()->setDeadCards(dead);
    }
    // 8.
    tellVisibleTab(inputs, alwaysRefresh);
    // 9.
    if (ui->calculateEquityPermanently->isChecked())
        calculateEquity();
}

void Quorvane::updateEquitiesAndTabsWithRefresh() {
    updateEquitiesAndTabs(true);
}

void Quorvane::tellVisibleTab(const Inputs& inputs, bool alwaysRefresh) {
    // Only the visible tab hears of new inputs; a tab coming into view catches up through
    // reactToSwitchedTab. The evolution, EV/FE and graph tabs get their calls (the four
    // texts; board and dead cards; the two ranges with board and dead cards) as those
    // pages get their content; the training tab has inputs of its own.
    QWidget* current = ui->tabWidget->currentWidget();
    if (auto* board = qobject_cast<BoardEvaluationTab*>(current)) {
        board->updateEvaluation(inputs.player1, inputs.player2, inputs.board, inputs.deadCards,
                                alwaysRefresh);
    } else if (auto* table = qobject_cast<EquityTableTab*>(current)) {
        table->updateInputs(inputs.player1, inputs.player2, inputs.board, inputs.deadCards);
    }
}

void Quorvane::calculateEquity() {
    // 1. The hint exists and runs out unseen: nothing shows it.
    new HintTooltip(QString::fromLatin1(hintText), this, 5000);
    // 2.
    const Inputs inputs = readInputs();
    // 3.
    clearEquityLabels();
    if (!inputs.player1.empty() && !inputs.player2.empty()) {
        // 4.
        loadingMovie->start();
        ui->player1Wins->setMovie(loadingMovie);
        ui->player2Wins->setMovie(loadingMovie);
        if (equityHandle.IsRunning())
            equityHandle.Stop();
        equityHandle = threadPool.createEquityCalculationHandle();
        equityHandle.Start(inputs.player1, inputs.player2, inputs.board, inputs.deadCards);
    } else if (equityHandle.IsRunning()) {
        // 5.
        equityHandle.Stop();
    }
}

void Quorvane::clearEquityLabels() {
    for (QLabel* label : {ui->player1Wins, ui->player2Wins}) {
        label->clear();
        label->setStyleSheet(QString());
        label->setToolTip(QString());
    }
}

void Quorvane::publishEquityCalculatorResult(const ThreadHandle& handle,
                                             const LongedEvaluation& result) {
    if (handle != equityHandle)
        return;
    loadingMovie->stop();
    const double total = static_cast<double>(result.total);
    const double wins1 = static_cast<double>(result.wins1);
    const double wins2 = static_cast<double>(result.wins2);
    const double ties = static_cast<double>(result.ties);
    showEquity(ui->player1Wins, wins1, wins2, ties, total);
    showEquity(ui->player2Wins, wins2, wins1, ties, total);
}

void Quorvane::showEquity(QLabel* label, double wins, double otherWins, double ties, double total) {
    if (total <= 0.0) {
        // No matchup is possible: every hand of one range collides with the other range or
        // the cards. There is no equity to show.
        label->setText(QStringLiteral("&ndash;"));
        label->setStyleSheet(QString());
        label->setToolTip(QStringLiteral("No showdown is possible between these ranges on this "
                                         "board: every combination collides with a card."));
        return;
    }
    const double t = ties * 0.5;
    const double equity = (wins + t) / total * 100.0;
    label->setText(QString::number(equity, 'f', 2) + QStringLiteral(" %"));
    label->adjustSize();
    label->setToolTip(QStringLiteral("<table border=\"0\"><tr><td><b>Wins:</b></td><td>") +
                      QString::number(wins / total * 100.0) + QStringLiteral(" %</td></tr>") +
                      QStringLiteral("<tr><td><b>Ties:</b></td><td>") +
                      QString::number(ties * 0.5 / total * 100.0) +
                      QStringLiteral(" %</td></tr><tr><td><b>Losses:</b></td><td>") +
                      QString::number(otherWins * 0.5 / total * 100.0) +
                      QStringLiteral("% </td></tr></table>"));
    const QColor color = colorForEquity(static_cast<float>(equity / 100.0));
    label->setStyleSheet(
        QStringLiteral("background-color:rgb(%1,%2,0);").arg(color.red()).arg(color.green()));
}

void Quorvane::reactToEquityToggle(bool enabled) {
    {
        const QSignalBlocker actionBlocker(ui->actionCalculate_Equity_Permanently);
        const QSignalBlocker boxBlocker(ui->calculateEquityPermanently);
        ui->actionCalculate_Equity_Permanently->setChecked(enabled);
        ui->calculateEquityPermanently->setChecked(enabled);
    }
    if (enabled) {
        if (!ui->player1Range->rangeLine()->text().isEmpty() &&
            !ui->player2Range->rangeLine()->text().isEmpty())
            calculateEquity();
        else
            clearEquityLabels();
        return;
    }
    if (equityHandle.IsRunning())
        equityHandle.Stop();
    clearEquityLabels();
}

void Quorvane::reactToSwitchedTab() {
    if (!tabsReady)
        return;
    QWidget* tab = ui->tabWidget->currentWidget();
    ui->explanatoryText->setHtml(tab ? tab->whatsThis() : QString());
    // The graph tab gets the pool, and the training tab builds its start page, as those
    // pages get their content.
    if (auto* board = qobject_cast<BoardEvaluationTab*>(tab))
        board->setPools(&threadPool, &tickSchemaPool, &schemaPool);
    else if (auto* table = qobject_cast<EquityTableTab*>(tab))
        table->setThreadPool(&threadPool);
    updateEquitiesAndTabs(true);
}

// ---- Range changes from outside the line edit ---------------------------------------------

void Quorvane::onRangeChangedBy(const std::string& label) {
    saved = false;
    updateTitle();
    onMementoRelevantChange(label);
    updateEquitiesAndTabs(false);
}

void Quorvane::clearPlayer(Range::Tree& tree, ManagedHandRangeLine* line,
                           const std::string& label) {
    const unsigned int group = line->currentGroup();
    if (group == Range::Tree::noNode)
        return;
    // assign() tells the range's notifier once, so the groups below empty with it.
    tree.handRange(group).assign(Range::HandRange().elements());
    line->refill();
    onRangeChangedBy(label);
}

void Quorvane::onPlayer1Clear() {
    clearPlayer(player1Range, ui->player1Range, "Player1's Range Cleared");
}

void Quorvane::onPlayer2Clear() {
    clearPlayer(player2Range, ui->player2Range, "Player2's Range Cleared");
}

void Quorvane::selectCards(ManagedHandRangeLine* line, const QString& title,
                           const std::string& label) {
    HandRangeLine* rangeLine = line->rangeLine();
    if (rangeLine->isReadOnlyMode() || !rangeLine->handRange())
        return;
    CardRange hand;
    hand.setMaxCards(2);
    CardSelectionDialog dialog(&hand, {}, {}, this);
    dialog.setWindowTitle(title);
    dialog.setForbiddenCards(QString::fromStdString(ui->boardCardsWidget->getBoard() +
                                                    ui->boardCardsWidget->getDeadCards()));
    if (dialog.exec() != QDialog::Accepted || hand.cardCount() != 2)
        return;
    Range::HandRangeStringManipulator(rangeLine->handRange())
        .setFree(hand.cardsText().toStdString());
    line->refill();
    onRangeChangedBy(label);
}

void Quorvane::onPlayer1SelectCards() {
    selectCards(ui->player1Range, QStringLiteral("Select Player1 Cards"),
                "Player1's Range Changed via Dialog");
}

void Quorvane::onPlayer2SelectCards() {
    selectCards(ui->player2Range, QStringLiteral("Select Player2 Cards"),
                "Player2's Range Changed via Dialog");
}

void Quorvane::selectRange(Range::Tree& tree, ManagedHandRangeLine* line, const QString& title,
                           const std::string& label) {
    if (line->rangeLine()->isReadOnlyMode())
        return;
    // The dialog works on a copy: accepted, it replaces the nodes of the tree it was given,
    // and the line (which may get the focus back while the dialog closes) must never see
    // the player's tree change under it. The edit goes in with the line detached.
    std::vector<Range::NodeMemento> state;
    tree.CreateMemento(state);
    Range::Tree edited;
    edited.RestoreMemento(state);
    if (!HandSelectionDialog::selectRange(edited, title, ui->boardCardsWidget->getBoard(),
                                          ui->boardCardsWidget->getDeadCards(), &threadPool, this))
        return;
    const int shownGroup = line->currentIndex();
    edited.CreateMemento(state);
    restoreRange(tree, line, state);
    if (shownGroup > 0 && shownGroup < line->count()) {
        {
            const QSignalBlocker blocker(line);
            line->setCurrentIndex(shownGroup);
        }
        line->onIndexSelection(shownGroup);
    }
    onRangeChangedBy(label);
}

void Quorvane::onPlayer1SelectRange() {
    selectRange(player1Range, ui->player1Range, QStringLiteral("Select Player1 Range"),
                "Player1's Range Changed via Dialog");
}

void Quorvane::onPlayer2SelectRange() {
    selectRange(player2Range, ui->player2Range, QStringLiteral("Select Player2 Range"),
                "Player2's Range Changed via Dialog");
}

void Quorvane::overwriteRange(Range::Tree& tree, ManagedHandRangeLine* line,
                              const Range::HandRange& range, const std::string& label) {
    tree.handRange(0).assign(range.elements());
    line->refill();
    onRangeChangedBy(label);
}

void Quorvane::onNewPlayer1Range(Range::HandRange range) {
    overwriteRange(player1Range, ui->player1Range, range, "Player1's Range Overwritten");
}

void Quorvane::onNewPlayer2Range(Range::HandRange range) {
    overwriteRange(player2Range, ui->player2Range, range, "Player2's Range Overwritten");
}

void Quorvane::addGroup(Range::Tree& tree, ManagedHandRangeLine* line, std::string name,
                        const Range::HandRange& range, const QString& labelFormat) {
    // Each group of a player's range gets a standard colour of its own; with all of them
    // taken the group is refused rather than added without one.
    if (tree.freeColors(0).empty()) {
        QMessageBox::warning(this, QStringLiteral("Group"), QStringLiteral("All colors in use."));
        return;
    }
    if (name.empty())
        name = "Group " + std::to_string(tree.count() - 1 + 1);
    Range::TreeRangeNode* group =
        tree.addExclusiveRange(0, name, Range::TreeRangeNode::Overwrite, true, Range::GroupColor());
    group->handRange.assign(range.elements());
    line->refill();
    onRangeChangedBy(labelFormat.arg(QString::fromStdString(name)).toStdString());
}

void Quorvane::onNewPlayer1Group(std::string groupName, Range::HandRange range) {
    addGroup(player1Range, ui->player1Range, std::move(groupName), range,
             QStringLiteral("Player1 Group \"%1\" Added"));
}

void Quorvane::onNewPlayer2Group(std::string groupName, Range::HandRange range) {
    addGroup(player2Range, ui->player2Range, std::move(groupName), range,
             QStringLiteral("Player2 Group \"%1\" Added"));
}

void Quorvane::onBoardCardsChange() {
    updateEquitiesAndTabs(false);
    saved = false;
    updateTitle();
    onMementoRelevantChange("Board Cards Changed");
}

void Quorvane::onSomethingChangedRelevantForFile() {
    saved = false;
    updateTitle();
}

void Quorvane::updateTitle() {
    QString title = saved ? QString() : QStringLiteral("*");
    title += fileName.isEmpty() ? QStringLiteral("untitled.qva") : fileName;
    title += QStringLiteral(" - Quorvane ");
    setWindowTitle(title);
}

// ---- Scenarios ------------------------------------------------------------------------------

void Quorvane::addFirstScenario() {
    scenarios.emplace_back("Standard", Scenario::emptyRange(), Scenario::emptyRange(), "", "");
    refreshScenarioList();
    onScenarioSelectionChange();
}

void Quorvane::refreshScenarioList() {
    {
        const QSignalBlocker blocker(ui->scenarios);
        ui->scenarios->clear();
        for (const Scenario& scenario : scenarios)
            ui->scenarios->addItem(QString::fromStdString(scenario.name));
        ui->scenarios->setCurrentIndex(0);
    }
    const int index = ui->scenarios->currentIndex();
    ui->editScenario->setEnabled(index != -1);
    ui->deleteScenario->setEnabled(index != -1 && scenarios.size() > 1);
}

void Quorvane::updateScenariosAndSelectSpecificOne(int index) {
    refreshScenarioList();
    {
        const QSignalBlocker blocker(ui->scenarios);
        ui->scenarios->setCurrentIndex(index);
    }
    onScenarioSelectionChange();
}

void Quorvane::restoreRange(Range::Tree& tree, ManagedHandRangeLine* line,
                            const std::vector<Range::NodeMemento>& memento) {
    const QSignalBlocker blocker(line);
    // The line points into the tree's nodes, which the restore replaces.
    line->setGroups(nullptr);
    tree.RestoreMemento(memento);
    line->setGroups(&tree);
    {
        const QSignalBlocker indexBlocker(line);
        line->setCurrentIndex(0);
    }
    line->onIndexSelection(0);
}

void Quorvane::onScenarioSelectionChange() {
    const int index = ui->scenarios->currentIndex();
    if (index < 0 || index >= static_cast<int>(scenarios.size()))
        return;
    // Copies: the restores below store into the scenario again.
    const Scenario scenario = scenarios[static_cast<std::size_t>(index)];
    restoreRange(player1Range, ui->player1Range, scenario.player1);
    restoreRange(player2Range, ui->player2Range, scenario.player2);
    // (The EV/FE tab gets the first group of each range and the scenario's lines here.)
    ui->boardCardsWidget->setBoard(scenario.board);
    ui->boardCardsWidget->setDeadCards(scenario.deadCards);
    updateEquitiesAndTabs(false);
}

void Quorvane::storeCurrentScenario(const Inputs& inputs) {
    const int index = ui->scenarios->currentIndex();
    if (index < 0 || index >= static_cast<int>(scenarios.size()))
        return;
    Scenario& scenario = scenarios[static_cast<std::size_t>(index)];
    player1Range.CreateMemento(scenario.player1);
    player2Range.CreateMemento(scenario.player2);
    scenario.board = inputs.board;
    scenario.deadCards = inputs.deadCards;
}

void Quorvane::onAddScenario() {
    QInputDialog dialog(this);
    dialog.setWindowFlags(dialog.windowFlags() & ~Qt::WindowContextHelpButtonHint);
    dialog.setLabelText(QStringLiteral("What is the name of the new scenario?"));
    if (dialog.exec() != QDialog::Accepted || dialog.textValue().isEmpty())
        return;
    scenarios.emplace_back(dialog.textValue().toStdString(), Scenario::emptyRange(),
                           Scenario::emptyRange(), "", "");
    refreshScenarioList();
    {
        const QSignalBlocker blocker(ui->scenarios);
        ui->scenarios->setCurrentIndex(static_cast<int>(scenarios.size()) - 1);
    }
    onScenarioSelectionChange();
}

void Quorvane::onEditScenario() {
    const int index = ui->scenarios->currentIndex();
    if (index == -1)
        return;
    QInputDialog dialog(this);
    dialog.setWindowFlags(dialog.windowFlags() & ~Qt::WindowContextHelpButtonHint);
    dialog.setLabelText(QStringLiteral("What is the new name of the scenario?"));
    dialog.setTextValue(QString::fromStdString(scenarios[static_cast<std::size_t>(index)].name));
    if (dialog.exec() != QDialog::Accepted || dialog.textValue().isEmpty())
        return;
    scenarios[static_cast<std::size_t>(index)].name = dialog.textValue().toStdString();
    refreshScenarioList();
    {
        const QSignalBlocker blocker(ui->scenarios);
        ui->scenarios->setCurrentIndex(index);
    }
    onScenarioSelectionChange();
}

void Quorvane::onDeleteScenario() {
    const int index = ui->scenarios->currentIndex();
    if (index == -1 || scenarios.size() <= 1)
        return;
    if (QMessageBox::question(this, QStringLiteral("Delete scenario?"),
                              QStringLiteral("Do you really want to delete this scenario?"),
                              QMessageBox::Yes | QMessageBox::No,
                              QMessageBox::No) != QMessageBox::Yes)
        return;
    scenarios.erase(scenarios.begin() + index);
    refreshScenarioList();
    onScenarioSelectionChange();
}

void Quorvane::onNew() {
    if (!askToSave())
        return;
    ui->boardCardsWidget->clearAll();
    scenarios.clear();
    addFirstScenario();
    fileName.clear();
    saved = true;
    updateTitle();
    mementos.clear();
    mementoIndex = 0;
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
    const bool canUndo = mementoIndex != 0;
    const bool canRedo =
        !mementos.empty() && mementoIndex != static_cast<std::int32_t>(mementos.size()) - 1;
    ui->actionUndo->setEnabled(canUndo);
    ui->actionRedo->setEnabled(canRedo);
    ui->actionUndo->setText(QStringLiteral("Undo %1").arg(
        canUndo ? QString::fromStdString(mementos[static_cast<std::size_t>(mementoIndex)].label)
                : QString()));
    ui->actionRedo->setText(QStringLiteral("Redo %1").arg(
        canRedo ? QString::fromStdString(mementos[static_cast<std::size_t>(mementoIndex) + 1].label)
                : QString()));
}

void Quorvane::onUndo() {}

void Quorvane::onRedo() {}

void Quorvane::onOpenAnalysis() {
    if (!askToSave())
        return;
}

void Quorvane::onSaveAnalysis() {
    saveAnalysisTo(fileName);
}

void Quorvane::onSaveAnalysisAs() {
    saveAnalysisTo(QString());
}

void Quorvane::saveAnalysisTo(const QString& name) {
    // Writing the analysis file joins here; until then nothing is written and the window
    // stays unsaved.
    Q_UNUSED(name);
}

void Quorvane::onImportHandHistory() {}

bool Quorvane::askToSave() {
    if (saved)
        return true;
    const QString name = fileName.isEmpty() ? QStringLiteral("untitled.qva") : fileName;
    const QMessageBox::StandardButton answer = QMessageBox::question(
        this, QStringLiteral("Save File?"),
        QStringLiteral("Do you want to save \"") + name + QStringLiteral("\"?"),
        QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::Yes);
    if (answer == QMessageBox::Yes) {
        saveAnalysisTo(fileName);
        return true;
    }
    return answer == QMessageBox::No;
}

void Quorvane::closeEvent(QCloseEvent* event) {
    if (!askToSave()) {
        event->ignore();
        return;
    }
    saveSettings();
    event->accept();
}

// ---- Options, help and the rest ------------------------------------------------------------

void Quorvane::loadSettings() {
    settings.beginGroup(QStringLiteral("mainwindow"));
    if (settings.contains(QStringLiteral("pos")))
        move(settings.value(QStringLiteral("pos")).toPoint());
    if (settings.contains(QStringLiteral("size")))
        resize(settings.value(QStringLiteral("size")).toSize());
    if (settings.value(QStringLiteral("maximized"), false).toBool())
        setWindowState(windowState() | Qt::WindowMaximized);
    settings.endGroup();

    settings.beginGroup(QStringLiteral("optionmenu"));
    {
        const QSignalBlocker blocker(ui->action_Hide_Empty_Lines_in_Board_Hits_Tabs);
        ui->action_Hide_Empty_Lines_in_Board_Hits_Tabs->setChecked(
            settings.value(QStringLiteral("removeEmptyLinesFromBoardEvaluationTabs"), true)
                .toBool());
    }
    {
        const QSignalBlocker blocker(ui->actionShow_Hint_Tooltips);
        ui->actionShow_Hint_Tooltips->setChecked(
            settings.value(QStringLiteral("showHintTooltips"), true).toBool());
    }
    {
        const QSignalBlocker blocker(ui->actionShow_EV_of_Single_Reactions);
        ui->actionShow_EV_of_Single_Reactions->setChecked(
            settings.value(QStringLiteral("EV_FE_ShowEVOfSingleReactions"), false).toBool());
    }
    {
        const QSignalBlocker actionBlocker(ui->actionCalculate_Equity_Permanently);
        const QSignalBlocker boxBlocker(ui->calculateEquityPermanently);
        ui->actionCalculate_Equity_Permanently->setChecked(
            settings.value(QStringLiteral("calculateEquityPermanently"), true).toBool());
        ui->calculateEquityPermanently->setChecked(
            ui->actionCalculate_Equity_Permanently->isChecked());
    }
    {
        const QSignalBlocker blocker(ui->actionShow_Tab_Explanations);
        const bool show = settings.value(QStringLiteral("showTabExplanations"), true).toBool();
        ui->actionShow_Tab_Explanations->setChecked(show);
        ui->explanatoryWidget->setVisible(show);
    }
    ui->actionShow_Plot_Explanation->setChecked(
        settings.value(QStringLiteral("showPlotExplanation"), true).toBool());
    ui->actionCheck_for_Updates_at_Startup->setChecked(
        settings.value(QStringLiteral("checkForUpdates"), true).toBool());
    ui->actionSelect_Cards_with_Right_Button->setChecked(
        settings.value(QStringLiteral("unselectCardWithRightButton"), true).toBool());
    settings.endGroup();

    settings.beginGroup(QStringLiteral("miscellaneous"));
    settings.endGroup();
}

void Quorvane::saveSettings() {
    settings.beginGroup(QStringLiteral("mainwindow"));
    settings.setValue(QStringLiteral("pos"), pos());
    const bool maximized = isMaximized();
    if (!maximized)
        settings.setValue(QStringLiteral("size"), size());
    settings.setValue(QStringLiteral("maximized"), maximized);
    settings.endGroup();

    settings.beginGroup(QStringLiteral("optionmenu"));
    settings.setValue(QStringLiteral("EV_FE_ShowEVOfSingleReactions"),
                      ui->actionShow_EV_of_Single_Reactions->isChecked());
    settings.setValue(QStringLiteral("calculateEquityPermanently"),
                      ui->actionCalculate_Equity_Permanently->isChecked());
    settings.setValue(QStringLiteral("showTabExplanations"),
                      ui->actionShow_Tab_Explanations->isChecked());
    settings.setValue(QStringLiteral("showPlotExplanation"),
                      ui->actionShow_Plot_Explanation->isChecked());
    settings.setValue(QStringLiteral("checkForUpdates"),
                      ui->actionCheck_for_Updates_at_Startup->isChecked());
    settings.setValue(QStringLiteral("unselectCardWithRightButton"),
                      ui->actionSelect_Cards_with_Right_Button->isChecked());
    settings.endGroup();

    settings.beginGroup(QStringLiteral("miscellaneous"));
    settings.endGroup();
    settings.sync();
    schemaPool.save();
    tickSchemaPool.save();
}

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
    const QString site = ProductServer::webAddress();
    QMessageBox::about(
        this, QStringLiteral("About Quorvane"),
        QStringLiteral("<h2>Quorvane</h2>"
                       "<p>Equity, board hits and EV of betting lines for two-player "
                       "Texas Hold'em.</p>"
                       "<p><a href=\"%1\">%1</a></p>"
                       "<p>Made by Velmara.</p>"
                       "<p>Version %2</p>")
            .arg(site, QString::fromStdString(Version::aboutText())));
}

void Quorvane::onTakeScreenshot() {
    // The picture first, so that the file dialog is not in it.
    QWidget* active = QApplication::activeWindow();
    const QPixmap shot = active ? active->grab() : grab();
    const QString format = QStringLiteral("png");
    const QString name = QFileDialog::getSaveFileName(
        this, QStringLiteral("Save As"),
        QDir::currentPath() + QStringLiteral("/untitled.") + format,
        QStringLiteral("%1 Files (*.%2);;All Files (*)").arg(format.toUpper(), format));
    shot.save(name, "png");
}
