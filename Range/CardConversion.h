#pragma once

#include "Range/CardValue.h"

#include <string>

// Conversions between the card vocabulary's numbers and characters.
//
// Value numbers: A 0, K 1, Q 2, J 3, T 4, 9 5 ... 2 12, and 13 for the wildcard `X`.
// Suit numbers:  A (any) 0, d 1, h 2, s 3, c 4, S (suited) 5, O (offsuit) 6.
// Lower-case `o` is a class character of the range text, never a suit.
//
// Bad input throws std::runtime_error with a short message (see each function), except in
// valueNumberOf and suitLaneOf, which answer -1. None of these allocate except the ones
// returning text; all are table or switch look-ups.

// Value number of a value character, or -1 for anything but 2-9, T, J, Q, K, A, X. Never
// throws: for callers that sort or paint whatever text they get.
inline int valueNumberOf(char value) {
    switch (value) {
    case 'A':
        return 0;
    case 'K':
        return 1;
    case 'Q':
        return 2;
    case 'J':
        return 3;
    case 'T':
        return 4;
    case '9':
        return 5;
    case '8':
        return 6;
    case '7':
        return 7;
    case '6':
        return 8;
    case '5':
        return 9;
    case '4':
        return 10;
    case '3':
        return 11;
    case '2':
        return 12;
    case 'X':
        return 13;
    default:
        return -1;
    }
}

// Place 0..3 of a suit character in the order d, h, s, c (the card mask's lanes, the rows of
// the card tables), or -1 for anything else, the class characters A, S, O included. Never
// throws.
inline int suitLaneOf(char suit) {
    switch (suit) {
    case 'd':
        return 0;
    case 'h':
        return 1;
    case 's':
        return 2;
    case 'c':
        return 3;
    default:
        return -1;
    }
}

// "Invalid value description." for anything but 2-9, T, J, Q, K, A, X.
int valueFromChar(char value);
// "Invalid card value." outside 0..13.
char charFromValue(int value);
// "Invalid suit description." for anything but A, d, h, s, c, S, O.
unsigned int suitFromChar(char suit);
// "Invalid suit value." outside 0..6.
char charFromSuit(unsigned int suit);

// Two-character text of a card: value character, suit character.
std::string cardText(int value, unsigned int suit);
// Card record of a two-character text; throws the messages above for bad characters, and
// "Invalid card description." when the text is longer than two characters.
CardValue cardFromText(const std::string& text);
namespace Range {
class RandomSource;
}
// Any of the 52 cards, drawn from `random`: first the value (13 equally likely), then the
// suit (4 equally likely).
CardValue randomCard(Range::RandomSource& random);

// True when value character `a` is the higher card (its value number is smaller).
bool isHigherValueThan(char a, char b);
// The same comparison with the sense reversed, for ascending table columns.
bool isLowerValueThan(char a, char b);

// The value character one step higher (`T` gives `J`). The ace has no higher value: the
// result is then the character with code 0, which every later look-up refuses.
char nextHigherValueChar(char value);
