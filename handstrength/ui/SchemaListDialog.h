#pragma once

#include "handstrength/HandGroupSchemaPool.h"

#include <QDialog>
#include <QString>

class QDialogButtonBox;
class QListWidget;
class QListWidgetItem;
class QPushButton;

namespace Ui {
class SchemaListDialog;
}

// "Hand Strength Schemas": the schemas a board tab can show, to make, edit, copy, remove and
// choose the default from (the default's name is in italics).
//
// The dialog works on a copy of the pool; accepting writes the copy back and saves it, and a
// cancel leaves the pool as it was. "Standard" is built in: it can be viewed but not edited
// ("View Schema"), and not removed; its copy ("Standard - Copy") can be edited. Removing the
// default schema makes "Standard" the default.
class SchemaListDialog : public QDialog {
    Q_OBJECT

public:
    // `pool` must outlive the dialog.
    SchemaListDialog(QWidget* parent, HandGroupSchemaPool* pool);
    ~SchemaListDialog() override;

    // Runs the dialog modally on `pool`; true when it was accepted (and the pool saved).
    static bool editPool(HandGroupSchemaPool& pool, QWidget* parent);

    // The copy being worked on.
    const HandGroupSchemaPool& workingPool() const { return working; }
    // The name of the current item; empty without one.
    QString currentName() const;
    // The item of a schema, or null.
    QListWidgetItem* itemNamed(const QString& name) const;

    QListWidget* schemaList() const;
    QPushButton* newButton() const;
    QPushButton* editButton() const;
    QPushButton* removeButton() const;
    QPushButton* defaultButton() const;
    QPushButton* copyButton() const;
    QDialogButtonBox* buttonBox() const;

public slots:
    void accept() override;
    void createSchema();
    void editSchema();
    void removeSchema();
    void onCurrentItemChange(const QString& name);
    void onAsDefault();
    void copySchema();

private:
    void fillList();
    void updateFonts();
    void select(const QString& name);

    Ui::SchemaListDialog* ui;
    HandGroupSchemaPool* pool;
    HandGroupSchemaPool working;
};
