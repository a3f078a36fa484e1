// The small functions of the library: card indices, the combinations of one hand, and the
// combination counts after card removal.

#include "VelmaraEvaluatorBase.h"

#include "Cards.h"
#include "Platform.h"
#include "Problem.h"

#include <algorithm>
#include <stdexcept>

using namespace qve;

namespace {

// Combinations of `hands` that can still occur, each weighted by the share of the live
// opponent hands it does not collide with. An empty opponent text discounts nothing; an
// opponent text whose hands are all blocked leaves nothing possible.
float discountedCombinations(const std::vector<CardMask>& hands,
                             const std::vector<CardMask>& opponentHands, bool opponentGiven,
                             const volatile bool& stop) {
    if (!opponentGiven)
        return static_cast<float>(hands.size());
    if (opponentHands.empty())
        return 0.0f;
    std::int64_t byCard[52];
    countHandsByCard(opponentHands, byCard);
    double sum = 0.0;
    for (CardMask hand : hands) {
        if (stopRequested(stop))
            throw TerminationOccured();
        const bool same = std::binary_search(opponentHands.begin(), opponentHands.end(), hand);
        const std::int64_t free = std::int64_t(opponentHands.size()) - byCard[lowestBit64(hand)] -
                                  byCard[highestBit64(hand)] + (same ? 1 : 0);
        sum += double(free) / double(opponentHands.size());
    }
    return static_cast<float>(sum);
}

} // namespace

RangeCombinations getRangeCombinations(const std::string& range1, const std::string& range2,
                                       const std::string& board, const std::string& dead,
                                       volatile bool& stop) {
    const Problem p = prepareProblem(range1, range2, board, dead);
    RangeCombinations result;
    result.combinations1 = discountedCombinations(p.live1, p.live2, !p.hands2.empty(), stop);
    result.combinations2 = discountedCombinations(p.live2, p.live1, !p.hands1.empty(), stop);
    return result;
}

RangeCombinations getRangeCombinationsForOneRange(const std::string& range,
                                                  const std::string& otherRange,
                                                  const std::string& board, const std::string& dead,
                                                  volatile bool& stop) {
    return getRangeCombinations(range, otherRange, board, dead, stop);
}

void getCardsFromSingleHand(
    const std::string& hand,
    std::vector<std::pair<unsigned long long, unsigned long long>>& combinations,
    const unsigned long long& deadMask) {
    if (hand.size() != 2 && hand.size() != 3)
        throw std::invalid_argument("Not a hand of 2 or 3 characters: '" + hand + "'");
    std::vector<std::pair<unsigned long long, unsigned long long>> found;
    for (CardMask combination : handsOfRange(hand)) {
        if (combination & deadMask)
            continue;
        const CardMask low = combination & (~combination + 1);
        const CardMask high = combination & ~low;
        // The card of the higher value first; for a pair the one of the earlier suit.
        if (lowestBit64(high) % 13 > lowestBit64(low) % 13)
            found.emplace_back(high, low);
        else
            found.emplace_back(low, high);
    }
    // Order of the suit pairs: by the first card's suit, then the second's (d, h, s, c).
    std::sort(found.begin(), found.end(), [](const auto& a, const auto& b) {
        const int laneA1 = lowestBit64(a.first) / 13;
        const int laneB1 = lowestBit64(b.first) / 13;
        if (laneA1 != laneB1)
            return laneA1 < laneB1;
        return lowestBit64(a.second) / 13 < lowestBit64(b.second) / 13;
    });
    combinations.insert(combinations.end(), found.begin(), found.end());
}

unsigned long long getIndexByCards(const std::string& card) {
    return cardOfText(card);
}
