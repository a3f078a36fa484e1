#include "evfe/LineVariant.h"

#include <cmath>
#include <locale>
#include <sstream>

namespace {

const int reactionCount = 4;

// "R [Ratio ReactionN] * E [EV ReactionN]" for each reaction with a ratio, joined by " + ",
// then " = " and the total; only the total if no reaction has a ratio.
void writeSum(std::ostream& text, const float (&ratios)[reactionCount],
              const float (&evs)[reactionCount], float total) {
    bool printed = false;
    for (int i = 0; i < reactionCount; ++i) {
        if (ratios[i] == 0.0f || !std::isfinite(ratios[i]))
            continue;
        if (printed)
            text << " + ";
        text << ratios[i] << " [Ratio Reaction" << (i + 1) << "] * " << evs[i] << " [EV Reaction"
             << (i + 1) << "]";
        printed = true;
    }
    if (printed)
        text << " = ";
    text << total << "<br/><br/>";
}

// r2*e2 + r1*e1 + r3*e3 + r4*e4, where a reaction without a ratio adds a plain zero, so a
// non-finite EV behind a zero ratio does no harm. A non-finite sum becomes 0.
float weightedSum(const float (&ratios)[reactionCount], const float (&evs)[reactionCount]) {
    float terms[reactionCount];
    for (int i = 0; i < reactionCount; ++i)
        terms[i] = ratios[i] != 0.0f ? ratios[i] * evs[i] : 0.0f;
    const float firstTwo = terms[1] + terms[0];
    const float firstThree = firstTwo + terms[2];
    const float sum = firstThree + terms[3];
    return std::isfinite(sum) ? sum : 0.0f;
}

} // namespace

LineVariant::LineVariant(const std::string& forPlayer, const std::string& name, LineKind kind)
    : forPlayer(forPlayer), name(name), kind(kind) {}

LineVariant::LineVariant(const LineVariant& other)
    : forPlayer(other.forPlayer), name(other.name), firstActorRanges(other.firstActorRanges),
      secondActorRanges(other.secondActorRanges), deadmoney(other.deadmoney),
      player1sEffectiveStackSize(other.player1sEffectiveStackSize),
      player2sEffectiveStackSize(other.player2sEffectiveStackSize),
      player1sLastInvestment(other.player1sLastInvestment),
      player2sLastInvestment(other.player2sLastInvestment), FE_P1(other.FE_P1), FE_P2(other.FE_P2),
      EV_P1(other.EV_P1), EV_P2(other.EV_P2), explanation(other.explanation),
      actions(other.actions), kind(other.kind) {
    pointActionsAtOwnGroups(other);
}

LineVariant& LineVariant::operator=(const LineVariant& other) {
    if (this != &other) {
        LineVariant copy(other);
        *this = std::move(copy);
    }
    return *this;
}

void LineVariant::pointActionsAtOwnGroups(const LineVariant& source) {
    for (LineAction& action : actions) {
        if (action.range == nullptr)
            continue;
        const unsigned int first = source.firstActorRanges.indexOf(action.range);
        if (first != RangeGroupSet::noGroup) {
            action.range = firstActorRanges.group(first);
            continue;
        }
        const unsigned int second = source.secondActorRanges.indexOf(action.range);
        // A group of neither set belongs to someone else and is left as it is.
        if (second != RangeGroupSet::noGroup)
            action.range = secondActorRanges.group(second);
    }
}

void LineVariant::updateActionInputs(double rakePercentage, double rakeCap) {
    const float fraction = static_cast<float>(rakePercentage / 100);
    const float cap = static_cast<float>(rakeCap);
    const float firstSize = actions.empty() ? 0.0f : actions.front().size;
    for (LineAction& action : actions) {
        action.rakeFraction = fraction;
        action.rakeCap = cap;
        action.deadmoney = deadmoney;
        action.previousMoney = firstSize;
        action.player1sEffectiveStackSizeBeforeAction = player1sEffectiveStackSize;
        action.player2sEffectiveStackSizeBeforeAction = player2sEffectiveStackSize;
        action.player1sLastInvestmentBeforeAction = player1sLastInvestment;
        action.player2sLastInvestmentBeforeAction = player2sLastInvestment;
    }
}

void LineVariant::calculateEVs() {
    for (LineAction& action : actions)
        action.calculateEV();
}

void LineVariant::calculateOverall() {
    // 1. Each reaction's share of all reaction combinations.
    float ratios[reactionCount] = {0.0f, 0.0f, 0.0f, 0.0f};
    float evs1[reactionCount] = {0.0f, 0.0f, 0.0f, 0.0f};
    float evs2[reactionCount] = {0.0f, 0.0f, 0.0f, 0.0f};
    for (int i = 0; i < reactionCount; ++i) {
        const std::size_t index = static_cast<std::size_t>(i) + 1;
        if (index < actions.size()) {
            ratios[i] = static_cast<float>(actions[index].rangeCombinations);
            evs1[i] = actions[index].EV_P1;
            evs2[i] = actions[index].EV_P2;
        }
    }
    const float firstTwo = ratios[0] + ratios[1];
    const float firstThree = firstTwo + ratios[2];
    const float combinations = firstThree + ratios[3];
    if (combinations != 0.0f) {
        for (float& ratio : ratios)
            ratio = ratio / combinations;
    }
    for (float& ratio : ratios) {
        if (!std::isfinite(ratio))
            ratio = 0.0f;
    }

    // 2. The weighted EVs.
    EV_P1 = weightedSum(ratios, evs1);
    EV_P2 = weightedSum(ratios, evs2);

    // 3. Fold equities of the first actor and of the other player.
    float firstActorFE = 0.0f;
    float otherFE = 0.0f;
    const ActionCode firstAction = actions.empty() ? ActionCode::Check : actions.front().action;
    if (!actions.empty() && firstAction == ActionCode::Bet) {
        firstActorFE = kind == LineKind::BetShip ? ratios[0] + ratios[2] : ratios[0];
    } else if (kind == LineKind::CheckRaise) {
        firstActorFE = ratios[1];
    }
    if (kind == LineKind::CheckFold)
        otherFE = ratios[1];
    else if (kind == LineKind::BetFold)
        otherFE = ratios[2];
    if (isPlayer1FirstToAct()) {
        FE_P1 = firstActorFE;
        FE_P2 = otherFE;
    } else {
        FE_P1 = otherFE;
        FE_P2 = firstActorFE;
    }

    // 4. The tool tip.
    const bool noRatio =
        ratios[0] == 0.0f && ratios[1] == 0.0f && ratios[2] == 0.0f && ratios[3] == 0.0f;
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << "<b>EV P1:</b> ";
    if (noRatio)
        text << "0<br/><br/>";
    else
        writeSum(text, ratios, evs1, EV_P1);
    text << "<b>EV P2:</b> ";
    if (noRatio)
        text << "0";
    else
        writeSum(text, ratios, evs2, EV_P2);
    explanation = text.str();
}
