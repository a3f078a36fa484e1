// The tree of saved ranges inside the hand selection dialog: where it is stored and how old
// data is taken over, its buttons and their questions, its undo list, and how a saved range
// comes into the dialog.

#include "HandSelectionTestHelpers.h"
#include "SavedRangeTestHelpers.h"

#include "Range/GroupColor.h"
#include "Range/HandRangeElementConversion.h"
#include "selection/HandSelectionDialog.h"
#include "selection/HandSelectionTable.h"
#include "selection/HandSelectionTree.h"
#include "selection/HandSelectionTreeModel.h"
#include "selection/RangeGroupBox.h"
#include "selection/SavedRangeTree.h"
#include "selection/SavedRangeTreeSettings.h"

#include "ui_HandSelectionDialog.h"

#include <QDropEvent>
#include <QFile>
#include <QMimeData>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

#include <memory>

using HandSelectionTest::stroke;
using namespace SavedRangeTest;

namespace {

constexpr unsigned int noNode = Range::Tree::noNode;

QByteArray dataBytes(const char* name) {
    QFile file(QString::fromLatin1(QUORVANE_SELECTION_DATA) + "/" + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    return file.readAll();
}

QSettings* fileStore() {
    auto* settings =
        new QSettings(QSettings::IniFormat, QSettings::UserScope, "Velmara", "Quorvane");
    settings->beginGroup("HandSelection");
    return settings;
}

QSettings* nativeStore() {
    auto* settings = new QSettings("Velmara", "Quorvane");
    settings->beginGroup("HandSelection");
    return settings;
}

struct TreeFixture : ::testing::Test {
    Range::Tree player;
    TreePrompts fake;
    std::unique_ptr<HandSelectionDialog> dialog;
    Ui::HandSelectionDialog* ui = nullptr;

    TreeFixture() {
        // One process may run many tests: every test starts without stored trees.
        std::unique_ptr<QSettings>(fileStore())->remove("");
        std::unique_ptr<QSettings>(nativeStore())->remove("");
        player.addRange(noNode, "Parent", false, Range::GroupColor());
    }

    void open() {
        dialog.reset();
        dialog = std::make_unique<HandSelectionDialog>(player, "", "");
        dialog->setPrompts(fake.prompts());
        ui = dialog->form();
    }
    HandSelectionTreeModel& model() { return dialog->savedRanges().model(); }
    HandSelectionTree* view() { return ui->rangeTree; }
    QModelIndex top(int row) { return model().index(row, 0); }
    std::vector<std::string> rowNames(const QModelIndex& parent = {}) {
        std::vector<std::string> names;
        for (int row = 0; row < model().rowCount(parent); ++row)
            names.push_back(model().index(row, 0, parent).data().toString().toStdString());
        return names;
    }
    void select(const QModelIndex& index) { view()->setCurrentIndex(index); }
    // The player's range with a group "Value", the group shown.
    unsigned int playerWithGroup() {
        ui->rangeText->setText("TT+,AKs");
        ui->rangeText->validateRange();
        fake.names.push_back({true, "Value"});
        QTest::mouseClick(dialog->groupBoxes().back(), Qt::LeftButton, Qt::NoModifier,
                          QPoint(5, 5));
        ui->rangeText->setText("AA");
        ui->rangeText->validateRange();
        return dialog->currentGroup();
    }
};

} // namespace

// --- Settings and migration ----------------------------------------------------------------------

TEST_F(TreeFixture, NoStoredTreeShowsTheDefaultFolders) {
    open();
    EXPECT_EQ(rowNames(), (std::vector<std::string>{"Predefined Patterns", "Custom Ranges"}));
    EXPECT_EQ(model().rowCount(top(1)), 0);
    EXPECT_TRUE(dialog->savedRanges().loadProblem().isEmpty());
    EXPECT_EQ(dialog->treeUndoCount(), 1u);
}

TEST_F(TreeFixture, AnOldTreeInTheNativeStoreIsShownAndTheFirstClosingWritesTheNewKey) {
    std::unique_ptr<QSettings>(nativeStore())
        ->setValue("HandSelectionTreeWithGroups", dataBytes("saved-ranges-old.bin"));
    open();
    EXPECT_EQ(rowNames(), (std::vector<std::string>{"Preflop", "Flop été <&\">"}));
    EXPECT_TRUE(view()->isExpanded(top(0)));
    EXPECT_FALSE(view()->isExpanded(top(1)));
    EXPECT_FALSE(std::unique_ptr<QSettings>(fileStore())->contains("HandSelectionTreeNew"));
    const std::vector<Range::NodeMemento> shown = model().memento();
    dialog->reject();

    const std::unique_ptr<QSettings> file(fileStore());
    ASSERT_TRUE(file->contains("HandSelectionTreeNew"));
    EXPECT_TRUE(file->fileName().endsWith("/Velmara/Quorvane.ini"))
        << file->fileName().toStdString();
    std::vector<Range::NodeMemento> stored;
    std::vector<unsigned int> openNodes;
    ASSERT_TRUE(SavedRangeTreeSettings::decode(file->value("HandSelectionTreeNew").toByteArray(),
                                               stored, openNodes));
    EXPECT_EQ(stored, shown);
    // The old data stays where it was, and the XML of the tree is written beside it.
    const std::unique_ptr<QSettings> native(nativeStore());
    EXPECT_TRUE(native->contains("HandSelectionTreeWithGroups"));
    EXPECT_TRUE(native->fileName().endsWith("/Velmara/Quorvane.conf"));
    EXPECT_EQ(native->value("HandSelectionTreeWithGroupsNewXML").toString().toStdString(),
              model().writeNewXml());
    EXPECT_TRUE(native->contains("treeOpenness"));

    // The next opening reads the file store, with the folder still open.
    open();
    EXPECT_EQ(model().memento(), shown);
    EXPECT_TRUE(view()->isExpanded(top(0)));
}

TEST_F(TreeFixture, TheFileStoreComesBeforeTheNativeStoreWhichComesBeforeTheOldTree) {
    HandSelectionTreeModel one, two;
    one.setDefaultContent();
    one.removeNode(one.index(0, 0));
    two.setDefaultContent();
    two.addCategory("Native");
    std::unique_ptr<QSettings>(nativeStore())
        ->setValue("HandSelectionTreeWithGroups", dataBytes("saved-ranges-old.bin"));
    std::unique_ptr<QSettings>(nativeStore())
        ->setValue("HandSelectionTreeNew", SavedRangeTreeSettings::encode(two.memento(), {}));
    open();
    EXPECT_EQ(rowNames(),
              (std::vector<std::string>{"Predefined Patterns", "Custom Ranges", "Native"}));
    std::unique_ptr<QSettings>(fileStore())
        ->setValue("HandSelectionTreeNew", SavedRangeTreeSettings::encode(one.memento(), {}));
    open();
    EXPECT_EQ(rowNames(), std::vector<std::string>{"Custom Ranges"});
}

TEST_F(TreeFixture, ADamagedStoredTreeFallsBackToTheDefaultWithAMessageOnce) {
    HandSelectionTreeModel stored;
    stored.setDefaultContent();
    QByteArray bytes = SavedRangeTreeSettings::encode(stored.memento(), {});
    bytes.chop(7);
    std::unique_ptr<QSettings>(fileStore())->setValue("HandSelectionTreeNew", bytes);
    open();
    EXPECT_EQ(rowNames(), (std::vector<std::string>{"Predefined Patterns", "Custom Ranges"}));
    EXPECT_TRUE(dialog->savedRanges().loadProblem().startsWith(
        "The saved range tree in " + std::unique_ptr<QSettings>(fileStore())->fileName() +
        " is damaged."));
    EXPECT_TRUE(fake.warnings.isEmpty());
    dialog->show();
    ASSERT_TRUE(QTest::qWaitFor([&] { return fake.warnings.size() == 1; }, 5000));
    EXPECT_TRUE(fake.warnings[0].startsWith("Range Tree: The saved range tree in "));
    dialog->hide();
    dialog->show();
    QTest::qWait(20);
    EXPECT_EQ(fake.warnings.size(), 1);
}

TEST_F(TreeFixture, ADamagedOldTreeFallsBackToTheDefaultToo) {
    QByteArray old = dataBytes("saved-ranges-old.bin");
    old.chop(5);
    std::unique_ptr<QSettings>(nativeStore())->setValue("HandSelectionTreeWithGroups", old);
    open();
    EXPECT_EQ(rowNames(), (std::vector<std::string>{"Predefined Patterns", "Custom Ranges"}));
    EXPECT_NE(dialog->savedRanges().loadProblem().indexOf("ends in the middle of an item"), -1);
}

TEST_F(TreeFixture, MementoStreamsRoundTripAndRefuseEveryCutAndForeignTag) {
    HandSelectionTreeModel stored;
    stored.setDefaultContent();
    const std::vector<Range::NodeMemento> nodes = stored.memento();
    const QByteArray bytes = SavedRangeTreeSettings::encode(nodes, {1, 2});
    std::vector<Range::NodeMemento> decoded;
    std::vector<unsigned int> openNodes;
    ASSERT_TRUE(SavedRangeTreeSettings::decode(bytes, decoded, openNodes));
    EXPECT_EQ(decoded, nodes);
    EXPECT_EQ(openNodes, (std::vector<unsigned int>{1, 2}));
    // Cut anywhere before the "open" records, the nodes are no tree.
    const QByteArray withoutOpen = SavedRangeTreeSettings::encode(nodes, {});
    for (int length = 0; length < withoutOpen.size(); length += 3)
        EXPECT_FALSE(SavedRangeTreeSettings::decode(withoutOpen.left(length), decoded, openNodes))
            << length;
    QByteArray foreign = bytes;
    foreign.replace(0, 10, QByteArray(10, 'x'));
    EXPECT_FALSE(SavedRangeTreeSettings::decode(foreign, decoded, openNodes));
    EXPECT_EQ(
        SavedRangeTreeSettings::decodeOpenness(SavedRangeTreeSettings::encodeOpenness({4, 9})),
        (std::vector<unsigned int>{4, 9}));
}

TEST_F(TreeFixture, ChangesToTheTreeSurviveACancel) {
    open();
    fake.names.push_back({true, "Kept"});
    ui->addFolderButton->click();
    dialog->reject();
    open();
    EXPECT_EQ(rowNames().back(), "Kept");
}

// --- Buttons -------------------------------------------------------------------------------------

TEST_F(TreeFixture, AddFolderKeepsAskingUntilANameIsGivenOrCancelled) {
    open();
    fake.names = {{true, ""}, {true, "  "}, {true, "3-Bet Pots"}};
    ui->addFolderButton->click();
    EXPECT_EQ(fake.warnings, (QStringList{"No name given: Please enter a name for the category.",
                                          "No name given: Please enter a name for the category."}));
    ASSERT_EQ(fake.questions.size(), 3u);
    EXPECT_EQ(fake.questions[0].title, "Name New Category");
    EXPECT_EQ(fake.questions[0].label, "What is the name of the new category?");
    EXPECT_EQ(rowNames().back(), "3-Bet Pots");
    EXPECT_EQ(view()->currentIndex(), top(2));
    // A cancel adds nothing.
    fake.names = {{true, ""}, {false, ""}};
    ui->addFolderButton->click();
    EXPECT_EQ(model().rowCount(), 3);
}

TEST_F(TreeFixture, TheTreeButtonsNeedACurrentNodeButAddFolderImportAndExportDoNot) {
    open();
    for (QPushButton* button :
         {ui->editTreeNameButton, ui->saveTreeRangeButton, ui->deleteTreeNodeButton,
          ui->treeMoveUpButton, ui->treeMoveDownButton})
        EXPECT_FALSE(button->isEnabled()) << button->objectName().toStdString();
    for (QPushButton* button : {ui->addFolderButton, ui->importTreeButton, ui->exportTreeButton})
        EXPECT_TRUE(button->isEnabled()) << button->objectName().toStdString();
    EXPECT_FALSE(ui->treeUndoButton->isEnabled());
    EXPECT_FALSE(ui->treeRedoButton->isEnabled());
    select(top(0));
    for (QPushButton* button :
         {ui->editTreeNameButton, ui->saveTreeRangeButton, ui->deleteTreeNodeButton,
          ui->treeMoveUpButton, ui->treeMoveDownButton})
        EXPECT_TRUE(button->isEnabled()) << button->objectName().toStdString();
}

TEST_F(TreeFixture, SaveOnAFolderMakesANewEntryWithTheRangeShownAndItsGroups) {
    open();
    playerWithGroup();
    QTest::mouseClick(dialog->groupBoxes()[0], Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    ASSERT_EQ(dialog->currentGroup(), 0u);

    select(top(1));
    fake.names = {{true, ""}, {true, "My Opening"}};
    ui->saveTreeRangeButton->click();
    EXPECT_EQ(fake.warnings, QStringList{"Enter Name: Please enter a name for the range."});
    ASSERT_EQ(fake.questions.size(), 2u);
    EXPECT_EQ(fake.questions[0].title, "Name of Range");
    EXPECT_EQ(fake.questions[0].label, "What is the name of the new range?");
    EXPECT_EQ(fake.questions[0].okText, "Create");
    EXPECT_EQ(fake.questions[0].icon, ":/quorvane-Logo-small.png");
    EXPECT_EQ(fake.overwriteQuestions, 0);
    ASSERT_EQ(rowNames(top(1)), std::vector<std::string>{"My Opening"});
    const unsigned int saved = model().nodeOf(model().index(0, 0, top(1)));
    EXPECT_EQ(textOf(model().tree(), saved), "TT+,AKs");
    EXPECT_EQ(childNames(model().tree(), saved), std::vector<std::string>{"Value"});
    EXPECT_EQ(textOf(model().tree(), model().tree().node(saved)->children[0]), "AA");
    EXPECT_EQ(view()->currentIndex(), model().index(0, 0, top(1)));
    EXPECT_TRUE(view()->isExpanded(top(1)));
}

TEST_F(TreeFixture, SaveOnARangeAsksWhetherToOverwriteOrMakeANewEntry) {
    open();
    ui->rangeText->setText("QQ+");
    ui->rangeText->validateRange();
    const QModelIndex pairs = model().index(1, 0, top(0));
    select(pairs);
    fake.overwriteAnswers = {HandSelectionPrompts::OverwriteAnswer::Cancel};
    ui->saveTreeRangeButton->click();
    EXPECT_EQ(textOf(model().tree(), model().nodeOf(pairs)), "22+");

    fake.overwriteAnswers = {HandSelectionPrompts::OverwriteAnswer::Overwrite};
    ui->saveTreeRangeButton->click();
    EXPECT_EQ(textOf(model().tree(), model().nodeOf(pairs)), "QQ+");
    EXPECT_EQ(pairs.data().toString(), "Pocketpairs");

    fake.overwriteAnswers = {HandSelectionPrompts::OverwriteAnswer::New};
    fake.names = {{true, "Big Pairs"}};
    ui->saveTreeRangeButton->click();
    EXPECT_EQ(rowNames(top(0)).back(), "Big Pairs");
    EXPECT_EQ(fake.overwriteQuestions, 3);
}

TEST_F(TreeFixture, DeleteAsksAndRemovesTheNodeWithItsChildren) {
    open();
    select(top(0));
    fake.confirmDelete = false;
    ui->deleteTreeNodeButton->click();
    EXPECT_EQ(model().rowCount(), 2);
    fake.confirmDelete = true;
    ui->deleteTreeNodeButton->click();
    EXPECT_EQ(rowNames(), std::vector<std::string>{"Custom Ranges"});
    EXPECT_EQ(model().tree().count(), 2u);
    EXPECT_EQ(fake.deleteQuestions, 2);
}

TEST_F(TreeFixture, RenameAsksWithThePresentName) {
    open();
    select(model().index(2, 0, top(0)));
    fake.names = {{true, ""}, {true, "SC"}};
    ui->editTreeNameButton->click();
    ASSERT_EQ(fake.presentNames.size(), 2u);
    EXPECT_EQ(fake.presentNames[0], "Suited Connectors");
    EXPECT_EQ(fake.questions[0].title, "Edit Name");
    EXPECT_EQ(fake.warnings, QStringList{"Enter Name: Please enter a name for the range."});
    EXPECT_EQ(model().index(2, 0, top(0)).data().toString(), "SC");
}

TEST_F(TreeFixture, UpAndDownMoveTheCurrentNodeAndKeepItCurrent) {
    open();
    select(top(1));
    ui->treeMoveUpButton->click();
    EXPECT_EQ(rowNames(), (std::vector<std::string>{"Custom Ranges", "Predefined Patterns"}));
    EXPECT_EQ(view()->currentIndex().data().toString(), "Custom Ranges");
    ui->treeMoveUpButton->click(); // at the top: nothing
    EXPECT_EQ(view()->currentIndex().row(), 0);
    select(model().index(0, 0, top(1)));
    ui->treeMoveDownButton->click();
    EXPECT_EQ(view()->currentIndex().data().toString(), "Broadways");
    EXPECT_EQ(view()->currentIndex().row(), 1);
    EXPECT_EQ(view()->currentIndex().parent(), top(1)); // a range stays in its folder
}

TEST_F(TreeFixture, TreeUndoAndRedoStepThroughTheChanges) {
    open();
    QSignalSpy restored(dialog.get(), &HandSelectionDialog::rangeTreeRestored);
    const std::vector<Range::NodeMemento> start = model().memento();
    select(top(0));
    ui->treeMoveDownButton->click();
    const std::vector<Range::NodeMemento> moved = model().memento();
    fake.names = {{true, "New"}};
    ui->addFolderButton->click();
    EXPECT_EQ(dialog->treeUndoCount(), 3u);
    EXPECT_TRUE(ui->treeUndoButton->isEnabled());
    ui->treeUndoButton->click();
    EXPECT_EQ(model().memento(), moved);
    ui->treeUndoButton->click();
    EXPECT_EQ(model().memento(), start);
    EXPECT_FALSE(ui->treeUndoButton->isEnabled());
    EXPECT_EQ(restored.count(), 2);
    ui->treeRedoButton->click();
    ui->treeRedoButton->click();
    EXPECT_EQ(rowNames(),
              (std::vector<std::string>{"Custom Ranges", "Predefined Patterns", "New"}));
    EXPECT_FALSE(ui->treeRedoButton->isEnabled());
    // A change after an undo drops the steps ahead.
    ui->treeUndoButton->click();
    select(top(0));
    fake.confirmDelete = true;
    ui->deleteTreeNodeButton->click();
    EXPECT_FALSE(ui->treeRedoButton->isEnabled());
    EXPECT_EQ(dialog->treeUndoCount(), 3u);
}

TEST_F(TreeFixture, AMementoKeepsTheOpenFolders) {
    open();
    view()->expand(top(1));
    select(top(0));
    ui->treeMoveDownButton->click(); // "Custom Ranges" first, open
    view()->collapse(top(0));
    view()->expand(top(1));
    fake.names = {{true, "New"}};
    ui->addFolderButton->click();
    ui->treeUndoButton->click();
    EXPECT_TRUE(view()->isExpanded(top(0)));
    EXPECT_FALSE(view()->isExpanded(top(1)));
}

// --- Loading a saved range -----------------------------------------------------------------------

TEST_F(TreeFixture, ADoubleClickedRangeIsAppliedByTheSelectMode) {
    open();
    ui->rangeText->setText("AKs");
    ui->rangeText->validateRange();
    const QModelIndex pairs = model().index(1, 0, top(0));
    ui->selectMode->setCurrentIndex(HandSelectionDialog::Add);
    dialog->rangeTreeDoubleclicked(pairs);
    EXPECT_EQ(dialog->currentRangeText(), "22+,AKs");
    ui->selectMode->setCurrentIndex(HandSelectionDialog::Subtract);
    dialog->rangeTreeDoubleclicked(model().index(0, 0, top(0))); // Broadways, AKs among them
    EXPECT_EQ(dialog->currentRangeText(), "22+");
    ui->selectMode->setCurrentIndex(HandSelectionDialog::OverwriteInverted);
    dialog->rangeTreeDoubleclicked(pairs);
    EXPECT_EQ(dialog->currentRange().combinationCount(), 1326u - 78u);
    // A folder loads nothing; each load was one undo step.
    dialog->rangeTreeDoubleclicked(top(0));
    EXPECT_EQ(dialog->rangeUndoList().size(), 4u);
    ui->undoButton->click();
    EXPECT_EQ(dialog->currentRangeText(), "22+");
}

TEST_F(TreeFixture, OverwriteBringsTheGroupsOfASavedRangeAlong) {
    open();
    const unsigned int group = playerWithGroup();
    ASSERT_EQ(group, 1u);
    // Save the player's range with its group, then start over with another range.
    QTest::mouseClick(dialog->groupBoxes()[0], Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    select(top(1));
    fake.names = {{true, "With Group"}};
    ui->saveTreeRangeButton->click();
    QTest::mouseClick(dialog->groupBoxes()[1], Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    fake.confirmDelete = true;
    ui->deleteGroupButton->click();
    ui->rangeText->setText("22");
    ui->rangeText->validateRange();
    ASSERT_EQ(dialog->groupTree().count(), 1u);

    ui->selectMode->setCurrentIndex(HandSelectionDialog::Overwrite);
    dialog->rangeTreeDoubleclicked(model().index(0, 0, top(1)));
    EXPECT_EQ(dialog->currentGroup(), 0u);
    EXPECT_EQ(dialog->currentRangeText(), "TT+,AKs");
    ASSERT_EQ(dialog->groupTree().count(), 2u);
    EXPECT_EQ(dialog->groupTree().rangeNode(1)->name, "Value");
    EXPECT_EQ(HandSelectionTest::textOf(dialog->groupTree().handRange(1)), "AA");
    EXPECT_TRUE(dialog->groupTree().rangeNode(1)->exclusive);
    EXPECT_EQ(dialog->groupBoxes().size(), 3u);

    // Add mode takes the range only.
    ui->rangeText->setText("22");
    ui->rangeText->validateRange();
    ui->selectMode->setCurrentIndex(HandSelectionDialog::Add);
    dialog->rangeTreeDoubleclicked(model().index(0, 0, top(1)));
    EXPECT_EQ(dialog->currentRangeText(), "TT+,22,AKs");
    EXPECT_EQ(dialog->groupTree().count(), 2u);
}

TEST_F(TreeFixture, GroupsOfASavedRangeLoadedIntoAGroupGetFreeColours) {
    open();
    const unsigned int group = playerWithGroup();
    const Range::GroupColor taken = dialog->groupTree().rangeNode(group)->color;
    // A saved range whose group has the colour of "Value".
    Range::Tree source;
    source.addRange(noNode, "Saved", false, Range::GroupColor());
    Range::HandRangeStringManipulator(source.handRange(0)).setFree("AA,KK");
    source.addExclusiveRange(0, "Inner", Range::TreeRangeNode::Overwrite, false, taken);
    Range::HandRangeStringManipulator(source.handRange(1)).setFree("KK");
    ui->selectMode->setCurrentIndex(HandSelectionDialog::Overwrite);
    dialog->loadSavedRange(source, 0);
    EXPECT_EQ(dialog->currentGroup(), group);
    EXPECT_EQ(HandSelectionTest::textOf(dialog->currentRange()), "KK+");
    ASSERT_EQ(dialog->groupTree().node(group)->children.size(), 1u);
    const unsigned int inner = dialog->groupTree().node(group)->children[0];
    EXPECT_EQ(HandSelectionTest::textOf(dialog->groupTree().handRange(inner)), "KK");
    EXPECT_NE(dialog->groupTree().rangeNode(inner)->color, taken);
    EXPECT_TRUE(dialog->groupTree().rangeNode(inner)->color.usesColor);
}

TEST_F(TreeFixture, ARangeDroppedOnTheTableLoadsTheCurrentSavedRange) {
    open();
    const QModelIndex pairs = model().index(1, 0, top(0));
    select(pairs);
    std::unique_ptr<QMimeData> data(model().mimeData({pairs}));
    QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction | Qt::MoveAction, data.get(),
                          Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(ui->handSelectionTable, &enter);
    ASSERT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(50, 50), Qt::CopyAction | Qt::MoveAction, data.get(), Qt::LeftButton,
                    Qt::NoModifier);
    QApplication::sendEvent(ui->handSelectionTable, &drop);
    EXPECT_EQ(drop.dropAction(), Qt::CopyAction);
    EXPECT_EQ(dialog->currentRangeText(), "22+");
}

TEST_F(TreeFixture, ADoubleClickOnTheViewLoadsARangeAndTogglesAFolder) {
    open();
    dialog->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(dialog.get()));
    EXPECT_FALSE(view()->isExpanded(top(0)));
    // As the window system sends it: a click, then the double click.
    const auto doubleClick = [this](const QModelIndex& index) {
        const QPoint at = view()->visualRect(index).center();
        QTest::mouseClick(view()->viewport(), Qt::LeftButton, Qt::NoModifier, at);
        QTest::mouseDClick(view()->viewport(), Qt::LeftButton, Qt::NoModifier, at);
    };
    doubleClick(top(0));
    EXPECT_TRUE(view()->isExpanded(top(0)));
    doubleClick(model().index(1, 0, top(0)));
    EXPECT_EQ(dialog->currentRangeText(), "22+");
}

// --- Files ---------------------------------------------------------------------------------------

TEST_F(TreeFixture, ImportAsksForATreeFileAndAddsItsFolders) {
    open();
    fake.openFile = QString::fromLatin1(QUORVANE_SELECTION_DATA) + "/saved-ranges-old.bin";
    ui->importTreeButton->click();
    ASSERT_EQ(fake.fileQuestions.size(), 1);
    EXPECT_TRUE(fake.fileQuestions[0].startsWith("Open | "));
    EXPECT_TRUE(
        fake.fileQuestions[0].endsWith(" | Quorvane Range Tree Files (*.qvt);;All Files (*)"));
    EXPECT_EQ(rowNames(), (std::vector<std::string>{"Predefined Patterns", "Custom Ranges",
                                                    "Preflop", "Flop été <&\">"}));
    EXPECT_TRUE(view()->isExpanded(top(2)));
    EXPECT_TRUE(fake.warnings.isEmpty());
    ui->treeUndoButton->click();
    EXPECT_EQ(model().rowCount(), 2);
    // The next question starts in the file's folder.
    fake.openFile.clear();
    ui->importTreeButton->click();
    EXPECT_EQ(fake.fileQuestions[1], "Open | " + QString::fromLatin1(QUORVANE_SELECTION_DATA) +
                                         " | Quorvane Range Tree Files (*.qvt);;All Files (*)");
}

TEST_F(TreeFixture, ImportOfADamagedFileNamesTheFileAndTheReasonAndChangesNothing) {
    open();
    QTemporaryDir folder;
    const QString path = folder.filePath("broken.qvt");
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("<QuorvaneTree><folder name=\"A\"><range name=\"B\" text=");
    }
    const std::vector<Range::NodeMemento> before = model().memento();
    fake.openFile = path;
    ui->importTreeButton->click();
    ASSERT_EQ(fake.warnings.size(), 1);
    EXPECT_TRUE(fake.warnings[0].startsWith("Import Tree From File: The file \"" + path +
                                            "\" cannot be imported. The XML is damaged: "))
        << fake.warnings[0].toStdString();
    EXPECT_TRUE(fake.warnings[0].endsWith(" The range tree is unchanged."));
    EXPECT_EQ(model().memento(), before);
    EXPECT_EQ(dialog->treeUndoCount(), 1u);
}

TEST_F(TreeFixture, ImportOfAThreeLevelFileWarnsAndDropsTheThirdLevel) {
    open();
    QTemporaryDir folder;
    const QString path = folder.filePath("deep.qvt");
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("<QuorvaneTree><folder name=\"A\"><folder name=\"B\"><folder name=\"C\"/>"
                   "</folder></folder></QuorvaneTree>");
    }
    fake.openFile = path;
    ui->importTreeButton->click();
    ASSERT_EQ(fake.warnings.size(), 1);
    EXPECT_EQ(fake.warnings[0],
              "More than two top levels.: Warning: Your tree has more than two top levels. If "
              "you have changed this file via a text editor, please undo this operation there. "
              "The other levels will be ignored.");
    EXPECT_EQ(rowNames().back(), "A");
    EXPECT_EQ(rowNames(top(2)), std::vector<std::string>{"B"});
    EXPECT_EQ(model().rowCount(model().index(0, 0, top(2))), 0);
}

TEST_F(TreeFixture, ExportWritesTheTreeAndAddsTheExtension) {
    open();
    QTemporaryDir folder;
    fake.saveFile = folder.filePath("mine");
    ui->exportTreeButton->click();
    ASSERT_EQ(fake.fileQuestions.size(), 1);
    EXPECT_TRUE(fake.fileQuestions[0].startsWith("Save As | "));
    EXPECT_NE(fake.fileQuestions[0].indexOf("/untitled.qvt | "), -1);
    QFile written(folder.filePath("mine.qvt"));
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_EQ(written.readAll().toStdString(), model().writeNewXml());
    EXPECT_TRUE(fake.warnings.isEmpty());

    fake.saveFile = folder.filePath("missing/mine.qvt");
    ui->exportTreeButton->click();
    ASSERT_EQ(fake.warnings.size(), 1);
    EXPECT_TRUE(fake.warnings[0].startsWith("Export Tree To File: The file \"" +
                                            folder.filePath("missing/mine.qvt") +
                                            "\" cannot be written: "));
}
