// quorvane-eval hits as players and scripts run it: one "name: count" line per feature.

#include "support/EvalProcess.h"

#include <gtest/gtest.h>

#include <string>

namespace {

EvalRun runEval(const std::string& arguments) { return runQuorvaneEval(arguments); }

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

int lines(const std::string& text) {
    int n = 0;
    for (char c : text)
        n += c == '\n';
    return n;
}

} // namespace

TEST(HitsCommand, PrintsOneLinePerFeatureWithItsCount) {
    // AA: 6 overpairs. KK: 3 sets. AKs: 3 top pairs (the king of spades is on the board),
    // with the ace as top kicker; the ace of spades with a king makes no flush draw here.
    const EvalRun run = runEval("hits AA,KK,AKs --board Ks7h2d");
    ASSERT_EQ(run.exitCode, 0) << run.output;
    EXPECT_TRUE(contains(run.output, "combinations: 12\n")) << run.output;
    EXPECT_TRUE(contains(run.output, "\nPair: 9\n")) << run.output;
    EXPECT_TRUE(contains(run.output, "\nThree of a Kind: 3\n")) << run.output;
    EXPECT_TRUE(contains(run.output, "\nHighcard: 0\n")) << run.output;
    EXPECT_TRUE(contains(run.output, "\nTop One: 3\n")) << run.output;
    EXPECT_TRUE(contains(run.output, "\nTop Kicker: 3\n")) << run.output;
    EXPECT_TRUE(contains(run.output, "\nPocket Pair being Overpair: 6\n")) << run.output;
    EXPECT_TRUE(contains(run.output, "\nUsing Two Holecards for Made Hand: 3\n")) << run.output;
    EXPECT_TRUE(contains(run.output, "\nUsing One Holecard for Made Hand: 3\n")) << run.output;
    // Hand values and the 39 other features the evaluator sets, after the total.
    EXPECT_EQ(lines(run.output), 1 + 9 + 39) << run.output;
    EXPECT_FALSE(contains(run.output, "Custom Sum")) << run.output;
    EXPECT_EQ(run.output.find("combinations: "), 0u);
    EXPECT_LT(run.output.find("Straightflush: "), run.output.find("Highcard: "));
}

TEST(HitsCommand, DeadCardsRemoveCombinations) {
    const EvalRun run = runEval("hits AA,KK,AKs --board Ks7h2d --dead AcAd");
    ASSERT_EQ(run.exitCode, 0) << run.output;
    // AA: AsAh only; KK: 3; AKs: AhKh only (AdKd and AcKc hold a dead ace).
    EXPECT_TRUE(contains(run.output, "combinations: 5\n")) << run.output;
    EXPECT_TRUE(contains(run.output, "\nTop One: 1\n")) << run.output;
    EXPECT_TRUE(contains(run.output, "\nPocket Pair being Overpair: 1\n")) << run.output;
}

TEST(HitsCommand, BadInputAndUsage) {
    const EvalRun noBoard = runEval("hits AA");
    EXPECT_EQ(noBoard.exitCode, 2);
    EXPECT_TRUE(contains(noBoard.output, "'--board' is needed")) << noBoard.output;
    EXPECT_TRUE(contains(noBoard.output, "usage: quorvane-eval hits RANGE --board B [--dead D]"));
    const EvalRun noRange = runEval("hits --board Ks7h2d");
    EXPECT_EQ(noRange.exitCode, 2);
    EXPECT_TRUE(contains(noRange.output, "a range is needed")) << noRange.output;
    const EvalRun shortBoard = runEval("hits AA --board Ks7h");
    EXPECT_EQ(shortBoard.exitCode, 1);
    EXPECT_TRUE(contains(shortBoard.output, "A board needs 3, 4 or 5 cards")) << shortBoard.output;
    const EvalRun badToken = runEval("hits AX --board Ks7h2d");
    EXPECT_EQ(badToken.exitCode, 1);
    EXPECT_TRUE(contains(badToken.output, "AX")) << badToken.output;
    const EvalRun unknown = runEval("hits AA --board Ks7h2d --flop");
    EXPECT_EQ(unknown.exitCode, 2);
    EXPECT_TRUE(contains(unknown.output, "unknown option '--flop'")) << unknown.output;
}
