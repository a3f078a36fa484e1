#include "HandSelectionTestHelpers.h"

#include "selection/SuitSelectionTable.h"

#include <QPainter>
#include <QSettings>
#include <QSignalSpy>
#include <gtest/gtest.h>

#include <stdexcept>

using namespace HandSelectionTest;

namespace {

// Centre of a cell: index first * 4 + second.
QPoint centre(int index) {
    return SuitSelectionTable::cellRect(index).center();
}

unsigned short lastPen(const QSignalSpy& spy) {
    return spy.last().at(0).value<unsigned short>();
}

int bits(unsigned int mask) {
    int count = 0;
    for (; mask; mask &= mask - 1)
        ++count;
    return count;
}

} // namespace

TEST(SuitSelectionTable, StartsWithEveryCellSelected) {
    SuitSelectionTable table;
    EXPECT_EQ(table.suitPen(), 0xFFFF);
    EXPECT_EQ(table.pixmap(Qt::ReturnByValue).size(), QSize(406, 126));
    EXPECT_EQ(table.size(), QSize(206, 126));
    EXPECT_EQ(SuitSelectionTable::cellRect(0), QRect(0, 0, 50, 30));
    EXPECT_EQ(SuitSelectionTable::cellRect(6), QRect(104, 32, 50, 30)); // hs
}

TEST(SuitSelectionTable, PatternButtonsSetTheirCells) {
    SuitSelectionTable table;
    QSignalSpy updated(&table, &SuitSelectionTable::suitsUpdated);
    table.select25Percent();
    EXPECT_EQ(table.suitPen(), 0x0017); // dd dh ds hd
    EXPECT_EQ(lastPen(updated), 0x0017);
    table.select50PercentA();
    EXPECT_EQ(table.suitPen(), 0x113F); // dd hh dh ds dc hd sd cd
    table.select50PercentB();
    EXPECT_EQ(table.suitPen(), 0xEEC0); // ss cc hs hc sc sh ch cs
    table.select75Percent();
    EXPECT_EQ(table.suitPen(), 0xFFE8);
    table.selectNone();
    EXPECT_EQ(table.suitPen(), 0);
    table.selectAll();
    EXPECT_EQ(table.suitPen(), 0xFFFF);
    EXPECT_EQ(updated.count(), 6);
    EXPECT_TRUE(table.isSelected(3, 3));
}

TEST(SuitSelectionTable, PatternsHoldTheirSharesOfEachKind) {
    const unsigned int diagonal = 0x8421;
    const unsigned int offsuit = 0xFFFF & ~diagonal;
    SuitSelectionTable table;
    table.select25Percent();
    EXPECT_EQ(bits(table.suitPen() & diagonal), 1);
    EXPECT_EQ(bits(table.suitPen() & offsuit), 3);
    table.select75Percent();
    EXPECT_EQ(bits(table.suitPen() & diagonal), 3);
    EXPECT_EQ(bits(table.suitPen() & offsuit), 9);
    table.select50PercentA();
    const unsigned int a = table.suitPen();
    table.select50PercentB();
    const unsigned int b = table.suitPen();
    EXPECT_EQ(a & b, 0u);
    EXPECT_EQ(a | b, 0xFFFFu);
    EXPECT_EQ(bits(a & diagonal), 2);
    EXPECT_EQ(bits(b & offsuit), 6);
}

TEST(SuitSelectionTable, OneSuitButtonsTakeSevenCells) {
    SuitSelectionTable table;
    table.selectAllHearts();
    EXPECT_EQ(table.suitPen(), 0x22F2);
    table.selectAllDiamonds();
    EXPECT_EQ(table.suitPen(), 0x111F);
    table.selectAllSpades();
    EXPECT_EQ(table.suitPen(), 0x4F44);
    table.selectAllClubs();
    EXPECT_EQ(table.suitPen(), 0xF888);
    EXPECT_EQ(bits(table.suitPen()), 7);
}

TEST(SuitSelectionTable, AStrokeUnselectsWithTheRightButtonAndSelectsWithTheLeft) {
    SuitSelectionTable table;
    QSignalSpy updated(&table, &SuitSelectionTable::suitsUpdated);
    press(&table, centre(0), Qt::RightButton);
    move(&table, centre(1), Qt::RightButton);
    move(&table, centre(2), Qt::RightButton);
    EXPECT_EQ(updated.count(), 0); // told on release only
    release(&table, centre(2), Qt::RightButton);
    EXPECT_EQ(table.suitPen(), 0xFFF8);
    ASSERT_EQ(updated.count(), 1);
    EXPECT_EQ(lastPen(updated), 0xFFF8);
    press(&table, centre(1), Qt::LeftButton);
    release(&table, centre(1), Qt::LeftButton);
    EXPECT_EQ(table.suitPen(), 0xFFFA);
}

TEST(SuitSelectionTable, WithoutTheRightButtonOptionTheFirstCellToggles) {
    SuitSelectionTable table;
    table.setUnselectWithRightButton(false);
    table.setSuitPen(0x0002); // dh only
    // Starts on a selected cell: unselects, also cells after it.
    press(&table, centre(1));
    move(&table, centre(2), Qt::LeftButton);
    release(&table, centre(2));
    EXPECT_EQ(table.suitPen(), 0x0000);
    // Starts on an empty cell: selects.
    press(&table, centre(5));
    move(&table, centre(6), Qt::LeftButton);
    release(&table, centre(6));
    EXPECT_EQ(table.suitPen(), 0x0060);
}

TEST(SuitSelectionTable, RightButtonWithoutTheOptionDoesNothingAtAll) {
    SuitSelectionTable table;
    table.setUnselectWithRightButton(false);
    QSignalSpy updated(&table, &SuitSelectionTable::suitsUpdated);
    press(&table, centre(0), Qt::RightButton);
    move(&table, centre(1), Qt::RightButton);
    release(&table, centre(1), Qt::RightButton);
    EXPECT_EQ(table.suitPen(), 0xFFFF);
    EXPECT_EQ(updated.count(), 0);
}

TEST(SuitSelectionTable, TheDeadStripGrowsTowardTheRightAndBottom) {
    SuitSelectionTable table;
    EXPECT_EQ(table.cellAt(QPoint(47, 10)), 0);
    EXPECT_EQ(table.cellAt(QPoint(48, 10)), -1); // 50 - 48 < 3
    EXPECT_EQ(table.cellAt(QPoint(52, 10)), 1);
    EXPECT_EQ(table.cellAt(QPoint(97, 10)), 1);
    EXPECT_EQ(table.cellAt(QPoint(98, 10)), -1); // inside the drawn cell, yet dead
    EXPECT_EQ(table.cellAt(QPoint(197, 10)), 3);
    EXPECT_EQ(table.cellAt(QPoint(198, 10)), -1);
    EXPECT_EQ(table.cellAt(QPoint(10, 27)), 0);
    EXPECT_EQ(table.cellAt(QPoint(10, 28)), -1);
    EXPECT_EQ(table.cellAt(QPoint(10, 117)), 12);
    EXPECT_EQ(table.cellAt(QPoint(10, 118)), -1);
    EXPECT_EQ(table.cellAt(QPoint(-1, 10)), -1);
    EXPECT_EQ(table.cellAt(QPoint(10, 126)), -1);
    // A click on the strip changes nothing.
    press(&table, QPoint(98, 10), Qt::RightButton);
    release(&table, QPoint(98, 10), Qt::RightButton);
    EXPECT_EQ(table.suitPen(), 0xFFFF);
}

TEST(SuitSelectionTable, UnselectedCellsArePaintedFaint) {
    SuitSelectionTable table;
    const QImage before = table.pixmap(Qt::ReturnByValue).toImage();
    table.selectNone();
    const QImage after = table.pixmap(Qt::ReturnByValue).toImage();
    // Inside the left suit picture of the first cell, on the tile's ground.
    const QPoint inside = SuitSelectionTable::cellRect(0).topLeft() + QPoint(6, 5);
    EXPECT_EQ(before.pixelColor(inside).alpha(), 255);
    EXPECT_LT(after.pixelColor(inside).alpha(), 120);
    EXPECT_GT(after.pixelColor(inside).alpha(), 0);
}

TEST(SuitSelectionTable, SuitPicturesExistAndABadSuitThrows) {
    for (unsigned int suit = 1; suit <= 4; ++suit) {
        EXPECT_EQ(SuitSelectionTable::suitPicture(suit).size(), QSize(25, 30));
        EXPECT_EQ(SuitSelectionTable::suitPicture(suit, true).size(), QSize(25, 30));
    }
    try {
        SuitSelectionTable::suitPicture(0);
        FAIL() << "no exception";
    } catch (const std::exception& error) {
        EXPECT_STREQ(error.what(), "Invalid suit.");
    }
    EXPECT_THROW(SuitSelectionTable::suitPicture(5), std::exception);
}

TEST(SuitSelectionTable, ReadsTheRightButtonSetting) {
    {
        QSettings settings("Velmara", "Quorvane");
        settings.setValue("optionmenu/unselectCardWithRightButton", false);
    }
    SuitSelectionTable suits;
    HandSelectionTable hands;
    EXPECT_FALSE(suits.unselectsWithRightButton());
    EXPECT_FALSE(hands.unselectsWithRightButton());
    {
        QSettings settings("Velmara", "Quorvane");
        settings.remove("optionmenu/unselectCardWithRightButton");
    }
    suits.readSettings();
    hands.readSettings();
    EXPECT_TRUE(suits.unselectsWithRightButton());
    EXPECT_TRUE(hands.unselectsWithRightButton());
}
