#include "Range/CardText.h"

#include <VelmaraEvaluatorBase.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

using Range::CardTextError;
namespace CardText = Range::CardText;

namespace {

// The reason a strict reader gives, or "" when it reads.
template <typename Read>
std::string reasonOf(Read read) {
    try {
        read();
    } catch (const CardTextError& error) {
        return error.what();
    }
    return std::string();
}

} // namespace

TEST(CardText, EveryCardHasTheEvaluatorsMask) {
    const std::string values = "AKQJT98765432";
    const std::string suits = "dhsc";
    unsigned long long all = 0;
    for (char value : values) {
        for (char suit : suits) {
            const std::string card{value, suit};
            const unsigned long long mask = CardText::cardOf(value, suit);
            EXPECT_EQ(mask, getIndexByCards(card)) << card;
            EXPECT_EQ(CardText::textOf(mask), card);
            EXPECT_EQ(all & mask, 0u) << card;
            all |= mask;
        }
    }
    EXPECT_EQ(all, (1ULL << 52) - 1);
}

TEST(CardText, WildcardsAndWrongCaseAreNoCards) {
    EXPECT_EQ(CardText::cardOf('X', 'd'), 0u);
    EXPECT_EQ(CardText::cardOf('A', 'x'), 0u);
    EXPECT_EQ(CardText::cardOf('a', 'd'), 0u);
    EXPECT_EQ(CardText::cardOf('A', 'D'), 0u);
    EXPECT_EQ(CardText::cardOf('1', 'd'), 0u);
    EXPECT_EQ(CardText::textOf(0), "");
    EXPECT_EQ(CardText::textOf(3), "");          // two cards
    EXPECT_EQ(CardText::textOf(1ULL << 52), ""); // beyond the deck
}

TEST(CardText, ABoardHasZeroThreeFourOrFiveCards) {
    EXPECT_EQ(CardText::readBoard("").size(), 0u);
    EXPECT_EQ(CardText::readBoard("Ah7d2c").size(), 3u);
    EXPECT_EQ(CardText::readBoard("Ah7d2cKs").size(), 4u);
    const Range::CardList river = CardText::readBoard("Ah7d2cKs9h");
    EXPECT_EQ(river.size(), 5u);
    EXPECT_EQ(river.mask, getIndexByCards("Ah") | getIndexByCards("7d") | getIndexByCards("2c") |
                              getIndexByCards("Ks") | getIndexByCards("9h"));
    EXPECT_EQ(river.cards.front(), getIndexByCards("Ah")); // in the order written
    EXPECT_EQ(reasonOf([] { CardText::readBoard("Ah"); }),
              "A board has 0, 3, 4 or 5 cards, not 1.");
    EXPECT_EQ(reasonOf([] { CardText::readBoard("Ah7d"); }),
              "A board has 0, 3, 4 or 5 cards, not 2.");
    EXPECT_EQ(reasonOf([] { CardText::readBoard("Ah7d2cKs9h3d"); }),
              "A board has 0, 3, 4 or 5 cards, not 6.");
}

TEST(CardText, FaultsAreNamedInTheUsersWords) {
    EXPECT_EQ(reasonOf([] { CardText::readBoard("AhAh2c"); }), "The card Ah is given twice.");
    EXPECT_EQ(reasonOf([] { CardText::readBoard("Ks7d2x"); }),
              "Unknown card \"2x\" in the board: a card is a rank and a suit, like Ah.");
    EXPECT_EQ(reasonOf([] { CardText::readBoard("Ah7"); }),
              "The board \"Ah7\" is not a list of two-character cards: a card is a rank and a "
              "suit, like Ah.");
    EXPECT_EQ(reasonOf([] { CardText::readDeadCards("Ah7"); }),
              "The dead cards \"Ah7\" is not a list of two-character cards: a card is a rank and "
              "a suit, like Ah.");
    EXPECT_EQ(reasonOf([] { CardText::readDeadCards("9s", getIndexByCards("9s")); }),
              "The card 9s is given twice.");
    EXPECT_EQ(reasonOf([] { CardText::readHand("AhKhQh"); }), "A hand has 2 cards, not 3.");
    EXPECT_EQ(reasonOf([] { CardText::readHand("AhAh"); }), "The card Ah is given twice.");
    EXPECT_EQ(reasonOf([] { CardText::readHand("Ah1h"); }),
              "Unknown card \"1h\" in the hand: a card is a rank and a suit, like Ah.");
}

TEST(CardText, CardsAreReadAsPlayersTypeThem) {
    // Any case, and blanks, commas or semicolons between the cards.
    EXPECT_EQ(CardText::tidy("ah kd, 2C"), "AhKd2c");
    EXPECT_EQ(CardText::tidy("AH;KD"), "AhKd");
    EXPECT_EQ(CardText::tidy(""), "");
    EXPECT_EQ(CardText::readBoard("ah KD 2c").mask, CardText::readBoard("AhKd2c").mask);
    EXPECT_EQ(CardText::readHand("AS,ks"), CardText::readHand("AsKs"));
    EXPECT_EQ(CardText::problemOf("AH 7D 2C", "ks"), "");
    EXPECT_EQ(CardText::problemOf("Ah 7d", ""), "A board has 0, 3, 4 or 5 cards, not 2.");
    EXPECT_EQ(CardText::lenientCards("Ah Kd, 2c;9S"),
              (std::vector<std::string>{"Ah", "Kd", "2c", "9s"}));
}

TEST(CardText, ProblemOfABoardWithItsDeadCards) {
    EXPECT_EQ(CardText::problemOf("", ""), "");
    EXPECT_EQ(CardText::problemOf("Ah7d2c", "KsKd"), "");
    EXPECT_EQ(CardText::problemOf("Ah7d2c", "2c"), "The card 2c is given twice.");
    EXPECT_EQ(CardText::problemOf("Ah7d", ""), "A board has 0, 3, 4 or 5 cards, not 2.");
    EXPECT_EQ(CardText::problemOf("", "AhAh"), "The card Ah is given twice.");
    // The board is read first: its fault is the one named.
    EXPECT_EQ(CardText::problemOf("Ah", "Zz"), "A board has 0, 3, 4 or 5 cards, not 1.");
}

TEST(CardText, AHandIsTwoDistinctCards) {
    EXPECT_EQ(CardText::readHand("AhKd"), getIndexByCards("Ah") | getIndexByCards("Kd"));
    EXPECT_EQ(CardText::readHand("2c2d"), getIndexByCards("2c") | getIndexByCards("2d"));
    EXPECT_TRUE(CardText::isCards("AhKd", 2));
    EXPECT_FALSE(CardText::isCards("AhAh", 2));
    EXPECT_FALSE(CardText::isCards("AhKd", 3));
    EXPECT_FALSE(CardText::isCards("AxKd", 2));
    EXPECT_TRUE(CardText::isCards("", 0));
}

TEST(CardText, AnUnfinishedFlopIsOneOrTwoDistinctCards) {
    EXPECT_TRUE(CardText::isUnfinishedFlop("Ah"));
    EXPECT_TRUE(CardText::isUnfinishedFlop("Ah7d"));
    EXPECT_FALSE(CardText::isUnfinishedFlop(""));
    EXPECT_FALSE(CardText::isUnfinishedFlop("Ah7d2c"));
    EXPECT_FALSE(CardText::isUnfinishedFlop("AhAh"));
    EXPECT_FALSE(CardText::isUnfinishedFlop("A"));
}

TEST(CardText, TypedTextIsReadTheForgivingWay) {
    // Value upper case, suit lower case; no card and repeats dropped; text order kept.
    EXPECT_EQ(CardText::lenientCards("ahKD"), (std::vector<std::string>{"Ah", "Kd"}));
    // Blanks between cards are skipped; a piece that is no card is dropped.
    EXPECT_EQ(CardText::lenientCards("Ah zz 7d"), (std::vector<std::string>{"Ah", "7d"}));
    EXPECT_EQ(CardText::lenientCards("AhAh7d"), (std::vector<std::string>{"Ah", "7d"}));
    EXPECT_EQ(CardText::lenientCards("2c3"), (std::vector<std::string>{"2c"}));
    EXPECT_EQ(CardText::lenientCards("XdAx"), (std::vector<std::string>{}));
    EXPECT_EQ(CardText::lenientCards(""), (std::vector<std::string>{}));
    // A byte outside ASCII is one character of its piece, which is no card.
    EXPECT_EQ(CardText::lenientCards("\xc4h9s"), (std::vector<std::string>{"9s"}));
    EXPECT_EQ(CardText::lenientCards("Ts\xc4h"), (std::vector<std::string>{"Ts"}));
}
