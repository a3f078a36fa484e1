#include "training/EquityTrainingDeal.h"

#include "Range/CardText.h"
#include "Range/HandRange.h"
#include "Range/HandRangeStringReader.h"
#include "Range/RandomSource.h"

#include <cstdint>

namespace {

const char deck[] = "2d3d4d5d6d7d8d9dTdJdQdKdAd2h3h4h5h6h7h8h9hThJhQhKhAh"
                    "2s3s4s5s6s7s8s9sTsJsQsKsAs2c3c4c5c6c7c8c9cTcJcQcKcAc";

// The cards of a text of two-character cards as one mask; pieces that are no card add
// nothing.
unsigned long long maskOf(const std::string& cards) {
    unsigned long long mask = 0;
    for (std::size_t place = 0; place + 1 < cards.size(); place += 2)
        mask |= Range::CardText::cardOf(cards[place], cards[place + 1]);
    return mask;
}

} // namespace

unsigned int EquityTrainingDeal::boardCardCount(EquityTrainingRandomness randomness) {
    switch (randomness) {
    case EquityTrainingRandomness::Flop:
        return 3;
    case EquityTrainingRandomness::Turn:
        return 4;
    case EquityTrainingRandomness::River:
        return 5;
    case EquityTrainingRandomness::None:
        break;
    }
    return 0;
}

std::string EquityTrainingDeal::completeBoard(const std::string& given,
                                              EquityTrainingRandomness randomness,
                                              const std::string& deadCards,
                                              Range::RandomSource& random) {
    std::string board = given;
    const std::size_t length = 2 * boardCardCount(randomness);
    // At most 5 board and 21 dead cards are taken, so a free card is always left to draw.
    unsigned long long taken = maskOf(board) | maskOf(deadCards);
    while (board.size() < length) {
        const std::uint32_t place = random.below(52);
        const unsigned long long card =
            Range::CardText::cardOf(deck[2 * place], deck[2 * place + 1]);
        if ((taken & card) != 0)
            continue;
        taken |= card;
        board.append(deck + 2 * place, 2);
    }
    return board;
}

std::optional<EquityTrainingDeal::Cards>
EquityTrainingDeal::deal(const Range::HandRange& heroRange, const std::string& board,
                         const std::string& deadCards, EquityTrainingRandomness randomness,
                         Range::RandomSource& random) {
    if (heroRange.combinationCount() == 0)
        return std::nullopt;
    const Range::HandRangeStringReader reader(heroRange);
    const unsigned long long dead = maskOf(deadCards);
    for (unsigned int tries = 0; tries < maximumTries; ++tries) {
        Cards cards;
        cards.heroHand = reader.randomHand(random);
        cards.board = completeBoard(board, randomness, deadCards, random);
        if ((maskOf(cards.heroHand) & (maskOf(cards.board) | dead)) == 0)
            return cards;
    }
    return std::nullopt;
}
