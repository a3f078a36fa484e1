// Pictures of the schema dialogs with real content, on a real X server, with the program's
// style sheet: test-output/schemadialogs_*.png.

#include "handstrength/HandGroupRowRequest.h"
#include "handstrength/HandGroupSchemaPool.h"
#include "handstrength/HandGroupStandardSchema.h"
#include "handstrength/HandGroupTickSchemaPool.h"
#include "handstrength/ui/HandStrengthSelectionDialog.h"
#include "handstrength/ui/SchemaEditingDialog.h"
#include "handstrength/ui/SchemaListDialog.h"
#include "handstrength/ui/TickSchemaListDialog.h"
#include "support/TestEnvironment.h"

#include <QApplication>
#include <QFile>
#include <QListWidget>
#include <QPixmap>
#include <QTreeWidget>
#include <gtest/gtest.h>

namespace {

void applyProgramStyle() {
    QFile style(QStringLiteral(":/style.qss"));
    if (style.open(QIODevice::ReadOnly))
        qApp->setStyleSheet(QString::fromUtf8(style.readAll()));
}

void settle() {
    for (int i = 0; i < 20; ++i)
        QApplication::processEvents();
}

void save(QWidget& widget, const char* name) {
    widget.show();
    settle();
    const QString path = QString::fromStdString(TestEnvironment::outputFolder()) +
                         QStringLiteral("/") + QLatin1String(name);
    const QPixmap picture = widget.grab();
    EXPECT_FALSE(picture.isNull());
    EXPECT_TRUE(picture.save(path, "PNG")) << path.toStdString();
}

HandGroupSchemaPool samplePool() {
    HandGroupSchemaPool pool;
    HandGroupSchemaData copy = HandGroupStandardSchema::data();
    copy.name = "Standard - Copy";
    pool.add(copy);
    HandGroupSchemaData mine;
    mine.name = "Pairs and draws";
    mine.groups.resize(2);
    mine.groups[0].name = "Pairs";
    mine.groups[0].addRow(HandGroupRowRequest(HandStrengthKey(0x80, 0), {}));
    mine.groups[0].addRow(HandGroupRowRequest(HandStrengthKey(0x280, 0), HandStrengthKey(0x80, 0)));
    mine.groups[1].name = "Draws";
    mine.groups[1].addRow(
        HandGroupRowRequest(HandStrengthKey(0x4000000, 0x80, "Flush draw, no pair"), {}));
    pool.add(mine);
    pool.setDefaultName("Pairs and draws");
    return pool;
}

QTreeWidgetItem* findEntry(QTreeWidget* tree, const char* text) {
    const QList<QTreeWidgetItem*> found =
        tree->findItems(QString::fromLatin1(text), Qt::MatchExactly | Qt::MatchRecursive);
    return found.isEmpty() ? nullptr : found.first();
}

} // namespace

TEST(SchemaDialogsScreenshot, TheSchemaList) {
    applyProgramStyle();
    HandGroupSchemaPool pool = samplePool();
    SchemaListDialog dialog(nullptr, &pool);
    dialog.schemaList()->setCurrentItem(dialog.itemNamed(QStringLiteral("Standard - Copy")));
    save(dialog, "schemadialogs_list.png");
    dialog.schemaList()->setCurrentItem(dialog.itemNamed(QStringLiteral("Standard")));
    save(dialog, "schemadialogs_list_standard.png");
}

TEST(SchemaDialogsScreenshot, TheEditorWithAnOpenTree) {
    applyProgramStyle();
    HandGroupSchemaPool pool = samplePool();
    SchemaEditingDialog dialog(nullptr, pool, "Standard - Copy", false);
    for (const char* open : {"Flush", "Pair", "Top Pair"}) {
        QTreeWidgetItem* item = findEntry(dialog.tree(), open);
        ASSERT_NE(item, nullptr) << open;
        item->setExpanded(true);
    }
    dialog.tree()->setCurrentItem(findEntry(dialog.tree(), "Top Pair"));
    save(dialog, "schemadialogs_editor.png");
}

TEST(SchemaDialogsScreenshot, StandardViewedReadOnly) {
    applyProgramStyle();
    HandGroupSchemaPool pool = samplePool();
    SchemaEditingDialog dialog(nullptr, pool, "Standard", true);
    QTreeWidgetItem* draws = dialog.tree()->topLevelItem(2);
    for (int i = 0; i < draws->childCount(); ++i)
        draws->child(i)->setExpanded(true);
    dialog.tree()->setCurrentItem(findEntry(dialog.tree(), "To Nutflush"));
    save(dialog, "schemadialogs_editor_readonly.png");
}

TEST(SchemaDialogsScreenshot, TheHandStrengthDialogUnderAParent) {
    applyProgramStyle();
    HandStrengthKey key(0x40280, 0x4000000);
    const HandStrengthKey parent(0x280, 0);
    HandStrengthSelectionDialog dialog(nullptr, &key, &parent, false);
    dialog.possibleList()->setCurrentRow(1);
    save(dialog, "schemadialogs_handstrength.png");
}

TEST(SchemaDialogsScreenshot, TheTickSchemaList) {
    applyProgramStyle();
    HandGroupTickSchemaPool pool;
    pool.add({"Strong pairs", {HandStrengthKey(0x280, 0), HandStrengthKey(0x8080, 0)}});
    TickSchemaListDialog dialog(nullptr, &pool, {HandStrengthKey(0x40, 0)});
    dialog.schemaList()->setCurrentRow(3);
    save(dialog, "schemadialogs_ticks.png");
}
