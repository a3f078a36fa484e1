// quorvane-eval equity as players run it: output and exit codes.

#include "JsonValue.h"
#include "support/EvalProcess.h"

#include <gtest/gtest.h>

#include <string>

namespace {

EvalRun runEval(const std::string& arguments) {
    return runQuorvaneEval(arguments);
}

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

} // namespace

TEST(EquityCommand, PrintsEquityCountersAndTime) {
    const EvalRun run = runEval("equity AhAs KdKc");
    EXPECT_EQ(run.exitCode, 0) << run.output;
    EXPECT_TRUE(contains(run.output, "equity1 81.26 %\n")) << run.output;
    EXPECT_TRUE(contains(run.output, "equity2 18.74 %\n")) << run.output;
    EXPECT_TRUE(contains(run.output, "wins1 1388072\n")) << run.output;
    EXPECT_TRUE(contains(run.output, "wins2 317694\n")) << run.output;
    EXPECT_TRUE(contains(run.output, "ties 6538\n")) << run.output;
    EXPECT_TRUE(contains(run.output, "total 1712304\n")) << run.output;
    EXPECT_TRUE(contains(run.output, "time ")) << run.output;
    EXPECT_TRUE(contains(run.output, " ms\n")) << run.output;
}

TEST(EquityCommand, BoardAndDeadCards) {
    const EvalRun flop = runEval("equity AhAs KdKc --board 2c7d9h");
    EXPECT_EQ(flop.exitCode, 0) << flop.output;
    EXPECT_TRUE(contains(flop.output, "wins1 907\n")) << flop.output;
    EXPECT_TRUE(contains(flop.output, "total 990\n")) << flop.output;
    const EvalRun dead = runEval("equity AhAs KdKc --dead 2d");
    EXPECT_EQ(dead.exitCode, 0) << dead.output;
    EXPECT_TRUE(contains(dead.output, "total 1533939\n")) << dead.output;
}

TEST(EquityCommand, ByHandPrintsOneLinePerHandOfRange1) {
    const EvalRun run = runEval("equity AA,KhKd QQ --board 2c3d4h8s9c --by-hand");
    EXPECT_EQ(run.exitCode, 0) << run.output;
    EXPECT_TRUE(contains(run.output, "equity1 100.00 %\n")) << run.output;
    EXPECT_TRUE(contains(run.output, "total 42\n")) << run.output; // 7 hands x 6 queens
    EXPECT_TRUE(contains(run.output, "AdAh 100.00 % wins 6 losses 0 ties 0 total 6\n"))
        << run.output;
    EXPECT_TRUE(contains(run.output, "KdKh 100.00 % wins 6 losses 0 ties 0 total 6\n"))
        << run.output;
}

TEST(EquityCommand, NoPossibleMatchup) {
    const EvalRun run = runEval("equity AhAs AhKd");
    EXPECT_EQ(run.exitCode, 0) << run.output;
    EXPECT_TRUE(contains(run.output, "equity1 -\n")) << run.output;
    EXPECT_TRUE(contains(run.output, "no matchup is possible")) << run.output;
}

TEST(EquityCommand, BadInputNamesTheTokenAndFails) {
    EvalRun run = runEval("equity AA,KQx KK");
    EXPECT_EQ(run.exitCode, 1);
    // Range text goes through the free range reader, which quotes with double quotes.
    EXPECT_TRUE(contains(run.output, "'KQx'") || contains(run.output, "\"KQx\"")) << run.output;
    run = runEval("equity AA KK --board AhKd2x");
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(contains(run.output, "Unknown card \"2x\" in the board")) << run.output;
    run = runEval("equity AA KK --board AhKd2c --dead Kd");
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(contains(run.output, "'Kd'")) << run.output;
    run = runEval("equity AA KK --dead AhAh");
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(contains(run.output, "The card Ah is given twice.")) << run.output;
}

TEST(EquityCommand, BadUsageFails) {
    EvalRun run = runEval("equity AA");
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_TRUE(contains(run.output, "usage: quorvane-eval equity RANGE1 RANGE2")) << run.output;
    run = runEval("equity AA KK --turn 2c");
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_TRUE(contains(run.output, "'--turn'")) << run.output;
    run = runEval("equity AA KK --board");
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_TRUE(contains(run.output, "'--board'")) << run.output;
}

TEST(EquityCommand, JsonCarriesTheExactCountersEquitiesAndTime) {
    const EvalRun run = runEval("equity AhAs KdKc --json");
    EXPECT_EQ(run.exitCode, 0) << run.output;
    const JsonValue answer = JsonValue::parse(run.output);
    EXPECT_EQ(answer["command"].text, "equity");
    EXPECT_EQ(answer["range1"].text, "AhAs");
    EXPECT_EQ(answer["range2"].text, "KdKc");
    EXPECT_EQ(answer["board"].text, "");
    EXPECT_EQ(answer["wins1"].text, "1388072");
    EXPECT_EQ(answer["wins2"].text, "317694");
    EXPECT_EQ(answer["ties"].text, "6538");
    EXPECT_EQ(answer["total"].text, "1712304");
    EXPECT_DOUBLE_EQ(answer["equity1"].doubleValue(), (1388072 + 6538 * 0.5) / 1712304);
    EXPECT_DOUBLE_EQ(answer["equity2"].doubleValue(), (317694 + 6538 * 0.5) / 1712304);
    EXPECT_GE(answer["time_ms"].doubleValue(), 0.0);
    EXPECT_FALSE(answer.has("hands"));
    // One object on one line.
    EXPECT_EQ(run.output.find('\n'), run.output.size() - 1);
}

TEST(EquityCommand, JsonByHandAndFailures) {
    const EvalRun byHand = runEval("equity AA,KhKd QQ --board 2c3d4h8s9c --by-hand --json");
    EXPECT_EQ(byHand.exitCode, 0) << byHand.output;
    const JsonValue answer = JsonValue::parse(byHand.output);
    ASSERT_EQ(answer["hands"].items.size(), 7u);
    // In ascending order of the hands' card masks: the kings first.
    EXPECT_EQ(answer["hands"].items[0]["hand"].text, "KdKh");
    EXPECT_EQ(answer["hands"].items[1]["hand"].text, "AdAh");
    EXPECT_EQ(answer["hands"].items[1]["wins"].text, "6");
    EXPECT_EQ(answer["hands"].items[1]["losses"].text, "0");
    EXPECT_EQ(answer["hands"].items[1]["total"].text, "6");
    EXPECT_DOUBLE_EQ(answer["hands"].items[1]["equity"].doubleValue(), 1.0);
    EXPECT_EQ(answer["total"].text, "42");

    const EvalRun none = runEval("equity AhAs AhKd --json");
    EXPECT_EQ(none.exitCode, 0);
    EXPECT_EQ(JsonValue::parse(none.output)["equity1"].kind, JsonValue::Kind::Null);

    const EvalRun bad = runEval("equity AA,KQx KK --json");
    EXPECT_EQ(bad.exitCode, 1);
    const JsonValue error = JsonValue::parse(bad.output);
    EXPECT_EQ(error["command"].text, "equity");
    EXPECT_EQ(error["exit_code"].text, "1");
    EXPECT_NE(error["error"].text.find("\"KQx\""), std::string::npos);
    const EvalRun usage = runEval("--json equity AA");
    EXPECT_EQ(usage.exitCode, 2);
    const JsonValue usageError = JsonValue::parse(usage.output);
    EXPECT_EQ(usageError["error"].text, "two ranges are needed, 1 given");
    EXPECT_EQ(usageError["usage"].text,
              "quorvane-eval equity RANGE1 RANGE2 [--board B] [--dead D] [--by-hand]");
    const EvalRun unknown = runEval("equities AA KK --json");
    EXPECT_EQ(unknown.exitCode, 2);
    EXPECT_EQ(JsonValue::parse(unknown.output)["error"].text, "unknown command 'equities'");
}

TEST(EquityCommand, RangeAndHitsAnswerInJsonToo) {
    const EvalRun range = runEval("range 'aks, qq, kk, 22-33, AhKd' --json");
    EXPECT_EQ(range.exitCode, 0);
    const JsonValue r = JsonValue::parse(range.output);
    EXPECT_EQ(r["normal"].text, "KK,QQ,AKs,22-33,AhKd");
    EXPECT_EQ(r["technical"].text, "22,33,QQ,KK,AKs,AhKd");
    EXPECT_EQ(r["compact"].text, "QQ-KK,22-33,AKs,AhKd");
    EXPECT_EQ(r["combinations"].text, "29");

    const EvalRun hits = runEval("hits AA,KK,AKs --board Ks7h2d --json");
    EXPECT_EQ(hits.exitCode, 0) << hits.output;
    const JsonValue h = JsonValue::parse(hits.output);
    EXPECT_EQ(h["schema"].text, "Standard");
    EXPECT_EQ(h["combinations"].text, "12");
    ASSERT_EQ(h["groups"].items.size(), 4u);
    EXPECT_EQ(h["groups"].items[0]["name"].text, "Custom Sum");
    EXPECT_TRUE(h["groups"].items[0]["custom_sum"].flag);
    const JsonValue& made = h["groups"].items[1];
    EXPECT_EQ(made["name"].text, "Made Hands");
    ASSERT_EQ(made["rows"].items.size(), 2u);
    const JsonValue& pair = made["rows"].items[1];
    EXPECT_EQ(pair["name"].text, "Pair");
    EXPECT_EQ(pair["combinations"].text, "9");
    EXPECT_EQ(pair["percent"].text, "75.00 %");
    EXPECT_EQ(pair["share"].text, "0.75");
    ASSERT_EQ(pair["rows"].items.size(), 2u);
    EXPECT_EQ(pair["rows"].items[1]["name"].text, "Top Pair");
    EXPECT_EQ(pair["rows"].items[1]["rows"].items[0]["name"].text, "With Top Kicker");

    const EvalRun features = runEval("hits AA,KK,AKs --board Ks7h2d --features --json");
    const JsonValue f = JsonValue::parse(features.output);
    EXPECT_EQ(f["features"].items.size(), 48u);
    EXPECT_EQ(f["features"].items[7]["name"].text, "Pair");
    EXPECT_EQ(f["features"].items[7]["bit"].text, "7");
    EXPECT_EQ(f["features"].items[7]["combinations"].text, "9");
}

TEST(EquityCommand, HelpDocumentsEveryCommandAndJson) {
    const EvalRun help = runEval("--help");
    EXPECT_EQ(help.exitCode, 0);
    for (const char* part :
         {"usage: quorvane-eval COMMAND [ARGUMENTS] [--json]", "  batch [FILE|-]",
          "  equity RANGE1 RANGE2 [--board B] [--dead D] [--by-hand]", "  hand FILE|-",
          "  hits RANGE --board B [--dead D] [--schema NAME] [--absolute] [--all-rows] "
          "[--features]",
          "  range TEXT...", "--json (with any command", "\"time_ms\"",
          "Exit codes:", "quorvane-eval(1)"})
        EXPECT_TRUE(contains(help.output, part)) << part;
    const EvalRun command = runEval("hits --help");
    EXPECT_EQ(command.exitCode, 0);
    EXPECT_EQ(command.output.rfind("usage: quorvane-eval hits RANGE --board B", 0), 0u);
    const EvalRun nothing = runEval("");
    EXPECT_EQ(nothing.exitCode, 2);
    EXPECT_TRUE(contains(nothing.output, "usage: quorvane-eval COMMAND")) << nothing.output;
}

TEST(EquityCommand, CardsAreReadAsPlayersTypeThem) {
    // Any case, and blanks or commas between the cards: the same board as "2c7d9h".
    const EvalRun typed = runEval("equity AhAs KdKc --board '2C 7d, 9H' --dead ' 3s'");
    const EvalRun canonical = runEval("equity AhAs KdKc --board 2c7d9h --dead 3s");
    EXPECT_EQ(typed.exitCode, 0) << typed.output;
    const auto countersOf = [](const std::string& output) {
        return output.substr(0, output.find("time "));
    };
    EXPECT_EQ(countersOf(typed.output), countersOf(canonical.output));
    const EvalRun bad = runEval("equity AhAs KdKc --board 2c7d9z");
    EXPECT_EQ(bad.exitCode, 1);
    EXPECT_TRUE(contains(bad.output,
                         "Unknown card \"9z\" in the board: a card is a rank and a suit, like Ah."))
        << bad.output;
    const EvalRun twice = runEval("equity AhAs KdKc --board 2c7d9h --dead 9H");
    EXPECT_EQ(twice.exitCode, 1);
    EXPECT_TRUE(contains(twice.output, "9h")) << twice.output;
}

TEST(EquityCommand, OneCardTwiceIsABadTokenNamedLikeAnyOther) {
    for (const char* command : {"equity AhAh KK", "range AhAh", "hits AhAh --board Kd7c2s"}) {
        const EvalRun run = runEval(command);
        EXPECT_EQ(run.exitCode, 1) << command << ": " << run.output;
        EXPECT_TRUE(contains(run.output, "\"AhAh\"")) << command << ": " << run.output;
    }
}
