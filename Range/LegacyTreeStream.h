#pragma once

#include <string>
#include <utility>
#include <vector>

class QDataStream;

namespace Range {

class Tree;

// The tree of saved ranges as earlier versions of the hand selection dialog stored it, in
// the settings ("HandSelectionTreeWithGroups") and in exported tree files: a QDataStream of
// tagged items, read to the stream's end. Only read, never written.
//
//   stream := item*
//   item   := QString "item", QString name, bool isRange, bool isOpen,
//             [range, if isRange], qint32 childCount, item x childCount
//   range  := qint32 0 (the number of the first group: the whole range), QString its text,
//             qint32 groupCount, QString (unused), bool exclusive, bool block,
//             group x groupCount
//   group  := QString name, QString text, qint32 parent
//
// A group's parent is 0 for the whole range or the number (1 and up) of a group that came
// before it. The groups become range nodes below the item's range node: exclusive or not by
// the item's flag, in block or overwrite mode by the other, each with the first standard
// colour its family does not use yet (none when all are taken). Range texts are
// read as free text, so what cannot be read is dropped; the texts are handed back so that a
// caller can refuse such a stream.
namespace LegacyTreeStream {

struct Report {
    // Nodes of the items whose `isOpen` was set.
    std::vector<unsigned int> openNodes;
    // Name and text of every range and group, in stream order.
    std::vector<std::pair<std::string, std::string>> rangeTexts;
};

// Adds every item of the stream below `parent` (0xFFFFFFFF: at top level), in stream order.
// A stream that ends inside an item, holds another tag than "item", a negative count, a
// group parent that names no earlier group, or items nested more than 64 deep throws
// Range::Exception::RangeSerializeError with a sentence saying so; the nodes added before
// stay in the tree.
Report read(QDataStream& in, Tree& tree, unsigned int parent);

} // namespace LegacyTreeStream
} // namespace Range
