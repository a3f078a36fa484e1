#pragma once

#include <boost/noncopyable.hpp>

#include <vector>

namespace Range {

class Tree;

// A node of a Range::Tree. Nodes refer to each other by index into the tree's node list,
// never by pointer; 0xFFFFFFFF means no node. Indices are dense and change when a node
// with a lower index is removed. Nodes are created, renumbered and deleted by the tree only.
class TreeNode : private boost::noncopyable {
public:
    static constexpr unsigned int noNode = 0xFFFFFFFF;

    TreeNode(Tree* tree, unsigned int index, unsigned int parent)
        : tree(tree), index(index), parent(parent) {}

    virtual bool IsFolder() const = 0;
    virtual bool IsRange() const = 0;
    virtual ~TreeNode() = default;

    // The owning tree; it must not move in memory while nodes exist.
    Tree* tree;
    // Own place in the tree's node list.
    unsigned int index;
    // Index of the parent, noNode at top level.
    unsigned int parent;
    // Indices of the children, in display order.
    std::vector<unsigned int> children;
};

} // namespace Range
