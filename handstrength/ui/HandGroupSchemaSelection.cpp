#include "handstrength/ui/HandGroupSchemaSelection.h"

#include "handstrength/HandGroupSchemaPool.h"

#include <QSignalBlocker>

const char* const HandGroupSchemaSelection::editItemText = "Edit Schemas...";

HandGroupSchemaSelection::HandGroupSchemaSelection(QWidget* parent) : QComboBox(parent) {
    setSizeAdjustPolicy(QComboBox::AdjustToContents);
    connect(this, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &HandGroupSchemaSelection::onIndexChanged);
}

void HandGroupSchemaSelection::setPool(HandGroupSchemaPool* pool) {
    if (pool == schemaPool)
        return;
    schemaPool = pool;
    refill();
}

bool HandGroupSchemaSelection::isEditItem(int index) const {
    return index >= 0 && index == count() - 1;
}

void HandGroupSchemaSelection::selectSilently(int index) {
    const QSignalBlocker blocker(this);
    setCurrentIndex(index);
}

void HandGroupSchemaSelection::refill() {
    {
        const QSignalBlocker blocker(this);
        clear();
        if (schemaPool != nullptr) {
            for (const HandGroupSchemaData& schema : schemaPool->schemas())
                addItem(QString::fromStdString(schema.name));
        }
        addItem(QString::fromLatin1(editItemText));
    }
    if (schemaPool == nullptr || schemaPool->schemas().empty()) {
        selectSilently(-1);
        return;
    }
    int index = findText(currentSchemaName, Qt::MatchExactly);
    if (currentSchemaName.isEmpty() || isEditItem(index))
        index = -1;
    if (index < 0)
        index = findText(QString::fromStdString(schemaPool->defaultName()), Qt::MatchExactly);
    if (index < 0 || isEditItem(index))
        index = 0;
    selectSilently(index);
    apply(index);
}

void HandGroupSchemaSelection::onIndexChanged(int index) {
    if (index < 0)
        return;
    if (isEditItem(index)) {
        if (schemaEditor && schemaPool != nullptr) {
            schemaEditor(*schemaPool, this);
            refill();
        } else {
            selectSilently(findText(currentSchemaName, Qt::MatchExactly));
        }
        return;
    }
    apply(index);
}

void HandGroupSchemaSelection::apply(int index) {
    if (schemaPool == nullptr || index < 0 || isEditItem(index))
        return;
    const HandGroupSchemaData* data = schemaPool->find(itemText(index).toStdString());
    if (data == nullptr)
        return;
    currentSchemaName = itemText(index);
    emit schemaChanged(*data);
}
