#pragma once

#include "training/EquityTrainingRandomness.h"

#include <optional>
#include <string>

namespace Range {
class HandRange;
class RandomSource;
} // namespace Range

// The cards of one training item: a hand drawn from hero's range and the board completed by
// random cards, both from the generator handed in, so that a fixed seed replays a training.
//
// Card texts are two characters a card ("AhKd2c"), as the card fields write them.
class EquityTrainingDeal {
public:
    // How often a hand and a board are drawn before the deal gives up.
    static constexpr unsigned int maximumTries = 1000;

    struct Cards {
        std::string heroHand; // "AdKh"
        std::string board;    // 3, 4 or 5 cards
    };

    // The length a board is completed to: 3 cards for a random flop, 4 up to the turn, 5 up
    // to the river; 0 for no random cards (the board stays as given).
    static unsigned int boardCardCount(EquityTrainingRandomness randomness);

    // `given` extended by random cards until it holds boardCardCount() cards. A card is a
    // place of the deck "2d3d...Ad2h...Ac" drawn from `random` (52 equally likely) and is
    // drawn again when it already lies on the board or among `deadCards`. Given cards stay,
    // in front; a board that is long enough already comes back unchanged.
    static std::string completeBoard(const std::string& given, EquityTrainingRandomness randomness,
                                     const std::string& deadCards, Range::RandomSource& random);

    // Up to maximumTries times: a hand of `heroRange` (every combination equally likely),
    // then the board completed as above; the first hand that shares no card with that board
    // or the dead cards is the deal. Nothing when every try collided (hero's range holds
    // only cards that are on the board) or the range is empty.
    static std::optional<Cards> deal(const Range::HandRange& heroRange, const std::string& board,
                                     const std::string& deadCards,
                                     EquityTrainingRandomness randomness,
                                     Range::RandomSource& random);
};
