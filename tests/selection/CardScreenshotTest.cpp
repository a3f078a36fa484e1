#include "CardTestHelpers.h"

#include "selection/BoardCardsWidget.h"
#include "selection/CardRange.h"
#include "selection/CardRangeText.h"
#include "selection/CardSelectionDialog.h"
#include "selection/CardSelectionTable.h"
#include "support/TestEnvironment.h"

#include <QApplication>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

using namespace CardTestHelpers;

namespace {

QString outputPath(const char* name) {
    return QString::fromStdString(TestEnvironment::outputFolder()) + "/" + name;
}

// Counts pixels of a colour family, to see that the cards were really painted.
int countPixels(const QImage& image, const std::function<bool(const QColor&)>& matches) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            count += matches(image.pixelColor(x, y)) ? 1 : 0;
        }
    }
    return count;
}

bool isCardBlue(const QColor& c) {
    return c.blue() > 150 && c.red() < 90 && c.green() < 140;
}
bool isCardRed(const QColor& c) {
    return c.red() > 170 && c.green() < 60 && c.blue() < 60;
}
bool isCardGreen(const QColor& c) {
    return c.green() > 110 && c.red() < 60 && c.blue() < 100;
}

} // namespace

TEST(CardScreenshots, RunsOnARealDisplay) {
    EXPECT_EQ(QGuiApplication::platformName(), QStringLiteral("xcb"));
}

TEST(CardScreenshots, BoardWidget) {
    BoardCardsWidget widget;
    widget.setWindowTitle("Board");
    widget.setBoard("AhKd2c7s");
    widget.setDeadCards("9c4d");
    widget.resize(980, widget.sizeHint().height());
    widget.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&widget));
    QTest::qWait(50);
    const QImage image = widget.grab().toImage();
    ASSERT_FALSE(image.isNull());
    const QString path = outputPath("board_cards_widget.png");
    ASSERT_TRUE(image.save(path));
    EXPECT_TRUE(QFile::exists(path));
    // The hearts ace, the diamonds king and the clubs cards show in their colours.
    EXPECT_GT(countPixels(image, isCardRed), 100);
    EXPECT_GT(countPixels(image, isCardBlue), 100);
    EXPECT_GT(countPixels(image, isCardGreen), 100);
    // The river field is open (a turn is set) and empty.
    EXPECT_TRUE(widget.riverText()->isEnabled());
    EXPECT_EQ(widget.getRiver(), "");
}

TEST(CardScreenshots, CardDialog) {
    BoardCardsWidget widget;
    widget.setBoard("AhKd2c");
    widget.setDeadCards("9c");
    widget.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&widget));
    QImage image;
    whenModalShows([&](QWidget* modal) {
        auto* dialog = qobject_cast<CardSelectionDialog*>(modal);
        ASSERT_NE(dialog, nullptr);
        click(dialog->table(), "7s");
        QTest::qWait(50);
        image = dialog->grab().toImage();
        EXPECT_EQ(dialog->table()->stateOf("7s"), CardSelectionTable::CellState::Marked);
        EXPECT_EQ(dialog->table()->stateOf("Ah"), CardSelectionTable::CellState::Blocked);
        EXPECT_EQ(dialog->table()->stateOf("9c"), CardSelectionTable::CellState::Blocked);
        QTest::mouseClick(dialog->okButton(), Qt::LeftButton);
    });
    widget.onSelectTurnCard();
    ASSERT_FALSE(image.isNull());
    ASSERT_TRUE(image.save(outputPath("card_selection_dialog.png")));
    EXPECT_EQ(widget.getBoard(), "AhKd2c7s");
}
