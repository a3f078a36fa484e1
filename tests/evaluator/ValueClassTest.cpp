// Counting per value class (large ranges, no per-hand counters) against the plain reference
// and against counting per hand, which BruteForceTest checks on its own. The per-class walk
// is forced on small random cases, so that flush boards, ties between classes and blocked
// hands all occur where the reference is fast.

#include "BruteForce.h"
#include "Enumeration.h"
#include "HandOutcomes.h"
#include "Problem.h"
#include "SuitSymmetry.h"
#include "VelmaraEvaluatorBase.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <string>
#include <vector>

using namespace qve;

namespace {

const std::string valueCharacters = "23456789TJQKA";
const std::string suitCharacters = "dhsc";

std::string randomToken(std::mt19937& random, bool wide) {
    int high = static_cast<int>(random() % 13);
    int low = static_cast<int>(random() % 13);
    if (low > high)
        std::swap(low, high);
    const int form = static_cast<int>(random() % (wide ? 4 : 3));
    if (form == 0) {
        std::string token;
        for (int i = 0; i < 2; ++i)
            token += std::string{valueCharacters[random() % 13], suitCharacters[random() % 4]};
        return token;
    }
    if (form == 1 || high == low)
        return std::string{valueCharacters[high], valueCharacters[high]};
    if (form == 2)
        return std::string{valueCharacters[high], valueCharacters[low], 's'};
    return std::string{valueCharacters[high], valueCharacters[low]};
}

std::string randomRange(std::mt19937& random, int tokens, bool wide) {
    std::string text;
    for (int t = 0; t < tokens; ++t)
        text += (text.empty() ? "" : ",") + randomToken(random, wide);
    return text;
}

// Wins and ties of range1 over every completion of the problem's board, with the method given.
Tally countWith(const Problem& p, BoardEnumeration::Method method) {
    const BoardEnumeration enumeration(p.live1, p.live2, false, method);
    const auto symmetries = suitSymmetries({p.board, p.dead}, {&p.live1, &p.live2});
    Tally tally;
    volatile bool stop = false;
    enumeration.addBoards(p.board, p.board | p.dead, 5 - p.boardCards, symmetries, 1, tally, stop);
    return tally;
}

std::string cardsText(const std::vector<int>& deck, int from, int count) {
    std::string text;
    for (int i = from; i < from + count; ++i)
        text += bruteforce::textOfCard(deck[i]);
    return text;
}

class ValueClass : public ::testing::Test {
protected:
    static void SetUpTestSuite() { initializeAllBoardsBeforeCalculation(); }
};

} // namespace

TEST_F(ValueClass, ForcedOnRandomCasesEqualsTheReference) {
    for (int number = 0; number < 150; ++number) {
        std::mt19937 random(5000 + number);
        std::vector<int> deck(52);
        for (int i = 0; i < 52; ++i)
            deck[i] = i;
        std::shuffle(deck.begin(), deck.end(), random);
        const int boardCards = 3 + number % 3;
        const int deadCards = number % 2 ? static_cast<int>(random() % 4) : 0;
        const std::string board = cardsText(deck, 0, boardCards);
        const std::string dead = cardsText(deck, boardCards, deadCards);
        const bool wide = boardCards > 3;
        const std::string range1 = randomRange(random, 1 + number % 4, wide);
        const std::string range2 =
            number % 7 == 0 ? range1 : randomRange(random, 1 + (number / 4) % 4, wide);
        SCOPED_TRACE(range1 + " vs " + range2 + " on " + board + " dead " + dead);
        const Problem p = prepareProblem(range1, range2, board, dead);
        const Tally tally = countWith(p, BoardEnumeration::Method::perValueClass);
        const bruteforce::Counters expected =
            bruteforce::equity(bruteforce::handsOfText(range1), bruteforce::handsOfText(range2),
                               bruteforce::cardsOfText(board), bruteforce::cardsOfText(dead));
        EXPECT_EQ(std::uint64_t(tally.wins), expected.wins1);
        EXPECT_EQ(std::uint64_t(tally.ties), expected.ties);
    }
}

// Flush draws of both kinds on purpose: three suited board cards (flush hands merged into
// the walk), four and five (counted per hand), paired, tripled and quadrupled boards.
TEST_F(ValueClass, SpecialBoardsEqualTheReference) {
    const char* boards[] = {"AhKhQh",   "2h3h4h5c",   "9s8s7s6s5s", "AhAdAsAc",  "KhKd7h7d",
                            "8c8d8h2c", "3h4h5h6d7d", "TcJcQcKcAd", "2d2h2s3c3d"};
    const std::string range1 = "AA,KK,QQ,77,22,AK,AQs,KQs,T9s,65s,43s,A5s,Kh9h,8h7h";
    const std::string range2 = "JJ,88,33,AJ,KJs,QJs,98s,54s,A2s,Qh2h,6h5h,AhTd";
    volatile bool stop = false;
    for (const char* board : boards) {
        SCOPED_TRACE(board);
        const Problem p = prepareProblem(range1, range2, board, "");
        const Tally tally = countWith(p, BoardEnumeration::Method::perValueClass);
        const bruteforce::Counters expected =
            bruteforce::equity(bruteforce::handsOfText(range1), bruteforce::handsOfText(range2),
                               bruteforce::cardsOfText(board), {});
        EXPECT_EQ(std::uint64_t(tally.wins), expected.wins1);
        EXPECT_EQ(std::uint64_t(tally.ties), expected.ties);
        // The public function picks its own method for these ranges; same counters.
        const LongedEvaluation e = getEquity(range1, range2, board, "", stop);
        EXPECT_EQ(e.wins1, expected.wins1);
        EXPECT_EQ(e.ties, expected.ties);
        EXPECT_EQ(e.total, expected.total);
    }
}

// Large random ranges on thousands of random complete boards: both methods count the same
// wins and ties on every board.
TEST_F(ValueClass, LargeRangesAgreeWithCountingPerHand) {
    std::mt19937 random(77);
    for (int round = 0; round < 3000; ++round) {
        std::vector<int> deck(52);
        for (int i = 0; i < 52; ++i)
            deck[i] = i;
        std::shuffle(deck.begin(), deck.end(), random);
        // Now and then three or four cards of one suit first.
        if (round % 3 == 0) {
            const int suit = static_cast<int>(random() % 4);
            std::stable_partition(deck.begin(), deck.end(),
                                  [&](int card) { return card / 13 == suit; });
            std::shuffle(deck.begin() + 3 + round % 2, deck.end(), random);
        }
        const std::string board = cardsText(deck, 0, 5);
        const std::string range1 = randomRange(random, 20 + round % 60, true);
        const std::string range2 =
            round % 5 == 0 ? range1 : randomRange(random, 10 + round % 70, true);
        SCOPED_TRACE(range1 + " vs " + range2 + " on " + board);
        const Problem p = prepareProblem(range1, range2, board, "");
        const Tally perClass = countWith(p, BoardEnumeration::Method::perValueClass);
        const Tally perHand = countWith(p, BoardEnumeration::Method::perHand);
        ASSERT_EQ(perClass.wins, perHand.wins);
        ASSERT_EQ(perClass.ties, perHand.ties);
    }
}

// Wide ranges through the public function on rivers and turns, against the reference.
TEST_F(ValueClass, WideRangesEqualTheReference) {
    struct Case {
        std::string range1, range2, board, dead;
    };
    std::mt19937 random(91);
    std::vector<Case> cases;
    for (int i = 0; i < 6; ++i) {
        std::vector<int> deck(52);
        for (int k = 0; k < 52; ++k)
            deck[k] = k;
        std::shuffle(deck.begin(), deck.end(), random);
        const int boardCards = i < 4 ? 5 : 4;
        cases.push_back({randomRange(random, boardCards == 5 ? 40 : 14, true),
                         randomRange(random, boardCards == 5 ? 40 : 14, true),
                         cardsText(deck, 0, boardCards), cardsText(deck, boardCards, i % 3)});
    }
    volatile bool stop = false;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.range1 + " vs " + c.range2 + " on " + c.board + " dead " + c.dead);
        const bruteforce::Counters expected =
            bruteforce::equity(bruteforce::handsOfText(c.range1), bruteforce::handsOfText(c.range2),
                               bruteforce::cardsOfText(c.board), bruteforce::cardsOfText(c.dead));
        const LongedEvaluation e = getEquity(c.range1, c.range2, c.board, c.dead, stop);
        EXPECT_EQ(e.total, expected.total);
        EXPECT_EQ(e.wins1, expected.wins1);
        EXPECT_EQ(e.ties, expected.ties);
    }
}

// Preflop with dead cards and wide ranges: the equity (inclusion-exclusion over the dead
// cards, per value class) equals the sum of the per-hand counters (counted per hand).
TEST_F(ValueClass, PreflopDeadCardsEqualTheSumOfTheHands) {
    const std::string range = "22,33,44,55,66,77,88,99,TT,JJ,QQ,KK,AA,A2s,A3s,A4s,A5s,A6s,A7s,"
                              "A8s,A9s,ATs,AJs,AQs,AKs,K9s,KTs,KJs,KQs,QTs,QJs,JTs,ATo,AJo,AQo,"
                              "AKo,KJo,KQo";
    const char* deads[] = {"2d", "Ah", "Ks7c"};
    volatile bool stop = false;
    for (const char* dead : deads) {
        SCOPED_TRACE(dead);
        const LongedEvaluation e = getEquity(range, range, dead, stop);
        const auto byHand = getWinEvaluationByHand(range, range, dead, stop);
        unsigned long long total = 0;
        unsigned long long wins = 0;
        unsigned long long ties = 0;
        for (const WinEvaluationByHand& record : byHand) {
            total += record.total;
            wins += record.wins;
            ties += record.ties;
        }
        EXPECT_EQ(e.total, total);
        EXPECT_EQ(e.wins1, wins);
        EXPECT_EQ(e.ties, ties);
        EXPECT_EQ(e.wins1, e.wins2); // the same range on both sides
    }
}

namespace {

// A random problem for the per-hand and per-group comparisons: flops, turns and rivers in turn,
// dead cards every other round, a board of three suited cards every fourth round, the same
// range on both sides every sixth.
struct RandomCase {
    std::string board, dead, range1, range2;
};

RandomCase randomCase(std::mt19937& random, int round) {
    std::vector<int> deck(52);
    for (int i = 0; i < 52; ++i)
        deck[i] = i;
    std::shuffle(deck.begin(), deck.end(), random);
    if (round % 4 == 0) {
        const int suit = static_cast<int>(random() % 4);
        std::stable_partition(deck.begin(), deck.end(),
                              [&](int card) { return card / 13 == suit; });
        std::shuffle(deck.begin() + 2 + round % 3, deck.end(), random);
    }
    const int boardCards = 3 + round % 3;
    const int deadCards = round % 2 ? 1 + static_cast<int>(random() % 3) : 0;
    RandomCase c;
    c.board = cardsText(deck, 0, boardCards);
    c.dead = cardsText(deck, boardCards, deadCards);
    // Flops count narrower ranges, to keep the reference quick.
    const int tokens = boardCards == 3 ? 4 + round % 20 : 10 + round % 60;
    c.range1 = randomRange(random, tokens, true);
    c.range2 = round % 6 == 0 ? c.range1 : randomRange(random, tokens, true);
    return c;
}

// Per-hand counters of range1 over every completion of the problem's board.
Tally countByHandWith(const Problem& p, BoardEnumeration::Method method) {
    const BoardEnumeration enumeration(p.live1, p.live2, true, method);
    const auto symmetries = suitSymmetries({p.board, p.dead}, {&p.live1, &p.live2});
    Tally tally;
    volatile bool stop = false;
    enumeration.addBoards(p.board, p.board | p.dead, 5 - p.boardCards, symmetries, 1, tally, stop);
    return tally;
}

} // namespace

// The per-hand counters of the walk per value class against those of ranking hand by hand, on
// random ranges (wide and narrow, forced), flops, turns and rivers, with and without dead
// cards; boards of three suited cards come up on purpose. Both fold over the suit symmetries.
TEST_F(ValueClass, PerHandCountersAgreeWithCountingPerHand) {
    std::mt19937 random(9100);
    for (int round = 0; round < 60; ++round) {
        const RandomCase c = randomCase(random, round);
        const std::string &board = c.board, &dead = c.dead, &range1 = c.range1, &range2 = c.range2;
        SCOPED_TRACE(range1 + " vs " + range2 + " on " + board + " dead " + dead);
        const Problem p = prepareProblem(range1, range2, board, dead);
        const Tally perClass = countByHandWith(p, BoardEnumeration::Method::perValueClass);
        const Tally perHand = countByHandWith(p, BoardEnumeration::Method::perHand);
        ASSERT_EQ(perClass.handWins.size(), p.live1.size());
        ASSERT_EQ(perHand.handWins.size(), p.live1.size());
        EXPECT_EQ(perClass.wins, perHand.wins);
        EXPECT_EQ(perClass.ties, perHand.ties);
        for (std::size_t i = 0; i < p.live1.size(); ++i) {
            ASSERT_EQ(perClass.handWins[i], perHand.handWins[i]) << "hand " << i;
            ASSERT_EQ(perClass.handTies[i], perHand.handTies[i]) << "hand " << i;
        }
    }
}

// Full ranges on a flop with two suited cards (so turn and river make three and four of the
// suit) and on a turn with dead cards: every hand's counters through the public function,
// against the hand-by-hand reference and against the equity counters.
TEST_F(ValueClass, FullRangesByHandAgreeWithCountingPerHand) {
    std::string all;
    for (int a = 0; a < 52; ++a)
        for (int b = a + 1; b < 52; ++b)
            all += (all.empty() ? "" : ",") + bruteforce::textOfCard(a) + bruteforce::textOfCard(b);
    struct Case {
        std::string board, dead;
    };
    const Case cases[] = {{"Kh9h4c", ""}, {"Ts7s2d5c", "AhQd"}, {"8d8c3h", "Js"}};
    volatile bool stop = false;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.board + " dead " + c.dead);
        const Problem p = prepareProblem(all, all, c.board, c.dead);
        const Tally perHand = countByHandWith(p, BoardEnumeration::Method::perHand);
        const std::vector<WinEvaluationByHand> records =
            getWinEvaluationByHand(all, all, c.board, c.dead, stop);
        ASSERT_EQ(records.size(), p.hands1.size());
        std::size_t live = 0;
        unsigned long long wins = 0, ties = 0, total = 0;
        for (std::size_t i = 0; i < records.size(); ++i) {
            wins += records[i].wins;
            ties += records[i].ties;
            total += records[i].total;
            if (live < p.live1.size() && p.live1[live] == p.hands1[i]) {
                ASSERT_EQ(records[i].wins, std::uint64_t(perHand.handWins[live])) << i;
                ASSERT_EQ(records[i].ties, std::uint64_t(perHand.handTies[live])) << i;
                ++live;
            } else {
                EXPECT_EQ(records[i].total, 0u) << i;
            }
        }
        EXPECT_EQ(live, p.live1.size());
        const LongedEvaluation e = getEquity(all, all, c.board, c.dead, stop);
        EXPECT_EQ(wins, e.wins1);
        EXPECT_EQ(ties, e.ties);
        EXPECT_EQ(total, e.total);
    }
}

namespace {

// Group counters of range1 over every completion of the problem's board.
Tally countByGroupWith(const Problem& p, const std::vector<std::uint32_t>& groupOf,
                       std::size_t groupCount, BoardEnumeration::Method method) {
    const BoardEnumeration enumeration(p.live1, p.live2, groupOf, groupCount, method);
    const auto symmetries = suitSymmetries({p.board, p.dead}, {&p.live1, &p.live2});
    Tally tally;
    volatile bool stop = false;
    enumeration.addBoards(p.board, p.board | p.dead, 5 - p.boardCards, symmetries, 1, tally, stop);
    return tally;
}

// Three ways to split range1: by the value class of the hand (kept by every suit symmetry),
// by the hand's suits being equal (also kept), and by a scramble of the mask that suit
// permutations do not keep, which must still count exactly.
enum class Split { valueClass, suitedness, scramble };

std::uint32_t groupOfHand(CardMask hand, Split split) {
    const int low = lowestBit64(hand);
    const int high = highestBit64(hand);
    switch (split) {
    case Split::valueClass:
        return std::uint32_t(std::max(low % 13, high % 13) * 13 + std::min(low % 13, high % 13));
    case Split::suitedness:
        return low / 13 == high / 13 ? 1u : 0u;
    case Split::scramble:
        return std::uint32_t((hand * 0x9E3779B97F4A7C15ULL) >> 61);
    }
    return 0;
}

} // namespace

namespace {

// The group counters of both counting methods against the per-hand counters of counting per
// hand, summed per group.
void expectGroupCountersOf(const Problem& p, Split split) {
    std::vector<std::uint32_t> groupOf;
    std::size_t groupCount = 0;
    for (CardMask hand : p.live1) {
        groupOf.push_back(groupOfHand(hand, split));
        groupCount = std::max<std::size_t>(groupCount, groupOf.back() + 1);
    }
    const Tally perHand = countByHandWith(p, BoardEnumeration::Method::perHand);
    std::vector<std::int64_t> wins(groupCount, 0), ties(groupCount, 0);
    for (std::size_t i = 0; i < p.live1.size(); ++i) {
        wins[groupOf[i]] += perHand.handWins[i];
        ties[groupOf[i]] += perHand.handTies[i];
    }
    for (auto method :
         {BoardEnumeration::Method::perValueClass, BoardEnumeration::Method::perHand}) {
        const Tally byGroup = countByGroupWith(p, groupOf, groupCount, method);
        EXPECT_EQ(byGroup.wins, perHand.wins);
        EXPECT_EQ(byGroup.ties, perHand.ties);
        ASSERT_EQ(byGroup.groupWins.size(), groupCount);
        for (std::size_t g = 0; g < groupCount; ++g) {
            EXPECT_EQ(byGroup.groupWins[g], wins[g]) << "group " << g;
            EXPECT_EQ(byGroup.groupTies[g], ties[g]) << "group " << g;
        }
    }
}

} // namespace

// Group counters on random ranges, boards of every size, dead cards and boards of three
// suited cards.
TEST_F(ValueClass, GroupCountersAreThePerHandCountersSummedPerGroup) {
    std::mt19937 random(4711);
    for (int round = 0; round < 45; ++round) {
        const RandomCase c = randomCase(random, round);
        SCOPED_TRACE(c.range1 + " vs " + c.range2 + " on " + c.board + " dead " + c.dead +
                     " split " + std::to_string(round % 3));
        expectGroupCountersOf(prepareProblem(c.range1, c.range2, c.board, c.dead),
                              Split(round % 3));
    }
}

// Boards and ranges with many suit symmetries (monotone and paired boards, ranges of whole
// tokens): the scramble split, which the symmetries do not keep, must still count exactly.
TEST_F(ValueClass, GroupCountersStayExactUnderSuitSymmetries) {
    struct Case {
        const char* range1;
        const char* range2;
        const char* board;
    };
    const Case cases[] = {
        {"AA,KK,QQ,AKs,AKo,KQs,JTs,T9s,76s,A5s,98o", "22,33,JJ,TT,AQo,KJs,QJs,87s", "Kh9h4h"},
        {"AA,KK,QQ,AKs,AKo,KQs,JTs,T9s,76s,A5s,98o", "22,33,JJ,TT,AQo,KJs,QJs,87s", "Kh9h4h2h"},
        {"AA,KK,QQ,AKs,AKo,KQs,JTs,T9s,76s,A5s,98o", "22,33,JJ,TT,AQo,KJs,QJs,87s", "8d8h3s"},
        {"66,77,88,99,TT,JJ,QQ,KK,AA,A2s,A3s,A4s,KQo,QJo,JTo,T9o,98s,87s,76s,65s,54s",
         "66,77,88,99,TT,JJ,QQ,KK,AA,ATs,AJs,AQs,AKs,KQs,AQo,AKo", "7c7d7h"}};
    for (const Case& c : cases) {
        const Problem p = prepareProblem(c.range1, c.range2, c.board, "");
        ASSERT_GT(suitSymmetries({p.board, p.dead}, {&p.live1, &p.live2}).size(), 1u) << c.board;
        for (Split split : {Split::valueClass, Split::suitedness, Split::scramble}) {
            SCOPED_TRACE(std::string(c.board) + " split " + std::to_string(int(split)));
            expectGroupCountersOf(p, split);
        }
    }
}

// Keyed outcomes through the library function: full ranges on a flop and a turn (with dead
// cards), and preflop with and without dead cards, against the per-hand records summed per key.
TEST_F(ValueClass, OutcomesByKeySumTheHandOutcomesOfEachKey) {
    std::string all;
    for (int a = 0; a < 52; ++a)
        for (int b = a + 1; b < 52; ++b)
            all += (all.empty() ? "" : ",") + bruteforce::textOfCard(a) + bruteforce::textOfCard(b);
    struct Case {
        std::string range1, range2, board, dead;
    };
    const Case cases[] = {{all, all, "Kh9h4c", ""},
                          {all, "22,55,99,JJ,QQ,KK,AA,A2s,A5s,AKs,K9o,KTo,KQo", "Ts7s2d5c", "AhQd"},
                          {"AA,KK,AKs,T9s,76o", "QQ,JJ,AQo", "", ""},
                          {"AA,KK,AKs,T9s,76o", "QQ,JJ,AQo", "", "2c3d"}};
    volatile bool stop = false;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.board + " dead " + c.dead);
        const auto keyOf = [](CardMask hand) {
            return std::uint64_t(groupOfHand(hand, Split::valueClass)) * 2 +
                   groupOfHand(hand, Split::suitedness);
        };
        const std::vector<KeyedOutcome> keyed =
            outcomesByKey(c.range1, c.range2, c.board, c.dead, keyOf, stop);
        const std::vector<HandOutcome> byHand =
            handOutcomes(c.range1, c.range2, c.board, c.dead, stop);
        std::map<std::uint64_t, KeyedOutcome> expected;
        for (const HandOutcome& o : byHand) {
            if (o.total == 0)
                continue;
            KeyedOutcome& e = expected[keyOf(o.hand)];
            e.key = keyOf(o.hand);
            e.total += o.total;
            e.wins += o.wins;
            e.ties += o.ties;
        }
        ASSERT_FALSE(keyed.empty());
        std::size_t nonEmpty = 0;
        for (std::size_t i = 0; i < keyed.size(); ++i) {
            if (i > 0) {
                EXPECT_LT(keyed[i - 1].key, keyed[i].key);
            }
            if (keyed[i].total == 0)
                continue; // live hands without an opponent
            ++nonEmpty;
            const auto it = expected.find(keyed[i].key);
            ASSERT_NE(it, expected.end()) << keyed[i].key;
            EXPECT_EQ(keyed[i].total, it->second.total) << keyed[i].key;
            EXPECT_EQ(keyed[i].wins, it->second.wins) << keyed[i].key;
            EXPECT_EQ(keyed[i].ties, it->second.ties) << keyed[i].key;
        }
        EXPECT_EQ(nonEmpty, expected.size());
    }
}

TEST_F(ValueClass, OutcomesByKeyStopsOnTheFlag) {
    volatile bool stop = true;
    EXPECT_THROW(outcomesByKey(
                     "AA", "KK", "Ks7h2d", "", [](CardMask) { return 0ULL; }, stop),
                 TerminationOccured);
}
