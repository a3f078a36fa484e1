#include "selection/HandRangeHover.h"

#include "Range/HandRangeElementConversion.h"
#include "Range/Tree.h"
#include "Range/TreeRangeNode.h"
#include "app/NoPaintFilter.h"
#include "selection/HoverFrame.h"

#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

#include <cmath>

namespace {

QString percentText(double fraction) {
    return QString::number(fraction * 100.0, 'f', 2) + QStringLiteral(" %");
}

// The read-only 13 by 13 table of the hover: aces top left, pairs on the diagonal, suited
// classes above it, offsuit below. A cell is filled in proportion to the share of its
// combinations the range holds.
class RangeTablePicture : public QWidget {
public:
    static constexpr int cell = 21;

    RangeTablePicture(const Range::HandRange& range, QWidget* parent)
        : QWidget(parent), counts(13 * 13, 0), possible(13 * 13, 0) {
        setObjectName(QStringLiteral("hoverTable"));
        setFixedSize(13 * cell + 1, 13 * cell + 1);
        for (const Range::Element& element : range) {
            // Value bits: bit 12 the ace. Rows and columns run from the ace (0) down.
            int high = -1;
            int low = -1;
            for (int bit = 12; bit >= 0; --bit) {
                if (!(element.values & (1u << bit)))
                    continue;
                if (high < 0)
                    high = 12 - bit;
                else
                    low = 12 - bit;
            }
            if (high < 0)
                continue;
            if (low < 0)
                low = high;
            const int row = element.suited ? high : low;
            const int column = element.suited ? low : high;
            counts[row * 13 + column] = Range::suitBitCount(element.suits);
            possible[row * 13 + column] = Range::suitBitCount(element.possibleSuits);
        }
    }

    bool showSuits = false;

protected:
    void paintEvent(QPaintEvent*) override {
        static const char* const values = "AKQJT98765432";
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing, false);
        QFont font = painter.font();
        font.setPixelSize(showSuits ? 8 : 9);
        painter.setFont(font);
        for (int row = 0; row < 13; ++row) {
            for (int column = 0; column < 13; ++column) {
                const QRect box(column * cell, row * cell, cell, cell);
                const int held = counts[row * 13 + column];
                const int all = possible[row * 13 + column];
                const bool pair = row == column;
                painter.fillRect(box, pair ? QColor(0xee, 0xf1, 0xf4) : QColor(0xfb, 0xfc, 0xfd));
                if (held > 0 && all > 0) {
                    QRect filled = box;
                    if (held < all)
                        filled.setTop(box.bottom() + 1 - box.height() * held / all);
                    painter.fillRect(filled, QColor(0x17, 0x80, 0x8f));
                }
                painter.setPen(QColor(0xd5, 0xdb, 0xdf));
                painter.drawRect(box);
                QString text = QString(QChar(values[std::min(row, column)])) +
                               QChar(values[std::max(row, column)]);
                if (!pair)
                    text += row < column ? QStringLiteral("s") : QStringLiteral("o");
                if (showSuits && held > 0)
                    text += QStringLiteral("\n") + QString::number(held);
                painter.setPen(held == all && held > 0 ? QColor(Qt::white)
                                                       : QColor(0x5b, 0x64, 0x70));
                painter.drawText(box, Qt::AlignCenter, text);
            }
        }
    }

private:
    std::vector<int> counts;
    std::vector<int> possible;
};

QLabel* caption(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setObjectName(QStringLiteral("hoverCaption"));
    return label;
}

QLabel* value(const char* name, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setObjectName(QString::fromLatin1(name));
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return label;
}

} // namespace

HandRangeHover::HandRangeHover(const Range::HandRange& range, const std::string& board,
                               const std::vector<unsigned long long>& deadCards, QWidget* parent)
    : QWidget(parent, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint) {
    build(range);
    std::vector<unsigned long long> cards = Range::cardsOfText(board);
    cards.insert(cards.end(), deadCards.begin(), deadCards.end());
    const unsigned int alive = aliveCombinations(range, cards, {});
    combinations->setText(QString::number(range.combinationCount()));
    combinationsDiscounted->setText(QString::number(alive));
    percent->setText(percentText(range.rangePercentage()));
    percentDiscounted->setText(percentText(alive / 1326.0));
    hideParentRows();
}

HandRangeHover::HandRangeHover(const Range::Tree& groups, unsigned int group,
                               const std::string& board,
                               const std::vector<unsigned long long>& deadCards, QWidget* parent)
    : QWidget(parent, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint) {
    const Range::HandRange& range = groups.handRange(group);
    build(range);
    std::vector<unsigned long long> cards = Range::cardsOfText(board);
    cards.insert(cards.end(), deadCards.begin(), deadCards.end());

    const auto aliveOf = [&groups, &cards](unsigned int index) {
        std::vector<const Range::HandRange*> others;
        for (unsigned int sibling : groups.siblings(index))
            if (groups.node(sibling)->IsRange())
                others.push_back(&groups.handRange(sibling));
        return aliveCombinations(groups.handRange(index), cards, others);
    };
    const unsigned int alive = aliveOf(group);
    combinations->setText(QString::number(range.combinationCount()));
    combinationsDiscounted->setText(QString::number(alive));
    percent->setText(percentText(range.rangePercentage()));
    percentDiscounted->setText(percentText(alive / 1326.0));

    const float share = groups.shareOfParent(group);
    const unsigned int parentNode = groups.node(group)->parent;
    if (std::isnan(share) || parentNode == Range::Tree::noNode) {
        hideParentRows();
        return;
    }
    parentPortion->setText(percentText(share));
    const unsigned int parentAlive = aliveOf(parentNode);
    parentPortionDiscounted->setText(
        parentAlive == 0
            ? QStringLiteral("-")
            : percentText(static_cast<float>(alive) / static_cast<float>(parentAlive)));
}

void HandRangeHover::build(const Range::HandRange& range) {
    QWidget* wrapper = buildHoverFrame(this, QStringLiteral("HandRangeHover"),
                                       QStringLiteral("#hoverCaption { color: #5b6470; }"
                                                      "QLabel { background: transparent; "
                                                      "border: none; }"));
    setAttribute(Qt::WA_Hover);
    setMouseTracking(true);

    auto* layout = new QVBoxLayout(wrapper);
    layout->setContentsMargins(12, 10, 12, 12);
    layout->setSpacing(8);
    auto* numbers = new QGridLayout;
    numbers->setHorizontalSpacing(14);
    numbers->setVerticalSpacing(2);

    combinations = value("combinationsValue", wrapper);
    combinationsDiscounted = value("combinationsDiscountedValue", wrapper);
    percent = value("percentValue", wrapper);
    percentDiscounted = value("percentDiscountedValue", wrapper);
    parentPortion = value("parentPortionValue", wrapper);
    parentPortionDiscounted = value("parentPortionDiscountedValue", wrapper);
    QFont bold = combinations->font();
    bold.setBold(true);
    for (QLabel* label : {combinations, percent, parentPortion})
        label->setFont(bold);

    const QString discounted = QStringLiteral("Discounted By Other Ranges and Board:");
    const std::vector<std::pair<QString, QLabel*>> rows = {
        {QStringLiteral("Range Combinations:"), combinations},
        {discounted, combinationsDiscounted},
        {QStringLiteral("Range%:"), percent},
        {discounted, percentDiscounted},
        {QStringLiteral("Portion of Parent Range:"), parentPortion},
        {discounted, parentPortionDiscounted}};
    int row = 0;
    for (const auto& entry : rows) {
        QLabel* captionLabel = caption(entry.first, wrapper);
        numbers->addWidget(captionLabel, row, 0);
        numbers->addWidget(entry.second, row, 1);
        if (row >= 4) {
            parentRowLabels.push_back(captionLabel);
            parentRowLabels.push_back(entry.second);
        }
        ++row;
    }
    layout->addLayout(numbers);

    table = new RangeTablePicture(range, wrapper);
    layout->addWidget(table, 0, Qt::AlignHCenter);
    noPaint = new Utils::UI::NoPaintFilter(this);
    adjustSize();
}

void HandRangeHover::hideParentRows() {
    parentRowsShown = false;
    for (QLabel* label : parentRowLabels)
        label->installEventFilter(noPaint);
}

void HandRangeHover::setShowSuits(bool showSuits) {
    static_cast<RangeTablePicture*>(table)->showSuits = showSuits;
    table->update();
}

bool HandRangeHover::showsSuits() const {
    return static_cast<RangeTablePicture*>(table)->showSuits;
}

unsigned int HandRangeHover::aliveCombinations(const Range::HandRange& range,
                                               const std::vector<unsigned long long>& cards,
                                               const std::vector<const Range::HandRange*>& others) {
    unsigned long long blocked = 0;
    for (unsigned long long card : cards)
        blocked |= card;
    unsigned int alive = 0;
    std::vector<Range::CardMask> hands;
    for (const Range::Element& element : range) {
        unsigned int suits = element.suits;
        for (const Range::HandRange* other : others) {
            const auto found = other->find(element.values, element.suited);
            if (found != other->end())
                suits &= ~found->suits;
        }
        if (suits == 0)
            continue;
        hands.clear();
        Range::handsOfElement(element.values, suits, hands);
        for (Range::CardMask hand : hands)
            if ((hand & blocked) == 0)
                ++alive;
    }
    return alive;
}

bool HandRangeHover::event(QEvent* event) {
    if (event->type() == QEvent::HoverMove || event->type() == QEvent::MouseMove)
        emit hoverMoved();
    return QWidget::event(event);
}
