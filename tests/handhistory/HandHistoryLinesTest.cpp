// The EV/FE lines of a played hand: one line per bet or raise and end ("/Fold", "/Call",
// "/Ship"), with the sizes, stacks, pot and last investments of the hand in big blinds. The
// expected numbers are worked out in the comments from the hand's text.

#include "handhistory/HandHistoryLines.h"
#include "evfe/Line.h"
#include "evfe/LineList.h"
#include "handhistory/HandHistoryParser.h"

#include <gtest/gtest.h>

#include <string>

namespace {

const std::string seats = "PokerStars Hand #2: Hold'em No Limit ($1/$2 USD)\n"
                          "Seat 1: Ann ($50)\n"
                          "Seat 2: Bob ($300)\n"
                          "Seat 3: Cy ($100)\n"
                          "Bob: posts small blind $1\n"
                          "Cy: posts big blind $2\n"
                          "*** HOLE CARDS ***\n";

LineList allLines(HandHistoryLines& builder) {
    LineList lines;
    builder.preflopLines(lines);
    builder.flopLines(lines);
    builder.riverLines(lines);
    builder.turnLines(lines);
    return lines;
}

const LineVariant& variantOf(LineList& lines, const std::string& name, int street) {
    const Line* line = findLine(lines, name, street);
    if (line == nullptr || line->variants.empty())
        throw std::runtime_error("no line " + name);
    return line->variants.front();
}

} // namespace

TEST(HandHistoryLines, EveryoneFoldsToTheBigBlindGivesBoardAndHandOnly) {
    const HandHistoryParser p(seats + "Dealt to Ann [As Kd]\nAnn: folds\nBob: folds\n"
                                      "*** SUMMARY ***\n");
    HandHistoryLines builder(p.record());
    const LineList lines = allLines(builder);
    EXPECT_TRUE(lines.empty());
    EXPECT_EQ(builder.hero(), "Ann");
}

TEST(HandHistoryLines, NoDealtToAndNoPreflopRaiseLeavesNoHero) {
    const HandHistoryParser p(seats + "Ann: calls $2\nBob: calls $1\nCy: checks\n"
                                      "*** FLOP *** [2c 7d 9h]\nBob: bets $4\nCy: folds\n"
                                      "Ann: folds\n*** SUMMARY ***\n");
    HandHistoryLines builder(p.record());
    LineList lines;
    builder.preflopLines(lines);
    EXPECT_TRUE(lines.empty());
    EXPECT_EQ(builder.hero(), "");
}

TEST(HandHistoryLines, VillainsRaiseOverHerosStackIsCappedAtHerosTotal) {
    // Ann has 50: Bob opens to 6, Ann 3-bets to 18, Bob 4-bets to 100, Ann calls her 32.
    const HandHistoryParser hand("PokerStars Hand #3: Hold'em No Limit ($1/$2 USD)\n"
                                 "Seat 1: Ann ($50)\n"
                                 "Seat 2: Bob ($300)\n"
                                 "Bob: posts small blind $1\n"
                                 "Ann: posts big blind $2\n"
                                 "*** HOLE CARDS ***\n"
                                 "Dealt to Ann [As Kd]\n"
                                 "Bob: raises $4 to $6\n"
                                 "Ann: raises $12 to $18\n"
                                 "Bob: raises $82 to $100\n"
                                 "Ann: calls $32\n"
                                 "*** SUMMARY ***\n");
    HandHistoryLines builder(hand.record());
    LineList lines = allLines(builder);
    EXPECT_EQ(lines.size(), 9u);

    // Bob's 4-bet: 100 is more than Ann's 18 + 32, so 50 (25 bb); pot 3 + 5 + 16 = 24.
    const LineVariant& fourBet = variantOf(lines, "4-Bet/Fold", 0);
    EXPECT_EQ(fourBet.name, "Bob 4-Bet/Fold");
    EXPECT_EQ(fourBet.forPlayer, "Player2");
    for (const LineAction& action : fourBet.actions)
        EXPECT_FALSE(action.player1FirstToAct);
    EXPECT_FLOAT_EQ(fourBet.actions[0].size, 25.0f);
    EXPECT_EQ(fourBet.actions[0].verb, "4-bet");
    EXPECT_FLOAT_EQ(fourBet.deadmoney, 12.0f);
    EXPECT_FLOAT_EQ(fourBet.player1sEffectiveStackSize, 16.0f);  // Ann: 50 - 18
    EXPECT_FLOAT_EQ(fourBet.player2sEffectiveStackSize, 147.0f); // Bob: 300 - 6
    EXPECT_FLOAT_EQ(fourBet.player1sLastInvestment, 9.0f);
    EXPECT_FLOAT_EQ(fourBet.player2sLastInvestment, 3.0f);
    EXPECT_EQ(fourBet.actions[3].verb, "5-bet");
    for (std::size_t i = 1; i < fourBet.actions.size(); ++i)
        EXPECT_FLOAT_EQ(fourBet.actions[i].previousMoney, 25.0f);
    EXPECT_FLOAT_EQ(fourBet.actions[0].previousMoney, 0.0f);

    // Hero's 3-bet to 18 (9 bb) over Bob's 6; Bob's answer, the 4-bet, is capped at Ann's
    // own 2 + 48 in the "/Call" and "/Ship" variants.
    const LineVariant& threeBetCall = variantOf(lines, "3-Bet/Call", 0);
    EXPECT_EQ(threeBetCall.name, "Hero 3-Bet/Call");
    EXPECT_EQ(threeBetCall.forPlayer, "Player1");
    EXPECT_FLOAT_EQ(threeBetCall.actions[0].size, 9.0f);
    EXPECT_FLOAT_EQ(threeBetCall.deadmoney, 4.0f); // 3 + Bob's 5 beyond his blind
    EXPECT_FLOAT_EQ(threeBetCall.player1sEffectiveStackSize, 24.0f);
    EXPECT_FLOAT_EQ(threeBetCall.player2sEffectiveStackSize, 147.0f);
    EXPECT_FLOAT_EQ(threeBetCall.player1sLastInvestment, 1.0f);
    EXPECT_FLOAT_EQ(threeBetCall.player2sLastInvestment, 3.0f);
    EXPECT_EQ(threeBetCall.actions[3].action, ActionCode::RaiseCall);
    EXPECT_TRUE(threeBetCall.actions[3].needsOwnSize);
    EXPECT_FLOAT_EQ(threeBetCall.actions[3].size, 25.0f);
    const LineVariant& threeBetShip = variantOf(lines, "3-Bet/Ship", 0);
    EXPECT_EQ(threeBetShip.actions[3].verb, "4-bet/fold");
    EXPECT_EQ(threeBetShip.actions[3].action, ActionCode::RaiseShipFold);
    ASSERT_EQ(threeBetShip.actions.size(), 5u);
    EXPECT_EQ(threeBetShip.actions[4].verb, "4-bet/call");
    EXPECT_EQ(threeBetShip.actions[4].action, ActionCode::RaiseShipCall);
    const LineVariant& threeBetFold = variantOf(lines, "3-Bet/Fold", 0);
    EXPECT_EQ(threeBetFold.actions[3].action, ActionCode::RaiseFold);
    EXPECT_EQ(threeBetFold.actions[1].action, ActionCode::Fold);
    EXPECT_EQ(threeBetFold.actions[2].action, ActionCode::Call);
    EXPECT_EQ(threeBetFold.kind, LineKind::BetFold);
    EXPECT_EQ(findLine(lines, "3-Bet/Ship", 0)->actionSequence, LineKind::BetShip);
}

TEST(HandHistoryLines, OnlyTheFirstNineRaisesOfAStreetAreTaken) {
    std::string text = "PokerStars Hand #4: Hold'em No Limit ($1/$2 USD)\n"
                       "Seat 1: Ann ($100000)\n"
                       "Seat 2: Bob ($100000)\n"
                       "Bob: posts small blind $1\n"
                       "Ann: posts big blind $2\n"
                       "*** HOLE CARDS ***\n";
    int to = 6;
    for (int i = 0; i < 10; ++i, to *= 2)
        text += std::string(i % 2 == 0 ? "Bob" : "Ann") + ": raises $1 to $" + std::to_string(to) +
                "\n";
    text += "Bob: folds\n*** SUMMARY ***\n";
    const HandHistoryParser p(text);
    HandHistoryLines builder(p.record());
    LineList lines = allLines(builder);
    EXPECT_EQ(lines.size(), 27u);
    EXPECT_NE(findLine(lines, "Raise/Fold", 0), nullptr);
    EXPECT_NE(findLine(lines, "10-Bet/Ship", 0), nullptr);
    EXPECT_EQ(findLine(lines, "11-Bet/Fold", 0), nullptr);
    // The first raiser is the hero of a hand without "Dealt to".
    EXPECT_EQ(builder.hero(), "Bob");
    EXPECT_EQ(variantOf(lines, "10-Bet/Fold", 0).actions[3].verb, "11-bet");
}

TEST(HandHistoryLines, FlopNamesAndVariantsJoinLinesOfTheirNameAndStreet) {
    const std::string text = seats + "Dealt to Ann [As Kd]\n"
                                     "Ann: raises $4 to $6\n"
                                     "Bob: folds\n"
                                     "Cy: calls $4\n"
                                     "*** FLOP *** [2c 7d 9h]\n"
                                     "Cy: bets $8\n"
                                     "Ann: raises $16 to $24\n"
                                     "Cy: calls $16\n"
                                     "*** SUMMARY ***\n";
    const HandHistoryParser p(text);
    HandHistoryLines first(p.record());
    LineList lines = allLines(first);
    ASSERT_EQ(lines.size(), 9u);
    // On the flop Cy bets 8 (4 bb) into 13 (6.5 bb): Player2 first, Ann answers.
    const LineVariant& bet = variantOf(lines, "Bet/Fold", 1);
    EXPECT_EQ(bet.name, "Cy Bet/Fold");
    EXPECT_FLOAT_EQ(bet.actions[0].size, 4.0f);
    EXPECT_FLOAT_EQ(bet.deadmoney, 6.5f);
    EXPECT_EQ(bet.actions[3].verb, "raise");
    const LineVariant& raise = variantOf(lines, "Raise/Ship", 1);
    EXPECT_EQ(raise.name, "Hero Raise/Ship");
    EXPECT_FLOAT_EQ(raise.actions[0].size, 12.0f);
    EXPECT_FLOAT_EQ(raise.deadmoney, 10.5f);
    EXPECT_FLOAT_EQ(raise.player2sLastInvestment, 4.0f);
    EXPECT_EQ(raise.actions[3].verb, "3-bet/fold");

    // A second import into the same list adds variants, no lines.
    HandHistoryLines second(p.record());
    second.preflopLines(lines);
    second.flopLines(lines);
    EXPECT_EQ(lines.size(), 9u);
    for (const Line& line : lines)
        EXPECT_EQ(line.variants.size(), 2u) << line.name;
}
