// The tree of folders and ranges: building, removing, moving, and the group rules that
// the bound filter and notifier functions enforce.

#include "TreeTestHelpers.h"

#include "Range/Element.h"
#include "Range/HandRangeElementConversion.h"
#include "Range/TreeFolderNode.h"
#include "Range/TreeRangeNode.h"
#include "support/AssertionRecorder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <stdexcept>

using Range::Tree;
using Range::TreeRangeNode;

namespace {

constexpr unsigned int aces = 1U << 12;
constexpr unsigned int kings = 1U << 11;

// A player's tree: the range at 0 and the given number of plain groups below it.
struct PlayerTree {
    Tree tree;
    PlayerTree(const std::string& rangeText) {
        tree.addRange(none, "", false, Range::GroupColor());
        setText(tree, 0, rangeText);
    }
};

} // namespace

TEST(RangeTreeBuild, NewNodesGetDenseIndicesAndJoinTheirParent) {
    Tree tree;
    EXPECT_EQ(tree.count(), 0u);
    Range::TreeFolderNode* folder = tree.addFolder(none, "Preflop");
    TreeRangeNode* range = tree.addRange(0, "Open", false, Range::GroupColor());
    TreeRangeNode* group =
        tree.addExclusiveRange(1, "Value", TreeRangeNode::Block, false, rgbColor(1, 2, 3, 4, 5, 6));
    EXPECT_EQ(tree.count(), 3u);
    EXPECT_EQ(folder->index, 0u);
    EXPECT_EQ(range->index, 1u);
    EXPECT_EQ(group->index, 2u);
    EXPECT_EQ(folder->parent, none);
    EXPECT_EQ(range->parent, 0u);
    EXPECT_EQ(group->parent, 1u);
    EXPECT_EQ(childrenOf(tree, 0), std::vector<unsigned int>{1});
    EXPECT_EQ(childrenOf(tree, 1), std::vector<unsigned int>{2});
    EXPECT_TRUE(folder->IsFolder());
    EXPECT_FALSE(folder->IsRange());
    EXPECT_TRUE(range->IsRange());
    EXPECT_FALSE(range->IsFolder());
    EXPECT_EQ(folder->name, "Preflop");
    EXPECT_EQ(range->name, "Open");
    EXPECT_FALSE(range->exclusive);
    EXPECT_TRUE(group->exclusive);
    EXPECT_EQ(group->insertMode(), TreeRangeNode::Block);
    EXPECT_EQ(group->color, rgbColor(1, 2, 3, 4, 5, 6));
    EXPECT_TRUE(range->handRange.isEmpty());
    EXPECT_EQ(tree.topLevelNodes(), std::vector<unsigned int>{0});
    EXPECT_EQ(tree.node(2), group);
    EXPECT_EQ(tree.rangeNode(1), range);
    EXPECT_EQ(&tree.handRange(2), &group->handRange);
    EXPECT_EQ(group->tree, &tree);
}

TEST(RangeTreeBuild, PositionInsertsAmongChildrenOrAppendsPastTheEnd) {
    Tree tree;
    tree.addFolder(none, "root");
    tree.addFolder(0, "a");
    tree.addFolder(0, "b");
    tree.addFolder(0, "c", 0);
    tree.addFolder(0, "d", 2);
    tree.addFolder(0, "e", 99);
    EXPECT_EQ(childrenOf(tree, 0), (std::vector<unsigned int>{3, 1, 4, 2, 5}));
    tree.addFolder(none, "second top", 0);
    EXPECT_EQ(tree.topLevelNodes(), (std::vector<unsigned int>{0, 6}));
}

TEST(RangeTreeBuild, InsertModeOfAPlainRangeAssertsAndGivesTheStoredValue) {
    Tree tree;
    TreeRangeNode* plain = tree.addRange(none, "plain", false, Range::GroupColor());
    AssertionRecorder recorder;
    EXPECT_EQ(plain->insertMode(), TreeRangeNode::Overwrite);
    EXPECT_TRUE(recorder.saw("Range not exclusive."));
    recorder.clear();
    TreeRangeNode* blocking =
        tree.addExclusiveRange(0, "b", TreeRangeNode::Block, false, Range::GroupColor());
    EXPECT_EQ(blocking->insertMode(), TreeRangeNode::Block);
    EXPECT_TRUE(recorder.messages().empty());
    // An unknown mode is reported and acts as overwrite, in the file as well.
    tree.addExclusiveRange(0, "odd", 7, false, Range::GroupColor());
    EXPECT_TRUE(recorder.saw("Invalid insert mode."));
    setText(tree, 0, "AA");
    setText(tree, 1, "AA");
    setText(tree, 2, "AA");
    EXPECT_EQ(technical(tree, 2), "AA");
    EXPECT_EQ(technical(tree, 1), "");
    EXPECT_NE(tree.saveToText().find("name=\"odd\" text=\"AA\" usesColor=\"false\" "
                                     "exclusive=\"true\" insertMode=\"overwrite\""),
              std::string::npos);
}

TEST(RangeTreeBuild, BadIndicesAndWrongKindsAreThrownAsText) {
    Tree tree;
    tree.addFolder(none, "f");
    tree.addRange(none, "r", false, Range::GroupColor());
    auto message = [](auto&& call) {
        try {
            call();
        } catch (const std::string& text) {
            return text;
        }
        return std::string("nothing thrown");
    };
    EXPECT_EQ(message([&] { tree.node(2); }), "Node index out of range.");
    EXPECT_EQ(message([&] { tree.handRange(0); }), "Node is not a range.");
    EXPECT_EQ(message([&] { tree.renameFolder(1, "x"); }), "Node is not a folder.");
    EXPECT_EQ(message([&] { tree.renameRange(0, "x"); }), "Node is not a range.");
    EXPECT_EQ(message([&] { tree.addFolder(7, "x"); }), "Node index out of range.");
    EXPECT_EQ(message([&] { tree.remove(5); }), "Node index out of range.");
    EXPECT_EQ(message([&] { tree.move(0, 3, 0); }), "Node index out of range.");
    EXPECT_EQ(tree.count(), 2u);
}

TEST(RangeTreeBuild, RenameAndSetColorChangeOnlyThatField) {
    Tree tree;
    tree.addFolder(none, "old folder");
    TreeRangeNode* range = tree.addRange(0, "old range", false, Range::GroupColor());
    tree.renameFolder(0, "new folder");
    tree.renameRange(1, "new range");
    tree.setColor(1, rgbColor(9, 8, 7, 6, 5, 4));
    EXPECT_EQ(static_cast<Range::TreeFolderNode*>(tree.node(0))->name, "new folder");
    EXPECT_EQ(range->name, "new range");
    EXPECT_EQ(range->color, rgbColor(9, 8, 7, 6, 5, 4));
    tree.setColor(*range, rgbColor(1, 1, 1, 2, 2, 2, false));
    EXPECT_EQ(range->color, rgbColor(1, 1, 1, 2, 2, 2, false));
}

// --- The group rules ----------------------------------------------------------------

TEST(RangeTreeGroups, UnderAnEmptyParentAChildRefusesEverything) {
    PlayerTree player("");
    Tree& tree = player.tree;
    tree.addRange(0, "plain", false, Range::GroupColor());
    tree.addExclusiveRange(0, "block", TreeRangeNode::Block, false, Range::GroupColor());
    tree.addExclusiveRange(0, "overwrite", TreeRangeNode::Overwrite, false, Range::GroupColor());
    for (unsigned int group = 1; group <= 3; ++group) {
        setText(tree, group, "AA,KK,AKs,72o,AdKh");
        EXPECT_TRUE(tree.handRange(group).isEmpty()) << group;
        Range::HandRange full(true);
        for (const Range::Element& element : full)
            EXPECT_EQ(tree.inParent(*tree.rangeNode(group), element), 0u);
        EXPECT_FALSE(tree.setSuits(group, aces, false, Range::pairSuits));
    }
}

TEST(RangeTreeGroups, AChildStaysInsideItsParentAndAFolderDoesNotRestrict) {
    Tree tree;
    tree.addFolder(none, "folder");
    tree.addRange(0, "saved", false, Range::GroupColor());
    setText(tree, 1, "QQ+,AKs");
    EXPECT_EQ(technical(tree, 1), "QQ,KK,AA,AKs");
    tree.addRange(1, "child", false, Range::GroupColor());
    setText(tree, 2, "JJ+,AK");
    EXPECT_EQ(technical(tree, 2), "QQ,KK,AA,AKs");
    // Single combinations: the parent holds all six aces, the child asks for two of them.
    setText(tree, 2, "AdAh,AsAc,KdKd");
    EXPECT_EQ(technical(tree, 2), "AdAh,AsAc");
    Range::Element proposed = Range::makeElement(aces | kings, Range::Offsuit, Range::offsuitSuits);
    EXPECT_EQ(tree.inParent(*tree.rangeNode(2), proposed), 0u); // AKo is not in the parent
}

TEST(RangeTreeGroups, ClearingAParentClearsAllDescendantsInOneWalk) {
    PlayerTree player("TT+,AKs");
    Tree& tree = player.tree;
    tree.addRange(0, "a", false, Range::GroupColor());
    tree.addRange(1, "a1", false, Range::GroupColor());
    tree.addExclusiveRange(2, "a11", TreeRangeNode::Block, false, Range::GroupColor());
    tree.addExclusiveRange(0, "b", TreeRangeNode::Overwrite, false, Range::GroupColor());
    setText(tree, 1, "QQ+,AKs");
    setText(tree, 2, "KK+,AKs");
    setText(tree, 3, "AA");
    setText(tree, 4, "TT");
    ASSERT_EQ(technical(tree, 3), "AA");
    tree.handRange(0) -= Range::HandRange(true); // one change, one notification
    for (unsigned int index = 0; index < tree.count(); ++index)
        EXPECT_TRUE(tree.handRange(index).isEmpty()) << index;
}

TEST(RangeTreeGroups, ShrinkingAParentShrinksItsChildrenDownTheTree) {
    PlayerTree player("TT+");
    Tree& tree = player.tree;
    tree.addRange(0, "a", false, Range::GroupColor());
    tree.addRange(1, "a1", false, Range::GroupColor());
    setText(tree, 1, "JJ+");
    setText(tree, 2, "QQ+");
    EXPECT_TRUE(tree.setSuits(0, kings, false, 0));
    EXPECT_EQ(technical(tree, 0), "TT,JJ,QQ,AA");
    EXPECT_EQ(technical(tree, 1), "JJ,QQ,AA");
    EXPECT_EQ(technical(tree, 2), "QQ,AA");
    // Growing the parent again does not give the children anything back.
    EXPECT_TRUE(tree.setSuits(0, kings, false, Range::pairSuits));
    EXPECT_EQ(technical(tree, 2), "QQ,AA");
}

TEST(RangeTreeGroups, OverwriteTakesCombinationsFromSiblingsAndTheirChildren) {
    PlayerTree player("QQ+");
    Tree& tree = player.tree;
    tree.addExclusiveRange(0, "A", TreeRangeNode::Overwrite, false, Range::GroupColor());
    tree.addRange(1, "A1", false, Range::GroupColor());
    tree.addExclusiveRange(0, "B", TreeRangeNode::Overwrite, false, Range::GroupColor());
    setText(tree, 1, "AA,KK");
    setText(tree, 2, "AA,KK");
    addText(tree, 3, "AA");
    EXPECT_EQ(technical(tree, 3), "AA");
    EXPECT_EQ(technical(tree, 1), "KK");
    EXPECT_EQ(technical(tree, 2), "KK");
    // A single combination moves alone.
    EXPECT_TRUE(tree.setSuits(1, aces, false, Range::suitPairToBit('d', 'h')));
    EXPECT_EQ(technical(tree, 1), "KK,AdAh");
    EXPECT_EQ(technical(tree, 3), "AdAs,AdAc,AhAs,AhAc,AsAc");
}

TEST(RangeTreeGroups, OverwriteReachesNonExclusiveSiblingsAndLeavesTheirRulesInPlace) {
    PlayerTree player("QQ+");
    Tree& tree = player.tree;
    tree.addRange(0, "plain", false, Range::GroupColor());
    tree.addExclusiveRange(0, "O", TreeRangeNode::Overwrite, false, Range::GroupColor());
    setText(tree, 1, "AA,KK");
    setText(tree, 2, "AA");
    EXPECT_EQ(technical(tree, 1), "KK");
    // The plain sibling got its own filter back: it may take AA again, and then both hold it.
    setText(tree, 1, "AA,KK");
    EXPECT_EQ(technical(tree, 1), "KK,AA");
    EXPECT_EQ(technical(tree, 2), "AA");
}

TEST(RangeTreeGroups, BlockKeepsTheEarlierHolderAndTheReturnedElementShowsNoSuits) {
    PlayerTree player("QQ+");
    Tree& tree = player.tree;
    tree.addExclusiveRange(0, "A", TreeRangeNode::Overwrite, false, Range::GroupColor());
    tree.addExclusiveRange(0, "B", TreeRangeNode::Block, false, Range::GroupColor());
    setText(tree, 1, "AA");
    Range::Element acesElement = Range::makeElement(aces, Range::Pair, Range::pairSuits);
    const Range::Element result = tree.handRange(2).insert(acesElement, true);
    EXPECT_EQ(result.suits, 0u);
    EXPECT_EQ(result.values, aces);
    EXPECT_TRUE(tree.handRange(2).isEmpty());
    EXPECT_EQ(technical(tree, 1), "AA");
    // What no sibling holds goes in.
    setText(tree, 2, "AA,KK");
    EXPECT_EQ(technical(tree, 2), "KK");
    EXPECT_EQ(tree.blockedBySiblings(*tree.rangeNode(2), acesElement), 0u);
    EXPECT_EQ(tree.withoutSiblings(*tree.rangeNode(1),
                                   Range::makeElement(kings, Range::Pair, Range::pairSuits)),
              0u);
}

TEST(RangeTreeGroups, ACopyOfAGroupsRangeNoLongerObeysTheParent) {
    PlayerTree player("AA");
    Tree& tree = player.tree;
    tree.addRange(0, "g", false, Range::GroupColor());
    Range::HandRange copy = tree.handRange(1);
    EXPECT_TRUE(copy.setSuits(kings, false, Range::pairSuits));
    EXPECT_EQ(copy.combinationCount(), 6u);
    EXPECT_TRUE(tree.handRange(1).isEmpty());
}

TEST(RangeTreeGroups, SetSuitsNotifiesOnlyOnChange) {
    PlayerTree player("KK+");
    Tree& tree = player.tree;
    tree.addRange(0, "g", false, Range::GroupColor());
    setText(tree, 1, "KK+");
    EXPECT_FALSE(tree.setSuits(0, kings, false, Range::pairSuits));
    EXPECT_EQ(technical(tree, 1), "KK,AA");
    EXPECT_TRUE(tree.setSuits(0, kings, false, Range::suitPairToBit('d', 'h')));
    EXPECT_EQ(technical(tree, 1), "KdKh,AA");
}

// --- Share of parent -----------------------------------------------------------------

TEST(RangeTreeShare, IsTheCombinationRatioUnderARangeAndNaNOtherwise) {
    Tree tree;
    tree.addRange(none, "top", false, Range::GroupColor());
    setText(tree, 0, "QQ+");
    tree.addRange(0, "g", false, Range::GroupColor());
    setText(tree, 1, "AA");
    EXPECT_FLOAT_EQ(tree.shareOfParent(1), 6.0f / 18.0f);
    EXPECT_EQ(tree.shareOfParent(*tree.rangeNode(1)), 6.0f / 18.0f);
    EXPECT_TRUE(std::isnan(tree.shareOfParent(0)));
    tree.addFolder(none, "folder");
    tree.addRange(2, "in folder", false, Range::GroupColor());
    setText(tree, 3, "AA");
    EXPECT_TRUE(std::isnan(tree.shareOfParent(3)));
    // An empty parent has no share to give either.
    tree.handRange(0) -= Range::HandRange(true);
    EXPECT_TRUE(std::isnan(tree.shareOfParent(1)));
}

// --- Siblings -----------------------------------------------------------------------

TEST(RangeTreeSiblings, AreTheParentsOtherChildren) {
    Tree tree;
    tree.addFolder(none, "f");
    tree.addFolder(0, "a");
    tree.addFolder(0, "b");
    tree.addFolder(0, "c");
    tree.addFolder(none, "top2");
    EXPECT_EQ(tree.siblings(2), (std::vector<unsigned int>{1, 3}));
    EXPECT_EQ(tree.siblings(*tree.node(1)), (std::vector<unsigned int>{2, 3}));
    EXPECT_TRUE(tree.siblings(0).empty());
    EXPECT_TRUE(tree.siblings(4).empty());
}

// --- Moving ------------------------------------------------------------------------------

TEST(RangeTreeMove, WithinOneParentThePositionCountsBeforeTheMove) {
    Tree tree;
    tree.addFolder(none, "p");
    tree.addFolder(0, "a");
    tree.addFolder(0, "b");
    tree.addFolder(0, "c");
    tree.move(1, 0, 2);
    EXPECT_EQ(childrenOf(tree, 0), (std::vector<unsigned int>{2, 1, 3}));
    tree.move(3, 0, 0);
    EXPECT_EQ(childrenOf(tree, 0), (std::vector<unsigned int>{3, 2, 1}));
    tree.move(3, 0, none);
    EXPECT_EQ(childrenOf(tree, 0), (std::vector<unsigned int>{2, 1, 3}));
    tree.move(2, 0, 1); // taken from 0, position lowered to 0: stays first
    EXPECT_EQ(childrenOf(tree, 0), (std::vector<unsigned int>{2, 1, 3}));
}

TEST(RangeTreeMove, ToAnotherParentInsertsAtThePosition) {
    Tree tree;
    tree.addFolder(none, "p");
    tree.addFolder(0, "a");
    tree.addFolder(0, "b");
    tree.addFolder(none, "q");
    tree.addFolder(3, "x");
    tree.move(2, 3, 0);
    EXPECT_EQ(childrenOf(tree, 0), (std::vector<unsigned int>{1}));
    EXPECT_EQ(childrenOf(tree, 3), (std::vector<unsigned int>{2, 4}));
    EXPECT_EQ(tree.node(2)->parent, 3u);
    // A top-level node can move below a node, and back to the top.
    tree.move(0, 3, none);
    EXPECT_EQ(childrenOf(tree, 3), (std::vector<unsigned int>{2, 4, 0}));
    tree.move(0, none, none);
    EXPECT_EQ(tree.node(0)->parent, none);
    EXPECT_EQ(childrenOf(tree, 3), (std::vector<unsigned int>{2, 4}));
    EXPECT_EQ(tree.topLevelNodes(), (std::vector<unsigned int>{0, 3}));
}

TEST(RangeTreeMove, AGroupMovedToAParentLackingCombinationsLosesThemAtOnce) {
    PlayerTree player("QQ+,AKs");
    Tree& tree = player.tree;
    tree.addRange(0, "wide", false, Range::GroupColor());
    tree.addRange(0, "narrow", false, Range::GroupColor());
    tree.addRange(1, "mover", false, Range::GroupColor());
    tree.addRange(3, "mover's child", false, Range::GroupColor());
    setText(tree, 1, "QQ+,AKs");
    setText(tree, 2, "AA,AKs");
    setText(tree, 3, "QQ+,AKs");
    setText(tree, 4, "QQ,AKs");
    tree.move(3, 2, none);
    EXPECT_EQ(technical(tree, 3), "AA,AKs");
    EXPECT_EQ(technical(tree, 4), "AKs");
    EXPECT_EQ(childrenOf(tree, 2), std::vector<unsigned int>{3});
    EXPECT_TRUE(childrenOf(tree, 1).empty());
}

TEST(RangeTreeMove, AnOverwriteGroupMovedAmongSiblingsPushesThemOut) {
    PlayerTree player("QQ+");
    Tree& tree = player.tree;
    tree.addRange(0, "a", false, Range::GroupColor());
    tree.addRange(0, "b", false, Range::GroupColor());
    tree.addExclusiveRange(1, "o", TreeRangeNode::Overwrite, false, Range::GroupColor());
    setText(tree, 1, "QQ+");
    setText(tree, 2, "KK+");
    setText(tree, 3, "QQ");
    tree.move(3, 0, none);
    EXPECT_EQ(technical(tree, 3), "QQ");
    // Each sibling loses what any of its siblings holds, in order: "a" loses QQ to the
    // mover and KK, AA to "b"; then "b" keeps KK, AA, which "a" no longer holds.
    EXPECT_EQ(technical(tree, 1), "");
    EXPECT_EQ(technical(tree, 2), "KK,AA");
}

TEST(RangeTreeMove, BelowItselfOrItsDescendantsIsRefused) {
    Tree tree;
    tree.addFolder(none, "p");
    tree.addFolder(0, "c");
    tree.addFolder(1, "g");
    for (unsigned int target : {0u, 1u, 2u}) {
        try {
            tree.move(0, target, none);
            ADD_FAILURE() << "moved below " << target;
        } catch (const std::string& message) {
            EXPECT_EQ(message, "A node cannot move below itself.");
        }
    }
    EXPECT_EQ(tree.node(0)->parent, none);
    EXPECT_EQ(childrenOf(tree, 0), std::vector<unsigned int>{1});
}

// --- Removing ------------------------------------------------------------------------

TEST(RangeTreeRemove, TheNextNodeTakesThePlaceAndAllIndicesAboveFall) {
    Tree tree;
    tree.addFolder(none, "p"); // 0
    tree.addFolder(0, "a");    // 1
    tree.addFolder(1, "a1");   // 2
    tree.addFolder(0, "b");    // 3
    tree.addFolder(3, "b1");   // 4
    tree.addFolder(none, "q"); // 5
    tree.addFolder(5, "q1");   // 6
    tree.move(1, 0, none);     // p: b, a
    tree.remove(1);
    ASSERT_EQ(tree.count(), 5u);
    auto name = [&](unsigned int i) {
        return static_cast<Range::TreeFolderNode*>(tree.node(i))->name;
    };
    EXPECT_EQ(name(0), "p");
    EXPECT_EQ(name(1), "b");
    EXPECT_EQ(name(2), "b1");
    EXPECT_EQ(name(3), "q");
    EXPECT_EQ(name(4), "q1");
    for (unsigned int i = 0; i < tree.count(); ++i)
        EXPECT_EQ(tree.node(i)->index, i);
    EXPECT_EQ(childrenOf(tree, 0), std::vector<unsigned int>{1});
    EXPECT_EQ(childrenOf(tree, 1), std::vector<unsigned int>{2});
    EXPECT_EQ(tree.node(2)->parent, 1u);
    EXPECT_EQ(childrenOf(tree, 3), std::vector<unsigned int>{4});
    EXPECT_EQ(tree.node(4)->parent, 3u);
    EXPECT_EQ(tree.topLevelNodes(), (std::vector<unsigned int>{0, 3}));
}

TEST(RangeTreeRemove, ChildrenWithLowerIndicesThanTheirParentGoToo) {
    Tree tree;
    tree.addFolder(none, "x"); // 0
    tree.addFolder(none, "y"); // 1
    tree.addFolder(none, "p"); // 2
    tree.addFolder(none, "z"); // 3
    tree.move(0, 2, none);
    tree.move(3, 2, 0);
    tree.move(1, 3, none); // p: z(y), x
    tree.remove(2);
    EXPECT_EQ(tree.count(), 0u);
}

TEST(RangeTreeRemove, RemoveListTakesEveryListedSubtree) {
    Tree tree;
    tree.addFolder(none, "a"); // 0
    tree.addFolder(0, "a1");   // 1
    tree.addFolder(none, "b"); // 2
    tree.addFolder(2, "b1");   // 3
    tree.addFolder(2, "b2");   // 4
    tree.addFolder(none, "c"); // 5
    tree.addFolder(5, "c1");   // 6
    tree.removeList({0, 3, 6});
    ASSERT_EQ(tree.count(), 3u);
    EXPECT_EQ(static_cast<Range::TreeFolderNode*>(tree.node(0))->name, "b");
    EXPECT_EQ(static_cast<Range::TreeFolderNode*>(tree.node(1))->name, "b2");
    EXPECT_EQ(static_cast<Range::TreeFolderNode*>(tree.node(2))->name, "c");
    EXPECT_EQ(childrenOf(tree, 0), std::vector<unsigned int>{1});
    EXPECT_TRUE(childrenOf(tree, 2).empty());
    EXPECT_EQ(tree.topLevelNodes(), (std::vector<unsigned int>{0, 2}));
}

TEST(RangeTreeRemove, AListedDescendantOfAListedNodeIsRemovedOnce) {
    Tree tree;
    tree.addFolder(none, "a"); // 0
    tree.addFolder(0, "a1");   // 1
    tree.addFolder(1, "a11");  // 2
    tree.addFolder(none, "b"); // 3
    tree.addFolder(none, "c"); // 4
    tree.removeList({2, 0, 2});
    ASSERT_EQ(tree.count(), 2u);
    EXPECT_EQ(static_cast<Range::TreeFolderNode*>(tree.node(0))->name, "b");
    EXPECT_EQ(static_cast<Range::TreeFolderNode*>(tree.node(1))->name, "c");
}

TEST(RangeTreeRemove, FiltersStillFindTheirRelativesAfterRenumbering) {
    PlayerTree player("QQ+");
    Tree& tree = player.tree;
    tree.addRange(0, "doomed", false, Range::GroupColor());
    tree.addExclusiveRange(0, "A", TreeRangeNode::Overwrite, false, Range::GroupColor());
    tree.addRange(2, "A1", false, Range::GroupColor());
    tree.addExclusiveRange(0, "B", TreeRangeNode::Overwrite, false, Range::GroupColor());
    setText(tree, 2, "QQ+");
    setText(tree, 3, "KK+");
    tree.remove(1);
    ASSERT_EQ(tree.count(), 4u);
    EXPECT_EQ(tree.rangeNode(1)->name, "A");
    setText(tree, 3, "AA"); // B, now at 3
    EXPECT_EQ(technical(tree, 1), "QQ,KK");
    EXPECT_EQ(technical(tree, 2), "KK");
    setText(tree, 0, "KK+");
    EXPECT_EQ(technical(tree, 1), "KK");
    EXPECT_EQ(technical(tree, 3), "AA");
}
