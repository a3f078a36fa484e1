// On a real X server: the finished window at the three screen sizes players use, with
// ranges, a flop, the equity and the Board Hits tab, photographed for a person to look at.

#include "MainWindowDriver.h"
#include "support/TestEnvironment.h"

#include "app/Quorvane.h"
#include "tabs/BoardHitEvaluationTable.h"
#include "tabs/BoardHitsTab.h"
#include "ui_Quorvane.h"

#include <QImage>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QSettings>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <gtest/gtest.h>

#include <string>

namespace {

class WindowSizesScreenshot : public ::testing::TestWithParam<QSize> {
protected:
    void SetUp() override {
        QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
        settings.clear();
        settings.sync();
    }
};

TEST_P(WindowSizesScreenshot, RangesBoardEquityAndBoardHits) {
    const QSize size = GetParam();
    MainWindowDriver driver;
    driver.window().resize(size);
    Ui::QuorvaneClass* ui = driver.window().form();
    ui->tabWidget->setCurrentIndex(0);
    driver.typeRange(1, QStringLiteral("QQ+,AKs"));
    driver.typeRange(2, QStringLiteral("JJ-22,AQs+"));
    driver.typeFlop(QStringLiteral("Ah7d2c"));
    ASSERT_TRUE(driver.waitForEquity());
    ASSERT_TRUE(MainWindowDriver::waitUntil(
        [ui] { return !ui->boardHitsTab->table()->rows().empty(); }, 60000));
    // The focus (and its frame) rests on the scenario box, as after opening a file.
    ui->scenarios->setFocus();
    QTest::qWait(300); // let the last repaints land
    ASSERT_EQ(driver.window().size(), size);

    const std::string name =
        "mainwindow-" + std::to_string(size.width()) + "x" + std::to_string(size.height()) + ".png";
    const QString path = QString::fromStdString(TestEnvironment::outputFolder() + "/" + name);
    const QImage picture = driver.window().grab().toImage();
    ASSERT_TRUE(picture.save(path, "PNG"));
    const QImage saved(path);
    ASSERT_FALSE(saved.isNull());
    EXPECT_EQ(saved.size(), size * driver.window().devicePixelRatioF());

    // Nothing scrolls at these sizes, and the equity is in the picture where its label is.
    auto* scroll = driver.window().findChild<QScrollArea*>(QStringLiteral("centralScrollArea"));
    ASSERT_NE(scroll, nullptr);
    EXPECT_FALSE(scroll->horizontalScrollBar()->isVisible());
    EXPECT_FALSE(scroll->verticalScrollBar()->isVisible());
    if (size.width() >= 1366) {
        // With the fonts of a real desktop every tab's title is in view beside the
        // explanations, none behind the bar's scroll buttons.
        EXPECT_TRUE(ui->explanatoryWidget->isVisible());
        const QTabBar* bar = ui->tabWidget->tabBar();
        EXPECT_GE(bar->tabRect(0).left(), 0);
        EXPECT_LE(bar->tabRect(bar->count() - 1).right(), bar->width() - 1);
    }
    QLabel* label = driver.equityLabel(1);
    const QPoint inside = label->mapTo(&driver.window(), QPoint(label->width() / 2, 3));
    const QColor seen = saved.pixelColor(inside * driver.window().devicePixelRatioF());
    EXPECT_EQ(seen.blue(), 0);
    EXPECT_EQ(seen.green(), 255); // player 1 leads on this flop
}

INSTANTIATE_TEST_SUITE_P(ScreenSizes, WindowSizesScreenshot,
                         ::testing::Values(QSize(1024, 700), QSize(1366, 768), QSize(1920, 1080)));

} // namespace
