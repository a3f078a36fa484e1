#include "app/DesktopFileOpener.h"

#include "selection/HandSelectionTreeModel.h"
#include "selection/SavedRangeTreeSettings.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QMessageBox>
#include <QUrl>
#include <QWidget>

#include <vector>

namespace {

// How often waiting files look whether the modal window is gone, in ms.
constexpr int modalPollMs = 250;

} // namespace

DesktopFileOpener::DesktopFileOpener(QWidget* window, Open openAnalysis, Open importRangeTree,
                                     QObject* parent)
    : QObject(parent), window(window), openAnalysis(std::move(openAnalysis)),
      importRangeTreeFile(std::move(importRangeTree)) {
    retry.setInterval(modalPollMs);
    retry.setSingleShot(true);
    connect(&retry, &QTimer::timeout, this, &DesktopFileOpener::openWaiting);
}

DesktopFileOpener::Kind DesktopFileOpener::kindOf(const QString& path) {
    const QString suffix = QFileInfo(path).suffix().toLower();
    if (suffix == QLatin1String("qva"))
        return Kind::Analysis;
    if (suffix == QLatin1String("qvt"))
        return Kind::RangeTree;
    return Kind::Unknown;
}

QStringList DesktopFileOpener::filesOf(const QStringList& arguments, const QString& workingFolder) {
    QStringList files;
    bool optionsEnded = false;
    for (int i = 1; i < arguments.size(); ++i) {
        const QString& argument = arguments[i];
        if (!optionsEnded && argument == QLatin1String("--")) {
            optionsEnded = true;
            continue;
        }
        if (argument.isEmpty() || (!optionsEnded && argument.startsWith(QLatin1Char('-'))))
            continue;
        QString path = argument;
        if (argument.startsWith(QLatin1String("file:")))
            path = QUrl(argument).toLocalFile();
        files.append(QDir::cleanPath(QDir(workingFolder).absoluteFilePath(path)));
    }
    return files;
}

bool DesktopFileOpener::importRangeTree(const QString& path, QWidget* parent) {
    HandSelectionTreeModel model;
    const SavedRangeTreeSettings::Loaded stored = SavedRangeTreeSettings::load(model);
    const int foldersBefore = model.rowCount();
    const HandSelectionTreeModel::ImportOutcome outcome = model.importFromFile(path);
    const QString shownName = QDir::toNativeSeparators(path);
    if (!outcome.error.isEmpty()) {
        QMessageBox::warning(parent, QStringLiteral("Import Tree From File"),
                             QStringLiteral("The file \"%1\" cannot be imported. %2 The saved "
                                            "ranges are unchanged.")
                                 .arg(shownName, outcome.error));
        return false;
    }
    std::vector<unsigned int> open = stored.openNodes;
    open.insert(open.end(), outcome.openNodes.begin(), outcome.openNodes.end());
    SavedRangeTreeSettings::save(model, open);

    const int added = model.rowCount() - foldersBefore;
    QString text = QStringLiteral("The range tree \"%1\" was added to the saved ranges of the "
                                  "hand selection dialog: %2 %3.")
                       .arg(shownName)
                       .arg(added)
                       .arg(added == 1 ? QStringLiteral("folder") : QStringLiteral("folders"));
    if (outcome.trimmed)
        text += QStringLiteral(" Levels below the second were left out: saved ranges have "
                               "folders and ranges only.");
    QMessageBox::information(parent, QStringLiteral("Import Tree From File"), text);
    return true;
}

void DesktopFileOpener::open(const QStringList& files) {
    if (window) {
        // A minimised window comes back; the window manager may still refuse the focus.
        window->setWindowState((window->windowState() & ~Qt::WindowMinimized) | Qt::WindowActive);
        window->show();
        window->raise();
        window->activateWindow();
    }
    queue.append(files);
    openWaiting();
}

void DesktopFileOpener::openWaiting() {
    // A file's own messages run event loops, in which more files may arrive: they queue.
    if (opening)
        return;
    opening = true;
    while (!queue.isEmpty()) {
        if (QApplication::activeModalWidget()) {
            retry.start();
            break;
        }
        const QString path = queue.takeFirst();
        bool success = false;
        switch (kindOf(path)) {
        case Kind::Analysis:
            success = openAnalysis(path);
            break;
        case Kind::RangeTree:
            success = importRangeTreeFile(path);
            break;
        case Kind::Unknown:
            QMessageBox::warning(window, QStringLiteral("Open File"),
                                 QStringLiteral("The file \"%1\" cannot be opened: Quorvane "
                                                "opens analyses (.qva) and range trees (.qvt).")
                                     .arg(QDir::toNativeSeparators(path)));
            break;
        }
        emit opened(path, success);
    }
    opening = false;
}
