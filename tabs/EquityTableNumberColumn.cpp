#include "tabs/EquityTableNumberColumn.h"

EquityTableNumberColumn::EquityTableNumberColumn(const QString& text) : QTableWidgetItem(text) {
    setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
}

float EquityTableNumberColumn::numberOfText(const QString& text) {
    const QString number = text.endsWith(QStringLiteral(" %")) ? text.left(text.size() - 2) : text;
    return number.toFloat();
}

bool EquityTableNumberColumn::operator<(const QTableWidgetItem& other) const {
    return numberOfText(other.text()) > numberOfText(text());
}
