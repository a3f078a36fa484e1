#pragma once

#include "tabs/BoardEvaluationTab.h"

namespace Ui {
class TwoPlayerBoardHitsTab;
}
class TwoPlayerBoardHitEvaluationTable;

// The "Two Player Board Hits" tab: both ranges row by row of the schema, each counted
// against the same board and dead cards. A row's context menu and hovers offer both
// players' hands of that strength.
class TwoPlayerBoardHitsTab : public BoardEvaluationTab {
    Q_OBJECT

public:
    explicit TwoPlayerBoardHitsTab(QWidget* parent = nullptr);
    ~TwoPlayerBoardHitsTab() override;

    QMenu* createContextMenu(const HandStrengthKey& key, QWidget* parent) override;

protected:
    void startCalculation(const std::string& player1Range, const std::string& player2Range,
                          const std::string& board, const std::string& deadCards,
                          bool flat) override;
    std::vector<Range::HandRange> hoverRanges(const HandStrengthKey& key) const override;

private:
    Ui::TwoPlayerBoardHitsTab* ui;
    TwoPlayerBoardHitEvaluationTable* rowsTable;
};
