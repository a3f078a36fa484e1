#include "evfe/RangeGroupSet.h"

#include "Range/HandRange.h"
#include "Range/HandRangeStringManipulator.h"
#include "Range/NodeMemento.h"
#include "Range/Tree.h"
#include "Range/TreeRangeNode.h"
#include "evfe/LineFactory.h"
#include "support/AssertionRecorder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <list>
#include <string>
#include <utility>
#include <vector>

namespace {

// Value mask of a pair of aces: one bit per value, the ace at bit 12.
const unsigned int aces = 1u << 12;
// All six combinations of a pair.
const unsigned int allPairSuits = 2254;

// The suit masks of free range text read into a plain range, for comparison.
std::vector<unsigned int> suitsOf(const std::string& text) {
    Range::HandRange plain;
    Range::HandRangeStringManipulator(plain).setFree(text);
    return plain.suitsVector();
}

void setText(Range::TreeRangeNode* group, const std::string& text) {
    ASSERT_NE(group, nullptr);
    Range::HandRangeStringManipulator(group->handRange).setFree(text);
}

std::vector<Range::NodeMemento> mementoOf(const RangeGroupSet& set) {
    std::vector<Range::NodeMemento> records;
    if (set.count() > 0)
        set.group(0)->tree->CreateMemento(records, Range::Tree::noNode);
    return records;
}

// --- The set on its own ----------------------------------------------------------------

TEST(RangeGroupSetTest, GroupsAreRangeNodesOfOneTreeInAppendOrder) {
    RangeGroupSet set;
    EXPECT_TRUE(set.isEmpty());
    Range::TreeRangeNode* full = set.addGroup(RangeGroupSet::noGroup, "");
    Range::TreeRangeNode* first = set.addGroup(0, "");
    Range::TreeRangeNode* second = set.addGroup(0, "named");
    ASSERT_EQ(set.count(), 3u);
    EXPECT_FALSE(set.isEmpty());

    EXPECT_EQ(set.group(0), full);
    EXPECT_EQ(set.group(1), first);
    EXPECT_EQ(set.group(2), second);
    EXPECT_EQ(full->tree, first->tree);
    EXPECT_EQ(full->tree, second->tree);
    EXPECT_EQ(full->tree->count(), 3u);

    EXPECT_EQ(full->index, 0u);
    EXPECT_EQ(full->parent, Range::Tree::noNode);
    EXPECT_EQ(full->children, (std::vector<unsigned int>{1u, 2u}));
    EXPECT_EQ(first->index, 1u);
    EXPECT_EQ(first->parent, 0u);
    EXPECT_EQ(second->parent, 0u);
    EXPECT_EQ(second->name, "named");
    EXPECT_EQ(set.indexOf(second), 2u);

    // Plain groups: not exclusive, no colour, empty.
    for (unsigned int i = 0; i < 3; ++i) {
        EXPECT_TRUE(set.group(i)->IsRange());
        EXPECT_FALSE(set.group(i)->exclusive);
        EXPECT_FALSE(set.group(i)->color.usesColor);
        EXPECT_EQ(set.group(i)->color, Range::GroupColor());
        EXPECT_TRUE(set.group(i)->handRange.isEmpty());
    }
}

TEST(RangeGroupSetTest, IndexOfKnowsOnlyItsOwnGroups) {
    RangeGroupSet one;
    RangeGroupSet other;
    one.addGroup(RangeGroupSet::noGroup, "");
    Range::TreeRangeNode* foreign = other.addGroup(RangeGroupSet::noGroup, "");
    other.addGroup(0, "");
    // Same index in another tree is not a group of this set.
    EXPECT_EQ(one.indexOf(foreign), RangeGroupSet::noGroup);
    EXPECT_EQ(other.indexOf(foreign), 0u);
    EXPECT_EQ(one.indexOf(nullptr), RangeGroupSet::noGroup);

    // A node made outside the tree that claims the tree and an index of it.
    Range::TreeRangeNode impostor(one.group(0)->tree, 0, Range::Tree::noNode, "", false, 0);
    EXPECT_EQ(one.indexOf(&impostor), RangeGroupSet::noGroup);
}

TEST(RangeGroupSetTest, AChildCannotHoldHandsOutsideItsParent) {
    RangeGroupSet set;
    Range::TreeRangeNode* full = set.addGroup(RangeGroupSet::noGroup, "");
    Range::TreeRangeNode* child = set.addGroup(0, "");
    setText(full, "AA,KK");
    setText(child, "AA,QQ,AKs");
    EXPECT_EQ(child->handRange.suitsVector(), suitsOf("AA"));
    EXPECT_EQ(child->handRange.combinationCount(), 6u);

    // Adding a single class outside the parent is refused as well, until the parent has it.
    const unsigned int queens = 1u << 10;
    EXPECT_FALSE(child->tree->setSuits(child->index, queens, false, allPairSuits));
    EXPECT_EQ(child->handRange.combinationCount(), 6u);
    EXPECT_TRUE(full->tree->setSuits(full->index, queens, false, allPairSuits));
    EXPECT_TRUE(child->tree->setSuits(child->index, queens, false, allPairSuits));
    EXPECT_EQ(child->handRange.suitsVector(), suitsOf("AA,QQ"));

    // Top-level group 0 itself is free.
    setText(full, "QQ+");
    EXPECT_EQ(full->handRange.combinationCount(), 18u);
}

TEST(RangeGroupSetTest, UnderAnEmptyParentAChildRefusesEverything) {
    RangeGroupSet set;
    set.addGroup(RangeGroupSet::noGroup, "");
    Range::TreeRangeNode* child = set.addGroup(0, "");
    setText(child, "22+,A2s+,K2o+");
    EXPECT_TRUE(child->handRange.isEmpty());
    EXPECT_FALSE(child->tree->setSuits(child->index, aces, false, allPairSuits));
    EXPECT_TRUE(child->handRange.isEmpty());
}

TEST(RangeGroupSetTest, ShrinkingTheParentShrinksEveryChildAtOnce) {
    RangeGroupSet set;
    Range::TreeRangeNode* full = set.addGroup(RangeGroupSet::noGroup, "");
    Range::TreeRangeNode* a = set.addGroup(0, "");
    Range::TreeRangeNode* b = set.addGroup(0, "");
    Range::TreeRangeNode* c = set.addGroup(0, "");
    setText(full, "AA,KK,QQ");
    setText(a, "KK");
    setText(b, "QQ");
    setText(c, "AA,KK");
    ASSERT_EQ(c->handRange.combinationCount(), 12u);

    setText(full, "AA");
    EXPECT_TRUE(a->handRange.isEmpty());
    EXPECT_TRUE(b->handRange.isEmpty());
    EXPECT_EQ(c->handRange.suitsVector(), suitsOf("AA"));

    // Growing the parent again gives nothing back: the children lost those hands.
    setText(full, "AA,KK,QQ");
    EXPECT_TRUE(a->handRange.isEmpty());
    EXPECT_EQ(c->handRange.suitsVector(), suitsOf("AA"));

    // Clearing the parent clears them all.
    full->handRange.assign(Range::HandRange().elements());
    EXPECT_TRUE(full->handRange.isEmpty());
    EXPECT_TRUE(c->handRange.isEmpty());
}

TEST(RangeGroupSetTest, SiblingGroupsMayOverlap) {
    // The reactions of a line are edited one by one; the tab's "determine range" button
    // builds differences on request. The set itself does not push siblings out.
    RangeGroupSet set;
    Range::TreeRangeNode* full = set.addGroup(RangeGroupSet::noGroup, "");
    Range::TreeRangeNode* a = set.addGroup(0, "");
    Range::TreeRangeNode* b = set.addGroup(0, "");
    setText(full, "AA,KK");
    setText(a, "AA,KK");
    setText(b, "AA");
    EXPECT_EQ(a->handRange.combinationCount(), 12u);
    EXPECT_EQ(b->handRange.combinationCount(), 6u);
}

TEST(RangeGroupSetTest, CopyIsAnIndependentTreeWithEqualContents) {
    RangeGroupSet original;
    Range::TreeRangeNode* full = original.addGroup(RangeGroupSet::noGroup, "");
    Range::TreeRangeNode* child = original.addGroup(0, "value");
    setText(full, "TT+,AQs+");
    setText(child, "QQ+");
    original.group(1)->tree->setColor(1, Range::GroupColor::standardColors()[3]);

    RangeGroupSet copy(original);
    ASSERT_EQ(copy.count(), 2u);
    EXPECT_NE(copy.group(0), full);
    EXPECT_NE(copy.group(0)->tree, full->tree);
    EXPECT_EQ(copy.group(1)->tree, copy.group(0)->tree);
    EXPECT_EQ(mementoOf(copy), mementoOf(original));
    EXPECT_EQ(copy.indexOf(child), RangeGroupSet::noGroup);

    // The copy's groups obey their own parent, not the original's.
    setText(copy.group(0), "KK+");
    EXPECT_EQ(copy.group(1)->handRange.suitsVector(), suitsOf("KK+"));
    EXPECT_EQ(child->handRange.suitsVector(), suitsOf("QQ+"));
    setText(full, "AA");
    EXPECT_EQ(child->handRange.suitsVector(), suitsOf("AA"));
    EXPECT_EQ(copy.group(1)->handRange.suitsVector(), suitsOf("KK+"));

    // Assignment replaces the whole tree with a copy.
    RangeGroupSet assigned;
    assigned.addGroup(RangeGroupSet::noGroup, "old");
    assigned = original;
    EXPECT_EQ(mementoOf(assigned), mementoOf(original));
    EXPECT_NE(assigned.group(0)->tree, full->tree);
    const RangeGroupSet& same = assigned;
    assigned = same; // self-assignment keeps the set
    EXPECT_EQ(mementoOf(assigned), mementoOf(original));
}

TEST(RangeGroupSetTest, MoveKeepsTreeAndGroupsInPlace) {
    RangeGroupSet original;
    Range::TreeRangeNode* full = original.addGroup(RangeGroupSet::noGroup, "");
    Range::TreeRangeNode* child = original.addGroup(0, "");
    Range::Tree* tree = full->tree;

    RangeGroupSet moved(std::move(original));
    EXPECT_EQ(moved.group(0), full);
    EXPECT_EQ(moved.group(1), child);
    EXPECT_EQ(moved.indexOf(child), 1u);
    EXPECT_EQ(child->tree, tree);
    // The bound filters still reach the right nodes.
    setText(full, "AA");
    setText(child, "AA,KK");
    EXPECT_EQ(child->handRange.suitsVector(), suitsOf("AA"));

    RangeGroupSet assigned;
    assigned = std::move(moved);
    EXPECT_EQ(assigned.group(1), child);
    setText(full, "KK");
    EXPECT_TRUE(child->handRange.isEmpty());
}

TEST(RangeGroupSetTest, AMovedFromSetIsEmptyAndUsableAgain) {
    RangeGroupSet original;
    original.addGroup(RangeGroupSet::noGroup, "");
    RangeGroupSet moved(std::move(original));
    // The state of a moved-from set is defined here: it holds no groups.
    EXPECT_EQ(original.count(), 0u); // NOLINT(bugprone-use-after-move)
    EXPECT_TRUE(original.isEmpty());
    {
        AssertionRecorder recorder;
        EXPECT_EQ(original.group(0), nullptr);
        EXPECT_TRUE(recorder.saw("Group index out of range."));
    }
    EXPECT_EQ(original.indexOf(moved.group(0)), RangeGroupSet::noGroup);
    RangeGroupSet copyOfEmpty(original);
    EXPECT_TRUE(copyOfEmpty.isEmpty());
    Range::TreeRangeNode* again = original.addGroup(RangeGroupSet::noGroup, "");
    ASSERT_NE(again, nullptr);
    EXPECT_EQ(original.count(), 1u);
    EXPECT_EQ(original.indexOf(again), 0u);
    EXPECT_NE(again->tree, moved.group(0)->tree);
}

// --- Within a variant ------------------------------------------------------------------

TEST(LineVariantGroupsTest, EveryActionGroupStaysInsideGroup0) {
    LineVariant variant = LineFactory::create("Bet/Ship", "Main Variant", "Player1");
    setText(variant.firstActorRanges.group(0), "JJ+,AK");
    setText(variant.secondActorRanges.group(0), "TT+,AQs+");
    setText(variant.actions[0].range, "AA,72o");
    EXPECT_EQ(variant.actions[0].range->handRange.suitsVector(), suitsOf("AA"));
    for (std::size_t i = 1; i < variant.actions.size(); ++i) {
        SCOPED_TRACE("reaction " + std::to_string(i));
        setText(variant.actions[i].range, "99+,AJs+");
        EXPECT_EQ(variant.actions[i].range->handRange.suitsVector(), suitsOf("TT+,AQs+"));
    }
    // Narrowing the other player's full range narrows every reaction.
    setText(variant.secondActorRanges.group(0), "KK+");
    for (std::size_t i = 1; i < variant.actions.size(); ++i)
        EXPECT_EQ(variant.actions[i].range->handRange.suitsVector(), suitsOf("KK+"));
    // The first actor's groups are a tree of their own.
    EXPECT_EQ(variant.actions[0].range->handRange.suitsVector(), suitsOf("AA"));
    EXPECT_NE(variant.actions[0].range->tree, variant.actions[1].range->tree);
}

TEST(LineVariantGroupsTest, DeepCopyGivesIndependentTreesAndRepointedActions) {
    LineVariant original = LineFactory::create("Check/Raise", "Main Variant", "Player2");
    setText(original.firstActorRanges.group(0), "22+");
    setText(original.secondActorRanges.group(0), "ATs+,KQs");
    setText(original.actions[0].range, "88+");
    setText(original.actions[1].range, "KQs");
    setText(original.actions[2].range, "AKs");
    setText(original.actions[3].range, "AQs,AJs");

    for (int way = 0; way < 2; ++way) {
        SCOPED_TRACE(way == 0 ? "copy construction" : "copy assignment");
        LineVariant copy = LineFactory::create("Bet/Fold", "other", "Player1");
        if (way == 0)
            copy = LineVariant(original);
        else
            copy = original;
        EXPECT_EQ(mementoOf(copy.firstActorRanges), mementoOf(original.firstActorRanges));
        EXPECT_EQ(mementoOf(copy.secondActorRanges), mementoOf(original.secondActorRanges));
        ASSERT_EQ(copy.actions.size(), 4u);
        for (std::size_t i = 0; i < copy.actions.size(); ++i) {
            SCOPED_TRACE("action " + std::to_string(i));
            const RangeGroupSet& set = i == 0 ? copy.firstActorRanges : copy.secondActorRanges;
            const RangeGroupSet& source =
                i == 0 ? original.firstActorRanges : original.secondActorRanges;
            const unsigned int index = i == 0 ? 1u : static_cast<unsigned int>(i);
            EXPECT_EQ(copy.actions[i].range, set.group(index));
            EXPECT_EQ(source.indexOf(copy.actions[i].range), RangeGroupSet::noGroup);
            EXPECT_NE(copy.actions[i].range->tree, original.actions[i].range->tree);
            EXPECT_EQ(copy.actions[i].range->handRange.suitsVector(),
                      original.actions[i].range->handRange.suitsVector());
        }

        // Editing the copy's full range cuts the copy's groups only.
        setText(copy.secondActorRanges.group(0), "AKs");
        EXPECT_TRUE(copy.actions[1].range->handRange.isEmpty());
        EXPECT_EQ(copy.actions[2].range->handRange.suitsVector(), suitsOf("AKs"));
        EXPECT_EQ(original.actions[1].range->handRange.suitsVector(), suitsOf("KQs"));
        EXPECT_EQ(original.actions[3].range->handRange.suitsVector(), suitsOf("AQs,AJs"));
    }
}

TEST(LineVariantGroupsTest, MovingVariantsKeepsNodeAddresses) {
    LineVariant original = LineFactory::create("Bet/Call", "Main Variant", "Player1");
    std::vector<Range::TreeRangeNode*> groups;
    for (const LineAction& action : original.actions)
        groups.push_back(action.range);
    Range::TreeRangeNode* otherFull = original.secondActorRanges.group(0);

    LineVariant moved(std::move(original));
    LineVariant assigned;
    assigned = std::move(moved);
    for (std::size_t i = 0; i < groups.size(); ++i)
        EXPECT_EQ(assigned.actions[i].range, groups[i]);
    EXPECT_EQ(assigned.secondActorRanges.group(0), otherFull);

    // Growing containers move their variants; the groups neither move nor lose their tree.
    std::vector<LineVariant> variants;
    variants.push_back(std::move(assigned));
    for (int i = 0; i < 20; ++i)
        variants.push_back(LineFactory::create("Bet/Fold", "v" + std::to_string(i), "Player2"));
    const LineVariant& first = variants.front();
    for (std::size_t i = 0; i < groups.size(); ++i)
        EXPECT_EQ(first.actions[i].range, groups[i]);
    setText(otherFull, "AA");
    setText(first.actions[2].range, "AA,KK");
    EXPECT_EQ(first.actions[2].range->handRange.suitsVector(), suitsOf("AA"));
    otherFull->handRange.assign(Range::HandRange().elements());
    EXPECT_TRUE(first.actions[2].range->handRange.isEmpty());

    std::list<LineVariant> list;
    list.push_back(std::move(variants.front()));
    EXPECT_EQ(list.front().actions[3].range, groups[3]);
}

TEST(LineVariantGroupsTest, ParentRangePercentageIsTheShareOfGroup0) {
    LineVariant variant = LineFactory::create("Bet/Fold", "Main Variant", "Player1");
    setText(variant.firstActorRanges.group(0), "AA,KK");
    setText(variant.actions[0].range, "AA");
    setText(variant.secondActorRanges.group(0), "AA,AKs");
    setText(variant.actions[1].range, "AKs");
    setText(variant.actions[2].range, "AA,AKs");
    for (LineAction& action : variant.actions)
        action.updateParentRangePercentage();
    // 6 of 12 combinations; 4 of 10; 10 of 10; an empty group 0 of 10.
    EXPECT_EQ(variant.actions[0].parentRangePercentage, 0.5f);
    EXPECT_EQ(variant.actions[1].parentRangePercentage, 4.0f / 10.0f);
    EXPECT_EQ(variant.actions[2].parentRangePercentage, 1.0f);
    EXPECT_EQ(variant.actions[3].parentRangePercentage, 0.0f);
    EXPECT_EQ(variant.actions[1].parentRangePercentage,
              variant.actions[1].range->tree->shareOfParent(*variant.actions[1].range));

    // The share follows the parent: cutting group 0 cuts the groups, and the share is taken
    // again from what both hold now.
    setText(variant.secondActorRanges.group(0), "AKs,KK");
    variant.actions[1].updateParentRangePercentage();
    variant.actions[2].updateParentRangePercentage();
    EXPECT_EQ(variant.actions[1].parentRangePercentage, 4.0f / 10.0f);
    EXPECT_EQ(variant.actions[2].parentRangePercentage, 4.0f / 10.0f);

    // 6 combinations of a full range of 1326.
    variant.firstActorRanges.group(0)->handRange.assign(Range::HandRange(true).elements());
    EXPECT_EQ(variant.firstActorRanges.group(0)->handRange.combinationCount(), 1326u);
    setText(variant.actions[0].range, "AA");
    variant.actions[0].updateParentRangePercentage();
    EXPECT_EQ(variant.actions[0].parentRangePercentage, 6.0f / 1326.0f);
}

TEST(LineVariantGroupsTest, ParentRangePercentageWithoutAShareIsNotANumber) {
    LineVariant variant = LineFactory::create("Check/Fold", "Main Variant", "Player1");
    // Empty parent: 0 / 0.
    variant.actions[1].updateParentRangePercentage();
    EXPECT_TRUE(std::isnan(variant.actions[1].parentRangePercentage));

    // No group at all.
    LineAction loose;
    loose.updateParentRangePercentage();
    EXPECT_TRUE(std::isnan(loose.parentRangePercentage));

    // A group without a parent.
    RangeGroupSet set;
    loose.range = set.addGroup(RangeGroupSet::noGroup, "");
    setText(loose.range, "AA");
    loose.updateParentRangePercentage();
    EXPECT_TRUE(std::isnan(loose.parentRangePercentage));
}

} // namespace
