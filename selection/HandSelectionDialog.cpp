#include "selection/HandSelectionDialog.h"

#include "Range/Assertion.h"
#include "Range/CardText.h"
#include "Range/HandRangeElementConversion.h"
#include "Range/HandRangeStringManipulator.h"
#include "Range/HandRangeStringReader.h"
#include "Range/TreeNode.h"
#include "selection/EquityRangeSelectorTab.h"
#include "selection/HandRangeHover.h"
#include "selection/HandRangeLine.h"
#include "selection/HandSelectionSettings.h"
#include "selection/HandSelectionTable.h"
#include "selection/HandSelectionTree.h"
#include "selection/HandStrengthSelectorTab.h"
#include "selection/RangeGroupBox.h"
#include "selection/SuitSelectionTable.h"

#include "ui_HandSelectionDialog.h"

#include <QIcon>
#include <QMovie>
#include <QSignalBlocker>

#include <cmath>

namespace {

constexpr unsigned int noNode = Range::Tree::noNode;

// One-bit masks of the cards of a card text. The caller hands what the board widget holds,
// which is always cards; anything else is reported, and only its real cards count.
std::vector<unsigned long long> cardMasksOf(const std::string& cards) {
    try {
        return Range::CardText::readCards(cards).cards;
    } catch (const Range::CardTextError&) {
        QV_ASSERT(false, "Invalid card text.");
    }
    std::vector<unsigned long long> masks;
    for (const std::string& card : Range::CardText::lenientCards(cards))
        masks.push_back(Range::CardText::cardOf(card[0], card[1]));
    return masks;
}

} // namespace

// --- Construction ----------------------------------------------------------------------------

HandSelectionDialog::HandSelectionDialog(const std::string& board, const std::string& deadCards,
                                         ThreadPool* pool, QWidget* parent)
    : QDialog(parent), ui(new Ui::HandSelectionDialog), board(board), deadCardText(deadCards),
      deadCards(cardMasksOf(board + deadCards)), boardCards(cardMasksOf(board)),
      onlyDeadCards(cardMasksOf(deadCards)), pool(pool) {
    ui->setupUi(this);
}

HandSelectionDialog::HandSelectionDialog(Range::Tree& playerGroups, const std::string& board,
                                         const std::string& deadCards, ThreadPool* pool,
                                         QWidget* parent)
    : HandSelectionDialog(board, deadCards, pool, parent) {
    callerTree = &playerGroups;
    playerGroups.CreateMemento(openingState);
    if (openingState.empty() || !openingState.front().isRange) {
        // A player's tree always has its range at node 0; make one rather than fail.
        QV_ASSERT(false, "Group tree without a range at its root.");
        openingState.clear();
        rootRange.addRange(noNode, "", false, Range::GroupColor());
        rootRange.CreateMemento(openingState);
    }
    rootRange.RestoreMemento(openingState);
    setUp();
}

HandSelectionDialog::HandSelectionDialog(Range::HandRange& range, const std::string& board,
                                         const std::string& deadCards, ThreadPool* pool,
                                         QWidget* parent)
    : HandSelectionDialog(board, deadCards, pool, parent) {
    callerRange = &range;
    withGroups = false;
    rootRange.addRange(noNode, "", false, Range::GroupColor());
    rootRange.handRange(0).setSuitsVector(range.suitsVector());
    rootRange.CreateMemento(openingState);
    setUp();
}

HandSelectionDialog::~HandSelectionDialog() {
    // The base class hides the dialog after the members are gone, and the focus leaving the
    // text line then ends its editing: nothing of a child may reach this dialog any more.
    for (QObject* child : findChildren<QObject*>())
        disconnect(child, nullptr, this, nullptr);
    if (loadingMovie)
        loadingMovie->stop();
    if (equityTab)
        equityTab->abort();
    // The line and the table hold pointers into the tree, which dies with the dialog.
    ui->rangeText->clear();
    ui->handSelectionTable->setRangeAndGroups(nullptr, nullptr, 0, false);
    delete ui;
}

void HandSelectionDialog::setUp() {
    setObjectName(QStringLiteral("HandSelectionDialog"));
    setStyleSheet(
        QStringLiteral("#HandSelectionDialog { background-color: rgba(253, 253, 253, 255); }"
                       "#leftPart, #rightPart { background-color: white; }"
                       "#splitter::handle { background-color: #a0a0a0; margin: 0px 2px; }"));
    ui->splitter->setStretchFactor(0, 1);
    ui->splitter->setStretchFactor(1, 0);

    ui->selectMode->addItem(QStringLiteral("Overwrite"), Overwrite);
    ui->selectMode->addItem(QStringLiteral("Add"), Add);
    ui->selectMode->addItem(QStringLiteral("Subtract"), Subtract);
    ui->selectMode->addItem(QStringLiteral("Overwrite Inverted"), OverwriteInverted);
    ui->selectMode->addItem(QStringLiteral("Add Inverted"), AddInverted);
    ui->selectMode->addItem(QStringLiteral("Subtract Inverted"), SubtractInverted);

    groups = new HandSelectionGroups(rootRange, ui, withGroups, this);
    savedTree = new SavedRangeTree(ui, this);
    strengthTab = new HandStrengthSelectorTab(ui->handStrengthTab);
    strengthTab->setObjectName(QStringLiteral("handStrengthSelector"));
    ui->handStrengthTabLayout->addWidget(strengthTab);
    equityTab = new EquityRangeSelectorTab(pool, ui->equityTab);
    equityTab->setObjectName(QStringLiteral("equitySelector"));
    ui->equityTabLayout->addWidget(equityTab);
    loadingMovie = new QMovie(QStringLiteral(":/loading.gif"), QByteArray(), this);
    ui->handSelectionTable->setDeadCards(deadCards);
    ui->rangeText->setBoard(board + deadCardText);
    ui->rangeText->setDeadCards(deadCards);

    const bool unselect = HandSelectionSettings::unselectWithRightButton();
    {
        const QSignalBlocker blocker(ui->unselectWithRightButton);
        ui->unselectWithRightButton->setChecked(unselect);
    }
    ui->handSelectionTable->setUnselectWithRightButton(unselect);
    ui->suitSelectionTable->setUnselectWithRightButton(unselect);
    ui->handSelectionTable->AssignPen(ui->suitSelectionTable->suitPen());

    wire();
    showGroup(0);
    rangeHistory.reset(takeSnapshot());
    savedTree->load();
    selectorTabChanged();
    HandSelectionSettings::restoreWindow(*this, *ui->splitter);
}

void HandSelectionDialog::wire() {
    SuitSelectionTable* pen = ui->suitSelectionTable;
    HandSelectionTable* table = ui->handSelectionTable;
    connect(pen, &SuitSelectionTable::suitsUpdated, table, &HandSelectionTable::AssignPen);
    connect(ui->allSuitsButton, &QPushButton::clicked, pen, &SuitSelectionTable::selectAll);
    connect(ui->noSuitsButton, &QPushButton::clicked, pen, &SuitSelectionTable::selectNone);
    connect(ui->heartsOnlyButton, &QPushButton::clicked, pen, &SuitSelectionTable::selectAllHearts);
    connect(ui->diamondsOnlyButton, &QPushButton::clicked, pen,
            &SuitSelectionTable::selectAllDiamonds);
    connect(ui->clubsOnlyButton, &QPushButton::clicked, pen, &SuitSelectionTable::selectAllClubs);
    connect(ui->spadesOnlyButton, &QPushButton::clicked, pen, &SuitSelectionTable::selectAllSpades);
    connect(ui->percent25Button, &QPushButton::clicked, pen, &SuitSelectionTable::select25Percent);
    connect(ui->percent50AButton, &QPushButton::clicked, pen,
            &SuitSelectionTable::select50PercentA);
    connect(ui->percent50BButton, &QPushButton::clicked, pen,
            &SuitSelectionTable::select50PercentB);
    connect(ui->percent75Button, &QPushButton::clicked, pen, &SuitSelectionTable::select75Percent);

    connect(table, &HandSelectionTable::RangeChanged, this, &HandSelectionDialog::onRangeChanged);
    connect(table, &HandSelectionTable::mouseReleased, this,
            &HandSelectionDialog::onChangedForMemento);
    connect(ui->rangeText, &HandRangeLine::RangeChanged, this,
            &HandSelectionDialog::onTextEditChange);
    connect(ui->rangeText, &QLineEdit::editingFinished, this,
            &HandSelectionDialog::onChangedForMemento);

    connect(ui->percentSlider, &QSlider::valueChanged, this,
            &HandSelectionDialog::sliderValueChanged);
    connect(ui->percentSlider, &QSlider::sliderReleased, this,
            &HandSelectionDialog::onChangedForMemento);
    connect(ui->percentSpinBox, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
            &HandSelectionDialog::rangeValueChanged);

    connect(ui->invertButton, &QPushButton::clicked, this, &HandSelectionDialog::onInvertRange);
    connect(ui->clearButton, &QPushButton::clicked, this, &HandSelectionDialog::clearRange);
    connect(ui->undoButton, &QPushButton::clicked, this, &HandSelectionDialog::onUndo);
    connect(ui->redoButton, &QPushButton::clicked, this, &HandSelectionDialog::onRedo);

    // The group row and the saved-range tree wire their own widgets. An edit of the groups
    // or of the range of a group is an undo step.
    connect(groups, &HandSelectionGroups::showRequested, this, &HandSelectionDialog::showGroup);
    connect(groups, &HandSelectionGroups::edited, this, [this](unsigned int index) {
        showGroup(index);
        onChangedForMemento();
    });
    connect(groups, &HandSelectionGroups::shownRangeReplaced, this, [this] {
        refreshAll();
        onChangedForMemento();
    });
    connect(groups, &HandSelectionGroups::nodesAboutToBeRemoved, this,
            &HandSelectionDialog::releaseTree);
    connect(savedTree, &SavedRangeTree::restored, this, &HandSelectionDialog::rangeTreeRestored);
    connect(savedTree, &SavedRangeTree::rangeChosen, this, &HandSelectionDialog::loadSavedRange);
    connect(ui->saveTreeRangeButton, &QPushButton::clicked, this,
            &HandSelectionDialog::saveTreeRange);
    connect(table, &HandSelectionTable::RangeDropped, this, &HandSelectionDialog::onDroppedOnTable);

    connect(ui->selectButton, &QPushButton::clicked, this, &HandSelectionDialog::onSelect);
    connect(ui->selectorTabs, &QTabWidget::currentChanged, this,
            &HandSelectionDialog::selectorTabChanged);
    connect(equityTab, &EquityRangeSelectorTab::selectionCalculationFinished, this,
            &HandSelectionDialog::equitySelectorCalculationFinished);
    connect(ui->unselectWithRightButton, &QCheckBox::toggled, this,
            &HandSelectionDialog::onSelectCardsWithRightMouseButtonToggle);

    connect(ui->buttonBox, &QDialogButtonBox::accepted, this, &HandSelectionDialog::accept);
    connect(ui->buttonBox, &QDialogButtonBox::rejected, this, &HandSelectionDialog::reject);
}

// --- Entry points ----------------------------------------------------------------------------

bool HandSelectionDialog::selectRange(Range::Tree& playerGroups, const QString& title,
                                      const std::string& board, const std::string& deadCards,
                                      ThreadPool* pool, QWidget* parent,
                                      const std::string& opponentRange) {
    HandSelectionDialog dialog(playerGroups, board, deadCards, pool, parent);
    dialog.setWindowTitle(title);
    dialog.setOpponentRange(opponentRange);
    return dialog.exec() == QDialog::Accepted;
}

bool HandSelectionDialog::selectRange(Range::HandRange& range, const QString& title,
                                      const std::string& board, const std::string& deadCards,
                                      ThreadPool* pool, QWidget* parent) {
    HandSelectionDialog dialog(range, board, deadCards, pool, parent);
    dialog.setWindowTitle(title);
    return dialog.exec() == QDialog::Accepted;
}

// --- State and texts ---------------------------------------------------------------------------

std::string HandSelectionDialog::currentRangeText() const {
    return Range::HandRangeStringReader(rootRange.handRange(currentGroup())).compactText();
}

QString HandSelectionDialog::percentText(double share) {
    return QString::number(share * 100.0, 'f', 2) + QStringLiteral(" %");
}

// --- Showing -----------------------------------------------------------------------------------

void HandSelectionDialog::showGroup(unsigned int index) {
    index = groups->show(index);
    const bool isRoot = index == 0;
    Range::HandRange* range = &rootRange.handRange(index);

    ui->handSelectionTable->setRangeAndGroups(range, withGroups ? &rootRange : nullptr, index,
                                              !isRoot);

    ui->rangeText->setRangeGroups(isRoot ? nullptr : &rootRange, index);
    ui->rangeText->setHandRange(range);
    ui->combinationsTitle->setText(isRoot ? QStringLiteral("Range Combinations:")
                                          : QStringLiteral("Group Combinations:"));
    // The handle stands at the whole percent of the range shown, as the box shows it.
    setSliderSilently(static_cast<int>(range->combinationCount() * 100 / 1326));
    updateNumbers();
    UpdateButtonEnables();
}

void HandSelectionDialog::releaseTree() {
    ui->handSelectionTable->setRangeAndGroups(nullptr, nullptr, 0, false);
    ui->rangeText->setRangeGroups(nullptr, 0);
    ui->rangeText->setHandRange(nullptr);
}

void HandSelectionDialog::setSliderSilently(int value) {
    const QSignalBlocker blocker(ui->percentSlider);
    ui->percentSlider->setValue(value);
}

void HandSelectionDialog::refreshAll() {
    ui->handSelectionTable->repaint();
    ui->rangeText->setHandRange(&currentRange());
    updateNumbers();
}

void HandSelectionDialog::updateNumbers() {
    const unsigned int shown = currentGroup();
    const Range::HandRange& range = currentRange();
    const unsigned int combinations = range.combinationCount();
    const unsigned int alive =
        HandRangeHover::aliveCombinations(range, deadCards, groups->siblingRanges(shown));
    ui->combinationCount->setText(QString::number(combinations));
    ui->combinationCountDiscounted->setText(QStringLiteral("(%1)").arg(alive));
    {
        const QSignalBlocker blocker(ui->percentSpinBox);
        ui->percentSpinBox->setValue(combinations / 1326.0 * 100.0);
    }
    ui->discountedPercent->setText(QStringLiteral("(") + percentText(alive / 1326.0) +
                                   QStringLiteral(")"));

    bool showPortion = false;
    if (shown != 0 && groups->hasRangeParent(shown)) {
        const float share = rootRange.shareOfParent(shown);
        if (!std::isnan(share)) {
            showPortion = true;
            const unsigned int parent = rootRange.node(shown)->parent;
            const unsigned int parentAlive = HandRangeHover::aliveCombinations(
                rootRange.handRange(parent), deadCards, groups->siblingRanges(parent));
            const float discounted = static_cast<float>(alive) / static_cast<float>(parentAlive);
            ui->portionValue->setText(percentText(share));
            ui->portionDiscountedValue->setText(std::isnan(discounted) ? QStringLiteral("-")
                                                                       : percentText(discounted));
        }
    }
    for (QWidget* widget : {ui->portionTitle, ui->portionValue, ui->portionDiscountedTitle,
                            ui->portionDiscountedValue})
        widget->setVisible(showPortion);
}

void HandSelectionDialog::UpdateButtonEnables() {
    ui->undoButton->setEnabled(rangeHistory.canUndo());
    ui->redoButton->setEnabled(rangeHistory.canRedo());
    savedTree->updateButtons();
}

// --- Slider, text line, table ------------------------------------------------------------------

void HandSelectionDialog::applyPercent(double percent) {
    const Range::HandRange chosen = rangeForPercent(percent);
    currentRange().assign(chosen.elements());
    refreshAll();
}

void HandSelectionDialog::sliderValueChanged(int value) {
    applyPercent(value);
    if (!ui->percentSlider->isSliderDown())
        onChangedForMemento();
}

void HandSelectionDialog::rangeValueChanged(double value) {
    setSliderSilently(static_cast<int>(value));
    applyPercent(value);
    onChangedForMemento();
}

void HandSelectionDialog::onRangeChanged() {
    // The table has repainted its cells already.
    ui->rangeText->setHandRange(&currentRange());
    updateNumbers();
}

void HandSelectionDialog::onTextEditChange() {
    // The line keeps what is typed; only the table and the numbers follow.
    ui->handSelectionTable->repaint();
    updateNumbers();
}

void HandSelectionDialog::clearRange() {
    setSliderSilently(0);
    applyPercent(0);
    onChangedForMemento();
}

void HandSelectionDialog::onInvertRange() {
    Range::HandRange inverted(true);
    inverted -= Range::HandRange(currentRange());
    currentRange().assign(inverted.elements());
    refreshAll();
    onChangedForMemento();
}

// --- Selectors ---------------------------------------------------------------------------------

void HandSelectionDialog::applySelection(const std::vector<unsigned long long>& hands) {
    Range::HandRange result;
    for (unsigned long long hand : hands) {
        if (Range::suitPairOfHand(hand) == 0)
            continue; // not a two-card hand; reported by suitPairOfHand
        result.insert(Range::elementOfHand(hand), true);
    }
    applyRange(std::move(result));
}

void HandSelectionDialog::applyRange(Range::HandRange result) {
    int mode = ui->selectMode->currentData().toInt();
    if (mode >= OverwriteInverted) {
        Range::HandRange inverted(true);
        inverted -= result;
        result = inverted;
        mode -= OverwriteInverted;
    }
    Range::HandRange& range = currentRange();
    if (mode == Overwrite)
        range.assign(result.elements());
    else if (mode == Add)
        range += result;
    else
        range -= result;
    refreshAll();
    onChangedForMemento();
}

bool HandSelectionDialog::isSelecting() const {
    return equityTab->isRunning();
}

void HandSelectionDialog::setOpponentRange(const std::string& rangeText) {
    // Callers hand technical text; the field shows what a player would type.
    Range::HandRange opponent;
    Range::HandRangeStringManipulator(opponent).setFree(rangeText);
    equityTab->setOtherRange(
        QString::fromStdString(Range::HandRangeStringReader(opponent).compactText()));
}

void HandSelectionDialog::onSelect() {
    if (equityTab->isRunning()) {
        equityTab->abort();
        stopSelecting();
        return;
    }
    const Range::HandRange input = selectionInputRange();
    if (ui->selectorTabs->currentWidget() == ui->handStrengthTab) {
        std::vector<unsigned long long> hands;
        for (const Range::Element& element : input)
            Range::handsOfElement(element.values, element.suits, hands);
        applySelection(strengthTab->select(hands, boardCards, onlyDeadCards));
        return;
    }
    if (input.isEmpty())
        return;
    const std::string rangeText = Range::HandRangeStringReader(input).technicalText();
    if (!equityTab->startCalculation(rangeText, equityTab->otherRangeText(), board, deadCardText))
        return;
    ui->selectButton->setText(QString());
    connect(loadingMovie, &QMovie::frameChanged, ui->selectButton,
            [this] { ui->selectButton->setIcon(QIcon(loadingMovie->currentPixmap())); });
    loadingMovie->start();
}

void HandSelectionDialog::stopSelecting() {
    loadingMovie->stop();
    disconnect(loadingMovie, &QMovie::frameChanged, ui->selectButton, nullptr);
    ui->selectButton->setText(QStringLiteral("&Select"));
    ui->selectButton->setIcon(QIcon());
    selectorTabChanged();
}

void HandSelectionDialog::equitySelectorCalculationFinished(std::vector<BoardType> cards) {
    stopSelecting();
    applySelection(cards);
}

void HandSelectionDialog::selectorTabChanged() {
    // The hand strength of a hand needs a flop; the equity selector works on any board.
    const bool strength = ui->selectorTabs->currentWidget() == ui->handStrengthTab;
    const bool canSelect = !strength || boardCards.size() >= 3 || equityTab->isRunning();
    ui->selectButton->setEnabled(canSelect);
    ui->selectButton->setToolTip(canSelect ? QString()
                                           : QStringLiteral("Selecting by hand strength needs "
                                                            "a flop on the board."));
}

// --- Saved ranges ------------------------------------------------------------------------------

void HandSelectionDialog::loadSavedRange(const Range::Tree& source, unsigned int node) {
    if (ui->selectMode->currentData().toInt() == Overwrite && withGroups) {
        const unsigned int shown = groups->replaceShownWith(source, node);
        showGroup(shown);
        onChangedForMemento();
        return;
    }
    applyRange(Range::HandRange(source.handRange(node)));
}

void HandSelectionDialog::addCurrentTreeRange() {
    savedTree->addRange(rootRange, currentGroup());
}

void HandSelectionDialog::saveTreeRange() {
    savedTree->saveRange(rootRange, currentGroup());
}

void HandSelectionDialog::rangeTreeDoubleclicked(const QModelIndex& modelIndex) {
    savedTree->choose(modelIndex);
}

// --- Groups and options ------------------------------------------------------------------------

void HandSelectionDialog::onGroupBoxClick() {
    groups->onBoxClicked(qobject_cast<RangeGroupBox*>(sender()));
}

void HandSelectionDialog::onSelectCardsWithRightMouseButtonToggle(bool checked) {
    HandSelectionSettings::setUnselectWithRightButton(checked);
    ui->handSelectionTable->setUnselectWithRightButton(checked);
    ui->suitSelectionTable->setUnselectWithRightButton(checked);
}

// --- Undo within the dialog -------------------------------------------------------------------

HandSelectionDialog::RangeSnapshot HandSelectionDialog::takeSnapshot() const {
    RangeSnapshot snapshot;
    rootRange.CreateMemento(snapshot.groups);
    snapshot.selectedGroup = currentGroup();
    return snapshot;
}

void HandSelectionDialog::restoreSnapshot(const RangeSnapshot& snapshot) {
    // Nothing may look at the old nodes while the tree is replaced.
    releaseTree();
    rootRange.RestoreMemento(snapshot.groups);
    groups->treeReplaced();
    showGroup(snapshot.selectedGroup);
}

void HandSelectionDialog::onChangedForMemento() {
    // A stroke or an edit that changed nothing is no step of the undo list.
    if (rangeHistory.record(takeSnapshot()))
        UpdateButtonEnables();
}

void HandSelectionDialog::onUndo() {
    if (const RangeSnapshot* snapshot = rangeHistory.undo()) {
        restoreSnapshot(*snapshot);
        UpdateButtonEnables();
    }
}

void HandSelectionDialog::onRedo() {
    if (const RangeSnapshot* snapshot = rangeHistory.redo()) {
        restoreSnapshot(*snapshot);
        UpdateButtonEnables();
    }
}

// --- Closing -----------------------------------------------------------------------------------

void HandSelectionDialog::writeBack() {
    if (callerTree) {
        std::vector<Range::NodeMemento> edited;
        rootRange.CreateMemento(edited);
        callerTree->RestoreMemento(edited);
    } else if (callerRange) {
        callerRange->assign(rootRange.handRange(0).elements());
    }
}

void HandSelectionDialog::accept() {
    savedTree->saveToSettings();
    writeBack();
    QDialog::accept();
}

void HandSelectionDialog::reject() {
    // The tree of saved ranges is kept on a cancel too.
    savedTree->saveToSettings();
    restoreSnapshot(RangeSnapshot{openingState, 0});
    QDialog::reject();
}

void HandSelectionDialog::done(int result) {
    if (equityTab->isRunning()) {
        equityTab->abort();
        stopSelecting();
    }
    HandSelectionSettings::saveWindow(*this, *ui->splitter);
    savedTree->saveOpenness();
    QDialog::done(result);
}

void HandSelectionDialog::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    // A damaged stored tree is told once the dialog is there to be seen.
    QMetaObject::invokeMethod(
        this, [this] { savedTree->reportLoadProblem(); }, Qt::QueuedConnection);
}

void HandSelectionDialog::setPrompts(const Prompts& prompts) {
    groups->setPrompts(prompts);
    savedTree->setPrompts(prompts);
}
