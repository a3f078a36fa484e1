#pragma once

#include "evfe/LineVariant.h"

#include <string>
#include <vector>

// A value as the EV/FE page prints it: fixed notation, two decimals.
std::string twoDecimals(float value);

// What the reaction widgets would have found for one reaction.
struct ReactionInput {
    unsigned int combinations;
    float equityP1;
    float equityP2;
    float size; // own size; 0 for reactions without a size box
};

// The money of a variant and the rake of the page.
struct VariantInput {
    std::string line;
    std::string forPlayer;
    float pot;
    float player1sLastInvestment;
    float player2sLastInvestment;
    float player1sStack;
    float player2sStack;
    float firstSize;
    double rakePercentage;
    double rakeCap;
    std::vector<ReactionInput> reactions; // actions 1, 2, ... in tree order
};

// Builds the line's variant, hands money and rake to the actions, sets combinations and
// equities, runs calculateEV of every action and then calculateOverall.
LineVariant evaluate(const VariantInput& input);
