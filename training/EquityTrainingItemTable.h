#pragma once

#include "training/EquityTrainingItemResults.h"

#include <QTableWidget>

#include <vector>

// The solved items of a training, one row each: the hand, the board, and per villain range
// the guess, the true equity and the absolute difference. Read only.
class EquityTrainingItemTable : public QTableWidget {
    Q_OBJECT

public:
    explicit EquityTrainingItemTable(QWidget* parent = nullptr);

    // Replaces the rows; the columns of villain's second range show when `twoRanges`.
    void showItems(const std::vector<EquityTrainingItemResults>& items, bool twoRanges);
};
