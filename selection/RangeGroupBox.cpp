#include "selection/RangeGroupBox.h"

#include "Range/TreeRangeNode.h"

#include <QLinearGradient>
#include <QMouseEvent>
#include <QPainter>

RangeGroupBox::RangeGroupBox(QWidget* parent) : QLabel(parent) {
    setAlignment(Qt::AlignCenter);
    setMinimumSize(24, 22);
    setCursor(Qt::PointingHandCursor);
    applyFont();
}

void RangeGroupBox::setNumber(unsigned int number) {
    groupNumber = number;
    setText(displayText());
    update();
}

void RangeGroupBox::setState(int state) {
    boxState = state;
    applyFont();
    setText(displayText());
    update();
}

void RangeGroupBox::SetRangeNode(Range::TreeRangeNode* handRangeNode) {
    group = handRangeNode;
    update();
}

QString RangeGroupBox::displayText() const {
    if (boxState == NewGroup)
        return QStringLiteral("New");
    if (groupNumber == 0)
        return QStringLiteral("*");
    return QString::number(groupNumber);
}

void RangeGroupBox::applyFont() {
    QFont boxFont = font();
    boxFont.setWeight(boxState == Selected ? 75 : 50);
    boxFont.setUnderline(boxState == Selected);
    setFont(boxFont);
}

void RangeGroupBox::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (groupNumber != 0 && group && boxState != NewGroup) {
        QColor from(200, 205, 210);
        QColor to(180, 186, 192);
        if (group->color.usesColor) {
            from = QColor(group->color.colorFrom.red, group->color.colorFrom.green,
                          group->color.colorFrom.blue);
            to = QColor(group->color.colorTo.red, group->color.colorTo.green,
                        group->color.colorTo.blue);
        }
        QLinearGradient gradient(0, 0, 0, height());
        gradient.setColorAt(0, from);
        gradient.setColorAt(1, to);
        painter.fillRect(rect(), gradient);
    } else {
        painter.eraseRect(rect());
    }
    painter.setPen(palette().color(QPalette::WindowText));
    painter.setFont(font());
    painter.drawText(rect(), Qt::AlignCenter, displayText());
}

void RangeGroupBox::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        emit clicked();
    QLabel::mousePressEvent(event);
}
