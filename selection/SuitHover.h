#pragma once

#include "Range/GroupColor.h"
#include "selection/SuitSelectionTable.h"

#include <QPixmap>
#include <QWidget>

#include <array>

class QLabel;

// The tip of the hand table: for the cell under the mouse, which of its 16 suit pairs are
// selected, unavailable (not in the class or blocked by board and dead cards) or free, and in
// group mode which groups hold them. A frameless tool tip window that stays on top, with a
// translucent ground and a rounded frame; the hand table owns, fills, places and hides it.
class SuitHover : public QWidget {
    Q_OBJECT

public:
    // One suit pair cell: its look, and for a selected cell in group mode the colours of
    // the group holding it (usesColor false: no gradient).
    struct Cell {
        SuitSelectionTable::CellLook look = SuitSelectionTable::CellLook::Unavailable;
        Range::GroupColor color;
    };
    using Cells = std::array<Cell, 16>;

    explicit SuitHover(QWidget* parent = nullptr);

    // Repaints the 4 by 4 picture. Cell index = first * 4 + second in the suit order d, h,
    // s, c, as in SuitSelectionTable.
    void setCells(const Cells& cells);
    const Cells& cells() const { return shown; }
    // Group mode shows "Groups:" with `text` ("None" when no group applies); otherwise the
    // group lines stay empty and hidden.
    void setGroupText(bool groupMode, const QString& text);

    QLabel* groupsTitle() const { return title; }
    QLabel* groupsLabel() const { return groups; }
    // The painted 4 by 4 picture.
    QPixmap picture() const { return suitsPicture; }

    // The vertical gradient of a group colour over `rect`.
    static QLinearGradient groupGradient(const Range::GroupColor& color, const QRect& rect);

private:
    Cells shown;
    QPixmap suitsPicture;
    QLabel* suits;
    QLabel* title;
    QLabel* groups;
};
