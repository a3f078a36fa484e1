// Normalising and parsing one hand history, as the import does for a paste. A typical hand
// is a full cash hand of the canonical dialect (nine seats, four streets, showdown and
// summary, about 1.6 kB); the other texts show the cost of the dialect steps and of a hand
// that fails.

#include "handhistory/HandHistoryNormalisation.h"
#include "handhistory/HandHistoryParser.h"
#include "handhistory/HandHistoryRecord.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

const std::string typicalHand =
    "PokerStars Game #109673533027:  Hold'em No Limit ($5/$10 USD) - 2014/01/06 1:11:20 ET\n"
    "Table 'Table II 40-100 bb' 9-max Seat #4 is the button\n"
    "Seat 1: Ann ($1151.30 in chips) \n"
    "Seat 2: Bob ($1695 in chips) \n"
    "Seat 3: Cy ($1048.82 in chips) \n"
    "Seat 4: Dee ($1642 in chips) \n"
    "Seat 5: Eve ($620.40 in chips) \n"
    "Seat 6: Fay ($1693.92 in chips) \n"
    "Seat 7: Gil ($719.36 in chips) \n"
    "Seat 8: Hal ($932 in chips) \n"
    "Seat 9: Ivy ($1000 in chips) \n"
    "Eve: posts small blind $5\n"
    "Fay: posts big blind $10\n"
    "*** HOLE CARDS ***\n"
    "Dealt to Gil [Ah Kd]\n"
    "Gil: raises $20 to $30\n"
    "Hal: folds \n"
    "Ivy: folds \n"
    "Ann: folds \n"
    "Bob: folds \n"
    "Cy: folds \n"
    "Dee: folds \n"
    "Eve: folds \n"
    "Fay: calls $20\n"
    "*** FLOP *** [5c 7c 7d]\n"
    "Fay: checks \n"
    "Gil: bets $50\n"
    "Fay: raises $50 to $100\n"
    "Gil: calls $50\n"
    "*** TURN *** [5c 7c 7d] [Jd]\n"
    "Fay: bets $150\n"
    "Gil: calls $150\n"
    "*** RIVER *** [5c 7c 7d Jd] [Jc]\n"
    "Fay: checks \n"
    "Gil: checks \n"
    "*** SHOW DOWN ***\n"
    "Fay: shows [7h 6h] (a full house, Sevens full of Jacks)\n"
    "Gil: mucks hand \n"
    "Fay collected $562 from pot\n"
    "*** SUMMARY ***\n"
    "Total pot $565 | Rake $3 \n"
    "Board [5c 7c 7d Jd Jc]\n"
    "Seat 1: Ann folded before Flop (didn't bet)\n"
    "Seat 2: Bob folded before Flop (didn't bet)\n"
    "Seat 3: Cy folded before Flop (didn't bet)\n"
    "Seat 4: Dee (button) folded before Flop (didn't bet)\n"
    "Seat 5: Eve (small blind) folded before Flop\n"
    "Seat 6: Fay (big blind) showed [7h 6h] and won ($562) with a full house\n"
    "Seat 7: Gil mucked\n"
    "Seat 8: Hal folded before Flop (didn't bet)\n"
    "Seat 9: Ivy folded before Flop (didn't bet)\n";

const std::string positionDialectHand = "Game#5 NL $0.50/$1\n"
                                        "SB: $100\n"
                                        "BB: $150\n"
                                        "UTG: $80\n"
                                        "CO: $95.50\n"
                                        "Hero (BTN): $200\n"
                                        "Preflop: Hero is BTN with A of h, 10 of d\n"
                                        "2 folds\n"
                                        "Hero: raises to $3\n"
                                        "SB: folds\n"
                                        "BB: calls $2\n"
                                        "Flop: ($6.50) 2c 7d Qs (2 players)\n"
                                        "BB: checks\n"
                                        "Hero: bets $4\n"
                                        "BB: folds\n"
                                        "*** SUMMARY ***\n";

const std::string unreadableHand = "***** Hand History for Game 13550276397 *****\n"
                                   "$0.05/$0.10 USD NL Texas Hold'em - Monday, January 06\n"
                                   "Seat 1 is the button\n"
                                   "Seat 1: Ann ( $8.54 USD )\n"
                                   "Seat 5: Bob ( $11 USD )\n"
                                   "Ann posts small blind [$0.05 USD].\n"
                                   "Bob posts big blind [$0.10 USD].\n"
                                   "** Dealing down cards **\n"
                                   "Ann calls [$0.05 USD]\n"
                                   "Bob checks\n"
                                   "** Dealing Flop ** [ Ah, 3s, 4s ]\n";

void BM_NormaliseAndParseTypicalHand(benchmark::State& state) {
    for (auto _ : state) {
        HandHistoryParser parser(typicalHand);
        benchmark::DoNotOptimize(parser.potRiver());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) *
                            static_cast<int64_t>(typicalHand.size()));
}
BENCHMARK(BM_NormaliseAndParseTypicalHand)->Unit(benchmark::kMicrosecond);

void BM_NormaliseTypicalHand(benchmark::State& state) {
    for (auto _ : state) {
        std::string text = typicalHand;
        HandHistoryRecord hand;
        normalise(text, hand);
        benchmark::DoNotOptimize(text.data());
    }
}
BENCHMARK(BM_NormaliseTypicalHand)->Unit(benchmark::kMicrosecond);

void BM_NormaliseAndParsePositionDialectHand(benchmark::State& state) {
    for (auto _ : state) {
        HandHistoryParser parser(positionDialectHand);
        benchmark::DoNotOptimize(parser.potFlop());
    }
}
BENCHMARK(BM_NormaliseAndParsePositionDialectHand)->Unit(benchmark::kMicrosecond);

void BM_NormaliseAndRejectUnreadableHand(benchmark::State& state) {
    for (auto _ : state) {
        try {
            HandHistoryParser parser(unreadableHand);
            benchmark::DoNotOptimize(parser.potFlop());
        } catch (const HandHistoryParser::ParseError& error) {
            benchmark::DoNotOptimize(error.reason.data());
        }
    }
}
BENCHMARK(BM_NormaliseAndRejectUnreadableHand)->Unit(benchmark::kMicrosecond);

} // namespace
