#pragma once

#include <QLineEdit>

class CardRange;

// The text field of a card field. Every change of its text refills the bound CardRange
// (which drops what it cannot take) and is then announced by UpdateFromCardRange. The
// text itself is left as typed while the user edits, so the cursor never jumps; it is
// rewritten from the range when editing ends or when the range changes from elsewhere.
class CardRangeText : public QLineEdit {
    Q_OBJECT

public:
    explicit CardRangeText(QWidget* parent = nullptr);

    void setCardRange(CardRange* range);
    CardRange* cardRange() const { return range; }

    // Shows the cards of the bound range as text, without refilling the range and without
    // any signal.
    void rewriteFromCardRange();

signals:
    void doubleClicked();
    // The bound range has been refilled from a new text.
    void UpdateFromCardRange();

public slots:
    void onTextChanged(const QString& text);

protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    CardRange* range = nullptr;
};
