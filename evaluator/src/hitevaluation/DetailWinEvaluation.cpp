// Showdown by hand strength: every matchup of range1 against range2 is played on every
// completion of the board, exactly as the equity counters count them (one unit per matchup
// per completed board), and each outcome is added to the entries whose key range1's hand
// meets on the board as given, not on the completed board.
//
// The hands of range1 are grouped by their feature word on the board as given, and the
// enumeration of getEquity counts per group (outcomesByKey): a value class whose hands share a
// word costs it what it costs getEquity. Each group's counters then go to every entry whose
// key its word meets, so a hand counts for all the entries it belongs to.

#include "VelmaraEvaluatorBase.h"

#include "HandOutcomes.h"
#include "hitevaluation/HandFeatures.h"
#include "hitevaluation/HitInput.h"

#include <climits>
#include <cstdint>
#include <string>
#include <vector>

namespace {

int saturated(std::uint64_t value) {
    return value > std::uint64_t(INT_MAX) ? INT_MAX : static_cast<int>(value);
}

} // namespace

void getDetailWinEvaluation(const std::string& range1, const std::string& range2,
                            const std::string& board, const std::string& dead,
                            std::vector<DetailWinEvaluation>& evaluations, volatile bool& stop) {
    const qve::CardMask boardMask = qve::boardOfText(board);
    qve::deadOfText(dead, boardMask); // the messages of the hit evaluations for bad input
    if (stop)
        throw TerminationOccured();
    if (evaluations.empty())
        return;
    const std::vector<qve::KeyedOutcome> outcomes = qve::outcomesByKey(
        range1, range2, board, dead,
        [boardMask](qve::CardMask hand) { return qve::handFeatures(hand, boardMask); }, stop);
    // The last look at the flag: the entries are written all or none.
    if (stop)
        throw TerminationOccured();
    for (DetailWinEvaluation& entry : evaluations) {
        std::uint64_t wins = 0, losses = 0, ties = 0;
        for (const qve::KeyedOutcome& o : outcomes) {
            if (qve::meetsKey(o.key, entry.key.positive, entry.key.exclusive)) {
                wins += o.wins;
                losses += o.total - o.wins - o.ties;
                ties += o.ties;
            }
        }
        // The counting words are 32 bits wide; a flop of full ranges stays below 2^31
        // (1176 x 1081 matchups x 990 boards).
        entry.wins = saturated(wins);
        entry.losses = saturated(losses);
        entry.ties = saturated(ties);
    }
}
