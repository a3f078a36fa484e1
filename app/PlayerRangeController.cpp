#include "app/PlayerRangeController.h"

#include "Range/GroupColor.h"
#include "Range/HandRangeStringManipulator.h"
#include "Range/HandRangeStringReader.h"
#include "Range/NodeMemento.h"
#include "Range/Tree.h"
#include "Range/TreeRangeNode.h"
#include "selection/BoardCardsWidget.h"
#include "selection/CardRange.h"
#include "selection/CardSelectionDialog.h"
#include "selection/HandRangeLine.h"
#include "selection/HandSelectionDialog.h"
#include "selection/ManagedHandRangeLine.h"

#include <QMessageBox>
#include <QSignalBlocker>

#include <utility>

PlayerRangeController::PlayerRangeController(int player, Range::Tree& range,
                                             ManagedHandRangeLine* line,
                                             const BoardCardsWidget* board, ThreadPool* pool,
                                             QWidget* window)
    : number(player), tree(range), rangeLine(line), board(board), pool(pool), window(window) {
    rangeLine->setGroups(&tree);
}

PlayerRangeController::~PlayerRangeController() {
    // The line may outlive the tree's nodes by a moment while the window is torn down.
    rangeLine->setGroups(nullptr);
}

QString PlayerRangeController::name() const {
    return QStringLiteral("Player%1").arg(number);
}

std::string PlayerRangeController::label(const char* format) const {
    return QString::fromLatin1(format).arg(name()).toStdString();
}

std::string PlayerRangeController::technicalText() const {
    const Range::HandRange* shown = rangeLine->rangeLine()->handRange();
    return shown ? Range::HandRangeStringReader(shown).technicalText() : std::string();
}

bool PlayerRangeController::hasText() const {
    return !rangeLine->rangeLine()->text().isEmpty();
}

void PlayerRangeController::showRangeAgain() {
    HandRangeLine* line = rangeLine->rangeLine();
    if (line->handRange() && !line->hasFocus())
        line->setHandRange(line->handRange());
}

void PlayerRangeController::setCards(const std::string& board,
                                     const std::vector<unsigned long long>& deadCards) {
    rangeLine->rangeLine()->setBoard(board);
    rangeLine->rangeLine()->setDeadCards(deadCards);
}

void PlayerRangeController::clear() {
    const unsigned int group = rangeLine->currentGroup();
    if (group == Range::Tree::noNode)
        return;
    // assign() tells the range's notifier once, so the groups below empty with it.
    tree.handRange(group).assign(Range::HandRange().elements());
    rangeLine->refill();
    emit changedBy(label("%1's Range Cleared"));
}

void PlayerRangeController::selectCards() {
    HandRangeLine* line = rangeLine->rangeLine();
    if (line->isReadOnlyMode() || !line->handRange())
        return;
    CardRange hand;
    hand.setMaxCards(2);
    CardSelectionDialog dialog(&hand, {}, {}, window);
    dialog.setWindowTitle(QStringLiteral("Select %1 Cards").arg(name()));
    dialog.setForbiddenCards(QString::fromStdString(board->getBoard() + board->getDeadCards()));
    if (dialog.exec() != QDialog::Accepted || hand.cardCount() != 2)
        return;
    Range::HandRangeStringManipulator(line->handRange()).setFree(hand.cardsText().toStdString());
    rangeLine->refill();
    emit changedBy(label("%1's Range Changed via Dialog"));
}

void PlayerRangeController::selectRange() {
    if (rangeLine->rangeLine()->isReadOnlyMode())
        return;
    // The dialog works on a copy: accepted, it replaces the nodes of the tree it was given,
    // and the line (which may get the focus back while the dialog closes) must never see the
    // player's tree change under it. The edit goes in with the line detached.
    std::vector<Range::NodeMemento> state;
    tree.CreateMemento(state);
    Range::Tree edited;
    edited.RestoreMemento(state);
    const std::string against =
        opponent != nullptr
            ? Range::HandRangeStringReader(opponent->range().handRange(0)).compactText()
            : std::string();
    if (!HandSelectionDialog::selectRange(edited, QStringLiteral("Select %1 Range").arg(name()),
                                          board->getBoard(), board->getDeadCards(), pool, window,
                                          against))
        return;
    const int shownGroup = rangeLine->currentIndex();
    edited.CreateMemento(state);
    restore(state);
    if (shownGroup > 0 && shownGroup < rangeLine->count()) {
        {
            const QSignalBlocker blocker(rangeLine);
            rangeLine->setCurrentIndex(shownGroup);
        }
        rangeLine->onIndexSelection(shownGroup);
    }
    emit changedBy(label("%1's Range Changed via Dialog"));
}

void PlayerRangeController::overwrite(const Range::HandRange& range) {
    tree.handRange(0).assign(range.elements());
    rangeLine->refill();
    emit changedBy(label("%1's Range Overwritten"));
}

void PlayerRangeController::addGroup(std::string groupName, const Range::HandRange& range) {
    // Each group of a player's range gets a standard colour of its own; with all of them
    // taken the group is refused rather than added without one.
    if (tree.freeColors(0).empty()) {
        QMessageBox::warning(window, QStringLiteral("Group"), QStringLiteral("All colors in use."));
        return;
    }
    if (groupName.empty())
        groupName = "Group " + std::to_string(tree.count() - 1 + 1);
    Range::TreeRangeNode* group = tree.addExclusiveRange(
        0, groupName, Range::TreeRangeNode::Overwrite, true, Range::GroupColor());
    group->handRange.assign(range.elements());
    rangeLine->refill();
    emit changedBy(QString::fromLatin1("%1 Group \"%2\" Added")
                       .arg(name(), QString::fromStdString(groupName))
                       .toStdString());
}

void PlayerRangeController::restore(const std::vector<Range::NodeMemento>& memento) {
    const QSignalBlocker blocker(rangeLine);
    // The line points into the tree's nodes, which the restore replaces.
    rangeLine->setGroups(nullptr);
    tree.RestoreMemento(memento);
    reattachLine();
}

void PlayerRangeController::reattachLine() {
    rangeLine->setGroups(&tree);
    {
        const QSignalBlocker indexBlocker(rangeLine);
        rangeLine->setCurrentIndex(0);
    }
    rangeLine->onIndexSelection(0);
}
