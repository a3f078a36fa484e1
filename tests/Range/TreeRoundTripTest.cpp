// Random trees written to the tree file and read back give the same tree.
//
// The reader passes every range through its node's filter again, in file order. A tree
// reads back unchanged when that replay changes nothing: children inside range parents,
// exclusive groups disjoint from their siblings, and, where an overwrite group is among the
// siblings, all siblings disjoint (the overwrite group pushes the others out of each other).
// The generator builds such trees directly as records, so nothing but the file decides.

#include "TreeTestHelpers.h"

#include "Range/HandRangeElementConversion.h"
#include "Range/TreeRangeNode.h"

#include <gtest/gtest.h>

#include <random>

using Range::GroupColor;
using Range::NodeMemento;
using Range::Tree;
using Range::TreeRangeNode;

namespace {

class RandomTree {
public:
    explicit RandomTree(unsigned int seed) : generator(seed) {
        const Range::HandRange full(true);
        for (const Range::Element& element : full)
            possible.push_back(element.possibleSuits);
        const int topLevel = uniform(1, 4);
        std::vector<unsigned int> tops;
        for (int i = 0; i < topLevel; ++i)
            tops.push_back(addRecord(none, chance(0.3), false, 0));
        assignSuits(none, tops);
        for (unsigned int top : tops)
            grow(top, 1);
    }

    std::vector<NodeMemento> records;

private:
    int uniform(int low, int high) {
        return std::uniform_int_distribution<int>(low, high)(generator);
    }
    bool chance(double p) { return std::bernoulli_distribution(p)(generator); }

    std::string name() {
        static const std::string pool = "abcXYZ 019<>&\"';#=/\t\n\r";
        std::string text;
        const int length = uniform(0, 12);
        for (int i = 0; i < length; ++i) {
            if (chance(0.3))
                text += static_cast<char>(uniform(0x80, 0xFF));
            else
                text += pool[static_cast<std::size_t>(uniform(0, int(pool.size()) - 1))];
        }
        return text;
    }

    GroupColor color() {
        if (chance(0.4))
            return GroupColor();
        if (chance(0.5))
            return GroupColor::standardColors()[static_cast<std::size_t>(uniform(0, 15))];
        return rgbColor(uniform(0, 255), uniform(0, 255), uniform(0, 255), uniform(0, 255),
                        uniform(0, 255), uniform(0, 255));
    }

    unsigned int addRecord(unsigned int parent, bool isFolder, bool exclusive,
                           unsigned int insertMode) {
        NodeMemento record;
        record.isRange = !isFolder;
        record.parent = parent;
        record.name = name();
        if (record.isRange) {
            record.suits.assign(169, 0);
            record.color = color();
            record.exclusive = exclusive;
            record.insertMode = exclusive ? insertMode : 0;
        }
        const auto index = static_cast<unsigned int>(records.size());
        records.push_back(record);
        if (parent != none)
            records[parent].children.push_back(index);
        return index;
    }

    // Gives the range children of `parent` suits that the reader's replay keeps as they
    // are: each combination of the parent (or of all hands, below a folder or at the top)
    // goes to no child, to one exclusive child, or, without overwrite siblings, to any set
    // of plain children.
    void assignSuits(unsigned int parent, const std::vector<unsigned int>& children) {
        std::vector<unsigned int> ranges, plain;
        bool overwrite = false;
        for (unsigned int child : children) {
            if (!records[child].isRange)
                continue;
            ranges.push_back(child);
            if (!records[child].exclusive)
                plain.push_back(child);
            else if (records[child].insertMode == TreeRangeNode::Overwrite)
                overwrite = true;
        }
        if (ranges.empty())
            return;
        const bool independent = parent == none;
        const bool underRange = parent != none && records[parent].isRange;
        const double density = chance(0.2) ? 0.95 : 0.3;
        for (std::size_t cls = 0; cls < 169; ++cls) {
            const unsigned int source = underRange ? records[parent].suits[cls] : possible[cls];
            if (chance(0.6) && !underRange)
                continue; // most classes stay empty when all hands are possible
            for (unsigned int bit = 0; bit < 16; ++bit) {
                const unsigned int mask = 1U << bit;
                if ((source & mask) == 0 || !chance(density))
                    continue;
                if (independent) {
                    for (unsigned int child : ranges)
                        if (chance(0.5))
                            records[child].suits[cls] |= mask;
                } else if (overwrite || plain.empty() || chance(0.4)) {
                    const unsigned int child =
                        ranges[static_cast<std::size_t>(uniform(0, int(ranges.size()) - 1))];
                    records[child].suits[cls] |= mask;
                } else {
                    for (unsigned int child : plain)
                        if (chance(0.5))
                            records[child].suits[cls] |= mask;
                }
            }
        }
    }

    void grow(unsigned int parent, int depth) {
        if (depth >= 4)
            return;
        const bool parentIsRange = records[parent].isRange;
        const int count = uniform(0, 4 - depth);
        std::vector<unsigned int> children;
        for (int i = 0; i < count; ++i) {
            const bool folder = chance(0.2);
            const bool exclusive = chance(parentIsRange ? 0.6 : 0.3);
            const unsigned int mode = chance(0.5) ? TreeRangeNode::Overwrite : TreeRangeNode::Block;
            children.push_back(addRecord(parent, folder, exclusive, mode));
        }
        assignSuits(parent, children);
        for (unsigned int child : children)
            grow(child, depth + 1);
    }

    std::mt19937 generator;
    std::vector<unsigned int> possible;
};

} // namespace

TEST(RangeTreeRoundTrip, RandomTreesReadBackEqual) {
    int ranges = 0, exclusive = 0, folders = 0, overwrite = 0, colours = 0;
    for (unsigned int seed = 1; seed <= 300; ++seed) {
        const RandomTree random(seed);
        Tree tree;
        tree.RestoreMemento(random.records);
        ASSERT_EQ(mementoOf(tree), random.records) << "seed " << seed;
        const std::string text = tree.saveToText();
        Tree read;
        read.restoreFromText(text);
        // The file lists nodes depth first, and reading numbers them in that order.
        ASSERT_EQ(mementoOf(read), preorder(random.records)) << "seed " << seed << "\n" << text;
        EXPECT_EQ(read.saveToText(), text) << "seed " << seed;
        for (const NodeMemento& record : random.records) {
            ranges += record.isRange;
            folders += !record.isRange;
            exclusive += record.exclusive;
            overwrite += record.exclusive && record.insertMode == TreeRangeNode::Overwrite;
            colours += record.color.usesColor;
        }
    }
    // The generator really produced every kind of node.
    EXPECT_GT(ranges, 1000);
    EXPECT_GT(folders, 200);
    EXPECT_GT(exclusive, 300);
    EXPECT_GT(overwrite, 150);
    EXPECT_GT(colours, 300);
}

TEST(RangeTreeRoundTrip, ASubtreeInsertedElsewhereReadsBackEqual) {
    for (unsigned int seed = 1000; seed < 1100; ++seed) {
        const RandomTree random(seed);
        Tree tree;
        tree.RestoreMemento(random.records);
        // The first top-level node with its subtree, dropped below a new folder.
        const std::string text = tree.saveToText(0);
        Tree target;
        target.addFolder(none, "drop here");
        target.InsertFromMemento(text, 0, 0);
        Tree expected;
        expected.restoreFromText(text);
        std::vector<NodeMemento> got = mementoOf(target);
        ASSERT_EQ(got.size(), mementoOf(expected).size() + 1) << seed;
        // Shift the expected records by the folder in front.
        std::vector<NodeMemento> shifted = mementoOf(expected);
        for (NodeMemento& record : shifted) {
            record.parent = record.parent == none ? 0 : record.parent + 1;
            for (unsigned int& child : record.children)
                ++child;
        }
        EXPECT_EQ(std::vector<NodeMemento>(got.begin() + 1, got.end()), shifted) << seed;
        EXPECT_EQ(got[0].children, std::vector<unsigned int>{1});
    }
}
