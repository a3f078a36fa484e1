#include "Range/CardConversion.h"

#include "Range/RandomSource.h"

#include <stdexcept>

int valueFromChar(char value) {
    const int number = valueNumberOf(value);
    if (number < 0)
        throw std::runtime_error("Invalid value description.");
    return number;
}

char charFromValue(int value) {
    static const char characters[] = "AKQJT98765432X";
    if (value < 0 || value > 13)
        throw std::runtime_error("Invalid card value.");
    return characters[value];
}

unsigned int suitFromChar(char suit) {
    const int lane = suitLaneOf(suit);
    if (lane >= 0)
        return static_cast<unsigned int>(lane) + 1;
    switch (suit) {
    case 'A':
        return 0;
    case 'S':
        return 5;
    case 'O':
        return 6;
    default:
        throw std::runtime_error("Invalid suit description.");
    }
}

char charFromSuit(unsigned int suit) {
    static const char characters[] = "AdhscSO";
    if (suit > 6)
        throw std::runtime_error("Invalid suit value.");
    return characters[suit];
}

std::string cardText(int value, unsigned int suit) {
    std::string text(2, ' ');
    text[0] = charFromValue(value);
    text[1] = charFromSuit(suit);
    return text;
}

CardValue cardFromText(const std::string& text) {
    if (text.size() > 2)
        throw std::runtime_error("Invalid card description.");
    // A short text reads as the character 0 in the missing places, which the look-ups refuse.
    const char valueCharacter = text.size() > 0 ? text[0] : '\0';
    const char suitCharacter = text.size() > 1 ? text[1] : '\0';
    CardValue card;
    card.value = valueFromChar(valueCharacter);
    card.suit = suitFromChar(suitCharacter);
    card.text = cardText(card.value, card.suit);
    return card;
}

CardValue randomCard(Range::RandomSource& random) {
    CardValue card;
    card.value = static_cast<int>(random.below(13));
    card.suit = random.below(4) + 1;
    card.text = cardText(card.value, card.suit);
    return card;
}

bool isHigherValueThan(char a, char b) {
    return valueFromChar(a) < valueFromChar(b);
}

bool isLowerValueThan(char a, char b) {
    return valueFromChar(a) > valueFromChar(b);
}

char nextHigherValueChar(char value) {
    const int number = valueFromChar(value);
    return number == 0 ? '\0' : charFromValue(number - 1);
}
