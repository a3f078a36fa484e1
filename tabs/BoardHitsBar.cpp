#include "tabs/BoardHitsBar.h"

#include <QFontMetrics>
#include <QPainter>
#include <QPainterPath>
#include <QResizeEvent>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

// Space between the number columns and the track, and the track's height.
constexpr int gapBeforeBar = 12;
constexpr int trackHeight = 12;

const QColor trackColor(0xe9, 0xed, 0xf0);
const QColor splitColor(0xf2, 0xb1, 0x34);
const QColor lossColor(0xd9, 0x6a, 0x5f);
const QColor numberColor(0x2a, 0x2f, 0x36);
const QColor headerColor(0x5b, 0x64, 0x70);

float widthFraction(float fraction) {
    return BoardHitsBar::hasValue(fraction) ? std::min(std::max(fraction, 0.0f), 1.0f) : 0.0f;
}

} // namespace

BoardHitsBar::BoardHitsBar(Style style, float fraction1, float fraction2, float fraction3,
                           int count, QWidget* parent)
    : QWidget(parent), barStyle(style), fractions{{fraction1, fraction2, fraction3}},
      combinations(count), barColor(0x17, 0x80, 0x8f) {
    build();
}

BoardHitsBar::BoardHitsBar(Style style, const QStringList& headers, QWidget* parent)
    : QWidget(parent), barStyle(style), header(true), headerTexts(headers) {
    build();
}

void BoardHitsBar::build() {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    if (header)
        return;
    bar = new QWidget(this);
    bar->setObjectName(QStringLiteral("bar"));
    // The parent paints the bar at the child's place, with rounded ends.
    bar->setAttribute(Qt::WA_TransparentForMouseEvents);
    bar->setAttribute(Qt::WA_NoSystemBackground);
    UpdateBarSize();
}

void BoardHitsBar::setValues(float fraction1, float fraction2, float fraction3, int count) {
    const std::array<float, 3> next{{fraction1, fraction2, fraction3}};
    // NaN never equals itself: compare bit for bit through the texts' inputs.
    if (std::memcmp(next.data(), fractions.data(), sizeof(next)) == 0 && count == combinations)
        return;
    fractions = next;
    combinations = count;
    UpdateBarSize();
    update();
}

void BoardHitsBar::setBarColor(const QColor& color) {
    if (color == barColor)
        return;
    barColor = color;
    update();
}

void BoardHitsBar::setHeaderColors(const QList<QColor>& colors) {
    headerColors = colors;
    update();
}

bool BoardHitsBar::hasValue(float fraction) {
    return !std::isnan(fraction) && fraction > -1.0f;
}

QString BoardHitsBar::percentText(float fraction) {
    if (!hasValue(fraction))
        return QString();
    return QString::number(static_cast<double>(fraction) * 100.0, 'f', 2) + QStringLiteral(" %");
}

int BoardHitsBar::numberColumnWidth(Style style, const QFontMetrics& metrics) {
    const QString sample =
        style == Style::Hits ? QStringLiteral("100.00 % (9999)") : QStringLiteral("100.00 %");
    return metrics.horizontalAdvance(sample) + 10;
}

QStringList BoardHitsBar::texts() const {
    if (header)
        return headerTexts;
    QStringList result;
    if (barStyle == Style::Hits) {
        QString text = percentText(fractions[0]);
        if (combinations >= 0)
            text += (text.isEmpty() ? QStringLiteral("(") : QStringLiteral(" (")) +
                    QString::number(combinations) + QStringLiteral(")");
        result << text;
    } else {
        for (float fraction : fractions)
            result << percentText(fraction);
    }
    return result;
}

int BoardHitsBar::barX() const {
    return numberColumns(barStyle) * numberColumnWidth(barStyle, fontMetrics()) + gapBeforeBar;
}

int BoardHitsBar::barAvailableWidth() const {
    return std::max(width() - (barX() + 10) + 1, 0);
}

QRect BoardHitsBar::trackRect() const {
    const int h = std::min(trackHeight, std::max(height() - 6, 4));
    return QRect(barX(), (height() - h) / 2, barAvailableWidth(), h);
}

void BoardHitsBar::UpdateBarSize() {
    if (bar == nullptr)
        return;
    const QRect track = trackRect();
    const int width =
        static_cast<int>(static_cast<float>(barAvailableWidth()) * widthFraction(fractions[0]));
    bar->setFixedWidth(width);
    bar->setFixedHeight(track.height());
    bar->move(track.topLeft());
    bar->setVisible(width > 0);
}

void BoardHitsBar::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    UpdateBarSize();
}

QSize BoardHitsBar::sizeHint() const {
    const QFontMetrics metrics = fontMetrics();
    return QSize(barX() + 160, std::max(metrics.height() + 8, 22));
}

QSize BoardHitsBar::minimumSizeHint() const {
    const QFontMetrics metrics = fontMetrics();
    return QSize(barX() + 40, std::max(metrics.height() + 8, 22));
}

void BoardHitsBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QFontMetrics metrics = fontMetrics();
    const int columnWidth = numberColumnWidth(barStyle, metrics);
    const int columns = numberColumns(barStyle);
    const QStringList shown = texts();

    if (header) {
        QFont bold = font();
        bold.setBold(true);
        painter.setFont(bold);
        const QFontMetrics boldMetrics(bold);
        for (int i = 0; i < shown.size(); ++i) {
            painter.setPen(i < headerColors.size() ? headerColors[i] : headerColor);
            const QString& text = shown[i];
            if (i < columns) {
                // A caption wider than its column starts where the column starts.
                const QRect cell(i * columnWidth, 0, columnWidth - 4, height());
                const bool fits = boldMetrics.horizontalAdvance(text) <= cell.width();
                painter.drawText(cell.adjusted(0, 0, fits ? 0 : 400, 0),
                                 Qt::AlignVCenter | (fits ? Qt::AlignRight : Qt::AlignLeft), text);
            } else {
                painter.drawText(QRect(barX(), 0, std::max(width() - barX(), 0), height()),
                                 Qt::AlignVCenter | Qt::AlignLeft, text);
            }
        }
        return;
    }

    painter.setPen(numberColor);
    for (int i = 0; i < shown.size() && i < columns; ++i) {
        const QRect cell(i * columnWidth, 0, columnWidth - 4, height());
        painter.drawText(cell, Qt::AlignVCenter | Qt::AlignRight, shown[i]);
    }

    const QRect track = trackRect();
    if (track.width() <= 0)
        return;
    const qreal radius = track.height() / 2.0;
    painter.setPen(Qt::NoPen);
    painter.setBrush(trackColor);
    painter.drawRoundedRect(track, radius, radius);

    QPainterPath clip;
    clip.addRoundedRect(track, radius, radius);
    painter.setClipPath(clip);
    if (barStyle == Style::WinSplitLoss) {
        // Split and loss follow the win bar inside the track.
        const int available = barAvailableWidth();
        const int winEnd = track.left() + (bar->isVisible() ? bar->width() : 0);
        const int splitWidth =
            static_cast<int>(static_cast<float>(available) * widthFraction(fractions[1]));
        // The loss segment ends where the three shares end, so that rounding leaves no gap.
        const float all = std::min(widthFraction(fractions[0]) + widthFraction(fractions[1]) +
                                       widthFraction(fractions[2]),
                                   1.0f);
        const int lossEnd =
            track.left() + static_cast<int>(static_cast<float>(available) * all + 0.5f);
        const int lossWidth = hasValue(fractions[2]) && fractions[2] > 0.0f
                                  ? std::max(lossEnd - (winEnd + splitWidth), 0)
                                  : 0;
        painter.setBrush(splitColor);
        painter.drawRect(QRect(winEnd, track.top(), splitWidth, track.height()));
        painter.setBrush(lossColor);
        painter.drawRect(QRect(winEnd + splitWidth, track.top(), lossWidth, track.height()));
    }
    if (bar->isVisible()) {
        painter.setBrush(barColor);
        painter.drawRect(bar->geometry());
    }
}
