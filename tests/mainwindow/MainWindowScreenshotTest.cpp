// On a real X server: the finished window with two ranges, a flop and the published
// equity, photographed for a person to look at.

#include "MainWindowDriver.h"
#include "support/TestEnvironment.h"

#include "app/Quorvane.h"

#include <QImage>
#include <QLabel>
#include <QSettings>
#include <QTest>
#include <gtest/gtest.h>

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
    // The traffic light is in the picture: player 1's label colour appears where it sits.
    QLabel* label = driver.equityLabel(1);
    const QPoint inside = label->mapTo(&driver.window(), QPoint(3, label->height() / 2));
    const QColor seen = saved.pixelColor(inside);
    EXPECT_EQ(seen.blue(), 0);
    EXPECT_EQ(seen.green(), 255); // player 1 leads on this flop
}

} // namespace
