#include "tabs/WinEvaluationTab.h"

#include "handstrength/HandGroupSchema.h"
#include "tabs/WinEvaluationTable.h"

#include "ui_WinEvaluationTab.h"

WinEvaluationTab::WinEvaluationTab(QWidget* parent)
    : BoardEvaluationTab(parent), ui(new Ui::WinEvaluationTab) {
    ui->setupUi(this);
    setWhatsThis(QStringLiteral(
        "In this tab, you get an overview of how often a specific hand will win/split/lose "
        "until showdown. For example, if only flop is given, \"One Pair\" points out how often "
        "a specific player will win until showdown , if he has got a pair on the flop."));
    rowsTable = new WinEvaluationTable(this);
    ui->tableLayout->addWidget(rowsTable);
    setControls(ui->rangeSelection, ui->schemaSelection, nullptr, nullptr, rowsTable);
}

WinEvaluationTab::~WinEvaluationTab() {
    delete ui;
}

bool WinEvaluationTab::isCalculating() const {
    return schema() != nullptr && schema()->runningWinEvaluations() > 0;
}

void WinEvaluationTab::startCalculation(const std::string& player1Range,
                                        const std::string& player2Range, const std::string& board,
                                        const std::string& deadCards, bool) {
    const bool swapped = selectedPlayer() == 2;
    const std::string& first = swapped ? player2Range : player1Range;
    const std::string& second = swapped ? player1Range : player2Range;
    HandGroupSchema* schema = mutableSchema();
    // The hit evaluation decides which rows have combinations and gives the hands behind
    // them; the showdowns follow in the background.
    schema->evaluateOnePlayer(first, board, deadCards, false);
    groupResults.assign(schema->getGroups().size(), std::nullopt);
    const bool qualifies = !first.empty() && !second.empty() && board.size() > 4;
    // Without a pool nothing can be running, and an unqualified call only stops.
    if (schema->getThreadPool() != nullptr || qualifies)
        schema->evaluateWin(first, second, board, deadCards);
}

void WinEvaluationTab::schemaReplaced() {
    groupResults.clear();
}

void WinEvaluationTab::takeWinEvaluation(const DetailWinEvaluations& result) {
    // The records come in the order of the rows of the group they were made from.
    const std::vector<HandGroup>& groups = schema()->getGroups();
    for (std::size_t g = 0; g < groups.size() && g < groupResults.size(); ++g) {
        if (groupResults[g] || groups[g].rows.size() != result.size())
            continue;
        bool same = true;
        for (std::size_t i = 0; i < result.size() && same; ++i)
            same = groups[g].rows[i].key == result[i].key;
        if (same) {
            groupResults[g] = result;
            return;
        }
    }
}

void WinEvaluationTab::rebuildTable() {
    rowsTable->setResults(groupResults);
    rowsTable->setCalculating(isCalculating());
    BoardEvaluationTab::rebuildTable();
}
