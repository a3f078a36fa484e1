#pragma once

#include <QTableWidgetItem>

// Cell of the "Hand" column of the equity table. Sorts by poker order instead of by text:
// ascending means from the weakest first rank up ("22" ... "AA"), then by the second rank.
// Class texts of equal ranks put the pair before a text with a marker and "o" before "s";
// concrete hands ("AhKd") of equal ranks are told apart by their suits in the order d, h,
// s, c.
class EquityTableHandColumn : public QTableWidgetItem {
public:
    explicit EquityTableHandColumn(const QString& text);

    bool operator<(const QTableWidgetItem& other) const override;
};
