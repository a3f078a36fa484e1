// HandRangeHover: the numbers, plain and discounted, the hidden parent rows, the read-only
// hand table below them, and where the line places it.

#include "selection/HandRangeHover.h"
#include "Range/HandRangeElementConversion.h"
#include "Range/HandRangeStringManipulator.h"
#include "Range/Tree.h"
#include "Range/TreeRangeNode.h"
#include "selection/HandRangeLine.h"
#include "selection/HandSelectionTable.h"
#include "selection/SuitHover.h"

#include <QApplication>
#include <QHoverEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <VelmaraEvaluatorBase.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

namespace {

// The widget's own painting only, on a transparent ground.
QImage render(QWidget& widget) {
    QImage image(widget.size(), QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    widget.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

bool anyPixelPainted(const QImage& image) {
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y).alpha() != 0)
                return true;
    return false;
}

TEST(HandRangeHover, BareRangeNumbersWithBoardAndDeadCards) {
    Range::HandRange range;
    Range::HandRangeStringManipulator(range).setFree("AA,KQs");
    // Ah on the board kills 3 of the 6 aces; Ks dead kills KsQs.
    const std::vector<unsigned long long> dead{getIndexByCards("Ks")};
    HandRangeHover hover(range, "Ah7d2c", dead);
    EXPECT_EQ(hover.combinationsValue()->text(), QStringLiteral("10"));
    EXPECT_EQ(hover.combinationsDiscountedValue()->text(), QStringLiteral("6"));
    EXPECT_EQ(hover.percentValue()->text(), QStringLiteral("0.75 %"));
    EXPECT_EQ(hover.percentDiscountedValue()->text(), QStringLiteral("0.45 %"));
    EXPECT_FALSE(hover.showsParentRows());
}

TEST(HandRangeHover, GroupNumbersAgainstItsParentAndSiblings) {
    Range::Tree tree;
    tree.addRange(Range::Tree::noNode, "Parent", false, Range::GroupColor());
    Range::HandRangeStringManipulator(tree.handRange(0)).setFree("AA,KK,QQ");
    Range::TreeRangeNode* value = tree.addRange(0, "Value", false, Range::GroupColor());
    Range::HandRangeStringManipulator(value->handRange).setFree("AA,KK");
    Range::TreeRangeNode* other = tree.addRange(0, "Other", false, Range::GroupColor());
    Range::HandRangeStringManipulator(other->handRange).setFree("KK");

    HandRangeHover hover(tree, 1, "Ah", {});
    EXPECT_EQ(hover.combinationsValue()->text(), QStringLiteral("12"));
    // Without the sibling's KK and the aces holding Ah: 3 combinations.
    EXPECT_EQ(hover.combinationsDiscountedValue()->text(), QStringLiteral("3"));
    EXPECT_TRUE(hover.showsParentRows());
    // 12 of the parent's 18.
    EXPECT_EQ(hover.parentPortionValue()->text(), QStringLiteral("66.67 %"));
    // 3 of the parent's 3 + 6 + 6 alive.
    EXPECT_EQ(hover.parentPortionDiscountedValue()->text(), QStringLiteral("20.00 %"));
}

TEST(HandRangeHover, AParentWithoutCombinationsHidesTheParentRowsWithoutMovingTheLayout) {
    Range::Tree tree;
    tree.addRange(Range::Tree::noNode, "Parent", false, Range::GroupColor());
    tree.addRange(0, "Value", false, Range::GroupColor());
    HandRangeHover hover(tree, 1, "", {});
    EXPECT_FALSE(hover.showsParentRows());
    // Hidden by swallowing their paint: still laid out, never painted.
    EXPECT_TRUE(hover.parentPortionValue()->isVisibleTo(&hover));
    QLabel* hidden = hover.parentPortionValue();
    hidden->setText(QStringLiteral("XXXXXXXX"));
    hidden->resize(hidden->sizeHint());
    EXPECT_FALSE(anyPixelPainted(render(*hidden)));
    // The rows that are shown do paint.
    QLabel* shown = hover.combinationsValue();
    shown->setText(QStringLiteral("XXXXXXXX"));
    shown->resize(shown->sizeHint());
    EXPECT_TRUE(anyPixelPainted(render(*shown)));
}

// Every hand of a range as a two-bit card mask, sorted.
std::vector<unsigned long long> handsOf(const Range::HandRange& range) {
    std::vector<unsigned long long> hands;
    for (const Range::Element& element : range)
        Range::handsOfElement(element.values, element.suits, hands);
    std::sort(hands.begin(), hands.end());
    return hands;
}

void send(QWidget* widget, QEvent::Type type, const QPoint& position, Qt::MouseButton button,
          Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QMouseEvent event(type, position, widget->mapToGlobal(position), button, buttons, modifiers);
    QApplication::sendEvent(widget, &event);
}

// The cell of a class text ("AKs") in the table's grid.
QPoint cellCentre(const QString& text) {
    for (int row = 0; row < 13; ++row)
        for (int column = 0; column < 13; ++column)
            if (HandSelectionTable::cellText(column, row) == text)
                return HandSelectionTable::cellRect(column, row).center();
    return QPoint(-1, -1);
}

TEST(HandRangeHover, ShowsTheRangeInAReadOnlyHandSelectionTable) {
    Range::HandRange range;
    Range::HandRangeStringManipulator(range).setFree("AA,KQs,AhKd");
    HandRangeHover hover(range, "Ah7d2c", {getIndexByCards("Ks")});

    const QList<HandSelectionTable*> tables = hover.findChildren<HandSelectionTable*>();
    ASSERT_EQ(tables.size(), 1);
    const HandSelectionTable* table = tables.front();
    EXPECT_EQ(table, hover.handTable());
    EXPECT_TRUE(table->isReadOnly());
    EXPECT_EQ(table->size(), QSize(431, 431));
    EXPECT_EQ(table->picture().size(), QSize(430, 430));
    // It shows the hover's own copy, hand for hand.
    EXPECT_EQ(table->handRange(), &hover.shownRange());
    EXPECT_NE(&hover.shownRange(), &range);
    EXPECT_EQ(handsOf(hover.shownRange()), handsOf(range));
    EXPECT_EQ(handsOf(hover.shownRange()).size(), 11u);
    // No picture of its own beside the table: the numbers and the table are all there is.
    EXPECT_TRUE(hover.findChildren<QLabel*>(QStringLiteral("hoverTable")).isEmpty());
}

TEST(HandRangeHover, TheTableCountsAgainstTheBoardAndTheDeadCards) {
    Range::HandRange range;
    Range::HandRangeStringManipulator(range).setFree("AA,KQs,72o");
    HandRangeHover hover(range, "Ah7d2c", {getIndexByCards("Ks")});
    const HandSelectionTable* table = hover.handTable();
    ASSERT_NE(table, nullptr);
    const std::vector<unsigned long long> dead = {getIndexByCards("Ah"), getIndexByCards("7d"),
                                                  getIndexByCards("2c"), getIndexByCards("Ks")};
    EXPECT_EQ(hover.shownDeadCards(), dead);
    EXPECT_EQ(table->deadCardMasks(), dead);
    // AA: 3 of 6 left without the Ah; KQs: 3 of 4 without KsQs; 72o: with the 7d and the 2c
    // gone, 3 sevens by 3 deuces less the two suited ones (7h2h, 7s2s) = 7.
    EXPECT_EQ(table->liveCount(0, 0), 3u);
    EXPECT_EQ(table->liveCount(2, 1), 3u);
    EXPECT_EQ(table->liveCount(7, 12), 7u);
    EXPECT_TRUE(table->showsCount(0, 0));
    EXPECT_FALSE(table->showsCount(1, 1));
    EXPECT_EQ(table->cellBackground(0, 0), HandSelectionTable::SelectedBackground);
    EXPECT_EQ(table->cellBackground(1, 1), HandSelectionTable::UnselectedPair);
}

TEST(HandRangeHover, AClassTheBoardKillsEntirelyIsGreyedAndReadsZeroWhenHeld) {
    Range::HandRange range;
    Range::HandRangeStringManipulator(range).setFree("AKs");
    // The board holds all four aces: every ace hand is dead.
    HandRangeHover hover(range, "AhAdAsAc", {});
    const HandSelectionTable* table = hover.handTable();
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->cellBackground(2, 0), HandSelectionTable::NotAvailable); // AQs
    EXPECT_EQ(table->cellBackground(1, 0), HandSelectionTable::SelectedBackground);
    EXPECT_EQ(table->liveCount(1, 0), 0u);
    EXPECT_EQ(hover.combinationsValue()->text(), QStringLiteral("4"));
    EXPECT_EQ(hover.combinationsDiscountedValue()->text(), QStringLiteral("0"));
}

TEST(HandRangeHover, AGroupHoverShowsTheGroupsRange) {
    Range::Tree tree;
    tree.addRange(Range::Tree::noNode, "Parent", false, Range::GroupColor());
    Range::HandRangeStringManipulator(tree.handRange(0)).setFree("AA,KK,QQ");
    Range::TreeRangeNode* value = tree.addRange(0, "Value", false, Range::GroupColor());
    Range::HandRangeStringManipulator(value->handRange).setFree("AA,KhKs");
    HandRangeHover hover(tree, 1, "Ah", {});
    EXPECT_EQ(handsOf(hover.shownRange()), handsOf(tree.handRange(1)));
    EXPECT_EQ(handsOf(hover.shownRange()).size(), 7u);
    EXPECT_EQ(hover.handTable()->handRange(), &hover.shownRange());
    EXPECT_EQ(hover.shownDeadCards(), std::vector<unsigned long long>{getIndexByCards("Ah")});
}

TEST(HandRangeHover, TheMouseChangesNothingInTheTable) {
    Range::HandRange range;
    Range::HandRangeStringManipulator(range).setFree("AA");
    HandRangeHover hover(range, "", {});
    auto* table = hover.findChild<HandSelectionTable*>();
    ASSERT_NE(table, nullptr);
    const std::vector<unsigned long long> before = handsOf(hover.shownRange());
    const QImage picture = table->picture().toImage();
    QSignalSpy changed(table, &HandSelectionTable::RangeChanged);
    QSignalSpy released(table, &HandSelectionTable::mouseReleased);
    for (const QString& cell : {QStringLiteral("AA"), QStringLiteral("KQs")}) {
        for (Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton}) {
            send(table, QEvent::MouseButtonPress, cellCentre(cell), button, button);
            send(table, QEvent::MouseMove, cellCentre(cell) + QPoint(2, 2), Qt::NoButton, button);
            send(table, QEvent::MouseButtonRelease, cellCentre(cell), button, Qt::NoButton);
        }
    }
    const QPoint eights = cellCentre(QStringLiteral("88"));
    send(table, QEvent::MouseButtonPress, eights, Qt::LeftButton, Qt::LeftButton,
         Qt::ShiftModifier | Qt::ControlModifier);
    send(table, QEvent::MouseButtonRelease, eights, Qt::LeftButton, Qt::NoButton);
    EXPECT_EQ(handsOf(hover.shownRange()), before);
    EXPECT_EQ(handsOf(range), before);
    EXPECT_EQ(changed.count(), 0);
    EXPECT_EQ(released.count(), 0);
    EXPECT_EQ(table->picture().toImage(), picture);
    // Nor does it take drops of tree ranges, which would ask an owner to edit.
    EXPECT_FALSE(table->acceptDrops());
}

TEST(HandRangeHover, KeepsItsCopyWhenTheCallersRangeChangesOrGoesAway) {
    auto range = std::make_unique<Range::HandRange>();
    Range::HandRangeStringManipulator(*range).setFree("AA");
    HandRangeHover hover(*range, "", {});
    Range::HandRangeStringManipulator(*range).setFree("KK,QQ");
    range.reset();
    EXPECT_EQ(handsOf(hover.shownRange()).size(), 6u);
    EXPECT_TRUE(hover.handTable()->showsCount(0, 0));
    EXPECT_FALSE(hover.handTable()->showsCount(1, 1));
}

TEST(HandRangeHover, ShowsSuitsOnRequestThroughTheTablesSuitHover) {
    Range::HandRange range;
    Range::HandRangeStringManipulator(range).setFree("AKs");
    HandRangeHover hover(range, "", {});
    auto* table = hover.findChild<HandSelectionTable*>();
    ASSERT_NE(table, nullptr);
    EXPECT_FALSE(hover.showsSuits());
    EXPECT_FALSE(table->isSuitHoverEnabled());
    hover.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&hover));
    const QPoint aks = cellCentre(QStringLiteral("AKs"));

    // Off: a resting mouse opens nothing.
    send(table, QEvent::MouseMove, aks, Qt::NoButton, Qt::NoButton);
    EXPECT_FALSE(table->hoverTimer()->isActive());
    table->onHoverTimeout();
    EXPECT_FALSE(table->suitHover()->isVisible());

    // On: the cell's suit hover opens, still without touching the range.
    hover.setShowSuits(true);
    EXPECT_TRUE(hover.showsSuits());
    EXPECT_TRUE(table->isSuitHoverEnabled());
    send(table, QEvent::MouseMove, aks + QPoint(1, 0), Qt::NoButton, Qt::NoButton);
    EXPECT_TRUE(table->hoverTimer()->isActive());
    table->onHoverTimeout();
    EXPECT_TRUE(table->suitHover()->isVisible());
    EXPECT_EQ(handsOf(hover.shownRange()), handsOf(range));

    // Off again: an open one closes.
    hover.setShowSuits(false);
    EXPECT_FALSE(table->suitHover()->isVisible());
}

class HoverPlacement : public ::testing::Test {
protected:
    void hoverAt(HandRangeLine& line, const QPoint& local) {
        QHoverEvent move(QEvent::HoverMove, local, local);
        QApplication::sendEvent(&line, &move);
    }
};

TEST_F(HoverPlacement, OpensBesideThePointerAndClosesOnLeaving) {
    Range::HandRange range;
    Range::HandRangeStringManipulator(range).setFree("AA");
    QWidget window;
    window.setGeometry(50, 50, 400, 100);
    auto* line = new HandRangeLine(&window);
    line->setGeometry(10, 10, 300, 30);
    line->setHandRange(&range);
    window.show();
    QApplication::setActiveWindow(&window);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));

    hoverAt(*line, QPoint(20, 15));
    ASSERT_NE(line->currentHover(), nullptr);
    const QPoint mouse = line->mapToGlobal(QPoint(20, 15));
    EXPECT_EQ(line->currentHover()->pos().x(), mouse.x() + 10);
    // 11 above the line's bottom edge when it fits below; the hover holds the full hand
    // table, so on a small screen it is moved up by half its height while it crosses the
    // bottom and its top is below the screen's top, at most twice.
    const int height = line->currentHover()->height();
    const int bottom = QGuiApplication::primaryScreen()->geometry().bottom();
    int expected = line->mapToGlobal(QPoint(0, 30)).y() - 11;
    for (int i = 0; i < 2; ++i)
        if (expected > 0 && expected + height > bottom)
            expected -= height / 2;
    EXPECT_EQ(line->currentHover()->pos().y(), expected);

    QEvent leave(QEvent::HoverLeave);
    QApplication::sendEvent(line, &leave);
    EXPECT_EQ(line->currentHover(), nullptr);
}

TEST_F(HoverPlacement, NearTheLowerRightCornerItOpensToTheLeftAndMovesUp) {
    Range::HandRange range;
    Range::HandRangeStringManipulator(range).setFree("AA");
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    QWidget window;
    window.setGeometry(screen.right() - 320, screen.bottom() - 60, 320, 50);
    auto* line = new HandRangeLine(&window);
    line->setGeometry(0, 10, 320, 30);
    line->setHandRange(&range);
    window.show();
    QApplication::setActiveWindow(&window);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));

    hoverAt(*line, QPoint(300, 15));
    HandRangeHover* hover = line->currentHover();
    ASSERT_NE(hover, nullptr);
    const QPoint mouse = line->mapToGlobal(QPoint(300, 15));
    EXPECT_EQ(hover->pos().x(), mouse.x() + 10 - hover->width() - 20);
    EXPECT_LT(hover->pos().y(), line->mapToGlobal(QPoint(0, 30)).y() - 11);
    EXPECT_LE(hover->geometry().right(), screen.right());
}

TEST_F(HoverPlacement, NoHoverWhenDisabledOrSwitchedOff) {
    Range::HandRange range;
    QWidget window;
    auto* line = new HandRangeLine(&window);
    line->setHandRange(&range);
    window.show();
    QApplication::setActiveWindow(&window);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    line->setHoverEnabled(false);
    hoverAt(*line, QPoint(5, 5));
    EXPECT_EQ(line->currentHover(), nullptr);
    line->setHoverEnabled(true);
    line->setEnabled(false);
    hoverAt(*line, QPoint(5, 5));
    EXPECT_EQ(line->currentHover(), nullptr);
}

} // namespace
