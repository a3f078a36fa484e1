#include "tabs/TwoPlayerBoardHitsTab.h"

#include "Range/HandRangeElementConversion.h"
#include "Range/HandRangeStringManipulator.h"
#include "handstrength/HandGroupSchema.h"
#include "tabs/TwoPlayerBoardHitEvaluationTable.h"

#include "ui_TwoPlayerBoardHitsTab.h"

#include <QMenu>

TwoPlayerBoardHitsTab::TwoPlayerBoardHitsTab(QWidget* parent)
    : BoardEvaluationTab(parent), ui(new Ui::TwoPlayerBoardHitsTab) {
    ui->setupUi(this);
    setWhatsThis(QStringLiteral(
        "Similarly to the \"Board Hits\"-tab you get an overview of the different hand "
        "strengths of the players. However, in this tab card removal effects of both of the "
        "players' ranges are taken into account."));
    rowsTable = new TwoPlayerBoardHitEvaluationTable(this);
    rowsTable->setShowsTicks(true);
    ui->tableLayout->addWidget(rowsTable);
    setControls(nullptr, ui->schemaSelection, ui->customSumSelection, ui->absolutePercentages,
                rowsTable);
}

TwoPlayerBoardHitsTab::~TwoPlayerBoardHitsTab() {
    delete ui;
}

void TwoPlayerBoardHitsTab::startCalculation(const std::string& player1Range,
                                             const std::string& player2Range,
                                             const std::string& board, const std::string& deadCards,
                                             bool flat) {
    mutableSchema()->evaluateTwoPlayers(player1Range, player2Range, board, deadCards, flat);
    unsigned int total2 = 0;
    if (!player1Range.empty() && !player2Range.empty() && board.size() > 4) {
        Range::HandRange range2;
        Range::HandRangeStringManipulator(range2).set(player2Range);
        total2 = Range::availableCombinations(range2, Range::cardsOfText(board + deadCards));
    }
    rowsTable->setPlayer2Total(total2, flat);
}

std::vector<Range::HandRange> TwoPlayerBoardHitsTab::hoverRanges(const HandStrengthKey& key) const {
    return {rangeOfRow(key, 1), rangeOfRow(key, 2)};
}

QMenu* TwoPlayerBoardHitsTab::createContextMenu(const HandStrengthKey& key, QWidget* parent) {
    groupRange1 = rangeOfRow(key, 1);
    groupRange2 = rangeOfRow(key, 2);
    auto* menu = new QMenu(parent);
    menu->addAction(QStringLiteral("Copy Player1's Hand Strength Range to &Clipboard"), this,
                    &BoardEvaluationTab::onCopyRange1ToClipboardAction);
    menu->addAction(QStringLiteral("Copy Player2's Hand Strength Range to &Clipboard"), this,
                    &BoardEvaluationTab::onCopyRange2ToClipboardAction);
    menu->addAction(QStringLiteral("Overwrite Current Player1's Range/Group with Player1's "
                                   "Hand Strength Range"),
                    this, &BoardEvaluationTab::onUseRange1AsPlayer1RangeAction);
    menu->addAction(QStringLiteral("Add Player1's Hand Strength Range as New Group"), this,
                    &BoardEvaluationTab::onUseRange1AsNewPlayer1GroupAction);
    menu->addAction(QStringLiteral("Overwrite Current Player2's Range/Group with Player2's "
                                   "Hand Strength Range"),
                    this, &BoardEvaluationTab::onUseRange2AsPlayer2RangeAction);
    menu->addAction(QStringLiteral("Add Player2's Hand Strength Range as New Group"), this,
                    &BoardEvaluationTab::onUseRange2AsNewPlayer2GroupAction);
    return menu;
}
