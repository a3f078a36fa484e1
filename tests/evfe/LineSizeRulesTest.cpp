#include "evfe/LineSizeRules.h"

#include "evfe/LineFactory.h"
#include "evfe/Street.h"
#include "support/AssertionRecorder.h"

#include <gtest/gtest.h>

namespace {

TEST(LineSizeRulesTest, PotHoldsBothLastInvestments) {
    LineVariant variant = LineFactory::create("Raise/Fold", "v", "Player1");
    variant.player1sLastInvestment = 0.5f;
    variant.player2sLastInvestment = 1.0f;
    EXPECT_FLOAT_EQ(LineSizeRules::minimumDeadmoney(variant), 1.5f);
}

TEST(LineSizeRulesTest, FirstBetMustDoubleTheOtherPlayersMoney) {
    // Player1 in the small blind (0.5) raises over Player2's big blind (1): at least
    // 2 * 1 - 0.5 = 1.5.
    LineVariant variant = LineFactory::create("Raise/Call", "v", "Player1");
    variant.player1sLastInvestment = 0.5f;
    variant.player2sLastInvestment = 1.0f;
    EXPECT_FLOAT_EQ(LineSizeRules::minimumFirstSize(variant), 1.5f);
    // Player2 first with F = 9 already in and O = 3: 2 * 3 - 9 < 0, so 0.
    LineVariant second = LineFactory::create("4-Bet/Call", "v", "Player2");
    second.player1sLastInvestment = 3.0f;
    second.player2sLastInvestment = 9.0f;
    EXPECT_FLOAT_EQ(LineSizeRules::minimumFirstSize(second), 0.0f);
    // Player2 first with O = Player1's 9 and F = 3: 2 * 9 - 3 = 15.
    second.player1sLastInvestment = 9.0f;
    second.player2sLastInvestment = 3.0f;
    EXPECT_FLOAT_EQ(LineSizeRules::minimumFirstSize(second), 15.0f);
}

TEST(LineSizeRulesTest, CheckRaiseMustDoubleTheLargestBet) {
    LineVariant variant = LineFactory::create("Check/Raise", "v", "Player1");
    EXPECT_FLOAT_EQ(LineSizeRules::minimumFirstSize(variant), 0.0f);
    variant.actions[2].size = 7.5f; // "bet/fold", has a size box
    EXPECT_FLOAT_EQ(LineSizeRules::minimumFirstSize(variant), 15.0f);
    // A reaction without a size box does not count, whatever its size.
    variant.actions[3].size = 40.0f;
    EXPECT_FLOAT_EQ(LineSizeRules::minimumFirstSize(variant), 15.0f);
    // Last investments play no part for a check.
    variant.player2sLastInvestment = 30.0f;
    EXPECT_FLOAT_EQ(LineSizeRules::minimumFirstSize(variant), 15.0f);
}

TEST(LineSizeRulesTest, ReactionMustDoubleTheFirstSizeLessItsOwnMoney) {
    // Player1 raises to 3; Player2, with 1 in, 3-bets to at least 2 * 3 - 1 = 5.
    LineVariant variant = LineFactory::create("Raise/Call", "v", "Player1");
    variant.player1sLastInvestment = 0.5f;
    variant.player2sLastInvestment = 1.0f;
    variant.actions[0].size = 3.0f;
    EXPECT_FLOAT_EQ(LineSizeRules::minimumReactionSize(variant), 5.0f);
    // Player2 first: Player1's last investment counts.
    LineVariant second = LineFactory::create("3-Bet/Call", "v", "Player2");
    second.player1sLastInvestment = 2.5f;
    second.player2sLastInvestment = 1.0f;
    second.actions[0].size = 10.0f;
    EXPECT_FLOAT_EQ(LineSizeRules::minimumReactionSize(second), 17.5f);
    // Never below 0.
    second.actions[0].size = 1.0f;
    EXPECT_FLOAT_EQ(LineSizeRules::minimumReactionSize(second), 0.0f);
}

TEST(LineSizeRulesTest, MaximumIsTheShorterTotal) {
    LineVariant variant = LineFactory::create("Bet/Ship", "v", "Player1");
    variant.player1sEffectiveStackSize = 80.0f;
    variant.player1sLastInvestment = 5.0f;
    variant.player2sEffectiveStackSize = 60.0f;
    variant.player2sLastInvestment = 20.0f;
    EXPECT_FLOAT_EQ(LineSizeRules::maximumSize(variant), 80.0f);
    variant.player2sLastInvestment = 10.0f;
    EXPECT_FLOAT_EQ(LineSizeRules::maximumSize(variant), 70.0f);
}

TEST(LineSizeRulesTest, BoundsApplyTheMaximumOnlyAboveTheMinimum) {
    LineVariant variant = LineFactory::create("Bet/Ship", "v", "Player1");
    variant.player1sEffectiveStackSize = 50.0f;
    variant.player2sEffectiveStackSize = 40.0f;
    variant.actions[0].size = 15.0f;

    LineSizeRules::Bounds first = LineSizeRules::sizeBounds(variant, 0);
    EXPECT_FLOAT_EQ(first.minimum, 0.0f);
    EXPECT_FLOAT_EQ(first.maximum, 40.0f);
    EXPECT_TRUE(first.maximumApplied);

    LineSizeRules::Bounds raise = LineSizeRules::sizeBounds(variant, 3);
    EXPECT_FLOAT_EQ(raise.minimum, 30.0f);
    EXPECT_FLOAT_EQ(raise.maximum, 40.0f);
    EXPECT_TRUE(raise.maximumApplied);

    // A raise that cannot be made within the stacks: the minimum stands, no maximum.
    variant.actions[0].size = 25.0f;
    raise = LineSizeRules::sizeBounds(variant, 3);
    EXPECT_FLOAT_EQ(raise.minimum, 50.0f);
    EXPECT_FLOAT_EQ(raise.maximum, 9999.0f);
    EXPECT_FALSE(raise.maximumApplied);

    // Minimum equal to the maximum still applies it.
    variant.actions[0].size = 20.0f;
    raise = LineSizeRules::sizeBounds(variant, 3);
    EXPECT_FLOAT_EQ(raise.minimum, 40.0f);
    EXPECT_TRUE(raise.maximumApplied);

    // Actions without a size box keep the plain box range.
    LineSizeRules::Bounds call = LineSizeRules::sizeBounds(variant, 2);
    EXPECT_FLOAT_EQ(call.minimum, 0.0f);
    EXPECT_FLOAT_EQ(call.maximum, 9999.0f);
    EXPECT_FALSE(call.maximumApplied);
}

TEST(LineSizeRulesTest, BoundsOfAMissingActionAssert) {
    const LineVariant variant = LineFactory::create("Bet/Fold", "v", "Player1");
    AssertionRecorder recorder;
    const LineSizeRules::Bounds bounds = LineSizeRules::sizeBounds(variant, 4);
    EXPECT_TRUE(recorder.saw("Action index out of range."));
    EXPECT_FLOAT_EQ(bounds.maximum, 9999.0f);
}

void expectBoxes(const LineSizeRules::InvestmentBoxes& boxes, bool p1, const char* p1Label, bool p2,
                 const char* p2Label) {
    EXPECT_EQ(boxes.player1Visible, p1);
    EXPECT_EQ(boxes.player2Visible, p2);
    if (p1) {
        EXPECT_EQ(boxes.player1Label, p1Label);
    }
    if (p2) {
        EXPECT_EQ(boxes.player2Label, p2Label);
    }
}

TEST(InvestmentBoxesTest, BetAndCheckHideBoth) {
    expectBoxes(LineSizeRules::investmentBoxes(Street::Flop, "bet", true), false, "", false, "");
    expectBoxes(LineSizeRules::investmentBoxes(Street::River, "check", false), false, "", false,
                "");
    expectBoxes(LineSizeRules::investmentBoxes(Street::Turn, "check/raise", true), false, "", false,
                "");
}

TEST(InvestmentBoxesTest, RaiseShowsPostsPreflopAndTheBetAfterwards) {
    expectBoxes(LineSizeRules::investmentBoxes(Street::Preflop, "raise", true), true,
                "P1's Post Size:", true, "P2's Post Size:");
    expectBoxes(LineSizeRules::investmentBoxes(Street::Preflop, "raise", false), true,
                "P1's Post Size:", true, "P2's Post Size:");
    expectBoxes(LineSizeRules::investmentBoxes(Street::Flop, "raise", true), false, "", true,
                "P2's Bet Size:");
    expectBoxes(LineSizeRules::investmentBoxes(Street::River, "raise", false), true,
                "P1's Bet Size:", false, "");
}

TEST(InvestmentBoxesTest, PreflopThreeBetShowsPostAndRaise) {
    expectBoxes(LineSizeRules::investmentBoxes(Street::Preflop, "3-bet", true), true,
                "P1's Post Size:", true, "P2's Raise Size:");
    expectBoxes(LineSizeRules::investmentBoxes(Street::Preflop, "3-bet", false), true,
                "P1's Raise Size:", true, "P2's Post Size:");
}

TEST(InvestmentBoxesTest, OtherBetsShowTheTwoEarlierSizes) {
    expectBoxes(LineSizeRules::investmentBoxes(Street::Flop, "3-bet", true), true,
                "P1's Bet Size:", true, "P2's Raise Size:");
    expectBoxes(LineSizeRules::investmentBoxes(Street::Turn, "3-bet", false), true,
                "P1's Raise Size:", true, "P2's Bet Size:");
    expectBoxes(LineSizeRules::investmentBoxes(Street::Preflop, "4-bet", true), true,
                "P1's Raise Size:", true, "P2's 3-Bet Size:");
    expectBoxes(LineSizeRules::investmentBoxes(Street::Preflop, "4-bet", false), true,
                "P1's 3-Bet Size:", true, "P2's Raise Size:");
    expectBoxes(LineSizeRules::investmentBoxes(Street::River, "5-bet", true), true,
                "P1's 3-Bet Size:", true, "P2's 4-Bet Size:");
    expectBoxes(LineSizeRules::investmentBoxes(Street::Flop, "7-bet", false), true,
                "P1's 6-Bet Size:", true, "P2's 5-Bet Size:");
}

} // namespace
