#include "SampleLines.h"

#include "Range/HandRangeStringManipulator.h"
#include "Range/TreeRangeNode.h"
#include "evfe/Street.h"
#include "evfe/VariantRanges.h"

#include <limits>

namespace SampleLines {

Range::HandRange rangeOf(const std::string& text) {
    Range::HandRange range;
    Range::HandRangeStringManipulator(range).setFree(text);
    return range;
}

Range::HandRange player1FullRange() {
    return rangeOf("22+,A2s+,K9s+,QTs+,JTs,T9s,98s,ATo+,KJo+");
}

Range::HandRange player2FullRange() {
    return rangeOf("22+,A2s+,K2s+,Q8s+,J8s+,T8s+,97s+,86s+,75s+,65s,54s,A9o+,KTo+,QTo+,JTo");
}

void setActionRange(LineVariant& variant, std::size_t index, const std::string& text) {
    Range::HandRangeStringManipulator(variant.actions[index].range->handRange).setFree(text);
}

namespace {

void setNumbers(LineAction& action, float equity1, float equity2, float ev1, float ev2,
                unsigned int combinations) {
    action.equityP1 = equity1;
    action.equityP2 = equity2;
    action.EV_P1 = ev1;
    action.EV_P2 = ev2;
    action.rangeCombinations = combinations;
    action.rangePercentage = static_cast<float>(combinations) / 1326.0f;
    action.parentRangePercentage = 0.25f;
}

void setMoney(LineVariant& variant, float pot, float stack1, float stack2, float last1,
              float last2) {
    variant.deadmoney = pot;
    variant.player1sEffectiveStackSize = stack1;
    variant.player2sEffectiveStackSize = stack2;
    variant.player1sLastInvestment = last1;
    variant.player2sLastInvestment = last2;
}

} // namespace

LineList golden() {
    const Range::HandRange full1 = player1FullRange();
    const Range::HandRange full2 = player2FullRange();
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float infinity = std::numeric_limits<float>::infinity();
    LineList lines;

    Line& betShip = addLine(lines, "Bet/Ship", Street::Flop, "Player1");
    {
        LineVariant& main = betShip.variants.back();
        VariantRanges::assignFullRanges(main, full1, full2);
        setMoney(main, 12.5f, 88.0f, 94.5f, 0.0f, 0.0f);
        main.actions[0].size = 9.0f;
        main.actions[3].size = 27.5f;
        setActionRange(main, 0, "TT+,AQs+,AKo");
        setActionRange(main, 1, "22-66,A2s-A5s");
        setActionRange(main, 2, "77-JJ,ATs-AJs,KQs");
        setActionRange(main, 3, "QQ,AKs");
        setActionRange(main, 4, "KK+");
        main.updateActionInputs(4.5, 3.0);
        setNumbers(main.actions[0], 0.0f, 0.0f, 0.0f, 0.0f, 68);
        setNumbers(main.actions[1], nan, nan, 12.0f, 0.0f, 64);
        setNumbers(main.actions[2], 0.6234f, 0.3766f, 3.11f, -1.27f, 88);
        setNumbers(main.actions[3], 0.0f, 0.0f, -9.0f, 48.5f, 10);
        setNumbers(main.actions[4], 0.4102f, 0.5898f, -0.0f, infinity, 12);
        main.actions[4].addition = "kept as written";
        main.calculateOverall();
    }
    Line& sameLine = addLine(lines, "Bet/Ship", Street::Flop, "Player2");
    {
        LineVariant& second = sameLine.variants.back();
        second.name = "Small \"Bet\" & <Shove>";
        VariantRanges::assignFullRanges(second, full1, full2);
        setMoney(second, 6.0f, 100.0f, 100.0f, 0.0f, 0.0f);
        second.actions[0].size = 2.0f;
        setActionRange(second, 0, "99+,AJs+");
        setActionRange(second, 2, "AA");
        second.updateActionInputs(0.0, 0.0);
        setNumbers(second.actions[2], 0.5f, 0.5f, 1.0f / 3.0f, 0.1f, 6);
    }

    Line& checkRaise = addLine(lines, "Check/Raise", Street::Turn, "Player2");
    {
        LineVariant& main = checkRaise.variants.back();
        VariantRanges::assignFullRanges(main, full1, full2);
        setMoney(main, 30.0f, 70.0f, 55.25f, 0.0f, 0.0f);
        main.actions[0].size = 40.0f;
        main.actions[2].size = 18.0f;
        setActionRange(main, 0, "QQ+");
        setActionRange(main, 1, "JJ-22");
        setActionRange(main, 2, "AKo,AQo");
        setActionRange(main, 3, "AKs");
        main.updateActionInputs(5.0, 2.0);
        main.calculateEVs();
        main.calculateOverall();
    }

    Line& threeBet = addLine(lines, "3-Bet/Call", Street::Preflop, "Player1");
    {
        LineVariant& main = threeBet.variants.back();
        VariantRanges::assignFullRanges(main, full1, full2);
        setMoney(main, 4.5f, 97.0f, 100.0f, 0.5f, 3.0f);
        main.actions[0].size = 9.5f;
        main.actions[3].size = 22.0f;
        setActionRange(main, 0, "JJ+,AKs,AKo");
        setActionRange(main, 1, "22-99");
        setActionRange(main, 2, "TT-QQ,AQs");
        setActionRange(main, 3, "KK+");
        main.updateActionInputs(0.0, 0.0);
        main.calculateEVs();
        main.calculateOverall();
    }
    return lines;
}

} // namespace SampleLines
