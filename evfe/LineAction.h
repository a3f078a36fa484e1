#pragma once

#include <cstdint>
#include <string>

#include "evfe/ActionCode.h"

namespace Range {
class TreeRangeNode;
} // namespace Range
template <typename T>
struct EquityEvaluation;

// One node of a variant's action tree: the first action at index 0, or a reaction of the
// other player that ends the street in a known way (see ActionCode).
//
// Money is in big blinds, as 32-bit floats. The EV arithmetic is carried out in that width
// in one fixed order of operations, so that results and their printed digits are the same
// on every run; see calculateEV. Copying copies every number and the `range` pointer as it
// stands; the owning variant points a copy at its own groups.
struct LineAction {
    bool firstToAct = false;       // true only for the action at index 0
    bool player1FirstToAct = true; // the first actor of the street is Player1
    bool needsOwnSize = false;     // the action has a size box of its own
    std::string verb;              // shown to the user: "bet", "3-bet/fold", ...
    ActionCode action = ActionCode::Check;
    // This action's group in the variant's range group set; not owned.
    Range::TreeRangeNode* range = nullptr;

    float rangePercentage = 0.0f;        // combinations as a share of 1326
    float parentRangePercentage = 0.0f;  // share of the parent group, see below
    std::uint32_t rangeCombinations = 0; // after board and dead cards
    float size = 0.0f;                   // own size; read by codes 6, 7, 10, 11 and text 8
    std::string addition;                // free text kept in files, empty when built

    float equityP1 = 0.0f; // equity of the two range slices of this reaction, 0 to 1
    float equityP2 = 0.0f;
    float EV_P1 = 0.0f; // EV of this reaction alone
    float EV_P2 = 0.0f;

    float rakeFraction = 0.0f;  // rake percentage / 100
    float rakeCap = 0.0f;       // big blinds
    float deadmoney = 0.0f;     // pot before the first action, both investments included
    float previousMoney = 0.0f; // size of the first action, the amount to be answered
    float player1sEffectiveStackSizeBeforeAction = 100.0f;
    float player2sEffectiveStackSizeBeforeAction = 100.0f;
    float player1sLastInvestmentBeforeAction = 0.0f; // Player1's money already in deadmoney
    float player2sLastInvestmentBeforeAction = 0.0f;

    std::string explanation; // rich text tool tip of this reaction

    // Sets EV_P1, EV_P2 and explanation from the fields above. The opening actions (codes
    // Check and Bet) have no EV of their own: for them nothing changes.
    void calculateEV();

    // Sets parentRangePercentage to the group's share of its parent group
    // (Range::Tree::shareOfParent): combinations of the group over those of its parent,
    // before board and dead cards. Not a number without a group, without a range parent, or
    // under an empty parent; a display shows that as no value.
    void updateParentRangePercentage();

    // Rake taken from a final pot: min(finalPot * rakeFraction, rakeCap).
    float rakeOf(float finalPot) const;

    // Equities of both players from the counters of an equity run:
    // (wins + ties * 0.5) / total, all in float. A record without any total gives NaN.
    void setEquities(const EquityEvaluation<unsigned long long>& evaluation);
};
