#pragma once

#include "Range/HandRange.h"

#include <QColor>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>
#include <QWidget>

// The floating hand table of a hovered row in the board evaluation tabs: a frameless tool
// tip window with the row's name, the number of combinations and their share of 1326, and a
// 13 x 13 matrix of the hand classes, each cell filled by the share of its combinations that
// the row holds. Closes and deletes itself when closed (Qt::WA_DeleteOnClose) and never takes
// the focus or the mouse.
class BoardHitsRangeHover : public QWidget {
    Q_OBJECT

public:
    BoardHitsRangeHover(const QString& title, const Range::HandRange& range, const QColor& color,
                        QWidget* parent = nullptr);

    const Range::HandRange& range() const { return hoverRange; }
    const QString& title() const { return hoverTitle; }

    // Where a window of `size` goes for the pointer at `pointer` (global) on `screen`: right
    // of and above the pointer. When it would leave the right edge it moves left by its width
    // plus 21; when it would leave the top it moves below the pointer, by its height plus 21
    // when there is room below, else by half its height plus 5. Whatever is left over is
    // clamped, so the window always lies on the screen when it fits on it.
    static QPoint placement(const QPoint& pointer, const QSize& size, const QRect& screen);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString hoverTitle;
    Range::HandRange hoverRange;
    QColor fillColor;
};
