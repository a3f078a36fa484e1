#include "training/EquityTrainingGuessPlot.h"

#include <cmath>

namespace {

const QColor ink(0x2a, 0x2f, 0x36);
const QColor muted(0x5b, 0x64, 0x70);
const QColor axisLines(0xc9, 0xd1, 0xd6);
const QColor grid(0xe3, 0xe8, 0xeb);
const QColor teal(0x17, 0x80, 0x8f);
const QColor indigo(0x28, 0x3c, 0x72);

QCPGraph* pointGraph(QCustomPlot* plot, const QString& name, const QColor& colour,
                     QCPScatterStyle::ScatterShape shape) {
    QCPGraph* graph = plot->addGraph();
    graph->setName(name);
    graph->setLineStyle(QCPGraph::lsNone);
    graph->setScatterStyle(QCPScatterStyle(shape, colour, colour.lighter(150), 8));
    graph->setPen(QPen(colour));
    return graph;
}

// A muted remark in a corner of the axes, in plot coordinates.
void addRemark(QCustomPlot* plot, const QString& text, double x, double y, Qt::Alignment align) {
    auto* remark = new QCPItemText(plot);
    remark->setText(text);
    remark->setColor(muted);
    remark->position->setType(QCPItemPosition::ptPlotCoords);
    remark->position->setCoords(x, y);
    remark->setPositionAlignment(align);
    remark->setLayer(QStringLiteral("background"));
}

} // namespace

EquityTrainingGuessPlot::EquityTrainingGuessPlot(QWidget* parent) : QCustomPlot(parent) {
    setBackground(Qt::white);
    setInteractions(QCP::Interactions());
    QFont small = font();
    small.setPointSizeF(9);
    for (QCPAxis* axis : {xAxis, yAxis}) {
        // A little room beyond 0 and 100 %, so that guesses there show as whole points.
        axis->setRange(-3.0, 103.0);
        axis->setBasePen(QPen(axisLines));
        axis->setTickPen(QPen(axisLines));
        axis->setSubTickPen(QPen(axisLines));
        axis->setTickLabelColor(muted);
        axis->setTickLabelFont(small);
        axis->setLabelColor(ink);
        axis->grid()->setPen(QPen(grid));
        QSharedPointer<QCPAxisTickerText> ticks(new QCPAxisTickerText);
        for (int percent = 0; percent <= 100; percent += 20)
            ticks->addTick(percent, QStringLiteral("%1 %").arg(percent));
        axis->setTicker(ticks);
    }
    // Room on the right for the last tick label, "100 %".
    axisRect()->setAutoMargins(QCP::msLeft | QCP::msTop | QCP::msBottom);
    axisRect()->setMargins(QMargins(0, 0, 22, 0));
    xAxis->setLabel(QStringLiteral("Correct Equity"));
    yAxis->setLabel(QStringLiteral("Your Guess"));

    perfect = addGraph();
    perfect->setName(QStringLiteral("Perfect Guess"));
    perfect->setPen(QPen(QColor(0xa3, 0xab, 0xb2), 1.5, Qt::DashLine));
    perfect->setData({0.0, 100.0}, {0.0, 100.0});
    guesses1 = pointGraph(this, QStringLiteral("vs. Range1"), teal, QCPScatterStyle::ssDisc);
    guesses2 = pointGraph(this, QStringLiteral("vs. Range2"), indigo, QCPScatterStyle::ssDiamond);

    addRemark(this, QStringLiteral("overestimated"), 3.0, 97.0, Qt::AlignLeft | Qt::AlignTop);
    addRemark(this, QStringLiteral("underestimated"), 97.0, 3.0, Qt::AlignRight | Qt::AlignBottom);

    // The legend stands in a row of its own under the axes, where it covers no point.
    legend->setVisible(true);
    legend->setFont(small);
    legend->setTextColor(ink);
    legend->setBrush(Qt::NoBrush);
    legend->setBorderPen(Qt::NoPen);
    legend->setFillOrder(QCPLegend::foColumnsFirst);
    axisRect()->insetLayout()->take(legend);
    plotLayout()->addElement(1, 0, legend);
    plotLayout()->setRowStretchFactor(1, 0.001);
}

void EquityTrainingGuessPlot::showGuesses(const std::vector<EquityTrainingItemResults>& results) {
    QVector<double> correct1, guess1, correct2, guess2;
    bool secondRange = false;
    for (const EquityTrainingItemResults& item : results) {
        if (!std::isnan(item.correct1)) {
            correct1.append(item.correct1);
            guess1.append(item.guess1);
        }
        if (item.hasSecondVillain()) {
            secondRange = true;
            if (!std::isnan(item.correct2)) {
                correct2.append(item.correct2);
                guess2.append(item.guess2);
            }
        }
    }
    guesses1->setData(correct1, guess1);
    guesses2->setData(correct2, guess2);
    if (secondRange)
        guesses2->addToLegend();
    else
        guesses2->removeFromLegend();
    replot();
}
