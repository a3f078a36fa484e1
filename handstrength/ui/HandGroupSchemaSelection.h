#pragma once

#include "handstrength/HandGroupSchemaData.h"

#include <QComboBox>
#include <QString>

#include <functional>

class HandGroupSchemaPool;

// The "Schema:" combo box of the board evaluation tabs: every schema name of a pool and, as
// the last item, "Edit Schemas...".
//
// Choosing a schema keeps its name and emits schemaChanged with the schema's data. Choosing
// "Edit Schemas..." runs the editor (the schema dialogs, set by whoever owns them) modally and
// refills the list; without an editor the previous choice simply comes back. A refill keeps
// the current name if the pool still has it, else takes the pool's default, else the first
// schema, and applies that item, so a refill always ends in one schemaChanged.
//
// The pool is not owned and must outlive the box (or be replaced first).
class HandGroupSchemaSelection : public QComboBox {
    Q_OBJECT

public:
    // Runs the schema dialogs on the pool; may change the pool in any way.
    using Editor = std::function<void(HandGroupSchemaPool& pool, QWidget* parent)>;

    static const char* const editItemText; // "Edit Schemas..."

    explicit HandGroupSchemaSelection(QWidget* parent = nullptr);

    // Takes a pool and refills, unless it is the pool already shown (so that a tab switch,
    // which hands the pools again, does not reset the schema).
    void setPool(HandGroupSchemaPool* pool);
    HandGroupSchemaPool* pool() const { return schemaPool; }
    void setEditor(Editor editor) { schemaEditor = std::move(editor); }

    // The name of the schema in use; empty before the first pool.
    const QString& currentName() const { return currentSchemaName; }

    // Refills from the pool and applies the chosen item (see above).
    void refill();

signals:
    void schemaChanged(const HandGroupSchemaData& schemaData);

private slots:
    void onIndexChanged(int index);

private:
    void apply(int index);
    void selectSilently(int index);
    bool isEditItem(int index) const;

    HandGroupSchemaPool* schemaPool = nullptr;
    QString currentSchemaName;
    Editor schemaEditor;
};
