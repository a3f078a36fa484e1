// One worked example per line. Every expected number is worked out by hand in the comments
// from the pot, the sizes, the rake and how often each reaction comes (its share of all
// reaction combinations), and compared as the page prints it: two decimals.
//
// Conventions of the EV: P is the pot before the first action and already holds both last
// investments L1, L2. A player's EV is what he takes out of the street's pot in the end
// minus the money he adds on this street: a pot won without showdown counts P in full, a
// showdown won counts P plus what the other player added, a showdown lost costs what he
// added. Rake = min(final pot * rake fraction, cap). Fold equity of a player = share of the
// reactions in which the other player folds to him.

#include "EVTestSupport.h"
#include "VariantSetUp.h"

#include <gtest/gtest.h>

namespace {

void expectReaction(const LineVariant& variant, std::size_t index, const char* ev1,
                    const char* ev2) {
    SCOPED_TRACE("reaction " + std::to_string(index) + " (" + variant.actions[index].verb + ")");
    EXPECT_EQ(twoDecimals(variant.actions[index].EV_P1), ev1);
    EXPECT_EQ(twoDecimals(variant.actions[index].EV_P2), ev2);
}

void expectOverall(const LineVariant& variant, const char* ev1, const char* ev2, const char* fe1,
                   const char* fe2) {
    EXPECT_EQ(twoDecimals(variant.EV_P1), ev1);
    EXPECT_EQ(twoDecimals(variant.EV_P2), ev2);
    EXPECT_EQ(twoDecimals(variant.FE_P1), fe1);
    EXPECT_EQ(twoDecimals(variant.FE_P2), fe2);
}

TEST(LineEVTest, CheckFoldWithoutRake) {
    // Flop, Player1 checks into a pot of 10, no rake. Player2 checks back with 30 combos
    // (share 30/40 = 0.75) and bets with 10 (0.25), and Player1 folds to the bet.
    // Check-check: showdown for 10 with equities 60/40: EV1 = 10 * 0.6 = 6, EV2 = 4.
    // Bet, fold: Player2 takes the 10: EV1 = 0, EV2 = 10.
    // Overall EV1 = 0.75 * 6 + 0.25 * 0 = 4.5; EV2 = 0.75 * 4 + 0.25 * 10 = 5.5.
    // Player1 never makes Player2 fold; Player2's bet folds Player1 in 25 %.
    const LineVariant v =
        VariantSetUp("Check/Fold", "Player1").pot(10).showdown(30, 0.6f, 0.4f).fold(10).evaluate();
    expectReaction(v, 1, "6.00", "4.00");
    expectReaction(v, 2, "0.00", "10.00");
    expectOverall(v, "4.50", "5.50", "0.00", "0.25");
}

TEST(LineEVTest, CheckFoldForPlayer2WithRakeAtTheCap) {
    // Turn, Player2 checks into 30; rake 5 % capped at 1: 30 * 0.05 = 1.5, so rake 1.
    // Player1 checks back with 20 combos (0.5), bets with 20 (0.5); Player2 folds to it.
    // Check-check: (30 - 1) * 0.2 = 5.8 for Player1, (30 - 1) * 0.8 = 23.2 for Player2.
    // Bet, fold: Player1 takes 30 less the rake of 1 (folds are raked too): 29.
    // Overall EV1 = 0.5 * 5.8 + 0.5 * 29 = 17.4; EV2 = 0.5 * 23.2 + 0.5 * 0 = 11.6.
    // Player1 folds the first actor Player2 out half the time: FE_P1 = 0.5, FE_P2 = 0.
    const LineVariant v = VariantSetUp("Check/Fold", "Player2")
                              .pot(30)
                              .rake(5, 1)
                              .showdown(20, 0.2f, 0.8f)
                              .fold(20)
                              .evaluate();
    expectReaction(v, 1, "5.80", "23.20");
    expectReaction(v, 2, "29.00", "0.00");
    expectOverall(v, "17.40", "11.60", "0.50", "0.00");
}

TEST(LineEVTest, CheckCallWithRakeBelowTheCap) {
    // Flop, pot 12, Player1 first; rake 5 %, cap 3. Player2 checks back 60 % of the time,
    // bets 8 with 40 % and Player1 calls.
    // Check-check: rake 12 * 0.05 = 0.6; (12 - 0.6) * 0.5 = 5.7 each.
    // Bet 8, call: final pot 12 + 8 + 8 = 28, rake 1.4. The winner gets the pot and the
    // other's 8 less rake: 12 + 8 - 1.4 = 18.6; the loser loses his 8.
    //   EV1 = 0.3 * 18.6 - 0.7 * 8 = 5.58 - 5.6 = -0.02
    //   EV2 = 0.7 * 18.6 - 0.3 * 8 = 13.02 - 2.4 = 10.62   (sum 10.6 = pot less rake)
    // Overall EV1 = 0.6 * 5.7 + 0.4 * -0.02 = 3.42 - 0.008 = 3.412
    //         EV2 = 0.6 * 5.7 + 0.4 * 10.62 = 3.42 + 4.248 = 7.668
    // Nobody folds in this line: both fold equities 0.
    const LineVariant v = VariantSetUp("Check/Call", "Player1")
                              .pot(12)
                              .rake(5, 3)
                              .showdown(60, 0.5f, 0.5f)
                              .showdown(40, 0.3f, 0.7f, 8)
                              .evaluate();
    expectReaction(v, 1, "5.70", "5.70");
    expectReaction(v, 2, "-0.02", "10.62");
    expectOverall(v, "3.41", "7.67", "0.00", "0.00");
}

TEST(LineEVTest, CheckRaiseForPlayer2WithTheCallCapped) {
    // Turn, pot 20, Player2 checks intending to raise to 30; rake 5 %, cap 2.
    // Player1: checks back 50 %, bets 10 and folds to the raise 30 %, bets and calls 20 %.
    // Check-check: rake 1; Player1 (19) * 0.4 = 7.6, Player2 19 * 0.6 = 11.4.
    // Bet 10, raise, fold: the pot 20 + 10 = 30 goes to Player2, rake 1.5: EV2 = 28.5;
    //   Player1 loses his bet: EV1 = -10.
    // Bet, raise to 30, call: each puts in 30, final pot 80, rake 4 capped at 2.
    //   Winner: 20 + 30 - 2 = 48, loser -30.
    //   EV1 = 0.35 * 48 - 0.65 * 30 = 16.8 - 19.5 = -2.7
    //   EV2 = 0.65 * 48 - 0.35 * 30 = 31.2 - 10.5 = 20.7
    // Overall EV1 = 0.5 * 7.6 + 0.3 * -10 + 0.2 * -2.7 = 3.8 - 3 - 0.54 = 0.26
    //         EV2 = 0.5 * 11.4 + 0.3 * 28.5 + 0.2 * 20.7 = 5.7 + 8.55 + 4.14 = 18.39
    // Player2's check-raise folds Player1 in 30 %: FE_P2 = 0.3, FE_P1 = 0.
    const LineVariant v = VariantSetUp("Check/Raise", "Player2")
                              .pot(20)
                              .firstSize(30)
                              .rake(5, 2)
                              .showdown(50, 0.4f, 0.6f)
                              .fold(30, 10)
                              .showdown(20, 0.35f, 0.65f)
                              .evaluate();
    expectReaction(v, 1, "7.60", "11.40");
    expectReaction(v, 2, "-10.00", "28.50");
    expectReaction(v, 3, "-2.70", "20.70");
    expectOverall(v, "0.26", "18.39", "0.00", "0.30");
}

TEST(LineEVTest, BetFoldWithoutRake) {
    // River, pot 40, Player1 bets 20. Player2 folds 45 %, calls 45 %, raises 10 % (Player1
    // folds to the raise).
    // Fold: EV1 = 40, EV2 = 0.
    // Call: winner gets 40 + 20 = 60, loser -20.
    //   EV1 = 0.45 * 60 - 0.55 * 20 = 27 - 11 = 16; EV2 = 0.55 * 60 - 0.45 * 20 = 24.
    // Raise, fold: Player1 loses his 20; Player2 takes 40 + 20 = 60.
    // Overall EV1 = 0.45 * 40 + 0.45 * 16 + 0.1 * -20 = 18 + 7.2 - 2 = 23.2
    //         EV2 = 0 + 0.45 * 24 + 0.1 * 60 = 10.8 + 6 = 16.8
    // FE_P1 = 0.45 (fold to the bet); FE_P2 = 0.1 (the raise folds Player1).
    const LineVariant v = VariantSetUp("Bet/Fold", "Player1")
                              .pot(40)
                              .firstSize(20)
                              .fold(45)
                              .showdown(45, 0.45f, 0.55f)
                              .fold(10)
                              .evaluate();
    expectReaction(v, 1, "40.00", "0.00");
    expectReaction(v, 2, "16.00", "24.00");
    expectReaction(v, 3, "-20.00", "60.00");
    expectOverall(v, "23.20", "16.80", "0.45", "0.10");
}

TEST(LineEVTest, BetCallForPlayer2WithTheRaiseCapped) {
    // Flop, pot 10, Player2 bets 6; rake 5 %, cap 3. Player1 folds 40 %, calls 40 %, raises
    // to 40 20 % and Player2 calls.
    // Fold: Player2 takes 10 less rake 0.5: EV2 = 9.5.
    // Call: pot 22, rake 1.1; winner 10 + 6 - 1.1 = 14.9, loser -6.
    //   EV1 = 0.4 * 14.9 - 0.6 * 6 = 5.96 - 3.6 = 2.36; EV2 = 0.6 * 14.9 - 0.4 * 6 = 6.54.
    // Raise to 40, call: pot 10 + 40 + 40 = 90, rake 4.5 capped at 3; winner 10 + 40 - 3 = 47.
    //   EV1 = 0.7 * 47 - 0.3 * 40 = 32.9 - 12 = 20.9; EV2 = 0.3 * 47 - 0.7 * 40 = -13.9.
    // Overall EV1 = 0 + 0.4 * 2.36 + 0.2 * 20.9 = 0.944 + 4.18 = 5.124
    //         EV2 = 0.4 * 9.5 + 0.4 * 6.54 + 0.2 * -13.9 = 3.8 + 2.616 - 2.78 = 3.636
    // FE_P2 = 0.4 (Player1 folds to the bet); Player2 never folds here: FE_P1 = 0.
    const LineVariant v = VariantSetUp("Bet/Call", "Player2")
                              .pot(10)
                              .firstSize(6)
                              .rake(5, 3)
                              .fold(40)
                              .showdown(40, 0.4f, 0.6f)
                              .showdown(20, 0.7f, 0.3f, 40)
                              .evaluate();
    expectReaction(v, 1, "0.00", "9.50");
    expectReaction(v, 2, "2.36", "6.54");
    expectReaction(v, 3, "20.90", "-13.90");
    expectOverall(v, "5.12", "3.64", "0.00", "0.40");
}

TEST(LineEVTest, BetShipWithTheShorterStackCappingTheShoveAndRakeAtTheCap) {
    // Turn, pot 20, Player1 bets 15; stacks 80 and 60; rake 4 %, cap 5.
    // Player2 folds 30 %, calls 40 %, raises to 45 and folds to the shove 20 %, raises and
    // calls the shove 10 %.
    // Fold: rake 20 * 0.04 = 0.8: EV1 = 19.2.
    // Call: pot 50, rake 2; winner 20 + 15 - 2 = 33, loser -15.
    //   EV1 = 0.6 * 33 - 0.4 * 15 = 13.8; EV2 = 0.4 * 33 - 0.6 * 15 = 4.2.
    // Raise to 45, shove, fold: Player1 takes 20 + 45 = 65 less rake 2.6 = 62.4; Player2
    //   loses his 45.
    // Raise, shove, call: Player2 has only 60, so each adds 60: pot 140, rake 5.6 capped at 5.
    //   Each wins 20 + 60 - 5 = 75 or loses 60; at 50 % each: 37.5 - 30 = 7.5.
    // Overall EV1 = 0.3 * 19.2 + 0.4 * 13.8 + 0.2 * 62.4 + 0.1 * 7.5
    //             = 5.76 + 5.52 + 12.48 + 0.75 = 24.51
    //         EV2 = 0 + 0.4 * 4.2 + 0.2 * -45 + 0.1 * 7.5 = 1.68 - 9 + 0.75 = -6.57
    // FE_P1 = 0.3 + 0.2 = 0.5 (fold to the bet and to the shove); FE_P2 = 0.
    const LineVariant v = VariantSetUp::betShipOnTheTurn().evaluate();
    expectReaction(v, 1, "19.20", "0.00");
    expectReaction(v, 2, "13.80", "4.20");
    expectReaction(v, 3, "62.40", "-45.00");
    expectReaction(v, 4, "7.50", "7.50");
    expectOverall(v, "24.51", "-6.57", "0.50", "0.00");
}

TEST(LineEVTest, RaiseFoldPreflopFromTheSmallBlind) {
    // Preflop, Player1 posted 0.5, Player2 1: pot 1.5. Player1 raises to 3; no rake.
    // Player2 folds 50 %, calls 30 %, 3-bets 20 % and Player1 folds.
    // Fold: EV1 = 1.5.
    // Call: Player1 adds 2.5, Player2 adds 2. Winner Player1: 1.5 + 2 = 3.5; Player2:
    //   1.5 + 2.5 = 4.
    //   EV1 = 0.55 * 3.5 - 0.45 * 2.5 = 1.925 - 1.125 = 0.8; EV2 = 0.45 * 4 - 0.55 * 2 = 0.7.
    // 3-bet, fold: Player1 loses his added 2.5; Player2 takes 1.5 + 3 - 0.5 = 4.
    // Overall EV1 = 0.5 * 1.5 + 0.3 * 0.8 + 0.2 * -2.5 = 0.75 + 0.24 - 0.5 = 0.49
    //         EV2 = 0 + 0.3 * 0.7 + 0.2 * 4 = 0.21 + 0.8 = 1.01
    // FE_P1 = 0.5, FE_P2 = 0.2.
    const LineVariant v = VariantSetUp("Raise/Fold", "Player1")
                              .pot(1.5f)
                              .lastInvestments(0.5f, 1)
                              .stacks(99.5f, 99)
                              .firstSize(3)
                              .fold(50)
                              .showdown(30, 0.55f, 0.45f)
                              .fold(20)
                              .evaluate();
    expectReaction(v, 1, "1.50", "0.00");
    expectReaction(v, 2, "0.80", "0.70");
    expectReaction(v, 3, "-2.50", "4.00");
    expectOverall(v, "0.49", "1.01", "0.50", "0.20");
}

TEST(LineEVTest, RaiseCallOnTheFlopForPlayer2WithTheThreeBetCapped) {
    // Flop: Player1 bet 5 into 10, pot now 15 (L1 = 5); Player2 raises to 15. Rake 5 %, cap 4.
    // Player1 folds 40 %, calls 40 %, 3-bets to 45 20 % and Player2 calls.
    // Fold: Player2 takes 15 less rake 0.75: 14.25.
    // Call: Player1 adds 10, Player2 15: pot 40, rake 2.
    //   Player1 wins 15 + 15 - 2 = 28, Player2 wins 15 + 10 - 2 = 23.
    //   EV1 = 0.35 * 28 - 0.65 * 10 = 9.8 - 6.5 = 3.3; EV2 = 0.65 * 23 - 0.35 * 15 = 9.7.
    // 3-bet to 45, call: Player1 adds 40, Player2 45: pot 100, rake 5 capped at 4.
    //   Player1 wins 15 + 45 - 4 = 56, Player2 wins 15 + 40 - 4 = 51.
    //   EV1 = 0.6 * 56 - 0.4 * 40 = 17.6; EV2 = 0.4 * 51 - 0.6 * 45 = 20.4 - 27 = -6.6.
    // Overall EV1 = 0 + 0.4 * 3.3 + 0.2 * 17.6 = 1.32 + 3.52 = 4.84
    //         EV2 = 0.4 * 14.25 + 0.4 * 9.7 + 0.2 * -6.6 = 5.7 + 3.88 - 1.32 = 8.26
    // FE_P2 = 0.4, FE_P1 = 0.
    const LineVariant v = VariantSetUp("Raise/Call", "Player2")
                              .pot(15)
                              .lastInvestments(5, 0)
                              .firstSize(15)
                              .rake(5, 4)
                              .fold(40)
                              .showdown(40, 0.35f, 0.65f)
                              .showdown(20, 0.6f, 0.4f, 45)
                              .evaluate();
    expectReaction(v, 1, "0.00", "14.25");
    expectReaction(v, 2, "3.30", "9.70");
    expectReaction(v, 3, "17.60", "-6.60");
    expectOverall(v, "4.84", "8.26", "0.00", "0.40");
}

TEST(LineEVTest, RaiseShipPreflopWithEqualTotalsAndRakeAtTheCap) {
    // Preflop, posts 0.5 and 1 (pot 1.5), stacks left 99.5 and 99 (both 100 in total).
    // Player1 raises to 3; rake 4 %, cap 3. Player2 folds 40 %, calls 30 %, 3-bets to 9 and
    // folds to the shove 20 %, 3-bets and calls the shove 10 %.
    // Fold: rake 1.5 * 0.04 = 0.06: EV1 = 1.44.
    // Call: adds 2.5 and 2, pot 6, rake 0.24. Player1 wins 1.5 + 2 - 0.24 = 3.26, Player2
    //   1.5 + 2.5 - 0.24 = 3.76.
    //   EV1 = 0.6 * 3.26 - 0.4 * 2.5 = 1.956 - 1 = 0.956;
    //   EV2 = 0.4 * 3.76 - 0.6 * 2 = 1.504 - 1.2 = 0.304.
    // 3-bet to 9, shove, fold: Player1 takes 1.5 + 9 - 1 = 9.5 less rake 0.38 = 9.12;
    //   Player2 loses his added 8.
    // 3-bet, shove, call: both all in, adding 99.5 and 99: pot 200, rake 8 capped at 3.
    //   Player1 wins 1.5 + 99 - 3 = 97.5 or loses 99.5: 0.4 * 97.5 - 0.6 * 99.5 = -20.7.
    //   Player2 wins 1.5 + 99.5 - 3 = 98 or loses 99: 0.6 * 98 - 0.4 * 99 = 19.2.
    // Overall EV1 = 0.4 * 1.44 + 0.3 * 0.956 + 0.2 * 9.12 + 0.1 * -20.7
    //             = 0.576 + 0.2868 + 1.824 - 2.07 = 0.6168
    //         EV2 = 0 + 0.3 * 0.304 + 0.2 * -8 + 0.1 * 19.2 = 0.0912 - 1.6 + 1.92 = 0.4112
    // FE_P1 = 0.4 + 0.2 = 0.6; FE_P2 = 0.
    const LineVariant v = VariantSetUp("Raise/Ship", "Player1")
                              .pot(1.5f)
                              .lastInvestments(0.5f, 1)
                              .stacks(99.5f, 99)
                              .firstSize(3)
                              .rake(4, 3)
                              .fold(40)
                              .showdown(30, 0.6f, 0.4f)
                              .fold(20, 9)
                              .showdown(10, 0.4f, 0.6f)
                              .evaluate();
    expectReaction(v, 1, "1.44", "0.00");
    expectReaction(v, 2, "0.96", "0.30");
    expectReaction(v, 3, "9.12", "-8.00");
    expectReaction(v, 4, "-20.70", "19.20");
    expectOverall(v, "0.62", "0.41", "0.60", "0.00");
}

TEST(LineEVTest, ThreeBetFoldPreflopForPlayer2) {
    // Preflop: Player2 posted 1, Player1 raised to 2.5, a folded small blind left 0.5: pot 4.
    // Player2 3-bets to 10; no rake. Player1 folds 60 %, calls 20 %, 4-bets 20 % and Player2
    // folds.
    // Fold: EV2 = 4.
    // Call: Player1 adds 7.5, Player2 9. Player1 wins 4 + 9 = 13, Player2 4 + 7.5 = 11.5.
    //   EV1 = 0.4 * 13 - 0.6 * 7.5 = 5.2 - 4.5 = 0.7; EV2 = 0.6 * 11.5 - 0.4 * 9 = 3.3.
    // 4-bet, fold: Player2 loses his added 9; Player1 takes 4 + 10 - 1 = 13.
    // Overall EV1 = 0 + 0.2 * 0.7 + 0.2 * 13 = 0.14 + 2.6 = 2.74
    //         EV2 = 0.6 * 4 + 0.2 * 3.3 + 0.2 * -9 = 2.4 + 0.66 - 1.8 = 1.26
    // FE_P2 = 0.6 (Player1 folds to the 3-bet), FE_P1 = 0.2 (the 4-bet folds Player2).
    const LineVariant v = VariantSetUp("3-Bet/Fold", "Player2")
                              .pot(4)
                              .lastInvestments(2.5f, 1)
                              .stacks(97.5f, 99)
                              .firstSize(10)
                              .fold(60)
                              .showdown(20, 0.4f, 0.6f)
                              .fold(20)
                              .evaluate();
    expectReaction(v, 1, "0.00", "4.00");
    expectReaction(v, 2, "0.70", "3.30");
    expectReaction(v, 3, "13.00", "-9.00");
    expectOverall(v, "2.74", "1.26", "0.20", "0.60");
}

TEST(LineEVTest, ThreeBetCallOnTheFlopWithRakeAtTheCap) {
    // Flop: pot 8, Player1 bet 4, Player2 raised to 12: pot 24. Player1 3-bets to 30;
    // rake 3 %, cap 2. Player2 folds 30 %, calls 50 %, 4-bets to 70 20 % and Player1 calls.
    // Fold: rake 0.72: EV1 = 23.28.
    // Call: Player1 adds 26, Player2 18; pot 68, rake 2.04 capped at 2.
    //   Player1 wins 24 + 18 - 2 = 40, Player2 24 + 26 - 2 = 48.
    //   EV1 = 0.55 * 40 - 0.45 * 26 = 22 - 11.7 = 10.3; EV2 = 0.45 * 48 - 0.55 * 18 = 11.7.
    // 4-bet to 70, call: Player1 adds 66, Player2 58; pot 148, rake capped at 2.
    //   Player1 wins 24 + 58 - 2 = 80, Player2 24 + 66 - 2 = 88.
    //   EV1 = 0.3 * 80 - 0.7 * 66 = 24 - 46.2 = -22.2; EV2 = 0.7 * 88 - 0.3 * 58 = 44.2.
    // Overall EV1 = 0.3 * 23.28 + 0.5 * 10.3 + 0.2 * -22.2 = 6.984 + 5.15 - 4.44 = 7.694
    //         EV2 = 0 + 0.5 * 11.7 + 0.2 * 44.2 = 5.85 + 8.84 = 14.69
    // FE_P1 = 0.3, FE_P2 = 0.
    const LineVariant v = VariantSetUp("3-Bet/Call", "Player1")
                              .pot(24)
                              .lastInvestments(4, 12)
                              .firstSize(30)
                              .rake(3, 2)
                              .fold(30)
                              .showdown(50, 0.55f, 0.45f)
                              .showdown(20, 0.3f, 0.7f, 70)
                              .evaluate();
    expectReaction(v, 1, "23.28", "0.00");
    expectReaction(v, 2, "10.30", "11.70");
    expectReaction(v, 3, "-22.20", "44.20");
    expectOverall(v, "7.69", "14.69", "0.30", "0.00");
}

TEST(LineEVTest, ThreeBetShipOnTheTurnForPlayer2WithPlayer1Shorter) {
    // Turn: pot 30, Player2 bet 10, Player1 raised to 30: pot 70. Player2 3-bets to 75.
    // Stacks left: Player1 120 (150 in all), Player2 200. No rake. Each reaction 25 %.
    // Fold: EV2 = 70.
    // Call: Player1 adds 45, Player2 65. Player1 wins 70 + 65 = 135, Player2 70 + 45 = 115.
    //   EV1 = 0.4 * 135 - 0.6 * 45 = 54 - 27 = 27; EV2 = 0.6 * 115 - 0.4 * 65 = 43.
    // 4-bet to 140, shove, fold: Player1 loses his added 110; Player2 takes
    //   70 + 140 - 30 = 180.
    // 4-bet, shove, call: Player1 can add his 120 (to 150 in all); Player2 matches with
    //   150 - 10 = 140. Player1 wins 70 + 140 = 210 or loses 120: 0.6 * 210 - 0.4 * 120 = 78.
    //   Player2 wins 70 + 120 = 190 or loses 140: 0.4 * 190 - 0.6 * 140 = 76 - 84 = -8.
    // Overall EV1 = 0.25 * (0 + 27 - 110 + 78) = -1.25
    //         EV2 = 0.25 * (70 + 43 + 180 - 8) = 71.25
    // FE_P2 = 0.25 + 0.25 = 0.5; FE_P1 = 0.
    const LineVariant v = VariantSetUp("3-Bet/Ship", "Player2")
                              .pot(70)
                              .lastInvestments(30, 10)
                              .stacks(120, 200)
                              .firstSize(75)
                              .fold(25)
                              .showdown(25, 0.4f, 0.6f)
                              .fold(25, 140)
                              .showdown(25, 0.6f, 0.4f)
                              .evaluate();
    expectReaction(v, 1, "0.00", "70.00");
    expectReaction(v, 2, "27.00", "43.00");
    expectReaction(v, 3, "-110.00", "180.00");
    expectReaction(v, 4, "78.00", "-8.00");
    expectOverall(v, "-1.25", "71.25", "0.00", "0.50");
}

TEST(LineEVTest, FourBetFoldPreflopWithEveryPotAboveTheCap) {
    // Preflop: Player1 raised to 3, Player2 3-bet to 9, dead 0.5: pot 12.5. Player1 4-bets
    // to 22; rake 5 %, cap 0.5. Player2 folds 50 %, calls 30 %, 5-bets 20 % (Player1 folds).
    // Fold: rake 0.625 capped at 0.5: EV1 = 12.
    // Call: Player1 adds 19, Player2 13; pot 44.5, rake 0.5.
    //   Player1 wins 12.5 + 13 - 0.5 = 25, Player2 12.5 + 19 - 0.5 = 31.
    //   EV1 = 0.45 * 25 - 0.55 * 19 = 11.25 - 10.45 = 0.8; EV2 = 0.55 * 31 - 0.45 * 13 = 11.2.
    // 5-bet, fold: Player1 loses his added 19; Player2 takes 12.5 + 22 - 3 = 31.5 less 0.5.
    // Overall EV1 = 0.5 * 12 + 0.3 * 0.8 + 0.2 * -19 = 6 + 0.24 - 3.8 = 2.44
    //         EV2 = 0 + 0.3 * 11.2 + 0.2 * 31 = 3.36 + 6.2 = 9.56
    // FE_P1 = 0.5, FE_P2 = 0.2.
    const LineVariant v = VariantSetUp("4-Bet/Fold", "Player1")
                              .pot(12.5f)
                              .lastInvestments(3, 9)
                              .stacks(97, 91)
                              .firstSize(22)
                              .rake(5, 0.5)
                              .fold(50)
                              .showdown(30, 0.45f, 0.55f)
                              .fold(20)
                              .evaluate();
    expectReaction(v, 1, "12.00", "0.00");
    expectReaction(v, 2, "0.80", "11.20");
    expectReaction(v, 3, "-19.00", "31.00");
    expectOverall(v, "2.44", "9.56", "0.50", "0.20");
}

TEST(LineEVTest, FourBetCallOnTheFlopForPlayer2) {
    // Flop: pot 6, Player2 raised to 8, Player1 3-bet to 20: pot 34. Player2 4-bets to 45;
    // no rake. Player1 folds 20 %, calls 60 %, 5-bets to 90 20 % and Player2 calls.
    // Fold: EV2 = 34.
    // Call: Player1 adds 25, Player2 37. Player1 wins 34 + 37 = 71, Player2 34 + 25 = 59.
    //   EV1 = 0.3 * 71 - 0.7 * 25 = 21.3 - 17.5 = 3.8; EV2 = 0.7 * 59 - 0.3 * 37 = 30.2.
    // 5-bet to 90, call: Player1 adds 70, Player2 82. Player1 wins 34 + 82 = 116, Player2
    //   34 + 70 = 104. EV1 = 0.65 * 116 - 0.35 * 70 = 75.4 - 24.5 = 50.9;
    //   EV2 = 0.35 * 104 - 0.65 * 82 = 36.4 - 53.3 = -16.9.
    // Overall EV1 = 0 + 0.6 * 3.8 + 0.2 * 50.9 = 2.28 + 10.18 = 12.46
    //         EV2 = 0.2 * 34 + 0.6 * 30.2 + 0.2 * -16.9 = 6.8 + 18.12 - 3.38 = 21.54
    // FE_P2 = 0.2, FE_P1 = 0.
    const LineVariant v = VariantSetUp("4-Bet/Call", "Player2")
                              .pot(34)
                              .lastInvestments(20, 8)
                              .firstSize(45)
                              .fold(20)
                              .showdown(60, 0.3f, 0.7f)
                              .showdown(20, 0.65f, 0.35f, 90)
                              .evaluate();
    expectReaction(v, 1, "0.00", "34.00");
    expectReaction(v, 2, "3.80", "30.20");
    expectReaction(v, 3, "50.90", "-16.90");
    expectOverall(v, "12.46", "21.54", "0.00", "0.20");
}

TEST(LineEVTest, FourBetShipPreflopWithPlayer1AllInShort) {
    // Preflop: Player1 raised to 3, Player2 3-bet to 9, dead 0.5: pot 12.5. Player1 4-bets to
    // 22. Stacks left: Player1 60 (63 in all), Player2 91 (100). No rake.
    // Player2 folds 40 %, calls 20 %, 5-bets to 50 and folds to the shove 20 %, 5-bets and
    // calls 20 %.
    // Fold: EV1 = 12.5.
    // Call: Player1 adds 19, Player2 13. Player1 wins 12.5 + 13 = 25.5, Player2 31.5.
    //   EV1 = 0.5 * 25.5 - 0.5 * 19 = 3.25; EV2 = 0.5 * 31.5 - 0.5 * 13 = 9.25.
    // 5-bet to 50, shove, fold: Player1 takes 12.5 + 50 - 9 = 53.5; Player2 loses 41.
    // 5-bet, shove, call: Player1 adds his 60 (63 in all); Player2 matches: 63 - 9 = 54.
    //   Player1 wins 12.5 + 54 = 66.5 or loses 60: 0.3 * 66.5 - 0.7 * 60 = 19.95 - 42 = -22.05
    //   Player2 wins 12.5 + 60 = 72.5 or loses 54: 0.7 * 72.5 - 0.3 * 54 = 50.75 - 16.2 = 34.55
    // Overall EV1 = 0.4 * 12.5 + 0.2 * 3.25 + 0.2 * 53.5 + 0.2 * -22.05
    //             = 5 + 0.65 + 10.7 - 4.41 = 11.94
    //         EV2 = 0 + 0.2 * 9.25 + 0.2 * -41 + 0.2 * 34.55 = 1.85 - 8.2 + 6.91 = 0.56
    // FE_P1 = 0.4 + 0.2 = 0.6; FE_P2 = 0.
    const LineVariant v = VariantSetUp("4-Bet/Ship", "Player1")
                              .pot(12.5f)
                              .lastInvestments(3, 9)
                              .stacks(60, 91)
                              .firstSize(22)
                              .fold(40)
                              .showdown(20, 0.5f, 0.5f)
                              .fold(20, 50)
                              .showdown(20, 0.3f, 0.7f)
                              .evaluate();
    expectReaction(v, 1, "12.50", "0.00");
    expectReaction(v, 2, "3.25", "9.25");
    expectReaction(v, 3, "53.50", "-41.00");
    expectReaction(v, 4, "-22.05", "34.55");
    expectOverall(v, "11.94", "0.56", "0.60", "0.00");
}

TEST(LineEVTest, FiveBetFoldOnTheRiverForPlayer2WithRakeAtTheCap) {
    // River: pot 20, Player2 3-bet to 30, Player1 4-bet to 70: pot 120. Player2 5-bets to
    // 150; stacks 200 each; rake 5 %, cap 3 (every pot here is above 60, so always 3).
    // Player1 folds 10 %, calls 60 %, 6-bets 30 % and Player2 folds.
    // Fold: EV2 = 120 - 3 = 117.
    // Call: Player1 adds 80, Player2 120; Player1 wins 120 + 120 - 3 = 237, Player2
    //   120 + 80 - 3 = 197. EV1 = 0.25 * 237 - 0.75 * 80 = 59.25 - 60 = -0.75;
    //   EV2 = 0.75 * 197 - 0.25 * 120 = 147.75 - 30 = 117.75.
    // 6-bet, fold: Player2 loses his added 120; Player1 takes 120 + 150 - 30 = 240 less 3.
    // Overall EV1 = 0 + 0.6 * -0.75 + 0.3 * 237 = -0.45 + 71.1 = 70.65
    //         EV2 = 0.1 * 117 + 0.6 * 117.75 + 0.3 * -120 = 11.7 + 70.65 - 36 = 46.35
    // FE_P2 = 0.1, FE_P1 = 0.3.
    const LineVariant v = VariantSetUp("5-Bet/Fold", "Player2")
                              .pot(120)
                              .lastInvestments(70, 30)
                              .stacks(130, 170)
                              .firstSize(150)
                              .rake(5, 3)
                              .fold(10)
                              .showdown(60, 0.25f, 0.75f)
                              .fold(30)
                              .evaluate();
    expectReaction(v, 1, "0.00", "117.00");
    expectReaction(v, 2, "-0.75", "117.75");
    expectReaction(v, 3, "237.00", "-120.00");
    expectOverall(v, "70.65", "46.35", "0.30", "0.10");
}

TEST(LineEVTest, FiveBetCallPreflop) {
    // Preflop: Player1 3-bet to 9, Player2 4-bet to 22, dead 0.5: pot 31.5. Player1 5-bets to
    // 50; stacks 150 each; no rake. Player2 folds 30 %, calls 30 %, 6-bets to 100 40 % and
    // Player1 calls.
    // Fold: EV1 = 31.5.
    // Call: Player1 adds 41, Player2 28. Player1 wins 31.5 + 28 = 59.5, Player2 72.5.
    //   EV1 = 0.6 * 59.5 - 0.4 * 41 = 35.7 - 16.4 = 19.3; EV2 = 0.4 * 72.5 - 0.6 * 28 = 12.2.
    // 6-bet to 100, call: Player1 adds 91, Player2 78. Player1 wins 31.5 + 78 = 109.5,
    //   Player2 122.5. EV1 = 0.4 * 109.5 - 0.6 * 91 = 43.8 - 54.6 = -10.8;
    //   EV2 = 0.6 * 122.5 - 0.4 * 78 = 73.5 - 31.2 = 42.3.
    // Overall EV1 = 0.3 * 31.5 + 0.3 * 19.3 + 0.4 * -10.8 = 9.45 + 5.79 - 4.32 = 10.92
    //         EV2 = 0 + 0.3 * 12.2 + 0.4 * 42.3 = 3.66 + 16.92 = 20.58
    // FE_P1 = 0.3, FE_P2 = 0.
    const LineVariant v = VariantSetUp("5-Bet/Call", "Player1")
                              .pot(31.5f)
                              .lastInvestments(9, 22)
                              .stacks(150, 150)
                              .firstSize(50)
                              .fold(30)
                              .showdown(30, 0.6f, 0.4f)
                              .showdown(40, 0.4f, 0.6f, 100)
                              .evaluate();
    expectReaction(v, 1, "31.50", "0.00");
    expectReaction(v, 2, "19.30", "12.20");
    expectReaction(v, 3, "-10.80", "42.30");
    expectOverall(v, "10.92", "20.58", "0.30", "0.00");
}

TEST(LineEVTest, FiveBetShipOnTheFlopForPlayer2WithPlayer2AllInShort) {
    // Flop: pot 10, Player2 3-bet to 15, Player1 4-bet to 40: pot 65. Player2 5-bets to 90.
    // Stacks left: Player1 260 (300 in all), Player2 185 (200). Rake 5 %, cap 5.
    // Player1 folds 20 %, calls 30 %, 6-bets to 150 and folds to the shove 30 %, 6-bets and
    // calls 20 %.
    // Fold: rake 3.25: EV2 = 61.75.
    // Call: Player1 adds 50, Player2 75; pot 190, rake 9.5 capped at 5. Player1 wins
    //   65 + 75 - 5 = 135, Player2 65 + 50 - 5 = 110. EV1 = 0.4 * 135 - 0.6 * 50 = 24;
    //   EV2 = 0.6 * 110 - 0.4 * 75 = 36.
    // 6-bet to 150, shove, fold: Player1 loses his added 110; Player2 takes
    //   65 + 150 - 40 = 175 less 5 = 170.
    // 6-bet, shove, call: Player2 adds his 185 (200 in all); Player1 matches 200 - 40 = 160.
    //   Pot 410, rake 5. Player1 wins 65 + 185 - 5 = 245 or loses 160:
    //   0.45 * 245 - 0.55 * 160 = 110.25 - 88 = 22.25.
    //   Player2 wins 65 + 160 - 5 = 220 or loses 185: 0.55 * 220 - 0.45 * 185 = 121 - 83.25
    //   = 37.75.
    // Overall EV1 = 0 + 0.3 * 24 + 0.3 * -110 + 0.2 * 22.25 = 7.2 - 33 + 4.45 = -21.35
    //         EV2 = 0.2 * 61.75 + 0.3 * 36 + 0.3 * 170 + 0.2 * 37.75
    //             = 12.35 + 10.8 + 51 + 7.55 = 81.7
    // FE_P2 = 0.2 + 0.3 = 0.5; FE_P1 = 0.
    const LineVariant v = VariantSetUp("5-Bet/Ship", "Player2")
                              .pot(65)
                              .lastInvestments(40, 15)
                              .stacks(260, 185)
                              .firstSize(90)
                              .rake(5, 5)
                              .fold(20)
                              .showdown(30, 0.4f, 0.6f)
                              .fold(30, 150)
                              .showdown(20, 0.45f, 0.55f)
                              .evaluate();
    expectReaction(v, 1, "0.00", "61.75");
    expectReaction(v, 2, "24.00", "36.00");
    expectReaction(v, 3, "-110.00", "170.00");
    expectReaction(v, 4, "22.25", "37.75");
    expectOverall(v, "-21.35", "81.70", "0.00", "0.50");
}

TEST(LineEVTest, SixBetFoldPreflop) {
    // Preflop: Player1 4-bet to 22, Player2 5-bet to 50, dead 0.5: pot 72.5. Player1 6-bets
    // to 110; no rake. Player2 folds 70 %, calls 20 %, 7-bets 10 % and Player1 folds.
    // Fold: EV1 = 72.5.
    // Call: Player1 adds 88, Player2 60. Player1 wins 72.5 + 60 = 132.5, Player2 160.5.
    //   EV1 = 0.5 * 132.5 - 0.5 * 88 = 22.25; EV2 = 0.5 * 160.5 - 0.5 * 60 = 50.25.
    // 7-bet, fold: Player1 loses his added 88; Player2 takes 72.5 + 110 - 22 = 160.5.
    // Overall EV1 = 0.7 * 72.5 + 0.2 * 22.25 + 0.1 * -88 = 50.75 + 4.45 - 8.8 = 46.4
    //         EV2 = 0 + 0.2 * 50.25 + 0.1 * 160.5 = 10.05 + 16.05 = 26.1
    // FE_P1 = 0.7, FE_P2 = 0.1.
    const LineVariant v = VariantSetUp("6-Bet/Fold", "Player1")
                              .pot(72.5f)
                              .lastInvestments(22, 50)
                              .stacks(178, 150)
                              .firstSize(110)
                              .fold(70)
                              .showdown(20, 0.5f, 0.5f)
                              .fold(10)
                              .evaluate();
    expectReaction(v, 1, "72.50", "0.00");
    expectReaction(v, 2, "22.25", "50.25");
    expectReaction(v, 3, "-88.00", "160.50");
    expectOverall(v, "46.40", "26.10", "0.70", "0.10");
}

TEST(LineEVTest, SixBetCallOnTheTurnForPlayer2WithRakeBelowTheCap) {
    // Turn: pot 5, Player2 4-bet to 25, Player1 5-bet to 60: pot 90. Player2 6-bets to 120;
    // stacks 300 each; rake 1 %, cap 10. Player1 folds 50 %, calls 30 %, 7-bets to 200 20 %
    // and Player2 calls.
    // Fold: rake 0.9: EV2 = 89.1.
    // Call: Player1 adds 60, Player2 95; pot 245, rake 2.45. Player1 wins
    //   90 + 95 - 2.45 = 182.55, Player2 90 + 60 - 2.45 = 147.55.
    //   EV1 = 0.6 * 182.55 - 0.4 * 60 = 109.53 - 24 = 85.53;
    //   EV2 = 0.4 * 147.55 - 0.6 * 95 = 59.02 - 57 = 2.02.
    // 7-bet to 200, call: Player1 adds 140, Player2 175; pot 405, rake 4.05. Player1 wins
    //   90 + 175 - 4.05 = 260.95, Player2 90 + 140 - 4.05 = 225.95.
    //   EV1 = 0.6 * 260.95 - 0.4 * 140 = 156.57 - 56 = 100.57;
    //   EV2 = 0.4 * 225.95 - 0.6 * 175 = 90.38 - 105 = -14.62.
    // Overall EV1 = 0 + 0.3 * 85.53 + 0.2 * 100.57 = 25.659 + 20.114 = 45.773
    //         EV2 = 0.5 * 89.1 + 0.3 * 2.02 + 0.2 * -14.62 = 44.55 + 0.606 - 2.924 = 42.232
    // FE_P2 = 0.5, FE_P1 = 0.
    const LineVariant v = VariantSetUp("6-Bet/Call", "Player2")
                              .pot(90)
                              .lastInvestments(60, 25)
                              .stacks(300, 300)
                              .firstSize(120)
                              .rake(1, 10)
                              .fold(50)
                              .showdown(30, 0.6f, 0.4f)
                              .showdown(20, 0.6f, 0.4f, 200)
                              .evaluate();
    expectReaction(v, 1, "0.00", "89.10");
    expectReaction(v, 2, "85.53", "2.02");
    expectReaction(v, 3, "100.57", "-14.62");
    expectOverall(v, "45.77", "42.23", "0.00", "0.50");
}

TEST(LineEVTest, SixBetShipOnTheRiverWithEqualTotals) {
    // River: Player1 4-bet to 22, Player2 5-bet to 50, pot 72.5. Player1 6-bets to 110.
    // Stacks left 178 and 150: 200 in all for both. No rake. Each reaction 25 %.
    // Fold: EV1 = 72.5.
    // Call: Player1 adds 88, Player2 60; Player1 wins 132.5, Player2 160.5.
    //   EV1 = 0.6 * 132.5 - 0.4 * 88 = 79.5 - 35.2 = 44.3;
    //   EV2 = 0.4 * 160.5 - 0.6 * 60 = 64.2 - 36 = 28.2.
    // 7-bet to 170, shove, fold: Player1 takes 72.5 + 170 - 50 = 192.5; Player2 loses 120.
    // 7-bet, shove, call: both add their whole stacks, 178 and 150. Player1 wins
    //   72.5 + 150 = 222.5 or loses 178: 0.5 * 222.5 - 0.5 * 178 = 22.25; Player2 wins
    //   72.5 + 178 = 250.5 or loses 150: 0.5 * 250.5 - 0.5 * 150 = 50.25.
    // Overall EV1 = 0.25 * (72.5 + 44.3 + 192.5 + 22.25) = 0.25 * 331.55 = 82.8875
    //         EV2 = 0.25 * (0 + 28.2 - 120 + 50.25) = 0.25 * -41.55 = -10.3875
    // FE_P1 = 0.5, FE_P2 = 0.
    const LineVariant v = VariantSetUp("6-Bet/Ship", "Player1")
                              .pot(72.5f)
                              .lastInvestments(22, 50)
                              .stacks(178, 150)
                              .firstSize(110)
                              .fold(10)
                              .showdown(10, 0.6f, 0.4f)
                              .fold(10, 170)
                              .showdown(10, 0.5f, 0.5f)
                              .evaluate();
    expectReaction(v, 1, "72.50", "0.00");
    expectReaction(v, 2, "44.30", "28.20");
    expectReaction(v, 3, "192.50", "-120.00");
    expectReaction(v, 4, "22.25", "50.25");
    expectOverall(v, "82.89", "-10.39", "0.50", "0.00");
}

TEST(LineEVTest, SevenBetFoldOnTheFlopForPlayer2WithRakeAtTheCap) {
    // Flop: pot 10, Player2 5-bet to 40, Player1 6-bet to 90: pot 140. Player2 7-bets to 200;
    // stacks 410 and 460 (500 in all); rake 5 %, cap 3 (always reached here).
    // Player1 folds 35 %, calls 35 %, 8-bets 30 % and Player2 folds.
    // Fold: EV2 = 140 - 3 = 137.
    // Call: Player1 adds 110, Player2 160. Player1 wins 140 + 160 - 3 = 297, Player2
    //   140 + 110 - 3 = 247. EV1 = 0.2 * 297 - 0.8 * 110 = 59.4 - 88 = -28.6;
    //   EV2 = 0.8 * 247 - 0.2 * 160 = 197.6 - 32 = 165.6.
    // 8-bet, fold: Player2 loses his added 160; Player1 takes 140 + 200 - 40 = 300 less 3.
    // Overall EV1 = 0 + 0.35 * -28.6 + 0.3 * 297 = -10.01 + 89.1 = 79.09
    //         EV2 = 0.35 * 137 + 0.35 * 165.6 + 0.3 * -160 = 47.95 + 57.96 - 48 = 57.91
    // FE_P2 = 0.35, FE_P1 = 0.3.
    const LineVariant v = VariantSetUp("7-Bet/Fold", "Player2")
                              .pot(140)
                              .lastInvestments(90, 40)
                              .stacks(410, 460)
                              .firstSize(200)
                              .rake(5, 3)
                              .fold(35)
                              .showdown(35, 0.2f, 0.8f)
                              .fold(30)
                              .evaluate();
    expectReaction(v, 1, "0.00", "137.00");
    expectReaction(v, 2, "-28.60", "165.60");
    expectReaction(v, 3, "297.00", "-160.00");
    expectOverall(v, "79.09", "57.91", "0.30", "0.35");
}

TEST(LineEVTest, SevenBetCallPreflopWithAZeroCap) {
    // Preflop: Player1 5-bet to 50, Player2 6-bet to 110, dead 0.5: pot 160.5. Player1
    // 7-bets to 240; stacks 450 and 390. Rake 5 % but cap 0: no rake at all.
    // Player2 folds 25 %, calls 50 %, 8-bets to 400 25 % and Player1 calls.
    // Fold: EV1 = 160.5.
    // Call: Player1 adds 190, Player2 130. Player1 wins 160.5 + 130 = 290.5, Player2
    //   160.5 + 190 = 350.5. EV1 = 0.5 * 290.5 - 0.5 * 190 = 50.25;
    //   EV2 = 0.5 * 350.5 - 0.5 * 130 = 110.25.
    // 8-bet to 400, call: Player1 adds 350, Player2 290. Player1 wins 450.5, Player2 510.5.
    //   EV1 = 0.4 * 450.5 - 0.6 * 350 = 180.2 - 210 = -29.8;
    //   EV2 = 0.6 * 510.5 - 0.4 * 290 = 306.3 - 116 = 190.3.
    // Overall EV1 = 0.25 * 160.5 + 0.5 * 50.25 + 0.25 * -29.8 = 40.125 + 25.125 - 7.45 = 57.8
    //         EV2 = 0 + 0.5 * 110.25 + 0.25 * 190.3 = 55.125 + 47.575 = 102.7
    // FE_P1 = 0.25, FE_P2 = 0.
    const LineVariant v = VariantSetUp("7-Bet/Call", "Player1")
                              .pot(160.5f)
                              .lastInvestments(50, 110)
                              .stacks(450, 390)
                              .firstSize(240)
                              .rake(5, 0)
                              .fold(25)
                              .showdown(50, 0.5f, 0.5f)
                              .showdown(25, 0.4f, 0.6f, 400)
                              .evaluate();
    expectReaction(v, 1, "160.50", "0.00");
    expectReaction(v, 2, "50.25", "110.25");
    expectReaction(v, 3, "-29.80", "190.30");
    expectOverall(v, "57.80", "102.70", "0.25", "0.00");
    EXPECT_EQ(v.actions[3].explanation.find("Rake"), std::string::npos);
}

TEST(LineEVTest, SevenBetShipOnTheTurnForPlayer2WithPlayer1AllInShort) {
    // Turn: pot 10, Player2 5-bet to 40, Player1 6-bet to 90: pot 140. Player2 7-bets to 200.
    // Stacks left: Player1 260 (350 in all), Player2 460 (500). Rake 5 %, cap 3.
    // Player1 folds 40 %, calls 20 %, 8-bets to 300 and folds to the shove 20 %, 8-bets and
    // calls 20 %.
    // Fold: EV2 = 140 - 3 = 137.
    // Call: Player1 adds 110, Player2 160; Player1 wins 297, Player2 247 (rake 3).
    //   EV1 = 0.3 * 297 - 0.7 * 110 = 89.1 - 77 = 12.1; EV2 = 0.7 * 247 - 0.3 * 160 = 124.9.
    // 8-bet to 300, shove, fold: Player1 loses his added 210; Player2 takes
    //   140 + 300 - 90 = 350 less 3 = 347.
    // 8-bet, shove, call: Player1 adds his 260 (350 in all); Player2 matches 350 - 40 = 310.
    //   Player1 wins 140 + 310 - 3 = 447 or loses 260: 0.55 * 447 - 0.45 * 260
    //   = 245.85 - 117 = 128.85. Player2 wins 140 + 260 - 3 = 397 or loses 310:
    //   0.45 * 397 - 0.55 * 310 = 178.65 - 170.5 = 8.15.
    // Overall EV1 = 0 + 0.2 * 12.1 + 0.2 * -210 + 0.2 * 128.85 = 2.42 - 42 + 25.77 = -13.81
    //         EV2 = 0.4 * 137 + 0.2 * 124.9 + 0.2 * 347 + 0.2 * 8.15
    //             = 54.8 + 24.98 + 69.4 + 1.63 = 150.81
    // FE_P2 = 0.4 + 0.2 = 0.6; FE_P1 = 0.
    const LineVariant v = VariantSetUp("7-Bet/Ship", "Player2")
                              .pot(140)
                              .lastInvestments(90, 40)
                              .stacks(260, 460)
                              .firstSize(200)
                              .rake(5, 3)
                              .fold(40)
                              .showdown(20, 0.3f, 0.7f)
                              .fold(20, 300)
                              .showdown(20, 0.55f, 0.45f)
                              .evaluate();
    expectReaction(v, 1, "0.00", "137.00");
    expectReaction(v, 2, "12.10", "124.90");
    expectReaction(v, 3, "-210.00", "347.00");
    expectReaction(v, 4, "128.85", "8.15");
    expectOverall(v, "-13.81", "150.81", "0.00", "0.60");
}

} // namespace
