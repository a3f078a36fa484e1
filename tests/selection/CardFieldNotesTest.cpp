// The board's card fields say what they dropped from a typed text, and why, until the next
// edit: pieces that are no card, cards the field has no room for, and cards that already
// lie in another field.

#include "selection/BoardCardsWidget.h"
#include "selection/CardRange.h"
#include "selection/CardRangeText.h"

#include <QApplication>
#include <QLabel>
#include <QTest>
#include <gtest/gtest.h>

namespace {

class CardFieldNotes : public ::testing::Test {
protected:
    void SetUp() override {
        widget.show();
        QApplication::setActiveWindow(&widget);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&widget));
    }

    // Types into a field as a user does: focus, select all, type.
    void type(CardRangeText* field, const QString& text) {
        field->setFocus();
        field->selectAll();
        QTest::keyClicks(field, text);
    }
    // Ends the editing of the field that has the focus, as Return does.
    void finish(CardRangeText* field) { QTest::keyClick(field, Qt::Key_Return); }

    BoardCardsWidget widget;
};

// Pixels of the field's right half painted in the note's red.
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

TEST_F(CardFieldNotes, AFourthFlopCardIsDroppedAndNamed) {
    type(widget.flopText(), QStringLiteral("AhKd2c9c"));
    EXPECT_EQ(widget.getFlop(), "AhKd2c");
    EXPECT_EQ(widget.flopText()->toolTip(), QStringLiteral("a flop has three cards: 9c dropped"));
    finish(widget.flopText());
    EXPECT_EQ(widget.flopText()->text(), QStringLiteral("AhKd2c"));
    EXPECT_EQ(widget.flopText()->toolTip(), QStringLiteral("a flop has three cards: 9c dropped"));
    EXPECT_EQ(widget.flopText()->accessibleDescription(),
              QStringLiteral("a flop has three cards: 9c dropped"));
    EXPECT_GT(notePixels(*widget.flopText()), 20);

    // The next edit judges afresh.
    type(widget.flopText(), QStringLiteral("AhKd"));
    EXPECT_TRUE(widget.flopText()->toolTip().isEmpty());
    EXPECT_EQ(notePixels(*widget.flopText()), 0);
}

TEST_F(CardFieldNotes, ANarrowFieldPaintsTheDroppedCardsAndATooltipSaysWhy) {
    widget.resize(900, widget.sizeHint().height());
    type(widget.flopText(), QStringLiteral("AhKd2c9c"));
    finish(widget.flopText());
    ASSERT_LT(widget.flopText()->width(), 300);
    EXPECT_EQ(widget.flopText()->paintedNote(), QStringLiteral("dropped: 9c"));
    EXPECT_EQ(widget.flopText()->toolTip(), QStringLiteral("a flop has three cards: 9c dropped"));

    type(widget.turnText(), QStringLiteral("Ah"));
    EXPECT_EQ(widget.turnText()->paintedNote(), QStringLiteral("dropped: Ah"));
    EXPECT_EQ(widget.turnText()->toolTip(), QStringLiteral("Ah is already on the board"));

    // With room, the whole note.
    widget.flopText()->setFixedWidth(700);
    EXPECT_EQ(widget.flopText()->paintedNote(),
              QStringLiteral("a flop has three cards: 9c dropped"));
}

TEST_F(CardFieldNotes, SixFlopCardsNameTheThreeDropped) {
    type(widget.flopText(), QStringLiteral("2c3c4c5c6c7c"));
    EXPECT_EQ(widget.getFlop(), "2c3c4c");
    EXPECT_EQ(widget.flopText()->toolTip(),
              QStringLiteral("a flop has three cards: 5c, 6c, 7c dropped"));
}

TEST_F(CardFieldNotes, ACardOnTheBoardIsNotTakenByTheTurnNorTheDeadCards) {
    type(widget.flopText(), QStringLiteral("AhKd2c"));
    type(widget.turnText(), QStringLiteral("Ah"));
    EXPECT_EQ(widget.getTurn(), "");
    EXPECT_EQ(widget.turnText()->toolTip(), QStringLiteral("Ah is already on the board"));

    type(widget.deadText(), QStringLiteral("7sKd2c"));
    EXPECT_EQ(widget.getDeadCards(), "7s");
    EXPECT_EQ(widget.deadText()->toolTip(), QStringLiteral("Kd, 2c are already on the board"));
    // The flop's note is its own and stays empty.
    EXPECT_TRUE(widget.flopText()->toolTip().isEmpty());
}

TEST_F(CardFieldNotes, ADeadCardIsNotTakenByTheFlop) {
    type(widget.deadText(), QStringLiteral("Ah"));
    type(widget.flopText(), QStringLiteral("AhKd2c"));
    EXPECT_EQ(widget.getFlop(), "Kd2c");
    EXPECT_EQ(widget.flopText()->toolTip(), QStringLiteral("Ah is already among the dead cards"));
}

TEST_F(CardFieldNotes, PiecesThatAreNoCardsAreNotUnderstood) {
    type(widget.flopText(), QStringLiteral("AhZzKd"));
    EXPECT_EQ(widget.getFlop(), "AhKd");
    EXPECT_EQ(widget.flopText()->toolTip(), QStringLiteral("not understood: Zz"));

    // Several reasons at once, in the order of the text.
    type(widget.flopText(), QStringLiteral("Ah1dKd2c9c"));
    EXPECT_EQ(widget.getFlop(), "AhKd2c");
    EXPECT_EQ(widget.flopText()->toolTip(),
              QStringLiteral("not understood: 1d; a flop has three cards: 9c dropped"));
}

TEST_F(CardFieldNotes, ACardGivenTwiceIsNamed) {
    type(widget.flopText(), QStringLiteral("AhAhKd"));
    EXPECT_EQ(widget.getFlop(), "AhKd");
    EXPECT_EQ(widget.flopText()->toolTip(), QStringLiteral("Ah is given twice"));
}

TEST_F(CardFieldNotes, AHalfTypedCardIsJudgedOnlyWhenTheEditingEnds) {
    type(widget.flopText(), QStringLiteral("AhK"));
    EXPECT_EQ(widget.getFlop(), "Ah");
    EXPECT_TRUE(widget.flopText()->toolTip().isEmpty());
    finish(widget.flopText());
    EXPECT_EQ(widget.flopText()->text(), QStringLiteral("Ah"));
    EXPECT_EQ(widget.flopText()->toolTip(), QStringLiteral("not understood: K"));
}

TEST_F(CardFieldNotes, ShufflingAndClearingAreEditsThatEndTheNote) {
    type(widget.flopText(), QStringLiteral("AhKd2c9c"));
    ASSERT_FALSE(widget.flopText()->toolTip().isEmpty());
    widget.onShuffleFlop(false);
    EXPECT_TRUE(widget.flopText()->toolTip().isEmpty());

    type(widget.turnText(), QStringLiteral("Zz"));
    ASSERT_FALSE(widget.turnText()->toolTip().isEmpty());
    widget.onClearTurnCard();
    EXPECT_TRUE(widget.turnText()->toolTip().isEmpty());
}

TEST_F(CardFieldNotes, ACleanTextNamesNothing) {
    type(widget.flopText(), QStringLiteral("ahKD2C"));
    EXPECT_EQ(widget.getFlop(), "AhKd2c");
    EXPECT_TRUE(widget.flopText()->toolTip().isEmpty());
    finish(widget.flopText());
    EXPECT_TRUE(widget.flopText()->toolTip().isEmpty());
    EXPECT_EQ(notePixels(*widget.flopText()), 0);
}

} // namespace
