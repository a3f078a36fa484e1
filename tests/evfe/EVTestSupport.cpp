#include "EVTestSupport.h"

#include "evfe/LineFactory.h"

#include <gtest/gtest.h>

#include <iomanip>
#include <sstream>

std::string twoDecimals(float value) {
    std::ostringstream text;
    text << std::fixed << std::setprecision(2) << value;
    return text.str();
}

LineVariant evaluate(const VariantInput& input) {
    LineVariant variant = LineFactory::create(input.line, "Main Variant", input.forPlayer);
    EXPECT_EQ(variant.actions.size(), input.reactions.size() + 1) << input.line;
    variant.deadmoney = input.pot;
    variant.player1sLastInvestment = input.player1sLastInvestment;
    variant.player2sLastInvestment = input.player2sLastInvestment;
    variant.player1sEffectiveStackSize = input.player1sStack;
    variant.player2sEffectiveStackSize = input.player2sStack;
    if (!variant.actions.empty())
        variant.actions[0].size = input.firstSize;
    for (std::size_t i = 0; i < input.reactions.size() && i + 1 < variant.actions.size(); ++i) {
        LineAction& action = variant.actions[i + 1];
        action.rangeCombinations = input.reactions[i].combinations;
        action.equityP1 = input.reactions[i].equityP1;
        action.equityP2 = input.reactions[i].equityP2;
        action.size = input.reactions[i].size;
    }
    variant.updateActionInputs(input.rakePercentage, input.rakeCap);
    variant.calculateEVs();
    variant.calculateOverall();
    return variant;
}
