#include "Range/Tree.h"

#include "Range/Assertion.h"
#include "Range/Element.h"
#include "Range/HandRange.h"
#include "Range/TreeFolderNode.h"
#include "Range/TreeNode.h"
#include "Range/TreeRangeNode.h"
#include "Range/TreeSerialization.h"

#include <algorithm>
#include <deque>
#include <limits>
#include <sstream>
#include <stdexcept>

namespace Range {

unsigned int TreeRangeNode::insertMode() const {
    QV_ASSERT(exclusive, "Range not exclusive.");
    return insertMode_;
}

Tree::Tree() = default;

Tree::~Tree() {
    clear();
}

void Tree::clear() {
    // The bound function objects point at nodes; no range is changed while deleting, so
    // none of them runs.
    for (TreeNode* node : nodes)
        delete node;
    nodes.clear();
}

// --- Access ---------------------------------------------------------------------------

template <class Node>
Node* Tree::typedNode(unsigned int index, const char* wrongKind) const {
    if (index >= nodes.size())
        throw std::string("Node index out of range.");
    Node* typed = dynamic_cast<Node*>(nodes[index]);
    if (typed == nullptr)
        throw std::string(wrongKind);
    return typed;
}

unsigned int Tree::count() const {
    return static_cast<unsigned int>(nodes.size());
}

TreeNode* Tree::node(unsigned int index) {
    return typedNode<TreeNode>(index, "Node index out of range.");
}

const TreeNode* Tree::node(unsigned int index) const {
    return typedNode<TreeNode>(index, "Node index out of range.");
}

TreeRangeNode* Tree::rangeNode(unsigned int index) {
    return typedNode<TreeRangeNode>(index, "Node is not a range.");
}

const TreeRangeNode* Tree::rangeNode(unsigned int index) const {
    return typedNode<TreeRangeNode>(index, "Node is not a range.");
}

HandRange& Tree::handRange(unsigned int index) {
    return rangeNode(index)->handRange;
}

const HandRange& Tree::handRange(unsigned int index) const {
    return rangeNode(index)->handRange;
}

std::vector<unsigned int> Tree::topLevelNodes() const {
    std::vector<unsigned int> result;
    for (const TreeNode* node : nodes)
        if (node->parent == noNode)
            result.push_back(node->index);
    return result;
}

std::vector<unsigned int> Tree::siblings(unsigned int index) const {
    const TreeNode* own = node(index);
    std::vector<unsigned int> result;
    if (own->parent == noNode || own->parent >= nodes.size())
        return result;
    for (unsigned int child : nodes[own->parent]->children)
        if (child != index)
            result.push_back(child);
    return result;
}

std::vector<unsigned int> Tree::siblings(const TreeNode& node) const {
    return siblings(node.index);
}

float Tree::shareOfParent(unsigned int index) const {
    return shareOfParent(*rangeNode(index));
}

float Tree::shareOfParent(const TreeRangeNode& node) const {
    if (node.parent >= nodes.size() || !nodes[node.parent]->IsRange())
        return std::numeric_limits<float>::quiet_NaN();
    const auto* parent = static_cast<const TreeRangeNode*>(nodes[node.parent]);
    return static_cast<float>(node.handRange.combinationCount()) /
           static_cast<float>(parent->handRange.combinationCount());
}

// --- Building -------------------------------------------------------------------------

void Tree::attachToParent(unsigned int index, unsigned int position) {
    const unsigned int parent = nodes[index]->parent;
    if (parent == noNode)
        return;
    std::vector<unsigned int>& children = nodes[parent]->children;
    if (position >= children.size())
        children.push_back(index);
    else
        children.insert(children.begin() + position, index);
}

TreeFolderNode* Tree::addFolder(unsigned int parent, const std::string& name,
                                unsigned int position) {
    if (parent != noNode)
        node(parent);
    auto* folder = new TreeFolderNode(this, count(), parent, name);
    nodes.push_back(folder);
    attachToParent(folder->index, position);
    return folder;
}

TreeRangeNode* Tree::addRange(unsigned int parent, const std::string& name, bool pickColor,
                              const GroupColor& color, unsigned int position) {
    return createRange(parent, name, false, TreeRangeNode::Overwrite, pickColor, color, position);
}

TreeRangeNode* Tree::addExclusiveRange(unsigned int parent, const std::string& name,
                                       unsigned int insertMode, bool pickColor,
                                       const GroupColor& color, unsigned int position) {
    return createRange(parent, name, true, insertMode, pickColor, color, position);
}

TreeRangeNode* Tree::createRange(unsigned int parent, const std::string& name, bool exclusive,
                                 unsigned int insertMode, bool pickColor, const GroupColor& color,
                                 unsigned int position) {
    if (parent != noNode)
        node(parent);
    QV_ASSERT(!exclusive || insertMode <= TreeRangeNode::Block, "Invalid insert mode.");
    auto* range = new TreeRangeNode(this, count(), parent, name, exclusive,
                                    exclusive ? insertMode : TreeRangeNode::Overwrite);
    nodes.push_back(range);
    installFunctions(*range);
    range->color = color;
    // The node joins its parent before the colour is picked, so that a failed pick leaves
    // a consistent tree; its own colour does not count against it.
    attachToParent(range->index, position);
    if (pickColor)
        range->color = GroupColor::firstFreeColor(familyColors(range->index, range->index));
    return range;
}

void Tree::installFunctions(TreeRangeNode& node) {
    TreeRangeNode* bound = &node;
    const bool block = node.exclusive && node.insertMode() == TreeRangeNode::Block;
    const bool overwrite = node.exclusive && !block;
    if (block)
        node.handRange.setSuitFilter(
            [this, bound](const Element& element) { return blockedBySiblings(*bound, element); });
    else
        node.handRange.setSuitFilter(
            [this, bound](const Element& element) { return inParent(*bound, element); });
    if (overwrite)
        node.handRange.setChangeNotifier([this, bound]() { pushOutSiblings(*bound); });
    else
        node.handRange.setChangeNotifier([this, bound]() { refilterChildren(*bound); });
}

// --- The group rules ------------------------------------------------------------------

namespace {

unsigned int suitsOfClass(const HandRange& range, const Element& element) {
    const auto own = range.find(element.values, element.suited);
    return own == range.end() ? 0 : own->suits;
}

} // namespace

unsigned int Tree::inParent(const TreeRangeNode& node, const Element& element) const {
    if (node.parent >= nodes.size() || !nodes[node.parent]->IsRange())
        return element.suits;
    const auto* parent = static_cast<const TreeRangeNode*>(nodes[node.parent]);
    return element.suits & suitsOfClass(parent->handRange, element);
}

unsigned int Tree::withoutSiblings(const TreeRangeNode& node, const Element& element) const {
    unsigned int suits = element.suits;
    if (node.parent >= nodes.size())
        return suits;
    for (unsigned int sibling : nodes[node.parent]->children) {
        if (sibling == node.index || sibling >= nodes.size() || !nodes[sibling]->IsRange())
            continue;
        suits &=
            ~suitsOfClass(static_cast<const TreeRangeNode*>(nodes[sibling])->handRange, element);
    }
    return suits;
}

unsigned int Tree::blockedBySiblings(const TreeRangeNode& node, const Element& element) const {
    Element remaining = element;
    remaining.suits = withoutSiblings(node, element);
    return inParent(node, remaining);
}

void Tree::refilterChildren(TreeRangeNode& node) {
    // Copied: a child's notifier may reach back here only through other nodes' lists.
    const std::vector<unsigned int> children = node.children;
    for (unsigned int child : children)
        if (child < nodes.size() && child != node.index && nodes[child]->IsRange())
            static_cast<TreeRangeNode*>(nodes[child])->handRange.refilter();
}

void Tree::pushOutSiblings(TreeRangeNode& node) {
    for (unsigned int index : siblings(node.index)) {
        if (index >= nodes.size() || !nodes[index]->IsRange())
            continue;
        auto* sibling = static_cast<TreeRangeNode*>(nodes[index]);
        HandRange& range = sibling->handRange;
        const HandRange::SuitFilter keptFilter = range.suitFilter();
        const HandRange::ChangeNotifier keptNotifier = range.changeNotifier();
        range.setSuitFilter([this, sibling](const Element& element) {
            return blockedBySiblings(*sibling, element);
        });
        range.setChangeNotifier([this, sibling]() { refilterChildren(*sibling); });
        range.refilter();
        range.setSuitFilter(keptFilter);
        range.setChangeNotifier(keptNotifier);
    }
    refilterChildren(node);
}

// --- Colours --------------------------------------------------------------------------

std::vector<unsigned int> Tree::family(unsigned int index) const {
    node(index);
    // Up through range parents; a folder or the top ends the climb. The step limit guards
    // against parent links that run in a circle.
    unsigned int top = index;
    for (std::size_t steps = 0; steps < nodes.size(); ++steps) {
        const unsigned int parent = nodes[top]->parent;
        if (parent >= nodes.size() || parent == top || !nodes[parent]->IsRange())
            break;
        top = parent;
    }
    std::vector<unsigned int> members;
    std::vector<bool> seen(nodes.size(), false);
    std::deque<unsigned int> queue{top};
    seen[top] = true;
    while (!queue.empty()) {
        const unsigned int current = queue.front();
        queue.pop_front();
        members.push_back(current);
        for (unsigned int child : nodes[current]->children) {
            if (child < nodes.size() && !seen[child]) {
                seen[child] = true;
                queue.push_back(child);
            }
        }
    }
    return members;
}

std::vector<GroupColor> Tree::familyColors(unsigned int index, unsigned int skipped) const {
    std::vector<GroupColor> colors;
    for (unsigned int member : family(index))
        if (member != skipped && nodes[member]->IsRange())
            colors.push_back(static_cast<const TreeRangeNode*>(nodes[member])->color);
    return colors;
}

std::vector<GroupColor> Tree::freeColors(unsigned int index) const {
    return GroupColor::freeColors(familyColors(index, noNode));
}

// --- Changing -------------------------------------------------------------------------

void Tree::renameFolder(unsigned int index, const std::string& name) {
    typedNode<TreeFolderNode>(index, "Node is not a folder.")->name = name;
}

void Tree::renameRange(unsigned int index, const std::string& name) {
    rangeNode(index)->name = name;
}

void Tree::setColor(unsigned int index, const GroupColor& color) {
    rangeNode(index)->color = color;
}

void Tree::setColor(TreeRangeNode& node, const GroupColor& color) {
    node.color = color;
}

bool Tree::setSuits(unsigned int index, unsigned int values, bool suited, unsigned int suits) {
    return rangeNode(index)->handRange.setSuitsAndNotify(values, suited, suits);
}

bool Tree::isInSubtree(unsigned int candidate, unsigned int root) const {
    // Walks up from the candidate; the step limit guards against circular parent links.
    unsigned int current = candidate;
    for (std::size_t steps = 0; steps <= nodes.size() && current < nodes.size(); ++steps) {
        if (current == root)
            return true;
        current = nodes[current]->parent;
    }
    return false;
}

void Tree::move(unsigned int index, unsigned int newParent, unsigned int position) {
    TreeNode* moved = node(index);
    if (newParent != noNode) {
        node(newParent);
        if (isInSubtree(newParent, index))
            throw std::string("A node cannot move below itself.");
    }
    const unsigned int oldParent = moved->parent;
    if (oldParent < nodes.size()) {
        std::vector<unsigned int>& children = nodes[oldParent]->children;
        const auto place = std::find(children.begin(), children.end(), index);
        if (place != children.end()) {
            const auto placeIndex = static_cast<unsigned int>(place - children.begin());
            children.erase(place);
            if (oldParent == newParent && placeIndex < position && position != noNode)
                --position;
        }
    }
    moved->parent = newParent;
    attachToParent(index, position);
    if (moved->IsRange()) {
        HandRange& range = static_cast<TreeRangeNode*>(moved)->handRange;
        const ElementContainer own = range.elements();
        range.assign(own);
    }
}

// --- Removing -------------------------------------------------------------------------

void Tree::detachFromParent(unsigned int index) {
    const unsigned int parent = nodes[index]->parent;
    if (parent >= nodes.size())
        return;
    std::vector<unsigned int>& children = nodes[parent]->children;
    children.erase(std::remove(children.begin(), children.end(), index), children.end());
}

void Tree::remove(unsigned int index) {
    node(index);
    removeList({index});
}

void Tree::removeList(const std::vector<unsigned int>& indices) {
    // A listed node below another listed node (or listed twice) would otherwise be taken
    // from the work list a second time, under an index that by then names another node.
    std::vector<unsigned int> work;
    for (unsigned int index : indices) {
        node(index);
        bool covered = false;
        for (unsigned int other : indices)
            if (other != index && isInSubtree(index, other) && !isInSubtree(other, index))
                covered = true;
        if (!covered && std::find(work.begin(), work.end(), index) == work.end())
            work.push_back(index);
    }
    for (unsigned int index : work)
        detachFromParent(index);
    removeWorkList(std::move(work));
}

void Tree::removeWorkList(std::vector<unsigned int> work) {
    std::vector<bool> queued(nodes.size(), false);
    for (unsigned int index : work)
        queued[index] = true;
    std::size_t next = 0;
    while (next < work.size()) {
        const unsigned int removed = work[next++];
        for (std::size_t later = next; later < work.size(); ++later)
            if (work[later] > removed)
                --work[later];
        // Children were renumbered together with every other node in earlier rounds.
        // `queued` (in original numbering, shifted along) keeps a node out of the list
        // twice when parent links are inconsistent.
        for (unsigned int child : nodes[removed]->children) {
            if (child >= nodes.size() || child == removed || queued[child])
                continue;
            queued[child] = true;
            work.push_back(child > removed ? child - 1 : child);
        }
        delete nodes[removed];
        nodes.erase(nodes.begin() + removed);
        queued.erase(queued.begin() + removed);
        for (unsigned int i = 0; i < nodes.size(); ++i) {
            TreeNode* remaining = nodes[i];
            remaining->index = i;
            if (remaining->parent == removed)
                remaining->parent = noNode;
            else if (remaining->parent != noNode && remaining->parent > removed)
                --remaining->parent;
            std::vector<unsigned int>& children = remaining->children;
            children.erase(std::remove(children.begin(), children.end(), removed), children.end());
            for (unsigned int& child : children)
                if (child != noNode && child > removed)
                    --child;
        }
    }
}

// --- Mementos -------------------------------------------------------------------------

void Tree::CreateMemento(std::vector<NodeMemento>& out, unsigned int index) const {
    if (index != noNode)
        throw std::runtime_error("Subtrees cannot be created internally yet.");
    out.clear();
    out.reserve(nodes.size());
    for (const TreeNode* node : nodes) {
        NodeMemento record;
        record.isRange = node->IsRange();
        record.parent = node->parent;
        record.children = node->children;
        if (node->IsFolder()) {
            record.name = static_cast<const TreeFolderNode*>(node)->name;
        } else {
            const auto* range = static_cast<const TreeRangeNode*>(node);
            record.name = range->name;
            record.suits = range->handRange.suitsVector();
            record.color = range->color;
            record.exclusive = range->exclusive;
            record.insertMode = range->exclusive ? range->insertMode() : 0;
        }
        out.push_back(std::move(record));
    }
}

void Tree::RestoreMemento(const std::vector<NodeMemento>& list, unsigned int index) {
    if (index != noNode)
        throw std::runtime_error("Subtrees cannot be used for restoring yet.");
    for (const NodeMemento& record : list) {
        const bool parentValid = record.parent == noNode || record.parent < list.size();
        const bool childrenValid =
            std::all_of(record.children.begin(), record.children.end(),
                        [&](unsigned int child) { return child < list.size(); });
        if (!parentValid || !childrenValid)
            throw std::runtime_error("Tree memento refers to a node that does not exist.");
        if (record.isRange && record.suits.size() != 169)
            throw std::runtime_error("Tree memento holds a range without 169 suit masks.");
    }
    clear();
    nodes.reserve(list.size());
    for (const NodeMemento& record : list) {
        const unsigned int index = count();
        if (!record.isRange) {
            auto* folder = new TreeFolderNode(this, index, record.parent, record.name);
            folder->children = record.children;
            nodes.push_back(folder);
            continue;
        }
        auto* range = new TreeRangeNode(this, index, record.parent, record.name, record.exclusive,
                                        record.exclusive ? record.insertMode : 0);
        range->children = record.children;
        range->color = record.color;
        nodes.push_back(range);
        // The new node's range is still plain (default filter and notifier): the suits go in
        // as saved, and only then is the node bound to the tree.
        range->handRange.setSuitsVector(record.suits);
        installFunctions(*range);
    }
}

std::string Tree::saveToText(unsigned int index) const {
    std::ostringstream stream;
    TreeSerialization::write(stream, *this, index);
    return stream.str();
}

void Tree::restoreFromText(const std::string& text, unsigned int index) {
    std::istringstream stream(text);
    if (index == noNode) {
        clear();
        TreeSerialization::readAll(stream, *this);
        return;
    }
    // Removing the children renumbers; the node itself stays, so its pointer tells the
    // new index.
    TreeNode* target = node(index);
    if (!target->children.empty())
        removeList(target->children);
    TreeSerialization::readOver(stream, *this, target->index);
}

void Tree::InsertFromMemento(const std::string& text, unsigned int index, unsigned int position) {
    if (index == noNode)
        throw std::runtime_error("InsertFromMemento at top level not supported.");
    std::istringstream stream(text);
    TreeSerialization::readInto(stream, *this, index, position);
}

} // namespace Range
