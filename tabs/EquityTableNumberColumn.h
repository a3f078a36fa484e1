#pragma once

#include <QTableWidgetItem>

// Cell of the number columns of the equity table ("Wins" ... "% of Range"). Sorts by the
// number the text shows: a percent text ("57.31 %") without its " %", a count ("6") as it
// is.
class EquityTableNumberColumn : public QTableWidgetItem {
public:
    explicit EquityTableNumberColumn(const QString& text);

    // The number of a cell text as the sort sees it; 0 for text that is no number.
    static float numberOfText(const QString& text);

    bool operator<(const QTableWidgetItem& other) const override;
};
