#pragma once

#include <string>
#include <vector>

#include "evfe/LineAction.h"
#include "evfe/LineKind.h"
#include "evfe/RangeGroupSet.h"

// One worked example of a line: who acts first, the money before the street, the ranges and
// the action tree with its sizes, and the overall result.
//
// Copying is deep: the copy gets its own range group sets, and each copied action's `range`
// points at the group of the same index in the copy's sets. Moving keeps every group at its
// address.
class LineVariant {
public:
    std::string forPlayer; // "Player1" or "Player2": who acts first
    std::string name;      // "Main Variant" for the first variant of a line

    // Group 0 is the player's full range; each action of that player owns a child group.
    RangeGroupSet firstActorRanges;
    RangeGroupSet secondActorRanges;

    float deadmoney = 0.0f; // "Pot Before First Action", both last investments included
    float player1sEffectiveStackSize = 100.0f;
    float player2sEffectiveStackSize = 100.0f;
    float player1sLastInvestment = 0.0f; // put in before this street's first action
    float player2sLastInvestment = 0.0f;

    float FE_P1 = 0.0f; // fold equity, 0 to 1
    float FE_P2 = 0.0f;
    float EV_P1 = 0.0f; // overall EV in big blinds
    float EV_P2 = 0.0f;
    std::string explanation; // rich text tool tip of the overall result

    std::vector<LineAction> actions; // the first action at index 0, then the reactions
    LineKind kind = LineKind::CheckFold;

    LineVariant() = default;
    LineVariant(const std::string& forPlayer, const std::string& name, LineKind kind);
    LineVariant(const LineVariant& other);
    LineVariant(LineVariant&& other) noexcept = default;
    LineVariant& operator=(const LineVariant& other);
    LineVariant& operator=(LineVariant&& other) noexcept = default;
    ~LineVariant() = default;

    bool isPlayer1FirstToAct() const { return forPlayer != "Player2"; }

    // Hands the variant's money and the tab's rake to every action, as the action widgets
    // do: pot, stacks and last investments as they stand, the first action's size as the
    // amount to be answered, `rakePercentage` / 100 as rake fraction.
    void updateActionInputs(double rakePercentage, double rakeCap);

    // calculateEV of every action.
    void calculateEVs();

    // Sets FE_P1, FE_P2, EV_P1, EV_P2 and explanation from the reactions: their EVs weighted
    // by their share of all reaction combinations.
    void calculateOverall();

private:
    void pointActionsAtOwnGroups(const LineVariant& source);
};
