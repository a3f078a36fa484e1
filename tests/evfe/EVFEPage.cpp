#include "EVFEPage.h"

#include "ModalDriver.h"

#include "Range/GroupColor.h"
#include "Range/HandRangeStringManipulator.h"
#include "evfe/ui/LineActionWidget.h"
#include "selection/HandRangeLine.h"
#include "ui_EV_FE_CalculationsTab.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QInputDialog>
#include <QLabel>
#include <QTest>
#include <VelmaraEvaluatorBase.h>
#include <gtest/gtest.h>

EVFEPage::EVFEPage() {
    static const bool boardsReady = [] {
        initializeAllBoardsBeforeCalculation();
        return true;
    }();
    Q_UNUSED(boardsReady);
    player1.addRange(Range::Tree::noNode, "Full Range", false, Range::GroupColor());
    player2.addRange(Range::Tree::noNode, "Full Range", false, Range::GroupColor());
    page = std::make_unique<EV_FE_CalculationsTab>();
    page->setUp(&threadPool, &player1, &player2, nullptr, nullptr);
    page->setLines(&lineList);
    QObject::connect(page.get(), &EV_FE_CalculationsTab::SomeThingMementoRelevantChanged,
                     page.get(), [this](const std::string& label) { mementos.push_back(label); });
    QObject::connect(page.get(), &EV_FE_CalculationsTab::SomeThingChanged, page.get(),
                     [this] { ++changeCount; });
    page->resize(1300, 760);
    page->show();
    if (!QTest::qWaitForWindowExposed(page.get()))
        ADD_FAILURE() << "the page was never shown";
}

EVFEPage::~EVFEPage() {
    // The page goes before the lines and ranges it works on.
    page.reset();
}

void EVFEPage::setFullRange(int player, const std::string& text) {
    Range::HandRangeStringManipulator(groups(player).handRange(0)).setFree(text);
}

void EVFEPage::showCards(const std::string& board, const std::string& deadCards) {
    page->updateBoardConstraints(board, deadCards);
}

void EVFEPage::selectStreet(const char* street) {
    Ui::EV_FE_CalculationsTab* ui = page->form();
    QRadioButton* button = std::string(street) == "Flop"    ? ui->flopButton
                           : std::string(street) == "Turn"  ? ui->turnButton
                           : std::string(street) == "River" ? ui->riverButton
                                                            : ui->preflopButton;
    button->click();
}

void EVFEPage::addLine(const QString& name) {
    ModalDriver driver;
    driver.onOtherModal([name](QWidget* modal) {
        auto* dialog = qobject_cast<QInputDialog*>(modal);
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(dialog->labelText(), QStringLiteral("Which line would you like to add?"));
        dialog->setTextValue(name);
        QTimer::singleShot(20, dialog, &QDialog::accept);
    });
    page->form()->addLineButton->click();
    EXPECT_FALSE(driver.timedOut());
}

LineActionWidget* EVFEPage::widget(std::size_t index) const {
    if (index == 0)
        return page->firstActionWidget();
    return index - 1 < page->reactionWidgets().size() ? page->reactionWidgets()[index - 1]
                                                      : nullptr;
}

std::size_t EVFEPage::widgetCount() const {
    return (page->firstActionWidget() != nullptr ? 1 : 0) + page->reactionWidgets().size();
}

void EVFEPage::typeRange(std::size_t index, const QString& text) {
    HandRangeLine* line = widget(index)->rangeLine();
    line->setFocus();
    line->selectAll();
    QTest::keyClick(line, Qt::Key_Delete);
    QTest::keyClicks(line, text);
}

bool EVFEPage::waitUntil(const std::function<bool()>& done, int limitMs) {
    QElapsedTimer clock;
    clock.start();
    while (!done()) {
        if (clock.elapsed() > limitMs)
            return false;
        QApplication::processEvents(QEventLoop::AllEvents, 20);
        QTest::qWait(5);
    }
    return true;
}

bool EVFEPage::waitForEquities(int limitMs) {
    return waitUntil(
        [this] {
            for (std::size_t i = 0; i < widgetCount(); ++i) {
                if (widget(i)->isCalculating())
                    return false;
            }
            return page->runningSubrangeCalculations() == 0;
        },
        limitMs);
}

std::vector<QString> EVFEPage::labelTexts() const {
    std::vector<QString> texts;
    for (const QLabel* label : page->findChildren<QLabel*>())
        texts.push_back(label->text());
    return texts;
}
