#include "app/AnalysisHistory.h"

#include "app/AnalysisFileCommands.h"
#include "app/document/AnalysisDocument.h"

#include <QAction>
#include <QScopedValueRollback>

AnalysisHistory::AnalysisHistory(AnalysisDocument& document, AnalysisFileCommands& files,
                                 QAction* undo, QAction* redo, QObject* parent)
    : QObject(parent), document(document), files(files), undoAction(undo), redoAction(redo) {}

void AnalysisHistory::record(const std::string& label) {
    if (restoring)
        return;
    document.recordMemento(document.createMemento(label, files.currentTabState()));
    files.keepForRecovery(document.mementos().back());
    updateActions();
}

void AnalysisHistory::restart() {
    document.clearMementos();
    record(std::string());
}

// The actions are disabled at the ends of the list; a shortcut may still arrive, so these
// check as well.
void AnalysisHistory::undo() {
    if (document.canUndo())
        restore(document.stepBack());
}

void AnalysisHistory::redo() {
    if (document.canRedo())
        restore(document.stepForth());
}

void AnalysisHistory::restore(const Memento& memento) {
    // The program made the snapshot itself, so reading it cannot fail on the user's input;
    // the flag is reset however the reading ends. A copy: showing changes the list's owner.
    const Memento snapshot = memento;
    {
        const QScopedValueRollback<bool> guard(restoring, true);
        files.showContent(document.contentOf(snapshot));
    }
    files.keepForRecovery(snapshot);
    updateActions();
}

void AnalysisHistory::updateActions() {
    undoAction->setEnabled(document.canUndo());
    redoAction->setEnabled(document.canRedo());
    undoAction->setText(
        QStringLiteral("Undo %1").arg(QString::fromStdString(document.undoLabel())));
    redoAction->setText(
        QStringLiteral("Redo %1").arg(QString::fromStdString(document.redoLabel())));
}
