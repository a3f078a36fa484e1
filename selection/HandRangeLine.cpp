#include "selection/HandRangeLine.h"

#include "Range/HandRange.h"
#include "Range/HandRangeStringManipulator.h"
#include "Range/Tree.h"
#include "Range/TreeRangeNode.h"
#include "selection/HandRangeHover.h"
#include "selection/UnreadRangeTokens.h"

#include <QApplication>
#include <QCursor>
#include <QDesktopWidget>
#include <QHoverEvent>
#include <QLinearGradient>
#include <QPainter>
#include <QScreen>

namespace {

std::string compactTextOf(const Range::HandRange* range) {
    return range ? Range::HandRangeStringReader(range).compactText() : std::string();
}

} // namespace

HandRangeLine::HandRangeLine(QWidget* parent) : QLineEdit(parent), dropNote(this) {
    setAttribute(Qt::WA_MouseTracking);
    setAttribute(Qt::WA_Hover);
    setMouseTracking(true);
    connect(this, &QLineEdit::returnPressed, this, &HandRangeLine::validateRange);
    connect(this, &QLineEdit::textEdited, this, &HandRangeLine::onTextEdited);
}

HandRangeLine::~HandRangeLine() {
    closeHover();
}

void HandRangeLine::setHandRange(Range::HandRange* newRange) {
    const std::string shown = compactTextOf(newRange);
    // The window shows the same range again after every update: that ends no note.
    if (newRange != range || shown != noteRangeText)
        dropNote.clear();
    range = newRange;
    setText(QString::fromStdString(shown));
    refreshHover();
    update();
}

void HandRangeLine::setRangeGroups(Range::Tree* newGroups, unsigned int newGroup) {
    groups = newGroups;
    group = newGroup;
    const QString name = groupName();
    if (name.isEmpty()) {
        groupBoxWidth = 0;
    } else {
        QFont bold = font();
        bold.setBold(true);
        groupBoxWidth = QFontMetrics(bold).horizontalAdvance(name) + 10;
    }
    QMargins margins = textMargins();
    margins.setLeft(groupBoxWidth);
    setTextMargins(margins);
    refreshHover();
    update();
}

void HandRangeLine::setBoard(const std::string& boardText) {
    if (boardText == board)
        return;
    board = boardText;
    refreshHover();
}

void HandRangeLine::setDeadCards(const std::vector<unsigned long long>& cards) {
    if (cards == deadCards)
        return;
    deadCards = cards;
    refreshHover();
}

void HandRangeLine::setHoverEnabled(bool enabled) {
    hoverEnabled = enabled;
    if (!enabled)
        closeHover();
}

HandRangeHover* HandRangeLine::currentHover() const {
    return hover.data();
}

std::string HandRangeLine::rangeText() const {
    return compactTextOf(range);
}

void HandRangeLine::clear() {
    range = nullptr;
    groups = nullptr;
    group = 0;
    groupBoxWidth = 0;
    dropNote.clear();
    setTextMargins(0, 0, 0, 0);
    closeHover();
    QLineEdit::clear();
}

void HandRangeLine::validateRange() {
    if (!range)
        return;
    const bool hadSelection = hasSelectedText();
    const int selectionStart = QLineEdit::selectionStart();
    const int selectionLength = selectedText().size();
    const int cursor = cursorPosition();

    const std::string typed = text().toStdString();
    const std::string before = compactTextOf(range);
    Range::HandRangeStringManipulator(range).setFree(typed);
    const std::string after = compactTextOf(range);
    const QString canonical = QString::fromStdString(after);
    if (text() != canonical)
        setText(canonical);
    // Only a text the user changed is judged: validating the range's own text again (the
    // focus leaving after Return) keeps the note.
    if (typed != before) {
        noteRangeText = after;
        dropNote.show(UnreadRangeTokens::note(typed));
    }
    refreshHover();

    if (before == after) {
        if (hadSelection)
            setSelection(selectionStart, selectionLength);
        else
            setCursorPosition(std::min(cursor, canonical.size()));
        return;
    }
    emit RangeChanged();
}

void HandRangeLine::onTextEdited(const QString& typed) {
    // Live parsing while typing: the range follows every keystroke, the field stays as typed
    // so the cursor never jumps. Only text work happens here.
    dropNote.clear();
    if (!range)
        return;
    const std::string before = compactTextOf(range);
    Range::HandRangeStringManipulator(range).setFree(typed.toStdString());
    refreshHover();
    if (compactTextOf(range) != before)
        emit RangeChanged();
}

void HandRangeLine::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    // A popup of the owning combo box takes the focus for a moment; that is no leaving.
    if (event->reason() != Qt::PopupFocusReason)
        validateRange();
}

void HandRangeLine::resizeEvent(QResizeEvent* event) {
    QLineEdit::resizeEvent(event);
    dropNote.relayout();
}

void HandRangeLine::mouseDoubleClickEvent(QMouseEvent* event) {
    closeHover();
    emit doubleClicked(event);
    QLineEdit::mouseDoubleClickEvent(event);
}

bool HandRangeLine::event(QEvent* event) {
    switch (event->type()) {
    case QEvent::HoverMove:
        showHover(mapToGlobal(static_cast<QHoverEvent*>(event)->pos()));
        break;
    case QEvent::HoverLeave:
    case QEvent::Leave:
    case QEvent::Hide:
    case QEvent::WindowDeactivate:
        closeHover();
        break;
    default:
        break;
    }
    return QLineEdit::event(event);
}

void HandRangeLine::showHover(const QPoint& globalPosition) {
    if (!isEnabled() || !hoverEnabled || !QApplication::activeWindow())
        return;
    if (!hover) {
        const bool grouped = showsGroup();
        if (!grouped && !range)
            return;
        HandRangeHover* created = grouped
                                      ? new HandRangeHover(*groups, group, board, deadCards, this)
                                      : new HandRangeHover(*range, board, deadCards, this);
        connect(created, &HandRangeHover::hoverMoved, this, &HandRangeLine::testHoverPosition);
        created->setShowSuits(hoverShowsSuits);
        created->setAttribute(Qt::WA_DeleteOnClose);
        hover = created;
        hover->show();
    }
    placeHover(globalPosition);
}

void HandRangeLine::placeHover(const QPoint& mouse) {
    if (!hover)
        return;
    QScreen* screen = QGuiApplication::screenAt(mouse);
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    const QRect area = screen ? screen->geometry() : QRect(0, 0, 1 << 20, 1 << 20);
    const QPoint bottomLeft = mapToGlobal(QPoint(0, height()));
    int x = mouse.x() + 10;
    int y = bottomLeft.y() - 11;
    if (x + hover->width() > area.right())
        x -= hover->width() + 20;
    for (int i = 0; i < 2; ++i)
        if (y > 0 && y + hover->height() > area.bottom())
            y -= hover->height() / 2;
    hover->move(x, y);
}

bool HandRangeLine::showsGroup() const {
    return groups && group < groups->count() && groups->node(group)->IsRange();
}

void HandRangeLine::refreshHover() {
    if (!hover)
        return;
    if (showsGroup())
        hover->showGroup(*groups, group, board, deadCards);
    else if (range)
        hover->showRange(*range, board, deadCards);
    else
        closeHover();
}

void HandRangeLine::testHoverPosition() {
    if (!rect().contains(mapFromGlobal(QCursor::pos())))
        closeHover();
}

void HandRangeLine::closeHover() {
    if (hover)
        hover->close();
    hover = nullptr;
}

QString HandRangeLine::groupName() const {
    // The player's full range (a node without parent) gets no name box: only groups do.
    if (!groups || group >= groups->count() || !groups->node(group)->IsRange() ||
        groups->node(group)->parent == Range::Tree::noNode)
        return QString();
    return QString::fromStdString(groups->rangeNode(group)->name);
}

void HandRangeLine::paintEvent(QPaintEvent* event) {
    QLineEdit::paintEvent(event);
    QPainter painter(this);
    if (dropNote.isShown())
        dropNote.paint(painter);
    if (groupBoxWidth == 0 || !showsGroup())
        return;
    const Range::TreeRangeNode* node = groups->rangeNode(group);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRect box(3, 3, groupBoxWidth - 6, height() - 6);
    QColor from(90, 100, 112);
    QColor to(90, 100, 112);
    if (node->color.usesColor) {
        from = QColor(node->color.colorFrom.red, node->color.colorFrom.green,
                      node->color.colorFrom.blue);
        to = QColor(node->color.colorTo.red, node->color.colorTo.green, node->color.colorTo.blue);
    }
    from.setAlphaF(0.85);
    to.setAlphaF(0.85);
    QLinearGradient gradient(box.topLeft(), box.bottomLeft());
    gradient.setColorAt(0, from);
    gradient.setColorAt(1, to);
    painter.setPen(Qt::NoPen);
    painter.setBrush(gradient);
    painter.drawRoundedRect(box, 3, 3);
    QFont bold = font();
    bold.setBold(true);
    painter.setFont(bold);
    painter.setPen(Qt::white);
    painter.drawText(box, Qt::AlignCenter, QString::fromStdString(node->name));
}
