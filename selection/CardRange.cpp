#include "selection/CardRange.h"

#include "Range/Assertion.h"
#include "Range/CardText.h"
#include "selection/Card.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyledItemDelegate>

namespace {

// Shows a card by its picture alone: the item text stays the machine-readable form of the
// field and is not drawn.
class CardPictureDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        const QIcon icon = index.data(Qt::DecorationRole).value<QIcon>();
        const QSize size = option.decorationSize;
        const QRect target(option.rect.center().x() - size.width() / 2 + 1,
                           option.rect.center().y() - size.height() / 2 + 1, size.width(),
                           size.height());
        icon.paint(painter, target, Qt::AlignCenter,
                   (option.state & QStyle::State_Enabled) ? QIcon::Normal : QIcon::Disabled);
    }

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const override {
        return option.decorationSize + QSize(4, 2);
    }
};

} // namespace

CardRange::CardRange(QWidget* parent) : QListWidget(parent) {
    setViewMode(QListView::IconMode);
    setFlow(QListView::LeftToRight);
    setWrapping(false);
    setMovement(QListView::Static);
    setResizeMode(QListView::Adjust);
    setSelectionMode(QAbstractItemView::NoSelection);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setIconSize(QSize(36, 50));
    setSpacing(1);
    setItemDelegate(new CardPictureDelegate(this));
    setMinimumHeight(58);
    setMaximumHeight(58);
    setProperty("stronglyDisabled", false);
}

void CardRange::setMaxCards(unsigned int maxCards) {
    maximum = maxCards;
}

void CardRange::setOtherRanges(const std::vector<CardRange*>& ranges) {
    QV_ASSERT(ranges.size() <= MaxOtherRanges, "Too many other card ranges.");
    others.clear();
    for (CardRange* range : ranges) {
        if (range != nullptr && range != this && others.size() < MaxOtherRanges) {
            others.push_back(range);
        }
    }
}

void CardRange::setCardsFromText(const QString& text) {
    clear();
    for (const std::string& cardText :
         Range::CardText::lenientCards(text.toLatin1().toStdString())) {
        const QString card = QString::fromStdString(cardText);
        bool elsewhere = false;
        for (const CardRange* other : others) {
            elsewhere = elsewhere || other->holdsCard(card);
        }
        if (elsewhere || cardCount() >= maximum) {
            continue;
        }
        addItem(new Card(card.toStdString()));
    }
}

QString CardRange::cardsText() const {
    QString text;
    for (const QListWidgetItem* item : findItems(QStringLiteral("*"), Qt::MatchWildcard)) {
        text += item->text();
    }
    return text;
}

unsigned int CardRange::cardCount() const {
    return static_cast<unsigned int>(count());
}

bool CardRange::holdsCard(const QString& card) const {
    for (int i = 0; i < count(); ++i) {
        if (item(i)->text() == card) {
            return true;
        }
    }
    return false;
}

bool CardRange::isStronglyDisabled(const CardRange* range) {
    return range != nullptr && range->property("stronglyDisabled").toBool();
}

void CardRange::setStronglyDisabled(CardRange* range, bool disabled) {
    if (range != nullptr) {
        range->setProperty("stronglyDisabled", disabled);
    }
}

void CardRange::mouseDoubleClickEvent(QMouseEvent* event) {
    QListWidget::mouseDoubleClickEvent(event);
    emit doubleClicked();
}
