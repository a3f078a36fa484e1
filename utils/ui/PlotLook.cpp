#include "utils/ui/PlotLook.h"

#include <qcustomplot.h>

namespace {

const QColor ink(0x2a, 0x2f, 0x36);
const QColor muted(0x5b, 0x64, 0x70);
const QColor lines(0xc9, 0xd1, 0xd6);
const QColor gridLines(0xe3, 0xe8, 0xeb);

} // namespace

namespace PlotLook {

void apply(QCustomPlot* plot) {
    plot->setBackground(Qt::white);
    plot->setInteractions(QCP::Interactions());
    // Room on the right for the label of the last tick of the x axis, which stands on the
    // axis' end; without it the plot leaves that label out.
    plot->axisRect()->setMinimumMargins(QMargins(12, 12, 28, 12));
    QFont tickFont = plot->font();
    tickFont.setPointSizeF(9);
    QFont labelFont = plot->font();
    labelFont.setPointSizeF(10);
    for (QCPAxis* axis : {plot->xAxis, plot->yAxis}) {
        axis->setBasePen(QPen(lines, 1));
        axis->setTickPen(QPen(lines, 1));
        axis->setSubTickPen(QPen(lines, 1));
        axis->setTickLabelFont(tickFont);
        axis->setTickLabelColor(muted);
        axis->setLabelFont(labelFont);
        axis->setLabelColor(ink);
        axis->grid()->setPen(QPen(gridLines, 1, Qt::SolidLine));
        axis->grid()->setZeroLinePen(Qt::NoPen);
    }
    plot->legend->setFont(tickFont);
    plot->legend->setTextColor(ink);
    plot->legend->setBorderPen(Qt::NoPen);
    plot->legend->setBrush(Qt::NoBrush);
}

QCPTextElement* addTitle(QCustomPlot* plot) {
    QFont font = plot->font();
    font.setPointSizeF(11);
    font.setBold(true);
    plot->plotLayout()->insertRow(0);
    auto* title = new QCPTextElement(plot, QString(), font);
    title->setTextColor(ink);
    plot->plotLayout()->addElement(0, 0, title);
    return title;
}

void putLegendBelow(QCustomPlot* plot) {
    QCPLayoutGrid* layout = plot->plotLayout();
    const int row = layout->rowCount();
    // Two empty cells of equal stretch around the legend keep it in the middle.
    auto* centring = new QCPLayoutGrid;
    layout->addElement(row, 0, centring);
    plot->axisRect()->insetLayout()->take(plot->legend);
    centring->addElement(0, 0, new QCPLayoutElement(plot));
    centring->addElement(0, 1, plot->legend);
    centring->addElement(0, 2, new QCPLayoutElement(plot));
    centring->setColumnStretchFactors({1.0, 0.001, 1.0});
    centring->setMargins(QMargins(0, 0, 0, 4));
    layout->setRowStretchFactor(row, 0.001);
    plot->legend->setFillOrder(QCPLegend::foColumnsFirst);
    plot->legend->setVisible(true);
}

QSharedPointer<QCPAxisTickerText> percentTicker() {
    QSharedPointer<QCPAxisTickerText> ticker(new QCPAxisTickerText);
    for (int percent = 0; percent <= 100; percent += 10)
        ticker->addTick(percent / 100.0, QStringLiteral("%1%").arg(percent));
    return ticker;
}

} // namespace PlotLook
