// The EVs are defined by one sequence of single-precision operations. These tests redo the
// sequence step by step, each intermediate forced through a volatile float so that it is
// rounded to float exactly there, and demand bit-equal results on many random inputs. A
// compiler that fused a multiply and an add, kept intermediates wider, or reassociated a
// sum would change some of them.

#include "evfe/LineAction.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>

namespace {

struct Inputs {
    float P, B, S, L1, L2, K1, K2, R, C, E1, E2;
    bool W;
};

struct Result {
    float ev1;
    float ev2;
};

// Rounds to float at this point.
float f(float value) {
    volatile float stored = value;
    return stored;
}

float rake(float pot, float R, float C) {
    const float share = f(pot * R);
    return std::min(share, C);
}

float showdown(float equity, float gain, float loss) {
    const float win = f(equity * gain);
    const float other = f(1.0f - equity);
    const float lose = f(other * loss);
    return f(win - lose);
}

Result reference(ActionCode code, const Inputs& in) {
    switch (code) {
    case ActionCode::Call:
    case ActionCode::CheckBetCall: {
        const float amount = code == ActionCode::Call ? in.B : in.S;
        const float X = f(f(f(f(2.0f * amount) + in.P) - in.L1) - in.L2);
        const float r = rake(X, in.R, in.C);
        const float loss1 = f(amount - in.L1);
        const float loss2 = f(amount - in.L2);
        const float gain1 = f(f(in.P + loss2) - r);
        const float gain2 = f(f(in.P + loss1) - r);
        return {showdown(in.E1, gain1, loss1), showdown(in.E2, gain2, loss2)};
    }
    case ActionCode::CheckBetRaiseCall: {
        const float X = f(f(in.P + in.B) + in.B);
        const float r = rake(X, in.R, in.C);
        const float G = f(f(in.P + in.B) - r);
        return {showdown(in.E1, G, in.B), showdown(in.E2, G, in.B)};
    }
    case ActionCode::RaiseCall: {
        const float X = f(f(f(f(f(f(in.P + in.B) + in.S) - in.L1) - in.L2) + in.S) - in.B);
        const float r = rake(X, in.R, in.C);
        const float loss1 = f(in.S - in.L1);
        const float loss2 = f(in.S - in.L2);
        const float gain1 = f(f(in.P + loss2) - r);
        const float gain2 = f(f(in.P + loss1) - r);
        return {showdown(in.E1, gain1, loss1), showdown(in.E2, gain2, loss2)};
    }
    case ActionCode::RaiseShipCall: {
        float A1;
        float A2;
        if (!in.W) {
            A1 = in.K1;
            A2 = f(f(in.K1 + in.L1) - in.L2);
            if (in.K2 <= A2) {
                A1 = f(f(in.K2 + in.L2) - in.L1);
                A2 = in.K2;
            }
        } else {
            A2 = in.K2;
            A1 = f(f(in.K2 + in.L2) - in.L1);
            if (in.K1 <= A1) {
                A2 = f(f(in.K1 + in.L1) - in.L2);
                A1 = in.K1;
            }
        }
        const float T = f(in.P + A1);
        const float X = f(T + A2);
        const float r = rake(X, in.R, in.C);
        const float ev2 = showdown(in.E2, f(T - r), A2);
        const float ev1 = showdown(in.E1, f(f(in.P + A2) - r), A1);
        return {ev1, ev2};
    }
    case ActionCode::CheckCheck: {
        const float r = std::min(f(in.R * in.P), in.C);
        const float pot = f(in.P - r);
        return {f(pot * in.E1), f(in.E2 * pot)};
    }
    default:
        return {0, 0};
    }
}

// The same sequence in double precision, rounded once at the end: what a compiler keeping
// wider intermediates would give.
Result wide(ActionCode code, const Inputs& in) {
    const double P = in.P, B = in.B, S = in.S, L1 = in.L1, L2 = in.L2, R = in.R, C = in.C;
    const double E1 = in.E1, E2 = in.E2;
    double loss1 = 0, loss2 = 0, gain1 = 0, gain2 = 0;
    if (code == ActionCode::Call || code == ActionCode::CheckBetCall) {
        const double amount = code == ActionCode::Call ? B : S;
        const double X = 2 * amount + P - L1 - L2;
        const double r = std::min(X * R, C);
        loss1 = amount - L1;
        loss2 = amount - L2;
        gain1 = P + loss2 - r;
        gain2 = P + loss1 - r;
    } else if (code == ActionCode::RaiseCall) {
        const double X = P + B + S - L1 - L2 + S - B;
        const double r = std::min(X * R, C);
        loss1 = S - L1;
        loss2 = S - L2;
        gain1 = P + loss2 - r;
        gain2 = P + loss1 - r;
    } else {
        return {0, 0};
    }
    return {static_cast<float>(E1 * gain1 - (1 - E1) * loss1),
            static_cast<float>(E2 * gain2 - (1 - E2) * loss2)};
}

bool sameBits(float a, float b) {
    return std::memcmp(&a, &b, sizeof(float)) == 0;
}

Inputs randomInputs(std::mt19937& generator) {
    std::uniform_real_distribution<float> money(0.0f, 300.0f);
    std::uniform_real_distribution<float> small(0.0f, 20.0f);
    std::uniform_real_distribution<float> share(0.0f, 1.0f);
    std::uniform_real_distribution<float> rakeShare(0.0f, 0.1f);
    Inputs in;
    in.L1 = small(generator);
    in.L2 = small(generator);
    in.P = in.L1 + in.L2 + money(generator);
    in.B = money(generator);
    in.S = money(generator);
    in.K1 = money(generator);
    in.K2 = money(generator);
    in.R = rakeShare(generator);
    in.C = small(generator);
    in.E1 = share(generator);
    in.E2 = 1.0f - in.E1;
    in.W = (generator() & 1u) != 0;
    return in;
}

LineAction actionFor(ActionCode code, const Inputs& in) {
    LineAction action;
    action.action = code;
    action.deadmoney = in.P;
    action.previousMoney = in.B;
    action.size = in.S;
    action.player1sLastInvestmentBeforeAction = in.L1;
    action.player2sLastInvestmentBeforeAction = in.L2;
    action.player1sEffectiveStackSizeBeforeAction = in.K1;
    action.player2sEffectiveStackSizeBeforeAction = in.K2;
    action.rakeFraction = in.R;
    action.rakeCap = in.C;
    action.equityP1 = in.E1;
    action.equityP2 = in.E2;
    action.player1FirstToAct = in.W;
    return action;
}

TEST(FloatOrderTest, ShowdownCodesMatchTheStepwiseFloatSequenceBitForBit) {
    std::mt19937 generator(20261121u);
    int differsFromWide = 0;
    for (ActionCode code :
         {ActionCode::Call, ActionCode::CheckCheck, ActionCode::CheckBetCall,
          ActionCode::CheckBetRaiseCall, ActionCode::RaiseCall, ActionCode::RaiseShipCall}) {
        for (int i = 0; i < 2000; ++i) {
            const Inputs in = randomInputs(generator);
            LineAction action = actionFor(code, in);
            action.calculateEV();
            const Result expected = reference(code, in);
            ASSERT_TRUE(sameBits(action.EV_P1, expected.ev1))
                << "code " << static_cast<int>(code) << " case " << i << ": " << action.EV_P1
                << " vs " << expected.ev1;
            ASSERT_TRUE(sameBits(action.EV_P2, expected.ev2))
                << "code " << static_cast<int>(code) << " case " << i << ": " << action.EV_P2
                << " vs " << expected.ev2;
            const Result widened = wide(code, in);
            if (code != ActionCode::CheckCheck && code != ActionCode::CheckBetRaiseCall &&
                code != ActionCode::RaiseShipCall &&
                (!sameBits(widened.ev1, expected.ev1) || !sameBits(widened.ev2, expected.ev2)))
                ++differsFromWide;
        }
    }
    // The inputs are demanding enough that wider arithmetic would be caught.
    EXPECT_GT(differsFromWide, 100);
}

TEST(FloatOrderTest, GainAddsThePotBeforeTakingTheRake) {
    // (P + Loss2) - r and P + (Loss2 - r) differ in float for these values; the first is the
    // defined order. P = 2^24 makes the grid 2 wide: 16777216 + 3 rounds to 16777220 (ties
    // to even), then - 1 gives 16777219 rounded to 16777220; the other order gives
    // 16777216 + 2 = 16777218.
    LineAction action;
    action.action = ActionCode::Call;
    action.deadmoney = 16777216.0f;
    action.previousMoney = 3.0f;
    action.rakeFraction = 1.0f;
    action.rakeCap = 1.0f;
    action.equityP1 = 1.0f;
    action.equityP2 = 0.0f;
    action.calculateEV();
    // EV1 = 1 * Gain1 - 0 * 3 = Gain1.
    EXPECT_EQ(action.EV_P1, 16777220.0f);
}

} // namespace
