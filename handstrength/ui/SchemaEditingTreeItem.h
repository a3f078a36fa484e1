#pragma once

#include <QTreeWidgetItem>
#include <VelmaraEvaluatorBase.h>

class QString;

// An entry of the schema tree: a group, shown by its name with the folder picture, or a hand
// strength, shown by its name (handStrengthName) with the range picture. A group has the
// default key.
class SchemaEditingTreeItem : public QTreeWidgetItem {
public:
    static constexpr int itemType = QTreeWidgetItem::UserType + 22;

    // A group.
    explicit SchemaEditingTreeItem(const QString& groupName);
    // A hand strength.
    explicit SchemaEditingTreeItem(const HandStrengthKey& key);

    bool isGroup() const { return group; }
    const HandStrengthKey& key() const { return handStrength; }
    // A new key for a hand strength, whose text follows it; a group keeps the default key.
    void setKey(const HandStrengthKey& key);

private:
    bool group;
    HandStrengthKey handStrength;
};
