// The range tree file: the exact text the writer prints, what the reader makes of every
// attribute, the old stream form, and bad input of every kind.

#include "TreeTestHelpers.h"

#include "Range/RangeSerializeError.h"
#include "Range/TreeFolderNode.h"
#include "Range/TreeRangeNode.h"
#include "Range/TreeSerialization.h"

#include <rapidxml/rapidxml.hpp>

#include <gtest/gtest.h>

#include <fstream>
#include <random>
#include <sstream>
#include <stdexcept>

using Range::GroupColor;
using Range::Tree;
using Range::TreeRangeNode;
namespace Serialization = Range::TreeSerialization;
using SerializeError = Range::Exception::RangeSerializeError;

namespace {

const GroupColor& standard(std::size_t number) {
    return GroupColor::standardColors().at(number - 1);
}

std::string folderName(const Tree& tree, unsigned int index) {
    return static_cast<const Range::TreeFolderNode*>(tree.node(index))->name;
}

void readText(Tree& tree, const std::string& text) {
    std::istringstream stream(text);
    Serialization::readAll(stream, tree);
}

std::string written(const Tree& tree, unsigned int index = none) {
    std::ostringstream stream;
    Serialization::write(stream, tree, index);
    return stream.str();
}

// The message of a RangeSerializeError thrown by `call`, "parse error" for the parser's
// exception, or what else happened.
template <class Call>
std::string failureOf(Call&& call) {
    try {
        call();
    } catch (const SerializeError& error) {
        return error.what();
    } catch (const rapidxml::parse_error&) {
        return "parse error";
    }
    return "nothing thrown";
}

const std::string header = "<QuorvaneTree version=\"1.20204997\">\n";
// RapidXML's printer ends every node with a line break, the document as well.
const std::string footer = "</QuorvaneTree>\n\n";

} // namespace

// --- Writing ---------------------------------------------------------------------------

TEST(RangeTreeFileWrite, PrintsTabsAttributesInOrderAndNoDeclaration) {
    Tree tree;
    tree.addFolder(none, "Preflop");
    tree.addRange(0, "Open", false, GroupColor());
    setText(tree, 1, "TT+,AQs+,AKo");
    tree.addExclusiveRange(1, "Value", TreeRangeNode::Overwrite, false, standard(1));
    setText(tree, 2, "QQ+,AKs");
    tree.addExclusiveRange(1, "Bluff", TreeRangeNode::Block, false, standard(2));
    setText(tree, 3, "AhQh");
    tree.addFolder(none, "Empty");
    const std::string expected =
        header + "\t<folder name=\"Preflop\">\n" +
        "\t\t<range name=\"Open\" text=\"TT+,AQs+,AKo\" usesColor=\"false\" "
        "exclusive=\"false\">\n" +
        "\t\t\t<range name=\"Value\" text=\"QQ+,AKs\" usesColor=\"true\" "
        "colorFrom=\"252,112,91\" colorTo=\"232,112,101\" exclusive=\"true\" "
        "insertMode=\"overwrite\"/>\n" +
        "\t\t\t<range name=\"Bluff\" text=\"AhQh\" usesColor=\"true\" "
        "colorFrom=\"111,232,122\" colorTo=\"91,202,101\" exclusive=\"true\" "
        "insertMode=\"block\"/>\n" +
        "\t\t</range>\n" + "\t</folder>\n" + "\t<folder name=\"Empty\"/>\n" + footer;
    EXPECT_EQ(written(tree), expected);
    EXPECT_EQ(tree.saveToText(), expected);
}

TEST(RangeTreeFileWrite, AnEmptyTreeIsTheRootAlone) {
    Tree tree;
    EXPECT_EQ(written(tree), "<QuorvaneTree version=\"1.20204997\"/>\n\n");
}

TEST(RangeTreeFileWrite, ChildrenFollowTheirDisplayOrderNotTheirIndices) {
    Tree tree;
    tree.addFolder(none, "p");
    tree.addFolder(0, "a");
    tree.addFolder(0, "b");
    tree.addFolder(none, "q");
    tree.move(2, 0, 0);
    tree.move(0, 3, none); // q(p(b, a))
    EXPECT_EQ(written(tree), header + "\t<folder name=\"q\">\n\t\t<folder name=\"p\">\n" +
                                 "\t\t\t<folder name=\"b\"/>\n\t\t\t<folder name=\"a\"/>\n" +
                                 "\t\t</folder>\n\t</folder>\n" + footer);
}

TEST(RangeTreeFileWrite, ASubtreeHangsAtTheRoot) {
    Tree tree;
    tree.addFolder(none, "p");
    tree.addFolder(0, "a");
    tree.addFolder(1, "a1");
    tree.addFolder(0, "b");
    EXPECT_EQ(written(tree, 1), header + "\t<folder name=\"a\">\n\t\t<folder name=\"a1\"/>\n" +
                                    "\t</folder>\n" + footer);
}

TEST(RangeTreeFileWrite, NamesAreEscaped) {
    Tree tree;
    tree.addFolder(none, "a<b & c>d");
    tree.addFolder(none, "say \"hi\" and 'bye'");
    tree.addFolder(none, "it's");
    EXPECT_EQ(written(tree), header + "\t<folder name=\"a&lt;b &amp; c&gt;d\"/>\n" +
                                 "\t<folder name='say \"hi\" and &apos;bye&apos;'/>\n" +
                                 "\t<folder name=\"it's\"/>\n" + footer);
}

// --- Reading -----------------------------------------------------------------------------

TEST(RangeTreeFileRead, AHandWrittenFileReadsToTheExpectedTree) {
    std::ifstream file(QUORVANE_RANGETREE_DATA "/handwritten.qvt", std::ios::binary);
    ASSERT_TRUE(file.is_open());
    Tree tree;
    Serialization::readAll(file, tree);
    ASSERT_EQ(tree.count(), 10u);
    EXPECT_EQ(tree.topLevelNodes(), (std::vector<unsigned int>{0, 6, 8, 9}));

    EXPECT_TRUE(tree.node(0)->IsFolder());
    EXPECT_EQ(folderName(tree, 0), "Cash & Tourney");
    EXPECT_EQ(childrenOf(tree, 0), (std::vector<unsigned int>{1, 5}));

    const TreeRangeNode* open = tree.rangeNode(1);
    EXPECT_EQ(open->name, "UTG open");
    EXPECT_EQ(open->parent, 0u);
    EXPECT_FALSE(open->exclusive);
    EXPECT_EQ(open->color, GroupColor());
    EXPECT_EQ(technical(tree, 1), "77,88,99,TT,JJ,QQ,KK,KQs,AA,ATs,AJs,AJo,AQs,AQo,AKs,AKo");
    EXPECT_EQ(childrenOf(tree, 1), (std::vector<unsigned int>{2, 3, 4}));

    // The later overwrite sibling "Inherited" took KK from "Value".
    const TreeRangeNode* value = tree.rangeNode(2);
    EXPECT_EQ(value->name, "Value");
    EXPECT_TRUE(value->exclusive);
    EXPECT_EQ(value->insertMode(), TreeRangeNode::Overwrite);
    EXPECT_EQ(value->color, standard(1));
    EXPECT_EQ(technical(tree, 2), "QQ,AA,AKs,AKo");

    // A5s lies outside the parent, QQ was held by "Value".
    const TreeRangeNode* bluff = tree.rangeNode(3);
    EXPECT_EQ(bluff->name, "Bluff <light>");
    EXPECT_EQ(bluff->insertMode(), TreeRangeNode::Block);
    EXPECT_EQ(bluff->color, standard(2));
    EXPECT_EQ(technical(tree, 3), "TT");

    // Below a range and without `exclusive`: exclusive, overwrite by default, no colour.
    const TreeRangeNode* inherited = tree.rangeNode(4);
    EXPECT_TRUE(inherited->exclusive);
    EXPECT_EQ(inherited->insertMode(), TreeRangeNode::Overwrite);
    EXPECT_EQ(inherited->color, GroupColor());
    EXPECT_EQ(technical(tree, 4), "77,88,99,KK");

    EXPECT_EQ(folderName(tree, 5), "Empty \"sub\" folder");
    EXPECT_TRUE(childrenOf(tree, 5).empty());

    // At top level and without `exclusive`: plain.
    const TreeRangeNode* top = tree.rangeNode(6);
    EXPECT_FALSE(top->exclusive);
    EXPECT_EQ(top->color, rgbColor(1, 2, 3, 4, 5, 6));
    EXPECT_EQ(technical(tree, 6), "22,33,44,55,66,77,88,99,TT,JJ,QQ,KK,AA");

    // Names pass as bytes; "True" is not "true"; the colours are read all the same; the
    // range text is repaired.
    const TreeRangeNode* unicode = tree.rangeNode(7);
    EXPECT_EQ(unicode->name, "\xC3\x9Cn\xC3\xAF\x63\xC3\xB6\x64\xC3\xA9 \xE5\x90\x8D\xE5\x89\x8D");
    EXPECT_EQ(unicode->parent, 6u);
    EXPECT_EQ(unicode->color, rgbColor(10, 20, 30, 40, 50, 60, false));
    EXPECT_EQ(unicode->insertMode(), TreeRangeNode::Overwrite);
    EXPECT_EQ(technical(tree, 7), "22,KK,AA");

    EXPECT_TRUE(tree.node(8)->IsFolder());
    EXPECT_EQ(folderName(tree, 8), "");

    const TreeRangeNode* odd = tree.rangeNode(9);
    EXPECT_EQ(odd->color, rgbColor(12, 0, 0, 0, 0, 0));
    EXPECT_TRUE(odd->handRange.isEmpty());
}

TEST(RangeTreeFileRead, WhatIsWrittenReadsBackEqual) {
    std::ifstream file(QUORVANE_RANGETREE_DATA "/handwritten.qvt", std::ios::binary);
    Tree original;
    Serialization::readAll(file, original);
    Tree copy;
    readText(copy, written(original));
    // The channels of a colour that is not used are not written.
    std::vector<Range::NodeMemento> expected = mementoOf(original);
    ASSERT_EQ(expected[7].color, rgbColor(10, 20, 30, 40, 50, 60, false));
    expected[7].color = GroupColor();
    EXPECT_EQ(mementoOf(copy), expected);
}

TEST(RangeTreeFileRead, ARangeOutsideItsParentIsCut) {
    std::vector<Range::NodeMemento> records(2);
    Range::HandRange parent, child;
    Range::HandRangeStringManipulator(parent).setFree("QQ+");
    Range::HandRangeStringManipulator(child).setFree("TT+,AKs");
    records[0].isRange = true;
    records[0].children = {1};
    records[0].suits = parent.suitsVector();
    records[1].isRange = true;
    records[1].parent = 0;
    records[1].suits = child.suitsVector();
    Tree tree;
    tree.RestoreMemento(records); // as saved: outside its parent
    const std::string text = written(tree);
    EXPECT_NE(text.find("text=\"TT+,AKs\""), std::string::npos);
    Tree read;
    readText(read, text);
    EXPECT_EQ(technical(read, 1), "QQ,KK,AA");
    records[1].suits = read.handRange(1).suitsVector();
    EXPECT_EQ(mementoOf(read), records);
}

TEST(RangeTreeFileRead, TheExclusiveDefaultDependsOnTheParent) {
    Tree tree;
    readText(tree, "<QuorvaneTree>"
                   "<folder name=\"f\"><range name=\"in folder\" text=\"AA\"/></folder>"
                   "<range name=\"top\" text=\"KK+\">"
                   "<range name=\"in range\" text=\"AA\" insertMode=\"block\"/>"
                   "<range name=\"plain in range\" text=\"KK\" exclusive=\"false\" "
                   "insertMode=\"block\"/>"
                   "<range name=\"missing mode\" text=\"KK\" exclusive=\"true\"/>"
                   "</range></QuorvaneTree>");
    ASSERT_EQ(tree.count(), 6u);
    EXPECT_FALSE(tree.rangeNode(1)->exclusive);
    EXPECT_FALSE(tree.rangeNode(2)->exclusive);
    EXPECT_TRUE(tree.rangeNode(3)->exclusive);
    EXPECT_EQ(tree.rangeNode(3)->insertMode(), TreeRangeNode::Block);
    EXPECT_FALSE(tree.rangeNode(4)->exclusive);
    EXPECT_TRUE(tree.rangeNode(5)->exclusive);
    EXPECT_EQ(tree.rangeNode(5)->insertMode(), TreeRangeNode::Overwrite);
    // The overwrite group came last and took KK from its plain sibling.
    EXPECT_EQ(technical(tree, 4), "");
    EXPECT_EQ(technical(tree, 5), "KK");
}

TEST(RangeTreeFileRead, AttributeValuesAndNamesAreExact) {
    Tree tree;
    readText(tree, "<t>"
                   "<range name=\"a\" usesColor=\"True\" colorFrom=\"1,2,3\" colorTo=\"4,5,6\" "
                   "exclusive=\"TRUE\"/>"
                   "<range Name=\"ignored\" TEXT=\"AA\" name=\"b\" text=\"KK\" extra=\"x\"/>"
                   "<range name=\"c\" text=\"QQ+\"><range name=\"c1\" text=\"AA\" "
                   "insertMode=\"Overwrite\"/></range>"
                   "<folder title=\"first attribute\" name=\"second\"/>"
                   "<group name=\"any other element is a range\" text=\"22\"/>"
                   "</t>");
    ASSERT_EQ(tree.count(), 6u);
    EXPECT_EQ(tree.rangeNode(0)->color, rgbColor(1, 2, 3, 4, 5, 6, false));
    EXPECT_FALSE(tree.rangeNode(0)->exclusive);
    EXPECT_EQ(tree.rangeNode(1)->name, "b");
    EXPECT_EQ(technical(tree, 1), "KK");
    EXPECT_EQ(tree.rangeNode(3)->insertMode(), TreeRangeNode::Block);
    EXPECT_EQ(folderName(tree, 4), "first attribute");
    EXPECT_EQ(tree.rangeNode(5)->name, "any other element is a range");
    EXPECT_EQ(technical(tree, 5), "22");
}

TEST(RangeTreeFileRead, MissingAttributesGiveEmptyValues) {
    Tree tree;
    readText(tree, "<QuorvaneTree><range/><folder/><range name=\"x\"><range/></range>"
                   "</QuorvaneTree>");
    ASSERT_EQ(tree.count(), 4u);
    EXPECT_EQ(tree.rangeNode(0)->name, "");
    EXPECT_TRUE(tree.handRange(0).isEmpty());
    EXPECT_EQ(tree.rangeNode(0)->color, GroupColor());
    EXPECT_FALSE(tree.rangeNode(0)->exclusive);
    EXPECT_EQ(folderName(tree, 1), "");
    EXPECT_TRUE(tree.rangeNode(3)->exclusive);
}

TEST(RangeTreeFileRead, NonNumericColoursStopTheReadAndLeaveZeros) {
    Tree tree;
    readText(tree, "<t>"
                   "<range colorFrom=\"12,x,7\" colorTo=\"abc\"/>"
                   "<range colorFrom=\"1;2;3\" colorTo=\"1, 2, 3\"/>"
                   "<range colorFrom=\"7,8\" colorTo=\"9,,10\"/>"
                   "<range colorFrom=\"\" colorTo=\"-5,300,2x\"/>"
                   "</t>");
    ASSERT_EQ(tree.count(), 4u);
    EXPECT_EQ(tree.rangeNode(0)->color, rgbColor(12, 0, 0, 0, 0, 0, false));
    EXPECT_EQ(tree.rangeNode(1)->color, rgbColor(1, 2, 3, 1, 2, 3, false));
    EXPECT_EQ(tree.rangeNode(2)->color, rgbColor(7, 8, 0, 9, 0, 0, false));
    EXPECT_EQ(tree.rangeNode(3)->color, rgbColor(0, 0, 0, -5, 300, 2, false));
}

TEST(RangeTreeFileRead, AnotherRootNameReadsAllTheSameAndVersionIsIgnored) {
    Tree a, b;
    readText(a, "<QuorvaneTree version=\"1.20204997\"><folder name=\"x\"/></QuorvaneTree>");
    readText(b, "<SomethingElse version=\"99\"><folder name=\"x\"/></SomethingElse>");
    EXPECT_EQ(mementoOf(a), mementoOf(b));
    EXPECT_EQ(a.count(), 1u);
}

TEST(RangeTreeFileRead, ReadAllAddsToWhatIsThere) {
    Tree tree;
    tree.addFolder(none, "existing");
    readText(tree, "<t><folder name=\"new\"><folder name=\"child\"/></folder></t>");
    ASSERT_EQ(tree.count(), 3u);
    EXPECT_EQ(tree.topLevelNodes(), (std::vector<unsigned int>{0, 1}));
    EXPECT_EQ(childrenOf(tree, 1), std::vector<unsigned int>{2});
}

TEST(RangeTreeFileRead, ReadingIntoAPlayersTreeFiltersByItsRangeAtOnce) {
    Tree tree;
    tree.addRange(none, "", false, GroupColor());
    setText(tree, 0, "JJ+,AKs");
    tree.addExclusiveRange(0, "held", TreeRangeNode::Block, false, standard(1));
    setText(tree, 1, "AA");
    std::istringstream stream("<t><range name=\"g\" text=\"TT+,AK\" exclusive=\"true\" "
                              "insertMode=\"block\"/><range name=\"h\" text=\"AA\"/></t>");
    Serialization::readInto(stream, tree, 0, 0);
    ASSERT_EQ(tree.count(), 4u);
    EXPECT_EQ(childrenOf(tree, 0), (std::vector<unsigned int>{2, 3, 1}));
    EXPECT_EQ(technical(tree, 2), "JJ,QQ,KK,AKs");
    // "h" is an overwrite group below a range: it takes AA from "held".
    EXPECT_EQ(technical(tree, 3), "AA");
    EXPECT_EQ(technical(tree, 1), "");
}

TEST(RangeTreeFileRead, ReadOverKeepsTheKindOfExclusionAndAddsTheChildren) {
    Tree tree;
    tree.addRange(none, "", false, GroupColor());
    setText(tree, 0, "QQ+");
    tree.addExclusiveRange(0, "g", TreeRangeNode::Block, false, standard(3));
    std::istringstream stream("<t><range name=\"new name\" text=\"KK+,AKs\" usesColor=\"true\" "
                              "colorFrom=\"1,2,3\" colorTo=\"4,5,6\" exclusive=\"false\">"
                              "<range name=\"sub\" text=\"AA\"/></range>"
                              "<range name=\"ignored\"/></t>");
    Serialization::readOver(stream, tree, 1);
    ASSERT_EQ(tree.count(), 3u);
    const TreeRangeNode* node = tree.rangeNode(1);
    EXPECT_EQ(node->name, "new name");
    EXPECT_EQ(node->color, rgbColor(1, 2, 3, 4, 5, 6));
    EXPECT_TRUE(node->exclusive);
    EXPECT_EQ(node->insertMode(), TreeRangeNode::Block);
    EXPECT_EQ(technical(tree, 1), "KK,AA");
    EXPECT_EQ(childrenOf(tree, 1), std::vector<unsigned int>{2});
    EXPECT_TRUE(tree.rangeNode(2)->exclusive);

    std::istringstream folder("<t><folder name=\"f\"/></t>");
    EXPECT_EQ(failureOf([&] { Serialization::readOver(folder, tree, 1); }),
              "Node to overwrite is of other type (range/folder) than read node.");
    tree.addFolder(none, "folder");
    std::istringstream range("<t><range name=\"r\"/></t>");
    EXPECT_EQ(failureOf([&] { Serialization::readOver(range, tree, 3); }),
              "Node to overwrite is of other type (range/folder) than read node.");
    std::istringstream rename("<t><folder name=\"renamed\"><folder name=\"sub\"/></folder></t>");
    Serialization::readOver(rename, tree, 3);
    EXPECT_EQ(folderName(tree, 3), "renamed");
    EXPECT_EQ(childrenOf(tree, 3), std::vector<unsigned int>{4});
}

// --- Bad input -----------------------------------------------------------------------

TEST(RangeTreeFileBadInput, AnEmptyStreamOrMissingFileIsNamed) {
    Tree tree;
    tree.addFolder(none, "stays");
    std::istringstream empty("");
    EXPECT_EQ(failureOf([&] { Serialization::readAll(empty, tree); }),
              "File to read is not existing or empty.");
    std::ifstream missing("/nonexistent/folder/tree.qvt");
    EXPECT_EQ(failureOf([&] { Serialization::readAll(missing, tree); }),
              "File to read is not existing or empty.");
    EXPECT_EQ(failureOf([&] { tree.restoreFromText("", 0); }),
              "File to read is not existing or empty.");
    EXPECT_EQ(failureOf([&] { tree.InsertFromMemento("", 0, 0); }),
              "File to read is not existing or empty.");
    EXPECT_EQ(tree.count(), 1u);
    EXPECT_EQ(folderName(tree, 0), "stays");
}

TEST(RangeTreeFileBadInput, WhiteSpaceAloneHoldsNoNodes) {
    Tree tree;
    readText(tree, " \n\t ");
    EXPECT_EQ(tree.count(), 0u);
    readText(tree, "<QuorvaneTree version=\"1.20204997\"/>");
    EXPECT_EQ(tree.count(), 0u);
    // A declaration is skipped; without an element after it nothing is read.
    readText(tree, "<?xml version=\"1.0\"?>");
    EXPECT_EQ(tree.count(), 0u);
}

TEST(RangeTreeFileBadInput, MalformedXmlEndsInTheParsersErrorAndLeavesTheTree) {
    Tree tree;
    tree.addRange(none, "stays", false, GroupColor());
    setText(tree, 0, "AA");
    const auto before = mementoOf(tree);
    for (const std::string text :
         {"<QuorvaneTree><folder name=\"a\"></QuorvaneTree>", "<QuorvaneTree><range name=\"a",
          "not xml at all", "<a x=1/>", "<a x=\"1\" x/>", "<<<>>>", "<a>&#xFFFFFFFFF;</a>"}) {
        EXPECT_EQ(failureOf([&] { readText(tree, text); }), "parse error") << text;
        EXPECT_EQ(mementoOf(tree), before) << text;
    }
}

TEST(RangeTreeFileBadInput, EveryTruncationOfAFileFailsCleanlyOrReadsAPrefix) {
    std::ifstream file(QUORVANE_RANGETREE_DATA "/handwritten.qvt", std::ios::binary);
    const std::string text((std::istreambuf_iterator<char>(file)),
                           std::istreambuf_iterator<char>());
    ASSERT_GT(text.size(), 500u);
    for (std::size_t length = 0; length < text.size(); ++length) {
        Tree tree;
        const std::string failure = failureOf([&] { readText(tree, text.substr(0, length)); });
        if (length == 0) {
            EXPECT_EQ(failure, "File to read is not existing or empty.");
        } else if (failure == "nothing thrown") {
            // Only the leading comment alone (no element), or the whole document without its
            // last line break.
            if (tree.count() != 0) {
                EXPECT_EQ(length, text.size() - 1);
                EXPECT_EQ(tree.count(), 10u);
            }
        } else {
            EXPECT_EQ(failure, "parse error") << length;
            EXPECT_EQ(tree.count(), 0u);
        }
    }
}

TEST(RangeTreeFileBadInput, TenMegabytesOfGarbageEndInAnException) {
    std::mt19937 generator(20261121);
    std::uniform_int_distribution<int> byte(1, 255);
    std::string garbage(10 * 1024 * 1024, ' ');
    for (char& c : garbage)
        c = static_cast<char>(byte(generator));
    Tree tree;
    tree.addFolder(none, "stays");
    EXPECT_EQ(failureOf([&] { readText(tree, garbage); }), "parse error");
    // Garbage made of the characters markup is built from.
    const std::string alphabet = "<>/=\"' ab!?-&;";
    std::uniform_int_distribution<std::size_t> pick(0, alphabet.size() - 1);
    for (char& c : garbage)
        c = alphabet[pick(generator)];
    // Here the nesting check may come first.
    const std::string markupFailure = failureOf([&] { readText(tree, garbage); });
    EXPECT_TRUE(markupFailure == "parse error" ||
                markupFailure == "File is nested too deeply to be a range tree.")
        << markupFailure;
    EXPECT_EQ(tree.count(), 1u);
}

TEST(RangeTreeFileBadInput, DeepNestingIsRefusedBeforeParsing) {
    std::string deep;
    for (int i = 0; i < 2 * 1024 * 1024; ++i)
        deep += "<a>";
    Tree tree;
    EXPECT_EQ(failureOf([&] { readText(tree, deep); }),
              "File is nested too deeply to be a range tree.");
    // Nesting as deep as a real tree could be still reads.
    std::string fine = "<t>";
    for (int i = 0; i < 200; ++i)
        fine += "<folder name=\"x\">";
    for (int i = 0; i < 200; ++i)
        fine += "</folder>";
    fine += "</t>";
    readText(tree, fine);
    EXPECT_EQ(tree.count(), 200u);
    EXPECT_EQ(tree.node(199)->parent, 198u);
}

TEST(RangeTreeFileBadInput, StrayTextAndCommentsBetweenElementsAreSkipped) {
    Tree tree;
    readText(tree, "<t>stray<!-- note --><folder name=\"a\">more text</folder>tail</t>");
    ASSERT_EQ(tree.count(), 1u);
    EXPECT_EQ(folderName(tree, 0), "a");
}

// --- The old stream form -------------------------------------------------------------

TEST(RangeTreeOldStream, BuildsTheFullRangeAndBlockGroupsWithTheOddParent) {
    const std::string stream = std::string("AA,KK,QQ,AKs") + '\0' + "2 " + "first" + '\0' +
                               "AA,AKs" + '\0' + "4294967295 " + "second" + '\0' + "KK" + '\0' +
                               "0 ";
    std::istringstream input(stream);
    Tree tree;
    tree.addFolder(none, "replaced");
    Serialization::readOldStream(input, tree);
    ASSERT_EQ(tree.count(), 3u);
    const TreeRangeNode* full = tree.rangeNode(0);
    EXPECT_EQ(full->name, "Full Range");
    EXPECT_FALSE(full->exclusive);
    EXPECT_EQ(full->color, GroupColor());
    EXPECT_EQ(technical(tree, 0), "QQ,KK,AA,AKs");
    EXPECT_EQ(childrenOf(tree, 0), (std::vector<unsigned int>{1, 2}));

    const TreeRangeNode* first = tree.rangeNode(1);
    EXPECT_EQ(first->name, "first");
    EXPECT_TRUE(first->exclusive);
    EXPECT_EQ(first->insertMode(), TreeRangeNode::Block);
    EXPECT_EQ(first->color, standard(1));
    EXPECT_EQ(first->parent, 0u);
    EXPECT_EQ(technical(tree, 1), "AA,AKs");

    // A parent other than none makes the group its own parent: it takes nothing in.
    const TreeRangeNode* second = tree.rangeNode(2);
    EXPECT_EQ(second->name, "second");
    EXPECT_EQ(second->color, standard(2));
    EXPECT_EQ(second->parent, 2u);
    EXPECT_TRUE(tree.handRange(2).isEmpty());

    // Such a tree still writes, and its odd group can be removed.
    EXPECT_NE(tree.saveToText().find("name=\"second\""), std::string::npos);
    tree.remove(2);
    EXPECT_EQ(childrenOf(tree, 0), std::vector<unsigned int>{1});
}

TEST(RangeTreeOldStream, NoGroups) {
    std::istringstream input(std::string("22") + '\0' + "0 ");
    Tree tree;
    Serialization::readOldStream(input, tree);
    ASSERT_EQ(tree.count(), 1u);
    EXPECT_EQ(technical(tree, 0), "22");
}

TEST(RangeTreeOldStream, AShortStreamThrowsAndKeepsWhatWasBuilt) {
    std::istringstream input(std::string("AA,KK") + '\0' + "2 " + "first" + '\0' + "AA" + '\0' +
                             "4294967295 " + "second");
    Tree tree;
    EXPECT_EQ(failureOf([&] { Serialization::readOldStream(input, tree); }),
              "Old tree stream ended early.");
    ASSERT_EQ(tree.count(), 3u);
    EXPECT_EQ(tree.rangeNode(1)->name, "first");
    EXPECT_EQ(technical(tree, 1), "AA");
    std::istringstream nothing("");
    EXPECT_EQ(failureOf([&] { Serialization::readOldStream(nothing, tree); }),
              "Old tree stream ended early.");
    EXPECT_EQ(tree.count(), 0u);
    std::istringstream noNumber(std::string("AA") + '\0' + "x");
    EXPECT_EQ(failureOf([&] { Serialization::readOldStream(noNumber, tree); }),
              "Old tree stream ended early.");
    EXPECT_EQ(tree.count(), 1u);
}

TEST(RangeTreeOldStream, MoreThanSixteenGroupsRunOutOfColours) {
    std::istringstream input(std::string("AA") + '\0' + "17 ");
    Tree tree;
    try {
        Serialization::readOldStream(input, tree);
        ADD_FAILURE() << "no exception";
    } catch (const std::logic_error& error) {
        EXPECT_STREQ(error.what(), "All colors in use.");
    }
    EXPECT_EQ(tree.count(), 18u);
}
