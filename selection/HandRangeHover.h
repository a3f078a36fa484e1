#pragma once

#include "Range/HandRange.h"

#include <QWidget>

#include <string>
#include <vector>

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
// board, the dead cards and the other groups, above a read-only picture of the 13 by 13
// hand table. A frameless tool tip window with a translucent ground; the owner places it,
// shows it, and closes it (it is usually set to delete itself on close).
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

    // With suits the table shows each class's number of combinations.
    void setShowSuits(bool showSuits);
    bool showsSuits() const;

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
    void build(const Range::HandRange& range);
    void hideParentRows();

    QLabel* combinations = nullptr;
    QLabel* combinationsDiscounted = nullptr;
    QLabel* percent = nullptr;
    QLabel* percentDiscounted = nullptr;
    QLabel* parentPortion = nullptr;
    QLabel* parentPortionDiscounted = nullptr;
    std::vector<QLabel*> parentRowLabels;
    QWidget* table = nullptr;
    Utils::UI::NoPaintFilter* noPaint = nullptr;
    bool parentRowsShown = true;
};
