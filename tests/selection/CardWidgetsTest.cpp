#include "CardTestHelpers.h"

#include "selection/Card.h"
#include "selection/CardRange.h"
#include "selection/CardRangeText.h"
#include "selection/CardSelectionTable.h"
#include "support/AssertionRecorder.h"

#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

#include <set>
#include <stdexcept>

using namespace CardTestHelpers;

namespace {

std::string runtimeMessage(const std::function<void()>& body) {
    try {
        body();
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "";
}

} // namespace

TEST(Card, HoldsValueSuitTextAndPicture) {
    const Card ace("Ad");
    EXPECT_EQ(ace.value(), 0);
    EXPECT_EQ(ace.suit(), 1u);
    EXPECT_EQ(ace.cardText(), "Ad");
    EXPECT_EQ(ace.text(), QStringLiteral("Ad"));
    EXPECT_FALSE(ace.icon().isNull());
    EXPECT_EQ(ace.type(), Card::Type);
    const Card deuce("2c");
    EXPECT_EQ(deuce.value(), 12);
    EXPECT_EQ(deuce.suit(), 4u);
    EXPECT_TRUE(ace.cardValue() < deuce.cardValue());
}

TEST(Card, BadTextThrows) {
    EXPECT_EQ(runtimeMessage([] { Card card("Zd"); }), "Invalid value description.");
    EXPECT_EQ(runtimeMessage([] { Card card("Ax"); }), "Invalid suit description.");
}

TEST(CardRange, NormalisesTheSpellingOfEachPair) {
    CardRange range;
    range.setCardsFromText("ahKD");
    ASSERT_EQ(range.count(), 2);
    EXPECT_EQ(range.item(0)->text(), QStringLiteral("Ah"));
    EXPECT_EQ(range.item(1)->text(), QStringLiteral("Kd"));
    EXPECT_EQ(range.cardsText(), QStringLiteral("AhKd"));
    EXPECT_EQ(range.item(0)->textAlignment(), static_cast<int>(Qt::AlignCenter));
}

TEST(CardRange, DropsBadPairsRepeatsAndAHalfCard) {
    CardRange range;
    range.setCardsFromText("AhZz1dKdAhAbQ");
    EXPECT_EQ(range.cardsText(), QStringLiteral("AhKd"));
    range.setCardsFromText("");
    EXPECT_EQ(range.cardCount(), 0u);
    // Blanks are separators, not places: " AhA" is Ah and half a card, which is dropped.
    range.setCardsFromText(" AhA");
    EXPECT_EQ(range.cardsText(), QStringLiteral("Ah"));
}

TEST(CardRange, RefusesCardsOfOtherRangesAndKeepsItsMaximum) {
    CardRange flop;
    CardRange turn;
    flop.setMaxCards(3);
    turn.setMaxCards(1);
    flop.setOtherRanges({&turn});
    turn.setOtherRanges({&flop});
    turn.setCardsFromText("2c");
    flop.setCardsFromText("2cQsJhTc9d");
    EXPECT_EQ(flop.cardsText(), QStringLiteral("QsJhTc"));
    turn.setCardsFromText("Qs");
    EXPECT_EQ(turn.cardsText(), QString());
    turn.setCardsFromText("9d8d");
    EXPECT_EQ(turn.cardsText(), QStringLiteral("9d"));
    EXPECT_TRUE(flop.holdsCard("Jh"));
    EXPECT_FALSE(flop.holdsCard("9d"));
}

TEST(CardRange, AtMostFourOtherRanges) {
    CardRange a, b, c, d, e, f;
    AssertionRecorder recorder;
    a.setOtherRanges({&b, &c, &d, &e, &f});
    EXPECT_TRUE(recorder.saw("Too many other card ranges."));
    EXPECT_EQ(a.otherRanges().size(), 4u);
    recorder.clear();
    a.setOtherRanges({&b, nullptr, &a});
    EXPECT_TRUE(recorder.messages().empty());
    EXPECT_EQ(a.otherRanges().size(), 1u);
}

TEST(CardRange, DoubleClickIsSignalled) {
    CardRange range;
    range.resize(200, 60);
    range.show();
    QSignalSpy spy(&range, &CardRange::doubleClicked);
    QTest::mouseDClick(range.viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(150, 20));
    EXPECT_EQ(spy.count(), 1);
}

TEST(CardRange, StronglyDisabledIsADynamicProperty) {
    CardRange range;
    EXPECT_FALSE(CardRange::isStronglyDisabled(&range));
    CardRange::setStronglyDisabled(&range, true);
    EXPECT_TRUE(range.property("stronglyDisabled").toBool());
    EXPECT_TRUE(CardRange::isStronglyDisabled(&range));
    EXPECT_FALSE(CardRange::isStronglyDisabled(nullptr));
}

TEST(CardRangeText, TypingRefillsTheRangeAndFinishingRewritesTheText) {
    CardRange range;
    CardRangeText text;
    text.setCardRange(&range);
    text.show();
    QSignalSpy updates(&text, &CardRangeText::UpdateFromCardRange);
    QTest::keyClicks(&text, "ahKD");
    EXPECT_EQ(range.cardsText(), QStringLiteral("AhKd"));
    EXPECT_EQ(text.text(), QStringLiteral("ahKD")); // left as typed while editing
    EXPECT_EQ(updates.count(), 4);
    QTest::keyClick(&text, Qt::Key_Return);
    EXPECT_EQ(text.text(), QStringLiteral("AhKd"));
    EXPECT_EQ(updates.count(), 4); // rewriting is no new input
}

TEST(CardRangeText, DoubleClickIsSignalled) {
    CardRangeText text;
    text.show();
    QSignalSpy spy(&text, &CardRangeText::doubleClicked);
    QTest::mouseDClick(&text, Qt::LeftButton);
    EXPECT_EQ(spy.count(), 1);
}

TEST(CardSelectionTable, RowsAndSuitsAndTheirFaults) {
    EXPECT_EQ(CardSelectionTable::rowOfSuit('d'), 0);
    EXPECT_EQ(CardSelectionTable::rowOfSuit('h'), 1);
    EXPECT_EQ(CardSelectionTable::rowOfSuit('s'), 2);
    EXPECT_EQ(CardSelectionTable::rowOfSuit('c'), 3);
    for (int row = 0; row < 4; ++row) {
        EXPECT_EQ(CardSelectionTable::rowOfSuit(CardSelectionTable::suitOfRow(row)), row);
    }
    EXPECT_EQ(runtimeMessage([] { CardSelectionTable::rowOfSuit('x'); }), "Non-suitable suit.");
    EXPECT_EQ(runtimeMessage([] { CardSelectionTable::rowOfSuit('D'); }), "Non-suitable suit.");
    EXPECT_EQ(runtimeMessage([] { CardSelectionTable::suitOfRow(4); }),
              "Invalid row number in Card Table.");
    EXPECT_EQ(runtimeMessage([] { CardSelectionTable::suitOfRow(-1); }),
              "Invalid row number in Card Table.");
}

TEST(CardSelectionTable, CellGeometry) {
    CardSelectionTable table;
    EXPECT_EQ(table.size(), QSize(1 + 13 * 22, 1 + 4 * 29));
    EXPECT_EQ(CardSelectionTable::columnAt(1), 0);
    EXPECT_EQ(CardSelectionTable::columnAt(22), 0);
    EXPECT_EQ(CardSelectionTable::columnAt(23), 1);
    EXPECT_EQ(CardSelectionTable::columnAt(1 + 12 * 22), 12);
    EXPECT_EQ(CardSelectionTable::columnAt(0), 0);
    EXPECT_EQ(CardSelectionTable::columnAt(-50), 0);
    EXPECT_EQ(CardSelectionTable::columnAt(1 + 13 * 22), 0); // outside: taken as 0
    EXPECT_EQ(CardSelectionTable::rowAt(29), 0);
    EXPECT_EQ(CardSelectionTable::rowAt(30), 1);
    EXPECT_EQ(CardSelectionTable::rowAt(1 + 4 * 29), 0);
    EXPECT_EQ(CardSelectionTable::cardOfCell(0, 0), QStringLiteral("Ad"));
    EXPECT_EQ(CardSelectionTable::cardOfCell(12, 3), QStringLiteral("2c"));
    EXPECT_EQ(CardSelectionTable::cardOfCell(4, 2), QStringLiteral("Ts"));
}

TEST(CardSelectionTable, LeftMarksRightUnmarks) {
    CardSelectionTable table;
    table.setMaxMarked(3);
    table.setUnselectWithRightButton(true);
    table.show();
    QSignalSpy spy(&table, &CardSelectionTable::SelectionChanged);
    click(&table, "Ah");
    click(&table, "Kd");
    EXPECT_EQ(table.markedText(), QStringLiteral("AhKd"));
    ASSERT_EQ(spy.count(), 2);
    EXPECT_EQ(spy.at(1).at(0).toUInt(), 2u);
    click(&table, "Ah"); // marking a marked card changes nothing
    EXPECT_EQ(spy.count(), 2);
    click(&table, "Ah", Qt::RightButton);
    EXPECT_EQ(table.markedText(), QStringLiteral("Kd"));
    EXPECT_EQ(spy.last().at(0).toUInt(), 1u);
    click(&table, "Kd", Qt::MiddleButton); // any other button unmarks too
    EXPECT_EQ(table.markedCount(), 0u);
}

TEST(CardSelectionTable, WithoutRightButtonTheFirstCellTogglesAndTheStrokeFollows) {
    CardSelectionTable table;
    table.setMaxMarked(52);
    table.setUnselectWithRightButton(false);
    table.show();
    click(&table, "Ah", Qt::RightButton);
    EXPECT_EQ(table.markedCount(), 0u);
    // A stroke starting on an unmarked card marks all it passes.
    press(&table, "Ah");
    dragOver(&table, "Kh", Qt::LeftButton);
    dragOver(&table, "Qh", Qt::LeftButton);
    release(&table, "Qh");
    EXPECT_EQ(table.markedText(), QStringLiteral("AhKhQh"));
    // A stroke starting on a marked card unmarks, also over cards that were unmarked.
    press(&table, "Kh");
    dragOver(&table, "Jh", Qt::LeftButton);
    dragOver(&table, "Qh", Qt::LeftButton);
    release(&table, "Qh");
    EXPECT_EQ(table.markedText(), QStringLiteral("Ah"));
    // Moves after the release do nothing.
    dragOver(&table, "2c", Qt::LeftButton);
    EXPECT_EQ(table.markedText(), QStringLiteral("Ah"));
}

TEST(CardSelectionTable, DragWithTheRightButtonUnmarksAStroke) {
    CardSelectionTable table;
    table.setMaxMarked(52);
    table.setUnselectWithRightButton(true);
    table.setMarkedCards("AhKhQhJh");
    table.show();
    press(&table, "Ah", Qt::RightButton);
    dragOver(&table, "Kh", Qt::RightButton);
    dragOver(&table, "Qh", Qt::RightButton);
    release(&table, "Qh", Qt::RightButton);
    EXPECT_EQ(table.markedText(), QStringLiteral("Jh"));
}

TEST(CardSelectionTable, AtTheMaximumOneMarkMovesAndMoreMarksAreRefused) {
    CardSelectionTable single;
    single.setMaxMarked(1);
    single.show();
    click(&single, "Ah");
    click(&single, "7c");
    EXPECT_EQ(single.markedText(), QStringLiteral("7c"));

    CardSelectionTable three;
    three.setMaxMarked(3);
    three.show();
    QSignalSpy spy(&three, &CardSelectionTable::SelectionChanged);
    for (const char* card : {"Ah", "Kh", "Qh", "Jh"}) {
        click(&three, card);
    }
    EXPECT_EQ(three.markedText(), QStringLiteral("AhKhQh"));
    EXPECT_EQ(spy.count(), 3);
}

TEST(CardSelectionTable, BlockedAndForbiddenCellsAreNotTouched) {
    CardSelectionTable table;
    table.setMaxMarked(5);
    table.setMarkedCards("AhKh");
    table.setBlockedCards("Kh2c");
    table.setForbiddenCards("3c");
    table.show();
    EXPECT_EQ(table.markedText(), QStringLiteral("Ah")); // blocking unmarks
    EXPECT_EQ(table.stateOf("Kh"), CardSelectionTable::CellState::Blocked);
    EXPECT_EQ(table.stateOf("3c"), CardSelectionTable::CellState::Forbidden);
    EXPECT_EQ(table.stateOf("Ah"), CardSelectionTable::CellState::Marked);
    EXPECT_EQ(table.stateOf("Qh"), CardSelectionTable::CellState::Normal);
    QSignalSpy spy(&table, &CardSelectionTable::SelectionChanged);
    click(&table, "2c");
    click(&table, "3c");
    click(&table, "Kh");
    EXPECT_EQ(table.markedText(), QStringLiteral("Ah"));
    EXPECT_EQ(spy.count(), 0);
}

TEST(CardSelectionTable, RandomCardsFillUpToTheMaximumAmongFreeCells) {
    seedRandom(7);
    CardSelectionTable table;
    table.setMaxMarked(50);
    table.setMarkedCards("Ah");
    table.setBlockedCards("2c");
    table.setForbiddenCards("3c");
    QSignalSpy spy(&table, &CardSelectionTable::SelectionChanged);
    table.SelectRandomCards();
    EXPECT_EQ(table.markedCount(), 50u);
    EXPECT_EQ(table.stateOf("Ah"), CardSelectionTable::CellState::Marked);
    EXPECT_EQ(table.stateOf("2c"), CardSelectionTable::CellState::Blocked);
    EXPECT_EQ(table.stateOf("3c"), CardSelectionTable::CellState::Forbidden);
    ASSERT_EQ(spy.count(), 1);
    EXPECT_EQ(spy.at(0).at(0).toUInt(), 50u);

    CardSelectionTable full;
    full.setMaxMarked(2);
    full.setMarkedCards("AhKh");
    full.SelectRandomCards();
    EXPECT_EQ(full.markedText(), QStringLiteral("AhKh"));
}

TEST(CardSelectionTable, MarkedStateIsPaintedDifferently) {
    CardSelectionTable table;
    table.setMaxMarked(3);
    table.setMarkedCards("Ad");
    table.setBlockedCards("Kd");
    table.setForbiddenCards("Qd");
    const QImage image = table.grab().toImage();
    // Top rows of the cells, where the gradient is strongest.
    const auto colourAt = [&](const QString& card) {
        const QRect cell =
            CardSelectionTable::cellRect(QStringLiteral("AKQJT98765432").indexOf(card.at(0)),
                                         CardSelectionTable::rowOfSuit(card.at(1).toLatin1()));
        return image.pixelColor(cell.left() + 2, cell.top() + 2);
    };
    const QColor marked = colourAt("Ad");
    const QColor normal = colourAt("Jd");
    EXPECT_GT(normal.lightness(), marked.lightness());
    EXPECT_NE(colourAt("Kd"), normal);
    EXPECT_NE(colourAt("Qd"), normal);
}
