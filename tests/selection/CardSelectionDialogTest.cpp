#include "CardTestHelpers.h"

#include "selection/CardRange.h"
#include "selection/CardSelectionDialog.h"
#include "selection/CardSelectionTable.h"
#include "support/AssertionRecorder.h"

#include <QCheckBox>
#include <QPushButton>
#include <QSettings>
#include <QTest>
#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <vector>

using namespace CardTestHelpers;

namespace {

// The board's four fields as BoardCardsWidget wires them.
class CardSelectionDialogTest : public ::testing::Test {
protected:
    void SetUp() override {
        flop.setMaxCards(3);
        turn.setMaxCards(1);
        river.setMaxCards(1);
        dead.setMaxCards(21);
        flop.setSelectionTitle("Select Flop Cards");
        turn.setSelectionTitle("Select Turn Cards");
        river.setSelectionTitle("Select River Cards");
        dead.setSelectionTitle("Select Dead Cards");
        flop.setOtherRanges({&turn, &river, &dead});
        turn.setOtherRanges({&flop, &river, &dead});
        river.setOtherRanges({&flop, &turn, &dead});
        dead.setOtherRanges({&flop, &turn, &river});
        QSettings settings("Velmara", "Quorvane");
        settings.remove("optionmenu/unselectCardWithRightButton");
    }

    std::unique_ptr<CardSelectionDialog> open(CardRange* current) {
        auto dialog = std::make_unique<CardSelectionDialog>(
            current, std::vector<CardRange*>{&flop, &turn, &river}, std::vector<CardRange*>{&dead});
        dialog->show();
        return dialog;
    }

    struct Buttons {
        bool back, next, ok;
        bool operator==(const Buttons& o) const {
            return back == o.back && next == o.next && ok == o.ok;
        }
        friend std::ostream& operator<<(std::ostream& out, const Buttons& b) {
            return out << "back " << b.back << ", next " << b.next << ", ok " << b.ok;
        }
    };
    static Buttons buttons(const CardSelectionDialog& dialog) {
        return {dialog.backButton()->isEnabled(), dialog.nextButton()->isEnabled(),
                dialog.okButton()->isEnabled()};
    }

    CardRange flop, turn, river, dead;
};

} // namespace

TEST_F(CardSelectionDialogTest, TextsAndTitles) {
    auto dialog = open(&flop);
    EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Select Flop Cards"));
    EXPECT_EQ(dialog->findChild<QCheckBox*>("unselectCheckbox")->text(),
              QStringLiteral("&Unselect Cards With Right Mouse Button"));
    EXPECT_EQ(dialog->backButton()->text(), QStringLiteral("<- &Back"));
    EXPECT_EQ(dialog->nextButton()->text(), QStringLiteral("&Next ->"));
    EXPECT_EQ(dialog->randomButton()->text(), QStringLiteral("&Random"));
    EXPECT_EQ(dialog->randomButton()->toolTip(), QStringLiteral("Select Random Cards"));
    EXPECT_EQ(dialog->findChild<QPushButton*>("cancelButton")->text(), QStringLiteral("&Cancel"));

    CardRange untitled;
    CardSelectionDialog plain(&untitled, {}, {});
    EXPECT_EQ(plain.windowTitle(), QStringLiteral("Dialog"));
}

TEST_F(CardSelectionDialogTest, FlopButtonsFollowTheCount) {
    auto dialog = open(&flop);
    CardSelectionTable* table = dialog->table();
    EXPECT_EQ(table->maxMarked(), 3u);
    EXPECT_EQ(buttons(*dialog), (Buttons{false, false, true}));
    click(table, "Qs");
    click(table, "Jh");
    EXPECT_EQ(buttons(*dialog), (Buttons{false, false, true}));
    click(table, "Tc");
    EXPECT_EQ(buttons(*dialog), (Buttons{false, true, true}));
}

TEST_F(CardSelectionDialogTest, ShortFlopCannotBeAcceptedWhileTheTurnHoldsACard) {
    flop.setCardsFromText("QsJhTc");
    turn.setCardsFromText("9d");
    auto dialog = open(&flop);
    EXPECT_EQ(dialog->table()->stateOf("9d"), CardSelectionTable::CellState::Blocked);
    EXPECT_EQ(buttons(*dialog), (Buttons{false, true, true}));
    click(dialog->table(), "Qs", Qt::RightButton);
    EXPECT_EQ(buttons(*dialog), (Buttons{false, false, false}));
}

TEST_F(CardSelectionDialogTest, NextIsOffTowardsAStronglyDisabledField) {
    CardRange::setStronglyDisabled(&turn, true);
    auto dialog = open(&flop);
    for (const char* card : {"Qs", "Jh", "Tc"}) {
        click(dialog->table(), card);
    }
    EXPECT_EQ(buttons(*dialog), (Buttons{false, false, true}));
    dialog->goToNextRange(); // refused as well when called directly
    EXPECT_EQ(dialog->currentRange(), &flop);
}

TEST_F(CardSelectionDialogTest, NextAndBackCarryTheMarksBetweenFields) {
    auto dialog = open(&flop);
    CardSelectionTable* table = dialog->table();
    for (const char* card : {"Qs", "Jh", "Tc"}) {
        click(table, card);
    }
    QTest::mouseClick(dialog->nextButton(), Qt::LeftButton);
    EXPECT_EQ(dialog->currentRange(), &turn);
    EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Select Turn Cards"));
    EXPECT_EQ(flop.cardsText(), QStringLiteral("QsJhTc"));
    EXPECT_EQ(table->maxMarked(), 1u);
    EXPECT_EQ(table->markedCount(), 0u);
    EXPECT_EQ(table->stateOf("Qs"), CardSelectionTable::CellState::Blocked);
    // Turn: no card, river empty: only Next is off.
    EXPECT_EQ(buttons(*dialog), (Buttons{true, false, true}));
    click(table, "9d");
    EXPECT_EQ(buttons(*dialog), (Buttons{true, true, true}));
    // A maximum of one: a second click moves the mark.
    click(table, "8d");
    EXPECT_EQ(table->markedText(), QStringLiteral("8d"));
    QTest::mouseClick(dialog->nextButton(), Qt::LeftButton);
    EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Select River Cards"));
    EXPECT_EQ(turn.cardsText(), QStringLiteral("8d"));
    // River: nothing after it, so Next stays off even with its card.
    EXPECT_EQ(buttons(*dialog), (Buttons{true, false, true}));
    click(table, "7d");
    EXPECT_EQ(buttons(*dialog), (Buttons{true, false, true}));
    QTest::mouseClick(dialog->backButton(), Qt::LeftButton);
    EXPECT_EQ(dialog->currentRange(), &turn);
    EXPECT_EQ(river.cardsText(), QStringLiteral("7d"));
    EXPECT_EQ(table->markedText(), QStringLiteral("8d"));
    EXPECT_EQ(table->stateOf("7d"), CardSelectionTable::CellState::Blocked);
    QTest::mouseClick(dialog->backButton(), Qt::LeftButton);
    EXPECT_EQ(dialog->currentRange(), &flop);
    EXPECT_EQ(table->markedText(), QStringLiteral("QsJhTc"));
    QTest::mouseClick(dialog->okButton(), Qt::LeftButton);
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    EXPECT_EQ(flop.cardsText() + turn.cardsText() + river.cardsText(),
              QStringLiteral("QsJhTc8d7d"));
}

TEST_F(CardSelectionDialogTest, EmptyTurnWithARiverBehindItStopsEverything) {
    flop.setCardsFromText("QsJhTc");
    turn.setCardsFromText("9d");
    river.setCardsFromText("8d");
    auto dialog = open(&turn);
    EXPECT_EQ(buttons(*dialog), (Buttons{true, true, true}));
    click(dialog->table(), "9d", Qt::RightButton);
    EXPECT_EQ(buttons(*dialog), (Buttons{false, false, false}));
    click(dialog->table(), "2c");
    EXPECT_EQ(buttons(*dialog), (Buttons{true, true, true}));
}

TEST_F(CardSelectionDialogTest, CancelRestoresEveryFieldEvenMovedCards) {
    flop.setCardsFromText("QsJhTc");
    turn.setCardsFromText("9d");
    auto dialog = open(&turn);
    click(dialog->table(), "9d", Qt::RightButton);
    QTest::mouseClick(dialog->backButton(), Qt::LeftButton);
    click(dialog->table(), "Qs", Qt::RightButton);
    click(dialog->table(), "9d");
    EXPECT_EQ(dialog->table()->markedText(), QStringLiteral("JhTc9d"));
    QTest::mouseClick(dialog->findChild<QPushButton*>("cancelButton"), Qt::LeftButton);
    EXPECT_EQ(dialog->result(), QDialog::Rejected);
    EXPECT_EQ(flop.cardsText(), QStringLiteral("QsJhTc"));
    EXPECT_EQ(turn.cardsText(), QStringLiteral("9d"));
}

TEST_F(CardSelectionDialogTest, RandomButtonFillsTheField) {
    seedRandom(11);
    dead.setCardsFromText("AhAd");
    auto dialog = open(&flop);
    QTest::mouseClick(dialog->randomButton(), Qt::LeftButton);
    EXPECT_EQ(dialog->table()->markedCount(), 3u);
    EXPECT_EQ(dialog->table()->stateOf("Ah"), CardSelectionTable::CellState::Blocked);
    EXPECT_EQ(buttons(*dialog), (Buttons{false, true, true}));
    QTest::mouseClick(dialog->okButton(), Qt::LeftButton);
    EXPECT_EQ(flop.cardCount(), 3u);
    EXPECT_FALSE(flop.holdsCard("Ah"));
    EXPECT_FALSE(flop.holdsCard("Ad"));
}

TEST_F(CardSelectionDialogTest, HandOfTwoCardsNeedsExactlyTwo) {
    CardRange hand;
    hand.setMaxCards(2);
    CardSelectionDialog dialog(&hand, {}, {});
    dialog.setWindowTitle("Select Player1 Cards");
    dialog.setForbiddenCards("QsJhTc");
    dialog.show();
    EXPECT_FALSE(dialog.backButton()->isVisible());
    EXPECT_FALSE(dialog.nextButton()->isVisible());
    EXPECT_FALSE(dialog.okButton()->isEnabled());
    click(dialog.table(), "Qs"); // forbidden
    click(dialog.table(), "Ah");
    EXPECT_FALSE(dialog.okButton()->isEnabled());
    click(dialog.table(), "Ad");
    EXPECT_TRUE(dialog.okButton()->isEnabled());
    click(dialog.table(), "Kd"); // a third is refused
    EXPECT_EQ(dialog.table()->markedText(), QStringLiteral("AdAh"));
    QTest::mouseClick(dialog.okButton(), Qt::LeftButton);
    EXPECT_EQ(hand.cardsText(), QStringLiteral("AdAh"));
}

TEST_F(CardSelectionDialogTest, RightButtonSettingIsReadAndWritten) {
    {
        auto dialog = open(&flop);
        auto* box = dialog->findChild<QCheckBox*>("unselectCheckbox");
        EXPECT_TRUE(box->isChecked()); // default
        EXPECT_TRUE(dialog->table()->unselectsWithRightButton());
        box->click();
        EXPECT_FALSE(dialog->table()->unselectsWithRightButton());
        // Now a right click does nothing and a left click on a marked card unmarks it.
        click(dialog->table(), "Ah");
        click(dialog->table(), "Ah", Qt::RightButton);
        EXPECT_EQ(dialog->table()->markedText(), QStringLiteral("Ah"));
        click(dialog->table(), "Ah");
        EXPECT_EQ(dialog->table()->markedCount(), 0u);
    }
    QSettings settings("Velmara", "Quorvane");
    EXPECT_FALSE(settings.value("optionmenu/unselectCardWithRightButton", true).toBool());
    auto again = open(&flop);
    EXPECT_FALSE(again->findChild<QCheckBox*>("unselectCheckbox")->isChecked());
    EXPECT_FALSE(again->table()->unselectsWithRightButton());
}

TEST_F(CardSelectionDialogTest, MisuseIsAssertedAndLeavesNothingToPress) {
    AssertionRecorder recorder;
    CardSelectionDialog orphan(nullptr, {}, {});
    EXPECT_TRUE(recorder.saw("Card dialog without a field."));
    EXPECT_FALSE(orphan.okButton()->isEnabled());
    orphan.table()->SelectRandomCards(); // no field to react for: still nothing enabled
    EXPECT_FALSE(orphan.okButton()->isEnabled());

    recorder.clear();
    CardRange stray;
    stray.setMaxCards(2);
    CardSelectionDialog outside(&stray, {&flop, &turn, &river}, {});
    EXPECT_TRUE(recorder.saw("Card dialog field not in its row."));
    // Treated as a field on its own.
    EXPECT_FALSE(outside.nextButton()->isEnabled());
    EXPECT_FALSE(outside.okButton()->isEnabled());
}
