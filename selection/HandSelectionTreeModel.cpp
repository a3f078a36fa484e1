#include "selection/HandSelectionTreeModel.h"

#include "Range/HandRangeStringManipulator.h"
#include "Range/HandRangeStringReader.h"
#include "Range/LegacyTreeStream.h"
#include "Range/RangeSerializeError.h"
#include "Range/SavedRangeFile.h"
#include "Range/TreeFolderNode.h"
#include "Range/TreeRangeNode.h"

#include <QByteArray>
#include <QDataStream>
#include <QFile>
#include <QIcon>
#include <QMimeData>
#include <rapidxml/rapidxml.hpp>

#include <algorithm>
#include <utility>

namespace {

constexpr unsigned int noNode = Range::Tree::noNode;
constexpr unsigned int root = 0;

const char* const predefinedPatterns[][2] = {
    {"Broadways", "ATs+,KTs+,QTs+,JTs,ATo+,KTo+,QTo+,JTo"},
    {"Pocketpairs", "22+"},
    {"Suited Connectors", "AKs,KQs,QJs,JTs,T9s,98s,87s,76s,65s,54s,43s,32s"},
    {"Suited One-Gappers", "AQs,KJs,QTs,J9s,T8s,97s,86s,75s,64s,53s,42s"},
    {"Suited Two-Gappers", "AJs,KTs,Q9s,J8s,T7s,96s,85s,74s,63s,52s"},
    {"Off-suited Connectors", "AKo,KQo,QJo,JTo,T9o,98o,87o,76o,65o,54o,43o,32o"},
    {"Off-suited One-Gappers", "AQo,KJo,QTo,J9o,T8o,97o,86o,75o,64o,53o,42o"},
    {"Off-suited Two-Gappers", "AJo,KTo,Q9o,J8o,T7o,96o,85o,74o,63o,52o"},
    {"Any Connector", "AK,KQ,QJ,JT,T9,98,87,76,65,54,43,32"},
    {"Any One-Gapper", "AQ,KJ,QT,J9,T8,97,86,75,64,53,42"},
    {"Any Two-Gapper", "AJ,KT,Q9,J8,T7,96,85,74,63,52"},
};

const std::vector<unsigned int>& noRows() {
    static const std::vector<unsigned int> none;
    return none;
}

std::string nameOf(const Range::TreeNode& node) {
    if (node.IsFolder())
        return static_cast<const Range::TreeFolderNode&>(node).name;
    return static_cast<const Range::TreeRangeNode&>(node).name;
}

// A tree with an unnamed folder at node 0, the way the model holds its own.
void startStaging(Range::Tree& staging) {
    staging.addFolder(noNode, "");
}

// Reads a drag payload's subtree below node 0 of an empty staging tree. False when it is
// not a subtree (the staging tree is then to be dropped).
bool readPayload(const QMimeData& data, const QString& type, Range::Tree& staging) {
    QDataStream in(data.data(type));
    QString text;
    in >> text;
    if (in.status() != QDataStream::Ok || text.isEmpty())
        return false;
    startStaging(staging);
    try {
        staging.InsertFromMemento(text.toStdString(), root, noNode);
    } catch (const Range::Exception::RangeSerializeError&) {
        return false;
    } catch (const rapidxml::parse_error&) {
        return false;
    }
    Range::SavedRangeFile::trimToTwoLevels(staging, root);
    return !staging.node(root)->children.empty();
}

} // namespace

HandSelectionTreeModel::HandSelectionTreeModel(QObject* parent) : QAbstractItemModel(parent) {
    startStaging(ranges);
}

// --- Rows ----------------------------------------------------------------------------------------

const std::vector<unsigned int>& HandSelectionTreeModel::rowsOf(unsigned int node) const {
    const Range::TreeNode* own = ranges.node(node);
    // The children of a range are its groups, which are no rows.
    return own->IsRange() ? noRows() : own->children;
}

int HandSelectionTreeModel::rowOf(unsigned int node) const {
    const unsigned int parent = ranges.node(node)->parent;
    if (parent == noNode)
        return 0;
    const std::vector<unsigned int>& siblings = rowsOf(parent);
    const auto place = std::find(siblings.begin(), siblings.end(), node);
    return place == siblings.end() ? -1 : static_cast<int>(place - siblings.begin());
}

unsigned int HandSelectionTreeModel::nodeOf(const QModelIndex& index) const {
    if (!index.isValid() || index.model() != this)
        return root;
    return static_cast<const Range::TreeNode*>(index.internalPointer())->index;
}

QModelIndex HandSelectionTreeModel::indexOf(unsigned int node) const {
    if (node == root || node >= ranges.count())
        return {};
    const int row = rowOf(node);
    if (row < 0)
        return {};
    return createIndex(row, 0, const_cast<Range::TreeNode*>(ranges.node(node)));
}

bool HandSelectionTreeModel::isFolder(const QModelIndex& index) const {
    return index.isValid() && ranges.node(nodeOf(index))->IsFolder();
}

bool HandSelectionTreeModel::isRange(const QModelIndex& index) const {
    return index.isValid() && ranges.node(nodeOf(index))->IsRange();
}

QModelIndex HandSelectionTreeModel::categoryOf(const QModelIndex& index) const {
    if (!index.isValid())
        return {};
    if (isFolder(index))
        return index;
    return index.parent();
}

// --- QAbstractItemModel --------------------------------------------------------------------------

QModelIndex HandSelectionTreeModel::index(int row, int column, const QModelIndex& parent) const {
    if (column != 0 || row < 0)
        return {};
    const std::vector<unsigned int>& rows = rowsOf(nodeOf(parent));
    if (row >= static_cast<int>(rows.size()))
        return {};
    return createIndex(row, 0, const_cast<Range::TreeNode*>(ranges.node(rows[row])));
}

QModelIndex HandSelectionTreeModel::parent(const QModelIndex& child) const {
    if (!child.isValid())
        return {};
    const unsigned int parent = ranges.node(nodeOf(child))->parent;
    if (parent == root || parent == noNode)
        return {};
    return indexOf(parent);
}

int HandSelectionTreeModel::rowCount(const QModelIndex& parent) const {
    if (parent.column() > 0)
        return 0;
    return static_cast<int>(rowsOf(nodeOf(parent)).size());
}

int HandSelectionTreeModel::columnCount(const QModelIndex&) const {
    return 1;
}

QVariant HandSelectionTreeModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const Range::TreeNode& node = *ranges.node(nodeOf(index));
    if (!node.IsFolder() && !node.IsRange())
        return role == Qt::DisplayRole ? QVariant(QStringLiteral("Invalid Tree Item")) : QVariant();
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return QString::fromStdString(nameOf(node));
    case Qt::DecorationRole:
        return QIcon(node.IsFolder() ? QStringLiteral(":/folder.png")
                                     : QStringLiteral(":/handSelectionTreeRange.PNG"));
    case Qt::ToolTipRole: {
        if (node.IsFolder())
            return {};
        const auto& range = static_cast<const Range::TreeRangeNode&>(node);
        QString tip =
            QString::fromStdString(Range::HandRangeStringReader(range.handRange).compactText());
        if (tip.isEmpty())
            tip = QStringLiteral("(empty range)");
        if (!range.children.empty())
            tip += QStringLiteral("\n%1 groups").arg(range.children.size());
        return tip;
    }
    default:
        return {};
    }
}

bool HandSelectionTreeModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!index.isValid() || role != Qt::EditRole)
        return false;
    const std::string name = value.toString().trimmed().toStdString();
    if (name.empty())
        return false;
    const unsigned int node = nodeOf(index);
    if (nameOf(*ranges.node(node)) == name)
        return true;
    if (ranges.node(node)->IsFolder())
        ranges.renameFolder(node, name);
    else
        ranges.renameRange(node, name);
    emit dataChanged(index, index);
    emit changeOccured();
    return true;
}

Qt::ItemFlags HandSelectionTreeModel::flags(const QModelIndex& index) const {
    if (!index.isValid())
        return Qt::ItemIsDropEnabled;
    Qt::ItemFlags flags =
        Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsEditable | Qt::ItemIsDragEnabled;
    if (isFolder(index))
        flags |= Qt::ItemIsDropEnabled;
    return flags;
}

Qt::DropActions HandSelectionTreeModel::supportedDropActions() const {
    return Qt::MoveAction | Qt::CopyAction;
}

QStringList HandSelectionTreeModel::mimeTypes() const {
    return {QString::fromLatin1(quickboxType), QString::fromLatin1(rangeType),
            QString::fromLatin1(categoryType)};
}

QMimeData* HandSelectionTreeModel::mimeData(const QModelIndexList& indexes) const {
    const auto first = std::find_if(indexes.begin(), indexes.end(),
                                    [](const QModelIndex& index) { return index.isValid(); });
    if (first == indexes.end())
        return nullptr;
    const unsigned int node = nodeOf(*first);
    const bool folder = ranges.node(node)->IsFolder();
    QByteArray payload;
    {
        QDataStream out(&payload, QIODevice::WriteOnly);
        out << QString::fromStdString(ranges.saveToText(node));
        if (!folder)
            out << ranges.node(ranges.node(node)->parent)->IsFolder();
    }
    auto* data = new QMimeData;
    data->setData(QString::fromLatin1(folder ? categoryType : rangeType), payload);
    return data;
}

bool HandSelectionTreeModel::dropMimeData(const QMimeData* data, Qt::DropAction action, int row,
                                          int column, const QModelIndex& parent) {
    if (!data || !(supportedDropActions() & action) || column > 0)
        return false;
    QString type;
    for (const QString& candidate : mimeTypes())
        if (data->hasFormat(candidate)) {
            type = candidate;
            break;
        }
    if (type.isEmpty())
        return false;

    // Where it goes: categories at the top level (one dropped on a folder lands behind it),
    // ranges into a category.
    QModelIndex target = parent;
    int position = row;
    const bool category = type == QLatin1String(categoryType);
    if (category && target.isValid()) {
        position = target.row() + 1;
        target = target.parent();
        if (target.isValid())
            return false;
    }
    if (!category && !isFolder(target))
        return false;

    Range::Tree staging;
    if (!readPayload(*data, type, staging))
        return false;
    const std::vector<unsigned int> dropped = staging.node(root)->children;
    // A category payload brings folders; a range payload brings ranges.
    for (unsigned int node : dropped)
        if (staging.node(node)->IsFolder() != category)
            return false;

    const unsigned int parentNode = nodeOf(target);
    const int end = rowCount(target);
    if (position < 0 || position > end)
        position = end;
    beginInsertRows(target, position, position + static_cast<int>(dropped.size()) - 1);
    unsigned int place = static_cast<unsigned int>(position);
    for (unsigned int node : dropped)
        copyIn(staging, node, parentNode, place++);
    endInsertRows();
    emit changeOccured();
    return true;
}

bool HandSelectionTreeModel::insertRows(int row, int count, const QModelIndex& parent) {
    if (count <= 0 || row < 0 || row > rowCount(parent) || (parent.isValid() && !isFolder(parent)))
        return false;
    const unsigned int parentNode = nodeOf(parent);
    beginInsertRows(parent, row, row + count - 1);
    for (int i = 0; i < count; ++i) {
        const unsigned int position = static_cast<unsigned int>(row + i);
        if (parent.isValid())
            ranges.addRange(parentNode, "", false, Range::GroupColor(), position);
        else
            ranges.addFolder(parentNode, "", position);
    }
    endInsertRows();
    emit changeOccured();
    return true;
}

bool HandSelectionTreeModel::removeRows(int row, int count, const QModelIndex& parent) {
    if (count <= 0 || row < 0 || row + count > rowCount(parent))
        return false;
    const std::vector<unsigned int>& rows = rowsOf(nodeOf(parent));
    const std::vector<unsigned int> removed(rows.begin() + row, rows.begin() + row + count);
    beginRemoveRows(parent, row, row + count - 1);
    ranges.removeList(removed);
    endRemoveRows();
    emit changeOccured();
    return true;
}

// --- Operations ----------------------------------------------------------------------------------

unsigned int HandSelectionTreeModel::copyIn(const Range::Tree& source, unsigned int sourceNode,
                                            unsigned int parent, unsigned int position) {
    const Range::TreeNode& node = *source.node(sourceNode);
    if (node.IsFolder()) {
        const unsigned int folder =
            ranges
                .addFolder(parent, static_cast<const Range::TreeFolderNode&>(node).name, position)
                ->index;
        for (unsigned int child : node.children)
            copyIn(source, child, folder, noNode);
        return folder;
    }
    const auto& range = static_cast<const Range::TreeRangeNode&>(node);
    Range::TreeRangeNode* copy = ranges.addRange(parent, range.name, false, range.color, position);
    const unsigned int copied = copy->index;
    copy->handRange.setSuitsVector(range.handRange.suitsVector());
    copyGroups(source, sourceNode, copied);
    return copied;
}

void HandSelectionTreeModel::copyGroups(const Range::Tree& source, unsigned int sourceNode,
                                        unsigned int target) {
    // Through the text form: the groups pass their filters below their new parent.
    for (unsigned int child : source.node(sourceNode)->children)
        ranges.InsertFromMemento(source.saveToText(child), target, noNode);
}

QModelIndex HandSelectionTreeModel::addCategory(const std::string& name) {
    const int row = rowCount();
    beginInsertRows({}, row, row);
    ranges.addFolder(root, name);
    endInsertRows();
    emit changeOccured();
    return index(row, 0);
}

QModelIndex HandSelectionTreeModel::addRange(const QModelIndex& category, const std::string& name,
                                             const Range::Tree& source, unsigned int sourceNode) {
    if (!isFolder(category))
        return {};
    const int row = rowCount(category);
    beginInsertRows(category, row, row);
    const unsigned int added = copyIn(source, sourceNode, nodeOf(category), noNode);
    ranges.renameRange(added, name);
    endInsertRows();
    emit changeOccured();
    return index(row, 0, category);
}

void HandSelectionTreeModel::updateRange(const QModelIndex& index, const Range::Tree& source,
                                         unsigned int sourceNode) {
    if (!isRange(index))
        return;
    Range::TreeRangeNode* saved = ranges.rangeNode(nodeOf(index));
    if (!saved->children.empty())
        ranges.removeList(saved->children);
    saved->handRange.setSuitsVector(source.handRange(sourceNode).suitsVector());
    copyGroups(source, sourceNode, saved->index);
    emit dataChanged(index, index);
    emit changeOccured();
}

void HandSelectionTreeModel::removeNode(const QModelIndex& index) {
    if (index.isValid())
        removeRows(index.row(), 1, index.parent());
}

QModelIndex HandSelectionTreeModel::moveUp(const QModelIndex& index) {
    if (!index.isValid() || index.row() == 0)
        return index;
    const QModelIndex parent = index.parent();
    const int row = index.row();
    beginMoveRows(parent, row, row, parent, row - 1);
    ranges.move(nodeOf(index), nodeOf(parent), static_cast<unsigned int>(row - 1));
    endMoveRows();
    emit changeOccured();
    return this->index(row - 1, 0, parent);
}

QModelIndex HandSelectionTreeModel::moveDown(const QModelIndex& index) {
    if (!index.isValid())
        return index;
    const QModelIndex parent = index.parent();
    const int row = index.row();
    if (row + 1 >= rowCount(parent))
        return index;
    // Positions count in the list as it was before the move.
    beginMoveRows(parent, row, row, parent, row + 2);
    ranges.move(nodeOf(index), nodeOf(parent), static_cast<unsigned int>(row + 2));
    endMoveRows();
    emit changeOccured();
    return this->index(row + 1, 0, parent);
}

void HandSelectionTreeModel::rename(const QModelIndex& index, const std::string& name) {
    setData(index, QString::fromStdString(name));
}

HandSelectionTreeModel::ImportOutcome
HandSelectionTreeModel::importFromFile(const QString& fileName) {
    ImportOutcome outcome;
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        outcome.error = QStringLiteral("It cannot be opened: %1.").arg(file.errorString());
        return outcome;
    }
    const QByteArray bytes = file.readAll();
    Range::Tree staging;
    Range::SavedRangeFile::Import read;
    try {
        read = Range::SavedRangeFile::read(bytes, staging);
    } catch (const Range::Exception::RangeSerializeError& error) {
        outcome.error = QString::fromStdString(error.message());
        return outcome;
    }
    outcome.trimmed = read.trimmed;
    const std::vector<unsigned int> top = staging.node(root)->children;
    if (top.empty())
        return outcome;
    const int first = rowCount();
    beginInsertRows({}, first, first + static_cast<int>(top.size()) - 1);
    // The folders the file stores as open stay open under their new numbers.
    std::vector<unsigned int> copiedTops;
    for (unsigned int node : top)
        copiedTops.push_back(copyIn(staging, node, root, noNode));
    endInsertRows();
    for (unsigned int open : read.openNodes)
        for (std::size_t i = 0; i < top.size(); ++i)
            if (top[i] == open)
                outcome.openNodes.push_back(copiedTops[i]);
    emit changeOccured();
    return outcome;
}

QString HandSelectionTreeModel::exportToFile(const QString& fileName) const {
    const std::string text = writeNewXml();
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
        file.write(text.data(), static_cast<qint64>(text.size())) !=
            static_cast<qint64>(text.size()) ||
        !file.flush())
        return file.errorString();
    return {};
}

// --- Whole trees ---------------------------------------------------------------------------------

void HandSelectionTreeModel::setDefaultContent() {
    Range::Tree staging;
    startStaging(staging);
    const unsigned int patterns = staging.addFolder(root, "Predefined Patterns")->index;
    for (const auto& pattern : predefinedPatterns) {
        Range::TreeRangeNode* node =
            staging.addRange(patterns, pattern[0], false, Range::GroupColor());
        Range::HandRangeStringManipulator(node->handRange).setFree(pattern[1]);
    }
    staging.addFolder(root, "Custom Ranges");
    replaceBy(staging);
}

std::vector<unsigned int> HandSelectionTreeModel::loadOldTree(const QByteArray& data) {
    Range::Tree staging;
    startStaging(staging);
    QDataStream in(data);
    const Range::LegacyTreeStream::Report report = Range::LegacyTreeStream::read(in, staging, root);
    Range::SavedRangeFile::trimToTwoLevels(staging, root);
    replaceBy(staging);
    std::vector<unsigned int> open;
    for (unsigned int node : report.openNodes)
        if (node < ranges.count())
            open.push_back(node);
    return open;
}

void HandSelectionTreeModel::replaceBy(const Range::Tree& staging) {
    std::vector<Range::NodeMemento> records;
    staging.CreateMemento(records);
    restore(records);
}

std::string HandSelectionTreeModel::writeNewXml() const {
    return Range::SavedRangeFile::write(ranges, root);
}

std::vector<Range::NodeMemento> HandSelectionTreeModel::memento() const {
    std::vector<Range::NodeMemento> records;
    ranges.CreateMemento(records);
    return records;
}

void HandSelectionTreeModel::restore(const std::vector<Range::NodeMemento>& records) {
    beginResetModel();
    ranges.RestoreMemento(records);
    endResetModel();
}

bool HandSelectionTreeModel::isValidMemento(const std::vector<Range::NodeMemento>& records) {
    const std::size_t count = records.size();
    if (count == 0 || records[0].isRange || records[0].parent != noNode)
        return false;
    std::vector<unsigned int> listed(count, 0);
    for (std::size_t i = 0; i < count; ++i) {
        const Range::NodeMemento& record = records[i];
        if (record.isRange && record.suits.size() != 169)
            return false;
        if (i != 0 && record.parent >= count)
            return false;
        for (unsigned int child : record.children) {
            if (child >= count || child == 0 || records[child].parent != i)
                return false;
            ++listed[child];
        }
    }
    for (std::size_t i = 1; i < count; ++i) {
        if (listed[i] != 1)
            return false;
        // Every node reaches node 0 through its parents, so there is no cycle.
        std::size_t steps = 0;
        unsigned int up = static_cast<unsigned int>(i);
        while (up != 0 && steps++ <= count)
            up = records[up].parent;
        if (up != 0)
            return false;
    }
    return true;
}
