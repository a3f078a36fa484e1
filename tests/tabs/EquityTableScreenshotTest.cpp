#include "EquityTableTestHelpers.h"

#include "calculation/ThreadPool.h"
#include "support/TestEnvironment.h"
#include "tabs/EquityMatrixTable.h"

#include <QCheckBox>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QTabWidget>
#include <gtest/gtest.h>

#include <cmath>

using namespace EquityTableTestHelpers;

// A real case as a player would look at it: an opening range of about 20 % against a
// three-bet range on a two-tone flop, every combination listed.
TEST(EquityTableScreenshot, RealCase) {
    EXPECT_EQ(QGuiApplication::platformName(), QStringLiteral("xcb"));
    initializeAllBoardsBeforeCalculation();
    QFile style(":/style.qss");
    if (style.open(QIODevice::ReadOnly)) {
        qApp->setStyleSheet(QString::fromUtf8(style.readAll()));
    }
    ThreadPool pool;
    QTabWidget window;
    auto* tab = new EquityTableTab;
    tab->setObjectName("equityTableTab");
    window.addTab(tab, "Equity Tables");
    window.resize(1280, 760);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    tab->setThreadPool(&pool);
    tab->findChild<QCheckBox*>("showCombinationsFlag")->setChecked(false);
    tab->updateInputs("22+,A2s+,K9s+,Q9s+,J9s+,T8s+,97s+,86s+,76s,65s,A9o+,KTo+,QTo+,JTo",
                      "TT+,AQs+,AKo,A5s,KQs", "Jh9h4c", "");
    ASSERT_TRUE(waitForResult(*tab));
    QTest::qWait(100);

    const QImage image = window.grab().toImage();
    ASSERT_FALSE(image.isNull());
    const QString path =
        QString::fromStdString(TestEnvironment::outputFolder()) + "/equity_table_tab.png";
    ASSERT_TRUE(image.save(path));
    EXPECT_TRUE(QFile::exists(path));

    // The matrix is filled where the range holds hands and the table lists its classes.
    auto* matrix = tab->findChild<EquityMatrixTable*>("equityMatrixTable");
    int filled = 0;
    for (int row = 0; row < 13; ++row) {
        for (int column = 0; column < 13; ++column) {
            filled += std::isnan(matrix->cellValue(row, column)) ? 0 : 1;
        }
    }
    EXPECT_EQ(filled, static_cast<int>(tableRows(*tab).size()));
    EXPECT_GT(filled, 40);
}
