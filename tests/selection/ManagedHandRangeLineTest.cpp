// ManagedHandRangeLine: the items from a player's group tree, binding the line to a group,
// typed changes that update the items and the mapping.

#include "selection/ManagedHandRangeLine.h"
#include "Range/HandRangeStringManipulator.h"
#include "Range/Tree.h"
#include "Range/TreeRangeNode.h"
#include "selection/HandRangeLine.h"

#include <QIcon>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace {

class ManagedLine : public ::testing::Test {
protected:
    void SetUp() override {
        tree.addRange(Range::Tree::noNode, "Parent", false, Range::GroupColor());
        Range::HandRangeStringManipulator(tree.handRange(0)).setFree("TT+,AK");
    }

    Range::Tree tree;
};

TEST_F(ManagedLine, TheFullRangeIsItemZeroAndBoundToTheLine) {
    ManagedHandRangeLine managed;
    QSignalSpy mapping(&managed, &ManagedHandRangeLine::MappingChanged);
    managed.setGroups(&tree);
    ASSERT_EQ(managed.count(), 1);
    EXPECT_EQ(managed.itemText(0), QStringLiteral("<b>Full Range: </b> TT+,AKs,AKo"));
    EXPECT_EQ(managed.itemData(0, ManagedHandRangeLine::groupRole).toUInt(), 0u);
    EXPECT_EQ(managed.rangeLine()->handRange(), &tree.handRange(0));
    EXPECT_EQ(managed.rangeLine()->text(), QStringLiteral("TT+,AKs,AKo"));
    EXPECT_EQ(managed.currentGroup(), 0u);
    EXPECT_EQ(mapping.count(), 1);
}

TEST_F(ManagedLine, GroupsFollowWithTheirNamesAndOnlyColouredOnesHaveADecoration) {
    Range::GroupColor none;
    Range::TreeRangeNode* plain = tree.addRange(0, "Value", false, none);
    Range::HandRangeStringManipulator(plain->handRange).setFree("AA,KK");
    Range::TreeRangeNode* coloured = tree.addRange(0, "Bluff", true, none);
    Range::HandRangeStringManipulator(coloured->handRange).setFree("AKs");

    ManagedHandRangeLine managed;
    managed.setGroups(&tree);
    ASSERT_EQ(managed.count(), 3);
    EXPECT_EQ(managed.itemText(1), QStringLiteral("<b>Value:</b> KK+"));
    EXPECT_EQ(managed.itemText(2), QStringLiteral("<b>Bluff:</b> AKs"));
    EXPECT_EQ(managed.itemData(1, ManagedHandRangeLine::groupRole).toUInt(), 1u);
    EXPECT_EQ(managed.itemData(2, ManagedHandRangeLine::groupRole).toUInt(), 2u);

    EXPECT_TRUE(managed.itemIcon(1).isNull());
    ASSERT_FALSE(managed.itemIcon(2).isNull());
    const QImage icon = managed.itemIcon(2).pixmap(12, 12).toImage();
    EXPECT_EQ(icon.size(), QSize(12, 12));
    // The first standard colour: 252,112,91 at the top, 232,112,101 at the bottom.
    const QColor top = icon.pixelColor(6, 0);
    const QColor bottom = icon.pixelColor(6, 11);
    EXPECT_NEAR(top.red(), 252, 3);
    EXPECT_NEAR(top.blue(), 91, 3);
    EXPECT_NEAR(bottom.red(), 232, 3);
    EXPECT_NEAR(bottom.blue(), 101, 3);
}

TEST_F(ManagedLine, ChoosingAGroupBindsTheLineToItAndAnnouncesTheMapping) {
    Range::TreeRangeNode* group = tree.addRange(0, "Value", false, Range::GroupColor());
    Range::HandRangeStringManipulator(group->handRange).setFree("AA");
    ManagedHandRangeLine managed;
    managed.setGroups(&tree);
    QSignalSpy mapping(&managed, &ManagedHandRangeLine::MappingChanged);
    managed.setCurrentIndex(1);
    EXPECT_EQ(mapping.count(), 1);
    EXPECT_EQ(managed.rangeLine()->handRange(), &tree.handRange(1));
    EXPECT_EQ(managed.rangeLine()->text(), QStringLiteral("AA"));
    EXPECT_EQ(managed.rangeLine()->rangeGroups(), &tree);
    EXPECT_EQ(managed.rangeLine()->rangeGroup(), 1u);
}

TEST_F(ManagedLine, TypingIntoAGroupStaysInsideTheParentAndRefreshesTheItems) {
    tree.addRange(0, "Value", false, Range::GroupColor());
    ManagedHandRangeLine managed;
    managed.setGroups(&tree);
    managed.setCurrentIndex(1);
    QSignalSpy mapping(&managed, &ManagedHandRangeLine::MappingChanged);

    HandRangeLine* line = managed.rangeLine();
    line->setFocus();
    QTest::keyClicks(line, QStringLiteral("AA,22"));
    // 22 is not in the parent (TT+,AK): the group refuses it.
    EXPECT_EQ(Range::HandRangeStringReader(tree.handRange(1)).compactText(), "AA");
    EXPECT_EQ(line->text(), QStringLiteral("AA,22")); // as typed while editing
    EXPECT_EQ(managed.itemText(1), QStringLiteral("<b>Value:</b> AA"));
    EXPECT_GE(mapping.count(), 1);
    QTest::keyClick(line, Qt::Key_Return);
    EXPECT_EQ(line->text(), QStringLiteral("AA"));
}

TEST_F(ManagedLine, RefillKeepsTheIndexOrFallsBackToTheFullRange) {
    tree.addRange(0, "Value", false, Range::GroupColor());
    ManagedHandRangeLine managed;
    managed.setGroups(&tree);
    managed.setCurrentIndex(1);
    managed.refill();
    EXPECT_EQ(managed.currentIndex(), 1);
    tree.remove(1);
    managed.refill();
    EXPECT_EQ(managed.count(), 1);
    EXPECT_EQ(managed.currentIndex(), 0);
    EXPECT_EQ(managed.rangeLine()->handRange(), &tree.handRange(0));
}

TEST_F(ManagedLine, AnEmptyTreeLeavesTheLineUnbound) {
    Range::Tree empty;
    ManagedHandRangeLine managed;
    managed.setGroups(&empty);
    EXPECT_EQ(managed.count(), 0);
    EXPECT_EQ(managed.rangeLine()->handRange(), nullptr);
    managed.onIndexSelection(-1);
    EXPECT_TRUE(managed.rangeLine()->text().isEmpty());
}

TEST_F(ManagedLine, DoubleClickOnTheLineIsForwarded) {
    ManagedHandRangeLine managed;
    managed.setGroups(&tree);
    QSignalSpy doubleClicked(&managed, &ManagedHandRangeLine::doubleClicked);
    QTest::mouseDClick(managed.rangeLine(), Qt::LeftButton);
    EXPECT_EQ(doubleClicked.count(), 1);
}

} // namespace
