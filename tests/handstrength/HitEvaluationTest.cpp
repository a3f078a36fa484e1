// Hit evaluations over whole ranges on many random boards: properties of the feature words,
// the union rule of the UsingOr variants, independent counts of simple keys, and the edge
// cases of the interface.

#include "FeatureWordTestSupport.h"
#include "NaiveHoldem.h"

#include "VelmaraEvaluatorBase.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

using namespace featuretest;

namespace {

const std::string cardText(int card) {
    return std::string(1, "23456789TJQKA"[card % 13]) + "dhsc"[card / 13];
}

// `count` random boards of `cards` cards, fixed seed.
std::vector<std::string> randomBoards(int count, int cards, unsigned seed) {
    std::mt19937 random(seed);
    std::vector<std::string> boards;
    for (int i = 0; i < count; ++i) {
        std::vector<int> deck(52);
        for (int c = 0; c < 52; ++c)
            deck[c] = c;
        std::shuffle(deck.begin(), deck.end(), random);
        std::string board;
        for (int c = 0; c < cards; ++c)
            board += cardText(deck[c]);
        boards.push_back(board);
    }
    return boards;
}

// Feature words of every hand of the full range on `board`, through one classical
// evaluation with a single-bit key per feature.
std::map<unsigned long long, unsigned long long> wordsOnBoard(const std::string& board,
                                                              unsigned long long* total = nullptr) {
    DetailHandEvaluations evaluations;
    for (int b = 0; b < 64; ++b) {
        DetailHandEvaluation entry;
        entry.key = HandStrengthKey(bit(b), 0);
        evaluations.details.push_back(entry);
    }
    const std::string range = naive::fullRange();
    getHitEvaluationClassical(range, range, board, "", evaluations);
    std::map<unsigned long long, unsigned long long> words;
    const std::uint64_t boardMask = naive::maskOf(naive::cardsOf(board));
    for (int a = 0; a < 52; ++a)
        for (int c = a + 1; c < 52; ++c) {
            const unsigned long long hand = (1ULL << a) | (1ULL << c);
            if (!(hand & boardMask))
                words[hand] = 0;
        }
    for (int b = 0; b < 64; ++b) {
        for (unsigned long long hand : evaluations.details[b].hands1)
            words.at(hand) |= bit(b);
        EXPECT_EQ(evaluations.details[b].hands1, evaluations.details[b].hands2);
        EXPECT_EQ(evaluations.details[b].combinations1,
                  static_cast<int>(evaluations.details[b].hands1.size()));
    }
    if (total)
        *total = evaluations.total;
    return words;
}

constexpr unsigned long long handValues = 0x1FF;
constexpr unsigned long long drawBits = FD | OESD | GS | BDFD | BDSD | N1 | N2 | N3 | N4 | N5 |
                                        BD_2O2G | BD_1O2G | BD_4G | BD_2G | FD1 | FD2 | SD1 | SD2;
constexpr unsigned long long backdoorBits = BDFD | BDSD | BD_2O2G | BD_1O2G | BD_4G | BD_2G;
constexpr unsigned long long neverSet =
    bit(25) | (0x3FULL << 40) | bit(48) | bit(50) | (0x7FULL << 57);

int categoryBit(int category) {
    return 8 - category;
}

int popcount(unsigned long long x) {
    return __builtin_popcountll(x);
}

struct Street {
    int cards;
    int boards;
    unsigned seed;
};

const Street streets[] = {{3, 40, 11}, {4, 30, 22}, {5, 30, 33}};

} // namespace

TEST(HitEvaluationProperties, FeatureWordsOnRandomBoards) {
    for (const Street& street : streets) {
        for (const std::string& board : randomBoards(street.boards, street.cards, street.seed)) {
            unsigned long long total = 0;
            const auto words = wordsOnBoard(board, &total);
            ASSERT_EQ(total, words.size()) << board;
            ASSERT_EQ(words.size(), std::size_t(52 - street.cards) * (51 - street.cards) / 2);
            const auto boardCards = naive::cardsOf(board);
            for (const auto& [hand, word] : words) {
                SCOPED_TRACE(board + " hand mask " + std::to_string(hand));
                ASSERT_EQ(popcount(word & handValues), 1) << "exactly one hand value";
                std::vector<naive::Card> cards = naive::cardsOfMask(hand);
                cards.insert(cards.end(), boardCards.begin(), boardCards.end());
                const int category = naive::categoryOf(naive::bestValue(cards));
                ASSERT_EQ(word & handValues, bit(categoryBit(category))) << "agrees with ranking";
                ASSERT_EQ(word & neverSet, 0u);
                if (street.cards == 5) {
                    ASSERT_EQ(word & drawBits, 0u) << "no draws on the river";
                }
                if (street.cards >= 4) {
                    ASSERT_EQ(word & backdoorBits, 0u) << "no backdoor draws after the flop";
                }
                // Qualifiers that exclude each other.
                ASSERT_LE(popcount(word & (BOARD | ONE | TWO | PPTWOPAIR)), 1);
                ASSERT_LE(popcount(word & (R1 | R2 | R3 | R4 | R5)), 1);
                ASSERT_LE(popcount(word & (K1 | K2 | K3)), 1);
                ASSERT_LE(popcount(word & (FD | BDFD)), 1);
                ASSERT_LE(popcount(word & (OESD | GS)), 1);
                ASSERT_LE(popcount(word & (N1 | N2 | N3 | N4 | N5)), 1);
                ASSERT_LE(popcount(word & (OVER1 | OVER2)), 1);
                ASSERT_LE(popcount(word & (OVERPAIR | PP12 | PP23 | PPLOW | PPMID | PPUNDER)), 1);
                // Companion bits come with their feature.
                ASSERT_EQ((word & (FD | BDFD)) != 0, (word & (FD1 | FD2)) != 0);
                ASSERT_EQ(popcount(word & (FD1 | FD2)) <= 1, true);
                ASSERT_EQ((word & (OESD | GS | BDSD)) != 0, (word & (SD1 | SD2)) != 0);
                ASSERT_LE(popcount(word & (SD1 | SD2)), 1);
                ASSERT_EQ((word & BDSD) != 0,
                          popcount(word & (BD_2O2G | BD_1O2G | BD_4G | BD_2G)) == 1);
                ASSERT_FALSE((word & (N1 | N2 | N3 | N4 | N5)) && !(word & (FD | BDFD)));
                ASSERT_FALSE((word & ACE) && !(word & (OVER1 | OVER2)));
                ASSERT_FALSE((word & OESD) && (word & BDSD)) << "an OESD has no backdoor";
                // Draws only where they would improve the hand value.
                if (word & (FD | BDFD)) {
                    ASSERT_LT(category, naive::Flush);
                }
                if (word & (OESD | GS | BDSD)) {
                    ASSERT_LT(category, naive::Straight);
                }
                if (word & (K1 | K2 | K3)) {
                    ASSERT_TRUE((word & (PAIR | TRIPS)) && (word & ONE));
                }
            }
        }
    }
}

TEST(HitEvaluationProperties, UsingOrCountsEachHandForItsFirstEntryOnly) {
    // Overlapping keys, as in a custom sum of the draw rows.
    const std::vector<HandStrengthKey> keys = {{0xC000000, 0x433E00},
                                               {0x14000000, 0x433E00},
                                               {0x4000000, 0x433E00},
                                               {0x8000000, 0x433E00},
                                               {0x14000000, 0x433E00},
                                               {0x28000000, 0x433E00},
                                               {0x400004000000, 0x433E00},
                                               {0x400008000000, 0x433E00},
                                               {0x80, 0},
                                               {0x280, 0},
                                               {0x40000280, 0},
                                               {0x400000000000, 0},
                                               {0x4000, 0},
                                               {0, 0x1}};
    const std::string range = naive::fullRange();
    for (const std::string& board : randomBoards(12, 3, 44)) {
        DetailHandEvaluations classical, usingOr, onePlayerOr;
        for (const HandStrengthKey& k : keys) {
            DetailHandEvaluation entry;
            entry.key = k;
            classical.details.push_back(entry);
        }
        usingOr = classical;
        onePlayerOr = classical;
        getHitEvaluationClassical(range, "AA,KK,QQ,AKs", board, "", classical);
        getHitEvaluationUsingOr(range, "AA,KK,QQ,AKs", board, "", usingOr);
        getHitEvaluationForOnePlayerUsingOr(range, board, "", onePlayerOr);
        std::set<unsigned long long> seen1, seen2;
        long sum1 = 0;
        for (std::size_t i = 0; i < keys.size(); ++i) {
            // A hand is in entry i when it meets key i and no earlier key.
            std::set<unsigned long long> expected(classical.details[i].hands1.begin(),
                                                  classical.details[i].hands1.end());
            for (std::size_t j = 0; j < i; ++j)
                for (unsigned long long h : classical.details[j].hands1)
                    expected.erase(h);
            const std::set<unsigned long long> got(usingOr.details[i].hands1.begin(),
                                                   usingOr.details[i].hands1.end());
            EXPECT_EQ(got, expected) << board << " entry " << i;
            EXPECT_EQ(usingOr.details[i].combinations1, static_cast<int>(got.size()));
            EXPECT_EQ(onePlayerOr.details[i].hands1, usingOr.details[i].hands1);
            sum1 += usingOr.details[i].combinations1;
            for (unsigned long long h : usingOr.details[i].hands1)
                EXPECT_TRUE(seen1.insert(h).second) << "counted twice";
            for (unsigned long long h : usingOr.details[i].hands2)
                EXPECT_TRUE(seen2.insert(h).second) << "counted twice";
        }
        // The last key (exclusive straight flush) catches everything else: a partition.
        EXPECT_EQ(static_cast<unsigned long long>(sum1), usingOr.total);
        EXPECT_EQ(seen1.size(), usingOr.total);
    }
}

TEST(HitEvaluationProperties, HandValuesPartitionTheRange) {
    const std::string range = "AA,KK,QQ,JJ,TT,99,AKs,AKo,AQs,KQs,JTs,T9s,98s,87s,76s,65s,A5s,A4s";
    for (const Street& street : streets) {
        for (const std::string& board : randomBoards(10, street.cards, street.seed + 100)) {
            DetailHandEvaluations classical, usingOr;
            for (int v = 0; v < 9; ++v) {
                DetailHandEvaluation entry;
                entry.key = HandStrengthKey(bit(v), 0);
                classical.details.push_back(entry);
            }
            usingOr = classical;
            getHitEvaluationForOnePlayer(range, board, "", classical);
            getHitEvaluationForOnePlayerUsingOr(range, board, "", usingOr);
            long sum = 0;
            for (int v = 0; v < 9; ++v) {
                sum += classical.details[v].combinations1;
                EXPECT_EQ(classical.details[v].hands1, usingOr.details[v].hands1);
            }
            EXPECT_EQ(static_cast<unsigned long long>(sum), classical.total) << board;
        }
    }
}

// ---- Classical counts against independent counts ------------------------------------------

namespace {

struct Simple {
    const char* name;
    unsigned long long positive;
    bool (*has)(const std::vector<naive::Card>& hole, const std::vector<naive::Card>& board,
                int category);
};

int maxBoardRank(const std::vector<naive::Card>& board) {
    int m = -1;
    for (const auto& c : board)
        m = std::max(m, c.rank);
    return m;
}

int boardCount(const std::vector<naive::Card>& board, int rank) {
    int n = 0;
    for (const auto& c : board)
        n += c.rank == rank;
    return n;
}

const Simple simpleKeys[] = {
    {"pair", 0x80, [](const auto&, const auto&, int category) { return category == naive::Pair; }},
    {"top pair", 0x280,
     [](const auto& hole, const auto& board, int category) {
         if (category != naive::Pair)
             return false;
         const int top = maxBoardRank(board);
         return (hole[0].rank == top) != (hole[1].rank == top) && boardCount(board, top) == 1;
     }},
    {"overpair", 0x8080,
     [](const auto& hole, const auto& board, int category) {
         return category == naive::Pair && hole[0].rank == hole[1].rank &&
                hole[0].rank > maxBoardRank(board);
     }},
    {"set", 0x10020,
     [](const auto& hole, const auto& board, int category) {
         return category == naive::Trips && hole[0].rank == hole[1].rank &&
                boardCount(board, hole[0].rank) == 1;
     }},
    {"flush draw", 0x4000000,
     [](const auto& hole, const auto& board, int category) {
         if (board.size() == 5 || category >= naive::Flush)
             return false;
         for (int suit = 0; suit < 4; ++suit) {
             int inHole = 0, onBoard = 0;
             for (const auto& c : hole)
                 inHole += c.suit == suit;
             for (const auto& c : board)
                 onBoard += c.suit == suit;
             if (inHole >= 1 && inHole + onBoard == 4)
                 return true;
         }
         return false;
     }},
};

} // namespace

TEST(HitEvaluationClassical, SimpleKeysMatchIndependentCounts) {
    const std::string range1 = naive::fullRange();
    const std::string range2 = "AA,KK,QQ,JJ,TT,99,88,AKs,AQs,KQs,QJs,JTs,T9s,98s,AKo,KQo,A5s";
    for (const Street& street : streets) {
        for (const std::string& board : randomBoards(15, street.cards, street.seed + 7)) {
            const std::string dead = "";
            DetailHandEvaluations evaluations;
            for (const Simple& s : simpleKeys) {
                DetailHandEvaluation entry;
                entry.key = HandStrengthKey(s.positive, 0);
                evaluations.details.push_back(entry);
            }
            getHitEvaluationClassical(range1, range2, board, dead, evaluations);
            const auto boardCards = naive::cardsOf(board);
            const std::uint64_t boardMask = naive::maskOf(boardCards);
            // Range 1 is every hand; range 2 is listed by its classes below.
            DetailHandEvaluations second = evaluations;
            getHitEvaluationForOnePlayer(range2, board, dead, second);
            for (std::size_t k = 0; k < std::size(simpleKeys); ++k) {
                int expected = 0;
                for (int a = 0; a < 52; ++a)
                    for (int b = a + 1; b < 52; ++b) {
                        const std::uint64_t hand = (1ULL << a) | (1ULL << b);
                        if (hand & boardMask)
                            continue;
                        const auto hole = naive::cardsOfMask(hand);
                        auto cards = hole;
                        cards.insert(cards.end(), boardCards.begin(), boardCards.end());
                        const int category = naive::categoryOf(naive::bestValue(cards));
                        expected += simpleKeys[k].has(hole, boardCards, category);
                    }
                EXPECT_EQ(evaluations.details[k].combinations1, expected)
                    << simpleKeys[k].name << " on " << board;
                EXPECT_EQ(evaluations.details[k].combinations2, second.details[k].combinations1);
                EXPECT_EQ(evaluations.details[k].hands2, second.details[k].hands1);
            }
        }
    }
}

// ---- Interface edge cases -----------------------------------------------------------------

TEST(HitEvaluationInterface, EmptyListOfEntriesReturnsAtOnce) {
    DetailHandEvaluations evaluations;
    evaluations.total = 77;
    getHitEvaluationClassical("AA", "KK", "Ks7h2d", "", evaluations);
    getHitEvaluationUsingOr("AA", "KK", "Ks7h2d", "", evaluations);
    getHitEvaluationForOnePlayer("AA", "Ks7h2d", "", evaluations);
    getHitEvaluationForOnePlayerUsingOr("AA", "Ks7h2d", "", evaluations);
    getHitEvaluationForOnePlayerUsingOr({0x3}, 0x1C, evaluations, 3);
    EXPECT_EQ(evaluations.total, 77u);
    EXPECT_TRUE(evaluations.details.empty());
}

TEST(HitEvaluationInterface, OnePlayerLeavesTheSecondPlayersFieldsAlone) {
    DetailHandEvaluations evaluations;
    DetailHandEvaluation entry;
    entry.key = HandStrengthKey(0x80, 0);
    entry.combinations2 = 42;
    entry.hands2 = {0x3, 0x5};
    entry.name = "Pair";
    evaluations.details.push_back(entry);
    getHitEvaluationForOnePlayer("AA,KK,72o", "Ks7h2d", "", evaluations);
    EXPECT_EQ(evaluations.details[0].combinations2, 42);
    EXPECT_EQ(evaluations.details[0].hands2, (std::vector<unsigned long long>{0x3, 0x5}));
    EXPECT_EQ(evaluations.details[0].name, "Pair");
    // AA: 6 overpairs; KK: 3 sets; 72o: sevens c, d, s with deuces c, h, s, less the suited
    // 7c2c and 7s2s: 7 combinations of two pair. So the pairs are the six aces.
    EXPECT_EQ(evaluations.details[0].combinations1, 6);
    EXPECT_EQ(evaluations.total, 6u + 3u + 7u);
    getHitEvaluationForOnePlayerUsingOr("AA,KK", "Ks7h2d", "", evaluations);
    EXPECT_EQ(evaluations.details[0].combinations2, 42);
}

TEST(HitEvaluationInterface, DeadCardsAndTheBoardRemoveCombinations) {
    DetailHandEvaluations evaluations;
    DetailHandEvaluation entry;
    entry.key = HandStrengthKey(0x8080, 0); // overpair
    evaluations.details.push_back(entry);
    getHitEvaluationForOnePlayer("AA,QQ", "Ks7h2d", "AhQd", evaluations);
    EXPECT_EQ(evaluations.total, 6u); // 3 aces left: 3 combos; 3 queens left: 3 combos
    EXPECT_EQ(evaluations.details[0].combinations1, 3);
    for (unsigned long long hand : evaluations.details[0].hands1)
        EXPECT_EQ(hand & naive::maskOf(naive::cardsOf("AhQd")), 0u);
}

TEST(HitEvaluationInterface, VectorFormWorksOnMasks) {
    DetailHandEvaluations evaluations;
    DetailHandEvaluation pair, high;
    pair.key = HandStrengthKey(0x80, 0);
    high.key = HandStrengthKey(0x100, 0);
    evaluations.details = {pair, high};
    const auto mask = [](const char* t) { return naive::maskOf(naive::cardsOf(t)); };
    const unsigned long long board = mask("Ks7h2d");
    getHitEvaluationForOnePlayerUsingOr({mask("AcKc"), mask("AcQc"), mask("Ks3c"), mask("7c7d")},
                                        board, evaluations, 3);
    EXPECT_EQ(evaluations.total, 3u) << "the hand holding the board's king cannot occur";
    EXPECT_EQ(evaluations.details[0].combinations1, 1);
    EXPECT_EQ(evaluations.details[0].hands1, std::vector<unsigned long long>{mask("AcKc")});
    EXPECT_EQ(evaluations.details[1].combinations1, 1);
}

TEST(HitEvaluationInterface, BadInputIsReportedWithAMessage) {
    DetailHandEvaluations evaluations;
    evaluations.details.resize(1);
    const auto message = [&](auto call) {
        try {
            call();
        } catch (const std::invalid_argument& error) {
            return std::string(error.what());
        }
        return std::string("no exception");
    };
    EXPECT_NE(message([&] {
                  getHitEvaluationForOnePlayer("AA", "Ks7h", "", evaluations);
              }).find("3, 4 or 5 cards"),
              std::string::npos);
    EXPECT_NE(message([&] { getHitEvaluationForOnePlayer("AA", "Ks7h2dXx", "", evaluations); }),
              "no exception");
    EXPECT_NE(message([&] {
                  getHitEvaluationForOnePlayer("AA", "Ks7h2d", "Ks", evaluations);
              }).find("dead card"),
              std::string::npos);
    EXPECT_NE(message([&] { getHitEvaluationForOnePlayer("AX7", "Ks7h2d", "", evaluations); }),
              "no exception");
    EXPECT_NE(message([&] {
                  getHitEvaluationForOnePlayerUsingOr({0x3}, 0x1C, evaluations, 4);
              }).find("not 4"),
              std::string::npos);
    EXPECT_NE(message([&] {
                  getHitEvaluationForOnePlayerUsingOr({0x7}, 0x1C0, evaluations, 3);
              }).find("two cards"),
              std::string::npos);
}
