#pragma once

#include <QComboBox>

class HandRangeLine;
class QMouseEvent;

namespace Range {
class Tree;
}

// A player's range row: an editable combo box whose line edit is a HandRangeLine, and whose
// items are the player's full range and its groups, taken from the player's group tree.
//
// Items: 0 is "<b>Full Range: </b> " + the root's text; then one per group in depth-first
// order, "<b>" + name + ":</b> " + its text, with a 12 x 12 gradient of its colours as
// decoration when it uses colours. Each item's data (Qt::UserRole) is the group's node
// index in the tree; the full range is the tree's root, node 0. Choosing an item binds the
// line edit to that group's range and emits MappingChanged; so does a change typed in the
// line (the items are refreshed first).
//
// The items' rich text is for the popup only: whatever puts an item's text into the line
// (the combo box does so when the shown item is picked again), the line shows the range's
// text, so that the markup never becomes range text.
//
// The row of a player (`player` 1 or 2, 0 for none) carries the player's colour as a thin
// marker on its left edge, the same as the player's equity.
//
// The tree is not owned; setGroups(nullptr) before it goes away.
class ManagedHandRangeLine : public QComboBox {
    Q_OBJECT
    Q_PROPERTY(int player READ player WRITE setPlayer)

public:
    static constexpr int groupRole = Qt::UserRole;

    explicit ManagedHandRangeLine(QWidget* parent = nullptr);

    HandRangeLine* rangeLine() const { return line; }

    void setPlayer(int player);
    int player() const { return playerNumber; }

    // The player's group tree (its node 0 is the full range). Refills the items.
    void setGroups(Range::Tree* groups);
    Range::Tree* groups() const { return tree; }
    // The node index of the group shown in the line, or Range::Tree::noNode for none.
    unsigned int currentGroup() const;

    // Rebuilds the items from the tree (after groups were added, removed or restored),
    // keeping the current index when it is still valid, and selects it (onIndexSelection).
    void refill();

    // The items' rich text of a group.
    static QString groupItemText(const QString& name, const std::string& rangeText, bool fullRange);

signals:
    void MappingChanged();
    void doubleClicked();

public slots:
    void onIndexSelection(int index);
    void onRangeTextChange();
    void onDoubleClickRangeLine();

private:
    // Updates the items' texts in place, without touching what the line shows.
    void refreshItemTexts();
    // Puts the range's text back when an item's text has reached the line.
    void onLineTextChanged(const QString& text);

    HandRangeLine* line;
    Range::Tree* tree = nullptr;
    int playerNumber = 0;
    // The items are being rebuilt (the line may point to a range that is gone).
    bool rebuilding = false;
};
