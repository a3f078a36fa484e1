#include "selection/CardSelectionDialog.h"

#include "Range/Assertion.h"
#include "selection/CardRange.h"
#include "selection/CardSelectionTable.h"
#include "ui_CardSelectionDialog.h"

#include <QSettings>

#include <algorithm>

CardSelectionDialog::CardSelectionDialog(CardRange* current, const std::vector<CardRange*>& row,
                                         const std::vector<CardRange*>& further, QWidget* parent)
    : QDialog(parent), ui(new Ui::CardSelectionDialog), current(current), row(row),
      further(further) {
    ui->setupUi(this);
    QV_ASSERT(current != nullptr, "Card dialog without a field.");
    QV_ASSERT(row.empty() || std::find(row.begin(), row.end(), current) != row.end(),
              "Card dialog field not in its row.");
    if (!row.empty() && std::find(row.begin(), row.end(), current) == row.end()) {
        this->row.clear();
    }
    this->further.erase(std::remove(this->further.begin(), this->further.end(), nullptr),
                        this->further.end());
    this->row.erase(std::remove(this->row.begin(), this->row.end(), nullptr), this->row.end());

    for (CardRange* range : this->row) {
        originals.emplace_back(range, range->cardsText());
    }
    for (CardRange* range : this->further) {
        originals.emplace_back(range, range->cardsText());
    }
    if (current != nullptr && this->row.empty()) {
        originals.emplace_back(current, current->cardsText());
    }

    QSettings settings("Velmara", "Quorvane");
    settings.beginGroup("optionmenu");
    const bool unselect = settings.value("unselectCardWithRightButton", true).toBool();
    settings.endGroup();
    ui->unselectCheckbox->setChecked(unselect);
    ui->table->setUnselectWithRightButton(unselect);

    ui->backButton->setVisible(!this->row.empty());
    ui->nextButton->setVisible(!this->row.empty());

    connect(ui->table, &CardSelectionTable::SelectionChanged, this,
            &CardSelectionDialog::reactToSelectionChange);
    connect(ui->backButton, &QPushButton::clicked, this, &CardSelectionDialog::goToPreviousRange);
    connect(ui->nextButton, &QPushButton::clicked, this, &CardSelectionDialog::goToNextRange);
    connect(ui->randomButton, &QPushButton::clicked, ui->table,
            &CardSelectionTable::SelectRandomCards);
    connect(ui->okButton, &QPushButton::clicked, this, &CardSelectionDialog::accept);
    connect(ui->cancelButton, &QPushButton::clicked, this, &CardSelectionDialog::reject);
    connect(ui->unselectCheckbox, &QCheckBox::toggled, this,
            &CardSelectionDialog::unselectCheckboxToggled);

    if (current != nullptr) {
        enterCurrent();
    } else {
        reactToSelectionChange(0);
    }
}

CardSelectionDialog::~CardSelectionDialog() {
    delete ui;
}

void CardSelectionDialog::setForbiddenCards(const QString& cards) {
    ui->table->setForbiddenCards(cards);
    reactToSelectionChange(ui->table->markedCount());
}

CardSelectionTable* CardSelectionDialog::table() const {
    return ui->table;
}
QPushButton* CardSelectionDialog::backButton() const {
    return ui->backButton;
}
QPushButton* CardSelectionDialog::nextButton() const {
    return ui->nextButton;
}
QPushButton* CardSelectionDialog::okButton() const {
    return ui->okButton;
}
QPushButton* CardSelectionDialog::randomButton() const {
    return ui->randomButton;
}

CardRange* CardSelectionDialog::rangeAfter(const CardRange* range) const {
    auto at = std::find(row.begin(), row.end(), range);
    if (at == row.end() || at + 1 == row.end()) {
        return nullptr;
    }
    return *(at + 1);
}

void CardSelectionDialog::enterCurrent() {
    previousRange = nullptr;
    nextRange = nullptr;
    auto at = std::find(row.begin(), row.end(), current);
    if (at != row.end()) {
        if (at != row.begin()) {
            previousRange = *(at - 1);
        }
        nextRange = rangeAfter(current);
    }
    setWindowTitle(current->selectionTitle().isEmpty() ? QStringLiteral("Dialog")
                                                       : current->selectionTitle());
    QString blocked;
    for (const auto& entry : originals) {
        if (entry.first != current) {
            blocked += entry.first->cardsText();
        }
    }
    for (CardRange* other : current->otherRanges()) {
        blocked += other->cardsText();
    }
    ui->table->setMaxMarked(current->maxCards());
    ui->table->setBlockedCards(blocked);
    ui->table->setMarkedCards(current->cardsText());
    reactToSelectionChange(ui->table->markedCount());
}

void CardSelectionDialog::writeBack() {
    current->setCardsFromText(ui->table->markedText());
}

void CardSelectionDialog::reactToSelectionChange(unsigned int count) {
    QPushButton* back = ui->backButton;
    QPushButton* next = ui->nextButton;
    QPushButton* ok = ui->okButton;
    if (current == nullptr) {
        back->setEnabled(false);
        next->setEnabled(false);
        ok->setEnabled(false);
        return;
    }
    if (previousRange == nullptr && nextRange == nullptr) {
        back->setEnabled(false);
        next->setEnabled(false);
        // A hand is exactly two cards; any other single field takes what it is given.
        ok->setEnabled(current->maxCards() != 2 || count == 2);
        return;
    }
    if (previousRange == nullptr) {
        back->setEnabled(false);
        if (count >= 3) {
            next->setEnabled(!CardRange::isStronglyDisabled(nextRange));
            ok->setEnabled(true);
        } else {
            next->setEnabled(false);
            ok->setEnabled(nextRange->cardCount() != 1);
        }
        return;
    }
    if (count == 1) {
        next->setEnabled(nextRange != nullptr && !CardRange::isStronglyDisabled(nextRange));
    } else {
        if (nextRange != nullptr && nextRange->cardCount() > 0) {
            next->setEnabled(false);
            back->setEnabled(false);
            ok->setEnabled(false);
            return;
        }
        next->setEnabled(false);
    }
    back->setEnabled(true);
    ok->setEnabled(true);
}

void CardSelectionDialog::goToPreviousRange() {
    if (previousRange == nullptr) {
        return;
    }
    writeBack();
    current = previousRange;
    enterCurrent();
}

void CardSelectionDialog::goToNextRange() {
    if (nextRange == nullptr || CardRange::isStronglyDisabled(nextRange)) {
        return;
    }
    writeBack();
    current = nextRange;
    enterCurrent();
}

void CardSelectionDialog::unselectCheckboxToggled(bool checked) {
    ui->table->setUnselectWithRightButton(checked);
    QSettings settings("Velmara", "Quorvane");
    settings.beginGroup("optionmenu");
    settings.setValue("unselectCardWithRightButton", checked);
    settings.endGroup();
}

void CardSelectionDialog::accept() {
    writeBack();
    QDialog::accept();
}

void CardSelectionDialog::reject() {
    // Empty every field first: a card may have moved from one field to another.
    for (const auto& entry : originals) {
        entry.first->clear();
    }
    for (const auto& entry : originals) {
        entry.first->setCardsFromText(entry.second);
    }
    QDialog::reject();
}
