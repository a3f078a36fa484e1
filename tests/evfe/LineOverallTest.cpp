// The overall result of a variant from given reaction EVs and combinations.

#include "EVTestSupport.h"

#include "evfe/LineFactory.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

const float infinity = std::numeric_limits<float>::infinity();
const float notANumber = std::numeric_limits<float>::quiet_NaN();

// Sets combinations and EVs of the reactions 1, 2, ... and runs calculateOverall only.
LineVariant overallOf(const std::string& line, const std::string& forPlayer,
                      const std::vector<unsigned int>& combinations,
                      const std::vector<std::pair<float, float>>& evs) {
    LineVariant variant = LineFactory::create(line, "Main Variant", forPlayer);
    for (std::size_t i = 0; i < combinations.size(); ++i) {
        variant.actions[i + 1].rangeCombinations = combinations[i];
        variant.actions[i + 1].EV_P1 = evs[i].first;
        variant.actions[i + 1].EV_P2 = evs[i].second;
    }
    variant.calculateOverall();
    return variant;
}

TEST(LineOverallTest, NoCombinationsAtAllGiveZeroAndTheShortText) {
    const LineVariant v = overallOf("Bet/Ship", "Player1", {0, 0, 0, 0},
                                    {{5, 1}, {notANumber, 2}, {infinity, 3}, {4, -infinity}});
    EXPECT_EQ(v.EV_P1, 0.0f);
    EXPECT_EQ(v.EV_P2, 0.0f);
    EXPECT_EQ(v.FE_P1, 0.0f);
    EXPECT_EQ(v.FE_P2, 0.0f);
    EXPECT_EQ(v.explanation, "<b>EV P1:</b> 0<br/><br/><b>EV P2:</b> 0");
}

TEST(LineOverallTest, ReactionsWithoutCombinationsAddNothingEvenWhenNotFinite) {
    // Shares 10/40 = 0.25 and 30/40 = 0.75; reactions 2 and 3 have none.
    // EV1 = 0.25 * 4 + 0.75 * 8 = 7; EV2 = 0.25 * -2 + 0.75 * 1 = 0.25.
    const LineVariant v =
        overallOf("Bet/Ship", "Player1", {10, 0, 0, 30},
                  {{4, -2}, {notANumber, infinity}, {infinity, notANumber}, {8, 1}});
    EXPECT_EQ(twoDecimals(v.EV_P1), "7.00");
    EXPECT_EQ(twoDecimals(v.EV_P2), "0.25");
    // The fold to the bet (0.25) and the fold to the shove (0) make Player1's fold equity.
    EXPECT_EQ(twoDecimals(v.FE_P1), "0.25");
    EXPECT_EQ(v.FE_P2, 0.0f);
    EXPECT_EQ(v.explanation,
              "<b>EV P1:</b> 0.25 [Ratio Reaction1] * 4 [EV Reaction1] + 0.75 [Ratio "
              "Reaction4] * 8 [EV Reaction4] = 7<br/><br/>"
              "<b>EV P2:</b> 0.25 [Ratio Reaction1] * -2 [EV Reaction1] + 0.75 [Ratio "
              "Reaction4] * 1 [EV Reaction4] = 0.25<br/><br/>");
}

TEST(LineOverallTest, NonFiniteSumBecomesZero) {
    // The only reaction with combinations has an infinite EV for Player1 and no number for
    // Player2: both overall EVs fall back to 0, the text shows the terms and the 0.
    const LineVariant v =
        overallOf("Check/Fold", "Player2", {0, 12}, {{1, 1}, {infinity, notANumber}});
    EXPECT_EQ(v.EV_P1, 0.0f);
    EXPECT_EQ(v.EV_P2, 0.0f);
    EXPECT_EQ(v.explanation, "<b>EV P1:</b> 1 [Ratio Reaction2] * inf [EV Reaction2] = 0"
                             "<br/><br/><b>EV P2:</b> 1 [Ratio Reaction2] * nan [EV Reaction2] = 0"
                             "<br/><br/>");
    // Player2 checked first and Player1's bet folds Player2 every time.
    EXPECT_EQ(v.FE_P1, 1.0f);
    EXPECT_EQ(v.FE_P2, 0.0f);
}

TEST(LineOverallTest, PlusOnlyBetweenPrintedTerms) {
    // Shares 0.5 for reactions 1 and 3; reaction 2 has none.
    const LineVariant v =
        overallOf("Bet/Call", "Player1", {5, 0, 5}, {{2, 0}, {100, 100}, {-1, 3}});
    EXPECT_EQ(v.explanation,
              "<b>EV P1:</b> 0.5 [Ratio Reaction1] * 2 [EV Reaction1] + 0.5 [Ratio Reaction3] "
              "* -1 [EV Reaction3] = 0.5<br/><br/>"
              "<b>EV P2:</b> 0.5 [Ratio Reaction1] * 0 [EV Reaction1] + 0.5 [Ratio Reaction3] "
              "* 3 [EV Reaction3] = 1.5<br/><br/>");
}

TEST(LineOverallTest, FoldEquitiesByKindAndFirstActor) {
    // Reaction i has i combinations: shares 1/3, 2/3 with two reactions; 1/6, 2/6, 3/6 with
    // three; 0.1, 0.2, 0.3, 0.4 with four.
    struct Case {
        const char* line;
        const char* forPlayer;
        const char* fe1;
        const char* fe2;
    };
    const Case cases[] = {
        // Check/Fold: only the other player's bet folds the first actor: r2.
        {"Check/Fold", "Player1", "0.00", "0.67"},
        {"Check/Fold", "Player2", "0.67", "0.00"},
        // Check/Call: nobody folds.
        {"Check/Call", "Player1", "0.00", "0.00"},
        // Check/Raise: the check-raise folds the bettor: r2.
        {"Check/Raise", "Player1", "0.33", "0.00"},
        {"Check/Raise", "Player2", "0.00", "0.33"},
        // Bet/Fold: the bet folds r1, the raise folds the bettor r3.
        {"Bet/Fold", "Player1", "0.17", "0.50"},
        {"7-Bet/Fold", "Player2", "0.50", "0.17"},
        // Bet/Call: only the bet folds.
        {"Raise/Call", "Player2", "0.00", "0.17"},
        // Bet/Ship: the bet and the shove fold: r1 + r3.
        {"Bet/Ship", "Player1", "0.40", "0.00"},
        {"3-Bet/Ship", "Player2", "0.00", "0.40"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.line) + " " + c.forPlayer);
        LineVariant variant = LineFactory::create(c.line, "v", c.forPlayer);
        for (std::size_t i = 1; i < variant.actions.size(); ++i)
            variant.actions[i].rangeCombinations = static_cast<unsigned int>(i);
        variant.calculateOverall();
        EXPECT_EQ(twoDecimals(variant.FE_P1), c.fe1);
        EXPECT_EQ(twoDecimals(variant.FE_P2), c.fe2);
    }
}

TEST(LineOverallTest, VariantWithoutActionsStaysAtZero) {
    LineVariant variant = LineFactory::create("No Such Line", "v", "Player1");
    variant.EV_P1 = 5;
    variant.FE_P2 = 0.5f;
    variant.calculateOverall();
    EXPECT_EQ(variant.EV_P1, 0.0f);
    EXPECT_EQ(variant.EV_P2, 0.0f);
    EXPECT_EQ(variant.FE_P1, 0.0f);
    EXPECT_EQ(variant.FE_P2, 0.0f);
    EXPECT_EQ(variant.explanation, "<b>EV P1:</b> 0<br/><br/><b>EV P2:</b> 0");
}

TEST(LineOverallTest, FoldReactionsWithoutShowdownStillWeigh) {
    // A fold has no equity but has combinations: with EVs given, all three count.
    // Shares 0.5, 0.25, 0.25: EV1 = 0.5 * 6 + 0.25 * 2 + 0.25 * -4 = 2.5.
    const LineVariant v = overallOf("Bet/Fold", "Player1", {2, 1, 1}, {{6, 0}, {2, 4}, {-4, 10}});
    EXPECT_EQ(twoDecimals(v.EV_P1), "2.50");
    // EV2 = 0 + 0.25 * 4 + 0.25 * 10 = 3.5
    EXPECT_EQ(twoDecimals(v.EV_P2), "3.50");
}

} // namespace
