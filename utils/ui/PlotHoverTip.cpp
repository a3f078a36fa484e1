#include "utils/ui/PlotHoverTip.h"

#include <QEvent>
#include <QMouseEvent>
#include <QToolTip>
#include <qcustomplot.h>

PlotHoverTip::PlotHoverTip(QCustomPlot* plot, TextAt textAt)
    : QObject(plot), plot(plot), textAt(std::move(textAt)) {
    plot->setMouseTracking(true);
    plot->installEventFilter(this);
    connect(plot, &QCustomPlot::mouseMove, this, &PlotHoverTip::onMouseMove);
}

bool PlotHoverTip::eventFilter(QObject* watched, QEvent* event) {
    if (watched == plot && event->type() == QEvent::Leave)
        hide();
    return QObject::eventFilter(watched, event);
}

void PlotHoverTip::onMouseMove(QMouseEvent* event) {
    const QString text = textAt(event->pos());
    if (text.isEmpty()) {
        hide();
        return;
    }
    QToolTip::showText(event->globalPos(), text, plot);
    shown = text;
}

void PlotHoverTip::hide() {
    if (!shown.isEmpty())
        QToolTip::hideText();
    shown.clear();
}
