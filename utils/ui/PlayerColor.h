#pragma once

#include <QColor>

// The colour of each player, wherever the program shows something of one player beside the
// other's: the marker of the range lines and of the equity results, the bars of the board
// tabs. Player 1 is teal, player 2 a burnt orange; any other number gets no colour.
class PlayerColor {
public:
    static QColor of(int player);
    // "border-left: 4px solid #17808f;": the thin marker on a widget's left edge, as a style
    // sheet declaration; empty for a player without a colour.
    static QString markerStyle(int player);
};
