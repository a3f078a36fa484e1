#pragma once

#include "Range/NodeMemento.h"

#include <QByteArray>
#include <QString>

#include <vector>

class HandSelectionTreeModel;

// Where the tree of saved ranges of the hand selection dialog lives between openings, group
// "HandSelection" of organisation "Velmara", application "Quorvane":
//
//   "HandSelectionTreeNew"              file store (INI, user scope); read also from the
//                                       native store: the tree as tagged node records
//   "treeOpenness"                      native store: the open folders
//   "HandSelectionTreeWithGroups"       native store: the old binary tree, only read
//   "HandSelectionTreeWithGroupsNewXML" native store: the tree file text, only written
//
// On Linux the native store is QSettings' native format (~/.config/Velmara/Quorvane.conf)
// and the file store the INI format (~/.config/Velmara/Quorvane.ini).
//
// Both binary values are QDataStream streams of tagged records: "node" with isRange, parent,
// name, the children and, for ranges, the classes that hold combinations (the number of them,
// then each as its place among the 169 classes and its 16-bit suit mask), the colour,
// exclusive and the insert mode; "open" with a node number.
class SavedRangeTreeSettings {
public:
    // Where load() found the tree.
    enum class Source { FileStore, NativeStore, OldFormat, DefaultContent };

    struct Loaded {
        Source source = Source::DefaultContent;
        // Nodes to open.
        std::vector<unsigned int> openNodes;
        // Set when stored data was damaged and the default content stands in for it.
        QString problem;
    };

    // The loading at each opening of the dialog, which is also the migration of old data:
    // "HandSelectionTreeNew" of the file store, else of the native store, else the old
    // binary tree, else the default content; then "treeOpenness". Nothing is moved: the
    // next save() writes the file store.
    static Loaded load(HandSelectionTreeModel& model);
    // "HandSelectionTreeNew" in the file store, and the tree file text for older versions.
    static void save(const HandSelectionTreeModel& model, const std::vector<unsigned int>& open);
    // "treeOpenness".
    static void saveOpenness(const std::vector<unsigned int>& open);

    static QByteArray encode(const std::vector<Range::NodeMemento>& nodes,
                             const std::vector<unsigned int>& open);
    // False for a stream that is cut short, holds an unknown tag, or whose nodes form no
    // tree of saved ranges; `nodes` and `open` are then undefined.
    static bool decode(const QByteArray& bytes, std::vector<Range::NodeMemento>& nodes,
                       std::vector<unsigned int>& open);
    static QByteArray encodeOpenness(const std::vector<unsigned int>& open);
    static std::vector<unsigned int> decodeOpenness(const QByteArray& bytes);
};
