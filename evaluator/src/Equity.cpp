// getEquity and getWinEvaluationByHand: choosing how to enumerate.
//
//  - Empty board, no dead cards: the preflop matchup table, summed over the matchups.
//  - Empty board with dead cards, totals only: by board value multisets (PreflopDeadCards.h),
//    whose cost hardly depends on the dead cards, or board by board, whichever is estimated
//    to take less time. Board by board is inclusion-exclusion over the dead cards: the boards
//    avoiding the dead set D are all boards (the table) minus, for every non-empty S of D,
//    (-1)^(|S|+1) times the boards holding all of S, which have only 5 - |S| free cards; or,
//    when that enumerates more boards, every board avoiding D.
//  - Otherwise every completion of the board, up to suit symmetry.

#include "VelmaraEvaluatorBase.h"

#include "Enumeration.h"
#include "HandOutcomes.h"
#include "PreflopDeadCards.h"
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
        const PreflopMatchupIndex::Row row = table.matchups().row(handIndex(hand1));
        std::uint64_t wins = 0;
        std::uint64_t ties = 0;
        for (std::size_t j = 0; j < indices2.size(); ++j) {
            if (hand1 & p.live2[j])
                continue;
            std::uint32_t w;
            std::uint32_t t;
            table.counts(row, indices2[j], w, t);
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

// Estimated milliseconds of the preflop ways with dead cards, from measurements: board by
// board a board costs a fixed part and a part per live hand, and suit symmetry divides the
// boards; by value multisets the cost grows with the value classes the ranges hold (the
// flush families walk them) but hardly with the dead cards, and a suit that the symmetries
// map an earlier one to costs nothing.
double boardByBoardMilliseconds(const Problem& p, const std::vector<SuitPermutation>& symmetries) {
    const double boards =
        double(std::min(inclusionExclusionBoards(p.deadCards), binomial(52 - p.deadCards, 5)));
    const double hands = double(p.live1.size() + p.live2.size());
    return boards / double(symmetries.size()) * (150.0 + 1.5 * hands) * 1e-6;
}

double byValueSetsMilliseconds(const Problem& p, const std::vector<SuitPermutation>& symmetries) {
    bool held[13][13] = {};
    int classes = 0;
    for (const std::vector<CardMask>* range : {&p.live1, &p.live2}) {
        for (CardMask hand : *range) {
            const int high = highestBit64(hand) % 13;
            const int low = lowestBit64(hand) % 13;
            bool& seen = held[std::max(high, low)][std::min(high, low)];
            classes += !seen;
            seen = true;
        }
    }
    int suits = 0;
    for (int suit = 0; suit < 4; ++suit) {
        bool image = false;
        for (const SuitPermutation& perm : symmetries)
            for (int earlier = 0; earlier < suit; ++earlier)
                image = image || perm[std::size_t(earlier)] == suit;
        suits += !image;
    }
    return 8.0 + 400.0 * (classes / 91.0) * suits / 4.0;
}

bool choosesValueSets(const Problem& p) {
    const auto symmetries = suitSymmetries({p.dead}, {&p.live1, &p.live2});
    return byValueSetsMilliseconds(p, symmetries) < boardByBoardMilliseconds(p, symmetries);
}

Tally solve(const Problem& p, bool byHand, const volatile bool& stop) {
    if (stopRequested(stop))
        throw TerminationOccured();
    if (p.matchups == 0 || p.completions == 0)
        return Tally{};
    if (p.boardCards == 0 && p.deadCards == 0)
        return fromPreflopTable(p, byHand, stop);
    if (p.boardCards == 0 && !byHand && choosesValueSets(p)) {
        const PreflopCounts counts = preflopByValueSets(p, stop);
        Tally tally;
        tally.wins = counts.wins;
        tally.ties = counts.ties;
        return tally;
    }
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

// Opponents of each live hand of range1: the range2 hands sharing no card with it.
std::vector<std::int64_t> opponentCounts(const Problem& p) {
    std::int64_t byCard2[52];
    countHandsByCard(p.live2, byCard2);
    // Membership by hand index: a search per hand mispredicts its way through every level.
    std::vector<std::uint8_t> inRange2(handCount, 0);
    for (CardMask hand : p.live2)
        inRange2[std::size_t(handIndex(hand))] = 1;
    std::vector<std::int64_t> counts(p.live1.size());
    for (std::size_t i = 0; i < p.live1.size(); ++i) {
        const CardMask hand = p.live1[i];
        counts[i] = std::int64_t(p.live2.size()) - byCard2[lowestBit64(hand)] -
                    byCard2[highestBit64(hand)] + inRange2[std::size_t(handIndex(hand))];
    }
    return counts;
}

// Group counters: straight from the enumeration when the board is dealt, otherwise summed from
// the per-hand counters of the preflop ways.
Tally solveByGroup(const Problem& p, const std::vector<std::uint32_t>& groupOf,
                   std::size_t groupCount, const volatile bool& stop) {
    if (stopRequested(stop))
        throw TerminationOccured();
    Tally tally;
    tally.groupWins.assign(groupCount, 0);
    tally.groupTies.assign(groupCount, 0);
    if (p.matchups == 0 || p.completions == 0)
        return tally;
    if (p.boardCards == 0) {
        const Tally byHand = solve(p, true, stop);
        for (std::size_t i = 0; i < byHand.handWins.size(); ++i) {
            tally.groupWins[groupOf[i]] += byHand.handWins[i];
            tally.groupTies[groupOf[i]] += byHand.handTies[i];
        }
        return tally;
    }
    const BoardEnumeration enumeration(p.live1, p.live2, groupOf, groupCount);
    const auto symmetries = suitSymmetries({p.board, p.dead}, {&p.live1, &p.live2});
    enumeration.addBoards(p.board, p.board | p.dead, 5 - p.boardCards, symmetries, 1, tally, stop);
    return tally;
}

} // namespace

std::vector<KeyedOutcome> outcomesByKey(const std::string& range1, const std::string& range2,
                                        const std::string& board, const std::string& dead,
                                        const std::function<std::uint64_t(CardMask)>& keyOf,
                                        const volatile bool& stop) {
    const Problem p = prepareProblem(range1, range2, board, dead);
    // Group numbers in order of first appearance through a small open-addressing table (a range
    // has at most 1,326 hands, so at most that many keys); the records are put in key order
    // at the end.
    constexpr std::size_t tableSize = 4096;
    std::vector<std::int32_t> table(tableSize, -1);
    std::vector<KeyedOutcome> result;
    std::vector<std::uint32_t> groupOf(p.live1.size());
    for (std::size_t i = 0; i < p.live1.size(); ++i) {
        if (i % 64 == 0 && stopRequested(stop))
            throw TerminationOccured();
        const std::uint64_t key = keyOf(p.live1[i]);
        std::size_t slot = std::size_t((key * 0x9E3779B97F4A7C15ULL) >> 52);
        while (table[slot] >= 0 && result[std::size_t(table[slot])].key != key)
            slot = (slot + 1) & (tableSize - 1);
        if (table[slot] < 0) {
            table[slot] = static_cast<std::int32_t>(result.size());
            result.push_back({key, 0, 0, 0});
        }
        groupOf[i] = static_cast<std::uint32_t>(table[slot]);
    }
    const Tally tally = solveByGroup(p, groupOf, result.size(), stop);
    const std::vector<std::int64_t> opponents = opponentCounts(p);
    for (std::size_t i = 0; i < p.live1.size(); ++i)
        result[groupOf[i]].total += static_cast<std::uint64_t>(opponents[i]) * p.completions;
    for (std::size_t g = 0; g < result.size(); ++g) {
        result[g].wins = static_cast<std::uint64_t>(tally.groupWins[g]);
        result[g].ties = static_cast<std::uint64_t>(tally.groupTies[g]);
    }
    std::sort(result.begin(), result.end(),
              [](const KeyedOutcome& a, const KeyedOutcome& b) { return a.key < b.key; });
    return result;
}

std::vector<HandOutcome> handOutcomes(const std::string& range1, const std::string& range2,
                                      const std::string& board, const std::string& dead,
                                      const volatile bool& stop) {
    const Problem p = prepareProblem(range1, range2, board, dead);
    const Tally tally = solve(p, true, stop);
    const std::vector<std::int64_t> opponents = opponentCounts(p);
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
        record.total = static_cast<std::uint64_t>(opponents[slot]) * p.completions;
        record.wins = static_cast<std::uint64_t>(tally.handWins[slot]);
        record.ties = static_cast<std::uint64_t>(tally.handTies[slot]);
    }
    return result;
}

} // namespace qve

using namespace qve;

void initializeAllBoardsBeforeCalculation() {
    // The ranking tables and the preflop matchup index are constant data; the value class
    // orders would otherwise be ranked by the first boards that need them.
    valueClassTables().rankAllValueSets();
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
