#include "support/EvalProcess.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Result = EvalRun;

Result runEval(const std::string& arguments) {
    return runQuorvaneEval(arguments);
}

} // namespace

TEST(RangeCommand, PrintsNormalTechnicalCompactAndCount) {
    const Result result = runEval("range 'aks, qq, kk, 22-33, AhKd'");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.output, "KK,QQ,AKs,22-33,AhKd\n"
                             "22,33,QQ,KK,AKs,AhKd\n"
                             "QQ-KK,22-33,AKs,AhKd\n"
                             "29\n");
}

TEST(RangeCommand, SeveralArgumentsAreOneText) {
    const Result result = runEval("range tt+ ak");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.output, "AK,TT+\n"
                             "TT,JJ,QQ,KK,AA,AKs,AKo\n"
                             "TT+,AKs,AKo\n"
                             "46\n");
}

TEST(RangeCommand, FullRange) {
    const Result result = runEval("range XxXx");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_NE(result.output.find("\n22+,A2s+,K2s+,"), std::string::npos);
    EXPECT_EQ(result.output.substr(result.output.size() - 5), "1326\n");
}

TEST(RangeCommand, EmptyRange) {
    const Result result = runEval("range ','");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.output, "\n\n\n0\n");
}

TEST(RangeCommand, BadTokenIsAnError) {
    const Result result = runEval("range 'AKs,xyz'");
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.output,
              "quorvane-eval range: cannot read \"xyz\" as a hand, a hand class or a range of "
              "them\n");
}

TEST(RangeCommand, MissingTextShowsUsage) {
    const Result result = runEval("range");
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_NE(result.output.find("usage: quorvane-eval range TEXT"), std::string::npos);
}

TEST(RangeCommand, ALongPastedTextAnswersAtOnce) {
    // 120 KB ending in a comma: one wildcard token repeated. Each repeat is spelled out once,
    // so the answer is the full range however often it comes. (The time is measured in
    // bench/range; here the run must finish well inside the test's limit.)
    std::string text;
    while (text.size() < 120 * 1024)
        text += "XxXx,";
    const Result result = runEval("range '" + text + "'");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.output.substr(result.output.size() - 5), "1326\n");
}
