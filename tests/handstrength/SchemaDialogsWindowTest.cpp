// The schema dialogs in the real main window: the pools it owns, its tab switches, and the
// settings it reads at start.

#include "ModalDialogs.h"

#include "app/MainWindowDriver.h"
#include "app/Quorvane.h"
#include "handstrength/HandGroupSchema.h"
#include "handstrength/HandGroupSchemaPool.h"
#include "handstrength/ui/HandGroupSchemaSelection.h"
#include "handstrength/ui/HandStrengthSelectionDialog.h"
#include "handstrength/ui/SchemaEditingDialog.h"
#include "handstrength/ui/SchemaListDialog.h"
#include "tabs/BoardHitsTab.h"
#include "tabs/TwoPlayerBoardHitsTab.h"
#include "ui_Quorvane.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSettings>
#include <QTabWidget>
#include <QToolButton>
#include <QTreeWidget>
#include <gtest/gtest.h>

namespace {

void pickFeature(QListWidget* list, const char* text) {
    const QList<QListWidgetItem*> found =
        list->findItems(QString::fromLatin1(text), Qt::MatchExactly);
    ASSERT_EQ(found.size(), 1) << text;
    list->setCurrentItem(found.first());
}

// The hand strength dialog: one feature a hand must have, then OK.
void chooseFeature(const char* feature) {
    ModalDialogs::whenShown([feature](QWidget* widget) {
        auto* chooser = qobject_cast<HandStrengthSelectionDialog*>(widget);
        ASSERT_NE(chooser, nullptr);
        pickFeature(chooser->possibleList(), feature);
        chooser->addPositiveButton()->click();
        chooser->buttonBox()->button(QDialogButtonBox::Ok)->click();
    });
}

// A schema "Sets and trips": one group "Trips" with "Three of a Kind" and, below it, "Set".
void makeSetsSchema(SchemaListDialog& list) {
    ModalDialogs::whenShown([](QWidget* widget) {
        auto* editor = qobject_cast<SchemaEditingDialog*>(widget);
        ASSERT_NE(editor, nullptr);
        editor->nameEdit()->setText(QStringLiteral("Sets and trips"));
        ModalDialogs::answerInput(QStringLiteral("Trips"));
        editor->addGroupButton()->click();
        editor->tree()->setCurrentItem(editor->tree()->topLevelItem(0));
        chooseFeature("Three of a Kind");
        editor->addHandStrengthButton()->click();
        editor->tree()->setCurrentItem(editor->tree()->topLevelItem(0)->child(0));
        chooseFeature("Using Two Holecards for Made Hand");
        editor->addHandStrengthButton()->click();
        editor->buttonBox()->button(QDialogButtonBox::Ok)->click();
    });
    list.newButton()->click();
}

} // namespace

TEST(SchemaDialogsInTheWindow, ASchemaMadeOnOneTabReachesTheOtherTabsAndTheSettings) {
    {
        QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
        settings.remove(QStringLiteral("HandSelection"));
    }
    ModalDialogs::Watchdog watchdog(30);
    MainWindowDriver driver;
    Ui::QuorvaneClass& form = *driver.window().form();
    form.tabWidget->setCurrentWidget(form.boardHitsTab);
    driver.typeRange(1, QStringLiteral("22+,AKs"));
    driver.typeRange(2, QStringLiteral("AA,KK"));
    driver.typeFlop(QStringLiteral("Kh9h4c"));

    ModalDialogs::whenShown([](QWidget* widget) {
        auto* list = qobject_cast<SchemaListDialog*>(widget);
        ASSERT_NE(list, nullptr);
        makeSetsSchema(*list);
        list->buttonBox()->button(QDialogButtonBox::Ok)->click();
    });
    HandGroupSchemaSelection* box = form.boardHitsTab->schemaSelection();
    box->setCurrentIndex(box->findText(QStringLiteral("Edit Schemas...")));

    // The window's pool has it, and so have the settings.
    const HandGroupSchemaData* made = driver.window().handGroupSchemaPool().find("Sets and trips");
    ASSERT_NE(made, nullptr);
    ASSERT_EQ(made->groups.size(), 1u);
    ASSERT_EQ(made->groups[0].rows.size(), 2u);
    EXPECT_EQ(made->groups[0].rows[1].key, HandStrengthKey(0x10020, 0));
    HandGroupSchemaPool stored;
    stored.load();
    EXPECT_NE(stored.find("Sets and trips"), nullptr);

    // On the switch to the other board tab its box lists it; chosen, it counts both players.
    form.tabWidget->setCurrentWidget(form.twoPlayerBoardHitsTab);
    HandGroupSchemaSelection* other = form.twoPlayerBoardHitsTab->schemaSelection();
    const int index = other->findText(QStringLiteral("Sets and trips"));
    ASSERT_GE(index, 0);
    other->setCurrentIndex(index);
    const HandGroupSchema* schema = form.twoPlayerBoardHitsTab->schema();
    ASSERT_EQ(schema->getName(), "Sets and trips");
    // Sets on K94: 99, 44 and KK in player 1's range, KK in player 2's.
    const HandGroupRow& set = schema->getGroups()[0].rows[1];
    EXPECT_GT(set.combinations1, 0u);
    EXPECT_GT(set.combinations2, 0u);

    // A new window reads the schema from the settings.
    MainWindowDriver second;
    EXPECT_NE(second.window().handGroupSchemaPool().find("Sets and trips"), nullptr);
}
