#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QTimer>

#include <functional>

class QWidget;

// Opens the files that the desktop gives the program: the ones on its command line, and
// the ones a later start hands over (SingleInstance). An analysis (.qva) goes to the main
// window's open; a range tree (.qvt) is added to the saved ranges of the hand selection
// dialog; anything else is refused with a message naming the file.
//
// Files wait while a modal window is up (a dialog of the window, a question of the start):
// the saved ranges, for one, belong to the hand selection dialog while it is open. Then they
// are opened in the order given, and the window comes to the front.
class DesktopFileOpener : public QObject {
    Q_OBJECT

public:
    enum class Kind { Analysis, RangeTree, Unknown };
    // Opens one file, true when it was opened; tells the user itself why when it was not.
    using Open = std::function<bool(const QString& path)>;

    DesktopFileOpener(QWidget* window, Open openAnalysis, Open importRangeTree,
                      QObject* parent = nullptr);

    static Kind kindOf(const QString& path);

    // The files of the program's arguments (QCoreApplication::arguments(), the program
    // first), as absolute paths against `workingFolder`; "file:" addresses become paths.
    // Arguments that start with '-' are options, not files, up to a "--".
    static QStringList filesOf(const QStringList& arguments, const QString& workingFolder);

    // Adds the saved ranges of the tree file `path` to those of the hand selection dialog
    // in the settings, and says so; a file that cannot be read changes nothing and is
    // named in a warning over `parent`. True when the ranges were added.
    static bool importRangeTree(const QString& path, QWidget* parent);

    // Brings the window to the front and opens `files` once no modal window is up.
    void open(const QStringList& files);

    // Files waiting for a modal window to close.
    const QStringList& waiting() const { return queue; }

signals:
    // After each file: whether it was opened.
    void opened(const QString& path, bool success);

private:
    void openWaiting();

    QPointer<QWidget> window;
    Open openAnalysis;
    Open importRangeTreeFile;
    QStringList queue;
    QTimer retry;
    bool opening = false;
};
