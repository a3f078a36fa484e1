#include "selection/SuitSelectionTable.h"

#include <QLinearGradient>
#include <QMouseEvent>
#include <QPainter>
#include <QSettings>

#include <cstring>
#include <stdexcept>

namespace {

constexpr const char* suitOrder = "dhsc";

int suitPosition(char suit) {
    const char* found = std::strchr(suitOrder, suit);
    return found && suit ? static_cast<int>(found - suitOrder) : -1;
}

} // namespace

SuitSelectionTable::SuitSelectionTable(QWidget* parent)
    : QLabel(parent), picture(pixmapWidth, pixmapHeight) {
    setObjectName(QStringLiteral("suitSelectionTable"));
    selected.fill(true);
    setAlignment(Qt::AlignLeft | Qt::AlignTop);
    setFixedSize(gridWidth, gridHeight);
    readSettings();
    repaintAll();
}

unsigned short SuitSelectionTable::suitPen() const {
    unsigned int pen = 0;
    for (int index = 0; index < 16; ++index)
        if (selected[index])
            pen |= 1u << index;
    return static_cast<unsigned short>(pen);
}

bool SuitSelectionTable::isSelected(int first, int second) const {
    return selected.at(static_cast<std::size_t>(first * 4 + second));
}

void SuitSelectionTable::setSuitPen(unsigned short pen) {
    for (int index = 0; index < 16; ++index)
        selected[index] = (pen >> index) & 1u;
    repaintAll();
    emit suitsUpdated(suitPen());
}

void SuitSelectionTable::readSettings() {
    QSettings settings("Velmara", "Quorvane");
    settings.beginGroup("optionmenu");
    unselectWithRightButton = settings.value("unselectCardWithRightButton", true).toBool();
    settings.endGroup();
}

QPixmap SuitSelectionTable::suitPicture(unsigned int suit, bool faded) {
    // Loaded once; QPixmap copies share their data.
    static const QPixmap plain[4] = {QPixmap(":/diamond.PNG"), QPixmap(":/heart.PNG"),
                                     QPixmap(":/spade.PNG"), QPixmap(":/club.PNG")};
    static const QPixmap fading[4] = {
        QPixmap(":/transparentDiamond.png"), QPixmap(":/transparentHeart.png"),
        QPixmap(":/transparentSpade.png"), QPixmap(":/transparentClub.png")};
    if (suit < 1 || suit > 4)
        throw std::runtime_error("Invalid suit.");
    return faded ? fading[suit - 1] : plain[suit - 1];
}

QRect SuitSelectionTable::cellRect(int index) {
    const int first = index / 4;
    const int second = index % 4;
    return QRect(second * (cellWidth + gap), first * (cellHeight + gap), cellWidth, cellHeight);
}

void SuitSelectionTable::paintCell(QPainter& painter, const QRect& cell, int first, int second,
                                   CellLook look, const QLinearGradient* gradient) {
    const QPixmap left =
        suitPicture(static_cast<unsigned int>(first + 1), look == CellLook::Fading);
    const QPixmap right =
        suitPicture(static_cast<unsigned int>(second + 1), look == CellLook::Fading);
    const QRect leftRect(cell.left(), cell.top(), cell.width() / 2, cell.height());
    const QRect rightRect(cell.left() + cell.width() / 2, cell.top(), cell.width() / 2,
                          cell.height());
    painter.save();
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(cell, Qt::transparent);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    switch (look) {
    case CellLook::Selected:
        if (gradient)
            painter.fillRect(cell, *gradient);
        break;
    case CellLook::Unselected:
        painter.setOpacity(0.4);
        break;
    case CellLook::Unavailable:
        painter.setOpacity(0.05);
        break;
    case CellLook::Fading:
        break;
    }
    painter.drawPixmap(leftRect, left);
    painter.drawPixmap(rightRect, right);
    painter.restore();
}

int SuitSelectionTable::cellAt(const QPoint& position) const {
    const int x = position.x();
    const int y = position.y();
    if (x < 0 || y < 0 || x >= width() || y >= height())
        return -1;
    const int column = x / (cellWidth + gap);
    const int row = y / (cellHeight + gap);
    // The gap test uses the cell size as pitch, so the dead strip widens toward the right
    // and the bottom; clicks there have always done nothing, and users are used to it.
    if ((column + 1) * cellWidth - x < 3 || (row + 1) * cellHeight - y < 3)
        return -1;
    if (column > 3 || row > 3)
        return -1;
    return row * 4 + column;
}

void SuitSelectionTable::applyStroke(QMouseEvent* event, bool press) {
    if (press) {
        dragEnded = true;
        strokeIgnored = !unselectWithRightButton && event->button() == Qt::RightButton;
    }
    if (strokeIgnored)
        return;
    const int index = cellAt(event->pos());
    if (index < 0)
        return;
    if (unselectWithRightButton) {
        strokeSelects = (event->buttons() & Qt::LeftButton) != 0;
    } else if (dragEnded) {
        // The first cell of the stroke toggles and sets the value for the rest of it.
        strokeSelects = !selected[index];
    }
    dragEnded = false;
    if (selected[index] == strokeSelects)
        return;
    selected[index] = strokeSelects;
    repaintCell(index);
}

void SuitSelectionTable::mousePressEvent(QMouseEvent* event) {
    applyStroke(event, true);
}

void SuitSelectionTable::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons() == Qt::NoButton)
        return;
    applyStroke(event, false);
}

void SuitSelectionTable::mouseReleaseEvent(QMouseEvent* event) {
    Q_UNUSED(event);
    const bool ignored = strokeIgnored;
    dragEnded = true;
    strokeIgnored = false;
    if (!ignored)
        emit suitsUpdated(suitPen());
}

void SuitSelectionTable::selectPattern(const char* pattern) {
    selected.fill(false);
    for (const char* pair = pattern; pair[0] && pair[1]; pair += 2) {
        const int first = suitPosition(pair[0]);
        const int second = suitPosition(pair[1]);
        if (first < 0 || second < 0)
            throw std::runtime_error("Invalid suit.");
        selected[first * 4 + second] = true;
    }
    repaintAll();
    emit suitsUpdated(suitPen());
}

void SuitSelectionTable::selectSuit(char suit) {
    const int position = suitPosition(suit);
    if (position < 0)
        throw std::runtime_error("Invalid suit.");
    for (int index = 0; index < 16; ++index)
        selected[index] = index / 4 == position || index % 4 == position;
    repaintAll();
    emit suitsUpdated(suitPen());
}

void SuitSelectionTable::selectAll() {
    selected.fill(true);
    repaintAll();
    emit suitsUpdated(suitPen());
}

void SuitSelectionTable::selectNone() {
    selected.fill(false);
    repaintAll();
    emit suitsUpdated(suitPen());
}

void SuitSelectionTable::selectAllHearts() {
    selectSuit('h');
}

void SuitSelectionTable::selectAllDiamonds() {
    selectSuit('d');
}

void SuitSelectionTable::selectAllClubs() {
    selectSuit('c');
}

void SuitSelectionTable::selectAllSpades() {
    selectSuit('s');
}

void SuitSelectionTable::select25Percent() {
    selectPattern("dddhdshd");
}

void SuitSelectionTable::select50PercentA() {
    selectPattern("ddhhdhdsdchdsdcd");
}

void SuitSelectionTable::select50PercentB() {
    selectPattern("sscchshcscshchcs");
}

void SuitSelectionTable::select75Percent() {
    selectPattern("hhssccdchcschssdcdshchcs");
}

void SuitSelectionTable::repaintAll() {
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    for (int index = 0; index < 16; ++index)
        paintCell(painter, cellRect(index), index / 4, index % 4,
                  selected[index] ? CellLook::Selected : CellLook::Unselected);
    painter.end();
    setPixmap(picture);
}

void SuitSelectionTable::repaintCell(int index) {
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    paintCell(painter, cellRect(index), index / 4, index % 4,
              selected[index] ? CellLook::Selected : CellLook::Unselected);
    painter.end();
    setPixmap(picture);
}
