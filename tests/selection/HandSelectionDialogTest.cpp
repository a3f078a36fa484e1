#include "HandSelectionTestHelpers.h"

#include "Range/GroupColor.h"
#include "Range/HandRangeElementConversion.h"
#include "Range/HandRangeStringReader.h"
#include "Range/Tree.h"
#include "Range/TreeFolderNode.h"
#include "Range/TreeRangeNode.h"
#include "selection/EquityRangeSelectorTab.h"
#include "selection/HandRangeLine.h"
#include "selection/HandSelectionDialog.h"
#include "selection/HandSelectionTable.h"
#include "selection/RangeGroupBox.h"
#include "selection/SuitSelectionTable.h"
#include "support/AssertionRecorder.h"

#include "ui_HandSelectionDialog.h"

#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QSlider>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QTest>
#include <gtest/gtest.h>

#include <algorithm>
#include <deque>

using namespace HandSelectionTest;

namespace {

constexpr const char* fivePercent = "AA,KK,QQ,JJ,TT,99,AKs,AQs,AKo,AJs,KQs,88";
constexpr const char* twentyPercent =
    "AA,KK,QQ,JJ,TT,99,AKs,AQs,AKo,AJs,KQs,88,ATs,AQo,KJs,KTs,QJs,AJo,KQo,QTs,A9s,77,ATo,JTs,"
    "KJo,A8s,K9s,QJo,A7s,KTo,Q9s,66,A5s,A6s,QTo,J9s,A9o,T9s,A4s,K8s,JTo";
constexpr const char* fiftyPercent =
    "AA,KK,QQ,JJ,TT,99,AKs,AQs,AKo,AJs,KQs,88,ATs,AQo,KJs,KTs,QJs,AJo,KQo,QTs,A9s,77,ATo,JTs,"
    "KJo,A8s,K9s,QJo,A7s,KTo,Q9s,66,A5s,A6s,QTo,J9s,A9o,T9s,A4s,K8s,JTo,K7s,A8o,A3s,Q8s,K9o,"
    "A2s,K6s,J8s,T8s,A7o,55,Q9o,98s,K5s,Q7s,J9o,A5o,T9o,A6o,K4s,K8o,Q6s,J7s,T7s,A4o,97s,K3s,"
    "87s,Q5s,K7o,44,Q8o,A3o,K2s,J8o,Q4s,T8o,J6s,K6o,A2o,T6s,98o,76s,86s,96s,Q3s,J5s,K5o,Q7o,"
    "Q2s,J4s,33,65s,J7o,T7o";

// Scripted answers for the dialog's question windows.
struct FakePrompts {
    std::deque<std::pair<bool, QString>> names;
    bool confirmDelete = true;
    bool colorAccepted = true;
    Range::GroupColor colorAnswer;
    std::vector<Range::GroupColor> offeredColors;
    QStringList warnings;
    int nameQuestions = 0;

    HandSelectionDialog::Prompts prompts() {
        HandSelectionDialog::Prompts result;
        result.askGroupName = [this](QWidget*, QString& name) {
            ++nameQuestions;
            if (names.empty())
                return false;
            const auto answer = names.front();
            names.pop_front();
            if (answer.first)
                name = answer.second;
            return answer.first;
        };
        result.confirmGroupDelete = [this](QWidget*) { return confirmDelete; };
        result.chooseGroupColors = [this](QWidget*, const Range::GroupColor&,
                                          const std::vector<Range::GroupColor>& unused,
                                          Range::GroupColor& chosen) {
            offeredColors = unused;
            chosen = colorAnswer;
            return colorAccepted;
        };
        result.warn = [this](QWidget*, const QString& title, const QString& text) {
            warnings << title + ": " + text;
        };
        return result;
    }
};

void clickBox(RangeGroupBox* box) {
    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
}

struct DialogFixture : ::testing::Test {
    Range::Tree player;
    FakePrompts fake;
    std::unique_ptr<HandSelectionDialog> dialog;
    Ui::HandSelectionDialog* ui = nullptr;

    DialogFixture() { player.addRange(Range::Tree::noNode, "Parent", false, Range::GroupColor()); }

    void open(const std::string& board = "", const std::string& dead = "") {
        dialog = std::make_unique<HandSelectionDialog>(player, board, dead);
        dialog->setPrompts(fake.prompts());
        ui = dialog->form();
    }
    RangeGroupBox* newBox() const { return dialog->groupBoxes().back(); }
    // Creates a group through the "New" box.
    unsigned int newGroup(const QString& name) {
        fake.names.push_back({true, name});
        clickBox(newBox());
        return dialog->currentGroup();
    }
    HandSelectionTable* table() const { return ui->handSelectionTable; }
    std::string rootText() const { return textOf(dialog->groupTree().handRange(0)); }
    std::string groupText(unsigned int index) const {
        return textOf(dialog->groupTree().handRange(index));
    }
};

} // namespace

// --- Slider --------------------------------------------------------------------------------------

TEST_F(DialogFixture, SliderGivesTheRankedRangesAtEachPercent) {
    open();
    const std::vector<std::pair<int, std::pair<const char*, unsigned int>>> expected = {
        {5, {fivePercent, 70}}, {20, {twentyPercent, 270}}, {50, {fiftyPercent, 672}}};
    for (const auto& entry : expected) {
        ui->percentSlider->setValue(entry.first);
        EXPECT_EQ(dialog->currentRange().suitsVector(), rangeOf(entry.second.first).suitsVector())
            << entry.first << " %";
        EXPECT_EQ(dialog->currentRange().combinationCount(), entry.second.second);
        EXPECT_EQ(ui->combinationCount->text(), QString::number(entry.second.second));
        EXPECT_NEAR(ui->percentSpinBox->value(), entry.second.second / 13.26, 0.005);
        EXPECT_EQ(ui->rangeText->text().toStdString(), dialog->currentRangeText());
    }
    ui->percentSlider->setValue(100);
    EXPECT_EQ(dialog->currentRange().combinationCount(), 1326u);
    EXPECT_EQ(ui->percentSpinBox->value(), 100.0);
    EXPECT_EQ(ui->discountedPercent->text(), "(100.00 %)");
}

TEST_F(DialogFixture, OnePercentTakesThreePairsAndZeroTakesNothing) {
    open();
    ui->percentSlider->setValue(1);
    EXPECT_EQ(dialog->currentRangeText(), "QQ+");
    ui->percentSlider->setValue(0);
    EXPECT_TRUE(dialog->currentRange().isEmpty());
    EXPECT_EQ(HandSelectionDialog::rangeForPercent(0.99).combinationCount(), 0u);
    EXPECT_EQ(HandSelectionDialog::rangeForPercent(1.99).combinationCount(), 18u);
    EXPECT_EQ(HandSelectionDialog::percentOrder().size(), 169u);
    unsigned int total = 0;
    for (unsigned int count : HandSelectionDialog::percentOrderCounts())
        total += count;
    EXPECT_EQ(total, 1326u);
}

TEST_F(DialogFixture, TheSpinBoxSetsTheSliderAndTheRange) {
    open();
    ui->percentSpinBox->setValue(5.0);
    EXPECT_EQ(ui->percentSlider->value(), 5);
    EXPECT_EQ(dialog->currentRange().combinationCount(), 70u);
    EXPECT_EQ(dialog->rangeUndoList().size(), 2u);
}

TEST_F(DialogFixture, PaintingByHandDoesNotMoveTheSliderAndTheSliderDiscardsIt) {
    open();
    ui->percentSlider->setValue(20);
    stroke(table(), {"72o"});
    EXPECT_EQ(ui->percentSlider->value(), 20);
    EXPECT_EQ(dialog->currentRange().combinationCount(), 282u);
    EXPECT_EQ(ui->combinationCount->text(), "282");
    EXPECT_NE(suitsOf(dialog->currentRange(), "72o"), 0u);
    ui->percentSlider->setValue(5);
    EXPECT_EQ(suitsOf(dialog->currentRange(), "72o"), 0u);
    EXPECT_EQ(dialog->currentRange().combinationCount(), 70u);
}

TEST_F(DialogFixture, DraggingTheSliderRecordsOneSnapshotOnRelease) {
    open();
    ui->percentSlider->setSliderDown(true);
    ui->percentSlider->setValue(3);
    ui->percentSlider->setValue(7);
    EXPECT_EQ(dialog->rangeUndoList().size(), 1u);
    ui->percentSlider->setSliderDown(false); // emits sliderReleased
    EXPECT_EQ(dialog->rangeUndoList().size(), 2u);
    EXPECT_EQ(dialog->currentRange().combinationCount(),
              HandSelectionDialog::rangeForPercent(7).combinationCount());
}

namespace {

// The x of the slider's handle centre at `value`, in the slider's coordinates.
int handleX(QSlider* slider, int value) {
    QStyleOptionSlider option;
    option.initFrom(slider);
    option.orientation = slider->orientation();
    option.minimum = slider->minimum();
    option.maximum = slider->maximum();
    option.sliderPosition = value;
    option.sliderValue = value;
    option.tickPosition = slider->tickPosition();
    option.tickInterval = slider->tickInterval();
    option.subControls = QStyle::SC_SliderGroove | QStyle::SC_SliderHandle;
    return slider->style()
        ->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, slider)
        .center()
        .x();
}

// Takes the handle with the mouse and drags it to `value`.
void dragSlider(QSlider* slider, int value) {
    const int y = slider->height() / 2;
    QPoint at(handleX(slider, slider->value()), y);
    press(slider, at);
    const int target = handleX(slider, value);
    while (at.x() != target) {
        at.setX(at.x() +
                (target > at.x() ? std::min(5, target - at.x()) : -std::min(5, at.x() - target)));
        move(slider, at, Qt::LeftButton);
    }
    release(slider, at);
}

} // namespace

TEST_F(DialogFixture, TheHandleShowsTheRangeTheDialogOpensWith) {
    open();
    dialog->resize(1180, 860);
    dialog->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(dialog.get()));
    dragSlider(ui->percentSlider, 24);
    ASSERT_EQ(ui->percentSlider->value(), 24);
    EXPECT_EQ(ui->percentSpinBox->text(), "24.28 %");
    ui->buttonBox->button(QDialogButtonBox::Ok)->click();
    ASSERT_EQ(player.handRange(0).combinationCount(), 322u);

    // Opened again, the handle stands where the box says the range is.
    open();
    EXPECT_EQ(ui->percentSpinBox->text(), "24.28 %");
    EXPECT_EQ(ui->percentSlider->value(), 24);
    EXPECT_EQ(ui->percentSlider->sliderPosition(), 24);
    EXPECT_EQ(dialog->rangeUndoList().size(), 1u); // placing the handle is no edit
    EXPECT_EQ(dialog->currentRange().combinationCount(), 322u);

    // Every range the dialog shows puts the handle at its whole percent: a group, the full
    // range, an undo.
    const unsigned int group = newGroup("Half");
    EXPECT_EQ(ui->percentSlider->value(), 0);
    ui->rangeText->setText("AA,KK,QQ,JJ,TT");
    ui->rangeText->validateRange();
    clickBox(dialog->groupBoxes()[0]);
    EXPECT_EQ(ui->percentSlider->value(), 24);
    clickBox(dialog->groupBoxes()[group]);
    EXPECT_EQ(ui->percentSlider->value(), 2); // 30 of 1326 are 2.26 %
    ui->percentSlider->setValue(100);
    clickBox(dialog->groupBoxes()[0]);
    EXPECT_EQ(ui->percentSlider->value(), 24);
}

TEST_F(DialogFixture, ClearEmptiesTheRangeAndResetsTheSlider) {
    open();
    ui->percentSlider->setValue(30);
    ui->clearButton->click();
    EXPECT_EQ(ui->percentSlider->value(), 0);
    EXPECT_TRUE(dialog->currentRange().isEmpty());
    EXPECT_EQ(ui->clearButton->toolTip(), "Clear Marked Hands");
}

// --- Text line and table -----------------------------------------------------------------------

TEST_F(DialogFixture, TypingFollowsInTheTableAndTheNumbers) {
    open("Ah");
    ui->rangeText->setFocus();
    QTest::keyClicks(ui->rangeText, "AA,AKs");
    EXPECT_EQ(dialog->currentRangeText(), "AA,AKs");
    EXPECT_EQ(ui->combinationCount->text(), "10");
    EXPECT_EQ(ui->combinationCountDiscounted->text(), "(6)"); // 3 AA and 3 AKs without the Ah
    EXPECT_EQ(table()->cellBackground(0, 0), HandSelectionTable::SelectedBackground);
    const std::size_t before = dialog->rangeUndoList().size();
    QTest::keyClick(ui->rangeText, Qt::Key_Return);
    EXPECT_EQ(dialog->rangeUndoList().size(), before + 1);
    EXPECT_EQ(ui->rangeText->text(), "AA,AKs");
}

TEST_F(DialogFixture, TheSuitButtonsDriveThePenOfTheTable) {
    open();
    ui->heartsOnlyButton->click();
    EXPECT_EQ(table()->suitPen(), 0x22F2);
    stroke(table(), {"AKs"});
    EXPECT_EQ(dialog->currentRangeText(), "AhKh");
    ui->allSuitsButton->click();
    EXPECT_EQ(table()->suitPen(), 0xFFFF);
    ui->noSuitsButton->click();
    EXPECT_EQ(table()->suitPen(), 0);
    ui->percent25Button->click();
    EXPECT_EQ(table()->suitPen(), 0x0017);
    EXPECT_EQ(ui->percent25Button->toolTip(),
              "Selects 25% of (off)suited and 33%  of paired suits");
}

TEST_F(DialogFixture, InvertTakesTheFullRangeWithoutTheCurrentOne) {
    open();
    stroke(table(), {"AA"});
    ui->invertButton->click();
    EXPECT_EQ(dialog->currentRange().combinationCount(), 1320u);
    EXPECT_EQ(suitsOf(dialog->currentRange(), "AA"), 0u);
}

TEST_F(DialogFixture, DeadCardsComeOffTheDiscountedNumbers) {
    open("AhKd", "Qs");
    stroke(table(), {"AA", "KK", "QQ"});
    EXPECT_EQ(ui->combinationCount->text(), "18");
    EXPECT_EQ(ui->combinationCountDiscounted->text(), "(9)");
    EXPECT_EQ(ui->discountedPercent->text(), "(0.68 %)");
    EXPECT_EQ(table()->liveCount(0, 0), 3u);
}

TEST_F(DialogFixture, BadCardTextIsReportedAndSkipped) {
    AssertionRecorder recorder;
    open("AhZz", "K");
    EXPECT_TRUE(recorder.saw("Invalid card text."));
    EXPECT_EQ(dialog->deadCardMasks().size(), 1u);
}

// --- Groups --------------------------------------------------------------------------------------

TEST_F(DialogFixture, RootShowsRangeCombinationsAndDisabledGroupWidgets) {
    open();
    EXPECT_EQ(ui->combinationsTitle->text(), "Range Combinations:");
    EXPECT_FALSE(ui->editGroupNameButton->isEnabled());
    EXPECT_FALSE(ui->deleteGroupButton->isEnabled());
    EXPECT_FALSE(ui->parentGroup->isEnabled());
    EXPECT_FALSE(table()->isGroupMode());
    EXPECT_TRUE(ui->portionTitle->isHidden());
    const std::vector<RangeGroupBox*> boxes = dialog->groupBoxes();
    ASSERT_EQ(boxes.size(), 2u);
    EXPECT_EQ(boxes[0]->displayText(), "*");
    EXPECT_EQ(boxes[0]->state(), RangeGroupBox::Selected);
    EXPECT_EQ(boxes[1]->displayText(), "New");
}

TEST_F(DialogFixture, NewBoxAsksForANameAndShowsTheNewGroup) {
    open();
    ui->percentSlider->setValue(10);
    const unsigned int group = newGroup("Value");
    EXPECT_EQ(group, 1u);
    EXPECT_EQ(dialog->groupTree().rangeNode(1)->name, "Value");
    EXPECT_EQ(dialog->groupTree().node(1)->parent, 0u);
    EXPECT_TRUE(dialog->groupTree().rangeNode(1)->exclusive);
    EXPECT_EQ(dialog->groupTree().rangeNode(1)->color, Range::GroupColor::standardColors()[0]);
    EXPECT_EQ(ui->combinationsTitle->text(), "Group Combinations:");
    EXPECT_EQ(ui->groupName->text(), "Value");
    EXPECT_TRUE(table()->isGroupMode());
    EXPECT_EQ(ui->percentSlider->value(), 0);
    EXPECT_EQ(ui->parentLabel->text(), "Range:");
    EXPECT_EQ(ui->parentGroup->currentText(), "Entire Range");
    const std::vector<RangeGroupBox*> boxes = dialog->groupBoxes();
    ASSERT_EQ(boxes.size(), 3u);
    EXPECT_EQ(boxes[1]->displayText(), "1");
    EXPECT_EQ(boxes[1]->state(), RangeGroupBox::Selected);
    // A click on the root's box goes back to the complete range.
    clickBox(boxes[0]);
    EXPECT_EQ(dialog->currentGroup(), 0u);
    EXPECT_EQ(ui->combinationsTitle->text(), "Range Combinations:");
    EXPECT_EQ(dialog->currentRange().combinationCount(),
              HandSelectionDialog::rangeForPercent(10).combinationCount());
}

TEST_F(DialogFixture, AnEmptyNameGivesANumberedGroupAndCancelChangesNothing) {
    open();
    fake.names.push_back({false, QString()});
    clickBox(newBox());
    EXPECT_EQ(dialog->groupTree().count(), 1u);
    EXPECT_EQ(dialog->currentGroup(), 0u);
    EXPECT_EQ(dialog->rangeUndoList().size(), 1u);
    newGroup("");
    EXPECT_EQ(dialog->groupTree().rangeNode(1)->name, "Group 1");
    newGroup("");
    EXPECT_EQ(dialog->groupTree().rangeNode(2)->name, "Group 2");
}

TEST_F(DialogFixture, GroupsPaintInsideTheRangeAndPushEachOtherOut) {
    open();
    ui->rangeText->setText("QQ+,AK");
    ui->rangeText->validateRange();
    const unsigned int value = newGroup("Value");
    stroke(table(), {"AA", "KK", "JJ"}); // JJ lies outside the range
    EXPECT_EQ(groupText(value), "KK+");
    const unsigned int bluff = newGroup("Bluff");
    ui->spadesOnlyButton->click();
    stroke(table(), {"AA", "AKo"});
    EXPECT_EQ(suitsOf(dialog->groupTree().handRange(bluff), "AA"),
              suitsOf(rangeOf("AdAs,AhAs,AsAc"), "AA"));
    EXPECT_EQ(suitsOf(dialog->groupTree().handRange(value), "AA"),
              suitsOf(rangeOf("AdAh,AdAc,AhAc"), "AA"));
    EXPECT_EQ(table()->cellGroups(0, 0), (std::vector<unsigned int>{value, bluff}));
    EXPECT_EQ(table()->stripeWidths(0, 0), (std::vector<int>{16, 16}));
    EXPECT_EQ(rootText(), "QQ+,AKs,AKo");
    EXPECT_EQ(ui->portionValue->text(),
              HandSelectionDialog::percentText(9.0f / 34.0f)); // AsXx offsuit 6 + 3 of AA
    EXPECT_FALSE(ui->portionTitle->isHidden());
}

TEST_F(DialogFixture, PortionLabelsHideWhenTheParentIsEmpty) {
    open();
    newGroup("Empty parent");
    EXPECT_TRUE(ui->portionTitle->isHidden());
    EXPECT_TRUE(ui->portionDiscountedValue->isHidden());
    EXPECT_EQ(ui->portionTitle->text(), "Portion of Parent:");
    EXPECT_EQ(ui->portionDiscountedTitle->text(), "Discounted:");
}

TEST_F(DialogFixture, PortionShowsTheShareAndTheDiscountedShare) {
    open("Ac");
    ui->rangeText->setText("AA,KK");
    ui->rangeText->validateRange();
    newGroup("Aces");
    stroke(table(), {"AA"});
    EXPECT_EQ(ui->portionValue->text(), "50.00 %");
    // Alive: AA without the Ac = 3, the range = 3 + 6.
    EXPECT_EQ(ui->portionDiscountedValue->text(), HandSelectionDialog::percentText(3.0f / 9.0f));
}

TEST_F(DialogFixture, RemainderHasNoEffectOnTheRootAndFillsAGroupOtherwise) {
    open();
    ui->rangeText->setText("QQ+,AK");
    ui->rangeText->validateRange();
    EXPECT_FALSE(ui->remainderButton->isEnabled());
    const std::size_t steps = dialog->rangeUndoList().size();
    dialog->onGetGroupRemainder();
    EXPECT_EQ(rootText(), "QQ+,AKs,AKo");
    EXPECT_EQ(dialog->rangeUndoList().size(), steps);

    const unsigned int first = newGroup("First");
    stroke(table(), {"QQ", "AKs"});
    const unsigned int second = newGroup("Second");
    ui->remainderButton->click();
    EXPECT_EQ(groupText(second), "KK+,AKo");
    EXPECT_EQ(groupText(first), "QQ,AKs");
}

TEST_F(DialogFixture, DeletingTheLastGroupShowsTheRoot) {
    open();
    const unsigned int group = newGroup("Only");
    fake.confirmDelete = false;
    ui->deleteGroupButton->click();
    EXPECT_EQ(dialog->groupTree().count(), 2u);
    EXPECT_EQ(dialog->currentGroup(), group);
    fake.confirmDelete = true;
    ui->deleteGroupButton->click();
    EXPECT_EQ(dialog->groupTree().count(), 1u);
    EXPECT_EQ(dialog->currentGroup(), 0u);
    EXPECT_EQ(ui->combinationsTitle->text(), "Range Combinations:");
    EXPECT_EQ(dialog->groupBoxes().size(), 2u);
}

TEST_F(DialogFixture, DeletingAGroupSelectsTheOneNowAtItsPlace) {
    open();
    newGroup("A");
    newGroup("B");
    newGroup("C");
    clickBox(dialog->groupBoxes()[2]); // B
    ui->deleteGroupButton->click();
    EXPECT_EQ(dialog->currentGroup(), 2u);
    EXPECT_EQ(dialog->groupTree().rangeNode(2)->name, "C");
}

TEST_F(DialogFixture, AGroupMovesUnderAnotherParentAndLosesWhatLiesOutside) {
    open();
    ui->rangeText->setText("TT+");
    ui->rangeText->validateRange();
    const unsigned int high = newGroup("High");
    stroke(table(), {"AA", "KK"});
    const unsigned int aces = newGroup("Aces and tens");
    // Overwrite takes AA from "High"; give it back afterwards to see the move cut TT.
    stroke(table(), {"AA", "TT"});
    EXPECT_EQ(groupText(high), "KK");
    clickBox(dialog->groupBoxes()[1]);
    stroke(table(), {"AA"});
    clickBox(dialog->groupBoxes()[2]);
    // The combo offers the root and "High", not the group itself.
    ASSERT_EQ(ui->parentGroup->count(), 2);
    EXPECT_EQ(ui->parentGroup->itemText(1), "High");
    ui->parentGroup->setCurrentIndex(1);
    emit ui->parentGroup->activated(1);
    EXPECT_EQ(dialog->groupTree().node(aces)->parent, high);
    EXPECT_EQ(groupText(aces), "");
    EXPECT_EQ(ui->parentLabel->text(), "Group:");
    // In the group list of "High" the moved group is gone from its own choices.
    clickBox(dialog->groupBoxes()[1]);
    EXPECT_EQ(ui->parentGroup->count(), 1);
}

TEST_F(DialogFixture, DefaultForNewGroupsTakesTheChosenParent) {
    open();
    const unsigned int outer = newGroup("Outer");
    const unsigned int inner = newGroup("Inner");
    ui->parentGroup->setCurrentIndex(1);
    emit ui->parentGroup->activated(1);
    ASSERT_EQ(dialog->groupTree().node(inner)->parent, outer);
    ui->defaultForNewGroups->setChecked(true);
    EXPECT_EQ(dialog->defaultParentGroup(), outer);
    const unsigned int third = newGroup("Third");
    EXPECT_EQ(dialog->groupTree().node(third)->parent, outer);
    clickBox(dialog->groupBoxes()[third]);
    ui->defaultForNewGroups->setChecked(true);
    ui->defaultForNewGroups->setChecked(false);
    EXPECT_EQ(dialog->defaultParentGroup(), 0u);
    // Deleting the default parent hands the role back to the root.
    clickBox(dialog->groupBoxes()[inner]);
    ui->defaultForNewGroups->setChecked(true);
    clickBox(dialog->groupBoxes()[outer]);
    ui->deleteGroupButton->click();
    EXPECT_EQ(dialog->defaultParentGroup(), 0u);
    EXPECT_EQ(dialog->groupTree().count(), 1u);
}

TEST_F(DialogFixture, NamesAndColoursCanBeEdited) {
    open();
    newGroup("Old");
    fake.names.push_back({true, "New name"});
    ui->editGroupNameButton->click();
    EXPECT_EQ(dialog->groupTree().rangeNode(1)->name, "New name");
    EXPECT_EQ(ui->groupName->text(), "New name");
    fake.names.push_back({false, "ignored"});
    ui->editGroupNameButton->click();
    EXPECT_EQ(dialog->groupTree().rangeNode(1)->name, "New name");

    fake.colorAnswer = Range::GroupColor::standardColors()[5];
    ui->editGroupColorsButton->click();
    EXPECT_EQ(dialog->groupTree().rangeNode(1)->color, Range::GroupColor::standardColors()[5]);
    EXPECT_EQ(fake.offeredColors.size(), 15u); // all but the group's own colour
    fake.colorAccepted = false;
    fake.colorAnswer = Range::GroupColor::standardColors()[7];
    ui->editGroupColorsButton->click();
    EXPECT_EQ(dialog->groupTree().rangeNode(1)->color, Range::GroupColor::standardColors()[5]);
}

TEST_F(DialogFixture, WhenAllColoursAreUsedNoGroupIsMade) {
    open();
    for (int i = 0; i < 16; ++i)
        newGroup(QString("G%1").arg(i));
    EXPECT_EQ(dialog->groupTree().count(), 17u);
    newGroup("One too many");
    EXPECT_EQ(dialog->groupTree().count(), 17u);
    ASSERT_EQ(fake.warnings.size(), 1);
    EXPECT_EQ(fake.warnings.front(), "Group: All colors in use.");
}

// --- Selectors -----------------------------------------------------------------------------------

TEST_F(DialogFixture, SelectModesMergeTheHandsIntoTheRange) {
    open();
    EXPECT_EQ(ui->selectMode->count(), 6);
    EXPECT_EQ(ui->selectMode->itemText(3), "Overwrite Inverted");
    EXPECT_EQ(ui->selectMode->itemData(5).toInt(), 5);
    const std::vector<unsigned long long> aces = {Range::maskOfText("AdAh"),
                                                  Range::maskOfText("AsAc")};
    stroke(table(), {"KK"});
    ui->selectMode->setCurrentIndex(HandSelectionDialog::Add);
    dialog->applySelection(aces);
    EXPECT_EQ(dialog->currentRange().suitsVector(), rangeOf("KK,AdAh,AsAc").suitsVector());
    ui->selectMode->setCurrentIndex(HandSelectionDialog::Subtract);
    dialog->applySelection({Range::maskOfText("AdAh")});
    EXPECT_EQ(dialog->currentRange().suitsVector(), rangeOf("KK,AsAc").suitsVector());
    ui->selectMode->setCurrentIndex(HandSelectionDialog::Overwrite);
    dialog->applySelection(aces);
    EXPECT_EQ(dialog->currentRange().suitsVector(), rangeOf("AdAh,AsAc").suitsVector());
    // Inverted modes invert within the full range.
    ui->selectMode->setCurrentIndex(HandSelectionDialog::OverwriteInverted);
    dialog->applySelection(aces);
    EXPECT_EQ(dialog->currentRange().combinationCount(), 1324u);
    ui->selectMode->setCurrentIndex(HandSelectionDialog::SubtractInverted);
    dialog->applySelection({Range::maskOfText("KdKh"), Range::maskOfText("AdAs")});
    EXPECT_EQ(dialog->currentRange().suitsVector(), rangeOf("KdKh,AdAs").suitsVector());
    ui->selectMode->setCurrentIndex(HandSelectionDialog::AddInverted);
    dialog->applySelection({Range::maskOfText("AdAs")});
    EXPECT_EQ(dialog->currentRange().combinationCount(), 1326u);
    // No result applied in overwrite mode leaves an empty range, without a message.
    ui->selectMode->setCurrentIndex(HandSelectionDialog::Overwrite);
    dialog->applySelection({});
    EXPECT_TRUE(dialog->currentRange().isEmpty());
    EXPECT_TRUE(fake.warnings.isEmpty());
}

TEST_F(DialogFixture, InvertedSelectionInAGroupStaysInsideItsParent) {
    open();
    ui->rangeText->setText("AA,KK");
    ui->rangeText->validateRange();
    newGroup("Group");
    ui->selectMode->setCurrentIndex(HandSelectionDialog::OverwriteInverted);
    dialog->applySelection({Range::maskOfText("AdAh")});
    EXPECT_EQ(dialog->currentRange().combinationCount(), 11u);
}

TEST_F(DialogFixture, SelectorsPickFromTheParentUnlessItIsEmpty) {
    open();
    EXPECT_EQ(dialog->selectionInputRange().combinationCount(), 1326u);
    newGroup("Group");
    EXPECT_EQ(dialog->selectionInputRange().combinationCount(), 1326u); // empty parent
    clickBox(dialog->groupBoxes()[0]);
    stroke(table(), {"AA"});
    clickBox(dialog->groupBoxes()[1]);
    EXPECT_EQ(textOf(dialog->selectionInputRange()), "AA");
}

TEST_F(DialogFixture, SelectorPlacesExist) {
    open();
    EXPECT_EQ(ui->selectorTabs->count(), 2);
    EXPECT_EQ(ui->selectorTabs->tabText(0), "Hand Strength");
    EXPECT_EQ(ui->selectorTabs->tabText(1), "Equity / Range %");
    EXPECT_EQ(ui->selectorTabs->widget(0)->objectName(), "handStrengthTab");
    EXPECT_EQ(ui->selectorTabs->widget(1)->objectName(), "equityTab");
    EXPECT_EQ(ui->selectButton->text(), "&Select");
    EXPECT_EQ(ui->rangeTree->objectName(), "rangeTree");
    EXPECT_EQ(ui->treeRedoButton->toolTip(), "Reverse Last \"Undo\" Operation in Tree");
}

// --- Undo, accept, cancel ------------------------------------------------------------------------

TEST_F(DialogFixture, UndoAndRedoStepThroughStrokesAndGroups) {
    open();
    EXPECT_FALSE(ui->undoButton->isEnabled());
    EXPECT_FALSE(ui->redoButton->isEnabled());
    stroke(table(), {"AA"});
    stroke(table(), {"KK"});
    stroke(table(), {"KK"}, Qt::LeftButton); // a stroke that changes nothing
    EXPECT_EQ(dialog->rangeUndoList().size(), 3u);
    const unsigned int group = newGroup("G");
    stroke(table(), {"AA"});
    EXPECT_EQ(dialog->rangeUndoList().size(), 5u);
    EXPECT_TRUE(ui->undoButton->isEnabled());

    ui->undoButton->click(); // the group's stroke
    EXPECT_EQ(groupText(group), "");
    EXPECT_EQ(dialog->currentGroup(), group);
    ui->undoButton->click(); // the group itself
    EXPECT_EQ(dialog->groupTree().count(), 1u);
    EXPECT_EQ(dialog->currentGroup(), 0u);
    EXPECT_EQ(rootText(), "KK+");
    ui->undoButton->click();
    EXPECT_EQ(rootText(), "AA");
    EXPECT_EQ(ui->rangeText->text(), "AA");
    ui->undoButton->click();
    EXPECT_EQ(rootText(), "");
    EXPECT_FALSE(ui->undoButton->isEnabled());
    EXPECT_TRUE(ui->redoButton->isEnabled());

    ui->redoButton->click();
    ui->redoButton->click();
    ui->redoButton->click();
    EXPECT_EQ(dialog->groupTree().count(), 2u);
    EXPECT_EQ(dialog->currentGroup(), group);
    // A new change drops what lies ahead.
    stroke(table(), {"KK"});
    EXPECT_FALSE(ui->redoButton->isEnabled());
    EXPECT_EQ(dialog->rangeUndoList().size(), 5u);
    EXPECT_EQ(groupText(group), "KK");
}

TEST_F(DialogFixture, AcceptHandsTheRangeWithItsGroupsBack) {
    Range::HandRangeStringManipulator(player.handRange(0)).setFree("TT+");
    open();
    stroke(table(), {"99"});
    newGroup("Set mining");
    stroke(table(), {"99", "TT"});
    dialog->accept();
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    ASSERT_EQ(player.count(), 2u);
    EXPECT_EQ(textOf(player.handRange(0)), "99+");
    EXPECT_EQ(player.rangeNode(1)->name, "Set mining");
    EXPECT_EQ(textOf(player.handRange(1)), "99-TT");
    // The groups work in the caller's tree as before.
    Range::HandRangeStringManipulator(player.handRange(0)).setFree("JJ+");
    EXPECT_EQ(textOf(player.handRange(1)), "");
}

TEST_F(DialogFixture, CancelLeavesTheCallerAloneAndShowsTheOpeningState) {
    Range::HandRangeStringManipulator(player.handRange(0)).setFree("TT+");
    open();
    newGroup("G");
    stroke(table(), {"AA"});
    dialog->reject();
    EXPECT_EQ(dialog->result(), QDialog::Rejected);
    EXPECT_EQ(player.count(), 1u);
    EXPECT_EQ(textOf(player.handRange(0)), "TT+");
    EXPECT_EQ(dialog->groupTree().count(), 1u);
    EXPECT_EQ(dialog->currentGroup(), 0u);
    EXPECT_EQ(dialog->currentRangeText(), "TT+");
}

TEST(HandSelectionDialogBareRange, HidesTheGroupRowAndAssignsOnAccept) {
    Range::HandRange range;
    Range::HandRangeStringManipulator(range).setFree("AKs");
    int notified = 0;
    range.setChangeNotifier([&notified] { ++notified; });
    HandSelectionDialog dialog(range, "", "");
    EXPECT_TRUE(dialog.form()->groupArea->isHidden());
    EXPECT_EQ(dialog.currentRangeText(), "AKs");
    stroke(dialog.form()->handSelectionTable, {"AKo"});
    EXPECT_EQ(textOf(range), "AKs"); // untouched until accepted
    dialog.accept();
    EXPECT_EQ(textOf(range), "AKs,AKo");
    EXPECT_EQ(notified, 1);
}

TEST(HandSelectionDialogBareRange, RejectLeavesTheRange) {
    Range::HandRange range;
    Range::HandRangeStringManipulator(range).setFree("AKs");
    HandSelectionDialog dialog(range, "", "");
    dialog.form()->percentSlider->setValue(40);
    dialog.reject();
    EXPECT_EQ(textOf(range), "AKs");
}

TEST_F(DialogFixture, SelectRangeOpensModallyAndReportsTheAnswer) {
    Range::HandRangeStringManipulator(player.handRange(0)).setFree("AA");
    bool sawTitle = false;
    QTimer::singleShot(0, [&sawTitle] {
        auto* shown = qobject_cast<HandSelectionDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(shown, nullptr);
        sawTitle = shown->windowTitle() == "Select Player1 Range";
        stroke(shown->form()->handSelectionTable, {"KK"});
        shown->form()->buttonBox->button(QDialogButtonBox::Ok)->click();
    });
    EXPECT_TRUE(
        HandSelectionDialog::selectRange(player, "Select Player1 Range", "", "", nullptr, nullptr));
    EXPECT_TRUE(sawTitle);
    EXPECT_EQ(textOf(player.handRange(0)), "KK+");

    QTimer::singleShot(0, [] {
        auto* shown = qobject_cast<HandSelectionDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(shown, nullptr);
        stroke(shown->form()->handSelectionTable, {"QQ"});
        shown->form()->buttonBox->button(QDialogButtonBox::Cancel)->click();
    });
    EXPECT_FALSE(
        HandSelectionDialog::selectRange(player, "Select Player1 Range", "", "", nullptr, nullptr));
    EXPECT_EQ(textOf(player.handRange(0)), "KK+");
}

// The main window hands the other player's range (technical text); the equity selector
// rates against it from the start, shown as a player writes it.
TEST_F(DialogFixture, SelectRangeRatesAgainstTheOpponentsRangeAtFirst) {
    const auto otherRangeShown = [](QString& seen) {
        return [&seen] {
            auto* shown = qobject_cast<HandSelectionDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(shown, nullptr);
            auto* other = shown->equitySelector()->findChild<QLineEdit*>("otherRange");
            ASSERT_NE(other, nullptr);
            seen = other->text();
            shown->form()->buttonBox->button(QDialogButtonBox::Cancel)->click();
        };
    };
    const std::string opponent =
        Range::HandRangeStringReader(rangeOf("TT+,AKs,AKo")).technicalText();
    ASSERT_NE(opponent, "TT+,AKs,AKo");
    QString seen = "unset";
    QTimer::singleShot(0, otherRangeShown(seen));
    EXPECT_FALSE(HandSelectionDialog::selectRange(player, "Select Player1 Range", "Kh9h4c", "",
                                                  nullptr, nullptr, opponent));
    EXPECT_EQ(seen.toStdString(), "TT+,AKs,AKo");

    // Without it the field stays empty: any hand.
    seen = "unset";
    QTimer::singleShot(0, otherRangeShown(seen));
    EXPECT_FALSE(HandSelectionDialog::selectRange(player, "Select Player1 Range", "Kh9h4c", "",
                                                  nullptr, nullptr));
    EXPECT_EQ(seen.toStdString(), "");
}

// --- Settings ----------------------------------------------------------------------------------

TEST_F(DialogFixture, RightButtonCheckBoxWritesTheSettingAndTellsBothTables) {
    open();
    EXPECT_TRUE(ui->unselectWithRightButton->isChecked());
    ui->unselectWithRightButton->setChecked(false);
    EXPECT_FALSE(table()->unselectsWithRightButton());
    EXPECT_FALSE(ui->suitSelectionTable->unselectsWithRightButton());
    QSettings settings("Velmara", "Quorvane");
    EXPECT_FALSE(settings.value("optionmenu/unselectCardWithRightButton").toBool());
    ui->unselectWithRightButton->setChecked(true);
    EXPECT_TRUE(table()->unselectsWithRightButton());
    EXPECT_TRUE(
        QSettings("Velmara", "Quorvane").value("optionmenu/unselectCardWithRightButton").toBool());
}

TEST_F(DialogFixture, WindowPlaceIsKeptBetweenOpenings) {
    open();
    dialog->resize(1111, 777);
    dialog->reject();
    {
        QSettings settings("Velmara", "Quorvane");
        EXPECT_EQ(settings.value("handselectiondialog/size").toSize(), QSize(1111, 777));
        EXPECT_FALSE(settings.value("handselectiondialog/maximized").toBool());
        EXPECT_TRUE(settings.contains("handselectiondialog/pos"));
        EXPECT_TRUE(settings.contains("handselectiondialog/splitterState"));
    }
    open();
    EXPECT_EQ(dialog->size(), QSize(1111, 777));
}

TEST(HandSelectionDialogText, PercentTextHasTwoDecimalsABlankAndTheSign) {
    EXPECT_EQ(HandSelectionDialog::percentText(0.12345), "12.35 %");
    EXPECT_EQ(HandSelectionDialog::percentText(0.0), "0.00 %");
    EXPECT_EQ(HandSelectionDialog::percentText(1.0), "100.00 %");
}

// --- Tree of saved ranges ------------------------------------------------------------------------

TEST_F(DialogFixture, TreeUndoListRestoresTheSavedRangeTree) {
    open();
    QSignalSpy restored(dialog.get(), &HandSelectionDialog::rangeTreeRestored);
    EXPECT_FALSE(ui->treeUndoButton->isEnabled());
    const unsigned int nodes = dialog->savedRangeTree().count();
    dialog->savedRangeTree().addFolder(0, "Flop Ranges");
    dialog->onTreeChanged();
    dialog->onTreeChanged(); // nothing changed: no new step
    EXPECT_EQ(dialog->treeUndoCount(), 2u);
    EXPECT_TRUE(ui->treeUndoButton->isEnabled());
    ui->treeUndoButton->click();
    EXPECT_EQ(dialog->savedRangeTree().count(), nodes);
    EXPECT_EQ(restored.count(), 1);
    EXPECT_TRUE(ui->treeRedoButton->isEnabled());
    ui->treeRedoButton->click();
    ASSERT_EQ(dialog->savedRangeTree().count(), nodes + 1);
    EXPECT_TRUE(dialog->savedRangeTree().node(nodes)->IsFolder());
    EXPECT_EQ(restored.count(), 2);
}
