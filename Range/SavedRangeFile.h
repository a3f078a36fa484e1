#pragma once

#include <string>
#include <vector>

class QByteArray;

namespace Range {

class Tree;

// The file of saved ranges (.qvt) as the hand selection dialog imports and exports it: the
// XML of TreeSerialization with one element per folder at the top, or, for files of earlier
// versions, the binary stream of LegacyTreeStream. The first byte tells them apart: XML
// starts with '<'.
//
// The tree of saved ranges has two levels, folders and the ranges in them; the groups of a
// saved range are range nodes below it and count as no level of their own. Deeper nodes of
// a file (a folder in a folder in a folder, edited by hand) are cut off on import.
//
// An import is all or nothing: it reads into a tree of its own, which the caller copies
// from only when the whole file could be read.
class SavedRangeFile {
public:
    struct Import {
        // Nodes below the second level were removed; the user is to be warned.
        bool trimmed = false;
        // Nodes (of the staging tree) that an old binary file stored as open.
        std::vector<unsigned int> openNodes;
    };

    // Reads the bytes of a tree file into `staging`, which must be empty: node 0 becomes a
    // folder without name whose children are the file's top-level nodes. Range texts that
    // hold a token the range grammar cannot read make the file count as damaged. Throws
    // Range::Exception::RangeSerializeError with a sentence for the user when the file
    // cannot be read as a whole (empty, not well-formed XML, an unreadable range text, an
    // old stream cut short or unknown); `staging` is then to be dropped.
    static Import read(const QByteArray& bytes, Tree& staging);

    // The file text whose top-level elements are the children of node `parent`, in order.
    static std::string write(const Tree& tree, unsigned int parent);

    // Removes every node below the second level under `root` (whose children are the first
    // level); a range below a range is a group of it and no new level. True if any went.
    static bool trimToTwoLevels(Tree& tree, unsigned int root);

    // The tokens of a free range text (split at commas) that the range grammar drops.
    static std::vector<std::string> unreadableTokens(const std::string& text);
};

} // namespace Range
