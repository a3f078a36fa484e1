#pragma once

#include <QSharedPointer>

class QCPAxisTickerText;
class QCPTextElement;
class QCustomPlot;

// The look that the program's plots share, so that they read as one family: the palette of
// the style sheet on white, a title row above the axes and the legend centred below them.
namespace PlotLook {

// Fonts, axis and grid pens, white background; no interaction (the plots are read, not
// dragged).
void apply(QCustomPlot* plot);

// A title row above the axis rect; the returned element is owned by the plot.
QCPTextElement* addTitle(QCustomPlot* plot);

// Moves the plot's legend into a row of its own below the axis rect, items side by side and
// the row centred, so that it never covers data; the legend is made visible.
void putLegendBelow(QCustomPlot* plot);

// Fixed ticks at 0, 0.1, ... 1 labelled "0%", "10%", ... "100%", for an axis of fractions.
QSharedPointer<QCPAxisTickerText> percentTicker();

} // namespace PlotLook
