#include "Cards.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

using namespace qve;

namespace {

// The message of the std::invalid_argument that `call` throws, or "" when none is thrown.
template <typename Call>
std::string invalidArgumentMessage(Call call) {
    try {
        call();
    } catch (const std::invalid_argument& error) {
        return error.what();
    }
    return "";
}

} // namespace

TEST(Cards, CardMasksFollowTheLanes) {
    EXPECT_EQ(cardOfText("2d"), 1ull);
    EXPECT_EQ(cardOfText("Ad"), 1ull << 12);
    EXPECT_EQ(cardOfText("2h"), 1ull << 13);
    EXPECT_EQ(cardOfText("Ah"), 1ull << 25);
    EXPECT_EQ(cardOfText("2s"), 1ull << 26);
    EXPECT_EQ(cardOfText("Tc"), 1ull << (39 + 8));
    EXPECT_EQ(cardOfText("Ac"), 1ull << 51);
}

TEST(Cards, TextOfEveryCardRoundTrips) {
    for (int bit = 0; bit < 52; ++bit) {
        const CardMask card = 1ull << bit;
        EXPECT_EQ(cardOfText(textOfCard(card)), card) << textOfCard(card);
    }
    EXPECT_EQ(textOfCard(1ull << 12), "Ad");
    EXPECT_THROW(textOfCard(3), std::invalid_argument);
    EXPECT_THROW(textOfCard(0), std::invalid_argument);
}

TEST(Cards, BadCardsAreNamed) {
    EXPECT_NE(invalidArgumentMessage([] { cardOfText("Ax"); }).find("'Ax'"), std::string::npos);
    EXPECT_NE(invalidArgumentMessage([] { cardOfText("1d"); }).find("'1d'"), std::string::npos);
    EXPECT_NE(invalidArgumentMessage([] { cardOfText("AD"); }).find("'AD'"), std::string::npos);
    EXPECT_NE(invalidArgumentMessage([] { cardOfText("A"); }).find("'A'"), std::string::npos);
    EXPECT_NE(invalidArgumentMessage([] { cardsOfText("AhKdQ"); }), "");
    EXPECT_NE(invalidArgumentMessage([] { cardsOfText("AhKdAh"); }).find("'Ah'"),
              std::string::npos);
}

TEST(Cards, CardsOfTextOrsTheCards) {
    EXPECT_EQ(cardsOfText(""), 0ull);
    EXPECT_EQ(cardsOfText("AhKd2c"), cardOfText("Ah") | cardOfText("Kd") | cardOfText("2c"));
}

TEST(Cards, HandsOfRangeExpandsEveryTokenForm) {
    EXPECT_EQ(handsOfRange("AA").size(), 6u);
    EXPECT_EQ(handsOfRange("AK").size(), 16u);
    EXPECT_EQ(handsOfRange("AKs").size(), 4u);
    EXPECT_EQ(handsOfRange("AKo").size(), 12u);
    EXPECT_EQ(handsOfRange("AdKh").size(), 1u);
    EXPECT_EQ(handsOfRange("AdKh")[0], cardOfText("Ad") | cardOfText("Kh"));
    EXPECT_EQ(handsOfRange("QQ,AKs,AKo,AdKh,AhKd").size(), 6u + 4u + 12u);
    EXPECT_EQ(handsOfRange("AKs,AKo").size(), 16u);
    EXPECT_TRUE(handsOfRange("").empty());
    EXPECT_EQ(handsOfRange("AA,,KK,").size(), 12u);
}

TEST(Cards, HandsOfRangeAreSortedAndUnique) {
    const auto hands = handsOfRange("KK,AA,AhAd,AK");
    EXPECT_EQ(hands.size(), 6u + 6u + 16u);
    for (std::size_t i = 1; i < hands.size(); ++i)
        EXPECT_LT(hands[i - 1], hands[i]);
    for (CardMask hand : hands)
        EXPECT_EQ(__builtin_popcountll(hand), 2);
}

TEST(Cards, SuitedAndOffsuitHandsHaveTheirShape) {
    for (CardMask hand : handsOfRange("T9s")) {
        const bool sameLane =
            ((hand & 0x1FFF) == hand) || (((hand >> 13) & 0x1FFF) << 13) == hand ||
            (((hand >> 26) & 0x1FFF) << 26) == hand || (((hand >> 39) & 0x1FFF) << 39) == hand;
        EXPECT_TRUE(sameLane);
    }
    for (CardMask hand : handsOfRange("T9o")) {
        const bool sameLane =
            ((hand & 0x1FFF) == hand) || (((hand >> 13) & 0x1FFF) << 13) == hand ||
            (((hand >> 26) & 0x1FFF) << 26) == hand || (((hand >> 39) & 0x1FFF) << 39) == hand;
        EXPECT_FALSE(sameLane);
    }
}

TEST(Cards, AHandHoldingOneCardTwiceCannotBeDealt) {
    EXPECT_TRUE(handsOfRange("AhAh").empty());
    EXPECT_EQ(handsOfRange("AhAh,KK").size(), 6u);
}

TEST(Cards, BadRangeTokensAreNamed) {
    EXPECT_NE(invalidArgumentMessage([] { handsOfRange("AA,AKx"); }).find("'AKx'"),
              std::string::npos);
    EXPECT_NE(invalidArgumentMessage([] { handsOfRange("AAs"); }).find("'AAs'"), std::string::npos);
    EXPECT_NE(invalidArgumentMessage([] { handsOfRange("ZZ"); }).find("'ZZ'"), std::string::npos);
    EXPECT_NE(invalidArgumentMessage([] { handsOfRange("A"); }).find("'A'"), std::string::npos);
    EXPECT_NE(invalidArgumentMessage([] { handsOfRange("AKs+"); }).find("'AKs+'"),
              std::string::npos);
    EXPECT_NE(invalidArgumentMessage([] { handsOfRange("AdKx"); }).find("'AdKx'"),
              std::string::npos);
    EXPECT_NE(invalidArgumentMessage([] { handsOfRange("QQ AK"); }), "");
}
