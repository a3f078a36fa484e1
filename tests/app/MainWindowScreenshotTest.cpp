// On a real X server: the finished window with two ranges, a flop and the published
// equity, photographed for a person to look at.

#include "MainWindowDriver.h"
#include "support/TestEnvironment.h"

#include "app/Quorvane.h"
#include "tabs/BoardHitEvaluationTable.h"
#include "tabs/BoardHitsTab.h"
#include "tabs/EquityTableTab.h"
#include "tabs/TwoPlayerBoardHitsTab.h"
#include "tabs/WinEvaluationTab.h"
#include "ui_Quorvane.h"

#include <QImage>
#include <QLabel>
#include <QSettings>
#include <QTabWidget>
#include <QTest>
#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace {

TEST(MainWindowScreenshot, RangesBoardAndEquity) {
    {
        QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
        settings.clear();
        settings.sync();
    }
    MainWindowDriver driver;
    driver.window().resize(1432, 1036);
    driver.typeRange(1, QStringLiteral("QQ+,AKs"));
    driver.typeRange(2, QStringLiteral("JJ-22,AQs+"));
    driver.typeFlop(QStringLiteral("Ah7d2c"));
    ASSERT_TRUE(driver.waitForEquity());
    EXPECT_TRUE(driver.equityLabel(1)->text().endsWith(QStringLiteral(" %")));
    QTest::qWait(200); // let the last repaints land

    const QString path =
        QString::fromStdString(TestEnvironment::outputFolder()) + "/mainwindow-equity.png";
    const QImage picture = driver.window().grab().toImage();
    ASSERT_TRUE(picture.save(path, "PNG"));
    const QImage saved(path);
    ASSERT_FALSE(saved.isNull());
    EXPECT_EQ(saved.size(), driver.window().size() * driver.window().devicePixelRatioF());
    // The traffic light is in the picture: player 1's label colour appears where it sits
    // (above the text, right of the player's marker on its left edge).
    QLabel* label = driver.equityLabel(1);
    const QPoint inside = label->mapTo(&driver.window(), QPoint(label->width() / 2, 3));
    const QColor seen = saved.pixelColor(inside);
    EXPECT_EQ(seen.blue(), 0);
    EXPECT_EQ(seen.green(), 255); // player 1 leads on this flop
}

// Each analysis tab with real results for the same inputs, for a person to look at.
TEST(MainWindowScreenshot, EachAnalysisTabWithResults) {
    {
        QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
        settings.clear();
        settings.sync();
    }
    MainWindowDriver driver;
    driver.window().resize(1432, 1036);
    Ui::QuorvaneClass* ui = driver.window().form();
    driver.typeRange(1, QStringLiteral("QQ+,AKs"));
    driver.typeRange(2, QStringLiteral("JJ-22,AQs+"));
    driver.typeFlop(QStringLiteral("Ah7d2c"));
    ASSERT_TRUE(driver.waitForEquity());

    struct Shot {
        int index;
        const char* file;
        std::function<bool()> finished;
    };
    const std::vector<Shot> shots = {
        {0, "mainwindow-boardhits.png",
         [ui] { return !ui->boardHitsTab->table()->rows().empty(); }},
        {1, "mainwindow-twoplayerboardhits.png",
         [ui] { return !ui->twoPlayerBoardHitsTab->table()->rows().empty(); }},
        {2, "mainwindow-winevaluation.png",
         [ui] {
             return !ui->winEvaluationTab->isCalculating() &&
                    !ui->winEvaluationTab->results().empty();
         }},
        {3, "mainwindow-equitytables.png",
         [ui] {
             return !ui->equityTableTab->isCalculating() &&
                    !ui->equityTableTab->getAllEvaluations().empty();
         }},
    };
    for (const Shot& shot : shots) {
        ui->tabWidget->setCurrentIndex(shot.index);
        ASSERT_TRUE(MainWindowDriver::waitUntil(shot.finished, 60000)) << shot.file;
        ASSERT_TRUE(driver.waitForEquity()) << shot.file;
        QTest::qWait(200); // let the last repaints land
        const QString path =
            QString::fromStdString(TestEnvironment::outputFolder()) + "/" + shot.file;
        ASSERT_TRUE(driver.window().grab().toImage().save(path, "PNG")) << shot.file;
        const QImage saved(path);
        ASSERT_FALSE(saved.isNull()) << shot.file;
        // The tab's page is in the picture and is not blank.
        QWidget* page = ui->tabWidget->currentWidget();
        const QRect area(page->mapTo(&driver.window(), QPoint(0, 0)), page->size());
        const QImage content = saved.copy(area);
        int differing = 0;
        const QColor first = content.pixelColor(0, 0);
        for (int y = 0; y < content.height(); y += 7)
            for (int x = 0; x < content.width(); x += 7)
                differing += content.pixelColor(x, y) != first ? 1 : 0;
        EXPECT_GT(differing, 100) << shot.file;
    }
}

} // namespace
