#include "handstrength/ui/SchemaNameList.h"

#include <QListWidget>
#include <QMessageBox>
#include <QString>

namespace SchemaNameList {

QString currentName(const QListWidget* list) {
    const QListWidgetItem* item = list->currentItem();
    return item != nullptr ? item->text() : QString();
}

QListWidgetItem* itemNamed(const QListWidget* list, const QString& name) {
    for (int i = 0; i < list->count(); ++i) {
        if (list->item(i)->text() == name)
            return list->item(i);
    }
    return nullptr;
}

bool confirmRemoval(QWidget* parent) {
    return QMessageBox::question(parent, QStringLiteral("Really?"),
                                 QStringLiteral("Do you really want to remove this schema?"),
                                 QMessageBox::Yes | QMessageBox::No,
                                 QMessageBox::No) == QMessageBox::Yes;
}

} // namespace SchemaNameList
