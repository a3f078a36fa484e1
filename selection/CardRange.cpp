#include "selection/CardRange.h"

#include "Range/Assertion.h"
#include "Range/CardText.h"
#include "selection/Card.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyledItemDelegate>

#include <algorithm>

namespace {

// Room around a card's picture in its cell.
const QSize cardMargin(4, 2);

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
        return option.decorationSize + cardMargin;
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

QSize CardRange::minimumSizeHint() const {
    // The pictures stand in a row, each as wide as its icon and the delegate's margin, with
    // the view's spacing before each of them and after the last.
    const int shown = static_cast<int>(std::min(maximum, 3u));
    const int pitch = iconSize().width() + cardMargin.width() + spacing();
    return QSize(2 * frameWidth() + spacing() + shown * pitch,
                 QListWidget::minimumSizeHint().height());
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
    const std::vector<std::string> read =
        Range::CardText::lenientCards(text.toLatin1().toStdString());
    std::vector<const CardRange*> takenBy(read.size(), nullptr);
    std::vector<bool> full(read.size(), false);
    for (std::size_t i = 0; i < read.size(); ++i) {
        const QString card = QString::fromStdString(read[i]);
        for (const CardRange* other : others) {
            if (takenBy[i] == nullptr && other->holdsCard(card)) {
                takenBy[i] = other;
            }
        }
        if (takenBy[i] != nullptr) {
            continue;
        }
        if (cardCount() >= maximum) {
            full[i] = true;
            continue;
        }
        addItem(new Card(read[i]));
    }
    noteDrops(text, read, takenBy, full);
}

void CardRange::setNoteNames(const QString& newPlace, const QString& newLimit) {
    place = newPlace;
    limit = newLimit;
}

QString CardRange::notePlace() const {
    return place.isEmpty() ? QStringLiteral("in another field") : place;
}

void CardRange::noteDrops(const QString& text, const std::vector<std::string>& read,
                          const std::vector<const CardRange*>& takenBy,
                          const std::vector<bool>& overLimit) {
    drops = Drops();
    // The text in pieces as a player spells cards: two characters a card, with blanks,
    // commas or semicolons between cards or not. Each piece's fate is looked up among the
    // cards the reader took.
    const auto isSeparator = [](QChar c) {
        return c == QLatin1Char(' ') || c == QLatin1Char('\t') || c == QLatin1Char('\n') ||
               c == QLatin1Char('\r') || c == QLatin1Char(',') || c == QLatin1Char(';');
    };
    QStringList pieces;
    QString piece;
    for (const QChar c : text) {
        if (isSeparator(c)) {
            if (!piece.isEmpty()) {
                pieces << piece;
                piece.clear();
            }
            continue;
        }
        piece += c;
        if (piece.size() == 2) {
            pieces << piece;
            piece.clear();
        }
    }
    if (!piece.isEmpty()) {
        pieces << piece;
    }
    const bool endsInPiece = !text.isEmpty() && !isSeparator(text.back());
    QStringList seen;
    // At most 52 distinct cards: the look-ups below stay short whatever the text's length.
    for (int p = 0; p < pieces.size(); ++p) {
        const QString& current = pieces[p];
        const std::string spelled =
            current.size() == 2
                ? std::string{current[0].toUpper().toLatin1(), current[1].toLower().toLatin1()}
                : std::string();
        const bool isCard =
            current.size() == 2 && Range::CardText::cardOf(spelled[0], spelled[1]) != 0;
        if (!isCard) {
            const bool last = p == pieces.size() - 1;
            if (last && endsInPiece && current.size() == 1 &&
                QStringLiteral("AKQJT98765432").contains(current[0].toUpper())) {
                drops.unfinished = current;
            } else {
                drops.notUnderstood << current;
            }
            continue;
        }
        const QString card = QString::fromStdString(spelled);
        if (seen.contains(card)) {
            if (!drops.repeated.contains(card)) {
                drops.repeated << card;
            }
            continue;
        }
        seen << card;
        const auto at = std::find(read.begin(), read.end(), spelled);
        if (at == read.end()) {
            // Spelled as a card, but not where the reader looks for one.
            drops.notUnderstood << current;
            continue;
        }
        const std::size_t index = static_cast<std::size_t>(at - read.begin());
        if (takenBy[index] != nullptr) {
            drops.elsewhere.emplace_back(card, takenBy[index]->notePlace());
        } else if (overLimit[index]) {
            drops.overLimit << card;
        }
    }
}

QString CardRange::dropNote(bool finished) const {
    QStringList reasons;
    QStringList notUnderstood = drops.notUnderstood;
    if (finished && !drops.unfinished.isEmpty()) {
        notUnderstood << drops.unfinished;
    }
    if (!notUnderstood.isEmpty()) {
        // A pasted page of text is named by its first pieces.
        const int named = 10;
        QString reason = QStringLiteral("not understood: ") +
                         notUnderstood.mid(0, named).join(QStringLiteral(", "));
        if (notUnderstood.size() > named) {
            reason += QStringLiteral(" and %1 more").arg(notUnderstood.size() - named);
        }
        reasons << reason;
    }
    for (const QString& card : drops.repeated) {
        reasons << card + QStringLiteral(" is given twice");
    }
    // One sentence for each place, in the order the places first come up.
    QStringList places;
    for (const auto& entry : drops.elsewhere) {
        if (!places.contains(entry.second)) {
            places << entry.second;
        }
    }
    for (const QString& where : places) {
        QStringList cards;
        for (const auto& entry : drops.elsewhere) {
            if (entry.second == where) {
                cards << entry.first;
            }
        }
        reasons << cards.join(QStringLiteral(", ")) +
                       (cards.size() == 1 ? QStringLiteral(" is already ")
                                          : QStringLiteral(" are already ")) +
                       where;
    }
    if (!drops.overLimit.isEmpty()) {
        const QString room =
            limit.isEmpty() ? QStringLiteral("at most %1 cards").arg(maximum) : limit;
        reasons << room + QStringLiteral(": ") + drops.overLimit.join(QStringLiteral(", ")) +
                       QStringLiteral(" dropped");
    }
    return reasons.join(QStringLiteral("; "));
}

QString CardRange::dropHint(bool finished) const {
    QStringList dropped = drops.notUnderstood;
    if (finished && !drops.unfinished.isEmpty()) {
        dropped << drops.unfinished;
    }
    dropped << drops.repeated;
    for (const auto& entry : drops.elsewhere) {
        dropped << entry.first;
    }
    dropped << drops.overLimit;
    if (dropped.isEmpty()) {
        return QString();
    }
    return QStringLiteral("dropped: ") + dropped.join(QStringLiteral(", "));
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
