#include "selection/HandRangeItemDelegate.h"

#include "Range/HandRangeStringReader.h"
#include "Range/Tree.h"
#include "Range/TreeRangeNode.h"

#include <QApplication>
#include <QLinearGradient>
#include <QPainter>
#include <QTextDocument>

HandRangeItemDelegate::HandRangeItemDelegate(const Range::Tree* tree, QObject* parent)
    : QStyledItemDelegate(parent), rangeTree(tree) {}

bool HandRangeItemDelegate::isRangeLeaf(const QModelIndex& index, unsigned int& node) const {
    if (!rangeTree || !index.isValid())
        return false;
    const QVariant data = index.data(nodeRole);
    if (!data.isValid())
        return false;
    node = data.toUInt();
    return node < rangeTree->count() && rangeTree->node(node)->IsRange();
}

QString HandRangeItemDelegate::richText(unsigned int node) const {
    const Range::TreeRangeNode* range = rangeTree->rangeNode(node);
    return QStringLiteral("<b>") + QString::fromStdString(range->name).toHtmlEscaped() +
           QStringLiteral("</b> ") +
           QString::fromStdString(Range::HandRangeStringReader(range->handRange).compactText());
}

void HandRangeItemDelegate::layoutDocument(QTextDocument& document,
                                           const QStyleOptionViewItem& option,
                                           unsigned int node) const {
    document.setDocumentMargin(0);
    document.setDefaultFont(option.font);
    document.setHtml(richText(node));
    document.setTextWidth(std::max(10, option.rect.width() - colorMarkWidth - colorMarkGap - 4));
}

void HandRangeItemDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                  const QModelIndex& index) const {
    unsigned int node = 0;
    if (!isRangeLeaf(index, node)) {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    painter->save();
    painter->setClipRect(option.rect);
    const bool selected = option.state & QStyle::State_Selected;
    if (selected)
        painter->fillRect(option.rect, option.palette.highlight());

    const Range::TreeRangeNode* range = rangeTree->rangeNode(node);
    const QRect mark(option.rect.left() + 2, option.rect.top() + 2, colorMarkWidth,
                     option.rect.height() - 4);
    if (range->color.usesColor) {
        QLinearGradient gradient(mark.topLeft(), mark.bottomLeft());
        gradient.setColorAt(0, QColor(range->color.colorFrom.red, range->color.colorFrom.green,
                                      range->color.colorFrom.blue));
        gradient.setColorAt(1, QColor(range->color.colorTo.red, range->color.colorTo.green,
                                      range->color.colorTo.blue));
        painter->fillRect(mark, gradient);
    } else {
        painter->setPen(QColor(0xa0, 0xa0, 0xa0));
        painter->drawRect(mark.adjusted(0, 0, -1, -1));
    }

    QTextDocument document;
    layoutDocument(document, option, node);
    if (selected)
        document.setHtml(QStringLiteral("<span style=\"color:%1\">%2</span>")
                             .arg(option.palette.highlightedText().color().name(), richText(node)));
    painter->translate(mark.right() + colorMarkGap, option.rect.top() + 1);
    document.drawContents(painter, QRectF(0, 0, option.rect.width(), option.rect.height()));
    painter->restore();
}

QSize HandRangeItemDelegate::sizeHint(const QStyleOptionViewItem& option,
                                      const QModelIndex& index) const {
    unsigned int node = 0;
    if (!isRangeLeaf(index, node))
        return QStyledItemDelegate::sizeHint(option, index);
    QTextDocument document;
    layoutDocument(document, option, node);
    return QSize(int(document.idealWidth()) + colorMarkWidth + colorMarkGap + 4,
                 int(document.size().height()) + 2);
}
