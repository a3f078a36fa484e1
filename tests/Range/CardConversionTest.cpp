#include "Range/CardConversion.h"
#include "Range/RandomSource.h"

#include <gtest/gtest.h>

#include <set>
#include <stdexcept>
#include <string>

namespace {

// The message of the std::runtime_error thrown by `call`, or "" when nothing was thrown.
template <typename Call>
std::string runtimeErrorOf(Call call) {
    try {
        call();
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return std::string();
}

const std::string valueCharacters = "AKQJT98765432X";

} // namespace

TEST(CardConversion, ValueNumbersCountDownFromTheAce) {
    for (int number = 0; number < 14; ++number) {
        EXPECT_EQ(valueFromChar(valueCharacters[number]), number) << valueCharacters[number];
        EXPECT_EQ(charFromValue(number), valueCharacters[number]);
    }
}

TEST(CardConversion, WildcardXIsValueThirteenAndBack) {
    EXPECT_EQ(valueFromChar('X'), 13);
    EXPECT_EQ(charFromValue(13), 'X');
}

TEST(CardConversion, BadValueCharactersThrow) {
    for (char bad : std::string("x1a0tkqjZ+- \x01")) {
        EXPECT_EQ(runtimeErrorOf([&] { valueFromChar(bad); }), "Invalid value description.")
            << int(bad);
    }
    EXPECT_EQ(runtimeErrorOf([] { valueFromChar('\0'); }), "Invalid value description.");
}

TEST(CardConversion, BadValueNumbersThrow) {
    EXPECT_EQ(runtimeErrorOf([] { charFromValue(-1); }), "Invalid card value.");
    EXPECT_EQ(runtimeErrorOf([] { charFromValue(14); }), "Invalid card value.");
}

TEST(CardConversion, SuitNumbersAndCharacters) {
    const std::string suits = "AdhscSO";
    for (unsigned int number = 0; number < 7; ++number) {
        EXPECT_EQ(suitFromChar(suits[number]), number);
        EXPECT_EQ(charFromSuit(number), suits[number]);
    }
}

TEST(CardConversion, UpperCaseSAndOAreClassesLowerCaseSIsASpade) {
    EXPECT_EQ(suitFromChar('S'), 5u);
    EXPECT_EQ(suitFromChar('O'), 6u);
    EXPECT_EQ(suitFromChar('s'), 3u);
    // `o` is a class character of the range text, never a suit.
    EXPECT_EQ(runtimeErrorOf([] { suitFromChar('o'); }), "Invalid suit description.");
}

TEST(CardConversion, BadSuitsThrow) {
    for (char bad : std::string("xDHCaz1 ")) {
        EXPECT_EQ(runtimeErrorOf([&] { suitFromChar(bad); }), "Invalid suit description.") << bad;
    }
    EXPECT_EQ(runtimeErrorOf([] { charFromSuit(7); }), "Invalid suit value.");
    EXPECT_EQ(runtimeErrorOf([] { charFromSuit(100); }), "Invalid suit value.");
}

TEST(CardConversion, ValueNumberOfAnswersLikeValueFromCharWithoutThrowing) {
    for (int number = 0; number < 14; ++number)
        EXPECT_EQ(valueNumberOf(valueCharacters[number]), number) << valueCharacters[number];
    for (char bad : std::string("x1a0tkqjZ+- \x01"))
        EXPECT_EQ(valueNumberOf(bad), -1) << int(bad);
    EXPECT_EQ(valueNumberOf('\0'), -1);
}

TEST(CardConversion, SuitLanesFollowDiamondsHeartsSpadesClubs) {
    EXPECT_EQ(suitLaneOf('d'), 0);
    EXPECT_EQ(suitLaneOf('h'), 1);
    EXPECT_EQ(suitLaneOf('s'), 2);
    EXPECT_EQ(suitLaneOf('c'), 3);
    // The lanes are the suit numbers of the four real suits, one lower.
    for (char suit : std::string("dhsc"))
        EXPECT_EQ(static_cast<unsigned int>(suitLaneOf(suit)) + 1, suitFromChar(suit)) << suit;
    // The class characters and the wildcard have no lane.
    for (char bad : std::string("ASOoxDHC1 \0", 11))
        EXPECT_EQ(suitLaneOf(bad), -1) << int(bad);
}

TEST(CardConversion, CardTextIsValueThenSuit) {
    EXPECT_EQ(cardText(0, 1), "Ad");
    EXPECT_EQ(cardText(12, 4), "2c");
    EXPECT_EQ(cardText(4, 3), "Ts");
    EXPECT_EQ(cardText(13, 0), "XA");
    EXPECT_EQ(runtimeErrorOf([] { cardText(14, 1); }), "Invalid card value.");
    EXPECT_EQ(runtimeErrorOf([] { cardText(0, 9); }), "Invalid suit value.");
}

TEST(CardConversion, CardFromTextFillsTheRecord) {
    const CardValue card = cardFromText("Kh");
    EXPECT_EQ(card.value, 1);
    EXPECT_EQ(card.suit, 2u);
    EXPECT_EQ(card.text, "Kh");
    const CardValue deuce = cardFromText("2c");
    EXPECT_EQ(deuce.value, 12);
    EXPECT_EQ(deuce.suit, 4u);
    EXPECT_EQ(deuce.text, "2c");
}

TEST(CardConversion, CardFromTextRefusesBadText) {
    EXPECT_EQ(runtimeErrorOf([] { cardFromText("kh"); }), "Invalid value description.");
    EXPECT_EQ(runtimeErrorOf([] { cardFromText("Ko"); }), "Invalid suit description.");
    EXPECT_EQ(runtimeErrorOf([] { cardFromText("K"); }), "Invalid suit description.");
    EXPECT_EQ(runtimeErrorOf([] { cardFromText(""); }), "Invalid value description.");
    EXPECT_EQ(runtimeErrorOf([] { cardFromText("KhQ"); }), "Invalid card description.");
}

TEST(CardConversion, CardsCompareByValueNumberThenSuit) {
    EXPECT_LT(cardFromText("Ac"), cardFromText("Kd")); // the ace has the smaller number
    EXPECT_LT(cardFromText("Kd"), cardFromText("Kh"));
    EXPECT_FALSE(cardFromText("Kh") < cardFromText("Kd"));
    EXPECT_EQ(cardFromText("Qs"), cardFromText("Qs"));
    EXPECT_NE(cardFromText("Qs"), cardFromText("Qc"));
}

TEST(CardConversion, RandomCardDrawsValueThenSuitFromTheGivenSource) {
    Range::RandomSource reference(1234);
    const int value = static_cast<int>(reference.below(13));
    const int suit = static_cast<int>(reference.below(4)) + 1;
    Range::RandomSource random(1234);
    const CardValue card = randomCard(random);
    EXPECT_EQ(card.value, value);
    EXPECT_EQ(card.suit, static_cast<unsigned int>(suit));
    EXPECT_EQ(card.text, cardText(value, static_cast<unsigned int>(suit)));
}

TEST(CardConversion, RandomCardsCoverAllFiftyTwoCards) {
    Range::RandomSource random(42);
    std::set<std::string> seen;
    for (int i = 0; i < 5000; ++i) {
        const CardValue card = randomCard(random);
        ASSERT_GE(card.value, 0);
        ASSERT_LE(card.value, 12);
        ASSERT_GE(card.suit, 1u);
        ASSERT_LE(card.suit, 4u);
        seen.insert(card.text);
    }
    EXPECT_EQ(seen.size(), 52u);
}

TEST(CardConversion, HigherValueMeansSmallerNumber) {
    EXPECT_TRUE(isHigherValueThan('A', 'K'));
    EXPECT_TRUE(isHigherValueThan('T', '9'));
    EXPECT_TRUE(isHigherValueThan('3', '2'));
    EXPECT_FALSE(isHigherValueThan('K', 'A'));
    EXPECT_FALSE(isHigherValueThan('Q', 'Q'));
    EXPECT_TRUE(isLowerValueThan('2', '3'));
    EXPECT_FALSE(isLowerValueThan('A', 'K'));
    EXPECT_FALSE(isLowerValueThan('Q', 'Q'));
    EXPECT_EQ(runtimeErrorOf([] { isHigherValueThan('a', 'K'); }), "Invalid value description.");
}

TEST(CardConversion, TheAceHasNoHigherValue) {
    EXPECT_EQ(nextHigherValueChar('2'), '3');
    EXPECT_EQ(nextHigherValueChar('9'), 'T');
    EXPECT_EQ(nextHigherValueChar('K'), 'A');
    EXPECT_EQ(nextHigherValueChar('A'), '\0');
    // The character 0 is refused by the next look-up.
    EXPECT_EQ(runtimeErrorOf([] { nextHigherValueChar(nextHigherValueChar('A')); }),
              "Invalid value description.");
}
