#pragma once

#include "selection/HandSelectionPrompts.h"

#include <QObject>

#include <vector>

class QWidget;
class RangeGroupBox;
namespace Range {
class HandRange;
class Tree;
} // namespace Range
namespace Ui {
class HandSelectionDialog;
}

// The group row of the hand selection dialog and what it does to the edited tree: the
// boxes (the root's, one per group, "New" last), creating, renaming, recolouring and
// deleting groups, the parent combo, the default parent of new groups, and the remainder
// of a group among its siblings.
//
// It knows which node is shown, but shows no range itself: the dialog shows a node through
// show(), and learns by signals when a node is to be shown or the tree or the range shown
// was edited, so that it can redraw its table and numbers and record an undo step.
//
// New groups are exclusive in overwrite mode, like the groups the main window adds, and
// always stay inside their parent.
class HandSelectionGroups : public QObject {
    Q_OBJECT

public:
    // Works on `tree` (node 0 the full range) and on the group widgets of `form`, and wires
    // them. `dialog` is the parent of this object and of the question windows. Without
    // groups the row is hidden.
    HandSelectionGroups(Range::Tree& tree, Ui::HandSelectionDialog* form, bool withGroups,
                        QWidget* dialog);

    void setPrompts(HandSelectionPrompts prompts);

    unsigned int shownGroup() const { return shown; }
    unsigned int defaultParent() const { return defaultParentGroup; }
    // Makes `index` the node shown (the root if it is no range node) and fits the boxes, the
    // name, the group buttons and the parent combo to it. Returns the node now shown.
    unsigned int show(unsigned int index);
    // After the tree was replaced as a whole: a default parent that is gone becomes the root.
    void treeReplaced();
    // The boxes in order: the root's, one per group, and the "New" box last.
    std::vector<RangeGroupBox*> boxes() const;

    // Whether the node's parent is a range (the root has no parent).
    bool hasRangeParent(unsigned int index) const;
    // The ranges of the node's siblings: what exclusive groups take from each other.
    std::vector<const Range::HandRange*> siblingRanges(unsigned int index) const;
    // What a range selector picks from: the parent's range when the group shown has a range
    // parent that isn't empty, otherwise all hands.
    Range::HandRange selectionInput() const;

    // A click on a box: "New" makes a group, another box asks to show its node.
    void onBoxClicked(RangeGroupBox* box);
    // The group shown takes all hands that none of its siblings holds, not only those of its
    // parent (the tree keeps a group inside its parent). The root has no remainder.
    void takeRemainder();
    void editName();
    void editColors();
    void deleteShown();
    // Moves the group shown under the parent of the combo entry `comboIndex`.
    void moveToParent(int comboIndex);
    void setDefaultForNewGroups(int checkState);
    // The node shown takes the range of `sourceNode` of `source` and, instead of its own
    // groups, that node's groups (a group whose colour is taken already gets a free one).
    // Returns the shown node's index, which the removal of its old groups may change.
    unsigned int replaceShownWith(const Range::Tree& source, unsigned int sourceNode);

signals:
    // Show this node; nothing was edited.
    void showRequested(unsigned int index);
    // The tree was edited: show this node and take the change as an undo step.
    void edited(unsigned int index);
    // Nodes are about to be removed: nothing may keep pointers into the tree.
    void nodesAboutToBeRemoved();
    // The range of the group shown was replaced: redraw it and take it as an undo step.
    void shownRangeReplaced();

private:
    // A cancelled question makes no group; an accepted empty name gives "Group <n>", n the
    // number the group will have.
    void createGroup();
    void rebuildBoxes();
    void fillParentCombo();

    Range::Tree& tree;
    Ui::HandSelectionDialog* ui;
    QWidget* dialog;
    HandSelectionPrompts prompts;
    std::vector<RangeGroupBox*> groupBoxes;
    unsigned int shown = 0;
    unsigned int defaultParentGroup = 0;
    bool withGroups = true;
};
