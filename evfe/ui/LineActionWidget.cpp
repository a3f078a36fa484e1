#include "evfe/ui/LineActionWidget.h"

#include "Range/Assertion.h"
#include "Range/CardText.h"
#include "Range/HandRangeStringManipulator.h"
#include "Range/HandRangeStringReader.h"
#include "Range/Tree.h"
#include "Range/TreeRangeNode.h"
#include "calculation/ThreadPool.h"
#include "evfe/EV_FE_ColorCoding.h"
#include "evfe/LineAction.h"
#include "evfe/VariantRanges.h"
#include "selection/HandRangeLine.h"
#include "selection/HandSelectionDialog.h"
#include "selection/SuitHover.h"
#include "utils/ui/EquityColor.h"

#include <QAction>
#include <QCursor>
#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QMovie>
#include <QPainter>
#include <QToolButton>
#include <QVBoxLayout>

#include <cmath>
#include <limits>

namespace {

const int playerLabelWidth = 80;
const int buttonRowWidth = 350;
const int buttonSize = 21;
const int firstActionHeight = 39;
const int reactionHeight = 71;
const int groupEntryLength = 70;
const float notANumber = std::numeric_limits<float>::quiet_NaN();

QToolButton* rangeButton(QWidget* parent, const char* icon, const char* tip) {
    auto* button = new QToolButton(parent);
    button->setIcon(QIcon(QString::fromLatin1(icon)));
    button->setToolTip(QString::fromLatin1(tip));
    button->setFixedSize(buttonSize, buttonSize);
    button->setIconSize(QSize(15, 15));
    return button;
}

QLabel* valueLabel(QWidget* parent) {
    auto* label = new QLabel(QStringLiteral("-"), parent);
    label->setMinimumWidth(64);
    label->setAlignment(Qt::AlignCenter);
    label->setStyleSheet(QString::fromStdString(EV_FE_ColorCoding::whiteStyleSheet()));
    return label;
}

QLabel* caption(const char* text, QWidget* parent) {
    auto* label = new QLabel(QString::fromLatin1(text), parent);
    label->setTextFormat(Qt::RichText);
    return label;
}

QIcon gradientIcon(const Range::GroupColor& color) {
    QPixmap pixmap(12, 12);
    QPainter painter(&pixmap);
    QLinearGradient gradient(0, 0, 0, 12);
    gradient.setColorAt(0,
                        QColor(color.colorFrom.red, color.colorFrom.green, color.colorFrom.blue));
    gradient.setColorAt(1, QColor(color.colorTo.red, color.colorTo.green, color.colorTo.blue));
    painter.fillRect(pixmap.rect(), gradient);
    return QIcon(pixmap);
}

std::string compactText(const Range::HandRange& range) {
    return Range::HandRangeStringReader(range).compactText();
}

const char* const invalidLineStyle = "HandRangeLine { color: #c8423b; }";

} // namespace

LineActionWidget::LineActionWidget(const Setup& setup, QWidget* parent)
    : QWidget(parent), action(setup.action), actingPlayer(setup.player),
      playerGroups(setup.playerGroups), pool(setup.pool), loadingMovie(setup.loadingMovie),
      colors(setup.colors), boardText(setup.board), deadCardText(setup.deadCards),
      showSingleEV(setup.showSingleEV) {
    QV_ASSERT(action != nullptr && colors != nullptr, "Line action widget without action.");
    action->deadmoney = static_cast<float>(setup.deadmoney);
    action->player1sEffectiveStackSizeBeforeAction = static_cast<float>(setup.player1sStack);
    action->player2sEffectiveStackSizeBeforeAction = static_cast<float>(setup.player2sStack);
    action->rakeFraction = static_cast<float>(setup.rakePercentage / 100);
    action->rakeCap = static_cast<float>(setup.rakeCap);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 2, 4, 2);
    layout->setSpacing(3);
    buildTopRow(setup);
    // A fold ends the street without showdown: no equity to show.
    if (!action->firstToAct)
        buildResultRow();
    setMaximumHeight(action->firstToAct ? firstActionHeight : reactionHeight);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);

    if (pool)
        connect(pool, &ThreadPool::EquityCalculationFinished, this,
                &LineActionWidget::reactToFinishedEquityCalculation);
    recountCombinations();
}

LineActionWidget::~LineActionWidget() {
    // The pool may be gone already when the whole window closes.
    if (pool && handle.getPool() == pool.data() && handle.IsRunning())
        handle.Stop();
}

void LineActionWidget::buildTopRow(const Setup& setup) {
    auto* row = new QHBoxLayout();
    row->setSpacing(6);
    verbLabel = new QLabel(
        QStringLiteral(" %1 %2s ").arg(setup.player, QString::fromStdString(action->verb)), this);
    verbLabel->setMinimumWidth(playerLabelWidth);
    row->addWidget(verbLabel);

    line = new HandRangeLine(this);
    line->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    if (action->range != nullptr) {
        line->setHandRange(&action->range->handRange);
        line->setRangeGroups(action->range->tree, action->range->index);
    }
    line->setBoard(boardText);
    connect(line, &HandRangeLine::RangeChanged, this, &LineActionWidget::reactToThisRangeChange);
    row->addWidget(line, 1);

    auto* buttons = new QWidget(this);
    buttons->setFixedWidth(buttonRowWidth);
    auto* buttonLayout = new QHBoxLayout(buttons);
    buttonLayout->setContentsMargins(0, 0, 0, 0);
    buttonLayout->setSpacing(3);
    copyButton = rangeButton(buttons, ":/downArrow.png", "Create Copy from Group");
    selectButton = rangeButton(buttons, ":/selectRange.png", "Select Range");
    clearButton = rangeButton(buttons, ":/clearRange.png", "Clear Range");
    determineButton = rangeButton(buttons, ":/determineRange.PNG",
                                  "Determine Range as Difference of Parent Range and other Ranges");
    for (QToolButton* button : {copyButton, selectButton, clearButton, determineButton})
        buttonLayout->addWidget(button);
    buttonLayout->addStretch(1);
    connect(copyButton, &QToolButton::clicked, this, &LineActionWidget::onSelectGroupContextMenu);
    connect(selectButton, &QToolButton::clicked, this, &LineActionWidget::OpenRangeSelectionDialog);
    connect(clearButton, &QToolButton::clicked, this, &LineActionWidget::ClearRange);
    connect(determineButton, &QToolButton::clicked, this, &LineActionWidget::DetermineRange);

    if (action->needsOwnSize) {
        sizeCaption = new QLabel(sizeCaptionFor(action->verb), buttons);
        sizeCaption->setTextFormat(Qt::RichText);
        size = new QDoubleSpinBox(buttons);
        size->setDecimals(2);
        size->setRange(0.0, 9999.0);
        size->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        size->setMinimumWidth(82);
        size->setValue(static_cast<double>(action->size));
        connect(size, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
                &LineActionWidget::reactToThisSizeChange);
        buttonLayout->addWidget(sizeCaption);
        buttonLayout->addWidget(size);
        buttonLayout->addWidget(new QLabel(QStringLiteral(" BB  "), buttons));
    }
    row->addWidget(buttons);
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
}

void LineActionWidget::buildResultRow() {
    auto* row = new QHBoxLayout();
    row->setSpacing(4);
    // The second row starts under the range line.
    indent = new QWidget(this);
    indent->setFixedSize(playerLabelWidth + 2, 1);
    row->addWidget(indent);
    QLabel* equityCaptions[2] = {caption("Equity P1:&nbsp;&nbsp;&nbsp;", this),
                                 caption("Equity P2:&nbsp;&nbsp;&nbsp;", this)};
    equityP1 = valueLabel(this);
    equityP2 = valueLabel(this);
    evCaptions[0] = caption("EV P1:&nbsp;&nbsp;&nbsp;", this);
    evCaptions[1] = caption("EV P2:&nbsp;&nbsp;&nbsp;", this);
    evP1 = valueLabel(this);
    evP2 = valueLabel(this);
    row->addWidget(equityCaptions[0]);
    row->addWidget(equityP1);
    row->addSpacing(8);
    row->addWidget(equityCaptions[1]);
    row->addWidget(equityP2);
    row->addSpacing(18);
    row->addWidget(evCaptions[0]);
    row->addWidget(evP1);
    row->addSpacing(8);
    row->addWidget(evCaptions[1]);
    row->addWidget(evP2);
    row->addStretch(1);
    // At the right edge, under the size of the row above.
    percentage = new QLabel(this);
    percentage->setMinimumWidth(150);
    percentage->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    percentage->setStyleSheet(QStringLiteral("color: #5b6470;"));
    row->addWidget(percentage);
    row->addSpacing(4);
    static_cast<QVBoxLayout*>(layout())->addLayout(row);

    // A fold has no showdown: its equities never show, but keep their place, so that the EV
    // columns of all reactions stand one under the other.
    const bool fold = action->action == ActionCode::Fold;
    for (QWidget* widget :
         {static_cast<QWidget*>(equityCaptions[0]), static_cast<QWidget*>(equityP1),
          static_cast<QWidget*>(equityCaptions[1]), static_cast<QWidget*>(equityP2)}) {
        QSizePolicy policy = widget->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        widget->setSizePolicy(policy);
        widget->setVisible(!fold);
    }
    setSingleEVVisible(showSingleEV);
}

int LineActionWidget::playerLabelHint() const {
    return verbLabel->sizeHint().width();
}

void LineActionWidget::setPlayerLabelWidth(int width) {
    verbLabel->setFixedWidth(width);
    if (indent != nullptr)
        indent->setFixedWidth(width + 2);
}

bool LineActionWidget::hasEquity() const {
    return hasResultRow() && action->action != ActionCode::Fold;
}

void LineActionWidget::setSingleEVVisible(bool visible) {
    showSingleEV = visible;
    if (!hasResultRow())
        return;
    for (QWidget* widget :
         {evCaptions[0], evCaptions[1], static_cast<QWidget*>(evP1), static_cast<QWidget*>(evP2)})
        widget->setVisible(visible);
}

QString LineActionWidget::sizeCaptionFor(const std::string& verb) {
    const QString nbsp = QStringLiteral("&nbsp;&nbsp;");
    if (verb.find("raise") != std::string::npos)
        return nbsp + QStringLiteral("Raisesize To");
    const std::string::size_type nBet = verb.find("-bet");
    if (nBet != std::string::npos && nBet > 0)
        return nbsp + QString(QChar::fromLatin1(verb[nBet - 1])) + QStringLiteral("-Betsize To");
    if (verb.find("bet") != std::string::npos)
        return nbsp + QStringLiteral("Betsize");
    return nbsp;
}

QString LineActionWidget::singleEVText(float value) {
    // Six significant digits, as a float variant spelled itself out when this page was
    // designed; today's variant text would print the float's double with 17 digits.
    return QString::number(static_cast<double>(value), 'g', 6);
}

QString LineActionWidget::groupEntryText(unsigned int index, const std::string& name,
                                         const std::string& rangeText) {
    return QStringLiteral("%1+%2: %3")
        .arg(index)
        .arg(QString::fromStdString(name), QString::fromStdString(rangeText));
}

// ---- Range ----------------------------------------------------------------------------

void LineActionWidget::reactToThisRangeChange() {
    recountCombinations();
    restartEquity();
    emit RangeChanged(*this);
    if (action->range != nullptr)
        emit RangeChanged(action->range->handRange);
}

void LineActionWidget::rangeReplaced() {
    if (action->range != nullptr)
        line->setHandRange(&action->range->handRange);
    reactToThisRangeChange();
}

void LineActionWidget::ValidateRange() {
    line->validateRange();
}

void LineActionWidget::ClearRange() {
    if (action->range == nullptr || action->range->handRange.isEmpty())
        return;
    action->range->handRange.reset();
    rangeReplaced();
}

void LineActionWidget::DetermineRange() {
    if (action->range == nullptr)
        return;
    // Assigned through the group's own rules, so it stays inside the parent.
    Range::HandRange& range = action->range->handRange;
    const Range::HandRange remainder = VariantRanges::parentRemainder(*action->range);
    range.reset();
    range += remainder;
    rangeReplaced();
}

QMenu* LineActionWidget::createGroupMenu(QWidget* parent) const {
    auto* menu = new QMenu(parent);
    if (playerGroups == nullptr)
        return menu;
    for (unsigned int index = 0; index < playerGroups->count(); ++index) {
        const Range::TreeNode* node = playerGroups->node(index);
        if (node == nullptr || !node->IsRange())
            continue;
        const auto* group = static_cast<const Range::TreeRangeNode*>(node);
        const std::string text = compactText(group->handRange);
        QString entry = index == 0 ? QStringLiteral("Full Range: ") + QString::fromStdString(text)
                                   : groupEntryText(index, group->name, text);
        if (entry.size() > groupEntryLength)
            entry = entry.left(groupEntryLength) + QStringLiteral("...");
        QAction* item = menu->addAction(entry);
        item->setData(QString::fromStdString(text));
        if (group->color.usesColor)
            item->setIcon(gradientIcon(group->color));
    }
    return menu;
}

void LineActionWidget::onSelectGroupContextMenu() {
    QMenu* menu = createGroupMenu(this);
    connect(menu, &QMenu::triggered, this, &LineActionWidget::onApplyRangeFromAction);
    menu->exec(QCursor::pos());
    menu->deleteLater();
}

void LineActionWidget::onApplyRangeFromAction(QAction* entry) {
    if (entry == nullptr || action->range == nullptr)
        return;
    // The group's text, read the way typing reads it: the parent cuts what does not fit.
    Range::HandRange& range = action->range->handRange;
    Range::HandRange chosen;
    Range::HandRangeStringManipulator(chosen).setFree(entry->data().toString().toStdString());
    range.reset();
    range += chosen;
    rangeReplaced();
}

void LineActionWidget::OpenRangeSelectionDialog() {
    if (action->range == nullptr)
        return;
    const QString title = QStringLiteral("Select Range of \"%1\" for \"%2\"")
                              .arg(QString::fromStdString(action->verb), actingPlayer);
    if (HandSelectionDialog::selectRange(action->range->handRange, title, boardText, deadCardText,
                                         pool.data(), this))
        rangeReplaced();
}

void LineActionWidget::UpdateOtherRange(const Range::HandRange& range) {
    otherRange = range;
    recountCombinations();
    restartEquity();
}

void LineActionWidget::UpdateBoardConstraints(const std::string& board,
                                              const std::string& deadCards) {
    boardText = board;
    deadCardText = deadCards;
    line->setBoard(board);
    recountCombinations();
    restartEquity();
}

// ---- Combinations and validity ----------------------------------------------------------

void LineActionWidget::recountCombinations() {
    float combinations = 0.0f;
    if (action->range != nullptr && !action->range->handRange.isEmpty()) {
        const Range::HandRange& own = action->range->handRange;
        if (Range::CardText::problemOf(boardText, deadCardText).empty()) {
            volatile bool noStop = false;
            const RangeCombinations counted = getRangeCombinationsForOneRange(
                Range::HandRangeStringReader(own).technicalText(),
                Range::HandRangeStringReader(otherRange).technicalText(), boardText, deadCardText,
                noStop);
            combinations = counted.combinations1;
            if (combinations > 0.0f && combinations < 1.0f)
                combinations = 1.0f;
        } else {
            // Cards that cannot be analysed take nothing away.
            combinations = static_cast<float>(own.combinationCount());
        }
    }
    action->rangeCombinations = static_cast<std::uint32_t>(combinations);
    action->rangePercentage = combinations / 1326;
    action->updateParentRangePercentage();
    showCombinations();
    showValidity();
}

void LineActionWidget::showCombinations() {
    const float share = action->parentRangePercentage;
    const QString shareText = std::isfinite(share) ? equityPercentText(share) : QStringLiteral("-");
    const QString explained = QStringLiteral("%1 combinations after the board, the dead cards and "
                                             "the other range; %2 of the parent range")
                                  .arg(action->rangeCombinations)
                                  .arg(shareText);
    verbLabel->setToolTip(explained);
    if (percentage == nullptr)
        return;
    percentage->setText(
        QStringLiteral("Combos: %1 (%2)").arg(action->rangeCombinations).arg(shareText));
    percentage->setToolTip(explained);
}

void LineActionWidget::showValidity() {
    const bool inside = action->range == nullptr || VariantRanges::isInsideParent(*action);
    line->setStyleSheet(inside ? QString() : QString::fromLatin1(invalidLineStyle));
    line->setToolTip(inside ? QString()
                            : QStringLiteral("This range holds hands that are not in %1's range "
                                             "above; its results show \"-\" until it fits.")
                                  .arg(actingPlayer));
    const Range::TreeRangeNode* parent =
        action->range != nullptr && action->range->parent != Range::Tree::noNode
            ? action->range->tree->rangeNode(action->range->parent)
            : nullptr;
    line->setPlaceholderText(parent != nullptr && parent->handRange.isEmpty()
                                 ? QStringLiteral("%1's range above is empty").arg(actingPlayer)
                                 : QString());
}

QString LineActionWidget::findProblem() const {
    if (action->range == nullptr || action->range->handRange.isEmpty())
        return QStringLiteral("No range for this reaction.");
    if (otherRange.isEmpty())
        return QStringLiteral("The range of the first action is empty.");
    if (!VariantRanges::isInsideParent(*action))
        return QStringLiteral("This range holds hands that are not in %1's range.")
            .arg(actingPlayer);
    const std::string cards = Range::CardText::problemOf(boardText, deadCardText);
    if (!cards.empty())
        return QString::fromStdString(cards);
    if (!pool)
        return QStringLiteral("No equity calculation is possible here.");
    return QString();
}

// ---- Equity ---------------------------------------------------------------------------------

void LineActionWidget::restartEquity() {
    if (!hasResultRow())
        return;
    problemText = findProblem();
    if (!hasEquity()) {
        // A fold: no showdown, but its EV needs a range.
        if (problemText.isEmpty())
            RecalculateEV();
        else
            showNoEquity(problemText);
        return;
    }
    if (!problemText.isEmpty()) {
        showNoEquity(problemText);
        return;
    }
    const Range::HandRange& own = action->range->handRange;
    const bool player1Acts = actingPlayer == QLatin1String("Player1");
    const std::string player1 =
        Range::HandRangeStringReader(player1Acts ? own : otherRange).technicalText();
    const std::string player2 =
        Range::HandRangeStringReader(player1Acts ? otherRange : own).technicalText();
    const std::string key = player1 + '|' + player2 + '|' + boardText + '|' + deadCardText;
    if (key == equityKey && (calculating || std::isfinite(action->equityP1)))
        return; // the equity of these texts is there or on its way
    if (handle.IsRunning())
        handle.Stop();
    equityKey = key;
    handle = pool->createEquityCalculationHandle();
    handle.Start(player1, player2, boardText, deadCardText);
    for (QLabel* label : {equityP1, equityP2, evP1, evP2}) {
        label->clear();
        label->setToolTip(QString());
        label->setStyleSheet(QString::fromStdString(EV_FE_ColorCoding::whiteStyleSheet()));
        if (loadingMovie != nullptr) {
            label->setMovie(loadingMovie);
            loadingMovie->start();
        }
    }
    if (!calculating) {
        calculating = true;
        emit EquityCalculationStarted();
    }
}

void LineActionWidget::showNoEquity(const QString& reason) {
    if (handle.IsRunning())
        handle.Stop();
    equityKey.clear();
    action->equityP1 = notANumber;
    action->equityP2 = notANumber;
    action->calculateEV();
    for (QLabel* label : {equityP1, equityP2, evP1, evP2}) {
        label->setText(QStringLiteral("-"));
        label->setToolTip(reason);
        label->setStyleSheet(QString::fromStdString(EV_FE_ColorCoding::whiteStyleSheet()));
    }
    const bool wasCalculating = calculating;
    calculating = false;
    if (hasEquity() || wasCalculating)
        emit EquityCalculationFinished();
}

void LineActionWidget::reactToFinishedEquityCalculation(const ThreadHandle& finished,
                                                        const LongedEvaluation& result) {
    if (!(finished == handle))
        return;
    calculating = false;
    action->setEquities(result);
    if (std::isfinite(action->equityP1)) {
        showEquities();
        RecalculateEV();
    } else {
        problemText = QStringLiteral("No hand of one range can meet a hand of the other on "
                                     "these cards.");
        showNoEquity(problemText);
        return;
    }
    emit EquityCalculationFinished();
}

void LineActionWidget::showEquities() {
    const float equities[2] = {action->equityP1, action->equityP2};
    QLabel* labels[2] = {equityP1, equityP2};
    for (int i = 0; i < 2; ++i) {
        labels[i]->setText(equityPercentText(equities[i]));
        labels[i]->setToolTip(QString());
        labels[i]->setStyleSheet(QString::fromStdString(EV_FE_ColorCoding::whiteStyleSheet()));
    }
}

void LineActionWidget::RecalculateEV() {
    action->calculateEV();
    if (!hasResultRow())
        return;
    if (!problemText.isEmpty()) {
        for (QLabel* label : {evP1, evP2})
            label->setText(QStringLiteral("-"));
        return;
    }
    const float values[2] = {action->EV_P1, action->EV_P2};
    QLabel* labels[2] = {evP1, evP2};
    for (int i = 0; i < 2; ++i) {
        if (std::isfinite(values[i])) {
            labels[i]->setText(singleEVText(values[i]));
            labels[i]->setToolTip(QString::fromStdString(action->explanation));
            labels[i]->setStyleSheet(QString::fromStdString(colors->styleSheetFor(values[i])));
        } else {
            labels[i]->setText(QStringLiteral("-"));
            labels[i]->setToolTip(QString());
            labels[i]->setStyleSheet(QString::fromStdString(EV_FE_ColorCoding::whiteStyleSheet()));
        }
    }
}

// ---- Money ----------------------------------------------------------------------------------

void LineActionWidget::storeAndRecalculate(float& field, float value) {
    field = value;
    if (!calculating)
        RecalculateEV();
}

void LineActionWidget::reactToThisSizeChange(double value) {
    storeAndRecalculate(action->size, static_cast<float>(value));
    emit SizeChanged(value);
}

void LineActionWidget::UpdatePreviousMoney(double value) {
    storeAndRecalculate(action->previousMoney, static_cast<float>(value));
}

void LineActionWidget::UpdateDeadMoney(double value) {
    storeAndRecalculate(action->deadmoney, static_cast<float>(value));
}

void LineActionWidget::UpdateRakePercentage(double value) {
    storeAndRecalculate(action->rakeFraction, static_cast<float>(value / 100));
}

void LineActionWidget::UpdateRakeCap(double value) {
    storeAndRecalculate(action->rakeCap, static_cast<float>(value));
}

void LineActionWidget::UpdatePlayer1sLastInvestment(double value) {
    storeAndRecalculate(action->player1sLastInvestmentBeforeAction, static_cast<float>(value));
}

void LineActionWidget::UpdatePlayer2sLastInvestment(double value) {
    storeAndRecalculate(action->player2sLastInvestmentBeforeAction, static_cast<float>(value));
}

void LineActionWidget::UpdatePlayer1sEffectiveStackLeft(double value) {
    storeAndRecalculate(action->player1sEffectiveStackSizeBeforeAction, static_cast<float>(value));
}

void LineActionWidget::UpdatePlayer2sEffectiveStackLeft(double value) {
    storeAndRecalculate(action->player2sEffectiveStackSizeBeforeAction, static_cast<float>(value));
}
