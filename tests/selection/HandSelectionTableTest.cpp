#include "HandSelectionTestHelpers.h"

#include "Range/GroupColor.h"
#include "Range/HandRangeElementConversion.h"
#include "Range/Tree.h"
#include "Range/TreeRangeNode.h"
#include "selection/HandSelectionTable.h"
#include "selection/SuitHover.h"
#include "selection/SuitSelectionTable.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QImage>
#include <QLabel>
#include <QMimeData>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

#include <cstdlib>

using namespace HandSelectionTest;

namespace {

// The pen masks of the suit pen's buttons, bit first * 4 + second over d, h, s, c.
constexpr unsigned short heartsOnly = 0x22F2;
constexpr unsigned short equalSuitsOnly = 0x8421;

QColor pixel(const HandSelectionTable& table, int x, int y) {
    return table.picture().toImage().pixelColor(x, y);
}

// Gradients are sampled at pixel centres, so the first row lies a hair past the top colour.
::testing::AssertionResult near(const QColor& actual, const QColor& expected) {
    const int tolerance = 3;
    if (std::abs(actual.red() - expected.red()) <= tolerance &&
        std::abs(actual.green() - expected.green()) <= tolerance &&
        std::abs(actual.blue() - expected.blue()) <= tolerance)
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "colour " << actual.name().toStdString()
                                         << " is not near " << expected.name().toStdString();
}

struct TableFixture : ::testing::Test {
    Range::HandRange range;
    HandSelectionTable table;
    TableFixture() { table.setRange(&range); }
};

} // namespace

TEST_F(TableFixture, GeometryMatchesTheGrid) {
    EXPECT_EQ(table.picture().size(), QSize(430, 430));
    EXPECT_EQ(HandSelectionTable::cellRect(0, 0), QRect(1, 1, 32, 32));
    EXPECT_EQ(HandSelectionTable::cellRect(12, 12), QRect(397, 397, 32, 32));
    EXPECT_EQ(HandSelectionTable::cellText(0, 0), "AA");
    EXPECT_EQ(HandSelectionTable::cellText(1, 0), "AKs");
    EXPECT_EQ(HandSelectionTable::cellText(0, 1), "AKo");
    EXPECT_EQ(HandSelectionTable::cellText(12, 11), "32s");
    EXPECT_EQ(HandSelectionTable::cellText(11, 12), "32o");
    const Range::Element aks = HandSelectionTable::cellElement(1, 0);
    EXPECT_EQ(aks.values, (1u << 12) | (1u << 11));
    EXPECT_TRUE(aks.suited);
    EXPECT_EQ(aks.possibleSuits, 33825u);
    EXPECT_EQ(HandSelectionTable::cellElement(0, 1).possibleSuits, 31710u);
    EXPECT_EQ(HandSelectionTable::cellElement(5, 5).possibleSuits, 2254u);
    // Coordinates beyond the grid fold into cell 0; the widget's outermost pixel row lies
    // beyond the pixmap.
    EXPECT_EQ(table.size(), QSize(431, 431));
    EXPECT_EQ(HandSelectionTable::cellIndexAt(430), 0);
    EXPECT_EQ(HandSelectionTable::cellIndexAt(429), 12);
    EXPECT_EQ(HandSelectionTable::cellIndexAt(397), 12);
    EXPECT_EQ(HandSelectionTable::cellIndexAt(1), 0);
}

TEST_F(TableFixture, AStrokeAcrossCellsSelectsEachOfThem) {
    QSignalSpy changed(&table, &HandSelectionTable::RangeChanged);
    QSignalSpy released(&table, &HandSelectionTable::mouseReleased);
    stroke(&table, {"AKs", "AQs", "AJs", "ATs"});
    EXPECT_EQ(textOf(range), "ATs+");
    EXPECT_EQ(range.combinationCount(), 16u);
    EXPECT_EQ(changed.count(), 4);
    EXPECT_EQ(released.count(), 1);
}

TEST_F(TableFixture, MovesOverTheSameCellAndOutsideChangeNothingMore) {
    QSignalSpy changed(&table, &HandSelectionTable::RangeChanged);
    press(&table, centreOf("QQ"));
    move(&table, centreOf("QQ") + QPoint(3, 3), Qt::LeftButton);
    move(&table, QPoint(500, 20), Qt::LeftButton); // outside the widget
    move(&table, QPoint(-4, 20), Qt::LeftButton);
    release(&table, QPoint(500, 20));
    EXPECT_EQ(textOf(range), "QQ");
    EXPECT_EQ(changed.count(), 1);
}

TEST_F(TableFixture, TheOutermostPixelFoldsIntoTheFirstCell) {
    press(&table, QPoint(430, 430));
    release(&table, QPoint(430, 430));
    EXPECT_EQ(textOf(range), "AA");
}

TEST_F(TableFixture, RightButtonStrokeUnselectsWholeCells) {
    Range::HandRangeStringManipulator(range).setFree("AA,KK,AKs,AKo");
    table.setRange(&range);
    table.AssignPen(heartsOnly); // unselecting ignores the pen
    stroke(&table, {"KK", "AKs"}, Qt::RightButton);
    EXPECT_EQ(textOf(range), "AA,AKo");
}

TEST_F(TableFixture, PenZeroSelectsNothing) {
    QSignalSpy changed(&table, &HandSelectionTable::RangeChanged);
    table.AssignPen(0);
    stroke(&table, {"AKo", "AKs", "AA"});
    EXPECT_TRUE(range.isEmpty());
    EXPECT_EQ(changed.count(), 0);
}

TEST_F(TableFixture, HeartsOnlyPenTakesTheHandsWithAHeart) {
    table.AssignPen(heartsOnly);
    stroke(&table, {"AKo"});
    EXPECT_EQ(range.combinationCount(), 6u);
    const Range::HandRange expected = rangeOf("AhKd,AhKs,AhKc,AdKh,AsKh,AcKh");
    EXPECT_EQ(range.suitsVector(), expected.suitsVector());
    stroke(&table, {"AKs"});
    EXPECT_EQ(suitsOf(range, "AKs"), suitsOf(rangeOf("AhKh"), "AKs"));
    stroke(&table, {"AA"});
    EXPECT_EQ(suitsOf(range, "AA"), suitsOf(rangeOf("AdAh,AhAs,AhAc"), "AA"));
}

TEST_F(TableFixture, PairUnderAnEqualSuitPenHoldsNothing) {
    table.AssignPen(equalSuitsOnly);
    stroke(&table, {"99"});
    EXPECT_TRUE(range.isEmpty());
    stroke(&table, {"98s"});
    EXPECT_EQ(textOf(range), "98s");
}

TEST_F(TableFixture, PairsTakeTheUnorderedShareOfThePatternPens) {
    SuitSelectionTable pen;
    QObject::connect(&pen, &SuitSelectionTable::suitsUpdated, &table,
                     &HandSelectionTable::AssignPen);
    pen.select25Percent();
    stroke(&table, {"AA", "AKs", "AKo"});
    EXPECT_EQ(suitsOf(range, "AA"), suitsOf(rangeOf("AdAh,AdAs"), "AA"));
    EXPECT_EQ(Range::suitBitCount(suitsOf(range, "AKs")), 1u);
    EXPECT_EQ(Range::suitBitCount(suitsOf(range, "AKo")), 3u);
    range.reset();
    pen.select75Percent();
    stroke(&table, {"AA", "AKs", "AKo"});
    EXPECT_EQ(Range::suitBitCount(suitsOf(range, "AA")), 5u);
    EXPECT_EQ(Range::suitBitCount(suitsOf(range, "AKs")), 3u);
    EXPECT_EQ(Range::suitBitCount(suitsOf(range, "AKo")), 9u);
    range.reset();
    pen.select50PercentA();
    stroke(&table, {"AA", "AKs", "AKo"});
    const unsigned int pairA = suitsOf(range, "AA");
    EXPECT_EQ(Range::suitBitCount(pairA), 3u);
    EXPECT_EQ(Range::suitBitCount(suitsOf(range, "AKs")), 2u);
    EXPECT_EQ(Range::suitBitCount(suitsOf(range, "AKo")), 6u);
    range.reset();
    pen.select50PercentB();
    stroke(&table, {"AA"});
    EXPECT_EQ(Range::suitBitCount(suitsOf(range, "AA")), 3u);
    EXPECT_EQ(suitsOf(range, "AA") & pairA, 0u); // the two halves split the pairs
}

TEST_F(TableFixture, SelectingKeepsWhatTheCellHeld) {
    table.AssignPen(heartsOnly);
    stroke(&table, {"AKs"});
    table.AssignPen(0x0001); // dd
    stroke(&table, {"AKs"});
    EXPECT_EQ(suitsOf(range, "AKs"), suitsOf(rangeOf("AhKh,AdKd"), "AKs"));
}

TEST_F(TableFixture, WithoutRightButtonOptionTheFirstCellDecidesByToggling) {
    table.setUnselectWithRightButton(false);
    Range::HandRangeStringManipulator(range).setFree("KQs");
    table.setRange(&range);
    // Starts on an empty cell: the whole stroke selects, also over the selected KQs.
    stroke(&table, {"AKs", "KQs", "QJs"});
    EXPECT_EQ(textOf(range), "AKs,KQs,QJs");
    // Starts on a selected cell: the whole stroke unselects, also over an empty cell.
    stroke(&table, {"KQs", "KJs", "AKs"});
    EXPECT_EQ(textOf(range), "QJs");
}

TEST_F(TableFixture, RightButtonWithoutTheOptionDoesNothingAtAll) {
    table.setUnselectWithRightButton(false);
    Range::HandRangeStringManipulator(range).setFree("AKs");
    table.setRange(&range);
    QSignalSpy changed(&table, &HandSelectionTable::RangeChanged);
    QSignalSpy released(&table, &HandSelectionTable::mouseReleased);
    stroke(&table, {"AKs", "AA", "KK"}, Qt::RightButton);
    EXPECT_EQ(textOf(range), "AKs");
    EXPECT_EQ(changed.count(), 0);
    EXPECT_EQ(released.count(), 0);
}

TEST_F(TableFixture, ShiftPaintsTheBetterHandsWithTheSameTopCard) {
    stroke(&table, {"A5s"}, Qt::LeftButton, Qt::ShiftModifier);
    EXPECT_EQ(textOf(range), "A5s+");
    range.reset();
    stroke(&table, {"A5o"}, Qt::LeftButton, Qt::ShiftModifier);
    EXPECT_EQ(textOf(range), "A5o+");
    range.reset();
    stroke(&table, {"88"}, Qt::LeftButton, Qt::ShiftModifier);
    EXPECT_EQ(textOf(range), "88+");
    range.reset();
    stroke(&table, {"T7s"}, Qt::LeftButton, Qt::ShiftModifier);
    EXPECT_EQ(textOf(range), "T7s+");
    // Unselecting widens the same way.
    stroke(&table, {"T8s"}, Qt::RightButton, Qt::ShiftModifier);
    EXPECT_EQ(textOf(range), "T7s");
}

TEST_F(TableFixture, ControlPaintsTheSameGapAbove) {
    stroke(&table, {"54s"}, Qt::LeftButton, Qt::ControlModifier);
    EXPECT_EQ(range.combinationCount(), 40u);
    EXPECT_EQ(range.suitsVector(),
              rangeOf("AKs,KQs,QJs,JTs,T9s,98s,87s,76s,65s,54s").suitsVector());
    range.reset();
    stroke(&table, {"T8o"}, Qt::LeftButton, Qt::ControlModifier);
    EXPECT_EQ(range.suitsVector(), rangeOf("T8o,J9o,QTo,KJo,AQo").suitsVector());
}

TEST_F(TableFixture, ShiftAndControlOnAPairPaintRowAndColumn) {
    stroke(&table, {"88"}, Qt::LeftButton, Qt::ShiftModifier | Qt::ControlModifier);
    EXPECT_EQ(range.suitsVector(), rangeOf("88,A8,K8,Q8,J8,T8,98,87,86,85,84,83,82").suitsVector());
    EXPECT_EQ(range.combinationCount(), 6u + 12u * 4u + 12u * 12u);
}

TEST_F(TableFixture, ReadOnlyTableIgnoresTheMouse) {
    table.setReadOnly(true);
    QSignalSpy released(&table, &HandSelectionTable::mouseReleased);
    stroke(&table, {"AA", "KK"});
    EXPECT_TRUE(range.isEmpty());
    EXPECT_EQ(released.count(), 0);
}

TEST_F(TableFixture, TheSuitHoverIsAnOptionOfItsOwnBesideReadOnly) {
    Range::HandRangeStringManipulator(range).setFree("AhKh");
    table.setRange(&range);
    table.show();
    EXPECT_TRUE(table.isSuitHoverEnabled());

    // Switched off on an editable table: a resting mouse starts nothing, strokes still work.
    table.setSuitHoverEnabled(false);
    move(&table, centreOf("AKs"), Qt::NoButton);
    EXPECT_FALSE(table.hoverTimer()->isActive());
    table.onHoverTimeout();
    EXPECT_FALSE(table.suitHover()->isVisible());
    stroke(&table, {"QQ"});
    EXPECT_EQ(range.combinationCount(), 7u);

    // Read-only with the suit hover on: the hover opens, the range stays as it is.
    table.setReadOnly(true);
    table.setSuitHoverEnabled(true);
    move(&table, centreOf("AKs"), Qt::NoButton);
    EXPECT_TRUE(table.hoverTimer()->isActive());
    table.onHoverTimeout();
    ASSERT_TRUE(table.suitHover()->isVisible());
    EXPECT_EQ(table.suitHover()->cells()[5].look, SuitSelectionTable::CellLook::Selected);
    stroke(&table, {"AKs", "JJ"});
    EXPECT_EQ(range.combinationCount(), 7u);

    // Switching it off closes an open one.
    move(&table, centreOf("AKs"), Qt::NoButton);
    table.onHoverTimeout();
    ASSERT_TRUE(table.suitHover()->isVisible());
    table.setSuitHoverEnabled(false);
    EXPECT_FALSE(table.suitHover()->isVisible());
    EXPECT_FALSE(table.hoverTimer()->isActive());
}

TEST_F(TableFixture, CellsArePaintedByKindAndSelection) {
    Range::HandRangeStringManipulator(range).setFree("AKs");
    table.setRange(&range);
    const QRect aks = HandSelectionTable::cellRect(1, 0);
    const QRect ako = HandSelectionTable::cellRect(0, 1);
    const QRect aa = HandSelectionTable::cellRect(0, 0);
    const QRect kqs = HandSelectionTable::cellRect(2, 1);
    EXPECT_TRUE(near(pixel(table, aks.left() + 1, aks.top()), QColor(255, 255, 188)));
    EXPECT_TRUE(near(pixel(table, ako.left() + 1, ako.top()), QColor(138, 138, 89)));
    EXPECT_TRUE(near(pixel(table, aa.left() + 1, aa.top()), QColor(89, 89, 138)));
    EXPECT_TRUE(near(pixel(table, kqs.left() + 1, kqs.top()), QColor(89, 138, 89)));
    EXPECT_EQ(table.cellBackground(1, 0), HandSelectionTable::SelectedBackground);
    EXPECT_TRUE(table.showsCount(1, 0));
    EXPECT_FALSE(table.showsCount(0, 1));
    EXPECT_EQ(table.liveCount(1, 0), 4u);
    // A stroke repaints the cell it changes.
    stroke(&table, {"AKo"});
    EXPECT_TRUE(near(pixel(table, ako.left() + 1, ako.top()), QColor(255, 255, 188)));
    // The bottom of a background runs into its second colour.
    EXPECT_TRUE(near(pixel(table, kqs.left() + 1, kqs.bottom()), QColor(138, 138, 138)));
}

TEST_F(TableFixture, DeadCardsLowerTheNumbersAndAFullyDeadCellReadsZero) {
    Range::HandRangeStringManipulator(range).setFree("AA,AKs,KQs");
    table.setRange(&range);
    table.setDeadCards(Range::cardsOfText("AhAdAs"));
    EXPECT_EQ(table.liveCount(0, 0), 0u);
    EXPECT_TRUE(table.showsCount(0, 0));
    EXPECT_EQ(table.liveCount(1, 0), 1u); // only AcKc is left
    EXPECT_EQ(table.liveCount(2, 1), 4u);
    // An empty class whose every combination is dead is painted as not available.
    range.reset();
    table.setRange(&range);
    EXPECT_EQ(table.cellBackground(0, 0), HandSelectionTable::NotAvailable);
    EXPECT_EQ(table.cellBackground(1, 0), HandSelectionTable::UnselectedSuited);
}

TEST_F(TableFixture, HoverOpensAfterTheDelayAndShowsTheSuitsOfTheCell) {
    Range::HandRangeStringManipulator(range).setFree("AhKh,AsKs");
    table.setRange(&range);
    table.setDeadCards(Range::cardsOfText("Kd"));
    table.show();
    move(&table, centreOf("AKs"), Qt::NoButton);
    EXPECT_TRUE(table.hoverTimer()->isActive());
    EXPECT_EQ(table.hoverTimer()->interval(), 750);
    EXPECT_FALSE(table.suitHover()->isVisible());
    ASSERT_TRUE(QTest::qWaitFor([&] { return table.suitHover()->isVisible(); }, 3000));
    const SuitHover::Cells& cells = table.suitHover()->cells();
    using Look = SuitSelectionTable::CellLook;
    EXPECT_EQ(cells[5].look, Look::Selected);    // hh
    EXPECT_EQ(cells[10].look, Look::Selected);   // ss
    EXPECT_EQ(cells[0].look, Look::Unavailable); // dd: the Kd is dead
    EXPECT_EQ(cells[15].look, Look::Unselected); // cc
    EXPECT_EQ(cells[1].look, Look::Unavailable); // dh is no suited hand
    EXPECT_FALSE(table.suitHover()->groupsLabel()->isVisible());
    // The hovered cell is marked until the hover goes.
    const QRect aks = HandSelectionTable::cellRect(1, 0);
    EXPECT_TRUE(near(pixel(table, aks.left() + 1, aks.top()), QColor(255, 255, 255)));
    // Leaving the table hides it.
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&table, &leave);
    EXPECT_FALSE(table.suitHover()->isVisible());
    EXPECT_FALSE(table.hoverTimer()->isActive());
    EXPECT_TRUE(near(pixel(table, aks.left() + 1, aks.top()), QColor(255, 255, 188)));
}

TEST_F(TableFixture, HoverOfAPairShowsItsCombinations) {
    Range::HandRangeStringManipulator(range).setFree("AdAh,AsAc");
    table.setRange(&range);
    table.show();
    move(&table, centreOf("AA"), Qt::NoButton);
    table.onHoverTimeout();
    ASSERT_TRUE(table.suitHover()->isVisible());
    const SuitHover::Cells& cells = table.suitHover()->cells();
    using Look = SuitSelectionTable::CellLook;
    EXPECT_EQ(cells[1].look, Look::Selected);    // dh
    EXPECT_EQ(cells[11].look, Look::Selected);   // sc
    EXPECT_EQ(cells[2].look, Look::Unselected);  // ds
    EXPECT_EQ(cells[0].look, Look::Unavailable); // dd
    // A press hides it and stops the timer.
    press(&table, centreOf("KK"));
    EXPECT_FALSE(table.suitHover()->isVisible());
    release(&table, centreOf("KK"));
}

TEST_F(TableFixture, HoverStaysOnTheScreenNearItsEdges) {
    const QRect screen = table.screen()->availableGeometry();
    table.move(screen.right() - table.width() + 1, screen.bottom() - table.height() + 1);
    table.show();
    move(&table, centreOf("32o"), Qt::NoButton); // the lower right cell
    table.onHoverTimeout();
    ASSERT_TRUE(table.suitHover()->isVisible());
    const QRect hover = table.suitHover()->frameGeometry();
    EXPECT_TRUE(screen.contains(hover)) << hover.x() << "," << hover.y();
    const QPoint mouse = table.mapToGlobal(centreOf("32o"));
    EXPECT_LT(hover.right(), mouse.x());  // opened to the left
    EXPECT_LT(hover.bottom(), mouse.y()); // and above
    // Near the top left it opens to the lower right of the mouse.
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&table, &leave);
    table.move(screen.topLeft());
    move(&table, centreOf("AA"), Qt::NoButton);
    table.onHoverTimeout();
    ASSERT_TRUE(table.suitHover()->isVisible());
    EXPECT_GT(table.suitHover()->x(), table.mapToGlobal(centreOf("AA")).x());
    EXPECT_GT(table.suitHover()->y(), table.mapToGlobal(centreOf("AA")).y());
}

TEST_F(TableFixture, MovingOutsideStopsTheHoverTimer) {
    table.show();
    move(&table, centreOf("AA"), Qt::NoButton);
    EXPECT_TRUE(table.hoverTimer()->isActive());
    move(&table, QPoint(440, 10), Qt::NoButton);
    EXPECT_FALSE(table.hoverTimer()->isActive());
    table.onHoverTimeout(); // a late time-out opens nothing
    EXPECT_FALSE(table.suitHover()->isVisible());
}

TEST(HandSelectionTableDrop, AcceptsOnlyTreeRanges) {
    HandSelectionTable table;
    QSignalSpy dropped(&table, &HandSelectionTable::RangeDropped);
    QMimeData other;
    other.setData("application/x-tree-category", QByteArray("x"));
    QDragEnterEvent refused(QPoint(10, 10), Qt::CopyAction | Qt::MoveAction, &other, Qt::LeftButton,
                            Qt::NoModifier);
    QApplication::sendEvent(&table, &refused);
    EXPECT_FALSE(refused.isAccepted());

    QMimeData range;
    range.setData("application/x-tree-range", QByteArray("x"));
    QDragEnterEvent accepted(QPoint(10, 10), Qt::CopyAction | Qt::MoveAction, &range,
                             Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&table, &accepted);
    EXPECT_TRUE(accepted.isAccepted());
    QDropEvent drop(QPointF(10, 10), Qt::MoveAction | Qt::CopyAction, &range, Qt::LeftButton,
                    Qt::NoModifier);
    QApplication::sendEvent(&table, &drop);
    EXPECT_EQ(dropped.count(), 1);
    EXPECT_EQ(drop.dropAction(), Qt::CopyAction);

    QDropEvent wrong(QPointF(10, 10), Qt::CopyAction, &other, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&table, &wrong);
    EXPECT_EQ(dropped.count(), 1);
}

// --- Groups ------------------------------------------------------------------------------------

namespace {

struct GroupFixture : ::testing::Test {
    Range::Tree tree;
    HandSelectionTable table;
    unsigned int first = 0;
    unsigned int second = 0;
    GroupFixture() {
        tree.addRange(Range::Tree::noNode, "Parent", false, Range::GroupColor());
        Range::HandRangeStringManipulator(tree.handRange(0)).setFree("QQ+,AKs,AKo,AQs");
        first = tree.addExclusiveRange(0, "Value", Range::TreeRangeNode::Overwrite, true,
                                       Range::GroupColor())
                    ->index;
        second = tree.addExclusiveRange(0, "Bluff", Range::TreeRangeNode::Overwrite, true,
                                        Range::GroupColor())
                     ->index;
        showGroup(first);
    }
    void showGroup(unsigned int index) {
        table.setGroups(&tree, index);
        table.setGroupMode(true);
        table.setRange(&tree.handRange(index));
    }
};

} // namespace

TEST_F(GroupFixture, CellsOutsideTheParentAreGreyedAndRefuseStrokes) {
    EXPECT_EQ(table.cellBackground(0, 0), HandSelectionTable::UnselectedGroupMode); // AA
    EXPECT_EQ(table.cellBackground(3, 3), HandSelectionTable::OutsideParent);       // JJ
    const QRect jj = HandSelectionTable::cellRect(3, 3);
    EXPECT_TRUE(near(pixel(table, jj.left() + 1, jj.top()), QColor(192, 192, 192)));
    QSignalSpy changed(&table, &HandSelectionTable::RangeChanged);
    stroke(&table, {"JJ", "AKs"});
    EXPECT_EQ(textOf(tree.handRange(first)), "AKs");
    EXPECT_EQ(changed.count(), 1);
}

TEST_F(GroupFixture, GroupCellsTakeTheGroupGradient) {
    stroke(&table, {"AA", "KK"});
    EXPECT_EQ(textOf(tree.handRange(first)), "KK+");
    const Range::GroupColor color = tree.rangeNode(first)->color;
    EXPECT_EQ(color, Range::GroupColor::standardColors()[0]);
    const QRect aa = HandSelectionTable::cellRect(0, 0);
    EXPECT_TRUE(near(pixel(table, aa.left() + 5, aa.top()),
                     QColor(color.colorFrom.red, color.colorFrom.green, color.colorFrom.blue)));
    EXPECT_EQ(table.cellGroups(0, 0), std::vector<unsigned int>{first});
    EXPECT_EQ(table.liveCount(0, 0), 6u);
}

TEST_F(GroupFixture, AStrokeOverAnotherGroupsCellPaintsStripes) {
    stroke(&table, {"AKo"}); // the first group takes all 12
    showGroup(second);
    EXPECT_EQ(table.cellGroups(0, 1), std::vector<unsigned int>{first});
    table.AssignPen(heartsOnly);
    stroke(&table, {"AKs", "AKo"}); // the hearts move to the second group
    EXPECT_EQ(
        tree.handRange(first).find(HandSelectionTable::cellElement(0, 1).values, false)->suits,
        suitsOf(rangeOf("AdKs,AdKc,AsKd,AsKc,AcKd,AcKs"), "AKo"));
    EXPECT_EQ(suitsOf(tree.handRange(second), "AKo"),
              suitsOf(rangeOf("AhKd,AhKs,AhKc,AdKh,AsKh,AcKh"), "AKo"));
    EXPECT_EQ(table.cellGroups(0, 1), (std::vector<unsigned int>{first, second}));
    EXPECT_EQ(table.stripeWidths(0, 1), (std::vector<int>{16, 16}));
    EXPECT_EQ(table.liveCount(0, 1), 12u);

    const QRect ako = HandSelectionTable::cellRect(0, 1);
    const Range::GroupColor a = tree.rangeNode(first)->color;
    const Range::GroupColor b = tree.rangeNode(second)->color;
    EXPECT_TRUE(near(pixel(table, ako.left() + 2, ako.top()),
                     QColor(a.colorFrom.red, a.colorFrom.green, a.colorFrom.blue)));
    EXPECT_TRUE(near(pixel(table, ako.right() - 2, ako.top()),
                     QColor(b.colorFrom.red, b.colorFrom.green, b.colorFrom.blue)));
}

TEST_F(GroupFixture, StripeWidthsFollowTheShares) {
    // 3 of 12 and 9 of 12: 8.5 -> 8, then 24 + 0.5 + 8 -> 32.
    Range::HandRangeStringManipulator(tree.handRange(first)).setFree("AhKd,AhKs,AhKc");
    Range::HandRangeStringManipulator(tree.handRange(second))
        .setFree("AdKh,AdKs,AdKc,AsKd,AsKh,AsKc,AcKd,AcKh,AcKs");
    table.repaint();
    EXPECT_EQ(table.stripeWidths(0, 1), (std::vector<int>{8, 24}));
}

TEST_F(GroupFixture, HoverInGroupModeNamesTheGroups) {
    Range::HandRangeStringManipulator(tree.handRange(first)).setFree("AhKh");
    Range::HandRangeStringManipulator(tree.handRange(second)).setFree("AsKs");
    table.repaint();
    table.show();
    move(&table, centreOf("AKs"), Qt::NoButton);
    table.onHoverTimeout();
    ASSERT_TRUE(table.suitHover()->isVisible());
    EXPECT_EQ(table.suitHover()->groupsLabel()->text(), "Value, Bluff");
    EXPECT_EQ(table.suitHover()->groupsTitle()->text(), "Groups:");
    EXPECT_EQ(table.suitHover()->cells()[5].color, tree.rangeNode(first)->color);
    EXPECT_EQ(table.suitHover()->cells()[10].color, tree.rangeNode(second)->color);
    move(&table, centreOf("KK"), Qt::NoButton);
    table.onHoverTimeout();
    EXPECT_EQ(table.suitHover()->groupsLabel()->text(), "None");
}

TEST(SuitHoverWidget, IsAFramelessToolTipWithATranslucentGround) {
    SuitHover hover;
    EXPECT_EQ(static_cast<int>(hover.windowFlags()), 264205);
    EXPECT_TRUE(hover.testAttribute(Qt::WA_TranslucentBackground));
    EXPECT_TRUE(hover.styleSheet().contains("border-radius: 9px"));
    EXPECT_TRUE(hover.styleSheet().contains("#a0a0a0"));
}
