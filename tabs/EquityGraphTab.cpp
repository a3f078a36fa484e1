#include "tabs/EquityGraphTab.h"

#include "Range/Assertion.h"
#include "Range/CardConversion.h"
#include "Range/CardText.h"
#include "Range/HandRangeStringReader.h"
#include "calculation/ThreadPool.h"
#include "ui_EquityGraph.h"
#include "utils/ui/EquityColor.h"
#include "utils/ui/PlotContextMenu.h"
#include "utils/ui/PlotHoverTip.h"
#include "utils/ui/PlotLook.h"
#include "utils/ui/PlotMessage.h"

#include <QTimer>
#include <qcustomplot.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>

namespace {

// How often a stopped run is looked at until its tasks have ended.
const int stoppedTaskPollMs = 10;
// How far from a step, in pixels, the pointer still finds it.
const double hoverReach = 6.0;

std::string technicalText(const Range::HandRange* range) {
    return range ? Range::HandRangeStringReader(range).technicalText() : std::string();
}

// A concrete hand with its higher card first ("AhKd").
std::string higherCardFirst(const std::string& hand) {
    if (hand.size() == 4 && isHigherValueThan(hand[2], hand[0]))
        return hand.substr(2, 2) + hand.substr(0, 2);
    return hand;
}

QString percentNumber(double share) {
    return QString::number(share * 100.0, 'f', 2);
}

} // namespace

EquityGraphTab::EquityGraphTab(QWidget* parent) : QWidget(parent), ui(new Ui::EquityGraph) {
    ui->setupUi(this);
    setWhatsThis("In this tab, you see the equity distribution of both ranges: every hand of a "
                 "range, sorted by its equity against the other range on the given board, as "
                 "one step of a curve.");
    pens = {QPen(QColor(255, 0, 0), 2), QPen(QColor(0, 0, 255), 2)};

    QCustomPlot* plot = ui->plot;
    PlotLook::apply(plot);
    titleElement = PlotLook::addTitle(plot);
    plot->xAxis->setLabel(QStringLiteral("Hands Sorted by Equity"));
    plot->yAxis->setLabel(QStringLiteral("Equity of Hand vs. Other Range"));
    plot->xAxis->setTicker(PlotLook::percentTicker());
    plot->yAxis->setTicker(PlotLook::percentTicker());
    PlotLook::putLegendBelow(plot);
    messageItem = std::make_unique<PlotMessage>(plot);
    menu = new PlotContextMenu(plot, [this] { return csvText(); });
    new PlotHoverTip(plot, [this](const QPoint& at) { return toolTipAt(at); });

    stoppedTasks = new QTimer(this);
    stoppedTasks->setInterval(stoppedTaskPollMs);
    connect(stoppedTasks, &QTimer::timeout, this, &EquityGraphTab::checkStoppedTasks);
    connect(ui->calculationButton, &QPushButton::clicked, this,
            &EquityGraphTab::onCalculationButtonClicked);
    connect(ui->cumulateEquities, &QCheckBox::stateChanged, this, &EquityGraphTab::RedrawGraphs);
    // The empty curves already show the axes and whose colour is whose.
    RedrawGraphs();
}

EquityGraphTab::~EquityGraphTab() {
    // The window's pool may be gone before its child widgets; the guarded pointer tells.
    if (threadPool)
        for (WinEvaluationByHandHandle& handle : handles)
            if (handle.getPool() == threadPool.data() && handle.IsRunning())
                handle.Stop();
}

void EquityGraphTab::setThreadPool(ThreadPool* pool) {
    if (pool == threadPool.data())
        return;
    if (threadPool) {
        disconnect(threadPool.data(), &ThreadPool::WinEvaluationByHandFinished, this,
                   &EquityGraphTab::onCalculationFinished);
        for (WinEvaluationByHandHandle& handle : handles)
            if (handle.getPool() == threadPool.data() && handle.IsRunning())
                handle.Stop();
        // The old pool's results can no longer arrive: the run is over.
        handles = {};
        results = {};
        running = 0;
        stoppedTasks->stop();
        ui->calculationButton->setText(QStringLiteral("Start Calculation"));
    }
    threadPool = pool;
    if (pool)
        connect(pool, &ThreadPool::WinEvaluationByHandFinished, this,
                &EquityGraphTab::onCalculationFinished);
    showState();
}

QCustomPlot* EquityGraphTab::plot() const {
    return ui->plot;
}

QPushButton* EquityGraphTab::calculationButton() const {
    return ui->calculationButton;
}

QCheckBox* EquityGraphTab::cumulateFlag() const {
    return ui->cumulateEquities;
}

void EquityGraphTab::updateInputs(const Range::HandRange* newPlayer1Range,
                                  const Range::HandRange* newPlayer2Range,
                                  const std::string& newBoard, const std::string& newDeadCards) {
    player1Range = technicalText(newPlayer1Range);
    player2Range = technicalText(newPlayer2Range);
    board = newBoard;
    deadCards = newDeadCards;
    refused.clear();
    showState();
    ui->plot->replot(QCustomPlot::rpQueuedReplot);
}

void EquityGraphTab::onCalculationButtonClicked() {
    ui->plot->clearGraphs();
    steps = {};
    if (!handles[0].IsRunning() && !handles[1].IsRunning())
        startCalculations();
    else
        stopCalculations();
    ui->plot->legend->setVisible(ui->plot->graphCount() > 0);
    showState();
    ui->plot->replot();
}

void EquityGraphTab::startCalculations() {
    calculated = false;
    results = {};
    refused = refusal();
    if (!refused.isEmpty())
        return;
    handles[0] = threadPool->createWinEvaluationByHandHandle();
    handles[0].Start(player1Range, player2Range, board, deadCards);
    handles[1] = threadPool->createWinEvaluationByHandHandle();
    handles[1].Start(player2Range, player1Range, board, deadCards);
    running = 2;
    ui->calculationButton->setText(QStringLiteral("Stop Calculation"));
    titleElement->setText(QStringLiteral("Equity of every hand against the other range %1")
                              .arg(board.empty()
                                       ? QStringLiteral("preflop")
                                       : QStringLiteral("on ") + QString::fromStdString(board)));
}

void EquityGraphTab::stopCalculations() {
    for (WinEvaluationByHandHandle& handle : handles)
        handle.Stop();
    // A stopped calculation never reports, so neither half of this run may be drawn later.
    results = {};
    calculated = false;
    titleElement->setText(QStringLiteral("Equity of every hand against the other range"));
    stoppedTasks->start();
}

void EquityGraphTab::checkStoppedTasks() {
    if (handles[0].IsRunning() || handles[1].IsRunning())
        return;
    stoppedTasks->stop();
    running = 0;
    ui->calculationButton->setText(QStringLiteral("Start Calculation"));
    showState();
    ui->plot->replot();
}

QString EquityGraphTab::refusal() const {
    QV_ASSERT(threadPool, "No thread pool for the calculation.");
    if (!threadPool)
        return QStringLiteral("The calculation cannot start.");
    if (player1Range.empty() || player2Range.empty())
        return QStringLiteral("Enter a range for both players first.");
    return QString::fromStdString(Range::CardText::problemOf(board, deadCards));
}

void EquityGraphTab::onCalculationFinished(const ThreadHandle& handle,
                                           const WinEvaluationsByHand& evaluations) {
    const int player = handle == handles[0] ? 0 : handle == handles[1] ? 1 : -1;
    if (player < 0)
        return;
    --running;
    results[player] = evaluations;
    if (running == 0) {
        calculated = true;
        RedrawGraphs();
        ui->calculationButton->setText(QStringLiteral("Start Calculation"));
    }
}

void EquityGraphTab::RedrawGraphs() {
    // Half a run is no picture: the curves wait for both results.
    if (running > 0)
        return;
    QCustomPlot* plot = ui->plot;
    plot->clearGraphs();
    for (int player = 0; player < 2; ++player)
        drawCurve(player);
    plot->rescaleAxes();
    plot->xAxis->setRange(0, 1.00001);
    plot->yAxis->setRange(0, 1.00001);
    plot->legend->setVisible(true);
    showState();
    plot->replot();
}

void EquityGraphTab::drawCurve(int player) {
    QCPGraph* graph = ui->plot->addGraph();
    graph->setName(QStringLiteral("Player %1").arg(player + 1));
    graph->setPen(pens[player]);
    std::vector<Step>& curve = steps[player];
    curve.clear();

    WinEvaluationsByHand records;
    std::copy_if(results[player].begin(), results[player].end(), std::back_inserter(records),
                 [](const WinEvaluationByHand& record) { return record.total != 0; });
    const std::size_t count = records.size();
    if (count == 0)
        return;
    const bool cumulate = ui->cumulateEquities->isChecked();
    const float width = 1.0f / static_cast<float>(count);
    float sum = 0.0f;
    std::vector<float> equities(count);
    QVector<double> xs;
    std::vector<float> ys;
    xs.reserve(static_cast<int>(2 * count));
    ys.reserve(2 * count);
    for (std::size_t k = 0; k < count; ++k) {
        const WinEvaluationByHand& record = records[k];
        const float equity =
            (static_cast<float>(record.ties) * 0.5f + static_cast<float>(record.wins)) /
            static_cast<float>(record.total);
        equities[k] = equity;
        sum = cumulate ? sum + equity : equity;
        const float centre = (static_cast<float>(k) + 0.5f) * width;
        // One flat step of the hand's width, with a hair of a gap to the next.
        xs << static_cast<double>(centre - width * 0.5f + 0.00001f)
           << static_cast<double>(centre + width * 0.5f - 0.00001f);
        ys.push_back(sum);
        ys.push_back(sum);
    }
    // Only the heights are sorted, so that the curve falls from left to right.
    std::sort(ys.begin(), ys.end(), std::greater<float>());
    if (cumulate && sum > 0.0f)
        for (float& y : ys)
            y /= sum;
    QVector<double> heights;
    heights.reserve(static_cast<int>(ys.size()));
    for (float y : ys)
        heights << static_cast<double>(y);
    graph->setData(xs, heights, true);

    // The hand behind each step: by falling equity, or with cumulation the hand whose
    // running sum the step shows, the last hand summed first.
    std::vector<std::size_t> order(count);
    std::iota(order.begin(), order.end(), std::size_t{0});
    if (cumulate)
        std::reverse(order.begin(), order.end());
    else
        std::stable_sort(order.begin(), order.end(), [&equities](std::size_t a, std::size_t b) {
            return equities[a] > equities[b];
        });
    curve.reserve(count);
    for (std::size_t k = 0; k < count; ++k)
        curve.push_back(Step{higherCardFirst(records[order[k]].hand), equities[order[k]],
                             heights[static_cast<int>(2 * k)]});
}

void EquityGraphTab::showState() {
    QString text;
    if (stoppedTasks->isActive())
        text = QStringLiteral("Calculation stopped.");
    else if (running > 0)
        text = QStringLiteral("Calculating the equity of every hand of both ranges...");
    else if (!refused.isEmpty())
        text = refused;
    else if (calculated && steps[0].empty() && steps[1].empty())
        text = QStringLiteral("No hand of either range can be dealt with these cards.");
    else if (!calculated && (player1Range.empty() || player2Range.empty()))
        text = QStringLiteral("Enter a range for both players, then press \"Start Calculation\".");
    else if (!calculated)
        text = QStringLiteral("Press \"Start Calculation\" to plot the equity of every hand of "
                              "both ranges.");
    messageItem->setText(text);
    if (running == 0 && !calculated)
        titleElement->setText(QStringLiteral("Equity of every hand against the other range"));
}

QString EquityGraphTab::toolTipAt(const QPoint& position) const {
    const double x = ui->plot->xAxis->pixelToCoord(position.x());
    int bestPlayer = -1;
    int bestPlace = 0;
    double bestDistance = hoverReach;
    for (int player = 0; player < 2; ++player) {
        const std::size_t count = steps[player].size();
        const double place = std::floor(x * static_cast<double>(count));
        if (count == 0 || place < 0 || place >= static_cast<double>(count))
            continue;
        const Step& step = steps[player][static_cast<std::size_t>(place)];
        const double distance = std::abs(position.y() - ui->plot->yAxis->coordToPixel(step.height));
        if (distance <= bestDistance) {
            bestDistance = distance;
            bestPlayer = player;
            bestPlace = static_cast<int>(place);
        }
    }
    if (bestPlayer < 0)
        return QString();
    const Step& step = steps[bestPlayer][static_cast<std::size_t>(bestPlace)];
    QString text = QStringLiteral("%1: %2\nPlayer %3, hand %4 of %5")
                       .arg(QString::fromStdString(step.hand), equityPercentText(step.equity))
                       .arg(bestPlayer + 1)
                       .arg(bestPlace + 1)
                       .arg(steps[bestPlayer].size());
    if (ui->cumulateEquities->isChecked())
        text +=
            QStringLiteral("\nCumulated: ") + equityPercentText(static_cast<float>(step.height));
    return text;
}

QString EquityGraphTab::csvText() const {
    QString text;
    for (int player = 0; player < 2; ++player) {
        int place = 0;
        for (const Step& step : steps[player])
            text += QStringLiteral("Player %1;%2;%3;%4;%5\n")
                        .arg(player + 1)
                        .arg(++place)
                        .arg(QString::fromStdString(step.hand),
                             percentNumber(static_cast<double>(step.equity)),
                             percentNumber(step.height));
    }
    return text.isEmpty() ? text : QStringLiteral("Player;Place;Hand;Equity;Plotted\n") + text;
}

QString EquityGraphTab::message() const {
    return messageItem->text();
}

QString EquityGraphTab::title() const {
    return titleElement->text();
}
