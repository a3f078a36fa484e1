#include "utils/ui/PlotMessage.h"

#include <qcustomplot.h>

PlotMessage::PlotMessage(QCustomPlot* plot) : item(new QCPItemText(plot)) {
    item->setClipToAxisRect(true);
    item->position->setType(QCPItemPosition::ptAxisRectRatio);
    item->position->setCoords(0.5, 0.45);
    item->setPositionAlignment(Qt::AlignCenter);
    item->setTextAlignment(Qt::AlignCenter);
    QFont font = plot->font();
    font.setPointSizeF(11);
    item->setFont(font);
    item->setColor(QColor(0x5b, 0x64, 0x70));
    item->setBrush(QBrush(QColor(255, 255, 255, 230)));
    item->setPadding(QMargins(14, 8, 14, 8));
    item->setVisible(false);
}

void PlotMessage::setText(const QString& text) {
    item->setText(text);
    item->setVisible(!text.isEmpty());
}

QString PlotMessage::text() const {
    return item->visible() ? item->text() : QString();
}
