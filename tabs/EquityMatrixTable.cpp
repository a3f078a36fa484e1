#include "tabs/EquityMatrixTable.h"

#include "Range/CardConversion.h"
#include "utils/ui/EquityColor.h"

#include <QFontMetrics>
#include <QLinearGradient>
#include <QPainter>

#include <cmath>
#include <limits>
#include <stdexcept>

namespace {

const QColor gridColor(255, 255, 255);
const QColor emptyTop(32, 32, 32);
const QColor emptyBottom(64, 64, 64);
const QColor emptyText(104, 104, 104);
const QColor filledText(0, 0, 0);

// Rank index of a value character: 0 the ace ... 12 the deuce; -1 for anything else.
int rankIndex(char value) {
    if (value == 'X' || value == 'x') {
        return -1;
    }
    try {
        return valueFromChar(value);
    } catch (const std::runtime_error&) {
        return -1;
    }
}

// Largest font whose "100%" fits the width of a cell and whose two lines fit its height.
QFont fittedFont(const QFont& base) {
    QFont font(base);
    font.setBold(true);
    for (int points = 14; points > 4; --points) {
        font.setPointSize(points);
        const QFontMetrics metrics(font);
        if (metrics.horizontalAdvance(QStringLiteral("100%")) <= EquityMatrixTable::cellSize - 2 &&
            metrics.height() * 2 <= EquityMatrixTable::cellSize) {
            return font;
        }
    }
    font.setPointSize(4);
    return font;
}

} // namespace

EquityMatrixTable::EquityMatrixTable(QWidget* parent)
    : QLabel(parent), picture(pictureSize, pictureSize), font(fittedFont(QLabel::font())) {
    values.fill(std::numeric_limits<float>::quiet_NaN());
    setFixedSize(pictureSize, pictureSize);
    setAlignment(Qt::AlignLeft | Qt::AlignTop);
    SetRange(DisplayedHands());
}

float EquityMatrixTable::cellValue(int row, int column) const {
    if (row < 0 || row >= cellCount || column < 0 || column >= cellCount) {
        return std::numeric_limits<float>::quiet_NaN();
    }
    return values[static_cast<std::size_t>(row * cellCount + column)];
}

QString EquityMatrixTable::cellHand(int row, int column) {
    if (row < 0 || row >= cellCount || column < 0 || column >= cellCount) {
        return QString();
    }
    const QChar high = QChar::fromLatin1(charFromValue(std::min(row, column)));
    const QChar low = QChar::fromLatin1(charFromValue(std::max(row, column)));
    if (row == column) {
        return QString(high) + low;
    }
    return QString(high) + low + (row < column ? QStringLiteral("s") : QStringLiteral("o"));
}

bool EquityMatrixTable::cellOfKey(const std::string& key, int& row, int& column) {
    if (key.size() != 3) {
        return false;
    }
    const int first = rankIndex(key[0]);
    const int second = rankIndex(key[1]);
    if (first < 0 || second < 0) {
        return false;
    }
    // Column from the first character, row from the second: "KAS" lands above the
    // diagonal, "AKO" below it.
    const bool valid = (key[2] == 'P' && first == second) || (key[2] == 'S' && first > second) ||
                       (key[2] == 'O' && first < second);
    if (!valid) {
        return false;
    }
    column = first;
    row = second;
    return true;
}

void EquityMatrixTable::SetRange(DisplayedHands hands) {
    values.fill(std::numeric_limits<float>::quiet_NaN());
    picture.fill(gridColor);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.setFont(font);
    for (int row = 0; row < cellCount; ++row) {
        for (int column = 0; column < cellCount; ++column) {
            paintCell(painter, row, column);
        }
    }
    for (const auto& entry : hands) {
        int row = 0;
        int column = 0;
        if (!cellOfKey(entry.first, row, column)) {
            continue;
        }
        values[static_cast<std::size_t>(row * cellCount + column)] = entry.second.equity;
        paintCell(painter, row, column);
    }
    painter.end();
    setPixmap(picture);
}

void EquityMatrixTable::paintCell(QPainter& painter, int row, int column) {
    const QRect cell(cellOffset + column * cellPitch, cellOffset + row * cellPitch, cellSize,
                     cellSize);
    const float value = values[static_cast<std::size_t>(row * cellCount + column)];
    const QString hand = cellHand(row, column);
    if (std::isnan(value)) {
        QLinearGradient gradient(cell.topLeft(), cell.bottomLeft());
        gradient.setColorAt(0.0, emptyTop);
        gradient.setColorAt(1.0, emptyBottom);
        painter.fillRect(cell, gradient);
        painter.setPen(emptyText);
        painter.drawText(cell, Qt::AlignCenter, hand);
        return;
    }
    painter.fillRect(cell, colorForEquity(value));
    painter.setPen(filledText);
    const QString percent = QString::number(static_cast<int>(std::lround(value * 100.0f))) + '%';
    const QRect upper(cell.left(), cell.top() + 1, cell.width(), cell.height() / 2);
    const QRect lower(cell.left(), cell.top() + cell.height() / 2, cell.width(),
                      cell.height() - cell.height() / 2 - 1);
    painter.drawText(upper, Qt::AlignHCenter | Qt::AlignVCenter, hand);
    painter.drawText(lower, Qt::AlignHCenter | Qt::AlignVCenter, percent);
}
