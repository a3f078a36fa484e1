// The library against the plain reference of BruteForce.cpp on random ranges, boards and
// dead cards: every counter must be equal.

#include "BruteForce.h"
#include "VelmaraEvaluatorBase.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace {

const std::string valueCharacters = "23456789TJQKA";
const std::string suitCharacters = "dhsc";

struct RandomCase {
    std::string range1;
    std::string range2;
    std::string board;
    std::string dead;
};

std::string randomCard(std::mt19937& random) {
    return std::string{valueCharacters[random() % 13], suitCharacters[random() % 4]};
}

// A technical range text of `tokens` random tokens of every form. `wide` allows the wide
// forms (unqualified non-pairs of 16 and offsuit classes of 12 combinations).
std::string randomRange(std::mt19937& random, int tokens, bool wide) {
    std::string text;
    for (int t = 0; t < tokens; ++t) {
        int high = static_cast<int>(random() % 13);
        int low = static_cast<int>(random() % 13);
        if (low > high)
            std::swap(low, high);
        std::string token;
        const int form = static_cast<int>(random() % (wide ? 5 : 3));
        if (form == 0) {
            token = randomCard(random) + randomCard(random); // may collide or be blocked
        } else if (form == 1 || high == low) {
            token = std::string{valueCharacters[high], valueCharacters[high]};
        } else if (form == 2) {
            token = std::string{valueCharacters[high], valueCharacters[low], 's'};
        } else if (form == 3) {
            token = std::string{valueCharacters[high], valueCharacters[low], 'o'};
        } else {
            token = std::string{valueCharacters[high], valueCharacters[low]};
        }
        text += (text.empty() ? "" : ",") + token;
    }
    return text;
}

RandomCase makeCase(int number) {
    std::mt19937 random(1000 + number);
    const int boardCards = 3 + number % 3; // flop, turn, river in turn
    const int deadCards = (number / 3) % 2 ? static_cast<int>(random() % 4) : 0;
    std::vector<int> deck(52);
    for (int i = 0; i < 52; ++i)
        deck[i] = i;
    std::shuffle(deck.begin(), deck.end(), random);
    RandomCase c;
    for (int i = 0; i < boardCards; ++i)
        c.board += bruteforce::textOfCard(deck[i]);
    for (int i = 0; i < deadCards; ++i)
        c.dead += bruteforce::textOfCard(deck[boardCards + i]);
    // Small ranges on the flop keep the reference fast; wider ones later.
    const bool wide = boardCards > 3;
    const int tokens = boardCards == 3 ? 1 + number % 3 : 1 + number % 5;
    c.range1 = randomRange(random, tokens, wide);
    c.range2 = randomRange(random, boardCards == 3 ? 1 + (number / 2) % 3 : tokens, wide);
    // Now and then the same range on both sides, or one from the other's tokens.
    if (number % 11 == 0)
        c.range2 = c.range1;
    return c;
}

} // namespace

class BruteForce : public ::testing::TestWithParam<int> {
protected:
    static void SetUpTestSuite() { initializeAllBoardsBeforeCalculation(); }
};

TEST_P(BruteForce, EquityEqualsTheReference) {
    const RandomCase c = makeCase(GetParam());
    SCOPED_TRACE(c.range1 + " vs " + c.range2 + " on " + c.board + " dead " + c.dead);
    const bruteforce::Counters expected =
        bruteforce::equity(bruteforce::handsOfText(c.range1), bruteforce::handsOfText(c.range2),
                           bruteforce::cardsOfText(c.board), bruteforce::cardsOfText(c.dead));
    volatile bool stop = false;
    const LongedEvaluation e = getEquity(c.range1, c.range2, c.board, c.dead, stop);
    EXPECT_EQ(e.total, expected.total);
    EXPECT_EQ(e.wins1, expected.wins1);
    EXPECT_EQ(e.wins2, expected.wins2);
    EXPECT_EQ(e.ties, expected.ties);

    // Every fourth case also hand by hand.
    if (GetParam() % 4 != 0)
        return;
    const auto hands1 = bruteforce::handsOfText(c.range1);
    const auto expectedByHand =
        bruteforce::equityByHand(hands1, bruteforce::handsOfText(c.range2),
                                 bruteforce::cardsOfText(c.board), bruteforce::cardsOfText(c.dead));
    const auto byHand = getWinEvaluationByHand(c.range1, c.range2, c.board, c.dead, stop);
    ASSERT_EQ(byHand.size(), hands1.size());
    for (const WinEvaluationByHand& record : byHand) {
        const int a = bruteforce::cardOfText(record.hand.substr(0, 2));
        const int b = bruteforce::cardOfText(record.hand.substr(2, 2));
        const auto found = std::find_if(hands1.begin(), hands1.end(), [&](const auto& h) {
            return h.first == std::min(a, b) && h.second == std::max(a, b);
        });
        ASSERT_NE(found, hands1.end()) << record.hand;
        const bruteforce::Counters& x = expectedByHand[found - hands1.begin()];
        EXPECT_EQ(record.total, x.total) << record.hand;
        EXPECT_EQ(record.wins, x.wins1) << record.hand;
        EXPECT_EQ(record.losses, x.wins2) << record.hand;
        EXPECT_EQ(record.ties, x.ties) << record.hand;
    }
}

INSTANTIATE_TEST_SUITE_P(RandomCases, BruteForce, ::testing::Range(0, 240));

// Boards and ranges symmetric in suits make the library count only one board of each
// orbit; the per-hand counters must still be exact.
TEST(BruteForceSymmetric, ByHandUnderSuitSymmetry) {
    initializeAllBoardsBeforeCalculation();
    struct Case {
        std::string range1, range2, board, dead;
    };
    const Case cases[] = {{"AA,KK,AKs", "QQ,JTs", "2c3c4c", ""},
                          {"AK,T9s", "QQ,22", "2c3d4h", "5s"},
                          {"AA,KQ", "JJ,T9s", "7h7s", ""},
                          {"AA", "KK", "8c8d", ""}};
    volatile bool stop = false;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.range1 + " vs " + c.range2 + " on " + c.board + " dead " + c.dead);
        const auto hands1 = bruteforce::handsOfText(c.range1);
        const auto expected = bruteforce::equityByHand(hands1, bruteforce::handsOfText(c.range2),
                                                       bruteforce::cardsOfText(c.board),
                                                       bruteforce::cardsOfText(c.dead));
        const auto byHand = getWinEvaluationByHand(c.range1, c.range2, c.board, c.dead, stop);
        ASSERT_EQ(byHand.size(), hands1.size());
        for (const WinEvaluationByHand& record : byHand) {
            const int a = bruteforce::cardOfText(record.hand.substr(0, 2));
            const int b = bruteforce::cardOfText(record.hand.substr(2, 2));
            const auto found = std::find_if(hands1.begin(), hands1.end(), [&](const auto& h) {
                return h.first == std::min(a, b) && h.second == std::max(a, b);
            });
            ASSERT_NE(found, hands1.end());
            const bruteforce::Counters& x = expected[found - hands1.begin()];
            EXPECT_EQ(record.total, x.total) << record.hand;
            EXPECT_EQ(record.wins, x.wins1) << record.hand;
            EXPECT_EQ(record.ties, x.ties) << record.hand;
        }
    }
}
