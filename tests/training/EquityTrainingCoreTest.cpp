// The parts of the training that need no widgets: the deal of an item, the scoring of a
// guess and the numbers of a finished training.

#include "TrainingResultsSamples.h"

#include "Range/CardText.h"
#include "Range/HandRange.h"
#include "Range/HandRangeStringManipulator.h"
#include "Range/RandomSource.h"
#include "training/EquityTrainingDeal.h"
#include "training/EquityTrainingScore.h"
#include "training/EquityTrainingSummary.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <set>
#include <string>
#include <vector>

namespace {

Range::HandRange rangeOf(const std::string& text) {
    Range::HandRange range;
    Range::HandRangeStringManipulator(range).setFree(text);
    return range;
}

// The deck in the order the deal reads it: the ranks from the deuce up, diamonds first, then
// hearts, spades and clubs. Built here on its own, not copied from the product.
std::vector<std::string> deckOrder() {
    std::vector<std::string> deck;
    for (char suit : std::string("dhsc"))
        for (char rank : std::string("23456789TJQKA"))
            deck.push_back(std::string{rank, suit});
    return deck;
}

std::vector<std::string> cardsOf(const std::string& text) {
    std::vector<std::string> cards;
    for (std::size_t place = 0; place + 1 < text.size(); place += 2)
        cards.push_back(text.substr(place, 2));
    return cards;
}

bool isCardList(const std::string& text, std::size_t count) {
    return Range::CardText::isCards(text, count);
}

bool sharesACard(const std::string& a, const std::string& b) {
    for (const std::string& card : cardsOf(a))
        for (const std::string& other : cardsOf(b))
            if (card == other)
                return true;
    return false;
}

} // namespace

using TrainingResultsSamples::item;

// ---- The deal -------------------------------------------------------------------------------

TEST(EquityTrainingDeal, EachRandomnessCompletesTheBoardToItsLength) {
    EXPECT_EQ(EquityTrainingDeal::boardCardCount(EquityTrainingRandomness::None), 0u);
    EXPECT_EQ(EquityTrainingDeal::boardCardCount(EquityTrainingRandomness::Flop), 3u);
    EXPECT_EQ(EquityTrainingDeal::boardCardCount(EquityTrainingRandomness::Turn), 4u);
    EXPECT_EQ(EquityTrainingDeal::boardCardCount(EquityTrainingRandomness::River), 5u);
    EXPECT_EQ(static_cast<int>(EquityTrainingRandomness::None), 0);
    EXPECT_EQ(static_cast<int>(EquityTrainingRandomness::Flop), 1);
    EXPECT_EQ(static_cast<int>(EquityTrainingRandomness::Turn), 2);
    EXPECT_EQ(static_cast<int>(EquityTrainingRandomness::River), 3);
}

TEST(EquityTrainingDeal, GivenCardsStayInFrontAndTheRestAreDistinctCards) {
    const struct {
        std::string given;
        EquityTrainingRandomness randomness;
        std::size_t cards;
    } cases[] = {{"", EquityTrainingRandomness::Flop, 3},
                 {"Ah", EquityTrainingRandomness::Flop, 3},
                 {"AhKd", EquityTrainingRandomness::Flop, 3},
                 {"", EquityTrainingRandomness::Turn, 4},
                 {"Qs", EquityTrainingRandomness::Turn, 4},
                 {"QsJs2c", EquityTrainingRandomness::Turn, 4},
                 {"", EquityTrainingRandomness::River, 5},
                 {"QsJs2c3c", EquityTrainingRandomness::River, 5}};
    for (const auto& test : cases) {
        for (std::uint32_t seed = 1; seed <= 200; ++seed) {
            Range::RandomSource random(seed);
            const std::string board =
                EquityTrainingDeal::completeBoard(test.given, test.randomness, "", random);
            ASSERT_TRUE(isCardList(board, test.cards)) << board;
            EXPECT_EQ(board.substr(0, test.given.size()), test.given);
        }
    }
}

TEST(EquityTrainingDeal, CardsComeFromTheDeckPlacesDrawn) {
    // Replaying the generator's draws on the deck gives the same cards: every draw is one of
    // 52 places, and a card already taken is drawn again.
    const std::vector<std::string> deck = deckOrder();
    for (std::uint32_t seed : {3u, 77u, 20251125u}) {
        Range::RandomSource random(seed);
        Range::RandomSource reference(seed);
        const std::string board = EquityTrainingDeal::completeBoard(
            "Kc", EquityTrainingRandomness::River, "2d3d", random);
        std::string expected = "Kc";
        const std::set<std::string> dead = {"2d", "3d"};
        std::set<std::string> taken = {"Kc"};
        while (expected.size() < 10) {
            const std::string card = deck[reference.below(52)];
            if (taken.count(card) != 0 || dead.count(card) != 0)
                continue;
            taken.insert(card);
            expected += card;
        }
        EXPECT_EQ(board, expected) << seed;
        // And nothing more was drawn.
        EXPECT_EQ(random.below(1000000), reference.below(1000000));
    }
}

TEST(EquityTrainingDeal, NoRandomnessAndFullBoardsDrawNothing) {
    Range::RandomSource random(9);
    Range::RandomSource reference(9);
    EXPECT_EQ(
        EquityTrainingDeal::completeBoard("AhKd2c", EquityTrainingRandomness::None, "", random),
        "AhKd2c");
    EXPECT_EQ(EquityTrainingDeal::completeBoard("AhKd2c7s9s", EquityTrainingRandomness::River, "",
                                                random),
              "AhKd2c7s9s");
    EXPECT_EQ(
        EquityTrainingDeal::completeBoard("AhKd2c", EquityTrainingRandomness::Flop, "", random),
        "AhKd2c");
    EXPECT_EQ(random.below(1000000), reference.below(1000000));
}

TEST(EquityTrainingDeal, DeadCardsAreNeverDealt) {
    // 21 dead cards, the most the board widget takes: the 26 that remain free are enough.
    const std::string dead = "2d3d4d5d6d7d8d9dTdJdQdKdAd2h3h4h5h6h7h8h9h";
    for (std::uint32_t seed = 1; seed <= 300; ++seed) {
        Range::RandomSource random(seed);
        const std::string board =
            EquityTrainingDeal::completeBoard("", EquityTrainingRandomness::River, dead, random);
        ASSERT_TRUE(isCardList(board, 5));
        EXPECT_FALSE(sharesACard(board, dead)) << board;
    }
}

TEST(EquityTrainingDeal, TheHandComesFromHerosRangeAndMissesBoardAndDeadCards) {
    const Range::HandRange hero = rangeOf("AKs,QQ");
    std::set<std::string> hands;
    for (std::uint32_t seed = 1; seed <= 400; ++seed) {
        Range::RandomSource random(seed);
        const auto cards =
            EquityTrainingDeal::deal(hero, "Ah", "Qd", EquityTrainingRandomness::Flop, random);
        ASSERT_TRUE(cards.has_value());
        ASSERT_TRUE(isCardList(cards->heroHand, 2));
        ASSERT_TRUE(isCardList(cards->board, 3));
        EXPECT_EQ(cards->board.substr(0, 2), "Ah");
        EXPECT_FALSE(sharesACard(cards->heroHand, cards->board + "Qd"))
            << cards->heroHand << " " << cards->board;
        const std::string hand = cards->heroHand;
        const bool aceKingSuited =
            ((hand[0] == 'A' && hand[2] == 'K') || (hand[0] == 'K' && hand[2] == 'A')) &&
            hand[1] == hand[3];
        const bool queens = hand[0] == 'Q' && hand[2] == 'Q';
        EXPECT_TRUE(aceKingSuited || queens) << hand;
        hands.insert(hand);
    }
    // Three suited aces-kings without Ah and three pairs of queens without Qd can be dealt,
    // and all of them are.
    EXPECT_EQ(hands.size(), 6u);
}

TEST(EquityTrainingDeal, TheSameSeedDealsTheSameItems) {
    const Range::HandRange hero = rangeOf("22+,A2s+,KTo+");
    Range::RandomSource first(123);
    Range::RandomSource second(123);
    for (int item = 0; item < 50; ++item) {
        const auto a =
            EquityTrainingDeal::deal(hero, "", "", EquityTrainingRandomness::Turn, first);
        const auto b =
            EquityTrainingDeal::deal(hero, "", "", EquityTrainingRandomness::Turn, second);
        ASSERT_TRUE(a && b);
        EXPECT_EQ(a->heroHand, b->heroHand);
        EXPECT_EQ(a->board, b->board);
    }
}

TEST(EquityTrainingDeal, AHandThatAlwaysCollidesGivesUpAfterExactlyAThousandTries) {
    // Hero holds only AhAs and the ace of hearts is given on the flop: every try collides.
    // Each try completes the flop from the generator, so the draws used tell the tries.
    const Range::HandRange hero = rangeOf("AhAs");
    Range::RandomSource random(31);
    Range::RandomSource reference(31);
    EXPECT_FALSE(EquityTrainingDeal::deal(hero, "Ah", "", EquityTrainingRandomness::Flop, random)
                     .has_value());
    for (unsigned int tries = 0; tries < EquityTrainingDeal::maximumTries; ++tries)
        EquityTrainingDeal::completeBoard("Ah", EquityTrainingRandomness::Flop, "", reference);
    EXPECT_EQ(EquityTrainingDeal::maximumTries, 1000u);
    EXPECT_EQ(random.below(1000000), reference.below(1000000));
}

TEST(EquityTrainingDeal, AHandOnAGivenBoardOrDeadCardsIsNeverDealt) {
    Range::RandomSource random(5);
    EXPECT_FALSE(EquityTrainingDeal::deal(rangeOf("AhAs"), "AhKd2c", "",
                                          EquityTrainingRandomness::None, random)
                     .has_value());
    EXPECT_FALSE(EquityTrainingDeal::deal(rangeOf("AhAs"), "KdQd2c", "As",
                                          EquityTrainingRandomness::None, random)
                     .has_value());
    // An empty range has nothing to deal.
    EXPECT_FALSE(
        EquityTrainingDeal::deal(Range::HandRange(), "", "", EquityTrainingRandomness::Flop, random)
            .has_value());
    // A range whose other hands fit is dealt one of those.
    const auto cards = EquityTrainingDeal::deal(rangeOf("AhAs,KsKc"), "AhKd2c", "",
                                                EquityTrainingRandomness::None, random);
    ASSERT_TRUE(cards.has_value());
    EXPECT_TRUE(cards->heroHand == "KsKc" || cards->heroHand == "KcKs") << cards->heroHand;
    EXPECT_EQ(cards->board, "AhKd2c");
}

// ---- Scoring -------------------------------------------------------------------------------

TEST(EquityTrainingScore, TheCorrectEquityCountsTiesHalf) {
    LongedEvaluation evaluation;
    evaluation.total = 10;
    evaluation.wins1 = 3;
    evaluation.wins2 = 5;
    evaluation.ties = 2;
    EXPECT_DOUBLE_EQ(EquityTrainingScore::correctEquity(evaluation), 40.0);
    // The counters of AhAs against KdKc before the flop.
    evaluation.total = 1712304;
    evaluation.wins1 = 1388072;
    evaluation.wins2 = 317694;
    evaluation.ties = 6538;
    EXPECT_DOUBLE_EQ(EquityTrainingScore::correctEquity(evaluation),
                     (1388072.0 + 3269.0) / 1712304.0 * 100.0);
}

TEST(EquityTrainingScore, NothingCountedIsNoEquity) {
    EXPECT_TRUE(std::isnan(EquityTrainingScore::correctEquity(LongedEvaluation())));
}

TEST(EquityTrainingScore, DifferencesAreSinglePrecision) {
    EXPECT_FLOAT_EQ(EquityTrainingScore::absoluteDifference(37.5, 40.0), 2.5f);
    EXPECT_FLOAT_EQ(EquityTrainingScore::absoluteDifference(62.5, 40.0), 22.5f);
    const double correct = 100.0 / 3.0;
    EXPECT_EQ(EquityTrainingScore::absoluteDifference(33.33, correct),
              std::fabs(33.33f - static_cast<float>(correct)));
    EXPECT_FLOAT_EQ(EquityTrainingScore::relativeDifference(2.5f, 40.0), 0.0625f);
}

TEST(EquityTrainingScore, ACorrectEquityOfZeroGivesAnInfiniteOrUndefinedRelativeDifference) {
    const float off = EquityTrainingScore::absoluteDifference(10.0, 0.0);
    EXPECT_FLOAT_EQ(off, 10.0f);
    EXPECT_TRUE(std::isinf(EquityTrainingScore::relativeDifference(off, 0.0)));
    const float exact = EquityTrainingScore::absoluteDifference(0.0, 0.0);
    EXPECT_EQ(exact, 0.0f);
    EXPECT_TRUE(std::isnan(EquityTrainingScore::relativeDifference(exact, 0.0)));
}

// ---- The numbers of a finished training ---------------------------------------------------

TEST(EquityTrainingSummary, WithOneRangeTheGuessesAreTheItems) {
    const EquityTrainingSummary summary({item(40, 45.5), item(70, 52.25), item(20, 21)});
    EXPECT_EQ(summary.itemCount(), 3);
    EXPECT_EQ(summary.guessesPerItem(), 1);
    EXPECT_EQ(summary.guessCount(), summary.itemCount());
    EXPECT_EQ(summary.absoluteDifferences(), (std::vector<float>{5.5f, 17.75f, 1.0f}));
    EXPECT_DOUBLE_EQ(summary.averageAbsoluteDifference(), (5.5 + 17.75 + 1.0) / 3.0 / 100.0);
}

TEST(EquityTrainingSummary, WithTwoRangesEveryItemHasTwoGuesses) {
    const EquityTrainingSummary summary(
        {item(40, 45.5, "QQ+", 30, 20), item(70, 52.25, "QQ+", 55, 60)});
    EXPECT_EQ(summary.itemCount(), 2);
    EXPECT_EQ(summary.guessesPerItem(), 2);
    EXPECT_EQ(summary.guessCount(), 4);
    EXPECT_EQ(summary.absoluteDifferences(), (std::vector<float>{5.5f, 10.0f, 17.75f, 5.0f}));
    EXPECT_DOUBLE_EQ(summary.averageAbsoluteDifference(), (5.5 + 10 + 17.75 + 5) / 4.0 / 100.0);
}

TEST(EquityTrainingSummary, ThresholdsCountStrictlyOnBothSides) {
    const EquityTrainingSummary summary(
        {item(30, 50), item(40, 50), item(45, 50), item(50, 50), item(75, 50)});
    // Differences 20, 10, 5, 0, 25.
    EXPECT_EQ(summary.countAbove(20), 1);
    EXPECT_EQ(summary.countAbove(10), 2);
    EXPECT_EQ(summary.countAbove(5), 3);
    EXPECT_EQ(summary.countAbove(0), 4);
    EXPECT_EQ(summary.countAbove(100), 0);
    EXPECT_EQ(summary.countBelow(5), 1);
    EXPECT_EQ(summary.countBelow(5.01), 2);
    EXPECT_EQ(summary.countBelow(0), 0);
    EXPECT_DOUBLE_EQ(summary.shareOfGuesses(2), 0.4);
}

TEST(EquityTrainingSummary, NoItemsNoAverage) {
    const EquityTrainingSummary summary({});
    EXPECT_EQ(summary.itemCount(), 0);
    EXPECT_EQ(summary.guessCount(), 0);
    EXPECT_TRUE(std::isnan(summary.averageAbsoluteDifference()));
    EXPECT_EQ(summary.countAbove(5), 0);
}
