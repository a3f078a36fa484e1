// The import flow as a player meets it: the messages of a hand that does not read, of an
// empty name and of a hand without hero; the name proposed from the board; the choice of
// one hand out of many, the last one offered first; and the scenario that comes out.

#include "HandHistorySamples.h"
#include "ModalDriver.h"

#include "handhistory/ui/ChooseHandDialog.h"
#include "handhistory/ui/HandHistoryImport.h"

#include <QApplication>
#include <QClipboard>
#include <QInputDialog>
#include <QTableWidget>
#include <gtest/gtest.h>

#include <bitset>

namespace {

QString fileText(const std::string& file) {
    std::string text;
    for (const SampleHand& hand : sampleHandsOf(file))
        text += hand.text + "\n";
    return QString::fromUtf8(text.c_str());
}

// Answers the name question with `name` and records the proposed text.
void answerName(ModalDriver& modal, const QString& name, QString* proposed,
                QString* title = nullptr) {
    modal.onOtherModal([=](QWidget* widget) {
        auto* dialog = qobject_cast<QInputDialog*>(widget);
        ASSERT_NE(dialog, nullptr) << widget->metaObject()->className();
        *proposed = dialog->textValue();
        if (title)
            *title = dialog->windowTitle() + "|" + dialog->labelText();
        dialog->setTextValue(name);
        QTimer::singleShot(10, dialog, &QDialog::accept);
    });
}

int combinations(const Scenario& scenario) {
    int count = 0;
    for (const unsigned int suits : scenario.player1.front().suits)
        count += static_cast<int>(std::bitset<32>(suits).count());
    return count;
}

} // namespace

TEST(HandHistoryImport, TextThatDoesNotReadShowsTheParseErrorWithTheMailLink) {
    ModalDriver modal;
    modal.press(QMessageBox::Ok);
    const std::optional<Scenario> scenario =
        HandHistoryImport(nullptr).run(HandHistoryImport::Mode::Lines, "no hand at all");
    EXPECT_FALSE(scenario);
    ASSERT_EQ(modal.boxes().size(), 1);
    EXPECT_EQ(modal.boxes()[0].title, "Parse Error");
    EXPECT_TRUE(modal.boxes()[0].text.startsWith(
        "Hand History could not be parsed.<br/><br/>Please make sure that you use the copy "
        "without stats.<br/><br/>If the hand history still cannot be parsed, please mail it to "))
        << modal.boxes()[0].text.toStdString();
    EXPECT_TRUE(modal.boxes()[0].text.contains(
        "mailto:support@quorvane.com?subject=HandHistory%20Import%20Error&body="));
    EXPECT_EQ(modal.boxes()[0].icon, QMessageBox::Warning);
}

TEST(HandHistoryImport, OneHandImportsDirectlyWithItsLines) {
    ModalDriver modal;
    QString proposed;
    QString question;
    answerName(modal, "Merge 5-bet", &proposed, &question);
    const std::optional<Scenario> scenario = HandHistoryImport(nullptr).run(
        HandHistoryImport::Mode::Lines, fileText("merge-player-withshowdown.txt"));
    ASSERT_TRUE(scenario);
    EXPECT_EQ(proposed, "Board: JsQhJd6hTh");
    EXPECT_EQ(question, "Name of Scenario|How should the the new scenario be named?");
    EXPECT_EQ(scenario->name, "Merge 5-bet");
    EXPECT_EQ(scenario->board, "JsQhJd6hTh");
    EXPECT_EQ(scenario->deadCards, "");
    EXPECT_EQ(scenario->player1.front().name, "Full Range");
    EXPECT_EQ(scenario->player2.front().name, "Full Range");
    // No "Dealt to" in this hand: the first raiser is hero, and his cards are unknown.
    EXPECT_EQ(combinations(*scenario), 0);
    EXPECT_EQ(scenario->lines->size(), 12u);
    EXPECT_TRUE(modal.boxes().isEmpty());
}

TEST(HandHistoryImport, BoardAndHeroOnlyHasTheHerosHandAndNoLines) {
    ModalDriver modal;
    QString proposed;
    answerName(modal, "Tourney hand", &proposed);
    const QString text =
        QString::fromUtf8(sampleHandsOf("888-tournament-many.txt").at(0).text.c_str());
    const std::optional<Scenario> scenario =
        HandHistoryImport(nullptr).run(HandHistoryImport::Mode::BoardAndHeroOnly, text);
    ASSERT_TRUE(scenario);
    EXPECT_TRUE(scenario->lines->empty());
    // Kd8h: one combination of the 169 classes' suits.
    EXPECT_EQ(combinations(*scenario), 1);
    EXPECT_EQ(proposed, "Board: 2d7dQd3d9h");
}

TEST(HandHistoryImport, EmptyNameIsRefusedWithItsMessage) {
    ModalDriver modal;
    QString proposed;
    answerName(modal, "", &proposed);
    modal.press(QMessageBox::Ok);
    const std::optional<Scenario> scenario = HandHistoryImport(nullptr).run(
        HandHistoryImport::Mode::Lines, fileText("pacific-player-withshowdown.txt"));
    EXPECT_FALSE(scenario);
    ASSERT_EQ(modal.boxes().size(), 1);
    EXPECT_EQ(modal.boxes()[0].title, "No Label given");
    EXPECT_EQ(modal.boxes()[0].text,
              "A label for the scenario has to be entered. No lines have been imported.");
}

TEST(HandHistoryImport, HandWithoutHeroAndWithoutPreflopRaiseIsDropped) {
    ModalDriver modal;
    QString proposed;
    answerName(modal, "Party", &proposed);
    modal.press(QMessageBox::Ok);
    const std::optional<Scenario> scenario = HandHistoryImport(nullptr).run(
        HandHistoryImport::Mode::Lines, fileText("partypoker-player-withshowdown.txt"));
    EXPECT_FALSE(scenario);
    ASSERT_EQ(modal.boxes().size(), 1);
    EXPECT_EQ(modal.boxes()[0].title, "Parse Error");
    EXPECT_EQ(modal.boxes()[0].text,
              "No hero could be found or determined by preflop actions (no raise preflop?).");
}

TEST(HandHistoryImport, SeveralHandsOfferTheLastAndImportTheChosenOne) {
    ModalDriver modal;
    int shown = -1;
    int selected = -1;
    QString proposed;
    modal.onOtherModal([&](QWidget* widget) {
        if (auto* choose = qobject_cast<ChooseHandDialog*>(widget)) {
            shown = choose->table()->rowCount();
            selected = choose->table()->currentRow();
            EXPECT_EQ(choose->table()->item(0, 0)->text(), "13549887181");
            EXPECT_EQ(choose->table()->item(0, 1)->text(), "$0.5/$1");
            choose->table()->selectRow(0);
            QTimer::singleShot(10, choose, &QDialog::accept);
        } else if (auto* name = qobject_cast<QInputDialog*>(widget)) {
            proposed = name->textValue();
            QTimer::singleShot(10, name, &QDialog::accept);
        } else {
            ADD_FAILURE() << widget->metaObject()->className();
        }
    });
    QApplication::clipboard()->setText(fileText("partypoker-multiplehands-10multiplehands.txt"));
    const std::optional<Scenario> scenario =
        HandHistoryImport(nullptr).run(HandHistoryImport::Mode::Lines);
    EXPECT_EQ(shown, 10);
    EXPECT_EQ(selected, 9);
    ASSERT_TRUE(scenario);
    // The first hand of the file: its board and name.
    EXPECT_EQ(scenario->name, proposed.toStdString());
    EXPECT_EQ(proposed.toStdString(), "Board: " + scenario->board);
    EXPECT_FALSE(scenario->lines->empty());
}

TEST(HandHistoryImport, CancellingTheChoiceImportsNothing) {
    ModalDriver modal;
    modal.onOtherModal([](QWidget* widget) {
        auto* dialog = qobject_cast<QDialog*>(widget);
        ASSERT_NE(dialog, nullptr);
        QTimer::singleShot(10, dialog, &QDialog::reject);
    });
    EXPECT_FALSE(HandHistoryImport(nullptr).run(
        HandHistoryImport::Mode::Lines, fileText("winamax-multiplehands-10multiplehands.txt")));
    EXPECT_TRUE(modal.boxes().isEmpty());
}
