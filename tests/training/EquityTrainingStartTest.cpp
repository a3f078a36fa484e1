// The start page: its checks in order, the random cards radios and what they do to the board,
// the range rows with their buttons, and what trainingStarted carries.

#include "TrainingTestHelpers.h"

#include "Range/HandRangeStringReader.h"
#include "selection/BoardCardsWidget.h"
#include "selection/CardRange.h"
#include "selection/CardRangeText.h"
#include "selection/CardSelectionDialog.h"
#include "selection/CardSelectionTable.h"
#include "selection/HandRangeLine.h"
#include "selection/HandSelectionDialog.h"
#include "training/EquityTrainingStart.h"

#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QToolButton>

using namespace TrainingTestHelpers;

namespace {

class EquityTrainingStartTest : public ::testing::Test {
protected:
    // One trainingStarted as the test reads it: the ranges as compact text.
    struct Started {
        std::string hero;
        std::string villain1;
        std::string villain2;
        std::string board;
        std::string deadCards;
        EquityTrainingRandomness randomness;
    };

    void SetUp() override {
        page.setPrompts(recordingPrompts(log));
        QObject::connect(&page, &EquityTrainingStart::trainingStarted, &page,
                         [this](const Range::HandRange& hero, const Range::HandRange& villain1,
                                const Range::HandRange& villain2, const std::string& board,
                                const std::string& deadCards, EquityTrainingRandomness randomness) {
                             started.push_back({compact(hero), compact(villain1), compact(villain2),
                                                board, deadCards, randomness});
                         });
    }
    static std::string compact(const Range::HandRange& range) {
        return Range::HandRangeStringReader(range).compactText();
    }

    void typeInto(HandRangeLine* line, const char* text) {
        typeRange(line, QString::fromLatin1(text));
    }
    void typeBoard(CardRangeText* field, const char* cards) {
        field->setFocus();
        QTest::keyClicks(field, QString::fromLatin1(cards));
        QTest::keyClick(field, Qt::Key_Return);
    }
    void clickStart() {
        QTest::mouseClick(child<QPushButton>(&page, "startTrainingButton"), Qt::LeftButton);
    }
    void choose(const char* radio) { child<QRadioButton>(&page, radio)->click(); }
    std::pair<QString, QString> lastWarning() const {
        return log->warnings.empty() ? std::pair<QString, QString>() : log->warnings.back();
    }

    std::shared_ptr<PromptLog> log = std::make_shared<PromptLog>();
    EquityTrainingStart page;
    std::vector<Started> started;
};

// Runs `body` on the next modal dialog of type T once it shows.
template <typename T>
void onNextDialog(std::function<void(T*)> body) {
    auto poll = std::make_shared<std::function<void(int)>>();
    std::weak_ptr<std::function<void(int)>> weak = poll;
    *poll = [body, weak](int triesLeft) {
        if (auto* dialog = qobject_cast<T*>(QApplication::activeModalWidget())) {
            body(dialog);
        } else if (triesLeft > 0) {
            if (auto self = weak.lock())
                QTimer::singleShot(10, [self, triesLeft] { (*self)(triesLeft - 1); });
        }
    };
    QTimer::singleShot(0, [poll] { (*poll)(500); });
}

void clickCard(CardSelectionTable* table, const QString& card) {
    for (int column = 0; column < CardSelectionTable::Columns; ++column)
        for (int row = 0; row < CardSelectionTable::Rows; ++row)
            if (CardSelectionTable::cardOfCell(column, row) == card)
                QTest::mouseClick(table, Qt::LeftButton, Qt::NoModifier,
                                  CardSelectionTable::cellRect(column, row).center());
}

} // namespace

TEST_F(EquityTrainingStartTest, TheRadiosReadAsTheyShouldAndTheFlopIsDealtByDefault) {
    EXPECT_EQ(child<QRadioButton>(&page, "noneRadio")->text(), QStringLiteral("None"));
    EXPECT_EQ(child<QRadioButton>(&page, "flopRadio")->text(), QStringLiteral("Flop (1-3 Cards)"));
    EXPECT_EQ(child<QRadioButton>(&page, "turnRadio")->text(), QStringLiteral("Turn and Before"));
    EXPECT_EQ(child<QRadioButton>(&page, "riverRadio")->text(), QStringLiteral("River and Before"));
    EXPECT_EQ(child<QLabel>(&page, "randomExplanation")->text(),
              QStringLiteral("All non-given cards will be created randomly for each training "
                             "item, if the corresponding random cards radio buttons are checked."));
    EXPECT_EQ(child<QPushButton>(&page, "startTrainingButton")->text(),
              QStringLiteral("&Start Training"));
    EXPECT_EQ(page.randomness(), EquityTrainingRandomness::Flop);
    // With a random flop the turn and river cannot be given.
    EXPECT_TRUE(CardRange::isStronglyDisabled(page.boardCards()->turnRange()));
    EXPECT_TRUE(CardRange::isStronglyDisabled(page.boardCards()->riverRange()));
}

TEST_F(EquityTrainingStartTest, AnEmptyHeroRangeIsRefusedFirst) {
    clickStart();
    EXPECT_EQ(lastWarning(), std::make_pair(QStringLiteral("Hero's Range is empty."),
                                            QStringLiteral("Please specify a range for Hero.")));
    EXPECT_EQ(log->warnings.size(), 1u);
    EXPECT_EQ(static_cast<int>(started.size()), 0);
    // Text that reads as no hand at all counts as empty.
    typeInto(page.heroLine(), "xyz");
    clickStart();
    EXPECT_EQ(log->warnings.size(), 2u);
    EXPECT_EQ(lastWarning().first, QStringLiteral("Hero's Range is empty."));
}

TEST_F(EquityTrainingStartTest, AnEmptyFirstVillainRangeIsRefusedNext) {
    typeInto(page.heroLine(), "AA");
    typeInto(page.villain2Line(), "KK");
    clickStart();
    EXPECT_EQ(lastWarning(),
              std::make_pair(QStringLiteral("Villain's Range1 is empty."),
                             QStringLiteral("Please specify at least Villain's range1.")));
    EXPECT_EQ(static_cast<int>(started.size()), 0);
}

TEST_F(EquityTrainingStartTest, WithoutRandomCardsAFlopMustBeGiven) {
    typeInto(page.heroLine(), "AA");
    typeInto(page.villain1Line(), "KK");
    choose("noneRadio");
    clickStart();
    const auto boardEmpty = std::make_pair(
        QStringLiteral("Board is empty"),
        QStringLiteral("Please specify a flop or tick a random cards radio button."));
    EXPECT_EQ(lastWarning(), boardEmpty);
    // Two cards (four characters) are no flop either.
    typeBoard(page.boardCards()->flopText(), "Qs7d");
    clickStart();
    EXPECT_EQ(log->warnings.size(), 2u);
    EXPECT_EQ(lastWarning(), boardEmpty);
    EXPECT_EQ(static_cast<int>(started.size()), 0);
    // A full flop starts.
    typeBoard(page.boardCards()->flopText(), "Qs7d2c");
    clickStart();
    EXPECT_EQ(log->warnings.size(), 2u);
    ASSERT_EQ(static_cast<int>(started.size()), 1);
    EXPECT_EQ(started.at(0).board, "Qs7d2c");
}

TEST_F(EquityTrainingStartTest, ARandomFlopNeedsAMissingFlopCard) {
    typeInto(page.heroLine(), "AA");
    typeInto(page.villain1Line(), "KK");
    typeBoard(page.boardCards()->flopText(), "Qs7d2c");
    clickStart();
    EXPECT_EQ(lastWarning(),
              std::make_pair(QStringLiteral("Flop is given"),
                             QStringLiteral("Please remove at least one flop card or choose no "
                                            "randomness.")));
    EXPECT_EQ(static_cast<int>(started.size()), 0);
    // With the turn dealt, a given flop is fine.
    choose("turnRadio");
    clickStart();
    EXPECT_EQ(log->warnings.size(), 1u);
    EXPECT_EQ(static_cast<int>(started.size()), 1);
}

TEST_F(EquityTrainingStartTest, TrainingStartedCarriesTheRangesCardsAndRandomness) {
    typeInto(page.heroLine(), "AKs, QQ");
    typeInto(page.villain1Line(), "JJ-99");
    typeInto(page.villain2Line(), "A5s");
    choose("riverRadio");
    typeBoard(page.boardCards()->flopText(), "Kh7d");
    typeBoard(page.boardCards()->deadText(), "2s3s");
    clickStart();
    EXPECT_TRUE(log->warnings.empty());
    ASSERT_EQ(static_cast<int>(started.size()), 1);
    const Started& call = started.at(0);
    EXPECT_EQ(call.hero, compact(rangeOf("AKs,QQ")));
    EXPECT_EQ(call.villain1, compact(rangeOf("99,TT,JJ")));
    EXPECT_EQ(call.villain2, "A5s");
    EXPECT_EQ(call.board, "Kh7d");
    EXPECT_EQ(call.deadCards, "2s3s");
    EXPECT_EQ(call.randomness, EquityTrainingRandomness::River);
}

TEST_F(EquityTrainingStartTest, AnEmptySecondVillainRangeIsValid) {
    typeInto(page.heroLine(), "AA");
    typeInto(page.villain1Line(), "KK");
    clickStart();
    ASSERT_EQ(static_cast<int>(started.size()), 1);
    EXPECT_EQ(started.at(0).villain2, "");
    EXPECT_EQ(started.at(0).randomness, EquityTrainingRandomness::Flop);
}

TEST_F(EquityTrainingStartTest, NoRandomnessLeavesTheBoardRulesAlone) {
    BoardCardsWidget* board = page.boardCards();
    choose("noneRadio");
    EXPECT_FALSE(CardRange::isStronglyDisabled(board->turnRange()));
    EXPECT_FALSE(CardRange::isStronglyDisabled(board->riverRange()));
    // The turn opens with three flop cards, the river with a turn card.
    EXPECT_FALSE(board->turnText()->isEnabled());
    typeBoard(board->flopText(), "Qs7d2c");
    EXPECT_TRUE(board->turnText()->isEnabled());
    EXPECT_FALSE(board->riverText()->isEnabled());
    typeBoard(board->turnText(), "9h");
    EXPECT_TRUE(board->riverText()->isEnabled());
}

TEST_F(EquityTrainingStartTest, ARandomFlopClosesAndEmptiesTurnAndRiver) {
    BoardCardsWidget* board = page.boardCards();
    choose("noneRadio");
    typeBoard(board->flopText(), "Qs7d2c");
    typeBoard(board->turnText(), "9h");
    typeBoard(board->riverText(), "Th");
    ASSERT_EQ(board->getBoard(), "Qs7d2c9hTh");
    choose("flopRadio");
    EXPECT_TRUE(CardRange::isStronglyDisabled(board->turnRange()));
    EXPECT_TRUE(CardRange::isStronglyDisabled(board->riverRange()));
    EXPECT_EQ(board->getTurn(), "");
    EXPECT_EQ(board->getRiver(), "");
    EXPECT_TRUE(board->turnText()->text().isEmpty());
    EXPECT_TRUE(board->riverText()->text().isEmpty());
    EXPECT_FALSE(board->turnText()->isEnabled());
    EXPECT_FALSE(board->riverText()->isEnabled());
    // The flop stays.
    EXPECT_EQ(board->getFlop(), "Qs7d2c");
}

TEST_F(EquityTrainingStartTest, ARandomTurnClosesOnlyTheRiver) {
    BoardCardsWidget* board = page.boardCards();
    choose("noneRadio");
    typeBoard(board->flopText(), "Qs7d2c");
    typeBoard(board->turnText(), "9h");
    typeBoard(board->riverText(), "Th");
    choose("turnRadio");
    EXPECT_FALSE(CardRange::isStronglyDisabled(board->turnRange()));
    EXPECT_TRUE(CardRange::isStronglyDisabled(board->riverRange()));
    EXPECT_EQ(board->getBoard(), "Qs7d2c9h");
    EXPECT_TRUE(board->turnText()->isEnabled());
    EXPECT_FALSE(board->riverText()->isEnabled());
    EXPECT_TRUE(board->riverText()->text().isEmpty());
    // A random river opens everything again.
    choose("riverRadio");
    EXPECT_FALSE(CardRange::isStronglyDisabled(board->turnRange()));
    EXPECT_FALSE(CardRange::isStronglyDisabled(board->riverRange()));
    EXPECT_TRUE(board->riverText()->isEnabled());
    EXPECT_EQ(board->getBoard(), "Qs7d2c9h");
}

TEST_F(EquityTrainingStartTest, TheRangeLinesCountWithoutTheBoard) {
    choose("noneRadio");
    typeBoard(page.boardCards()->flopText(), "Qs7d2c");
    typeBoard(page.boardCards()->deadText(), "Ah");
    for (HandRangeLine* line : {page.heroLine(), page.villain1Line(), page.villain2Line()})
        EXPECT_EQ(line->boardText(), "Qs7d2c");
}

TEST_F(EquityTrainingStartTest, ClearEmptiesTheRowsRange) {
    typeInto(page.villain1Line(), "TT+");
    ASSERT_FALSE(page.villainRange1().isEmpty());
    QTest::mouseClick(child<QToolButton>(&page, "clearVillain1RangeButton"), Qt::LeftButton);
    EXPECT_TRUE(page.villainRange1().isEmpty());
    EXPECT_TRUE(page.villain1Line()->text().isEmpty());
}

TEST_F(EquityTrainingStartTest, TwoCardsPickedInTheCardDialogBecomeTheRange) {
    choose("noneRadio");
    typeBoard(page.boardCards()->flopText(), "Ah7d2c");
    bool seen = false;
    onNextDialog<CardSelectionDialog>([&](CardSelectionDialog* dialog) {
        seen = true;
        EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Select Hero's Cards"));
        // The board's cards cannot be picked.
        EXPECT_EQ(dialog->table()->stateOf(QStringLiteral("Ah")),
                  CardSelectionTable::CellState::Forbidden);
        clickCard(dialog->table(), QStringLiteral("Ks"));
        clickCard(dialog->table(), QStringLiteral("Kd"));
        dialog->okButton()->click();
    });
    QTest::mouseClick(child<QToolButton>(&page, "selectHeroCardsButton"), Qt::LeftButton);
    EXPECT_TRUE(seen);
    EXPECT_EQ(Range::HandRangeStringReader(page.heroRange()).compactText(), "KdKs");
    EXPECT_EQ(page.heroLine()->text(), QStringLiteral("KdKs"));
}

TEST_F(EquityTrainingStartTest, ACancelledCardDialogChangesNothing) {
    typeInto(page.villain2Line(), "QQ");
    onNextDialog<CardSelectionDialog>([](CardSelectionDialog* dialog) { dialog->reject(); });
    page.onVillainRange2SelectCards();
    EXPECT_EQ(Range::HandRangeStringReader(page.villainRange2()).compactText(), "QQ");
}

TEST_F(EquityTrainingStartTest, TheRangeDialogEditsTheRowsRange) {
    typeInto(page.villain1Line(), "QQ");
    bool seen = false;
    onNextDialog<HandSelectionDialog>([&](HandSelectionDialog* dialog) {
        seen = true;
        EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Select Villain's Range1 Range"));
        EXPECT_EQ(dialog->currentRangeText(), "QQ");
        Range::HandRangeStringManipulator(dialog->currentRange()).setFree("QQ+,AKs");
        dialog->accept();
    });
    QTest::mouseClick(child<QToolButton>(&page, "selectVillain1RangeButton"), Qt::LeftButton);
    EXPECT_TRUE(seen);
    EXPECT_EQ(Range::HandRangeStringReader(page.villainRange1()).compactText(),
              Range::HandRangeStringReader(rangeOf("QQ+,AKs")).compactText());
    EXPECT_EQ(
        page.villain1Line()->text(),
        QString::fromStdString(Range::HandRangeStringReader(rangeOf("QQ+,AKs")).compactText()));
}
