// What a player sees of a range line while working with it: picking an item of the player's
// combo box again, the hover's numbers while the text changes under it, and the note about
// tokens the range grammar could not read.

#include "Range/HandRange.h"
#include "Range/HandRangeStringManipulator.h"
#include "Range/Tree.h"
#include "Range/TreeRangeNode.h"
#include "selection/HandRangeHover.h"
#include "selection/HandRangeLine.h"
#include "selection/HandRangeMultiLine.h"
#include "selection/ManagedHandRangeLine.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHoverEvent>
#include <QLabel>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>
#include <VelmaraEvaluatorBase.h>
#include <gtest/gtest.h>

#include <ostream>

// Readable failure messages for texts.
inline void PrintTo(const QString& text, std::ostream* stream) {
    *stream << '"' << text.toStdString() << '"';
}

namespace {

std::string compactOf(const Range::HandRange& range) {
    return Range::HandRangeStringReader(range).compactText();
}

// A shown, active window holding one player's row.
class PlayerRow : public ::testing::Test {
protected:
    void SetUp() override {
        tree.addRange(Range::Tree::noNode, "Parent", false, Range::GroupColor());
        auto* layout = new QVBoxLayout(&window);
        managed = new ManagedHandRangeLine(&window);
        other = new QLabel(QStringLiteral("elsewhere"), &window);
        other->setFocusPolicy(Qt::StrongFocus);
        layout->addWidget(managed);
        layout->addWidget(other);
        managed->setGroups(&tree);
        window.resize(600, 120);
        window.show();
        QApplication::setActiveWindow(&window);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    void TearDown() override { managed->setGroups(nullptr); }

    HandRangeLine* line() const { return managed->rangeLine(); }

    void typeAndReturn(const QString& text) {
        line()->setFocus();
        line()->selectAll();
        QTest::keyClicks(line(), text);
        QTest::keyClick(line(), Qt::Key_Return);
    }

    // Opens the popup and clicks item `index`, as a user picks an entry with the mouse.
    void pickWithTheMouse(int index) {
        managed->showPopup();
        QAbstractItemView* view = managed->view();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(view->window()));
        // A release too soon after opening is taken as the end of the opening click.
        QTest::qWait(QApplication::doubleClickInterval() + 100);
        const QPoint centre = view->visualRect(view->model()->index(index, 0)).center();
        QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, centre);
        QTest::qWait(50);
    }

    // Leaving the line validates it.
    void leaveTheLine() {
        other->setFocus(Qt::MouseFocusReason);
        QApplication::processEvents();
    }

    Range::Tree tree;
    QWidget window;
    ManagedHandRangeLine* managed = nullptr;
    QLabel* other = nullptr;
};

TEST_F(PlayerRow, PickingTheShownItemAgainKeepsTheRangeTextNotTheItemsMarkup) {
    typeAndReturn(QStringLiteral("AKx"));
    ASSERT_EQ(line()->text(), QString());
    ASSERT_EQ(managed->currentIndex(), 0);

    pickWithTheMouse(0);
    EXPECT_FALSE(managed->view()->isVisible());
    EXPECT_EQ(line()->text(), QString());
    EXPECT_FALSE(line()->text().contains(QStringLiteral("<b>")));
    EXPECT_EQ(managed->currentIndex(), 0);
}

TEST_F(PlayerRow, PickingTheShownItemAgainNeverEmptiesTheRangeOnLeaving) {
    typeAndReturn(QStringLiteral("QQ+,AKs"));
    ASSERT_EQ(compactOf(tree.handRange(0)), "QQ+,AKs");
    QSignalSpy changed(line(), &HandRangeLine::RangeChanged);

    pickWithTheMouse(0);
    EXPECT_EQ(line()->text(), QStringLiteral("QQ+,AKs"));
    leaveTheLine();
    EXPECT_EQ(compactOf(tree.handRange(0)), "QQ+,AKs");
    EXPECT_EQ(line()->text(), QStringLiteral("QQ+,AKs"));
    EXPECT_EQ(changed.count(), 0);
}

TEST_F(PlayerRow, PickingAGroupItemAgainShowsTheGroupsRange) {
    Range::HandRangeStringManipulator(tree.handRange(0)).setFree("TT+,AK");
    Range::TreeRangeNode* group = tree.addRange(0, "Value", false, Range::GroupColor());
    Range::HandRangeStringManipulator(group->handRange).setFree("AA");
    managed->refill();
    managed->setCurrentIndex(1);
    ASSERT_EQ(line()->text(), QStringLiteral("AA"));

    pickWithTheMouse(1);
    EXPECT_EQ(line()->text(), QStringLiteral("AA"));
    leaveTheLine();
    EXPECT_EQ(compactOf(tree.handRange(1)), "AA");
}

// The numbers of the open hover against the range that is in the line at this moment.
class HoverWhileTyping : public ::testing::Test {
protected:
    void SetUp() override {
        window.setGeometry(40, 40, 500, 80);
        line = new HandRangeLine(&window);
        line->setGeometry(10, 10, 400, 30);
        line->setHandRange(&range);
        window.show();
        QApplication::setActiveWindow(&window);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    void hoverOverTheLine() {
        const QPoint local(40, 15);
        QHoverEvent move(QEvent::HoverMove, local, local);
        QApplication::sendEvent(line, &move);
    }

    void retype(const QString& text) {
        line->setFocus();
        line->selectAll();
        QTest::keyClicks(line, text);
    }

    QString combinations() const { return line->currentHover()->combinationsValue()->text(); }
    QString alive() const { return line->currentHover()->combinationsDiscountedValue()->text(); }

    Range::HandRange range;
    QWidget window;
    HandRangeLine* line = nullptr;
};

TEST_F(HoverWhileTyping, TheOpenHoverCountsTheTextAsItIsTyped) {
    hoverOverTheLine();
    ASSERT_NE(line->currentHover(), nullptr);
    EXPECT_EQ(combinations(), QStringLiteral("0"));

    // 22-JJ: ten pairs of 6; AQs+: AQs and AKs, 4 each.
    retype(QStringLiteral("22-JJ,AQs+"));
    ASSERT_NE(line->currentHover(), nullptr);
    EXPECT_EQ(combinations(), QStringLiteral("68"));
    EXPECT_EQ(line->currentHover()->percentValue()->text(),
              QString::number(68 / 1326.0 * 100.0, 'f', 2) + QStringLiteral(" %"));

    retype(QStringLiteral("22-TT,AQs+"));
    EXPECT_EQ(combinations(), QStringLiteral("62"));
    // Every keystroke counts: the last one took the "+" away.
    QTest::keyClick(line, Qt::Key_Backspace);
    EXPECT_EQ(combinations(), QStringLiteral("58"));
    QTest::keyClick(line, Qt::Key_Return);
    EXPECT_EQ(line->text(), QStringLiteral("22-TT,AQs"));
    EXPECT_EQ(combinations(), QStringLiteral("58"));
    // The table below the numbers shows the same range.
    EXPECT_EQ(line->currentHover()->shownRange().combinationCount(), 58u);
}

TEST_F(HoverWhileTyping, TheOpenHoverFollowsTheBoardAndTheDeadCards) {
    Range::HandRangeStringManipulator(range).setFree("22-JJ,AQs+");
    line->setHandRange(&range);
    hoverOverTheLine();
    ASSERT_NE(line->currentHover(), nullptr);
    EXPECT_EQ(alive(), QStringLiteral("68"));
    // Jh and Jd leave one jack pair (JcJs); 2c leaves three deuce pairs.
    line->setBoard("JhJd2c");
    EXPECT_EQ(alive(), QStringLiteral("60"));
    EXPECT_EQ(combinations(), QStringLiteral("68"));
    // Ad dead takes AdQd and AdKd.
    line->setDeadCards({getIndexByCards("Ad")});
    EXPECT_EQ(alive(), QStringLiteral("58"));
}

TEST_F(PlayerRow, TheGroupHoverFollowsTheGroupsTextAndItsShareOfTheParent) {
    Range::HandRangeStringManipulator(tree.handRange(0)).setFree("TT+,AK");
    Range::TreeRangeNode* group = tree.addRange(0, "Value", false, Range::GroupColor());
    Range::HandRangeStringManipulator(group->handRange).setFree("AA");
    managed->refill();
    managed->setCurrentIndex(1);
    const QPoint local(30, line()->height() / 2);
    QHoverEvent move(QEvent::HoverMove, local, local);
    QApplication::sendEvent(line(), &move);
    ASSERT_NE(line()->currentHover(), nullptr);
    EXPECT_EQ(line()->currentHover()->combinationsValue()->text(), QStringLiteral("6"));

    line()->setFocus();
    line()->selectAll();
    QTest::keyClicks(line(), QStringLiteral("KK+"));
    ASSERT_NE(line()->currentHover(), nullptr);
    EXPECT_EQ(line()->currentHover()->combinationsValue()->text(), QStringLiteral("12"));
    // The parent, TT+ and AK, holds 30 + 16 = 46 combinations.
    EXPECT_EQ(line()->currentHover()->parentPortionValue()->text(),
              QString::number(12 / 46.0 * 100.0, 'f', 2) + QStringLiteral(" %"));
}

// Pixels of the line's right half painted in the note's red.
int notePixels(QWidget& field) {
    const QImage image = field.grab().toImage();
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = image.width() / 2; x < image.width(); ++x) {
            const QColor c = image.pixelColor(x, y);
            count += c.red() > 150 && c.red() - c.green() > 60 && c.red() - c.blue() > 60 ? 1 : 0;
        }
    return count;
}

TEST_F(HoverWhileTyping, TokensThatAreNotUnderstoodAreNamedUntilTheNextEdit) {
    EXPECT_TRUE(line->toolTip().isEmpty());
    EXPECT_EQ(notePixels(*line), 0);

    retype(QStringLiteral("AKs,AKx,QQ"));
    // While typing nothing is judged yet.
    EXPECT_TRUE(line->toolTip().isEmpty());
    QTest::keyClick(line, Qt::Key_Return);
    EXPECT_EQ(line->text(), QStringLiteral("QQ,AKs"));
    EXPECT_EQ(line->toolTip(), QStringLiteral("not understood: AKx"));
    EXPECT_EQ(line->accessibleDescription(), QStringLiteral("not understood: AKx"));
    EXPECT_GT(notePixels(*line), 20);

    // The next keystroke is the next edit.
    QTest::keyClick(line, Qt::Key_End);
    QTest::keyClicks(line, QStringLiteral(","));
    EXPECT_TRUE(line->toolTip().isEmpty());
    EXPECT_EQ(notePixels(*line), 0);
}

TEST_F(HoverWhileTyping, SeveralBadTokensAreNamedInTheirOrderAndAGoodTextNamesNothing) {
    retype(QStringLiteral("Zz, AKx ,KQs,1234,"));
    QTest::keyClick(line, Qt::Key_Return);
    EXPECT_EQ(line->text(), QStringLiteral("KQs"));
    EXPECT_EQ(line->toolTip(), QStringLiteral("not understood: Zz, AKx, 1234"));

    retype(QStringLiteral("kqs, ak"));
    QTest::keyClick(line, Qt::Key_Return);
    EXPECT_EQ(line->text(), QStringLiteral("AKs,KQs,AKo"));
    EXPECT_TRUE(line->toolTip().isEmpty());
}

TEST_F(HoverWhileTyping, EverythingNotUnderstoodEmptiesTheLineAndSaysWhy) {
    Range::HandRangeStringManipulator(range).setFree("AA");
    line->setHandRange(&range);
    QSignalSpy changed(line, &HandRangeLine::RangeChanged);
    retype(QStringLiteral("AKx"));
    QTest::keyClick(line, Qt::Key_Return);
    EXPECT_EQ(line->text(), QString());
    EXPECT_EQ(range.combinationCount(), 0u);
    EXPECT_GE(changed.count(), 1);
    EXPECT_EQ(line->toolTip(), QStringLiteral("not understood: AKx"));
}

TEST_F(HoverWhileTyping, ALongListOfBadTokensIsCutShort) {
    QString text;
    for (int i = 0; i < 30; ++i)
        text += QStringLiteral("Q%1x,").arg(i);
    retype(text);
    QTest::keyClick(line, Qt::Key_Return);
    const QString note = line->toolTip();
    EXPECT_TRUE(note.startsWith(QStringLiteral("not understood: Q0x, Q1x, ")));
    EXPECT_TRUE(note.endsWith(QStringLiteral(" and 20 more"))) << note.toStdString();
}

TEST(HandRangeLineNote, ALineWithoutARangeJudgesNothing) {
    HandRangeLine line;
    line.setText(QStringLiteral("AKx"));
    QTest::keyClick(&line, Qt::Key_Return);
    EXPECT_TRUE(line.toolTip().isEmpty());
}

TEST(HandRangeLineNote, BindingAnotherRangeEndsTheNote) {
    Range::HandRange first;
    Range::HandRange second;
    HandRangeLine line;
    line.setHandRange(&first);
    line.setText(QStringLiteral("AKx,QQ"));
    QTest::keyClick(&line, Qt::Key_Return);
    ASSERT_EQ(line.toolTip(), QStringLiteral("not understood: AKx"));
    // Shown again (the window does this after every update): the note stays.
    line.setHandRange(&first);
    EXPECT_EQ(line.toolTip(), QStringLiteral("not understood: AKx"));
    line.setHandRange(&second);
    EXPECT_TRUE(line.toolTip().isEmpty());
}

TEST(HandRangeMultiLineNote, ReturnNamesWhatWasNotUnderstood) {
    Range::HandRange range;
    HandRangeMultiLine field;
    field.setHandRange(&range);
    field.setPlainText(QStringLiteral("AA,AKx"));
    QTest::keyClick(&field, Qt::Key_Return);
    EXPECT_EQ(field.toPlainText(), QStringLiteral("AA"));
    EXPECT_EQ(field.toolTip(), QStringLiteral("not understood: AKx"));
    QTest::keyClicks(&field, QStringLiteral(",K"));
    EXPECT_TRUE(field.toolTip().isEmpty());
}

} // namespace
