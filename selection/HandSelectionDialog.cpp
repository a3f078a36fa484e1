#include "selection/HandSelectionDialog.h"

#include "Range/Assertion.h"
#include "Range/CardConversion.h"
#include "Range/HandRangeElementConversion.h"
#include "Range/HandRangeStringReader.h"
#include "Range/TreeRangeNode.h"
#include "selection/GroupColorSelectionDialog.h"
#include "selection/HandRangeHover.h"
#include "selection/HandRangeLine.h"
#include "selection/HandSelectionTable.h"
#include "selection/RangeGroupBox.h"
#include "selection/SuitSelectionTable.h"

#include "ui_HandSelectionDialog.h"

#include <QByteArray>
#include <QInputDialog>
#include <QMessageBox>
#include <QPoint>
#include <QSettings>
#include <QSignalBlocker>
#include <QSize>
#include <QSplitter>

#include <cmath>
#include <limits>
#include <sstream>

namespace {

constexpr unsigned int noNode = Range::Tree::noNode;

// Best first; the slider takes classes from the front of this list.
constexpr const char* handOrder =
    "AA,KK,QQ,JJ,TT,99,AKs,AQs,AKo,AJs,KQs,88,ATs,AQo,KJs,KTs,QJs,AJo,KQo,QTs,A9s,77,ATo,JTs,"
    "KJo,A8s,K9s,QJo,A7s,KTo,Q9s,66,A5s,A6s,QTo,J9s,A9o,T9s,A4s,K8s,JTo,K7s,A8o,A3s,Q8s,K9o,"
    "A2s,K6s,J8s,T8s,A7o,55,Q9o,98s,K5s,Q7s,J9o,A5o,T9o,A6o,K4s,K8o,Q6s,J7s,T7s,A4o,97s,K3s,"
    "87s,Q5s,K7o,44,Q8o,A3o,K2s,J8o,Q4s,T8o,J6s,K6o,A2o,T6s,98o,76s,86s,96s,Q3s,J5s,K5o,Q7o,"
    "Q2s,J4s,33,65s,J7o,T7o,K4o,75s,T5s,Q6o,J3s,95s,87o,85s,97o,T4s,K3o,J2s,54s,Q5o,64s,T3s,"
    "22,K2o,74s,76o,T2s,Q4o,J6o,84s,94s,86o,T6o,96o,53s,93s,Q3o,J5o,63s,43s,92s,73s,65o,Q2o,"
    "J4o,83s,75o,52s,85o,82s,T5o,95o,J3o,62s,54o,42s,T4o,J2o,72s,64o,T3o,32s,74o,84o,T2o,94o,"
    "53o,93o,63o,43o,92o,73o,83o,52o,82o,42o,62o,72o,32o";

struct PercentLists {
    std::vector<Range::Element> cells;
    std::vector<unsigned int> counts;
};

const PercentLists& percentLists() {
    static const PercentLists lists = [] {
        PercentLists built;
        std::stringstream stream(handOrder);
        std::string token;
        while (std::getline(stream, token, ',')) {
            const unsigned int values =
                Range::valueToBinaryMask(token[0]) | Range::valueToBinaryMask(token[1]);
            int suitClass = Range::Offsuit;
            if (token.size() == 2 && token[0] == token[1])
                suitClass = Range::Pair;
            else if (token.size() > 2 && token[2] == 's')
                suitClass = Range::Suited;
            const unsigned int all = Range::possibleSuits(suitClass);
            built.cells.push_back(Range::makeElement(values, suitClass, all));
            built.counts.push_back(suitClass == Range::Pair     ? 6u
                                   : suitClass == Range::Suited ? 4u
                                                                : 12u);
        }
        return built;
    }();
    return lists;
}

// One-bit masks of the cards of a card text; what isn't a card is reported and skipped.
std::vector<unsigned long long> cardMasksOf(const std::string& cards) {
    std::vector<unsigned long long> masks;
    QV_ASSERT(cards.size() % 2 == 0, "Invalid card text.");
    for (std::size_t i = 0; i + 1 < cards.size(); i += 2) {
        const std::string card = cards.substr(i, 2);
        const char value = card[0];
        const char suit = card[1];
        const bool validValue = std::string("23456789TJQKA").find(value) != std::string::npos;
        const bool validSuit = std::string("dhsc").find(suit) != std::string::npos;
        if (!validValue || !validSuit) {
            QV_ASSERT(false, "Invalid card text.");
            continue;
        }
        const unsigned int lane = static_cast<unsigned int>(std::string("dhsc").find(suit));
        masks.push_back(static_cast<unsigned long long>(Range::valueToBinaryMask(value))
                        << (13 * lane));
    }
    return masks;
}

bool defaultAskGroupName(QWidget* parent, QString& name) {
    bool ok = false;
    const QString answer = QInputDialog::getText(
        parent, QStringLiteral("Group"), QStringLiteral("How would you like to name the group?"),
        QLineEdit::Normal, name, &ok);
    if (ok)
        name = answer;
    return ok;
}

bool defaultConfirmGroupDelete(QWidget* parent) {
    return QMessageBox::question(
               parent, QStringLiteral("Do you really want to delete?"),
               QStringLiteral(
                   "Do you really want to delete this group (and all children if existing)?"),
               QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
}

bool defaultChooseGroupColors(QWidget* parent, const Range::GroupColor& current,
                              const std::vector<Range::GroupColor>& unused,
                              Range::GroupColor& chosen) {
    GroupColorSelectionDialog dialog(current, unused, parent);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    chosen = dialog.groupColor();
    return true;
}

void defaultWarn(QWidget* parent, const QString& title, const QString& text) {
    QMessageBox::warning(parent, title, text);
}

} // namespace

// --- Construction ----------------------------------------------------------------------------

HandSelectionDialog::HandSelectionDialog(const std::string& board, const std::string& deadCards,
                                         ThreadPool* pool, QWidget* parent)
    : QDialog(parent), ui(new Ui::HandSelectionDialog), board(board), deadCardText(deadCards),
      deadCards(cardMasksOf(board + deadCards)), pool(pool) {
    prompts.askGroupName = &defaultAskGroupName;
    prompts.confirmGroupDelete = &defaultConfirmGroupDelete;
    prompts.chooseGroupColors = &defaultChooseGroupColors;
    prompts.warn = &defaultWarn;
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

    // The saved-range tree's own buttons act once the tree view is in place; undo and redo
    // of the tree work on savedRangeTree() already.
    for (QPushButton* button :
         {ui->editTreeNameButton, ui->addFolderButton, ui->saveTreeRangeButton,
          ui->deleteTreeNodeButton, ui->treeMoveUpButton, ui->treeMoveDownButton,
          ui->importTreeButton, ui->exportTreeButton})
        button->setEnabled(false);

    ui->rootGroupBox->setNumber(0);
    ui->groupArea->setVisible(withGroups);
    ui->groupSeparator->setVisible(withGroups);
    ui->handSelectionTable->setDeadCards(deadCards);
    ui->rangeText->setBoard(board + deadCardText);
    ui->rangeText->setDeadCards(deadCards);

    QSettings settings("Velmara", "Quorvane");
    settings.beginGroup("optionmenu");
    const bool unselect = settings.value("unselectCardWithRightButton", true).toBool();
    settings.endGroup();
    {
        const QSignalBlocker blocker(ui->unselectWithRightButton);
        ui->unselectWithRightButton->setChecked(unselect);
    }
    ui->handSelectionTable->setUnselectWithRightButton(unselect);
    ui->suitSelectionTable->setUnselectWithRightButton(unselect);
    ui->handSelectionTable->AssignPen(ui->suitSelectionTable->suitPen());

    wire();
    showGroup(0);
    rangeHistory.assign(1, takeSnapshot());
    rangeHistoryPosition = 0;
    resetTreeHistory();
    readWindowSettings();
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
    connect(ui->remainderButton, &QPushButton::clicked, this,
            &HandSelectionDialog::onGetGroupRemainder);
    connect(ui->clearButton, &QPushButton::clicked, this, &HandSelectionDialog::clearRange);
    connect(ui->undoButton, &QPushButton::clicked, this, &HandSelectionDialog::onUndo);
    connect(ui->redoButton, &QPushButton::clicked, this, &HandSelectionDialog::onRedo);

    connect(ui->rootGroupBox, &RangeGroupBox::clicked, this, &HandSelectionDialog::onGroupBoxClick);
    connect(ui->editGroupNameButton, &QPushButton::clicked, this,
            &HandSelectionDialog::onEditGroupName);
    connect(ui->editGroupColorsButton, &QPushButton::clicked, this,
            &HandSelectionDialog::onChangeGroupColor);
    connect(ui->deleteGroupButton, &QPushButton::clicked, this,
            &HandSelectionDialog::onDeleteGroup);
    connect(ui->parentGroup, QOverload<int>::of(&QComboBox::activated), this,
            &HandSelectionDialog::onParentGroupRangeIndexChange);
    connect(ui->defaultForNewGroups, &QCheckBox::stateChanged, this,
            &HandSelectionDialog::onDefaultForNewGroupsStateChange);
    connect(ui->unselectWithRightButton, &QCheckBox::toggled, this,
            &HandSelectionDialog::onSelectCardsWithRightMouseButtonToggle);

    connect(ui->treeUndoButton, &QPushButton::clicked, this, &HandSelectionDialog::onTreeUndo);
    connect(ui->treeRedoButton, &QPushButton::clicked, this, &HandSelectionDialog::onTreeRedo);

    connect(ui->buttonBox, &QDialogButtonBox::accepted, this, &HandSelectionDialog::accept);
    connect(ui->buttonBox, &QDialogButtonBox::rejected, this, &HandSelectionDialog::reject);
}

// --- Entry points ----------------------------------------------------------------------------

bool HandSelectionDialog::selectRange(Range::Tree& playerGroups, const QString& title,
                                      const std::string& board, const std::string& deadCards,
                                      ThreadPool* pool, QWidget* parent) {
    HandSelectionDialog dialog(playerGroups, board, deadCards, pool, parent);
    dialog.setWindowTitle(title);
    return dialog.exec() == QDialog::Accepted;
}

bool HandSelectionDialog::selectRange(Range::HandRange& range, const QString& title,
                                      const std::string& board, const std::string& deadCards,
                                      ThreadPool* pool, QWidget* parent) {
    HandSelectionDialog dialog(range, board, deadCards, pool, parent);
    dialog.setWindowTitle(title);
    return dialog.exec() == QDialog::Accepted;
}

// --- Percent order -----------------------------------------------------------------------------

const std::vector<Range::Element>& HandSelectionDialog::percentOrder() {
    return percentLists().cells;
}

const std::vector<unsigned int>& HandSelectionDialog::percentOrderCounts() {
    return percentLists().counts;
}

Range::HandRange HandSelectionDialog::rangeForPercent(double percent) {
    const PercentLists& lists = percentLists();
    const double whole = std::floor(percent);
    std::size_t index = 0;
    unsigned int sum = 0;
    while (index < lists.cells.size() && sum / 13.26 < whole) {
        sum += lists.counts[index];
        ++index;
    }
    Range::HandRange range;
    for (std::size_t i = 0; i < index; ++i)
        range.setSuits(lists.cells[i].values, lists.cells[i].suited, lists.cells[i].suits);
    return range;
}

QString HandSelectionDialog::percentText(double share) {
    return QString::number(share * 100.0, 'f', 2) + QStringLiteral(" %");
}

// --- State -------------------------------------------------------------------------------------

Range::HandRange& HandSelectionDialog::currentRange() {
    return rootRange.handRange(shownGroup);
}

std::string HandSelectionDialog::currentRangeText() const {
    return Range::HandRangeStringReader(rootRange.handRange(shownGroup)).compactText();
}

std::vector<RangeGroupBox*> HandSelectionDialog::groupBoxes() const {
    std::vector<RangeGroupBox*> all{ui->rootGroupBox};
    all.insert(all.end(), boxes.begin(), boxes.end());
    return all;
}

bool HandSelectionDialog::hasRangeParent(unsigned int index) const {
    const unsigned int parent = rootRange.node(index)->parent;
    return parent != noNode && rootRange.node(parent)->IsRange();
}

unsigned int HandSelectionDialog::groupCount() const {
    return rootRange.count() - 1;
}

std::vector<const Range::HandRange*> HandSelectionDialog::siblingRanges(unsigned int index) const {
    std::vector<const Range::HandRange*> others;
    for (unsigned int sibling : rootRange.siblings(index))
        if (rootRange.node(sibling)->IsRange())
            others.push_back(&rootRange.handRange(sibling));
    return others;
}

// --- Showing -----------------------------------------------------------------------------------

void HandSelectionDialog::showGroup(unsigned int index) {
    if (index >= rootRange.count() || !rootRange.node(index)->IsRange())
        index = 0;
    shownGroup = index;
    const bool isRoot = index == 0;
    Range::HandRange* range = &rootRange.handRange(index);

    ui->handSelectionTable->setRangeAndGroups(range, withGroups ? &rootRange : nullptr, index,
                                              !isRoot);

    ui->rangeText->setRangeGroups(isRoot ? nullptr : &rootRange, index);
    ui->rangeText->setHandRange(range);
    ui->combinationsTitle->setText(isRoot ? QStringLiteral("Range Combinations:")
                                          : QStringLiteral("Group Combinations:"));
    ui->remainderButton->setEnabled(!isRoot);
    for (QWidget* widget : std::initializer_list<QWidget*>{
             ui->groupName, ui->editGroupNameButton, ui->editGroupColorsButton,
             ui->deleteGroupButton, ui->parentLabel, ui->parentGroup, ui->defaultForNewGroups})
        widget->setEnabled(!isRoot);
    ui->groupName->setText(isRoot ? QStringLiteral("Group Name")
                                  : QString::fromStdString(rootRange.rangeNode(index)->name));
    setSliderSilently(0);
    rebuildGroupBoxes();
    fillParentCombo();
    updateNumbers();
    UpdateButtonEnables();
}

void HandSelectionDialog::rebuildGroupBoxes() {
    // The clicked box may still be inside its mouse handler: let the event loop delete it.
    for (RangeGroupBox* box : boxes) {
        ui->groupBoxesLayout->removeWidget(box);
        box->hide();
        box->deleteLater();
    }
    boxes.clear();
    ui->rootGroupBox->SetRangeNode(rootRange.rangeNode(0));
    ui->rootGroupBox->setState(shownGroup == 0 ? RangeGroupBox::Selected : RangeGroupBox::Normal);
    if (!withGroups)
        return;
    auto* layout = ui->groupBoxesLayout;
    for (unsigned int index = 1; index < rootRange.count(); ++index) {
        if (!rootRange.node(index)->IsRange())
            continue;
        auto* box = new RangeGroupBox(ui->groupBoxes);
        box->setObjectName(QStringLiteral("groupBox%1").arg(index));
        box->setNumber(index);
        box->SetRangeNode(rootRange.rangeNode(index));
        box->setState(index == shownGroup ? RangeGroupBox::Selected : RangeGroupBox::Normal);
        box->setToolTip(QString::fromStdString(rootRange.rangeNode(index)->name));
        connect(box, &RangeGroupBox::clicked, this, &HandSelectionDialog::onGroupBoxClick);
        layout->addWidget(box);
        boxes.push_back(box);
    }
    auto* newBox = new RangeGroupBox(ui->groupBoxes);
    newBox->setObjectName(QStringLiteral("newGroupBox"));
    newBox->setState(RangeGroupBox::NewGroup);
    newBox->setMinimumWidth(36);
    connect(newBox, &RangeGroupBox::clicked, this, &HandSelectionDialog::onGroupBoxClick);
    layout->addWidget(newBox);
    boxes.push_back(newBox);
}

void HandSelectionDialog::fillParentCombo() {
    const QSignalBlocker blocker(ui->parentGroup);
    ui->parentGroup->clear();
    ui->parentGroup->addItem(QStringLiteral("Entire Range"), 0u);
    const unsigned int parent = rootRange.node(shownGroup)->parent;
    for (unsigned int index = 1; index < rootRange.count(); ++index) {
        if (!rootRange.node(index)->IsRange() || shownGroup == 0)
            continue;
        // Neither the group itself nor one of its descendants can become its parent.
        unsigned int walk = index;
        bool below = false;
        while (walk != noNode) {
            if (walk == shownGroup) {
                below = true;
                break;
            }
            walk = rootRange.node(walk)->parent;
        }
        if (below)
            continue;
        ui->parentGroup->addItem(QString::fromStdString(rootRange.rangeNode(index)->name), index);
    }
    const int position = ui->parentGroup->findData(parent == noNode ? 0u : parent);
    ui->parentGroup->setCurrentIndex(position < 0 ? 0 : position);
    ui->parentLabel->setText(parent == 0 || parent == noNode ? QStringLiteral("Range:")
                                                             : QStringLiteral("Group:"));
    const QSignalBlocker checkBlocker(ui->defaultForNewGroups);
    ui->defaultForNewGroups->setChecked(shownGroup != 0 && defaultParent != 0 &&
                                        defaultParent == parent);
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
    const Range::HandRange& range = currentRange();
    const unsigned int combinations = range.combinationCount();
    const unsigned int alive =
        HandRangeHover::aliveCombinations(range, deadCards, siblingRanges(shownGroup));
    ui->combinationCount->setText(QString::number(combinations));
    ui->combinationCountDiscounted->setText(QStringLiteral("(%1)").arg(alive));
    {
        const QSignalBlocker blocker(ui->percentSpinBox);
        ui->percentSpinBox->setValue(combinations / 1326.0 * 100.0);
    }
    ui->discountedPercent->setText(QStringLiteral("(") + percentText(alive / 1326.0) +
                                   QStringLiteral(")"));

    bool showPortion = false;
    if (shownGroup != 0 && hasRangeParent(shownGroup)) {
        const float share = rootRange.shareOfParent(shownGroup);
        if (!std::isnan(share)) {
            showPortion = true;
            const unsigned int parent = rootRange.node(shownGroup)->parent;
            const unsigned int parentAlive = HandRangeHover::aliveCombinations(
                rootRange.handRange(parent), deadCards, siblingRanges(parent));
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
    ui->undoButton->setEnabled(rangeHistoryPosition != 0);
    ui->redoButton->setEnabled(!rangeHistory.empty() &&
                               rangeHistoryPosition + 1 < rangeHistory.size());
    ui->treeUndoButton->setEnabled(treeHistoryPosition != 0);
    ui->treeRedoButton->setEnabled(!treeHistory.empty() &&
                                   treeHistoryPosition + 1 < treeHistory.size());
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

void HandSelectionDialog::onGetGroupRemainder() {
    if (shownGroup == 0 || !hasRangeParent(shownGroup))
        return;
    Range::HandRange remainder(true);
    for (unsigned int sibling : rootRange.siblings(shownGroup))
        if (rootRange.node(sibling)->IsRange())
            remainder -= Range::HandRange(rootRange.handRange(sibling));
    currentRange().assign(remainder.elements());
    refreshAll();
    onChangedForMemento();
}

// --- Selectors ---------------------------------------------------------------------------------

Range::HandRange HandSelectionDialog::selectionInputRange() const {
    if (shownGroup != 0 && hasRangeParent(shownGroup)) {
        const Range::HandRange& parent = rootRange.handRange(rootRange.node(shownGroup)->parent);
        if (!parent.isEmpty())
            return Range::HandRange(parent);
    }
    return Range::HandRange(true);
}

void HandSelectionDialog::applySelection(const std::vector<unsigned long long>& hands) {
    Range::HandRange result;
    for (unsigned long long hand : hands) {
        if (Range::suitPairOfHand(hand) == 0)
            continue; // not a two-card hand; reported by suitPairOfHand
        result.insert(Range::elementOfHand(hand), true);
    }
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

// --- Groups ------------------------------------------------------------------------------------

void HandSelectionDialog::onGroupBoxClick() {
    auto* box = qobject_cast<RangeGroupBox*>(sender());
    if (!box)
        return;
    if (box->state() == RangeGroupBox::NewGroup) {
        createGroup();
        return;
    }
    const unsigned int number = box->number();
    if (number == shownGroup)
        return;
    showGroup(number);
}

// A cancelled question makes no group; an accepted empty name gives "Group <n>", n the
// number the group will have.
void HandSelectionDialog::createGroup() {
    QString name;
    if (!prompts.askGroupName(this, name))
        return;
    if (name.isEmpty())
        name = QStringLiteral("Group %1").arg(groupCount() + 1);
    if (rootRange.freeColors(defaultParent).empty()) {
        prompts.warn(this, QStringLiteral("Group"), QStringLiteral("All colors in use."));
        return;
    }
    Range::TreeRangeNode* group =
        rootRange.addExclusiveRange(defaultParent, name.toStdString(),
                                    Range::TreeRangeNode::Overwrite, true, Range::GroupColor());
    showGroup(group->index);
    onChangedForMemento();
}

void HandSelectionDialog::onEditGroupName() {
    if (shownGroup == 0)
        return;
    QString name = QString::fromStdString(rootRange.rangeNode(shownGroup)->name);
    if (!prompts.askGroupName(this, name))
        return;
    if (name.isEmpty())
        name = QStringLiteral("Group %1").arg(shownGroup);
    rootRange.renameRange(shownGroup, name.toStdString());
    showGroup(shownGroup);
    onChangedForMemento();
}

void HandSelectionDialog::onChangeGroupColor() {
    if (shownGroup == 0)
        return;
    Range::GroupColor chosen;
    if (!prompts.chooseGroupColors(this, rootRange.rangeNode(shownGroup)->color,
                                   rootRange.freeColors(shownGroup), chosen))
        return;
    rootRange.setColor(shownGroup, chosen);
    showGroup(shownGroup);
    onChangedForMemento();
}

void HandSelectionDialog::onDeleteGroup() {
    if (shownGroup == 0)
        return;
    if (!prompts.confirmGroupDelete(this))
        return;
    // Work out what becomes of the default parent before the indices move.
    unsigned int removedBelowDefault = 0;
    bool defaultRemoved = false;
    std::vector<unsigned int> work{shownGroup};
    while (!work.empty()) {
        const unsigned int index = work.back();
        work.pop_back();
        if (index == defaultParent)
            defaultRemoved = true;
        else if (index < defaultParent)
            ++removedBelowDefault;
        for (unsigned int child : rootRange.node(index)->children)
            work.push_back(child);
    }
    const unsigned int position = shownGroup;
    ui->handSelectionTable->setRangeAndGroups(nullptr, nullptr, 0, false);
    ui->rangeText->setRangeGroups(nullptr, 0);
    ui->rangeText->setHandRange(nullptr);
    rootRange.remove(position);
    defaultParent = defaultRemoved ? 0 : defaultParent - removedBelowDefault;
    showGroup(position < rootRange.count() ? position : 0);
    onChangedForMemento();
}

void HandSelectionDialog::onParentGroupRangeIndexChange(int index) {
    if (shownGroup == 0 || index < 0)
        return;
    const unsigned int newParent = ui->parentGroup->itemData(index).toUInt();
    if (newParent == rootRange.node(shownGroup)->parent)
        return;
    rootRange.move(shownGroup, newParent, noNode);
    if (ui->defaultForNewGroups->isChecked())
        defaultParent = newParent;
    showGroup(shownGroup);
    onChangedForMemento();
}

void HandSelectionDialog::onDefaultForNewGroupsStateChange(int state) {
    if (state == Qt::Checked && shownGroup != 0)
        defaultParent = ui->parentGroup->currentData().toUInt();
    else
        defaultParent = 0;
}

void HandSelectionDialog::onSelectCardsWithRightMouseButtonToggle(bool checked) {
    QSettings settings("Velmara", "Quorvane");
    settings.beginGroup("optionmenu");
    settings.setValue("unselectCardWithRightButton", checked);
    settings.endGroup();
    ui->handSelectionTable->setUnselectWithRightButton(checked);
    ui->suitSelectionTable->setUnselectWithRightButton(checked);
}

// --- Undo within the dialog -------------------------------------------------------------------

HandSelectionDialog::RangeSnapshot HandSelectionDialog::takeSnapshot() const {
    RangeSnapshot snapshot;
    rootRange.CreateMemento(snapshot.groups);
    snapshot.selectedGroup = shownGroup;
    return snapshot;
}

void HandSelectionDialog::restoreSnapshot(const RangeSnapshot& snapshot) {
    // Nothing may look at the old nodes while the tree is replaced.
    ui->handSelectionTable->setRangeAndGroups(nullptr, nullptr, 0, false);
    ui->rangeText->setRangeGroups(nullptr, 0);
    ui->rangeText->setHandRange(nullptr);
    rootRange.RestoreMemento(snapshot.groups);
    if (defaultParent >= rootRange.count() || !rootRange.node(defaultParent)->IsRange())
        defaultParent = 0;
    showGroup(snapshot.selectedGroup);
}

void HandSelectionDialog::onChangedForMemento() {
    RangeSnapshot snapshot = takeSnapshot();
    // A stroke or an edit that changed nothing is no step of the undo list.
    if (!rangeHistory.empty() && rangeHistory[rangeHistoryPosition] == snapshot)
        return;
    if (!rangeHistory.empty())
        rangeHistory.erase(rangeHistory.begin() + static_cast<long>(rangeHistoryPosition) + 1,
                           rangeHistory.end());
    rangeHistory.push_back(std::move(snapshot));
    rangeHistoryPosition = rangeHistory.size() - 1;
    UpdateButtonEnables();
}

void HandSelectionDialog::onUndo() {
    if (rangeHistoryPosition == 0)
        return;
    --rangeHistoryPosition;
    restoreSnapshot(rangeHistory[rangeHistoryPosition]);
    UpdateButtonEnables();
}

void HandSelectionDialog::onRedo() {
    if (rangeHistoryPosition + 1 >= rangeHistory.size())
        return;
    ++rangeHistoryPosition;
    restoreSnapshot(rangeHistory[rangeHistoryPosition]);
    UpdateButtonEnables();
}

// --- Undo of the saved-range tree -------------------------------------------------------------

void HandSelectionDialog::resetTreeHistory() {
    treeHistory.assign(1, {});
    rangeTree.CreateMemento(treeHistory.front());
    treeHistoryPosition = 0;
    UpdateButtonEnables();
}

void HandSelectionDialog::onTreeChanged() {
    std::vector<Range::NodeMemento> memento;
    rangeTree.CreateMemento(memento);
    if (!treeHistory.empty() && treeHistory[treeHistoryPosition] == memento)
        return;
    treeHistory.erase(treeHistory.begin() + static_cast<long>(treeHistoryPosition) + 1,
                      treeHistory.end());
    treeHistory.push_back(std::move(memento));
    treeHistoryPosition = treeHistory.size() - 1;
    UpdateButtonEnables();
}

void HandSelectionDialog::onTreeUndo() {
    if (treeHistoryPosition == 0)
        return;
    --treeHistoryPosition;
    rangeTree.RestoreMemento(treeHistory[treeHistoryPosition]);
    emit rangeTreeRestored();
    UpdateButtonEnables();
}

void HandSelectionDialog::onTreeRedo() {
    if (treeHistoryPosition + 1 >= treeHistory.size())
        return;
    ++treeHistoryPosition;
    rangeTree.RestoreMemento(treeHistory[treeHistoryPosition]);
    emit rangeTreeRestored();
    UpdateButtonEnables();
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
    writeBack();
    QDialog::accept();
}

void HandSelectionDialog::reject() {
    restoreSnapshot(RangeSnapshot{openingState, 0});
    QDialog::reject();
}

void HandSelectionDialog::readWindowSettings() {
    QSettings settings("Velmara", "Quorvane");
    settings.beginGroup("handselectiondialog");
    if (settings.contains("pos"))
        move(settings.value("pos").toPoint());
    if (settings.contains("size"))
        resize(settings.value("size").toSize());
    if (settings.contains("splitterState"))
        ui->splitter->restoreState(settings.value("splitterState").toByteArray());
    if (settings.value("maximized", false).toBool())
        setWindowState(windowState() | Qt::WindowMaximized);
    settings.endGroup();
}

void HandSelectionDialog::writeWindowSettings() {
    QSettings settings("Velmara", "Quorvane");
    settings.beginGroup("handselectiondialog");
    settings.setValue("pos", pos());
    const bool maximized = isMaximized();
    if (!maximized)
        settings.setValue("size", size());
    settings.setValue("maximized", maximized);
    settings.setValue("splitterState", ui->splitter->saveState());
    settings.endGroup();
}

void HandSelectionDialog::done(int result) {
    writeWindowSettings();
    QDialog::done(result);
}
