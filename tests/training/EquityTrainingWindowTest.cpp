// The training tab inside the main window.

#include "app/MainWindowDriver.h"

#include "app/Quorvane.h"
#include "calculation/ThreadPool.h"
#include "selection/HandRangeLine.h"
#include "training/EquityTrainingStart.h"
#include "training/EquityTrainingTab.h"
#include "ui_Quorvane.h"

#include <QTabWidget>
#include <QTest>
#include <QTextBrowser>
#include <QTextDocumentFragment>
#include <gtest/gtest.h>

TEST(EquityTrainingWindow, TheTabHasTheWindowsPoolAndBuildsItsStartPageWhenShown) {
    MainWindowDriver driver;
    Ui::QuorvaneClass* ui = driver.window().form();
    EquityTrainingTab* tab = ui->equityTrainingTab;
    ASSERT_NE(tab, nullptr);
    EXPECT_EQ(ui->tabWidget->indexOf(tab), 6);
    EXPECT_EQ(tab->getThreadPool(), &driver.window().pool());
    // The window opens on another tab: nothing is built before the training tab shows.
    EXPECT_FALSE(tab->hasPage());
    QTest::keyClick(&driver.window(), Qt::Key_F7);
    EXPECT_EQ(ui->tabWidget->currentIndex(), 6);
    ASSERT_NE(tab->startPage(), nullptr);
    EXPECT_EQ(tab->currentPage(), tab->startPage());
    EXPECT_TRUE(tab->startPage()->isVisible());
    EXPECT_EQ(ui->explanatoryText->toPlainText(),
              QStringLiteral("Here, you can train your equity. One hand will be picked randomly "
                             "from Hero's Range. Then, you have to determine the equity against "
                             "villain's range or both (if given) of villain's ranges separately. "
                             "The board can be constructed randomly for flop, turn and river or "
                             "you can determine some cards which will be on the board no matter "
                             "what. That way, you can train different ranges on whichever board "
                             "type you wish."));
    // Coming back keeps the page and what was typed on it.
    EquityTrainingStart* start = tab->startPage();
    start->heroLine()->setText(QStringLiteral("AKs"));
    QTest::keyClick(&driver.window(), Qt::Key_F1);
    QTest::keyClick(&driver.window(), Qt::Key_F7);
    EXPECT_EQ(tab->startPage(), start);
    EXPECT_EQ(start->heroLine()->text(), QStringLiteral("AKs"));
}
