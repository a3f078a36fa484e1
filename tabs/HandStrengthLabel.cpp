#include "tabs/HandStrengthLabel.h"

#include <QMouseEvent>

HandStrengthLabel::HandStrengthLabel(const HandStrengthKey& key, std::size_t group, std::size_t row,
                                     QWidget* parent)
    : QLabel(parent), handStrength(key), group(group), row(row) {
    setTextFormat(Qt::RichText);
    setMouseTracking(true);
    setMargin(0);
    setIndent(0);
}

void HandStrengthLabel::mousePressEvent(QMouseEvent* event) {
    emit clicked(this, event);
    event->accept();
}

void HandStrengthLabel::mouseMoveEvent(QMouseEvent* event) {
    emit hovered(this, event);
    QLabel::mouseMoveEvent(event);
}

void HandStrengthLabel::leaveEvent(QEvent* event) {
    emit hoverLost(this, event);
    QLabel::leaveEvent(event);
}
