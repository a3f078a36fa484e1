#include "handstrength/ui/SchemaEditingTreeItem.h"

#include "handstrength/HandStrengthNames.h"

#include <QIcon>
#include <QString>

SchemaEditingTreeItem::SchemaEditingTreeItem(const QString& groupName)
    : QTreeWidgetItem(itemType), group(true) {
    setText(0, groupName);
    setIcon(0, QIcon(QStringLiteral(":/folder.png")));
}

SchemaEditingTreeItem::SchemaEditingTreeItem(const HandStrengthKey& key)
    : QTreeWidgetItem(itemType), group(false) {
    setIcon(0, QIcon(QStringLiteral(":/handSelectionTreeRange.PNG")));
    setKey(key);
}

void SchemaEditingTreeItem::setKey(const HandStrengthKey& key) {
    if (group)
        return;
    handStrength = key;
    setText(0, QString::fromStdString(handStrengthName(key)));
}
