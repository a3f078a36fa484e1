#include "Range/LegacyTreeStream.h"

#include "Range/GroupColor.h"
#include "Range/HandRangeStringManipulator.h"
#include "Range/RangeSerializeError.h"
#include "Range/Tree.h"
#include "Range/TreeFolderNode.h"
#include "Range/TreeRangeNode.h"

#include <QDataStream>
#include <QString>

namespace Range {
namespace LegacyTreeStream {
namespace {

constexpr unsigned int noNode = Tree::noNode;
// Earlier versions nested folders two deep at the most; far deeper data is damage, and is
// refused before the recursion could exhaust the stack.
constexpr int maximumNesting = 64;

class Reader {
public:
    Reader(QDataStream& in, Tree& tree) : in(in), tree(tree) {}

    void readItems(unsigned int parent) {
        while (!in.atEnd())
            readItem(parent, 0);
    }

    Report report;

private:
    void require() {
        if (in.status() != QDataStream::Ok)
            throw Exception::RangeSerializeError(
                "The old tree data ends in the middle of an item.");
    }

    QString readString() {
        QString value;
        in >> value;
        require();
        return value;
    }
    // Names and texts without zero characters, which would end a file text written later.
    std::string readText() { return readString().remove(QChar(0)).toStdString(); }
    bool readBool() {
        bool value = false;
        in >> value;
        require();
        return value;
    }
    qint32 readCount(const char* what) {
        qint32 value = 0;
        in >> value;
        require();
        if (value < 0)
            throw Exception::RangeSerializeError(
                std::string("The old tree data holds a negative ") + what + ".");
        return value;
    }

    void readItem(unsigned int parent, int depth) {
        if (depth >= maximumNesting)
            throw Exception::RangeSerializeError("The old tree data is nested too deeply.");
        const QString tag = readString();
        if (tag != QStringLiteral("item"))
            throw Exception::RangeSerializeError("The old tree data holds an unknown entry \"" +
                                                 tag.left(40).toStdString() + "\".");
        const std::string name = readText();
        const bool isRange = readBool();
        const bool isOpen = readBool();
        unsigned int added;
        if (isRange) {
            added = readRange(parent, name);
        } else {
            added = tree.addFolder(parent, name)->index;
        }
        if (isOpen)
            report.openNodes.push_back(added);
        const qint32 children = readCount("number of children");
        for (qint32 i = 0; i < children; ++i)
            readItem(added, depth + 1);
    }

    unsigned int readRange(unsigned int parent, const std::string& name) {
        readCount("group number");
        const std::string text = readText();
        TreeRangeNode* whole = tree.addRange(parent, name, false, GroupColor());
        const unsigned int wholeIndex = whole->index;
        HandRangeStringManipulator(whole->handRange).setFree(text);
        report.rangeTexts.emplace_back(name, text);

        const qint32 groups = readCount("number of groups");
        readString();
        const bool exclusive = readBool();
        const unsigned int insertMode =
            readBool() ? TreeRangeNode::Block : TreeRangeNode::Overwrite;
        // Node of each group by its number; number 0 is the whole range.
        std::vector<unsigned int> numbered = {wholeIndex};
        for (qint32 i = 0; i < groups; ++i) {
            const std::string groupName = readText();
            const std::string groupText = readText();
            qint32 groupParent = 0;
            in >> groupParent;
            require();
            if (groupParent < 0 || groupParent > i)
                throw Exception::RangeSerializeError("The old tree data has a group \"" +
                                                     groupName +
                                                     "\" below a group that does not exist.");
            const unsigned int below = numbered[static_cast<std::size_t>(groupParent)];
            const std::vector<GroupColor> free = tree.freeColors(below);
            const GroupColor color = free.empty() ? GroupColor() : free.front();
            TreeRangeNode* group =
                exclusive ? tree.addExclusiveRange(below, groupName, insertMode, false, color)
                          : tree.addRange(below, groupName, false, color);
            numbered.push_back(group->index);
            HandRangeStringManipulator(group->handRange).setFree(groupText);
            report.rangeTexts.emplace_back(groupName, groupText);
        }
        return wholeIndex;
    }

    QDataStream& in;
    Tree& tree;
};

} // namespace

Report read(QDataStream& in, Tree& tree, unsigned int parent) {
    Reader reader(in, tree);
    reader.readItems(parent);
    return reader.report;
}

} // namespace LegacyTreeStream
} // namespace Range
