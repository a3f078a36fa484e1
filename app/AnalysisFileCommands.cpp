#include "app/AnalysisFileCommands.h"

#include "app/document/AnalysisDocument.h"

#include <QMessageBox>
#include <QWidget>

AnalysisFileCommands::AnalysisFileCommands(AnalysisDocument& document, QWidget* window)
    : QObject(window), document(document), window(window) {}

bool AnalysisFileCommands::askToSave() {
    if (document.isSaved())
        return true;
    const QString name =
        document.fileName().isEmpty() ? QStringLiteral("untitled.qva") : document.fileName();
    const QMessageBox::StandardButton answer = QMessageBox::question(
        window, QStringLiteral("Save File?"),
        QStringLiteral("Do you want to save \"") + name + QStringLiteral("\"?"),
        QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::Yes);
    if (answer == QMessageBox::Yes) {
        save(document.fileName());
        return true;
    }
    return answer == QMessageBox::No;
}

bool AnalysisFileCommands::save(const QString& fileName) {
    // Writing the analysis file joins here; until then nothing is written and the document
    // stays unsaved.
    Q_UNUSED(fileName);
    return false;
}
