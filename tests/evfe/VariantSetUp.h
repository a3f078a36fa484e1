#pragma once

#include "EVTestSupport.h"

#include <string>

// A worked example, named step by step: the line and its first actor, then the money, the
// rake and one call per reaction in tree order. What is not named stays as on a fresh page:
// no last investments, stacks of 100, no first size, no rake.
class VariantSetUp {
public:
    VariantSetUp(const std::string& line, const std::string& forPlayer)
        : input{line, forPlayer, 0, 0, 0, 100, 100, 0, 0, 0, {}} {}

    // The pot before the first action, both last investments included.
    VariantSetUp& pot(float pot) { return set(input.pot, pot); }
    VariantSetUp& lastInvestments(float player1, float player2) {
        return set(input.player1sLastInvestment, player1)
            .set(input.player2sLastInvestment, player2);
    }
    VariantSetUp& stacks(float player1, float player2) {
        return set(input.player1sStack, player1).set(input.player2sStack, player2);
    }
    VariantSetUp& firstSize(float size) { return set(input.firstSize, size); }
    VariantSetUp& rake(double percentage, double cap) {
        return set(input.rakePercentage, percentage).set(input.rakeCap, cap);
    }

    // A reaction that ends in a fold: no equities. `ownSize` for reactions with a size box.
    VariantSetUp& fold(unsigned int combinations, float ownSize = 0) {
        return reaction({combinations, 0, 0, ownSize});
    }
    // A reaction that ends at showdown with the equities of its two range slices.
    VariantSetUp& showdown(unsigned int combinations, float equityP1, float equityP2,
                           float ownSize = 0) {
        return reaction({combinations, equityP1, equityP2, ownSize});
    }

    // "Bet/Ship" on the turn, the example both the EV and the text tests work through: pot
    // 20, Player1 bets 15, stacks 80 and 60, rake 4 % capped at 5. Player2 folds with 30
    // combinations, calls with 40 (Player1 60 %), raises to 45 and folds to the shove with
    // 20, raises and calls the shove with 10 (50 % each).
    static VariantSetUp betShipOnTheTurn() {
        return VariantSetUp("Bet/Ship", "Player1")
            .pot(20)
            .stacks(80, 60)
            .firstSize(15)
            .rake(4, 5)
            .fold(30)
            .showdown(40, 0.6f, 0.4f)
            .fold(20, 45)
            .showdown(10, 0.5f, 0.5f);
    }

    // The variant with every reaction's EV and the overall result, as evaluate builds it.
    LineVariant evaluate() const { return ::evaluate(input); }

private:
    template <typename T>
    VariantSetUp& set(T& field, T value) {
        field = value;
        return *this;
    }

    VariantSetUp& reaction(const ReactionInput& reaction) {
        input.reactions.push_back(reaction);
        return *this;
    }

    VariantInput input;
};
