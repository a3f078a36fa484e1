#include "handstrength/ui/HandGroupSchemaSelection.h"

#include "handstrength/HandGroupSchemaPool.h"

#include <QSignalBlocker>

namespace {

// Equal as a board tab would show them: names, groups, and every row's key (with its
// displayName), parent link and starting visibility.
bool sameSchema(const HandGroupSchemaData& a, const HandGroupSchemaData& b) {
    if (a.name != b.name || a.groups.size() != b.groups.size())
        return false;
    for (std::size_t g = 0; g < a.groups.size(); ++g) {
        const HandGroup& first = a.groups[g];
        const HandGroup& second = b.groups[g];
        if (first.name != second.name || first.rows.size() != second.rows.size())
            return false;
        for (std::size_t r = 0; r < first.rows.size(); ++r) {
            const HandGroupRow& x = first.rows[r];
            const HandGroupRow& y = second.rows[r];
            if (x.key != y.key || x.key.displayName != y.key.displayName || x.parent != y.parent ||
                x.visible != y.visible)
                return false;
        }
    }
    return true;
}

} // namespace

const char* const HandGroupSchemaSelection::editItemText = "Edit Schemas...";

HandGroupSchemaSelection::HandGroupSchemaSelection(QWidget* parent) : QComboBox(parent) {
    setSizeAdjustPolicy(QComboBox::AdjustToContents);
    connect(this, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &HandGroupSchemaSelection::onIndexChanged);
}

void HandGroupSchemaSelection::setPool(HandGroupSchemaPool* pool) {
    if (pool == schemaPool) {
        catchUp();
        return;
    }
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

void HandGroupSchemaSelection::fillItems() {
    const QSignalBlocker blocker(this);
    clear();
    if (schemaPool != nullptr) {
        for (const HandGroupSchemaData& schema : schemaPool->schemas())
            addItem(QString::fromStdString(schema.name));
    }
    addItem(QString::fromLatin1(editItemText));
}

void HandGroupSchemaSelection::refill() {
    fillItems();
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

bool HandGroupSchemaSelection::isBehindPool() const {
    if (schemaPool == nullptr)
        return false;
    const std::vector<HandGroupSchemaData>& schemas = schemaPool->schemas();
    if (static_cast<int>(schemas.size()) + 1 != count())
        return true;
    for (std::size_t i = 0; i < schemas.size(); ++i) {
        if (itemText(static_cast<int>(i)).toStdString() != schemas[i].name)
            return true;
    }
    const HandGroupSchemaData* inUse = schemaPool->find(currentSchemaName.toStdString());
    return inUse == nullptr || !sameSchema(*inUse, appliedSchema);
}

void HandGroupSchemaSelection::catchUp() {
    if (schemaPool == nullptr)
        return;
    const HandGroupSchemaData* inUse = schemaPool->find(currentSchemaName.toStdString());
    if (inUse == nullptr || !sameSchema(*inUse, appliedSchema)) {
        refill();
        return;
    }
    // The schema in use stands as it was: only the list follows the pool.
    if (isBehindPool())
        fillItems();
    selectSilently(findText(currentSchemaName, Qt::MatchExactly));
}

void HandGroupSchemaSelection::showEvent(QShowEvent* event) {
    catchUp();
    QComboBox::showEvent(event);
}

void HandGroupSchemaSelection::onIndexChanged(int index) {
    if (index < 0)
        return;
    if (isEditItem(index)) {
        if (schemaEditor && schemaPool != nullptr) {
            schemaEditor(*schemaPool, this);
            catchUp();
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
    appliedSchema = *data;
    emit schemaChanged(*data);
}
