#include "selection/SavedRangeTree.h"

#include "ui_HandSelectionDialog.h"

#include <utility>

SavedRangeTree::SavedRangeTree(Ui::HandSelectionDialog* form, QObject* parent)
    : QObject(parent), ui(form) {
    // Undo and redo work on tree() already; the other buttons need the view.
    for (QPushButton* button :
         {ui->editTreeNameButton, ui->addFolderButton, ui->saveTreeRangeButton,
          ui->deleteTreeNodeButton, ui->treeMoveUpButton, ui->treeMoveDownButton,
          ui->importTreeButton, ui->exportTreeButton})
        button->setEnabled(false);
    connect(ui->treeUndoButton, &QPushButton::clicked, this, &SavedRangeTree::undo);
    connect(ui->treeRedoButton, &QPushButton::clicked, this, &SavedRangeTree::redo);
}

void SavedRangeTree::resetHistory() {
    Memento memento;
    ranges.CreateMemento(memento);
    history.reset(std::move(memento));
    updateButtons();
}

void SavedRangeTree::recordChange() {
    Memento memento;
    ranges.CreateMemento(memento);
    if (history.record(std::move(memento)))
        updateButtons();
}

void SavedRangeTree::undo() {
    if (const Memento* memento = history.undo())
        restore(*memento);
}

void SavedRangeTree::redo() {
    if (const Memento* memento = history.redo())
        restore(*memento);
}

void SavedRangeTree::restore(const Memento& memento) {
    ranges.RestoreMemento(memento);
    emit restored();
    updateButtons();
}

void SavedRangeTree::updateButtons() {
    ui->treeUndoButton->setEnabled(history.canUndo());
    ui->treeRedoButton->setEnabled(history.canRedo());
}
