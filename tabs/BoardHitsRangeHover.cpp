#include "tabs/BoardHitsRangeHover.h"

#include "Range/HandRangeElementConversion.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <array>

namespace {

constexpr int cell = 20;
constexpr int margin = 10;
constexpr int headerHeight = 60;
const char* const valueCharacters = "AKQJT98765432"; // matrix order, ace first

} // namespace

BoardHitsRangeHover::BoardHitsRangeHover(const QString& title, const Range::HandRange& range,
                                         const QColor& color, QWidget* parent)
    : QWidget(parent, Qt::ToolTip | Qt::FramelessWindowHint), hoverTitle(title), hoverRange(range),
      fillColor(color) {
    setObjectName(QStringLiteral("BoardHitsRangeHover"));
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_TranslucentBackground);
    resize(sizeHint());
}

QSize BoardHitsRangeHover::sizeHint() const {
    return QSize(13 * cell + 2 * margin, 13 * cell + 2 * margin + headerHeight);
}

QPoint BoardHitsRangeHover::placement(const QPoint& pointer, const QSize& size,
                                      const QRect& screen) {
    int x = pointer.x() + 21;
    int y = pointer.y() - size.height() - 5;
    if (x + size.width() > screen.right() + 1)
        x -= size.width() + 21;
    if (y < screen.top()) {
        const bool roomBelow = pointer.y() + 16 + size.height() <= screen.bottom() + 1;
        y += roomBelow ? size.height() + 21 : size.height() / 2 + 5;
    }
    x = std::max(std::min(x, screen.right() + 1 - size.width()), screen.left());
    y = std::max(std::min(y, screen.bottom() + 1 - size.height()), screen.top());
    return QPoint(x, y);
}

void BoardHitsRangeHover::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF frame = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setPen(QColor(0xa0, 0xa0, 0xa0));
    painter.setBrush(QColor(0xfd, 0xfd, 0xfd));
    painter.drawRoundedRect(frame, 9, 9);

    // Header: the row's name, its combinations and their share of all 1326 hands.
    const unsigned int combinations = hoverRange.combinationCount();
    QFont bold = font();
    bold.setBold(true);
    painter.setFont(bold);
    painter.setPen(QColor(0x2a, 0x2f, 0x36));
    painter.drawText(QRect(margin, margin - 2, width() - 2 * margin, 20),
                     Qt::AlignLeft | Qt::AlignVCenter,
                     fontMetrics().elidedText(hoverTitle, Qt::ElideRight, width() - 2 * margin));
    painter.setFont(font());
    painter.setPen(QColor(0x5b, 0x64, 0x70));
    painter.drawText(QRect(margin, margin + 18, width() - 2 * margin, 16),
                     Qt::AlignLeft | Qt::AlignVCenter,
                     QStringLiteral("Range Combinations: %1").arg(combinations));
    painter.drawText(
        QRect(margin, margin + 34, width() - 2 * margin, 16), Qt::AlignLeft | Qt::AlignVCenter,
        QStringLiteral("Range%: %1 %").arg(QString::number(combinations * 100.0 / 1326.0, 'f', 2)));

    // The matrix: pairs on the diagonal, suited above it, offsuit below.
    QFont small = font();
    small.setPointSizeF(std::max(small.pointSizeF() * 0.72, 6.0));
    painter.setFont(small);
    const int top = margin + headerHeight;
    std::array<std::array<float, 13>, 13> share{};
    for (const Range::Element& element : hoverRange) {
        if (element.suits == 0)
            continue;
        int first = -1, second = -1;
        for (int bit = 12, position = 0; bit >= 0; --bit, ++position) {
            if (element.values & (1u << bit)) {
                if (first < 0)
                    first = position;
                else
                    second = position;
            }
        }
        if (first < 0)
            continue;
        if (second < 0)
            second = first;
        const float part = static_cast<float>(Range::suitBitCount(element.suits)) /
                           static_cast<float>(Range::suitBitCount(element.possibleSuits));
        if (element.suitClass == Range::Offsuit)
            share[second][first] = part;
        else
            share[first][second] = part;
    }
    for (int row = 0; row < 13; ++row) {
        for (int column = 0; column < 13; ++column) {
            const QRectF box(margin + column * cell, top + row * cell, cell - 1, cell - 1);
            painter.setPen(Qt::NoPen);
            painter.setBrush(row == column ? QColor(0xee, 0xf1, 0xf4) : QColor(0xf7, 0xf8, 0xfa));
            painter.drawRect(box);
            const float part = share[row][column];
            if (part > 0.0f) {
                // A partly held class fills from the bottom by its share.
                QRectF filled = box;
                filled.setTop(box.bottom() - box.height() * static_cast<qreal>(part));
                painter.setBrush(fillColor);
                painter.drawRect(filled);
            }
            QString name;
            name += QLatin1Char(valueCharacters[std::min(row, column)]);
            name += QLatin1Char(valueCharacters[std::max(row, column)]);
            if (row < column)
                name += QLatin1Char('s');
            else if (row > column)
                name += QLatin1Char('o');
            painter.setPen(part >= 0.5f ? QColor(Qt::white) : QColor(0x8a, 0x93, 0x9b));
            painter.drawText(box, Qt::AlignCenter, name);
        }
    }
}
