#include "HitCounting.h"

#include "handstrength/HandGroupRowRequest.h"
#include "handstrength/HandGroupSchema.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <set>
#include <stdexcept>

using namespace HitCounting;

namespace {

const HandStrengthKey pair(0x80, 0);
const HandStrengthKey topPair(0x280, 0);
const HandStrengthKey topKicker(0x40280, 0);
const HandStrengthKey secondKicker(0x80280, 0);
const HandStrengthKey thirdKicker(0x100280, 0);
const HandStrengthKey otherKicker(0x280, 0x1C0000);
const HandStrengthKey ppBetweenTopAndSecond(0x8000000000080ULL, 0);
const HandStrengthKey overpair(0x8080, 0);
const HandStrengthKey highcard(0x100, 0);
const HandStrengthKey customSum(0x4000000000000ULL, 0);

const std::string range = "AK,AQ,KQ,QQ";
const std::string flop = "Ks7d2c";

const HandGroupRow& rowOf(const HandGroupSchema& schema, const HandStrengthKey& key) {
    for (const HandGroup& group : schema.getGroups()) {
        const std::size_t index = group.indexOf(key);
        if (index != HandGroup::npos)
            return group.rows[index];
    }
    throw std::string("row not in schema");
}

// The hands of a range on a board that pass a test, counted here without the evaluator.
struct Counted {
    std::vector<Hand> hands;
    std::set<unsigned long long> masks;
};

Counted count(const std::string& rangeText, const std::string& board, const std::string& dead,
              const std::function<bool(const Hand&, const std::vector<Card>&)>& test) {
    const std::vector<Card> boardCards = cardsOf(board);
    std::vector<Card> blocked = boardCards;
    for (const Card& card : cardsOf(dead))
        blocked.push_back(card);
    Counted counted;
    for (const Hand& hand : handsOf(rangeText, blocked)) {
        if (test(hand, boardCards)) {
            counted.hands.push_back(hand);
            counted.masks.insert(maskOf(hand));
        }
    }
    return counted;
}

bool any(const Hand&, const std::vector<Card>&) {
    return true;
}

bool isPair(const Hand& hand, const std::vector<Card>& board) {
    return categoryOf(hand, board) == OnePair;
}

bool isHighcard(const Hand& hand, const std::vector<Card>& board) {
    return categoryOf(hand, board) == HighCard;
}

// One hole card pairs the top card of the board; the other hole card is the kicker.
bool isTopPair(const Hand& hand, const std::vector<Card>& board) {
    const int top = topRank(board);
    return isPair(hand, board) && hand.first.rank != hand.second.rank &&
           (hand.first.rank == top || hand.second.rank == top);
}

int kickerIndex(const Hand& hand, const std::vector<Card>& board) {
    const int top = topRank(board);
    const int kicker = hand.first.rank == top ? hand.second.rank : hand.first.rank;
    const std::vector<int> ladder = kickerLadder(board);
    return static_cast<int>(std::find(ladder.begin(), ladder.end(), kicker) - ladder.begin());
}

std::function<bool(const Hand&, const std::vector<Card>&)> topPairWithKicker(int index) {
    return [index](const Hand& hand, const std::vector<Card>& board) {
        return isTopPair(hand, board) && kickerIndex(hand, board) == index;
    };
}

// A pocket pair between the highest and the second highest card of the board.
bool isPocketPairBelowTop(const Hand& hand, const std::vector<Card>& board) {
    std::vector<int> boardRanks;
    for (const Card& card : board)
        boardRanks.push_back(card.rank);
    std::sort(boardRanks.rbegin(), boardRanks.rend());
    return isPair(hand, board) && hand.first.rank == hand.second.rank &&
           hand.first.rank < boardRanks[0] && hand.first.rank > boardRanks[1];
}

std::set<unsigned long long> asSet(const std::vector<unsigned long long>& masks) {
    return std::set<unsigned long long>(masks.begin(), masks.end());
}

} // namespace

TEST(HandGroupSchemaEvaluation, OnePlayerCountsMatchAnIndependentCount) {
    HandGroupSchema schema;
    schema.evaluateOnePlayer(range, flop, "", false);

    const Counted all = count(range, flop, "", any);
    const Counted pairs = count(range, flop, "", isPair);
    const Counted top = count(range, flop, "", isTopPair);
    const Counted tk = count(range, flop, "", topPairWithKicker(0));
    const Counted sk = count(range, flop, "", topPairWithKicker(1));
    const Counted pp = count(range, flop, "", isPocketPairBelowTop);
    const Counted high = count(range, flop, "", isHighcard);
    // The numbers a player works out by hand: AK 12, AQ 16, KQ 12, QQ 6.
    ASSERT_EQ(all.hands.size(), 46u);
    ASSERT_EQ(top.hands.size(), 24u);

    EXPECT_EQ(schema.getGroups()[1].evaluations.total, all.hands.size());
    EXPECT_EQ(rowOf(schema, pair).combinations1, pairs.hands.size());
    EXPECT_EQ(rowOf(schema, topPair).combinations1, top.hands.size());
    EXPECT_EQ(rowOf(schema, topKicker).combinations1, tk.hands.size());
    EXPECT_EQ(rowOf(schema, secondKicker).combinations1, sk.hands.size());
    EXPECT_EQ(rowOf(schema, thirdKicker).combinations1, 0u);
    EXPECT_EQ(rowOf(schema, otherKicker).combinations1, 0u);
    EXPECT_EQ(rowOf(schema, ppBetweenTopAndSecond).combinations1, pp.hands.size());
    EXPECT_EQ(rowOf(schema, overpair).combinations1, 0u);
    EXPECT_EQ(rowOf(schema, highcard).combinations1, high.hands.size());
    EXPECT_EQ(rowOf(schema, topPair).combinations2, 0u);

    // The hands behind a row are exactly those combinations.
    EXPECT_EQ(asSet(schema.handsOf(topPair, 1)), top.masks);
    EXPECT_EQ(asSet(schema.handsOf(topKicker, 1)), tk.masks);
    EXPECT_EQ(asSet(schema.handsOf(highcard, 1)), high.masks);
    EXPECT_TRUE(schema.handsOf(topPair, 2).empty());
    EXPECT_TRUE(schema.handsOf(HandStrengthKey(0x3, 0), 1).empty());
}

TEST(HandGroupSchemaEvaluation, RelativePercentagesAreSharesOfTheParent) {
    HandGroupSchema schema;
    schema.evaluateOnePlayer(range, flop, "", false);
    EXPECT_FLOAT_EQ(rowOf(schema, pair).percentage1, 30.0f / 46.0f);
    EXPECT_FLOAT_EQ(rowOf(schema, topPair).percentage1, 24.0f / 30.0f);
    EXPECT_FLOAT_EQ(rowOf(schema, topKicker).percentage1, 12.0f / 24.0f);
    EXPECT_FLOAT_EQ(rowOf(schema, ppBetweenTopAndSecond).percentage1, 6.0f / 30.0f);
    EXPECT_FLOAT_EQ(rowOf(schema, highcard).percentage1, 16.0f / 46.0f);
    // No hits: 0, even though the parent has hits.
    EXPECT_EQ(rowOf(schema, thirdKicker).percentage1, 0.0f);
    EXPECT_EQ(rowOf(schema, thirdKicker).percentage2, 0.0f);
    EXPECT_EQ(rowOf(schema, topPair).percentage2, 0.0f);
}

TEST(HandGroupSchemaEvaluation, FlatPercentagesAreSharesOfAllCombinations) {
    HandGroupSchema schema;
    schema.evaluateOnePlayer(range, flop, "", true);
    EXPECT_FLOAT_EQ(rowOf(schema, pair).percentage1, 30.0f / 46.0f);
    EXPECT_FLOAT_EQ(rowOf(schema, topPair).percentage1, 24.0f / 46.0f);
    EXPECT_FLOAT_EQ(rowOf(schema, topKicker).percentage1, 12.0f / 46.0f);
}

TEST(HandGroupSchemaEvaluation, DeadCardsRemoveCombinations) {
    HandGroupSchema schema;
    schema.evaluateOnePlayer(range, flop, "Ah", false);
    const Counted all = count(range, flop, "Ah", any);
    const Counted tk = count(range, flop, "Ah", topPairWithKicker(0));
    ASSERT_EQ(all.hands.size(), 39u);
    EXPECT_EQ(schema.getGroups()[1].evaluations.total, 39u);
    EXPECT_EQ(rowOf(schema, topKicker).combinations1, tk.hands.size());
    EXPECT_EQ(rowOf(schema, topPair).combinations1, 21u);
}

TEST(HandGroupSchemaEvaluation, HandValuesMatchOnTurnAndRiver) {
    const std::string wide = "AA,KK,77,22,AK,AQ,K7s,72o,JTs,T9s,98s,A5s,65s,QJo,J8,86s,AsQs";
    const HandStrengthKey values[] = {
        HandStrengthKey(0x1, 0),  HandStrengthKey(0x2, 0),  HandStrengthKey(0x4, 0),
        HandStrengthKey(0x8, 0),  HandStrengthKey(0x10, 0), HandStrengthKey(0x20, 0),
        HandStrengthKey(0x40, 0), HandStrengthKey(0x80, 0), HandStrengthKey(0x100, 0)};
    for (const std::string board : {"Ks7d2c7h", "Ts9s7d2s7h", "6s5s4s"}) {
        SCOPED_TRACE(board);
        HandGroupSchema schema;
        schema.evaluateOnePlayer(wide, board, "", false);
        std::size_t sum = 0;
        for (int category = 0; category < 9; ++category) {
            const Counted counted =
                count(wide, board, "", [category](const Hand& hand, const std::vector<Card>& b) {
                    return categoryOf(hand, b) == category;
                });
            EXPECT_EQ(rowOf(schema, values[category]).combinations1, counted.hands.size())
                << "hand value " << category;
            sum += rowOf(schema, values[category]).combinations1;
        }
        // Every combination has exactly one hand value.
        EXPECT_EQ(sum, schema.getGroups()[1].evaluations.total);
    }
}

TEST(HandGroupSchemaEvaluation, TwoPlayersFillBothColumns) {
    const std::string range2 = "QQ,JJ,AKs,72s";
    HandGroupSchema two;
    two.evaluateTwoPlayers(range, range2, flop, "", false);
    HandGroupSchema first;
    first.evaluateOnePlayer(range, flop, "", false);
    HandGroupSchema second;
    second.evaluateOnePlayer(range2, flop, "", false);

    const Counted pairs2 = count(range2, flop, "", isPair);
    const Counted top2 = count(range2, flop, "", isTopPair);
    EXPECT_EQ(rowOf(two, pair).combinations2, pairs2.hands.size());
    EXPECT_EQ(rowOf(two, topPair).combinations2, top2.hands.size());
    EXPECT_EQ(asSet(two.handsOf(topPair, 2)), top2.masks);

    for (std::size_t g = 1; g < two.getGroups().size(); ++g) {
        const std::vector<HandGroupRow>& rows = two.getGroups()[g].rows;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            EXPECT_EQ(rows[i].combinations1, first.getGroups()[g].rows[i].combinations1);
            EXPECT_EQ(rows[i].combinations2, second.getGroups()[g].rows[i].combinations1);
        }
    }
    // Children: shares of the parent row, per player.
    EXPECT_FLOAT_EQ(rowOf(two, topPair).percentage2,
                    float(top2.hands.size()) / float(pairs2.hands.size()));
    // Roots: over the evaluation's total.
    const float total = float(two.getGroups()[1].evaluations.total);
    EXPECT_FLOAT_EQ(rowOf(two, pair).percentage2, float(pairs2.hands.size()) / total);
}

TEST(HandGroupSchemaEvaluation, CustomSumCountsTheUnionOfTheTicks) {
    HandGroupSchema schema;
    schema.setCustomSum({pair, topPair, topKicker});
    schema.evaluateOnePlayer(range, flop, "", false);
    const Counted pairs = count(range, flop, "", isPair);
    const HandGroup& sumGroup = schema.getGroups()[0];
    EXPECT_EQ(sumGroup.rows[0].combinations1, pairs.hands.size()); // not 30 + 24 + 12
    EXPECT_EQ(asSet(schema.handsOf(customSum, 1)), pairs.masks);
    EXPECT_EQ(schema.handsOf(customSum, 1).size(), pairs.hands.size());
    EXPECT_EQ(sumGroup.evaluations.total, 46u);
    EXPECT_FLOAT_EQ(sumGroup.rows[0].percentage1, 30.0f / 46.0f);
    EXPECT_EQ(schema.getCustomSum().details.size(), 3u);
    EXPECT_EQ(schema.getCustomSum().total, 46u);

    schema.setCustomSum({topPair, highcard});
    schema.evaluateOnePlayer(range, flop, "", true); // a root: flat changes nothing
    EXPECT_EQ(schema.getGroups()[0].rows[0].combinations1, 40u);
    EXPECT_FLOAT_EQ(schema.getGroups()[0].rows[0].percentage1, 40.0f / 46.0f);
}

TEST(HandGroupSchemaEvaluation, CustomSumForTwoPlayers) {
    HandGroupSchema schema;
    schema.setCustomSum({topPair, ppBetweenTopAndSecond});
    schema.evaluateTwoPlayers(range, "QQ,KJ", flop, "", false);
    const HandGroupRow& row = schema.getGroups()[0].rows[0];
    EXPECT_EQ(row.combinations1, 30u);
    const Counted second = count("QQ,KJ", flop, "", [](const Hand& h, const std::vector<Card>& b) {
        return isTopPair(h, b) || isPocketPairBelowTop(h, b);
    });
    EXPECT_EQ(row.combinations2, second.hands.size());
    EXPECT_EQ(asSet(schema.handsOf(customSum, 2)), second.masks);
}

TEST(HandGroupSchemaEvaluation, CustomSumWithoutTicksIsZero) {
    HandGroupSchema schema;
    schema.evaluateOnePlayer(range, flop, "", false);
    EXPECT_EQ(schema.getGroups()[0].rows[0].combinations1, 0u);
    EXPECT_EQ(schema.getGroups()[0].rows[0].percentage1, 0.0f);
}

TEST(HandGroupSchemaEvaluation, OnlyAGroupLedByTheCustomSumKeyIsAUnion) {
    HandGroupSchemaData data;
    data.name = "Variants";
    HandGroup led; // first row: the custom sum key, with a caption of its own
    led.name = "Led";
    led.addRow(
        HandGroupRowRequest(HandStrengthKey(0x4000000000000ULL, 0, "Sum"), HandStrengthKey()));
    HandGroup second; // the custom sum key in second place
    second.name = "Second";
    second.addRow(HandGroupRowRequest(pair, HandStrengthKey()));
    second.addRow(HandGroupRowRequest(customSum, HandStrengthKey()));
    HandGroup otherWord; // positive word of the custom sum, but an exclusive word
    otherWord.name = "Other word";
    otherWord.addRow(
        HandGroupRowRequest(HandStrengthKey(0x4000000000000ULL, 0x1), HandStrengthKey()));
    otherWord.addRow(HandGroupRowRequest(topPair, HandStrengthKey()));
    data.groups = {led, second, otherWord};

    HandGroupSchema schema(nullptr, data);
    schema.setCustomSum({pair, topPair});
    schema.evaluateOnePlayer(range, flop, "", false);
    const std::vector<HandGroup>& groups = schema.getGroups();
    EXPECT_EQ(groups[0].rows[0].combinations1, 30u);
    // Counted row by row: no hand has the marker bit.
    EXPECT_EQ(groups[1].rows[0].combinations1, 30u);
    EXPECT_EQ(groups[1].rows[1].combinations1, 0u);
    EXPECT_EQ(groups[2].rows[0].combinations1, 0u);
    EXPECT_EQ(groups[2].rows[1].combinations1, 24u);
}

TEST(HandGroupSchemaEvaluation, NothingIsCountedWithoutRangeOrFlop) {
    HandGroupSchema schema;
    schema.setCustomSum({pair});
    schema.evaluateOnePlayer(range, flop, "", false);
    ASSERT_EQ(rowOf(schema, pair).combinations1, 30u);

    struct Case {
        std::string range1, range2, board;
        bool two;
    };
    for (const Case& c : {Case{"", "", flop, false}, Case{range, "", "Ks7d", false},
                          Case{range, "", "", false}, Case{range, "", flop, true},
                          Case{"", range, flop, true}, Case{range, range, "Ks7d", true}}) {
        SCOPED_TRACE(c.range1 + " / " + c.range2 + " / " + c.board);
        if (c.two)
            schema.evaluateTwoPlayers(c.range1, c.range2, c.board, "", false);
        else
            schema.evaluateOnePlayer(c.range1, c.board, "", false);
        for (const HandGroup& group : schema.getGroups()) {
            EXPECT_EQ(group.evaluations.total, 0u);
            for (const HandGroupRow& row : group.rows) {
                EXPECT_EQ(row.combinations1, 0u);
                EXPECT_EQ(row.combinations2, 0u);
                EXPECT_EQ(row.percentage1, 0.0f);
                EXPECT_EQ(row.percentage2, 0.0f);
            }
        }
    }
}

TEST(HandGroupSchemaEvaluation, ASchemaWithoutGroupsEvaluatesToNothing) {
    HandGroupSchema schema(nullptr, 0);
    schema.evaluateOnePlayer(range, flop, "", false);
    schema.evaluateTwoPlayers(range, range, flop, "", true);
    EXPECT_TRUE(schema.getGroups().empty());
    EXPECT_TRUE(schema.data().groups.empty());
}

TEST(HandGroupSchemaEvaluation, AGroupWithoutRowsStaysEmpty) {
    HandGroupSchemaData data;
    data.name = "Hollow";
    data.groups.resize(2);
    data.groups[0].name = "Empty";
    data.groups[1].name = "Pairs";
    data.groups[1].addRow(HandGroupRowRequest(pair, HandStrengthKey()));
    HandGroupSchema schema(nullptr, data);
    schema.evaluateOnePlayer(range, flop, "", false);
    ASSERT_EQ(schema.getGroups().size(), 2u);
    EXPECT_TRUE(schema.getGroups()[0].rows.empty());
    EXPECT_TRUE(schema.getGroups()[0].evaluations.details.empty());
    EXPECT_EQ(schema.getGroups()[0].evaluations.total, 0u);
    EXPECT_EQ(schema.getGroups()[1].rows[0].combinations1, 30u);
}

TEST(HandGroupSchemaEvaluation, ABrokenStoredTreeDividesByZeroOrCountsAsRoot) {
    HandGroupSchemaData data;
    data.name = "Broken";
    data.groups.resize(1);
    HandGroup& group = data.groups[0];
    group.name = "Broken";
    group.rows.resize(3);
    group.rows[0].key = HandStrengthKey(0x10, 0); // straight: no hits here
    group.rows[1].key = topPair;
    group.rows[1].parent = 0; // a child with hits under a parent without
    group.rows[2].key = highcard;
    group.rows[2].parent = 42; // a link out of range
    HandGroupSchema schema(nullptr, data);
    schema.evaluateOnePlayer(range, flop, "", false);
    const std::vector<HandGroupRow>& rows = schema.getGroups()[0].rows;
    EXPECT_EQ(rows[1].combinations1, 24u);
    EXPECT_TRUE(std::isinf(rows[1].percentage1));
    EXPECT_EQ(rows[1].percentage2, 0.0f);
    EXPECT_FLOAT_EQ(rows[2].percentage1, 16.0f / 46.0f);
}

TEST(HandGroupSchemaEvaluation, MalformedTextIsRefusedByTheEvaluatorWithAMessage) {
    // Only texts that the system produced itself reach the schema; a malformed one that
    // passes the length check is refused by the evaluator, not read out of bounds.
    HandGroupSchema schema;
    try {
        schema.evaluateOnePlayer(range, "Ks7d2", "", false);
        FAIL() << "no exception";
    } catch (const std::invalid_argument& error) {
        EXPECT_FALSE(std::string(error.what()).empty());
    }
    EXPECT_THROW(schema.evaluateTwoPlayers(range, range, flop, "Ks", false), std::invalid_argument);
}
