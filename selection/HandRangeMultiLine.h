#pragma once

#include <QMouseEvent>
#include <QTextEdit>

namespace Range {
class HandRange;
}

// A multi-line text field bound to a Range::HandRange it does not own (the group list of
// the hand selection dialog). Return validates instead of breaking the line: the text is
// parsed into the range and replaced by the range's canonical text; RangeChanged is emitted
// only when the range's text changed. A field without a bound range ignores Return.
// Tokens the grammar could not read are named in the field's tool tip ("not understood:
// AKx") until the next edit.
class HandRangeMultiLine : public QTextEdit {
    Q_OBJECT

public:
    explicit HandRangeMultiLine(QWidget* parent = nullptr);

    // Binds `range` (may be null) and shows its compact text; no signal.
    void setHandRange(Range::HandRange* range);
    Range::HandRange* handRange() const { return range; }

    // What the last validation dropped; empty when nothing.
    const QString& note() const { return dropNote; }

signals:
    void doubleClicked(QMouseEvent* event);
    void RangeChanged();

public slots:
    void validateRange();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    // What validateRange does; `afterReturn` moves the cursor to the end when the text
    // changed.
    void validate(bool afterReturn);
    // Replaces the text without counting it as an edit.
    void showText(const QString& text);
    void setNote(const QString& note);

    Range::HandRange* range = nullptr;
    QString dropNote;
    bool showingText = false;
};
