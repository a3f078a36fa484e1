#pragma once

#include "app/document/AnalysisFile.h"

#include <QObject>

#include <string>

class AnalysisDocument;
class AnalysisFileCommands;
class Memento;
class QAction;

// Undo and redo of the whole analysis: every relevant change stores a snapshot (the analysis
// as file text) in the document's list, and undo or redo puts a stored one back on screen.
// The menu entries name the change undo would take back and the one redo would bring.
//
// Each snapshot is also handed to the recovery file, so that a crash loses nothing.
//
// Main thread only. Restoring shows scenarios, which reports changes again; those are not
// recorded (isRestoring).
class AnalysisHistory : public QObject {
    Q_OBJECT

public:
    // The file commands give the EV/FE page's state text and put a read snapshot on screen.
    AnalysisHistory(AnalysisDocument& document, AnalysisFileCommands& files, QAction* undo,
                    QAction* redo, QObject* parent);

    // A relevant change under `label`: the redo branch goes, the snapshot becomes the
    // present state. Nothing while restoring.
    void record(const std::string& label);
    // Forgets every snapshot and records the present state as the first one (a new
    // analysis).
    void restart();
    void undo();
    void redo();
    bool isRestoring() const { return restoring; }
    // Enables the two actions and sets their texts "Undo %1" and "Redo %1".
    void updateActions();

private:
    void restore(const Memento& memento);

    AnalysisDocument& document;
    AnalysisFileCommands& files;
    QAction* undoAction;
    QAction* redoAction;
    bool restoring = false;
};
