// Showdown by hand strength: every matchup of range1 against range2 is played on every
// completion of the board, exactly as the equity counters count them (one unit per matchup
// per completed board), and each outcome is added to the entries whose key range1's hand
// meets on the board as given, not on the completed board.
//
// The showdowns are those of getWinEvaluationByHand (handOutcomes, without the hand texts):
// the same enumeration as getEquity, with its counters kept per hand of range1. Each hand's
// counters then go to every entry whose key its feature word meets, so a hand counts for all the
// entries it belongs to.

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

struct FeaturedOutcome {
    qve::FeatureWord features;
    std::uint64_t wins, losses, ties;
};

} // namespace

void getDetailWinEvaluation(const std::string& range1, const std::string& range2,
                            const std::string& board, const std::string& dead,
                            std::vector<DetailWinEvaluation>& evaluations, volatile bool& stop) {
    const qve::CardMask boardMask = qve::boardOfText(board);
    const qve::CardMask blocked = boardMask | qve::deadOfText(dead, boardMask);
    if (stop)
        throw TerminationOccured();
    if (evaluations.empty())
        return;
    const std::vector<qve::HandOutcome> byHand =
        qve::handOutcomes(range1, range2, board, dead, stop);
    if (stop)
        throw TerminationOccured();

    std::vector<FeaturedOutcome> outcomes;
    outcomes.reserve(byHand.size());
    for (const qve::HandOutcome& record : byHand) {
        if (stop) // the feature words of a full range take a good part of a millisecond
            throw TerminationOccured();
        if (record.total == 0)
            continue; // the hand cannot occur, or meets no opponent
        if (record.hand & blocked)
            continue;
        outcomes.push_back({qve::handFeatures(record.hand, boardMask), record.wins,
                            record.total - record.wins - record.ties, record.ties});
    }
    // The last look at the flag: the entries are written all or none.
    if (stop)
        throw TerminationOccured();
    for (DetailWinEvaluation& entry : evaluations) {
        std::uint64_t wins = 0, losses = 0, ties = 0;
        for (const FeaturedOutcome& o : outcomes) {
            if (qve::meetsKey(o.features, entry.key.positive, entry.key.exclusive)) {
                wins += o.wins;
                losses += o.losses;
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
