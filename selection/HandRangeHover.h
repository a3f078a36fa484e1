#pragma once

#include "Range/HandRange.h"

#include <QWidget>

#include <string>
#include <vector>

class HandSelectionTable;
class QLabel;

namespace Range {
class Tree;
}
namespace Utils {
namespace UI {
class NoPaintFilter;
}
} // namespace Utils

// The floating tip beside a range line: the range's numbers, plain and discounted by the
// board, the dead cards and the other groups, above the range in a read-only
// HandSelectionTable, the grid of the hand selection dialog (431 by 431 pixels, board and
// dead cards set as its dead cards, so cells count live combinations and classes the board
// kills entirely are greyed). A frameless tool tip window with a translucent ground; the
// owner places it, shows it, and closes it (it is usually set to delete itself on close).
// The hover shows a copy of the range taken at construction or at the last showRange or
// showGroup: it never edits the caller's range, which may go away while the hover is still
// open. Whoever shows it and changes the range (a line whose text is edited under the open
// hover) hands it the range again, so that it never shows numbers of an earlier text.
//
// Numbers ("alive" = combinations that remain after the board, the dead cards and, for a
// group, the combinations of its sibling groups):
//   "Range Combinations:"       combinations of the range      | alive
//   "Range%:"                   combinations / 1326            | alive / 1326
//   "Portion of Parent Range:"  the group's share of its parent | alive / parent's alive
// The parent rows are hidden (without moving the layout) for a bare range, for a group
// without a range parent, and when the share is not a number.
class HandRangeHover : public QWidget {
    Q_OBJECT

public:
    // A bare range. `deadCards` are one-bit card masks; `board` is card text ("AhKd2c").
    HandRangeHover(const Range::HandRange& range, const std::string& board,
                   const std::vector<unsigned long long>& deadCards, QWidget* parent = nullptr);
    // A group of a player's group tree (a range node's index).
    HandRangeHover(const Range::Tree& groups, unsigned int group, const std::string& board,
                   const std::vector<unsigned long long>& deadCards, QWidget* parent = nullptr);

    // Shows anew what the constructors show: a bare range, or a group of a group tree.
    void showRange(const Range::HandRange& range, const std::string& board,
                   const std::vector<unsigned long long>& deadCards);
    void showGroup(const Range::Tree& groups, unsigned int group, const std::string& board,
                   const std::vector<unsigned long long>& deadCards);

    // With suits, a mouse resting on a cell of the table opens the table's suit hover with
    // the cell's suit combinations; without (the default) it opens nothing.
    void setShowSuits(bool showSuits);
    bool showsSuits() const;

    // What the table shows: the range (for a group, the group's range), and the board and
    // dead cards as card masks, the board's cards first.
    const Range::HandRange& shownRange() const { return shown; }
    const std::vector<unsigned long long>& shownDeadCards() const { return deadCards; }
    const HandSelectionTable* handTable() const { return table; }

    // The value labels, for those who show or check them.
    QLabel* combinationsValue() const { return combinations; }
    QLabel* combinationsDiscountedValue() const { return combinationsDiscounted; }
    QLabel* percentValue() const { return percent; }
    QLabel* percentDiscountedValue() const { return percentDiscounted; }
    QLabel* parentPortionValue() const { return parentPortion; }
    QLabel* parentPortionDiscountedValue() const { return parentPortionDiscounted; }
    // Whether the parent rows are painted.
    bool showsParentRows() const { return parentRowsShown; }

    // Combinations of `range` whose cards avoid `cards` (one-bit masks) and that none of
    // `others` holds.
    static unsigned int aliveCombinations(const Range::HandRange& range,
                                          const std::vector<unsigned long long>& cards,
                                          const std::vector<const Range::HandRange*>& others);

signals:
    // The mouse moved over the hover itself (it sits beside the pointer).
    void hoverMoved();

protected:
    bool event(QEvent* event) override;

private:
    void build();
    // The range and the cards the numbers and the table are about.
    void takeRange(const Range::HandRange& range, const std::string& board,
                   const std::vector<unsigned long long>& deadCards);
    void setParentRowsShown(bool shown);

    QLabel* combinations = nullptr;
    QLabel* combinationsDiscounted = nullptr;
    QLabel* percent = nullptr;
    QLabel* percentDiscounted = nullptr;
    QLabel* parentPortion = nullptr;
    QLabel* parentPortionDiscounted = nullptr;
    std::vector<QLabel*> parentRowLabels;
    Range::HandRange shown;
    std::vector<unsigned long long> deadCards;
    HandSelectionTable* table = nullptr;
    Utils::UI::NoPaintFilter* noPaint = nullptr;
    bool parentRowsShown = true;
};
