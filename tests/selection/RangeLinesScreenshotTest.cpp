// The hover of a range line holding a group, opened as a user's pointer opens it, on a real X
// server with the program's style sheet.

#include "Range/HandRangeElementConversion.h"
#include "Range/HandRangeStringManipulator.h"
#include "Range/Tree.h"
#include "Range/TreeRangeNode.h"
#include "selection/HandRangeHover.h"
#include "selection/HandRangeLine.h"
#include "selection/HandSelectionTable.h"
#include "support/TestEnvironment.h"

#include <QApplication>
#include <QFile>
#include <QHoverEvent>
#include <QLabel>
#include <QTest>
#include <gtest/gtest.h>

namespace {

void applyProgramStyle() {
    QFile style(QStringLiteral(":/style.qss"));
    if (style.open(QIODevice::ReadOnly))
        qApp->setStyleSheet(QString::fromUtf8(style.readAll()));
}

TEST(RangeLinesScreenshot, HoverOfAGroupOnAFlop) {
    applyProgramStyle();
    Range::Tree tree;
    tree.addRange(Range::Tree::noNode, "Opener", false, Range::GroupColor());
    Range::HandRangeStringManipulator(tree.handRange(0))
        .setFree("22+,A2s+,K9s+,Q9s+,J9s+,T8s+,98s,ATo+,KTo+,QJo");
    Range::TreeRangeNode* value = tree.addRange(0, "Value", false, Range::GroupColor());
    Range::HandRangeStringManipulator(value->handRange).setFree("TT+,AQs+,AKo,KhQh");
    Range::TreeRangeNode* bluff = tree.addRange(0, "Bluff", false, Range::GroupColor());
    Range::HandRangeStringManipulator(bluff->handRange).setFree("A5s,A4s,KK");

    QWidget window;
    window.setGeometry(40, 40, 420, 60);
    auto* line = new HandRangeLine(&window);
    line->setGeometry(10, 10, 400, 30);
    line->setRangeGroups(&tree, 1);
    line->setBoard("Ah7d2c");
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    // There is no window manager on the test's X server to activate it.
    QApplication::setActiveWindow(&window);
    ASSERT_EQ(QApplication::activeWindow(), &window);

    QHoverEvent move(QEvent::HoverMove, QPoint(30, 15), QPoint(30, 15));
    QApplication::sendEvent(line, &move);
    HandRangeHover* hover = line->currentHover();
    ASSERT_NE(hover, nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(hover));
    QApplication::processEvents();

    // The group's own hands (30 pairs, 8 suited, 12 offsuit, KhQh) over the flop; the
    // sibling's KK only lowers the discounted numbers.
    ASSERT_NE(hover->handTable(), nullptr);
    EXPECT_TRUE(hover->handTable()->isReadOnly());
    EXPECT_EQ(hover->shownRange().combinationCount(), tree.handRange(1).combinationCount());
    EXPECT_EQ(hover->shownDeadCards(), Range::cardsOfText("Ah7d2c"));
    EXPECT_EQ(hover->combinationsValue()->text(), QStringLiteral("51"));
    EXPECT_TRUE(hover->showsParentRows());

    const QString path =
        QString::fromStdString(TestEnvironment::outputFolder()) + "/rangelines_hover.png";
    EXPECT_TRUE(hover->grab().save(path, "PNG")) << path.toStdString();
}

} // namespace
