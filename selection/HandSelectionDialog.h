#pragma once

#include "Range/HandRange.h"
#include "Range/NodeMemento.h"
#include "Range/Tree.h"
#include "selection/HandPercentOrder.h"
#include "selection/HandSelectionGroups.h"
#include "selection/HandSelectionPrompts.h"
#include "selection/HandStrengthSelection.h"
#include "selection/SavedRangeTree.h"
#include "selection/UndoHistory.h"

#include <QDialog>
#include <QString>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

class EquityRangeSelectorTab;
class HandStrengthSelectorTab;
class QModelIndex;
class QMovie;
class RangeGroupBox;
class ThreadPool;
namespace Ui {
class HandSelectionDialog;
}

// Where a range is made: the 13 by 13 table with its suit pen, the text line, the percent
// slider, the groups of the range with their colours, the range selectors and the tree of
// saved ranges.
//
// The dialog edits a copy: a player's range with its groups (a Range::Tree whose node 0 is
// the full range and whose other range nodes are the groups), or a bare range from another
// window, which hides the group row. accept() hands the edited range back to the caller;
// reject() leaves the caller's range as it was. Every change of the range or the groups
// is a snapshot of a private undo list (the group tree and the group shown); the tree of
// saved ranges has its own list of tree mementos.
//
// The dialog itself keeps the table, the slider, the text line and the numbers, the range
// undo list, and wires the parts: the group row and its edits are HandSelectionGroups, the
// tree of saved ranges with its view, buttons, undo list and settings is SavedRangeTree, the
// two range selectors are HandStrengthSelectorTab and EquityRangeSelectorTab, the slider's
// ranking is HandPercentOrder, the stored options and window place are
// HandSelectionSettings.
//
// What a selector or a saved range yields is merged into the range shown by the select
// mode; a saved range loaded with "Overwrite" brings its groups along.
//
// Modal; made per use on the stack of the slot that opens it.
class HandSelectionDialog : public QDialog {
    Q_OBJECT

public:
    // The question windows, replaceable so that tests need no modal loops.
    using Prompts = HandSelectionPrompts;

    // One entry of the range undo list.
    struct RangeSnapshot {
        std::vector<Range::NodeMemento> groups;
        unsigned int selectedGroup = 0;
        bool operator==(const RangeSnapshot& other) const {
            return groups == other.groups && selectedGroup == other.selectedGroup;
        }
    };

    // The values of the select mode combo (its item data).
    enum SelectMode {
        Overwrite = 0,
        Add = 1,
        Subtract = 2,
        OverwriteInverted = 3,
        AddInverted = 4,
        SubtractInverted = 5
    };

    // A player's range with its groups. `board` and `deadCards` are card text ("AhKd2c");
    // their combinations are left out of every discounted number. `pool` is handed to the
    // equity selector (may be null).
    HandSelectionDialog(Range::Tree& playerGroups, const std::string& board,
                        const std::string& deadCards, ThreadPool* pool = nullptr,
                        QWidget* parent = nullptr);
    // A bare range; the group row is hidden.
    HandSelectionDialog(Range::HandRange& range, const std::string& board,
                        const std::string& deadCards, ThreadPool* pool = nullptr,
                        QWidget* parent = nullptr);
    ~HandSelectionDialog() override;

    // Opens the dialog titled `title` modally. Accepted, the player's tree is replaced by
    // the edited one (without notifiers: the caller refreshes its views, and must not keep
    // node or range pointers of the tree across the call) and true is returned.
    // `opponentRange`, the other player's range text, is what the equity selector rates
    // against at first; left empty, the selector rates against any hand.
    static bool selectRange(Range::Tree& playerGroups, const QString& title,
                            const std::string& board, const std::string& deadCards,
                            ThreadPool* pool, QWidget* parent,
                            const std::string& opponentRange = std::string());
    // The same for a bare range, which on accept is assigned the edited elements (through
    // its own suitFilter, with one changeNotifier call).
    static bool selectRange(Range::HandRange& range, const QString& title, const std::string& board,
                            const std::string& deadCards, ThreadPool* pool, QWidget* parent);

    // The ranking of the 169 classes the slider walks, best first ("AA,KK,QQ,...,32o"), and
    // each class's number of combinations; built once per process.
    static const std::vector<Range::Element>& percentOrder() { return HandPercentOrder::classes(); }
    static const std::vector<unsigned int>& percentOrderCounts() {
        return HandPercentOrder::counts();
    }
    // The range of the first classes of percentOrder whose combinations reach `percent`
    // (cut to a whole number) of 1326; 0 gives no class, 100 all.
    static Range::HandRange rangeForPercent(double percent) {
        return HandPercentOrder::rangeFor(percent);
    }
    // "12.34 %": two decimals, a blank and the percent sign; `share` is 0..1.
    static QString percentText(double share);

    void setPrompts(const Prompts& prompts);
    Ui::HandSelectionDialog* form() const { return ui; }

    // --- State ---------------------------------------------------------------------------
    // The edited tree (node 0 the complete range) and the node shown.
    Range::Tree& groupTree() { return rootRange; }
    unsigned int currentGroup() const { return groups->shownGroup(); }
    unsigned int defaultParentGroup() const { return groups->defaultParent(); }
    Range::HandRange& currentRange() { return rootRange.handRange(currentGroup()); }
    // Compact text of the range shown.
    std::string currentRangeText() const;
    const std::string& boardText() const { return board; }
    const std::string& deadCardsText() const { return deadCardText; }
    // Board and dead cards as one-bit card masks.
    const std::vector<unsigned long long>& deadCardMasks() const { return deadCards; }
    ThreadPool* threadPool() const { return pool; }
    const std::vector<RangeSnapshot>& rangeUndoList() const { return rangeHistory.entries(); }
    std::size_t rangeUndoPosition() const { return rangeHistory.position(); }
    // The group boxes in order: the root's, one per group, and the "New" box last.
    std::vector<RangeGroupBox*> groupBoxes() const { return groups->boxes(); }

    // --- Range selectors ----------------------------------------------------------------
    // What a selector picks from: the parent group's range when the group shown has a
    // range parent that isn't empty, otherwise the full range.
    Range::HandRange selectionInputRange() const { return groups->selectionInput(); }
    // Merges single hands (two-card masks) into the range shown by the select mode of the
    // combo, and records a snapshot. Inverted modes invert within the full range.
    void applySelection(const std::vector<unsigned long long>& hands);
    HandStrengthSelectorTab* handStrengthSelector() const { return strengthTab; }
    EquityRangeSelectorTab* equitySelector() const { return equityTab; }
    // Whether the select button now stops a running equity selection.
    bool isSelecting() const;
    // Fills the range the equity selector rates against (the other player's range).
    void setOpponentRange(const std::string& rangeText);

    // --- Tree of saved ranges -------------------------------------------------------------
    // The tree the range tree view works on (node 0 its invisible root); its undo list
    // starts from its state when resetTreeHistory() was last called (at opening).
    SavedRangeTree& savedRanges() { return *savedTree; }
    Range::Tree& savedRangeTree() { return savedTree->tree(); }
    void resetTreeHistory() { savedTree->resetHistory(); }
    std::size_t treeUndoPosition() const { return savedTree->historyPosition(); }
    std::size_t treeUndoCount() const { return savedTree->historySize(); }
    // Applies the saved range `node` of `source` as a result by the select mode; with
    // "Overwrite" its groups replace those of the node shown.
    void loadSavedRange(const Range::Tree& source, unsigned int node);

signals:
    // The saved-range tree was replaced by an undo or redo: views of it must reset.
    void rangeTreeRestored();

public slots:
    void accept() override;
    void reject() override;
    void done(int result) override;

    void UpdateButtonEnables();
    void sliderValueChanged(int value);
    void rangeValueChanged(double value);
    void onGroupBoxClick();
    void onInvertRange();
    void onGetGroupRemainder() { groups->takeRemainder(); }
    void onRangeChanged();
    void clearRange();
    // The group row and the saved-range tree wire their own widgets; these slots act on them
    // as their widgets do.
    void onEditGroupName() { groups->editName(); }
    void onChangeGroupColor() { groups->editColors(); }
    void onDeleteGroup() { groups->deleteShown(); }
    void onParentGroupRangeIndexChange(int index) { groups->moveToParent(index); }
    void onDefaultForNewGroupsStateChange(int state) { groups->setDefaultForNewGroups(state); }
    void onSelectCardsWithRightMouseButtonToggle(bool checked);
    void onTextEditChange();
    void onUndo();
    void onRedo();
    void onChangedForMemento();
    void onTreeChanged() { savedTree->recordChange(); }
    void onTreeUndo() { savedTree->undo(); }
    void onTreeRedo() { savedTree->redo(); }
    void onTreeMoveUp() { savedTree->moveUp(); }
    void onTreeMoveDown() { savedTree->moveDown(); }
    void addTreeCategory() { savedTree->addCategory(); }
    // The range shown, with its groups, as a new saved range.
    void addCurrentTreeRange();
    void editTreeRange() { savedTree->editName(); }
    void deleteTreeRange() { savedTree->deleteNode(); }
    void saveTreeRange();
    void importTreeFromFile() { savedTree->importFile(); }
    void exportTreeToFile() { savedTree->exportFile(); }
    void rangeTreeDoubleclicked(const QModelIndex& modelIndex);
    void onDroppedOnTable() { savedTree->chooseCurrent(); }
    // The select button: a hand strength selection at once, an equity selection started in
    // the background, or the running one cancelled.
    void onSelect();
    void equitySelectorCalculationFinished(std::vector<BoardType> cards);
    void selectorTabChanged();

protected:
    void showEvent(QShowEvent* event) override;

private:
    HandSelectionDialog(const std::string& board, const std::string& deadCards, ThreadPool* pool,
                        QWidget* parent);
    void setUp();
    void wire();

    void applyPercent(double percent);
    // Shows a node: table, text line, labels, group row; the slider goes to 0.
    void showGroup(unsigned int index);
    // The table and the line let go of the tree, whose nodes are about to be replaced.
    void releaseTree();
    // Redraws the table (all cells) and the text line, then the numbers.
    void refreshAll();
    void updateNumbers();
    void setSliderSilently(int value);
    // The select button back to its text after an equity selection.
    void stopSelecting();
    // Merges a result range into the range shown by the select mode and records a snapshot.
    void applyRange(Range::HandRange result);
    RangeSnapshot takeSnapshot() const;
    void restoreSnapshot(const RangeSnapshot& snapshot);
    void writeBack();

    Ui::HandSelectionDialog* ui;
    HandSelectionGroups* groups = nullptr;
    SavedRangeTree* savedTree = nullptr;
    HandStrengthSelectorTab* strengthTab = nullptr;
    EquityRangeSelectorTab* equityTab = nullptr;
    QMovie* loadingMovie = nullptr;
    Range::Tree rootRange;
    Range::Tree* callerTree = nullptr;
    Range::HandRange* callerRange = nullptr;
    std::vector<Range::NodeMemento> openingState;
    std::string board;
    std::string deadCardText;
    std::vector<unsigned long long> deadCards;
    // Board and dead cards apart, as the selectors take them.
    std::vector<unsigned long long> boardCards;
    std::vector<unsigned long long> onlyDeadCards;
    ThreadPool* pool = nullptr;
    UndoHistory<RangeSnapshot> rangeHistory;
    bool withGroups = true;
};
