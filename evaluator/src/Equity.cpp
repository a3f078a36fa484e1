// getEquity and getWinEvaluationByHand: choosing how to enumerate.
//
//  - Empty board, no dead cards: the preflop matchup table, summed over the matchups.
//  - Empty board with a few dead cards: inclusion-exclusion over the dead cards. The boards
//    avoiding the dead set D are all boards (the table) minus, for every non-empty S of D,
//    (-1)^(|S|+1) times the boards holding all of S; those have only 5 - |S| free cards.
//    Chosen when it enumerates fewer boards than the direct way.
//  - Otherwise every completion of the board, up to suit symmetry.

#include "VelmaraEvaluatorBase.h"

#include "Enumeration.h"
#include "HandOutcomes.h"
#include "PreflopTable.h"
#include "Problem.h"
#include "SuitSymmetry.h"
#include "ValueClasses.h"

#include <algorithm>

namespace qve {

namespace {

Tally fromPreflopTable(const Problem& p, bool byHand, const volatile bool& stop) {
    const PreflopTable& table = PreflopTable::instance();
    std::vector<int> indices2;
    indices2.reserve(p.live2.size());
    for (CardMask hand : p.live2)
        indices2.push_back(handIndex(hand));
    Tally tally;
    if (byHand) {
        tally.handWins.assign(p.live1.size(), 0);
        tally.handTies.assign(p.live1.size(), 0);
    }
    for (std::size_t i = 0; i < p.live1.size(); ++i) {
        if (stopRequested(stop))
            throw TerminationOccured();
        const CardMask hand1 = p.live1[i];
        const int index1 = handIndex(hand1);
        std::uint64_t wins = 0;
        std::uint64_t ties = 0;
        for (std::size_t j = 0; j < indices2.size(); ++j) {
            if (hand1 & p.live2[j])
                continue;
            std::uint32_t w;
            std::uint32_t t;
            table.counts(index1, indices2[j], w, t);
            wins += w;
            ties += t;
        }
        tally.wins += std::int64_t(wins);
        tally.ties += std::int64_t(ties);
        if (byHand) {
            tally.handWins[i] = std::int64_t(wins);
            tally.handTies[i] = std::int64_t(ties);
        }
    }
    return tally;
}

// Boards the inclusion-exclusion way enumerates beyond the table, for d dead cards.
std::uint64_t inclusionExclusionBoards(int d) {
    std::uint64_t boards = 0;
    for (int s = 1; s <= std::min(d, 5); ++s)
        boards += binomial(d, s) * binomial(52 - s, 5 - s);
    return boards;
}

Tally preflopWithDeadCards(const Problem& p, bool byHand, const volatile bool& stop) {
    Tally tally = fromPreflopTable(p, byHand, stop);
    const BoardEnumeration enumeration(p.live1, p.live2, byHand);
    std::vector<CardMask> deadCards;
    for (CardMask rest = p.dead; rest; rest &= rest - 1)
        deadCards.push_back(rest & (~rest + 1));
    const unsigned subsets = 1u << deadCards.size();
    for (unsigned subset = 1; subset < subsets; ++subset) {
        CardMask held = 0;
        int size = 0;
        for (std::size_t k = 0; k < deadCards.size(); ++k) {
            if (subset & (1u << k)) {
                held |= deadCards[k];
                ++size;
            }
        }
        if (size > 5)
            continue;
        const auto symmetries = suitSymmetries({held, p.dead}, {&p.live1, &p.live2});
        enumeration.addBoards(held, held, 5 - size, symmetries, (size % 2) ? -1 : 1, tally, stop);
    }
    return tally;
}

Tally solve(const Problem& p, bool byHand, const volatile bool& stop) {
    if (stopRequested(stop))
        throw TerminationOccured();
    if (p.matchups == 0 || p.completions == 0)
        return Tally{};
    if (p.boardCards == 0 && p.deadCards == 0)
        return fromPreflopTable(p, byHand, stop);
    if (p.boardCards == 0 && p.deadCards <= 8 &&
        inclusionExclusionBoards(p.deadCards) < binomial(52 - p.deadCards, 5))
        return preflopWithDeadCards(p, byHand, stop);
    Tally tally;
    const BoardEnumeration enumeration(p.live1, p.live2, byHand);
    const auto symmetries = suitSymmetries({p.board, p.dead}, {&p.live1, &p.live2});
    enumeration.addBoards(p.board, p.board | p.dead, 5 - p.boardCards, symmetries, 1, tally, stop);
    return tally;
}

std::string textOfHand(CardMask hand) {
    const CardMask low = hand & (~hand + 1);
    const CardMask high = hand & ~low;
    const int lowValue = lowestBit64(low) % 13;
    const int highValue = lowestBit64(high) % 13;
    // Higher value first; for a pair the earlier suit (d, h, s, c) first.
    if (highValue > lowValue)
        return textOfCard(high) + textOfCard(low);
    return textOfCard(low) + textOfCard(high);
}

} // namespace

std::vector<HandOutcome> handOutcomes(const std::string& range1, const std::string& range2,
                                      const std::string& board, const std::string& dead,
                                      const volatile bool& stop) {
    const Problem p = prepareProblem(range1, range2, board, dead);
    const Tally tally = solve(p, true, stop);
    std::int64_t byCard2[52];
    countHandsByCard(p.live2, byCard2);
    std::vector<HandOutcome> result(p.hands1.size());
    std::size_t live = 0;
    for (std::size_t i = 0; i < p.hands1.size(); ++i) {
        const CardMask hand = p.hands1[i];
        HandOutcome& record = result[i];
        record.hand = hand;
        if (live >= p.live1.size() || p.live1[live] != hand)
            continue; // blocked by the board or the dead cards: total 0
        const std::size_t slot = live++;
        if (tally.handWins.empty())
            continue; // no matchup possible at all
        const bool alsoInRange2 = std::binary_search(p.live2.begin(), p.live2.end(), hand);
        const std::int64_t opponents = std::int64_t(p.live2.size()) - byCard2[lowestBit64(hand)] -
                                       byCard2[highestBit64(hand)] + (alsoInRange2 ? 1 : 0);
        record.total = static_cast<std::uint64_t>(opponents) * p.completions;
        record.wins = static_cast<std::uint64_t>(tally.handWins[slot]);
        record.ties = static_cast<std::uint64_t>(tally.handTies[slot]);
    }
    return result;
}

} // namespace qve

using namespace qve;

void initializeAllBoardsBeforeCalculation() {
    rankTables();
    valueClassTables();
    PreflopTable::instance();
}

EquityEvaluation<unsigned long long> getEquity(const std::string& range1, const std::string& range2,
                                               const std::string& board, const std::string& dead,
                                               volatile bool& stop) {
    const Problem p = prepareProblem(range1, range2, board, dead);
    const Tally tally = solve(p, false, stop);
    EquityEvaluation<unsigned long long> result;
    if (p.matchups == 0 || p.completions == 0)
        return result;
    result.total = p.matchups * p.completions;
    result.wins1 = static_cast<unsigned long long>(tally.wins);
    result.ties = static_cast<unsigned long long>(tally.ties);
    result.wins2 = result.total - result.wins1 - result.ties;
    return result;
}

EquityEvaluation<unsigned long long> getEquity(const std::string& range1, const std::string& range2,
                                               const std::string& dead, volatile bool& stop) {
    return getEquity(range1, range2, std::string(), dead, stop);
}

std::vector<WinEvaluationByHand>
getWinEvaluationByHand(const std::string& range1, const std::string& range2,
                       const std::string& board, const std::string& dead, volatile bool& stop) {
    const std::vector<HandOutcome> outcomes = handOutcomes(range1, range2, board, dead, stop);
    std::vector<WinEvaluationByHand> result(outcomes.size());
    for (std::size_t i = 0; i < outcomes.size(); ++i) {
        const HandOutcome& outcome = outcomes[i];
        WinEvaluationByHand& record = result[i];
        record.hand = textOfHand(outcome.hand);
        record.total = outcome.total;
        record.wins = outcome.wins;
        record.ties = outcome.ties;
        record.losses = outcome.total - outcome.wins - outcome.ties;
    }
    return result;
}

std::vector<WinEvaluationByHand> getWinEvaluationByHand(const std::string& range1,
                                                        const std::string& range2,
                                                        const std::string& dead,
                                                        volatile bool& stop) {
    return getWinEvaluationByHand(range1, range2, std::string(), dead, stop);
}
