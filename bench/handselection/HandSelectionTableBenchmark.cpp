#include "Range/GroupColor.h"
#include "Range/HandRangeElementConversion.h"
#include "Range/HandRangeStringManipulator.h"
#include "Range/Tree.h"
#include "Range/TreeRangeNode.h"
#include "selection/HandSelectionTable.h"
#include "selection/SuitHover.h"

#include <QApplication>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <benchmark/benchmark.h>

#include <memory>

namespace {

// A player's range with three overlapping-class groups, the middle one shown in group mode,
// on a flop: many cells in group colours, several in stripes, all numbers drawn.
struct GroupScene {
    Range::Tree tree;
    HandSelectionTable table;
    unsigned int shown = 0;

    GroupScene() {
        tree.addRange(Range::Tree::noNode, "Parent", false, Range::GroupColor());
        Range::HandRangeStringManipulator(tree.handRange(0))
            .setFree("22+,A2s+,K2s+,Q5s+,J7s+,T7s+,97s+,86s+,75s+,65s,54s,A2o+,K8o+,Q9o+,J9o+,T9o");
        const unsigned int value =
            tree.addExclusiveRange(0, "Value", Range::TreeRangeNode::Overwrite, true,
                                   Range::GroupColor())
                ->index;
        shown = tree.addExclusiveRange(0, "Draws", Range::TreeRangeNode::Overwrite, true,
                                       Range::GroupColor())
                    ->index;
        const unsigned int bluff =
            tree.addExclusiveRange(0, "Bluff", Range::TreeRangeNode::Overwrite, true,
                                   Range::GroupColor())
                ->index;
        Range::HandRangeStringManipulator(tree.handRange(value)).setFree("TT+,AJs+,AQo+,KQs");
        Range::HandRangeStringManipulator(tree.handRange(shown))
            .setFree("A2s-A5s,KTs+,QTs+,JTs,T9s,98s,87s,AhKh,AdKd,AsAc,AhQd,AdQh");
        Range::HandRangeStringManipulator(tree.handRange(bluff))
            .setFree("22-66,A6s-A9s,AdJh,AhJd,K2s-K7s,KsQs");
        table.setDeadCards(Range::cardsOfText("Kh9h4c"));
        table.setGroups(&tree, shown);
        table.setGroupMode(true);
        table.setRange(&tree.handRange(shown));
    }
};

void BM_FullRepaintWithGroups(benchmark::State& state) {
    GroupScene scene;
    QImage image(scene.table.size(), QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        scene.table.repaint();
        scene.table.render(&image);
        benchmark::DoNotOptimize(image.bits());
    }
}
BENCHMARK(BM_FullRepaintWithGroups)->Unit(benchmark::kMicrosecond);

void BM_FullRepaintPlainRange(benchmark::State& state) {
    Range::HandRange range;
    Range::HandRangeStringManipulator(range).setFree("22+,A2s+,K9s+,QTs+,JTs,ATo+,KJo+");
    HandSelectionTable table;
    table.setRange(&range);
    QImage image(table.size(), QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        table.repaint();
        table.render(&image);
        benchmark::DoNotOptimize(image.bits());
    }
}
BENCHMARK(BM_FullRepaintPlainRange)->Unit(benchmark::kMicrosecond);

// The hover over a cell held by two groups: fill the 16 suit cells, place and show the tip,
// mark the cell, and render the tip; then the move that hides it again.
void BM_HoverOverStripedCell(benchmark::State& state) {
    GroupScene scene;
    scene.table.show();
    const QPoint cell = HandSelectionTable::cellRect(1, 0).center(); // AKs
    QImage image(300, 220, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        QMouseEvent moveEvent(QEvent::MouseMove, cell, scene.table.mapToGlobal(cell), Qt::NoButton,
                              Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(&scene.table, &moveEvent);
        scene.table.onHoverTimeout();
        scene.table.suitHover()->render(&image);
        benchmark::DoNotOptimize(image.bits());
    }
    scene.table.hoverTimer()->stop();
}
BENCHMARK(BM_HoverOverStripedCell)->Unit(benchmark::kMicrosecond);

// One stroke on one cell in group mode: the group takes the cell from its sibling, the cell
// is repainted.
void BM_StrokeOneCellInGroupMode(benchmark::State& state) {
    GroupScene scene;
    const QPoint cell = HandSelectionTable::cellRect(1, 0).center();
    bool left = true;
    for (auto _ : state) {
        const Qt::MouseButton button = left ? Qt::LeftButton : Qt::RightButton;
        QMouseEvent press(QEvent::MouseButtonPress, cell, scene.table.mapToGlobal(cell), button,
                          button, Qt::NoModifier);
        QApplication::sendEvent(&scene.table, &press);
        QMouseEvent release(QEvent::MouseButtonRelease, cell, scene.table.mapToGlobal(cell), button,
                            Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(&scene.table, &release);
        left = !left;
    }
}
BENCHMARK(BM_StrokeOneCellInGroupMode)->Unit(benchmark::kMicrosecond);

QtMessageHandler standardHandler = nullptr;

// The offscreen platform says it cannot raise or size windows on every show of the hover;
// nothing else is dropped.
void quietRaise(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (message.startsWith(QStringLiteral("This plugin does not support")))
        return;
    if (standardHandler)
        standardHandler(type, context, message);
}

} // namespace

int main(int argc, char** argv) {
    // Headless unless told otherwise; the widgets paint the same way.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    standardHandler = qInstallMessageHandler(quietRaise);
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
