#include "HandSelectionTestHelpers.h"

#include "Range/GroupColor.h"
#include "Range/Tree.h"
#include "Range/TreeRangeNode.h"
#include "selection/EquityRangeSelectorTab.h"
#include "selection/HandSelectionDialog.h"
#include "selection/HandSelectionTable.h"
#include "selection/HandSelectionTree.h"
#include "selection/HandSelectionTreeModel.h"
#include "selection/HandStrengthSelectorTab.h"
#include "selection/SavedRangeTree.h"
#include "selection/SuitHover.h"
#include "support/TestEnvironment.h"

#include "ui_HandSelectionDialog.h"

#include <QComboBox>
#include <QDir>
#include <QImage>
#include <QPixmap>
#include <QTest>
#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <utility>
#include <vector>

using namespace HandSelectionTest;

namespace {

// Number of distinct colours in a picture: a blank or broken paint has very few.
std::size_t distinctColours(const QImage& image) {
    std::set<QRgb> colours;
    for (int y = 0; y < image.height(); y += 2)
        for (int x = 0; x < image.width(); x += 2)
            colours.insert(image.pixel(x, y));
    return colours.size();
}

QString outputPath(const char* name) {
    return QDir(QString::fromStdString(TestEnvironment::outputFolder())).filePath(name);
}

} // namespace

// The dialog on a real X server with a range of three coloured groups, the second group
// shown, so that the table paints group colours, stripes and greyed cells.
TEST(HandSelectionScreenshot, DialogWithThreeColouredGroups) {
    Range::Tree player;
    player.addRange(Range::Tree::noNode, "Parent", false, Range::GroupColor());
    Range::HandRangeStringManipulator(player.handRange(0))
        .setFree("22+,A2s+,K9s+,QTs+,JTs,T9s,98s,87s,ATo+,KJo+,QJo");
    const unsigned int value = player
                                   .addExclusiveRange(0, "Value", Range::TreeRangeNode::Overwrite,
                                                      true, Range::GroupColor())
                                   ->index;
    const unsigned int draws =
        player
            .addExclusiveRange(0, "Semi-Bluff", Range::TreeRangeNode::Overwrite, true,
                               Range::GroupColor())
            ->index;
    const unsigned int bluffs = player
                                    .addExclusiveRange(0, "Bluff", Range::TreeRangeNode::Overwrite,
                                                       true, Range::GroupColor())
                                    ->index;
    Range::HandRangeStringManipulator(player.handRange(value)).setFree("TT+,AQs+,AKo");
    Range::HandRangeStringManipulator(player.handRange(draws))
        .setFree("A2s-A5s,KTs+,QTs+,JTs,T9s,98s,87s,AhKh,AdKd,AsAc");
    Range::HandRangeStringManipulator(player.handRange(bluffs)).setFree("22-55,A6s-A9s,AdQh,AhQd");

    HandSelectionDialog dialog(player, "Kh9h4c", "");
    dialog.setWindowTitle("Select Player1 Range");
    Ui::HandSelectionDialog* ui = dialog.form();
    dialog.resize(dialog.sizeHint().expandedTo(QSize(1180, 0)));
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));

    // Show the second group, paint one more cell in it with the pen at 50 % A.
    QTest::mouseClick(dialog.groupBoxes()[2], Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    ASSERT_EQ(dialog.currentGroup(), draws);
    ui->percent50AButton->click();
    stroke(ui->handSelectionTable, {"AJs"});
    QTest::qWait(100);

    const QImage shot = dialog.grab().toImage();
    ASSERT_FALSE(shot.isNull());
    ASSERT_TRUE(shot.save(outputPath("handselection-dialog.png")));
    EXPECT_GT(distinctColours(shot), 200u);

    const QImage table = ui->handSelectionTable->grab().toImage();
    ASSERT_TRUE(table.save(outputPath("handselection-table.png")));
    EXPECT_EQ(table.size(), QSize(431, 431));
    // The AKs cell is shared by two groups and painted in stripes.
    EXPECT_EQ(ui->handSelectionTable->cellGroups(1, 0).size(), 2u);

    // The suit hover over that cell.
    QTest::mouseMove(ui->handSelectionTable, centreOf("AKs"));
    move(ui->handSelectionTable, centreOf("AKs"), Qt::NoButton);
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return ui->handSelectionTable->suitHover()->isVisible(); }, 3000));
    QTest::qWait(100);
    const SuitHover::Cells& cells = ui->handSelectionTable->suitHover()->cells();
    EXPECT_EQ(cells[0].color, dialog.groupTree().rangeNode(draws)->color);  // AdKd
    EXPECT_EQ(cells[5].color, dialog.groupTree().rangeNode(draws)->color);  // AhKh
    EXPECT_EQ(cells[10].color, dialog.groupTree().rangeNode(value)->color); // AsKs
    const QImage hover = ui->handSelectionTable->suitHover()->grab().toImage();
    ASSERT_TRUE(hover.save(outputPath("handselection-hover.png")));
    EXPECT_GT(distinctColours(hover), 30u);
}

namespace {

// A dialog on a flop with a tree of saved ranges in two folders, the first one open.
struct SelectorScene {
    Range::Tree player;
    std::unique_ptr<HandSelectionDialog> dialog;

    SelectorScene() {
        player.addRange(Range::Tree::noNode, "Parent", false, Range::GroupColor());
        Range::HandRangeStringManipulator(player.handRange(0)).setFree("22+,A2s+,K9s+,ATo+,KJo+");
        dialog = std::make_unique<HandSelectionDialog>(player, "Kh9h4c", "");
        dialog->setWindowTitle("Select Player1 Range");
        SavedRangeTree& saved = dialog->savedRanges();
        HandSelectionTreeModel& model = saved.model();
        const QModelIndex preflop = model.addCategory("Preflop Opening");
        Range::Tree source;
        source.addRange(Range::Tree::noNode, "", false, Range::GroupColor());
        for (const auto& entry : std::vector<std::pair<const char*, const char*>>{
                 {"UTG 12 %", "66+,A9s+,KTs+,QTs+,JTs,AJo+,KQo"},
                 {"CO 25 %", "22+,A2s+,K8s+,Q9s+,J9s+,T9s,98s,87s,ATo+,KJo+,QJo"},
                 {"BTN 45 %", "22+,A2s+,K2s+,Q5s+,J7s+,T7s+,96s+,86s+,75s+,65s,54s,A2o+,K8o+,"
                              "Q9o+,J9o+,T9o"}}) {
            Range::HandRangeStringManipulator(source.handRange(0)).setFree(entry.second);
            model.addRange(preflop, entry.first, source, 0);
        }
        dialog->form()->rangeTree->expandAll();
        dialog->resize(dialog->sizeHint().expandedTo(QSize(1180, 0)));
    }
};

} // namespace

TEST(HandSelectionScreenshot, HandStrengthSelectorWithAFilledTree) {
    SelectorScene scene;
    Ui::HandSelectionDialog* ui = scene.dialog->form();
    scene.dialog->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(scene.dialog.get()));
    HandStrengthSelectorTab* tab = scene.dialog->handStrengthSelector();
    // Top pair or better, with the flush draw combos in view.
    tab->handValue->setCurrentIndex(tab->handValue->findData(2));
    emit tab->handValue->activated(tab->handValue->currentIndex());
    tab->handValueDetail->setCurrentIndex(tab->handValueDetail->findData(8));
    emit tab->handValueDetail->activated(tab->handValueDetail->currentIndex());
    tab->flushDraw->setCurrentIndex(tab->flushDraw->findData(2));
    emit tab->flushDraw->activated(tab->flushDraw->currentIndex());
    ui->rangeTree->setCurrentIndex(ui->rangeTree->model()->index(0, 0));
    QTest::qWait(100);
    const QImage shot = scene.dialog->grab().toImage();
    ASSERT_TRUE(shot.save(outputPath("handselection-strength-selector.png")));
    EXPECT_GT(distinctColours(shot), 200u);
    const QImage selector = tab->grab().toImage();
    ASSERT_TRUE(selector.save(outputPath("handselection-strength-tab.png")));
}

TEST(HandSelectionScreenshot, EquitySelectorWithAFilledTree) {
    SelectorScene scene;
    Ui::HandSelectionDialog* ui = scene.dialog->form();
    ui->selectorTabs->setCurrentWidget(ui->equityTab);
    scene.dialog->equitySelector()->setOtherRange("TT+,AQs+,AKo");
    scene.dialog->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(scene.dialog.get()));
    QTest::qWait(100);
    const QImage shot = scene.dialog->grab().toImage();
    ASSERT_TRUE(shot.save(outputPath("handselection-equity-selector.png")));
    EXPECT_GT(distinctColours(shot), 200u);
    const QImage selector = scene.dialog->equitySelector()->grab().toImage();
    ASSERT_TRUE(selector.save(outputPath("handselection-equity-tab.png")));
}
