#pragma once

#include "tabs/BoardEvaluationTab.h"

namespace Ui {
class BoardHitsTab;
}
class OnePlayerBoardHitEvaluationTable;

// The "Board Hits" tab: how the range of the player chosen in "Range:" hits the board, row
// by row of the schema, without the other player's card removal. Rows can be ticked into the
// custom sum.
class BoardHitsTab : public BoardEvaluationTab {
    Q_OBJECT

public:
    explicit BoardHitsTab(QWidget* parent = nullptr);
    ~BoardHitsTab() override;

protected:
    void startCalculation(const std::string& player1Range, const std::string& player2Range,
                          const std::string& board, const std::string& deadCards,
                          bool flat) override;

private:
    Ui::BoardHitsTab* ui;
    OnePlayerBoardHitEvaluationTable* rowsTable;
};
