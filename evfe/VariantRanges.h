#pragma once

#include <cstddef>

class LineVariant;
struct LineAction;
namespace Range {
class HandRange;
class TreeRangeNode;
} // namespace Range

// The range groups of a variant as the page and the file reader see them: group 0 of each
// set is that player's full range of the scenario, and each action's group lies below it.
namespace VariantRanges {

// Makes group 0 of both sets the players' full ranges: the first actor's in
// `firstActorRanges`, the other player's in `secondActorRanges`. The ranges are copied as
// they are, without filtering the action groups below them: a group that no longer fits its
// parent stays as the user made it and shows as not inside its parent. A set without a group
// 0 gets one.
void assignFullRanges(LineVariant& variant, const Range::HandRange& player1,
                      const Range::HandRange& player2);

// Whether every combination of the action's group is also in its parent group. True for an
// action whose group has no range parent, false for one without a group.
bool isInsideParent(const LineAction& action);

// The parent group of action `index` without everything its sibling groups hold: what is left
// for this action. An empty range for an index outside the tree or an action without a range
// parent.
Range::HandRange parentRemainder(const LineVariant& variant, std::size_t index);
// The same for a group of a set: its parent without its siblings.
Range::HandRange parentRemainder(const Range::TreeRangeNode& group);

} // namespace VariantRanges
