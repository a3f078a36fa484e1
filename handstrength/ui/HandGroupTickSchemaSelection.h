#pragma once

#include "handstrength/HandGroupTickSchemaPool.h"

#include <QComboBox>
#include <QString>
#include <VelmaraEvaluatorBase.h>

#include <functional>
#include <vector>

// The "Custom Sum:" combo box of the board hit tabs: "Custom", every tick schema name of a
// pool, and "Edit Schemas...".
//
// "Custom" stands for the ticks the user set by hand and only keeps the name. A tick schema
// keeps its name and emits tickSchemaChanged, which replaces the ticks (they are then the
// present ticks). "Edit Schemas..." runs the editor (the tick schema dialogs, set by whoever
// owns them) modally with the present ticks; if the pool has grown, the first new schema
// becomes the current one (and is applied); then the list is refilled. Without an editor the
// previous choice comes back.
//
// Several boxes may show one pool; one whose list no longer matches the pool's names refills
// quietly when it is handed its pool again or shown.
//
// The pool is not owned and must outlive the box (or be replaced first).
class HandGroupTickSchemaSelection : public QComboBox {
    Q_OBJECT

public:
    using Editor =
        std::function<void(HandGroupTickSchemaPool& pool,
                           const std::vector<HandStrengthKey>& presentTicks, QWidget* parent)>;

    static const char* const customItemText; // "Custom"
    static const char* const editItemText;   // "Edit Schemas..."

    explicit HandGroupTickSchemaSelection(QWidget* parent = nullptr);

    // Takes a pool and refills; the pool already shown only catches up with its names.
    void setPool(HandGroupTickSchemaPool* pool);
    HandGroupTickSchemaPool* pool() const { return tickPool; }
    void setEditor(Editor editor) { tickEditor = std::move(editor); }

    // "Custom" or the name of a tick schema.
    const QString& currentName() const { return currentTickSchemaName; }
    bool isCustom() const;
    // The ticks last reported by the tab.
    const std::vector<HandStrengthKey>& presentTicks() const { return selectedHandStrengths; }

    // Refills from the pool and selects the current name (else "Custom"), without signals.
    void refill();
    // Whether the list no longer shows the pool's names.
    bool isBehindPool() const;

signals:
    void tickSchemaChanged(HandGroupTickSchemaPool::HandGroupTickSchema schema);

public slots:
    // The ticks as they now stand in the tab. Ticks set by hand that differ from the chosen
    // tick schema turn the choice to "Custom" (without a signal).
    void SetCurrentlySelectedHandStrengths(std::vector<HandStrengthKey> handStrengths);

private slots:
    void onIndexChanged(int index);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void selectSilently(int index);
    bool isEditItem(int index) const;

    HandGroupTickSchemaPool* tickPool = nullptr;
    QString currentTickSchemaName;
    std::vector<HandStrengthKey> selectedHandStrengths;
    Editor tickEditor;
};
