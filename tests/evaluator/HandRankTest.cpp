#include "HandRank.h"
#include "BruteForce.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <vector>

using namespace qve;

namespace {

CardMask maskOf(const int* cards, int n) {
    CardMask mask = 0;
    for (int i = 0; i < n; ++i)
        mask |= 1ull << cards[i];
    return mask;
}

HandRank rankOfText(const char* text) {
    return rankCards(cardsOfText(text));
}

} // namespace

// Every five-card hand: the library orders them exactly like the plain reference, and
// there are 7,462 distinct ranks.
TEST(HandRank, AllFiveCardHandsOrderLikeTheReference) {
    std::map<long, HandRank> rankOfReference;
    std::uint64_t categories[9] = {};
    int cards[5];
    for (cards[0] = 0; cards[0] < 52; ++cards[0])
        for (cards[1] = cards[0] + 1; cards[1] < 52; ++cards[1])
            for (cards[2] = cards[1] + 1; cards[2] < 52; ++cards[2])
                for (cards[3] = cards[2] + 1; cards[3] < 52; ++cards[3])
                    for (cards[4] = cards[3] + 1; cards[4] < 52; ++cards[4]) {
                        const HandRank rank = rankCards(maskOf(cards, 5));
                        ++categories[static_cast<int>(categoryOf(rank))];
                        const auto inserted =
                            rankOfReference.emplace(bruteforce::rankFive(cards), rank);
                        if (!inserted.second) {
                            ASSERT_EQ(inserted.first->second, rank);
                        }
                    }
    EXPECT_EQ(rankOfReference.size(), 7462u);
    HandRank previous = 0;
    bool first = true;
    for (const auto& entry : rankOfReference) {
        if (!first) {
            ASSERT_LT(previous, entry.second);
        }
        previous = entry.second;
        first = false;
    }
    const std::uint64_t expected[9] = {1302540, 1098240, 123552, 54912, 10200, 5108, 3744, 624, 40};
    for (int c = 0; c < 9; ++c)
        EXPECT_EQ(categories[c], expected[c]) << "category " << c;
}

// All 133,784,560 seven-card hands by category (well-known totals).
TEST(HandRank, AllSevenCardHandsByCategory) {
    std::uint64_t categories[9] = {};
    int cards[7];
    for (cards[0] = 0; cards[0] < 52; ++cards[0])
        for (cards[1] = cards[0] + 1; cards[1] < 52; ++cards[1])
            for (cards[2] = cards[1] + 1; cards[2] < 52; ++cards[2])
                for (cards[3] = cards[2] + 1; cards[3] < 52; ++cards[3])
                    for (cards[4] = cards[3] + 1; cards[4] < 52; ++cards[4])
                        for (cards[5] = cards[4] + 1; cards[5] < 52; ++cards[5])
                            for (cards[6] = cards[5] + 1; cards[6] < 52; ++cards[6])
                                ++categories[rankCards(maskOf(cards, 7)) >> 28];
    const std::uint64_t expected[9] = {23294460, 58627800, 31433400, 6461620, 6180020,
                                       4047644,  3473184,  224848,   41584};
    std::uint64_t total = 0;
    for (int c = 0; c < 9; ++c) {
        EXPECT_EQ(categories[c], expected[c]) << "category " << c;
        total += categories[c];
    }
    EXPECT_EQ(total, 133784560u);
}

// Six and seven cards rank as their best five: checked on random hands against the
// maximum over all five-card subsets.
TEST(HandRank, SixAndSevenCardsRankAsTheirBestFive) {
    std::mt19937 random(7);
    for (int round = 0; round < 100000; ++round) {
        const int n = round % 2 ? 7 : 6;
        std::vector<int> deck(52);
        for (int i = 0; i < 52; ++i)
            deck[i] = i;
        std::shuffle(deck.begin(), deck.end(), random);
        HandRank best = 0;
        for (int skip1 = 0; skip1 < n; ++skip1) {
            for (int skip2 = n == 7 ? skip1 + 1 : n; skip2 <= n; ++skip2) {
                int five[5];
                int k = 0;
                for (int i = 0; i < n; ++i)
                    if (i != skip1 && i != skip2)
                        five[k++] = deck[i];
                if (k == 5)
                    best = std::max(best, rankCards(maskOf(five, 5)));
            }
        }
        ASSERT_EQ(rankCards(maskOf(deck.data(), n)), best) << "round " << round;
    }
}

TEST(HandRank, CategoriesAndKickers) {
    EXPECT_EQ(categoryOf(rankOfText("AhKhQhJhTh2c3d")), HandCategory::StraightFlush);
    EXPECT_EQ(categoryOf(rankOfText("AhAdAsAc2h")), HandCategory::FourOfAKind);
    EXPECT_EQ(categoryOf(rankOfText("AhAdAs2c2h")), HandCategory::FullHouse);
    EXPECT_EQ(categoryOf(rankOfText("Ah9h7h5h2h")), HandCategory::Flush);
    EXPECT_EQ(categoryOf(rankOfText("Ah2d3s4c5h")), HandCategory::Straight);
    EXPECT_EQ(categoryOf(rankOfText("AhAdAs3c5h")), HandCategory::ThreeOfAKind);
    EXPECT_EQ(categoryOf(rankOfText("AhAd3s3c5h")), HandCategory::TwoPair);
    EXPECT_EQ(categoryOf(rankOfText("AhAd4s3c5h")), HandCategory::Pair);
    EXPECT_EQ(categoryOf(rankOfText("AhJd4s3c5h")), HandCategory::HighCard);

    // The wheel is the lowest straight, and the lowest straight flush.
    EXPECT_LT(rankOfText("Ah2d3s4c5h"), rankOfText("2d3s4c5h6h"));
    EXPECT_LT(rankOfText("Ah2h3h4h5h"), rankOfText("2h3h4h5h6h"));
    EXPECT_GT(rankOfText("Ah2d3s4c5h"), rankOfText("AhAdAsKc5h"));
    // Kickers decide; the sixth and seventh card do not.
    EXPECT_GT(rankOfText("AhAdKs3c2h"), rankOfText("AhAdQs3c2h"));
    EXPECT_EQ(rankOfText("AhAdKsQcJh3c2d"), rankOfText("AhAcKsQdJh4c2d"));
    EXPECT_GT(rankOfText("KhKd9s9c5h"), rankOfText("KsKc9h9d4h"));
    // Three pairs: the best two pairs and the best remaining card.
    EXPECT_EQ(rankOfText("KhKd9s9c5h5dAc"), rankOfText("KhKd9s9c2dAc3c"));
    // Two sets make a full house of the higher over the lower.
    EXPECT_EQ(rankOfText("8h8d8s2c2h2dAc"), rankOfText("8h8d8s2c2hKd3c"));
    // Flush beats straight on seven cards.
    EXPECT_EQ(categoryOf(rankOfText("2h5h7h9hJhTd8c")), HandCategory::Flush);
}

// rankCards takes any mask: fewer than 5 or more than 7 cards give 0, whatever the suits
// (several five-card lanes at once included), and bits above the deck are not cards.
TEST(HandRank, OtherCardCountsGiveZero) {
    EXPECT_EQ(rankCards(0), 0u);
    EXPECT_EQ(rankOfText("AhKhQhJh"), 0u);
    EXPECT_EQ(rankOfText("AhAdAsAc"), 0u);
    EXPECT_EQ(rankOfText("AhKhQhJhTh9h8h7h"), 0u);               // one lane of eight
    EXPECT_EQ(rankOfText("AhKhQhJhTh2d3d4d5d6d"), 0u);           // two lanes of five
    EXPECT_EQ(rankOfText("AhKhQhJhTh2d3d4d5d6d7s8s9sTsJs"), 0u); // three
    EXPECT_EQ(rankCards((CardMask(1) << 52) - 1), 0u);           // the whole deck
    std::mt19937_64 random(11);
    for (int round = 0; round < 200000; ++round) {
        const int n = static_cast<int>(random() % 53);
        std::vector<int> deck(52);
        for (int i = 0; i < 52; ++i)
            deck[i] = i;
        std::shuffle(deck.begin(), deck.end(), random);
        const CardMask cards = maskOf(deck.data(), n);
        const HandRank rank = rankCards(cards);
        if (n < 5 || n > 7)
            ASSERT_EQ(rank, 0u) << n << " cards, round " << round;
        else
            ASSERT_NE(rank, 0u) << n << " cards, round " << round;
        // Bits 52-63 change nothing.
        ASSERT_EQ(rankCards(cards | (random() << 52)), rank) << "round " << round;
    }
}
