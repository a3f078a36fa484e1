#include "tabs/BoardHitsTab.h"

#include "handstrength/HandGroupSchema.h"
#include "tabs/OnePlayerBoardHitEvaluationTable.h"

#include "ui_BoardHitsTab.h"

BoardHitsTab::BoardHitsTab(QWidget* parent) : BoardEvaluationTab(parent), ui(new Ui::BoardHitsTab) {
    ui->setupUi(this);
    setWhatsThis(QStringLiteral("In this tab, you get an overview of the different types of "
                                "hands Player 1 or Player 2 have hit on the board."));
    rowsTable = new OnePlayerBoardHitEvaluationTable(this);
    rowsTable->setShowsTicks(true);
    ui->tableLayout->addWidget(rowsTable);
    setControls(ui->rangeSelection, ui->schemaSelection, ui->customSumSelection,
                ui->absolutePercentages, rowsTable);
}

BoardHitsTab::~BoardHitsTab() {
    delete ui;
}

void BoardHitsTab::startCalculation(const std::string& player1Range,
                                    const std::string& player2Range, const std::string& board,
                                    const std::string& deadCards, bool flat) {
    const int player = selectedPlayer();
    rowsTable->setPlayer(player);
    mutableSchema()->evaluateOnePlayer(player == 2 ? player2Range : player1Range, board, deadCards,
                                       flat);
}
