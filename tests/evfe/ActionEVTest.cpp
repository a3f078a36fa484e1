// EV of single reactions, built directly as LineAction records.

#include "EVTestSupport.h"
#include "VariantSetUp.h"

#include "VelmaraEvaluatorBase.h"
#include "evfe/LineAction.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

LineAction reaction(ActionCode code, bool player1First) {
    LineAction action;
    action.action = code;
    action.player1FirstToAct = player1First;
    return action;
}

TEST(ActionEVTest, OpeningActionsHaveNoEVAndChangeNothing) {
    for (ActionCode code : {ActionCode::Check, ActionCode::Bet}) {
        LineAction action = reaction(code, true);
        action.deadmoney = 10;
        action.previousMoney = 5;
        action.equityP1 = 0.5f;
        action.equityP2 = 0.5f;
        action.EV_P1 = 1.25f;
        action.EV_P2 = -3.5f;
        action.explanation = "kept";
        action.calculateEV();
        EXPECT_EQ(action.EV_P1, 1.25f);
        EXPECT_EQ(action.EV_P2, -3.5f);
        EXPECT_EQ(action.explanation, "kept");
    }
}

TEST(ActionEVTest, RakeIsTheSmallerOfShareAndCap) {
    LineAction action;
    action.rakeFraction = 0.05f;
    action.rakeCap = 3;
    EXPECT_EQ(twoDecimals(action.rakeOf(40)), "2.00");  // 40 * 5 % = 2, below the cap
    EXPECT_EQ(twoDecimals(action.rakeOf(100)), "3.00"); // 5 capped at 3
    action.rakeCap = 0;
    EXPECT_EQ(action.rakeOf(100), 0.0f); // a cap of 0 takes nothing from any pot
    action.rakeCap = 3;
    action.rakeFraction = 0;
    EXPECT_EQ(action.rakeOf(100), 0.0f);
}

TEST(ActionEVTest, ZeroCapMeansNoRakeOnAnyOutcome) {
    // Bet 10 into 20 called: pot 40, 10 % would be 4, but the cap is 0.
    // Winner: 20 + 10 = 30, loser -10; at 50 %: 15 - 5 = 10 each.
    LineAction action = reaction(ActionCode::Call, true);
    action.deadmoney = 20;
    action.previousMoney = 10;
    action.rakeFraction = 0.1f;
    action.rakeCap = 0;
    action.equityP1 = 0.5f;
    action.equityP2 = 0.5f;
    action.calculateEV();
    EXPECT_EQ(twoDecimals(action.EV_P1), "10.00");
    EXPECT_EQ(twoDecimals(action.EV_P2), "10.00");
    EXPECT_EQ(action.explanation.find("Rake"), std::string::npos);
}

TEST(ActionEVTest, CallUsesTheFirstSizeAndCheckBetCallTheOwnSize) {
    // Pot 10, first size 4, own size 6, no rake, Player1 25 %.
    // Code 2 (call of the bet of 4): winner 10 + 4 = 14, loser -4:
    //   EV1 = 0.25 * 14 - 0.75 * 4 = 0.5.
    // Code 6 (call of the bet of 6): winner 10 + 6 = 16, loser -6:
    //   EV1 = 0.25 * 16 - 0.75 * 6 = -0.5.
    for (ActionCode code : {ActionCode::Call, ActionCode::CheckBetCall}) {
        LineAction action = reaction(code, true);
        action.deadmoney = 10;
        action.previousMoney = 4;
        action.size = 6;
        action.equityP1 = 0.25f;
        action.equityP2 = 0.75f;
        action.calculateEV();
        if (code == ActionCode::Call) {
            EXPECT_EQ(twoDecimals(action.EV_P1), "0.50");
            // Player2: 0.75 * 14 - 0.25 * 4 = 9.5
            EXPECT_EQ(twoDecimals(action.EV_P2), "9.50");
        } else {
            EXPECT_EQ(twoDecimals(action.EV_P1), "-0.50");
            // Player2: 0.75 * 16 - 0.25 * 6 = 10.5
            EXPECT_EQ(twoDecimals(action.EV_P2), "10.50");
        }
    }
}

TEST(ActionEVTest, CheckBetRaiseCallChargesTheWholeRaiseWithoutLastInvestments) {
    // Pot 10 with last investments 2 and 3 inside, check-raise to 12, called. Rake 10 %,
    // cap 5: pot 10 + 12 + 12 = 34, rake 3.4. Winner 10 + 12 - 3.4 = 18.6, loser -12
    // (the last investments are not taken off). At 50 %: 9.3 - 6 = 3.3 each.
    LineAction action = reaction(ActionCode::CheckBetRaiseCall, false);
    action.deadmoney = 10;
    action.previousMoney = 12;
    action.size = 5;
    action.player1sLastInvestmentBeforeAction = 2;
    action.player2sLastInvestmentBeforeAction = 3;
    action.rakeFraction = 0.1f;
    action.rakeCap = 5;
    action.equityP1 = 0.5f;
    action.equityP2 = 0.5f;
    action.calculateEV();
    EXPECT_EQ(twoDecimals(action.EV_P1), "3.30");
    EXPECT_EQ(twoDecimals(action.EV_P2), "3.30");
}

TEST(ActionEVTest, RaiseFoldPairsTheFoldersLastInvestment) {
    // Pot 20 holding L1 = 4, L2 = 6; the first bet is 15; rake 5 %, cap 10.
    // Player1 first (W true) folds to the raise: pot (20 + 15) - 4 = 31, rake 1.55:
    //   EV1 = -(15 - 4) = -11, EV2 = 31 - 1.55 = 29.45.
    // Player2 first (W false) folds: pot (20 + 15) - 6 = 29, rake 1.45:
    //   EV1 = 29 - 1.45 = 27.55, EV2 = -(15 - 6) = -9.
    LineAction first = reaction(ActionCode::RaiseFold, true);
    first.deadmoney = 20;
    first.previousMoney = 15;
    first.player1sLastInvestmentBeforeAction = 4;
    first.player2sLastInvestmentBeforeAction = 6;
    first.rakeFraction = 0.05f;
    first.rakeCap = 10;
    LineAction second = first;
    second.player1FirstToAct = false;
    first.calculateEV();
    second.calculateEV();
    EXPECT_EQ(twoDecimals(first.EV_P1), "-11.00");
    EXPECT_EQ(twoDecimals(first.EV_P2), "29.45");
    EXPECT_EQ(twoDecimals(second.EV_P1), "27.55");
    EXPECT_EQ(twoDecimals(second.EV_P2), "-9.00");
}

TEST(ActionEVTest, RaiseShipFoldPairsTheRaisersLastInvestment) {
    // Pot 20 holding L1 = 4, L2 = 6; the raise is 30; rake 5 %, cap 10.
    // W true: Player2 raised and folds to the shove: pot (30 + 20) - 6 = 44, rake 2.2:
    //   EV1 = 41.8, EV2 = -(30 - 6) = -24.
    // W false: Player1 raised and folds: pot (30 + 20) - 4 = 46, rake 2.3:
    //   EV1 = -(30 - 4) = -26, EV2 = 43.7.
    LineAction first = reaction(ActionCode::RaiseShipFold, true);
    first.deadmoney = 20;
    first.previousMoney = 10;
    first.size = 30;
    first.player1sLastInvestmentBeforeAction = 4;
    first.player2sLastInvestmentBeforeAction = 6;
    first.rakeFraction = 0.05f;
    first.rakeCap = 10;
    LineAction second = first;
    second.player1FirstToAct = false;
    first.calculateEV();
    second.calculateEV();
    EXPECT_EQ(twoDecimals(first.EV_P1), "41.80");
    EXPECT_EQ(twoDecimals(first.EV_P2), "-24.00");
    EXPECT_EQ(twoDecimals(second.EV_P1), "-26.00");
    EXPECT_EQ(twoDecimals(second.EV_P2), "43.70");
}

TEST(ActionEVTest, CheckBetRaiseFoldWinsTheBetAndThePot) {
    // Pot 12, Player2's bet 8 folded to the check-raise; rake 5 %, cap 3: pot 20, rake 1.
    // W true (Player1 check-raised): EV1 = 19, EV2 = -8. W false: mirrored.
    LineAction first = reaction(ActionCode::CheckBetRaiseFold, true);
    first.deadmoney = 12;
    first.previousMoney = 24;
    first.size = 8;
    first.rakeFraction = 0.05f;
    first.rakeCap = 3;
    LineAction second = first;
    second.player1FirstToAct = false;
    first.calculateEV();
    second.calculateEV();
    EXPECT_EQ(twoDecimals(first.EV_P1), "19.00");
    EXPECT_EQ(twoDecimals(first.EV_P2), "-8.00");
    EXPECT_EQ(twoDecimals(second.EV_P1), "-8.00");
    EXPECT_EQ(twoDecimals(second.EV_P2), "19.00");
}

TEST(ActionEVTest, FoldOutcomesGoToTheRightPlayer) {
    // Pot 30, rake 10 % capped at 2: the winner takes 28.
    // Code 3 (the other player folds to the bet): the first actor wins.
    // Code 5 (the first actor folds to the other's bet): the other player wins.
    struct Case {
        ActionCode code;
        bool player1First;
        const char* ev1;
        const char* ev2;
    };
    const Case cases[] = {{ActionCode::Fold, true, "28.00", "0.00"},
                          {ActionCode::Fold, false, "0.00", "28.00"},
                          {ActionCode::CheckBetFold, true, "0.00", "28.00"},
                          {ActionCode::CheckBetFold, false, "28.00", "0.00"}};
    for (const Case& c : cases) {
        LineAction action = reaction(c.code, c.player1First);
        action.deadmoney = 30;
        action.rakeFraction = 0.1f;
        action.rakeCap = 2;
        action.calculateEV();
        EXPECT_EQ(twoDecimals(action.EV_P1), c.ev1);
        EXPECT_EQ(twoDecimals(action.EV_P2), c.ev2);
    }
}

TEST(ActionEVTest, ShoveLimitsBothInvestmentsByTheShorterTotal) {
    // Pot 10, L1 = 2, L2 = 5, no rake, equities 50 %.
    // W false, Player1 shorter (K1 = 40, K2 = 90): A1 = 40, A2 = 40 + 2 - 5 = 37; 90 > 37.
    //   EV1 = 0.5 * (10 + 37) - 0.5 * 40 = 3.5; EV2 = 0.5 * (10 + 40) - 0.5 * 37 = 6.5.
    // W false, Player2 shorter (K1 = 90, K2 = 30): A2 = 92 - 5 = 87 >= 30, so
    //   A1 = 30 + 5 - 2 = 33, A2 = 30. EV1 = 0.5 * 40 - 0.5 * 33 = 3.5;
    //   EV2 = 0.5 * 43 - 0.5 * 30 = 6.5.
    // W true, Player1 shorter (K1 = 40, K2 = 90): A1 = 95 - 2 = 93 >= 40, so
    //   A2 = 42 - 5 = 37, A1 = 40: as the first case.
    // W true, Player2 shorter (K1 = 90, K2 = 30): A2 = 30, A1 = 35 - 2 = 33; 90 > 33.
    struct Case {
        bool player1First;
        float stack1;
        float stack2;
    };
    const Case cases[] = {{false, 40, 90}, {false, 90, 30}, {true, 40, 90}, {true, 90, 30}};
    for (const Case& c : cases) {
        LineAction action = reaction(ActionCode::RaiseShipCall, c.player1First);
        action.deadmoney = 10;
        action.player1sLastInvestmentBeforeAction = 2;
        action.player2sLastInvestmentBeforeAction = 5;
        action.player1sEffectiveStackSizeBeforeAction = c.stack1;
        action.player2sEffectiveStackSizeBeforeAction = c.stack2;
        action.equityP1 = 0.5f;
        action.equityP2 = 0.5f;
        action.calculateEV();
        EXPECT_EQ(twoDecimals(action.EV_P1), "3.50");
        EXPECT_EQ(twoDecimals(action.EV_P2), "6.50");
    }
}

TEST(ActionEVTest, ShoveWithEqualTotalsInvestsBothStacksInBothBranches) {
    // K1 + L1 = 48 + 2 = 50 = 45 + 5 = K2 + L2: A1 = 48 and A2 = 45 whoever acts first.
    // Pot 10, Player1 70 %: EV1 = 0.7 * (10 + 45) - 0.3 * 48 = 38.5 - 14.4 = 24.1,
    // EV2 = 0.3 * (10 + 48) - 0.7 * 45 = 17.4 - 31.5 = -14.1.
    for (bool player1First : {true, false}) {
        LineAction action = reaction(ActionCode::RaiseShipCall, player1First);
        action.deadmoney = 10;
        action.player1sLastInvestmentBeforeAction = 2;
        action.player2sLastInvestmentBeforeAction = 5;
        action.player1sEffectiveStackSizeBeforeAction = 48;
        action.player2sEffectiveStackSizeBeforeAction = 45;
        action.equityP1 = 0.7f;
        action.equityP2 = 0.3f;
        action.calculateEV();
        EXPECT_EQ(twoDecimals(action.EV_P1), "24.10");
        EXPECT_EQ(twoDecimals(action.EV_P2), "-14.10");
        EXPECT_NE(action.explanation.find(" - 48.000 [Additional Investment]"), std::string::npos);
        EXPECT_NE(action.explanation.find(" - 45.000 [Additional Investment]"), std::string::npos);
    }
}

TEST(ActionEVTest, EquitiesFromAnEvaluationCountHalfTheTies) {
    LongedEvaluation evaluation;
    evaluation.total = 8;
    evaluation.wins1 = 5;
    evaluation.wins2 = 1;
    evaluation.ties = 2;
    LineAction action;
    action.setEquities(evaluation);
    // (5 + 1) / 8 = 0.75 and (1 + 1) / 8 = 0.25
    EXPECT_EQ(action.equityP1, 0.75f);
    EXPECT_EQ(action.equityP2, 0.25f);
}

TEST(ActionEVTest, EquitiesOfAnEmptyEvaluationAreNotANumber) {
    LineAction action;
    action.setEquities(LongedEvaluation());
    EXPECT_TRUE(std::isnan(action.equityP1));
    EXPECT_TRUE(std::isnan(action.equityP2));
}

TEST(ActionEVTest, VariantPassesItsMoneyAndTheRakeToEveryAction) {
    LineVariant variant = VariantSetUp("Bet/Call", "Player2")
                              .pot(25)
                              .lastInvestments(3, 4)
                              .stacks(70, 80)
                              .firstSize(9)
                              .rake(2.5, 1.5)
                              .fold(1)
                              .showdown(1, 0.5f, 0.5f)
                              .showdown(1, 0.5f, 0.5f, 27)
                              .evaluate();
    for (const LineAction& action : variant.actions) {
        EXPECT_EQ(action.deadmoney, 25.0f);
        EXPECT_EQ(action.previousMoney, 9.0f);
        EXPECT_EQ(action.player1sLastInvestmentBeforeAction, 3.0f);
        EXPECT_EQ(action.player2sLastInvestmentBeforeAction, 4.0f);
        EXPECT_EQ(action.player1sEffectiveStackSizeBeforeAction, 70.0f);
        EXPECT_EQ(action.player2sEffectiveStackSizeBeforeAction, 80.0f);
        EXPECT_EQ(action.rakeFraction, 0.025f);
        EXPECT_EQ(action.rakeCap, 1.5f);
    }
    EXPECT_EQ(variant.actions[3].size, 27.0f);
}

} // namespace
