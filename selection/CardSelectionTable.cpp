#include "selection/CardSelectionTable.h"

#include "Range/CardConversion.h"
#include "Range/CardText.h"
#include "Range/RandomSource.h"
#include "selection/CardPictures.h"

#include <QLinearGradient>
#include <QMouseEvent>
#include <QPainter>
#include <QPalette>
#include <QSet>

#include <stdexcept>
#include <vector>

namespace {

const char valueCharacters[] = "AKQJT98765432";

// Row colours, top to bottom: d blue, h red, s grey, c green.
QColor rowColour(int row) {
    switch (row) {
    case 0:
        return QColor(128, 128, 255);
    case 1:
        return QColor(255, 128, 128);
    case 2:
        return QColor(128, 128, 128);
    default:
        return QColor(128, 255, 128);
    }
}

QLinearGradient rowGradient(const QRect& cell, const QColor& colour) {
    QLinearGradient gradient(cell.topLeft(), cell.bottomLeft());
    gradient.setColorAt(0.0, colour);
    gradient.setColorAt(1.0, Qt::white);
    return gradient;
}

} // namespace

CardSelectionTable::CardSelectionTable(QWidget* parent)
    : QLabel(parent), random(&Range::RandomSource::shared()) {
    setFixedSize(1 + Columns * CellWidth, 1 + Rows * CellHeight);
    setMouseTracking(false);
    setFocusPolicy(Qt::NoFocus);
    buildImages();
}

int CardSelectionTable::rowOfSuit(char suit) {
    const int row = suitLaneOf(suit);
    if (row < 0) {
        throw std::runtime_error("Non-suitable suit.");
    }
    return row;
}

char CardSelectionTable::suitOfRow(int row) {
    static const char suits[] = {'d', 'h', 's', 'c'};
    if (row < 0 || row >= Rows) {
        throw std::runtime_error("Invalid row number in Card Table.");
    }
    return suits[row];
}

int CardSelectionTable::columnAt(int x) {
    const int column = (x - 1) / CellWidth;
    return (column < 0 || column >= Columns) ? 0 : column;
}

int CardSelectionTable::rowAt(int y) {
    const int row = (y - 1) / CellHeight;
    return (row < 0 || row >= Rows) ? 0 : row;
}

QString CardSelectionTable::cardOfCell(int column, int row) {
    return QString(QChar(valueCharacters[column])) + QChar(suitOfRow(row));
}

QRect CardSelectionTable::cellRect(int column, int row) {
    return QRect(1 + column * CellWidth, 1 + row * CellHeight, CellWidth, CellHeight);
}

void CardSelectionTable::setMaxMarked(unsigned int maximum) {
    maximumMarked = maximum;
}

QSet<QString> CardSelectionTable::cardSet(const QString& cards) {
    QSet<QString> result;
    for (const std::string& card : Range::CardText::lenientCards(cards.toLatin1().toStdString())) {
        result.insert(QString::fromStdString(card));
    }
    return result;
}

void CardSelectionTable::setMarkedCards(const QString& cards) {
    marked.clear();
    for (const QString& card : cardSet(cards)) {
        if (!blockedCards.contains(card) && !forbiddenCards.contains(card)) {
            const CardValue value = cardFromText(card.toStdString());
            marked[value] = value.text;
        }
    }
    update();
}

QString CardSelectionTable::markedText() const {
    QString text;
    for (const auto& entry : marked) {
        text += QString::fromStdString(entry.second);
    }
    return text;
}

void CardSelectionTable::setBlockedCards(const QString& cards) {
    blockedCards = cardSet(cards);
    for (const QString& card : blockedCards) {
        unmark(card);
    }
    update();
}

void CardSelectionTable::setForbiddenCards(const QString& cards) {
    forbiddenCards = cardSet(cards);
    for (const QString& card : forbiddenCards) {
        unmark(card);
    }
    update();
}

CardSelectionTable::CellState CardSelectionTable::stateOf(const QString& card) const {
    if (forbiddenCards.contains(card)) {
        return CellState::Forbidden;
    }
    if (blockedCards.contains(card)) {
        return CellState::Blocked;
    }
    if (marked.count(cardFromText(card.toStdString())) != 0) {
        return CellState::Marked;
    }
    return CellState::Normal;
}

bool CardSelectionTable::mark(const QString& card) {
    const CardValue value = cardFromText(card.toStdString());
    if (marked.count(value) != 0) {
        return false;
    }
    if (marked.size() >= maximumMarked) {
        if (maximumMarked != 1) {
            return false;
        }
        marked.clear();
    }
    marked[value] = value.text;
    return true;
}

bool CardSelectionTable::unmark(const QString& card) {
    return marked.erase(cardFromText(card.toStdString())) != 0;
}

void CardSelectionTable::SelectRandomCards() {
    std::vector<QString> free;
    for (int row = 0; row < Rows; ++row) {
        for (int column = 0; column < Columns; ++column) {
            const QString card = cardOfCell(column, row);
            if (stateOf(card) == CellState::Normal) {
                free.push_back(card);
            }
        }
    }
    while (marked.size() < maximumMarked && !free.empty()) {
        const std::size_t pick = random->below(static_cast<std::uint32_t>(free.size()));
        mark(free[pick]);
        free.erase(free.begin() + static_cast<std::ptrdiff_t>(pick));
    }
    update();
    emit SelectionChanged(markedCount());
}

void CardSelectionTable::strokeAt(const QPoint& position, Qt::MouseButton button,
                                  bool firstOfStroke) {
    const int column = columnAt(position.x());
    const int row = rowAt(position.y());
    const QString card = cardOfCell(column, row);
    const CellState state = stateOf(card);
    if (state == CellState::Blocked || state == CellState::Forbidden) {
        return;
    }
    bool changed = false;
    if (unselectWithRightButton) {
        changed = (button == Qt::LeftButton) ? mark(card) : unmark(card);
    } else {
        if (button != Qt::LeftButton) {
            return;
        }
        if (firstOfStroke) {
            strokeMarks = state != CellState::Marked;
        }
        changed = strokeMarks ? mark(card) : unmark(card);
    }
    if (changed) {
        // With a maximum of one the previous mark moved away: repaint everything.
        if (maximumMarked == 1) {
            update();
        } else {
            update(cellRect(column, row));
        }
        emit SelectionChanged(markedCount());
    }
}

void CardSelectionTable::mousePressEvent(QMouseEvent* event) {
    if (!rect().contains(event->pos())) {
        return;
    }
    dragEnded = false;
    strokeAt(event->pos(), event->button(), true);
}

void CardSelectionTable::mouseMoveEvent(QMouseEvent* event) {
    if (dragEnded || !rect().contains(event->pos())) {
        return;
    }
    Qt::MouseButton button = Qt::NoButton;
    if (event->buttons() & Qt::LeftButton) {
        button = Qt::LeftButton;
    } else if (event->buttons() & Qt::RightButton) {
        button = Qt::RightButton;
    } else if (event->buttons() & Qt::MiddleButton) {
        button = Qt::MiddleButton;
    }
    if (button == Qt::NoButton) {
        return;
    }
    strokeAt(event->pos(), button, false);
}

void CardSelectionTable::mouseReleaseEvent(QMouseEvent*) {
    dragEnded = true;
}

void CardSelectionTable::buildImages() {
    const QSize size(1 + Columns * CellWidth, 1 + Rows * CellHeight);
    const QPixmap faces = CardPictures::tableFaces();
    auto build = [&](CellState state) {
        QPixmap image(size);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing, false);
        for (int row = 0; row < Rows; ++row) {
            for (int column = 0; column < Columns; ++column) {
                const QRect cell = cellRect(column, row);
                const QRect inner = cell.adjusted(0, 0, -1, -1);
                const QRect face((column)*CellWidth, row * CellHeight, CellWidth, CellHeight);
                const QColor colour = rowColour(row);
                switch (state) {
                case CellState::Normal: {
                    QColor light = colour;
                    light.setAlpha(70);
                    painter.fillRect(inner, rowGradient(inner, light));
                    painter.setPen(QColor(205, 205, 210));
                    painter.drawRect(inner);
                    painter.setOpacity(0.55);
                    painter.drawPixmap(cell.topLeft(), faces, face);
                    painter.setOpacity(1.0);
                    break;
                }
                case CellState::Marked:
                    painter.fillRect(inner, rowGradient(inner, colour));
                    painter.setPen(colour.darker(170));
                    painter.drawRect(inner);
                    painter.drawPixmap(cell.topLeft(), faces, face);
                    break;
                case CellState::Forbidden:
                    painter.fillRect(inner, Qt::transparent);
                    painter.setPen(QColor(128, 128, 128));
                    painter.drawRect(inner);
                    painter.setOpacity(0.4);
                    painter.drawPixmap(cell.topLeft(), faces, face);
                    painter.setOpacity(1.0);
                    break;
                case CellState::Blocked:
                    painter.fillRect(inner, QColor(246, 246, 246));
                    painter.fillRect(inner, QBrush(QColor(162, 162, 162), Qt::DiagCrossPattern));
                    painter.setPen(QColor(162, 162, 162));
                    painter.drawRect(inner);
                    painter.setOpacity(0.5);
                    painter.drawPixmap(cell.topLeft(), faces, face);
                    painter.setOpacity(1.0);
                    break;
                }
            }
        }
        return image;
    };
    normalImage = build(CellState::Normal);
    markedImage = build(CellState::Marked);
    forbiddenImage = build(CellState::Forbidden);
    blockedImage = build(CellState::Blocked);
}

void CardSelectionTable::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().window());
    for (int row = 0; row < Rows; ++row) {
        for (int column = 0; column < Columns; ++column) {
            const QRect cell = cellRect(column, row);
            const QPixmap* image = &normalImage;
            switch (stateOf(cardOfCell(column, row))) {
            case CellState::Normal:
                break;
            case CellState::Marked:
                image = &markedImage;
                break;
            case CellState::Forbidden:
                image = &forbiddenImage;
                break;
            case CellState::Blocked:
                image = &blockedImage;
                break;
            }
            painter.drawPixmap(cell.topLeft(), *image, cell);
        }
    }
}
