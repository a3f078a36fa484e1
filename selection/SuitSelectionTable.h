#pragma once

#include <QLabel>
#include <QPixmap>

#include <array>

class QLinearGradient;
class QMouseEvent;
class QPainter;

// The suit pen: a 4 by 4 grid of ordered suit pairs that says which combinations of a hand
// class a click on the hand table takes.
//
// Cell index = first * 4 + second, each a position in the suit order d, h, s, c; the same
// index is the bit of the 16-bit suit-pair mask that suitsUpdated carries (bit 0 dd, bit 1
// dh, ... bit 15 cc), which is the bit order of Range::Element::suits. The four cells with
// equal suits serve suited hands, the twelve others offsuit hands, and a pair takes its six
// combinations through the twelve (each unordered pair twice).
//
// Cells are 50 by 30 pixels (two suit pictures side by side) at a pitch of 52 by 32. The
// table paints into a 406 by 126 pixmap; the widget shows its grid part, 206 by 126.
class SuitSelectionTable : public QLabel {
    Q_OBJECT

public:
    static constexpr int cellWidth = 50;
    static constexpr int cellHeight = 30;
    static constexpr int gap = 2;
    static constexpr int pixmapWidth = 406;
    static constexpr int pixmapHeight = 126;
    static constexpr int gridWidth = 4 * (cellWidth + gap) - gap;
    static constexpr int gridHeight = 4 * (cellHeight + gap) - gap;

    // How one suit pair cell is drawn (also by the suit hover).
    enum class CellLook {
        Selected,    // both suit pictures plain (on the gradient, if one is given)
        Unselected,  // blanked, pictures at opacity 0.4
        Unavailable, // pictures at opacity 0.05
        Fading,      // the faded pictures
    };

    explicit SuitSelectionTable(QWidget* parent = nullptr);

    // The 16-bit mask of the selected cells.
    unsigned short suitPen() const;
    bool isSelected(int first, int second) const;
    // Sets the cells from a 16-bit mask and emits suitsUpdated.
    void setSuitPen(unsigned short pen);

    bool unselectsWithRightButton() const { return unselectWithRightButton; }
    void setUnselectWithRightButton(bool unselect) { unselectWithRightButton = unselect; }
    // Reads "unselectCardWithRightButton" of the settings group "optionmenu" (default true).
    void readSettings();

    // The picture of a suit number 1 d, 2 h, 3 s, 4 c (":/diamond.PNG" ...; `faded` gives
    // ":/transparentDiamond.png" ...). Any other suit throws std::runtime_error
    // "Invalid suit.".
    static QPixmap suitPicture(unsigned int suit, bool faded = false);
    // Draws the cell of suit positions `first`, `second` (0..3 in the order d, h, s, c) into
    // `cell`. A non-null `gradient` is laid under selected pictures (group colours).
    static void paintCell(QPainter& painter, const QRect& cell, int first, int second,
                          CellLook look, const QLinearGradient* gradient = nullptr);
    // Where the cell of `index` lies in the pixmap.
    static QRect cellRect(int index);
    // The cell under a widget position, or -1 for a gap, the dead strip or outside.
    int cellAt(const QPoint& position) const;

signals:
    void suitsUpdated(unsigned short suitPen);

public slots:
    void selectAll();
    void selectNone();
    void selectAllHearts();
    void selectAllDiamonds();
    void selectAllClubs();
    void selectAllSpades();
    void select25Percent();
    void select50PercentA();
    void select50PercentB();
    void select75Percent();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    // `pattern` is a list of two-letter suit pairs ("dddhdshd").
    void selectPattern(const char* pattern);
    void selectSuit(char suit);
    void applyStroke(QMouseEvent* event, bool press);
    void repaintAll();
    void repaintCell(int index);

    std::array<bool, 16> selected;
    bool unselectWithRightButton = true;
    bool dragEnded = true;
    bool strokeSelects = false;
    // The stroke was started by a button that does nothing (right button without the
    // right-button option): its moves do nothing either.
    bool strokeIgnored = false;
    QPixmap picture;
};
