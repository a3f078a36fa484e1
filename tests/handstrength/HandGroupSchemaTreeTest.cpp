#include "handstrength/HandGroupSchema.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace {

const HandStrengthKey customSum(0x4000000000000ULL, 0);
const HandStrengthKey pair(0x80, 0);
const HandStrengthKey topPair(0x280, 0);
const HandStrengthKey topPairTopKicker(0x40280, 0);
const HandStrengthKey topPairOtherKicker(0x280, 0x1C0000);
const HandStrengthKey overpair(0x8080, 0);
const HandStrengthKey secondPair(0x480, 0);
const HandStrengthKey highcard(0x100, 0);
const HandStrengthKey flush(0x8, 0);
const HandStrengthKey nutflush(0x208, 0);

std::string thrownBy(const std::function<void()>& action) {
    try {
        action();
    } catch (const std::string& message) {
        return message;
    }
    return "nothing thrown";
}

const HandGroupRow& rowOf(const HandGroupSchema& schema, const HandStrengthKey& key) {
    for (const HandGroup& group : schema.getGroups()) {
        std::size_t index = group.indexOf(key);
        if (index != HandGroup::npos)
            return group.rows[index];
    }
    throw std::string("row not in schema");
}

std::size_t indexIn(const HandGroupSchema& schema, int group, const HandStrengthKey& key) {
    return schema.getGroups().at(group).indexOf(key);
}

} // namespace

TEST(HandGroupSchemaTree, AddRowsUnderAnExistingRow) {
    HandGroupSchema schema;
    const std::size_t before = schema.getGroups()[1].rows.size();
    const HandStrengthKey nutTopPair(0x40280, 0x4000, "Mine");
    schema.addRows({nutTopPair, HandStrengthKey(0x80280, 0x4000)}, topPairTopKicker);
    const HandGroup& made = schema.getGroups()[1];
    ASSERT_EQ(made.rows.size(), before + 2);
    EXPECT_EQ(made.rows[before].key, nutTopPair);
    EXPECT_EQ(made.rows[before].key.displayName, "Mine");
    EXPECT_EQ(made.rows[before].parent, made.indexOf(topPairTopKicker));
    EXPECT_FALSE(made.rows[before].visible);
    EXPECT_EQ(made.depth(before + 1), 3u);
}

TEST(HandGroupSchemaTree, AddRowsUnderAnUnknownRowThrows) {
    HandGroupSchema schema;
    EXPECT_EQ(thrownBy([&] { schema.addRows({pair}, HandStrengthKey(0x80, 0x1)); }),
              "Parent hand strength detail could not be found.");
    HandGroupSchema empty(nullptr, 0);
    EXPECT_EQ(thrownBy([&] { empty.addRows({pair}, highcard); }),
              "Parent hand strength detail could not be found.");
}

TEST(HandGroupSchemaTree, RemoveChildrenOf) {
    HandGroupSchema schema;
    schema.removeChildrenOf(topPair);
    EXPECT_FALSE(schema.isExpandable(topPair));
    EXPECT_EQ(indexIn(schema, 1, topPairTopKicker), HandGroup::npos);
    // Rows behind keep pointing at their own parents.
    const HandGroup& made = schema.getGroups()[1];
    const std::size_t second = made.indexOf(secondPair);
    EXPECT_EQ(made.rows[second].parent, made.indexOf(pair));
    const std::size_t secondTop = made.indexOf(HandStrengthKey(0x40480, 0));
    EXPECT_EQ(made.rows[secondTop].parent, second);

    EXPECT_EQ(thrownBy([&] { schema.removeChildrenOf(HandStrengthKey(0x3, 0)); }),
              "Parent hand strength detail could not be found.");
}

TEST(HandGroupSchemaTree, ToggleChildrenExpandsAndCollapsesDeeply) {
    HandGroupSchema schema;
    EXPECT_TRUE(schema.isExpandable(pair));
    EXPECT_FALSE(schema.isExpanded(pair));
    EXPECT_FALSE(schema.isExpandable(highcard));
    EXPECT_FALSE(schema.isExpanded(highcard));

    schema.toggleChildren(pair);
    EXPECT_TRUE(schema.isExpanded(pair));
    EXPECT_TRUE(rowOf(schema, topPair).visible);
    EXPECT_TRUE(rowOf(schema, overpair).visible);
    EXPECT_FALSE(rowOf(schema, topPairTopKicker).visible);

    schema.toggleChildren(topPair);
    EXPECT_TRUE(rowOf(schema, topPairTopKicker).visible);
    EXPECT_TRUE(rowOf(schema, topPairOtherKicker).visible);

    // Collapsing the root hides the grandchildren too.
    schema.toggleChildren(pair);
    EXPECT_FALSE(schema.isExpanded(pair));
    EXPECT_FALSE(rowOf(schema, topPair).visible);
    EXPECT_FALSE(rowOf(schema, topPairTopKicker).visible);
    EXPECT_FALSE(rowOf(schema, topPairOtherKicker).visible);

    // Expanding again shows only the direct children.
    schema.toggleChildren(pair);
    EXPECT_TRUE(rowOf(schema, topPair).visible);
    EXPECT_FALSE(rowOf(schema, topPairTopKicker).visible);

    // Unknown keys and leaves change nothing.
    schema.toggleChildren(HandStrengthKey(0x3, 0));
    schema.toggleChildren(highcard);
    EXPECT_TRUE(rowOf(schema, highcard).visible);
}

TEST(HandGroupSchemaTree, RowsBelowAndParentChain) {
    HandGroupSchema schema;
    const std::set<HandStrengthKey> belowTopPair = schema.rowsBelow(topPair);
    EXPECT_EQ(belowTopPair.size(), 4u);
    EXPECT_EQ(belowTopPair.count(topPairTopKicker), 1u);
    EXPECT_EQ(belowTopPair.count(topPairOtherKicker), 1u);
    EXPECT_EQ(belowTopPair.count(topPair), 0u);

    const std::set<HandStrengthKey> belowFlush = schema.rowsBelow(flush);
    EXPECT_EQ(belowFlush.size(), 7u);
    // Pair: 9 children and the 12 kicker rows below the three ranked pairs.
    EXPECT_EQ(schema.rowsBelow(pair).size(), 21u);
    EXPECT_TRUE(schema.rowsBelow(highcard).empty());
    EXPECT_TRUE(schema.rowsBelow(HandStrengthKey(0x3, 0)).empty());

    const std::set<HandStrengthKey> chain = schema.parentChain(topPairOtherKicker);
    EXPECT_EQ(chain, (std::set<HandStrengthKey>{pair, topPair}));
    EXPECT_TRUE(schema.parentChain(pair).empty());
    EXPECT_TRUE(schema.parentChain(HandStrengthKey(0x3, 0)).empty());
}

TEST(HandGroupSchemaTree, SetCustomSumTakesOnlyKeysOfTheSchema) {
    HandGroupSchema schema;
    schema.setCustomSum({pair, HandStrengthKey(0x3, 0), topPair, pair, nutflush});
    EXPECT_EQ(schema.customSumHandStrengths(),
              (std::vector<HandStrengthKey>{pair, topPair, nutflush}));
    EXPECT_TRUE(schema.customSumContains(pair));
    EXPECT_FALSE(schema.customSumContains(HandStrengthKey(0x3, 0)));
    EXPECT_FALSE(schema.customSumContains(highcard));

    // A new list replaces the old one.
    schema.setCustomSum({highcard});
    EXPECT_EQ(schema.customSumHandStrengths(), (std::vector<HandStrengthKey>{highcard}));
    schema.setCustomSum({});
    EXPECT_TRUE(schema.customSumHandStrengths().empty());
}

TEST(HandGroupSchemaTree, CustomSumTakesTheRowsCaption) {
    HandGroupSchema schema;
    schema.setCustomSum({HandStrengthKey(0x4000E0000000ULL, 0)});
    ASSERT_EQ(schema.customSumHandStrengths().size(), 1u);
    EXPECT_EQ(schema.customSumHandStrengths()[0].displayName, "With Flushdraw to Nuts");
}

TEST(HandGroupSchemaTree, TickAndUntickWithChildren) {
    HandGroupSchema schema;
    schema.tickWithChildren(topPair);
    EXPECT_TRUE(schema.customSumContains(topPair));
    EXPECT_TRUE(schema.customSumContains(topPairTopKicker));
    EXPECT_TRUE(schema.customSumContains(topPairOtherKicker));
    EXPECT_FALSE(schema.customSumContains(pair));
    EXPECT_EQ(schema.customSumHandStrengths().size(), 5u);

    schema.tickWithChildren(topPair); // no duplicates
    EXPECT_EQ(schema.customSumHandStrengths().size(), 5u);

    schema.tickWithChildren(HandStrengthKey(0x3, 0)); // not in the schema
    EXPECT_EQ(schema.customSumHandStrengths().size(), 5u);

    schema.tickWithChildren(highcard);
    schema.untickWithChildren(pair);
    EXPECT_EQ(schema.customSumHandStrengths(), (std::vector<HandStrengthKey>{highcard}));
}

TEST(HandGroupSchemaTree, TickBoxStateOfARow) {
    HandGroupSchema schema;
    const std::size_t pairIndex = indexIn(schema, 1, pair);
    const std::size_t topPairIndex = indexIn(schema, 1, topPair);
    EXPECT_FALSE(schema.allChildrenTicked(pair, pairIndex));
    EXPECT_FALSE(schema.anyChildTicked(pair, pairIndex));

    schema.tickWithChildren(topPair);
    EXPECT_TRUE(schema.allChildrenTicked(topPair, topPairIndex));
    EXPECT_TRUE(schema.anyChildTicked(pair, pairIndex));
    EXPECT_FALSE(schema.allChildrenTicked(pair, pairIndex));

    schema.setCustomSum({topPairTopKicker});
    EXPECT_TRUE(schema.anyChildTicked(topPair, topPairIndex));
    EXPECT_FALSE(schema.allChildrenTicked(topPair, topPairIndex));

    // The row itself is not its own child.
    schema.setCustomSum({pair});
    EXPECT_FALSE(schema.anyChildTicked(pair, pairIndex));

    // A row without children: vacuously all, and none.
    const std::size_t highIndex = indexIn(schema, 1, highcard);
    EXPECT_TRUE(schema.allChildrenTicked(highcard, highIndex));
    EXPECT_FALSE(schema.anyChildTicked(highcard, highIndex));
    // Unknown keys.
    EXPECT_FALSE(schema.allChildrenTicked(HandStrengthKey(0x3, 0), 0));
    EXPECT_FALSE(schema.anyChildTicked(HandStrengthKey(0x3, 0), 0));
}

TEST(HandGroupSchemaTree, TheCustomSumKeyIsNotAFeature) {
    EXPECT_EQ(HandGroupSchema::customSumKey(), customSum);
    HandGroupSchema schema;
    EXPECT_EQ(schema.getGroups()[0].rows[0].key, customSum);
}
