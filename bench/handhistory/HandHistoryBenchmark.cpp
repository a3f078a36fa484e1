// Normalising and parsing one hand history, as the import does for a paste. A typical hand
// is a full cash hand of the canonical dialect (nine seats, four streets, showdown and
// summary, about 1.6 kB); the other texts show the cost of the dialect steps, of a paste
// of many hands and of junk.

#include "evfe/LineList.h"
#include "handhistory/HandHistoryLines.h"
#include "handhistory/HandHistoryNormalisation.h"
#include "handhistory/HandHistoryParser.h"
#include "handhistory/HandHistoryPaste.h"
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

const std::string plainDialectHand = "***** Hand History for Game 13550276397 *****\n"
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

const std::string xmlHand =
    "<description type=\"Holdem\" stakes=\"No Limit ($1/$2)\"/>\n"
    "<game id=\"56114855-410\" starttime=\"20120529015906\" numholecards=\"2\" gametype=\"2\">\n"
    "<players dealer=\"5\">\n"
    "<player seat=\"0\" nickname=\"Ann\" balance=\"$269.96\" dealtin=\"true\" />\n"
    "<player seat=\"1\" nickname=\"Bob\" balance=\"$201.10\" dealtin=\"true\" />\n"
    "<player seat=\"2\" nickname=\"Cy\" balance=\"$302.79\" dealtin=\"true\" />\n"
    "<player seat=\"3\" nickname=\"Dee\" balance=\"$230.23\" dealtin=\"true\" />\n"
    "<player seat=\"4\" nickname=\"Eve\" balance=\"$186.83\" dealtin=\"true\" />\n"
    "<player seat=\"5\" nickname=\"Fay\" balance=\"$222.84\" dealtin=\"true\" />\n"
    "</players>\n"
    "<round id=\"BLINDS\" sequence=\"1\">\n"
    "<event sequence=\"1\" type=\"SMALL_BLIND\" player=\"0\" amount=\"1.00\"/>\n"
    "<event sequence=\"2\" type=\"BIG_BLIND\" player=\"1\" amount=\"2.00\"/>\n"
    "</round>\n"
    "<round id=\"PREFLOP\" sequence=\"2\">\n"
    "<event sequence=\"3\" type=\"FOLD\" player=\"2\"/>\n"
    "<event sequence=\"4\" type=\"FOLD\" player=\"3\"/>\n"
    "<event sequence=\"5\" type=\"RAISE\" player=\"4\" amount=\"8.00\"/>\n"
    "<event sequence=\"6\" type=\"RAISE\" player=\"5\" amount=\"22.25\"/>\n"
    "<event sequence=\"7\" type=\"FOLD\" player=\"0\"/>\n"
    "<event sequence=\"8\" type=\"CALL\" player=\"1\" amount=\"20.25\"/>\n"
    "<event sequence=\"9\" type=\"FOLD\" player=\"4\"/>\n"
    "</round>\n"
    "<round id=\"POSTFLOP\" sequence=\"3\">\n"
    "<cards type=\"COMMUNITY\" cards=\"Js,Qh,Jd\"/>\n"
    "<event sequence=\"10\" type=\"CHECK\" player=\"1\"/>\n"
    "<event sequence=\"11\" type=\"BET\" player=\"5\" amount=\"30.00\"/>\n"
    "<event sequence=\"12\" type=\"FOLD\" player=\"1\"/>\n"
    "</round>\n"
    "</game>\n";

// The hands of the other dialects, each rewritten whole into the canonical text first.
void BM_NormaliseAndParse(benchmark::State& state, const std::string* text) {
    for (auto _ : state) {
        HandHistoryParser parser(*text);
        benchmark::DoNotOptimize(parser.potFlop());
    }
}
BENCHMARK_CAPTURE(BM_NormaliseAndParse, PlainDialectHand, &plainDialectHand)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_NormaliseAndParse, XmlHand, &xmlHand)->Unit(benchmark::kMicrosecond);

// What the import does with a paste of many hands before the player chooses one: decode,
// split and read every hand. A thousand hands, the three kinds above in turn.
void BM_ListPasteOfThousandHands(benchmark::State& state) {
    std::string paste;
    for (int i = 0; i < 1000; ++i)
        paste += (i % 3 == 0 ? typicalHand : i % 3 == 1 ? plainDialectHand : xmlHand) + "\n\n";
    for (auto _ : state) {
        const HandHistoryPaste listed(paste);
        benchmark::DoNotOptimize(listed.hands().data());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) *
                            static_cast<int64_t>(paste.size()));
}
BENCHMARK(BM_ListPasteOfThousandHands)->Unit(benchmark::kMillisecond);

// Ten megabytes of random bytes pasted: listed (every piece refused) as the import would.
void BM_ListTenMegabytesOfJunk(benchmark::State& state) {
    std::string junk;
    junk.reserve(10u * 1024 * 1024);
    unsigned seed = 12345;
    while (junk.size() < 10u * 1024 * 1024) {
        seed = seed * 1103515245u + 12345u;
        junk.push_back(static_cast<char>((seed >> 16) & 0xFF));
    }
    for (auto _ : state) {
        const HandHistoryPaste listed(junk);
        benchmark::DoNotOptimize(listed.hands().data());
    }
}
BENCHMARK(BM_ListTenMegabytesOfJunk)->Unit(benchmark::kMillisecond);

// The EV/FE lines of the typical hand, as the import builds them.
void BM_LinesOfTypicalHand(benchmark::State& state) {
    const HandHistoryParser parser(typicalHand);
    for (auto _ : state) {
        HandHistoryLines builder(parser.record());
        LineList lines;
        builder.preflopLines(lines);
        builder.flopLines(lines);
        builder.riverLines(lines);
        builder.turnLines(lines);
        benchmark::DoNotOptimize(lines.size());
    }
}
BENCHMARK(BM_LinesOfTypicalHand)->Unit(benchmark::kMicrosecond);

} // namespace
