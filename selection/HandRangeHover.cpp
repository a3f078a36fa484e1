#include "selection/HandRangeHover.h"

#include "Range/HandRangeElementConversion.h"
#include "Range/Tree.h"
#include "Range/TreeRangeNode.h"
#include "selection/HandSelectionTable.h"
#include "selection/HoverFrame.h"
#include "utils/ui/NoPaintFilter.h"

#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

#include <cmath>

namespace {

QString percentText(double fraction) {
    return QString::number(fraction * 100.0, 'f', 2) + QStringLiteral(" %");
}

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
    build();
    showRange(range, board, deadCards);
}

HandRangeHover::HandRangeHover(const Range::Tree& groups, unsigned int group,
                               const std::string& board,
                               const std::vector<unsigned long long>& deadCards, QWidget* parent)
    : QWidget(parent, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint) {
    build();
    showGroup(groups, group, board, deadCards);
}

void HandRangeHover::takeRange(const Range::HandRange& range, const std::string& board,
                               const std::vector<unsigned long long>& dead) {
    shown = range;
    deadCards = Range::cardsOfText(board);
    deadCards.insert(deadCards.end(), dead.begin(), dead.end());
    table->setDeadCards(deadCards);
    table->setRange(&shown);
}

void HandRangeHover::showRange(const Range::HandRange& range, const std::string& board,
                               const std::vector<unsigned long long>& dead) {
    takeRange(range, board, dead);
    const unsigned int alive = aliveCombinations(shown, deadCards, {});
    combinations->setText(QString::number(shown.combinationCount()));
    combinationsDiscounted->setText(QString::number(alive));
    percent->setText(percentText(shown.rangePercentage()));
    percentDiscounted->setText(percentText(alive / 1326.0));
    setParentRowsShown(false);
}

void HandRangeHover::showGroup(const Range::Tree& groups, unsigned int group,
                               const std::string& board,
                               const std::vector<unsigned long long>& dead) {
    takeRange(groups.handRange(group), board, dead);
    const std::vector<unsigned long long>& cards = deadCards;
    const auto aliveOf = [&groups, &cards](unsigned int index) {
        std::vector<const Range::HandRange*> others;
        for (unsigned int sibling : groups.siblings(index))
            if (groups.node(sibling)->IsRange())
                others.push_back(&groups.handRange(sibling));
        return aliveCombinations(groups.handRange(index), cards, others);
    };
    const unsigned int alive = aliveOf(group);
    combinations->setText(QString::number(shown.combinationCount()));
    combinationsDiscounted->setText(QString::number(alive));
    percent->setText(percentText(shown.rangePercentage()));
    percentDiscounted->setText(percentText(alive / 1326.0));

    const float share = groups.shareOfParent(group);
    const unsigned int parentNode = groups.node(group)->parent;
    if (std::isnan(share) || parentNode == Range::Tree::noNode) {
        setParentRowsShown(false);
        return;
    }
    parentPortion->setText(percentText(share));
    const unsigned int parentAlive = aliveOf(parentNode);
    parentPortionDiscounted->setText(
        parentAlive == 0
            ? QStringLiteral("-")
            : percentText(static_cast<float>(alive) / static_cast<float>(parentAlive)));
    setParentRowsShown(true);
}

void HandRangeHover::build() {
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

    // The hover owns the copy the table points to; read-only, so it stays what was passed.
    table = new HandSelectionTable(wrapper);
    table->setReadOnly(true);
    table->setSuitHoverEnabled(false);
    table->setAcceptDrops(false);
    table->setRange(&shown);
    layout->addWidget(table, 0, Qt::AlignHCenter);
    noPaint = new Utils::UI::NoPaintFilter(this);
    adjustSize();
}

void HandRangeHover::setParentRowsShown(bool show) {
    if (show == parentRowsShown)
        return;
    parentRowsShown = show;
    for (QLabel* label : parentRowLabels) {
        if (show)
            label->removeEventFilter(noPaint);
        else
            label->installEventFilter(noPaint);
        label->update();
    }
}

void HandRangeHover::setShowSuits(bool showSuits) {
    table->setSuitHoverEnabled(showSuits);
}

bool HandRangeHover::showsSuits() const {
    return table->isSuitHoverEnabled();
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
