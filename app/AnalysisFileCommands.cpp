#include "app/AnalysisFileCommands.h"

#include "app/document/AnalysisDocument.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QMessageBox>
#include <QSaveFile>
#include <QWidget>

namespace {

AnalysisFileCommands::Dialogs defaultDialogs() {
    AnalysisFileCommands::Dialogs dialogs;
    dialogs.saveFileName = [](QWidget* parent, const QString& title, const QString& start,
                              const QString& filter) {
        return QFileDialog::getSaveFileName(parent, title, start, filter);
    };
    dialogs.openFileName = [](QWidget* parent, const QString& title, const QString& start,
                              const QString& filter) {
        return QFileDialog::getOpenFileName(parent, title, start, filter);
    };
    dialogs.askToSave = [](QWidget* parent, const QString& name) {
        const QMessageBox::StandardButton answer = QMessageBox::question(
            parent, QStringLiteral("Save File?"),
            QStringLiteral("Do you want to save \"") + name + QStringLiteral("\"?"),
            QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::Yes);
        return answer == QMessageBox::Yes ? 1 : (answer == QMessageBox::No ? 0 : -1);
    };
    dialogs.warn = [](QWidget* parent, const QString& title, const QString& text) {
        QMessageBox::warning(parent, title, text);
    };
    dialogs.askToRestore = [](QWidget* parent, const QString& text) {
        return QMessageBox::question(parent, QStringLiteral("Quorvane"), text,
                                     QMessageBox::Yes | QMessageBox::No,
                                     QMessageBox::Yes) == QMessageBox::Yes;
    };
    return dialogs;
}

} // namespace

AnalysisFileCommands::AnalysisFileCommands(AnalysisDocument& document,
                                           std::function<std::string()> tabState, QWidget* window)
    : QObject(window), document(document), tabState(std::move(tabState)), window(window),
      dialogs(defaultDialogs()) {}

QString AnalysisFileCommands::filter() {
    return QStringLiteral("%1 Files (*.%2);;All Files (*)")
        .arg(QStringLiteral("Quorvane Analysis (Scenarios)"), QStringLiteral("qva"));
}

QString AnalysisFileCommands::startPath() {
    return QDir::currentPath() + QStringLiteral("/untitled.") + QStringLiteral("qva");
}

bool AnalysisFileCommands::askToSave() {
    if (document.isSaved())
        return true;
    const QString name =
        document.fileName().isEmpty() ? QStringLiteral("untitled.qva") : document.fileName();
    switch (dialogs.askToSave(window, name)) {
    case 1:
        // Yes, and then no file: the flow that asked must not throw the analysis away.
        return save(document.fileName());
    case 0:
        return true;
    default:
        return false;
    }
}

bool AnalysisFileCommands::save(const QString& fileName) {
    QString name = fileName;
    if (name.isEmpty())
        name = dialogs.saveFileName(window, QStringLiteral("Save As"), startPath(), filter());
    if (name.isEmpty())
        return false;
    const std::string text = document.text(tabState ? tabState() : std::string());
    QSaveFile file(name);
    // Unbuffered, so that a short write (a full disk, a size limit) shows in the count here:
    // a buffered device may lose it on the way to the file and rename a cut file over the
    // old one.
    bool written = file.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    if (written)
        written = file.write(text.data(), static_cast<qint64>(text.size())) ==
                      static_cast<qint64>(text.size()) &&
                  file.error() == QFileDevice::NoError;
    if (written)
        written = file.commit();
    else
        file.cancelWriting();
    if (!written) {
        dialogs.warn(window, QStringLiteral("Save Error"),
                     QStringLiteral("\"%1\" could not be saved: %2.\n\nThe file on disk is "
                                    "unchanged, and the analysis is still open unsaved.")
                         .arg(name, file.errorString()));
        return false;
    }
    document.markSaved(name);
    recovery.remove();
    return true;
}

std::optional<AnalysisContent> AnalysisFileCommands::open(QString& chosen) {
    const QString name =
        dialogs.openFileName(window, QStringLiteral("Open"), startPath(), filter());
    if (name.isNull())
        return std::nullopt;
    chosen = name;
    return read(name);
}

std::optional<AnalysisContent> AnalysisFileCommands::read(const QString& fileName) {
    QString reason;
    std::optional<AnalysisContent> content;
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        reason = file.errorString();
    } else {
        try {
            content = AnalysisFile::read(file.readAll().toStdString());
        } catch (const AnalysisFileError& error) {
            reason = QString::fromStdString(error.what());
        }
    }
    if (!content) {
        dialogs.warn(window, QStringLiteral("Open Error"),
                     QStringLiteral("\"%1\" cannot be opened: %2\n\nThe analysis on screen is "
                                    "unchanged.")
                         .arg(fileName, reason));
        return std::nullopt;
    }
    if (!content->problems.empty()) {
        QString list;
        for (const std::string& problem : content->problems)
            list += QStringLiteral("\n- ") + QString::fromStdString(problem);
        dialogs.warn(window, QStringLiteral("Open"),
                     QStringLiteral("Some EV/FE lines of \"%1\" could not be read and were left "
                                    "out:%2")
                         .arg(fileName, list));
    }
    return content;
}

void AnalysisFileCommands::keepForRecovery(const Memento& snapshot) {
    if (document.isSaved())
        recovery.remove();
    else
        recovery.keep(snapshot, document.fileName());
}

std::optional<AnalysisFileCommands::Recovered> AnalysisFileCommands::recover() {
    std::optional<RecoveryFile::Recovered> found = RecoveryFile::find();
    if (!found)
        return std::nullopt;
    if (!dialogs.askToRestore(
            window, QStringLiteral("Quorvane was not closed properly. Restore the unsaved "
                                   "analysis?"))) {
        RecoveryFile::discard();
        return std::nullopt;
    }
    try {
        Recovered recovered{AnalysisFile::read(found->text), found->text, found->fileName};
        return recovered;
    } catch (const AnalysisFileError& error) {
        RecoveryFile::discard();
        dialogs.warn(window, QStringLiteral("Open Error"),
                     QStringLiteral("The unsaved analysis of the last run cannot be restored: %1")
                         .arg(QString::fromStdString(error.what())));
        return std::nullopt;
    }
}

void AnalysisFileCommands::endCleanly() {
    recovery.remove();
}

void AnalysisFileCommands::showOpened(AnalysisContent content, const QString& fileName) {
    show(std::move(content));
    document.markSaved(fileName);
    recovery.remove();
}

bool AnalysisFileCommands::openChosen() {
    if (!askToSave())
        return false;
    QString name;
    std::optional<AnalysisContent> content = open(name);
    if (!content)
        return false;
    showOpened(std::move(*content), name);
    return true;
}

bool AnalysisFileCommands::openFile(const QString& fileName) {
    if (!askToSave())
        return false;
    std::optional<AnalysisContent> content = read(fileName);
    if (!content)
        return false;
    showOpened(std::move(*content), fileName);
    return true;
}

bool AnalysisFileCommands::restoreRecovered() {
    std::optional<Recovered> recovered = recover();
    if (!recovered)
        return false;
    show(std::move(recovered->content));
    document.markSaved(recovered->fileName);
    document.markChanged();
    keepForRecovery(Memento(std::string(), recovered->text));
    return true;
}
