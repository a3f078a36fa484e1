#include "Range/HandRangeElementConversion.h"

#include "Range/Assertion.h"
#include "Range/CardConversion.h"
#include "Range/HandRange.h"

#include <VelmaraEvaluatorBase.h>

#include <array>

namespace Range {
namespace {

constexpr unsigned int valueMaskSize = 8192;

constexpr std::array<unsigned int, valueMaskSize> buildBitCountTable() {
    std::array<unsigned int, valueMaskSize> table{};
    for (unsigned int mask = 1; mask < valueMaskSize; ++mask)
        table[mask] = table[mask >> 1] + (mask & 1U);
    return table;
}

constexpr std::array<unsigned int, valueMaskSize> buildTopBitTable() {
    std::array<unsigned int, valueMaskSize> table{};
    unsigned int top = 0;
    for (unsigned int mask = 1; mask < valueMaskSize; ++mask) {
        if ((mask & (mask - 1)) == 0)
            top = mask;
        table[mask] = top;
    }
    return table;
}

constexpr std::array<unsigned int, valueMaskSize> bitCountTable = buildBitCountTable();
constexpr std::array<unsigned int, valueMaskSize> topBitTable = buildTopBitTable();

CardMask inAllLanes(unsigned int valueBit) {
    const CardMask bit = valueBit;
    return bit | (bit << 13) | (bit << 26) | (bit << 39);
}

unsigned int laneOf(CardMask hand, int lane) {
    return static_cast<unsigned int>((hand >> (13 * lane)) & 0x1FFFULL);
}

unsigned int foldToValues(CardMask cards) {
    return laneOf(cards, 0) | laneOf(cards, 1) | laneOf(cards, 2) | laneOf(cards, 3);
}

} // namespace

unsigned int valueBitCount(unsigned int values) {
    return bitCountTable[values & 0x1FFFU];
}

unsigned int highestValueBit(unsigned int values) {
    return topBitTable[values & 0x1FFFU];
}

unsigned int suitBitCount(unsigned int suits) {
    unsigned int v = suits;
    v = v - ((v >> 1) & 0x55555555U);
    v = (v & 0x33333333U) + ((v >> 2) & 0x33333333U);
    v = (v + (v >> 4)) & 0x0F0F0F0FU;
    return (v * 0x01010101U) >> 24;
}

unsigned int valueToBinaryMask(char value) {
    switch (value) {
    case 'A':
        return 4096;
    case 'K':
        return 2048;
    case 'Q':
        return 1024;
    case 'J':
        return 512;
    case 'T':
        return 256;
    case '9':
        return 128;
    case '8':
        return 64;
    case '7':
        return 32;
    case '6':
        return 16;
    case '5':
        return 8;
    case '4':
        return 4;
    case '3':
        return 2;
    case '2':
        return 1;
    default:
        QV_ASSERT(false, "Value char not between 2 and A.");
        return 0;
    }
}

std::string valuesToText(unsigned int values) {
    std::string text;
    for (int bit = 12; bit >= 0; --bit)
        if (values & (1U << bit))
            text += valueAxis[bit];
    if (text.size() == 1)
        text += text[0];
    return text;
}

std::pair<CardMask, CardMask> valuesToBinaryMasks(unsigned int values) {
    values &= 0x1FFFU;
    if (values == 0) {
        QV_ASSERT(false, "value in valuesToBinaryMasks does not contain a value.");
        return {0, 0};
    }
    const unsigned int higher = highestValueBit(values);
    const unsigned int lower = values & (~values + 1U); // lowest set bit
    return {inAllLanes(higher), inAllLanes(lower)};
}

unsigned int possibleSuits(int suitClass) {
    switch (suitClass) {
    case Offsuit:
        return offsuitSuits;
    case Suited:
        return suitedSuits;
    case Pair:
        return pairSuits;
    default:
        QV_ASSERT(false, "Suit char not o or s.");
        return 0;
    }
}

int suitClassFromChar(char classCharacter) {
    switch (classCharacter) {
    case 'o':
        return Offsuit;
    case 's':
        return Suited;
    case 'p':
        return Pair;
    default:
        QV_ASSERT(false, "suit class invalid.");
        return 0;
    }
}

unsigned int suitPairToBit(char first, char second) {
    const int a = suitLaneOf(first);
    const int b = suitLaneOf(second);
    if (a < 0 || b < 0) {
        QV_ASSERT(false, "suits invalid.");
        return 0;
    }
    return 1U << (4 * a + b);
}

unsigned int suitPairsToMask(const std::string& suitPairs) {
    unsigned int mask = 0;
    for (std::size_t i = 0; i < suitPairs.size(); i += 2)
        mask |= suitPairToBit(suitPairs[i], i + 1 < suitPairs.size() ? suitPairs[i + 1] : '\0');
    return mask;
}

std::string suitsToText(unsigned int suits, bool listAlways) {
    if (!listAlways) {
        if (suits == offsuitSuits)
            return "o";
        if (suits == suitedSuits)
            return "s";
        if (suits == pairSuits)
            return std::string();
    }
    std::string text;
    for (int bit = 0; bit < 16; ++bit)
        if (suits & (1U << bit))
            text.append(suitPairOrder + 2 * bit, 2);
    return text;
}

std::string elementSuitsToText(unsigned int suits, unsigned int possible, int suitClass) {
    if (suits != 0) {
        if (suitClass == Offsuit && suits == (possible & offsuitSuits))
            return "o";
        if (suitClass == Suited && suits == (possible & suitedSuits))
            return "s";
        if (suitClass == Pair && suits == (possible & pairSuits))
            return std::string();
    }
    // Listed always: an offsuit class holding exactly the six pair bits must not read as
    // a pair, nor anything else as a short form of another class.
    return suitsToText(suits, true);
}

std::pair<CardMask, CardMask> suitToBinaryMask(unsigned int suitPair) {
    if (suitPair == 0 || suitPair > 0xFFFFU || (suitPair & (suitPair - 1)) != 0) {
        QV_ASSERT(false, "Invalid value in suitToBinaryMask.");
        return {0, 0};
    }
    int bit = 0;
    while (!(suitPair & (1U << bit)))
        ++bit;
    return {laneMasks[bit / 4], laneMasks[bit % 4]};
}

void handsOfElement(unsigned int values, unsigned int suits, std::vector<CardMask>& hands) {
    if (suits == 0)
        return;
    const std::pair<CardMask, CardMask> valueMasks = valuesToBinaryMasks(values);
    for (int bit = 0; bit < 16; ++bit) {
        if (!(suits & (1U << bit)))
            continue;
        const CardMask first = laneMasks[bit / 4];
        const CardMask second = laneMasks[bit % 4];
        hands.push_back((first & valueMasks.first) | (second & valueMasks.second));
    }
}

unsigned int suitPairOfHand(CardMask hand) {
    static const unsigned int sameLane[4] = {1, 32, 1024, 32768};
    unsigned int lanes[4];
    int occupied[4];
    int occupiedCount = 0;
    unsigned int cardCount = 0;
    for (int lane = 0; lane < 4; ++lane) {
        lanes[lane] = laneOf(hand, lane);
        cardCount += valueBitCount(lanes[lane]);
        if (lanes[lane])
            occupied[occupiedCount++] = lane;
    }
    const bool outsideLanes = (hand >> 52) != 0;
    if (!outsideLanes && cardCount == 2) {
        if (occupiedCount == 1)
            return sameLane[occupied[0]];
        if (occupiedCount == 2) {
            const int earlier = occupied[0];
            const int later = occupied[1];
            if (lanes[earlier] < lanes[later])
                return 1U << (4 * later + earlier);
            return 1U << (4 * earlier + later);
        }
    }
    QV_ASSERT(false, "Invalid suits.");
    return 0;
}

Element makeElement(unsigned int values, int suitClass, unsigned int suits) {
    Element element;
    element.values = values;
    element.suits = suits;
    element.possibleSuits = possibleSuits(suitClass);
    element.suitClass = suitClass;
    element.suited = suitClass == Suited;
    return element;
}

Element elementOfHand(CardMask hand) {
    const unsigned int values = foldToValues(hand);
    const unsigned int suits = suitPairOfHand(hand);
    if (suits == 1 || suits == 32 || suits == 1024 || suits == 32768)
        return makeElement(values, Suited, suits);
    return makeElement(values, valueBitCount(values) == 1 ? Pair : Offsuit, suits);
}

unsigned int blockedSuits(const Element& element, CardMask card) {
    static const unsigned int pairMasks[4] = {0x000E, 0x00C2, 0x0844, 0x0888};
    static const unsigned int firstCardMasks[4] = {0x000F, 0x00F0, 0x0F00, 0xF000};
    static const unsigned int secondCardMasks[4] = {0x1111, 0x2222, 0x4444, 0x8888};
    int lane = 0;
    while (lane < 4 && laneOf(card, lane) == 0)
        ++lane;
    if (lane == 4)
        return 0;
    const unsigned int cardValue = laneOf(card, lane);
    if ((element.values & cardValue) == 0)
        return 0;
    if (valueBitCount(element.values) == 1)
        return element.possibleSuits & pairMasks[lane];
    if (cardValue == highestValueBit(element.values))
        return element.possibleSuits & firstCardMasks[lane];
    return element.possibleSuits & secondCardMasks[lane];
}

std::vector<CardMask> cardsOfText(const std::string& cards, const HandRange* range) {
    std::vector<CardMask> result;
    for (std::size_t i = 0; i + 1 < cards.size(); i += 2)
        result.push_back(getIndexByCards(cards.substr(i, 2)));
    if (!range)
        return result;
    std::vector<CardMask> hands;
    for (const Element& element : *range)
        handsOfElement(element.values, element.suits, hands);
    if (hands.empty())
        return result;
    CardMask common = ~0ULL;
    for (CardMask hand : hands)
        common &= hand;
    for (int bit = 0; bit < 52; ++bit)
        if (common & (1ULL << bit))
            result.push_back(1ULL << bit);
    return result;
}

CardMask maskOfText(const std::string& cards, const HandRange* range) {
    CardMask mask = 0;
    for (CardMask card : cardsOfText(cards, range))
        mask |= card;
    return mask;
}

unsigned int availableCombinations(const Element& element, const std::vector<CardMask>& cards) {
    if (element.suits == 0)
        return 0;
    unsigned int blocked = 0;
    for (CardMask card : cards)
        blocked |= blockedSuits(element, card);
    blocked &= element.suits;
    return suitBitCount(element.suits) - suitBitCount(blocked);
}

unsigned int availableCombinations(const HandRange& range, const std::vector<CardMask>& cards) {
    CardMask dead = 0;
    for (CardMask card : cards)
        dead |= card;
    std::vector<CardMask> hands;
    hands.reserve(1326);
    for (const Element& element : range)
        handsOfElement(element.values, element.suits, hands);
    unsigned int count = 0;
    for (CardMask hand : hands)
        if ((hand & dead) == 0)
            ++count;
    return count;
}

std::string elementToText(const Element& element, bool asClass) {
    if (!asClass && element.suits == 0)
        return std::string();
    const std::string values = valuesToText(element.values);
    const std::string suits =
        asClass ? suitsToText(element.possibleSuits)
                : elementSuitsToText(element.suits, element.possibleSuits, element.suitClass);
    if (suits.size() <= 1)
        return values + suits;
    std::string text;
    text.reserve(suits.size() / 2 * 5);
    for (std::size_t i = 0; i + 1 < suits.size(); i += 2) {
        if (!text.empty())
            text += ',';
        text += values[0];
        text += suits[i];
        text += values[1];
        text += suits[i + 1];
    }
    return text;
}

namespace {

// The element's hands or class, each followed by `separator`; `withCounts` adds " (n)".
std::string listElement(const Element& element, bool withCounts) {
    if (element.suits == 0)
        return std::string();
    const std::string values = valuesToText(element.values);
    const std::string suits =
        elementSuitsToText(element.suits, element.possibleSuits, element.suitClass);
    if (suits.size() <= 1) {
        std::string text = values + suits;
        if (withCounts)
            text += " (" + std::to_string(suitBitCount(element.suits)) + ")";
        return text;
    }
    std::string text;
    for (std::size_t i = 0; i + 1 < suits.size(); i += 2) {
        text += values[0];
        text += suits[i];
        text += values[1];
        text += suits[i + 1];
        text += withCounts ? " (1), " : ",";
    }
    text.resize(text.size() - (withCounts ? 2 : 1));
    return text;
}

} // namespace

std::string elementToHoverText(const Element& element) {
    return listElement(element, true);
}

std::string elementToList(const Element& element) {
    return listElement(element, false);
}

} // namespace Range
