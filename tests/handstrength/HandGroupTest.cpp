#include "handstrength/HandGroup.h"
#include "handstrength/HandGroupRowRequest.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace {

const HandStrengthKey pair(0x80, 0);
const HandStrengthKey topPair(0x280, 0);
const HandStrengthKey topKicker(0x40280, 0);
const HandStrengthKey otherKicker(0x280, 0x1C0000);
const HandStrengthKey secondPair(0x480, 0);
const HandStrengthKey highcard(0x100, 0);

// Pair > {Top Pair > {Top Kicker, Other Kicker}, 2nd Pair}, Highcard
HandGroup pairGroup() {
    HandGroup group;
    group.name = "Pairs";
    group.addRow(HandGroupRowRequest(pair, HandStrengthKey()));
    group.addRow(HandGroupRowRequest(topPair, pair));
    group.addRow(HandGroupRowRequest(topKicker, topPair));
    group.addRow(HandGroupRowRequest(otherKicker, topPair));
    group.addRow(HandGroupRowRequest(secondPair, pair));
    group.addRow(HandGroupRowRequest(highcard, HandStrengthKey()));
    return group;
}

std::string thrownBy(const std::function<void()>& action) {
    try {
        action();
    } catch (const std::string& message) {
        return message;
    }
    return "nothing thrown";
}

} // namespace

TEST(HandGroup, AddRowMakesRootsVisibleAndChildrenHidden) {
    HandGroup group = pairGroup();
    ASSERT_EQ(group.rows.size(), 6u);
    EXPECT_EQ(group.rows[0].parent, HandGroupRow::noParent);
    EXPECT_TRUE(group.rows[0].visible);
    EXPECT_EQ(group.rows[1].parent, 0u);
    EXPECT_FALSE(group.rows[1].visible);
    EXPECT_EQ(group.rows[2].parent, 1u);
    EXPECT_EQ(group.rows[3].parent, 1u);
    EXPECT_EQ(group.rows[4].parent, 0u);
    EXPECT_EQ(group.rows[5].parent, HandGroupRow::noParent);
    EXPECT_TRUE(group.rows[5].visible);
}

TEST(HandGroup, AddRowTakesTheInitialCounts) {
    HandGroup group;
    group.addRow(HandGroupRowRequest(pair, HandStrengthKey(), 12, 7));
    EXPECT_EQ(group.rows[0].combinations1, 12u);
    EXPECT_EQ(group.rows[0].combinations2, 7u);
}

TEST(HandGroup, AddRowFindsTheParentByBothWordsOnly) {
    HandGroup group;
    group.addRow(HandGroupRowRequest(HandStrengthKey(0x80, 0, "My pairs"), HandStrengthKey()));
    group.addRow(HandGroupRowRequest(topPair, HandStrengthKey(0x80, 0, "another caption")));
    EXPECT_EQ(group.rows[1].parent, 0u);
    EXPECT_EQ(group.rows[0].key.displayName, "My pairs");
}

TEST(HandGroup, AddRowWithoutParentThrows) {
    HandGroup group = pairGroup();
    EXPECT_EQ(
        thrownBy([&] { group.addRow(HandGroupRowRequest(topKicker, HandStrengthKey(0x8, 0))); }),
        "Group does not contain parental hand.");
    // Same positive word, other exclusive word: not the parent.
    EXPECT_EQ(
        thrownBy([&] { group.addRow(HandGroupRowRequest(topKicker, HandStrengthKey(0x80, 1))); }),
        "Group does not contain parental hand.");
    EXPECT_EQ(group.rows.size(), 6u);
}

TEST(HandGroup, DepthCountsStepsToARoot) {
    HandGroup group = pairGroup();
    EXPECT_EQ(group.depth(0), 0u);
    EXPECT_EQ(group.depth(1), 1u);
    EXPECT_EQ(group.depth(2), 2u);
    EXPECT_EQ(group.depth(4), 1u);
    EXPECT_EQ(group.depth(5), 0u);
}

TEST(HandGroup, RemoveChildrenTakesSubtreesAndRenumbersTheRest) {
    HandGroup group = pairGroup();
    group.removeChildren(topPair);
    ASSERT_EQ(group.rows.size(), 4u);
    EXPECT_EQ(group.rows[0].key, pair);
    EXPECT_EQ(group.rows[1].key, topPair);
    EXPECT_EQ(group.rows[2].key, secondPair);
    EXPECT_EQ(group.rows[3].key, highcard);
    EXPECT_EQ(group.rows[2].parent, 0u);
    EXPECT_EQ(group.rows[3].parent, HandGroupRow::noParent);

    group.removeChildren(pair);
    ASSERT_EQ(group.rows.size(), 2u);
    EXPECT_EQ(group.rows[0].key, pair);
    EXPECT_EQ(group.rows[1].key, highcard);
    EXPECT_EQ(group.rows[1].parent, HandGroupRow::noParent);
}

TEST(HandGroup, RemovingChildrenRenumbersRowsBehindThem) {
    HandGroup group;
    group.addRow(HandGroupRowRequest(pair, HandStrengthKey()));
    group.addRow(HandGroupRowRequest(topPair, pair));
    group.addRow(HandGroupRowRequest(highcard, HandStrengthKey()));
    group.addRow(HandGroupRowRequest(HandStrengthKey(0x2400000000000ULL, 0), highcard));
    group.removeChildren(pair);
    ASSERT_EQ(group.rows.size(), 3u);
    EXPECT_EQ(group.rows[2].key.positive, 0x2400000000000ULL);
    EXPECT_EQ(group.rows[2].parent, 1u);
    EXPECT_EQ(group.rows[1].key, highcard);
}

TEST(HandGroup, RemoveChildrenOfAnUnknownKeyThrows) {
    HandGroup group = pairGroup();
    EXPECT_EQ(thrownBy([&] { group.removeChildren(HandStrengthKey(0x4, 0)); }),
              "Parent hand strength detail not found.");
    EXPECT_EQ(group.rows.size(), 6u);
}

TEST(HandGroup, RemovingTheLastRowsKeepsTheGroup) {
    HandGroup group;
    group.name = "Solo";
    group.addRow(HandGroupRowRequest(pair, HandStrengthKey()));
    group.addRow(HandGroupRowRequest(topPair, pair));
    group.removeChildren(pair);
    EXPECT_EQ(group.rows.size(), 1u);
    group.removeChildren(pair); // nothing left below: no change, no failure
    EXPECT_EQ(group.rows.size(), 1u);
    EXPECT_EQ(group.name, "Solo");
}

TEST(HandGroup, SetCombinationsWritesEveryEqualRow) {
    HandGroup group;
    group.addRow(HandGroupRowRequest(pair, HandStrengthKey()));
    group.addRow(HandGroupRowRequest(topPair, pair));
    group.addRow(HandGroupRowRequest(highcard, HandStrengthKey()));
    group.addRow(HandGroupRowRequest(HandStrengthKey(0x280, 0, "again"), highcard));
    group.setCombinations(topPair, 24, 3);
    EXPECT_EQ(group.rows[1].combinations1, 24u);
    EXPECT_EQ(group.rows[1].combinations2, 3u);
    EXPECT_EQ(group.rows[3].combinations1, 24u);
    EXPECT_EQ(group.rows[0].combinations1, 0u);
    EXPECT_EQ(group.rows[2].combinations1, 0u);
}

TEST(HandGroup, BrokenParentLinksAreTreatedAsRoots) {
    HandGroup group;
    group.rows.resize(4);
    group.rows[0].key = pair;
    group.rows[0].parent = 77; // out of range
    group.rows[1].key = topPair;
    group.rows[1].parent = 1; // itself
    group.rows[2].key = highcard;
    group.rows[2].parent = 3; // a cycle of two
    group.rows[3].key = secondPair;
    group.rows[3].parent = 2;
    EXPECT_EQ(group.parentOf(0), HandGroupRow::noParent);
    EXPECT_EQ(group.parentOf(1), HandGroupRow::noParent);
    EXPECT_EQ(group.depth(0), 0u);
    EXPECT_EQ(group.depth(1), 0u);
    EXPECT_LE(group.depth(2), 4u); // terminates
    EXPECT_EQ(group.descendantsOf(2), std::vector<std::size_t>{3});
    EXPECT_TRUE(group.childrenOf(0).empty());
    EXPECT_TRUE(group.descendantsOf(99).empty());
    group.removeChildren(highcard);
    ASSERT_EQ(group.rows.size(), 3u);
    EXPECT_EQ(group.rows[0].parent, 77u); // stays as read
    EXPECT_EQ(group.rows[2].key, highcard);
    EXPECT_EQ(group.rows[2].parent, HandGroupRow::noParent);
}

TEST(HandGroup, ResetEvaluationsMakesOneClearedRecordPerKey) {
    HandGroup group = pairGroup();
    group.addRow(HandGroupRowRequest(HandStrengthKey(0x280, 0, "again"), highcard));
    group.evaluations.total = 99;
    group.resetEvaluations();
    EXPECT_EQ(group.evaluations.total, 0u);
    ASSERT_EQ(group.evaluations.details.size(), 6u);
    EXPECT_EQ(group.evaluations.details[0].key, pair);
    EXPECT_EQ(group.evaluations.details[0].name, "Pair");
    EXPECT_EQ(group.evaluations.details[1].name, "Top Pair");
    EXPECT_EQ(group.evaluations.details[3].name, "With Other Kicker");
    for (const DetailHandEvaluation& detail : group.evaluations.details) {
        EXPECT_EQ(detail.combinations1, 0);
        EXPECT_EQ(detail.combinations2, 0);
        EXPECT_TRUE(detail.hands1.empty());
        EXPECT_NE(detail.percent1, detail.percent1); // quiet NaN
    }
    EXPECT_NE(group.detailOf(otherKicker), nullptr);
    EXPECT_EQ(group.detailOf(HandStrengthKey(0x4, 0)), nullptr);
}
