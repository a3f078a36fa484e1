// HandRangeHover: the numbers, plain and discounted, the hidden parent rows, and where the
// line places it.

#include "selection/HandRangeHover.h"
#include "Range/HandRangeStringManipulator.h"
#include "Range/Tree.h"
#include "Range/TreeRangeNode.h"
#include "selection/HandRangeLine.h"

#include <QApplication>
#include <QHoverEvent>
#include <QLabel>
#include <QScreen>
#include <QTest>
#include <VelmaraEvaluatorBase.h>
#include <gtest/gtest.h>

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

TEST(HandRangeHover, ShowsSuitsOnRequest) {
    Range::HandRange range;
    HandRangeHover hover(range, "", {});
    EXPECT_FALSE(hover.showsSuits());
    hover.setShowSuits(true);
    EXPECT_TRUE(hover.showsSuits());
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
    EXPECT_EQ(line->currentHover()->pos().y(), line->mapToGlobal(QPoint(0, 30)).y() - 11);

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
