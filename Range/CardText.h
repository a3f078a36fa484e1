#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

// The one reader and writer of card text: boards, dead cards, single hands and lists of
// cards, spelled as concatenated two-character cards ("AhKd2c"), the value from
// "AKQJT98765432" and the suit from "dhsc".
//
// Every place that turns card text into card masks goes through here, so that one rule
// holds in every window: a board has 0, 3, 4 or 5 cards (one or two cards are an unfinished
// flop, which nothing analyses), no card stands twice in a board and its dead cards
// together, and a hand has exactly two cards.
//
// Card masks use the lanes of the evaluator library: d bits 0-12, h 13-25, s 26-38, c 39-51,
// bit 0 of a lane the deuce. Plain C++ without Qt or the evaluator, so that the hand history
// reader can use it on its own.
namespace Range {

// Thrown by the strict readers. what() is a sentence to show the user as it stands, such as
// "The card Ah is given twice." or "A board has 0, 3, 4 or 5 cards, not 2.".
class CardTextError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Cards read from a text.
struct CardList {
    std::vector<unsigned long long> cards; // one-bit masks, in the order of the text
    unsigned long long mask = 0;           // the union of `cards`

    std::size_t size() const { return cards.size(); }
    bool empty() const { return cards.empty(); }
};

namespace CardText {

// The name of a text in messages: "board", "dead cards", "hand", "cards".
enum class Role { Cards, Board, DeadCards, Hand };

// Card text as players type it, in canonical spelling: blanks, commas and semicolons go, and
// every first character of two is taken upper case, every second lower case ("ah kd, 2C"
// gives "AhKd2c"). Pieces that are no cards stay, to be named by the readers.
std::string tidy(std::string_view text);

// One-bit mask of a value and a suit character, or 0 when they are not a card ('X', 'x',
// lower-case values and upper-case suits are not).
unsigned long long cardOf(char value, char suit);
// Two-character text of a one-bit mask ("Ah"); empty for anything but exactly one bit.
std::string textOf(unsigned long long card);

// Strict readers of tidy() text, so in any case and with separators: throw CardTextError
// naming the first fault ("Unknown card \"2x\" in the board: a card is a rank and a suit,
// like Ah.").
// Any number of distinct cards.
CardList readCards(std::string_view text, Role role = Role::Cards);
// 0, 3, 4 or 5 distinct cards.
CardList readBoard(std::string_view text);
// Distinct cards, none of them in `taken` (the board's mask).
CardList readDeadCards(std::string_view text, unsigned long long taken = 0);
// Exactly two distinct cards; the result is the hand's two-bit mask.
unsigned long long readHand(std::string_view text);

// Why a board with these dead cards cannot be analysed, or an empty text when it can.
std::string problemOf(std::string_view board, std::string_view deadCards);
// Whether `text` is exactly `count` distinct cards.
bool isCards(std::string_view text, std::size_t count);
// Whether `board` is one or two distinct cards: a flop on its way, which no analysis takes
// but which is no mistake either.
bool isUnfinishedFlop(std::string_view board);

// Typed text, read the forgiving way of the card fields: blanks, commas and semicolons
// between cards are skipped, then two characters a card, the first taken upper case and the
// second lower case; pieces that are no card, and repeats of an earlier card, are dropped.
// The cards come back in canonical spelling, in text order.
std::vector<std::string> lenientCards(std::string_view text);

} // namespace CardText
} // namespace Range
