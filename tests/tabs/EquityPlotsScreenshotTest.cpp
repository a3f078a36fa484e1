// On a real X server: the window as it opens (on "Equity Graphs", nothing calculated yet), and
// both plot tabs filled with QQ+,AKs against 22-JJ,AQs+ on Ah7d2c, photographed for a person
// to look at. The pictures go to the build's test-output folder.

#include "EquityPlotsTestSupport.h"
#include "MainWindowDriver.h"
#include "support/TestEnvironment.h"

#include "app/Quorvane.h"
#include "tabs/EquityEvolutionTab.h"
#include "tabs/EquityGraphTab.h"
#include "ui_Quorvane.h"

#include <QCheckBox>
#include <QCursor>
#include <QGuiApplication>
#include <QImage>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
#include <QTabWidget>
#include <QToolTip>
#include <gtest/gtest.h>
#include <qcustomplot.h>

using namespace EquityPlotsTestSupport;

namespace {

QString outputPath(const char* file) {
    return QString::fromStdString(TestEnvironment::outputFolder()) + "/" + file;
}

void clearSettings() {
    QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
    settings.clear();
    settings.sync();
}

// Saves the window and answers the picture of the current tab's page.
QImage photograph(MainWindowDriver& driver, const char* file) {
    QTest::qWait(200); // let the last repaints land
    const QString path = outputPath(file);
    EXPECT_TRUE(driver.window().grab().toImage().save(path, "PNG")) << file;
    const QImage saved(path);
    EXPECT_FALSE(saved.isNull()) << file;
    QWidget* page = driver.window().form()->tabWidget->currentWidget();
    return saved.copy(QRect(page->mapTo(&driver.window(), QPoint(0, 0)), page->size()));
}

int pixelsOfColour(const QImage& image, const QColor& colour, int tolerance = 0) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QColor seen = image.pixelColor(x, y);
            if (std::abs(seen.red() - colour.red()) <= tolerance &&
                std::abs(seen.green() - colour.green()) <= tolerance &&
                std::abs(seen.blue() - colour.blue()) <= tolerance)
                ++count;
        }
    return count;
}

// Pixels of the page that differ from its top left corner, sampled on a grid.
int differingPixels(const QImage& page) {
    int differing = 0;
    const QColor first = page.pixelColor(0, 0);
    for (int y = 0; y < page.height(); y += 5)
        for (int x = 0; x < page.width(); x += 5)
            differing += page.pixelColor(x, y) != first ? 1 : 0;
    return differing;
}

} // namespace

TEST(EquityPlotsScreenshot, TheWindowOpensOnAGraphTabThatLooksFinished) {
    EXPECT_EQ(QGuiApplication::platformName(), QStringLiteral("xcb"));
    clearSettings();
    MainWindowDriver driver;
    driver.window().resize(1432, 1036);
    EquityGraphTab* graph = driver.window().form()->equityGraphTab;
    ASSERT_EQ(driver.window().form()->tabWidget->currentWidget(), graph);
    const QImage page = photograph(driver, "equity-graphs-at-start.png");
    // Axes, labels, the legend's colours and the sentence are there: no blank page.
    EXPECT_GT(differingPixels(page), 400);
    EXPECT_FALSE(graph->message().isEmpty());
    EXPECT_GT(pixelsOfColour(page, QColor(255, 0, 0)), 20);
    EXPECT_GT(pixelsOfColour(page, QColor(0, 0, 255)), 20);
}

TEST(EquityPlotsScreenshot, BothTabsFilled) {
    clearSettings();
    MainWindowDriver driver;
    driver.window().resize(1432, 1036);
    Ui::QuorvaneClass* ui = driver.window().form();
    driver.typeRange(1, QStringLiteral("QQ+,AKs"));
    driver.typeRange(2, QStringLiteral("22-JJ,AQs+"));
    driver.typeFlop(QStringLiteral("Ah7d2c"));
    ASSERT_TRUE(driver.waitForEquity());

    EquityGraphTab* graph = ui->equityGraphTab;
    QTest::mouseClick(graph->calculationButton(), Qt::LeftButton);
    ASSERT_TRUE(waitUntil([graph] { return !graph->isCalculating(); }));
    const QImage curves = photograph(driver, "equity-graphs.png");
    EXPECT_GT(pixelsOfColour(curves, QColor(255, 0, 0)), 300);
    EXPECT_GT(pixelsOfColour(curves, QColor(0, 0, 255)), 300);
    EXPECT_EQ(graph->message(), "");

    graph->cumulateFlag()->setChecked(true);
    const QImage cumulated = photograph(driver, "equity-graphs-cumulated.png");
    EXPECT_GT(pixelsOfColour(cumulated, QColor(255, 0, 0)), 300);

    QTest::keyClick(&driver.window(), Qt::Key_F5);
    EquityEvolutionTab* evolution = ui->equityEvolutionTab;
    ASSERT_EQ(ui->tabWidget->currentWidget(), evolution);
    const QImage empty = photograph(driver, "equity-evolutions-before.png");
    EXPECT_GT(differingPixels(empty), 400);
    QTest::mouseClick(evolution->findChild<QPushButton*>("analyzeTurnButton"), Qt::LeftButton);
    ASSERT_TRUE(waitUntil([evolution] { return !evolution->isAnalysing(); }));
    const QImage bars = photograph(driver, "equity-evolutions.png");
    // Each suit's dark end of its gradient shows in the bars' outlines.
    for (const QColor& dark :
         {QColor(26, 42, 228), QColor(222, 58, 44), QColor(64, 64, 92), QColor(4, 192, 8)})
        EXPECT_GT(pixelsOfColour(bars, dark, 6), 30) << dark.name().toStdString();

    // The hover tip of the king of spades, with the whole screen so that the tip is in it.
    QCustomPlot* plot = evolution->plot();
    const double ks = evolution->barOf("Ks");
    const QPoint inside(static_cast<int>(plot->xAxis->coordToPixel(evolution->positions(2)[1])),
                        static_cast<int>(plot->yAxis->coordToPixel(ks / 2)));
    QTest::mouseMove(plot, inside);
    moveMouse(plot, inside);
    ASSERT_TRUE(waitUntil([] { return QToolTip::isVisible(); }, 3000));
    EXPECT_TRUE(QToolTip::text().startsWith("Ks: "));
    QTest::qWait(300);
    const QImage screen = QGuiApplication::primaryScreen()->grabWindow(0).toImage();
    EXPECT_TRUE(screen.save(outputPath("equity-evolutions-hover.png"), "PNG"));
}
