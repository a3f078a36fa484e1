#pragma once

#include "app/document/Memento.h"

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QThreadPool>
#include <QTimer>

#include <optional>
#include <string>

// The analysis as it stood at the last relevant change, kept on disk so that a crash or a
// killed program loses nothing: "recovery.qva" in the user's data folder
// (QStandardPaths::AppDataLocation, e.g. ~/.local/share/Velmara/Quorvane), with the name of
// the file the analysis belongs to in "recovery.name" beside it.
//
// Writes are atomic (a temporary file renamed over the old one), run off the main thread,
// and happen at most once a second: a change within a second of the last write is written
// when the second is over, and only the newest text of that second. A clean end of the program
// removes both files; finding them at start means the program did not end cleanly.
class RecoveryFile : public QObject {
    Q_OBJECT

public:
    struct Recovered {
        std::string text; // the analysis file text
        QString fileName; // the analysis's own file, empty for an untitled one
    };

    explicit RecoveryFile(QObject* parent = nullptr);
    ~RecoveryFile() override;

    // The folder and the file; the folder is made on the first write.
    static QString folder();
    static QString path();

    // Keeps the analysis of `snapshot` to recover, belonging to `fileName`. Its text is
    // put together only when it is written.
    void keep(const Memento& snapshot, const QString& fileName);
    // Writes what is waiting at once and waits for the write (the program is about to end,
    // or a test looks).
    void flush();
    // Nothing to recover (the analysis is saved, or the program ends cleanly): nothing is
    // waiting any more, and the files this run wrote go. Files an earlier run left stay
    // until they are offered (find, discard).
    void remove();

    // What an earlier run left behind; nothing when it ended cleanly.
    static std::optional<Recovered> find();
    // Forgets what an earlier run left behind (the user did not want it).
    static void discard();

private:
    void write();

    QTimer delay;
    // The writes run here, one at a time.
    QThreadPool writer;
    QElapsedTimer sinceWrite;
    Memento pendingSnapshot;
    QString pendingName;
    bool pending = false;
    bool wrote = false;
};
