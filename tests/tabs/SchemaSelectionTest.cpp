#include "handstrength/HandGroupRowRequest.h"
#include "handstrength/HandGroupSchemaPool.h"
#include "handstrength/ui/HandGroupSchemaSelection.h"
#include "handstrength/HandGroupTickSchemaPool.h"
#include "handstrength/ui/HandGroupTickSchemaSelection.h"

#include <gtest/gtest.h>

namespace {

HandGroupSchemaData schemaNamed(const std::string& name) {
    HandGroupSchemaData data;
    data.name = name;
    data.groups.resize(1);
    data.groups[0].name = "Made";
    data.groups[0].addRow(HandGroupRowRequest(HandStrengthKey(0x80, 0), HandStrengthKey()));
    return data;
}

QStringList itemsOf(const QComboBox& box) {
    QStringList items;
    for (int i = 0; i < box.count(); ++i)
        items << box.itemText(i);
    return items;
}

} // namespace

TEST(HandGroupSchemaSelection, ListsThePoolAndEmitsTheChosenSchema) {
    HandGroupSchemaPool pool;
    pool.add(schemaNamed("Mine"));
    HandGroupSchemaSelection box;
    std::vector<std::string> emitted;
    QObject::connect(&box, &HandGroupSchemaSelection::schemaChanged,
                     [&](const HandGroupSchemaData& data) { emitted.push_back(data.name); });
    box.setPool(&pool);
    EXPECT_EQ(itemsOf(box), (QStringList{QStringLiteral("Standard"), QStringLiteral("Mine"),
                                         QStringLiteral("Edit Schemas...")}));
    // A refill applies the default.
    EXPECT_EQ(emitted, std::vector<std::string>{"Standard"});
    box.setCurrentIndex(1);
    EXPECT_EQ(emitted.back(), "Mine");
    EXPECT_EQ(box.currentName(), QStringLiteral("Mine"));
    // Handing the same pool again changes nothing.
    box.setPool(&pool);
    EXPECT_EQ(emitted.size(), 2u);
    // A refill keeps the current name.
    box.refill();
    EXPECT_EQ(emitted.back(), "Mine");
    EXPECT_EQ(box.currentText(), QStringLiteral("Mine"));
}

TEST(HandGroupSchemaSelection, EditItemWithoutDialogsGivesTheChoiceBack) {
    HandGroupSchemaPool pool;
    pool.add(schemaNamed("Mine"));
    HandGroupSchemaSelection box;
    box.setPool(&pool);
    box.setCurrentIndex(1);
    int emitted = 0;
    QObject::connect(&box, &HandGroupSchemaSelection::schemaChanged,
                     [&](const HandGroupSchemaData&) { ++emitted; });
    box.setCurrentIndex(box.findText(QStringLiteral("Edit Schemas...")));
    EXPECT_EQ(box.currentText(), QStringLiteral("Mine"));
    EXPECT_EQ(emitted, 0);
}

TEST(HandGroupSchemaSelection, EditItemRunsTheEditorAndRefills) {
    HandGroupSchemaPool pool;
    pool.add(schemaNamed("Mine"));
    HandGroupSchemaSelection box;
    box.setPool(&pool);
    box.setCurrentIndex(1);
    int runs = 0;
    box.setEditor([&runs](HandGroupSchemaPool& edited, QWidget*) {
        ++runs;
        edited.remove("Mine");
        edited.add(schemaNamed("Other"));
        edited.setDefaultName("Other");
    });
    std::vector<std::string> emitted;
    QObject::connect(&box, &HandGroupSchemaSelection::schemaChanged,
                     [&](const HandGroupSchemaData& data) { emitted.push_back(data.name); });
    box.setCurrentIndex(2);
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(itemsOf(box), (QStringList{QStringLiteral("Standard"), QStringLiteral("Other"),
                                         QStringLiteral("Edit Schemas...")}));
    // "Mine" is gone: the pool's default takes its place.
    EXPECT_EQ(box.currentText(), QStringLiteral("Other"));
    EXPECT_EQ(emitted, std::vector<std::string>{"Other"});
}

TEST(HandGroupTickSchemaSelection, CustomFirstThenTheTickSchemas) {
    HandGroupTickSchemaPool pool;
    HandGroupTickSchemaSelection box;
    box.setPool(&pool);
    EXPECT_EQ(itemsOf(box), (QStringList{QStringLiteral("Custom"), QStringLiteral("Nothing"),
                                         QStringLiteral("Made Hands"),
                                         QStringLiteral("Mediocre and Strong Draws"),
                                         QStringLiteral("Edit Schemas...")}));
    EXPECT_TRUE(box.isCustom());
    std::vector<HandGroupTickSchemaPool::HandGroupTickSchema> emitted;
    QObject::connect(
        &box, &HandGroupTickSchemaSelection::tickSchemaChanged,
        [&](HandGroupTickSchemaPool::HandGroupTickSchema schema) { emitted.push_back(schema); });
    box.setCurrentIndex(2);
    ASSERT_EQ(emitted.size(), 1u);
    EXPECT_EQ(emitted[0].name, "Made Hands");
    EXPECT_EQ(emitted[0].handStrengths.size(), 8u);
    // "Custom" only keeps the name.
    box.setCurrentIndex(0);
    EXPECT_EQ(emitted.size(), 1u);
    EXPECT_TRUE(box.isCustom());
}

TEST(HandGroupTickSchemaSelection, TicksByHandTurnTheChoiceToCustom) {
    HandGroupTickSchemaPool pool;
    HandGroupTickSchemaSelection box;
    box.setPool(&pool);
    box.setCurrentIndex(2);
    const std::vector<HandStrengthKey> made = pool.find("Made Hands")->handStrengths;
    box.SetCurrentlySelectedHandStrengths(made);
    EXPECT_EQ(box.currentText(), QStringLiteral("Made Hands"));
    box.SetCurrentlySelectedHandStrengths({HandStrengthKey(0x80, 0)});
    EXPECT_EQ(box.currentText(), QStringLiteral("Custom"));
    EXPECT_EQ(box.presentTicks().size(), 1u);
}

TEST(HandGroupTickSchemaSelection, EditorThatAddsASchemaMakesItCurrent) {
    HandGroupTickSchemaPool pool;
    HandGroupTickSchemaSelection box;
    box.setPool(&pool);
    box.SetCurrentlySelectedHandStrengths({HandStrengthKey(0x80, 0)});
    std::vector<HandStrengthKey> seen;
    box.setEditor([&seen](HandGroupTickSchemaPool& edited,
                          const std::vector<HandStrengthKey>& present, QWidget*) {
        seen = present;
        edited.add({"Pairs", {HandStrengthKey(0x80, 0)}});
    });
    std::vector<std::string> emitted;
    QObject::connect(&box, &HandGroupTickSchemaSelection::tickSchemaChanged,
                     [&](HandGroupTickSchemaPool::HandGroupTickSchema schema) {
                         emitted.push_back(schema.name);
                     });
    box.setCurrentIndex(box.findText(QStringLiteral("Edit Schemas...")));
    EXPECT_EQ(seen.size(), 1u);
    EXPECT_EQ(box.currentText(), QStringLiteral("Pairs"));
    EXPECT_EQ(emitted, std::vector<std::string>{"Pairs"});
    EXPECT_EQ(box.itemText(box.count() - 1), QStringLiteral("Edit Schemas..."));

    // Without a new schema the previous choice stays.
    box.setEditor([](HandGroupTickSchemaPool&, const std::vector<HandStrengthKey>&, QWidget*) {});
    box.setCurrentIndex(box.findText(QStringLiteral("Edit Schemas...")));
    EXPECT_EQ(box.currentText(), QStringLiteral("Pairs"));
    EXPECT_EQ(emitted.size(), 1u);
}
