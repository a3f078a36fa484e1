// Board hit evaluation: how many combinations of a range have each hand strength on a board.
//
// `total` is the number of combinations of the (first) range that the board and the dead
// cards leave possible; the second range is counted against the same board and dead cards,
// never against the first range. Counts and hand lists are replaced, not added to; the
// one-player functions leave combinations2 and hands2 alone. Hand lists are two-bit card
// masks in ascending order.

#include "VelmaraEvaluatorBase.h"

#include "hitevaluation/HandFeatures.h"
#include "hitevaluation/HitInput.h"

#include "Platform.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace {

using qve::CardMask;
using qve::FeatureWord;

struct FeaturedHand {
    CardMask hand;
    FeatureWord features;
};

std::vector<FeaturedHand> featured(const std::vector<CardMask>& hands, CardMask board) {
    std::vector<FeaturedHand> result;
    result.reserve(hands.size());
    for (CardMask hand : hands)
        result.push_back({hand, qve::handFeatures(hand, board)});
    return result;
}

// Entries are independent: every hand counts for every entry whose key it meets.
void countClassical(const std::vector<FeaturedHand>& hands, DetailHandEvaluation& entry,
                    bool second) {
    int& count = second ? entry.combinations2 : entry.combinations1;
    std::vector<unsigned long long>& list = second ? entry.hands2 : entry.hands1;
    list.clear();
    for (const FeaturedHand& h : hands)
        if (qve::meetsKey(h.features, entry.key.positive, entry.key.exclusive))
            list.push_back(h.hand);
    count = static_cast<int>(list.size());
}

// The entries form one union: every hand counts for the first entry whose key it meets and
// for no other, so sums over the entries never count a hand twice.
void countUsingOr(const std::vector<FeaturedHand>& hands,
                  std::vector<DetailHandEvaluation>& entries, bool second) {
    for (DetailHandEvaluation& entry : entries)
        (second ? entry.hands2 : entry.hands1).clear();
    for (const FeaturedHand& h : hands) {
        for (DetailHandEvaluation& entry : entries) {
            if (qve::meetsKey(h.features, entry.key.positive, entry.key.exclusive)) {
                (second ? entry.hands2 : entry.hands1).push_back(h.hand);
                break;
            }
        }
    }
    for (DetailHandEvaluation& entry : entries) {
        if (second)
            entry.combinations2 = static_cast<int>(entry.hands2.size());
        else
            entry.combinations1 = static_cast<int>(entry.hands1.size());
    }
}

struct Prepared {
    std::vector<FeaturedHand> first;
    std::vector<FeaturedHand> second;
};

Prepared prepare(const std::string& range1, const std::string* range2, const std::string& board,
                 const std::string& dead) {
    const CardMask boardMask = qve::boardOfText(board);
    const CardMask blocked = boardMask | qve::deadOfText(dead, boardMask);
    Prepared prepared;
    const std::vector<CardMask> hands1 = qve::possibleHands(range1, blocked);
    prepared.first = featured(hands1, boardMask);
    if (range2) {
        const std::vector<CardMask> hands2 = qve::possibleHands(*range2, blocked);
        if (hands2 == hands1)
            prepared.second = prepared.first;
        else
            prepared.second = featured(hands2, boardMask);
    }
    return prepared;
}

} // namespace

void getHitEvaluationClassical(const std::string& range1, const std::string& range2,
                               const std::string& board, const std::string& dead,
                               DetailHandEvaluations& evaluations) {
    if (evaluations.details.empty())
        return;
    const Prepared prepared = prepare(range1, &range2, board, dead);
    evaluations.total = prepared.first.size();
    for (DetailHandEvaluation& entry : evaluations.details) {
        countClassical(prepared.first, entry, false);
        countClassical(prepared.second, entry, true);
    }
}

void getHitEvaluationUsingOr(const std::string& range1, const std::string& range2,
                             const std::string& board, const std::string& dead,
                             DetailHandEvaluations& evaluations) {
    if (evaluations.details.empty())
        return;
    const Prepared prepared = prepare(range1, &range2, board, dead);
    evaluations.total = prepared.first.size();
    countUsingOr(prepared.first, evaluations.details, false);
    countUsingOr(prepared.second, evaluations.details, true);
}

void getHitEvaluationForOnePlayer(const std::string& range, const std::string& board,
                                  const std::string& dead, DetailHandEvaluations& evaluations) {
    if (evaluations.details.empty())
        return;
    const Prepared prepared = prepare(range, nullptr, board, dead);
    evaluations.total = prepared.first.size();
    for (DetailHandEvaluation& entry : evaluations.details)
        countClassical(prepared.first, entry, false);
}

void getHitEvaluationForOnePlayerUsingOr(const std::string& range, const std::string& board,
                                         const std::string& dead,
                                         DetailHandEvaluations& evaluations) {
    if (evaluations.details.empty())
        return;
    const Prepared prepared = prepare(range, nullptr, board, dead);
    evaluations.total = prepared.first.size();
    countUsingOr(prepared.first, evaluations.details, false);
}

void getHitEvaluationForOnePlayerUsingOr(std::vector<unsigned long long> hands,
                                         unsigned long long board,
                                         DetailHandEvaluations& evaluations,
                                         unsigned int boardCardCount) {
    if (evaluations.details.empty())
        return;
    const int cards = qve::popcount64(board);
    if (cards < 3 || cards > 5 || (board >> 52))
        throw std::invalid_argument("A board needs 3, 4 or 5 cards");
    if (static_cast<unsigned int>(cards) != boardCardCount)
        throw std::invalid_argument("The board mask holds " + std::to_string(cards) +
                                    " cards, not " + std::to_string(boardCardCount));
    std::vector<CardMask> possible;
    possible.reserve(hands.size());
    for (unsigned long long hand : hands) {
        if (qve::popcount64(hand) != 2 || (hand >> 52))
            throw std::invalid_argument("A hand mask needs exactly two cards");
        if (!(hand & board))
            possible.push_back(hand);
    }
    evaluations.total = possible.size();
    countUsingOr(featured(possible, board), evaluations.details, false);
}
