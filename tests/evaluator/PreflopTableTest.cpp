// The preflop paths (the checked-in matchup table, and inclusion-exclusion over dead cards)
// against direct enumeration of every board. The direct count ranks with rankCards, which
// HandRankTest checks against the plain reference on every five-card hand.

#include "HandRank.h"
#include "VelmaraEvaluatorBase.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

using namespace qve;

namespace {

struct Direct {
    unsigned long long total = 0;
    unsigned long long wins = 0;
    unsigned long long ties = 0;
};

// Every board of five cards avoiding both hands and the dead cards.
Direct directCount(CardMask hand1, CardMask hand2, CardMask dead) {
    std::vector<int> deck;
    for (int card = 0; card < 52; ++card)
        if (!(((hand1 | hand2 | dead) >> card) & 1))
            deck.push_back(card);
    Direct d;
    const int n = static_cast<int>(deck.size());
    for (int a = 0; a < n; ++a)
        for (int b = a + 1; b < n; ++b)
            for (int c = b + 1; c < n; ++c)
                for (int e = c + 1; e < n; ++e)
                    for (int f = e + 1; f < n; ++f) {
                        const CardMask board = 1ull << deck[a] | 1ull << deck[b] | 1ull << deck[c] |
                                               1ull << deck[e] | 1ull << deck[f];
                        const HandRank r1 = rankCards(board | hand1);
                        const HandRank r2 = rankCards(board | hand2);
                        ++d.total;
                        d.wins += r1 > r2;
                        d.ties += r1 == r2;
                    }
    return d;
}

std::string textOfHand(CardMask hand) {
    const CardMask low = hand & (~hand + 1);
    return textOfCard(hand & ~low) + textOfCard(low);
}

class Preflop : public ::testing::Test {
protected:
    static void SetUpTestSuite() { initializeAllBoardsBeforeCalculation(); }
};

} // namespace

// Random pairs of hands: the table entry, seen from either seat, equals the direct count.
TEST_F(Preflop, SampledMatchupsEqualDirectEnumeration) {
    std::mt19937 random(2026);
    for (int sample = 0; sample < 24; ++sample) {
        CardMask cards[4];
        CardMask used = 0;
        for (CardMask& card : cards) {
            do {
                card = 1ull << (random() % 52);
            } while (card & used);
            used |= card;
        }
        const std::string hand1 = textOfHand(cards[0] | cards[1]);
        const std::string hand2 = textOfHand(cards[2] | cards[3]);
        SCOPED_TRACE(hand1 + " vs " + hand2);
        const Direct d = directCount(cards[0] | cards[1], cards[2] | cards[3], 0);
        volatile bool stop = false;
        const LongedEvaluation e = getEquity(hand1, hand2, "", stop);
        EXPECT_EQ(e.total, d.total);
        EXPECT_EQ(e.wins1, d.wins);
        EXPECT_EQ(e.ties, d.ties);
        const LongedEvaluation swapped = getEquity(hand2, hand1, "", stop);
        EXPECT_EQ(swapped.wins2, d.wins);
        EXPECT_EQ(swapped.ties, d.ties);
    }
}

// Matchups whose classes hold many suit patterns: pairs, suited against suited in the same
// suit, hands sharing a value.
TEST_F(Preflop, SpecialShapesEqualDirectEnumeration) {
    const char* pairs[][2] = {{"AhKh", "QhJh"}, {"AhAd", "AsAc"}, {"7c2d", "7d2c"},
                              {"KsQs", "KcQc"}, {"2h2d", "3h3s"}, {"AhKd", "AsKh"}};
    volatile bool stop = false;
    for (const auto& p : pairs) {
        SCOPED_TRACE(std::string(p[0]) + " vs " + p[1]);
        const Direct d = directCount(cardsOfText(p[0]), cardsOfText(p[1]), 0);
        const LongedEvaluation e = getEquity(p[0], p[1], "", stop);
        EXPECT_EQ(e.total, d.total);
        EXPECT_EQ(e.wins1, d.wins);
        EXPECT_EQ(e.ties, d.ties);
    }
}

// Dead cards on an empty board go through inclusion-exclusion over the dead cards (few of
// them) or through direct enumeration (many): both equal the direct count.
TEST_F(Preflop, DeadCardsEqualDirectEnumeration) {
    struct Case {
        const char* hand1;
        const char* hand2;
        const char* dead;
    };
    const Case cases[] = {{"AhAs", "KdKc", "2d"},          {"AhAs", "KdKc", "Kh"},
                          {"7h6h", "AdKc", "5h8h"},        {"QsJs", "2c2d", "Ts9s8h"},
                          {"AhKh", "QdQc", "2h3h4h5h"},    {"9c8c", "AsAd", "2d3d4d5d6d"},
                          {"JhTh", "7s7c", "2d3d4d5d6dKs"}};
    volatile bool stop = false;
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.hand1) + " vs " + c.hand2 + " dead " + c.dead);
        const Direct d =
            directCount(cardsOfText(c.hand1), cardsOfText(c.hand2), cardsOfText(c.dead));
        const LongedEvaluation e = getEquity(c.hand1, c.hand2, c.dead, stop);
        EXPECT_EQ(e.total, d.total);
        EXPECT_EQ(e.wins1, d.wins);
        EXPECT_EQ(e.ties, d.ties);
        EXPECT_EQ(e.wins2, d.total - d.wins - d.ties);
    }
}

// Ranges with dead cards, hand by hand: each combination against each combination counted
// directly and summed.
TEST_F(Preflop, RangesWithDeadCardsByHand) {
    const std::string range1 = "AhAs,AdAc,KhQh";
    const std::string range2 = "KdKc,Td9d";
    const CardMask dead = cardsOfText("2d");
    volatile bool stop = false;
    const auto byHand = getWinEvaluationByHand(range1, range2, "2d", stop);
    ASSERT_EQ(byHand.size(), 3u);
    for (const WinEvaluationByHand& record : byHand) {
        const CardMask hand1 = cardsOfText(record.hand);
        Direct sum;
        for (CardMask hand2 : handsOfRange(range2)) {
            if (hand1 & hand2)
                continue;
            const Direct d = directCount(hand1, hand2, dead);
            sum.total += d.total;
            sum.wins += d.wins;
            sum.ties += d.ties;
        }
        EXPECT_EQ(record.total, sum.total) << record.hand;
        EXPECT_EQ(record.wins, sum.wins) << record.hand;
        EXPECT_EQ(record.ties, sum.ties) << record.hand;
    }
}
