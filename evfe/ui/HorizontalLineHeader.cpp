#include "evfe/ui/HorizontalLineHeader.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>

HorizontalLineHeader::HorizontalLineHeader(const QString& text, QWidget* parent)
    : QWidget(parent), label(new QLabel(text, this)) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(2, 8, 2, 2);
    layout->setSpacing(8);
    QFont bold = label->font();
    bold.setBold(true);
    label->setFont(bold);
    label->setStyleSheet(QStringLiteral("color: #283c72;"));
    auto* line = new QFrame(this);
    line->setFrameShape(QFrame::HLine);
    line->setStyleSheet(QStringLiteral("color: #c9d1d6;"));
    layout->addWidget(label);
    layout->addWidget(line, 1);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

QString HorizontalLineHeader::text() const {
    return label->text();
}
