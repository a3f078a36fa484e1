// On a real X server: the three pages of a training inside the main window, photographed for
// a person to look at.

#include "TrainingTestHelpers.h"
#include "app/MainWindowDriver.h"
#include "support/TestEnvironment.h"

#include "Range/RandomSource.h"
#include "app/Quorvane.h"
#include "selection/BoardCardsWidget.h"
#include "selection/CardRangeText.h"
#include "selection/HandRangeLine.h"
#include "training/EquityTrainingItem.h"
#include "training/EquityTrainingResults.h"
#include "training/EquityTrainingStart.h"
#include "training/EquityTrainingTab.h"
#include "ui_Quorvane.h"

#include <QGuiApplication>
#include <QImage>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>

using namespace TrainingTestHelpers;

namespace {

// Each page fits the tab of the window at its first size: nothing is squeezed and the
// window needs no scroll bar for it.
void expectFits(const EquityTrainingTab* tab, const QWidget* page) {
    ASSERT_NE(page, nullptr);
    EXPECT_LE(page->minimumSizeHint().height(), tab->height()) << page->objectName().toStdString();
    EXPECT_LE(page->minimumSizeHint().width(), tab->width()) << page->objectName().toStdString();
}

void photograph(QWidget& window, const char* file) {
    QTest::qWait(150); // let the last repaints land
    const QString path = QString::fromStdString(TestEnvironment::outputFolder()) + "/" + file;
    ASSERT_TRUE(window.grab().toImage().save(path, "PNG"));
    const QImage saved(path);
    EXPECT_FALSE(saved.isNull()) << file;
}

} // namespace

TEST(EquityTrainingScreenshot, TheThreePagesOfATraining) {
    EXPECT_EQ(QGuiApplication::platformName(), QStringLiteral("xcb"));
    {
        QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
        settings.clear();
        settings.sync();
    }
    Range::RandomSource::shared().reseed(777);
    MainWindowDriver driver;
    Quorvane& window = driver.window();
    window.resize(1432, 1036);
    QTest::keyClick(&window, Qt::Key_F7);
    EquityTrainingTab* tab = window.form()->equityTrainingTab;
    EquityTrainingStart* start = tab->startPage();
    ASSERT_NE(start, nullptr);

    typeRange(start->heroLine(), QStringLiteral("TT+,AJs+,KQs,AQo+"));
    typeRange(start->villain1Line(),
              QStringLiteral("22+,A2s+,K9s+,Q9s+,J9s+,T8s+,97s+,87s,76s,A9o+,KTo+,QTo+,JTo"));
    typeRange(start->villain2Line(), QStringLiteral("QQ+,AKs"));
    child<QRadioButton>(start, "turnRadio")->click();
    CardRangeText* flop = start->boardCards()->flopText();
    flop->setFocus();
    QTest::keyClicks(flop, QStringLiteral("Ks"));
    QTest::keyClick(flop, Qt::Key_Return);
    expectFits(tab, start);
    photograph(window, "training-start.png");

    QTest::mouseClick(child<QPushButton>(start, "startTrainingButton"), Qt::LeftButton);
    const double guesses1[] = {55, 38.5, 70, 24, 61};
    const double guesses2[] = {35, 20, 48, 12, 30};
    for (int index = 0; index < 5; ++index) {
        EquityTrainingItem* item = tab->itemPage();
        ASSERT_NE(item, nullptr);
        typeGuess(child<QDoubleSpinBox>(item, "guess1"), QString::number(guesses1[index]));
        typeGuess(child<QDoubleSpinBox>(item, "guess2"), QString::number(guesses2[index]));
        if (index == 0) {
            expectFits(tab, item);
            photograph(window, "training-item-guess.png");
        }
        QTest::mouseClick(child<QPushButton>(item, "solveButton"), Qt::LeftButton);
        ASSERT_TRUE(waitUntil([&] { return item->isInResultState(); }));
        if (index == 0)
            photograph(window, "training-item-result.png");
        QTest::mouseClick(child<QPushButton>(item, index < 4 ? "continueButton" : "finishButton"),
                          Qt::LeftButton);
    }
    ASSERT_NE(tab->resultsPage(), nullptr);
    EXPECT_EQ(child<QLabel>(tab->resultsPage(), "guessesValue")->text(), QStringLiteral("10"));
    expectFits(tab, tab->resultsPage());
    photograph(window, "training-results.png");
}
