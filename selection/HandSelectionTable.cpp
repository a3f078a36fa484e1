#include "selection/HandSelectionTable.h"

#include "Range/HandRange.h"
#include "Range/HandRangeElementConversion.h"
#include "Range/Tree.h"
#include "Range/TreeRangeNode.h"
#include "selection/SuitHover.h"

#include <QDragEnterEvent>
#include <QDragMoveEvent>
#include <QDropEvent>
#include <QFontMetrics>
#include <QLinearGradient>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QSettings>

#include <algorithm>
#include <cmath>

namespace {

constexpr const char* valueCharacters = "AKQJT98765432";
const QColor gridColor(96, 98, 104);
const QColor labelColor(20, 20, 20);
const QColor countColor(70, 70, 60);

QPixmap makeBackground(const QColor& top, const QColor& bottom) {
    QPixmap picture(HandSelectionTable::cellSize, HandSelectionTable::cellSize);
    QPainter painter(&picture);
    QLinearGradient gradient(0, 0, 0, HandSelectionTable::cellSize);
    gradient.setColorAt(0, top);
    gradient.setColorAt(1, bottom);
    painter.fillRect(picture.rect(), gradient);
    return picture;
}

// Every single-card bit of the masks, as one-bit masks.
std::vector<unsigned long long> singleCards(const std::vector<unsigned long long>& masks) {
    std::vector<unsigned long long> cards;
    for (unsigned long long mask : masks)
        for (unsigned long long rest = mask; rest != 0; rest &= rest - 1)
            cards.push_back(rest & (~rest + 1));
    return cards;
}

// Suits of the class that no dead card blocks.
unsigned int liveSuits(const Range::Element& element,
                       const std::vector<unsigned long long>& deadCards) {
    Range::Element possible = element;
    possible.suits = possible.possibleSuits;
    unsigned int blocked = 0;
    for (unsigned long long card : deadCards)
        blocked |= Range::blockedSuits(possible, card);
    return element.possibleSuits & ~blocked;
}

// The pen as it applies to a class. A pair's combinations are unordered and live in the
// upper triangle of the suit-pair mask, so a pair takes a combination when either ordering
// of its two suits is in the pen.
unsigned int penFor(const Range::Element& element, unsigned short pen) {
    if (element.suitClass != Range::Pair)
        return pen;
    unsigned int both = pen;
    for (int first = 0; first < 4; ++first)
        for (int second = 0; second < 4; ++second)
            if ((pen >> (first * 4 + second)) & 1u)
                both |= 1u << (second * 4 + first);
    return both;
}

const Range::Element& elementOf(const Range::HandRange& range, const Range::Element& cell) {
    return *range.find(cell.values, cell.suited);
}

} // namespace

HandSelectionTable::HandSelectionTable(QWidget* parent)
    : QLabel(parent), hover(new SuitHover(this)), table(pixmapSize, pixmapSize) {
    setObjectName(QStringLiteral("handSelectionTable"));
    // One pixel row more than the pixmap: a click there folds into the first cell.
    setFixedSize(pixmapSize + 1, pixmapSize + 1);
    setAlignment(Qt::AlignLeft | Qt::AlignTop);
    setMouseTracking(true);
    setAcceptDrops(true);
    hover->hide();
    timer.setSingleShot(true);
    timer.setInterval(hoverDelay);
    connect(&timer, &QTimer::timeout, this, &HandSelectionTable::onHoverTimeout);

    countFont = font();
    countFont.setPointSize(7);
    while (countFont.pointSize() > 1 &&
           QFontMetrics(countFont).horizontalAdvance(QStringLiteral("16")) > 16)
        countFont.setPointSize(countFont.pointSize() - 1);

    readSettings();
    repaint();
}

HandSelectionTable::~HandSelectionTable() = default;

void HandSelectionTable::readSettings() {
    QSettings settings("Velmara", "Quorvane");
    settings.beginGroup("optionmenu");
    unselectWithRightButton = settings.value("unselectCardWithRightButton", true).toBool();
    settings.endGroup();
}

const QPixmap& HandSelectionTable::backgroundPicture(Background background) {
    static const std::array<QPixmap, BackgroundCount> pictures = {
        makeBackground(QColor(255, 255, 188), QColor(255, 255, 255)),
        makeBackground(QColor(89, 138, 89), QColor(138, 138, 138)),
        makeBackground(QColor(138, 138, 89), QColor(138, 138, 138)),
        makeBackground(QColor(89, 89, 138), QColor(138, 138, 138)),
        makeBackground(QColor(119, 119, 138), QColor(138, 138, 138)),
        makeBackground(QColor(192, 192, 192), QColor(164, 164, 164)),
        makeBackground(QColor(192, 192, 192), QColor(164, 164, 164)),
        makeBackground(QColor(255, 255, 255), QColor(124, 124, 102)),
    };
    return pictures[background];
}

void HandSelectionTable::setRange(Range::HandRange* newRange) {
    hideHover();
    range = newRange;
    repaint();
}

void HandSelectionTable::setGroups(Range::Tree* tree, unsigned int currentGroup) {
    hideHover();
    groups = tree;
    group = currentGroup;
    repaint();
}

void HandSelectionTable::setGroupMode(bool on) {
    hideHover();
    groupMode = on;
    repaint();
}

void HandSelectionTable::setRangeAndGroups(Range::HandRange* newRange, Range::Tree* tree,
                                           unsigned int currentGroup, bool on) {
    // The marked cell belongs to the old range: forget it without painting it.
    hover->hide();
    markedCell = -1;
    range = newRange;
    groups = tree;
    group = currentGroup;
    groupMode = on;
    repaint();
}

void HandSelectionTable::setDeadCards(const std::vector<unsigned long long>& cards) {
    hideHover();
    deadCards = singleCards(cards);
    repaint();
}

void HandSelectionTable::setSuitHoverEnabled(bool enabled) {
    suitHoverEnabled = enabled;
    if (!enabled) {
        timer.stop();
        hideHover();
    }
}

void HandSelectionTable::AssignPen(unsigned short suitPen) {
    pen = suitPen;
}

// --- Grid ------------------------------------------------------------------------------------

Range::Element HandSelectionTable::cellElement(int column, int row) {
    const unsigned int values = (1u << (12 - column)) | (1u << (12 - row));
    const int suitClass = column == row  ? Range::Pair
                          : column > row ? Range::Suited
                                         : Range::Offsuit;
    return Range::makeElement(values, suitClass, 0);
}

QString HandSelectionTable::cellText(int column, int row) {
    QString text;
    text += QChar(valueCharacters[std::min(column, row)]);
    text += QChar(valueCharacters[std::max(column, row)]);
    if (column > row)
        text += QChar('s');
    else if (column < row)
        text += QChar('o');
    return text;
}

QRect HandSelectionTable::cellRect(int column, int row) {
    return QRect(column * pitch + 1, row * pitch + 1, cellSize, cellSize);
}

int HandSelectionTable::cellIndexAt(int coordinate) {
    const int index = (coordinate - 1) / pitch;
    return index > 12 ? 0 : index;
}

const Range::HandRange* HandSelectionTable::parentRange() const {
    if (!groups || group >= groups->count())
        return nullptr;
    const Range::TreeNode* node = groups->node(group);
    if (node->parent == Range::TreeNode::noNode || !groups->node(node->parent)->IsRange())
        return nullptr;
    return &groups->handRange(node->parent);
}

std::vector<unsigned int> HandSelectionTable::cellGroups(int column, int row) const {
    std::vector<unsigned int> result;
    if (!groupMode || !groups || group >= groups->count())
        return result;
    std::vector<unsigned int> candidates = groups->siblings(group);
    candidates.push_back(group);
    std::sort(candidates.begin(), candidates.end());
    const Range::Element cell = cellElement(column, row);
    for (unsigned int index : candidates) {
        if (!groups->node(index)->IsRange())
            continue;
        if (elementOf(groups->handRange(index), cell).suits != 0)
            result.push_back(index);
    }
    return result;
}

HandSelectionTable::Background HandSelectionTable::cellBackground(int column, int row) const {
    const Range::Element cell = cellElement(column, row);
    if (const Range::HandRange* parent = parentRange())
        if (elementOf(*parent, cell).suits == 0)
            return OutsideParent;
    const bool selected = range && elementOf(*range, cell).suits != 0;
    if (groupMode)
        return selected ? SelectedBackground : UnselectedGroupMode;
    if (selected)
        return SelectedBackground;
    if (!deadCards.empty() && liveSuits(cell, deadCards) == 0)
        return NotAvailable;
    switch (cell.suitClass) {
    case Range::Pair:
        return UnselectedPair;
    case Range::Suited:
        return UnselectedSuited;
    default:
        return UnselectedOffsuit;
    }
}

unsigned int HandSelectionTable::liveCount(int column, int row) const {
    const Range::Element cell = cellElement(column, row);
    if (groupMode && groups) {
        unsigned int count = 0;
        for (unsigned int index : cellGroups(column, row))
            count +=
                Range::availableCombinations(elementOf(groups->handRange(index), cell), deadCards);
        return count;
    }
    return range ? Range::availableCombinations(elementOf(*range, cell), deadCards) : 0;
}

bool HandSelectionTable::showsCount(int column, int row) const {
    if (range && elementOf(*range, cellElement(column, row)).suits != 0)
        return true;
    return groupMode && !cellGroups(column, row).empty();
}

std::vector<int> HandSelectionTable::stripeWidths(int column, int row) const {
    std::vector<int> widths;
    const std::vector<unsigned int> list = cellGroups(column, row);
    if (list.size() < 2)
        return widths;
    const Range::Element cell = cellElement(column, row);
    unsigned int total = 0;
    std::vector<unsigned int> counts;
    for (unsigned int index : list) {
        counts.push_back(Range::suitBitCount(elementOf(groups->handRange(index), cell).suits));
        total += counts.back();
    }
    int sofar = 0;
    for (unsigned int count : counts) {
        const float end = std::min(
            static_cast<float>(cellSize),
            static_cast<float>(count) / static_cast<float>(total) * cellSize + 0.5f + sofar);
        const int stop = static_cast<int>(std::floor(end));
        widths.push_back(stop - sofar);
        sofar = stop;
    }
    return widths;
}

// --- Painting ------------------------------------------------------------------------------

void HandSelectionTable::paintCell(QPainter& painter, int column, int row, bool marked) {
    const QRect rect = cellRect(column, row);
    const Background background = marked ? Marker : cellBackground(column, row);
    painter.drawPixmap(rect.topLeft(), backgroundPicture(background));

    if (!marked && groupMode && groups && background != OutsideParent) {
        const std::vector<unsigned int> list = cellGroups(column, row);
        const std::vector<int> widths = stripeWidths(column, row);
        int left = rect.left();
        for (std::size_t i = 0; i < list.size(); ++i) {
            const Range::GroupColor& color = groups->rangeNode(list[i])->color;
            const int width = list.size() == 1 ? cellSize : widths[i];
            const QRect stripe(left, rect.top(), width, cellSize);
            if (color.usesColor)
                painter.fillRect(stripe, SuitHover::groupGradient(color, rect));
            else
                painter.drawPixmap(stripe, backgroundPicture(SelectedBackground),
                                   QRect(left - rect.left(), 0, width, cellSize));
            left += width;
        }
    }

    painter.setFont(font());
    painter.setPen(labelColor);
    painter.drawText(QRect(rect.left(), rect.top(), cellSize, 21), Qt::AlignCenter,
                     cellText(column, row));
    if (showsCount(column, row)) {
        painter.setFont(countFont);
        painter.setPen(countColor);
        painter.drawText(QRect(QPoint(rect.left() + 16, rect.top() + 21),
                               QPoint(rect.left() + 31, rect.top() + 30)),
                         Qt::AlignCenter, QString::number(liveCount(column, row)));
    }
}

void HandSelectionTable::repaint() {
    table.fill(gridColor);
    QPainter painter(&table);
    for (int row = 0; row < 13; ++row)
        for (int column = 0; column < 13; ++column)
            paintCell(painter, column, row, row * 13 + column == markedCell);
    painter.end();
    setPixmap(table);
}

void HandSelectionTable::repaintCell(int column, int row, bool marked) {
    QPainter painter(&table);
    paintCell(painter, column, row, marked);
    painter.end();
    setPixmap(table);
}

// --- Strokes -------------------------------------------------------------------------------

bool HandSelectionTable::strokeCell(int column, int row) {
    const Range::Element cell = cellElement(column, row);
    const Range::HandRange::const_iterator element = range->find(cell.values, cell.suited);
    const unsigned int before = element->suits;
    if (strokeSelects) {
        Range::Element proposal = *element;
        proposal.suits = element->possibleSuits & penFor(*element, pen);
        range->insert(proposal, true);
    } else if (before != 0) {
        range->removeHand(cell.values, cell.suited);
    }
    const bool changed = element->suits != before;
    if (changed)
        repaintCell(column, row);
    return changed;
}

void HandSelectionTable::applyStroke(QMouseEvent* event) {
    if (readOnly || !range || strokeIgnored)
        return;
    if (!rect().contains(event->pos()))
        return;
    const int column = cellIndexAt(event->pos().x());
    const int row = cellIndexAt(event->pos().y());
    if (unselectWithRightButton) {
        strokeSelects = (event->buttons() & Qt::LeftButton) != 0;
    } else if (dragEnded) {
        const Range::Element cell = cellElement(column, row);
        strokeSelects = elementOf(*range, cell).suits == 0;
    }

    bool changed = strokeCell(column, row);
    const Qt::KeyboardModifiers modifiers = event->modifiers();
    const bool shift = modifiers & Qt::ShiftModifier;
    const bool control = modifiers & Qt::ControlModifier;
    if (shift && control) {
        for (int step = 0; step < 13; ++step) {
            changed = strokeCell(step, row) || changed;
            changed = strokeCell(column, step) || changed;
        }
    } else if (shift) {
        if (column > row) {
            for (int c = column - 1; c > row; --c)
                changed = strokeCell(c, row) || changed;
        } else if (column < row) {
            for (int r = row - 1; r > column; --r)
                changed = strokeCell(column, r) || changed;
        } else {
            for (int step = column - 1; step >= 0; --step)
                changed = strokeCell(step, step) || changed;
        }
    } else if (control) {
        for (int c = column - 1, r = row - 1; c >= 0 && r >= 0; --c, --r)
            changed = strokeCell(c, r) || changed;
    }
    if (changed) {
        strokeChanged = true;
        emit RangeChanged();
    }
}

void HandSelectionTable::mousePressEvent(QMouseEvent* event) {
    timer.stop();
    hideHover();
    if (readOnly || !range)
        return;
    strokeIgnored = !unselectWithRightButton && event->button() == Qt::RightButton;
    strokeChanged = false;
    dragEnded = true;
    applyStroke(event);
    dragEnded = false;
}

void HandSelectionTable::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons() != Qt::NoButton) {
        applyStroke(event);
        return;
    }
    if (rect().contains(event->pos()) && suitHoverEnabled && range) {
        mouseInside = true;
        hideHover();
        hoverAt = event->pos();
        timer.start(hoverDelay);
    } else {
        mouseInside = false;
        timer.stop();
        hideHover();
    }
}

void HandSelectionTable::mouseReleaseEvent(QMouseEvent* event) {
    Q_UNUSED(event);
    const bool ignored = strokeIgnored || readOnly || !range;
    dragEnded = true;
    strokeIgnored = false;
    if (!ignored)
        emit mouseReleased();
}

void HandSelectionTable::leaveEvent(QEvent* event) {
    mouseInside = false;
    timer.stop();
    hideHover();
    QLabel::leaveEvent(event);
}

// --- Hover ---------------------------------------------------------------------------------

void HandSelectionTable::hideHover() {
    hover->hide();
    if (markedCell >= 0) {
        const int cell = markedCell;
        markedCell = -1;
        repaintCell(cell % 13, cell / 13);
    }
}

void HandSelectionTable::onHoverTimeout() {
    if (!range || !suitHoverEnabled || !mouseInside || hover->isVisible())
        return;
    if (!rect().contains(hoverAt))
        return;
    const int column = cellIndexAt(hoverAt.x());
    const int row = cellIndexAt(hoverAt.y());
    fillHover(column, row);
    placeHover();
    hover->show();
    markedCell = row * 13 + column;
    repaintCell(column, row, true);
}

void HandSelectionTable::fillHover(int column, int row) {
    const Range::Element cell = cellElement(column, row);
    const Range::Element& element = elementOf(*range, cell);
    const unsigned int available = liveSuits(cell, deadCards);
    const std::vector<unsigned int> list = cellGroups(column, row);
    SuitHover::Cells cells;
    std::vector<bool> named(list.size(), false);
    for (int index = 0; index < 16; ++index) {
        const unsigned int bit = 1u << index;
        SuitHover::Cell& shown = cells[index];
        shown.look = (available & bit) ? SuitSelectionTable::CellLook::Unselected
                                       : SuitSelectionTable::CellLook::Unavailable;
        if (groupMode && groups) {
            for (std::size_t i = 0; i < list.size(); ++i) {
                if (elementOf(groups->handRange(list[i]), cell).suits & bit) {
                    shown.look = SuitSelectionTable::CellLook::Selected;
                    shown.color = groups->rangeNode(list[i])->color;
                    named[i] = true;
                    break;
                }
            }
        } else if (element.suits & bit) {
            shown.look = SuitSelectionTable::CellLook::Selected;
        }
    }
    hover->setCells(cells);
    QStringList names;
    for (std::size_t i = 0; i < list.size(); ++i)
        if (named[i])
            names << QString::fromStdString(groups->rangeNode(list[i])->name);
    hover->setGroupText(groupMode && groups,
                        names.isEmpty() ? QStringLiteral("None") : names.join(", "));
}

void HandSelectionTable::placeHover() {
    hover->adjustSize();
    const QPoint global = mapToGlobal(hoverAt);
    QPoint position = global + QPoint(16, 16);
    if (QScreen* display = screen()) {
        const QRect area = display->availableGeometry();
        if (position.x() + hover->width() > area.right())
            position.setX(global.x() - hover->width() - 16);
        if (position.y() + hover->height() > area.bottom())
            position.setY(global.y() - hover->height() - 16);
        position.setX(std::max(position.x(), area.left()));
        position.setY(std::max(position.y(), area.top()));
    }
    hover->move(position);
}

// --- Drag and drop -------------------------------------------------------------------------

void HandSelectionTable::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasFormat(QStringLiteral("application/x-tree-range")))
        event->acceptProposedAction();
    else
        event->ignore();
}

void HandSelectionTable::dragMoveEvent(QDragMoveEvent* event) {
    if (event->mimeData()->hasFormat(QStringLiteral("application/x-tree-range")))
        event->acceptProposedAction();
    else
        event->ignore();
}

void HandSelectionTable::dropEvent(QDropEvent* event) {
    if (!event->mimeData()->hasFormat(QStringLiteral("application/x-tree-range"))) {
        event->ignore();
        return;
    }
    event->setDropAction(Qt::CopyAction);
    event->accept();
    emit RangeDropped();
}
