#include "selection/SuitHover.h"

#include "selection/HoverFrame.h"

#include <QLabel>
#include <QLinearGradient>
#include <QPainter>
#include <QVBoxLayout>

SuitHover::SuitHover(QWidget* parent)
    : QWidget(parent, Qt::WindowFlags(264205)),
      suitsPicture(SuitSelectionTable::gridWidth, SuitSelectionTable::gridHeight) {
    QWidget* wrapper = buildHoverFrame(this, QStringLiteral("SuitHover"), QString());

    auto* layout = new QVBoxLayout(wrapper);
    layout->setContentsMargins(10, 9, 10, 9);
    layout->setSpacing(4);
    suits = new QLabel(wrapper);
    suits->setObjectName(QStringLiteral("hoverSuits"));
    suits->setFixedSize(SuitSelectionTable::gridWidth, SuitSelectionTable::gridHeight);
    layout->addWidget(suits);
    title = new QLabel(QStringLiteral("Groups:"), wrapper);
    title->setObjectName(QStringLiteral("hoverGroupsTitle"));
    QFont bold = title->font();
    bold.setBold(true);
    title->setFont(bold);
    layout->addWidget(title);
    groups = new QLabel(wrapper);
    groups->setObjectName(QStringLiteral("hoverGroups"));
    groups->setWordWrap(true);
    groups->setMaximumWidth(SuitSelectionTable::gridWidth);
    layout->addWidget(groups);

    setCells(Cells());
    setGroupText(false, QString());
}

QLinearGradient SuitHover::groupGradient(const Range::GroupColor& color, const QRect& rect) {
    QLinearGradient gradient(rect.left(), rect.top(), rect.left(), rect.bottom() + 1);
    gradient.setColorAt(0,
                        QColor(color.colorFrom.red, color.colorFrom.green, color.colorFrom.blue));
    gradient.setColorAt(1, QColor(color.colorTo.red, color.colorTo.green, color.colorTo.blue));
    return gradient;
}

void SuitHover::setCells(const Cells& cells) {
    shown = cells;
    suitsPicture.fill(Qt::transparent);
    QPainter painter(&suitsPicture);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    for (int index = 0; index < 16; ++index) {
        const QRect rect = SuitSelectionTable::cellRect(index);
        const Cell& cell = cells[index];
        if (cell.look == SuitSelectionTable::CellLook::Selected && cell.color.usesColor) {
            const QLinearGradient gradient = groupGradient(cell.color, rect);
            SuitSelectionTable::paintCell(painter, rect, index / 4, index % 4, cell.look,
                                          &gradient);
        } else {
            SuitSelectionTable::paintCell(painter, rect, index / 4, index % 4, cell.look);
        }
    }
    painter.end();
    suits->setPixmap(suitsPicture);
}

void SuitHover::setGroupText(bool groupMode, const QString& text) {
    title->setVisible(groupMode);
    groups->setVisible(groupMode);
    groups->setText(groupMode ? text : QString());
    adjustSize();
}
