#pragma once

#include "tabs/EquityTableTypes.h"

#include <QFont>
#include <QLabel>
#include <QPixmap>

#include <array>
#include <string>

// The 13 x 13 matrix of the equity table tab: one cell per hand class, the ace in the top
// left corner, suited classes above the diagonal, pairs on it, offsuit classes below it.
// A class with a value is filled with the traffic-light colour of its equity and shows its
// letters and its equity in whole percent; every other cell is empty (a dark gradient).
//
// The picture is a fixed 365 x 365 pixmap: cells of 27 x 27 pixels at a pitch of 28 with
// an offset of 1, so a line of one pixel runs around and between all cells.
class EquityMatrixTable : public QLabel {
    Q_OBJECT

public:
    static constexpr int cellCount = 13;
    static constexpr int cellSize = 27;
    static constexpr int cellPitch = 28;
    static constexpr int cellOffset = 1;
    static constexpr int pictureSize = cellOffset + cellPitch * cellCount; // 365

    explicit EquityMatrixTable(QWidget* parent = nullptr);

    // Equity fraction shown in a cell, NaN for an empty cell. Row and column 0 are the
    // ace, 12 the deuce.
    float cellValue(int row, int column) const;
    // The class of a cell as the table writes it ("AKs", "AKo", "AA").
    static QString cellHand(int row, int column);
    // Row and column of a class key ("AKO", "KAS", "AAP"); false for a malformed key.
    static bool cellOfKey(const std::string& key, int& row, int& column);
    // The point size that lets "100%" fit into a cell.
    const QFont& cellFont() const { return font; }

public slots:
    // Empties all cells, then fills those of `hands`, and shows the new picture.
    void SetRange(DisplayedHands hands);

private:
    void paintCell(QPainter& painter, int row, int column);

    QPixmap picture;
    QFont font;
    std::array<float, cellCount * cellCount> values;
};
