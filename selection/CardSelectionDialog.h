#pragma once

#include <QDialog>
#include <QString>

#include <utility>
#include <vector>

class CardRange;
class CardSelectionTable;
class QPushButton;

namespace Ui {
class CardSelectionDialog;
}

// The grid of 52 cards for one card field, with Back and Next to step through a row of
// fields (flop, turn, river) without closing.
//
// The dialog works on the CardRange objects themselves: stepping writes the marks into the
// field left, OK writes them into the current field, Cancel restores every field from the
// copies taken at opening. Cards of every other field given to it are blocked in the grid.
//
// Buttons follow reactToSelectionChange; a field whose "stronglyDisabled" property is set
// is never stepped to. The title is the current field's selectionTitle() ("Select Flop
// Cards"); callers with a single field may set their own ("Select Player1 Cards").
//
// Setting: "optionmenu/unselectCardWithRightButton" (bool, default true), read here and
// written by the check box.
class CardSelectionDialog : public QDialog {
    Q_OBJECT

public:
    // `current`: the field to edit. `row`: the fields stepped through by Back and Next, in
    // order, containing `current`; empty for a field that stands alone (dead cards, a hand
    // of two cards). `further`: other fields whose cards are blocked (up to two).
    CardSelectionDialog(CardRange* current, const std::vector<CardRange*>& row,
                        const std::vector<CardRange*>& further, QWidget* parent = nullptr);
    ~CardSelectionDialog() override;

    // Cards the grid refuses besides those of the other fields, e.g. the board when a hand
    // is picked. Text of two-character cards.
    void setForbiddenCards(const QString& cards);

    CardRange* currentRange() const { return current; }
    CardSelectionTable* table() const;
    QPushButton* backButton() const;
    QPushButton* nextButton() const;
    QPushButton* okButton() const;
    QPushButton* randomButton() const;

public slots:
    void goToPreviousRange();
    void goToNextRange();
    void reactToSelectionChange(unsigned int count);
    void unselectCheckboxToggled(bool checked);

    void accept() override;
    void reject() override;

private:
    // Sets previousRange and nextRange from the position of `current` in the row, and the
    // table's limit, marks and blocked cards from the fields.
    void enterCurrent();
    void writeBack();
    CardRange* rangeAfter(const CardRange* range) const;

    Ui::CardSelectionDialog* ui;
    CardRange* current;
    CardRange* previousRange = nullptr;
    CardRange* nextRange = nullptr;
    std::vector<CardRange*> row;
    std::vector<CardRange*> further;
    // Every field involved, with its cards at opening, for Cancel.
    std::vector<std::pair<CardRange*, QString>> originals;
};
