#include "Cards.h"

#include "SuitSymmetry.h"

#include <algorithm>
#include <stdexcept>

namespace qve {

namespace {

constexpr char valueCharacters[] = "23456789TJQKA"; // index = value bit inside a lane
constexpr char suitCharacters[] = "dhsc";           // index = lane

int valueBitOfChar(char c) {
    for (int i = 0; i < 13; ++i)
        if (valueCharacters[i] == c)
            return i;
    return -1;
}

int laneOfChar(char c) {
    for (int i = 0; i < 4; ++i)
        if (suitCharacters[i] == c)
            return i;
    return -1;
}

CardMask cardOf(int valueBit, int lane) {
    return CardMask(1) << (13 * lane + valueBit);
}

std::invalid_argument badToken(std::string_view token, const char* what) {
    return std::invalid_argument(std::string(what) + " '" + std::string(token) + "'");
}

} // namespace

CardMask cardOfText(std::string_view card) {
    if (card.size() != 2)
        throw badToken(card, "Invalid card");
    const int value = valueBitOfChar(card[0]);
    const int lane = laneOfChar(card[1]);
    if (value < 0 || lane < 0)
        throw badToken(card, "Invalid card");
    return cardOf(value, lane);
}

CardMask cardsOfText(std::string_view cards) {
    if (cards.size() % 2 != 0)
        throw badToken(cards, "Card text of odd length");
    CardMask mask = 0;
    for (std::size_t i = 0; i < cards.size(); i += 2) {
        const CardMask card = cardOfText(cards.substr(i, 2));
        if (mask & card)
            throw badToken(cards.substr(i, 2), "Card given twice");
        mask |= card;
    }
    return mask;
}

std::vector<CardMask> handsOfRange(std::string_view technicalRange) {
    std::vector<CardMask> hands;
    std::size_t start = 0;
    while (start <= technicalRange.size()) {
        std::size_t end = technicalRange.find(',', start);
        if (end == std::string_view::npos)
            end = technicalRange.size();
        const std::string_view token = technicalRange.substr(start, end - start);
        start = end + 1;
        if (token.empty())
            continue; // "AA,,KK" or a trailing comma: nothing to add
        if (token.size() == 4) {
            CardMask first = 0;
            CardMask second = 0;
            try {
                first = cardOfText(token.substr(0, 2));
                second = cardOfText(token.substr(2, 2));
            } catch (const std::invalid_argument&) {
                throw badToken(token, "Invalid range token");
            }
            // A hand holding one card twice can never be dealt (the range text may produce
            // it from wildcards); like a hand blocked by the board it contributes nothing.
            if (first != second)
                hands.push_back(first | second);
            continue;
        }
        if (token.size() != 2 && token.size() != 3)
            throw badToken(token, "Invalid range token");
        const int high = valueBitOfChar(token[0]);
        const int low = valueBitOfChar(token[1]);
        if (high < 0 || low < 0)
            throw badToken(token, "Invalid range token");
        bool suited = true;
        bool offsuit = true;
        if (token.size() == 3) {
            if (high == low || (token[2] != 's' && token[2] != 'o'))
                throw badToken(token, "Invalid range token");
            suited = token[2] == 's';
            offsuit = token[2] == 'o';
        }
        for (int lane1 = 0; lane1 < 4; ++lane1) {
            for (int lane2 = 0; lane2 < 4; ++lane2) {
                if (high == low) {
                    if (lane2 > lane1)
                        hands.push_back(cardOf(high, lane1) | cardOf(low, lane2));
                } else if ((lane1 == lane2 && suited) || (lane1 != lane2 && offsuit)) {
                    hands.push_back(cardOf(high, lane1) | cardOf(low, lane2));
                }
            }
        }
    }
    if (hands.size() < 64) {
        std::sort(hands.begin(), hands.end());
        hands.erase(std::unique(hands.begin(), hands.end()), hands.end());
        return hands;
    }
    // A wide range: ascending masks are ascending hand indices, so a pass over the flags of
    // the 1,326 hands sorts and removes duplicates at once, several times faster than sorting.
    std::vector<std::uint8_t> present(handCount, 0);
    for (CardMask hand : hands)
        present[std::size_t(handIndex(hand))] = 1;
    hands.clear();
    std::size_t index = 0;
    for (int high = 1; high < 52; ++high)
        for (int low = 0; low < high; ++low, ++index)
            if (present[index])
                hands.push_back((CardMask(1) << low) | (CardMask(1) << high));
    return hands;
}

std::string textOfCard(CardMask card) {
    if (card == 0 || (card & (card - 1)) != 0 || card >= (CardMask(1) << 52))
        throw std::invalid_argument("textOfCard needs a mask of exactly one card");
    int bit = 0;
    while (!((card >> bit) & 1))
        ++bit;
    return std::string{valueCharacters[bit % 13], suitCharacters[bit / 13]};
}

} // namespace qve
