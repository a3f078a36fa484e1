#include "evfe/RangeGroupSet.h"

#include "Range/Assertion.h"
#include "Range/GroupColor.h"
#include "Range/NodeMemento.h"
#include "Range/Tree.h"
#include "Range/TreeRangeNode.h"

#include <vector>

RangeGroupSet::RangeGroupSet() : tree(std::make_unique<Range::Tree>()) {}

RangeGroupSet::RangeGroupSet(const RangeGroupSet& other) : tree(std::make_unique<Range::Tree>()) {
    if (!other.tree)
        return;
    // The record list keeps the suit masks exactly and runs no filter, so the copy holds
    // what the original holds, even where a caller assigned suits without filtering.
    std::vector<Range::NodeMemento> memento;
    other.tree->CreateMemento(memento, Range::Tree::noNode);
    tree->RestoreMemento(memento, Range::Tree::noNode);
}

RangeGroupSet::RangeGroupSet(RangeGroupSet&& other) noexcept = default;

RangeGroupSet& RangeGroupSet::operator=(const RangeGroupSet& other) {
    if (this != &other) {
        RangeGroupSet copy(other);
        tree = std::move(copy.tree);
    }
    return *this;
}

RangeGroupSet& RangeGroupSet::operator=(RangeGroupSet&& other) noexcept = default;

RangeGroupSet::~RangeGroupSet() = default;

Range::TreeRangeNode* RangeGroupSet::addGroup(unsigned int parent, const std::string& name) {
    if (!tree)
        tree = std::make_unique<Range::Tree>();
    if (parent != noGroup && parent >= tree->count()) {
        QV_ASSERT(false, "Parent group not found.");
        parent = noGroup;
    }
    // Non-exclusive: the groups of a line's actions may overlap. No colour is picked; the
    // groups a line creates are plain, and the user may colour them later.
    return tree->addRange(parent, name, false, Range::GroupColor(), Range::Tree::noNode);
}

std::size_t RangeGroupSet::count() const {
    return tree ? tree->count() : 0;
}

Range::TreeRangeNode* RangeGroupSet::group(unsigned int index) {
    if (index >= count()) {
        QV_ASSERT(false, "Group index out of range.");
        return nullptr;
    }
    // Every node of the set was added as a range.
    return tree->rangeNode(index);
}

const Range::TreeRangeNode* RangeGroupSet::group(unsigned int index) const {
    if (index >= count()) {
        QV_ASSERT(false, "Group index out of range.");
        return nullptr;
    }
    return tree->rangeNode(index);
}

unsigned int RangeGroupSet::indexOf(const Range::TreeRangeNode* group) const {
    if (group == nullptr || !tree || group->tree != tree.get() || group->index >= tree->count())
        return noGroup;
    // The node's own index, confirmed by the tree: a node made outside the tree may claim
    // it without being there.
    return tree->node(group->index) == group ? group->index : noGroup;
}
