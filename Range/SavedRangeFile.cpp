#include "Range/SavedRangeFile.h"

#include "Range/LegacyTreeStream.h"
#include "Range/RangeSerializeError.h"
#include "Range/RangeStringOperations.h"
#include "Range/Tree.h"
#include "Range/TreeFolderNode.h"
#include "Range/TreeNode.h"
#include "Range/TreeRangeNode.h"
#include "Range/TreeSerialization.h"

#include <QByteArray>
#include <QDataStream>
#include <rapidxml/rapidxml.hpp>

#include <algorithm>
#include <cctype>
#include <sstream>
#include <utility>

namespace Range {
namespace {

constexpr unsigned int noNode = Tree::noNode;

void requireReadable(const std::vector<std::pair<std::string, std::string>>& texts) {
    for (const auto& entry : texts) {
        const std::vector<std::string> bad = SavedRangeFile::unreadableTokens(entry.second);
        if (bad.empty())
            continue;
        std::string list;
        for (const std::string& token : bad)
            list += (list.empty() ? "" : ", ") + token;
        throw Exception::RangeSerializeError("The range \"" + entry.first +
                                             "\" holds text that is no range: " + list + ".");
    }
}

void readXml(const QByteArray& bytes, Tree& staging) {
    const std::string text(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    try {
        std::istringstream check(text);
        requireReadable(TreeSerialization::rangeTexts(check));
        std::istringstream stream(text);
        TreeSerialization::readInto(stream, staging, 0, noNode);
    } catch (const rapidxml::parse_error& error) {
        throw Exception::RangeSerializeError(std::string("The XML is damaged: ") + error.what() +
                                             ".");
    }
}

std::vector<unsigned int> readLegacy(const QByteArray& bytes, Tree& staging) {
    QDataStream in(bytes);
    LegacyTreeStream::Report report;
    try {
        report = LegacyTreeStream::read(in, staging, 0);
    } catch (const Exception::RangeSerializeError& error) {
        std::string reason = error.message();
        if (!reason.empty())
            reason[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(reason[0])));
        throw Exception::RangeSerializeError(
            "The file is not XML, and not a tree of the old binary format either: " + reason);
    }
    requireReadable(report.rangeTexts);
    return report.openNodes;
}

// A zero character would end the file text early when the tree is written again.
void dropZeroCharacters(Tree& tree) {
    for (unsigned int i = 0; i < tree.count(); ++i) {
        TreeNode* node = tree.node(i);
        std::string& name = node->IsFolder() ? static_cast<TreeFolderNode*>(node)->name
                                             : static_cast<TreeRangeNode*>(node)->name;
        name.erase(std::remove(name.begin(), name.end(), '\0'), name.end());
    }
}

// Levels below the first level of `root`'s children; a range below a range is no level.
unsigned int levelBelow(const TreeNode& parent, const TreeNode& child, unsigned int parentLevel) {
    return parent.IsRange() && child.IsRange() ? parentLevel : parentLevel + 1;
}

} // namespace

SavedRangeFile::Import SavedRangeFile::read(const QByteArray& bytes, Tree& staging) {
    if (staging.count() != 0)
        throw std::string("Staging tree is not empty.");
    staging.addFolder(noNode, "");
    if (bytes.isEmpty())
        throw Exception::RangeSerializeError("File to read is not existing or empty.");
    Import result;
    if (bytes.at(0) == '<')
        readXml(bytes, staging);
    else
        result.openNodes = readLegacy(bytes, staging);
    dropZeroCharacters(staging);
    result.trimmed = trimToTwoLevels(staging, 0);
    if (result.trimmed) {
        // Open nodes were numbered before the removal; keep those that are left.
        std::vector<unsigned int> kept;
        for (unsigned int open : result.openNodes)
            if (open < staging.count())
                kept.push_back(open);
        result.openNodes = kept;
    }
    return result;
}

std::string SavedRangeFile::write(const Tree& tree, unsigned int parent) {
    std::ostringstream text;
    TreeSerialization::writeNodes(text, tree, tree.node(parent)->children);
    return text.str();
}

bool SavedRangeFile::trimToTwoLevels(Tree& tree, unsigned int root) {
    std::vector<unsigned int> tooDeep;
    struct Entry {
        unsigned int node;
        unsigned int level;
    };
    std::vector<Entry> work;
    for (unsigned int child : tree.node(root)->children)
        work.push_back({child, 1});
    while (!work.empty()) {
        const Entry entry = work.back();
        work.pop_back();
        const TreeNode& node = *tree.node(entry.node);
        for (unsigned int child : node.children) {
            const unsigned int level = levelBelow(node, *tree.node(child), entry.level);
            if (level > 2)
                tooDeep.push_back(child);
            else
                work.push_back({child, level});
        }
    }
    if (tooDeep.empty())
        return false;
    tree.removeList(tooDeep);
    return true;
}

std::vector<std::string> SavedRangeFile::unreadableTokens(const std::string& text) {
    std::vector<std::string> bad;
    std::string token;
    std::istringstream stream(text);
    while (std::getline(stream, token, ',')) {
        std::string repaired = token;
        normalize(repaired);
        bool blank = true;
        for (char c : token)
            blank = blank && std::isspace(static_cast<unsigned char>(c));
        if (repaired.empty() && !blank)
            bad.push_back(token);
    }
    return bad;
}

} // namespace Range
