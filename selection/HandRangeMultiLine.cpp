#include "selection/HandRangeMultiLine.h"

#include "Range/HandRange.h"
#include "Range/HandRangeStringManipulator.h"
#include "selection/UnreadRangeTokens.h"

#include <QKeyEvent>
#include <QTextCursor>

HandRangeMultiLine::HandRangeMultiLine(QWidget* parent) : QTextEdit(parent) {
    setAcceptRichText(false);
    connect(this, &QTextEdit::textChanged, this, [this] {
        if (!showingText)
            setNote(QString());
    });
}

void HandRangeMultiLine::setHandRange(Range::HandRange* newRange) {
    range = newRange;
    setNote(QString());
    showText(range ? QString::fromStdString(Range::HandRangeStringReader(range).compactText())
                   : QString());
}

void HandRangeMultiLine::showText(const QString& text) {
    showingText = true;
    setPlainText(text);
    showingText = false;
}

void HandRangeMultiLine::setNote(const QString& note) {
    if (note == dropNote)
        return;
    dropNote = note;
    setToolTip(note);
    setAccessibleDescription(note);
}

void HandRangeMultiLine::validateRange() {
    validate(false);
}

void HandRangeMultiLine::validate(bool afterReturn) {
    if (!range)
        return;
    const QTextCursor noted = textCursor();
    const int selectionStart = noted.selectionStart();
    const int selectionEnd = noted.selectionEnd();

    const std::string typed = toPlainText().toStdString();
    const std::string before = Range::HandRangeStringReader(range).compactText();
    Range::HandRangeStringManipulator(range).setFree(typed);
    const std::string after = Range::HandRangeStringReader(range).compactText();
    const QString canonical = QString::fromStdString(after);
    if (toPlainText() != canonical)
        showText(canonical);
    // Validating the range's own text again judges nothing and keeps the note.
    if (typed != before)
        setNote(UnreadRangeTokens::note(typed));

    if (before == after) {
        // Put the selection back where it was, within the (possibly reformatted) text.
        const int length = canonical.size();
        QTextCursor cursor = textCursor();
        cursor.setPosition(std::min(selectionStart, length));
        cursor.setPosition(std::min(selectionEnd, length), QTextCursor::KeepAnchor);
        setTextCursor(cursor);
        return;
    }
    if (afterReturn)
        moveCursor(QTextCursor::End);
    emit RangeChanged();
}

void HandRangeMultiLine::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return) {
        validate(true);
        event->accept();
        return;
    }
    QTextEdit::keyPressEvent(event);
}

void HandRangeMultiLine::mouseDoubleClickEvent(QMouseEvent* event) {
    emit doubleClicked(event);
    QTextEdit::mouseDoubleClickEvent(event);
}
