#include "Range/CardText.h"

#include <cctype>

namespace Range {
namespace CardText {

namespace {

constexpr std::string_view valueOrder = "AKQJT98765432"; // ace first: bit 12 - index
constexpr std::string_view suitOrder = "dhsc";           // the lanes of the card mask

// What may stand between two cards as a player types them: blanks, commas, semicolons.
bool isSeparator(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == ',' || c == ';';
}

char upper(char c) {
    return static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
}

char lower(char c) {
    return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
}

const char* const whatACardIs = ": a card is a rank and a suit, like Ah.";

const char* nameOf(Role role) {
    switch (role) {
    case Role::Board:
        return "board";
    case Role::DeadCards:
        return "dead cards";
    case Role::Hand:
        return "hand";
    case Role::Cards:
        break;
    }
    return "cards";
}

int bitCount(unsigned long long mask) {
    int count = 0;
    for (; mask != 0; mask &= mask - 1)
        ++count;
    return count;
}

// Reads the cards of `text` into `list`; a card already in `taken` or in the list is a
// repeat.
void readInto(std::string_view typed, Role role, unsigned long long taken, CardList& list) {
    const std::string text = tidy(typed);
    if (text.size() % 2 != 0)
        throw CardTextError("The " + std::string(nameOf(role)) + " \"" + std::string(typed) +
                            "\" is not a list of two-character cards" + whatACardIs);
    for (std::size_t i = 0; i < text.size(); i += 2) {
        const unsigned long long card = cardOf(text[i], text[i + 1]);
        if (card == 0)
            throw CardTextError("Unknown card \"" + text.substr(i, 2) + "\" in the " +
                                nameOf(role) + whatACardIs);
        if ((taken | list.mask) & card)
            throw CardTextError("The card " + std::string(text.substr(i, 2)) + " is given twice.");
        list.cards.push_back(card);
        list.mask |= card;
    }
}

} // namespace

std::string tidy(std::string_view text) {
    std::string tidied;
    tidied.reserve(text.size());
    for (const char c : text)
        if (!isSeparator(c))
            tidied.push_back(tidied.size() % 2 == 0 ? upper(c) : lower(c));
    return tidied;
}

unsigned long long cardOf(char value, char suit) {
    const std::size_t valueIndex = valueOrder.find(value);
    const std::size_t lane = suitOrder.find(suit);
    if (valueIndex == std::string_view::npos || lane == std::string_view::npos)
        return 0;
    return 1ULL << (13 * lane + (12 - valueIndex));
}

std::string textOf(unsigned long long card) {
    if (card == 0 || (card & (card - 1)) != 0 || card >= (1ULL << 52))
        return std::string();
    int bit = 0;
    while ((card >> bit) != 1)
        ++bit;
    return std::string{valueOrder[static_cast<std::size_t>(12 - bit % 13)],
                       suitOrder[static_cast<std::size_t>(bit / 13)]};
}

CardList readCards(std::string_view text, Role role) {
    CardList list;
    readInto(text, role, 0, list);
    return list;
}

CardList readBoard(std::string_view text) {
    CardList list = readCards(text, Role::Board);
    const std::size_t count = list.size();
    if (count == 1 || count == 2 || count > 5)
        throw CardTextError("A board has 0, 3, 4 or 5 cards, not " + std::to_string(count) + ".");
    return list;
}

CardList readDeadCards(std::string_view text, unsigned long long taken) {
    CardList list;
    readInto(text, Role::DeadCards, taken, list);
    return list;
}

unsigned long long readHand(std::string_view text) {
    const CardList list = readCards(text, Role::Hand);
    if (list.size() != 2)
        throw CardTextError("A hand has 2 cards, not " + std::to_string(list.size()) + ".");
    return list.mask;
}

std::string problemOf(std::string_view board, std::string_view deadCards) {
    try {
        readDeadCards(deadCards, readBoard(board).mask);
    } catch (const CardTextError& error) {
        return error.what();
    }
    return std::string();
}

bool isCards(std::string_view text, std::size_t count) {
    if (text.size() != 2 * count)
        return false;
    unsigned long long seen = 0;
    for (std::size_t i = 0; i < text.size(); i += 2) {
        const unsigned long long card = cardOf(text[i], text[i + 1]);
        if (card == 0 || (seen & card) != 0)
            return false;
        seen |= card;
    }
    return bitCount(seen) == static_cast<int>(count);
}

bool isUnfinishedFlop(std::string_view board) {
    return isCards(board, 1) || isCards(board, 2);
}

std::vector<std::string> lenientCards(std::string_view text) {
    std::vector<std::string> cards;
    unsigned long long seen = 0;
    std::size_t i = 0;
    while (true) {
        while (i < text.size() && isSeparator(text[i]))
            ++i;
        if (i + 1 >= text.size())
            break;
        const char value = upper(text[i]);
        const char suit = lower(text[i + 1]);
        i += 2;
        const unsigned long long card = cardOf(value, suit);
        if (card == 0 || (seen & card) != 0)
            continue;
        seen |= card;
        cards.push_back(std::string{value, suit});
    }
    return cards;
}

} // namespace CardText
} // namespace Range
