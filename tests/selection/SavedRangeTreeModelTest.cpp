// The model of the tree of saved ranges: its rows, its drag and drop payloads and rules, its
// operations, its mementos, and the import and export of tree files. Every test runs Qt's
// model tester over the model, which aborts on any inconsistency of rows and signals.

#include "SavedRangeTestHelpers.h"

#include "Range/GroupColor.h"
#include "Range/HandRangeStringManipulator.h"
#include "Range/SavedRangeFile.h"
#include "selection/HandSelectionTreeModel.h"

#include <QAbstractItemModelTester>
#include <QDataStream>
#include <QFile>
#include <QIcon>
#include <QMimeData>
#include <QPersistentModelIndex>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <memory>

using namespace SavedRangeTest;

namespace {

constexpr unsigned int noNode = Range::Tree::noNode;

std::string dataPath(const char* name) {
    return std::string(QUORVANE_SELECTION_DATA) + "/" + name;
}

std::string fileText(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll().toStdString();
}

void writeFile(const QString& path, const std::string& text) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text.data(), static_cast<qint64>(text.size()));
}

// A player's range with two exclusive groups, the way the dialog hands it to the model.
struct PlayerRange {
    Range::Tree tree;
    unsigned int value = 0;
    unsigned int bluff = 0;

    explicit PlayerRange(const std::string& text = "TT+,AQs+,A4s-A5s,AKo") {
        tree.addRange(noNode, "Player1", false, Range::GroupColor());
        Range::HandRangeStringManipulator(tree.handRange(0)).setFree(text);
        value = tree.addExclusiveRange(0, "Value", Range::TreeRangeNode::Overwrite, true,
                                       Range::GroupColor())
                    ->index;
        bluff = tree.addExclusiveRange(0, "Bluff", Range::TreeRangeNode::Overwrite, true,
                                       Range::GroupColor())
                    ->index;
        Range::HandRangeStringManipulator(tree.handRange(value)).setFree("QQ+,AKs,AKo");
        Range::HandRangeStringManipulator(tree.handRange(bluff)).setFree("A4s-A5s");
    }
};

struct ModelFixture : ::testing::Test {
    HandSelectionTreeModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};

    ModelFixture() { model.setDefaultContent(); }

    QModelIndex top(int row) const { return model.index(row, 0); }
    std::string name(const QModelIndex& index) const {
        return index.data(Qt::DisplayRole).toString().toStdString();
    }
    std::vector<std::string> rowNames(const QModelIndex& parent = {}) const {
        std::vector<std::string> names;
        for (int row = 0; row < model.rowCount(parent); ++row)
            names.push_back(name(model.index(row, 0, parent)));
        return names;
    }
    // The saved ranges of a new folder "Mine": "A" (AA) and "B" (KK).
    QModelIndex mineWithTwoRanges() {
        const QModelIndex mine = model.addCategory("Mine");
        PlayerRange source("AA");
        model.addRange(mine, "A", source.tree, 0);
        Range::HandRangeStringManipulator(source.tree.handRange(0)).setFree("KK");
        model.addRange(mine, "B", source.tree, 0);
        return mine;
    }
};

QByteArray payloadOf(const QMimeData& data, const char* type, QString& text, bool* inFolder) {
    const QByteArray bytes = data.data(QString::fromLatin1(type));
    QDataStream in(bytes);
    in >> text;
    if (inFolder)
        in >> *inFolder;
    return bytes;
}

QMimeData* quickbox(const std::string& xml) {
    auto* data = new QMimeData;
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out << QString::fromStdString(xml);
    data->setData(QString::fromLatin1(HandSelectionTreeModel::quickboxType), bytes);
    return data;
}

} // namespace

// --- Content and rows ----------------------------------------------------------------------------

TEST_F(ModelFixture, NoStoredTreeGivesTheTwoDefaultFoldersWithCustomRangesEmpty) {
    EXPECT_EQ(rowNames(), (std::vector<std::string>{"Predefined Patterns", "Custom Ranges"}));
    EXPECT_EQ(rowNames(top(0)),
              (std::vector<std::string>{
                  "Broadways", "Pocketpairs", "Suited Connectors", "Suited One-Gappers",
                  "Suited Two-Gappers", "Off-suited Connectors", "Off-suited One-Gappers",
                  "Off-suited Two-Gappers", "Any Connector", "Any One-Gapper", "Any Two-Gapper"}));
    EXPECT_EQ(model.rowCount(top(1)), 0);
    const Range::Tree& tree = model.tree();
    const std::vector<std::pair<int, const char*>> texts = {
        {0, "ATs+,KTs+,QTs+,JTs,ATo+,KTo+,QTo+,JTo"},
        {1, "22+"},
        {2, "AKs,KQs,QJs,JTs,T9s,98s,87s,76s,65s,54s,43s,32s"},
        {5, "AKo,KQo,QJo,JTo,T9o,98o,87o,76o,65o,54o,43o,32o"},
        {10, "AJ,KT,Q9,J8,T7,96,85,74,63,52"}};
    for (const auto& entry : texts) {
        Range::HandRange expected;
        Range::HandRangeStringManipulator(expected).setFree(entry.second);
        const unsigned int node = model.nodeOf(model.index(entry.first, 0, top(0)));
        EXPECT_EQ(tree.handRange(node).suitsVector(), expected.suitsVector()) << entry.second;
    }
    EXPECT_EQ(tree.handRange(model.nodeOf(model.index(1, 0, top(0)))).combinationCount(), 78u);
}

TEST_F(ModelFixture, ItemsShowNamesIconsAndForRangesTheirText) {
    const QModelIndex folder = top(0);
    const QModelIndex broadways = model.index(0, 0, folder);
    EXPECT_EQ(folder.data(Qt::DisplayRole).toString(), "Predefined Patterns");
    EXPECT_EQ(broadways.data(Qt::EditRole).toString(), "Broadways");
    EXPECT_FALSE(folder.data(Qt::DecorationRole).value<QIcon>().isNull());
    EXPECT_FALSE(broadways.data(Qt::DecorationRole).value<QIcon>().isNull());
    EXPECT_NE(folder.data(Qt::DecorationRole).value<QIcon>().pixmap(16).toImage(),
              broadways.data(Qt::DecorationRole).value<QIcon>().pixmap(16).toImage());
    EXPECT_EQ(broadways.data(Qt::ToolTipRole).toString(), "ATs+,KTs+,QTs+,JTs,ATo+,KTo+,QTo+,JTo");
    EXPECT_FALSE(folder.data(Qt::ToolTipRole).isValid());
    EXPECT_EQ(model.columnCount(), 1);
    EXPECT_TRUE(model.isFolder(folder));
    EXPECT_TRUE(model.isRange(broadways));
    EXPECT_EQ(model.categoryOf(broadways), folder);
    EXPECT_EQ(model.parent(broadways), folder);
    EXPECT_FALSE(model.parent(folder).isValid());
}

TEST_F(ModelFixture, TheGroupsOfASavedRangeTravelWithItButAreNoRows) {
    PlayerRange player;
    const QModelIndex saved = model.addRange(top(1), "3-Bet", player.tree, 0);
    ASSERT_TRUE(saved.isValid());
    EXPECT_EQ(model.rowCount(saved), 0);
    const unsigned int node = model.nodeOf(saved);
    EXPECT_EQ(childNames(model.tree(), node), (std::vector<std::string>{"Value", "Bluff"}));
    EXPECT_FALSE(model.indexOf(model.tree().node(node)->children[0]).isValid());
    EXPECT_EQ(saved.data(Qt::ToolTipRole).toString(), "TT+,AQs+,A4s-A5s,AKo\n2 groups");
    // The saved range is no group among the saved ranges, its groups stay groups.
    EXPECT_FALSE(model.tree().rangeNode(node)->exclusive);
    EXPECT_TRUE(model.tree().rangeNode(model.tree().node(node)->children[0])->exclusive);
    EXPECT_EQ(textOf(model.tree(), model.tree().node(node)->children[0]), "QQ+,AKs,AKo");
}

TEST_F(ModelFixture, AGroupSavedAloneTakesNothingFromItsNewSiblings) {
    PlayerRange player;
    const QModelIndex mine = model.addCategory("Mine");
    model.addRange(mine, "All", player.tree, 0);
    // The exclusive group "Value" saved beside "All": "All" keeps QQ+.
    model.addRange(mine, "Value", player.tree, player.value);
    EXPECT_EQ(textOf(model.tree(), model.nodeOf(model.index(0, 0, mine))), "TT+,AQs+,A4s-A5s,AKo");
    EXPECT_FALSE(model.tree().rangeNode(model.nodeOf(model.index(1, 0, mine)))->exclusive);
}

// --- Drag and drop -------------------------------------------------------------------------------

TEST_F(ModelFixture, MimeTypesComeQuickboxRangeCategory) {
    EXPECT_EQ(model.mimeTypes(), (QStringList{"application/x-quickbox", "application/x-tree-range",
                                              "application/x-tree-category"}));
    EXPECT_EQ(model.supportedDropActions(), Qt::MoveAction | Qt::CopyAction);
    EXPECT_TRUE(model.flags(top(0)) & Qt::ItemIsDropEnabled);
    EXPECT_TRUE(model.flags(top(0)) & Qt::ItemIsDragEnabled);
    EXPECT_TRUE(model.flags(model.index(0, 0, top(0))) & Qt::ItemIsDragEnabled);
    EXPECT_FALSE(model.flags(model.index(0, 0, top(0))) & Qt::ItemIsDropEnabled);
    EXPECT_TRUE(model.flags(QModelIndex()) & Qt::ItemIsDropEnabled);
}

TEST_F(ModelFixture, AFolderTravelsAsCategoryXmlAndARangeWithItsFolderFlag) {
    std::unique_ptr<QMimeData> folder(model.mimeData({top(1)}));
    ASSERT_TRUE(folder);
    EXPECT_EQ(folder->formats(), QStringList{"application/x-tree-category"});
    QString text;
    payloadOf(*folder, HandSelectionTreeModel::categoryType, text, nullptr);
    EXPECT_EQ(text.toStdString(), model.tree().saveToText(model.nodeOf(top(1))));

    const QModelIndex pairs = model.index(1, 0, top(0));
    std::unique_ptr<QMimeData> range(model.mimeData({pairs}));
    EXPECT_EQ(range->formats(), QStringList{"application/x-tree-range"});
    bool inFolder = false;
    payloadOf(*range, HandSelectionTreeModel::rangeType, text, &inFolder);
    EXPECT_TRUE(inFolder);
    EXPECT_EQ(text.toStdString(), model.tree().saveToText(model.nodeOf(pairs)));
    EXPECT_NE(text.indexOf("text=\"22+\""), -1);
    EXPECT_EQ(model.mimeData({}), nullptr);
}

TEST_F(ModelFixture, ARangeDropsIntoAFolderAtTheRowWithItsGroups) {
    HandSelectionTreeModel other;
    PlayerRange player;
    const QModelIndex saved = other.addRange(other.addCategory("Theirs"), "3-Bet", player.tree, 0);
    std::unique_ptr<QMimeData> data(other.mimeData({saved}));
    QSignalSpy changes(&model, &HandSelectionTreeModel::changeOccured);
    ASSERT_TRUE(model.dropMimeData(data.get(), Qt::MoveAction, 1, 0, top(0)));
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(model.rowCount(top(0)), 12);
    const QModelIndex dropped = model.index(1, 0, top(0));
    EXPECT_EQ(name(dropped), "3-Bet");
    EXPECT_EQ(name(model.index(2, 0, top(0))), "Pocketpairs");
    EXPECT_EQ(childNames(model.tree(), model.nodeOf(dropped)),
              (std::vector<std::string>{"Value", "Bluff"}));
    // Row -1 is the end of the folder.
    ASSERT_TRUE(model.dropMimeData(data.get(), Qt::CopyAction, -1, 0, top(1)));
    EXPECT_EQ(rowNames(top(1)), std::vector<std::string>{"3-Bet"});
}

TEST_F(ModelFixture, CategoriesDropAtTheTopLevelAndBehindAFolderTheyAreDroppedOn) {
    std::unique_ptr<QMimeData> custom(model.mimeData({top(1)}));
    ASSERT_TRUE(model.dropMimeData(custom.get(), Qt::MoveAction, 0, 0, QModelIndex()));
    EXPECT_EQ(rowNames(),
              (std::vector<std::string>{"Custom Ranges", "Predefined Patterns", "Custom Ranges"}));
    // Dropped on "Custom Ranges" (row 0), a folder lands behind it.
    std::unique_ptr<QMimeData> patterns(model.mimeData({top(1)}));
    ASSERT_TRUE(model.dropMimeData(patterns.get(), Qt::MoveAction, -1, 0, top(0)));
    EXPECT_EQ(rowNames(), (std::vector<std::string>{"Custom Ranges", "Predefined Patterns",
                                                    "Predefined Patterns", "Custom Ranges"}));
    EXPECT_EQ(model.rowCount(top(1)), 11);
}

TEST_F(ModelFixture, DropsThatMayNotBeAreRefusedAndChangeNothing) {
    const std::vector<Range::NodeMemento> before = model.memento();
    QSignalSpy changes(&model, &HandSelectionTreeModel::changeOccured);
    std::unique_ptr<QMimeData> range(model.mimeData({model.index(0, 0, top(0))}));
    std::unique_ptr<QMimeData> folder(model.mimeData({top(1)}));
    EXPECT_FALSE(model.dropMimeData(range.get(), Qt::MoveAction, 0, 0, QModelIndex()));
    EXPECT_FALSE(model.dropMimeData(range.get(), Qt::MoveAction, 0, 0, model.index(0, 0, top(0))));
    EXPECT_FALSE(model.dropMimeData(range.get(), Qt::LinkAction, 0, 0, top(1)));
    EXPECT_FALSE(model.dropMimeData(range.get(), Qt::MoveAction, 0, 1, top(1)));
    EXPECT_FALSE(model.dropMimeData(nullptr, Qt::MoveAction, 0, 0, top(1)));
    // A folder dropped onto a range inside a folder would nest folders.
    EXPECT_FALSE(model.dropMimeData(folder.get(), Qt::MoveAction, 0, 0, model.index(0, 0, top(0))));
    QMimeData text;
    text.setText("AA,KK");
    EXPECT_FALSE(model.dropMimeData(&text, Qt::CopyAction, 0, 0, top(1)));
    std::unique_ptr<QMimeData> broken(quickbox("<QuorvaneTree><range name=\"x\""));
    EXPECT_FALSE(model.dropMimeData(broken.get(), Qt::CopyAction, 0, 0, top(1)));
    std::unique_ptr<QMimeData> empty(quickbox(""));
    EXPECT_FALSE(model.dropMimeData(empty.get(), Qt::CopyAction, 0, 0, top(1)));
    // A range payload that holds a folder.
    QMimeData disguised;
    disguised.setData("application/x-tree-range", folder->data("application/x-tree-category"));
    EXPECT_FALSE(model.dropMimeData(&disguised, Qt::CopyAction, 0, 0, top(1)));
    EXPECT_EQ(model.memento(), before);
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(ModelFixture, AQuickboxRangeOfAnotherWidgetDropsAsASavedRange) {
    PlayerRange player;
    std::unique_ptr<QMimeData> data(quickbox(player.tree.saveToText(player.value)));
    ASSERT_TRUE(model.dropMimeData(data.get(), Qt::CopyAction, 0, 0, top(1)));
    const unsigned int node = model.nodeOf(model.index(0, 0, top(1)));
    EXPECT_EQ(nameOf(model.tree(), node), "Value");
    EXPECT_EQ(textOf(model.tree(), node), "QQ+,AKs,AKo");
    EXPECT_FALSE(model.tree().rangeNode(node)->exclusive);
}

// --- Operations ----------------------------------------------------------------------------------

TEST_F(ModelFixture, InsertedRowsAreEmptyFoldersAtTheTopAndEmptyRangesInAFolder) {
    ASSERT_TRUE(model.insertRows(1, 2));
    EXPECT_EQ(rowNames(),
              (std::vector<std::string>{"Predefined Patterns", "", "", "Custom Ranges"}));
    EXPECT_TRUE(model.isFolder(top(1)));
    ASSERT_TRUE(model.insertRows(0, 1, top(3)));
    EXPECT_TRUE(model.isRange(model.index(0, 0, top(3))));
    EXPECT_FALSE(model.insertRows(0, 1, model.index(0, 0, top(0)))); // not into a range
    EXPECT_FALSE(model.insertRows(9, 1));
    EXPECT_FALSE(model.insertRows(0, 0));
}

TEST_F(ModelFixture, RemovedRowsGoWithTheirChildrenAndOtherIndexesStay) {
    const QPersistentModelIndex custom(top(1));
    const QPersistentModelIndex anyConnector(model.index(8, 0, top(0)));
    ASSERT_TRUE(model.removeRows(2, 3, top(0)));
    EXPECT_EQ(model.rowCount(top(0)), 8);
    EXPECT_EQ(anyConnector.row(), 5);
    EXPECT_EQ(anyConnector.data().toString(), "Any Connector");
    ASSERT_TRUE(model.removeRows(0, 1));
    EXPECT_EQ(custom.row(), 0);
    EXPECT_EQ(custom.data().toString(), "Custom Ranges");
    EXPECT_EQ(model.tree().count(), 2u);
    EXPECT_FALSE(model.removeRows(0, 2));
}

TEST_F(ModelFixture, MovesSwapWithTheSiblingAndStopAtTheEnds) {
    QModelIndex pairs = model.index(1, 0, top(0));
    pairs = model.moveUp(pairs);
    EXPECT_EQ(pairs.row(), 0);
    EXPECT_EQ(name(pairs), "Pocketpairs");
    EXPECT_EQ(name(model.index(1, 0, top(0))), "Broadways");
    EXPECT_EQ(model.moveUp(pairs), pairs); // at the top already
    pairs = model.moveDown(pairs);
    EXPECT_EQ(pairs.row(), 1);
    const QModelIndex last = model.index(10, 0, top(0));
    EXPECT_EQ(model.moveDown(last), last);
    // Folders move at the top level only.
    QModelIndex custom = model.moveUp(top(1));
    EXPECT_EQ(rowNames(), (std::vector<std::string>{"Custom Ranges", "Predefined Patterns"}));
    custom = model.moveDown(custom);
    EXPECT_EQ(custom.row(), 1);
    EXPECT_EQ(model.moveDown(custom), custom);
}

TEST_F(ModelFixture, RenamingTakesAnyNameButAnEmptyOne) {
    QSignalSpy changes(&model, &HandSelectionTreeModel::changeOccured);
    model.rename(top(1), "Mine");
    EXPECT_EQ(name(top(1)), "Mine");
    EXPECT_FALSE(model.setData(top(1), "   "));
    EXPECT_EQ(name(top(1)), "Mine");
    EXPECT_TRUE(model.setData(model.index(0, 0, top(0)), "Broadway Cards"));
    EXPECT_EQ(name(model.index(0, 0, top(0))), "Broadway Cards");
    EXPECT_EQ(changes.count(), 2);
    EXPECT_FALSE(model.setData(top(1), "x", Qt::DisplayRole));
}

TEST_F(ModelFixture, UpdatingASavedRangeReplacesRangeAndGroupsAndKeepsTheName) {
    PlayerRange player;
    const QModelIndex saved = model.addRange(top(1), "3-Bet", player.tree, 0);
    PlayerRange other("22-55");
    other.tree.renameRange(0, "Other Name");
    other.tree.remove(other.bluff);
    model.updateRange(saved, other.tree, 0);
    const unsigned int node = model.nodeOf(saved);
    EXPECT_EQ(nameOf(model.tree(), node), "3-Bet");
    EXPECT_EQ(textOf(model.tree(), node), "22-55");
    EXPECT_EQ(childNames(model.tree(), node), std::vector<std::string>{"Value"});
    // The group lies inside its new parent, which holds none of QQ+,AKs,AKo.
    EXPECT_EQ(textOf(model.tree(), model.tree().node(node)->children[0]), "");
}

TEST_F(ModelFixture, MementosRestoreTheTreeAndOnlyValidOnesAreAccepted) {
    const std::vector<Range::NodeMemento> before = model.memento();
    EXPECT_TRUE(HandSelectionTreeModel::isValidMemento(before));
    model.removeNode(top(0));
    model.restore(before);
    EXPECT_EQ(model.memento(), before);
    EXPECT_EQ(model.rowCount(top(0)), 11);

    std::vector<Range::NodeMemento> broken = before;
    broken[0].isRange = true;
    broken[0].suits.assign(169, 0);
    EXPECT_FALSE(HandSelectionTreeModel::isValidMemento(broken));
    broken = before;
    broken[3].parent = 99;
    EXPECT_FALSE(HandSelectionTreeModel::isValidMemento(broken));
    broken = before;
    broken[1].children.push_back(broken[1].children.front()); // listed twice
    EXPECT_FALSE(HandSelectionTreeModel::isValidMemento(broken));
    broken = before;
    broken[2].suits.resize(10);
    EXPECT_FALSE(HandSelectionTreeModel::isValidMemento(broken));
    // Two nodes that are each other's parent, unreachable from the root.
    broken = before;
    broken[0].children.erase(broken[0].children.begin());
    broken[1].parent = 2;
    broken[2].children.push_back(1);
    EXPECT_FALSE(HandSelectionTreeModel::isValidMemento(broken));
    EXPECT_FALSE(HandSelectionTreeModel::isValidMemento({}));
}

// --- Files ---------------------------------------------------------------------------------------

TEST_F(ModelFixture, ImportAddsTheFoldersOfAFileAndExportWritesTheWholeTree) {
    QSignalSpy changes(&model, &HandSelectionTreeModel::changeOccured);
    const HandSelectionTreeModel::ImportOutcome outcome =
        model.importFromFile(QString::fromStdString(dataPath("saved-ranges.qvt")));
    EXPECT_TRUE(outcome.error.isEmpty()) << outcome.error.toStdString();
    EXPECT_FALSE(outcome.trimmed);
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(rowNames(), (std::vector<std::string>{"Predefined Patterns", "Custom Ranges",
                                                    "Preflop", "Flop <&\"> été"}));
    EXPECT_EQ(rowNames(top(2)), (std::vector<std::string>{"UTG", "BTN vs 3-Bet"}));

    // Without the default folders the export is the file itself.
    model.removeNode(top(0));
    model.removeNode(top(0));
    QTemporaryDir folder;
    const QString written = folder.filePath("tree.qvt");
    EXPECT_TRUE(model.exportToFile(written).isEmpty());
    EXPECT_EQ(fileText(written), fileText(QString::fromStdString(dataPath("saved-ranges.qvt"))));
    EXPECT_FALSE(model.exportToFile(folder.filePath("missing/tree.qvt")).isEmpty());
}

TEST_F(ModelFixture, ImportOfAnOldBinaryFileKeepsItsOpenFolders) {
    const HandSelectionTreeModel::ImportOutcome outcome =
        model.importFromFile(QString::fromStdString(dataPath("saved-ranges-old.bin")));
    ASSERT_TRUE(outcome.error.isEmpty()) << outcome.error.toStdString();
    EXPECT_EQ(rowNames(), (std::vector<std::string>{"Predefined Patterns", "Custom Ranges",
                                                    "Preflop", "Flop été <&\">"}));
    EXPECT_EQ(outcome.openNodes, std::vector<unsigned int>{model.nodeOf(top(2))});
}

TEST_F(ModelFixture, ADamagedFileLeavesTheTreeAsItWas) {
    QTemporaryDir folder;
    const std::vector<Range::NodeMemento> before = model.memento();
    QSignalSpy changes(&model, &HandSelectionTreeModel::changeOccured);
    const std::vector<std::pair<std::string, std::string>> files = {
        {"empty.qvt", ""},
        {"text.qvt", "Broadways: ATs+"},
        {"cut.qvt", "<QuorvaneTree><folder name=\"A\"><range name=\"B\" text=\"AA\""},
        {"bad-range.qvt", "<QuorvaneTree><folder name=\"A\"><range name=\"B\" text=\"AA,QQQ\" "
                          "usesColor=\"false\" exclusive=\"false\"/></folder></QuorvaneTree>"}};
    for (const auto& file : files) {
        const QString path = folder.filePath(QString::fromStdString(file.first));
        writeFile(path, file.second);
        const HandSelectionTreeModel::ImportOutcome outcome = model.importFromFile(path);
        EXPECT_FALSE(outcome.error.isEmpty()) << file.first;
        EXPECT_EQ(model.memento(), before) << file.first;
    }
    EXPECT_EQ(model.importFromFile(folder.filePath("missing.qvt")).error.left(20),
              "It cannot be opened:");
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(ModelFixture, AnOldTreeReplacesTheWholeTree) {
    QFile file(QString::fromStdString(dataPath("saved-ranges-old.bin")));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const std::vector<unsigned int> open = model.loadOldTree(file.readAll());
    EXPECT_EQ(rowNames(), (std::vector<std::string>{"Preflop", "Flop été <&\">"}));
    EXPECT_EQ(open, std::vector<unsigned int>{model.nodeOf(top(0))});
    EXPECT_EQ(model.writeNewXml(),
              fileText(QString::fromStdString(dataPath("saved-ranges-from-old.qvt"))));
}
