#include "app/ScenarioSelector.h"

#include "app/document/AnalysisDocument.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QInputDialog>
#include <QMessageBox>
#include <QSignalBlocker>

ScenarioSelector::ScenarioSelector(AnalysisDocument& document, QComboBox* list,
                                   QAbstractButton* edit, QAbstractButton* remove, QWidget* window)
    : QObject(window), document(document), list(list), editButton(edit), deleteButton(remove),
      window(window) {}

void ScenarioSelector::refresh() {
    {
        const QSignalBlocker blocker(list);
        list->clear();
        for (const Scenario& scenario : document.scenarios())
            list->addItem(QString::fromStdString(scenario.name));
        list->setCurrentIndex(0);
    }
    const int index = list->currentIndex();
    editButton->setEnabled(index != -1);
    deleteButton->setEnabled(document.canDeleteScenario(index));
}

void ScenarioSelector::selectSilently(int index) {
    const QSignalBlocker blocker(list);
    list->setCurrentIndex(index);
}

int ScenarioSelector::currentIndex() const {
    return list->currentIndex();
}

bool ScenarioSelector::askName(const QString& label, QString& name) {
    QInputDialog dialog(window);
    dialog.setWindowFlags(dialog.windowFlags() & ~Qt::WindowContextHelpButtonHint);
    dialog.setLabelText(label);
    dialog.setTextValue(name);
    if (dialog.exec() != QDialog::Accepted || dialog.textValue().isEmpty())
        return false;
    name = dialog.textValue();
    return true;
}

bool ScenarioSelector::add() {
    QString name;
    if (!askName(QStringLiteral("What is the name of the new scenario?"), name))
        return false;
    const int index = document.appendScenario(name.toStdString());
    refresh();
    selectSilently(index);
    return true;
}

bool ScenarioSelector::rename() {
    const int index = list->currentIndex();
    if (index == -1)
        return false;
    QString name = QString::fromStdString(document.scenario(index).name);
    if (!askName(QStringLiteral("What is the new name of the scenario?"), name))
        return false;
    document.renameScenario(index, name.toStdString());
    refresh();
    selectSilently(index);
    return true;
}

bool ScenarioSelector::remove() {
    const int index = list->currentIndex();
    if (!document.canDeleteScenario(index))
        return false;
    if (QMessageBox::question(window, QStringLiteral("Delete scenario?"),
                              QStringLiteral("Do you really want to delete this scenario?"),
                              QMessageBox::Yes | QMessageBox::No,
                              QMessageBox::No) != QMessageBox::Yes)
        return false;
    document.deleteScenario(index);
    refresh();
    return true;
}
