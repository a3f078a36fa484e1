#pragma once

#include "handstrength/HandGroupTickSchemaPool.h"

#include <QDialog>
#include <QString>
#include <VelmaraEvaluatorBase.h>

#include <vector>

class QDialogButtonBox;
class QListWidget;
class QListWidgetItem;
class QPushButton;

namespace Ui {
class TickSchemaListDialog;
}

// "Custom Sum Selection Schemas": the named sets of ticks of the custom sum. A new one is
// made from the ticks the tab shows at the moment (a name that exists is replaced); the
// three built-in ones, "Nothing", "Made Hands" and "Mediocre and Strong Draws", can't be
// removed.
//
// The dialog works on a copy of the pool; accepting writes the copy back and saves it, and a
// cancel leaves the pool as it was.
class TickSchemaListDialog : public QDialog {
    Q_OBJECT

public:
    // `pool` must outlive the dialog.
    TickSchemaListDialog(QWidget* parent, HandGroupTickSchemaPool* pool,
                         const std::vector<HandStrengthKey>& currentTicks);
    ~TickSchemaListDialog() override;

    // Runs the dialog modally on `pool`; true when it was accepted (and the pool saved).
    static bool editPool(HandGroupTickSchemaPool& pool,
                         const std::vector<HandStrengthKey>& currentTicks, QWidget* parent);

    const HandGroupTickSchemaPool& workingPool() const { return working; }
    QString currentName() const;
    QListWidgetItem* itemNamed(const QString& name) const;

    QListWidget* schemaList() const;
    QPushButton* createButton() const;
    QPushButton* removeButton() const;
    QDialogButtonBox* buttonBox() const;

public slots:
    void accept() override;
    void createSchema();
    void removeSchema();
    void onCurrentItemChange(const QString& name);

private:
    void fillList();
    void select(const QString& name);

    Ui::TickSchemaListDialog* ui;
    HandGroupTickSchemaPool* pool;
    HandGroupTickSchemaPool working;
    std::vector<HandStrengthKey> currentTicks;
};
