#pragma once

#include "Range/NodeMemento.h"
#include "selection/HandSelectionPrompts.h"
#include "selection/UndoHistory.h"

#include <QObject>
#include <QString>

#include <cstddef>
#include <vector>

class HandSelectionTree;
class HandSelectionTreeModel;
class QModelIndex;
class QWidget;
namespace Range {
class Tree;
}
namespace Ui {
class HandSelectionDialog;
}

// The tree of saved ranges in the right part of the hand selection dialog: its model and
// view, its buttons (rename, add folder, save, delete, up, down, undo, redo, import,
// export), its own undo list, and its place in the settings.
//
// Each change of the tree is a step of the undo list, a tree memento with the open folders;
// a drag within the view is one step. An undo or a redo replaces the whole tree.
//
// A saved range that is double-clicked or dragged onto the hand table is handed to the
// dialog by rangeChosen(); what the dialog's range is, the dialog hands in to save it.
class SavedRangeTree : public QObject {
    Q_OBJECT

public:
    // One step of the undo list. Steps that differ only in the open folders are equal.
    struct Memento {
        std::vector<Range::NodeMemento> nodes;
        std::vector<unsigned int> openNodes;
        bool operator==(const Memento& other) const { return nodes == other.nodes; }
    };

    // Sets the model on the form's tree view and wires the tree buttons but Save, which
    // needs the dialog's range. `dialog` parents the question windows.
    SavedRangeTree(Ui::HandSelectionDialog* form, QWidget* dialog);

    // Prompts left empty keep the standard windows.
    void setPrompts(const HandSelectionPrompts& prompts);

    HandSelectionTreeModel& model() { return *treeModel; }
    Range::Tree& tree();
    HandSelectionTree* view() const;

    // --- Settings ---
    // Loads the tree from the settings (with the open folders); the undo list starts here.
    void load();
    // What was wrong with the stored tree, when the default content had to stand in.
    const QString& loadProblem() const { return problem; }
    // Warns of the load problem, once.
    void reportLoadProblem();
    // The tree into the settings (on accept and on reject alike).
    void saveToSettings();
    // The open folders into the settings (when the dialog is done).
    void saveOpenness();

    // --- Undo ---
    // The tree as it is now becomes the only step.
    void resetHistory();
    std::size_t historyPosition() const { return history.position(); }
    std::size_t historySize() const { return history.size(); }
    // The tree as it is now as a new step, unless it equals the step at the position.
    void recordChange();
    void undo();
    void redo();
    // Undo and redo by the list; rename, save, delete and the moves need a current node.
    void updateButtons();

    // --- Actions of the buttons ---
    // "Name New Category": asks until a name is given or the question is cancelled.
    void addCategory();
    // "Name of Range": the node `sourceNode` of `source` with its groups as a new saved range
    // in the current folder (or the folder of the current range).
    void addRange(const Range::Tree& source, unsigned int sourceNode);
    // With a range current: overwrite it or make a new entry; with a folder: a new entry.
    void saveRange(const Range::Tree& source, unsigned int sourceNode);
    void editName();
    void deleteNode();
    void moveUp();
    void moveDown();
    void importFile();
    void exportFile();
    // The current saved range to the dialog (a drop on the hand table).
    void chooseCurrent();
    // A double click: a saved range goes to the dialog (a folder opens or closes itself).
    void choose(const QModelIndex& index);

signals:
    // The tree was replaced by an undo or a redo.
    void restored();
    // The saved range `node` of `tree` is to be loaded into the dialog.
    void rangeChosen(const Range::Tree& tree, unsigned int node);

private:
    Memento takeMemento() const;
    void restore(const Memento& memento);
    // Asks with `question` until a name that isn't blank is given (true) or the question is
    // cancelled; a blank answer warns with `emptyTitle` and `emptyText` first.
    bool askName(const HandSelectionPrompts::NameQuestion& question, const QString& emptyTitle,
                 const QString& emptyText, QString& name);
    QModelIndex current() const;
    void makeCurrent(const QModelIndex& index);
    // Records a change unless a drag of the view is still running.
    void onModelChanged();

    Ui::HandSelectionDialog* ui;
    QWidget* dialog;
    HandSelectionPrompts prompts;
    HandSelectionTreeModel* treeModel;
    UndoHistory<Memento> history;
    QString problem;
    bool problemReported = false;
};
