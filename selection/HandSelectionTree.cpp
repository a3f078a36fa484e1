#include "selection/HandSelectionTree.h"

#include "selection/HandSelectionTreeModel.h"

#include <QDropEvent>

HandSelectionTree::HandSelectionTree(QWidget* parent) : QTreeView(parent) {
    setHeaderHidden(true);
    // Two levels only: a narrow step keeps the long names of the predefined ranges whole.
    setIndentation(14);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setDragEnabled(true);
    setAcceptDrops(true);
    setDropIndicatorShown(true);
    setDragDropMode(QAbstractItemView::DragDrop);
    setDefaultDropAction(Qt::MoveAction);
    // A double click loads a range; a name is edited with F2 or the rename button.
    setEditTriggers(QAbstractItemView::EditKeyPressed);
}

HandSelectionTreeModel* HandSelectionTree::treeModel() const {
    return qobject_cast<HandSelectionTreeModel*>(model());
}

std::vector<unsigned int> HandSelectionTree::openNodes() const {
    std::vector<unsigned int> open;
    const HandSelectionTreeModel* tree = treeModel();
    if (!tree)
        return open;
    std::vector<QModelIndex> work = {QModelIndex()};
    for (std::size_t next = 0; next < work.size(); ++next) {
        const QModelIndex parent = work[next];
        for (int row = 0; row < tree->rowCount(parent); ++row) {
            const QModelIndex child = tree->index(row, 0, parent);
            if (isExpanded(child)) {
                open.push_back(tree->nodeOf(child));
                work.push_back(child);
            }
        }
    }
    return open;
}

void HandSelectionTree::setOpenNodes(const std::vector<unsigned int>& nodes) {
    const HandSelectionTreeModel* tree = treeModel();
    if (!tree)
        return;
    collapseAll();
    for (unsigned int node : nodes) {
        const QModelIndex index = tree->indexOf(node);
        if (index.isValid())
            expand(index);
    }
}

void HandSelectionTree::dropEvent(QDropEvent* event) {
    QTreeView::dropEvent(event);
    if (event->isAccepted())
        emit treeDropped();
}

void HandSelectionTree::startDrag(Qt::DropActions supportedActions) {
    dragging = true;
    // Runs the drag to its end, and removes the source of a move.
    QTreeView::startDrag(supportedActions);
    dragging = false;
    emit dragFinished();
}
