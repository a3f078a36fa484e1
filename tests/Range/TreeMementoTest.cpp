// The two memento forms: the record list (exact, unfiltered) and the text form (filtered
// again when read).

#include "TreeTestHelpers.h"

#include "Range/HandRangeElementConversion.h"
#include "Range/RangeSerializeError.h"
#include "Range/TreeFolderNode.h"
#include "Range/TreeRangeNode.h"

#include <gtest/gtest.h>

#include <stdexcept>

using Range::GroupColor;
using Range::NodeMemento;
using Range::Tree;
using Range::TreeRangeNode;

namespace {

// root "QQ+,AKs" with an overwrite group "AA" (with a child "AdAh") and a block group "KK",
// and a folder at top level.
void buildSample(Tree& tree) {
    tree.addRange(none, "root", false, GroupColor());
    setText(tree, 0, "QQ+,AKs");
    tree.addExclusiveRange(0, "over", TreeRangeNode::Overwrite, false,
                           rgbColor(10, 20, 30, 40, 50, 60));
    setText(tree, 1, "AA");
    tree.addExclusiveRange(0, "block", TreeRangeNode::Block, false, GroupColor());
    setText(tree, 2, "KK");
    tree.addRange(1, "child", false, rgbColor(1, 2, 3, 4, 5, 6, false));
    setText(tree, 3, "AdAh");
    tree.addFolder(none, "folder");
}

std::string runtimeErrorOf(const std::function<void()>& call) {
    try {
        call();
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "nothing thrown";
}

} // namespace

TEST(RangeTreeMemento, RecordsEveryNodeInIndexOrder) {
    Tree tree;
    buildSample(tree);
    const std::vector<NodeMemento> records = mementoOf(tree);
    ASSERT_EQ(records.size(), 5u);
    EXPECT_TRUE(records[0].isRange);
    EXPECT_EQ(records[0].parent, none);
    EXPECT_EQ(records[0].children, (std::vector<unsigned int>{1, 2}));
    EXPECT_EQ(records[0].name, "root");
    EXPECT_EQ(records[0].suits, tree.handRange(0).suitsVector());
    EXPECT_FALSE(records[0].exclusive);
    EXPECT_EQ(records[0].insertMode, 0u);
    EXPECT_TRUE(records[1].exclusive);
    EXPECT_EQ(records[1].insertMode, TreeRangeNode::Overwrite);
    EXPECT_EQ(records[1].color, rgbColor(10, 20, 30, 40, 50, 60));
    EXPECT_EQ(records[2].insertMode, TreeRangeNode::Block);
    EXPECT_EQ(records[3].parent, 1u);
    EXPECT_EQ(records[3].color, rgbColor(1, 2, 3, 4, 5, 6, false));
    EXPECT_FALSE(records[4].isRange);
    EXPECT_EQ(records[4].name, "folder");
    EXPECT_TRUE(records[4].suits.empty());
    // The vector is filled afresh.
    std::vector<NodeMemento> reused(3);
    tree.CreateMemento(reused, none);
    EXPECT_EQ(reused, records);
}

TEST(RangeTreeMemento, RestoreGivesBackExactlyWhatWasSaved) {
    Tree tree;
    buildSample(tree);
    const std::vector<NodeMemento> saved = mementoOf(tree);
    Tree other;
    other.addFolder(none, "to be replaced");
    other.RestoreMemento(saved);
    EXPECT_EQ(mementoOf(other), saved);
    // The restored nodes obey the group rules again.
    setText(other, 2, "AA,KK");
    EXPECT_EQ(technical(other, 2), "KK");
    setText(other, 1, "KK");
    EXPECT_EQ(technical(other, 2), "");
    EXPECT_EQ(technical(other, 3), "");
    setText(other, 3, "AA,KK");
    EXPECT_EQ(technical(other, 3), "KK");
}

TEST(RangeTreeMemento, RestoreRunsNoFilterAndFiresNoNotifier) {
    std::vector<NodeMemento> records(3);
    Range::HandRange parent, child, sibling;
    Range::HandRangeStringManipulator(parent).setFree("AA");
    Range::HandRangeStringManipulator(child).setFree("KK,QQ"); // outside its parent
    Range::HandRangeStringManipulator(sibling).setFree("KK");  // overlaps an overwrite group
    records[0].isRange = true;
    records[0].children = {1, 2};
    records[0].suits = parent.suitsVector();
    records[1] = records[0];
    records[1].parent = 0;
    records[1].children = {};
    records[1].suits = child.suitsVector();
    records[1].exclusive = true;
    records[1].insertMode = TreeRangeNode::Overwrite;
    records[2] = records[1];
    records[2].exclusive = false;
    records[2].insertMode = 0;
    records[2].suits = sibling.suitsVector();
    Tree tree;
    tree.RestoreMemento(records);
    EXPECT_EQ(technical(tree, 1), "QQ,KK");
    EXPECT_EQ(technical(tree, 2), "KK");
    EXPECT_EQ(mementoOf(tree), records);
    // The next change runs the rules: the overwrite group pushes its sibling out.
    EXPECT_TRUE(tree.setSuits(1, 1U << 10, false, 0));
    EXPECT_EQ(technical(tree, 1), "KK");
    EXPECT_EQ(technical(tree, 2), "");
}

TEST(RangeTreeMemento, SubtreesAndBrokenRecordsAreRefused) {
    Tree tree;
    buildSample(tree);
    const std::vector<NodeMemento> saved = mementoOf(tree);
    std::vector<NodeMemento> out;
    EXPECT_EQ(runtimeErrorOf([&] { tree.CreateMemento(out, 0); }),
              "Subtrees cannot be created internally yet.");
    EXPECT_EQ(runtimeErrorOf([&] { tree.RestoreMemento(saved, 1); }),
              "Subtrees cannot be used for restoring yet.");
    std::vector<NodeMemento> broken = saved;
    broken[3].children.push_back(5);
    EXPECT_EQ(runtimeErrorOf([&] { tree.RestoreMemento(broken); }),
              "Tree memento refers to a node that does not exist.");
    broken = saved;
    broken[2].parent = 17;
    EXPECT_EQ(runtimeErrorOf([&] { tree.RestoreMemento(broken); }),
              "Tree memento refers to a node that does not exist.");
    broken = saved;
    broken[1].suits.pop_back();
    EXPECT_EQ(runtimeErrorOf([&] { tree.RestoreMemento(broken); }),
              "Tree memento holds a range without 169 suit masks.");
    EXPECT_EQ(mementoOf(tree), saved);
    tree.RestoreMemento({});
    EXPECT_EQ(tree.count(), 0u);
}

TEST(RangeTreeTextMemento, SaveAndRestoreTheWholeTree) {
    Tree tree;
    buildSample(tree);
    const std::string text = tree.saveToText();
    Tree other;
    other.addFolder(none, "to be replaced");
    other.restoreFromText(text);
    // Read back in file order (the child of "over" before "block"), and without the
    // channels of the colour that "child" does not use.
    std::vector<NodeMemento> expected = preorder(mementoOf(tree));
    ASSERT_EQ(expected[2].name, "child");
    expected[2].color = GroupColor();
    EXPECT_EQ(mementoOf(other), expected);
    EXPECT_EQ(other.saveToText(), text);
}

TEST(RangeTreeTextMemento, RestoringOneNodeReplacesItAndItsChildren) {
    Tree tree;
    buildSample(tree);
    const std::string overNode = tree.saveToText(1); // "over" with its child
    setText(tree, 1, "QQ");
    tree.renameRange(1, "renamed");
    tree.setColor(1, GroupColor());
    tree.addRange(1, "extra", false, GroupColor());
    tree.addRange(5, "extra child", false, GroupColor());
    tree.restoreFromText(overNode, 1);
    // The old children went, the saved child came back at the end of the node list.
    ASSERT_EQ(tree.count(), 5u);
    EXPECT_EQ(tree.rangeNode(1)->name, "over");
    EXPECT_EQ(tree.rangeNode(1)->color, rgbColor(10, 20, 30, 40, 50, 60));
    EXPECT_EQ(technical(tree, 1), "AA");
    EXPECT_EQ(childrenOf(tree, 1), std::vector<unsigned int>{4});
    EXPECT_EQ(tree.rangeNode(4)->name, "child");
    EXPECT_EQ(technical(tree, 4), "AdAh");
    // The file says exclusive="false" for the child, so it stays plain.
    EXPECT_FALSE(tree.rangeNode(4)->exclusive);
}

TEST(RangeTreeTextMemento, RestoringANodeWhoseChildrenHaveLowerIndices) {
    Tree tree;
    tree.addFolder(none, "a");      // 0
    tree.addFolder(none, "b");      // 1
    tree.addFolder(none, "target"); // 2
    tree.move(0, 2, none);
    tree.move(1, 2, none);
    tree.restoreFromText("<QuorvaneTree><folder name=\"new\"><folder name=\"n1\"/></folder>"
                         "</QuorvaneTree>",
                         2);
    ASSERT_EQ(tree.count(), 2u);
    EXPECT_EQ(static_cast<Range::TreeFolderNode*>(tree.node(0))->name, "new");
    EXPECT_EQ(childrenOf(tree, 0), std::vector<unsigned int>{1});
    EXPECT_EQ(static_cast<Range::TreeFolderNode*>(tree.node(1))->name, "n1");
}

TEST(RangeTreeTextMemento, InsertAddsBelowTheNodeAtThePositionInFileOrder) {
    Tree tree;
    tree.addFolder(none, "target");
    tree.addFolder(0, "first");
    tree.addFolder(0, "last");
    tree.InsertFromMemento("<x><folder name=\"in 1\"/><folder name=\"in 2\"><folder name=\"deep\"/>"
                           "</folder></x>",
                           0, 1);
    ASSERT_EQ(tree.count(), 6u);
    EXPECT_EQ(childrenOf(tree, 0), (std::vector<unsigned int>{1, 3, 4, 2}));
    EXPECT_EQ(static_cast<Range::TreeFolderNode*>(tree.node(3))->name, "in 1");
    EXPECT_EQ(static_cast<Range::TreeFolderNode*>(tree.node(4))->name, "in 2");
    EXPECT_EQ(childrenOf(tree, 4), std::vector<unsigned int>{5});
    EXPECT_EQ(runtimeErrorOf([&] { tree.InsertFromMemento("<x/>", none, 0); }),
              "InsertFromMemento at top level not supported.");
}

TEST(RangeTreeTextMemento, InsertedRangesPassTheNewParentsFilter) {
    Tree source;
    source.addFolder(none, "saved");
    source.addRange(0, "wide", false, rgbColor(1, 2, 3, 4, 5, 6));
    setText(source, 1, "TT+,AK");
    source.addRange(1, "group", false, GroupColor());
    setText(source, 2, "AA,AKo");
    const std::string dragged = source.saveToText(1);

    Tree player;
    player.addRange(none, "", false, GroupColor());
    setText(player, 0, "KK+,AKs");
    player.InsertFromMemento(dragged, 0, none);
    ASSERT_EQ(player.count(), 3u);
    EXPECT_EQ(technical(player, 1), "KK,AA,AKs");
    EXPECT_EQ(technical(player, 2), "AA");
    // "wide" says exclusive="false" itself, so it stays plain.
    EXPECT_FALSE(player.rangeNode(1)->exclusive);
}

TEST(RangeTreeTextMemento, OverwritingWithTheOtherKindThrowsAfterTheChildrenWent) {
    Tree tree;
    tree.addFolder(none, "folder");
    tree.addFolder(0, "child");
    tree.addRange(none, "range", false, GroupColor());
    try {
        tree.restoreFromText(tree.saveToText(2), 0);
        ADD_FAILURE() << "no exception";
    } catch (const Range::Exception::RangeSerializeError& error) {
        EXPECT_STREQ(error.what(),
                     "Node to overwrite is of other type (range/folder) than read node.");
    }
    EXPECT_EQ(tree.count(), 2u);
    EXPECT_TRUE(childrenOf(tree, 0).empty());
}
