#include "tabs/EquityEvolutionTab.h"

#include "Range/Assertion.h"
#include "Range/CardText.h"
#include "Range/RangeStringOperations.h"
#include "calculation/ThreadPool.h"
#include "ui_EquityEvolutionTab.h"
#include "utils/ui/EquityColor.h"
#include "utils/ui/PlotContextMenu.h"
#include "utils/ui/PlotHoverTip.h"
#include "utils/ui/PlotLook.h"
#include "utils/ui/PlotMessage.h"

#include <QTimer>
#include <qcustomplot.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

const int deckEnd = 104;
// The shortest time between two drawings of a growing picture.
const int frameMs = 25;
const double barWidth = 0.2;

struct SuitLook {
    const char* name;
    QColor light;
    QColor dark;
};

const std::array<SuitLook, 4> suitLooks = {{
    {"Diamonds", QColor(156, 152, 255), QColor(26, 42, 228)},
    {"Hearts", QColor(255, 156, 158), QColor(222, 58, 44)},
    {"Spades", QColor(84, 84, 112), QColor(64, 64, 92)},
    {"Clubs", QColor(155, 255, 165), QColor(4, 192, 8)},
}};

// The middle of a rank's four bars; the ranks stand one apart, centred in 0 to 14.3.
double rankPosition(int rank) {
    return 1.15 + rank;
}

double barPosition(int suit, int rank) {
    return rankPosition(rank) + (suit - 1.5) * barWidth;
}

// Range text of any spelling in technical form; bad tokens are dropped.
std::string technicalRangeText(const std::string& text) {
    std::string normal = text;
    Range::normalize(normal);
    return normal.empty() ? std::string() : Range::expand(normal);
}

// Whether a card occurs twice in a text of two-character cards.
bool hasRepeatedCard(const std::string& cards) {
    for (std::size_t first = 0; first + 1 < cards.size(); first += 2)
        for (std::size_t second = first + 2; second + 1 < cards.size(); second += 2)
            if (cards.compare(first, 2, cards, second, 2) == 0)
                return true;
    return false;
}

bool holdsCard(const std::string& cards, const std::string& card) {
    for (std::size_t at = 0; at + 1 < cards.size(); at += 2)
        if (cards.compare(at, 2, card) == 0)
            return true;
    return false;
}

int slotOfCard(const std::string& card) {
    for (std::size_t at = 0; at < EquityEvolutionTab::deck.size(); at += 2)
        if (EquityEvolutionTab::deck.compare(at, 2, card) == 0)
            return static_cast<int>(at / 2);
    return -1;
}

} // namespace

const std::string EquityEvolutionTab::deck = "AdAhAsAcKdKhKsKcQdQhQsQcJdJhJsJcTdThTsTc9d9h9s9c"
                                             "8d8h8s8c7d7h7s7c6d6h6s6c5d5h5s5c4d4h4s4c3d3h3s3c"
                                             "2d2h2s2c";

EquityEvolutionTab::EquityEvolutionTab(QWidget* parent)
    : QWidget(parent), ui(new Ui::EquityEvolutionTab) {
    ui->setupUi(this);
    setWhatsThis("In this tab, you can find out how the equity of one range against another "
                 "develops on different turn or river cards.");

    QCustomPlot* plot = ui->plot;
    PlotLook::apply(plot);
    titleElement = PlotLook::addTitle(plot);

    QVector<double> ticks;
    QVector<QString> labels;
    const QString ranks = QStringLiteral("AKQJT98765432");
    for (int rank = 0; rank < 13; ++rank) {
        ticks << rankPosition(rank);
        labels << ranks.mid(rank, 1);
    }
    QSharedPointer<QCPAxisTickerText> rankTicker(new QCPAxisTickerText);
    rankTicker->setTicks(ticks, labels);
    rankTicker->setSubTickCount(1);
    plot->xAxis->setTicker(rankTicker);
    plot->xAxis->setSubTickLength(0);
    plot->xAxis->setTickLength(0);
    plot->xAxis->setRange(0, 14.3);
    plot->xAxis->grid()->setVisible(false);
    QFont rankFont = plot->xAxis->tickLabelFont();
    rankFont.setPointSizeF(10);
    rankFont.setBold(true);
    plot->xAxis->setTickLabelFont(rankFont);
    plot->yAxis->setTicker(PlotLook::percentTicker());
    plot->yAxis->setRange(0, 1);
    plot->yAxis->setLabel(QStringLiteral("Equity"));

    for (int suit = 0; suit < 4; ++suit) {
        auto* bars = new QCPBars(plot->xAxis, plot->yAxis);
        bars->setName(QString::fromLatin1(suitLooks[suit].name));
        bars->setWidth(barWidth);
        // The gradient runs over each bar on its own, light at the top.
        QLinearGradient gradient(0, 0, 0, 1);
        gradient.setCoordinateMode(QGradient::ObjectBoundingMode);
        gradient.setColorAt(0, suitLooks[suit].light);
        gradient.setColorAt(1, suitLooks[suit].dark);
        bars->setBrush(gradient);
        bars->setPen(QPen(suitLooks[suit].dark));
        suitBars[suit] = bars;
        for (int rank = 0; rank < 13; ++rank)
            xPositions[suit].push_back(barPosition(suit, rank));
    }
    PlotLook::putLegendBelow(plot);
    messageItem = std::make_unique<PlotMessage>(plot);
    menu = new PlotContextMenu(plot, [this] { return csvText(); });
    new PlotHoverTip(plot, [this](const QPoint& at) { return toolTipAt(at); });

    drawTimer = new QTimer(this);
    drawTimer->setSingleShot(true);
    drawTimer->setInterval(frameMs);
    connect(drawTimer, &QTimer::timeout, this, [this] { ui->plot->replot(); });
    connect(ui->analyzeTurnButton, &QPushButton::clicked, this,
            &EquityEvolutionTab::analyzeTurnCards);
    connect(ui->analyzeRiverButton, &QPushButton::clicked, this,
            &EquityEvolutionTab::analyzeRiverCards);
    connect(ui->playerSelection, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &EquityEvolutionTab::abortCurrentCalculation);
    showState();
}

EquityEvolutionTab::~EquityEvolutionTab() {
    // The window's pool may be gone before its child widgets; the guarded pointer tells.
    if (threadPool && handle.getPool() == threadPool.data() && handle.IsRunning())
        handle.Stop();
}

void EquityEvolutionTab::setThreadPool(ThreadPool* pool) {
    if (pool == threadPool.data())
        return;
    if (threadPool)
        abortCurrentCalculation();
    threadPool = pool;
}

QCustomPlot* EquityEvolutionTab::plot() const {
    return ui->plot;
}

void EquityEvolutionTab::updateInputs(const std::string& player1, const std::string& player2,
                                      const std::string& newBoard,
                                      const std::string& newDeadCards) {
    const std::string technical1 = technicalRangeText(player1);
    const std::string technical2 = technicalRangeText(player2);
    const bool changed = technical1 != range1 || technical2 != range2 || newBoard != board ||
                         newDeadCards != deadCards;
    range1 = technical1;
    range2 = technical2;
    board = newBoard;
    deadCards = newDeadCards;
    ui->analyzeTurnButton->setEnabled(board.size() >= 6);
    ui->analyzeRiverButton->setEnabled(board.size() >= 8);
    // The window also tells a tab that comes into view, with the same texts: an analysis
    // only dies of a real change. Bars of finished analyses go too, since they answer for
    // texts that are no longer shown.
    if (changed)
        abortCurrentCalculation();
    refused.clear();
    showState();
}

void EquityEvolutionTab::analyzeTurnCards() {
    analyze(6);
}

void EquityEvolutionTab::analyzeRiverCards() {
    analyze(8);
}

void EquityEvolutionTab::abortCurrentCalculation() {
    if (threadPool && handle.getPool() == threadPool.data() && handle.IsRunning())
        handle.Stop();
    if (threadPool) {
        disconnect(threadPool.data(), &ThreadPool::EquityCalculationFinished, this,
                   &EquityEvolutionTab::onFinishedTurnCalculation);
        disconnect(threadPool.data(), &ThreadPool::EquityCalculationFinished, this,
                   &EquityEvolutionTab::onFinishedRiverCalculation);
    }
    cardIndex = idle;
    refused.clear();
    drawTimer->stop();
    clearBars();
    showState();
    ui->plot->replot();
}

void EquityEvolutionTab::analyze(int baseLength) {
    abortCurrentCalculation();
    refused = refusal();
    if (static_cast<int>(board.size()) < baseLength)
        refused = baseLength == 6 ? QStringLiteral("Enter a flop first.")
                                  : QStringLiteral("Enter a turn card first.");
    if (!refused.isEmpty()) {
        showState();
        ui->plot->replot();
        return;
    }
    handle = threadPool->createEquityCalculationHandle();
    if (baseLength == 6)
        connect(threadPool.data(), &ThreadPool::EquityCalculationFinished, this,
                &EquityEvolutionTab::onFinishedTurnCalculation, Qt::UniqueConnection);
    else
        connect(threadPool.data(), &ThreadPool::EquityCalculationFinished, this,
                &EquityEvolutionTab::onFinishedRiverCalculation, Qt::UniqueConnection);
    titleElement->setText(QStringLiteral("Equity of %1 against %2 on every %3 card after %4")
                              .arg(playerName(), playerName(1), baseLength == 6 ? "turn" : "river",
                                   QString::fromStdString(board.substr(0, baseLength))));
    cardIndex = -2;
    advanceCard(baseLength);
    if (cardIndex < deckEnd)
        startCurrentCard(baseLength);
    showState();
    ui->plot->replot(QCustomPlot::rpQueuedReplot);
}

QString EquityEvolutionTab::refusal() const {
    QV_ASSERT(threadPool, "No thread pool for the calculation.");
    if (!threadPool)
        return QStringLiteral("The calculation cannot start.");
    if (range1.empty() || range2.empty())
        return QStringLiteral("Enter a range for both players first.");
    return QString::fromStdString(Range::CardText::problemOf(board, deadCards));
}

void EquityEvolutionTab::onFinishedTurnCalculation(const ThreadHandle& finished,
                                                   const LongedEvaluation& result) {
    onFinished(6, finished, result);
}

void EquityEvolutionTab::onFinishedRiverCalculation(const ThreadHandle& finished,
                                                    const LongedEvaluation& result) {
    onFinished(8, finished, result);
}

void EquityEvolutionTab::onFinished(int baseLength, const ThreadHandle& finished,
                                    const LongedEvaluation& result) {
    if (!(finished == handle))
        return;
    const double value =
        (static_cast<double>(result.wins1) + static_cast<double>(result.ties) * 0.5) /
        static_cast<double>(result.total);
    addBar(value, BarKind::Equity);
    advanceCard(baseLength);
    if (cardIndex < deckEnd) {
        handle = threadPool->createEquityCalculationHandle();
        startCurrentCard(baseLength);
        // A drawing costs more than a card's calculation: the bars that come in within one
        // frame are drawn together, so the picture still grows while the run goes on.
        if (!drawTimer->isActive())
            drawTimer->start();
        return;
    }
    drawTimer->stop();
    ui->plot->replot();
}

void EquityEvolutionTab::startCurrentCard(int baseLength) {
    const bool first = ui->playerSelection->currentIndex() == 0;
    handle.Start(first ? range1 : range2, first ? range2 : range1, boardWithCurrentCard(baseLength),
                 deadCards);
}

void EquityEvolutionTab::advanceCard(int baseLength) {
    cardIndex += 2;
    while (cardIndex < deckEnd) {
        const std::string completed = boardWithCurrentCard(baseLength);
        const std::string card = deck.substr(cardIndex, 2);
        if (hasRepeatedCard(completed)) {
            addBar(0.0, BarKind::OnBoard);
        } else if (holdsCard(deadCards, card)) {
            // The evaluator refuses a card that is both on the board and dead.
            addBar(0.0, BarKind::DeadCard);
        } else {
            return;
        }
        cardIndex += 2;
    }
}

std::string EquityEvolutionTab::boardWithCurrentCard(int baseLength) const {
    return board.substr(0, baseLength) + deck.substr(cardIndex, 2);
}

void EquityEvolutionTab::addBar(double value, BarKind kind) {
    if (std::isnan(value)) {
        value = 0.0;
        kind = BarKind::NoMatchup;
    }
    const int suit = (cardIndex % 8) / 2;
    const int rank = cardIndex / 8;
    yValues[suit].push_back(value);
    suitBars[suit]->addData(xPositions[suit][rank], value);
    kinds[cardIndex / 2] = kind;
    hasBar[cardIndex / 2] = true;
    messageItem->setText(QString());
}

void EquityEvolutionTab::clearBars() {
    for (int suit = 0; suit < 4; ++suit) {
        yValues[suit].clear();
        suitBars[suit]->data()->clear();
    }
    hasBar.fill(false);
    titleElement->setText(QStringLiteral("Equity on every next card"));
}

QString EquityEvolutionTab::playerName(int offset) const {
    return (ui->playerSelection->currentIndex() + offset) % 2 == 0 ? QStringLiteral("Player1")
                                                                   : QStringLiteral("Player2");
}

void EquityEvolutionTab::showState() {
    const bool anyBar = std::find(hasBar.begin(), hasBar.end(), true) != hasBar.end();
    QString text;
    if (!refused.isEmpty())
        text = refused;
    else if (anyBar || isAnalysing())
        text.clear();
    else if (board.size() < 6)
        text = QStringLiteral("Enter a flop to see how the equity develops on every turn and "
                              "river card.");
    else if (board.size() < 8)
        text = QStringLiteral("Press \"Analyze Turn Cards\" to see the equity of %1 on every "
                              "turn card.")
                   .arg(playerName());
    else
        text = QStringLiteral("Press \"Analyze Turn Cards\" or \"Analyze River Cards\" to see "
                              "the equity of %1 on every next card.")
                   .arg(playerName());
    messageItem->setText(text);
}

double EquityEvolutionTab::barOf(const std::string& card) const {
    const int slot = slotOfCard(card);
    if (slot < 0 || !hasBar[slot])
        return std::numeric_limits<double>::quiet_NaN();
    return yValues[slot % 4][slot / 4];
}

EquityEvolutionTab::BarKind EquityEvolutionTab::kindOf(const std::string& card) const {
    const int slot = slotOfCard(card);
    return slot < 0 ? BarKind::NoMatchup : kinds[slot];
}

QString EquityEvolutionTab::toolTipAt(const QPoint& position) const {
    const QCPAxis* x = ui->plot->xAxis;
    const QCPAxis* y = ui->plot->yAxis;
    const double bottom = y->coordToPixel(0.0);
    for (int slot = 0; slot < 52; ++slot) {
        if (!hasBar[slot])
            continue;
        const int suit = slot % 4;
        const int rank = slot / 4;
        const double value = yValues[suit][rank];
        const double left = x->coordToPixel(xPositions[suit][rank] - barWidth / 2);
        const double right = x->coordToPixel(xPositions[suit][rank] + barWidth / 2);
        const double top = y->coordToPixel(value);
        // A few pixels of slack, so that an empty bar can be found at all.
        if (position.x() < left || position.x() > right || position.y() < top - 4 ||
            position.y() > bottom + 4)
            continue;
        const QString card = QString::fromStdString(deck.substr(slot * 2, 2));
        switch (kinds[slot]) {
        case BarKind::Equity:
            return card + QStringLiteral(": ") + equityPercentText(static_cast<float>(value));
        case BarKind::OnBoard:
            return card + QStringLiteral(": on the board");
        case BarKind::DeadCard:
            return card + QStringLiteral(": a dead card");
        case BarKind::NoMatchup:
            return card + QStringLiteral(": no hands of the ranges can meet");
        }
    }
    return QString();
}

QString EquityEvolutionTab::csvText() const {
    QString text;
    for (int slot = 0; slot < 52; ++slot) {
        if (!hasBar[slot])
            continue;
        text += QString::fromStdString(deck.substr(slot * 2, 2)) + ';';
        if (kinds[slot] == BarKind::Equity)
            text += QString::number(yValues[slot % 4][slot / 4] * 100.0, 'f', 2);
        text += '\n';
    }
    return text.isEmpty() ? text : QStringLiteral("Card;Equity\n") + text;
}

QString EquityEvolutionTab::message() const {
    return messageItem->text();
}

QString EquityEvolutionTab::title() const {
    return titleElement->text();
}
