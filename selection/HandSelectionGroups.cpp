#include "selection/HandSelectionGroups.h"

#include "Range/HandRange.h"
#include "Range/Tree.h"
#include "Range/TreeRangeNode.h"
#include "selection/RangeGroupBox.h"

#include "ui_HandSelectionDialog.h"

#include <QSignalBlocker>

#include <initializer_list>
#include <utility>

namespace {

constexpr unsigned int noNode = Range::Tree::noNode;

} // namespace

HandSelectionGroups::HandSelectionGroups(Range::Tree& tree, Ui::HandSelectionDialog* form,
                                         bool withGroups, QWidget* dialog)
    : QObject(dialog), tree(tree), ui(form), dialog(dialog),
      prompts(HandSelectionPrompts::standard()), withGroups(withGroups) {
    ui->rootGroupBox->setNumber(0);
    ui->groupArea->setVisible(withGroups);
    ui->groupSeparator->setVisible(withGroups);

    connect(ui->rootGroupBox, &RangeGroupBox::clicked, this,
            [this] { onBoxClicked(ui->rootGroupBox); });
    connect(ui->remainderButton, &QPushButton::clicked, this, &HandSelectionGroups::takeRemainder);
    connect(ui->editGroupNameButton, &QPushButton::clicked, this, &HandSelectionGroups::editName);
    connect(ui->editGroupColorsButton, &QPushButton::clicked, this,
            &HandSelectionGroups::editColors);
    connect(ui->deleteGroupButton, &QPushButton::clicked, this, &HandSelectionGroups::deleteShown);
    connect(ui->parentGroup, QOverload<int>::of(&QComboBox::activated), this,
            &HandSelectionGroups::moveToParent);
    connect(ui->defaultForNewGroups, &QCheckBox::stateChanged, this,
            &HandSelectionGroups::setDefaultForNewGroups);
}

void HandSelectionGroups::setPrompts(HandSelectionPrompts newPrompts) {
    prompts = std::move(newPrompts);
}

std::vector<RangeGroupBox*> HandSelectionGroups::boxes() const {
    std::vector<RangeGroupBox*> all{ui->rootGroupBox};
    all.insert(all.end(), groupBoxes.begin(), groupBoxes.end());
    return all;
}

// --- The tree ----------------------------------------------------------------------------------

bool HandSelectionGroups::hasRangeParent(unsigned int index) const {
    const unsigned int parent = tree.node(index)->parent;
    return parent != noNode && tree.node(parent)->IsRange();
}

std::vector<const Range::HandRange*> HandSelectionGroups::siblingRanges(unsigned int index) const {
    std::vector<const Range::HandRange*> others;
    for (unsigned int sibling : tree.siblings(index))
        if (tree.node(sibling)->IsRange())
            others.push_back(&tree.handRange(sibling));
    return others;
}

Range::HandRange HandSelectionGroups::selectionInput() const {
    if (shown != 0 && hasRangeParent(shown)) {
        const Range::HandRange& parent = tree.handRange(tree.node(shown)->parent);
        if (!parent.isEmpty())
            return Range::HandRange(parent);
    }
    return Range::HandRange(true);
}

unsigned int HandSelectionGroups::replaceShownWith(const Range::Tree& source,
                                                   unsigned int sourceNode) {
    emit nodesAboutToBeRemoved();
    const Range::TreeNode* shownNode = tree.node(shown);
    if (!shownNode->children.empty())
        tree.removeList(shownNode->children);
    shown = shownNode->index;
    tree.handRange(shown).assign(source.handRange(sourceNode).elements());
    const unsigned int firstNew = tree.count();
    for (unsigned int child : source.node(sourceNode)->children)
        tree.InsertFromMemento(source.saveToText(child), shown, Range::Tree::noNode);
    // The groups keep their colours unless another group of the range has the same.
    for (unsigned int added = firstNew; added < tree.count(); ++added) {
        const Range::GroupColor color = tree.rangeNode(added)->color;
        bool taken = false;
        for (unsigned int other = 0; other < tree.count() && !taken; ++other)
            taken = other != added && tree.node(other)->IsRange() && color.usesColor &&
                    tree.rangeNode(other)->color == color;
        const std::vector<Range::GroupColor> free = tree.freeColors(added);
        if (taken && !free.empty())
            tree.setColor(added, free.front());
    }
    treeReplaced();
    return shown;
}

void HandSelectionGroups::treeReplaced() {
    if (defaultParentGroup >= tree.count() || !tree.node(defaultParentGroup)->IsRange())
        defaultParentGroup = 0;
}

// --- Showing -----------------------------------------------------------------------------------

unsigned int HandSelectionGroups::show(unsigned int index) {
    if (index >= tree.count() || !tree.node(index)->IsRange())
        index = 0;
    shown = index;
    const bool isRoot = index == 0;
    for (QWidget* widget : std::initializer_list<QWidget*>{
             ui->groupName, ui->editGroupNameButton, ui->editGroupColorsButton,
             ui->deleteGroupButton, ui->parentLabel, ui->parentGroup, ui->defaultForNewGroups,
             ui->remainderButton})
        widget->setEnabled(!isRoot);
    ui->groupName->setText(isRoot ? QStringLiteral("Group Name")
                                  : QString::fromStdString(tree.rangeNode(index)->name));
    rebuildBoxes();
    fillParentCombo();
    return shown;
}

void HandSelectionGroups::rebuildBoxes() {
    // The clicked box may still be inside its mouse handler: let the event loop delete it.
    for (RangeGroupBox* box : groupBoxes) {
        ui->groupBoxesLayout->removeWidget(box);
        box->hide();
        box->deleteLater();
    }
    groupBoxes.clear();
    ui->rootGroupBox->SetRangeNode(tree.rangeNode(0));
    ui->rootGroupBox->setState(shown == 0 ? RangeGroupBox::Selected : RangeGroupBox::Normal);
    if (!withGroups)
        return;
    auto* layout = ui->groupBoxesLayout;
    for (unsigned int index = 1; index < tree.count(); ++index) {
        if (!tree.node(index)->IsRange())
            continue;
        auto* box = new RangeGroupBox(ui->groupBoxes);
        box->setObjectName(QStringLiteral("groupBox%1").arg(index));
        box->setNumber(index);
        box->SetRangeNode(tree.rangeNode(index));
        box->setState(index == shown ? RangeGroupBox::Selected : RangeGroupBox::Normal);
        box->setToolTip(QString::fromStdString(tree.rangeNode(index)->name));
        connect(box, &RangeGroupBox::clicked, this, [this, box] { onBoxClicked(box); });
        layout->addWidget(box);
        groupBoxes.push_back(box);
    }
    auto* newBox = new RangeGroupBox(ui->groupBoxes);
    newBox->setObjectName(QStringLiteral("newGroupBox"));
    newBox->setState(RangeGroupBox::NewGroup);
    newBox->setMinimumWidth(36);
    connect(newBox, &RangeGroupBox::clicked, this, [this, newBox] { onBoxClicked(newBox); });
    layout->addWidget(newBox);
    groupBoxes.push_back(newBox);
}

void HandSelectionGroups::fillParentCombo() {
    const QSignalBlocker blocker(ui->parentGroup);
    ui->parentGroup->clear();
    ui->parentGroup->addItem(QStringLiteral("Entire Range"), 0u);
    const unsigned int parent = tree.node(shown)->parent;
    for (unsigned int index = 1; index < tree.count(); ++index) {
        if (!tree.node(index)->IsRange() || shown == 0)
            continue;
        // Neither the group itself nor one of its descendants can become its parent.
        unsigned int walk = index;
        bool below = false;
        while (walk != noNode) {
            if (walk == shown) {
                below = true;
                break;
            }
            walk = tree.node(walk)->parent;
        }
        if (below)
            continue;
        ui->parentGroup->addItem(QString::fromStdString(tree.rangeNode(index)->name), index);
    }
    const int position = ui->parentGroup->findData(parent == noNode ? 0u : parent);
    ui->parentGroup->setCurrentIndex(position < 0 ? 0 : position);
    ui->parentLabel->setText(parent == 0 || parent == noNode ? QStringLiteral("Range:")
                                                             : QStringLiteral("Group:"));
    const QSignalBlocker checkBlocker(ui->defaultForNewGroups);
    ui->defaultForNewGroups->setChecked(shown != 0 && defaultParentGroup != 0 &&
                                        defaultParentGroup == parent);
}

// --- Editing -----------------------------------------------------------------------------------

void HandSelectionGroups::onBoxClicked(RangeGroupBox* box) {
    if (!box)
        return;
    if (box->state() == RangeGroupBox::NewGroup) {
        createGroup();
        return;
    }
    const unsigned int number = box->number();
    if (number == shown)
        return;
    emit showRequested(number);
}

void HandSelectionGroups::takeRemainder() {
    if (shown == 0 || !hasRangeParent(shown))
        return;
    Range::HandRange remainder(true);
    for (const Range::HandRange* sibling : siblingRanges(shown))
        remainder -= Range::HandRange(*sibling);
    tree.handRange(shown).assign(remainder.elements());
    emit shownRangeReplaced();
}

void HandSelectionGroups::createGroup() {
    QString name;
    if (!prompts.askGroupName(dialog, name))
        return;
    if (name.isEmpty())
        name = QStringLiteral("Group %1").arg(tree.count());
    if (tree.freeColors(defaultParentGroup).empty()) {
        prompts.warn(dialog, QStringLiteral("Group"), QStringLiteral("All colors in use."));
        return;
    }
    Range::TreeRangeNode* group =
        tree.addExclusiveRange(defaultParentGroup, name.toStdString(),
                               Range::TreeRangeNode::Overwrite, true, Range::GroupColor());
    emit edited(group->index);
}

void HandSelectionGroups::editName() {
    if (shown == 0)
        return;
    QString name = QString::fromStdString(tree.rangeNode(shown)->name);
    if (!prompts.askGroupName(dialog, name))
        return;
    if (name.isEmpty())
        name = QStringLiteral("Group %1").arg(shown);
    tree.renameRange(shown, name.toStdString());
    emit edited(shown);
}

void HandSelectionGroups::editColors() {
    if (shown == 0)
        return;
    Range::GroupColor chosen;
    if (!prompts.chooseGroupColors(dialog, tree.rangeNode(shown)->color, tree.freeColors(shown),
                                   chosen))
        return;
    tree.setColor(shown, chosen);
    emit edited(shown);
}

void HandSelectionGroups::deleteShown() {
    if (shown == 0)
        return;
    if (!prompts.confirmGroupDelete(dialog))
        return;
    // Work out what becomes of the default parent before the indices move.
    unsigned int removedBelowDefault = 0;
    bool defaultRemoved = false;
    std::vector<unsigned int> work{shown};
    while (!work.empty()) {
        const unsigned int index = work.back();
        work.pop_back();
        if (index == defaultParentGroup)
            defaultRemoved = true;
        else if (index < defaultParentGroup)
            ++removedBelowDefault;
        for (unsigned int child : tree.node(index)->children)
            work.push_back(child);
    }
    const unsigned int position = shown;
    emit nodesAboutToBeRemoved();
    tree.remove(position);
    defaultParentGroup = defaultRemoved ? 0 : defaultParentGroup - removedBelowDefault;
    emit edited(position < tree.count() ? position : 0);
}

void HandSelectionGroups::moveToParent(int comboIndex) {
    if (shown == 0 || comboIndex < 0)
        return;
    const unsigned int newParent = ui->parentGroup->itemData(comboIndex).toUInt();
    if (newParent == tree.node(shown)->parent)
        return;
    tree.move(shown, newParent, noNode);
    if (ui->defaultForNewGroups->isChecked())
        defaultParentGroup = newParent;
    emit edited(shown);
}

void HandSelectionGroups::setDefaultForNewGroups(int checkState) {
    if (checkState == Qt::Checked && shown != 0)
        defaultParentGroup = ui->parentGroup->currentData().toUInt();
    else
        defaultParentGroup = 0;
}
