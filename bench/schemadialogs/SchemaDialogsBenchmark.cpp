// What opening the schema dialogs costs on the main thread, with the program's style sheet
// applied: building the dialog, laying it out and painting it once (as it first shows), and
// closing it. "Standard" has 127 hand strengths in four groups; the editor with its copy also
// rebuilds the schema from the tree on OK.

#include "handstrength/HandGroupSchemaPool.h"
#include "handstrength/HandGroupStandardSchema.h"
#include "handstrength/ui/HandStrengthSelectionDialog.h"
#include "handstrength/ui/SchemaEditingDialog.h"
#include "handstrength/ui/SchemaListDialog.h"

#include <QApplication>
#include <QFile>
#include <QPixmap>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <benchmark/benchmark.h>

#include <string>

namespace {

HandGroupSchemaPool poolWithCopies(int copies) {
    HandGroupSchemaPool pool;
    for (int i = 0; i < copies; ++i) {
        HandGroupSchemaData copy = HandGroupStandardSchema::data();
        copy.name = "Standard - Copy " + std::to_string(i + 1);
        pool.add(copy);
    }
    return pool;
}

// Shown and painted once, as the first frame of an exec().
template <typename Dialog>
void showOnce(Dialog& dialog) {
    dialog.show();
    QPixmap picture = dialog.grab();
    benchmark::DoNotOptimize(picture);
    dialog.hide();
}

void BM_SchemaListDialogOpen(benchmark::State& state) {
    HandGroupSchemaPool pool = poolWithCopies(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        SchemaListDialog dialog(nullptr, &pool);
        showOnce(dialog);
    }
    state.counters["schemas"] = static_cast<double>(pool.schemas().size());
}

void BM_SchemaEditingDialogOpenStandard(benchmark::State& state) {
    const HandGroupSchemaPool pool;
    int entries = 0;
    for (auto _ : state) {
        SchemaEditingDialog dialog(nullptr, pool, "Standard", true);
        showOnce(dialog);
        state.PauseTiming();
        entries = 0;
        for (QTreeWidgetItemIterator it(dialog.tree()); *it; ++it)
            entries += (*it)->parent() != nullptr ? 1 : 0;
        state.ResumeTiming();
    }
    state.counters["entries"] = entries;
}

// The player's way to "Standard": the list first, then "View Schema" on it.
void BM_SchemaListThenEditorStandard(benchmark::State& state) {
    HandGroupSchemaPool pool = poolWithCopies(1);
    for (auto _ : state) {
        SchemaListDialog list(nullptr, &pool);
        showOnce(list);
        SchemaEditingDialog editor(&list, list.workingPool(), "Standard", true);
        showOnce(editor);
    }
}

void BM_SchemaEditingDialogOpenAllExpanded(benchmark::State& state) {
    const HandGroupSchemaPool pool;
    for (auto _ : state) {
        SchemaEditingDialog dialog(nullptr, pool, "Standard", true);
        dialog.tree()->expandAll();
        showOnce(dialog);
    }
}

void BM_SchemaEditingDialogOpenAndAcceptCopy(benchmark::State& state) {
    const HandGroupSchemaPool pool = poolWithCopies(1);
    for (auto _ : state) {
        SchemaEditingDialog dialog(nullptr, pool, "Standard - Copy 1", false);
        showOnce(dialog);
        dialog.accept();
        benchmark::DoNotOptimize(dialog.schemaData().groups.size());
    }
}

void BM_HandStrengthSelectionDialogOpen(benchmark::State& state) {
    const HandStrengthKey parent(0x280, 0);
    for (auto _ : state) {
        HandStrengthKey key(0x40280, 0);
        HandStrengthSelectionDialog dialog(nullptr, &key, &parent, false);
        showOnce(dialog);
    }
}

BENCHMARK(BM_SchemaListDialogOpen)->Arg(0)->Arg(20)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SchemaEditingDialogOpenStandard)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SchemaListThenEditorStandard)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SchemaEditingDialogOpenAllExpanded)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SchemaEditingDialogOpenAndAcceptCopy)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_HandStrengthSelectionDialogOpen)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QTemporaryDir settingsFolder;
    qputenv("XDG_CONFIG_HOME", settingsFolder.path().toUtf8());
    QApplication application(argc, argv);
    QFile style(QStringLiteral(":/style.qss"));
    if (style.open(QIODevice::ReadOnly))
        application.setStyleSheet(QString::fromUtf8(style.readAll()));
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
