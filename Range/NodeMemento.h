#pragma once

#include "Range/GroupColor.h"

#include <string>
#include <vector>

namespace Range {

// The state of one tree node as a plain record; a tree's memento is one record per node in
// index order (Tree::CreateMemento). Indices in `parent` and `children` are node indices of
// that tree, 0xFFFFFFFF meaning none. Suit masks are kept exactly: restoring runs no filter.
struct NodeMemento {
    bool isRange = false;
    unsigned int parent = 0xFFFFFFFF;
    std::vector<unsigned int> children;
    std::string name;
    // Ranges only: the 169 suit masks in element order (HandRange::suitsVector).
    std::vector<unsigned int> suits;
    GroupColor color;
    bool exclusive = false;
    // 0 overwrite, 1 block; 0 unless `exclusive`.
    unsigned int insertMode = 0;

    bool operator==(const NodeMemento& other) const {
        return isRange == other.isRange && parent == other.parent && children == other.children &&
               name == other.name && suits == other.suits && color == other.color &&
               exclusive == other.exclusive && insertMode == other.insertMode;
    }
    bool operator!=(const NodeMemento& other) const { return !(*this == other); }
};

} // namespace Range
