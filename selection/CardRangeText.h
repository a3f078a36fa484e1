#pragma once

#include "utils/ui/FieldNote.h"

#include <QLineEdit>

class CardRange;

// The text field of a card field. Every change of its text refills the bound CardRange
// (which drops what it cannot take) and is then announced by UpdateFromCardRange. The
// text itself is left as typed while the user edits, so the cursor never jumps; it is
// rewritten from the range when editing ends or when the range changes from elsewhere.
//
// What the range dropped from the typed text, and why, the field names in a note at its
// right end and in its tool tip ("a flop has three cards: 9c dropped") until the next edit;
// a card still being typed is judged only when the editing ends.
class CardRangeText : public QLineEdit {
    Q_OBJECT

public:
    explicit CardRangeText(QWidget* parent = nullptr);

    void setCardRange(CardRange* range);
    CardRange* cardRange() const { return range; }

    // Shows the cards of the bound range as text, without refilling the range and without
    // any signal. At the end of an edit the note judges the typed text as finished.
    void rewriteFromCardRange();

    // The note shown; empty when there is none.
    QString note() const { return dropNote.text(); }
    // What the field paints of the note: the whole note, or its short hint when the field is
    // too narrow.
    QString paintedNote() const { return dropNote.painted(); }
    // Shows what the range's last fill dropped (a fill made from elsewhere), or ends the
    // note (a change made from elsewhere, which is an edit too).
    void showDropsOfLastFill();
    void clearNote() { dropNote.clear(); }

signals:
    void doubleClicked();
    // The bound range has been refilled from a new text.
    void UpdateFromCardRange();

public slots:
    void onTextChanged(const QString& text);

protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    CardRange* range = nullptr;
    FieldNote dropNote;
    // The range was last filled from this field's typed text, not yet judged as finished.
    bool typedFill = false;
};
