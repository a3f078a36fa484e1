#include "handhistory/HandHistoryNormalisation.h"

#include "handhistory/HandHistoryParser.h"
#include "handhistory/HandHistoryRecord.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace {

// A seat line keeps the seat step (9) out of every test that is not about it.
const std::string seat = "Seat 1: Ann ($10)\n";

std::string normalised(std::string text) {
    HandHistoryRecord hand;
    normalise(text, hand);
    return text;
}

std::string normalised(std::string text, HandHistoryRecord& hand) {
    normalise(text, hand);
    return text;
}

} // namespace

// --- Step 1: word forms ---------------------------------------------------------------

TEST(Normalisation, TabsAreRemoved) {
    EXPECT_EQ(normalised(seat + "\tAnn:\tfolds\n"), seat + "Ann:folds\n");
}

TEST(Normalisation, PastTensesBecomePresentBeforeABlankOrANewline) {
    EXPECT_EQ(normalised(seat + "Ann raised $2\nBob called $2\nCy checked\nDi folded\n"),
              seat + "Ann raises $2\nBob calls $2\nCy checks\nDi folds\n");
    EXPECT_EQ(normalised(seat + "Ann bet $2\nBob bet\nCy raised\nDi called\n"),
              seat + "Ann bets $2\nBob bets\nCy raises\nDi calls\n");
    EXPECT_EQ(normalised(seat + "Ann betting $2\n"), seat + "Ann betting $2\n");
}

TEST(Normalisation, AllInWordingsBecomeRaises) {
    EXPECT_EQ(normalised(seat + "Ann is all-In $20\n"), seat + "Ann raises $20\n");
    EXPECT_EQ(normalised(seat + "Ann went all-in $20\n"), seat + "Ann raises $20\n");
    EXPECT_EQ(normalised(seat + "Ann: Raise (NF) Allin $20\n"), seat + "Ann: Allin  $20\n");
}

TEST(Normalisation, PostWordings) {
    EXPECT_EQ(normalised(seat + "Ann posted the small blind $1\n"),
              seat + "Ann posts small blind $1\n");
    EXPECT_EQ(normalised(seat + "Ann: Post Ante $1\nBob: Post SB $1\nCy: Post BB $2\n"),
              seat + "Ann: posts ante $1\nBob: posts small blind $1\nCy: posts big blind $2\n");
}

TEST(Normalisation, DealingLinesOfTheDialectWithColons) {
    const std::string text = seat + "** Dealing card to Hero: Ah Kd\n"
                                    "** Dealing the flop: 2c 7d Qs\n"
                                    "** Dealing the turn: 3h\n"
                                    "** Dealing the river: 9s\n";
    // Step 1 gives "** Dealing Flop ** [2c 7d Qs]" and the like; step 7 makes them markers.
    EXPECT_EQ(normalised(text), seat + "Dealt to Hero [Ah Kd]\n"
                                       "*** FLOP *** [2c 7d Qs]\n"
                                       "*** TURN *** [3h]\n"
                                       "*** RIVER *** [9s]\n");
}

TEST(Normalisation, DealingPatternNeedsItsNewline) {
    EXPECT_EQ(normalised(seat + "** Dealing card to Hero: Ah Kd"),
              seat + "** Dealing card to Hero: Ah Kd");
}

TEST(Normalisation, AnteBlindsMarkerEmptyLinesUsdAndDashesGo) {
    EXPECT_EQ(normalised(seat + "*** ANTE/BLINDS ***\nAnn: folds\n"), seat + "Ann: folds\n");
    EXPECT_EQ(normalised(seat + "*** ANTE/BLINDS ***\r\nAnn: folds\r\n"), seat + "Ann: folds\r\n");
    EXPECT_EQ(normalised(seat + "a\n\nb\r\n\r\nc\n"), seat + "a\nb\r\nc\n");
    // One pass: of three newlines two stay.
    EXPECT_EQ(normalised(seat + "a\n\n\nb\n"), seat + "a\n\nb\n");
    EXPECT_EQ(normalised(seat + "Ann: calls $2 USD\n"), seat + "Ann: calls $2\n");
    EXPECT_EQ(normalised(seat + "NL ($1/$2) - 2014/01/06\n"), seat + "NL ($1/$2) 2014/01/06\n");
}

// --- Step 2: cards in words -----------------------------------------------------------

TEST(Normalisation, CardsInWords) {
    EXPECT_EQ(normalised(seat + "Dealt to Hero [A of h, 10 of d]\n"),
              seat + "Dealt to Hero [Ah Td]\n");
    EXPECT_EQ(normalised(seat + "Dealt to Hero [K of s, 2 of c]\n"),
              seat + "Dealt to Hero [Ks 2c]\n");
}

// --- Step 3: blinds from the head line -----------------------------------------------

TEST(Normalisation, BlindsFromTheHeadLine) {
    HandHistoryRecord hand;
    normalised("Game 1 ($0.50/$1 USD)\n" + seat, hand);
    EXPECT_FLOAT_EQ(hand.smallBlind, 0.5f);
    EXPECT_FLOAT_EQ(hand.bigBlind, 1.0f);
}

TEST(Normalisation, BlindsInPoundsAndEuros) {
    HandHistoryRecord pounds;
    normalised("Holdem NL \xA3"
               "0.05/\xA3"
               "0.10\n" +
                   seat,
               pounds);
    EXPECT_FLOAT_EQ(pounds.smallBlind, 0.05f);
    EXPECT_FLOAT_EQ(pounds.bigBlind, 0.10f);
    HandHistoryRecord euros;
    normalised("Holdem \x80"
               "2/\x80"
               "4\n" +
                   seat,
               euros);
    EXPECT_FLOAT_EQ(euros.smallBlind, 2.0f);
    EXPECT_FLOAT_EQ(euros.bigBlind, 4.0f);
}

TEST(Normalisation, BlindsOnlyFromTheFirstLineAndOnlyWhenAllReads) {
    const auto blindsOf = [](const std::string& text) {
        HandHistoryRecord hand;
        normalised(text, hand);
        return std::make_pair(hand.smallBlind, hand.bigBlind);
    };
    EXPECT_EQ(blindsOf("Game 1\n$1/$2\n" + seat), std::make_pair(0.0f, 0.0f));
    EXPECT_EQ(blindsOf("Game $1/\x80"
                       "2\n" +
                       seat),
              std::make_pair(0.0f, 0.0f));
    EXPECT_EQ(blindsOf("Game $1+$0.10\n" + seat), std::make_pair(0.0f, 0.0f));
    EXPECT_EQ(blindsOf("Game $\n" + seat), std::make_pair(0.0f, 0.0f));
    // "1,000" is read before the thousands step: the comma stops the number.
    EXPECT_EQ(blindsOf("Game $1,000/$2,000\n" + seat), std::make_pair(0.0f, 0.0f));
}

// --- Step 4: thousands separators -----------------------------------------------------

TEST(Normalisation, ThousandsSeparatorsGo) {
    EXPECT_EQ(normalised(seat + "Ann: bets $1,000\n"), seat + "Ann: bets $1000\n");
    EXPECT_EQ(normalised(seat + "Ann: bets 1,234,567\n"), seat + "Ann: bets 1234567\n");
}

TEST(Normalisation, ThousandsSeparatorGoesBeforeTheListStepCouldSplitAtIt) {
    EXPECT_EQ(normalised(seat + "Ann: calls $1,000.50\n"), seat + "Ann: calls $1000.50\n");
}

TEST(Normalisation, CommaAfterRoundBracketStays) {
    EXPECT_EQ(normalised(seat + "x (,5)\n"), seat + "x (,5)\n");
}

TEST(Normalisation, CommaBesideWhiteSpaceStays) {
    // Inside brackets the list step leaves them too.
    EXPECT_EQ(normalised(seat + "(a, b) [c ,d]\n"), seat + "(a, b) [c ,d]\n");
    EXPECT_EQ(normalised(seat + "[Ah,Kd]\n"), seat + "[AhKd]\n");
}

TEST(Normalisation, CommaAtTheVeryStartIsNotLookedAt) {
    EXPECT_EQ(normalised(",5\n" + seat), "\n5\n" + seat);
}

// --- Step 5: lists into lines ---------------------------------------------------------

TEST(Normalisation, ListsOutsideBracketsBecomeLines) {
    // The walk jumps over the blanks after the comma; they stay in the text.
    EXPECT_EQ(normalised(seat + "Ann: calls $2, Bob: folds\n"),
              seat + "Ann: calls $2\n Bob: folds\n");
    EXPECT_EQ(normalised(seat + "Dealt to Ann [Ah, Kd] (x, y)\n"),
              seat + "Dealt to Ann [Ah, Kd] (x, y)\n");
}

// --- Step 6: blind wording ------------------------------------------------------------

TEST(Normalisation, ShortBlindWordsAndAmountsInBigBlinds) {
    EXPECT_EQ(normalised(seat + "Ann: posts SB 0.5 BB\nBob: posts BB 1 BB\nCy: raises (3 BB)\n"),
              seat + "Ann: posts small blind $0.5\nBob: posts big blind $1\nCy: raises ($3)\n");
}

TEST(Normalisation, BracketedBlindWordsDoNotTurnOnTheBigBlindAmounts) {
    EXPECT_EQ(normalised(seat + "Ann: posts (SB) 1\nBob: posts (BB) 2\nCy: bets 2 BB\n"),
              seat + "Ann: posts small blind 1\nBob: posts big blind 2\nCy: bets 2 BB\n");
}

TEST(Normalisation, BigBlindAmountNeedsWhiteSpaceOrRoundBracketBeforeTheNumber) {
    EXPECT_EQ(normalised(seat + "Ann: posts BB 1 BB\nx5 BB\n"),
              seat + "Ann: posts big blind $1\nx5 BB\n");
}

// --- Step 7: street markers -----------------------------------------------------------

TEST(Normalisation, StreetMarkersOfEveryDialect) {
    EXPECT_EQ(normalised(seat + "Preflop: x\nFlop: a\nTurn: b\nRiver: c\n"),
              seat + "*** HOLE CARDS *** x\n*** FLOP *** a\n*** TURN *** b\n*** RIVER *** c\n");
    EXPECT_EQ(normalised(seat + "** Dealing down cards **\n** Dealing flop ** [a]\n"
                                "** Dealing turn ** [b]\n** Dealing river ** [c]\n"),
              seat + "*** HOLE CARDS ***\n*** FLOP *** [a]\n*** TURN *** [b]\n"
                     "*** RIVER *** [c]\n");
    // "Pre Flop:" holds "Flop:", which the flop row finds first.
    EXPECT_EQ(normalised(seat + "Pre Flop: x\n"), seat + "Pre *** FLOP *** x\n");
}

TEST(Normalisation, CanonicalMarkersGetWrappedHarmlessly) {
    EXPECT_EQ(normalised(seat + "*** HOLE CARDS ***\n*** FLOP *** [a]\n*** TURN *** [b]\n"
                                "*** RIVER *** [c]\n"),
              seat + "*** HOLE CARDS ***\n*** *** FLOP *** *** [a]\n*** *** TURN *** *** [b]\n"
                     "*** *** RIVER *** *** [c]\n");
}

TEST(Normalisation, OnlyTheFirstOccurrenceOfEachPatternBecomesAMarker) {
    EXPECT_EQ(normalised(seat + "Flop: a\nFlop: b\n"), seat + "*** FLOP *** a\nFlop: b\n");
    // The bare word inside "*** PRE-FLOP ***" is found first; the row of the hole cards
    // then no longer finds its pattern.
    EXPECT_EQ(normalised(seat + "*** PRE-FLOP ***\n*** FLOP *** [a]\n"),
              seat + "*** PRE-*** FLOP *** ***\n*** FLOP *** [a]\n");
}

TEST(Normalisation, DoubledDealingDownCardsLinesCollapse) {
    const std::string down = "** Dealing down cards **\n";
    EXPECT_EQ(normalised(seat + down + down + down + down + down + "x\n"),
              seat + "*** HOLE CARDS ***\nx\n");
    const std::string downCrLf = "** Dealing down cards **\r\n";
    EXPECT_EQ(normalised(seat + downCrLf + "x\r\n" + downCrLf + downCrLf),
              seat + "*** HOLE CARDS ***\r\nx\r\n" + downCrLf);
}

// --- Step 8: upper-case cards ---------------------------------------------------------

TEST(Normalisation, UpperCaseCardsSuitFirst) {
    EXPECT_EQ(normalised(seat + "Dealt to Hero [HA, S10]\n"), seat + "Dealt to Hero [AhTs]\n");
    EXPECT_EQ(normalised(seat + "x [D10]\n"), seat + "x [Td]\n");
    EXPECT_EQ(normalised(seat + "x [CJ H8 SQ]\n"), seat + "x [Jc8hQs]\n");
}

TEST(Normalisation, BracketWithoutUpperCaseCardsStays) {
    EXPECT_EQ(normalised(seat + "x [Ah Kd] [Dave]\n"), seat + "x [Ah Kd] [Dave]\n");
}

TEST(Normalisation, TenInBracketsStaysUntilTheMoneyStepDropsTheBrackets) {
    EXPECT_EQ(normalised(seat + "x [10]\n"), seat + "x 10\n");
}

TEST(Normalisation, BracketAtTheVeryStartIsNotLookedAtForCards) {
    EXPECT_EQ(normalised("[HA]\n" + seat), "[HA]\n" + seat);
}

// --- Step 9: seat lines ---------------------------------------------------------------

TEST(Normalisation, TextWithSeatLinesPassesTheSeatStepUnchanged) {
    HandHistoryRecord hand;
    const std::string text = seat + "Bob sitting in seat 2 with $5\nSB: $5\n";
    EXPECT_EQ(normalised(text, hand), text);
    EXPECT_TRUE(hand.seats.empty());
}

TEST(Normalisation, SittingInSeatLines) {
    EXPECT_EQ(normalised("Ann sitting in seat 3 with $12.50 [Dealer]\n"
                         "Bob sitting in seat 7 with 300\n"
                         "Cy sitting in seat 8\n"),
              "Seat 3: Ann ($12.50)\nSeat 7: Bob (300)\nCy sitting in seat 8\n");
}

TEST(Normalisation, PlayerListBehindGameNumber) {
    // The blank line behind the head survives step 1 because it holds a blank.
    EXPECT_EQ(normalised("Game#12 NL\n \nAnn (100)\nBob (200)\nCy (300)\n"
                         "Ann posts 1\nBob posts 2\nCy: folds\nAnn: calls 1\n"),
              "Game#12 NL\n \nSeat 1:Ann (100)\nSeat 2:Bob (200)\nSeat 3:Cy (300)\n"
              "Ann posts 1\nBob posts 2\n*** HOLE CARDS ***\nCy: folds\nAnn: calls 1\n");
}

TEST(Normalisation, PlayerListRunsToTheEndWithoutAPost) {
    EXPECT_EQ(normalised("Game#12\nAnn (100)\nBob (200)"),
              "Game#12\nSeat 1:Ann (100)\nSeat 2:Bob (200)");
}

TEST(Normalisation, PlayerListWithoutGameNumberIsNoHandHistory) {
    std::string text = "Ann (100)\nBob (200)\nAnn posts 1\n";
    HandHistoryRecord hand;
    EXPECT_THROW(normalise(text, hand), HandHistoryParser::ParseError);
    std::string empty;
    EXPECT_THROW(normalise(empty, hand), HandHistoryParser::ParseError);
}

TEST(Normalisation, PositionLinesBecomeSeatsNumberedByPosition) {
    HandHistoryRecord hand;
    EXPECT_EQ(normalised("NL $1/$2 6 players\n"
                         "UTG+1: $100\n"
                         "Hero (BTN): $250.50\n"
                         "SB: 80\n"
                         "BB: $120\n"
                         "Note: big stack\n"
                         "*** HOLE CARDS ***\n"
                         "CO: 5\n",
                         hand),
              "NL $1/$2 6 players\n"
              "Seat 4:UTG+1 ($100)\n"
              "Seat 10:Hero ($250.50)\n"
              "Seat 1:SB (80)\n"
              "Seat 2:BB ($120)\n"
              "Note: big stack\n"
              "*** HOLE CARDS ***\n"
              "CO: 5\n");
    ASSERT_EQ(hand.seats.size(), 4u);
    EXPECT_EQ(hand.seats[0].name, "SB");
    EXPECT_EQ(hand.seats[0].seat, 1);
    EXPECT_EQ(hand.seats[0].positionKind, 0);
    EXPECT_EQ(hand.seats[1].name, "BB");
    EXPECT_EQ(hand.seats[1].seat, 2);
    EXPECT_EQ(hand.seats[1].positionKind, 1);
    EXPECT_EQ(hand.seats[2].name, "UTG+1");
    EXPECT_EQ(hand.seats[2].seat, 4);
    EXPECT_EQ(hand.seats[2].positionKind, 2);
    EXPECT_EQ(hand.seats[3].name, "Hero");
    EXPECT_EQ(hand.seats[3].seat, 10);
    EXPECT_EQ(hand.seats[3].positionKind, 2);
}

TEST(Normalisation, PositionNumbers) {
    const std::pair<const char*, int> positions[] = {
        {"SB", 1},    {"BB", 2}, {"UTG", 3}, {"UTG1", 3}, {"UTG+1", 4}, {"UTG2", 4},
        {"UTG+2", 5}, {"MP", 6}, {"MP1", 6}, {"MP+1", 7}, {"MP2", 7},   {"MP+2", 8},
        {"MP3", 8},   {"CO", 9}, {"BU", 10}, {"BTN", 10}, {"HJ", 0},
    };
    for (const auto& [position, number] : positions) {
        HandHistoryRecord hand;
        normalised(std::string(position) + ": 10\nSB: 1\n", hand);
        ASSERT_EQ(hand.seats.size(), 2u) << position;
        const auto it = std::find_if(hand.seats.begin(), hand.seats.end(),
                                     [&](const HandHistorySeat& s) { return s.name == position; });
        ASSERT_NE(it, hand.seats.end()) << position;
        EXPECT_EQ(it->seat, number) << position;
        EXPECT_EQ(it->positionKind, number == 1 ? 0 : number == 2 ? 1 : 2) << position;
    }
    HandHistoryRecord hand;
    EXPECT_EQ(normalised("Hero (CO): 10\nSB: 1\n", hand), "Seat 9:Hero (10)\nSeat 1:SB (1)\n");
    ASSERT_EQ(hand.seats.size(), 2u);
    EXPECT_EQ(hand.seats[1].name, "Hero");
    EXPECT_EQ(hand.seats[1].seat, 9);
}

// --- Step 10: hero's cards in words -----------------------------------------------------

TEST(Normalisation, HeroIsWithCardsBecomesADealtToLine) {
    EXPECT_EQ(normalised(seat + "*** HOLE CARDS *** Hero is BB with Ah Kd\nAnn: folds\n"),
              seat + "*** HOLE CARDS *** \nDealt to Hero [Ah Kd]\nAnn: folds\n");
}

TEST(Normalisation, HeroIsNeedsWithInTheSameLine) {
    EXPECT_EQ(normalised(seat + "Hero is BB\nwith friends\n"), seat + "Hero is BB\nwith friends\n");
}

TEST(Normalisation, HeroHasCards) {
    EXPECT_EQ(normalised(seat + "Hero has Qs Qd\r\nAnn: folds\r\n"),
              seat + "\nDealt to Hero [Qs Qd]\r\nAnn: folds\r\n");
}

TEST(Normalisation, OnlyTheFirstHeroIsPhraseCounts) {
    EXPECT_EQ(normalised(seat + "Hero is away\nHero is BB with Ah Kd\n"),
              seat + "Hero is away\nHero is BB with Ah Kd\n");
}

// --- Step 11: board in round-bracket lines --------------------------------------------

TEST(Normalisation, BoardBehindThePotGetsSquareBrackets) {
    EXPECT_EQ(normalised(seat + "Flop: ($6.50) Ah Kd 2c (3 players)\nTurn: ($12) 5s\n"),
              seat + "*** FLOP *** ($6.50) [Ah Kd 2c] (3 players)\n*** TURN *** ($12) [5s]\n");
}

TEST(Normalisation, MarkerLineWithoutPotStays) {
    EXPECT_EQ(normalised(seat + "*** FLOP *** [4h Jc 3c] (Total Pot: $0.95)\n"),
              seat + "*** *** FLOP *** *** [4h Jc 3c] (Total Pot: $0.95)\n");
}

// --- Step 12: money in square brackets ------------------------------------------------

TEST(Normalisation, MoneyInSquareBracketsLosesTheBrackets) {
    EXPECT_EQ(normalised(seat + "Ann posts small blind [$0.50].\nBob: [ $1 000 ]\n[x5]\n"),
              seat + "Ann posts small blind $0.50.\nBob:  $1 000 \n[x5]\n");
    EXPECT_EQ(normalised(seat + "[a[5]]\n"), seat + "[a5]\n");
}

// --- Step 13: counted folds -----------------------------------------------------------

TEST(Normalisation, CountedFoldsBecomeThatManyFoldLines) {
    EXPECT_EQ(normalised(seat + "3 folds\nAnn: calls 1\n"),
              seat + "fold\nfold\nfold\nAnn: calls 1\n");
    EXPECT_EQ(normalised(seat + "1 folds\n"), seat + "fold\n");
    EXPECT_EQ(normalised(seat + "9 folds\n"), seat + std::string("fold\n") + "fold\nfold\n" +
                                                  "fold\nfold\nfold\nfold\nfold\nfold\n");
}

TEST(Normalisation, CountedFoldsNeedADigitFromOneToNineAtALineStart) {
    EXPECT_EQ(normalised("3 folds\n" + seat), "3 folds\n" + seat);
    EXPECT_EQ(normalised(seat + "0 folds\n10 folds\n x3 folds\n"),
              seat + "0 folds\n10 folds\n x3 folds\n");
}
