#include "tabs/TwoPlayerBoardHitEvaluationTable.h"

#include "handstrength/HandGroup.h"
#include "tabs/BoardHitsBar.h"

TwoPlayerBoardHitEvaluationTable::TwoPlayerBoardHitEvaluationTable(QWidget* parent)
    : BoardHitEvaluationTable(parent) {}

void TwoPlayerBoardHitEvaluationTable::setPlayer2Total(unsigned int total, bool flat) {
    player2Total = total;
    absolute = flat;
}

int TwoPlayerBoardHitEvaluationTable::barStyle() const {
    return static_cast<int>(BoardHitsBar::Style::Hits);
}

std::vector<QWidget*> TwoPlayerBoardHitEvaluationTable::makeHeaderCells(QWidget* parent) {
    auto* header1 = new BoardHitsBar(BoardHitsBar::Style::Hits,
                                     QStringList{QStringLiteral("Hit % Player 1")}, parent);
    header1->setObjectName(QStringLiteral("player1Header"));
    header1->setHeaderColors({player1Color});
    auto* header2 = new BoardHitsBar(BoardHitsBar::Style::Hits,
                                     QStringList{QStringLiteral("Hit % Player 2")}, parent);
    header2->setObjectName(QStringLiteral("player2Header"));
    header2->setHeaderColors({player2Color});
    return {header1, header2};
}

bool TwoPlayerBoardHitEvaluationTable::rowHasHits(const HandGroup& group, std::size_t,
                                                  std::size_t index) const {
    const HandGroupRow& row = group.rows[index];
    return row.combinations1 > 0 || row.combinations2 > 0;
}

std::vector<BoardHitEvaluationTable::BarValues>
TwoPlayerBoardHitEvaluationTable::rowValues(const HandGroup& group, std::size_t, std::size_t index,
                                            unsigned int depth) const {
    const HandGroupRow& row = group.rows[index];
    BarValues first;
    first.fraction1 = row.percentage1;
    first.count = static_cast<int>(row.combinations1);
    first.color = shade(player1Color, depth);
    BarValues second;
    second.fraction1 = row.percentage2;
    if (absolute || group.parentOf(index) == HandGroupRow::noParent)
        second.fraction1 =
            row.combinations2 == 0 || player2Total == 0
                ? 0.0f
                : static_cast<float>(row.combinations2) / static_cast<float>(player2Total);
    second.count = static_cast<int>(row.combinations2);
    second.color = shade(player2Color, depth);
    return {first, second};
}
