#include "selection/ManagedHandRangeLine.h"

#include "Range/HandRangeStringReader.h"
#include "Range/Tree.h"
#include "Range/TreeRangeNode.h"
#include "selection/HandRangeLine.h"
#include "utils/ui/PlayerColor.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QLinearGradient>
#include <QListView>
#include <QPainter>
#include <QScopedValueRollback>
#include <QStyledItemDelegate>
#include <QTextDocument>

#include <utility>
#include <vector>

namespace {

// Paints the items of the popup as rich text ("<b>Full Range: </b> QQ+").
class RichTextItemDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        QStyleOptionViewItem item = option;
        initStyleOption(&item, index);
        const QString html = item.text;
        item.text.clear();
        const QWidget* widget = option.widget;
        QStyle* style = widget ? widget->style() : QApplication::style();
        style->drawControl(QStyle::CE_ItemViewItem, &item, painter, widget);

        const QRect textRect = style->subElementRect(QStyle::SE_ItemViewItemText, &item, widget);
        QTextDocument document;
        document.setDocumentMargin(0);
        document.setDefaultFont(option.font);
        const bool selected = option.state & QStyle::State_Selected;
        document.setHtml(
            QStringLiteral("<span style=\"color:%1\">%2</span>")
                .arg(selected ? QStringLiteral("#ffffff") : QStringLiteral("#2a2f36"), html));
        painter->save();
        const int y = textRect.top() + (textRect.height() - int(document.size().height())) / 2;
        painter->translate(textRect.left(), y);
        painter->setClipRect(QRect(0, 0, textRect.width(), textRect.height()));
        document.drawContents(painter);
        painter->restore();
    }

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        QSize size = QStyledItemDelegate::sizeHint(option, index);
        return QSize(size.width(), std::max(size.height(), 24));
    }
};

// The groups below the root in depth-first order.
void collectGroups(const Range::Tree& tree, unsigned int node, std::vector<unsigned int>& out) {
    for (unsigned int child : tree.node(node)->children) {
        if (!tree.node(child)->IsRange())
            continue;
        out.push_back(child);
        collectGroups(tree, child, out);
    }
}

QIcon colorIcon(const Range::GroupColor& color) {
    QPixmap pixmap(12, 12);
    QPainter painter(&pixmap);
    QLinearGradient gradient(0, 0, 0, 12);
    gradient.setColorAt(0,
                        QColor(color.colorFrom.red, color.colorFrom.green, color.colorFrom.blue));
    gradient.setColorAt(1, QColor(color.colorTo.red, color.colorTo.green, color.colorTo.blue));
    painter.fillRect(pixmap.rect(), gradient);
    return QIcon(pixmap);
}

} // namespace

ManagedHandRangeLine::ManagedHandRangeLine(QWidget* parent) : QComboBox(parent) {
    setEditable(true);
    line = new HandRangeLine(this);
    setLineEdit(line);
    setCompleter(nullptr);
    setInsertPolicy(QComboBox::NoInsert);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(24);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setItemDelegate(new RichTextItemDelegate(this));

    // Made here, before any owner connects: a typed change updates the items and the
    // mapping first.
    connect(line, &HandRangeLine::RangeChanged, this, &ManagedHandRangeLine::onRangeTextChange);
    connect(line, &HandRangeLine::doubleClicked, this,
            &ManagedHandRangeLine::onDoubleClickRangeLine);
    connect(this, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &ManagedHandRangeLine::onIndexSelection);
    connect(line, &QLineEdit::textChanged, this, &ManagedHandRangeLine::onLineTextChanged);
}

void ManagedHandRangeLine::setPlayer(int player) {
    playerNumber = player;
    const QString marker = PlayerColor::markerStyle(player);
    setStyleSheet(marker.isEmpty() ? QString()
                                   : QStringLiteral("ManagedHandRangeLine { %1 }").arg(marker));
}

void ManagedHandRangeLine::onLineTextChanged(const QString& text) {
    // Every item's text starts with its bold name, which no range text does: a text that is
    // an item's has been copied into the line by the combo box itself. While the items are
    // rebuilt the line's range may be gone; the rebuild binds the line anew at its end.
    if (rebuilding || !text.startsWith(QStringLiteral("<b>")) ||
        findText(text, Qt::MatchExactly) < 0)
        return;
    const QSignalBlocker blocker(line);
    line->setText(QString::fromStdString(line->rangeText()));
}

QString ManagedHandRangeLine::groupItemText(const QString& name, const std::string& rangeText,
                                            bool fullRange) {
    const QString text = QString::fromStdString(rangeText);
    if (fullRange)
        return QStringLiteral("<b>Full Range: </b> ") + text;
    return QStringLiteral("<b>") + name.toHtmlEscaped() + QStringLiteral(":</b> ") + text;
}

void ManagedHandRangeLine::setGroups(Range::Tree* groups) {
    tree = groups;
    if (!tree) {
        const QSignalBlocker blocker(this);
        const QScopedValueRollback<bool> guard(rebuilding, true);
        QComboBox::clear();
        line->clear();
        return;
    }
    refill();
}

unsigned int ManagedHandRangeLine::currentGroup() const {
    const int index = currentIndex();
    if (index < 0)
        return Range::Tree::noNode;
    return itemData(index, groupRole).toUInt();
}

void ManagedHandRangeLine::refill() {
    // A refill follows a change from elsewhere (clear, a dialog, a restore): the note about
    // the last typed text is over.
    line->clearNote();
    const int previous = currentIndex();
    {
        const QSignalBlocker blocker(this);
        const QScopedValueRollback<bool> guard(rebuilding, true);
        QComboBox::clear();
        if (tree && tree->count() > 0 && tree->node(0)->IsRange()) {
            addItem(groupItemText(QString(),
                                  Range::HandRangeStringReader(tree->handRange(0)).compactText(),
                                  true),
                    0u);
            std::vector<unsigned int> groupNodes;
            collectGroups(*tree, 0, groupNodes);
            for (unsigned int node : groupNodes) {
                const Range::TreeRangeNode* group = tree->rangeNode(node);
                addItem(groupItemText(QString::fromStdString(group->name),
                                      Range::HandRangeStringReader(group->handRange).compactText(),
                                      false),
                        node);
                if (group->color.usesColor)
                    setItemIcon(count() - 1, colorIcon(group->color));
            }
        }
        if (count() == 0)
            return;
        setCurrentIndex(previous >= 0 && previous < count() ? previous : 0);
    }
    onIndexSelection(currentIndex());
}

void ManagedHandRangeLine::onIndexSelection(int index) {
    if (index < 0 || !tree) {
        line->clear();
        return;
    }
    const unsigned int node = itemData(index, groupRole).toUInt();
    if (node >= tree->count() || !tree->node(node)->IsRange()) {
        // The tree changed under the items: rebuild them.
        refill();
        return;
    }
    line->setHandRange(&tree->handRange(node));
    line->setRangeGroups(tree, node);
    emit MappingChanged();
}

void ManagedHandRangeLine::onRangeTextChange() {
    refreshItemTexts();
    emit MappingChanged();
}

void ManagedHandRangeLine::refreshItemTexts() {
    if (!tree)
        return;
    // The model's own signals would make the combo box copy the current item's text into
    // the line, under the user's cursor; the popup reads the texts anew when it opens.
    QAbstractItemModel* items = model();
    const QSignalBlocker blocker(items);
    for (int index = 0; index < count(); ++index) {
        const unsigned int node = itemData(index, groupRole).toUInt();
        if (node >= tree->count() || !tree->node(node)->IsRange())
            continue;
        const std::string text = Range::HandRangeStringReader(tree->handRange(node)).compactText();
        const QString name = QString::fromStdString(tree->rangeNode(node)->name);
        items->setData(items->index(index, 0), groupItemText(name, text, index == 0),
                       Qt::DisplayRole);
    }
}

void ManagedHandRangeLine::onDoubleClickRangeLine() {
    emit doubleClicked();
}
