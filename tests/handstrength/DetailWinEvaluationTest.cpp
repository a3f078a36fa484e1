// Showdown by hand strength: the entries against the equity counters, against an obvious
// brute force, and the stop flag.

#include "NaiveHoldem.h"

#include "VelmaraEvaluatorBase.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <set>
#include <stdexcept>
#include <thread>
#include <vector>

namespace {

// The nine hand values: every hand has exactly one, so they partition range1.
std::vector<DetailWinEvaluation> handValueEntries() {
    std::vector<DetailWinEvaluation> entries;
    for (int v = 0; v < 9; ++v)
        entries.emplace_back(HandStrengthKey(1ULL << v, 0), "");
    return entries;
}

struct Sums {
    long long wins = 0, losses = 0, ties = 0;
};

Sums sum(const std::vector<DetailWinEvaluation>& entries) {
    Sums s;
    for (const auto& e : entries) {
        s.wins += e.wins;
        s.losses += e.losses;
        s.ties += e.ties;
    }
    return s;
}

struct Input {
    const char* range1;
    const char* range2;
    const char* board;
    const char* dead;
};

const Input inputs[] = {
    {"AA,KK,QQ,AKs,AKo,KQs,JTs,T9s,76s,A5s", "22,33,44,55,66,77,88,99,TT,JJ,AQo,KJs,QJs", "Ks7h2d",
     ""},
    {"AA,KK,QQ,AKs,AKo,KQs,JTs,T9s,76s,A5s", "22,33,44,55,66,77,88,99,TT,JJ,AQo,KJs,QJs", "Ks7h2d",
     "Ac9c"},
    {"AhKh,QsQd,T9s,87s,AA", "KK,AKo,JTo,65s", "9h8h2c4d", ""},
    {"AA,KK,QQ,JJ,TT,99,88,AKs,AQs,AJs,KQs", "AKo,AQo,KQo,QJs,JTs,T9s,98s,87s", "Th9h2cJd5s", ""},
    {"AA,AKs,KK", "AA,AKs,KK", "Ac7d2h", ""}, // the same hands on both sides
};

} // namespace

TEST(DetailWinEvaluation, PartitionSumsEqualTheEquityCounters) {
    for (const Input& in : inputs) {
        volatile bool stop = false;
        auto entries = handValueEntries();
        getDetailWinEvaluation(in.range1, in.range2, in.board, in.dead, entries, stop);
        const LongedEvaluation equity = getEquity(in.range1, in.range2, in.board, in.dead, stop);
        const Sums s = sum(entries);
        EXPECT_GT(equity.total, 0u);
        EXPECT_EQ(static_cast<unsigned long long>(s.wins), equity.wins1) << in.board;
        EXPECT_EQ(static_cast<unsigned long long>(s.losses), equity.wins2) << in.board;
        EXPECT_EQ(static_cast<unsigned long long>(s.ties), equity.ties) << in.board;
        EXPECT_EQ(static_cast<unsigned long long>(s.wins + s.losses + s.ties), equity.total);
    }
}

TEST(DetailWinEvaluation, FullRangesOnATurnSumToTheEquityCounters) {
    volatile bool stop = false;
    const std::string range = naive::fullRange();
    auto entries = handValueEntries();
    getDetailWinEvaluation(range, range, "Kh9h4c2d", "", entries, stop);
    const LongedEvaluation equity = getEquity(range, range, "Kh9h4c2d", "", stop);
    const Sums s = sum(entries);
    EXPECT_EQ(static_cast<unsigned long long>(s.wins), equity.wins1);
    EXPECT_EQ(static_cast<unsigned long long>(s.losses), equity.wins2);
    EXPECT_EQ(static_cast<unsigned long long>(s.ties), equity.ties);
    EXPECT_EQ(s.wins, s.losses) << "full range against itself is symmetric";
}

// Every entry equals the brute-force outcome of the hands that the hit evaluation lists for
// its key: matchups on every completion of the board, valued by the naive reference.
TEST(DetailWinEvaluation, EntriesMatchABruteForceOverTheHandsOfEachKey) {
    const std::vector<HandStrengthKey> keys = {
        {0x80, 0},  {0x280, 0}, {0x8080, 0},       {0x4000000, 0x433E00}, {0x8000000, 0},
        {0x100, 0}, {0x40, 0},  {0x280, 0x1C0000}, {0x10000000, 0},       {0x4000E0000000, 0}};
    struct Small {
        const char* range1;
        const char* range2;
        const char* board;
        const char* dead;
    };
    const Small smalls[] = {
        {"AhKh,QsQd,Td9d,8c7c,AsAd,KcQc,JsTs", "KsKd,AcKd,JhTc,6d5d,9s9c", "9h8h2c", "3h"},
        {"AhKh,QsQd,Td9d,8c7c,AsAd,KcQc,JsTs,7h6h", "KsKd,AcKd,JhTc,6d5d,9s9c,AdQd", "9h8h2c4s",
         ""},
        {"AA,KK,QJs,T9s,A5s,87o", "JJ,TT,AKo,KQs,65s", "Jd8s5h3c2h", "Ac"},
    };
    for (const Small& s : smalls) {
        volatile bool stop = false;
        std::vector<DetailWinEvaluation> entries;
        DetailHandEvaluations hits;
        for (const auto& k : keys) {
            entries.emplace_back(k, "");
            DetailHandEvaluation d;
            d.key = k;
            hits.details.push_back(d);
        }
        getDetailWinEvaluation(s.range1, s.range2, s.board, s.dead, entries, stop);
        getHitEvaluationForOnePlayer(s.range1, s.board, s.dead, hits);

        const auto boardCards = naive::cardsOf(s.board);
        const std::uint64_t boardMask = naive::maskOf(boardCards);
        const std::uint64_t blocked = boardMask | naive::maskOf(naive::cardsOf(s.dead));
        DetailHandEvaluations all;
        all.details.resize(1);
        all.details[0].key = HandStrengthKey(0, 0);
        getHitEvaluationForOnePlayer(s.range2, s.board, s.dead, all);
        const std::vector<unsigned long long> hands2 = all.details[0].hands1;
        std::vector<int> deck;
        for (int c = 0; c < 52; ++c)
            if (!(blocked >> c & 1))
                deck.push_back(c);
        for (std::size_t k = 0; k < keys.size(); ++k) {
            long long wins = 0, losses = 0, ties = 0;
            for (unsigned long long h1 : hits.details[k].hands1) {
                for (unsigned long long h2 : hands2) {
                    if (h1 & h2)
                        continue;
                    auto playBoard = [&](std::uint64_t extra) {
                        auto c1 = naive::cardsOfMask(h1 | boardMask | extra);
                        auto c2 = naive::cardsOfMask(h2 | boardMask | extra);
                        const auto v1 = naive::bestValue(c1), v2 = naive::bestValue(c2);
                        wins += v1 > v2;
                        losses += v1 < v2;
                        ties += v1 == v2;
                    };
                    const int missing = 5 - int(boardCards.size());
                    for (std::size_t i = 0; i < deck.size(); ++i) {
                        const std::uint64_t ci = 1ULL << deck[i];
                        if (missing == 0) {
                            playBoard(0);
                            break;
                        }
                        if ((h1 | h2) & ci)
                            continue;
                        if (missing == 1) {
                            playBoard(ci);
                            continue;
                        }
                        for (std::size_t j = i + 1; j < deck.size(); ++j) {
                            const std::uint64_t cj = 1ULL << deck[j];
                            if (!((h1 | h2) & cj))
                                playBoard(ci | cj);
                        }
                    }
                }
            }
            EXPECT_EQ(entries[k].wins, wins) << s.board << " key " << k;
            EXPECT_EQ(entries[k].losses, losses) << s.board << " key " << k;
            EXPECT_EQ(entries[k].ties, ties) << s.board << " key " << k;
        }
    }
}

TEST(DetailWinEvaluation, EntriesCountForEveryKeyTheHandMeets) {
    volatile bool stop = false;
    std::vector<DetailWinEvaluation> entries = {
        {HandStrengthKey(0x80, 0), "Pair"},
        {HandStrengthKey(0x280, 0), "Top Pair"},
        {HandStrengthKey(0x280, 0), "Top Pair again"},
        {HandStrengthKey(0x4000000000000, 0), "Custom Sum marker"}};
    getDetailWinEvaluation("AhKd", "QcQd", "Ks7h2d", "", entries, stop);
    // AK has top pair on this flop: it counts in "Pair" and in both "Top Pair" entries.
    EXPECT_GT(entries[0].wins, 0);
    EXPECT_EQ(entries[0].wins, entries[1].wins);
    EXPECT_EQ(entries[1].wins, entries[2].wins);
    EXPECT_EQ(entries[0].wins + entries[0].losses + entries[0].ties, 990);
    EXPECT_EQ(entries[3].wins + entries[3].losses + entries[3].ties, 0);
    EXPECT_EQ(entries[1].name, "Top Pair");
    EXPECT_EQ(entries[2].reserved[0], 0);
}

TEST(DetailWinEvaluation, StopBeforeTheStartLeavesTheEntriesAlone) {
    volatile bool stop = true;
    auto entries = handValueEntries();
    EXPECT_THROW(getDetailWinEvaluation("AA,KK", "QQ", "Ks7h2d", "", entries, stop),
                 TerminationOccured);
    EXPECT_EQ(sum(entries).wins + sum(entries).losses + sum(entries).ties, 0);
}

TEST(DetailWinEvaluation, StopDuringTheCalculationLeavesByTerminationOccured) {
    volatile bool stop = false;
    const std::string range = naive::fullRange();
    auto entries = handValueEntries();
    std::atomic<bool> threw{false};
    std::atomic<bool> threwMidway{false};
    std::atomic<bool> finished{false};
    // Full flops one after the other until the flag stops one: the run that throws must be
    // one that started before the flag turned true, so the flag was seen during a run, not
    // only at the start of the next.
    std::thread worker([&] {
        for (;;) {
            const bool startedBeforeStop = !stop;
            try {
                getDetailWinEvaluation(range, range, "Ks7h2d", "", entries, stop);
            } catch (const TerminationOccured&) {
                threw = true;
                threwMidway = startedBeforeStop;
                break;
            }
        }
        finished = true;
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
    stop = true;
    worker.join();
    EXPECT_TRUE(finished);
    EXPECT_TRUE(threw);
    EXPECT_TRUE(threwMidway);
}

TEST(DetailWinEvaluation, EmptyListAndImpossibleRangesDoNothing) {
    volatile bool stop = false;
    std::vector<DetailWinEvaluation> none;
    getDetailWinEvaluation("AA", "KK", "Ks7h2d", "", none, stop);
    EXPECT_TRUE(none.empty());
    auto entries = handValueEntries();
    getDetailWinEvaluation("AA", "KK", "AsAhAd", "Ac", entries, stop); // no aces left
    EXPECT_EQ(sum(entries).wins + sum(entries).losses + sum(entries).ties, 0);
}

TEST(DetailWinEvaluation, BadBoardIsReportedWithAMessage) {
    volatile bool stop = false;
    auto entries = handValueEntries();
    EXPECT_THROW(getDetailWinEvaluation("AA", "KK", "Ks7h", "", entries, stop),
                 std::invalid_argument);
    EXPECT_THROW(getDetailWinEvaluation("AA", "KK", "Ks7h2d", "7h", entries, stop),
                 std::invalid_argument);
}
