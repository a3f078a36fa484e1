// calculateEV against its previous form (FrozenLineAction): for every action code, over many
// generated inputs, both EVs must have the same bits and the explanation the same text. The
// inputs mix plain poker sizes with values that expose any change in the order of the float
// operations: random floats, pots near 2^24, rakes at the 0.001 print threshold, equal stack
// totals, negative and NaN values.

#include "FrozenLineAction.h"

#include "evfe/LineAction.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <sstream>
#include <string>

namespace {

const int casesPerCode = 20000;

std::uint32_t bitsOf(float value) {
    std::uint32_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

class InputGenerator {
public:
    explicit InputGenerator(std::uint32_t seed) : generator(seed) {}

    // Money as the page may hold it, and beyond: sizes of every scale, exact halves, zero,
    // values where the float grid is 2 wide, and a few negative ones.
    float money() {
        switch (pick(10)) {
        case 0:
            return 0.0f;
        case 1:
            return static_cast<float>(pick(41)) * 0.5f;
        case 2:
            return uniform(0.0f, 20.0f);
        case 3:
        case 4:
        case 5:
            return uniform(0.0f, 300.0f);
        case 6:
            return uniform(0.0f, 9999.0f);
        case 7:
            return 16777216.0f + static_cast<float>(pick(8));
        case 8:
            return uniform(-50.0f, 0.0f);
        default:
            return uniform(0.0f, 0.01f);
        }
    }

    float rakeFraction() {
        switch (pick(6)) {
        case 0:
            return 0.0f;
        case 1:
            return 0.05f;
        case 2:
            return 0.001f;
        case 3:
            return 1.0f;
        default:
            return uniform(0.0f, 0.1f);
        }
    }

    // Cap 0.001 makes the rake exactly the print threshold whenever the share reaches it.
    float rakeCap() {
        switch (pick(6)) {
        case 0:
            return 0.0f;
        case 1:
            return 0.001f;
        case 2:
            return std::numeric_limits<float>::infinity();
        default:
            return uniform(0.0f, 10.0f);
        }
    }

    // Equities as an equity run gives them, including the NaN of a run without any total.
    void equities(LineAction& action) {
        switch (pick(8)) {
        case 0:
            action.equityP1 = std::numeric_limits<float>::quiet_NaN();
            action.equityP2 = action.equityP1;
            return;
        case 1:
            action.equityP1 = static_cast<float>(pick(3)) * 0.5f;
            action.equityP2 = 1.0f - action.equityP1;
            return;
        case 2:
            action.equityP1 = uniform(0.0f, 1.0f);
            action.equityP2 = uniform(0.0f, 1.0f);
            return;
        default:
            action.equityP1 = uniform(0.0f, 1.0f);
            action.equityP2 = 1.0f - action.equityP1;
            return;
        }
    }

    LineAction action(ActionCode code) {
        LineAction action;
        action.action = code;
        action.player1FirstToAct = pick(2) == 0;
        action.deadmoney = money();
        action.previousMoney = money();
        action.size = money();
        action.player1sLastInvestmentBeforeAction = money();
        action.player2sLastInvestmentBeforeAction = money();
        action.player1sEffectiveStackSizeBeforeAction = money();
        action.player2sEffectiveStackSizeBeforeAction = money();
        if (pick(4) == 0) {
            // Equal totals of stack and last investment: the shove's two branches meet.
            action.player2sEffectiveStackSizeBeforeAction =
                (action.player1sEffectiveStackSizeBeforeAction +
                 action.player1sLastInvestmentBeforeAction) -
                action.player2sLastInvestmentBeforeAction;
        }
        action.rakeFraction = rakeFraction();
        action.rakeCap = rakeCap();
        equities(action);
        // What an earlier run left behind; codes without an EV must keep it.
        action.EV_P1 = uniform(-10.0f, 10.0f);
        action.EV_P2 = uniform(-10.0f, 10.0f);
        action.explanation = "earlier text";
        return action;
    }

private:
    unsigned int pick(unsigned int count) {
        return std::uniform_int_distribution<unsigned int>(0, count - 1)(generator);
    }

    float uniform(float low, float high) {
        return std::uniform_real_distribution<float>(low, high)(generator);
    }

    std::mt19937 generator;
};

std::string describe(const LineAction& action) {
    std::ostringstream text;
    text << std::hexfloat << "P " << action.deadmoney << ", B " << action.previousMoney << ", S "
         << action.size << ", L1 " << action.player1sLastInvestmentBeforeAction << ", L2 "
         << action.player2sLastInvestmentBeforeAction << ", K1 "
         << action.player1sEffectiveStackSizeBeforeAction << ", K2 "
         << action.player2sEffectiveStackSizeBeforeAction << ", R " << action.rakeFraction << ", C "
         << action.rakeCap << ", E1 " << action.equityP1 << ", E2 " << action.equityP2 << ", W "
         << action.player1FirstToAct;
    return text.str();
}

// How one code's comparison went; `firstDifference` describes the first case that differed.
struct Comparison {
    int differences = 0;
    int withRakeHead = 0;
    int withoutRakeHead = 0;
    std::string firstDifference;
};

Comparison compareWithFrozen(ActionCode code, std::uint32_t seed, int cases) {
    InputGenerator inputs(seed);
    Comparison comparison;
    for (int i = 0; i < cases; ++i) {
        LineAction current = inputs.action(code);
        FrozenLineAction frozen(current);
        current.calculateEV();
        frozen.previousCalculateEV();
        const bool same = bitsOf(current.EV_P1) == bitsOf(frozen.EV_P1) &&
                          bitsOf(current.EV_P2) == bitsOf(frozen.EV_P2) &&
                          current.explanation == frozen.explanation;
        if (!same && comparison.differences++ == 0) {
            std::ostringstream text;
            text << "case " << i << " (" << describe(current) << "): EV_P1 " << std::hexfloat
                 << current.EV_P1 << " vs " << frozen.EV_P1 << ", EV_P2 " << current.EV_P2 << " vs "
                 << frozen.EV_P2 << ", text \"" << current.explanation << "\" vs \""
                 << frozen.explanation << "\"";
            comparison.firstDifference = text.str();
        }
        if (current.explanation.rfind("<b>Rake:</b>", 0) == 0)
            ++comparison.withRakeHead;
        else
            ++comparison.withoutRakeHead;
    }
    return comparison;
}

class CalculateEVFrozenReferenceTest : public ::testing::TestWithParam<int> {};

TEST_P(CalculateEVFrozenReferenceTest, SameBitsAndTextAsThePreviousForm) {
    const ActionCode code = static_cast<ActionCode>(GetParam());
    const Comparison comparison =
        compareWithFrozen(code, 20240611u + static_cast<std::uint32_t>(GetParam()), casesPerCode);
    EXPECT_EQ(comparison.differences, 0) << comparison.firstDifference;
    // Both forms of the text are reached: with the rake head and without it.
    EXPECT_GT(comparison.withRakeHead, casesPerCode / 10);
    EXPECT_GT(comparison.withoutRakeHead, casesPerCode / 10);
}

INSTANTIATE_TEST_SUITE_P(EveryCodeWithAnEV, CalculateEVFrozenReferenceTest,
                         ::testing::Range(static_cast<int>(ActionCode::Call),
                                          static_cast<int>(ActionCode::RaiseShipCall) + 1),
                         [](const ::testing::TestParamInfo<int>& info) {
                             return "Code" + std::to_string(info.param) + "_" +
                                    actionCodeToText(info.param);
                         });

TEST(CalculateEVFrozenReferenceTest, CodesWithoutAnEVKeepWhatTheyHadAsBefore) {
    // The opening actions and numbers outside the table change nothing, in both forms.
    for (int number : {-1, 0, 1, 13, 99}) {
        SCOPED_TRACE("code " + std::to_string(number));
        InputGenerator inputs(7u + static_cast<std::uint32_t>(number + 1));
        for (int i = 0; i < 2000; ++i) {
            const LineAction before = inputs.action(static_cast<ActionCode>(number));
            LineAction current = before;
            FrozenLineAction frozen(before);
            current.calculateEV();
            frozen.previousCalculateEV();
            ASSERT_EQ(bitsOf(current.EV_P1), bitsOf(before.EV_P1));
            ASSERT_EQ(bitsOf(current.EV_P2), bitsOf(before.EV_P2));
            ASSERT_EQ(current.explanation, "earlier text");
            ASSERT_EQ(bitsOf(frozen.EV_P1), bitsOf(before.EV_P1));
            ASSERT_EQ(frozen.explanation, "earlier text");
        }
    }
}

TEST(CalculateEVFrozenReferenceTest, InputsAreDemandingEnoughToSeeAReassociatedSum) {
    // Gain1 of a call is (P + Loss2) - r. Taken as P + (Loss2 - r) instead, the same inputs
    // give a different EV_P1 in many cases: a change of that kind could not pass the
    // comparison above unnoticed.
    InputGenerator inputs(20240611u + static_cast<std::uint32_t>(ActionCode::Call));
    int differing = 0;
    for (int i = 0; i < casesPerCode; ++i) {
        FrozenLineAction frozen(inputs.action(ActionCode::Call));
        frozen.previousCalculateEV();
        if (std::isnan(frozen.EV_P1))
            continue;
        const float B = frozen.previousMoney;
        const float P = frozen.deadmoney;
        const float X = (((2 * B) + P) - frozen.player1sLastInvestmentBeforeAction) -
                        frozen.player2sLastInvestmentBeforeAction;
        const float r = std::min(X * frozen.rakeFraction, frozen.rakeCap);
        const float loss1 = B - frozen.player1sLastInvestmentBeforeAction;
        const float loss2 = B - frozen.player2sLastInvestmentBeforeAction;
        const float reassociatedGain1 = P + (loss2 - r);
        const float win = frozen.equityP1 * reassociatedGain1;
        const float lose = (1 - frozen.equityP1) * loss1;
        if (bitsOf(win - lose) != bitsOf(frozen.EV_P1))
            ++differing;
    }
    EXPECT_GT(differing, casesPerCode / 100);
}

} // namespace
