#include "FreeRangeText.h"

#include "Range/CardText.h"
#include "Range/HandRange.h"
#include "Range/HandRangeStringManipulator.h"
#include "Range/RangeStringOperations.h"

#include <algorithm>
#include <cctype>
#include <sstream>
#include <stdexcept>

std::string normalRangeOfFreeText(const std::string& text) {
    std::string stripped = text;
    stripped.erase(
        std::remove_if(stripped.begin(), stripped.end(),
                       [](char c) { return std::isspace(static_cast<unsigned char>(c)); }),
        stripped.end());
    std::istringstream tokens(stripped);
    std::string token;
    while (std::getline(tokens, token, ',')) {
        if (token.empty())
            continue;
        std::string repaired = token;
        Range::normalize(repaired);
        if (repaired.empty())
            throw std::invalid_argument("cannot read \"" + token +
                                        "\" as a hand, a hand class or a range of them");
    }
    std::string normal = text;
    Range::normalize(normal);
    return normal;
}

std::string boardOfArgument(const std::string& text) {
    try {
        Range::CardText::readCards(text, Range::CardText::Role::Board);
    } catch (const Range::CardTextError& error) {
        throw std::invalid_argument(error.what());
    }
    return Range::CardText::tidy(text);
}

std::string deadCardsOfArgument(const std::string& text) {
    try {
        Range::CardText::readDeadCards(text);
    } catch (const Range::CardTextError& error) {
        throw std::invalid_argument(error.what());
    }
    return Range::CardText::tidy(text);
}

std::string technicalRangeOfFreeText(const std::string& text) {
    const std::string normal = normalRangeOfFreeText(text);
    Range::HandRange range;
    Range::HandRangeStringManipulator manipulator(range);
    manipulator.setNormal(normal, true);
    return manipulator.technicalText();
}
