#pragma once

#include "handstrength/HandStrengthSelectorOptions.h"

#include <VelmaraEvaluatorBase.h>

#include <vector>

// Two-card hands, or the cards of a board, as a 64-bit card mask.
using BoardType = unsigned long long;

// A request of the hand strength selector: which hands of a list have a hand strength on a
// board. Each of the sixteen choices is a value of its enumeration with a comparator:
// "Exactly" takes the value alone, "Or Better" the value and the ones above it, "Or Worse"
// the value and the ones below it down to 1 (0 means no restriction).
//
// keys() turns the choices into the keys the evaluator counts: nested walks over the draw
// choices (flush draw, its strength, its hole cards, straight draw, its hole cards), and
// inside each the made hand: the second-level details (kickers and kinds of two pair and
// trips) first, then the first-level details (kinds of high card, pair, two pair, trips and
// flush), then the hand value alone. select() asks the evaluator for the union of the keys.
struct HandStrengthSelection {
    using Comparator = HandStrengthSelectorOptions::Comparator;

    template <typename Enumeration>
    struct Choice {
        Enumeration value = Enumeration(0);
        Comparator comparator = Comparator::Exactly;
    };

    std::vector<BoardType> hands;
    BoardType board = 0;
    BoardType deadCards = 0;

    Choice<HandStrengthSelectorOptions::HandValue> handValue;
    Choice<HandStrengthSelectorOptions::HighcardValue> highcardValue;
    Choice<HandStrengthSelectorOptions::PairValue> pairValue;
    Choice<HandStrengthSelectorOptions::KickerValue> kickerValue;
    Choice<HandStrengthSelectorOptions::TwopairValue> twopairValue;
    Choice<HandStrengthSelectorOptions::TripsTripsValue> tripsTripsValue;
    Choice<HandStrengthSelectorOptions::PocketPairTwopairValue> pocketPairTwopairValue;
    Choice<HandStrengthSelectorOptions::TwoCardTwopairValue> twoCardTwopairValue;
    Choice<HandStrengthSelectorOptions::OneCardTwopairValue> oneCardTwopairValue;
    Choice<HandStrengthSelectorOptions::TripsValue> tripsValue;
    Choice<HandStrengthSelectorOptions::FlushValue> flushValue;
    Choice<HandStrengthSelectorOptions::FlushDrawCardNumberValue> flushDrawCardNumberValue;
    Choice<HandStrengthSelectorOptions::StraightDrawCardNumberValue> straightDrawCardNumberValue;
    Choice<HandStrengthSelectorOptions::FlushDrawValue> flushDrawValue;
    Choice<HandStrengthSelectorOptions::FlushDrawStrength> flushDrawStrength;
    Choice<HandStrengthSelectorOptions::StraightDrawValue> straightDrawValue;

    // The next value of a walk from `value` by `comparator`, within values 0 to `top` - 1:
    // "Exactly" ends the walk (0), "Or Better" adds 1 (0 and `top` stay), "Or Worse"
    // subtracts 1 (0 stays). A walk goes on while the value is neither 0 nor `top`.
    static int step(Comparator comparator, int value, int top);

    // The keys of the request, one per combination of the choices, in the order of the walk.
    std::vector<HandStrengthKey> keys() const;
    // The hands (those of `hands` that hold no board or dead card) that meet any key, each
    // once, ordered by their masks. Without a flop on `board` nothing meets a key.
    std::vector<BoardType> select() const;
};
