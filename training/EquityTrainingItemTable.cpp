#include "training/EquityTrainingItemTable.h"

#include "utils/ui/EquityColor.h"

#include <QHeaderView>
#include <QStringList>

namespace {

// An equity or difference in percentage points as a percent text ("37.50 %").
QString pointsText(double points) {
    return equityPercentText(static_cast<float>(points / 100.0));
}

} // namespace

EquityTrainingItemTable::EquityTrainingItemTable(QWidget* parent) : QTableWidget(parent) {
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setAlternatingRowColors(true);
    verticalHeader()->setVisible(false);
    showItems({}, false);
}

void EquityTrainingItemTable::showItems(const std::vector<EquityTrainingItemResults>& items,
                                        bool twoRanges) {
    QStringList headers = {
        QStringLiteral("Hero's Hand"), QStringLiteral("Board"), QStringLiteral("Guess vs.\nRange1"),
        QStringLiteral("Correct vs.\nRange1"), QStringLiteral("Absolute\nDifference")};
    if (twoRanges)
        headers << QStringLiteral("Guess vs.\nRange2") << QStringLiteral("Correct vs.\nRange2")
                << QStringLiteral("Absolute\nDifference");
    setColumnCount(headers.size());
    setHorizontalHeaderLabels(headers);
    setRowCount(static_cast<int>(items.size()));
    int row = 0;
    for (const EquityTrainingItemResults& item : items) {
        QStringList cells = {QString::fromStdString(item.heroHand),
                             QString::fromStdString(item.board), pointsText(item.guess1),
                             pointsText(item.correct1), pointsText(item.absoluteDifference1)};
        if (twoRanges)
            cells << pointsText(item.guess2) << pointsText(item.correct2)
                  << pointsText(item.absoluteDifference2);
        for (int column = 0; column < cells.size(); ++column) {
            auto* cell = new QTableWidgetItem(cells[column]);
            cell->setTextAlignment(column < 2 ? Qt::AlignLeft | Qt::AlignVCenter
                                              : Qt::AlignRight | Qt::AlignVCenter);
            setItem(row, column, cell);
        }
        ++row;
    }
    horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
}
