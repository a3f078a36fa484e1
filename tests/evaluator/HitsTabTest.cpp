// `quorvane-eval hits` against the Board Hits tab: for the same range, board and dead cards the
// command prints the rows the tab shows (all of them expanded), in the same order and depth,
// with the same combinations and the same percentage texts; with --absolute as with
// "Absolute Percentages"; for a schema of the user's settings as for that schema in the tab;
// and with the option "Hide Empty Lines in Evaluation Tabs" off, the empty rows too.

#include "CliRun.h"

#include "handstrength/HandGroupRowRequest.h"
#include "handstrength/HandGroupSchema.h"
#include "handstrength/HandGroupSchemaPool.h"
#include "handstrength/HandStrengthNames.h"
#include "tabs/BoardHitEvaluationTable.h"
#include "tabs/BoardHitsBar.h"
#include "tabs/BoardHitsTab.h"
#include "tabs/HandStrengthLabel.h"

#include <QCheckBox>
#include <QSettings>
#include <QTest>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

// Expands every row of the tab that has children, by a click on its tree marker as a user
// does it, until every row is shown.
void expandAll(BoardHitsTab& tab) {
    for (int clicks = 0; clicks < 1000; ++clicks) {
        HandStrengthLabel* collapsed = nullptr;
        for (const BoardHitEvaluationTable::Row& row : tab.table()->rows()) {
            const HandStrengthKey& key = row.caption->key();
            if (tab.schema()->isExpandable(key) && !tab.schema()->isExpanded(key)) {
                collapsed = row.caption;
                break;
            }
        }
        if (!collapsed)
            return;
        QTest::mouseClick(
            collapsed, Qt::LeftButton, Qt::NoModifier,
            QPoint(BoardHitEvaluationTable::treeZoneBeginWithTicks + 8, collapsed->height() / 2));
    }
    FAIL() << "the rows do not stop expanding";
}

// The shown rows as the command prints them: "  Pair: 30 (65.22 %)", two blanks more for
// each level, from the tab's captions and the numbers its bars show ("65.22 % (30)").
std::vector<std::string> tabRows(BoardHitsTab& tab) {
    expandAll(tab);
    std::vector<std::string> rows;
    for (const BoardHitEvaluationTable::Row& row : tab.table()->rows()) {
        const HandGroup& group = tab.schema()->getGroups()[row.caption->groupIndex()];
        const unsigned depth = group.depth(row.caption->rowIndex());
        const std::string shown = row.bars.at(0)->texts().at(0).toStdString();
        const std::size_t open = shown.find(" (");
        const std::string percent = shown.substr(0, open);
        const std::string count = shown.substr(open + 2, shown.size() - open - 3);
        rows.push_back(std::string(2 + 2 * depth, ' ') + handStrengthName(row.caption->key()) +
                       ": " + count + " (" + percent + ")");
    }
    return rows;
}

// The row lines of the command's answer: without the combinations line and the titles.
std::vector<std::string> commandRows(const std::string& arguments) {
    const CliRun run = runCli("hits " + arguments);
    EXPECT_EQ(run.exitCode, 0) << run.err;
    std::vector<std::string> rows;
    for (const std::string& line : linesOf(run.out))
        if (line.rfind("  ", 0) == 0)
            rows.push_back(line);
    return rows;
}

void writeHideOption(bool hide) {
    QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
    settings.beginGroup(QStringLiteral("optionMenu"));
    settings.setValue(QStringLiteral("removeEmptyLinesFromBoardEvaluationTabs"), hide);
}

void clearHideOption() {
    QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
    settings.remove(QStringLiteral("optionMenu"));
}

struct Situation {
    const char* range;
    const char* board;
    const char* dead;
};

const Situation situations[] = {
    {"QQ+,AKs,KQ", "Ks7h2d", ""},
    {"22+,A2s+,KTs+,QTs+,JTs,T9s,98s,87s,ATo+,KJo+", "Kh9h4c", ""},
    {"XxXx", "Ah7d2c5s", "Td"},
    {"77+,A9s+,KTs+,QJs,AJo+,KQo,65s,54s", "8s7s6d", "Ac"},
    {"22+,A2s+,K9s+,T8s+,97s+,86s+,75s+", "Js8s3s2d9c", ""},
};

class HitsTab : public ::testing::Test {
protected:
    void SetUp() override { clearHideOption(); }
    void TearDown() override { clearHideOption(); }
};

std::string argumentsOf(const Situation& s) {
    std::string arguments = std::string("'") + s.range + "' --board " + s.board;
    if (*s.dead)
        arguments += std::string(" --dead ") + s.dead;
    return arguments;
}

} // namespace

TEST_F(HitsTab, StandardSchemaRowsEqualTheTabsRows) {
    for (const Situation& s : situations) {
        SCOPED_TRACE(argumentsOf(s));
        BoardHitsTab tab;
        tab.updateEvaluation(BoardEvaluationTab::technicalRange(s.range), "", s.board, s.dead,
                             false);
        const std::vector<std::string> shown = tabRows(tab);
        EXPECT_GT(shown.size(), 3u);
        EXPECT_EQ(commandRows(argumentsOf(s)), shown);
        EXPECT_EQ(commandRows(argumentsOf(s) + " --schema Standard"), shown);
    }
}

TEST_F(HitsTab, AbsolutePercentagesEqualTheTabsAbsolutePercentages) {
    for (const Situation& s : situations) {
        SCOPED_TRACE(argumentsOf(s));
        BoardHitsTab tab;
        tab.updateEvaluation(BoardEvaluationTab::technicalRange(s.range), "", s.board, s.dead,
                             false);
        tab.absolutePercentages()->setChecked(true);
        const std::vector<std::string> shown = tabRows(tab);
        EXPECT_EQ(commandRows(argumentsOf(s) + " --absolute"), shown);
        EXPECT_NE(commandRows(argumentsOf(s)), shown);
    }
}

TEST_F(HitsTab, EmptyRowsShowWhenTheProgramShowsThem) {
    writeHideOption(false);
    const Situation& s = situations[0];
    BoardHitsTab tab;
    tab.updateEvaluation(BoardEvaluationTab::technicalRange(s.range), "", s.board, s.dead, false);
    const std::vector<std::string> shown = tabRows(tab);
    // The tab's 128 rows of "Standard", all of them, as the command prints them.
    EXPECT_EQ(shown.size(), 128u);
    EXPECT_EQ(commandRows(argumentsOf(s)), shown);
    writeHideOption(true);
    EXPECT_LT(commandRows(argumentsOf(s)).size(), 128u);
    EXPECT_EQ(commandRows(argumentsOf(s) + " --all-rows").size(), 128u);
}

TEST_F(HitsTab, AUserSchemaFromTheSettingsEqualsTheTabWithThatSchema) {
    // A schema of two groups as the schema dialogs would store it.
    HandGroupSchemaData data;
    data.name = "Pairs And Draws";
    HandGroup pairs;
    pairs.name = "Pairs";
    pairs.addRow({HandStrengthKey(0x80, 0), HandStrengthKey(), 0, 0});
    pairs.addRow({HandStrengthKey(0x280, 0), HandStrengthKey(0x80, 0), 0, 0});
    pairs.addRow(
        {HandStrengthKey(0x40280, 0, "Top Pair, Top Kicker"), HandStrengthKey(0x280, 0), 0, 0});
    pairs.addRow({HandStrengthKey(0x8080, 0), HandStrengthKey(0x80, 0), 0, 0});
    HandGroup draws;
    draws.name = "Draws";
    draws.addRow({HandStrengthKey(0x4000000, 0x433E00), HandStrengthKey(), 0, 0});
    draws.addRow({HandStrengthKey(0x8000000, 0x433E00), HandStrengthKey(), 0, 0});
    data.groups = {pairs, draws};
    HandGroupSchemaPool pool;
    pool.load();
    ASSERT_TRUE(pool.add(data));
    pool.save();

    for (const Situation& s : situations) {
        SCOPED_TRACE(argumentsOf(s));
        BoardHitsTab tab;
        tab.updateEvaluation(BoardEvaluationTab::technicalRange(s.range), "", s.board, s.dead,
                             false);
        tab.reactToChangedSchema(data);
        ASSERT_EQ(tab.schema()->getName(), "Pairs And Draws");
        const std::vector<std::string> shown = tabRows(tab);
        EXPECT_EQ(commandRows(argumentsOf(s) + " --schema 'Pairs And Draws'"), shown);
    }
    const std::vector<std::string> rows =
        commandRows(argumentsOf(situations[0]) + " --schema 'Pairs And Draws'");
    // QQ+,AKs,KQ on Ks7h2d: 30 combinations; 27 pairs (QQ 6, AA 6, AKs 3, KQ 12), of them
    // 15 top pairs, 3 with the top kicker (AKs), and the 6 overpairs (AA); KK is a set.
    EXPECT_EQ(rows, (std::vector<std::string>{"  Pair: 27 (90.00 %)", "    Top Pair: 15 (55.56 %)",
                                              "      Top Pair, Top Kicker: 3 (20.00 %)",
                                              "    Overpair: 6 (22.22 %)"}));
}
