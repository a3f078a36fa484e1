#include "evfe/LineSizeRules.h"

#include "Range/Assertion.h"
#include "evfe/LineVariant.h"
#include "evfe/Street.h"

#include <algorithm>

namespace {

float secondActorsInvestment(const LineVariant& variant) {
    return variant.isPlayer1FirstToAct() ? variant.player2sLastInvestment
                                         : variant.player1sLastInvestment;
}

float firstActorsInvestment(const LineVariant& variant) {
    return variant.isPlayer1FirstToAct() ? variant.player1sLastInvestment
                                         : variant.player2sLastInvestment;
}

} // namespace

float LineSizeRules::minimumDeadmoney(const LineVariant& variant) {
    return variant.player1sLastInvestment + variant.player2sLastInvestment;
}

float LineSizeRules::minimumFirstSize(const LineVariant& variant) {
    if (!variant.actions.empty() && variant.actions.front().action == ActionCode::Check) {
        float largest = 0.0f;
        for (std::size_t i = 1; i < variant.actions.size(); ++i) {
            const LineAction& reaction = variant.actions[i];
            if (reaction.needsOwnSize && reaction.size > 0.0f)
                largest = std::max(largest, reaction.size);
        }
        return 2 * largest;
    }
    const float doubled = 2 * secondActorsInvestment(variant);
    const float minimum = doubled - firstActorsInvestment(variant);
    return std::max(0.0f, minimum);
}

float LineSizeRules::minimumReactionSize(const LineVariant& variant) {
    const float firstSize = variant.actions.empty() ? 0.0f : variant.actions.front().size;
    const float doubled = 2 * firstSize;
    const float minimum = doubled - secondActorsInvestment(variant);
    return std::max(0.0f, minimum);
}

float LineSizeRules::maximumSize(const LineVariant& variant) {
    const float player1 = variant.player1sEffectiveStackSize + variant.player1sLastInvestment;
    const float player2 = variant.player2sEffectiveStackSize + variant.player2sLastInvestment;
    return std::min(player1, player2);
}

LineSizeRules::Bounds LineSizeRules::sizeBounds(const LineVariant& variant, std::size_t index) {
    Bounds bounds;
    if (index >= variant.actions.size()) {
        QV_ASSERT(false, "Action index out of range.");
        return bounds;
    }
    if (!variant.actions[index].needsOwnSize)
        return bounds;
    bounds.minimum = index == 0 ? minimumFirstSize(variant) : minimumReactionSize(variant);
    const float maximum = maximumSize(variant);
    if (bounds.minimum <= maximum) {
        bounds.maximum = maximum;
        bounds.maximumApplied = true;
    }
    return bounds;
}

LineSizeRules::InvestmentBoxes LineSizeRules::investmentBoxes(Street street,
                                                              const std::string& firstVerb,
                                                              bool player1FirstToAct) {
    InvestmentBoxes boxes;
    if (firstVerb == "bet" || firstVerb.compare(0, 5, "check") == 0)
        return boxes;
    if (firstVerb == "raise") {
        if (street == Street::Preflop) {
            boxes.player1Visible = boxes.player2Visible = true;
            boxes.player1Label = "P1's Post Size:";
            boxes.player2Label = "P2's Post Size:";
        } else if (player1FirstToAct) {
            boxes.player2Visible = true;
            boxes.player2Label = "P2's Bet Size:";
        } else {
            boxes.player1Visible = true;
            boxes.player1Label = "P1's Bet Size:";
        }
        return boxes;
    }
    boxes.player1Visible = boxes.player2Visible = true;
    if (firstVerb == "3-bet" && street == Street::Preflop) {
        boxes.player1Label = player1FirstToAct ? "P1's Post Size:" : "P1's Raise Size:";
        boxes.player2Label = player1FirstToAct ? "P2's Raise Size:" : "P2's Post Size:";
        return boxes;
    }
    const int n = firstVerb.empty() ? 0 : firstVerb[0] - '0';
    std::string a;
    std::string b;
    if (n == 3) {
        a = "Bet";
        b = "Raise";
    } else if (n == 4) {
        a = "Raise";
        b = "3-Bet";
    } else if (n > 4 && n <= 9) {
        a = std::to_string(n - 2) + "-Bet";
        b = std::to_string(n - 1) + "-Bet";
    } else {
        // Not an N-bet verb: the tree offers none such, so show the boxes unnamed.
        boxes.player1Visible = boxes.player2Visible = false;
        return boxes;
    }
    if (!player1FirstToAct)
        std::swap(a, b);
    boxes.player1Label = "P1's " + a + " Size:";
    boxes.player2Label = "P2's " + b + " Size:";
    return boxes;
}
