#include "tabs/OnePlayerBoardHitEvaluationTable.h"

#include "handstrength/HandGroup.h"
#include "tabs/BoardHitsBar.h"

OnePlayerBoardHitEvaluationTable::OnePlayerBoardHitEvaluationTable(QWidget* parent)
    : BoardHitEvaluationTable(parent) {}

int OnePlayerBoardHitEvaluationTable::barStyle() const {
    return static_cast<int>(BoardHitsBar::Style::Hits);
}

std::vector<QWidget*> OnePlayerBoardHitEvaluationTable::makeHeaderCells(QWidget* parent) {
    auto* header = new BoardHitsBar(BoardHitsBar::Style::Hits,
                                    QStringList{QStringLiteral("Hit % (Combinations)")}, parent);
    header->setObjectName(QStringLiteral("numbersHeader"));
    return {header};
}

bool OnePlayerBoardHitEvaluationTable::rowHasHits(const HandGroup& group, std::size_t,
                                                  std::size_t index) const {
    return group.rows[index].combinations1 > 0;
}

std::vector<BoardHitEvaluationTable::BarValues>
OnePlayerBoardHitEvaluationTable::rowValues(const HandGroup& group, std::size_t, std::size_t index,
                                            unsigned int depth) const {
    const HandGroupRow& row = group.rows[index];
    BarValues values;
    values.fraction1 = row.percentage1;
    values.count = static_cast<int>(row.combinations1);
    values.color = shade(shownPlayer == 2 ? player2Color : player1Color, depth);
    return {values};
}
