#pragma once

#include "tabs/BoardHitEvaluationTable.h"

// The table of the "Two Player Board Hits" tab: each row with the hit percentage and the
// combinations of player 1 and of player 2, side by side, each bar in its player's colour.
class TwoPlayerBoardHitEvaluationTable : public BoardHitEvaluationTable {
    Q_OBJECT

public:
    explicit TwoPlayerBoardHitEvaluationTable(QWidget* parent = nullptr);

    // The evaluator reports one total, the combinations of the first range, and the schema
    // divides both players' root shares by it. Player 2's share of all its combinations
    // needs its own count: the combinations of range 2 that board and dead cards leave.
    // Applies to root rows, and to every row when the percentages are absolute (`flat`).
    void setPlayer2Total(unsigned int total, bool flat);

protected:
    int numberColumnCount() const override { return 2; }
    int barStyle() const override;
    std::vector<QWidget*> makeHeaderCells(QWidget* parent) override;
    bool rowHasHits(const HandGroup& group, std::size_t groupIndex,
                    std::size_t index) const override;
    std::vector<BarValues> rowValues(const HandGroup& group, std::size_t groupIndex,
                                     std::size_t index, unsigned int depth) const override;

private:
    unsigned int player2Total = 0;
    bool absolute = false;
};
