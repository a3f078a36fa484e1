#pragma once

#include <QObject>
#include <QString>

#include <string>
#include <vector>

class BoardCardsWidget;
class ManagedHandRangeLine;
class QWidget;
class ThreadPool;
namespace Range {
class HandRange;
class Tree;
struct NodeMemento;
} // namespace Range

// One player's row of the main window, written once and used for both players: the range
// line over the player's live range with its groups, and what the row's buttons and the
// tabs' context actions do to that range.
//
// Every change that does not come from typing (clear, the card and range dialogs, a range or
// a group offered by a tab) ends in changedBy with the change's undo label, which names the
// player ("Player1's Range Cleared"); the window turns it into the saved state, the undo
// entry and an update. Changes typed into the line reach the window through the line's own
// signals.
//
// The tree belongs to the analysis document and must outlive the controller; the line keeps
// pointers into its nodes, so every replacement of the nodes goes through restore().
class PlayerRangeController : public QObject {
    Q_OBJECT

public:
    // `player` is 1 or 2. The dialogs keep the cards of `board` out of the range, run with
    // `pool`, and have `window` as their parent.
    PlayerRangeController(int player, Range::Tree& range, ManagedHandRangeLine* line,
                          const BoardCardsWidget* board, ThreadPool* pool, QWidget* window);
    ~PlayerRangeController() override;

    int player() const { return number; }
    ManagedHandRangeLine* line() const { return rangeLine; }
    Range::Tree& range() const { return tree; }
    // "Player1" or "Player2", as the labels and titles spell it.
    QString name() const;

    // Technical text of the range the line shows (the full range or a group).
    std::string technicalText() const;
    bool hasText() const;
    // Shows the line's range again, unless the user is typing in it (a restore may have
    // replaced the nodes under it).
    void showRangeAgain();
    // The board text and the board's and dead cards' masks, for the numbers of the hover.
    void setCards(const std::string& board, const std::vector<unsigned long long>& deadCards);

    // Empties the group shown.
    void clear();
    // A hand of two cards picked in the card dialog, none of them on the board or dead.
    void selectCards();
    // The hand selection dialog on a copy of the player's range with its groups.
    void selectRange();
    // The other player's row: the range dialog's equity selector rates against its range.
    void setOpponent(const PlayerRangeController& other) { opponent = &other; }
    // Replaces the full range.
    void overwrite(const Range::HandRange& range);
    // Adds a group holding `range`; an empty name becomes "Group " and the number of groups
    // plus one. Refused with a message when all group colours are taken.
    void addGroup(std::string name, const Range::HandRange& range);
    // Replaces the range with its groups by `memento` and shows the full range.
    void restore(const std::vector<Range::NodeMemento>& memento);

signals:
    // A change from outside the line, with its undo label.
    void changedBy(const std::string& label);

private:
    // "Player1's Range Cleared" and its like: the player's name in `format` (%1).
    std::string label(const char* format) const;
    // Rebinds the line to the (replaced) nodes and shows the full range.
    void reattachLine();

    int number;
    Range::Tree& tree;
    ManagedHandRangeLine* rangeLine;
    const BoardCardsWidget* board;
    ThreadPool* pool;
    QWidget* window;
    const PlayerRangeController* opponent = nullptr;
};
