// quorvane-eval hits as players and scripts run it: the rows of a hand group schema as the
// Board Hits tab shows them, and with --features one "name: count" line per feature.

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

int lines(const std::string& text) {
    int n = 0;
    for (char c : text)
        n += c == '\n';
    return n;
}

} // namespace

TEST(HitsCommand, PrintsTheStandardSchemaRowsNestedByIndentation) {
    // AA: 6 overpairs. KK: 3 sets. AKs: 3 top pairs (the king of spades is on the board),
    // with the ace as top kicker. Shares are of the parent row; rows without hits are left
    // out, as the tab leaves them out by default.
    const EvalRun run = runEval("hits AA,KK,AKs --board Ks7h2d");
    ASSERT_EQ(run.exitCode, 0) << run.output;
    EXPECT_EQ(run.output, "combinations: 12\n"
                          "Made Hands\n"
                          "  Three of a Kind: 3 (25.00 %)\n"
                          "    Set: 3 (100.00 %)\n"
                          "  Pair: 9 (75.00 %)\n"
                          "    Overpair: 6 (66.67 %)\n"
                          "    Top Pair: 3 (33.33 %)\n"
                          "      With Top Kicker: 3 (100.00 %)\n");
}

TEST(HitsCommand, AbsolutePercentagesAndAllRows) {
    const EvalRun absolute = runEval("hits AA,KK,AKs --board Ks7h2d --absolute");
    ASSERT_EQ(absolute.exitCode, 0) << absolute.output;
    EXPECT_TRUE(contains(absolute.output, "\n    Overpair: 6 (50.00 %)\n")) << absolute.output;
    EXPECT_TRUE(contains(absolute.output, "\n      With Top Kicker: 3 (25.00 %)\n"))
        << absolute.output;
    const EvalRun all = runEval("hits AA,KK,AKs --board Ks7h2d --all-rows");
    ASSERT_EQ(all.exitCode, 0) << all.output;
    EXPECT_TRUE(contains(all.output, "\n  Custom Sum: 0 (0.00 %)\n")) << all.output;
    EXPECT_TRUE(contains(all.output, "\n  Straightflush: 0 (0.00 %)\n")) << all.output;
    EXPECT_TRUE(contains(all.output, "\n    3nd Nutflush: 0 (0.00 %)\n")) << all.output;
    EXPECT_TRUE(contains(all.output, "\nDraws (excluding made hands)\n")) << all.output;
    EXPECT_TRUE(contains(all.output, "\n    With Flushdraw to Nuts: 0 (0.00 %)\n")) << all.output;
    // The combinations line, the titles of the three groups (the custom sum has none) and
    // every row of the schema.
    EXPECT_EQ(lines(all.output), 1 + 3 + 128) << all.output;
}

TEST(HitsCommand, FeaturesPrintOneLinePerFeatureWithItsCount) {
    const EvalRun run = runEval("hits AA,KK,AKs --board Ks7h2d --features");
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
    const EvalRun run = runEval("hits AA,KK,AKs --board Ks7h2d --dead AcAd --features");
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
    EXPECT_TRUE(contains(noBoard.output, "usage: quorvane-eval hits RANGE --board B [--dead D] "
                                         "[--schema NAME]"));
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
    const EvalRun deadOnBoard = runEval("hits AA --board Ks7h2d --dead 7h");
    EXPECT_EQ(deadOnBoard.exitCode, 1);
    EXPECT_TRUE(contains(deadOnBoard.output, "7h")) << deadOnBoard.output;
    const EvalRun schema = runEval("hits AA --board Ks7h2d --schema 'Mine'");
    EXPECT_EQ(schema.exitCode, 1);
    EXPECT_EQ(schema.output, "quorvane-eval hits: no hand group schema is called \"Mine\"; there "
                             "are \"Standard\"\n");
    const EvalRun noSchema = runEval("hits AA --board Ks7h2d --schema");
    EXPECT_EQ(noSchema.exitCode, 2);
    EXPECT_TRUE(contains(noSchema.output, "'--schema' needs a value")) << noSchema.output;
}
