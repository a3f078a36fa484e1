// Preflop with dead cards, counted per board value multiset, against boards counted one by
// one: the non-flush part against a ranking that ignores suits, the whole against rankCards
// and against the board enumeration; single matchups against direct enumeration.

#include "PreflopDeadCards.h"
#include "Cards.h"
#include "Enumeration.h"
#include "HandRank.h"
#include "Problem.h"
#include "RankTables.h"
#include "SuitSymmetry.h"

#include "VelmaraEvaluatorBase.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

using namespace qve;

namespace {

// Strength of seven cards by their values alone, as if no hand could make a flush.
Strength nonFlushStrength(const RankTables& t, CardMask cards) {
    const std::uint64_t key = keyOfCards(t, cards);
    return t.nonFlush[t.highBase[2][(key >> 17) & 0x3FFF] + t.lowIndex[key & 0x1FFFF]];
}

struct Counted {
    std::int64_t wins = 0;
    std::int64_t ties = 0;
};

// Every board of five cards avoiding the dead cards, and on it every pair of live hands.
template <typename StrengthOf>
Counted boardByBoard(const Problem& p, const StrengthOf& strengthOf) {
    std::vector<int> deck;
    for (int card = 0; card < 52; ++card)
        if (!((p.dead >> card) & 1))
            deck.push_back(card);
    const int n = static_cast<int>(deck.size());
    Counted counted;
    std::vector<std::pair<CardMask, unsigned>> one;
    std::vector<std::pair<CardMask, unsigned>> two;
    for (int a = 0; a < n; ++a)
        for (int b = a + 1; b < n; ++b)
            for (int c = b + 1; c < n; ++c)
                for (int d = c + 1; d < n; ++d)
                    for (int e = d + 1; e < n; ++e) {
                        const CardMask board = 1ull << deck[a] | 1ull << deck[b] | 1ull << deck[c] |
                                               1ull << deck[d] | 1ull << deck[e];
                        one.clear();
                        two.clear();
                        for (CardMask h : p.live1)
                            if (!(h & board))
                                one.push_back({h, strengthOf(board | h)});
                        for (CardMask h : p.live2)
                            if (!(h & board))
                                two.push_back({h, strengthOf(board | h)});
                        for (const auto& x : one)
                            for (const auto& y : two) {
                                if (x.first & y.first)
                                    continue;
                                counted.wins += x.second > y.second;
                                counted.ties += x.second == y.second;
                            }
                    }
    return counted;
}

struct Case {
    const char* range1;
    const char* range2;
    const char* dead;
};

// Small ranges, so that counting board by board stays quick; dead cards of one value, of
// one suit, and of the ranges' own cards.
const Case smallCases[] = {
    {"AhAs,KdKc", "QQ", "2d"},
    {"AKs,77", "T9s,QJo", "Ah7c"},
    {"AhKh,Ts9s", "QhJh,8s8c", "2h3h4h"},
    {"22,AdKd", "A5s", "AcAs5d"},
    {"KQ", "JTs,99", "Ks9c9d2c"},
    {"AhAd,7h6h", "KhKd,5h4h", "8h9hTh2c3d"},
};

} // namespace

TEST(PreflopDeadCards, NonFlushPartEqualsBoardsRankedByValues) {
    const RankTables& t = rankTables();
    volatile bool stop = false;
    for (const Case& c : smallCases) {
        SCOPED_TRACE(std::string(c.range1) + " vs " + c.range2 + " dead " + c.dead);
        const Problem p = prepareProblem(c.range1, c.range2, "", c.dead);
        const PreflopCounts fast = preflopNonFlushPart(p, stop);
        const Counted slow =
            boardByBoard(p, [&t](CardMask cards) { return unsigned(nonFlushStrength(t, cards)); });
        EXPECT_EQ(fast.wins, slow.wins);
        EXPECT_EQ(fast.ties, slow.ties);
    }
}

TEST(PreflopDeadCards, CountsEqualBoardsRankedOneByOne) {
    volatile bool stop = false;
    for (const Case& c : smallCases) {
        SCOPED_TRACE(std::string(c.range1) + " vs " + c.range2 + " dead " + c.dead);
        const Problem p = prepareProblem(c.range1, c.range2, "", c.dead);
        const PreflopCounts fast = preflopByValueSets(p, stop);
        const Counted slow = boardByBoard(p, [](CardMask cards) { return rankCards(cards); });
        EXPECT_EQ(fast.wins, slow.wins);
        EXPECT_EQ(fast.ties, slow.ties);
    }
}

namespace {

// The board enumeration of the library over every board avoiding the dead cards, up to suit
// symmetry: the way the library counted these before.
Counted enumerated(const Problem& p) {
    const BoardEnumeration enumeration(p.live1, p.live2, false);
    const auto symmetries = suitSymmetries({p.dead}, {&p.live1, &p.live2});
    Tally tally;
    volatile bool stop = false;
    enumeration.addBoards(0, p.dead, 5, symmetries, 1, tally, stop);
    return {tally.wins, tally.ties};
}

std::string randomRange(std::mt19937& random, int tokens) {
    static const char values[] = "23456789TJQKA";
    static const char suits[] = "dhsc";
    std::string text;
    for (int i = 0; i < tokens; ++i) {
        std::string token;
        const int kind = int(random() % 4);
        const char v = values[random() % 13];
        const char w = values[random() % 13];
        if (kind == 0)
            token = std::string{v, v};
        else if (kind == 3 || v == w)
            token = std::string{v, suits[random() % 4],
                                w == v ? values[(random() % 12 + 1 + (v - '0')) % 13] : w,
                                suits[random() % 4]};
        else
            token = std::string{v, w, kind == 1 ? 's' : 'o'};
        if (token.size() == 4 && token.substr(0, 2) == token.substr(2, 2))
            continue;
        text += (text.empty() ? "" : ",") + token;
    }
    return text;
}

std::string randomDead(std::mt19937& random, int count) {
    static const char values[] = "23456789TJQKA";
    static const char suits[] = "dhsc";
    std::string dead;
    while (int(dead.size()) < 2 * count) {
        const std::string card{values[random() % 13], suits[random() % 4]};
        bool used = false;
        for (std::size_t i = 0; i < dead.size(); i += 2)
            used = used || dead.compare(i, 2, card) == 0;
        if (!used)
            dead += card;
    }
    return dead;
}

} // namespace

// Random ranges, narrow and wide, against random dead cards (1 to 8): the same counts as the
// board enumeration.
TEST(PreflopDeadCards, RandomRangesEqualTheBoardEnumeration) {
    std::mt19937 random(1125);
    volatile bool stop = false;
    for (int round = 0; round < 16; ++round) {
        const std::string range1 =
            randomRange(random, 2 + int(random() % (round % 4 == 0 ? 60 : 12)));
        const std::string range2 =
            round % 5 == 0 ? range1 : randomRange(random, 2 + int(random() % 30));
        const std::string dead = randomDead(random, 1 + round % 8);
        SCOPED_TRACE(range1 + " vs " + range2 + " dead " + dead);
        const Problem p = prepareProblem(range1, range2, "", dead);
        const PreflopCounts fast = preflopByValueSets(p, stop);
        const Counted slow = enumerated(p);
        EXPECT_EQ(fast.wins, slow.wins);
        EXPECT_EQ(fast.ties, slow.ties);
    }
}

// Few value classes on each side, many of them suited, against dead cards that leave one suit
// nearly bare (one to eight of them): most classes hold no hand at all and most boards with
// three or more cards of a suit give one side a flush. The counts equal every board ranked
// by rankCards.
TEST(PreflopDeadCards, NarrowRangesWithFlushHeavyDeadCardsEqualBoardsRankedOneByOne) {
    const Case cases[] = {
        {"AhKh", "QhJh", "2h"},
        {"AKs", "T9s,22", "2h3h"},
        {"AhKh,7h6h", "8c8d", "2h3h4h"},
        {"KQs", "AhAd,Ts9s", "2s3s4s5s"},
        {"JTs,54s", "AKo", "AhKh2h3h4h"},
        {"Ah5h", "KcQc,9d9c", "6h7h8hTc2c3c"},
        {"98s", "76s,AA", "2d3d4d5dJdQdKd"},
        {"AdKd", "AcKc", "2h3h4h5h6h7h8h9h"},
    };
    volatile bool stop = false;
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.range1) + " vs " + c.range2 + " dead " + c.dead);
        const Problem p = prepareProblem(c.range1, c.range2, "", c.dead);
        const PreflopCounts fast = preflopByValueSets(p, stop);
        const Counted slow = boardByBoard(p, [](CardMask cards) { return rankCards(cards); });
        EXPECT_GT(slow.wins, 0);
        EXPECT_EQ(fast.wins, slow.wins);
        EXPECT_EQ(fast.ties, slow.ties);
        const LongedEvaluation e = getEquity(c.range1, c.range2, c.dead, stop);
        EXPECT_EQ(e.total, p.matchups * p.completions);
        EXPECT_EQ(std::int64_t(e.wins1), slow.wins);
        EXPECT_EQ(std::int64_t(e.ties), slow.ties);
    }
}

// All hands against all hands, the largest case: one to eight dead cards, of one suit and of
// several.
TEST(PreflopDeadCards, FullRangesEqualTheBoardEnumeration) {
    std::string all;
    const char values[] = "AKQJT98765432";
    for (int i = 0; i < 13; ++i)
        for (int j = i; j < 13; ++j)
            all += std::string(all.empty() ? "" : ",") + values[i] + values[j] +
                   (i == j ? "" : std::string("s,") + values[i] + values[j] + "o");
    const char* deads[] = {"2d",         "AhKh",         "5c5d5h",         "2d3h4s5c",
                           "2d3h4s5c6d", "AsKsQsJsTs9s", "2c3c4c5c6c7c8d", "KdKhKsKcQdQhQsQc"};
    volatile bool stop = false;
    for (const char* dead : deads) {
        SCOPED_TRACE(dead);
        const Problem p = prepareProblem(all, all, "", dead);
        const PreflopCounts fast = preflopByValueSets(p, stop);
        const Counted slow = enumerated(p);
        EXPECT_EQ(fast.wins, slow.wins);
        EXPECT_EQ(fast.ties, slow.ties);
        EXPECT_EQ(2 * fast.wins + fast.ties,
                  std::int64_t(p.matchups * p.completions)); // the same range on both sides
    }
}

// Through getEquity, which takes the value multisets when they are estimated to be quicker:
// single matchups with one to eight dead cards against every board ranked by rankCards, and
// wide ranges against the board enumeration.
TEST(PreflopDeadCards, GetEquityEqualsDirectEnumerationForSampledMatchups) {
    std::mt19937 random(20261125);
    volatile bool stop = false;
    for (int round = 0; round < 16; ++round) {
        std::vector<int> deck(52);
        for (int card = 0; card < 52; ++card)
            deck[card] = card;
        std::shuffle(deck.begin(), deck.end(), random);
        const auto text = [&deck](int from, int count) {
            std::string cards;
            for (int i = from; i < from + count; ++i)
                cards += textOfCard(CardMask(1) << deck[i]);
            return cards;
        };
        const std::string hand1 = text(0, 2);
        const std::string hand2 = text(2, 2);
        const std::string dead = text(4, 1 + round % 8);
        SCOPED_TRACE(hand1 + " vs " + hand2 + " dead " + dead);
        const Problem p = prepareProblem(hand1, hand2, "", dead);
        const Counted direct = boardByBoard(p, [](CardMask cards) { return rankCards(cards); });
        const LongedEvaluation e = getEquity(hand1, hand2, dead, stop);
        EXPECT_EQ(e.total, binomial(52 - 4 - (1 + round % 8), 5));
        EXPECT_EQ(std::int64_t(e.wins1), direct.wins);
        EXPECT_EQ(std::int64_t(e.ties), direct.ties);
        EXPECT_EQ(e.wins2, e.total - e.wins1 - e.ties);
    }
    const std::string twentyPercent = "22,33,44,55,66,77,88,99,TT,JJ,QQ,KK,AA,A2s,A3s,A4s,A5s,"
                                      "A6s,A7s,A8s,A9s,ATs,AJs,AQs,AKs,K9s,KTs,KJs,KQs,QTs,QJs,"
                                      "JTs,ATo,AJo,AQo,AKo,KJo,KQo";
    const std::string premiums = "TT,JJ,QQ,KK,AA,AKs,AKo";
    for (const char* dead : {"2d3h4s", "Ah7c8c9cTd"}) {
        SCOPED_TRACE(dead);
        const Problem p = prepareProblem(twentyPercent, premiums, "", dead);
        const Counted slow = enumerated(p);
        const LongedEvaluation e = getEquity(twentyPercent, premiums, dead, stop);
        EXPECT_EQ(e.total, p.matchups * p.completions);
        EXPECT_EQ(std::int64_t(e.wins1), slow.wins);
        EXPECT_EQ(std::int64_t(e.ties), slow.ties);
    }
}
