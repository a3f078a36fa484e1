#include "VelmaraEvaluatorBase.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <stdexcept>
#include <string>
#include <thread>

namespace {

const std::string pairsAndBroadways = "22,33,44,55,66,77,88,99,TT,JJ,QQ,KK,AA,ATs,AJs,AQs,AKs,"
                                      "KQs,AJo,AQo,AKo";
const std::string premiums = "TT,JJ,QQ,KK,AA,AKs,AKo";

std::string allHands() {
    const std::string values = "23456789TJQKA";
    std::string text;
    for (int high = 12; high >= 0; --high)
        for (int low = high; low >= 0; --low)
            text += (text.empty() ? "" : ",") + std::string{values[high], values[low]};
    return text;
}

LongedEvaluation equity(const std::string& r1, const std::string& r2, const std::string& board,
                        const std::string& dead = "") {
    volatile bool stop = false;
    return board.empty() ? getEquity(r1, r2, dead, stop) : getEquity(r1, r2, board, dead, stop);
}

void expectCounters(const LongedEvaluation& e, unsigned long long total, unsigned long long wins1,
                    unsigned long long wins2, unsigned long long ties) {
    EXPECT_EQ(e.total, total);
    EXPECT_EQ(e.wins1, wins1);
    EXPECT_EQ(e.wins2, wins2);
    EXPECT_EQ(e.ties, ties);
}

class Equity : public ::testing::Test {
protected:
    static void SetUpTestSuite() { initializeAllBoardsBeforeCalculation(); }
};

} // namespace

TEST_F(Equity, KnownPreflopCounters) {
    expectCounters(equity("AhAs", "KdKc", ""), 1712304, 1388072, 317694, 6538);
    expectCounters(equity("AA", "KK", ""), 61642944, 50371344, 10986372, 285228);
    // Seen from the other seat.
    expectCounters(equity("KK", "AA", ""), 61642944, 10986372, 50371344, 285228);
}

TEST_F(Equity, KnownFlopCounters) {
    expectCounters(equity(pairsAndBroadways, premiums, "Ah7d2c"), 3730320, 1429503, 2204265, 96552);
    // One matchup on the 990 turn and river pairs.
    expectCounters(equity("AhAs", "KdKc", "2c7d9h"), 990, 907, 83, 0);
}

TEST_F(Equity, RiverWithBothHandsFixedIsOneMatchup) {
    // Ace-high flush against a set of queens.
    expectCounters(equity("AhKh", "QsQd", "2h7h9hJcQh"), 1, 1, 0, 0);
    // Both play the board's broadway straight.
    expectCounters(equity("2c3d", "4h5s", "AcKdQhJsTc"), 1, 0, 0, 1);
    // The wheel loses to the six-high straight.
    expectCounters(equity("Ad2c", "6h2s", "3h4d5cKsKd"), 1, 0, 1, 0);
    // Same two pair, the kicker decides.
    expectCounters(equity("AdQc", "AcJd", "AhKsKd7c7s"), 1, 1, 0, 0);
}

TEST_F(Equity, FiveCardBoardCountsMatchups) {
    // 6 x 6 matchups, each on the one board; aces always win.
    expectCounters(equity("AA", "KK", "2c3d4h8s9c"), 36, 36, 0, 0);
    // Every matchup plays the board.
    expectCounters(equity("22", "33", "AcKdQhJsTc"), 36, 0, 0, 36);
    // Only matchups without a common card count: AKs against AKo shares cards often.
    const LongedEvaluation e = equity("AKs", "AKo", "2c3d4h8s9c");
    EXPECT_EQ(e.total, 4u * 12u - 4u * 6u);
    EXPECT_EQ(e.ties, e.total);
}

TEST_F(Equity, EmptyBoardWithDeadCardsUsesTheShortOverload) {
    volatile bool stop = false;
    const LongedEvaluation shortForm = getEquity("AhAs", "KdKc", "2d", stop);
    const LongedEvaluation longForm = getEquity("AhAs", "KdKc", "", "2d", stop);
    EXPECT_EQ(shortForm.total, longForm.total);
    EXPECT_EQ(shortForm.wins1, longForm.wins1);
    EXPECT_EQ(shortForm.ties, longForm.ties);
    EXPECT_EQ(shortForm.total, 1533939u); // C(47, 5) boards
    EXPECT_EQ(shortForm.wins1 + shortForm.wins2 + shortForm.ties, shortForm.total);
}

TEST_F(Equity, RangesThatCannotOccurGiveAllZero) {
    const auto expectZero = [](const LongedEvaluation& e) {
        EXPECT_EQ(e.total, 0u);
        EXPECT_EQ(e.wins1, 0u);
        EXPECT_EQ(e.wins2, 0u);
        EXPECT_EQ(e.ties, 0u);
        for (unsigned long long word : e.reserved)
            EXPECT_EQ(word, 0u);
    };
    expectZero(equity("AhAs", "AhKd", ""));     // every matchup shares a card
    expectZero(equity("AhAs", "KK", "Ah7d2c")); // range1 blocked by the board
    expectZero(equity("KK", "AhAs", "", "As")); // range2 blocked by a dead card
    expectZero(equity("", "KK", "Ah7d2c"));     // empty range
    expectZero(equity("AhAh", "KK", ""));       // a hand that cannot be dealt
    // 45 cards known: no board can be completed.
    expectZero(equity("AhAs", "KdKc", "",
                      "2d3d4d5d6d7d8d9dTdJdQd2h3h4h5h6h7h8h9hThJhQh2s3s4s"
                      "5s6s7s8s9sTsJsQs2c3c4c5c6c7c8c9cTcJcQc"));
    const auto byHand = [] {
        volatile bool stop = false;
        return getWinEvaluationByHand("AhAs,KK", "QQ", "AhQd2c", "", stop);
    }();
    ASSERT_EQ(byHand.size(), 7u);
    for (const WinEvaluationByHand& hand : byHand) {
        if (hand.hand == "AhAs")
            EXPECT_EQ(hand.total, 0u);
        else
            EXPECT_EQ(hand.total, 3u * 45u * 44u / 2u) << hand.hand; // 3 queens left
    }
}

TEST_F(Equity, BadInputNamesTheToken) {
    volatile bool stop = false;
    try {
        getEquity("AA,KQx", "KK", "", stop);
        FAIL() << "no exception";
    } catch (const std::invalid_argument& error) {
        EXPECT_NE(std::string(error.what()).find("'KQx'"), std::string::npos) << error.what();
    }
    EXPECT_THROW(getEquity("AA", "KK", "AhKd2x", "", stop), std::invalid_argument);
    EXPECT_THROW(getEquity("AA", "KK", "AhKd2c3c4c5c", "", stop), std::invalid_argument);
    EXPECT_THROW(getEquity("AA", "KK", "AhKd2c", "2c", stop), std::invalid_argument);
    EXPECT_THROW(getWinEvaluationByHand("AA", "K", "", stop), std::invalid_argument);
}

TEST_F(Equity, ByHandSumsToTheEquity) {
    volatile bool stop = false;
    struct Case {
        std::string r1, r2, board, dead;
    };
    const Case cases[] = {{"AA", "KK", "", ""},
                          {"AA,KQs", "KK,QJo", "", "2d"},
                          {pairsAndBroadways, premiums, "Ah7d2c", ""},
                          {"AK,QQ", "JTs,22", "Kh7h2c9s", "3s"},
                          {"AA,KK", "QQ", "2c3c4c", ""}};
    for (const Case& c : cases) {
        const LongedEvaluation e = getEquity(c.r1, c.r2, c.board, c.dead, stop);
        const auto hands = getWinEvaluationByHand(c.r1, c.r2, c.board, c.dead, stop);
        LongedEvaluation sum;
        for (const WinEvaluationByHand& hand : hands) {
            EXPECT_EQ(hand.hand.size(), 4u);
            EXPECT_EQ(hand.wins + hand.losses + hand.ties, hand.total);
            sum.total += hand.total;
            sum.wins1 += hand.wins;
            sum.wins2 += hand.losses;
            sum.ties += hand.ties;
        }
        expectCounters(sum, e.total, e.wins1, e.wins2, e.ties);
    }
}

TEST_F(Equity, ByHandPreflopGivesEachAceTheSameShare) {
    volatile bool stop = false;
    const auto hands = getWinEvaluationByHand("AA", "KK", "", stop);
    ASSERT_EQ(hands.size(), 6u);
    for (const WinEvaluationByHand& hand : hands) {
        EXPECT_EQ(hand.hand[0], 'A');
        EXPECT_EQ(hand.hand[2], 'A');
        EXPECT_EQ(hand.total, 6u * 1712304u);
        EXPECT_EQ(hand.wins, 50371344u / 6u);
        EXPECT_EQ(hand.ties, 285228u / 6u);
    }
}

TEST_F(Equity, ByHandWritesTheHigherCardFirst) {
    volatile bool stop = false;
    const auto hands = getWinEvaluationByHand("Kd2c,AhAd", "QQ", "3h4h5h", "", stop);
    ASSERT_EQ(hands.size(), 2u);
    // Records come in the order of the card masks: AdAh (bits 12, 25) before Kd2c (11, 39).
    EXPECT_EQ(hands[0].hand, "AdAh");
    EXPECT_EQ(hands[1].hand, "Kd2c");
}

TEST_F(Equity, StopBeforeTheStartThrows) {
    volatile bool stop = true;
    EXPECT_THROW(getEquity("AA", "KK", "", stop), TerminationOccured);
    EXPECT_THROW(getEquity("AA", "KK", "Ah7d2c", "", stop), TerminationOccured);
    EXPECT_THROW(getWinEvaluationByHand("AA", "KK", "", stop), TerminationOccured);
    EXPECT_THROW(getWinEvaluationByHand("AA", "KK", "Ah7d2c", "", stop), TerminationOccured);
}

TEST_F(Equity, StopDuringACalculationThrows) {
    // All hands against all hands with six dead cards takes many seconds; a result other
    // than TerminationOccured would mean the flag was not seen.
    const std::string all = allHands();
    for (int byHand = 0; byHand < 2; ++byHand) {
        volatile bool stop = false;
        std::atomic<bool> started{false};
        std::thread stopper([&] {
            while (!started)
                std::this_thread::yield();
            std::this_thread::sleep_for(std::chrono::milliseconds(30));
            stop = true;
        });
        bool terminated = false;
        try {
            started = true;
            if (byHand)
                getWinEvaluationByHand(all, all, "", "2d3h4s5c6d7h", stop);
            else
                getEquity(all, all, "2d3h4s5c6d7h", stop);
        } catch (const TerminationOccured&) {
            terminated = true;
        }
        stopper.join();
        EXPECT_TRUE(terminated) << "by hand: " << byHand;
    }
}

TEST_F(Equity, TwoThreadsGiveTheSameResultsAsOneAfterTheOther) {
    const LongedEvaluation a = equity(pairsAndBroadways, premiums, "Ah7d2c");
    const LongedEvaluation b = equity("AK,QQ,JTs", "22,33,KQo", "", "5c");
    LongedEvaluation a2;
    LongedEvaluation b2;
    for (int round = 0; round < 3; ++round) {
        std::thread first([&] { a2 = equity(pairsAndBroadways, premiums, "Ah7d2c"); });
        std::thread second([&] { b2 = equity("AK,QQ,JTs", "22,33,KQo", "", "5c"); });
        first.join();
        second.join();
        expectCounters(a2, a.total, a.wins1, a.wins2, a.ties);
        expectCounters(b2, b.total, b.wins1, b.wins2, b.ties);
    }
}

TEST_F(Equity, RangeCombinations) {
    volatile bool stop = false;
    // Without board, dead cards and opponent: the plain count.
    RangeCombinations c = getRangeCombinationsForOneRange("AA,AKs", "", "", "", stop);
    EXPECT_FLOAT_EQ(c.combinations1, 10.0f);
    // A board card removes combinations.
    c = getRangeCombinationsForOneRange("AA,AKs", "", "Ah7d2c", "", stop);
    EXPECT_FLOAT_EQ(c.combinations1, 3.0f + 3.0f);
    // An opponent holding AhAs: every other ace pair shares one ace with it... AdAc is free.
    c = getRangeCombinations("AA", "AhAs", "", "", stop);
    EXPECT_FLOAT_EQ(c.combinations1, 1.0f);
    EXPECT_FLOAT_EQ(c.combinations2, 1.0f / 6.0f);
    // A range that cannot occur.
    c = getRangeCombinationsForOneRange("AhAs", "KK", "As7d2c", "", stop);
    EXPECT_FLOAT_EQ(c.combinations1, 0.0f);
    c = getRangeCombinationsForOneRange("KK", "AhAs", "As7d2c", "", stop);
    EXPECT_FLOAT_EQ(c.combinations1, 0.0f);
    // Fractional: KK against AK loses part of each king combination.
    c = getRangeCombinations("KK", "AK", "", "", stop);
    EXPECT_FLOAT_EQ(c.combinations1, 6.0f * 8.0f / 16.0f);
}

TEST_F(Equity, CardsFromSingleHand) {
    std::vector<std::pair<unsigned long long, unsigned long long>> combos;
    getCardsFromSingleHand("AKs", combos, 0);
    ASSERT_EQ(combos.size(), 4u);
    EXPECT_EQ(combos[0].first, getIndexByCards("Ad"));
    EXPECT_EQ(combos[0].second, getIndexByCards("Kd"));
    EXPECT_EQ(combos[3].first, getIndexByCards("Ac"));
    combos.clear();
    getCardsFromSingleHand("QQ", combos, getIndexByCards("Qh"));
    ASSERT_EQ(combos.size(), 3u);
    EXPECT_EQ(combos[0].first, getIndexByCards("Qd"));
    EXPECT_EQ(combos[0].second, getIndexByCards("Qs"));
    combos.clear();
    getCardsFromSingleHand("T9", combos, getIndexByCards("Ts") | getIndexByCards("9d"));
    EXPECT_EQ(combos.size(), 9u);
    const unsigned long long tens = 0x100ull | 0x100ull << 13 | 0x100ull << 26 | 0x100ull << 39;
    for (const auto& combo : combos) {
        EXPECT_NE(combo.first & tens, 0u); // the ten first
        EXPECT_EQ((combo.first | combo.second) & (getIndexByCards("Ts") | getIndexByCards("9d")),
                  0u);
    }
    EXPECT_THROW(getCardsFromSingleHand("AdKd", combos, 0), std::invalid_argument);
}

TEST_F(Equity, IndexByCards) {
    EXPECT_EQ(getIndexByCards("2d"), 1ull);
    EXPECT_EQ(getIndexByCards("Ad"), 0x1000ull);
    EXPECT_EQ(getIndexByCards("Ah"), 0x1000ull << 13);
    EXPECT_EQ(getIndexByCards("As"), 0x1000ull << 26);
    EXPECT_EQ(getIndexByCards("Ac"), 0x1000ull << 39);
    EXPECT_THROW(getIndexByCards("Ax"), std::invalid_argument);
}
