#include "ModalDialogs.h"

#include "handstrength/HandGroupRowRequest.h"
#include "handstrength/HandGroupSchemaPool.h"
#include "handstrength/HandGroupStandardSchema.h"
#include "handstrength/ui/HandStrengthSelectionDialog.h"
#include "handstrength/ui/HandStrengthSelectionItem.h"
#include "handstrength/ui/SchemaEditingDialog.h"
#include "handstrength/ui/SchemaEditingTreeItem.h"

#include <QDialogButtonBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QTreeWidget>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <vector>

namespace {

SchemaEditingTreeItem* entry(QTreeWidgetItem* item) {
    return static_cast<SchemaEditingTreeItem*>(item);
}

// Every entry below `item`, depth first, with the entry it hangs under (null for a child of
// the group).
void walk(QTreeWidgetItem* item, SchemaEditingTreeItem* above,
          std::vector<std::pair<SchemaEditingTreeItem*, SchemaEditingTreeItem*>>& out) {
    for (int i = 0; i < item->childCount(); ++i) {
        SchemaEditingTreeItem* child = entry(item->child(i));
        out.emplace_back(child, above);
        walk(child, child, out);
    }
}

SchemaEditingTreeItem* groupNamed(const SchemaEditingDialog& dialog, const QString& name) {
    for (int i = 0; i < dialog.tree()->topLevelItemCount(); ++i) {
        if (dialog.tree()->topLevelItem(i)->text(0) == name)
            return entry(dialog.tree()->topLevelItem(i));
    }
    return nullptr;
}

// The first entry below `from` that shows `text`.
SchemaEditingTreeItem* findEntry(QTreeWidgetItem* from, const QString& text) {
    for (int i = 0; i < from->childCount(); ++i) {
        if (from->child(i)->text(0) == text)
            return entry(from->child(i));
        if (SchemaEditingTreeItem* deeper = findEntry(from->child(i), text))
            return deeper;
    }
    return nullptr;
}

void select(SchemaEditingDialog& dialog, QTreeWidgetItem* item) {
    ASSERT_NE(item, nullptr);
    dialog.tree()->setCurrentItem(item);
    ASSERT_EQ(dialog.selectedItem(), item);
}

HandGroupSchemaData schemaNamed(const std::string& name) {
    HandGroupSchemaData data;
    data.name = name;
    data.groups.resize(1);
    data.groups[0].name = "Made";
    data.groups[0].addRow(HandGroupRowRequest(HandStrengthKey(0x80, 0), {}));
    return data;
}

// A pool with "Standard", a copy of it, and "Mine".
HandGroupSchemaPool poolWithCopy() {
    HandGroupSchemaPool pool;
    HandGroupSchemaData copy = HandGroupStandardSchema::data();
    copy.name = "Standard - Copy";
    pool.add(copy);
    pool.add(schemaNamed("Mine"));
    return pool;
}

void expectSameRows(const HandGroupSchemaData& actual, const HandGroupSchemaData& expected) {
    ASSERT_EQ(actual.groups.size(), expected.groups.size());
    for (std::size_t g = 0; g < expected.groups.size(); ++g) {
        const HandGroup& a = actual.groups[g];
        const HandGroup& e = expected.groups[g];
        EXPECT_EQ(a.name, e.name);
        ASSERT_EQ(a.rows.size(), e.rows.size()) << e.name;
        for (std::size_t r = 0; r < e.rows.size(); ++r) {
            EXPECT_EQ(a.rows[r].key.positive, e.rows[r].key.positive) << e.name << " " << r;
            EXPECT_EQ(a.rows[r].key.exclusive, e.rows[r].key.exclusive) << e.name << " " << r;
            EXPECT_EQ(a.rows[r].key.displayName, e.rows[r].key.displayName) << e.name << r;
            EXPECT_EQ(a.rows[r].parent, e.rows[r].parent) << e.name << " " << r;
            EXPECT_EQ(a.rows[r].visible, e.rows[r].visible) << e.name << " " << r;
        }
    }
}

// Runs `choose` in the next hand strength dialog and accepts it.
void whenHandStrengthDialog(const std::function<void(HandStrengthSelectionDialog&)>& choose) {
    ModalDialogs::whenShown([choose](QWidget* widget) {
        auto* dialog = qobject_cast<HandStrengthSelectionDialog*>(widget);
        if (dialog == nullptr) {
            ADD_FAILURE() << "Expected the hand strength dialog.";
            qobject_cast<QDialog*>(widget)->reject();
            return;
        }
        choose(*dialog);
        dialog->buttonBox()->button(QDialogButtonBox::Ok)->click();
    });
}

void pickFeature(QListWidget* list, const char* text) {
    const QList<QListWidgetItem*> found =
        list->findItems(QString::fromLatin1(text), Qt::MatchExactly);
    ASSERT_EQ(found.size(), 1) << text;
    list->setCurrentItem(found.first());
}

} // namespace

TEST(SchemaEditingDialog, TextsOfTheDialog) {
    const HandGroupSchemaPool pool = poolWithCopy();
    SchemaEditingDialog dialog(nullptr, pool, "Mine", false);
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Edit Schema"));
    EXPECT_EQ(dialog.objectName(), QStringLiteral("SchemaEditingDialog"));
    EXPECT_TRUE(dialog.styleSheet().contains(QStringLiteral("#SchemaEditingDialog")));
    EXPECT_EQ(dialog.tree()->headerItem()->text(0), QStringLiteral("Group / Hand Strength Detail"));
    QStringList labels;
    for (const QLabel* label : dialog.findChildren<QLabel*>())
        labels << label->text();
    EXPECT_TRUE(labels.contains(QStringLiteral("Displayed Hand Strength Details:")));
    EXPECT_TRUE(labels.contains(QStringLiteral("Name of Schema:")));
    EXPECT_EQ(dialog.addGroupButton()->text(), QStringLiteral("Add Group"));
    EXPECT_EQ(dialog.addGroupButton()->toolTip(), QStringLiteral("Add Folder"));
    EXPECT_EQ(dialog.addHandStrengthButton()->text(), QStringLiteral("Add Current Tree Range"));
    EXPECT_EQ(dialog.addHandStrengthButton()->toolTip(), QStringLiteral("Add Current Tree Range"));
    EXPECT_EQ(dialog.editButton()->text(), QStringLiteral("Edit"));
    EXPECT_EQ(dialog.deleteButton()->text(), QStringLiteral("Delete"));
    EXPECT_EQ(dialog.nameEdit()->text(), QStringLiteral("Mine"));
    // The pictures of the tree come from the resources.
    EXPECT_TRUE(QFile::exists(QStringLiteral(":/folder.png")));
    EXPECT_TRUE(QFile::exists(QStringLiteral(":/handSelectionTreeRange.PNG")));
    SchemaEditingTreeItem* group = groupNamed(dialog, QStringLiteral("Made"));
    ASSERT_NE(group, nullptr);
    EXPECT_TRUE(group->isGroup());
    EXPECT_EQ(group->key(), HandStrengthKey());
    EXPECT_FALSE(group->icon(0).isNull());
    EXPECT_FALSE(group->child(0)->icon(0).isNull());
    EXPECT_NE(group->icon(0).cacheKey(), group->child(0)->icon(0).cacheKey());
}

TEST(SchemaEditingDialog, StandardLoadsAsATreeOfItsRows) {
    const HandGroupSchemaPool pool;
    SchemaEditingDialog dialog(nullptr, pool, "Standard", true);
    const HandGroupSchemaData& standard = HandGroupStandardSchema::data();
    ASSERT_EQ(dialog.tree()->topLevelItemCount(), 4);
    EXPECT_EQ(dialog.tree()->topLevelItem(0)->text(0), QStringLiteral("Custom Sum"));
    EXPECT_EQ(dialog.tree()->topLevelItem(1)->text(0), QStringLiteral("Made Hands"));
    EXPECT_EQ(dialog.tree()->topLevelItem(2)->text(0),
              QStringLiteral("Draws (excluding made hands)"));
    EXPECT_EQ(dialog.tree()->topLevelItem(3)->text(0), QStringLiteral("Combodraws"));

    std::size_t entries = 0;
    for (int g = 0; g < 4; ++g) {
        std::vector<std::pair<SchemaEditingTreeItem*, SchemaEditingTreeItem*>> shown;
        walk(dialog.tree()->topLevelItem(g), nullptr, shown);
        const HandGroup& group = standard.groups[static_cast<std::size_t>(g)];
        // The rows of "Standard" stand in depth-first order: the tree gives them back so.
        ASSERT_EQ(shown.size(), group.rows.size()) << group.name;
        for (std::size_t r = 0; r < shown.size(); ++r) {
            const HandGroupRow& row = group.rows[r];
            EXPECT_EQ(shown[r].first->key(), row.key) << group.name << " " << r;
            EXPECT_FALSE(shown[r].first->isGroup());
            if (row.parent == HandGroupRow::noParent) {
                EXPECT_EQ(shown[r].second, nullptr);
            } else {
                ASSERT_NE(shown[r].second, nullptr);
                EXPECT_EQ(shown[r].second->key(), group.rows[row.parent].key);
            }
        }
        entries += shown.size();
    }
    // The custom sum row and 127 hand strengths.
    EXPECT_EQ(entries, 128u);
    // The names as the tables show them, the table's spelling included.
    QTreeWidgetItem* made = dialog.tree()->topLevelItem(1);
    EXPECT_NE(findEntry(made, QStringLiteral("3nd Nutflush")), nullptr);
    EXPECT_NE(findEntry(dialog.tree()->topLevelItem(3), QStringLiteral("With Flushdraw to Nuts")),
              nullptr);
    EXPECT_EQ(findEntry(made, QStringLiteral("3nd Nutflush"))->parent()->text(0),
              QStringLiteral("Flush"));
}

TEST(SchemaEditingDialog, StandardIsReadOnly) {
    const HandGroupSchemaPool pool;
    SchemaEditingDialog dialog(nullptr, pool, "Standard", true);
    dialog.show();
    EXPECT_FALSE(dialog.nameEdit()->isEnabled());
    EXPECT_FALSE(dialog.addGroupButton()->isEnabled());
    EXPECT_EQ(dialog.buttonBox()->standardButtons(), QDialogButtonBox::Close);

    select(dialog, dialog.tree()->topLevelItem(1));
    EXPECT_EQ(dialog.editButton()->text(), QStringLiteral("View"));
    EXPECT_FALSE(dialog.editButton()->isEnabled()); // a group has nothing to view
    EXPECT_FALSE(dialog.deleteButton()->isEnabled());
    EXPECT_FALSE(dialog.addHandStrengthButton()->isEnabled());

    SchemaEditingTreeItem* nutflush =
        findEntry(dialog.tree()->topLevelItem(1), QStringLiteral("Nutflush"));
    select(dialog, nutflush);
    EXPECT_EQ(dialog.editButton()->text(), QStringLiteral("View"));
    EXPECT_TRUE(dialog.editButton()->isEnabled());
    EXPECT_FALSE(dialog.deleteButton()->isEnabled());
    EXPECT_FALSE(dialog.addHandStrengthButton()->isEnabled());

    // "View" shows the key read-only, with the parent's feature inherited.
    ModalDialogs::Watchdog watchdog;
    bool viewed = false;
    ModalDialogs::whenShown([&viewed](QWidget* widget) {
        auto* view = qobject_cast<HandStrengthSelectionDialog*>(widget);
        ASSERT_NE(view, nullptr);
        viewed = true;
        EXPECT_TRUE(view->isReadOnly());
        EXPECT_EQ(view->positiveList()->item(0)->text(), QStringLiteral("Flush (Inherited)"));
        EXPECT_EQ(view->positiveList()->item(1)->text(), QStringLiteral("Top One"));
        EXPECT_FALSE(view->nameEdit()->isEnabled());
        view->buttonBox()->button(QDialogButtonBox::Close)->click();
    });
    dialog.editButton()->click();
    EXPECT_TRUE(viewed);
    EXPECT_EQ(nutflush->key(), HandStrengthKey(0x208, 0));

    // Nothing to accept: the schema stays as it was.
    dialog.accept();
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
}

TEST(SchemaEditingDialog, AnUnchangedCopyComesBackAsItWas) {
    const HandGroupSchemaPool pool = poolWithCopy();
    SchemaEditingDialog dialog(nullptr, pool, "Standard - Copy", false);
    dialog.show();
    EXPECT_TRUE(dialog.nameEdit()->isEnabled());
    select(dialog, dialog.tree()->topLevelItem(0));
    EXPECT_EQ(dialog.editButton()->text(), QStringLiteral("Edit"));
    EXPECT_TRUE(dialog.editButton()->isEnabled());
    EXPECT_TRUE(dialog.deleteButton()->isEnabled());
    EXPECT_TRUE(dialog.addHandStrengthButton()->isEnabled());
    dialog.buttonBox()->button(QDialogButtonBox::Ok)->click();
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(dialog.schemaData().name, "Standard - Copy");
    expectSameRows(dialog.schemaData(), HandGroupStandardSchema::data());
}

TEST(SchemaEditingDialog, WithoutSelectionOnlyAGroupCanBeAdded) {
    const HandGroupSchemaPool pool = poolWithCopy();
    SchemaEditingDialog dialog(nullptr, pool, "Mine", false);
    EXPECT_EQ(dialog.selectedItem(), nullptr);
    EXPECT_TRUE(dialog.addGroupButton()->isEnabled());
    EXPECT_FALSE(dialog.addHandStrengthButton()->isEnabled());
    EXPECT_FALSE(dialog.editButton()->isEnabled());
    EXPECT_FALSE(dialog.deleteButton()->isEnabled());
}

TEST(SchemaEditingDialog, ANameIsNeededAndMustBeFree) {
    ModalDialogs::Watchdog watchdog;
    const HandGroupSchemaPool pool = poolWithCopy();
    SchemaEditingDialog dialog(nullptr, pool, "Mine", false);
    dialog.show();
    QSignalSpy accepted(&dialog, &QDialog::accepted);

    dialog.nameEdit()->setText(QStringLiteral("   "));
    ModalDialogs::Message empty;
    ModalDialogs::answerMessage(&empty, QMessageBox::Ok);
    dialog.accept();
    EXPECT_EQ(empty.title, QStringLiteral("Please specify name"));
    EXPECT_EQ(empty.text, QStringLiteral("Please specify a name for this schema."));
    EXPECT_TRUE(dialog.isVisible());

    for (const char* taken : {"Standard", "Standard - Copy"}) {
        dialog.nameEdit()->setText(QString::fromLatin1(taken));
        ModalDialogs::Message existing;
        ModalDialogs::answerMessage(&existing, QMessageBox::Ok);
        dialog.accept();
        EXPECT_EQ(existing.title, QStringLiteral("Already existing"));
        EXPECT_EQ(existing.text, QStringLiteral("A schema with this name is already existing. "
                                                "Please choose another name."));
        EXPECT_TRUE(dialog.isVisible());
    }
    EXPECT_EQ(accepted.count(), 0);
    EXPECT_EQ(dialog.schemaData().name, "Mine");

    // Its own name passes.
    dialog.nameEdit()->setText(QStringLiteral("Mine"));
    dialog.accept();
    EXPECT_EQ(accepted.count(), 1);
    EXPECT_EQ(dialog.schemaData().name, "Mine");
}

TEST(SchemaEditingDialog, ARenamedSchemaCarriesTheNewName) {
    const HandGroupSchemaPool pool = poolWithCopy();
    SchemaEditingDialog dialog(nullptr, pool, "Mine", false);
    dialog.nameEdit()->setText(QStringLiteral("  Pairs only "));
    dialog.accept();
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(dialog.schemaData().name, "Pairs only");
    EXPECT_EQ(dialog.originalName(), "Mine");
}

TEST(SchemaEditingDialog, AGroupIsAddedByName) {
    ModalDialogs::Watchdog watchdog;
    const HandGroupSchemaPool pool;
    SchemaEditingDialog dialog(nullptr, pool, std::string(), false);
    dialog.show();
    EXPECT_EQ(dialog.tree()->topLevelItemCount(), 0);
    EXPECT_EQ(dialog.nameEdit()->text(), QString());

    ModalDialogs::Question asked;
    ModalDialogs::answerInput(QString(), true, &asked);
    dialog.addGroupButton()->click();
    EXPECT_EQ(asked.title, QStringLiteral("Name of the Group"));
    EXPECT_EQ(asked.label, QStringLiteral("How should the group be named?"));
    EXPECT_EQ(dialog.tree()->topLevelItemCount(), 0);

    ModalDialogs::answerInput(QStringLiteral("Sets"), false);
    dialog.addGroupButton()->click();
    EXPECT_EQ(dialog.tree()->topLevelItemCount(), 0);

    ModalDialogs::answerInput(QStringLiteral("Sets"));
    dialog.addGroupButton()->click();
    ModalDialogs::answerInput(QStringLiteral("Pairs"));
    dialog.addGroupButton()->click();
    ASSERT_EQ(dialog.tree()->topLevelItemCount(), 2);
    EXPECT_EQ(dialog.tree()->topLevelItem(0)->text(0), QStringLiteral("Sets"));
    EXPECT_EQ(dialog.tree()->topLevelItem(1)->text(0), QStringLiteral("Pairs"));
    EXPECT_TRUE(entry(dialog.tree()->topLevelItem(1))->isGroup());

    dialog.nameEdit()->setText(QStringLiteral("Two groups"));
    dialog.accept();
    ASSERT_EQ(dialog.schemaData().groups.size(), 2u);
    EXPECT_EQ(dialog.schemaData().groups[1].name, "Pairs");
    EXPECT_TRUE(dialog.schemaData().groups[1].rows.empty());
}

TEST(SchemaEditingDialog, HandStrengthsAreAddedUnderTheSelectedEntry) {
    ModalDialogs::Watchdog watchdog;
    const HandGroupSchemaPool pool;
    SchemaEditingDialog dialog(nullptr, pool, std::string(), false);
    dialog.show();
    ModalDialogs::answerInput(QStringLiteral("Trips and sets"));
    dialog.addGroupButton()->click();
    SchemaEditingTreeItem* group = entry(dialog.tree()->topLevelItem(0));
    select(dialog, group);

    // Under a group: a key of its own, nothing inherited.
    whenHandStrengthDialog([](HandStrengthSelectionDialog& chooser) {
        EXPECT_EQ(chooser.positiveList()->count(), 0);
        pickFeature(chooser.possibleList(), "Three of a Kind");
        chooser.onAddHandStrength();
    });
    dialog.addHandStrengthButton()->click();
    ASSERT_EQ(group->childCount(), 1);
    SchemaEditingTreeItem* trips = entry(group->child(0));
    EXPECT_EQ(trips->text(0), QStringLiteral("Three of a Kind"));
    EXPECT_EQ(trips->key(), HandStrengthKey(0x20, 0));
    // The group stays selected for the next one.
    EXPECT_EQ(dialog.selectedItem(), group);

    // Under a hand strength: the parent's key is inherited.
    select(dialog, trips);
    whenHandStrengthDialog([](HandStrengthSelectionDialog& chooser) {
        ASSERT_EQ(chooser.positiveList()->count(), 1);
        EXPECT_EQ(chooser.positiveList()->item(0)->text(),
                  QStringLiteral("Three of a Kind (Inherited)"));
        pickFeature(chooser.possibleList(), "Using Two Holecards for Made Hand");
        chooser.onAddHandStrength();
    });
    dialog.addHandStrengthButton()->click();
    ASSERT_EQ(trips->childCount(), 1);
    EXPECT_EQ(trips->child(0)->text(0), QStringLiteral("Set"));
    EXPECT_EQ(entry(trips->child(0))->key(), HandStrengthKey(0x10020, 0));

    // A cancelled hand strength dialog adds nothing.
    ModalDialogs::whenShown([](QWidget* widget) { qobject_cast<QDialog*>(widget)->reject(); });
    dialog.addHandStrengthButton()->click();
    EXPECT_EQ(trips->childCount(), 1);

    dialog.nameEdit()->setText(QStringLiteral("Trips"));
    dialog.accept();
    ASSERT_EQ(dialog.schemaData().groups.size(), 1u);
    const HandGroup& rebuilt = dialog.schemaData().groups[0];
    ASSERT_EQ(rebuilt.rows.size(), 2u);
    EXPECT_EQ(rebuilt.rows[0].key, HandStrengthKey(0x20, 0));
    EXPECT_EQ(rebuilt.rows[0].parent, HandGroupRow::noParent);
    EXPECT_TRUE(rebuilt.rows[0].visible);
    EXPECT_EQ(rebuilt.rows[1].key, HandStrengthKey(0x10020, 0));
    EXPECT_EQ(rebuilt.rows[1].parent, 0u);
    EXPECT_FALSE(rebuilt.rows[1].visible);
}

TEST(SchemaEditingDialog, AGroupIsRenamed) {
    ModalDialogs::Watchdog watchdog;
    const HandGroupSchemaPool pool = poolWithCopy();
    SchemaEditingDialog dialog(nullptr, pool, "Mine", false);
    dialog.show();
    select(dialog, dialog.tree()->topLevelItem(0));

    ModalDialogs::Question asked;
    ModalDialogs::answerInput(QStringLiteral("Made hands"), true, &asked);
    dialog.editButton()->click();
    EXPECT_EQ(asked.title, QStringLiteral("New Group Name"));
    EXPECT_EQ(asked.label, QStringLiteral("What is the new name of the group?"));
    EXPECT_EQ(asked.offered, QStringLiteral("Made"));
    EXPECT_EQ(dialog.tree()->topLevelItem(0)->text(0), QStringLiteral("Made hands"));

    // Cancelled or empty, the name stays.
    ModalDialogs::answerInput(QStringLiteral("Other"), false);
    dialog.editButton()->click();
    ModalDialogs::answerInput(QString());
    dialog.editButton()->click();
    EXPECT_EQ(dialog.tree()->topLevelItem(0)->text(0), QStringLiteral("Made hands"));

    dialog.accept();
    EXPECT_EQ(dialog.schemaData().groups[0].name, "Made hands");
}

TEST(SchemaEditingDialog, ChangingAParentKeyKeepsTheChildrensOwnBits) {
    ModalDialogs::Watchdog watchdog;
    HandGroupSchemaPool pool;
    HandGroupSchemaData data;
    data.name = "Pairs";
    data.groups.resize(1);
    data.groups[0].name = "Pairs";
    data.groups[0].addRow(HandGroupRowRequest(HandStrengthKey(0x80, 0), {}));
    data.groups[0].addRow(HandGroupRowRequest(HandStrengthKey(0x280, 0), HandStrengthKey(0x80, 0)));
    data.groups[0].addRow(
        HandGroupRowRequest(HandStrengthKey(0x40280, 0, "TPTK"), HandStrengthKey(0x280, 0)));
    data.groups[0].addRow(
        HandGroupRowRequest(HandStrengthKey(0x8080, 0), HandStrengthKey(0x80, 0)));
    pool.add(data);

    SchemaEditingDialog dialog(nullptr, pool, "Pairs", false);
    dialog.show();
    SchemaEditingTreeItem* pair = entry(dialog.tree()->topLevelItem(0)->child(0));
    ASSERT_EQ(pair->text(0), QStringLiteral("Pair"));
    select(dialog, pair);
    // The pair gets a flush draw beside it; every row below keeps what it had of its own.
    whenHandStrengthDialog([](HandStrengthSelectionDialog& chooser) {
        EXPECT_EQ(chooser.positiveList()->item(0)->text(), QStringLiteral("Pair"));
        pickFeature(chooser.possibleList(), "Flushdraw");
        chooser.onAddHandStrength();
    });
    dialog.editButton()->click();

    EXPECT_EQ(pair->key(), HandStrengthKey(0x4000080, 0));
    EXPECT_EQ(pair->text(0), QStringLiteral("Pair + Flushdraw"));
    SchemaEditingTreeItem* topPair = entry(pair->child(0));
    SchemaEditingTreeItem* kicker = entry(topPair->child(0));
    SchemaEditingTreeItem* overpair = entry(pair->child(1));
    EXPECT_EQ(topPair->key(), HandStrengthKey(0x4000280, 0));
    EXPECT_EQ(topPair->text(0), QStringLiteral("Pair + Top One + Flushdraw"));
    EXPECT_EQ(kicker->key(), HandStrengthKey(0x4040280, 0));
    EXPECT_EQ(kicker->key().displayName, "TPTK");
    EXPECT_EQ(kicker->text(0), QStringLiteral("TPTK"));
    EXPECT_EQ(overpair->key(), HandStrengthKey(0x4008080, 0));

    // Editing a middle row swaps only its own part below it.
    select(dialog, topPair);
    whenHandStrengthDialog([](HandStrengthSelectionDialog& chooser) {
        pickFeature(chooser.positiveList(), "Top One");
        chooser.onRemoveHandStrength();
        pickFeature(chooser.possibleList(), "2nd Top One");
        chooser.onAddHandStrength();
        pickFeature(chooser.possibleList(), "Overcards");
        chooser.onAddExclusiveHandStrength();
    });
    dialog.editButton()->click();
    EXPECT_EQ(topPair->key(), HandStrengthKey(0x4000480, 0x400000000000));
    EXPECT_EQ(kicker->key(), HandStrengthKey(0x4040480, 0x400000000000));
    EXPECT_EQ(kicker->key().displayName, "TPTK");
    EXPECT_EQ(overpair->key(), HandStrengthKey(0x4008080, 0));
    EXPECT_EQ(pair->key(), HandStrengthKey(0x4000080, 0));
}

TEST(SchemaEditingDialog, DeletingAsksAndTakesTheSubtree) {
    ModalDialogs::Watchdog watchdog;
    const HandGroupSchemaPool pool = poolWithCopy();
    SchemaEditingDialog dialog(nullptr, pool, "Standard - Copy", false);
    dialog.show();
    QTreeWidgetItem* made = dialog.tree()->topLevelItem(1);
    SchemaEditingTreeItem* trips = findEntry(made, QStringLiteral("Three of a Kind"));
    ASSERT_NE(trips, nullptr);
    select(dialog, trips);

    ModalDialogs::Message asked;
    ModalDialogs::answerMessage(&asked, QMessageBox::No);
    dialog.deleteButton()->click();
    EXPECT_EQ(asked.title, QStringLiteral("Really?"));
    EXPECT_EQ(asked.text, QStringLiteral("Do you really want to delete this entry?"));
    EXPECT_NE(findEntry(made, QStringLiteral("Three of a Kind")), nullptr);

    ModalDialogs::answerMessage(nullptr, QMessageBox::Yes);
    dialog.deleteButton()->click();
    EXPECT_EQ(findEntry(made, QStringLiteral("Three of a Kind")), nullptr);
    EXPECT_EQ(findEntry(made, QStringLiteral("Set")), nullptr);
    // The selection moves on to a neighbour, and the buttons follow it.
    EXPECT_EQ(dialog.deleteButton()->isEnabled(), dialog.selectedItem() != nullptr);
    EXPECT_EQ(dialog.addHandStrengthButton()->isEnabled(), dialog.selectedItem() != nullptr);

    dialog.accept();
    // "Three of a Kind" with its six rows below it is gone; every row behind it points at the
    // same row as before, renumbered.
    const HandGroup& before = HandGroupStandardSchema::data().groups[1];
    const HandGroup& after = dialog.schemaData().groups[1];
    std::size_t first = 0;
    while (before.rows[first].key != HandStrengthKey(0x20, 0))
        ++first;
    ASSERT_EQ(after.rows.size(), before.rows.size() - 7);
    for (std::size_t r = 0; r < after.rows.size(); ++r) {
        const std::size_t old = r < first ? r : r + 7;
        EXPECT_EQ(after.rows[r].key, before.rows[old].key) << r;
        const std::uint32_t oldParent = before.rows[old].parent;
        const std::uint32_t expected = oldParent == HandGroupRow::noParent ? oldParent
                                       : oldParent < first                 ? oldParent
                                                                           : oldParent - 7;
        EXPECT_EQ(after.rows[r].parent, expected) << r;
    }
}

TEST(SchemaEditingDialog, DamagedStoredRowsShowUnderTheirGroup) {
    HandGroupSchemaPool pool;
    HandGroupSchemaData data;
    data.name = "Damaged";
    data.groups.resize(2);
    data.groups[0].name = "Broken links";
    auto row = [](unsigned long long positive, std::uint32_t parent) {
        HandGroupRow r;
        r.key = HandStrengthKey(positive, 0);
        r.parent = parent;
        return r;
    };
    // 0 a root; 1 points past the end; 2 at itself; 3 and 4 at each other; 5 under the
    // cycle; 6 under the row that points past the end.
    data.groups[0].rows = {row(0x80, HandGroupRow::noParent),
                           row(0x40, 7),
                           row(0x20, 2),
                           row(0x10, 4),
                           row(0x8, 3),
                           row(0x208, 4),
                           row(0x10040, 1)};
    data.groups[1].name = "Empty";
    pool.add(data);

    SchemaEditingDialog dialog(nullptr, pool, "Damaged", false);
    dialog.show();
    QTreeWidgetItem* group = dialog.tree()->topLevelItem(0);
    std::vector<std::pair<SchemaEditingTreeItem*, SchemaEditingTreeItem*>> shown;
    walk(group, nullptr, shown);
    // Every row once.
    ASSERT_EQ(shown.size(), 7u);
    std::vector<unsigned long long> keys;
    for (const auto& [item, above] : shown)
        keys.push_back(item->key().positive);
    std::sort(keys.begin(), keys.end());
    EXPECT_EQ(keys, (std::vector<unsigned long long>{0x8, 0x10, 0x20, 0x40, 0x80, 0x208, 0x10040}));
    // What has a root stands where it belongs; broken links hang under the group.
    EXPECT_EQ(group->child(0)->text(0), QStringLiteral("Pair"));
    EXPECT_EQ(group->child(1)->text(0), QStringLiteral("Twopair"));
    EXPECT_EQ(group->child(1)->child(0)->text(0),
              QStringLiteral("Without Pocket Pair, Using Two Hole Cards"));
    EXPECT_EQ(group->child(2)->text(0), QStringLiteral("Three of a Kind"));
    EXPECT_EQ(dialog.tree()->topLevelItem(1)->childCount(), 0);

    // Accepted, the tree is whole again: every parent comes before its child.
    dialog.accept();
    ASSERT_EQ(dialog.result(), QDialog::Accepted);
    const HandGroup& repaired = dialog.schemaData().groups[0];
    ASSERT_EQ(repaired.rows.size(), 7u);
    for (std::size_t r = 0; r < repaired.rows.size(); ++r) {
        const std::uint32_t parent = repaired.rows[r].parent;
        EXPECT_TRUE(parent == HandGroupRow::noParent || parent < r) << r;
        EXPECT_EQ(repaired.rows[r].visible, parent == HandGroupRow::noParent) << r;
    }
    EXPECT_EQ(dialog.schemaData().groups[1].name, "Empty");
}
