#pragma once

#include "Range/GroupColor.h"
#include "Range/NodeMemento.h"

#include <boost/noncopyable.hpp>

#include <string>
#include <vector>

namespace Range {

class HandRange;
class TreeFolderNode;
class TreeNode;
class TreeRangeNode;
struct Element;

// Folders and named ranges in a tree, by node index (0xFFFFFFFF meaning none).
//
// Each player has one tree whose root is the player's range and whose other nodes are its
// groups; the hand selection dialog keeps one tree of saved ranges with folders. A child
// range always stays inside a range parent, and exclusive siblings push each other's
// combinations out: each range node's HandRange has its suitFilter and changeNotifier bound
// to the node and to this tree, by kind:
//
//   not exclusive          inParent           refilterChildren
//   exclusive, block       blockedBySiblings  refilterChildren
//   exclusive, overwrite   inParent           pushOutSiblings
//
// Indices are dense: removing a node renumbers every node above it, so neither indices nor
// node pointers may be kept across a removal or a restore. The bound function objects hold
// node and tree pointers, so a tree must not move in memory once it has nodes.
//
// Faults a caller must have ruled out (an index that is no node, a folder where a range is
// needed) are thrown as std::string with a short message. Main thread only.
class Tree : private boost::noncopyable {
public:
    static constexpr unsigned int noNode = 0xFFFFFFFF;

    Tree();
    ~Tree();

    // --- Building ---
    // Adds a folder below `parent` (noNode for top level) at `position` among the parent's
    // children, or at the end when `position` is at or past it.
    TreeFolderNode* addFolder(unsigned int parent, const std::string& name,
                              unsigned int position = noNode);
    // Adds an empty, non-exclusive range node. With `pickColor` the node gets the first
    // standard colour free in its family instead of `color`; when all 16 are taken,
    // std::logic_error "All colors in use." is thrown and the node stays in the tree.
    TreeRangeNode* addRange(unsigned int parent, const std::string& name, bool pickColor,
                            const GroupColor& color, unsigned int position = noNode);
    // As addRange for an exclusive node; `insertMode` is TreeRangeNode::Overwrite or Block
    // (any other value asserts "Invalid insert mode." and acts as overwrite).
    TreeRangeNode* addExclusiveRange(unsigned int parent, const std::string& name,
                                     unsigned int insertMode, bool pickColor,
                                     const GroupColor& color, unsigned int position = noNode);
    // Removes the node with all its descendants and renumbers the rest.
    void remove(unsigned int index);
    // Removes the listed nodes with their descendants. A listed node below another listed
    // node goes with its ancestor; duplicates count once.
    void removeList(const std::vector<unsigned int>& indices);
    // Moves a node below `newParent` (noNode: to top level) at `position` (or to the end,
    // like noNode). Within one parent the
    // position counts in the list as it was before the move. A range then gets its own
    // suits anew through its filter, so the new parent can cut them. Moving a node below
    // itself or one of its descendants is refused with a thrown std::string.
    void move(unsigned int index, unsigned int newParent, unsigned int position);
    void renameFolder(unsigned int index, const std::string& name);
    void renameRange(unsigned int index, const std::string& name);
    void setColor(unsigned int index, const GroupColor& color);
    void setColor(TreeRangeNode& node, const GroupColor& color);
    // HandRange::setSuits of the node's range by key (value mask, suited); on change the
    // range's changeNotifier runs. True if changed.
    bool setSuits(unsigned int index, unsigned int values, bool suited, unsigned int suits);

    // --- Queries ---
    unsigned int count() const;
    TreeNode* node(unsigned int index);
    const TreeNode* node(unsigned int index) const;
    // The node as a range node (thrown std::string "Node is not a range." otherwise).
    TreeRangeNode* rangeNode(unsigned int index);
    const TreeRangeNode* rangeNode(unsigned int index) const;
    HandRange& handRange(unsigned int index);
    const HandRange& handRange(unsigned int index) const;
    // Nodes without a parent, in index order.
    std::vector<unsigned int> topLevelNodes() const;
    // The parent's children without the node itself; empty at top level.
    std::vector<unsigned int> siblings(unsigned int index) const;
    std::vector<unsigned int> siblings(const TreeNode& node) const;
    // The node's combination count divided by its parent's, as a 32-bit float, when the
    // parent is a range; otherwise a quiet NaN, which a display shows as no value. An
    // empty parent gives NaN as well (0 / 0).
    float shareOfParent(unsigned int index) const;
    float shareOfParent(const TreeRangeNode& node) const;
    // Standard colours that no node of the node's family uses, in table order (for the
    // colour dialog). The family: from the highest range node reached from `index` through
    // range parents, all its descendants breadth first.
    std::vector<GroupColor> freeColors(unsigned int index) const;

    // --- The group rules (what the bound function objects call) ---
    // The element's suits, and'ed with the parent's suits of the class if the parent is a
    // range.
    unsigned int inParent(const TreeRangeNode& node, const Element& element) const;
    // The element's suits without those of the class in any range sibling.
    unsigned int withoutSiblings(const TreeRangeNode& node, const Element& element) const;
    // withoutSiblings, then inside a range parent: the earlier holder keeps its suits.
    unsigned int blockedBySiblings(const TreeRangeNode& node, const Element& element) const;
    // refilter() of each range child; shrinking goes on down through their notifiers.
    void refilterChildren(TreeRangeNode& node);
    // Every range sibling (exclusive or not) loses what any of its siblings holds, the node
    // among them, and then the node's children are refiltered: the newest change wins.
    void pushOutSiblings(TreeRangeNode& node);

    // --- Mementos ---
    // One record per node in index order into `out` (which is cleared first). Only
    // index == noNode is supported: otherwise std::runtime_error
    // "Subtrees cannot be created internally yet.".
    void CreateMemento(std::vector<NodeMemento>& out, unsigned int index = noNode) const;
    // Replaces all nodes by the records, exactly as saved: no filter runs and no notifier
    // fires, so the caller refreshes its views. Only index == noNode is supported:
    // otherwise std::runtime_error "Subtrees cannot be used for restoring yet.". A record
    // list that refers to nodes it does not hold throws std::runtime_error
    // "Tree memento refers to a node that does not exist.", one with a range record of
    // other than 169 suit masks "Tree memento holds a range without 169 suit masks.";
    // either leaves the tree as it was.
    void RestoreMemento(const std::vector<NodeMemento>& list, unsigned int index = noNode);
    // The tree file text of the node with its descendants, or of the whole tree for noNode.
    std::string saveToText(unsigned int index = noNode) const;
    // With noNode: all nodes are replaced by the text's tree. Otherwise the node loses its
    // children and is overwritten from the text's first element, whose children follow
    // below it. Throws what reading the tree file throws (RangeSerializeError,
    // rapidxml::parse_error).
    void restoreFromText(const std::string& text, unsigned int index = noNode);
    // Adds each top-level element of the text below the node `index`, from `position` on
    // in its children (or at the end). index == noNode throws std::runtime_error
    // "InsertFromMemento at top level not supported.".
    void InsertFromMemento(const std::string& text, unsigned int index, unsigned int position);

    // Deletes every node.
    void clear();

private:
    template <class Node>
    Node* typedNode(unsigned int index, const char* wrongKind) const;
    TreeRangeNode* createRange(unsigned int parent, const std::string& name, bool exclusive,
                               unsigned int insertMode, bool pickColor, const GroupColor& color,
                               unsigned int position);
    void attachToParent(unsigned int index, unsigned int position);
    void installFunctions(TreeRangeNode& node);
    void detachFromParent(unsigned int index);
    void removeWorkList(std::vector<unsigned int> work);
    std::vector<unsigned int> family(unsigned int index) const;
    std::vector<GroupColor> familyColors(unsigned int index, unsigned int skipped) const;
    bool isInSubtree(unsigned int candidate, unsigned int root) const;

    std::vector<TreeNode*> nodes;
};

} // namespace Range
