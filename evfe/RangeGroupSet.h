#pragma once

#include <cstddef>
#include <memory>
#include <string>

namespace Range {
class Tree;
class TreeRangeNode;
} // namespace Range

// The range groups of one player inside a line variant: an indexed list of named
// Range::TreeRangeNode groups with a parent relation, held in a Range::Tree of its own. Group
// 0 is the player's full range (no parent, empty name); every action of that player owns one
// child group of it, without a name and without a colour. Groups are plain, non-exclusive
// ranges of the tree, so a child never holds a combination that its parent lacks, and
// shrinking a parent shrinks its children at once.
//
// The set only ever appends groups and never reorders or removes them, so an index and a
// group pointer stay valid as long as the set lives. Whoever edits the groups through their
// tree (`group(i)->tree`) must keep to that: a removal in the tree renumbers the groups and
// leaves the actions' `range` pointers dangling.
//
// The tree lives on the heap: its range nodes have their function objects bound to the
// tree's address, and moving a set keeps tree and groups where they are, so the `range`
// pointers of the actions stay valid when a variant is moved. A moved-from set is empty.
// Copying is deep and exact (through the tree's memento, which runs no filter): the copy's
// groups are new nodes of a new tree, found again in the copy by `indexOf` on the original.
//
// Main thread only, like the tree.
class RangeGroupSet {
public:
    static constexpr unsigned int noGroup = 0xFFFFFFFF;

    RangeGroupSet();
    RangeGroupSet(const RangeGroupSet& other);
    RangeGroupSet(RangeGroupSet&& other) noexcept;
    RangeGroupSet& operator=(const RangeGroupSet& other);
    RangeGroupSet& operator=(RangeGroupSet&& other) noexcept;
    ~RangeGroupSet();

    // Appends a group with an empty range below `parent` (noGroup for a top-level group)
    // and returns it. A parent that is not in the set asserts "Parent group not found." and
    // the group is made top-level.
    Range::TreeRangeNode* addGroup(unsigned int parent, const std::string& name);

    std::size_t count() const;
    bool isEmpty() const { return count() == 0; }

    // The group at `index`; an index outside the set asserts "Group index out of range."
    // and gives nullptr.
    Range::TreeRangeNode* group(unsigned int index);
    const Range::TreeRangeNode* group(unsigned int index) const;

    // The index of a group of this set, or noGroup if `group` is not one of them (nullptr,
    // or a node of another tree).
    unsigned int indexOf(const Range::TreeRangeNode* group) const;

private:
    // Null only in a moved-from set.
    std::unique_ptr<Range::Tree> tree;
};
