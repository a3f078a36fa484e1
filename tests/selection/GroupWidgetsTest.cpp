// RangeGroupBox, HandRangeItemDelegate, GroupColorSelectionDialog, NoPaintFilter and
// HintTooltip.

#include "Range/HandRangeStringManipulator.h"
#include "Range/Tree.h"
#include "Range/TreeRangeNode.h"
#include "utils/ui/HintTooltip.h"
#include "utils/ui/NoPaintFilter.h"
#include "selection/GroupColorSelectionDialog.h"
#include "selection/HandRangeItemDelegate.h"
#include "selection/RangeGroupBox.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QListWidget>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTest>
#include <gtest/gtest.h>

namespace {

Range::GroupColor colorOf(int r1, int g1, int b1, int r2, int g2, int b2) {
    Range::GroupColor color;
    color.colorFrom = {r1, g1, b1};
    color.colorTo = {r2, g2, b2};
    color.usesColor = true;
    return color;
}

// ---- RangeGroupBox -------------------------------------------------------------------------

TEST(RangeGroupBox, TextsAndFontsByState) {
    RangeGroupBox box;
    EXPECT_EQ(box.displayText(), QStringLiteral("*"));
    box.setNumber(3);
    EXPECT_EQ(box.displayText(), QStringLiteral("3"));
    EXPECT_EQ(box.font().weight(), 50);
    EXPECT_FALSE(box.font().underline());
    box.setState(RangeGroupBox::Selected);
    EXPECT_EQ(box.font().weight(), 75);
    EXPECT_TRUE(box.font().underline());
    box.setState(RangeGroupBox::NewGroup);
    EXPECT_EQ(box.displayText(), QStringLiteral("New"));
    EXPECT_EQ(box.font().weight(), 50);
}

TEST(RangeGroupBox, AGroupsBoxIsFilledWithItsGradientAndAClickIsSignalled) {
    Range::Tree tree;
    tree.addRange(Range::Tree::noNode, "Parent", false, Range::GroupColor());
    Range::TreeRangeNode* group =
        tree.addRange(0, "Value", false, colorOf(10, 200, 30, 10, 200, 30));
    RangeGroupBox box;
    box.resize(30, 22);
    box.setNumber(1);
    box.SetRangeNode(group);
    QImage image(box.size(), QImage::Format_ARGB32);
    image.fill(Qt::white);
    box.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    EXPECT_EQ(image.pixelColor(1, 1), QColor(10, 200, 30));

    QSignalSpy clicked(&box, &RangeGroupBox::clicked);
    QTest::mouseClick(&box, Qt::LeftButton);
    EXPECT_EQ(clicked.count(), 1);
}

// ---- HandRangeItemDelegate -----------------------------------------------------------------

TEST(HandRangeItemDelegate, PaintsTheColourMarkAndTheRangeAsRichText) {
    Range::Tree tree;
    tree.addFolder(Range::Tree::noNode, "Folder");
    Range::TreeRangeNode* node =
        tree.addRange(0, "Open <UTG>", false, colorOf(200, 20, 20, 200, 20, 20));
    Range::HandRangeStringManipulator(node->handRange).setFree("QQ+,AKs");

    HandRangeItemDelegate delegate(&tree);
    EXPECT_EQ(delegate.richText(1), QStringLiteral("<b>Open &lt;UTG&gt;</b> QQ+,AKs"));

    QStandardItemModel model;
    auto* item = new QStandardItem(QStringLiteral("ignored"));
    item->setData(1u, HandRangeItemDelegate::nodeRole);
    model.appendRow(item);
    auto* folder = new QStandardItem(QStringLiteral("Folder"));
    folder->setData(0u, HandRangeItemDelegate::nodeRole);
    model.appendRow(folder);

    QStyleOptionViewItem option;
    option.rect = QRect(0, 0, 300, 20);
    option.font = QApplication::font();
    option.palette = QApplication::palette();
    const QSize hint = delegate.sizeHint(option, model.index(0, 0));
    EXPECT_GT(hint.width(), HandRangeItemDelegate::colorMarkWidth);
    // Narrower items wrap the text onto more lines.
    option.rect = QRect(0, 0, 60, 20);
    EXPECT_GT(delegate.sizeHint(option, model.index(0, 0)).height(), hint.height());

    QImage image(300, 20, QImage::Format_ARGB32);
    image.fill(Qt::white);
    {
        QPainter painter(&image);
        option.rect = QRect(0, 0, 300, 20);
        delegate.paint(&painter, option, model.index(0, 0));
    }
    EXPECT_EQ(image.pixelColor(4, 10), QColor(200, 20, 20));
    bool textPainted = false;
    for (int x = 20; x < 120 && !textPainted; ++x)
        for (int y = 0; y < 20 && !textPainted; ++y)
            textPainted = image.pixelColor(x, y) != QColor(Qt::white);
    EXPECT_TRUE(textPainted);
}

// ---- GroupColorSelectionDialog -------------------------------------------------------------

TEST(GroupColorSelectionDialog, EqualColoursMeanOneColour) {
    GroupColorSelectionDialog dialog(colorOf(1, 2, 3, 1, 2, 3), {});
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Group Colors"));
    EXPECT_TRUE(dialog.onlyOneColorCheckBox()->isChecked());
    EXPECT_FALSE(dialog.secondColorButton()->isEnabled());
    EXPECT_EQ(dialog.secondColorButton()->styleSheet(), QStringLiteral("border-style:none;"));
    EXPECT_EQ(dialog.firstColorButton()->styleSheet(),
              QStringLiteral("border-style:none;background-color:#010203"));
}

TEST(GroupColorSelectionDialog, TwoColoursAndTheCheckBox) {
    GroupColorSelectionDialog dialog(colorOf(255, 0, 0, 0, 0, 255), {});
    EXPECT_FALSE(dialog.onlyOneColorCheckBox()->isChecked());
    EXPECT_TRUE(dialog.secondColorButton()->isEnabled());
    EXPECT_EQ(dialog.secondColorButton()->styleSheet(),
              QStringLiteral("border-style:none;background-color:#0000ff"));
    dialog.onlyOneColorCheckBox()->setChecked(true);
    EXPECT_FALSE(dialog.secondColorButton()->isEnabled());
    EXPECT_EQ(dialog.secondColor(), QColor(255, 0, 0));
    dialog.onlyOneColorCheckBox()->setChecked(false);
    EXPECT_TRUE(dialog.secondColorButton()->isEnabled());
    EXPECT_EQ(dialog.secondColorButton()->styleSheet(),
              QStringLiteral("border-style:none;background-color:#ff0000"));
}

TEST(GroupColorSelectionDialog, PickingColours) {
    GroupColorSelectionDialog dialog(colorOf(255, 0, 0, 0, 0, 255), {});
    QColor answer(10, 20, 30);
    dialog.setColorPicker([&answer](const QColor&, QWidget*) { return answer; });
    QTest::mouseClick(dialog.secondColorButton(), Qt::LeftButton);
    EXPECT_EQ(dialog.secondColor(), QColor(10, 20, 30));
    // A cancelled pick (invalid colour) changes nothing.
    answer = QColor();
    QTest::mouseClick(dialog.firstColorButton(), Qt::LeftButton);
    EXPECT_EQ(dialog.firstColor(), QColor(255, 0, 0));
    // With one colour the first pick sets both.
    dialog.onlyOneColorCheckBox()->setChecked(true);
    answer = QColor(7, 8, 9);
    QTest::mouseClick(dialog.firstColorButton(), Qt::LeftButton);
    EXPECT_EQ(dialog.firstColor(), QColor(7, 8, 9));
    EXPECT_EQ(dialog.secondColor(), QColor(7, 8, 9));
    const Range::GroupColor chosen = dialog.groupColor();
    EXPECT_TRUE(chosen.usesColor);
    EXPECT_EQ(chosen.colorTo.blue, 9);
}

TEST(GroupColorSelectionDialog, TheUnusedStandardColoursOfferBothColours) {
    const auto& standard = Range::GroupColor::standardColors();
    // The first is in use by another group of the family.
    const std::vector<Range::GroupColor> unused = Range::GroupColor::freeColors({standard[0]});
    ASSERT_EQ(unused.size(), 15u);
    GroupColorSelectionDialog dialog(colorOf(1, 1, 1, 1, 1, 1), unused);
    ASSERT_EQ(dialog.unusedColorList()->count(), 15);
    dialog.onUnusedColorClicked(dialog.unusedColorList()->item(0));
    EXPECT_EQ(dialog.firstColor(), QColor(111, 232, 122));
    EXPECT_EQ(dialog.secondColor(), QColor(91, 202, 101));
    EXPECT_FALSE(dialog.onlyOneColorCheckBox()->isChecked());
    EXPECT_TRUE(dialog.secondColorButton()->isEnabled());
    // Table entry 15 has two different colours too; entry 16's pair is used as is.
    dialog.onUnusedColorClicked(dialog.unusedColorList()->item(14));
    EXPECT_EQ(dialog.firstColor(), QColor(255, 22, 22));
    EXPECT_EQ(dialog.secondColor(), QColor(255, 255, 42));
}

// ---- NoPaintFilter and HintTooltip ---------------------------------------------------------

TEST(NoPaintFilter, SwallowsPaintEventsOnlyWhileInstalled) {
    QLabel label(QStringLiteral("XXXXXXXX"));
    label.resize(label.sizeHint());
    const auto painted = [&label] {
        QImage image(label.size(), QImage::Format_ARGB32);
        image.fill(Qt::transparent);
        label.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (image.pixelColor(x, y).alpha() != 0)
                    return true;
        return false;
    };
    Utils::UI::NoPaintFilter filter;
    EXPECT_TRUE(painted());
    label.installEventFilter(&filter);
    EXPECT_FALSE(painted());
    label.removeEventFilter(&filter);
    EXPECT_TRUE(painted());
}

TEST(HintTooltip, FramelessTimedAndDeletedOnItsOwn) {
    QWidget owner;
    QPointer<HintTooltip> tip = new HintTooltip(QStringLiteral("<b>Hint</b>"), &owner, 50);
    EXPECT_EQ(static_cast<int>(tip->windowFlags()), 0x4080D);
    EXPECT_TRUE(tip->testAttribute(Qt::WA_DeleteOnClose));
    EXPECT_TRUE(tip->testAttribute(Qt::WA_TranslucentBackground));
    EXPECT_EQ(tip->geometry(), QRect(QPoint(200, 200), QPoint(399, 299)));
    EXPECT_EQ(tip->label()->textFormat(), Qt::RichText);
    EXPECT_TRUE(tip->label()->wordWrap());
    EXPECT_TRUE(tip->closesByClick());
    // Never shown, and gone all the same once its time is up.
    EXPECT_TRUE(QTest::qWaitFor([&tip] { return tip.isNull(); }, 2000));
}

TEST(HintTooltip, AClickClosesItUnlessSwitchedOff) {
    QPointer<HintTooltip> tip = new HintTooltip(QStringLiteral("Hint"), nullptr, 60000);
    tip->SetCloseByClick(false);
    tip->show();
    QTest::mouseClick(tip, Qt::LeftButton);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ASSERT_FALSE(tip.isNull());
    EXPECT_TRUE(tip->isVisible());
    tip->SetCloseByClick(true);
    QTest::mouseClick(tip, Qt::LeftButton);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(tip.isNull());
}

TEST(HintTooltip, HintsWantedReadsTheCapitalMGroup) {
    QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
    settings.remove(QStringLiteral("optionMenu"));
    settings.remove(QStringLiteral("optionmenu"));
    EXPECT_TRUE(HintTooltip::hintsWanted());
    settings.setValue(QStringLiteral("optionmenu/showHintTooltips"), false);
    settings.sync();
    EXPECT_TRUE(HintTooltip::hintsWanted());
    settings.setValue(QStringLiteral("optionMenu/showHintTooltips"), false);
    settings.sync();
    EXPECT_FALSE(HintTooltip::hintsWanted());
    settings.remove(QStringLiteral("optionMenu"));
    settings.remove(QStringLiteral("optionmenu"));
}

} // namespace
