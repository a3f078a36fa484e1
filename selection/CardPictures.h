#pragma once

#include <QPixmap>

// The card pictures of the program, cut from the sheets in the resources (":/cards/...").
//
// Both sheets have 13 columns by 4 rows: column = value number (ace 0 on the left, deuce 12
// on the right), row = suit number - 1 (d, h, s, c from the top). Needs a QGuiApplication.
class CardPictures {
public:
    // Size of one card of the large sheet, in pixels.
    static constexpr int CardWidth = 72;
    static constexpr int CardHeight = 100;

    // Full card face of a card: value 0 (ace) to 12 (deuce), suit 1 (d) to 4 (c). A null
    // pixmap for anything else.
    static QPixmap card(int value, unsigned int suit);
    // Rank and suit of every card on a transparent background, 22 x 29 pixels a cell: the
    // face of the card selection table.
    static QPixmap tableFaces();
};
