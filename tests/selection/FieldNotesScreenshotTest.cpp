// On a real X server with the program's style sheet: a player's row and the board after
// texts the fields could not take whole, photographed for a person to look at.

#include "Range/Tree.h"
#include "selection/BoardCardsWidget.h"
#include "selection/CardRangeText.h"
#include "selection/HandRangeLine.h"
#include "selection/ManagedHandRangeLine.h"
#include "support/TestEnvironment.h"

#include <QApplication>
#include <QFile>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace {

void applyProgramStyle() {
    QFile style(QStringLiteral(":/style.qss"));
    if (style.open(QIODevice::ReadOnly))
        qApp->setStyleSheet(QString::fromUtf8(style.readAll()));
}

TEST(FieldNotesScreenshot, ARangeLineAndTheBoardNameWhatTheyDropped) {
    applyProgramStyle();
    Range::Tree tree;
    tree.addRange(Range::Tree::noNode, "Parent", false, Range::GroupColor());

    QWidget window;
    window.setStyleSheet(QStringLiteral("QWidget#window { background: #f4f6f8; }"));
    window.setObjectName(QStringLiteral("window"));
    auto* layout = new QVBoxLayout(&window);
    layout->setContentsMargins(14, 12, 14, 12);
    layout->setSpacing(12);
    auto* managed = new ManagedHandRangeLine(&window);
    managed->setPlayer(1);
    managed->setMinimumHeight(30);
    auto* board = new BoardCardsWidget(&window);
    layout->addWidget(managed);
    layout->addWidget(board);
    managed->setGroups(&tree);
    window.resize(1000, 230);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    QApplication::setActiveWindow(&window);

    HandRangeLine* line = managed->rangeLine();
    line->setFocus();
    QTest::keyClicks(line, QStringLiteral("QQ+,AKs,AKx,KQz"));
    QTest::keyClick(line, Qt::Key_Return);
    EXPECT_EQ(line->text(), QStringLiteral("QQ+,AKs"));
    EXPECT_EQ(line->note(), QStringLiteral("not understood: AKx, KQz"));

    board->flopText()->setFocus();
    QTest::keyClicks(board->flopText(), QStringLiteral("AhKd2c9c"));
    QTest::keyClick(board->flopText(), Qt::Key_Return);
    board->turnText()->setFocus();
    QTest::keyClicks(board->turnText(), QStringLiteral("Ah"));
    board->deadText()->setFocus();
    QTest::keyClicks(board->deadText(), QStringLiteral("7s xx"));
    QTest::keyClick(board->deadText(), Qt::Key_Return);
    // The focus rests elsewhere, as after a click on the window.
    managed->setFocus();
    EXPECT_EQ(board->flopText()->note(), QStringLiteral("a flop has three cards: 9c dropped"));
    EXPECT_EQ(board->turnText()->note(), QStringLiteral("Ah is already on the board"));
    EXPECT_EQ(board->deadText()->note(), QStringLiteral("not understood: xx"));
    // What the narrow card fields paint; the whole sentence is in their tool tips.
    EXPECT_EQ(board->flopText()->paintedNote(), QStringLiteral("dropped: 9c"));
    EXPECT_EQ(board->turnText()->paintedNote(), QStringLiteral("dropped: Ah"));
    EXPECT_EQ(board->deadText()->paintedNote(), QStringLiteral("not understood: xx"));
    QTest::qWait(100);

    const QString path =
        QString::fromStdString(TestEnvironment::outputFolder()) + "/field_notes.png";
    EXPECT_TRUE(window.grab().save(path, "PNG")) << path.toStdString();
    managed->setGroups(nullptr);
}

} // namespace
