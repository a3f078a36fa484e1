#include "handhistory/HandHistoryCards.h"

namespace HandHistoryCards {

namespace {

bool isAlnum(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

char rankOf(std::string_view r) {
    if (r == "10" || r == "T" || r == "t")
        return 'T';
    if (r.size() != 1)
        return 0;
    const char c = r[0];
    if (c >= '2' && c <= '9')
        return c;
    switch (c) {
    case 'A':
    case 'a':
        return 'A';
    case 'K':
    case 'k':
        return 'K';
    case 'Q':
    case 'q':
        return 'Q';
    case 'J':
    case 'j':
        return 'J';
    default:
        return 0;
    }
}

char suitOf(char c) {
    switch (c) {
    case 'c':
    case 'C':
        return 'c';
    case 'd':
    case 'D':
        return 'd';
    case 'h':
    case 'H':
        return 'h';
    case 's':
    case 'S':
        return 's';
    default:
        return 0;
    }
}

// One token: rank then suit, or suit then rank ("HK", "S10").
std::string cardOf(std::string_view token) {
    if (token.size() < 2 || token.size() > 3)
        return {};
    if (const char suit = suitOf(token.back())) {
        if (const char rank = rankOf(token.substr(0, token.size() - 1)))
            return {rank, suit};
    }
    if (const char suit = suitOf(token.front())) {
        if (const char rank = rankOf(token.substr(1)))
            return {rank, suit};
    }
    return {};
}

} // namespace

std::string cardsIn(std::string_view text) {
    std::string out;
    std::size_t i = 0;
    while (i < text.size()) {
        if (!isAlnum(text[i])) {
            ++i;
            continue;
        }
        std::size_t end = i;
        while (end < text.size() && isAlnum(text[end]))
            ++end;
        std::string_view token = text.substr(i, end - i);
        // Cards written together without blanks ("AhKd").
        if (token.size() % 2 == 0 && token.size() > 2 && cardOf(token.substr(0, 2)).size() == 2) {
            for (std::size_t at = 0; at + 1 < token.size(); at += 2)
                out += cardOf(token.substr(at, 2));
        } else {
            out += cardOf(token);
        }
        i = end;
    }
    return out;
}

std::string cardsOfLastBrackets(std::string_view line) {
    const std::size_t open = line.rfind('[');
    if (open == std::string_view::npos)
        return cardsIn(line);
    std::size_t close = line.find(']', open);
    if (close == std::string_view::npos)
        close = line.size();
    return cardsIn(line.substr(open + 1, close - open - 1));
}

} // namespace HandHistoryCards
