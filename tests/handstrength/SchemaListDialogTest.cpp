#include "ModalDialogs.h"

#include "handstrength/HandGroupRowRequest.h"
#include "handstrength/HandGroupSchemaPool.h"
#include "handstrength/HandGroupStandardSchema.h"
#include "handstrength/HandGroupTickSchemaPool.h"
#include "handstrength/ui/SchemaEditingDialog.h"
#include "handstrength/ui/SchemaListDialog.h"
#include "handstrength/ui/TickSchemaListDialog.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSettings>
#include <QTreeWidget>
#include <gtest/gtest.h>

namespace {

HandGroupSchemaData schemaNamed(const std::string& name, unsigned long long key = 0x80) {
    HandGroupSchemaData data;
    data.name = name;
    data.groups.resize(1);
    data.groups[0].name = "Made";
    data.groups[0].addRow(HandGroupRowRequest(HandStrengthKey(key, 0), {}));
    return data;
}

QStringList namesOf(const QListWidget* list) {
    QStringList names;
    for (int i = 0; i < list->count(); ++i)
        names << list->item(i)->text();
    return names;
}

QStringList italicNamesOf(const QListWidget* list) {
    QStringList names;
    for (int i = 0; i < list->count(); ++i) {
        if (list->item(i)->font().italic())
            names << list->item(i)->text();
    }
    return names;
}

std::vector<std::string> namesOf(const HandGroupSchemaPool& pool) {
    std::vector<std::string> names;
    for (const HandGroupSchemaData& schema : pool.schemas())
        names.push_back(schema.name);
    return names;
}

std::vector<std::string> namesOf(const HandGroupTickSchemaPool& pool) {
    std::vector<std::string> names;
    for (const auto& schema : pool.schemas())
        names.push_back(schema.name);
    return names;
}

void forgetStoredPools() {
    QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
    settings.remove(QStringLiteral("HandSelection"));
    settings.sync();
}

void choose(SchemaListDialog& dialog, const char* name) {
    QListWidgetItem* item = dialog.itemNamed(QString::fromLatin1(name));
    ASSERT_NE(item, nullptr) << name;
    dialog.schemaList()->setCurrentItem(item);
}

void choose(TickSchemaListDialog& dialog, const char* name) {
    QListWidgetItem* item = dialog.itemNamed(QString::fromLatin1(name));
    ASSERT_NE(item, nullptr) << name;
    dialog.schemaList()->setCurrentItem(item);
}

// Runs `edit` in the next schema editing dialog; accepts it when `accept`.
void whenEditor(const std::function<void(SchemaEditingDialog&)>& edit, bool accept = true) {
    ModalDialogs::whenShown([edit, accept](QWidget* widget) {
        auto* editor = qobject_cast<SchemaEditingDialog*>(widget);
        if (editor == nullptr) {
            ADD_FAILURE() << "Expected the schema editing dialog.";
            qobject_cast<QDialog*>(widget)->reject();
            return;
        }
        edit(*editor);
        if (accept)
            editor->accept();
        else
            editor->reject();
    });
}

} // namespace

TEST(SchemaListDialog, ListsThePoolWithTheDefaultInItalics) {
    HandGroupSchemaPool pool;
    pool.add(schemaNamed("Mine"));
    pool.add(schemaNamed("Draws", 0x4000000));
    pool.setDefaultName("Mine");
    SchemaListDialog dialog(nullptr, &pool);
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Hand Strength Schemas"));
    EXPECT_EQ(dialog.objectName(), QStringLiteral("SchemaListDialog"));
    EXPECT_TRUE(dialog.styleSheet().contains(QStringLiteral("#SchemaListDialog")));
    // The form's placeholders ("Standard", "Schema 2") make way for the pool.
    EXPECT_EQ(namesOf(dialog.schemaList()), (QStringList{"Standard", "Mine", "Draws"}));
    EXPECT_EQ(italicNamesOf(dialog.schemaList()), QStringList{"Mine"});
    EXPECT_EQ(dialog.newButton()->text(), QStringLiteral("&New Schema"));
    EXPECT_EQ(dialog.removeButton()->text(), QStringLiteral("&Remove Schema"));
    EXPECT_EQ(dialog.defaultButton()->text(), QStringLiteral("As &Default"));
    EXPECT_EQ(dialog.copyButton()->text(), QStringLiteral("&Copy Schema"));
    // It opens on the default.
    EXPECT_EQ(dialog.currentName(), QStringLiteral("Mine"));
    EXPECT_EQ(dialog.editButton()->text(), QStringLiteral("&Edit Schema"));
}

TEST(SchemaListDialog, StandardIsViewedAndNeverRemoved) {
    HandGroupSchemaPool pool;
    pool.add(schemaNamed("Mine"));
    SchemaListDialog dialog(nullptr, &pool);
    choose(dialog, "Standard");
    EXPECT_EQ(dialog.editButton()->text(), QStringLiteral("&View Schema"));
    EXPECT_TRUE(dialog.editButton()->isEnabled());
    EXPECT_FALSE(dialog.removeButton()->isEnabled());
    EXPECT_TRUE(dialog.copyButton()->isEnabled());
    EXPECT_FALSE(dialog.defaultButton()->isEnabled()); // it is the default already
    dialog.removeSchema();
    EXPECT_EQ(namesOf(dialog.schemaList()), (QStringList{"Standard", "Mine"}));

    choose(dialog, "Mine");
    EXPECT_EQ(dialog.editButton()->text(), QStringLiteral("&Edit Schema"));
    EXPECT_TRUE(dialog.removeButton()->isEnabled());
    EXPECT_TRUE(dialog.defaultButton()->isEnabled());
    EXPECT_TRUE(dialog.copyButton()->isEnabled());

    // Without a current item the four are off.
    dialog.schemaList()->setCurrentItem(nullptr);
    EXPECT_FALSE(dialog.editButton()->isEnabled());
    EXPECT_FALSE(dialog.removeButton()->isEnabled());
    EXPECT_FALSE(dialog.defaultButton()->isEnabled());
    EXPECT_FALSE(dialog.copyButton()->isEnabled());

    // "View Schema" opens the editor read-only; nothing changes.
    ModalDialogs::Watchdog watchdog;
    choose(dialog, "Standard");
    bool opened = false;
    whenEditor(
        [&opened](SchemaEditingDialog& editor) {
            opened = true;
            EXPECT_TRUE(editor.isReadOnly());
            EXPECT_EQ(editor.tree()->topLevelItemCount(), 4);
        },
        false);
    dialog.editButton()->click();
    EXPECT_TRUE(opened);
    EXPECT_EQ(namesOf(dialog.schemaList()), (QStringList{"Standard", "Mine"}));
}

TEST(SchemaListDialog, TheCopyOfStandardIsNamedSoAndCanBeEdited) {
    ModalDialogs::Watchdog watchdog;
    HandGroupSchemaPool pool;
    SchemaListDialog dialog(nullptr, &pool);
    dialog.show();
    choose(dialog, "Standard");
    dialog.copyButton()->click();
    EXPECT_EQ(namesOf(dialog.schemaList()), (QStringList{"Standard", "Standard - Copy"}));
    EXPECT_EQ(dialog.currentName(), QStringLiteral("Standard - Copy"));
    const HandGroupSchemaData* copy = dialog.workingPool().find("Standard - Copy");
    ASSERT_NE(copy, nullptr);
    ASSERT_EQ(copy->groups.size(), 4u);
    EXPECT_EQ(copy->groups[1].rows.size(), HandGroupStandardSchema::data().groups[1].rows.size());
    EXPECT_EQ(dialog.editButton()->text(), QStringLiteral("&Edit Schema"));
    EXPECT_TRUE(dialog.removeButton()->isEnabled());

    // The copy opens for editing: a group goes, the rest stays.
    whenEditor([](SchemaEditingDialog& editor) {
        EXPECT_FALSE(editor.isReadOnly());
        EXPECT_TRUE(editor.nameEdit()->isEnabled());
        editor.tree()->setCurrentItem(editor.tree()->topLevelItem(3));
        ModalDialogs::answerMessage(nullptr, QMessageBox::Yes);
        editor.deleteButton()->click();
    });
    dialog.editButton()->click();
    copy = dialog.workingPool().find("Standard - Copy");
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->groups.size(), 3u);

    // A second copy of the same name is refused.
    choose(dialog, "Standard");
    ModalDialogs::Message warning;
    ModalDialogs::answerMessage(&warning, QMessageBox::Ok);
    dialog.copyButton()->click();
    EXPECT_EQ(warning.title, QStringLiteral("Already Existing"));
    EXPECT_EQ(warning.text, QStringLiteral("A copy with the name does already exist. Please "
                                           "rename it, before you create another copy."));
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(dialog.workingPool().schemas().size(), 2u);
    EXPECT_EQ(dialog.workingPool().find("Standard - Copy")->groups.size(), 3u);
}

TEST(SchemaListDialog, RemovingTheDefaultMakesStandardTheDefault) {
    ModalDialogs::Watchdog watchdog;
    forgetStoredPools();
    HandGroupSchemaPool pool;
    pool.add(schemaNamed("Mine"));
    SchemaListDialog dialog(nullptr, &pool);
    dialog.show();
    choose(dialog, "Mine");
    dialog.defaultButton()->click();
    EXPECT_EQ(italicNamesOf(dialog.schemaList()), QStringList{"Mine"});
    EXPECT_EQ(dialog.workingPool().defaultName(), "Mine");
    EXPECT_FALSE(dialog.defaultButton()->isEnabled());
    // Nothing reaches the pool before OK.
    EXPECT_EQ(pool.defaultName(), "Standard");

    // No is the default answer, and keeps the schema.
    ModalDialogs::Message asked;
    ModalDialogs::answerMessage(&asked, QMessageBox::No);
    dialog.removeButton()->click();
    EXPECT_EQ(asked.title, QStringLiteral("Really?"));
    EXPECT_EQ(asked.text, QStringLiteral("Do you really want to remove this schema?"));
    EXPECT_EQ(asked.defaultButton, QMessageBox::No);
    EXPECT_EQ(namesOf(dialog.schemaList()), (QStringList{"Standard", "Mine"}));

    ModalDialogs::answerMessage(nullptr, QMessageBox::Yes);
    dialog.removeButton()->click();
    EXPECT_EQ(namesOf(dialog.schemaList()), QStringList{"Standard"});
    EXPECT_EQ(italicNamesOf(dialog.schemaList()), QStringList{"Standard"});
    EXPECT_EQ(dialog.workingPool().defaultName(), "Standard");

    dialog.buttonBox()->button(QDialogButtonBox::Ok)->click();
    EXPECT_EQ(namesOf(pool), std::vector<std::string>{"Standard"});
    EXPECT_EQ(pool.defaultName(), "Standard");
    // Saved: a pool loaded from the settings agrees.
    HandGroupSchemaPool loaded;
    loaded.add(schemaNamed("Stale"));
    loaded.load();
    EXPECT_EQ(namesOf(loaded), std::vector<std::string>{"Standard"});
    EXPECT_EQ(loaded.defaultName(), "Standard");
}

TEST(SchemaListDialog, CancelLeavesThePoolAsItWas) {
    ModalDialogs::Watchdog watchdog;
    forgetStoredPools();
    HandGroupSchemaPool pool;
    pool.add(schemaNamed("Mine"));
    SchemaListDialog dialog(nullptr, &pool);
    dialog.show();
    choose(dialog, "Mine");
    dialog.defaultButton()->click();
    ModalDialogs::answerMessage(nullptr, QMessageBox::Yes);
    dialog.removeButton()->click();
    choose(dialog, "Standard");
    dialog.copyButton()->click();
    dialog.buttonBox()->button(QDialogButtonBox::Cancel)->click();
    EXPECT_EQ(namesOf(pool), (std::vector<std::string>{"Standard", "Mine"}));
    EXPECT_EQ(pool.defaultName(), "Standard");
    QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
    EXPECT_FALSE(settings.contains(QStringLiteral("HandSelection/handGroupSchemaPool")));
}

TEST(SchemaListDialog, ANewSchemaJoinsThePoolAndTheSettings) {
    ModalDialogs::Watchdog watchdog;
    forgetStoredPools();
    HandGroupSchemaPool pool;
    SchemaListDialog dialog(nullptr, &pool);
    dialog.show();

    // A cancelled editor adds nothing.
    whenEditor([](SchemaEditingDialog&) {}, false);
    dialog.newButton()->click();
    EXPECT_EQ(namesOf(dialog.schemaList()), QStringList{"Standard"});

    whenEditor([](SchemaEditingDialog& editor) {
        EXPECT_EQ(editor.nameEdit()->text(), QString());
        EXPECT_EQ(editor.tree()->topLevelItemCount(), 0);
        editor.nameEdit()->setText(QStringLiteral("Sets"));
        ModalDialogs::answerInput(QStringLiteral("Made"));
        editor.addGroupButton()->click();
    });
    dialog.newButton()->click();
    EXPECT_EQ(namesOf(dialog.schemaList()), (QStringList{"Standard", "Sets"}));
    EXPECT_EQ(dialog.currentName(), QStringLiteral("Sets"));
    dialog.accept();

    ASSERT_NE(pool.find("Sets"), nullptr);
    EXPECT_EQ(pool.find("Sets")->groups.size(), 1u);
    HandGroupSchemaPool loaded;
    loaded.load();
    ASSERT_NE(loaded.find("Sets"), nullptr);
    EXPECT_EQ(loaded.find("Sets")->groups[0].name, "Made");
}

TEST(SchemaListDialog, ARenamedSchemaKeepsItsPlaceAndItsDefaultRole) {
    ModalDialogs::Watchdog watchdog;
    HandGroupSchemaPool pool;
    pool.add(schemaNamed("Mine"));
    pool.add(schemaNamed("Other", 0x40));
    pool.setDefaultName("Mine");
    SchemaListDialog dialog(nullptr, &pool);
    dialog.show();
    choose(dialog, "Mine");

    // Its own name passes the check.
    whenEditor([](SchemaEditingDialog& editor) {
        EXPECT_EQ(editor.nameEdit()->text(), QStringLiteral("Mine"));
    });
    dialog.editButton()->click();
    EXPECT_EQ(namesOf(dialog.schemaList()), (QStringList{"Standard", "Mine", "Other"}));

    whenEditor(
        [](SchemaEditingDialog& editor) { editor.nameEdit()->setText(QStringLiteral("Pairs")); });
    dialog.editButton()->click();
    EXPECT_EQ(namesOf(dialog.schemaList()), (QStringList{"Standard", "Pairs", "Other"}));
    EXPECT_EQ(italicNamesOf(dialog.schemaList()), QStringList{"Pairs"});
    EXPECT_EQ(dialog.workingPool().defaultName(), "Pairs");
    EXPECT_EQ(dialog.workingPool().find("Mine"), nullptr);
    dialog.accept();
    EXPECT_EQ(namesOf(pool), (std::vector<std::string>{"Standard", "Pairs", "Other"}));
    EXPECT_EQ(pool.defaultName(), "Pairs");
}

TEST(HandGroupSchemaPool, ReplaceRenamesInPlace) {
    HandGroupSchemaPool pool;
    pool.add(schemaNamed("A"));
    pool.add(schemaNamed("B", 0x40));
    pool.setDefaultName("A");
    EXPECT_TRUE(pool.replace("A", schemaNamed("C", 0x20)));
    EXPECT_EQ(namesOf(pool), (std::vector<std::string>{"Standard", "C", "B"}));
    EXPECT_EQ(pool.defaultName(), "C");
    EXPECT_EQ(pool.find("C")->groups[0].rows[0].key, HandStrengthKey(0x20, 0));
    // Refused: a name another schema has, the built-in schema either way, an unknown or an
    // empty name.
    EXPECT_FALSE(pool.replace("C", schemaNamed("B")));
    EXPECT_FALSE(pool.replace("Standard", schemaNamed("D")));
    EXPECT_FALSE(pool.replace("C", schemaNamed("Standard")));
    EXPECT_FALSE(pool.replace("Missing", schemaNamed("E")));
    EXPECT_FALSE(pool.replace("C", schemaNamed("")));
    EXPECT_EQ(namesOf(pool), (std::vector<std::string>{"Standard", "C", "B"}));
    // The same name replaces the content.
    EXPECT_TRUE(pool.replace("B", schemaNamed("B", 0x10)));
    EXPECT_EQ(pool.find("B")->groups[0].rows[0].key, HandStrengthKey(0x10, 0));
}

// --- The tick schemas ----------------------------------------------------------------------

TEST(TickSchemaListDialog, TheBuiltInSchemasCannotBeRemoved) {
    HandGroupTickSchemaPool pool;
    pool.add({"Pairs", {HandStrengthKey(0x80, 0)}});
    TickSchemaListDialog dialog(nullptr, &pool, {});
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Custom Sum Selection Schemas"));
    EXPECT_EQ(dialog.objectName(), QStringLiteral("TickSchemaListDialog"));
    EXPECT_TRUE(dialog.styleSheet().contains(QStringLiteral("#TickSchemaListDialog")));
    EXPECT_EQ(dialog.createButton()->text(), QStringLiteral("&Create from Current Selection"));
    EXPECT_EQ(dialog.removeButton()->text(), QStringLiteral("&Remove Schema"));
    EXPECT_EQ(namesOf(dialog.schemaList()),
              (QStringList{"Nothing", "Made Hands", "Mediocre and Strong Draws", "Pairs"}));
    for (const char* builtIn : {"Nothing", "Made Hands", "Mediocre and Strong Draws"}) {
        choose(dialog, builtIn);
        EXPECT_FALSE(dialog.removeButton()->isEnabled()) << builtIn;
        dialog.removeSchema();
    }
    EXPECT_EQ(dialog.workingPool().schemas().size(), 4u);
    choose(dialog, "Pairs");
    EXPECT_TRUE(dialog.removeButton()->isEnabled());
}

TEST(TickSchemaListDialog, ANewSchemaTakesTheCurrentTicks) {
    ModalDialogs::Watchdog watchdog;
    forgetStoredPools();
    HandGroupTickSchemaPool pool;
    const std::vector<HandStrengthKey> ticks{HandStrengthKey(0x280, 0), HandStrengthKey(0x8080, 0)};
    TickSchemaListDialog dialog(nullptr, &pool, ticks);
    dialog.show();

    ModalDialogs::Question asked;
    ModalDialogs::answerInput(QString(), true, &asked);
    dialog.createButton()->click();
    EXPECT_EQ(asked.title, QStringLiteral("Name of the Schema"));
    EXPECT_EQ(asked.label,
              QStringLiteral("How do you want to name this new custom selection schema?"));
    EXPECT_EQ(dialog.workingPool().schemas().size(), 3u);

    ModalDialogs::answerInput(QStringLiteral("Good pairs"));
    dialog.createButton()->click();
    ASSERT_NE(dialog.workingPool().find("Good pairs"), nullptr);
    EXPECT_EQ(dialog.workingPool().find("Good pairs")->handStrengths, ticks);
    EXPECT_EQ(dialog.currentName(), QStringLiteral("Good pairs"));
    EXPECT_TRUE(dialog.removeButton()->isEnabled());

    // The same name again replaces it.
    TickSchemaListDialog again(nullptr, &pool, {HandStrengthKey(0x40, 0)});
    again.show();
    ModalDialogs::answerInput(QStringLiteral("Good pairs"));
    again.createButton()->click();
    ModalDialogs::answerInput(QStringLiteral("Good pairs"));
    again.createButton()->click();
    EXPECT_EQ(namesOf(again.workingPool()),
              (std::vector<std::string>{"Nothing", "Made Hands", "Mediocre and Strong Draws",
                                        "Good pairs"}));
    EXPECT_EQ(again.workingPool().find("Good pairs")->handStrengths,
              std::vector<HandStrengthKey>{HandStrengthKey(0x40, 0)});
    again.reject();
    // Neither dialog has written anything yet.
    EXPECT_EQ(pool.schemas().size(), 3u);

    dialog.accept();
    ASSERT_NE(pool.find("Good pairs"), nullptr);
    HandGroupTickSchemaPool loaded;
    loaded.load();
    ASSERT_NE(loaded.find("Good pairs"), nullptr);
    EXPECT_EQ(loaded.find("Good pairs")->handStrengths, ticks);
}

TEST(TickSchemaListDialog, RemovingAsksAndCancelKeepsThePool) {
    ModalDialogs::Watchdog watchdog;
    forgetStoredPools();
    HandGroupTickSchemaPool pool;
    pool.add({"Pairs", {HandStrengthKey(0x80, 0)}});
    pool.add({"Sets", {HandStrengthKey(0x10020, 0)}});
    {
        TickSchemaListDialog dialog(nullptr, &pool, {});
        dialog.show();
        choose(dialog, "Pairs");
        ModalDialogs::Message asked;
        ModalDialogs::answerMessage(&asked, QMessageBox::No);
        dialog.removeButton()->click();
        EXPECT_EQ(asked.text, QStringLiteral("Do you really want to remove this schema?"));
        EXPECT_EQ(asked.defaultButton, QMessageBox::No);
        EXPECT_NE(dialog.workingPool().find("Pairs"), nullptr);
        ModalDialogs::answerMessage(nullptr, QMessageBox::Yes);
        dialog.removeButton()->click();
        EXPECT_EQ(dialog.workingPool().find("Pairs"), nullptr);
        EXPECT_FALSE(namesOf(dialog.schemaList()).contains(QStringLiteral("Pairs")));
        dialog.buttonBox()->button(QDialogButtonBox::Cancel)->click();
    }
    EXPECT_NE(pool.find("Pairs"), nullptr);
    QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
    EXPECT_FALSE(settings.contains(QStringLiteral("HandSelection/handGroupTickSchemaPool")));

    TickSchemaListDialog dialog(nullptr, &pool, {});
    dialog.show();
    choose(dialog, "Pairs");
    ModalDialogs::answerMessage(nullptr, QMessageBox::Yes);
    dialog.removeButton()->click();
    dialog.buttonBox()->button(QDialogButtonBox::Ok)->click();
    EXPECT_EQ(namesOf(pool), (std::vector<std::string>{"Nothing", "Made Hands",
                                                       "Mediocre and Strong Draws", "Sets"}));
    HandGroupTickSchemaPool loaded;
    loaded.load();
    EXPECT_EQ(namesOf(loaded), namesOf(pool));
}
