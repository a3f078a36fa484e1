#include "handstrength/ui/HandGroupTickSchemaSelection.h"

#include <QSignalBlocker>

#include <algorithm>

const char* const HandGroupTickSchemaSelection::customItemText = "Custom";
const char* const HandGroupTickSchemaSelection::editItemText = "Edit Schemas...";

HandGroupTickSchemaSelection::HandGroupTickSchemaSelection(QWidget* parent)
    : QComboBox(parent), currentTickSchemaName(QString::fromLatin1(customItemText)) {
    setSizeAdjustPolicy(QComboBox::AdjustToContents);
    refill();
    connect(this, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &HandGroupTickSchemaSelection::onIndexChanged);
}

void HandGroupTickSchemaSelection::setPool(HandGroupTickSchemaPool* pool) {
    if (pool == tickPool) {
        if (isBehindPool())
            refill();
        return;
    }
    tickPool = pool;
    refill();
}

bool HandGroupTickSchemaSelection::isBehindPool() const {
    if (tickPool == nullptr)
        return false;
    const auto& schemas = tickPool->schemas();
    if (static_cast<int>(schemas.size()) + 2 != count())
        return true;
    for (std::size_t i = 0; i < schemas.size(); ++i) {
        if (itemText(static_cast<int>(i) + 1).toStdString() != schemas[i].name)
            return true;
    }
    return false;
}

void HandGroupTickSchemaSelection::showEvent(QShowEvent* event) {
    if (isBehindPool())
        refill();
    QComboBox::showEvent(event);
}

bool HandGroupTickSchemaSelection::isCustom() const {
    return currentTickSchemaName == QLatin1String(customItemText);
}

bool HandGroupTickSchemaSelection::isEditItem(int index) const {
    return index > 0 && index == count() - 1;
}

void HandGroupTickSchemaSelection::selectSilently(int index) {
    const QSignalBlocker blocker(this);
    setCurrentIndex(index);
}

void HandGroupTickSchemaSelection::refill() {
    {
        const QSignalBlocker blocker(this);
        clear();
        addItem(QString::fromLatin1(customItemText));
        if (tickPool != nullptr) {
            for (const auto& schema : tickPool->schemas())
                addItem(QString::fromStdString(schema.name));
        }
        addItem(QString::fromLatin1(editItemText));
    }
    int index = findText(currentTickSchemaName, Qt::MatchExactly);
    if (index < 0 || isEditItem(index)) {
        index = 0;
        currentTickSchemaName = QString::fromLatin1(customItemText);
    }
    selectSilently(index);
}

void HandGroupTickSchemaSelection::onIndexChanged(int index) {
    if (index < 0)
        return;
    if (index == 0) {
        currentTickSchemaName = QString::fromLatin1(customItemText);
        return;
    }
    if (isEditItem(index)) {
        if (!tickEditor || tickPool == nullptr) {
            selectSilently(findText(currentTickSchemaName, Qt::MatchExactly));
            return;
        }
        const std::size_t before = tickPool->schemas().size();
        tickEditor(*tickPool, selectedHandStrengths, this);
        const bool grown = tickPool->schemas().size() > before;
        if (grown)
            currentTickSchemaName = QString::fromStdString(tickPool->schemas()[before].name);
        refill();
        if (grown)
            emit tickSchemaChanged(tickPool->schemas()[before]);
        return;
    }
    if (tickPool == nullptr)
        return;
    const HandGroupTickSchemaPool::HandGroupTickSchema* schema =
        tickPool->find(itemText(index).toStdString());
    if (schema == nullptr)
        return;
    currentTickSchemaName = itemText(index);
    selectedHandStrengths = schema->handStrengths;
    emit tickSchemaChanged(*schema);
}

void HandGroupTickSchemaSelection::SetCurrentlySelectedHandStrengths(
    std::vector<HandStrengthKey> handStrengths) {
    selectedHandStrengths = std::move(handStrengths);
    if (isCustom() || tickPool == nullptr)
        return;
    const HandGroupTickSchemaPool::HandGroupTickSchema* schema =
        tickPool->find(currentTickSchemaName.toStdString());
    const auto sameKeys = [this](const std::vector<HandStrengthKey>& keys) {
        if (keys.size() != selectedHandStrengths.size())
            return false;
        return std::all_of(keys.begin(), keys.end(), [this](const HandStrengthKey& key) {
            return std::find(selectedHandStrengths.begin(), selectedHandStrengths.end(), key) !=
                   selectedHandStrengths.end();
        });
    };
    if (schema == nullptr || !sameKeys(schema->handStrengths)) {
        currentTickSchemaName = QString::fromLatin1(customItemText);
        selectSilently(0);
    }
}
