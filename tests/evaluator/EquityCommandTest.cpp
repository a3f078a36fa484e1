// quorvane-eval equity as players run it: output and exit codes.

#include "support/EvalProcess.h"

#include <gtest/gtest.h>

#include <string>

namespace {

EvalRun runEval(const std::string& arguments) { return runQuorvaneEval(arguments); }

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
    EXPECT_TRUE(contains(run.output, "'2x'")) << run.output;
    run = runEval("equity AA KK --board AhKd2c --dead Kd");
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(contains(run.output, "'Kd'")) << run.output;
    run = runEval("equity AA KK --dead AhAh");
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(contains(run.output, "'Ah'")) << run.output;
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
