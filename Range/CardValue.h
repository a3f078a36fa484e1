#pragma once

#include <string>

// One playing card as a plain value: the record behind the card items of the card pickers.
//
// `value` counts down from the ace: 0 is the ace, 12 the deuce, 13 the value wildcard `X`.
// `suit` is 0 any, 1 d, 2 h, 3 s, 4 c, 5 suited (`S`), 6 offsuit (`O`).
// `text` is always the value character followed by the suit character ("Ad"), built from
// the two numbers by cardText().
struct CardValue {
    int value = 0;
    unsigned int suit = 0;
    std::string text;

    // Cards order by value number (so the ace first), then by suit number.
    bool operator<(const CardValue& other) const {
        return value != other.value ? value < other.value : suit < other.suit;
    }
    bool operator==(const CardValue& other) const {
        return value == other.value && suit == other.suit;
    }
    bool operator!=(const CardValue& other) const { return !(*this == other); }
};
