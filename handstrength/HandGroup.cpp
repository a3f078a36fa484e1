#include "handstrength/HandGroup.h"

#include "handstrength/HandGroupRowRequest.h"
#include "handstrength/HandStrengthNames.h"

#include <algorithm>
#include <limits>

void HandGroup::addRow(const HandGroupRowRequest& request) {
    HandGroupRow row;
    row.key = request.key;
    row.combinations1 = request.combinations1;
    row.combinations2 = request.combinations2;
    if (request.parentKey == HandStrengthKey()) {
        row.parent = HandGroupRow::noParent;
        row.visible = true;
    } else {
        const std::size_t parentIndex = indexOf(request.parentKey);
        if (parentIndex == npos)
            throw std::string("Group does not contain parental hand.");
        row.parent = static_cast<std::uint32_t>(parentIndex);
        row.visible = false;
    }
    rows.push_back(row);
}

void HandGroup::removeChildren(const HandStrengthKey& key) {
    const std::size_t index = indexOf(key);
    if (index == npos)
        throw std::string("Parent hand strength detail not found.");

    // A row cannot outlive its parent, so each child goes with its whole subtree.
    std::vector<bool> removed(rows.size(), false);
    for (std::size_t below : descendantsOf(index))
        removed[below] = true;

    std::vector<std::uint32_t> newIndex(rows.size(), HandGroupRow::noParent);
    std::uint32_t next = 0;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (!removed[i])
            newIndex[i] = next++;
    }

    std::vector<HandGroupRow> kept;
    kept.reserve(next);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (removed[i])
            continue;
        HandGroupRow row = rows[i];
        // A broken link (out of range) stays as it was read; a link into the removed part
        // can only come from a cycle and makes the row a root.
        if (row.parent < rows.size())
            row.parent = newIndex[row.parent];
        kept.push_back(row);
    }
    rows.swap(kept);
}

unsigned int HandGroup::depth(std::size_t index) const {
    unsigned int steps = 0;
    std::size_t current = index;
    // A cycle in stored data would never reach a root: no tree is deeper than its rows.
    while (current < rows.size() && steps < rows.size()) {
        const std::uint32_t parent = parentOf(current);
        if (parent == HandGroupRow::noParent)
            break;
        current = parent;
        ++steps;
    }
    return steps;
}

void HandGroup::setCombinations(const HandStrengthKey& key, std::uint32_t combinations1,
                                std::uint32_t combinations2) {
    for (HandGroupRow& row : rows) {
        if (row.key == key) {
            row.combinations1 = combinations1;
            row.combinations2 = combinations2;
        }
    }
}

std::size_t HandGroup::indexOf(const HandStrengthKey& key) const {
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (rows[i].key == key)
            return i;
    }
    return npos;
}

std::uint32_t HandGroup::parentOf(std::size_t index) const {
    if (index >= rows.size())
        return HandGroupRow::noParent;
    const std::uint32_t parent = rows[index].parent;
    if (parent >= rows.size() || parent == index)
        return HandGroupRow::noParent;
    return parent;
}

std::vector<std::size_t> HandGroup::childrenOf(std::size_t index) const {
    std::vector<std::size_t> children;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (i != index && parentOf(i) == index)
            children.push_back(i);
    }
    return children;
}

std::vector<std::size_t> HandGroup::descendantsOf(std::size_t index) const {
    std::vector<std::size_t> result;
    if (index >= rows.size())
        return result;
    std::vector<bool> seen(rows.size(), false);
    seen[index] = true;
    // Explicit stack instead of recursion: stored trees are not trusted to be shallow.
    std::vector<std::size_t> pending{index};
    while (!pending.empty()) {
        const std::size_t current = pending.back();
        pending.pop_back();
        const std::vector<std::size_t> children = childrenOf(current);
        for (auto child = children.rbegin(); child != children.rend(); ++child) {
            if (seen[*child])
                continue;
            seen[*child] = true;
            pending.push_back(*child);
        }
        if (current != index)
            result.push_back(current);
    }
    return result;
}

void HandGroup::resetEvaluations() {
    evaluations.total = 0;
    evaluations.details.clear();
    for (const HandGroupRow& row : rows) {
        if (detailOf(row.key) != nullptr)
            continue;
        DetailHandEvaluation detail;
        detail.key = row.key;
        detail.name = handStrengthName(row.key);
        detail.percent1 = std::numeric_limits<float>::quiet_NaN();
        detail.percent2 = std::numeric_limits<float>::quiet_NaN();
        evaluations.details.push_back(std::move(detail));
    }
}

const DetailHandEvaluation* HandGroup::detailOf(const HandStrengthKey& key) const {
    auto found = std::find_if(evaluations.details.begin(), evaluations.details.end(),
                              [&key](const DetailHandEvaluation& d) { return d.key == key; });
    return found == evaluations.details.end() ? nullptr : &*found;
}

DetailHandEvaluation* HandGroup::detailOf(const HandStrengthKey& key) {
    return const_cast<DetailHandEvaluation*>(static_cast<const HandGroup*>(this)->detailOf(key));
}
