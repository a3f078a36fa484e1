#include "evfe/LineList.h"

#include "evfe/LineFactory.h"
#include "evfe/Street.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::vector<std::string> namesOn(const LineList& lines, int street) {
    std::vector<std::string> names;
    for (const Line& line : lines) {
        if (line.street == street)
            names.push_back(line.name);
    }
    return names;
}

TEST(LineOrderTest, LetteredNamesComeFirstWithCheckBeforeBetBeforeRaise) {
    EXPECT_TRUE(lineNameSortsBefore("Check/Fold", "Bet/Fold"));
    EXPECT_FALSE(lineNameSortsBefore("Bet/Fold", "Check/Fold"));
    EXPECT_TRUE(lineNameSortsBefore("Bet/Ship", "Raise/Fold"));
    EXPECT_FALSE(lineNameSortsBefore("Raise/Fold", "Bet/Ship"));
    EXPECT_TRUE(lineNameSortsBefore("Raise/Ship", "3-Bet/Fold"));
    EXPECT_FALSE(lineNameSortsBefore("3-Bet/Fold", "Raise/Ship"));
    EXPECT_TRUE(lineNameSortsBefore("Check/Raise", "7-Bet/Fold"));
}

TEST(LineOrderTest, NumberedNamesOrderByTheirDigit) {
    EXPECT_TRUE(lineNameSortsBefore("3-Bet/Ship", "4-Bet/Fold"));
    EXPECT_FALSE(lineNameSortsBefore("5-Bet/Fold", "4-Bet/Ship"));
    EXPECT_TRUE(lineNameSortsBefore("6-Bet/Call", "7-Bet/Call"));
}

TEST(LineOrderTest, SamePrefixOrdersFoldThenCallThenShip) {
    EXPECT_TRUE(lineNameSortsBefore("Bet/Fold", "Bet/Call"));
    EXPECT_TRUE(lineNameSortsBefore("Bet/Fold", "Bet/Ship"));
    EXPECT_TRUE(lineNameSortsBefore("Bet/Call", "Bet/Ship"));
    EXPECT_FALSE(lineNameSortsBefore("Bet/Ship", "Bet/Call"));
    EXPECT_FALSE(lineNameSortsBefore("Bet/Call", "Bet/Fold"));
    EXPECT_FALSE(lineNameSortsBefore("Bet/Fold", "Bet/Fold"));
    EXPECT_TRUE(lineNameSortsBefore("Check/Fold", "Check/Raise"));
    // Only the first characters are compared before the action: a name with the same first
    // character but another prefix is ordered by its action alone.
    EXPECT_TRUE(lineNameSortsBefore("Raise/Fold", "Raise/Ship"));
    // "Raise" after "/" is neither F nor C before S: Check/Call and Check/Raise are not
    // ordered against each other.
    EXPECT_FALSE(lineNameSortsBefore("Check/Raise", "Check/Call"));
    EXPECT_FALSE(lineNameSortsBefore("Check/Call", "Check/Raise"));
}

TEST(LineListTest, InsertKeepsEachStreetInDisplayOrder) {
    LineList lines;
    const std::vector<std::string> arrival = {
        "Bet/Ship", "3-Bet/Fold", "Check/Fold", "7-Bet/Ship", "Raise/Call",
        "Bet/Fold", "Check/Call", "Raise/Fold", "3-Bet/Call", "Check/Raise"};
    for (const std::string& name : arrival) {
        Line line;
        line.name = name;
        line.street = 1;
        insertLine(lines, line);
    }
    const std::vector<std::string> expected = {
        "Check/Fold", "Check/Call", "Check/Raise", "Bet/Fold",   "Bet/Ship",
        "Raise/Fold", "Raise/Call", "3-Bet/Fold",  "3-Bet/Call", "7-Bet/Ship"};
    EXPECT_EQ(namesOn(lines, 1), expected);
}

TEST(LineListTest, OtherStreetsDoNotPlaceANewLine) {
    LineList lines;
    for (const auto& entry : std::vector<std::pair<std::string, int>>{
             {"Raise/Fold", 0}, {"Bet/Call", 1}, {"3-Bet/Fold", 0}, {"Check/Fold", 1}}) {
        Line line;
        line.name = entry.first;
        line.street = entry.second;
        insertLine(lines, line);
    }
    // "Check/Fold" goes before the first flop line that sorts after it ("Bet/Call"), which
    // stands behind the preflop "Raise/Fold"; the preflop "3-Bet/Fold" found no later
    // preflop line and went to the end.
    std::vector<std::string> all;
    for (const Line& line : lines)
        all.push_back(line.name + "@" + std::to_string(line.street));
    EXPECT_EQ(all, (std::vector<std::string>{"Raise/Fold@0", "Check/Fold@1", "Bet/Call@1",
                                             "3-Bet/Fold@0"}));
}

TEST(LineListTest, KindFromNameCoversOnlyBetAndCheck) {
    EXPECT_EQ(lineKindForName("Bet/Fold"), LineKind::BetFold);
    EXPECT_EQ(lineKindForName("Bet/Call"), LineKind::BetCall);
    EXPECT_EQ(lineKindForName("Bet/Ship"), LineKind::BetShip);
    EXPECT_EQ(lineKindForName("Check/Fold"), LineKind::CheckFold);
    EXPECT_EQ(lineKindForName("Check/Call"), LineKind::CheckCall);
    EXPECT_EQ(lineKindForName("Check/Raise"), LineKind::CheckRaise);
    EXPECT_FALSE(lineKindForName("Raise/Fold").has_value());
    EXPECT_FALSE(lineKindForName("3-Bet/Ship").has_value());
    EXPECT_FALSE(lineKindForName("Bet").has_value());
}

TEST(LineListTest, AddLineCreatesTheLineWithAMainVariant) {
    LineList lines;
    Line& line = addLine(lines, "Check/Raise", Street::Turn, "Player2");
    EXPECT_EQ(line.name, "Check/Raise");
    EXPECT_EQ(line.street, 2);
    EXPECT_EQ(line.actionSequence, LineKind::CheckRaise);
    ASSERT_EQ(line.variants.size(), 1u);
    EXPECT_EQ(line.variants.front().name, "Main Variant");
    EXPECT_EQ(line.variants.front().forPlayer, "Player2");
    EXPECT_EQ(line.variants.front().actions.size(), 4u);
}

TEST(LineListTest, AddLineOfAnExistingNameAppendsAVariant) {
    LineList lines;
    addLine(lines, "Bet/Call", Street::Flop, "Player1");
    Line& line = addLine(lines, "Bet/Call", Street::Flop, "Player2");
    EXPECT_EQ(lines.size(), 1u);
    ASSERT_EQ(line.variants.size(), 2u);
    EXPECT_EQ(line.variants.back().forPlayer, "Player2");
    // The same name on another street is another line.
    addLine(lines, "Bet/Call", Street::River, "Player1");
    EXPECT_EQ(lines.size(), 2u);
    EXPECT_NE(findLine(lines, "Bet/Call", 3), nullptr);
    EXPECT_EQ(findLine(lines, "Bet/Call", 2), nullptr);
}

TEST(LineListTest, NumberedLineTakesTheKindOfItsVariant) {
    LineList lines;
    EXPECT_EQ(addLine(lines, "3-Bet/Call", Street::Preflop, "Player1").actionSequence,
              LineKind::BetCall);
    EXPECT_EQ(addLine(lines, "Raise/Ship", Street::Preflop, "Player1").actionSequence,
              LineKind::BetShip);
    EXPECT_EQ(addLine(lines, "7-Bet/Fold", Street::Preflop, "Player1").actionSequence,
              LineKind::BetFold);
    EXPECT_EQ(namesOn(lines, 0),
              (std::vector<std::string>{"Raise/Ship", "3-Bet/Call", "7-Bet/Fold"}));
}

TEST(LineListTest, RaiseFoldReadWithBetFoldCodeKeepsKindThree) {
    // A file stores the kind by its code; the name's prefix does not override it.
    Line line;
    line.name = "Raise/Fold";
    line.actionSequence = lineKindFromCode("bf");
    EXPECT_EQ(line.actionSequence, LineKind::BetFold);
    EXPECT_EQ(static_cast<int>(line.actionSequence), 3);
    EXPECT_FALSE(lineKindForName(line.name).has_value());
    line.variants.push_back(LineFactory::create(line.name, "Main Variant", "Player1"));
    EXPECT_EQ(line.variants.front().kind, line.actionSequence);
}

} // namespace
