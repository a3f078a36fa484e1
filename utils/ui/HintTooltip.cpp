#include "utils/ui/HintTooltip.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLinearGradient>
#include <QPainter>
#include <QSettings>
#include <QTimer>

HintTooltip::HintTooltip(const QString& text, QWidget* parent, int milliseconds)
    : QWidget(parent, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint) {
    setObjectName(QStringLiteral("HintTooltip"));
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_TranslucentBackground);
    setGeometry(QRect(QPoint(200, 200), QPoint(399, 299)));

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(10, 10, 10, 10);
    textLabel = new QLabel(text, this);
    textLabel->setObjectName(QStringLiteral("hintText"));
    textLabel->setTextFormat(Qt::RichText);
    textLabel->setWordWrap(true);
    textLabel->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    layout->addWidget(textLabel);

    timer = new QTimer(this);
    timer->setSingleShot(true);
    connect(timer, &QTimer::timeout, this, &HintTooltip::timeout);
    timer->start(milliseconds);
}

void HintTooltip::SetCloseByClick(bool close) {
    closeByClick = close;
}

bool HintTooltip::hintsWanted() {
    QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
    settings.beginGroup(QStringLiteral("optionMenu"));
    const bool wanted = settings.value(QStringLiteral("showHintTooltips"), true).toBool();
    settings.endGroup();
    return wanted;
}

void HintTooltip::timeout() {
    // With WA_DeleteOnClose this also deletes a tip that was never shown.
    close();
}

void HintTooltip::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QLinearGradient gradient(0, 0, 0, height());
    gradient.setColorAt(0.0, QColor(238, 238, 238, 248));
    gradient.setColorAt(1.0, QColor(255, 255, 255, 248));
    painter.fillRect(rect(), gradient);
    painter.setPen(QPen(QColor(128, 128, 128), 1));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void HintTooltip::mousePressEvent(QMouseEvent* event) {
    if (closeByClick)
        close();
    else
        QWidget::mousePressEvent(event);
}
