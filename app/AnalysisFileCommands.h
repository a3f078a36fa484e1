#pragma once

#include "app/document/AnalysisFile.h"
#include "app/document/RecoveryFile.h"

#include <QObject>
#include <QString>

#include <functional>
#include <optional>

class AnalysisDocument;
class QWidget;

// The file side of the main window: the question "Save File?" before work could be lost, and
// the flows of Open, Save and Save As with their dialogs and messages.
//
// Saving is atomic: the text goes to a temporary file that replaces the old one only when it
// is complete, so a failed write (no permission, folder gone, disk full) leaves the old file
// as it was; the user is told why, and the document stays unsaved. Opening never ends the
// program: a file that cannot be read is named with the reason, and nothing changes.
class AnalysisFileCommands : public QObject {
    Q_OBJECT

public:
    // The windows the flows open, replaceable so that tests need no modal loops.
    struct Dialogs {
        // A file name to save under, or empty when cancelled.
        std::function<QString(QWidget* parent, const QString& title, const QString& start,
                              const QString& filter)>
            saveFileName;
        // A file name to open, or a null string when cancelled.
        std::function<QString(QWidget* parent, const QString& title, const QString& start,
                              const QString& filter)>
            openFileName;
        // "Save File?": 1 Yes, 0 No, -1 Cancel.
        std::function<int(QWidget* parent, const QString& name)> askToSave;
        // A message that something could not be done.
        std::function<void(QWidget* parent, const QString& title, const QString& text)> warn;
        // The question at start-up after a run that did not end cleanly; true for Yes.
        std::function<bool(QWidget* parent, const QString& text)> askToRestore;
    };

    // What an earlier run left behind, read and accepted by the user.
    struct Recovered {
        AnalysisContent content;
        std::string text;
        // The file the analysis belonged to; empty for an untitled one.
        QString fileName;
    };

    // `tabState` gives the EV/FE page's state text at the moment of saving.
    AnalysisFileCommands(AnalysisDocument& document, std::function<std::string()> tabState,
                         QWidget* window);

    void setDialogs(Dialogs dialogs) { this->dialogs = std::move(dialogs); }
    // How read content gets on screen: the window shows its scenarios, the selected one and
    // the EV/FE page's state. Set before any of the flows below runs.
    void setShow(std::function<void(AnalysisContent)> show) { this->show = std::move(show); }
    // The EV/FE page's state now, and the window showing content: undo uses both.
    std::string currentTabState() const { return tabState ? tabState() : std::string(); }
    void showContent(AnalysisContent content) { show(std::move(content)); }

    // File > Open: "Save File?" first, then the dialog, then the file. True when shown.
    bool openChosen();
    // The same with a given file instead of the dialog.
    bool openFile(const QString& fileName);
    // At start-up: offers what an unclean end left behind and shows it as an unsaved
    // analysis under its file's name. True when restored.
    bool restoreRecovered();

    // Asks "Save File?" when the document has unsaved changes. False means: do not go on
    // (Cancel, or Yes and then no file was written).
    bool askToSave();
    // Writes the analysis to `fileName`, asking for a name when it is empty. True when the
    // file was written; the document is then saved under that name.
    bool save(const QString& fileName);
    // Asks for a file and reads it. Nothing when cancelled or unreadable (the user was told);
    // `chosen` gets the file's name.
    std::optional<AnalysisContent> open(QString& chosen);
    // Reads `fileName`; nothing when it cannot be read (the user was told why).
    std::optional<AnalysisContent> read(const QString& fileName);

    // The analysis as it is now, `snapshot` holding it, kept for a crash: written to the
    // recovery file while it has unsaved changes, and the recovery file removed once it has
    // none.
    void keepForRecovery(const Memento& snapshot);
    // Asks whether to restore what an unclean end left behind. Nothing when there is none,
    // when the user says No (it is then forgotten) or when it cannot be read (the user was
    // told).
    std::optional<Recovered> recover();
    // A clean end: the recovery file goes.
    void endCleanly();

    // "Quorvane Analysis (Scenarios) Files (*.qva);;All Files (*)" and "<current>/untitled.qva".
    static QString filter();
    static QString startPath();

private:
    AnalysisDocument& document;
    void showOpened(AnalysisContent content, const QString& fileName);

    std::function<std::string()> tabState;
    std::function<void(AnalysisContent)> show;
    QWidget* window;
    Dialogs dialogs;
    RecoveryFile recovery;
};
