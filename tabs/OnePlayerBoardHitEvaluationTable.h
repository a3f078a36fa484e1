#pragma once

#include "tabs/BoardHitEvaluationTable.h"

// The table of the "Board Hits" tab: one range, each row with its hit percentage and its
// combinations, "12.34 % (56)", and a bar in the colour of the player whose range it is.
class OnePlayerBoardHitEvaluationTable : public BoardHitEvaluationTable {
    Q_OBJECT

public:
    explicit OnePlayerBoardHitEvaluationTable(QWidget* parent = nullptr);

    // The player whose range the rows count (1 or 2): only the bar colour depends on it.
    void setPlayer(int player) { shownPlayer = player; }
    int player() const { return shownPlayer; }

protected:
    int numberColumnCount() const override { return 1; }
    int barStyle() const override;
    std::vector<QWidget*> makeHeaderCells(QWidget* parent) override;
    bool rowHasHits(const HandGroup& group, std::size_t groupIndex,
                    std::size_t index) const override;
    std::vector<BarValues> rowValues(const HandGroup& group, std::size_t groupIndex,
                                     std::size_t index, unsigned int depth) const override;

private:
    int shownPlayer = 1;
};
