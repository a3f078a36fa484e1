#include "CardTestHelpers.h"

#include "selection/BoardCardsWidget.h"
#include "selection/CardRange.h"
#include "selection/CardRangeText.h"
#include "selection/CardSelectionDialog.h"
#include "selection/CardSelectionTable.h"
#include "support/AssertionRecorder.h"

#include <QClipboard>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

using namespace CardTestHelpers;

namespace {

class BoardCardsWidgetTest : public ::testing::Test {
protected:
    void SetUp() override {
        widget.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&widget));
    }

    // Types into a field as a user does: focus, select all, type, leave.
    void type(CardRangeText* field, const QString& text) {
        field->setFocus();
        field->selectAll();
        if (text.isEmpty()) {
            QTest::keyClick(field, Qt::Key_Delete);
        } else {
            QTest::keyClicks(field, text);
        }
    }

    template <typename T>
    T* child(const char* name) {
        T* found = widget.findChild<T*>(QString::fromLatin1(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }

    static std::vector<std::string> cardsOf(const std::string& text) {
        std::vector<std::string> cards;
        for (std::size_t i = 0; i + 1 < text.size(); i += 2) {
            cards.push_back(text.substr(i, 2));
        }
        return cards;
    }

    BoardCardsWidget widget;
};

} // namespace

TEST_F(BoardCardsWidgetTest, TextsToolTipsAndPictures) {
    EXPECT_EQ(child<QLabel>("flopLabel")->text(), QStringLiteral("Flop:"));
    EXPECT_EQ(child<QLabel>("turnLabel")->text(), QStringLiteral("Turn:"));
    EXPECT_EQ(child<QLabel>("riverLabel")->text(), QStringLiteral("River:"));
    EXPECT_EQ(child<QLabel>("deadLabel")->text(), QStringLiteral("Dead:"));
    EXPECT_EQ(child<QPushButton>("selectFlopButton")->text(), QStringLiteral("Select Cards"));
    EXPECT_EQ(child<QPushButton>("selectTurnButton")->text(), QStringLiteral("Select Card"));
    EXPECT_EQ(child<QPushButton>("selectRiverButton")->text(), QStringLiteral("Select Card"));
    EXPECT_EQ(child<QPushButton>("selectDeadButton")->text(), QStringLiteral("Select Cards"));
    EXPECT_EQ(child<QToolButton>("shuffleFlopButton")->toolTip(),
              QStringLiteral("Random Shuffle Flop Cards"));
    EXPECT_EQ(child<QToolButton>("shuffleTurnButton")->toolTip(),
              QStringLiteral("Random Shuffle Flop + Turn Cards"));
    EXPECT_EQ(child<QToolButton>("shuffleRiverButton")->toolTip(),
              QStringLiteral("Random Shuffle Flop - River Cards"));
    EXPECT_EQ(widget.findChild<QToolButton*>("shuffleDeadButton"), nullptr);
    EXPECT_FALSE(child<QToolButton>("shuffleFlopButton")->icon().isNull());
    for (const char* name :
         {"clearFlopButton", "clearTurnButton", "clearRiverButton", "clearDeadButton"}) {
        EXPECT_EQ(child<QPushButton>(name)->text(), QStringLiteral("Clear Range"));
    }
    for (CardRange* range :
         {widget.flopRange(), widget.turnRange(), widget.riverRange(), widget.deadRange()}) {
        EXPECT_EQ(range->toolTip(), QStringLiteral("Doubleclick for card selection."));
    }
    EXPECT_EQ(widget.flopRange()->maxCards(), 3u);
    EXPECT_EQ(widget.turnRange()->maxCards(), 1u);
    EXPECT_EQ(widget.riverRange()->maxCards(), 1u);
    EXPECT_FALSE(QPixmap(":/newCards.png").isNull());
}

TEST_F(BoardCardsWidgetTest, TypingAhKDInTheFlopGivesAhAndKd) {
    QSignalSpy changes(&widget, &BoardCardsWidget::changeOccured);
    type(widget.flopText(), "ahKD");
    ASSERT_EQ(widget.flopRange()->count(), 2);
    EXPECT_EQ(widget.flopRange()->item(0)->text(), QStringLiteral("Ah"));
    EXPECT_EQ(widget.flopRange()->item(1)->text(), QStringLiteral("Kd"));
    EXPECT_EQ(widget.getFlop(), "AhKd");
    EXPECT_EQ(widget.getBoard(), "AhKd");
    EXPECT_EQ(changes.count(), 4); // one per keystroke
}

TEST_F(BoardCardsWidgetTest, TypingACardOfTheTurnIntoTheFlopDropsIt) {
    type(widget.flopText(), "QsJhTc");
    type(widget.turnText(), "2c");
    ASSERT_EQ(widget.getTurn(), "2c");
    // Pasted over the whole field: one change of text. (Typed key by key, the flop would
    // first shrink below three cards, and that clears the turn.)
    QApplication::clipboard()->setText("2cQsJhTc");
    widget.flopText()->setFocus();
    widget.flopText()->selectAll();
    QTest::keyClick(widget.flopText(), Qt::Key_V, Qt::ControlModifier);
    ASSERT_EQ(widget.flopText()->text(), QStringLiteral("2cQsJhTc"));
    EXPECT_EQ(widget.getFlop(), "QsJhTc");
    EXPECT_EQ(widget.getTurn(), "2c");
    // The dropped card leaves the text when editing ends.
    QTest::keyClick(widget.flopText(), Qt::Key_Tab);
    EXPECT_EQ(widget.flopText()->text(), QStringLiteral("QsJhTc"));
    // Dead cards refuse board cards the same way.
    type(widget.deadText(), "Qs9d");
    EXPECT_EQ(widget.getDeadCards(), "9d");
}

TEST_F(BoardCardsWidgetTest, RemovingAFlopCardClearsTurnAndRiver) {
    type(widget.flopText(), "QsJhTc");
    type(widget.turnText(), "2c");
    type(widget.riverText(), "3d");
    ASSERT_EQ(widget.getBoard(), "QsJhTc2c3d");
    widget.flopText()->setFocus();
    widget.flopText()->end(false);
    QTest::keyClick(widget.flopText(), Qt::Key_Backspace);
    EXPECT_EQ(widget.getFlop(), "QsJh");
    EXPECT_EQ(widget.getTurn(), "");
    EXPECT_EQ(widget.getRiver(), "");
    EXPECT_EQ(widget.turnText()->text(), QString());
    EXPECT_EQ(widget.riverText()->text(), QString());
    EXPECT_FALSE(widget.turnText()->isEnabled());
    EXPECT_FALSE(widget.riverText()->isEnabled());
}

TEST_F(BoardCardsWidgetTest, RemovingTheTurnClearsTheRiver) {
    widget.setBoard("QsJhTc2c3d");
    ASSERT_EQ(widget.getBoard(), "QsJhTc2c3d");
    type(widget.turnText(), "");
    EXPECT_EQ(widget.getBoard(), "QsJhTc");
    EXPECT_FALSE(widget.riverText()->isEnabled());
}

TEST_F(BoardCardsWidgetTest, TurnStaysDisabledUntilTheFlopHasThreeCards) {
    const auto turnControls = [&] {
        return std::vector<bool>{
            widget.turnText()->isEnabled(), child<QPushButton>("selectTurnButton")->isEnabled(),
            child<QToolButton>("shuffleTurnButton")->isEnabled(), widget.turnRange()->isEnabled()};
    };
    const std::vector<bool> off(4, false);
    const std::vector<bool> on(4, true);
    EXPECT_EQ(turnControls(), off);
    widget.flopText()->setFocus();
    QTest::keyClicks(widget.flopText(), "Qs");
    EXPECT_EQ(turnControls(), off);
    QTest::keyClicks(widget.flopText(), "Jh");
    EXPECT_EQ(turnControls(), off);
    QTest::keyClicks(widget.flopText(), "T");
    EXPECT_EQ(turnControls(), off);
    QTest::keyClicks(widget.flopText(), "c");
    EXPECT_EQ(turnControls(), on);
    EXPECT_FALSE(widget.riverText()->isEnabled());
    type(widget.turnText(), "9d");
    EXPECT_TRUE(widget.riverText()->isEnabled());
    EXPECT_TRUE(child<QPushButton>("selectRiverButton")->isEnabled());
    EXPECT_TRUE(child<QToolButton>("shuffleRiverButton")->isEnabled());
}

TEST_F(BoardCardsWidgetTest, StronglyDisabledTurnStaysOffWithAFullFlop) {
    widget.setStronglyDisabled(widget.turnRange(), true);
    type(widget.flopText(), "QsJhTc");
    EXPECT_FALSE(widget.turnText()->isEnabled());
    EXPECT_FALSE(widget.turnRange()->isEnabled());
    widget.setStronglyDisabled(widget.turnRange(), false);
    EXPECT_TRUE(widget.turnText()->isEnabled());
}

TEST_F(BoardCardsWidgetTest, ShufflingTheFlopNeverDrawsTheDeadCards) {
    type(widget.deadText(), "AhAd");
    ASSERT_EQ(widget.getDeadCards(), "AhAd");
    seedRandom(12345);
    std::set<std::string> seen;
    for (int i = 0; i < 600; ++i) {
        widget.onShuffleFlop(i % 2 == 0);
        const std::vector<std::string> flop = cardsOf(widget.getFlop());
        ASSERT_EQ(flop.size(), 3u);
        EXPECT_EQ(std::set<std::string>(flop.begin(), flop.end()).size(), 3u);
        for (const std::string& card : flop) {
            ASSERT_NE(card, "Ah");
            ASSERT_NE(card, "Ad");
            seen.insert(card);
        }
        EXPECT_EQ(widget.flopText()->text().toStdString(), widget.getFlop());
        EXPECT_EQ(widget.getDeadCards(), "AhAd");
    }
    // Every other card turns up.
    EXPECT_EQ(seen.size(), 50u);
}

TEST_F(BoardCardsWidgetTest, ShufflingClearsWhatFollowsAndEmits) {
    widget.setBoard("QsJhTc2c3d");
    QSignalSpy changes(&widget, &BoardCardsWidget::changeOccured);
    widget.onShuffleFlop(false);
    EXPECT_EQ(widget.getTurn(), "");
    EXPECT_EQ(widget.getRiver(), "");
    EXPECT_EQ(changes.count(), 1);
    EXPECT_TRUE(widget.turnText()->isEnabled());
}

TEST_F(BoardCardsWidgetTest, ShufflingTheTurnDrawsAFlopFirstWhenThereIsNone) {
    seedRandom(99);
    type(widget.deadText(), "2c3c4c");
    for (int i = 0; i < 100; ++i) {
        widget.onClearFlopCards();
        widget.onShuffleTurn(false);
        const std::vector<std::string> board = cardsOf(widget.getBoard());
        ASSERT_EQ(board.size(), 4u);
        EXPECT_EQ(std::set<std::string>(board.begin(), board.end()).size(), 4u);
        for (const std::string& card : board) {
            EXPECT_EQ(widget.getDeadCards().find(card), std::string::npos);
        }
    }
    // A partial flop (reachable from code only) is drawn anew as well.
    widget.setBoard("QsJh");
    widget.onShuffleTurn(false);
    EXPECT_EQ(cardsOf(widget.getBoard()).size(), 4u);
    EXPECT_TRUE(widget.riverText()->isEnabled());
    // With a flop present only the turn is drawn, never one of the flop's cards.
    widget.setBoard("QsJhTc");
    for (int i = 0; i < 100; ++i) {
        widget.onShuffleTurn(false);
        EXPECT_EQ(widget.getFlop(), "QsJhTc");
        ASSERT_EQ(widget.getTurn().size(), 2u);
        for (const std::string& taken : cardsOf("QsJhTc2c3c4c")) {
            EXPECT_NE(widget.getTurn(), taken);
        }
    }
}

TEST_F(BoardCardsWidgetTest, ShufflingTheRiverCompletesTheBoard) {
    seedRandom(5);
    widget.setDeadCards("KdKh");
    for (int i = 0; i < 100; ++i) {
        widget.onClearFlopCards();
        widget.onShuffleRiver(true);
        const std::vector<std::string> board = cardsOf(widget.getBoard());
        ASSERT_EQ(board.size(), 5u);
        EXPECT_EQ(std::set<std::string>(board.begin(), board.end()).size(), 5u);
        for (const std::string& card : board) {
            EXPECT_NE(card, "Kd");
            EXPECT_NE(card, "Kh");
        }
    }
    widget.setBoard("QsJhTc9d");
    widget.onShuffleRiver(false);
    EXPECT_EQ(widget.getBoard().substr(0, 8), "QsJhTc9d");
    EXPECT_EQ(widget.getBoard().size(), 10u);
}

TEST_F(BoardCardsWidgetTest, ShufflingDeadCardsDrawsTwentyOneOffTheBoard) {
    seedRandom(3);
    widget.setBoard("QsJhTc9d8d");
    widget.onShuffleDeadcards();
    const std::vector<std::string> dead = cardsOf(widget.getDeadCards());
    ASSERT_EQ(dead.size(), 21u);
    EXPECT_EQ(std::set<std::string>(dead.begin(), dead.end()).size(), 21u);
    for (const std::string& card : dead) {
        EXPECT_EQ(widget.getBoard().find(card), std::string::npos);
    }
    EXPECT_EQ(widget.getBoard(), "QsJhTc9d8d");
}

TEST_F(BoardCardsWidgetTest, RandomCardsWithFewCardsLeft) {
    std::string allButTwo;
    for (const char* suit : {"d", "h", "s", "c"}) {
        for (const char* value :
             {"2", "3", "4", "5", "6", "7", "8", "9", "T", "J", "Q", "K", "A"}) {
            const std::string card = std::string(value) + suit;
            if (card != "7h" && card != "Ts") {
                allButTwo += card;
            }
        }
    }
    const std::string two =
        BoardCardsWidget::randomCards(allButTwo, 2, Range::RandomSource::shared());
    EXPECT_TRUE(two == "7hTs" || two == "Ts7h") << two;
    AssertionRecorder recorder;
    const std::string three =
        BoardCardsWidget::randomCards(allButTwo, 3, Range::RandomSource::shared());
    EXPECT_TRUE(recorder.saw("Not enough cards left to draw."));
    EXPECT_EQ(three.size(), 4u);
}

TEST_F(BoardCardsWidgetTest, ClearButtonsClearAndApplyTheRules) {
    widget.setBoard("QsJhTc2c3d");
    widget.setDeadCards("9d");
    QSignalSpy changes(&widget, &BoardCardsWidget::changeOccured);
    QTest::mouseClick(child<QPushButton>("clearRiverButton"), Qt::LeftButton);
    EXPECT_EQ(widget.getBoard(), "QsJhTc2c");
    QTest::mouseClick(child<QPushButton>("clearDeadButton"), Qt::LeftButton);
    EXPECT_EQ(widget.getDeadCards(), "");
    EXPECT_EQ(widget.deadText()->text(), QString());
    QTest::mouseClick(child<QPushButton>("clearFlopButton"), Qt::LeftButton);
    EXPECT_EQ(widget.getBoard(), "");
    EXPECT_EQ(widget.flopText()->text(), QString());
    EXPECT_FALSE(widget.turnText()->isEnabled());
    EXPECT_EQ(changes.count(), 3);
}

TEST_F(BoardCardsWidgetTest, CallbackReceivesTheFourTexts) {
    std::vector<std::vector<std::string>> calls;
    widget.setCallback([&](const std::string& flop, const std::string& turn,
                           const std::string& river, const std::string& dead) {
        calls.push_back({flop, turn, river, dead});
    });
    type(widget.flopText(), "QsJhTc");
    type(widget.turnText(), "2c");
    type(widget.deadText(), "Ad");
    ASSERT_FALSE(calls.empty());
    EXPECT_EQ(calls.back(), (std::vector<std::string>{"QsJhTc", "2c", "", "Ad"}));
    const std::size_t before = calls.size();
    widget.onClearTurnCard();
    EXPECT_EQ(calls.size(), before + 1);
    EXPECT_EQ(calls.back(), (std::vector<std::string>{"QsJhTc", "", "", "Ad"}));
}

TEST_F(BoardCardsWidgetTest, SettingTheBoardIsNoUserChange) {
    QSignalSpy changes(&widget, &BoardCardsWidget::changeOccured);
    widget.setBoard("ahkd2C7s");
    widget.setDeadCards("9d9h");
    EXPECT_EQ(widget.getFlop(), "AhKd2c");
    EXPECT_EQ(widget.getTurn(), "7s");
    EXPECT_EQ(widget.getBoard(), "AhKd2c7s");
    EXPECT_EQ(widget.flopText()->text(), QStringLiteral("AhKd2c"));
    EXPECT_EQ(widget.getDeadCards(), "9d9h");
    EXPECT_TRUE(widget.riverText()->isEnabled());
    EXPECT_EQ(changes.count(), 0);
    // A turn without a full flop is refused by the rules.
    widget.setBoard("AhKd");
    EXPECT_EQ(widget.getBoard(), "AhKd");
    widget.clearAll();
    EXPECT_EQ(widget.getBoard(), "");
    EXPECT_EQ(widget.getDeadCards(), "");
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(BoardCardsWidgetTest, SelectButtonOpensTheDialogAndAcceptRefillsTheField) {
    QSignalSpy changes(&widget, &BoardCardsWidget::changeOccured);
    bool seen = false;
    whenModalShows([&](QWidget* modal) {
        auto* dialog = qobject_cast<CardSelectionDialog*>(modal);
        ASSERT_NE(dialog, nullptr);
        seen = true;
        EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Select Flop Cards"));
        for (const char* card : {"Ah", "Kd", "2c"}) {
            click(dialog->table(), card);
        }
        QTest::mouseClick(dialog->okButton(), Qt::LeftButton);
    });
    QTest::mouseClick(child<QPushButton>("selectFlopButton"), Qt::LeftButton);
    EXPECT_TRUE(seen);
    EXPECT_EQ(widget.getFlop(), "AhKd2c");
    EXPECT_EQ(widget.flopText()->text(), QStringLiteral("AhKd2c"));
    EXPECT_TRUE(widget.turnText()->isEnabled());
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(BoardCardsWidgetTest, DoubleClickOnAFieldStepsThroughTheBoardWithNext) {
    bool seen = false;
    whenModalShows([&](QWidget* modal) {
        auto* dialog = qobject_cast<CardSelectionDialog*>(modal);
        ASSERT_NE(dialog, nullptr);
        seen = true;
        for (const char* card : {"Qs", "Jh", "Tc"}) {
            click(dialog->table(), card);
        }
        QTest::mouseClick(dialog->nextButton(), Qt::LeftButton);
        EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Select Turn Cards"));
        click(dialog->table(), "9d");
        QTest::mouseClick(dialog->nextButton(), Qt::LeftButton);
        EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Select River Cards"));
        click(dialog->table(), "Qs"); // on the flop: blocked
        click(dialog->table(), "8d");
        QTest::mouseClick(dialog->okButton(), Qt::LeftButton);
    });
    QTest::mouseDClick(widget.flopRange()->viewport(), Qt::LeftButton, Qt::NoModifier,
                       QPoint(10, 10));
    EXPECT_TRUE(seen);
    EXPECT_EQ(widget.getBoard(), "QsJhTc9d8d");
    EXPECT_EQ(widget.riverText()->text(), QStringLiteral("8d"));
}

TEST_F(BoardCardsWidgetTest, CancelledDialogLeavesTheBoardAsItWas) {
    widget.setBoard("QsJhTc9d");
    QSignalSpy changes(&widget, &BoardCardsWidget::changeOccured);
    whenModalShows([&](QWidget* modal) {
        auto* dialog = qobject_cast<CardSelectionDialog*>(modal);
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Select Turn Cards"));
        click(dialog->table(), "9d", Qt::RightButton);
        QTest::mouseClick(dialog->backButton(), Qt::LeftButton);
        click(dialog->table(), "Qs", Qt::RightButton);
        click(dialog->table(), "9d");
        dialog->reject();
    });
    QTest::mouseClick(child<QPushButton>("selectTurnButton"), Qt::LeftButton);
    EXPECT_EQ(widget.getBoard(), "QsJhTc9d");
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(BoardCardsWidgetTest, DeadCardDialogBlocksTheBoard) {
    widget.setBoard("QsJhTc");
    whenModalShows([&](QWidget* modal) {
        auto* dialog = qobject_cast<CardSelectionDialog*>(modal);
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Select Dead Cards"));
        EXPECT_EQ(dialog->table()->stateOf("Qs"), CardSelectionTable::CellState::Blocked);
        EXPECT_FALSE(dialog->nextButton()->isVisible());
        click(dialog->table(), "Qs");
        click(dialog->table(), "2d");
        click(dialog->table(), "3d");
        EXPECT_TRUE(dialog->okButton()->isEnabled());
        QTest::mouseClick(dialog->okButton(), Qt::LeftButton);
    });
    QTest::mouseClick(child<QPushButton>("selectDeadButton"), Qt::LeftButton);
    EXPECT_EQ(widget.getDeadCards(), "3d2d");
    EXPECT_EQ(widget.deadText()->text(), QStringLiteral("3d2d"));
}
