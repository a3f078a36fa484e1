#include "tabs/BoardEvaluationTab.h"

#include "Range/Assertion.h"
#include "Range/CardText.h"
#include "Range/HandRangeElementConversion.h"
#include "Range/HandRangeStringReader.h"
#include "Range/RangeStringOperations.h"
#include "calculation/ThreadPool.h"
#include "handstrength/HandGroupSchema.h"
#include "handstrength/ui/HandGroupSchemaSelection.h"
#include "handstrength/ui/HandGroupTickSchemaSelection.h"
#include "handstrength/ui/SchemaListDialog.h"
#include "handstrength/ui/TickSchemaListDialog.h"
#include "selection/HandRangeHover.h"
#include "tabs/BoardHitEvaluationTable.h"
#include "tabs/HandStrengthLabel.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QInputDialog>
#include <QMenu>
#include <QMouseEvent>
#include <QScreen>

#include <algorithm>
#include <cstring>

namespace {

const char* const valueCharacters = "23456789TJQKA";
const char* const suitCharacters = "dhsc";

bool isValue(char c) {
    return c != '\0' && std::strchr(valueCharacters, c) != nullptr;
}

bool isSuit(char c) {
    return c != '\0' && std::strchr(suitCharacters, c) != nullptr;
}

bool higherFirst(char first, char second, bool equalAllowed) {
    const char* a = std::strchr(valueCharacters, first);
    const char* b = std::strchr(valueCharacters, second);
    return a > b || (equalAllowed && a == b);
}

// "AK", "AKs", "AKo" (higher value first) or "AdKh".
bool isTechnicalToken(const char* token, std::size_t length) {
    switch (length) {
    case 2:
        return isValue(token[0]) && isValue(token[1]) && higherFirst(token[0], token[1], true);
    case 3:
        return isValue(token[0]) && isValue(token[1]) && higherFirst(token[0], token[1], false) &&
               (token[2] == 's' || token[2] == 'o');
    case 4:
        return isValue(token[0]) && isSuit(token[1]) && isValue(token[2]) && isSuit(token[3]);
    default:
        return false;
    }
}

} // namespace

BoardEvaluationTab::BoardEvaluationTab(QWidget* parent) : QWidget(parent) {
    // The tab's own pools load nothing: the window's pools carry the user's schemas.
}

BoardEvaluationTab::~BoardEvaluationTab() {
    closeHovers();
}

void BoardEvaluationTab::setControls(QComboBox* rangeBox, HandGroupSchemaSelection* schemaBox,
                                     HandGroupTickSchemaSelection* tickBox, QCheckBox* absoluteBox,
                                     BoardHitEvaluationTable* rowsTable) {
    selectedRange = rangeBox;
    handGroupSchemaSelection = schemaBox;
    tickSchemaSelection = tickBox;
    absoluteFlag = absoluteBox;
    evaluationTable = rowsTable;
    evaluationTable->setObjectName(QStringLiteral("table"));

    connect(evaluationTable, &BoardHitEvaluationTable::clicked, this,
            &BoardEvaluationTab::handStrengthLabelClicked);
    connect(evaluationTable, &BoardHitEvaluationTable::hovered, this,
            &BoardEvaluationTab::handStrengthLabelHovered);
    connect(evaluationTable, &BoardHitEvaluationTable::hoverLost, this,
            &BoardEvaluationTab::handStrengthLabelHoverLost);
    if (absoluteFlag != nullptr) {
        absoluteFlag->setText(QStringLiteral("Absolute Percentages"));
        absoluteFlag->setToolTip(QStringLiteral(
            "If checked, percentages of subordinated hand strengths will be absolute "
            "percentages and not relative to parent percentage."));
        connect(absoluteFlag, &QCheckBox::stateChanged, this, &BoardEvaluationTab::DoRefresh);
    }
    // "Range:" is deliberately not tied to DoRefresh: the window owns that refresh (it
    // connects the box to its update with refresh), and a second one here would evaluate
    // every change twice.
    connect(handGroupSchemaSelection, &HandGroupSchemaSelection::schemaChanged, this,
            &BoardEvaluationTab::reactToChangedSchema);
    // "Edit Schemas..." runs the schema dialogs on the pool the box shows; the other tabs'
    // boxes catch up with the saved pool when they are shown again.
    handGroupSchemaSelection->setEditor(&SchemaListDialog::editPool);
    if (tickSchemaSelection != nullptr) {
        connect(tickSchemaSelection, &HandGroupTickSchemaSelection::tickSchemaChanged, this,
                &BoardEvaluationTab::reactToChangedTickSchema);
        tickSchemaSelection->setEditor(&TickSchemaListDialog::editPool);
    }

    installSchema(new HandGroupSchema(this, 1));
    setTickSchemaPool(&ownTickSchemaPool);
    // Hands the first schema over through reactToChangedSchema.
    setSchemaPool(&ownSchemaPool);
}

void BoardEvaluationTab::setThreadPool(ThreadPool* pool) {
    threadPool = pool;
    if (handGroupSchema != nullptr)
        handGroupSchema->setThreadPool(pool);
}

void BoardEvaluationTab::setTickSchemaPool(HandGroupTickSchemaPool* pool) {
    tickSchemaPool = pool != nullptr ? pool : &ownTickSchemaPool;
    if (tickSchemaSelection != nullptr)
        tickSchemaSelection->setPool(tickSchemaPool);
}

void BoardEvaluationTab::setSchemaPool(HandGroupSchemaPool* pool) {
    schemaPool = pool != nullptr ? pool : &ownSchemaPool;
    if (handGroupSchemaSelection != nullptr)
        handGroupSchemaSelection->setPool(schemaPool);
}

void BoardEvaluationTab::setPools(ThreadPool* pool, HandGroupTickSchemaPool* tickPool,
                                  HandGroupSchemaPool* groupSchemaPool) {
    setThreadPool(pool);
    setTickSchemaPool(tickPool);
    setSchemaPool(groupSchemaPool);
}

std::string BoardEvaluationTab::technicalRange(const std::string& text) {
    // Technical text passes unchanged; anything else is repaired and spelled out first.
    bool technical = true;
    std::size_t start = 0;
    while (technical && start <= text.size()) {
        std::size_t end = text.find(',', start);
        if (end == std::string::npos)
            end = text.size();
        technical = isTechnicalToken(text.data() + start, end - start);
        start = end + 1;
    }
    if (text.empty() || technical)
        return text;
    std::string normal = text;
    Range::normalize(normal);
    return normal.empty() ? normal : Range::expand(normal);
}

bool BoardEvaluationTab::cardsAreValid(const std::string& boardText, const std::string& deadText) {
    return Range::CardText::problemOf(boardText, deadText).empty();
}

void BoardEvaluationTab::updateEvaluation(const Range::HandRange& player1Range,
                                          const Range::HandRange& player2Range,
                                          const std::string& boardText, const std::string& deadText,
                                          bool alwaysRefresh) {
    updateEvaluation(Range::HandRangeStringReader(player1Range).technicalText(),
                     Range::HandRangeStringReader(player2Range).technicalText(), boardText,
                     deadText, alwaysRefresh);
}

void BoardEvaluationTab::updateEvaluation(const std::string& player1Range,
                                          const std::string& player2Range,
                                          const std::string& boardText, const std::string& deadText,
                                          bool alwaysRefresh) {
    std::string technical1 = technicalRange(player1Range);
    std::string technical2 = technicalRange(player2Range);
    // Cards that cannot be analysed leave the tab without a board: nothing is counted. An
    // unfinished flop is the user's way to a complete one; any other bad card text is a fault
    // of the caller, who hands on what the board widget holds.
    std::string newBoard = boardText;
    std::string newDead = deadText;
    if (!cardsAreValid(boardText, deadText)) {
        QV_ASSERT(Range::CardText::isUnfinishedFlop(boardText), "Invalid board or dead cards.");
        newBoard.clear();
        newDead.clear();
    }
    if (!alwaysRefresh && technical1 == range1 && technical2 == range2 && newBoard == board &&
        newDead == deadCards)
        return;
    range1 = std::move(technical1);
    range2 = std::move(technical2);
    board = std::move(newBoard);
    deadCards = std::move(newDead);

    // The flag decides how the percentages of sub-rows are taken.
    const bool flat = absoluteFlag != nullptr && absoluteFlag->isChecked();
    closeHovers();
    ++calculations;
    startCalculation(range1, range2, board, deadCards, flat);
    rebuildTable();
}

void BoardEvaluationTab::DoRefresh() {
    if (evaluationTable == nullptr)
        return;
    const std::string player1 = range1, player2 = range2, boardText = board, deadText = deadCards;
    updateEvaluation(player1, player2, boardText, deadText, true);
}

void BoardEvaluationTab::rebuildTable() {
    evaluationTable->setSchema(handGroupSchema);
    evaluationTable->rebuildRows();
}

int BoardEvaluationTab::selectedPlayer() const {
    return selectedRange != nullptr && selectedRange->currentIndex() == 1 ? 2 : 1;
}

void BoardEvaluationTab::installSchema(HandGroupSchema* schema) {
    HandGroupSchema* old = handGroupSchema;
    handGroupSchema = schema;
    if (threadPool)
        schema->setThreadPool(threadPool);
    connect(schema, &HandGroupSchema::WinEvaluationFinished, this,
            [this](const ThreadHandle&, const DetailWinEvaluations& result) {
                takeWinEvaluation(result);
                reactToFinishedWinEvaluation();
            });
    if (evaluationTable != nullptr)
        evaluationTable->setSchema(schema);
    delete old;
}

void BoardEvaluationTab::reactToChangedSchema(HandGroupSchemaData schemaData) {
    auto* fresh = new HandGroupSchema(this, schemaData);
    std::vector<HandStrengthKey> ticks;
    const bool custom = tickSchemaSelection == nullptr || tickSchemaSelection->isCustom();
    if (custom) {
        if (handGroupSchema != nullptr)
            ticks = handGroupSchema->customSumHandStrengths();
    } else if (const auto* named =
                   tickSchemaPool->find(tickSchemaSelection->currentName().toStdString())) {
        ticks = named->handStrengths;
    }
    fresh->setCustomSum(ticks);
    closeHovers();
    installSchema(fresh);
    schemaReplaced();
    DoRefresh();
}

void BoardEvaluationTab::reactToChangedTickSchema(
    HandGroupTickSchemaPool::HandGroupTickSchema schema) {
    if (handGroupSchema == nullptr)
        return;
    handGroupSchema->setCustomSum(schema.handStrengths);
    DoRefresh();
}

void BoardEvaluationTab::reactToFinishedWinEvaluation() {
    rebuildTable();
}

// --- Mouse work on the rows ---------------------------------------------------------------

void BoardEvaluationTab::handStrengthLabelClicked(HandStrengthLabel* clickedLabel,
                                                  QMouseEvent* event) {
    if (clickedLabel == nullptr || event == nullptr || handGroupSchema == nullptr)
        return;
    const HandStrengthKey key = clickedLabel->key();
    const int x = event->pos().x();
    const bool ticks = evaluationTable->showsTicks();
    const int treeBegin = ticks ? BoardHitEvaluationTable::treeZoneBeginWithTicks
                                : BoardHitEvaluationTable::treeZoneBeginWithoutTicks;
    const std::vector<HandGroup>& groups = handGroupSchema->getGroups();
    const std::size_t g = clickedLabel->groupIndex();
    const std::size_t i = clickedLabel->rowIndex();
    const bool rowExists = g < groups.size() && i < groups[g].rows.size();

    if (handGroupSchema->isExpandable(key) && x >= treeBegin &&
        x <= treeBegin + BoardHitEvaluationTable::treeZoneWidth) {
        closeHovers();
        handGroupSchema->toggleChildren(key);
        rebuildTable();
        evaluationTable->update();
        return;
    }
    if (ticks && rowExists && x >= BoardHitEvaluationTable::tickZoneBegin &&
        x <= BoardHitEvaluationTable::tickZoneEnd) {
        const BoardHitEvaluationTable::Tick state = evaluationTable->tickState(groups[g], i);
        if (state == BoardHitEvaluationTable::Tick::None)
            return;
        // A full tick and a partial one both clear; an empty box ticks the whole subtree.
        if (state == BoardHitEvaluationTable::Tick::Unchecked)
            handGroupSchema->tickWithChildren(key);
        else
            handGroupSchema->untickWithChildren(key);
        if (tickSchemaSelection != nullptr)
            tickSchemaSelection->SetCurrentlySelectedHandStrengths(
                handGroupSchema->customSumHandStrengths());
        DoRefresh();
        return;
    }
    if (event->button() == Qt::RightButton || (event->buttons() & Qt::RightButton)) {
        closeHovers();
        showContextMenu(key, event->globalPos());
    }
}

std::vector<Range::HandRange> BoardEvaluationTab::hoverRanges(const HandStrengthKey& key) const {
    return {rangeOfRow(key, 1)};
}

QPoint BoardEvaluationTab::hoverPlacement(const QPoint& pointer, const QSize& size,
                                          const QRect& screen) {
    int x = pointer.x() + 21;
    int y = pointer.y() - size.height() - 5;
    if (x + size.width() > screen.right() + 1)
        x -= size.width() + 21;
    if (y < screen.top()) {
        const bool roomBelow = pointer.y() + 16 + size.height() <= screen.bottom() + 1;
        y += roomBelow ? size.height() + 21 : size.height() / 2 + 5;
    }
    x = std::max(std::min(x, screen.right() + 1 - size.width()), screen.left());
    y = std::max(std::min(y, screen.bottom() + 1 - size.height()), screen.top());
    return QPoint(x, y);
}

void BoardEvaluationTab::handStrengthLabelHovered(HandStrengthLabel* clickedLabel,
                                                  QMouseEvent* event) {
    if (clickedLabel == nullptr || event == nullptr)
        return;
    const QPoint pointer = event->globalPos();
    if (hoveredLabel != clickedLabel || hovers.empty()) {
        closeHovers();
        hoveredLabel = clickedLabel;
        // Numbers against the board and dead cards of the last evaluation, as the range lines
        // count theirs.
        const std::vector<unsigned long long> dead = Range::cardsOfText(deadCards);
        for (const Range::HandRange& range : hoverRanges(clickedLabel->key())) {
            auto* hover = new HandRangeHover(range, board, dead, this);
            hover->setAttribute(Qt::WA_DeleteOnClose);
            hovers.emplace_back(hover);
        }
    }
    // The hovers stand side by side and are placed as one block.
    QSize block(0, 0);
    for (const auto& hover : hovers) {
        if (!hover)
            continue;
        block.rwidth() += hover->width() + (block.width() > 0 ? 6 : 0);
        block.rheight() = std::max(block.height(), hover->height());
    }
    QScreen* screen = QGuiApplication::screenAt(pointer);
    if (screen == nullptr)
        screen = clickedLabel->screen();
    const QRect available = screen != nullptr ? screen->availableGeometry() : QRect();
    QPoint position =
        available.isValid() ? hoverPlacement(pointer, block, available) : pointer + QPoint(21, 5);
    for (const auto& hover : hovers) {
        if (!hover)
            continue;
        hover->move(position);
        hover->show();
        position.rx() += hover->width() + 6;
    }
}

void BoardEvaluationTab::handStrengthLabelHoverLost(HandStrengthLabel*, QEvent*) {
    closeHovers();
}

void BoardEvaluationTab::closeHovers() {
    for (const auto& hover : hovers) {
        if (hover)
            hover->close();
    }
    hovers.clear();
    hoveredLabel = nullptr;
}

std::vector<HandRangeHover*> BoardEvaluationTab::shownHovers() const {
    std::vector<HandRangeHover*> shown;
    for (const auto& hover : hovers) {
        if (hover && hover->isVisible())
            shown.push_back(hover);
    }
    return shown;
}

void BoardEvaluationTab::hideEvent(QHideEvent* event) {
    closeHovers();
    QWidget::hideEvent(event);
}

// --- The range behind a row and the context actions ---------------------------------------

Range::HandRange BoardEvaluationTab::rangeOfRow(const HandStrengthKey& key, int player) const {
    Range::HandRange range;
    if (handGroupSchema == nullptr)
        return range;
    for (unsigned long long hand : handGroupSchema->handsOf(key, player)) {
        const Range::Element element = Range::elementOfHand(hand);
        if (element.values == 0)
            continue;
        range.insert(element, true);
    }
    return range;
}

QMenu* BoardEvaluationTab::createContextMenu(const HandStrengthKey& key, QWidget* parent) {
    groupRange1 = rangeOfRow(key, 1);
    groupRange2 = Range::HandRange();
    auto* menu = new QMenu(parent);
    menu->addAction(QStringLiteral("Copy Range to &Clipboard"), this,
                    &BoardEvaluationTab::onCopyRange1ToClipboardAction);
    menu->addSeparator();
    menu->addAction(QStringLiteral("Overwrite Current Player1 Range/Group"), this,
                    &BoardEvaluationTab::onUseRange1AsPlayer1RangeAction);
    menu->addAction(QStringLiteral("Use As New Player1 Group"), this,
                    &BoardEvaluationTab::onUseRange1AsNewPlayer1GroupAction);
    menu->addSeparator();
    menu->addAction(QStringLiteral("Overwrite Current Player2 Range/Group"), this,
                    &BoardEvaluationTab::onUseRange1AsPlayer2RangeAction);
    menu->addAction(QStringLiteral("Use As New Player2 Group"), this,
                    &BoardEvaluationTab::onUseRange1AsNewPlayer2GroupAction);
    return menu;
}

void BoardEvaluationTab::showContextMenu(const HandStrengthKey& key, const QPoint& globalPosition) {
    QMenu* menu = createContextMenu(key, this);
    menu->exec(globalPosition);
    delete menu;
}

std::string BoardEvaluationTab::askGroupName() {
    QInputDialog dialog(this, windowFlags() & ~Qt::WindowContextHelpButtonHint);
    dialog.setWindowFlags(dialog.windowFlags() & ~Qt::WindowContextHelpButtonHint);
    dialog.setObjectName(QStringLiteral("groupNameDialog"));
    dialog.setInputMode(QInputDialog::TextInput);
    dialog.setWindowTitle(QStringLiteral("Group Name"));
    dialog.setLabelText(QStringLiteral(
        "How would you like to name the group? (keep empty for \"Group <number>\")"));
    if (dialog.exec() != QDialog::Accepted)
        return std::string();
    return dialog.textValue().toStdString();
}

void BoardEvaluationTab::onCopyRange1ToClipboardAction() {
    QApplication::clipboard()->setText(
        QString::fromStdString(Range::HandRangeStringReader(groupRange1).compactText()));
}

void BoardEvaluationTab::onUseRange1AsPlayer1RangeAction() {
    emit Player1RangeChange(groupRange1);
}

void BoardEvaluationTab::onUseRange1AsPlayer2RangeAction() {
    emit Player2RangeChange(groupRange1);
}

void BoardEvaluationTab::onUseRange1AsNewPlayer1GroupAction() {
    const Range::HandRange range = groupRange1;
    emit NewPlayer1Group(askGroupName(), range);
}

void BoardEvaluationTab::onUseRange1AsNewPlayer2GroupAction() {
    const Range::HandRange range = groupRange1;
    emit NewPlayer2Group(askGroupName(), range);
}

void BoardEvaluationTab::onCopyRange2ToClipboardAction() {
    QApplication::clipboard()->setText(
        QString::fromStdString(Range::HandRangeStringReader(groupRange2).compactText()));
}

void BoardEvaluationTab::onUseRange2AsPlayer1RangeAction() {
    emit Player1RangeChange(groupRange2);
}

void BoardEvaluationTab::onUseRange2AsPlayer2RangeAction() {
    emit Player2RangeChange(groupRange2);
}

void BoardEvaluationTab::onUseRange2AsNewPlayer2GroupAction() {
    const Range::HandRange range = groupRange2;
    emit NewPlayer2Group(askGroupName(), range);
}

void BoardEvaluationTab::onUseRange2AsNewPlayer1GroupAction() {
    const Range::HandRange range = groupRange2;
    emit NewPlayer1Group(askGroupName(), range);
}
