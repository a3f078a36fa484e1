// On a real X server: the EV/FE page with a filled-in flop line and its results, in the
// finished window, photographed for a person to look at.

#include "MainWindowDriver.h"
#include "ModalDriver.h"
#include "support/TestEnvironment.h"

#include "app/Quorvane.h"
#include "evfe/EV_FE_ColorCoding.h"
#include "evfe/ui/EV_FE_CalculationsColorCodingDialog.h"
#include "evfe/ui/EV_FE_CalculationsTab.h"
#include "evfe/ui/LineActionWidget.h"
#include "selection/HandRangeLine.h"
#include "ui_EV_FE_CalculationsTab.h"
#include "ui_Quorvane.h"

#include <QDoubleSpinBox>
#include <QImage>
#include <QInputDialog>
#include <QLabel>
#include <QPushButton>
#include <QSettings>
#include <QTest>
#include <gtest/gtest.h>

namespace {

void typeInto(HandRangeLine* line, const QString& text) {
    line->setFocus();
    line->selectAll();
    QTest::keyClick(line, Qt::Key_Delete);
    QTest::keyClicks(line, text);
}

bool idle(EV_FE_CalculationsTab* tab) {
    if (tab->firstActionWidget() == nullptr || tab->runningSubrangeCalculations() != 0)
        return false;
    for (LineActionWidget* widget : tab->reactionWidgets()) {
        if (widget->isCalculating())
            return false;
    }
    return true;
}

TEST(EVFEScreenshot, AFlopBetShipLineWithResults) {
    {
        QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
        settings.clear();
        settings.setValue(QStringLiteral("optionmenu/EV_FE_ShowEVOfSingleReactions"), true);
        settings.sync();
    }
    MainWindowDriver driver;
    driver.window().resize(1432, 1036);
    Ui::QuorvaneClass* ui = driver.window().form();
    driver.typeRange(1, QStringLiteral("22+,A2s+,K9s+,QTs+,JTs,T9s,98s,ATo+,KJo+"));
    driver.typeRange(2, QStringLiteral("22+,A2s+,K2s+,Q8s+,J8s+,T8s+,97s+,A9o+,KTo+,QTo+,JTo"));
    driver.typeFlop(QStringLiteral("Kh9h4c"));
    ui->tabWidget->setCurrentIndex(5);
    EV_FE_CalculationsTab* tab = ui->EV_FE_calculationsTab;
    tab->form()->flopButton->click();
    // The page before its first line: a hint where the actions will stand.
    QTest::qWait(200);
    const QString folder = QString::fromStdString(TestEnvironment::outputFolder());
    ASSERT_TRUE(tab->grab().toImage().save(folder + "/evfe-empty-page.png", "PNG"));
    EXPECT_TRUE(tab->form()->emptyHint->isVisible());
    {
        ModalDriver modal;
        modal.onOtherModal([](QWidget* widget) {
            auto* dialog = qobject_cast<QInputDialog*>(widget);
            ASSERT_NE(dialog, nullptr);
            dialog->setTextValue(QStringLiteral("Bet/Ship"));
            QTimer::singleShot(20, dialog, &QDialog::accept);
        });
        tab->form()->addLineButton->click();
    }
    ASSERT_EQ(tab->reactionWidgets().size(), 4u);
    tab->form()->potBox->setValue(12.0);
    tab->form()->player2Stack->setValue(85.0);
    tab->form()->rakePercentage->setValue(5.0);
    tab->form()->rakeCap->setValue(3.0);
    typeInto(tab->firstActionWidget()->rangeLine(), QStringLiteral("TT+,AQs+,AKo,KQs,K9s,99"));
    tab->firstActionWidget()->sizeBox()->setValue(8.0);
    const char* reactions[4] = {"22-66,A2s-A5s", "77-JJ,ATs-AQs,KJs-KTs", "QQ,AKo", "KK+,AKs"};
    for (std::size_t i = 0; i < 4; ++i)
        typeInto(tab->reactionWidgets()[i]->rangeLine(), QString::fromLatin1(reactions[i]));
    tab->reactionWidgets()[2]->sizeBox()->setValue(26.0);
    tab->firstActionWidget()->rangeLine()->setFocus();
    ASSERT_TRUE(MainWindowDriver::waitUntil([tab] { return idle(tab); }, 60000));
    ASSERT_TRUE(driver.waitForEquity());
    QTest::qWait(300); // let the last repaints land

    const QImage window = driver.window().grab().toImage();
    ASSERT_TRUE(window.save(folder + "/evfe-betship-window.png", "PNG"));
    const QImage page = tab->grab().toImage();
    ASSERT_TRUE(page.save(folder + "/evfe-betship-page.png", "PNG"));

    // The overall EV of Player1 is in the picture in its colour, and no text is cut: every
    // label is as wide as its text needs.
    QLabel* ev = tab->form()->evPlayer1;
    const float printed = ev->text().toFloat();
    const EV_FE_ColorCoding::Rgba color = EV_FE_ColorCoding().colorFor(printed);
    const QPoint inside = ev->mapTo(tab, QPoint(3, ev->height() / 2));
    const QColor seen = page.pixelColor(inside * page.devicePixelRatioF());
    EXPECT_EQ(seen, QColor(color.red, color.green, color.blue)) << ev->text().toStdString();
    for (QLabel* label : tab->findChildren<QLabel*>()) {
        if (!label->isVisible() || label->text().isEmpty() || label->textFormat() == Qt::RichText)
            continue;
        EXPECT_GE(label->width(), label->fontMetrics().horizontalAdvance(label->text()))
            << label->text().toStdString();
    }
}

TEST(EVFEScreenshot, TheColourCodingDialog) {
    {
        QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
        settings.clear();
        settings.sync();
    }
    EV_FE_CalculationsColorCodingDialog dialog;
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
    QTest::qWait(200);
    const QString folder = QString::fromStdString(TestEnvironment::outputFolder());
    const QImage picture = dialog.grab().toImage();
    ASSERT_TRUE(picture.save(folder + "/evfe-color-coding-dialog.png", "PNG"));
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("EV/FE Calculations: Color Coding"));
    // Each colour button is painted in its default colour, from dark red over white to green.
    const QColor defaults[7] = {{128, 0, 0},   {255, 0, 0}, {255, 128, 0}, {255, 255, 255},
                                {192, 255, 0}, {0, 255, 0}, {0, 192, 0}};
    for (int number = 1; number <= 7; ++number) {
        QPushButton* button = dialog.colorButton(number);
        ASSERT_NE(button, nullptr);
        const QPoint centre = button->mapTo(&dialog, button->rect().center());
        EXPECT_EQ(picture.pixelColor(centre * picture.devicePixelRatioF()), defaults[number - 1])
            << "colour " << number;
    }
    for (QLabel* label : dialog.findChildren<QLabel*>()) {
        if (!label->isVisible() || label->text().isEmpty())
            continue;
        EXPECT_GE(label->width(), label->fontMetrics().horizontalAdvance(label->text()))
            << label->text().toStdString();
    }
}

} // namespace
