#pragma once

#include "tabs/BoardEvaluationTab.h"

#include <optional>

namespace Ui {
class WinEvaluationTab;
}
class WinEvaluationTable;

// The "Win Evaluation" tab: for each hand strength of the schema, how often a hand of the
// player chosen in "Range:" with that strength on the board as given wins, splits and loses
// against the other player's range until showdown (run to the river from a flop or turn;
// decided at once on a river).
//
// The showdowns run in the background, one calculation per schema group; the rows and the
// hands behind them come from a hit evaluation of the chosen range made at once, and each
// group's numbers appear when its result arrives.
class WinEvaluationTab : public BoardEvaluationTab {
    Q_OBJECT

public:
    explicit WinEvaluationTab(QWidget* parent = nullptr);
    ~WinEvaluationTab() override;

    // Whether results are still missing.
    bool isCalculating() const;
    // The result of each schema group of the last evaluation; empty while missing.
    const std::vector<std::optional<DetailWinEvaluations>>& results() const { return groupResults; }

protected:
    void startCalculation(const std::string& player1Range, const std::string& player2Range,
                          const std::string& board, const std::string& deadCards,
                          bool flat) override;
    void rebuildTable() override;
    void schemaReplaced() override;
    void takeWinEvaluation(const DetailWinEvaluations& result) override;

private:
    Ui::WinEvaluationTab* ui;
    WinEvaluationTable* rowsTable;
    std::vector<std::optional<DetailWinEvaluations>> groupResults;
};
