#pragma once

#include <QDialog>

#include <vector>

class HandHistoryPaste;
class QTableWidget;

// Lists the hands of a paste that were read (hand number, stakes, hero's cards, board) and
// lets the player pick the one to import; the last hand is chosen when the dialog opens.
class ChooseHandDialog : public QDialog {
    Q_OBJECT

public:
    ChooseHandDialog(const HandHistoryPaste& paste, QWidget* parent = nullptr);

    // The index into `paste.hands()` of the chosen hand.
    std::size_t chosenHand() const;
    // The rows shown, in paste order: indices into `paste.hands()`.
    const std::vector<std::size_t>& shownHands() const { return rows; }
    QTableWidget* table() const { return list; }

private:
    std::vector<std::size_t> rows;
    QTableWidget* list = nullptr;
};
