#pragma once

#include <QStyledItemDelegate>

class QTextDocument;

namespace Range {
class Tree;
}

// Paints a range leaf of a range tree view: the selection background, a bar of the node's
// colours at the left, and "<b>name</b>" with the range's compact text as wrapped rich
// text, clipped to the item. Items carry their node index in `nodeRole`; items that are
// no range node of the tree (folders) are painted as usual.
//
// The tree is not owned and must outlive the delegate's use.
class HandRangeItemDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    static constexpr int nodeRole = Qt::UserRole;
    // Width of the colour bar and the gap behind it, in pixels.
    static constexpr int colorMarkWidth = 6;
    static constexpr int colorMarkGap = 6;

    HandRangeItemDelegate(const Range::Tree* tree, QObject* parent = nullptr);

    void setTree(const Range::Tree* tree) { rangeTree = tree; }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

    // The rich text of a range node ("<b>name</b> QQ+,AKs").
    QString richText(unsigned int node) const;

private:
    bool isRangeLeaf(const QModelIndex& index, unsigned int& node) const;
    void layoutDocument(QTextDocument& document, const QStyleOptionViewItem& option,
                        unsigned int node) const;

    const Range::Tree* rangeTree;
};
