// Saved ranges dragged in the real dialog on a real X server: the drop events a drag hands
// to the tree's viewport and to the hand table, with one undo step per drop; and the whole
// mouse gesture through the window system's drag loop, skipped while the test cannot drive it.

#include "SavedRangeTestHelpers.h"

#include "Range/GroupColor.h"
#include "selection/HandSelectionDialog.h"
#include "selection/HandSelectionTree.h"
#include "selection/HandSelectionTreeModel.h"
#include "selection/SavedRangeTree.h"
#include "support/TestEnvironment.h"

#include "ui_HandSelectionDialog.h"

#include <QApplication>
#include <QDir>
#include <QDropEvent>
#include <QMimeData>
#include <QSettings>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <gtest/gtest.h>

#include <memory>

using namespace SavedRangeTest;

namespace {

// Presses on `from`, moves the mouse over the view to `to` while the drag runs, and lets go,
// all as events of the window system, so that the application knows the button is down. The
// view takes the first move after the press as the start of a drag and starts it on the next
// one that goes far enough; the drag then runs its own loop until the button is released, so
// the rest of the gesture comes from a timer inside that loop. Returns when the drag is over.
void dragWithTheMouse(QWidget* viewport, const QPoint& from, const QPoint& to) {
    QWidget* top = viewport->window();
    QWindow* window = top->windowHandle();
    ASSERT_NE(window, nullptr);
    const auto inWindow = [viewport, top](const QPoint& point) {
        return viewport->mapTo(top, point);
    };
    QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, inWindow(from));
    QTest::mouseMove(window, inWindow(from + QPoint(0, 1)));
    bool released = false;
    QTimer::singleShot(200, viewport, [window, inWindow, from, to, &released] {
        const int steps = 8;
        for (int i = 1; i <= steps; ++i) {
            QTest::mouseMove(window, inWindow(from + (to - from) * i / steps));
            QTest::qWait(30);
        }
        released = true;
        QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, inWindow(to));
    });
    QTest::mouseMove(window, inWindow(from + QPoint(0, QApplication::startDragDistance() + 4)));
    // Had no drag started, the timer still has to run.
    ASSERT_TRUE(QTest::qWaitFor([&released] { return released; }, 5000));
}

QString outputPath(const char* name) {
    return QDir(QString::fromStdString(TestEnvironment::outputFolder())).filePath(name);
}

// The dialog on the screen with the default tree, every folder open.
struct DragFixture : ::testing::Test {
    Range::Tree player;
    std::unique_ptr<HandSelectionDialog> owned;
    Ui::HandSelectionDialog* ui = nullptr;
    HandSelectionTree* view = nullptr;

    DragFixture() {
        player.addRange(Range::Tree::noNode, "Parent", false, Range::GroupColor());
        owned = std::make_unique<HandSelectionDialog>(player, "", "");
        ui = owned->form();
        view = ui->rangeTree;
    }
    void SetUp() override {
        owned->resize(1180, 860);
        owned->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(owned.get()));
        view->expandAll();
        QTest::qWait(50);
    }
    HandSelectionDialog& dialog() { return *owned; }
    HandSelectionTreeModel& model() { return owned->savedRanges().model(); }
};

} // namespace

TEST_F(DragFixture, ARangeDraggedIntoAnotherFolderMovesAndOneUndoPutsItBack) {
    // The drag loop of the window system ends at once when the gesture comes from the test,
    // so the drop never happens; until the gesture can be driven, this is reported as skipped
    // rather than passed. The drop half runs through the view below.
    GTEST_SKIP() << "a mouse gesture of the test does not drive the window system's drag loop";
    HandSelectionTreeModel& model = this->model();
    const std::vector<Range::NodeMemento> before = model.memento();
    const QModelIndex patterns = model.index(0, 0);
    const QModelIndex pairs = model.index(1, 0, patterns);
    const QModelIndex custom = model.index(1, 0);
    ASSERT_EQ(pairs.data().toString(), "Pocketpairs");
    dragWithTheMouse(view->viewport(), view->visualRect(pairs).center(),
                     view->visualRect(custom).center());
    ASSERT_TRUE(QTest::qWaitFor([&] { return model.rowCount(model.index(1, 0)) == 1; }, 5000));
    QTest::qWait(50);

    EXPECT_EQ(model.rowCount(model.index(0, 0)), 10);
    EXPECT_EQ(model.index(0, 0, model.index(1, 0)).data().toString(), "Pocketpairs");
    EXPECT_EQ(model.index(1, 0, model.index(0, 0)).data().toString(), "Suited Connectors");
    EXPECT_EQ(model.tree().count(), before.size());
    // The drop and the removal of the source are one step.
    EXPECT_EQ(dialog().treeUndoCount(), 2u);
    ASSERT_TRUE(dialog().grab().save(outputPath("savedrangetree-after-drag.png")));

    ui->treeUndoButton->click();
    EXPECT_EQ(model.memento(), before);
    EXPECT_EQ(model.index(1, 0, model.index(0, 0)).data().toString(), "Pocketpairs");
    EXPECT_EQ(model.rowCount(model.index(1, 0)), 0);
    ui->treeRedoButton->click();
    EXPECT_EQ(model.index(0, 0, model.index(1, 0)).data().toString(), "Pocketpairs");
}

TEST_F(DragFixture, ASavedRangeDraggedOntoTheHandTableIsLoadedAndStaysInTheTree) {
    // The drag loop of the window system ends at once when the gesture comes from the test,
    // so the drop never happens; until the gesture can be driven, this is reported as skipped
    // rather than passed. The drop half runs through the view below.
    GTEST_SKIP() << "a mouse gesture of the test does not drive the window system's drag loop";
    HandSelectionTreeModel& model = this->model();
    const std::vector<Range::NodeMemento> before = model.memento();
    const QModelIndex pairs = model.index(1, 0, model.index(0, 0));
    view->setCurrentIndex(pairs);

    // From the tree's viewport to the middle of the table, in the viewport's coordinates.
    const QPoint tableCentre = ui->handSelectionTable->rect().center();
    const QPoint target =
        view->viewport()->mapFromGlobal(ui->handSelectionTable->mapToGlobal(tableCentre));
    dragWithTheMouse(view->viewport(), view->visualRect(pairs).center(), target);
    ASSERT_TRUE(QTest::qWaitFor([&] { return dialog().currentRangeText() == "22+"; }, 5000));
    QTest::qWait(50);
    EXPECT_EQ(model.memento(), before);
    EXPECT_EQ(dialog().treeUndoCount(), 1u);
}

// The drop half of a drag, as the window system hands it to the widgets: enter, move and drop
// events carrying what the model offers for a saved range, sent to the tree's viewport over
// another folder and to the hand table.
namespace {

bool dropOn(QWidget* widget, const QPoint& at, const QMimeData& data, Qt::DropAction action) {
    QDragEnterEvent enter(at, action, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &enter);
    QDragMoveEvent move(at, action, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &move);
    if (!move.isAccepted())
        return false;
    QDropEvent drop(at, action, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &drop);
    return drop.isAccepted();
}

} // namespace

TEST_F(DragFixture, ARangeDroppedOnAnotherFolderOfTheViewLandsThereAsOneUndoStep) {
    HandSelectionTreeModel& model = this->model();
    const std::vector<Range::NodeMemento> before = model.memento();
    const QModelIndex pairs = model.index(1, 0, model.index(0, 0));
    const QModelIndex custom = model.index(1, 0);
    ASSERT_EQ(pairs.data().toString(), "Pocketpairs");
    const std::unique_ptr<QMimeData> data(model.mimeData({pairs}));
    ASSERT_TRUE(data->hasFormat(HandSelectionTreeModel::rangeType));

    ASSERT_TRUE(dropOn(view->viewport(), view->visualRect(custom).center(), *data, Qt::CopyAction));
    ASSERT_EQ(model.rowCount(model.index(1, 0)), 1);
    EXPECT_EQ(model.index(0, 0, model.index(1, 0)).data().toString(), "Pocketpairs");
    EXPECT_EQ(model.rowCount(model.index(0, 0)), 11);
    EXPECT_EQ(dialog().treeUndoCount(), 2u);

    ui->treeUndoButton->click();
    EXPECT_EQ(model.memento(), before);
    EXPECT_EQ(model.rowCount(model.index(1, 0)), 0);

    // A folder dropped over a saved range (which takes no drops) goes to the end of the top
    // level, never into a folder.
    const std::unique_ptr<QMimeData> folder(model.mimeData({model.index(0, 0)}));
    ASSERT_TRUE(folder->hasFormat(HandSelectionTreeModel::categoryType));
    const QModelIndex broadways = model.index(0, 0, model.index(0, 0));
    ASSERT_TRUE(
        dropOn(view->viewport(), view->visualRect(broadways).center(), *folder, Qt::CopyAction));
    ASSERT_EQ(model.rowCount(), 3);
    EXPECT_EQ(model.rowCount(model.index(0, 0)), 11);
    EXPECT_EQ(model.index(1, 0).data().toString().toStdString(), "Custom Ranges");
    EXPECT_EQ(model.index(2, 0).data().toString().toStdString(), "Predefined Patterns");
    EXPECT_EQ(model.rowCount(model.index(2, 0)), 11);
}

TEST_F(DragFixture, ARangeDroppedOnTheHandTableIsLoadedAndStaysInTheTree) {
    HandSelectionTreeModel& model = this->model();
    const std::vector<Range::NodeMemento> before = model.memento();
    const QModelIndex pairs = model.index(1, 0, model.index(0, 0));
    view->setCurrentIndex(pairs);
    const std::unique_ptr<QMimeData> data(model.mimeData({pairs}));
    ASSERT_TRUE(dropOn(ui->handSelectionTable, ui->handSelectionTable->rect().center(), *data,
                       Qt::CopyAction));
    EXPECT_EQ(dialog().currentRangeText(), "22+");
    EXPECT_EQ(model.memento(), before);
    EXPECT_EQ(dialog().treeUndoCount(), 1u);
}
