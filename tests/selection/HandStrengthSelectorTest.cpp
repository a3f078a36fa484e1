// The hand strength selector: its combo boxes and their fill rules, the keys its walks
// build, and its selections checked against a made-hand classifier written here, on a dozen
// boards.

#include "HandSelectionTestHelpers.h"

#include "Range/GroupColor.h"
#include "Range/HandRangeElementConversion.h"
#include "Range/Tree.h"
#include "handstrength/HandStrengthSelectorOptions.h"
#include "selection/HandSelectionDialog.h"
#include "selection/HandStrengthSelection.h"
#include "selection/HandStrengthSelectorTab.h"

#include "ui_HandSelectionDialog.h"

#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <set>
#include <string>
#include <vector>

namespace HSO = HandStrengthSelectorOptions;

namespace {

std::vector<std::pair<int, QString>> itemsOf(const QComboBox* combo) {
    std::vector<std::pair<int, QString>> items;
    for (int i = 0; i < combo->count(); ++i)
        items.emplace_back(combo->itemData(i).toInt(), combo->itemText(i));
    return items;
}

std::vector<int> valuesOf(const QComboBox* combo) {
    std::vector<int> values;
    for (int i = 0; i < combo->count(); ++i)
        values.push_back(combo->itemData(i).toInt());
    return values;
}

// Picks the item with `value` as the user would: the index changes and `activated` follows.
void choose(QComboBox* combo, int value) {
    const int index = combo->findData(value);
    ASSERT_GE(index, 0) << combo->objectName().toStdString() << " has no " << value;
    combo->setCurrentIndex(index);
    emit combo->activated(index);
}

// --- A made-hand classifier of the test's own ----------------------------------------------------

struct Card {
    int rank; // 0 the deuce .. 12 the ace
    int suit; // 0 d, 1 h, 2 s, 3 c
};

std::vector<Card> cardsOf(BoardType mask) {
    std::vector<Card> cards;
    for (int bit = 0; bit < 52; ++bit)
        if (mask >> bit & 1ULL)
            cards.push_back({bit % 13, bit / 13});
    return cards;
}

enum Category {
    HighCard,
    OnePair,
    TwoPair,
    Trips,
    Straight,
    Flush,
    FullHouse,
    Quads,
    StraightFlush
};

// Highest card of a straight in a set of ranks (bit r for rank r), or -1; the wheel's is 3.
int straightHigh(unsigned ranks) {
    for (int top = 12; top >= 4; --top)
        if (((ranks >> (top - 4)) & 0x1F) == 0x1F)
            return top;
    if ((ranks & 0x100F) == 0x100F)
        return 3;
    return -1;
}

Category categoryOf(const std::vector<Card>& cards) {
    std::array<int, 13> counts{};
    std::array<unsigned, 4> suitRanks{};
    unsigned ranks = 0;
    for (const Card& card : cards) {
        ++counts[card.rank];
        suitRanks[card.suit] |= 1U << card.rank;
        ranks |= 1U << card.rank;
    }
    bool flush = false;
    for (unsigned lane : suitRanks) {
        if (__builtin_popcount(lane) >= 5) {
            flush = true;
            if (straightHigh(lane) >= 0)
                return StraightFlush;
        }
    }
    int fours = 0, threes = 0, twos = 0;
    for (int count : counts) {
        fours += count == 4;
        threes += count == 3;
        twos += count == 2;
    }
    if (fours)
        return Quads;
    if (threes >= 2 || (threes && twos))
        return FullHouse;
    if (flush)
        return Flush;
    if (straightHigh(ranks) >= 0)
        return Straight;
    if (threes)
        return Trips;
    if (twos >= 2)
        return TwoPair;
    if (twos)
        return OnePair;
    return HighCard;
}

// Top pair: a pair (the hand's only one) made by one hole card with the highest board rank.
// Its kicker is the other hole card, counted among the ranks that are not on the board:
// 0 the top kicker, 1 the 2nd, 2 the 3rd, more any other. -1 for no top pair.
int topPairKicker(const std::vector<Card>& hole, const std::vector<Card>& board) {
    std::vector<Card> all = board;
    all.insert(all.end(), hole.begin(), hole.end());
    if (categoryOf(all) != OnePair || hole[0].rank == hole[1].rank)
        return -1;
    int topBoard = -1;
    unsigned boardRanks = 0;
    for (const Card& card : board) {
        topBoard = std::max(topBoard, card.rank);
        boardRanks |= 1U << card.rank;
    }
    for (int i = 0; i < 2; ++i) {
        if (hole[i].rank != topBoard)
            continue;
        const int kicker = hole[1 - i].rank;
        if (boardRanks >> kicker & 1U)
            return -1;
        int above = 0;
        for (int rank = kicker + 1; rank <= 12; ++rank)
            above += !(boardRanks >> rank & 1U);
        return above;
    }
    return -1;
}

// The nut place of a flush draw (0 nuts .. 4 fifth nuts, 5 weaker), or -1 for no flush draw:
// four cards of a suit with a hole card among them, on a flop or turn, below a made flush.
int flushDrawPlace(const std::vector<Card>& hole, const std::vector<Card>& board) {
    if (board.size() > 4)
        return -1;
    std::vector<Card> all = board;
    all.insert(all.end(), hole.begin(), hole.end());
    if (categoryOf(all) >= Flush)
        return -1;
    for (int suit = 0; suit < 4; ++suit) {
        int count = 0, holeHigh = -1;
        unsigned boardLane = 0;
        for (const Card& card : board)
            if (card.suit == suit) {
                ++count;
                boardLane |= 1U << card.rank;
            }
        for (const Card& card : hole)
            if (card.suit == suit) {
                ++count;
                holeHigh = std::max(holeHigh, card.rank);
            }
        if (count != 4 || holeHigh < 0)
            continue;
        int above = 0;
        for (int rank = holeHigh + 1; rank <= 12; ++rank)
            above += !(boardLane >> rank & 1U);
        return std::min(above, 5);
    }
    return -1;
}

std::vector<BoardType> allHands() {
    std::vector<BoardType> hands;
    for (int first = 0; first < 52; ++first)
        for (int second = first + 1; second < 52; ++second)
            hands.push_back((1ULL << first) | (1ULL << second));
    return hands;
}

// The hands of the full range, without board cards, that `wanted` takes, in mask order.
std::vector<BoardType> expectedHands(
    BoardType board,
    const std::function<bool(const std::vector<Card>&, const std::vector<Card>&)>& wanted) {
    std::vector<BoardType> hands;
    const std::vector<Card> boardCards = cardsOf(board);
    for (BoardType hand : allHands())
        if (!(hand & board) && wanted(cardsOf(hand), boardCards))
            hands.push_back(hand);
    std::sort(hands.begin(), hands.end());
    return hands;
}

const std::vector<std::string> boards = {"Kh9h4c",   "AsKd2c",     "7s7d2h",     "QhJhTh",
                                         "8c6d5s",   "AdAcAh",     "Ks9s4s2d",   "Jc8c3d3h",
                                         "Td9c2s5h", "AhKh7h2c9d", "6s6d6c2h2d", "QsJd8c5h3s"};

struct TabFixture : ::testing::Test {
    HandStrengthSelectorTab tab;

    std::vector<BoardType> selected(const std::string& board) const {
        std::vector<BoardType> boardCards = Range::cardsOfText(board);
        return tab.select(allHands(), boardCards, {});
    }
};

} // namespace

// --- Combo boxes ---------------------------------------------------------------------------------

TEST_F(TabFixture, CombosAreFilledInTheirOrderWithTheValuesAsData) {
    EXPECT_EQ(valuesOf(tab.handValue), (std::vector<int>{0, 9, 8, 7, 6, 5, 4, 3, 2, 1}));
    EXPECT_EQ(tab.handValue->itemText(1), "Straight Flush");
    EXPECT_EQ(tab.handValue->itemText(9), "Highcards");
    for (QComboBox* comparator :
         {tab.handValueComparator, tab.flushDrawComparator, tab.straightDrawComparator,
          tab.flushDrawStrengthComparator, tab.handValueDetailComparator,
          tab.handValueDetail2Comparator, tab.flushDrawCardNumberComparator,
          tab.straightDrawCardNumberComparator})
        EXPECT_EQ(itemsOf(comparator), (std::vector<std::pair<int, QString>>{
                                           {0, "Exactly"}, {1, "Or Better"}, {2, "Or Worse"}}))
            << comparator->objectName().toStdString();
    EXPECT_EQ(itemsOf(tab.flushDraw), (std::vector<std::pair<int, QString>>{
                                          {0, "-"}, {2, "Flushdraw"}, {1, "Backdoor-Flushdraw"}}));
    EXPECT_EQ(valuesOf(tab.flushDrawStrength), (std::vector<int>{0, 6, 5, 4, 3, 2, 1}));
    EXPECT_EQ(tab.flushDrawStrength->itemText(0), "Any");
    EXPECT_EQ(tab.flushDrawStrength->itemText(1), "To Nuts");
    for (QComboBox* number : {tab.flushDrawCardNumber, tab.straightDrawCardNumber})
        EXPECT_EQ(itemsOf(number),
                  (std::vector<std::pair<int, QString>>{
                      {0, "Any"}, {2, "With Two Hole Cards"}, {1, "With One Hole Card"}}));
    EXPECT_EQ(valuesOf(tab.straightDraw), (std::vector<int>{0, 6, 5, 4, 3, 2, 1}));
    EXPECT_EQ(tab.straightDraw->itemText(1), "OESD");
    EXPECT_EQ(tab.handValueLabel->text(), "Hand Value");
    EXPECT_EQ(tab.flushDrawLabel->text(), "Flush Draw");
    EXPECT_EQ(tab.straightDrawLabel->text(), "Straight Draw");
    EXPECT_EQ(tab.handValueDetail2->objectName(), "handValueDetail2");
}

TEST_F(TabFixture, TheHandValueFillsTheDetailCombo) {
    EXPECT_FALSE(tab.isApplied(tab.handValueDetail));
    EXPECT_FALSE(tab.isApplied(tab.handValueDetailComparator));
    const std::vector<std::pair<int, std::vector<int>>> fills = {
        {1, {0, 5, 4, 3, 2, 1}},
        {2, {0, 9, 8, 7, 6, 5, 4, 3, 2, 1}},
        {3, {0, 4, 3, 2, 1}},
        {4, {0, 1, 2}},
        {6, {0, 6, 5, 4, 3, 2, 1}}};
    for (const auto& fill : fills) {
        choose(tab.handValue, fill.first);
        EXPECT_EQ(valuesOf(tab.handValueDetail), fill.second) << fill.first;
        EXPECT_TRUE(tab.isApplied(tab.handValueDetail));
        EXPECT_TRUE(tab.isApplied(tab.handValueDetailComparator));
        EXPECT_FALSE(tab.isApplied(tab.handValueDetail2));
        EXPECT_EQ(tab.handValueDetailComparator->itemText(1), "Or Above");
        EXPECT_EQ(tab.handValueDetailComparator->itemText(2), "Or Below");
    }
    EXPECT_EQ(tab.handValueDetail->itemText(1), "Nutflush");
    choose(tab.handValue, 2);
    EXPECT_EQ(tab.handValueDetail->itemText(2), "Top Pair");
    EXPECT_EQ(tab.handValueDetail->itemText(0), "-");
    // Straight, full house and the others have no detail.
    for (int value : {5, 7, 8, 9, 0}) {
        tab.handValueDetailComparator->setCurrentIndex(2);
        choose(tab.handValue, value);
        EXPECT_EQ(tab.handValueDetail->count(), 0) << value;
        EXPECT_FALSE(tab.isApplied(tab.handValueDetail));
        EXPECT_FALSE(tab.isApplied(tab.handValueDetailComparator));
        EXPECT_EQ(tab.handValueDetailComparator->currentIndex(), 0);
    }
    EXPECT_EQ(tab.handValueDetailComparator->itemText(1), "Or Better");
    EXPECT_EQ(tab.handValueDetailComparator->itemText(2), "Or Worse");
}

TEST_F(TabFixture, TheDetailFillsTheSecondDetailCombo) {
    const std::vector<std::pair<std::pair<int, int>, std::vector<int>>> fills = {
        {{4, 1}, {0, 4, 3, 2, 1}}, {{3, 2}, {0, 3, 2, 1}},    {{3, 3}, {0, 4, 3, 2, 1}},
        {{3, 4}, {0, 3, 2, 1}},    {{2, 2}, {0, 4, 3, 2, 1}}, {{2, 4}, {0, 4, 3, 2, 1}},
        {{2, 6}, {0, 4, 3, 2, 1}}, {{2, 8}, {0, 4, 3, 2, 1}}};
    for (const auto& fill : fills) {
        choose(tab.handValue, fill.first.first);
        choose(tab.handValueDetail, fill.first.second);
        EXPECT_EQ(valuesOf(tab.handValueDetail2), fill.second)
            << fill.first.first << "/" << fill.first.second;
        EXPECT_TRUE(tab.isApplied(tab.handValueDetail2));
        EXPECT_TRUE(tab.isApplied(tab.handValueDetail2Comparator));
    }
    choose(tab.handValue, 4);
    choose(tab.handValueDetail, 1);
    EXPECT_EQ(tab.handValueDetail2->itemText(1), "Top Kicker");
    choose(tab.handValue, 3);
    choose(tab.handValueDetail, 3);
    EXPECT_EQ(tab.handValueDetail2->itemText(1), "Top One");
    EXPECT_EQ(tab.handValueDetail2->itemText(4), "Other One");
    // Pairs without a kicker, sets, board two pair: no second detail.
    for (const std::pair<int, int>& none : std::vector<std::pair<int, int>>{
             {2, 0}, {2, 1}, {2, 3}, {2, 5}, {2, 7}, {2, 9}, {4, 2}, {3, 1}, {1, 5}, {6, 6}}) {
        choose(tab.handValue, none.first);
        choose(tab.handValueDetail, none.second);
        EXPECT_EQ(tab.handValueDetail2->count(), 0) << none.first << "/" << none.second;
        EXPECT_FALSE(tab.isApplied(tab.handValueDetail2));
    }
}

TEST_F(TabFixture, DrawCombosShowTheirDependentsOnlyForADraw) {
    for (QComboBox* combo : {tab.flushDrawStrength, tab.flushDrawStrengthComparator,
                             tab.flushDrawCardNumber, tab.flushDrawCardNumberComparator,
                             tab.straightDrawCardNumber, tab.straightDrawCardNumberComparator})
        EXPECT_FALSE(tab.isApplied(combo)) << combo->objectName().toStdString();
    for (int value : {2, 1}) {
        choose(tab.flushDraw, value);
        EXPECT_TRUE(tab.isApplied(tab.flushDrawStrength));
        EXPECT_TRUE(tab.isApplied(tab.flushDrawCardNumberComparator));
    }
    choose(tab.flushDrawStrength, 3);
    choose(tab.flushDraw, 0);
    EXPECT_FALSE(tab.isApplied(tab.flushDrawStrength));
    EXPECT_EQ(tab.flushDrawStrength->currentIndex(), 0);
    choose(tab.straightDraw, 5);
    EXPECT_TRUE(tab.isApplied(tab.straightDrawCardNumber));
    choose(tab.straightDrawCardNumber, 1);
    choose(tab.straightDraw, 0);
    EXPECT_FALSE(tab.isApplied(tab.straightDrawCardNumber));
    EXPECT_EQ(tab.straightDrawCardNumber->currentIndex(), 0);
    // Always there: the hand value, the draws and their comparators.
    for (QComboBox* combo : {tab.handValue, tab.handValueComparator, tab.flushDraw,
                             tab.flushDrawComparator, tab.straightDraw, tab.straightDrawComparator})
        EXPECT_TRUE(tab.isApplied(combo));
}

TEST_F(TabFixture, AComboThatDoesNotApplyKeepsItsPlaceButPaintsNothing) {
    tab.resize(420, 260);
    tab.show();
    const QRect place = tab.flushDrawStrength->geometry();
    EXPECT_TRUE(tab.flushDrawStrength->isVisible());
    EXPECT_GT(place.height(), 10);
    const QImage hidden = tab.grab(place).toImage();
    std::set<QRgb> colours;
    for (int y = 0; y < hidden.height(); ++y)
        for (int x = 0; x < hidden.width(); ++x)
            colours.insert(hidden.pixel(x, y));
    EXPECT_EQ(colours.size(), 1u);
    choose(tab.flushDraw, 2);
    EXPECT_EQ(tab.flushDrawStrength->geometry(), place);
    const QImage shown = tab.grab(place).toImage();
    colours.clear();
    for (int y = 0; y < shown.height(); ++y)
        for (int x = 0; x < shown.width(); ++x)
            colours.insert(shown.pixel(x, y));
    EXPECT_GT(colours.size(), 5u);
}

// --- Steps and keys ------------------------------------------------------------------------------

TEST(HandStrengthSelectionWalk, StepsFollowTheirComparators) {
    using C = HSO::Comparator;
    EXPECT_EQ(HandStrengthSelection::step(C::Exactly, 4, 7), 0);
    EXPECT_EQ(HandStrengthSelection::step(C::OrBetter, 4, 7), 5);
    EXPECT_EQ(HandStrengthSelection::step(C::OrBetter, 6, 7), 7);
    EXPECT_EQ(HandStrengthSelection::step(C::OrBetter, 7, 7), 7);
    EXPECT_EQ(HandStrengthSelection::step(C::OrBetter, 0, 7), 0);
    EXPECT_EQ(HandStrengthSelection::step(C::OrWorse, 4, 7), 3);
    EXPECT_EQ(HandStrengthSelection::step(C::OrWorse, 1, 7), 0);
    EXPECT_EQ(HandStrengthSelection::step(C::OrWorse, 0, 7), 0);
}

TEST(HandStrengthSelectionWalk, WithEverythingOpenOnlyTheEmptyKeyIsAppendedAndAllHandsCome) {
    HandStrengthSelection request;
    const std::vector<HandStrengthKey> keys = request.keys();
    ASSERT_EQ(keys.size(), 1u);
    EXPECT_EQ(keys[0].positive, 0u);
    EXPECT_EQ(keys[0].exclusive, 0u);
    request.hands = allHands();
    request.board = Range::maskOfText("Kh9h4c");
    EXPECT_EQ(request.select().size(), 1176u); // 49 * 48 / 2
    request.deadCards = Range::maskOfText("As");
    EXPECT_EQ(request.select().size(), 1128u); // 48 * 47 / 2
}

TEST(HandStrengthSelectionWalk, WithoutAFlopThereAreKeysButNoHands) {
    HandStrengthSelection request;
    request.handValue.value = HSO::HandValue::Pair;
    request.hands = allHands();
    EXPECT_EQ(request.keys().size(), 1u);
    EXPECT_TRUE(request.select().empty());
    request.board = Range::maskOfText("Kh9h");
    EXPECT_TRUE(request.select().empty());
}

TEST(HandStrengthSelectionWalk, AFlushDrawToTheNutsOrWorseWalksSixDownToOne) {
    HandStrengthSelection request;
    request.flushDrawValue.value = HSO::FlushDrawValue::Flushdraw;
    request.flushDrawStrength = {HSO::FlushDrawStrength::ToNuts, HSO::Comparator::OrWorse};
    const std::vector<HandStrengthKey> keys = request.keys();
    ASSERT_EQ(keys.size(), 6u);
    const unsigned long long nutBits[] = {0x80000000, 0x100000000, 0x200000000, 0x400000000,
                                          0x800000000};
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(keys[i].positive, 0x4000000ULL | nutBits[i]) << i;
        EXPECT_EQ(keys[i].exclusive, 0u);
    }
    EXPECT_EQ(keys[5].positive, 0x4000000ULL);
    EXPECT_EQ(keys[5].exclusive, 0xF80000000ULL);
}

TEST(HandStrengthSelectionWalk, TopPairOrBetterWithAnExactKickerKeepsTheKickerOnTopPair) {
    HandStrengthSelection request;
    request.handValue.value = HSO::HandValue::Pair;
    request.pairValue = {HSO::PairValue::TopPair, HSO::Comparator::OrBetter};
    request.kickerValue = {HSO::KickerValue::TopKicker, HSO::Comparator::Exactly};
    const std::vector<HandStrengthKey> keys = request.keys();
    ASSERT_EQ(keys.size(), 2u);
    EXPECT_EQ(keys[0].positive, 0x80ULL | 0x200 | 0x40000); // pair, top pair, top kicker
    EXPECT_EQ(keys[1].positive, 0x80ULL | 0x8000);          // pair, overpair
    // Pair or better with all else open: pair and every hand value above it.
    HandStrengthSelection better;
    better.handValue = {HSO::HandValue::Pair, HSO::Comparator::OrBetter};
    std::vector<unsigned long long> values;
    for (const HandStrengthKey& key : better.keys())
        values.push_back(key.positive);
    EXPECT_EQ(values,
              (std::vector<unsigned long long>{0x80, 0x40, 0x20, 0x10, 0x8, 0x4, 0x2, 0x1}));
}

TEST(HandStrengthSelectionWalk, DrawWalksNestAndEachInnerWalkStartsAgain) {
    HandStrengthSelection request;
    request.flushDrawValue = {HSO::FlushDrawValue::BackdoorFlushdraw, HSO::Comparator::OrBetter};
    request.straightDrawValue = {HSO::StraightDrawValue::Gutshot, HSO::Comparator::OrBetter};
    request.handValue = {HSO::HandValue::Highcards, HSO::Comparator::Exactly};
    std::vector<unsigned long long> keys;
    for (const HandStrengthKey& key : request.keys())
        keys.push_back(key.positive);
    EXPECT_EQ(keys, (std::vector<unsigned long long>{
                        0x20000000 | 0x10000000 | 0x100, 0x20000000 | 0x8000000 | 0x100,
                        0x4000000 | 0x10000000 | 0x100, 0x4000000 | 0x8000000 | 0x100}));
}

// --- Selections against the classifier -----------------------------------------------------------

TEST_F(TabFixture, PairOrBetterTakesEveryHandOfAPairOrMore) {
    choose(tab.handValue, 2);
    tab.handValueComparator->setCurrentIndex(1);
    for (const std::string& board : boards) {
        const BoardType mask = Range::maskOfText(board);
        EXPECT_EQ(selected(board),
                  expectedHands(mask,
                                [](const std::vector<Card>& hole, const std::vector<Card>& cards) {
                                    std::vector<Card> all = cards;
                                    all.insert(all.end(), hole.begin(), hole.end());
                                    return categoryOf(all) >= OnePair;
                                }))
            << board;
    }
}

TEST_F(TabFixture, TopPairTakesItsKickerByEachComparator) {
    choose(tab.handValue, 2);
    choose(tab.handValueDetail, 8);
    choose(tab.handValueDetail2, 3); // 2nd kicker
    const std::vector<std::pair<int, std::function<bool(int)>>> comparators = {
        {0, [](int kicker) { return kicker == 1; }},
        {1, [](int kicker) { return kicker == 0 || kicker == 1; }},
        {2, [](int kicker) { return kicker >= 1; }}};
    for (const auto& comparator : comparators) {
        tab.handValueDetail2Comparator->setCurrentIndex(comparator.first);
        for (const std::string& board : boards) {
            const std::vector<BoardType> expected = expectedHands(
                Range::maskOfText(board),
                [&comparator](const std::vector<Card>& hole, const std::vector<Card>& cards) {
                    const int kicker = topPairKicker(hole, cards);
                    return kicker >= 0 && comparator.second(kicker);
                });
            EXPECT_EQ(selected(board), expected) << board << " comparator " << comparator.first;
        }
    }
    // Somewhere a top pair with the 2nd kicker exists: the comparison is not empty against
    // empty.
    tab.handValueDetail2Comparator->setCurrentIndex(0);
    EXPECT_EQ(selected("Kh9h4c").size(), 12u); // a king and a queen: 3 kings x 4 queens
}

TEST_F(TabFixture, AFlushDrawToTheNutsOrWorseTakesEveryFlushDrawAndToThirdNutsOrBetterTheBest) {
    choose(tab.flushDraw, 2);
    choose(tab.flushDrawStrength, 6);
    tab.flushDrawStrengthComparator->setCurrentIndex(2); // Or Worse
    int drawsSeen = 0;
    for (const std::string& board : boards) {
        const std::vector<BoardType> expected =
            expectedHands(Range::maskOfText(board),
                          [](const std::vector<Card>& hole, const std::vector<Card>& cards) {
                              return flushDrawPlace(hole, cards) >= 0;
                          });
        drawsSeen += static_cast<int>(expected.size());
        EXPECT_EQ(selected(board), expected) << board;
    }
    EXPECT_GT(drawsSeen, 100);
    choose(tab.flushDrawStrength, 4);                    // to the 3rd nuts
    tab.flushDrawStrengthComparator->setCurrentIndex(1); // Or Better
    for (const std::string& board : boards) {
        const std::vector<BoardType> expected =
            expectedHands(Range::maskOfText(board),
                          [](const std::vector<Card>& hole, const std::vector<Card>& cards) {
                              const int place = flushDrawPlace(hole, cards);
                              return place >= 0 && place <= 2;
                          });
        EXPECT_EQ(selected(board), expected) << board;
    }
}

// --- Through the dialog --------------------------------------------------------------------------

TEST(HandStrengthSelectorInTheDialog, SelectMergesTheHandsOfTheParentByTheSelectMode) {
    Range::Tree player;
    player.addRange(Range::Tree::noNode, "Parent", false, Range::GroupColor());
    HandSelectionDialog dialog(player, "Kh9h4c", "As");
    Ui::HandSelectionDialog* ui = dialog.form();
    HandStrengthSelectorTab* tab = dialog.handStrengthSelector();
    ASSERT_EQ(ui->selectorTabs->currentWidget(), ui->handStrengthTab);
    EXPECT_TRUE(ui->selectButton->isEnabled());
    choose(tab->handValue, 4); // three of a kind
    ui->selectButton->click();
    // Sets of kings, nines and fours, three of each; trips would need a pair on the board.
    EXPECT_EQ(
        dialog.currentRange().suitsVector(),
        HandSelectionTest::rangeOf("KdKs,KdKc,KsKc,9d9s,9d9c,9s9c,4d4h,4d4s,4h4s").suitsVector());
    EXPECT_EQ(dialog.currentRange().combinationCount(), 9u);
    EXPECT_EQ(dialog.rangeUndoList().size(), 2u);
    ui->selectMode->setCurrentIndex(HandSelectionDialog::SubtractInverted);
    choose(tab->handValue, 0);
    choose(tab->flushDraw, 2);
    ui->selectButton->click(); // keeps only what is a flush draw among the sets: nothing
    EXPECT_TRUE(dialog.currentRange().isEmpty());
}

TEST(HandStrengthSelectorInTheDialog, WithoutAFlopTheHandStrengthSelectButtonIsOff) {
    Range::Tree player;
    player.addRange(Range::Tree::noNode, "Parent", false, Range::GroupColor());
    HandSelectionDialog dialog(player, "", "");
    Ui::HandSelectionDialog* ui = dialog.form();
    EXPECT_FALSE(ui->selectButton->isEnabled());
    EXPECT_EQ(ui->selectButton->toolTip(), "Selecting by hand strength needs a flop on the board.");
    ui->selectorTabs->setCurrentWidget(ui->equityTab);
    EXPECT_TRUE(ui->selectButton->isEnabled());
}
