#pragma once

#include "Range/CardValue.h"

#include <QLabel>
#include <QPixmap>
#include <QSet>
#include <QString>

#include <map>
#include <set>
#include <string>

namespace Range {
class RandomSource;
}

// The grid of the 52 cards: 13 columns (ace on the left to deuce on the right, the order of
// the card pictures) by 4 rows (d, h, s, c from the top), each cell 22 by 29 pixels after a
// border of one pixel.
//
// A cell is normal, marked, forbidden (ruled out by the caller, e.g. the board when a hand
// is picked) or blocked (lies in another card field of the dialog); forbidden and blocked
// cells do not react to the mouse. Marking follows the mouse on press and on every move of
// a stroke, see mousePressEvent.
class CardSelectionTable : public QLabel {
    Q_OBJECT

public:
    static constexpr int CellWidth = 22;
    static constexpr int CellHeight = 29;
    static constexpr int Columns = 13;
    static constexpr int Rows = 4;

    enum class CellState { Normal, Marked, Forbidden, Blocked };

    explicit CardSelectionTable(QWidget* parent = nullptr);

    // Row of a suit letter d, h, s, c; anything else throws std::runtime_error
    // "Non-suitable suit.".
    static int rowOfSuit(char suit);
    // Suit letter of a row 0 to 3; anything else throws std::runtime_error
    // "Invalid row number in Card Table.".
    static char suitOfRow(int row);
    // Column (x - 1) / 22 and row (y - 1) / 29 of a widget position; a column or row outside
    // the grid is taken as 0.
    static int columnAt(int x);
    static int rowAt(int y);
    // The card of a cell, canonical text ("Ad").
    static QString cardOfCell(int column, int row);
    // The rectangle of a cell in widget coordinates.
    static QRect cellRect(int column, int row);

    void setMaxMarked(unsigned int maximum);
    unsigned int maxMarked() const { return maximumMarked; }

    // Marks exactly the cards of a text (two characters a card, canonical spelling; anything
    // else is ignored). No signal.
    void setMarkedCards(const QString& cards);
    const std::map<CardValue, std::string>& markedCards() const { return marked; }
    // The marked cards joined, ace first, suits in the order d, h, s, c.
    QString markedText() const;
    unsigned int markedCount() const { return static_cast<unsigned int>(marked.size()); }

    // Cards in other fields; replaces the previous set, unmarking what becomes blocked.
    void setBlockedCards(const QString& cards);
    // Cards ruled out by the caller; replaces the previous set, unmarking them.
    void setForbiddenCards(const QString& cards);

    CellState stateOf(const QString& card) const;

    // True: the left button marks and any other button unmarks. False: the right button does
    // nothing, and the first cell of a left stroke toggles while the rest follows it.
    void setUnselectWithRightButton(bool enabled) { unselectWithRightButton = enabled; }
    // The generator SelectRandomCards draws from; the program's shared one unless set. Not
    // owned.
    void setRandomSource(Range::RandomSource* source) { random = source; }
    bool unselectsWithRightButton() const { return unselectWithRightButton; }

signals:
    void SelectionChanged(unsigned int count);

public slots:
    // Marks random cards until `maxMarked` are marked, among those neither marked, blocked
    // nor forbidden, each free card equally likely. Emits SelectionChanged.
    void SelectRandomCards();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void strokeAt(const QPoint& position, Qt::MouseButton button, bool firstOfStroke);
    bool mark(const QString& card);
    bool unmark(const QString& card);
    static QSet<QString> cardSet(const QString& cards);
    void buildImages();

    Range::RandomSource* random;
    unsigned int maximumMarked = 3;
    std::map<CardValue, std::string> marked;
    QSet<QString> blockedCards;
    QSet<QString> forbiddenCards;
    bool unselectWithRightButton = true;
    // True between the release of a stroke and the next press.
    bool dragEnded = true;
    // Whether the current stroke marks (true) or unmarks (false).
    bool strokeMarks = true;
    // One picture of the whole table per cell state.
    QPixmap normalImage;
    QPixmap markedImage;
    QPixmap forbiddenImage;
    QPixmap blockedImage;
};
