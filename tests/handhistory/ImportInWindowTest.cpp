// The import as the window offers it: the menu entries lead to a new scenario in the list,
// shown at once with its board, or to nothing but a message.

#include "HandHistorySamples.h"
#include "MainWindowDriver.h"
#include "ModalDriver.h"

#include "app/Quorvane.h"
#include "selection/BoardCardsWidget.h"
#include "ui_Quorvane.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QInputDialog>
#include <gtest/gtest.h>

namespace {

void nameScenario(ModalDriver& modal, const QString& name) {
    modal.onOtherModal([name](QWidget* widget) {
        auto* dialog = qobject_cast<QInputDialog*>(widget);
        ASSERT_NE(dialog, nullptr) << widget->metaObject()->className();
        dialog->setTextValue(name);
        QTimer::singleShot(10, dialog, &QDialog::accept);
    });
}

} // namespace

TEST(ImportInWindow, EachEntryIsOfferedAndLandsInTheScenarioList) {
    MainWindowDriver driver;
    Quorvane& window = driver.window();
    Ui::QuorvaneClass* ui = window.form();
    for (QAction* action : {ui->actionImportHandHistory, ui->actionOnly_Board_and_Hero_s_Hand,
                            ui->actionImport_From_HEM_PT_Tourney_Hand_History})
        EXPECT_TRUE(action->isEnabled()) << action->objectName().toStdString();

    const std::size_t before = window.document().scenarios().size();
    QApplication::clipboard()->setText(
        QString::fromUtf8(sampleHandsOf("pacific-player-withshowdown.txt").at(0).text.c_str()));
    {
        ModalDriver modal;
        nameScenario(modal, "Pacific lines");
        ui->actionImportHandHistory->trigger();
        EXPECT_TRUE(modal.boxes().isEmpty());
    }
    ASSERT_EQ(window.document().scenarios().size(), before + 1);
    const Scenario& lines = window.document().scenarios().back();
    EXPECT_EQ(lines.name, "Pacific lines");
    EXPECT_EQ(lines.lines->size(), 6u);
    EXPECT_EQ(ui->scenarios->currentIndex(), static_cast<int>(before));
    EXPECT_EQ(ui->scenarios->currentText(), "Pacific lines");
    EXPECT_EQ(ui->boardCardsWidget->getBoard(), "6dJsKs3dJc");

    {
        ModalDriver modal;
        nameScenario(modal, "Board only");
        ui->actionOnly_Board_and_Hero_s_Hand->trigger();
    }
    ASSERT_EQ(window.document().scenarios().size(), before + 2);
    EXPECT_TRUE(window.document().scenarios().back().lines->empty());
    EXPECT_EQ(ui->scenarios->currentText(), "Board only");

    {
        ModalDriver modal;
        nameScenario(modal, "Tourney");
        ui->actionImport_From_HEM_PT_Tourney_Hand_History->trigger();
    }
    EXPECT_EQ(window.document().scenarios().size(), before + 3);

    // A clipboard without a hand: the message, and the list as it was.
    QApplication::clipboard()->setText("nothing to import");
    {
        ModalDriver modal;
        modal.press(QMessageBox::Ok);
        ui->actionImportHandHistory->trigger();
        ASSERT_EQ(modal.boxes().size(), 1);
        EXPECT_EQ(modal.boxes()[0].title, "Parse Error");
    }
    EXPECT_EQ(window.document().scenarios().size(), before + 3);
}
