#pragma once

#include <QTreeView>

#include <vector>

class HandSelectionTreeModel;

// The view of the tree of saved ranges. Items are dragged within it (a move), to the hand
// table (a copy) and dropped into it from other widgets. A move within the view is two
// changes of the model, the copy at the drop and the removal of the source after it; while
// a drag of this view runs isDragging() is true, and dragFinished() follows its end, so that
// a listener can take both halves as one change.
class HandSelectionTree : public QTreeView {
    Q_OBJECT

public:
    explicit HandSelectionTree(QWidget* parent = nullptr);

    HandSelectionTreeModel* treeModel() const;
    // Nodes (of the model's tree) of the open folders, in the order of the rows.
    std::vector<unsigned int> openNodes() const;
    // Opens exactly these nodes; numbers that name no row are skipped.
    void setOpenNodes(const std::vector<unsigned int>& nodes);
    // A drag started in this view is running.
    bool isDragging() const { return dragging; }

signals:
    // The base class has handled a drop into the tree.
    void treeDropped();
    // A drag started in this view has ended (and a moved source is gone).
    void dragFinished();

protected:
    void dropEvent(QDropEvent* event) override;
    void startDrag(Qt::DropActions supportedActions) override;

private:
    bool dragging = false;
};
