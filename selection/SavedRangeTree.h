#pragma once

#include "Range/NodeMemento.h"
#include "Range/Tree.h"
#include "selection/UndoHistory.h"

#include <QObject>

#include <cstddef>
#include <vector>

namespace Ui {
class HandSelectionDialog;
}

// The tree of saved ranges in the right part of the hand selection dialog, with its own undo
// list of tree mementos (open nodes included) and its undo and redo buttons. Each change that
// the tree view reports is a step; an undo or a redo replaces the whole tree, after which the
// views of it must reset. The other tree buttons stay disabled until the view is in place.
class SavedRangeTree : public QObject {
    Q_OBJECT

public:
    // Wires the tree buttons of `form`.
    SavedRangeTree(Ui::HandSelectionDialog* form, QObject* parent);

    Range::Tree& tree() { return ranges; }
    // The tree as it is now becomes the only step.
    void resetHistory();
    std::size_t historyPosition() const { return history.position(); }
    std::size_t historySize() const { return history.size(); }

    // The tree as it is now as a new step, unless it equals the step at the position.
    void recordChange();
    void undo();
    void redo();
    // Undo is enabled when there is a step back, redo when there is one ahead.
    void updateButtons();

signals:
    // The tree was replaced by an undo or a redo.
    void restored();

private:
    using Memento = std::vector<Range::NodeMemento>;

    void restore(const Memento& memento);

    Ui::HandSelectionDialog* ui;
    Range::Tree ranges;
    UndoHistory<Memento> history;
};
