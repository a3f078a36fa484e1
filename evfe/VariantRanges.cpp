#include "evfe/VariantRanges.h"

#include "Range/HandRange.h"
#include "Range/Tree.h"
#include "Range/TreeRangeNode.h"
#include "evfe/LineVariant.h"

namespace VariantRanges {
namespace {

void assignFullRange(RangeGroupSet& groups, const Range::HandRange& range) {
    if (groups.isEmpty())
        groups.addGroup(RangeGroupSet::noGroup, std::string());
    // Plain assignment: the group keeps its own filter and nobody is told, so the action
    // groups below stay as they are.
    groups.group(0)->handRange = range;
}

const Range::TreeRangeNode* rangeParent(const Range::TreeRangeNode& group) {
    if (group.tree == nullptr || group.parent == Range::Tree::noNode)
        return nullptr;
    const Range::TreeNode* parent = group.tree->node(group.parent);
    return parent != nullptr && parent->IsRange() ? static_cast<const Range::TreeRangeNode*>(parent)
                                                  : nullptr;
}

} // namespace

void assignFullRanges(LineVariant& variant, const Range::HandRange& player1,
                      const Range::HandRange& player2) {
    const bool player1First = variant.isPlayer1FirstToAct();
    assignFullRange(variant.firstActorRanges, player1First ? player1 : player2);
    assignFullRange(variant.secondActorRanges, player1First ? player2 : player1);
}

bool isInsideParent(const LineAction& action) {
    if (action.range == nullptr)
        return false;
    const Range::TreeRangeNode* parent = rangeParent(*action.range);
    if (parent == nullptr)
        return true;
    const Range::HandRange& own = action.range->handRange;
    const Range::HandRange& outer = parent->handRange;
    for (const Range::Element& element : own) {
        if (element.suits == 0)
            continue;
        const auto held = outer.find(element.values, element.suited);
        const unsigned int allowed = held == outer.end() ? 0u : held->suits;
        if ((element.suits & ~allowed) != 0)
            return false;
    }
    return true;
}

Range::HandRange parentRemainder(const LineVariant& variant, std::size_t index) {
    if (index >= variant.actions.size() || variant.actions[index].range == nullptr)
        return Range::HandRange();
    return parentRemainder(*variant.actions[index].range);
}

Range::HandRange parentRemainder(const Range::TreeRangeNode& group) {
    const Range::TreeRangeNode* parent = rangeParent(group);
    if (parent == nullptr)
        return Range::HandRange();
    Range::HandRange remainder(parent->handRange);
    for (unsigned int sibling : group.tree->siblings(group)) {
        const Range::TreeNode* node = group.tree->node(sibling);
        if (node != nullptr && node->IsRange())
            remainder -= static_cast<const Range::TreeRangeNode*>(node)->handRange;
    }
    return remainder;
}

} // namespace VariantRanges
