#include "selection/HandSelectionPrompts.h"

#include "selection/GroupColorSelectionDialog.h"

#include <QInputDialog>
#include <QMessageBox>

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

} // namespace

HandSelectionPrompts HandSelectionPrompts::standard() {
    HandSelectionPrompts prompts;
    prompts.askGroupName = &defaultAskGroupName;
    prompts.confirmGroupDelete = &defaultConfirmGroupDelete;
    prompts.chooseGroupColors = &defaultChooseGroupColors;
    prompts.warn = &defaultWarn;
    return prompts;
}
