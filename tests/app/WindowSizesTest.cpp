// The window at the sizes players' screens give it: from 1024 by 700 up nothing of the top
// rows is squeezed below what it needs, cut off or lying on something else, and nothing
// scrolls; below that the window scrolls rather than squeezes.

#include "MainWindowDriver.h"

#include "app/Quorvane.h"
#include "selection/CardRange.h"
#include "ui_Quorvane.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QSettings>
#include <QTabWidget>
#include <QTest>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

class WindowSizes : public ::testing::Test {
protected:
    void SetUp() override {
        QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
        settings.clear();
        settings.sync();
    }

    static void showAt(MainWindowDriver& driver, const QSize& size) {
        driver.window().resize(size);
        QTest::qWait(50);
        QApplication::processEvents();
    }
};

std::string nameOf(const QWidget* widget) {
    QString name = widget->objectName();
    if (name.isEmpty())
        name = QString::fromLatin1(widget->metaObject()->className());
    if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
        name += QStringLiteral(" \"") + button->text() + QStringLiteral("\"");
    if (const auto* label = qobject_cast<const QLabel*>(widget))
        name += QStringLiteral(" \"") + label->text() + QStringLiteral("\"");
    return name.toStdString();
}

// The controls a player reads and clicks in the rows above the tabs.
std::vector<QWidget*> controlsOf(QWidget* area) {
    std::vector<QWidget*> controls;
    for (QWidget* widget : area->findChildren<QWidget*>()) {
        if (!widget->isVisibleTo(area))
            continue;
        if (qobject_cast<QLineEdit*>(widget) && qobject_cast<QComboBox*>(widget->parentWidget()))
            continue; // the editable combo box's own line
        if (qobject_cast<QAbstractButton*>(widget) || qobject_cast<QComboBox*>(widget) ||
            qobject_cast<QLineEdit*>(widget) || qobject_cast<QLabel*>(widget) ||
            qobject_cast<CardRange*>(widget))
            controls.push_back(widget);
    }
    return controls;
}

QRect rectIn(QWidget* widget, QWidget* reference) {
    return QRect(widget->mapTo(reference, QPoint(0, 0)), widget->size());
}

// What is wrong with the top rows as laid out now; empty when nothing is.
std::vector<std::string> problemsOfTheTopRows(Ui::QuorvaneClass* ui) {
    std::vector<std::string> problems;
    QWidget* area = ui->secondRowWidget;
    const std::vector<QWidget*> controls = controlsOf(area);
    for (QWidget* control : controls) {
        const QSize needed =
            qobject_cast<QAbstractButton*>(control) || qobject_cast<QLabel*>(control)
                ? control->sizeHint()
                : control->minimumSizeHint().expandedTo(control->minimumSize());
        if (control->width() < needed.width() || control->height() < needed.height())
            problems.push_back(
                nameOf(control) + " squeezed to " + std::to_string(control->width()) + "x" +
                std::to_string(control->height()) + ", needs " + std::to_string(needed.width()) +
                "x" + std::to_string(needed.height()));
        const QRect parent = control->parentWidget()->rect();
        if (!parent.contains(QRect(control->pos(), control->size())))
            problems.push_back(nameOf(control) + " is cut off by its parent");
    }
    for (std::size_t i = 0; i < controls.size(); ++i)
        for (std::size_t j = i + 1; j < controls.size(); ++j) {
            if (controls[i]->isAncestorOf(controls[j]) || controls[j]->isAncestorOf(controls[i]))
                continue;
            if (rectIn(controls[i], area).intersects(rectIn(controls[j], area)))
                problems.push_back(nameOf(controls[i]) + " lies on " + nameOf(controls[j]));
        }
    return problems;
}

std::string joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines)
        text += line + "\n";
    return text;
}

QScrollArea* centralScrollArea(Quorvane& window) {
    return window.findChild<QScrollArea*>(QStringLiteral("centralScrollArea"));
}

TEST_F(WindowSizes, FromTheSmallestLaptopUpNothingIsSqueezedCutOrOverlappingAndNothingScrolls) {
    MainWindowDriver driver;
    Ui::QuorvaneClass* ui = driver.window().form();
    driver.typeRange(1, QStringLiteral("QQ+,AKs"));
    driver.typeRange(2, QStringLiteral("JJ-22,AQs+"));
    driver.typeFlop(QStringLiteral("Ah7d2c"));
    ASSERT_TRUE(driver.waitForEquity());
    ui->tabWidget->setCurrentIndex(0);
    for (const QSize& size : {QSize(1024, 700), QSize(1366, 768), QSize(1920, 1080)}) {
        SCOPED_TRACE(std::to_string(size.width()) + "x" + std::to_string(size.height()));
        showAt(driver, size);
        ASSERT_EQ(driver.window().size(), size);
        EXPECT_EQ(joined(problemsOfTheTopRows(ui)), "");
        QScrollArea* scroll = centralScrollArea(driver.window());
        ASSERT_NE(scroll, nullptr);
        EXPECT_FALSE(scroll->horizontalScrollBar()->isVisible());
        EXPECT_FALSE(scroll->verticalScrollBar()->isVisible());
        // The whole central area is in view: the tabs reach down to the window's bottom.
        const QRect tabs = rectIn(ui->tabWidget, &driver.window());
        EXPECT_LE(tabs.bottom(), driver.window().height());
        // Room for the tables of the tabs.
        EXPECT_GE(ui->tabWidget->height(), 300);
        // The flop's three cards are all in view.
        CardRange* flop = driver.window().findChild<CardRange*>(QStringLiteral("flopCards"));
        ASSERT_NE(flop, nullptr);
        ASSERT_EQ(flop->count(), 3);
        const QRect lastCard = flop->visualItemRect(flop->item(2));
        EXPECT_TRUE(flop->viewport()->rect().contains(lastCard))
            << lastCard.x() << "," << lastCard.y() << " " << lastCard.width() << "x"
            << lastCard.height() << " in " << flop->viewport()->width() << "x"
            << flop->viewport()->height();
    }
}

TEST_F(WindowSizes, BelowThatTheWindowScrollsRatherThanSqueezes) {
    MainWindowDriver driver;
    Ui::QuorvaneClass* ui = driver.window().form();
    driver.typeFlop(QStringLiteral("Ah7d2c"));
    for (const QSize& size : {QSize(900, 600), driver.window().minimumSize()}) {
        SCOPED_TRACE(std::to_string(size.width()) + "x" + std::to_string(size.height()));
        showAt(driver, size);
        ASSERT_EQ(driver.window().size(), size);
        EXPECT_EQ(joined(problemsOfTheTopRows(ui)), "");
        QScrollArea* scroll = centralScrollArea(driver.window());
        ASSERT_NE(scroll, nullptr);
        EXPECT_TRUE(scroll->horizontalScrollBar()->isVisible());
        EXPECT_TRUE(scroll->verticalScrollBar()->isVisible());
        // Scrolled to the end, the right edge of the rows comes into view.
        scroll->horizontalScrollBar()->setValue(scroll->horizontalScrollBar()->maximum());
        QApplication::processEvents();
        const QRect equity = rectIn(ui->equityBlockWidget, scroll->viewport());
        EXPECT_TRUE(scroll->viewport()->rect().contains(equity));
    }
}

} // namespace
