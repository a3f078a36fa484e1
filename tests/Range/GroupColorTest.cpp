#include "Range/GroupColor.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

using Range::GroupColor;

namespace {

GroupColor color(int r1, int g1, int b1, int r2, int g2, int b2, bool uses = true) {
    GroupColor c;
    c.colorFrom = {r1, g1, b1};
    c.colorTo = {r2, g2, b2};
    c.usesColor = uses;
    return c;
}

std::string logicErrorOf(const std::vector<GroupColor>& used) {
    try {
        GroupColor::firstFreeColor(used);
    } catch (const std::logic_error& error) {
        return error.what();
    }
    return std::string();
}

} // namespace

TEST(GroupColor, StandardTableHasSixteenPairsInOrder) {
    const auto& table = GroupColor::standardColors();
    ASSERT_EQ(table.size(), 16u);
    EXPECT_EQ(table[0], color(252, 112, 91, 232, 112, 101));
    EXPECT_EQ(table[1], color(111, 232, 122, 91, 202, 101));
    EXPECT_EQ(table[5], color(242, 91, 242, 222, 91, 221));
    EXPECT_EQ(table[11], color(242, 242, 255, 212, 212, 255));
    EXPECT_EQ(table[14], color(255, 255, 255, 255, 255, 192));
    EXPECT_EQ(table[15], color(255, 22, 22, 255, 255, 42));
    for (const GroupColor& entry : table)
        EXPECT_TRUE(entry.usesColor);
}

TEST(GroupColor, EqualityNeedsAllSixChannelsAndTheFlag) {
    const GroupColor a = color(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(a, color(1, 2, 3, 4, 5, 6));
    EXPECT_NE(a, color(1, 2, 3, 4, 5, 7));
    EXPECT_NE(a, color(0, 2, 3, 4, 5, 6));
    EXPECT_NE(a, color(1, 2, 3, 4, 5, 6, false));
}

TEST(GroupColor, FirstFreeColorSkipsColorsInUse) {
    const auto& table = GroupColor::standardColors();
    EXPECT_EQ(GroupColor::firstFreeColor({}), table[0]);
    EXPECT_EQ(GroupColor::firstFreeColor({table[0], table[2]}), table[1]);
    EXPECT_EQ(GroupColor::firstFreeColor({table[1], table[0]}), table[2]);
}

TEST(GroupColor, ARecordWithoutUsesColorMarksNothing) {
    const auto& table = GroupColor::standardColors();
    GroupColor unused = table[0];
    unused.usesColor = false;
    EXPECT_EQ(GroupColor::firstFreeColor({unused}), table[0]);
    // Same channels with the flag off are not the standard colour either.
    EXPECT_EQ(GroupColor::freeColors({unused}).size(), 16u);
}

TEST(GroupColor, FreeColorsInTableOrder) {
    const auto& table = GroupColor::standardColors();
    const std::vector<GroupColor> free = GroupColor::freeColors({table[3], table[0], table[15]});
    ASSERT_EQ(free.size(), 13u);
    EXPECT_EQ(free[0], table[1]);
    EXPECT_EQ(free[1], table[2]);
    EXPECT_EQ(free[2], table[4]);
    EXPECT_EQ(free.back(), table[14]);
    // Colours outside the table take nothing away.
    EXPECT_EQ(GroupColor::freeColors({color(1, 1, 1, 1, 1, 1)}).size(), 16u);
}

TEST(GroupColor, AllColorsInUseThrows) {
    const auto& table = GroupColor::standardColors();
    const std::vector<GroupColor> all(table.begin(), table.end());
    EXPECT_EQ(logicErrorOf(all), "All colors in use.");
    EXPECT_TRUE(GroupColor::freeColors(all).empty());
    // Fifteen of them leave the last one.
    const std::vector<GroupColor> fifteen(table.begin(), table.end() - 1);
    EXPECT_EQ(GroupColor::firstFreeColor(fifteen), table[15]);
}
