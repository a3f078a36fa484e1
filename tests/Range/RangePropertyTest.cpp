#include "Range/HandRange.h"
#include "Range/HandRangeElementConversion.h"
#include "Range/HandRangeStringManipulator.h"
#include "Range/RangeStringOperations.h"
#include "support/AssertionRecorder.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <string>
#include <vector>

using namespace Range;

namespace {

// A random range: each class empty, full, or a random subset of its combinations, with
// densities that vary from range to range so that runs, gaps and single hands all occur.
HandRange randomRange(std::mt19937& random) {
    std::uniform_int_distribution<int> percent(0, 99);
    const int emptyShare = percent(random);
    const int fullShare = percent(random);
    HandRange range;
    for (auto it = range.begin(); it != range.end(); ++it) {
        const int roll = percent(random);
        unsigned int suits = 0;
        if (roll < emptyShare)
            suits = 0;
        else if (percent(random) < fullShare)
            suits = it->possibleSuits;
        else
            suits = static_cast<unsigned int>(random()) & it->possibleSuits;
        range.setSuits(it, suits);
    }
    return range;
}

std::string technicalOf(const HandRange& range) {
    return HandRangeStringReader(range).technicalText();
}

// Free text in the spirit of a user: valid tokens in any spelling, spans either way round,
// wildcards, stray separators and blanks, and some garbage.
std::string randomFreeText(std::mt19937& random) {
    static const std::string values = "23456789TJQKA";
    static const std::string suits = "dhsc";
    std::uniform_int_distribution<int> pick(0, 12);
    std::uniform_int_distribution<int> suitPick(0, 3);
    std::uniform_int_distribution<int> shape(0, 11);
    std::uniform_int_distribution<int> coin(0, 1);
    auto value = [&] {
        char c = values[pick(random)];
        return coin(random) ? static_cast<char>(std::tolower(static_cast<unsigned char>(c))) : c;
    };
    auto suit = [&] {
        char c = suits[suitPick(random)];
        return coin(random) ? static_cast<char>(std::toupper(static_cast<unsigned char>(c))) : c;
    };
    auto cls = [&] { return std::string(1, "sSoO"[suitPick(random)]); };
    std::string text;
    const int tokens = std::uniform_int_distribution<int>(0, 25)(random);
    for (int i = 0; i < tokens; ++i) {
        if (i > 0)
            text += coin(random) ? "," : " , ";
        const char a = value();
        const char b = value();
        const char c = value();
        switch (shape(random)) {
        case 0:
            text += std::string{a, a};
            break;
        case 1:
            text += std::string{a, b};
            break;
        case 2:
            text += std::string{a, b} + cls();
            break;
        case 3:
            text += std::string{a, suit(), b, suit()};
            break;
        case 4:
            text += std::string{a, a, '+'};
            break;
        case 5:
            text += std::string{a, b} + cls() + "+";
            break;
        case 6:
            text += std::string{a, b, '+'};
            break;
        case 7:
            text += std::string{a, a, '-', b, b};
            break;
        case 8: {
            const std::string k = cls();
            text += std::string{a, b} + k + "-" + std::string{a, c} + k;
            break;
        }
        case 9:
            text += std::string{a, b, '-', a, c};
            break;
        case 10:
            text += std::string{coin(random) ? 'X' : a, coin(random) ? 'x' : suit(), 'X', 'x'};
            break;
        default:
            text += ",,xyz";
            break;
        }
    }
    return text;
}

} // namespace

TEST(RangeProperties, CompactOfTechnicalTextReparsesToTheSameSuits) {
    std::mt19937 random(20261121);
    for (int round = 0; round < 400; ++round) {
        const HandRange range = randomRange(random);
        const std::string compactText = compact(technicalOf(range));
        HandRange back;
        HandRangeStringManipulator(back).setFree(compactText);
        ASSERT_EQ(back.suitsVector(), range.suitsVector())
            << "round " << round << ": " << compactText;
        // Compact text is canonical: normalize leaves it as it is.
        std::string again = compactText;
        normalize(again);
        ASSERT_EQ(again, compactText);
    }
}

TEST(RangeProperties, TechnicalTextRoundTrips) {
    std::mt19937 random(7);
    for (int round = 0; round < 200; ++round) {
        const HandRange range = randomRange(random);
        HandRange back;
        HandRangeStringManipulator(back).set(technicalOf(range));
        ASSERT_EQ(back.suitsVector(), range.suitsVector()) << round;
    }
}

TEST(RangeProperties, CountOfTechnicalTextEqualsCombinationCount) {
    std::mt19937 random(11);
    for (int round = 0; round < 400; ++round) {
        const HandRange range = randomRange(random);
        const auto counted = countCombinations(technicalOf(range));
        ASSERT_EQ(counted.first, range.combinationCount()) << round;
        ASSERT_EQ(counted.second, range.rangePercentage()) << round;
    }
}

TEST(RangeProperties, NormalizeOfNormalTextChangesNothing) {
    std::mt19937 random(3);
    AssertionRecorder recorder;
    for (int round = 0; round < 2000; ++round) {
        std::string text = randomFreeText(random);
        normalize(text);
        std::string again = text;
        normalize(again);
        ASSERT_EQ(again, text) << round;
        // Normal text always expands and parses without a fault being reported.
        HandRange range;
        HandRangeStringManipulator(range).setNormal(text, true);
        ASSERT_TRUE(recorder.messages().empty()) << text << ": " << recorder.messages().front();
    }
}

TEST(RangeProperties, NormalizeNeverThrowsOnRandomBytes) {
    std::mt19937 random(99);
    static const std::string alphabet =
        "AKQJT98765432akqjtXxdhscDHSCoOpP+-,,,, \t\n.;:!?()[]{}#*/\\'\"_=<>|~@$%^&01";
    std::uniform_int_distribution<int> lengths(0, 40);
    std::uniform_int_distribution<int> letter(0, static_cast<int>(alphabet.size()) - 1);
    std::uniform_int_distribution<int> byte(0, 255);
    std::uniform_int_distribution<int> mode(0, 3);
    AssertionRecorder recorder;
    for (int round = 0; round < 20000; ++round) {
        std::string text;
        const int length = lengths(random);
        const bool rawBytes = mode(random) == 0;
        for (int i = 0; i < length; ++i)
            text += rawBytes ? static_cast<char>(byte(random)) : alphabet[letter(random)];
        std::string normal = text;
        ASSERT_NO_THROW(normalize(normal)) << round;
        std::string again = normal;
        normalize(again);
        ASSERT_EQ(again, normal) << round;
        HandRange range;
        ASSERT_NO_THROW(HandRangeStringManipulator(range).setFree(text)) << round;
        ASSERT_TRUE(recorder.messages().empty()) << normal;
    }
}

TEST(RangeProperties, NormalizeCopesWithVeryLongInput) {
    std::mt19937 random(5);
    std::string text;
    while (text.size() < 300000)
        text += randomFreeText(random) + ",";
    std::string garbage(200000, ',');
    for (std::size_t i = 0; i < garbage.size(); i += 3)
        garbage[i] = static_cast<char>(random() & 0xFF);
    for (std::string input : {text, garbage, std::string(100000, ','), std::string(50000, 'A')}) {
        std::string normal = input;
        ASSERT_NO_THROW(normalize(normal));
        HandRange range;
        ASSERT_NO_THROW(HandRangeStringManipulator(range).setFree(input));
        EXPECT_EQ(range.combinationCount(), countCombinations(technicalOf(range)).first);
    }
}

namespace {

// The hands of a range as two-bit card masks.
std::set<CardMask> handsOf(const HandRange& range) {
    std::vector<CardMask> hands;
    for (const Element& element : range)
        handsOfElement(element.values, element.suits, hands);
    return std::set<CardMask>(hands.begin(), hands.end());
}

// Written here without the range code: a card fits a place when its value is the place's
// value or the place says X, and its suit is the place's suit or the place says x.
bool fits(int value, int lane, char placeValue, char placeSuit) {
    static const std::string values = "23456789TJQKA";
    static const std::string suits = "dhsc";
    return (placeValue == 'X' || values[static_cast<std::size_t>(value)] == placeValue) &&
           (placeSuit == 'x' || suits[static_cast<std::size_t>(lane)] == placeSuit);
}

std::set<CardMask> bruteForceWildcard(const std::string& token) {
    std::set<CardMask> hands;
    for (int a = 0; a < 52; ++a)
        for (int b = a + 1; b < 52; ++b) {
            const int av = a % 13, al = a / 13, bv = b % 13, bl = b / 13;
            const bool forward =
                fits(av, al, token[0], token[1]) && fits(bv, bl, token[2], token[3]);
            const bool backward =
                fits(bv, bl, token[0], token[1]) && fits(av, al, token[2], token[3]);
            if (forward || backward)
                hands.insert((1ULL << a) | (1ULL << b));
        }
    return hands;
}

} // namespace

TEST(RangeProperties, EveryWildcardSpellingMeansEveryHandThatFitsItsPlaces) {
    // Each place is a value or X and a suit or x: 70 spellings a card, 4900 tokens, in both
    // orders of the places and in lower case too.
    const std::string values = "23456789TJQKAX";
    const std::string suits = "dhscx";
    int checked = 0;
    for (char v1 : values)
        for (char s1 : suits)
            for (char v2 : values)
                for (char s2 : suits) {
                    const std::string token{v1, s1, v2, s2};
                    const std::set<CardMask> expected = bruteForceWildcard(token);
                    HandRange range;
                    HandRangeStringManipulator(range).setFree(token);
                    ASSERT_EQ(handsOf(range), expected) << token;
                    ASSERT_EQ(range.combinationCount(), expected.size()) << token;
                    ++checked;
                }
    EXPECT_EQ(checked, 4900);
    // Spot checks of the counts players know: any hand with a diamond, any hand with the king
    // of hearts, any two spades, two aces, everything.
    const auto count = [](const std::string& text) {
        HandRange range;
        HandRangeStringManipulator(range).setFree(text);
        return range.combinationCount();
    };
    EXPECT_EQ(count("XdXx"), 585u);
    EXPECT_EQ(count("xxkh"), 51u);
    EXPECT_EQ(count("XsXs"), 78u);
    EXPECT_EQ(count("AxAx"), 6u);
    EXPECT_EQ(count("XxXx"), 1326u);
    EXPECT_EQ(count("AhAh"), 0u); // one card twice is no hand
}
