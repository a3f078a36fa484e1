#pragma once

#include <QColor>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <array>

// One row's numbers and bar in a board evaluation table.
//
// A bar is built with three fractions (0 to 1) and a combination count. A fraction of -1 or
// below, or not a number, and a negative count stand for "no value": its text stays empty
// and it counts as 0 for the width. The numbers stand in fixed-width, right-aligned columns
// at the left (the width comes from a sample text of the widest number, so the columns of
// all rows line up); the bar fills the rest.
//
// The inner coloured bar is a child widget (object name "bar") whose fixed width is
// (available width - (x of the bar + 10) + 1) x first fraction; UpdateBarSize repeats this
// after every resize.
//
//   Hits          one column "12.34 % (56)"; the bar shows the first fraction.
//   WinSplitLoss  three columns "12.34 %" for win, split and loss; the bar shows the win
//                 fraction, followed in its track by the split and the loss shares.
//
// The header constructor draws column captions at the places of the numbers and, when a
// caption is left over, one above the bar.
class BoardHitsBar : public QWidget {
    Q_OBJECT

public:
    enum class Style { Hits, WinSplitLoss };

    BoardHitsBar(Style style, float fraction1, float fraction2, float fraction3, int count,
                 QWidget* parent = nullptr);
    BoardHitsBar(Style style, const QStringList& headers, QWidget* parent = nullptr);

    // New numbers for a bar that stays (rows are kept between evaluations).
    void setValues(float fraction1, float fraction2, float fraction3, int count);
    // The colour of the inner bar (the win colour for WinSplitLoss).
    void setBarColor(const QColor& color);
    // The colour of each column caption of a header.
    void setHeaderColors(const QList<QColor>& colors);

    Style style() const { return barStyle; }
    bool isHeader() const { return header; }
    float fraction(int index) const { return fractions.at(static_cast<std::size_t>(index)); }
    int count() const { return combinations; }
    // The texts of the number columns as shown (empty for no value); for a header its
    // captions.
    QStringList texts() const;
    QWidget* innerBar() const { return bar; }

    // Width of one number column for this style in the given font.
    static int numberColumnWidth(Style style, const QFontMetrics& metrics);
    static int numberColumns(Style style) { return style == Style::Hits ? 1 : 3; }
    // A fraction's text: two fixed decimals and " %", empty for no value.
    static QString percentText(float fraction);
    static bool hasValue(float fraction);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

public slots:
    void UpdateBarSize();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void build();
    int barX() const;
    int barAvailableWidth() const;
    QRect trackRect() const;

    Style barStyle;
    bool header = false;
    std::array<float, 3> fractions{{-1.0f, -1.0f, -1.0f}};
    int combinations = -1;
    QStringList headerTexts;
    QList<QColor> headerColors;
    QColor barColor;
    QWidget* bar = nullptr;
};
