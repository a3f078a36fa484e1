// Colours of new groups: the first standard colour that no node of the same family uses.

#include "TreeTestHelpers.h"

#include "Range/TreeRangeNode.h"

#include <gtest/gtest.h>

#include <stdexcept>

using Range::GroupColor;
using Range::Tree;
using Range::TreeRangeNode;

namespace {

const GroupColor& standard(std::size_t number) {
    return GroupColor::standardColors().at(number - 1);
}

std::string logicErrorOf(Tree& tree, unsigned int parent) {
    try {
        tree.addExclusiveRange(parent, "one too many", TreeRangeNode::Overwrite, true,
                               rgbColor(1, 2, 3, 4, 5, 6));
    } catch (const std::logic_error& error) {
        return error.what();
    }
    return "nothing thrown";
}

} // namespace

TEST(RangeTreeColors, NewGroupsTakeTheTableInOrder) {
    Tree tree;
    tree.addRange(none, "", false, GroupColor());
    for (std::size_t number = 1; number <= 16; ++number) {
        TreeRangeNode* group = tree.addRange(0, "g", true, rgbColor(1, 2, 3, 4, 5, 6));
        EXPECT_EQ(group->color, standard(number)) << number;
    }
}

TEST(RangeTreeColors, AllSixteenInOneFamilyThrowAfterTheNodeWasAdded) {
    Tree tree;
    tree.addRange(none, "player 1", false, GroupColor()); // 0
    tree.addRange(none, "player 2", false, GroupColor()); // 1
    // The family reaches down through groups of groups: 8 children and 8 grandchildren.
    for (int i = 0; i < 8; ++i)
        tree.addRange(0, "child", true, GroupColor());
    for (int i = 0; i < 8; ++i)
        tree.addRange(2 + i, "grandchild", true, GroupColor());
    EXPECT_EQ(logicErrorOf(tree, 0), "All colors in use.");
    ASSERT_EQ(tree.count(), 19u);
    EXPECT_EQ(tree.node(18)->parent, 0u);
    EXPECT_EQ(childrenOf(tree, 0).back(), 18u);
    EXPECT_EQ(tree.rangeNode(18)->color, rgbColor(1, 2, 3, 4, 5, 6));
    // Deep in the family the same holds.
    EXPECT_EQ(logicErrorOf(tree, 10), "All colors in use.");
    // Player 2's tree is another family.
    TreeRangeNode* other = tree.addRange(1, "other", true, GroupColor());
    EXPECT_EQ(other->color, standard(1));
}

TEST(RangeTreeColors, AFamilyIncludesAncestorsAndTheirOtherDescendants) {
    Tree tree;
    tree.addRange(none, "", false, GroupColor()); // 0
    tree.addRange(0, "a", true, GroupColor());    // 1: colour 1
    tree.addRange(0, "b", true, GroupColor());    // 2: colour 2
    tree.addRange(2, "b1", true, GroupColor());   // 3: colour 3
    TreeRangeNode* a1 = tree.addRange(1, "a1", true, GroupColor());
    EXPECT_EQ(a1->color, standard(4));
    // The root's own colour counts as well.
    tree.setColor(0, standard(5));
    EXPECT_EQ(tree.addRange(3, "b11", true, GroupColor())->color, standard(6));
}

TEST(RangeTreeColors, AFolderEndsTheFamily) {
    Tree tree;
    tree.addFolder(none, "folder");                  // 0
    tree.addRange(0, "saved 1", true, GroupColor()); // 1
    tree.addRange(0, "saved 2", true, GroupColor()); // 2
    EXPECT_EQ(tree.rangeNode(1)->color, standard(1));
    EXPECT_EQ(tree.rangeNode(2)->color, standard(1));
    EXPECT_EQ(tree.addRange(1, "group", true, GroupColor())->color, standard(2));
    // A range below a folder below a range starts a family of its own.
    tree.addFolder(1, "inner folder"); // 4
    EXPECT_EQ(tree.addRange(4, "inner", true, GroupColor())->color, standard(1));
}

TEST(RangeTreeColors, ANodeWithoutUsesColorMarksNothingAndThePassedColourIsIgnored) {
    Tree tree;
    tree.addRange(none, "", false, GroupColor());
    GroupColor firstUnused = standard(1);
    firstUnused.usesColor = false;
    tree.addRange(0, "unused", false, firstUnused);
    tree.addRange(0, "almost", false, rgbColor(252, 112, 91, 232, 112, 100));
    EXPECT_EQ(tree.addRange(0, "new", true, standard(1))->color, standard(1));
    EXPECT_EQ(tree.addRange(0, "newer", true, standard(1))->color, standard(2));
}

TEST(RangeTreeColors, FreeColorsListsTheRestInTableOrder) {
    Tree tree;
    tree.addRange(none, "", false, GroupColor());
    tree.addRange(0, "a", false, standard(2));
    tree.addRange(0, "b", false, standard(7));
    tree.addRange(1, "a1", false, standard(16));
    const std::vector<GroupColor> free = tree.freeColors(3);
    ASSERT_EQ(free.size(), 13u);
    EXPECT_EQ(free[0], standard(1));
    EXPECT_EQ(free[1], standard(3));
    EXPECT_EQ(free[5], standard(8));
    EXPECT_EQ(free[12], standard(15));
    // A node's own colour is in use for the colour dialog.
    EXPECT_EQ(tree.freeColors(0).size(), 13u);
}
