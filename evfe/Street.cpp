#include "evfe/Street.h"

#include <stdexcept>

Street streetFromText(const std::string& text) {
    if (text == "Preflop")
        return Street::Preflop;
    if (text == "Flop")
        return Street::Flop;
    if (text == "Turn")
        return Street::Turn;
    if (text == "River")
        return Street::River;
    throw std::runtime_error("Unknown Street: " + text);
}

std::string streetToText(int street) {
    switch (street) {
    case 0:
        return "Preflop";
    case 1:
        return "Flop";
    case 2:
        return "Turn";
    case 3:
        return "River";
    default:
        throw std::runtime_error("Unknown Street " + std::to_string(street));
    }
}

std::string streetToText(Street street) {
    return streetToText(static_cast<int>(street));
}

bool isStreetAvailable(Street street, std::size_t boardTextLength) {
    switch (street) {
    case Street::Preflop:
        return true;
    case Street::Flop:
        return boardTextLength >= 6;
    case Street::Turn:
        return boardTextLength >= 8;
    case Street::River:
        return boardTextLength >= 10;
    }
    return false;
}

Street streetAfterBoardChange(Street selected, std::size_t boardTextLength) {
    int street = static_cast<int>(selected);
    if (street < 0 || street > 3)
        return Street::Preflop;
    while (street > 0 && !isStreetAvailable(static_cast<Street>(street), boardTextLength))
        --street;
    return static_cast<Street>(street);
}
