#pragma once

#include "Range/Element.h"

#include <QLabel>
#include <QPixmap>
#include <QPoint>
#include <QTimer>

#include <array>
#include <vector>

class QDragEnterEvent;
class QDragMoveEvent;
class QDropEvent;
class QMouseEvent;
class QPainter;
class SuitHover;

namespace Range {
class HandRange;
class Tree;
} // namespace Range

// The 13 by 13 grid of hand classes on which a range is painted with the mouse.
//
// Column and row run from the ace (0) to the deuce (12); column equal to row is a pair,
// column greater than row the suited class, column less than row the offsuit class. A cell
// is 32 by 32 pixels with its top left corner at (column * 33 + 1, row * 33 + 1), all in one
// 430 by 430 pixmap shown as the label's pixmap; the widget is one pixel wider and higher,
// and a click on that outermost row folds into the first cell. A stroke repaints only the
// cells it touches; setRange, setGroups, setGroupMode and setDeadCards redraw all 169.
//
// A stroke (press, moves, release) selects or unselects, decided at its start: with
// "unselect with right button" the left button selects and any other unselects; without
// it the right button does nothing and the first cell decides by being toggled. Selecting
// adds the cell's combinations that the suit pen allows to what the range holds (through
// the range's suitFilter, so a group may refuse some); unselecting empties the cell. Shift
// widens the stroke to the better hands with the same top card, Control to the hands of the
// same gap above, both together to the cell's whole row and column.
//
// With a group tree (setGroups) cells outside the edited group's range parent are greyed,
// and in group mode each cell shows the colours of the groups (the edited group and its
// siblings) that hold it, in stripes by their share when several do.
//
// The range and the tree are not owned and must outlive the table or be unset first.
class HandSelectionTable : public QLabel {
    Q_OBJECT

public:
    static constexpr int cellSize = 32;
    static constexpr int pitch = 33;
    static constexpr int pixmapSize = 13 * pitch + 1;
    static constexpr int hoverDelay = 750; // milliseconds

    // The eight cell backgrounds.
    enum Background {
        SelectedBackground,
        UnselectedSuited,
        UnselectedOffsuit,
        UnselectedPair,
        UnselectedGroupMode,
        OutsideParent,
        NotAvailable,
        Marker,
        BackgroundCount
    };

    explicit HandSelectionTable(QWidget* parent = nullptr);
    ~HandSelectionTable() override;

    // The range being edited (null: an empty grid that ignores the mouse); redraws all.
    void setRange(Range::HandRange* range);
    Range::HandRange* handRange() const { return range; }
    // The group tree of the range and the node being edited (a range node of `groups`,
    // whose handRange is the table's range); null for no group context. Redraws all.
    void setGroups(Range::Tree* groups, unsigned int currentGroup);
    Range::Tree* groupTree() const { return groups; }
    unsigned int currentGroup() const { return group; }
    void setGroupMode(bool on);
    // All of the above at once, with one redraw.
    void setRangeAndGroups(Range::HandRange* range, Range::Tree* groups, unsigned int currentGroup,
                           bool groupMode);
    bool isGroupMode() const { return groupMode; }
    // Board and dead cards as card masks; their combinations are not counted. Redraws all.
    void setDeadCards(const std::vector<unsigned long long>& cards);
    const std::vector<unsigned long long>& deadCardMasks() const { return deadCards; }
    // Read-only: the mouse changes nothing (no strokes, no signals of them).
    void setReadOnly(bool readOnly) { this->readOnly = readOnly; }
    bool isReadOnly() const { return readOnly; }
    // Whether a resting mouse opens the suit hover of the cell below it (default on). It
    // changes nothing, so it is independent of read-only; switching it off hides an open one.
    void setSuitHoverEnabled(bool enabled);
    bool isSuitHoverEnabled() const { return suitHoverEnabled; }
    bool unselectsWithRightButton() const { return unselectWithRightButton; }
    void setUnselectWithRightButton(bool unselect) { unselectWithRightButton = unselect; }
    // Reads "unselectCardWithRightButton" of the settings group "optionmenu" (default true).
    void readSettings();
    unsigned short suitPen() const { return pen; }

    // Redraws all 169 cells into the pixmap.
    void repaint();

    // --- The grid ------------------------------------------------------------------------
    // The class of a cell, with its possible suits and no suits.
    static Range::Element cellElement(int column, int row);
    // "AKs", "AKo", "AA".
    static QString cellText(int column, int row);
    static QRect cellRect(int column, int row);
    // Column or row of a pixel coordinate: (coordinate - 1) / 33, 0 when above 12.
    static int cellIndexAt(int coordinate);

    // The number a cell shows (live combinations; in group mode those of its groups), and
    // whether it shows one at all.
    unsigned int liveCount(int column, int row) const;
    bool showsCount(int column, int row) const;
    // The group nodes whose colours a cell shows in group mode, by node index.
    std::vector<unsigned int> cellGroups(int column, int row) const;
    // The background a cell is painted on (before group colours).
    Background cellBackground(int column, int row) const;
    // Widths of the stripes of a cell shown in stripes, in group order (empty otherwise).
    std::vector<int> stripeWidths(int column, int row) const;

    QPixmap picture() const { return table; }
    SuitHover* suitHover() const { return hover; }
    QTimer* hoverTimer() { return &timer; }
    QPoint hoverPosition() const { return hoverAt; }
    // The 32 by 32 background pictures.
    static const QPixmap& backgroundPicture(Background background);

signals:
    void RangeChanged();
    void RangeDropped();
    void mouseReleased();

public slots:
    // The suit pen from SuitSelectionTable::suitsUpdated.
    void AssignPen(unsigned short suitPen);
    void onHoverTimeout();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    // Applies the stroke's value to one cell; true when the range changed.
    bool strokeCell(int column, int row);
    void applyStroke(QMouseEvent* event);
    void paintCell(QPainter& painter, int column, int row, bool marked = false);
    void repaintCell(int column, int row, bool marked = false);
    const Range::HandRange* parentRange() const;
    void hideHover();
    void fillHover(int column, int row);
    void placeHover();

    Range::HandRange* range = nullptr;
    Range::Tree* groups = nullptr;
    unsigned int group = 0;
    unsigned short pen = 65535;
    bool groupMode = false;
    std::vector<unsigned long long> deadCards;
    QTimer timer;
    SuitHover* hover;
    QPoint hoverAt;
    bool unselectWithRightButton = true;
    bool dragEnded = true;
    bool strokeSelects = false;
    bool readOnly = false;
    bool suitHoverEnabled = true;
    // The present stroke was begun by a button that does nothing.
    bool strokeIgnored = false;
    bool strokeChanged = false;
    bool mouseInside = false;
    // The cell drawn with the marker while the hover is open, or -1.
    int markedCell = -1;
    QPixmap table;
    QFont countFont;
};
