#include "handstrength/ui/HandStrengthSelectionDialog.h"
#include "ui_HandStrengthSelectionDialog.h"

#include "handstrength/HandStrengthNames.h"
#include "handstrength/SelectableFeatures.h"
#include "handstrength/ui/HandStrengthSelectionItem.h"

#include <QMessageBox>
#include <QPushButton>

#include <set>

namespace {

// The name of a single feature; a bit the name table doesn't know (only stored data can
// carry one) reads as handStrengthName reads it inside a composed name.
std::string featureName(const HandStrengthKey& single, const std::string& tableText) {
    return tableText.empty() ? handStrengthName(single) : tableText;
}

// Lists each bit of `word` from the highest to the lowest, unless it is in `listed`.
void addItems(QListWidget* list, unsigned long long word, bool inherited,
              std::set<unsigned long long>& listed) {
    for (const auto& [single, tableText] : splitIntoNames(word)) {
        if (!listed.insert(single.positive).second)
            continue;
        list->addItem(
            new HandStrengthSelectionItem(featureName(single, tableText), single, inherited));
    }
}

} // namespace

HandStrengthSelectionDialog::HandStrengthSelectionDialog(QWidget* parent, HandStrengthKey* key,
                                                         const HandStrengthKey* parentKey,
                                                         bool readOnly)
    : QDialog(parent), ui(new Ui::HandStrengthSelectionDialog), key(key),
      hasParent(parentKey != nullptr), readOnly(readOnly) {
    ui->setupUi(this);
    setWindowFlags(windowFlags() & ~Qt::WindowContextHelpButtonHint);
    if (key != nullptr)
        working = *key;
    if (parentKey != nullptr) {
        this->parentKey = *parentKey;
        working |= *parentKey;
    }

    if (readOnly) {
        ui->buttonBox->setStandardButtons(QDialogButtonBox::Close);
        ui->nameEdit->setEnabled(false);
    }

    connect(ui->addPositiveButton, &QToolButton::clicked, this,
            &HandStrengthSelectionDialog::onAddHandStrength);
    connect(ui->addExclusiveButton, &QToolButton::clicked, this,
            &HandStrengthSelectionDialog::onAddExclusiveHandStrength);
    connect(ui->removePositiveButton, &QToolButton::clicked, this,
            &HandStrengthSelectionDialog::onRemoveHandStrength);
    connect(ui->removeExclusiveButton, &QToolButton::clicked, this,
            &HandStrengthSelectionDialog::onRemoveExclusiveHandStrength);
    connect(ui->nameEdit, &QLineEdit::editingFinished, this,
            &HandStrengthSelectionDialog::onNameEditingFinished);
    connect(ui->buttonBox, &QDialogButtonBox::accepted, this, &HandStrengthSelectionDialog::accept);
    connect(ui->buttonBox, &QDialogButtonBox::rejected, this, &HandStrengthSelectionDialog::reject);
    // A double click on an offered feature adds it as a feature the hand must have.
    connect(ui->possibleList, &QListWidget::itemDoubleClicked, this,
            [this](QListWidgetItem*) { onAddHandStrength(); });
    for (QListWidget* list : {ui->positiveList, ui->exclusiveList, ui->possibleList})
        connect(list, &QListWidget::currentItemChanged, this,
                &HandStrengthSelectionDialog::updateButtons);

    refresh();
}

HandStrengthSelectionDialog::~HandStrengthSelectionDialog() {
    delete ui;
}

QListWidget* HandStrengthSelectionDialog::positiveList() const {
    return ui->positiveList;
}
QListWidget* HandStrengthSelectionDialog::exclusiveList() const {
    return ui->exclusiveList;
}
QListWidget* HandStrengthSelectionDialog::possibleList() const {
    return ui->possibleList;
}
QLineEdit* HandStrengthSelectionDialog::nameEdit() const {
    return ui->nameEdit;
}
QToolButton* HandStrengthSelectionDialog::addPositiveButton() const {
    return ui->addPositiveButton;
}
QToolButton* HandStrengthSelectionDialog::removePositiveButton() const {
    return ui->removePositiveButton;
}
QToolButton* HandStrengthSelectionDialog::addExclusiveButton() const {
    return ui->addExclusiveButton;
}
QToolButton* HandStrengthSelectionDialog::removeExclusiveButton() const {
    return ui->removeExclusiveButton;
}
QDialogButtonBox* HandStrengthSelectionDialog::buttonBox() const {
    return ui->buttonBox;
}

void HandStrengthSelectionDialog::refresh() {
    fillKeyLists();
    fillPossibleFeatures();
    updateName();
    updateButtons();
}

void HandStrengthSelectionDialog::fillKeyLists() {
    ui->positiveList->clear();
    ui->exclusiveList->clear();
    std::set<unsigned long long> positiveListed;
    std::set<unsigned long long> exclusiveListed;
    if (hasParent) {
        addItems(ui->positiveList, parentKey.positive, true, positiveListed);
        addItems(ui->exclusiveList, parentKey.exclusive, true, exclusiveListed);
    }
    addItems(ui->positiveList, working.positive, false, positiveListed);
    addItems(ui->exclusiveList, working.exclusive, false, exclusiveListed);
}

void HandStrengthSelectionDialog::fillPossibleFeatures() {
    ui->possibleList->clear();
    std::set<unsigned long long> listed;
    addItems(ui->possibleList, selectableFeatures(working), false, listed);
}

void HandStrengthSelectionDialog::updateName() {
    // setText leaves the line unmodified, so only what the user types becomes a name.
    if (working.displayName.empty()) {
        HandStrengthKey unnamed(working.positive, working.exclusive);
        ui->nameEdit->setText(QString::fromStdString(handStrengthName(unnamed)));
    } else {
        ui->nameEdit->setText(QString::fromStdString(working.displayName));
    }
}

unsigned long long HandStrengthSelectionDialog::selectedPossibleBit() const {
    const auto* item = dynamic_cast<HandStrengthSelectionItem*>(ui->possibleList->currentItem());
    return item != nullptr && item->isSelected() ? item->bit() : 0;
}

unsigned long long HandStrengthSelectionDialog::removableBit(QListWidget* list) const {
    const auto* item = dynamic_cast<HandStrengthSelectionItem*>(list->currentItem());
    return item != nullptr && item->isSelected() && !item->isInherited() ? item->bit() : 0;
}

void HandStrengthSelectionDialog::updateButtons() {
    const bool canAdd = !readOnly && selectedPossibleBit() != 0;
    ui->addPositiveButton->setEnabled(canAdd);
    ui->addExclusiveButton->setEnabled(canAdd);
    ui->removePositiveButton->setEnabled(!readOnly && removableBit(ui->positiveList) != 0);
    ui->removeExclusiveButton->setEnabled(!readOnly && removableBit(ui->exclusiveList) != 0);
}

void HandStrengthSelectionDialog::onAddHandStrength() {
    changeFeature(working.positive, selectedPossibleBit(), true);
}

void HandStrengthSelectionDialog::onAddExclusiveHandStrength() {
    changeFeature(working.exclusive, selectedPossibleBit(), true);
}

void HandStrengthSelectionDialog::onRemoveHandStrength() {
    changeFeature(working.positive, removableBit(ui->positiveList), false);
}

void HandStrengthSelectionDialog::onRemoveExclusiveHandStrength() {
    changeFeature(working.exclusive, removableBit(ui->exclusiveList), false);
}

void HandStrengthSelectionDialog::changeFeature(unsigned long long& word, unsigned long long bit,
                                                bool add) {
    if (readOnly || bit == 0)
        return;
    if (add)
        word |= bit;
    else
        word &= ~bit;
    refresh();
}

void HandStrengthSelectionDialog::onNameEditingFinished() {
    if (readOnly || !ui->nameEdit->isModified())
        return;
    working.displayName = ui->nameEdit->text().trimmed().toStdString();
    updateName();
}

void HandStrengthSelectionDialog::accept() {
    if (readOnly) {
        reject();
        return;
    }
    // A name typed but not yet confirmed counts.
    onNameEditingFinished();
    if (working == HandStrengthKey()) {
        QMessageBox::warning(this, QStringLiteral("No HandStrengths given"),
                             QStringLiteral("Please specify either positive or negative hand "
                                            "strengths."));
        return;
    }
    if (key != nullptr)
        *key = working;
    QDialog::accept();
}
