#pragma once

class QListWidget;
class QListWidgetItem;
class QString;
class QWidget;

// What the two list dialogs of schemas share: a QListWidget of schema names, one item for
// each name, and the question before a schema is removed.
namespace SchemaNameList {

// The text of the current item; empty without one.
QString currentName(const QListWidget* list);
// The item that reads `name`, or null.
QListWidgetItem* itemNamed(const QListWidget* list, const QString& name);
// "Do you really want to remove this schema?", Yes or No, No being the default: true for Yes.
bool confirmRemoval(QWidget* parent);

} // namespace SchemaNameList
