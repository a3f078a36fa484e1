// The file of saved ranges as the hand selection dialog imports and exports it: golden files
// of both formats, each kind of damage, and mutations of the golden files (also built with
// AddressSanitizer and UndefinedBehaviorSanitizer).

#include "Range/SavedRangeFile.h"
#include "Range/GroupColor.h"
#include "Range/HandRangeStringManipulator.h"
#include "Range/HandRangeStringReader.h"
#include "Range/LegacyTreeStream.h"
#include "Range/RangeSerializeError.h"
#include "Range/Tree.h"
#include "Range/TreeFolderNode.h"
#include "Range/TreeRangeNode.h"

#include <QByteArray>
#include <QDataStream>
#include <gtest/gtest.h>

#include <algorithm>
#include <exception>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace {

constexpr unsigned int noNode = Range::Tree::noNode;

std::string dataFile(const std::string& name) {
    std::ifstream file(std::string(QUORVANE_SELECTION_DATA) + "/" + name, std::ios::binary);
    EXPECT_TRUE(file.good()) << name;
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

QByteArray bytesOf(const std::string& text) {
    return QByteArray(text.data(), static_cast<int>(text.size()));
}

std::string textOf(const Range::Tree& tree, unsigned int node) {
    return Range::HandRangeStringReader(tree.handRange(node)).compactText();
}

std::string nameOf(const Range::Tree& tree, unsigned int node) {
    const Range::TreeNode* own = tree.node(node);
    return own->IsFolder() ? static_cast<const Range::TreeFolderNode*>(own)->name
                           : static_cast<const Range::TreeRangeNode*>(own)->name;
}

Range::GroupColor colour(int red, int green, int blue) {
    Range::GroupColor color;
    color.usesColor = true;
    color.colorFrom = {red, green, blue};
    color.colorTo = {red - 20, green, blue + 10};
    return color;
}

// The tree the golden XML file holds, built below a root folder the way the dialog keeps it:
// two folders, one with a plain saved range and one with groups, and an empty folder whose
// name needs escaping.
void buildGoldenTree(Range::Tree& tree) {
    tree.addFolder(noNode, "");
    const unsigned int preflop = tree.addFolder(0, "Preflop")->index;
    Range::TreeRangeNode* utg = tree.addRange(preflop, "UTG", false, Range::GroupColor());
    Range::HandRangeStringManipulator(utg->handRange).setFree("77+,ATs+,KQs,AQo+");
    Range::TreeRangeNode* btn = tree.addRange(preflop, "BTN vs 3-Bet", false, Range::GroupColor());
    const unsigned int btnIndex = btn->index;
    Range::HandRangeStringManipulator(btn->handRange).setFree("TT+,AQs+,A4s-A5s,AKo");
    Range::TreeRangeNode* value = tree.addExclusiveRange(
        btnIndex, "Value", Range::TreeRangeNode::Overwrite, false, colour(252, 112, 91));
    Range::HandRangeStringManipulator(value->handRange).setFree("QQ+,AKs,AKo");
    Range::TreeRangeNode* bluff = tree.addExclusiveRange(
        btnIndex, "Bluff", Range::TreeRangeNode::Block, false, colour(90, 140, 220));
    Range::HandRangeStringManipulator(bluff->handRange).setFree("A4s-A5s");
    tree.addFolder(0, "Flop <&\"> été");
}

// Mutations of a file: every prefix, and each byte replaced by a few others.
std::vector<std::string> mutationsOf(const std::string& original) {
    std::vector<std::string> mutations;
    for (std::size_t length = 0; length < original.size(); ++length)
        mutations.push_back(original.substr(0, length));
    for (std::size_t i = 0; i < original.size(); ++i)
        for (char replacement : {'\0', '<', '"', '\xff', static_cast<char>(original[i] ^ 0x01)}) {
            if (replacement == original[i])
                continue;
            std::string mutated = original;
            mutated[i] = replacement;
            mutations.push_back(mutated);
        }
    return mutations;
}

// A tree read from a mutated file must be a tree: each node below an existing parent that
// lists it, the root folder first.
void expectConsistent(const Range::Tree& tree) {
    ASSERT_GE(tree.count(), 1u);
    EXPECT_TRUE(tree.node(0)->IsFolder());
    EXPECT_EQ(tree.node(0)->parent, noNode);
    for (unsigned int i = 1; i < tree.count(); ++i) {
        const unsigned int parent = tree.node(i)->parent;
        ASSERT_LT(parent, tree.count());
        const std::vector<unsigned int>& siblings = tree.node(parent)->children;
        EXPECT_EQ(std::count(siblings.begin(), siblings.end(), i), 1);
    }
}

} // namespace

TEST(SavedRangeFile, ExportWritesTheGoldenFile) {
    Range::Tree tree;
    buildGoldenTree(tree);
    EXPECT_EQ(Range::SavedRangeFile::write(tree, 0), dataFile("saved-ranges.qvt"));
}

TEST(SavedRangeFile, TheGoldenFileReadsBackIntoTheSameTree) {
    Range::Tree expected;
    buildGoldenTree(expected);
    Range::Tree read;
    const Range::SavedRangeFile::Import result =
        Range::SavedRangeFile::read(bytesOf(dataFile("saved-ranges.qvt")), read);
    EXPECT_FALSE(result.trimmed);
    std::vector<Range::NodeMemento> expectedNodes, readNodes;
    expected.CreateMemento(expectedNodes);
    read.CreateMemento(readNodes);
    EXPECT_EQ(readNodes, expectedNodes);
    // And written again, byte for byte.
    EXPECT_EQ(Range::SavedRangeFile::write(read, 0), dataFile("saved-ranges.qvt"));
}

TEST(SavedRangeFile, ExportFollowsTheOrderOfTheChildrenNotOfTheIndices) {
    Range::Tree tree;
    buildGoldenTree(tree);
    // The last folder first.
    tree.move(tree.node(0)->children.back(), 0, 0);
    const std::string text = Range::SavedRangeFile::write(tree, 0);
    EXPECT_LT(text.find("Flop &lt;"), text.find("Preflop"));
}

TEST(SavedRangeFile, TheOldBinaryGoldenFileReadsWithItsGroupsAndOpenFolders) {
    Range::Tree read;
    const Range::SavedRangeFile::Import result =
        Range::SavedRangeFile::read(bytesOf(dataFile("saved-ranges-old.bin")), read);
    EXPECT_FALSE(result.trimmed);
    const std::vector<unsigned int>& top = read.node(0)->children;
    ASSERT_EQ(top.size(), 2u);
    EXPECT_EQ(nameOf(read, top[0]), "Preflop");
    EXPECT_EQ(nameOf(read, top[1]), "Flop été <&\">");
    EXPECT_EQ(result.openNodes, std::vector<unsigned int>{top[0]});

    const std::vector<unsigned int>& preflop = read.node(top[0])->children;
    ASSERT_EQ(preflop.size(), 2u);
    EXPECT_EQ(nameOf(read, preflop[0]), "UTG");
    EXPECT_EQ(textOf(read, preflop[0]), "77+,ATs+,KQs,AQo+");
    EXPECT_FALSE(read.rangeNode(preflop[0])->exclusive);
    EXPECT_TRUE(read.node(preflop[0])->children.empty());

    const unsigned int btn = preflop[1];
    EXPECT_EQ(textOf(read, btn), "TT+,AQs+,A4s-A5s,AKo");
    const std::vector<unsigned int>& groups = read.node(btn)->children;
    ASSERT_EQ(groups.size(), 2u);
    EXPECT_EQ(nameOf(read, groups[0]), "Value");
    EXPECT_EQ(textOf(read, groups[0]), "QQ+,AKs,AKo");
    EXPECT_EQ(nameOf(read, groups[1]), "Bluff");
    EXPECT_EQ(textOf(read, groups[1]), "A4s-A5s");
    for (unsigned int group : groups) {
        EXPECT_TRUE(read.rangeNode(group)->exclusive);
        EXPECT_EQ(read.rangeNode(group)->insertMode(), Range::TreeRangeNode::Overwrite);
        EXPECT_TRUE(read.rangeNode(group)->color.usesColor);
    }
    EXPECT_NE(read.rangeNode(groups[0])->color, read.rangeNode(groups[1])->color);
    // "Aces" is a group of the group "Value".
    ASSERT_EQ(read.node(groups[0])->children.size(), 1u);
    const unsigned int aces = read.node(groups[0])->children[0];
    EXPECT_EQ(nameOf(read, aces), "Aces");
    EXPECT_EQ(textOf(read, aces), "AA");

    const std::vector<unsigned int>& flop = read.node(top[1])->children;
    ASSERT_EQ(flop.size(), 1u);
    EXPECT_EQ(textOf(read, flop[0]), "22-44");
    ASSERT_EQ(read.node(flop[0])->children.size(), 1u);
    EXPECT_EQ(read.rangeNode(read.node(flop[0])->children[0])->insertMode(),
              Range::TreeRangeNode::Block);

    // Exported, it is the XML golden file of the same tree.
    EXPECT_EQ(Range::SavedRangeFile::write(read, 0), dataFile("saved-ranges-from-old.qvt"));
}

// --- Damage --------------------------------------------------------------------------------------

namespace {

std::string errorOf(const std::string& bytes) {
    Range::Tree staging;
    try {
        Range::SavedRangeFile::read(bytesOf(bytes), staging);
    } catch (const Range::Exception::RangeSerializeError& error) {
        return error.message();
    }
    return "";
}

} // namespace

TEST(SavedRangeFile, DamagedFilesAreRefusedWithAReason) {
    EXPECT_EQ(errorOf(""), "File to read is not existing or empty.");
    const std::string golden = dataFile("saved-ranges.qvt");
    // Cut off in the middle of an element.
    const std::string truncated = errorOf(golden.substr(0, golden.size() / 2));
    EXPECT_EQ(truncated.rfind("The XML is damaged: ", 0), 0u) << truncated;
    // Not XML at all: read as the old binary format, which it isn't either.
    const std::string text = errorOf("Broadways: ATs+,KTs+\n");
    EXPECT_EQ(text.rfind("The file is not XML, and not a tree of the old binary format "
                         "either: ",
                         0),
              0u)
        << text;
    // A range text that no grammar reads.
    EXPECT_EQ(errorOf("<QuorvaneTree><folder name=\"F\"><range name=\"Mine\" text=\"AKs,QQx,ZZ\" "
                      "usesColor=\"false\" exclusive=\"false\"/></folder></QuorvaneTree>"),
              "The range \"Mine\" holds text that is no range: QQx, ZZ.");
    // Text that is only spelled unusually is no damage.
    EXPECT_EQ(errorOf("<QuorvaneTree><folder name=\"F\"><range name=\"Mine\" text=\"aks, qq\" "
                      "usesColor=\"false\" exclusive=\"false\"/></folder></QuorvaneTree>"),
              "");
    // The old binary stream cut short, and one with a foreign entry.
    const std::string old = dataFile("saved-ranges-old.bin");
    EXPECT_EQ(errorOf(old.substr(0, old.size() - 3)),
              "The file is not XML, and not a tree of the old binary format either: the old "
              "tree data ends in the middle of an item.");
    QByteArray foreign;
    {
        QDataStream out(&foreign, QIODevice::WriteOnly);
        out << QStringLiteral("folder") << QStringLiteral("x");
    }
    EXPECT_EQ(errorOf(foreign.toStdString()),
              "The file is not XML, and not a tree of the old binary format either: the old "
              "tree data holds an unknown entry \"folder\".");
}

TEST(SavedRangeFile, AnOldGroupBelowAGroupThatDoesNotExistIsDamage) {
    QByteArray bytes;
    {
        QDataStream out(&bytes, QIODevice::WriteOnly);
        out << QStringLiteral("item") << QStringLiteral("R") << true << false << qint32(0)
            << QStringLiteral("AA,KK") << qint32(1) << QString() << true << false
            << QStringLiteral("G") << QStringLiteral("AA") << qint32(1) << qint32(0);
    }
    EXPECT_EQ(errorOf(bytes.toStdString()),
              "The file is not XML, and not a tree of the old binary format either: the old "
              "tree data has a group \"G\" below a group that does not exist.");
    QByteArray negative;
    {
        QDataStream out(&negative, QIODevice::WriteOnly);
        out << QStringLiteral("item") << QStringLiteral("F") << false << false << qint32(-3);
    }
    EXPECT_EQ(errorOf(negative.toStdString()),
              "The file is not XML, and not a tree of the old binary format either: the old "
              "tree data holds a negative number of children.");
}

TEST(SavedRangeFile, AThreeLevelFileLosesItsThirdLevel) {
    // A folder in a folder in a folder, edited by hand; the groups of a range are no level.
    const std::string text =
        "<QuorvaneTree>"
        "<folder name=\"One\">"
        "<folder name=\"Two\"><folder name=\"Three\"><range name=\"Deep\" text=\"AA\" "
        "usesColor=\"false\" exclusive=\"false\"/></folder>"
        "<range name=\"Kept\" text=\"KK\" usesColor=\"false\" exclusive=\"false\"/></folder>"
        "<range name=\"Saved\" text=\"QQ+\" usesColor=\"false\" exclusive=\"false\">"
        "<range name=\"Group\" text=\"AA\" usesColor=\"false\" exclusive=\"true\" "
        "insertMode=\"overwrite\"/></range>"
        "</folder></QuorvaneTree>";
    Range::Tree tree;
    const Range::SavedRangeFile::Import result = Range::SavedRangeFile::read(bytesOf(text), tree);
    EXPECT_TRUE(result.trimmed);
    std::vector<std::string> names;
    for (unsigned int i = 1; i < tree.count(); ++i)
        names.push_back(nameOf(tree, i));
    EXPECT_EQ(names, (std::vector<std::string>{"One", "Two", "Saved", "Group"}));
    EXPECT_TRUE(tree.node(2)->children.empty()); // "Two" lost "Three" and "Kept"

    // Two levels stay as they are.
    Range::Tree golden;
    EXPECT_FALSE(
        Range::SavedRangeFile::read(bytesOf(dataFile("saved-ranges.qvt")), golden).trimmed);
}

TEST(SavedRangeFile, UnreadableTokensAreThoseTheGrammarDrops) {
    EXPECT_TRUE(Range::SavedRangeFile::unreadableTokens("").empty());
    EXPECT_TRUE(Range::SavedRangeFile::unreadableTokens("AA, KQs ,22-55,XxXx").empty());
    EXPECT_EQ(Range::SavedRangeFile::unreadableTokens("AA,AKx,,QQ,hello"),
              (std::vector<std::string>{"AKx", "hello"}));
}

// --- Mutations -----------------------------------------------------------------------------------

namespace {

// Every mutation either reads as a whole or is refused with a reason; nothing else escapes.
void mutate(const std::string& original, int& read, int& refused) {
    for (const std::string& mutated : mutationsOf(original)) {
        Range::Tree staging;
        try {
            Range::SavedRangeFile::read(bytesOf(mutated), staging);
            ++read;
            expectConsistent(staging);
            // What was read can be written.
            EXPECT_FALSE(Range::SavedRangeFile::write(staging, 0).empty());
        } catch (const Range::Exception::RangeSerializeError& error) {
            ++refused;
            EXPECT_FALSE(error.message().empty());
        } catch (const std::exception& error) {
            ADD_FAILURE() << "an unexpected exception for a mutation of length " << mutated.size()
                          << ": " << error.what();
        } catch (const std::string& fault) {
            ADD_FAILURE() << "a fault for a mutation of length " << mutated.size() << ": " << fault;
        } catch (...) {
            ADD_FAILURE() << "an unknown exception for a mutation of length " << mutated.size();
        }
    }
}

} // namespace

TEST(SavedRangeFileMutation, EveryMutationOfTheXmlFileReadsOrIsRefused) {
    int read = 0, refused = 0;
    mutate(dataFile("saved-ranges.qvt"), read, refused);
    EXPECT_GT(read, 100);
    EXPECT_GT(refused, 100);
}

TEST(SavedRangeFileMutation, EveryMutationOfTheOldBinaryFileReadsOrIsRefused) {
    int read = 0, refused = 0;
    mutate(dataFile("saved-ranges-old.bin"), read, refused);
    EXPECT_GT(read, 50);
    EXPECT_GT(refused, 100);
}

TEST(SavedRangeFileMutation, HugeCountsAndLengthsInTheOldFormatEndEarly) {
    // A count of children and a string length far beyond the data.
    QByteArray bytes;
    {
        QDataStream out(&bytes, QIODevice::WriteOnly);
        out << QStringLiteral("item") << QStringLiteral("F") << false << false << qint32(0x7fffffff)
            << QStringLiteral("item");
        out << quint32(0x7ffffffe);
    }
    const std::string reason = errorOf(bytes.toStdString());
    EXPECT_NE(reason.find("ends in the middle of an item"), std::string::npos) << reason;
    // Folders nested past any tree.
    QByteArray deep;
    {
        QDataStream out(&deep, QIODevice::WriteOnly);
        for (int i = 0; i < 100; ++i)
            out << QStringLiteral("item") << QStringLiteral("F") << false << false << qint32(1);
    }
    EXPECT_NE(errorOf(deep.toStdString()).find("nested too deeply"), std::string::npos);
}
