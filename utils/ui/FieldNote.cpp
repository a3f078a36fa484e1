#include "utils/ui/FieldNote.h"

#include <QFontMetrics>
#include <QLineEdit>
#include <QPainter>

#include <algorithm>

namespace {

const QColor ground(0xfd, 0xe7, 0xe4);
const QColor frame(0xe8, 0xa9, 0xa1);
const QColor ink(0xb3, 0x26, 0x1e);

QFont noteFont(const QLineEdit* field) {
    QFont font = field->font();
    if (font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() * 0.9);
    return font;
}

} // namespace

FieldNote::FieldNote(QLineEdit* field) : field(field) {}

void FieldNote::show(const QString& text, const QString& shortText) {
    if (text.isEmpty()) {
        clear();
        return;
    }
    if (note.isEmpty()) {
        ownToolTip = field->toolTip();
        ownDescription = field->accessibleDescription();
    }
    note = text;
    hint = shortText;
    field->setToolTip(note);
    field->setAccessibleDescription(note);
    relayout();
    field->update();
}

void FieldNote::clear() {
    if (note.isEmpty())
        return;
    note.clear();
    hint.clear();
    field->setToolTip(ownToolTip);
    field->setAccessibleDescription(ownDescription);
    relayout();
    field->update();
}

int FieldNote::room() const {
    // A little less than half the field, or all that its text leaves when that is more: the
    // typed text always keeps its room.
    const int text = QFontMetrics(field->font()).horizontalAdvance(field->text());
    return std::max(field->width() * 45 / 100, field->width() - text - 28);
}

QString FieldNote::painted() const {
    if (hint.isEmpty() || QFontMetrics(noteFont(field)).horizontalAdvance(note) + 16 <= room())
        return note;
    return hint;
}

QRect FieldNote::area() const {
    if (note.isEmpty())
        return QRect();
    // A few pixels beyond the text's advance: the painter's glyph positions may round up.
    const int wanted = QFontMetrics(noteFont(field)).horizontalAdvance(painted()) + 16;
    const int width = std::max(0, std::min(wanted, room()));
    const int height = std::max(0, std::min(field->height() - 6, 22));
    return QRect(field->width() - width - 4, (field->height() - height) / 2, width, height);
}

void FieldNote::paint(QPainter& painter) const {
    const QRect box = area();
    if (box.width() < 8 || box.height() < 8)
        return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(frame);
    painter.setBrush(ground);
    painter.drawRoundedRect(QRectF(box).adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
    const QFont font = noteFont(field);
    painter.setFont(font);
    painter.setPen(ink);
    const QRect inner = box.adjusted(6, 0, -6, 0);
    painter.drawText(inner, Qt::AlignVCenter | Qt::AlignLeft,
                     QFontMetrics(font).elidedText(painted(), Qt::ElideRight, inner.width()));
    painter.restore();
}

void FieldNote::relayout() {
    QMargins margins = field->textMargins();
    const QRect box = area();
    margins.setRight(box.isEmpty() ? 0 : box.width() + 6);
    if (margins != field->textMargins())
        field->setTextMargins(margins);
}
