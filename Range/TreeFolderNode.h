#pragma once

#include "Range/TreeNode.h"

#include <string>

namespace Range {

// A folder of saved ranges: a name and children, no range.
class TreeFolderNode : public TreeNode {
public:
    TreeFolderNode(Tree* tree, unsigned int index, unsigned int parent, std::string name)
        : TreeNode(tree, index, parent), name(std::move(name)) {}

    bool IsFolder() const override { return true; }
    bool IsRange() const override { return false; }

    std::string name;
};

} // namespace Range
