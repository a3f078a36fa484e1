#include "selection/HandSelectionPrompts.h"

#include "selection/GroupColorSelectionDialog.h"

#include <QFileDialog>
#include <QIcon>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>

namespace {

bool defaultAskGroupName(QWidget* parent, QString& name) {
    bool ok = false;
    const QString answer = QInputDialog::getText(
        parent, QStringLiteral("Group"), QStringLiteral("How would you like to name the group?"),
        QLineEdit::Normal, name, &ok);
    if (ok)
        name = answer;
    return ok;
}

bool defaultConfirmGroupDelete(QWidget* parent) {
    return QMessageBox::question(
               parent, QStringLiteral("Do you really want to delete?"),
               QStringLiteral(
                   "Do you really want to delete this group (and all children if existing)?"),
               QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
}

bool defaultChooseGroupColors(QWidget* parent, const Range::GroupColor& current,
                              const std::vector<Range::GroupColor>& unused,
                              Range::GroupColor& chosen) {
    GroupColorSelectionDialog dialog(current, unused, parent);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    chosen = dialog.groupColor();
    return true;
}

void defaultWarn(QWidget* parent, const QString& title, const QString& text) {
    QMessageBox::warning(parent, title, text);
}

bool defaultAskTreeName(QWidget* parent, const HandSelectionPrompts::NameQuestion& question,
                        QString& name) {
    QInputDialog dialog(parent);
    dialog.setInputMode(QInputDialog::TextInput);
    dialog.setWindowTitle(question.title);
    dialog.setLabelText(question.label);
    dialog.setTextValue(name);
    if (!question.okText.isEmpty())
        dialog.setOkButtonText(question.okText);
    if (!question.icon.isEmpty())
        dialog.setWindowIcon(QIcon(question.icon));
    if (dialog.exec() != QDialog::Accepted)
        return false;
    name = dialog.textValue();
    return true;
}

HandSelectionPrompts::OverwriteAnswer defaultAskOverwriteOrNew(QWidget* parent) {
    QMessageBox box(QMessageBox::Question, QStringLiteral("Overwrite or New?"),
                    QStringLiteral("Do you want to overwrite this range or create a new entry?"),
                    QMessageBox::NoButton, parent);
    QPushButton* overwrite = box.addButton(QStringLiteral("&Overwrite"), QMessageBox::AcceptRole);
    QPushButton* fresh = box.addButton(QStringLiteral("&New"), QMessageBox::AcceptRole);
    box.addButton(QMessageBox::Cancel);
    box.exec();
    if (box.clickedButton() == overwrite)
        return HandSelectionPrompts::OverwriteAnswer::Overwrite;
    if (box.clickedButton() == fresh)
        return HandSelectionPrompts::OverwriteAnswer::New;
    return HandSelectionPrompts::OverwriteAnswer::Cancel;
}

bool defaultConfirmTreeDelete(QWidget* parent) {
    return QMessageBox::question(parent, QStringLiteral("Really?"),
                                 QStringLiteral("Do you really want to delete this element?")) ==
           QMessageBox::Yes;
}

QString defaultChooseOpenFile(QWidget* parent, const QString& title, const QString& path,
                              const QString& filter) {
    return QFileDialog::getOpenFileName(parent, title, path, filter);
}

QString defaultChooseSaveFile(QWidget* parent, const QString& title, const QString& path,
                              const QString& filter) {
    return QFileDialog::getSaveFileName(parent, title, path, filter);
}

} // namespace

HandSelectionPrompts HandSelectionPrompts::standard() {
    HandSelectionPrompts prompts;
    prompts.askGroupName = &defaultAskGroupName;
    prompts.confirmGroupDelete = &defaultConfirmGroupDelete;
    prompts.chooseGroupColors = &defaultChooseGroupColors;
    prompts.warn = &defaultWarn;
    prompts.askTreeName = &defaultAskTreeName;
    prompts.askOverwriteOrNew = &defaultAskOverwriteOrNew;
    prompts.confirmTreeDelete = &defaultConfirmTreeDelete;
    prompts.chooseOpenFile = &defaultChooseOpenFile;
    prompts.chooseSaveFile = &defaultChooseSaveFile;
    return prompts;
}
