#pragma once

#include "Range/GroupColor.h"
#include "Range/HandRange.h"
#include "Range/TreeNode.h"

#include <string>

namespace Range {

// A named range of the tree: a player's range, one of its groups, or a saved range.
//
// The tree binds `handRange`'s suitFilter and changeNotifier to this node when it creates
// the node (Tree::installFunctions): a child stays inside a range parent, and exclusive
// siblings push each other out. Assigning another range to `handRange` with operator=
// copies suits without filtering; use the range's own changing operations (or
// HandRangeStringManipulator) to have the group rules applied.
class TreeRangeNode : public TreeNode {
public:
    // Values of insertMode(): which of two exclusive siblings keeps a combination both want.
    static constexpr unsigned int Overwrite = 0; // the newest change wins
    static constexpr unsigned int Block = 1;     // the earlier holder wins

    TreeRangeNode(Tree* tree, unsigned int index, unsigned int parent, std::string name,
                  bool exclusive, unsigned int insertMode)
        : TreeNode(tree, index, parent), name(std::move(name)), exclusive(exclusive),
          insertMode_(insertMode) {}

    bool IsFolder() const override { return false; }
    bool IsRange() const override { return true; }

    // Only meaningful for an exclusive node; otherwise asserts "Range not exclusive." and
    // returns the stored value all the same.
    unsigned int insertMode() const;

    std::string name;
    HandRange handRange;
    GroupColor color;
    // Takes part in exclusion among its siblings. The function objects follow the flag and
    // the insert mode as they were when the tree created the node; changing the flag later
    // does not rewire them.
    bool exclusive;

private:
    unsigned int insertMode_;
};

} // namespace Range
