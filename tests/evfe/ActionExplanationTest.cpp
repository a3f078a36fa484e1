// The rich-text tool tips of reactions and variants, compared word for word.

#include "EVTestSupport.h"
#include "VariantSetUp.h"

#include "evfe/LineAction.h"
#include "evfe/RakeInformation.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

LineAction reaction(ActionCode code, bool player1First, float pot, float rakeFraction,
                    float rakeCap) {
    LineAction action;
    action.action = code;
    action.player1FirstToAct = player1First;
    action.deadmoney = pot;
    action.rakeFraction = rakeFraction;
    action.rakeCap = rakeCap;
    return action;
}

// "Bet/Ship" on the turn: pot 20, Player1 bets 15, stacks 80 and 60, rake 4 % capped at 5.
// The numbers are worked out in LineEVTest (BetShipWithTheShorterStackCapping...).
TEST(ExplanationTest, EveryTextOfOneFullLine) {
    const LineVariant v = VariantSetUp::betShipOnTheTurn().evaluate();

    // The first action has no EV and no text.
    EXPECT_EQ(v.actions[0].explanation, "");

    // Fold: rake 20 * 0.04 = 0.8 below the cap of 5.
    EXPECT_EQ(v.actions[1].explanation,
              "<b>Rake:</b> (20.000 [Final Pot] * 0.040 [Rake%]) capped at 5.000 = 0.800"
              "<br/><br/>"
              "<b>Player1 EV:</b> 20.00 [Deadmoney] - 0.80 [Rake] = 19.20"
              "<br/><br/><b>Player2 EV:</b> 0");

    // Call: pot 50, rake 2; gains 20 + 15 - 2 = 33, losses 15.
    EXPECT_EQ(v.actions[2].explanation,
              "<b>Rake:</b> (50.000 [Final Pot] * 0.040 [Rake%]) capped at 5.000 = 2.000"
              "<br/><br/>"
              "<b>Player1 EV:</b> 33.00 [Gain Player1] * 60.00 % [Equity Player1] - 15.00 "
              "[Loss Player1] * 40.00 % [Equity Player2] = 13.80<br/><br/>"
              "<b>Player2 EV:</b> 33.00 [Gain Player2] * 40.00 % [Equity Player2] - 15.00 "
              "[Loss Player2] * 60.00 % [Equity Player1] = 4.20<br/>");

    // Raise to 45, shove, fold: pot 65, rake 2.6.
    EXPECT_EQ(v.actions[3].explanation,
              "<b>Rake:</b> (65.000 [Final Pot] * 0.040 [Rake%]) capped at 5.000 = 2.600"
              "<br/><br/>"
              "<b>Player1 EV:</b> 65.00 [Pot] - 2.60 [Rake] = 62.40"
              "<br/><br/><b>Player2 EV:</b> -45.00 [Last Additional Investment] ");

    // Raise, shove, call: both add 60, pot 140, rake 5.6 capped at 5; three decimals.
    EXPECT_EQ(v.actions[4].explanation,
              "<b>Rake:</b> (140.000 [Final Pot] * 0.040 [Rake%]) capped at 5.000 = 5.000"
              "<br/><br/>"
              "<b>EV Player1:</b> 75.000 [Gain Player1] * 50.00 % [Equity Player 1] - 60.000 "
              "[Additional Investment] * 50.00 % [Equity Player 2] = 7.500<br/><br/>"
              "<b>EV Player2:</b> 75.000 [Gain Player2] * 50.00 % [Equity Player 2] - 60.000 "
              "[Additional Investment] * 50.00 % [Equity Player 1] = 7.500<br/><br/>");

    // Overall: shares 0.3, 0.4, 0.2, 0.1, default stream format.
    EXPECT_EQ(v.explanation,
              "<b>EV P1:</b> 0.3 [Ratio Reaction1] * 19.2 [EV Reaction1] + 0.4 [Ratio "
              "Reaction2] * 13.8 [EV Reaction2] + 0.2 [Ratio Reaction3] * 62.4 [EV Reaction3] "
              "+ 0.1 [Ratio Reaction4] * 7.5 [EV Reaction4] = 24.51<br/><br/>"
              "<b>EV P2:</b> 0.3 [Ratio Reaction1] * 0 [EV Reaction1] + 0.4 [Ratio "
              "Reaction2] * 4.2 [EV Reaction2] + 0.2 [Ratio Reaction3] * -45 [EV Reaction3] "
              "+ 0.1 [Ratio Reaction4] * 7.5 [EV Reaction4] = -6.57<br/><br/>");
}

TEST(ExplanationTest, WithoutRakeThereIsNoHeadAndNoRakePiece) {
    // Fold outcomes then end with " [Deadmoney]" or " [Pot]", without " = ".
    LineAction fold = reaction(ActionCode::Fold, true, 30, 0, 3);
    fold.calculateEV();
    EXPECT_EQ(fold.explanation,
              "<b>Player1 EV:</b> 30.00 [Deadmoney]<br/><br/><b>Player2 EV:</b> 0");

    LineAction otherFold = reaction(ActionCode::CheckBetFold, true, 30, 0, 3);
    otherFold.calculateEV();
    EXPECT_EQ(otherFold.explanation,
              "<b>Player1 EV:</b> 0<br/><br/><b>Player2 EV:</b> 30.00 [Deadmoney]");

    LineAction raiseFold = reaction(ActionCode::CheckBetRaiseFold, false, 12, 0, 3);
    raiseFold.size = 8;
    raiseFold.calculateEV();
    EXPECT_EQ(raiseFold.explanation, "<b>Player1 EV:</b> -8.00 [Player1's Bet Size] <br/><br/>"
                                     "<b>Player2 EV:</b> 20.00 [Pot]");
}

TEST(ExplanationTest, FoldTextsWithRakeForBothFirstActors) {
    // Pot 30, rake 10 % = 3 capped at 2.
    const std::string head =
        "<b>Rake:</b> (30.000 [Final Pot] * 0.100 [Rake%]) capped at 2.000 = 2.000<br/><br/>";
    LineAction betFolded = reaction(ActionCode::Fold, false, 30, 0.1f, 2);
    betFolded.calculateEV();
    EXPECT_EQ(betFolded.explanation, head + "<b>Player1 EV:</b> 0<br/><br/><b>Player2 EV:</b> "
                                            "30.00 [Deadmoney] - 2.00 [Rake] = 28.00");
    LineAction checkBetFolded = reaction(ActionCode::CheckBetFold, false, 30, 0.1f, 2);
    checkBetFolded.calculateEV();
    EXPECT_EQ(checkBetFolded.explanation,
              head + "<b>Player1 EV:</b> 30.00 [Deadmoney] - 2.00 [Rake] = 28.00<br/><br/>"
                     "<b>Player2 EV:</b> 0");
}

TEST(ExplanationTest, RakeOfExactlyATenthPercentPrintsNothing) {
    // Pot 1 at 0.1 %: the rake is exactly the float 0.001, which is not above 0.001.
    LineAction action = reaction(ActionCode::Fold, true, 1, 0.001f, 5);
    action.calculateEV();
    EXPECT_EQ(action.rakeOf(1), 0.001f);
    EXPECT_EQ(action.explanation, "<b>Player1 EV:</b> 1.00 [Deadmoney]<br/><br/>"
                                  "<b>Player2 EV:</b> 0");
    // The rake is taken all the same: 1 - 0.001.
    EXPECT_EQ(twoDecimals(action.EV_P1 * 1000), "999.00");

    // The same through the cap.
    LineAction capped = reaction(ActionCode::Fold, true, 100, 0.05f, 0.001f);
    capped.calculateEV();
    EXPECT_EQ(capped.explanation.find("Rake"), std::string::npos);

    // Just above prints head and piece, with the values rounded to their decimals.
    LineAction above = reaction(ActionCode::Fold, true, 100, 0.05f, 0.0011f);
    above.calculateEV();
    EXPECT_EQ(above.explanation,
              "<b>Rake:</b> (100.000 [Final Pot] * 0.050 [Rake%]) capped at 0.001 = 0.001"
              "<br/><br/><b>Player1 EV:</b> 100.00 [Deadmoney] - 0.00 [Rake] = 100.00"
              "<br/><br/><b>Player2 EV:</b> 0");
}

TEST(ExplanationTest, CheckCheckShowsTheRakedPotTimesEquity) {
    // Pot 30, rake 3 capped at 2: 28 * 25 % = 7 and 28 * 75 % = 21.
    LineAction action = reaction(ActionCode::CheckCheck, true, 30, 0.1f, 2);
    action.equityP1 = 0.25f;
    action.equityP2 = 0.75f;
    action.calculateEV();
    EXPECT_EQ(action.explanation,
              "<b>Rake:</b> (30.000 [Final Pot] * 0.100 [Rake%]) capped at 2.000 = 2.000"
              "<br/><br/>"
              "<b>Player1 EV:</b> 28.00 [Gain Player1] * 25.00 % [Equity Player1] = 7.00"
              "<br/><br/>"
              "<b>Player2 EV:</b> 28.00 [Gain Player2] * 75.00 % [Equity Player2] = 21.00<br/>");
}

TEST(ExplanationTest, CheckBetRaiseFoldNamesTheLosersBetSize) {
    // Pot 12, bet 8 folded to the check-raise: pot 20, rake 1.
    LineAction action = reaction(ActionCode::CheckBetRaiseFold, true, 12, 0.05f, 3);
    action.size = 8;
    action.calculateEV();
    EXPECT_EQ(action.explanation,
              "<b>Rake:</b> (20.000 [Final Pot] * 0.050 [Rake%]) capped at 3.000 = 1.000"
              "<br/><br/><b>Player1 EV:</b> 20.00 [Pot] - 1.00 [Rake] = 19.00"
              "<br/><br/><b>Player2 EV:</b> -8.00 [Player2's Bet Size] ");
}

TEST(ExplanationTest, CheckBetRaiseFoldWithoutABetKeepsTheNegativeZero) {
    LineAction action = reaction(ActionCode::CheckBetRaiseFold, true, 12, 0, 0);
    action.size = 0;
    action.calculateEV();
    EXPECT_TRUE(std::signbit(action.EV_P2));
    EXPECT_EQ(action.EV_P2, 0.0f);
    EXPECT_EQ(action.explanation, "<b>Player1 EV:</b> 12.00 [Pot]<br/><br/>"
                                  "<b>Player2 EV:</b> -0.00 [Player2's Bet Size] ");
}

TEST(ExplanationTest, CheckBetRaiseCallPrintsThePotOfACalledRaise) {
    // Pot 10 (L1 = 2, L2 = 3), bet 5, check-raise to 12 called; rake 10 %, cap 5.
    // The rake is taken from (10 + 12) + 12 = 34: 3.4. The text shows the pot of code 10:
    // ((((12 + 10 + 5) - 2) - 3) + 5) - 12 = 15. Gains 10 + 12 - 3.4 = 18.6, losses 12.
    LineAction action = reaction(ActionCode::CheckBetRaiseCall, false, 10, 0.1f, 5);
    action.previousMoney = 12;
    action.size = 5;
    action.player1sLastInvestmentBeforeAction = 2;
    action.player2sLastInvestmentBeforeAction = 3;
    action.equityP1 = 0.5f;
    action.equityP2 = 0.5f;
    action.calculateEV();
    EXPECT_EQ(action.explanation,
              "<b>Rake:</b> (15.000 [Final Pot] * 0.100 [Rake%]) capped at 5.000 = 3.400"
              "<br/><br/>"
              "<b>Player1 EV:</b> 18.60 [Gain Player1] * 50.00 % [Equity Player1] - 12.00 "
              "[Loss Player1] * 50.00 % [Equity Player2] = 3.30<br/><br/>"
              "<b>Player2 EV:</b> 18.60 [Gain Player2] * 50.00 % [Equity Player2] - 12.00 "
              "[Loss Player2] * 50.00 % [Equity Player1] = 3.30<br/>");
}

TEST(ExplanationTest, RaiseFoldPrintsPlayerOnesPotExpressionInTheHead) {
    // Pot 20 (L1 = 4, L2 = 6), bet 15; rake 5 %, cap 10.
    LineAction player1Folds = reaction(ActionCode::RaiseFold, true, 20, 0.05f, 10);
    player1Folds.previousMoney = 15;
    player1Folds.player1sLastInvestmentBeforeAction = 4;
    player1Folds.player2sLastInvestmentBeforeAction = 6;
    LineAction player2Folds = player1Folds;
    player2Folds.player1FirstToAct = false;
    player1Folds.calculateEV();
    player2Folds.calculateEV();
    // Player1 folds: pot (20 + 15) - 4 = 31, rake 1.55.
    EXPECT_EQ(player1Folds.explanation,
              "<b>Rake:</b> (31.000 [Final Pot] * 0.050 [Rake%]) capped at 10.000 = 1.550"
              "<br/><br/><b>Player1 EV:</b> -11.00 [Last Additional Investment] "
              "<br/><br/><b>Player2 EV:</b> 31.00 [Pot] - 1.55 [Rake] = 29.45");
    // Player2 folds: the pot is (20 + 15) - 6 = 29 with rake 1.45, but the head still shows
    // (20 + 15) - 4 = 31.
    EXPECT_EQ(player2Folds.explanation,
              "<b>Rake:</b> (31.000 [Final Pot] * 0.050 [Rake%]) capped at 10.000 = 1.450"
              "<br/><br/><b>Player1 EV:</b> 29.00 [Pot] - 1.45 [Rake] = 27.55"
              "<br/><br/><b>Player2 EV:</b> -9.00 [Last Additional Investment] ");
}

TEST(ExplanationTest, RaiseShipFoldPrintsPlayerOnesPotExpressionInTheHead) {
    // Pot 20 (L1 = 4, L2 = 6), raise 30; rake 5 %, cap 10. Player2 folds to the shove:
    // pot (30 + 20) - 6 = 44, rake 2.2; the head shows (30 + 20) - 4 = 46.
    LineAction action = reaction(ActionCode::RaiseShipFold, true, 20, 0.05f, 10);
    action.size = 30;
    action.player1sLastInvestmentBeforeAction = 4;
    action.player2sLastInvestmentBeforeAction = 6;
    action.calculateEV();
    EXPECT_EQ(action.explanation,
              "<b>Rake:</b> (46.000 [Final Pot] * 0.050 [Rake%]) capped at 10.000 = 2.200"
              "<br/><br/><b>Player1 EV:</b> 44.00 [Pot] - 2.20 [Rake] = 41.80"
              "<br/><br/><b>Player2 EV:</b> -24.00 [Last Additional Investment] ");
}

TEST(ExplanationTest, RaiseCallShowsGainsAndLossesOfTheRaise) {
    // Pot 15 (L1 = 5), bet 15, 3-bet to 45 called; rake 5 % of 100 capped at 4.
    LineAction action = reaction(ActionCode::RaiseCall, false, 15, 0.05f, 4);
    action.previousMoney = 15;
    action.size = 45;
    action.player1sLastInvestmentBeforeAction = 5;
    action.equityP1 = 0.6f;
    action.equityP2 = 0.4f;
    action.calculateEV();
    EXPECT_EQ(action.explanation,
              "<b>Rake:</b> (100.000 [Final Pot] * 0.050 [Rake%]) capped at 4.000 = 4.000"
              "<br/><br/>"
              "<b>Player1 EV:</b> 56.00 [Gain Player1] * 60.00 % [Equity Player1] - 40.00 "
              "[Loss Player1] * 40.00 % [Equity Player2] = 17.60<br/><br/>"
              "<b>Player2 EV:</b> 51.00 [Gain Player2] * 40.00 % [Equity Player2] - 45.00 "
              "[Loss Player2] * 60.00 % [Equity Player1] = -6.60<br/>");
}

TEST(ExplanationTest, ShoveWithoutRakeStaysAtThreeDecimals) {
    // Pot 10 (L1 = 2, L2 = 5), Player2 first, stacks 90 and 30: A1 = 33, A2 = 30.
    LineAction action = reaction(ActionCode::RaiseShipCall, false, 10, 0, 0);
    action.player1sLastInvestmentBeforeAction = 2;
    action.player2sLastInvestmentBeforeAction = 5;
    action.player1sEffectiveStackSizeBeforeAction = 90;
    action.player2sEffectiveStackSizeBeforeAction = 30;
    action.equityP1 = 0.5f;
    action.equityP2 = 0.5f;
    action.calculateEV();
    EXPECT_EQ(action.explanation,
              "<b>EV Player1:</b> 40.000 [Gain Player1] * 50.00 % [Equity Player 1] - 33.000 "
              "[Additional Investment] * 50.00 % [Equity Player 2] = 3.500<br/><br/>"
              "<b>EV Player2:</b> 43.000 [Gain Player2] * 50.00 % [Equity Player 2] - 30.000 "
              "[Additional Investment] * 50.00 % [Equity Player 1] = 6.500<br/><br/>");
}

TEST(ExplanationTest, PercentagesHaveTwoDecimalsABlankAndTheSign) {
    LineAction action = reaction(ActionCode::CheckCheck, true, 3, 0, 0);
    action.equityP1 = 1.0f / 3.0f;
    action.equityP2 = 2.0f / 3.0f;
    action.calculateEV();
    EXPECT_EQ(action.explanation,
              "<b>Player1 EV:</b> 3.00 [Gain Player1] * 33.33 % [Equity Player1] = 1.00<br/><br/>"
              "<b>Player2 EV:</b> 3.00 [Gain Player2] * 66.67 % [Equity Player2] = 2.00<br/>");
}

TEST(RakeInformationTest, MessageNamesTheSupportAddress) {
    EXPECT_EQ(RakeInformation::title(), "Info about Rake");
    EXPECT_EQ(RakeInformation::text("help@example.org"),
              "This rake calculation is simplified.<br/><br/>Actions, which do not lead to a "
              "fold, will be raked with the pot multiplied by the rake %. Of course, this is not "
              "exact, as the different sites use different rounding types and may also use "
              "incremental or linear systems.<br/><br/>If you are interested into exact rake "
              "calculations, please feedback us by writing on facebook or at help@example.org, "
              "so that we will integrate it, when many people wish for this feature.");
}

} // namespace
