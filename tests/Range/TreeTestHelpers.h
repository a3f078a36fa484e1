#pragma once

#include "Range/GroupColor.h"
#include "Range/HandRange.h"
#include "Range/HandRangeStringManipulator.h"
#include "Range/NodeMemento.h"
#include "Range/Tree.h"
#include "Range/TreeNode.h"

#include <ostream>
#include <string>
#include <vector>

constexpr unsigned int none = Range::Tree::noNode;

// Technical text of a node's range (container order), e.g. "AA,AKs".
inline std::string technical(const Range::Tree& tree, unsigned int index) {
    return Range::HandRangeStringReader(tree.handRange(index)).technicalText();
}

// Sets a node's range from free text through its filter and notifier.
inline void setText(Range::Tree& tree, unsigned int index, const std::string& text) {
    Range::HandRangeStringManipulator(tree.handRange(index)).setFree(text);
}

inline void addText(Range::Tree& tree, unsigned int index, const std::string& text) {
    Range::HandRangeStringManipulator(tree.handRange(index)).addFree(text);
}

inline std::vector<Range::NodeMemento> mementoOf(const Range::Tree& tree) {
    std::vector<Range::NodeMemento> records;
    tree.CreateMemento(records);
    return records;
}

// The records renumbered in the order a tree file lists them: depth first from the top-level
// nodes in index order, children in display order. Reading a file numbers nodes so.
inline std::vector<Range::NodeMemento> preorder(const std::vector<Range::NodeMemento>& records) {
    std::vector<unsigned int> order;
    std::vector<unsigned int> stack;
    for (unsigned int i = static_cast<unsigned int>(records.size()); i-- > 0;)
        if (records[i].parent == none)
            stack.push_back(i);
    while (!stack.empty()) {
        const unsigned int current = stack.back();
        stack.pop_back();
        order.push_back(current);
        const auto& children = records[current].children;
        for (auto child = children.rbegin(); child != children.rend(); ++child)
            stack.push_back(*child);
    }
    std::vector<unsigned int> newIndex(records.size(), none);
    for (unsigned int i = 0; i < order.size(); ++i)
        newIndex[order[i]] = i;
    std::vector<Range::NodeMemento> result;
    for (unsigned int old : order) {
        Range::NodeMemento record = records[old];
        if (record.parent != none)
            record.parent = newIndex[record.parent];
        for (unsigned int& child : record.children)
            child = newIndex[child];
        result.push_back(record);
    }
    return result;
}

inline std::vector<unsigned int> childrenOf(const Range::Tree& tree, unsigned int index) {
    return tree.node(index)->children;
}

inline Range::GroupColor rgbColor(int r1, int g1, int b1, int r2, int g2, int b2,
                                  bool usesColor = true) {
    Range::GroupColor color;
    color.colorFrom = {r1, g1, b1};
    color.colorTo = {r2, g2, b2};
    color.usesColor = usesColor;
    return color;
}

namespace Range {

inline void PrintTo(const GroupColor& color, std::ostream* out) {
    *out << "{" << color.colorFrom.red << "," << color.colorFrom.green << ","
         << color.colorFrom.blue << " -> " << color.colorTo.red << "," << color.colorTo.green << ","
         << color.colorTo.blue << (color.usesColor ? " used}" : " unused}");
}

inline void PrintTo(const NodeMemento& record, std::ostream* out) {
    *out << (record.isRange ? "range" : "folder") << " '";
    for (unsigned char c : record.name) {
        if (c < 0x20 || c >= 0x7F) {
            const char* digits = "0123456789ABCDEF";
            *out << "\\x" << digits[c >> 4] << digits[c & 15];
        } else {
            *out << static_cast<char>(c);
        }
    }
    *out << "' parent " << record.parent << " children [";
    for (unsigned int child : record.children)
        *out << child << " ";
    *out << "]";
    if (record.isRange) {
        HandRange range;
        if (record.suits.size() == 169)
            range.setSuitsVector(record.suits);
        *out << " text '" << HandRangeStringReader(range).technicalText() << "' ";
        PrintTo(record.color, out);
        *out << (record.exclusive ? " exclusive " : " plain ") << record.insertMode;
    }
}

} // namespace Range
