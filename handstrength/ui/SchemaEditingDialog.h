#pragma once

#include "handstrength/HandGroupSchemaData.h"

#include <QDialog>
#include <VelmaraEvaluatorBase.h>

#include <string>

class HandGroupSchemaPool;
class QDialogButtonBox;
class QLineEdit;
class QPushButton;
class QTreeWidget;
class SchemaEditingTreeItem;

namespace Ui {
class SchemaEditingDialog;
}

// "Edit Schema": one schema as a tree, its groups at the top and under each group its hand
// strengths, every row under the row it refines.
//
// The dialog works on a copy of the schema. A hand strength is added under the selected
// entry and made with the hand strength dialog, the selected row's key being the parent key;
// editing a row's key re-bases every row below it, keeping their own features. Accepting
// checks the name (not empty, and no other schema of the pool has it; the schema's own name
// passes) and keeps the dialog open with a warning otherwise; then the schema is rebuilt
// from the tree: groups in tree order, each group's rows depth first, every row pointing at
// the row above it, the top rows of a group shown and the rows below them collapsed.
//
// Read-only (the built-in schema), nothing can be changed: the name line and the add and
// delete buttons are off, the edit button reads "View" and opens the hand strength dialog
// read-only, and the dialog has only a Close button.
//
// Stored rows whose parent link is broken (out of range, pointing at themselves, or in a
// cycle) are shown directly under their group, with what hangs below them.
class SchemaEditingDialog : public QDialog {
    Q_OBJECT

public:
    // `pool` is only read, for the name check, and must outlive the dialog. A name the pool
    // doesn't have (an empty one for a new schema) starts an empty schema.
    SchemaEditingDialog(QWidget* parent, const HandGroupSchemaPool& pool,
                        const std::string& schemaName, bool readOnly);
    ~SchemaEditingDialog() override;

    // The schema as it was loaded; after an accept, as the tree made it.
    const HandGroupSchemaData& schemaData() const { return data; }
    // The name the schema had when the dialog opened.
    const std::string& originalName() const { return loadedName; }
    bool isReadOnly() const { return readOnly; }

    // The selected entry, or null.
    SchemaEditingTreeItem* selectedItem() const;

    QTreeWidget* tree() const;
    QLineEdit* nameEdit() const;
    QPushButton* addGroupButton() const;
    QPushButton* addHandStrengthButton() const;
    QPushButton* editButton() const;
    QPushButton* deleteButton() const;
    QDialogButtonBox* buttonBox() const;

public slots:
    void accept() override;
    void onAddGroup();
    void onAddHandStrength();
    void onDelete();
    void onEdit();
    void onSelectionChanged();

private:
    void load();
    void editGroupName(SchemaEditingTreeItem* item);
    void editHandStrength(SchemaEditingTreeItem* item);
    HandGroupSchemaData treeData() const;

    Ui::SchemaEditingDialog* ui;
    const HandGroupSchemaPool& pool;
    std::string loadedName;
    bool readOnly;
    HandGroupSchemaData data;
};
