// The schema dialogs as a player reaches them: through "Edit Schemas..." of the board tabs'
// combo boxes, with the tabs showing real ranges on a flop.

#include "ModalDialogs.h"

#include "calculation/ThreadPool.h"
#include "handstrength/HandGroupSchema.h"
#include "handstrength/HandGroupSchemaPool.h"
#include "handstrength/HandGroupStandardSchema.h"
#include "handstrength/HandGroupTickSchemaPool.h"
#include "handstrength/HandStrengthNames.h"
#include "handstrength/ui/HandGroupSchemaSelection.h"
#include "handstrength/ui/HandGroupTickSchemaSelection.h"
#include "handstrength/ui/HandStrengthSelectionDialog.h"
#include "handstrength/ui/SchemaEditingDialog.h"
#include "handstrength/ui/SchemaEditingTreeItem.h"
#include "handstrength/ui/SchemaListDialog.h"
#include "handstrength/ui/TickSchemaListDialog.h"
#include "tabs/BoardHitEvaluationTable.h"
#include "tabs/BoardHitsBar.h"
#include "tabs/BoardHitsTab.h"
#include "tabs/HandStrengthLabel.h"
#include "tabs/TwoPlayerBoardHitsTab.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSettings>
#include <QToolButton>
#include <QTreeWidget>
#include <VelmaraEvaluatorBase.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <set>
#include <utility>
#include <vector>

namespace {

// A late opening range against a three-bet range on a two-tone flop.
const std::string opener = "22+,A2s+,K9s+,Q9s+,J9s+,T8s+,97s+,86s+,75s+,65s,54s,ATo+,KTo+,QTo+,JTo";
const std::string threeBet = "TT+,AQs+,AKo,A5s,A4s,KQs,76s";
const std::string flop = "Kh9h4c";

void forgetStoredPools() {
    QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
    settings.remove(QStringLiteral("HandSelection"));
    settings.sync();
}

template <typename Dialog>
void whenDialog(const std::function<void(Dialog&)>& body) {
    ModalDialogs::whenShown([body](QWidget* widget) {
        auto* dialog = qobject_cast<Dialog*>(widget);
        if (dialog == nullptr) {
            ADD_FAILURE() << "Expected " << Dialog::staticMetaObject.className() << ", got "
                          << widget->metaObject()->className();
            qobject_cast<QDialog*>(widget)->reject();
            return;
        }
        body(*dialog);
    });
}

void pickFeature(QListWidget* list, const char* text) {
    const QList<QListWidgetItem*> found =
        list->findItems(QString::fromLatin1(text), Qt::MatchExactly);
    ASSERT_EQ(found.size(), 1) << text;
    list->setCurrentItem(found.first());
}

// In the open editor: a hand strength under the selected entry, made of `positive` features
// and `exclusive` ones, with an optional name of its own.
void addHandStrength(SchemaEditingDialog& editor, std::vector<const char*> positive,
                     std::vector<const char*> exclusive = {}, const char* name = nullptr) {
    whenDialog<HandStrengthSelectionDialog>([=](HandStrengthSelectionDialog& chooser) {
        for (const char* feature : positive) {
            pickFeature(chooser.possibleList(), feature);
            chooser.addPositiveButton()->click();
        }
        for (const char* feature : exclusive) {
            pickFeature(chooser.possibleList(), feature);
            chooser.addExclusiveButton()->click();
        }
        if (name != nullptr) {
            chooser.nameEdit()->setText(QString::fromLatin1(name));
            chooser.nameEdit()->setModified(true);
        }
        chooser.buttonBox()->button(QDialogButtonBox::Ok)->click();
    });
    editor.addHandStrengthButton()->click();
}

void selectEntry(SchemaEditingDialog& editor, const QString& text) {
    const QList<QTreeWidgetItem*> found =
        editor.tree()->findItems(text, Qt::MatchExactly | Qt::MatchRecursive);
    ASSERT_FALSE(found.isEmpty()) << text.toStdString();
    editor.tree()->setCurrentItem(found.first());
}

void chooseSchema(BoardEvaluationTab& tab, const char* name) {
    HandGroupSchemaSelection* box = tab.schemaSelection();
    const int index = box->findText(QString::fromLatin1(name));
    ASSERT_GE(index, 0) << name;
    box->setCurrentIndex(index);
    ASSERT_EQ(tab.schema()->getName(), name);
}

void openSchemaDialogs(BoardEvaluationTab& tab) {
    HandGroupSchemaSelection* box = tab.schemaSelection();
    box->setCurrentIndex(box->findText(QStringLiteral("Edit Schemas...")));
}

// The detail records of the evaluator for every distinct key of the schema's groups.
DetailHandEvaluations recordsFor(const HandGroupSchema& schema) {
    DetailHandEvaluations records;
    std::set<std::pair<unsigned long long, unsigned long long>> seen;
    for (const HandGroup& group : schema.getGroups()) {
        for (const HandGroupRow& row : group.rows) {
            if (!seen.insert({row.key.positive, row.key.exclusive}).second)
                continue;
            DetailHandEvaluation detail;
            detail.key = row.key;
            records.details.push_back(detail);
        }
    }
    return records;
}

const DetailHandEvaluation* recordOf(const DetailHandEvaluations& records,
                                     const HandStrengthKey& key) {
    for (const DetailHandEvaluation& detail : records.details) {
        if (detail.key == key)
            return &detail;
    }
    return nullptr;
}

// "(12)" at the end of a bar's text.
bool showsCount(const QString& text, int count) {
    return text.endsWith(QStringLiteral("(%1)").arg(count));
}

// The shown rows of a tab as (group index, key words), in order.
std::vector<std::pair<std::size_t, std::pair<unsigned long long, unsigned long long>>>
shownRows(const BoardEvaluationTab& tab) {
    std::vector<std::pair<std::size_t, std::pair<unsigned long long, unsigned long long>>> rows;
    for (const BoardHitEvaluationTable::Row& row : tab.table()->rows())
        rows.push_back({row.caption->groupIndex(),
                        {row.caption->key().positive, row.caption->key().exclusive}});
    return rows;
}

// Opens every row of the tab's schema, so that all rows with hits are shown.
void expandAll(BoardEvaluationTab& tab) {
    auto* schema = const_cast<HandGroupSchema*>(tab.schema());
    for (int round = 0; round < 4; ++round) {
        for (const HandGroup& group : schema->getGroups()) {
            for (const HandGroupRow& row : group.rows) {
                if (schema->isExpandable(row.key) && !schema->isExpanded(row.key))
                    schema->toggleChildren(row.key);
            }
        }
    }
    tab.DoRefresh();
}

} // namespace

// What the main window owns and hands to its board tabs: the thread pool and the two pools,
// the stored pools forgotten.
class SchemaDialogsOnTheBoardTabs : public ::testing::Test {
protected:
    void SetUp() override { forgetStoredPools(); }
    // As the window does on every switch to a tab.
    void handPools(BoardEvaluationTab& tab) { tab.setPools(&threadPool, &ticks, &schemas); }

    ModalDialogs::Watchdog watchdog{30};
    ThreadPool threadPool;
    HandGroupSchemaPool schemas;
    HandGroupTickSchemaPool ticks;
};

TEST_F(SchemaDialogsOnTheBoardTabs, ANewSchemaShowsWithTheEvaluatorsCounts) {
    BoardHitsTab hits;
    TwoPlayerBoardHitsTab both;
    handPools(hits);
    handPools(both);
    hits.updateEvaluation(opener, threeBet, flop, "", true);
    both.updateEvaluation(opener, threeBet, flop, "", true);

    whenDialog<SchemaListDialog>([](SchemaListDialog& list) {
        whenDialog<SchemaEditingDialog>([](SchemaEditingDialog& editor) {
            editor.nameEdit()->setText(QStringLiteral("Pairs and draws"));
            ModalDialogs::answerInput(QStringLiteral("Pairs"));
            editor.addGroupButton()->click();
            selectEntry(editor, QStringLiteral("Pairs"));
            addHandStrength(editor, {"Pair"});
            selectEntry(editor, QStringLiteral("Pair"));
            addHandStrength(editor, {"Top One"});
            addHandStrength(editor, {"Pocket Pair being Overpair"});
            selectEntry(editor, QStringLiteral("Top Pair"));
            addHandStrength(editor, {"Top Kicker"});
            ModalDialogs::answerInput(QStringLiteral("Draws"));
            editor.addGroupButton()->click();
            selectEntry(editor, QStringLiteral("Draws"));
            addHandStrength(editor, {"Flushdraw"}, {"Pair"}, "Flush draw, no pair");
            addHandStrength(editor, {"OESD", "Overcards"});
            editor.buttonBox()->button(QDialogButtonBox::Ok)->click();
        });
        list.newButton()->click();
        list.buttonBox()->button(QDialogButtonBox::Ok)->click();
    });
    openSchemaDialogs(hits);

    // The box lists the new schema and keeps the one in use.
    EXPECT_EQ(hits.schemaSelection()->currentText(), QStringLiteral("Standard"));
    ASSERT_GE(hits.schemaSelection()->findText(QStringLiteral("Pairs and draws")), 0);
    // The pool is saved.
    HandGroupSchemaPool stored;
    stored.load();
    ASSERT_NE(stored.find("Pairs and draws"), nullptr);

    chooseSchema(hits, "Pairs and draws");
    const HandGroupSchema& schema = *hits.schema();
    ASSERT_EQ(schema.getGroups().size(), 2u);
    const HandGroup& pairs = schema.getGroups()[0];
    const HandGroup& draws = schema.getGroups()[1];
    ASSERT_EQ(pairs.rows.size(), 4u);
    ASSERT_EQ(draws.rows.size(), 2u);
    EXPECT_EQ(pairs.rows[0].key, HandStrengthKey(0x80, 0));
    EXPECT_EQ(pairs.rows[1].key, HandStrengthKey(0x280, 0));
    EXPECT_EQ(pairs.rows[2].key, HandStrengthKey(0x40280, 0));
    EXPECT_EQ(pairs.rows[3].key, HandStrengthKey(0x8080, 0));
    EXPECT_EQ(draws.rows[0].key, HandStrengthKey(0x4000000, 0x80));
    EXPECT_EQ(draws.rows[0].key.displayName, "Flush draw, no pair");
    EXPECT_EQ(draws.rows[1].key, HandStrengthKey(0x400008000000, 0));

    // One player: the counts of the evaluator for the range the tab shows.
    DetailHandEvaluations one = recordsFor(schema);
    getHitEvaluationForOnePlayer(BoardEvaluationTab::technicalRange(opener), flop, "", one);
    expandAll(hits);
    int shownWithHits = 0;
    for (const HandGroup& group : hits.schema()->getGroups()) {
        for (const HandGroupRow& row : group.rows) {
            const DetailHandEvaluation* expected = recordOf(one, row.key);
            ASSERT_NE(expected, nullptr);
            EXPECT_EQ(row.combinations1, static_cast<std::uint32_t>(expected->combinations1))
                << handStrengthName(row.key);
            const BoardHitEvaluationTable::Row* shown = hits.table()->rowOf(row.key);
            if (expected->combinations1 == 0)
                continue;
            ASSERT_NE(shown, nullptr);
            ASSERT_EQ(shown->bars.size(), 1u);
            EXPECT_TRUE(showsCount(shown->bars[0]->texts().value(0), expected->combinations1))
                << shown->bars[0]->texts().join('|').toStdString();
            ++shownWithHits;
        }
    }
    // The flop gives hits to every row but one at least.
    EXPECT_GE(shownWithHits, 5);

    // Two players: the other tab catches up when it is handed the pools again, as on a tab
    // switch, and counts with the card removal of both ranges.
    EXPECT_LT(both.schemaSelection()->findText(QStringLiteral("Pairs and draws")), 0);
    handPools(both);
    chooseSchema(both, "Pairs and draws");
    DetailHandEvaluations two = recordsFor(*both.schema());
    getHitEvaluationClassical(BoardEvaluationTab::technicalRange(opener),
                              BoardEvaluationTab::technicalRange(threeBet), flop, "", two);
    for (const HandGroup& group : both.schema()->getGroups()) {
        for (const HandGroupRow& row : group.rows) {
            const DetailHandEvaluation* expected = recordOf(two, row.key);
            ASSERT_NE(expected, nullptr);
            EXPECT_EQ(row.combinations1, static_cast<std::uint32_t>(expected->combinations1));
            EXPECT_EQ(row.combinations2, static_cast<std::uint32_t>(expected->combinations2));
        }
    }
    EXPECT_GT(both.schema()->getGroups()[0].rows[0].combinations2, 0u);
}

TEST_F(SchemaDialogsOnTheBoardTabs, ACopyOfStandardWithoutAGroupLosesExactlyThatGroup) {
    BoardHitsTab hits;
    BoardHitsTab reference;
    handPools(hits);
    handPools(reference);

    whenDialog<SchemaListDialog>([](SchemaListDialog& list) {
        list.schemaList()->setCurrentItem(list.itemNamed(QStringLiteral("Standard")));
        list.copyButton()->click();
        ASSERT_EQ(list.currentName(), QStringLiteral("Standard - Copy"));
        whenDialog<SchemaEditingDialog>([](SchemaEditingDialog& editor) {
            EXPECT_FALSE(editor.isReadOnly());
            selectEntry(editor, QStringLiteral("Combodraws"));
            ModalDialogs::answerMessage(nullptr, QMessageBox::Yes);
            editor.deleteButton()->click();
            editor.buttonBox()->button(QDialogButtonBox::Ok)->click();
        });
        list.editButton()->click();
        list.buttonBox()->button(QDialogButtonBox::Ok)->click();
    });
    openSchemaDialogs(hits);
    chooseSchema(hits, "Standard - Copy");
    hits.updateEvaluation(opener, threeBet, flop, "", true);
    reference.updateEvaluation(opener, threeBet, flop, "", true);
    expandAll(hits);
    expandAll(reference);

    const std::vector<HandGroup>& copy = hits.schema()->getGroups();
    const std::vector<HandGroup>& standard = reference.schema()->getGroups();
    ASSERT_EQ(standard.size(), 4u);
    ASSERT_EQ(copy.size(), 3u);
    for (std::size_t g = 0; g < 3; ++g) {
        EXPECT_EQ(copy[g].name, standard[g].name);
        ASSERT_EQ(copy[g].rows.size(), standard[g].rows.size()) << standard[g].name;
        for (std::size_t r = 0; r < copy[g].rows.size(); ++r) {
            EXPECT_EQ(copy[g].rows[r].key, standard[g].rows[r].key);
            EXPECT_EQ(copy[g].rows[r].parent, standard[g].rows[r].parent);
            EXPECT_EQ(copy[g].rows[r].combinations1, standard[g].rows[r].combinations1);
        }
    }
    // The table shows the rows of "Standard" but those of "Combodraws".
    auto expected = shownRows(reference);
    const std::size_t before = expected.size();
    expected.erase(std::remove_if(expected.begin(), expected.end(),
                                  [](const auto& row) { return row.first == 3; }),
                   expected.end());
    EXPECT_LT(expected.size(), before);
    EXPECT_EQ(shownRows(hits), expected);
}

TEST_F(SchemaDialogsOnTheBoardTabs, EveryBoardTabCatchesUpWithAChangedSchema) {
    HandGroupSchemaData mine;
    mine.name = "Mine";
    mine.groups.resize(1);
    mine.groups[0].name = "Made";
    mine.groups[0].rows.resize(1);
    mine.groups[0].rows[0].key = HandStrengthKey(0x80, 0);
    schemas.add(mine);
    schemas.setDefaultName("Mine");

    BoardHitsTab first;
    TwoPlayerBoardHitsTab second;
    BoardHitsTab third;
    for (BoardEvaluationTab* tab :
         std::initializer_list<BoardEvaluationTab*>{&first, &second, &third})
        handPools(*tab);
    third.hide();
    for (BoardEvaluationTab* tab :
         std::initializer_list<BoardEvaluationTab*>{&first, &second, &third}) {
        chooseSchema(*tab, "Mine");
        tab->updateEvaluation(opener, threeBet, flop, "", true);
    }

    // A cancelled editor changes nothing: the tab keeps its schema with its open rows.
    const HandGroupSchema* kept = first.schema();
    whenDialog<SchemaListDialog>([](SchemaListDialog& list) { list.reject(); });
    openSchemaDialogs(first);
    EXPECT_EQ(first.schema(), kept);
    EXPECT_EQ(first.schemaSelection()->currentText(), QStringLiteral("Mine"));

    // "Mine" gets a second row.
    whenDialog<SchemaListDialog>([](SchemaListDialog& list) {
        list.schemaList()->setCurrentItem(list.itemNamed(QStringLiteral("Mine")));
        whenDialog<SchemaEditingDialog>([](SchemaEditingDialog& editor) {
            selectEntry(editor, QStringLiteral("Made"));
            addHandStrength(editor, {"Twopair"});
            editor.buttonBox()->button(QDialogButtonBox::Ok)->click();
        });
        list.editButton()->click();
        list.buttonBox()->button(QDialogButtonBox::Ok)->click();
    });
    openSchemaDialogs(first);
    ASSERT_EQ(first.schema()->getGroups()[0].rows.size(), 2u);
    EXPECT_EQ(first.schema()->getGroups()[0].rows[1].key, HandStrengthKey(0x40, 0));
    EXPECT_GT(first.schema()->getGroups()[0].rows[1].combinations1, 0u);

    // The second tab, handed the pools again on its switch, shows the changed schema, counted.
    EXPECT_EQ(second.schema()->getGroups()[0].rows.size(), 1u);
    handPools(second);
    ASSERT_EQ(second.schema()->getGroups()[0].rows.size(), 2u);
    EXPECT_EQ(second.schema()->getGroups()[0].rows[1].combinations1,
              first.schema()->getGroups()[0].rows[1].combinations1);
    EXPECT_GT(second.schema()->getGroups()[0].rows[0].combinations2, 0u);

    // The third catches up as soon as it is shown.
    EXPECT_EQ(third.schema()->getGroups()[0].rows.size(), 1u);
    third.show();
    ASSERT_EQ(third.schema()->getGroups()[0].rows.size(), 2u);
    EXPECT_EQ(third.schema()->getGroups()[0].rows[1].combinations1,
              first.schema()->getGroups()[0].rows[1].combinations1);

    // A schema that is removed gives way to the default.
    whenDialog<SchemaListDialog>([](SchemaListDialog& list) {
        list.schemaList()->setCurrentItem(list.itemNamed(QStringLiteral("Mine")));
        ModalDialogs::answerMessage(nullptr, QMessageBox::Yes);
        list.removeButton()->click();
        list.buttonBox()->button(QDialogButtonBox::Ok)->click();
    });
    openSchemaDialogs(first);
    EXPECT_EQ(first.schema()->getName(), "Standard");
    handPools(second);
    EXPECT_EQ(second.schema()->getName(), "Standard");
    EXPECT_EQ(second.schemaSelection()->count(), 2); // Standard, Edit Schemas...
}

TEST_F(SchemaDialogsOnTheBoardTabs, ATickSchemaIsMadeFromTheTicksOfTheTab) {
    BoardHitsTab hits;
    TwoPlayerBoardHitsTab both;
    handPools(hits);
    handPools(both);
    hits.updateEvaluation(opener, threeBet, flop, "", true);

    HandGroupTickSchemaSelection* box = hits.customSumSelection();
    box->setCurrentIndex(box->findText(QStringLiteral("Made Hands")));
    const std::vector<HandStrengthKey> made = ticks.find("Made Hands")->handStrengths;
    EXPECT_EQ(hits.schema()->customSumHandStrengths(), made);

    std::vector<HandStrengthKey> offered;
    whenDialog<TickSchemaListDialog>([&offered](TickSchemaListDialog& list) {
        ModalDialogs::answerInput(QStringLiteral("My made hands"));
        list.createButton()->click();
        offered = list.workingPool().find("My made hands")->handStrengths;
        list.buttonBox()->button(QDialogButtonBox::Ok)->click();
    });
    box->setCurrentIndex(box->findText(QStringLiteral("Edit Schemas...")));
    EXPECT_EQ(offered, made);
    // The new tick schema is the one in use.
    EXPECT_EQ(box->currentText(), QStringLiteral("My made hands"));
    EXPECT_EQ(hits.schema()->customSumHandStrengths(), made);
    HandGroupTickSchemaPool stored;
    stored.load();
    ASSERT_NE(stored.find("My made hands"), nullptr);

    // The other tab lists it once it is handed the pools again.
    EXPECT_LT(both.customSumSelection()->findText(QStringLiteral("My made hands")), 0);
    handPools(both);
    EXPECT_GE(both.customSumSelection()->findText(QStringLiteral("My made hands")), 0);
}
