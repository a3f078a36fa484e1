#pragma once

#include <QObject>
#include <QString>

class AnalysisDocument;
class QWidget;

// The file side of the main window: the question "Save File?" before work could be lost,
// and the flows of Open, Save and Save As with their dialogs.
//
// The analysis file is not written yet: save() writes nothing and says so by returning
// false, so the document keeps its unsaved state, and the menu entries of the file stay
// disabled.
class AnalysisFileCommands : public QObject {
    Q_OBJECT

public:
    AnalysisFileCommands(AnalysisDocument& document, QWidget* window);

    // Asks "Save File?" when the document has unsaved changes. False means cancelled; Yes
    // runs the save flow with the document's file name.
    bool askToSave();
    // Writes the analysis to `fileName`, asking for a name when it is empty. True when the
    // file was written and the document marked saved.
    bool save(const QString& fileName);

private:
    AnalysisDocument& document;
    QWidget* window;
};
