#include "handstrength/ui/SchemaEditingDialog.h"
#include "ui_SchemaEditingDialog.h"

#include "handstrength/HandGroupSchemaPool.h"
#include "handstrength/ui/HandStrengthSelectionDialog.h"
#include "handstrength/ui/SchemaEditingTreeItem.h"

#include <QIcon>
#include <QInputDialog>
#include <QMessageBox>

#include <utility>
#include <vector>

namespace {

SchemaEditingTreeItem* entryOf(QTreeWidgetItem* item) {
    return item != nullptr && item->type() == SchemaEditingTreeItem::itemType
               ? static_cast<SchemaEditingTreeItem*>(item)
               : nullptr;
}

// Every entry below `item`, depth first.
std::vector<SchemaEditingTreeItem*> entriesBelow(QTreeWidgetItem* item) {
    std::vector<SchemaEditingTreeItem*> below;
    std::vector<QTreeWidgetItem*> pending{item};
    while (!pending.empty()) {
        QTreeWidgetItem* current = pending.back();
        pending.pop_back();
        for (int i = current->childCount() - 1; i >= 0; --i)
            pending.push_back(current->child(i));
        if (current != item) {
            if (SchemaEditingTreeItem* entry = entryOf(current))
                below.push_back(entry);
        }
    }
    return below;
}

} // namespace

SchemaEditingDialog::SchemaEditingDialog(QWidget* parent, const HandGroupSchemaPool& pool,
                                         const std::string& schemaName, bool readOnly)
    : QDialog(parent), ui(new Ui::SchemaEditingDialog), pool(pool), loadedName(schemaName),
      readOnly(readOnly) {
    ui->setupUi(this);
    setWindowFlags(windowFlags() & ~Qt::WindowContextHelpButtonHint);
    if (const HandGroupSchemaData* stored = pool.find(schemaName))
        data = *stored;
    else
        data.name = schemaName;

    if (readOnly) {
        ui->buttonBox->setStandardButtons(QDialogButtonBox::Close);
        ui->nameEdit->setEnabled(false);
        ui->editButton->setIcon(QIcon(QStringLiteral(":/schemaView.png")));
    }

    connect(ui->addGroupButton, &QPushButton::clicked, this, &SchemaEditingDialog::onAddGroup);
    connect(ui->addHandStrengthButton, &QPushButton::clicked, this,
            &SchemaEditingDialog::onAddHandStrength);
    connect(ui->editButton, &QPushButton::clicked, this, &SchemaEditingDialog::onEdit);
    connect(ui->deleteButton, &QPushButton::clicked, this, &SchemaEditingDialog::onDelete);
    connect(ui->tree, &QTreeWidget::itemSelectionChanged, this,
            &SchemaEditingDialog::onSelectionChanged);
    connect(ui->buttonBox, &QDialogButtonBox::accepted, this, &SchemaEditingDialog::accept);
    connect(ui->buttonBox, &QDialogButtonBox::rejected, this, &SchemaEditingDialog::reject);

    load();
    onSelectionChanged();
}

SchemaEditingDialog::~SchemaEditingDialog() {
    delete ui;
}

QTreeWidget* SchemaEditingDialog::tree() const {
    return ui->tree;
}
QLineEdit* SchemaEditingDialog::nameEdit() const {
    return ui->nameEdit;
}
QPushButton* SchemaEditingDialog::addGroupButton() const {
    return ui->addGroupButton;
}
QPushButton* SchemaEditingDialog::addHandStrengthButton() const {
    return ui->addHandStrengthButton;
}
QPushButton* SchemaEditingDialog::editButton() const {
    return ui->editButton;
}
QPushButton* SchemaEditingDialog::deleteButton() const {
    return ui->deleteButton;
}
QDialogButtonBox* SchemaEditingDialog::buttonBox() const {
    return ui->buttonBox;
}

void SchemaEditingDialog::load() {
    ui->nameEdit->setText(QString::fromStdString(data.name));
    for (const HandGroup& group : data.groups) {
        auto* groupItem = new SchemaEditingTreeItem(QString::fromStdString(group.name));
        ui->tree->addTopLevelItem(groupItem);

        const std::size_t count = group.rows.size();
        std::vector<SchemaEditingTreeItem*> items(count, nullptr);
        // Places a row under `above` and, depth first, every row hanging below it that has no
        // place yet. Without a place after the walk from the roots, a row lies in a cycle.
        auto place = [&](std::size_t first, QTreeWidgetItem* above) {
            std::vector<std::pair<std::size_t, QTreeWidgetItem*>> pending{{first, above}};
            while (!pending.empty()) {
                const auto [index, parentItem] = pending.back();
                pending.pop_back();
                if (items[index] != nullptr)
                    continue;
                items[index] = new SchemaEditingTreeItem(group.rows[index].key);
                parentItem->addChild(items[index]);
                const std::vector<std::size_t> children = group.childrenOf(index);
                for (auto child = children.rbegin(); child != children.rend(); ++child) {
                    if (items[*child] == nullptr)
                        pending.emplace_back(*child, items[index]);
                }
            }
        };
        for (std::size_t i = 0; i < count; ++i) {
            if (group.parentOf(i) == HandGroupRow::noParent)
                place(i, groupItem);
        }
        for (std::size_t i = 0; i < count; ++i) {
            if (items[i] == nullptr)
                place(i, groupItem);
        }
        groupItem->setExpanded(true);
    }
}

SchemaEditingTreeItem* SchemaEditingDialog::selectedItem() const {
    const QList<QTreeWidgetItem*> selected = ui->tree->selectedItems();
    return selected.isEmpty() ? nullptr : entryOf(selected.first());
}

void SchemaEditingDialog::onSelectionChanged() {
    SchemaEditingTreeItem* item = selectedItem();
    ui->editButton->setText(readOnly ? QStringLiteral("View") : QStringLiteral("Edit"));
    ui->editButton->setEnabled(item != nullptr && (!readOnly || !item->isGroup()));
    ui->deleteButton->setEnabled(!readOnly && item != nullptr);
    ui->addHandStrengthButton->setEnabled(!readOnly && item != nullptr);
    ui->addGroupButton->setEnabled(!readOnly);
}

void SchemaEditingDialog::onAddGroup() {
    if (readOnly)
        return;
    bool ok = false;
    const QString name = QInputDialog::getText(this, QStringLiteral("Name of the Group"),
                                               QStringLiteral("How should the group be named?"),
                                               QLineEdit::Normal, QString(), &ok)
                             .trimmed();
    if (!ok || name.isEmpty())
        return;
    auto* group = new SchemaEditingTreeItem(name);
    ui->tree->addTopLevelItem(group);
    ui->tree->setCurrentItem(group);
}

void SchemaEditingDialog::onAddHandStrength() {
    SchemaEditingTreeItem* selected = selectedItem();
    if (readOnly || selected == nullptr)
        return;
    HandStrengthKey key;
    const HandStrengthKey parentKey = selected->key();
    HandStrengthSelectionDialog dialog(this, &key, selected->isGroup() ? nullptr : &parentKey,
                                       false);
    if (dialog.exec() != QDialog::Accepted)
        return;
    auto* item = new SchemaEditingTreeItem(key);
    selected->addChild(item);
    selected->setExpanded(true);
    // The parent stays selected, so that its next child is one click away.
    ui->tree->scrollToItem(item);
}

void SchemaEditingDialog::onEdit() {
    SchemaEditingTreeItem* item = selectedItem();
    if (item == nullptr)
        return;
    if (item->isGroup())
        editGroupName(item);
    else
        editHandStrength(item);
}

void SchemaEditingDialog::editGroupName(SchemaEditingTreeItem* item) {
    if (readOnly)
        return;
    bool ok = false;
    const QString name = QInputDialog::getText(this, QStringLiteral("New Group Name"),
                                               QStringLiteral("What is the new name of the group?"),
                                               QLineEdit::Normal, item->text(0), &ok)
                             .trimmed();
    // A group without a name would not survive the settings.
    if (ok && !name.isEmpty())
        item->setText(0, name);
}

void SchemaEditingDialog::editHandStrength(SchemaEditingTreeItem* item) {
    SchemaEditingTreeItem* above = entryOf(item->parent());
    const bool hasParentKey = above != nullptr && !above->isGroup();
    const HandStrengthKey parentKey = hasParentKey ? above->key() : HandStrengthKey();
    const HandStrengthKey oldKey = item->key();
    HandStrengthKey key = oldKey;
    HandStrengthSelectionDialog dialog(this, &key, hasParentKey ? &parentKey : nullptr, readOnly);
    if (dialog.exec() != QDialog::Accepted || readOnly)
        return;
    item->setKey(key);
    // Every row below carries the edited row's features: swap the old ones for the new and
    // keep the row's own features and name.
    for (SchemaEditingTreeItem* below : entriesBelow(item)) {
        HandStrengthKey rebased = (below->key() & ~oldKey) | key;
        rebased.displayName = below->key().displayName;
        below->setKey(rebased);
    }
}

void SchemaEditingDialog::onDelete() {
    SchemaEditingTreeItem* item = selectedItem();
    if (readOnly || item == nullptr)
        return;
    if (QMessageBox::question(this, QStringLiteral("Really?"),
                              QStringLiteral("Do you really want to delete this entry?"),
                              QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
        return;
    delete item;
    onSelectionChanged();
}

HandGroupSchemaData SchemaEditingDialog::treeData() const {
    HandGroupSchemaData rebuilt;
    for (int g = 0; g < ui->tree->topLevelItemCount(); ++g) {
        QTreeWidgetItem* groupItem = ui->tree->topLevelItem(g);
        HandGroup group;
        group.name = groupItem->text(0).toStdString();
        // Depth first, each row knowing the index of the row above it.
        std::vector<std::pair<QTreeWidgetItem*, std::uint32_t>> pending;
        for (int i = groupItem->childCount() - 1; i >= 0; --i)
            pending.emplace_back(groupItem->child(i), HandGroupRow::noParent);
        while (!pending.empty()) {
            const auto [item, parent] = pending.back();
            pending.pop_back();
            const SchemaEditingTreeItem* entry = entryOf(item);
            if (entry == nullptr || entry->isGroup())
                continue;
            HandGroupRow row;
            row.key = entry->key();
            row.parent = parent;
            row.visible = parent == HandGroupRow::noParent;
            const auto index = static_cast<std::uint32_t>(group.rows.size());
            group.rows.push_back(row);
            for (int i = item->childCount() - 1; i >= 0; --i)
                pending.emplace_back(item->child(i), index);
        }
        rebuilt.groups.push_back(std::move(group));
    }
    return rebuilt;
}

void SchemaEditingDialog::accept() {
    if (readOnly) {
        reject();
        return;
    }
    const QString name = ui->nameEdit->text().trimmed();
    if (name.isEmpty()) {
        QMessageBox::warning(this, QStringLiteral("Please specify name"),
                             QStringLiteral("Please specify a name for this schema."));
        return;
    }
    const std::string newName = name.toStdString();
    if (newName != loadedName && pool.find(newName) != nullptr) {
        QMessageBox::warning(this, QStringLiteral("Already existing"),
                             QStringLiteral("A schema with this name is already existing. "
                                            "Please choose another name."));
        return;
    }
    data = treeData();
    data.name = newName;
    QDialog::accept();
}
