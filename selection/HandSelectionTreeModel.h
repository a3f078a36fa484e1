#pragma once

#include "Range/NodeMemento.h"
#include "Range/Tree.h"

#include <QAbstractItemModel>
#include <QString>

#include <string>
#include <vector>

class QMimeData;

// The tree of saved ranges as Qt's item views see it. It holds a Range::Tree whose node 0 is
// an invisible folder: its children are the top level of the view (the folders, called
// categories), and their children the saved ranges. The groups of a saved range are range
// nodes below it; they travel with it (in drags, mementos and files) but are no rows.
//
// An index points at its TreeNode, which stays where it is in memory when other nodes are
// removed, so persistent indexes (the view's selection and open folders) survive edits;
// restoring a memento resets the model.
//
// Drag and drop carries a node as its subtree's XML text in a QDataStream: a folder as
// "application/x-tree-category", a saved range as "application/x-tree-range" (followed by a
// bool: whether it sits in a folder); other widgets offer ranges as "application/x-quickbox".
// Categories are dropped at the top level only, ranges into categories only.
//
// changeOccured() follows every change of the tree made through the model.
class HandSelectionTreeModel : public QAbstractItemModel {
    Q_OBJECT

public:
    static constexpr const char* categoryType = "application/x-tree-category";
    static constexpr const char* rangeType = "application/x-tree-range";
    static constexpr const char* quickboxType = "application/x-quickbox";

    // What an import did; `error` is empty when it succeeded.
    struct ImportOutcome {
        QString error;
        // Levels below the second were cut off.
        bool trimmed = false;
        // Nodes of the tree that the file stored as open.
        std::vector<unsigned int> openNodes;
    };

    explicit HandSelectionTreeModel(QObject* parent = nullptr);

    // --- QAbstractItemModel ---
    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    // Renames through the edit role; an empty name is refused.
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    // Ranges can be dragged; folders can be dragged and dropped on, as can the top level.
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    Qt::DropActions supportedDropActions() const override;
    // "application/x-quickbox", "application/x-tree-range", "application/x-tree-category".
    QStringList mimeTypes() const override;
    // The first index's node with its subtree.
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
    // Inserts the payload's subtree at `row` below `parent` (-1: at the end); false for a
    // payload that cannot be read or that may not go there.
    bool dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                      const QModelIndex& parent) override;
    // New empty folders at the top level, new empty unnamed ranges in a folder.
    bool insertRows(int row, int count, const QModelIndex& parent = {}) override;
    bool removeRows(int row, int count, const QModelIndex& parent = {}) override;

    // --- The tree ---
    Range::Tree& tree() { return ranges; }
    const Range::Tree& tree() const { return ranges; }
    // The node of an index; node 0 (the invisible root) for an invalid index.
    unsigned int nodeOf(const QModelIndex& index) const;
    // The index of a node; invalid for the root and for groups.
    QModelIndex indexOf(unsigned int node) const;
    bool isFolder(const QModelIndex& index) const;
    bool isRange(const QModelIndex& index) const;
    // The category an index is in: itself for a folder, its folder for a range.
    QModelIndex categoryOf(const QModelIndex& index) const;

    // --- Operations (each ends in changeOccured) ---
    QModelIndex addCategory(const std::string& name);
    // A new saved range at the end of `category`: the node `sourceNode` of `source` with its
    // groups, named `name`.
    QModelIndex addRange(const QModelIndex& category, const std::string& name,
                         const Range::Tree& source, unsigned int sourceNode);
    // The saved range takes the range and the groups of `sourceNode`; name and colour stay.
    void updateRange(const QModelIndex& index, const Range::Tree& source, unsigned int sourceNode);
    void removeNode(const QModelIndex& index);
    // Swap with the sibling before or after; the new index of the node (the same place when
    // there is no sibling to swap with).
    QModelIndex moveUp(const QModelIndex& index);
    QModelIndex moveDown(const QModelIndex& index);
    void rename(const QModelIndex& index, const std::string& name);
    // Adds the file's folders (and ranges) at the end of the top level; the tree stays as
    // it was when the file cannot be read as a whole.
    ImportOutcome importFromFile(const QString& fileName);
    // Writes the tree file; the system's reason when that failed, otherwise empty.
    QString exportToFile(const QString& fileName) const;

    // --- Whole trees ---
    // "Predefined Patterns" with its eleven ranges, and an empty "Custom Ranges".
    void setDefaultContent();
    // Replaces the tree by one of the old binary format; the nodes the data stores as open,
    // or a thrown Range::Exception::RangeSerializeError (the tree is then unchanged).
    std::vector<unsigned int> loadOldTree(const QByteArray& data);
    // The tree's file text.
    std::string writeNewXml() const;
    std::vector<Range::NodeMemento> memento() const;
    // Replaces the tree and resets the model; the records must form a tree of saved ranges
    // (isValidMemento). Emits no changeOccured.
    void restore(const std::vector<Range::NodeMemento>& records);
    // Whether the records form a tree whose node 0 is a folder at the top, every other node
    // below exactly one parent that lists it once, with no cycle, each range with 169 masks.
    static bool isValidMemento(const std::vector<Range::NodeMemento>& records);

signals:
    void changeOccured();

private:
    const std::vector<unsigned int>& rowsOf(unsigned int node) const;
    int rowOf(unsigned int node) const;
    // Copies `sourceNode` of `source` (a folder with what it holds, or a range with its
    // groups) below `parent` at `position`; a copied range is never exclusive among the
    // saved ranges. The new node.
    unsigned int copyIn(const Range::Tree& source, unsigned int sourceNode, unsigned int parent,
                        unsigned int position);
    void copyGroups(const Range::Tree& source, unsigned int sourceNode, unsigned int target);
    // Replaces the tree by a staging tree whose node 0 holds the top level.
    void replaceBy(const Range::Tree& staging);

    Range::Tree ranges;
};
