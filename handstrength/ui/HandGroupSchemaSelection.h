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
// catches up with what it did to the pool; without an editor the previous choice simply comes
// back. A refill keeps the current name if the pool still has it, else takes the pool's
// default, else the first schema, and applies that item, so a refill always ends in one
// schemaChanged.
//
// Several boxes may show one pool (one on each board tab), and the pool may change behind a
// box's back. A box catches up when it is handed its pool again and when it is shown: if the
// schema in use is gone or changed, it refills (and so applies); if only other names came or
// went, it refills its items quietly and keeps the schema in use.
//
// The pool is not owned and must outlive the box (or be replaced first).
class HandGroupSchemaSelection : public QComboBox {
    Q_OBJECT

public:
    // Runs the schema dialogs on the pool; may change the pool in any way.
    using Editor = std::function<void(HandGroupSchemaPool& pool, QWidget* parent)>;

    static const char* const editItemText; // "Edit Schemas..."

    explicit HandGroupSchemaSelection(QWidget* parent = nullptr);

    // Takes a pool and refills; the pool already shown only catches up (so that a tab
    // switch, which hands the pools again, does not reset the schema).
    void setPool(HandGroupSchemaPool* pool);
    HandGroupSchemaPool* pool() const { return schemaPool; }
    void setEditor(Editor editor) { schemaEditor = std::move(editor); }

    // The name of the schema in use; empty before the first pool.
    const QString& currentName() const { return currentSchemaName; }

    // Refills from the pool and applies the chosen item (see above).
    void refill();
    // Whether the pool changed since the box last listed it or applied its schema.
    bool isBehindPool() const;
    // Catches up with the pool (see above).
    void catchUp();

signals:
    void schemaChanged(const HandGroupSchemaData& schemaData);

private slots:
    void onIndexChanged(int index);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void fillItems();
    void apply(int index);
    void selectSilently(int index);
    bool isEditItem(int index) const;

    HandGroupSchemaPool* schemaPool = nullptr;
    QString currentSchemaName;
    // The schema as last emitted, to see whether the pool changed it since.
    HandGroupSchemaData appliedSchema;
    Editor schemaEditor;
};
