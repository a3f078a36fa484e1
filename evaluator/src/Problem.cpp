#include "Problem.h"
#include "Enumeration.h"
#include "Platform.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace qve {

namespace {

std::vector<CardMask> avoiding(const std::vector<CardMask>& hands, CardMask cards) {
    std::vector<CardMask> result;
    for (CardMask hand : hands)
        if (!(hand & cards))
            result.push_back(hand);
    return result;
}

} // namespace

void countHandsByCard(const std::vector<CardMask>& hands, std::int64_t counts[52]) {
    std::fill(counts, counts + 52, 0);
    for (CardMask hand : hands) {
        ++counts[lowestBit64(hand)];
        ++counts[highestBit64(hand)];
    }
}

Problem prepareProblem(const std::string& range1, const std::string& range2,
                       const std::string& board, const std::string& dead) {
    Problem p;
    p.board = cardsOfText(board);
    p.dead = cardsOfText(dead);
    p.boardCards = popcount64(p.board);
    p.deadCards = popcount64(p.dead);
    if (p.boardCards > 5)
        throw std::invalid_argument("A board has at most five cards: '" + board + "'");
    if (p.board & p.dead)
        throw std::invalid_argument("Card both on the board and dead: '" +
                                    textOfCard(p.board & p.dead & (~(p.board & p.dead) + 1)) + "'");
    p.hands1 = handsOfRange(range1);
    p.hands2 = handsOfRange(range2);
    p.live1 = avoiding(p.hands1, p.board | p.dead);
    p.live2 = avoiding(p.hands2, p.board | p.dead);
    p.completions = binomial(48 - p.boardCards - p.deadCards, 5 - p.boardCards);

    std::int64_t byCard1[52];
    std::int64_t byCard2[52];
    countHandsByCard(p.live1, byCard1);
    countHandsByCard(p.live2, byCard2);
    std::vector<CardMask> common;
    std::set_intersection(p.live1.begin(), p.live1.end(), p.live2.begin(), p.live2.end(),
                          std::back_inserter(common));
    std::int64_t sharing = 0;
    for (int card = 0; card < 52; ++card)
        sharing += byCard1[card] * byCard2[card];
    p.matchups = std::uint64_t(std::int64_t(p.live1.size()) * std::int64_t(p.live2.size()) -
                               sharing + std::int64_t(common.size()));
    return p;
}

} // namespace qve
