#pragma once

#include <QRect>
#include <QString>

class QLineEdit;
class QPainter;

// A short note at the right end inside a one-line text field, naming what the field could
// not take from its text ("not understood: AKx"). While it shows, the whole note is also the
// field's tool tip and accessible description, and the field's right text margin keeps the
// typed text clear of it; the field's own tool tip and description come back when it goes.
// A note too long for its room is painted as its short hint ("dropped: 9c") when it has one,
// else elided; the tool tip holds it all.
//
// The field owns the note, calls paint() at the end of its paintEvent and relayout() from
// its resizeEvent.
class FieldNote {
public:
    explicit FieldNote(QLineEdit* field);

    // Shows `note`; an empty note is clear(). A narrow field paints the short `hint` in
    // its place when one is given (the tool tip keeps the whole note).
    void show(const QString& note, const QString& hint = QString());
    void clear();
    const QString& text() const { return note; }
    bool isShown() const { return !note.isEmpty(); }
    // What is painted: the note when it has room, else the hint if there is one.
    QString painted() const;

    // Where the note is painted, in the field's coordinates; empty without a note.
    QRect area() const;
    void paint(QPainter& painter) const;
    // Sets the field's right text margin to the note's room.
    void relayout();

private:
    // The widest the painted note may be.
    int room() const;

    QLineEdit* field;
    QString note;
    QString hint;
    QString ownToolTip;
    QString ownDescription;
};
