#include "SampleLines.h"

#include "Range/HandRangeStringReader.h"
#include "Range/TreeRangeNode.h"
#include "evfe/LineFile.h"
#include "evfe/ScenarioLines.h"
#include "evfe/Street.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

struct Holder {
    std::string name;
    ScenarioLines lines;
};

TEST(ScenarioLines, ACopyIsDeepAndOwnsItsGroups) {
    ScenarioLines original;
    *original = SampleLines::golden();
    ScenarioLines copy(original);
    ASSERT_NE(copy.get(), original.get());
    EXPECT_EQ(LineFile::linesText(*copy), LineFile::linesText(*original));
    LineAction& copied = copy->front().variants.front().actions[0];
    LineAction& kept = original->front().variants.front().actions[0];
    EXPECT_NE(copied.range, kept.range);
    SampleLines::setActionRange(copy->front().variants.front(), 0, "AA");
    copy->front().variants.front().deadmoney = 99.0f;
    EXPECT_EQ(Range::HandRangeStringReader(kept.range->handRange).compactText(), "TT+,AQs+,AKo");
    EXPECT_EQ(original->front().variants.front().deadmoney, 12.5f);
}

TEST(ScenarioLines, TheListStaysWhereItIsWhenTheScenariosGrow) {
    std::vector<Holder> scenarios(1);
    *scenarios[0].lines = SampleLines::golden();
    LineList* shown = scenarios[0].lines.get();
    const LineAction* action = &shown->front().variants.front().actions[1];
    for (int i = 0; i < 50; ++i)
        scenarios.push_back(Holder{"more", ScenarioLines()});
    EXPECT_EQ(scenarios[0].lines.get(), shown);
    EXPECT_EQ(&shown->front().variants.front().actions[1], action);
    EXPECT_EQ(shown->size(), 3u);
}

TEST(ScenarioLines, AssignmentKeepsTheListWhereItIs) {
    ScenarioLines target;
    LineList* address = target.get();
    ScenarioLines source;
    *source = SampleLines::golden();
    target = source;
    EXPECT_EQ(target.get(), address);
    EXPECT_EQ(target->size(), 3u);
    EXPECT_EQ(source->size(), 3u);
    ScenarioLines moved;
    *moved = SampleLines::golden();
    target = std::move(moved);
    EXPECT_EQ(target.get(), address);
    EXPECT_EQ(target->size(), 3u);
}

TEST(ScenarioLines, AMovedFromHolderStartsAnEmptyList) {
    ScenarioLines source;
    *source = SampleLines::golden();
    LineList* address = source.get();
    ScenarioLines target(std::move(source));
    EXPECT_EQ(target.get(), address);
    EXPECT_TRUE(source->empty());
    EXPECT_NE(source.get(), address);
}

} // namespace
