#include "selection/HandStrengthSelectorTab.h"

#include "utils/ui/NoPaintFilter.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>

#include <initializer_list>

namespace HSO = HandStrengthSelectorOptions;

namespace {

template <typename Enumeration>
void fill(QComboBox* combo, std::initializer_list<int> values) {
    combo->clear();
    for (int value : values)
        combo->addItem(QString::fromLatin1(HSO::enumLabel(static_cast<Enumeration>(value))), value);
}

void fillComparators(QComboBox* combo) {
    for (int value : {0, 1, 2})
        combo->addItem(QString::fromLatin1(HSO::enumLabel(static_cast<HSO::Comparator>(value))),
                       value);
}

int valueOf(const QComboBox* combo) {
    return combo->currentIndex() < 0 ? 0 : combo->currentData().toInt();
}

HSO::Comparator comparatorOf(const QComboBox* combo) {
    return static_cast<HSO::Comparator>(valueOf(combo));
}

template <typename Enumeration>
HandStrengthSelection::Choice<Enumeration> choiceOf(const QComboBox* value,
                                                    const QComboBox* comparator) {
    HandStrengthSelection::Choice<Enumeration> choice;
    choice.value = static_cast<Enumeration>(valueOf(value));
    choice.comparator = comparatorOf(comparator);
    return choice;
}

} // namespace

HandStrengthSelectorTab::HandStrengthSelectorTab(QWidget* parent)
    : QWidget(parent), noPaint(new Utils::UI::NoPaintFilter(this)) {
    HSO::registerHandStrengthSelectorMetaTypes();
    handValue = makeCombo("handValue");
    handValueComparator = makeCombo("handValueComparator");
    handValueDetail = makeCombo("handValueDetail");
    flushDraw = makeCombo("flushDraw");
    straightDraw = makeCombo("straightDraw");
    flushDrawComparator = makeCombo("flushDrawComparator");
    straightDrawComparator = makeCombo("straightDrawComparator");
    flushDrawStrength = makeCombo("flushDrawStrength");
    flushDrawStrengthComparator = makeCombo("flushDrawStrengthComparator");
    handValueDetail2 = makeCombo("handValueDetail2");
    handValueDetailComparator = makeCombo("handValueDetailComparator");
    handValueDetail2Comparator = makeCombo("handValueDetail2Comparator");
    flushDrawCardNumber = makeCombo("flushDrawCardNumber");
    flushDrawCardNumberComparator = makeCombo("flushDrawCardNumberComparator");
    straightDrawCardNumber = makeCombo("straightDrawCardNumber");
    straightDrawCardNumberComparator = makeCombo("straightDrawCardNumberComparator");
    handValueLabel = new QLabel(QStringLiteral("Hand Value"), this);
    handValueLabel->setObjectName(QStringLiteral("handValueLabel"));
    flushDrawLabel = new QLabel(QStringLiteral("Flush Draw"), this);
    flushDrawLabel->setObjectName(QStringLiteral("flushDrawLabel"));
    straightDrawLabel = new QLabel(QStringLiteral("Straight Draw"), this);
    straightDrawLabel->setObjectName(QStringLiteral("straightDrawLabel"));

    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(2, 2, 2, 2);
    grid->setHorizontalSpacing(4);
    grid->setVerticalSpacing(3);
    const std::initializer_list<std::initializer_list<QWidget*>> rows = {
        {handValueLabel, handValue, handValueComparator},
        {nullptr, handValueDetail, handValueDetailComparator},
        {nullptr, handValueDetail2, handValueDetail2Comparator},
        {flushDrawLabel, flushDraw, flushDrawComparator},
        {nullptr, flushDrawStrength, flushDrawStrengthComparator},
        {nullptr, flushDrawCardNumber, flushDrawCardNumberComparator},
        {straightDrawLabel, straightDraw, straightDrawComparator},
        {nullptr, straightDrawCardNumber, straightDrawCardNumberComparator}};
    int row = 0;
    for (const auto& widgets : rows) {
        int column = 0;
        for (QWidget* widget : widgets) {
            if (widget)
                grid->addWidget(widget, row, column);
            ++column;
        }
        ++row;
    }
    grid->setColumnStretch(1, 3);
    grid->setColumnStretch(2, 2);
    grid->setRowStretch(row, 1);

    fill<HSO::HandValue>(handValue, {0, 9, 8, 7, 6, 5, 4, 3, 2, 1});
    for (QComboBox* comparator :
         {handValueComparator, flushDrawComparator, straightDrawComparator,
          flushDrawStrengthComparator, handValueDetailComparator, handValueDetail2Comparator,
          flushDrawCardNumberComparator, straightDrawCardNumberComparator})
        fillComparators(comparator);
    fill<HSO::FlushDrawValue>(flushDraw, {0, 2, 1});
    fill<HSO::FlushDrawStrength>(flushDrawStrength, {0, 6, 5, 4, 3, 2, 1});
    fill<HSO::FlushDrawCardNumberValue>(flushDrawCardNumber, {0, 2, 1});
    fill<HSO::StraightDrawCardNumberValue>(straightDrawCardNumber, {0, 2, 1});
    fill<HSO::StraightDrawValue>(straightDraw, {0, 6, 5, 4, 3, 2, 1});

    connect(handValue, QOverload<int>::of(&QComboBox::activated), this,
            &HandStrengthSelectorTab::onHandValueChange);
    connect(handValueDetail, QOverload<int>::of(&QComboBox::activated), this,
            &HandStrengthSelectorTab::onHandValueDetailChange);
    connect(flushDraw, QOverload<int>::of(&QComboBox::activated), this,
            &HandStrengthSelectorTab::onFlushDrawChange);
    connect(straightDraw, QOverload<int>::of(&QComboBox::activated), this,
            &HandStrengthSelectorTab::onStraightDrawChange);

    onHandValueChange();
    onFlushDrawChange();
    onStraightDrawChange();
}

QComboBox* HandStrengthSelectorTab::makeCombo(const char* name) {
    auto* combo = new QComboBox(this);
    combo->setObjectName(QString::fromLatin1(name));
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combo->setMinimumContentsLength(6);
    return combo;
}

void HandStrengthSelectorTab::apply(QComboBox* combo, bool applied) {
    // Hidden by painting nothing, so that the rows below keep their places.
    combo->removeEventFilter(noPaint);
    if (!applied)
        combo->installEventFilter(noPaint);
    combo->setEnabled(applied);
    combo->update();
}

bool HandStrengthSelectorTab::isApplied(const QComboBox* combo) const {
    return combo->isEnabled();
}

void HandStrengthSelectorTab::onHandValueChange() {
    if (handValue->currentIndex() < 0)
        return;
    handValueDetailComparator->setCurrentIndex(0);
    handValueDetail2Comparator->setCurrentIndex(0);
    handValueDetail->clear();
    handValueDetail2->clear();
    for (QComboBox* combo :
         {handValueDetail, handValueDetailComparator, handValueDetail2, handValueDetail2Comparator})
        apply(combo, false);

    const auto value = static_cast<HSO::HandValue>(valueOf(handValue));
    switch (value) {
    case HSO::HandValue::Highcards:
        fill<HSO::HighcardValue>(handValueDetail, {0, 5, 4, 3, 2, 1});
        break;
    case HSO::HandValue::Pair:
        fill<HSO::PairValue>(handValueDetail, {0, 9, 8, 7, 6, 5, 4, 3, 2, 1});
        break;
    case HSO::HandValue::Twopair:
        fill<HSO::TwopairValue>(handValueDetail, {0, 4, 3, 2, 1});
        break;
    case HSO::HandValue::ThreeOfAKind:
        fill<HSO::TripsValue>(handValueDetail, {0, 1, 2});
        break;
    case HSO::HandValue::Flush:
        fill<HSO::FlushValue>(handValueDetail, {0, 6, 5, 4, 3, 2, 1});
        break;
    default:
        break;
    }
    if (handValueDetail->count() > 0) {
        apply(handValueDetail, true);
        apply(handValueDetailComparator, true);
    }
    const bool any = value == HSO::HandValue::Any;
    handValueDetailComparator->setItemText(
        1, QString::fromLatin1(HSO::enumLabel(HSO::Comparator::OrBetter, !any)));
    handValueDetailComparator->setItemText(
        2, QString::fromLatin1(HSO::enumLabel(HSO::Comparator::OrWorse, !any)));
}

void HandStrengthSelectorTab::onHandValueDetailChange() {
    handValueDetail2->clear();
    handValueDetail2Comparator->setCurrentIndex(0);
    const auto value = static_cast<HSO::HandValue>(valueOf(handValue));
    const int detail = valueOf(handValueDetail);
    if (value == HSO::HandValue::ThreeOfAKind && detail == 1) {
        fill<HSO::TripsTripsValue>(handValueDetail2, {0, 4, 3, 2, 1});
    } else if (value == HSO::HandValue::Twopair && detail == 2) {
        fill<HSO::OneCardTwopairValue>(handValueDetail2, {0, 3, 2, 1});
    } else if (value == HSO::HandValue::Twopair && detail == 3) {
        fill<HSO::TwoCardTwopairValue>(handValueDetail2, {0, 4, 3, 2, 1});
    } else if (value == HSO::HandValue::Twopair && detail == 4) {
        fill<HSO::PocketPairTwopairValue>(handValueDetail2, {0, 3, 2, 1});
    } else if (value == HSO::HandValue::Pair &&
               (detail == 2 || detail == 4 || detail == 6 || detail == 8)) {
        fill<HSO::KickerValue>(handValueDetail2, {0, 4, 3, 2, 1});
    }
    const bool applies = handValueDetail2->count() > 0;
    apply(handValueDetail2, applies);
    apply(handValueDetail2Comparator, applies);
}

void HandStrengthSelectorTab::onFlushDrawChange() {
    const int value = valueOf(flushDraw);
    const bool applies = value == 1 || value == 2;
    for (QComboBox* combo : {flushDrawStrength, flushDrawStrengthComparator, flushDrawCardNumber,
                             flushDrawCardNumberComparator}) {
        if (!applies)
            combo->setCurrentIndex(0);
        apply(combo, applies);
    }
}

void HandStrengthSelectorTab::onStraightDrawChange() {
    const int value = valueOf(straightDraw);
    const bool applies = value != 0 && value != 7;
    for (QComboBox* combo : {straightDrawCardNumber, straightDrawCardNumberComparator}) {
        if (!applies)
            combo->setCurrentIndex(0);
        apply(combo, applies);
    }
}

HandStrengthSelection HandStrengthSelectorTab::selection() const {
    HandStrengthSelection request;
    request.handValue = choiceOf<HSO::HandValue>(handValue, handValueComparator);
    switch (request.handValue.value) {
    case HSO::HandValue::Highcards:
        request.highcardValue =
            choiceOf<HSO::HighcardValue>(handValueDetail, handValueDetailComparator);
        break;
    case HSO::HandValue::Pair:
        request.pairValue = choiceOf<HSO::PairValue>(handValueDetail, handValueDetailComparator);
        request.kickerValue =
            choiceOf<HSO::KickerValue>(handValueDetail2, handValueDetail2Comparator);
        break;
    case HSO::HandValue::Twopair: {
        request.twopairValue =
            choiceOf<HSO::TwopairValue>(handValueDetail, handValueDetailComparator);
        switch (request.twopairValue.value) {
        case HSO::TwopairValue::WithOneHoleCard:
            request.oneCardTwopairValue =
                choiceOf<HSO::OneCardTwopairValue>(handValueDetail2, handValueDetail2Comparator);
            break;
        case HSO::TwopairValue::WithTwoHoleCards:
            request.twoCardTwopairValue =
                choiceOf<HSO::TwoCardTwopairValue>(handValueDetail2, handValueDetail2Comparator);
            break;
        case HSO::TwopairValue::WithPocketPair:
            request.pocketPairTwopairValue =
                choiceOf<HSO::PocketPairTwopairValue>(handValueDetail2, handValueDetail2Comparator);
            break;
        default:
            break;
        }
        break;
    }
    case HSO::HandValue::ThreeOfAKind:
        request.tripsValue = choiceOf<HSO::TripsValue>(handValueDetail, handValueDetailComparator);
        request.tripsTripsValue =
            choiceOf<HSO::TripsTripsValue>(handValueDetail2, handValueDetail2Comparator);
        break;
    case HSO::HandValue::Flush:
        request.flushValue = choiceOf<HSO::FlushValue>(handValueDetail, handValueDetailComparator);
        break;
    default:
        break;
    }
    request.flushDrawValue = choiceOf<HSO::FlushDrawValue>(flushDraw, flushDrawComparator);
    request.flushDrawStrength =
        choiceOf<HSO::FlushDrawStrength>(flushDrawStrength, flushDrawStrengthComparator);
    request.flushDrawCardNumberValue =
        choiceOf<HSO::FlushDrawCardNumberValue>(flushDrawCardNumber, flushDrawCardNumberComparator);
    request.straightDrawValue =
        choiceOf<HSO::StraightDrawValue>(straightDraw, straightDrawComparator);
    request.straightDrawCardNumberValue = choiceOf<HSO::StraightDrawCardNumberValue>(
        straightDrawCardNumber, straightDrawCardNumberComparator);
    return request;
}

std::vector<BoardType>
HandStrengthSelectorTab::select(const std::vector<BoardType>& hands,
                                const std::vector<BoardType>& board,
                                const std::vector<BoardType>& deadCards) const {
    HandStrengthSelection request = selection();
    request.hands = hands;
    for (BoardType card : board)
        request.board |= card;
    for (BoardType card : deadCards)
        request.deadCards |= card;
    return request.select();
}
