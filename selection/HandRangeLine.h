#pragma once

#include "utils/ui/FieldNote.h"

#include <QLineEdit>
#include <QMouseEvent>
#include <QPointer>

#include <string>
#include <vector>

class HandRangeHover;

namespace Range {
class HandRange;
class Tree;
} // namespace Range

// A single-line text field bound to a Range::HandRange it does not own.
//
// The text is free range text. While the user types, every edit is parsed into the bound
// range at once (so that the equity can follow the typing) but the field is left as typed;
// Return, or leaving the field, puts the range's canonical (compact) text back. RangeChanged
// is emitted only when the range's text really changed: a text that only reformats counts
// as no change. A line without a bound range ignores all of this.
//
// With a group tree set (setRangeGroups) the line paints the group's name in a small box of
// the group's colour at its left edge, and the hover shows the group's numbers. An open
// hover follows every change of the range, the board and the dead cards at once.
//
// What the grammar could not read is dropped from the range, and the line says so: the
// validation names the dropped tokens ("not understood: AKx") in a note at its right end and
// in its tool tip, until the next edit of the text or another range is bound.
//
// The owner must call clear() (or bind another range) before the bound range goes away.
class HandRangeLine : public QLineEdit {
    Q_OBJECT

public:
    explicit HandRangeLine(QWidget* parent = nullptr);
    ~HandRangeLine() override;

    // Binds `range` (may be null) and shows its compact text; no signal.
    void setHandRange(Range::HandRange* range);
    Range::HandRange* handRange() const { return range; }
    // The group tree and the group (a range node's index) used for hover and paint instead
    // of the bare range; a null tree means none.
    void setRangeGroups(Range::Tree* groups, unsigned int group);
    Range::Tree* rangeGroups() const { return groups; }
    unsigned int rangeGroup() const { return group; }

    // Board text for the hover's numbers ("AhKd2c") and dead cards as one-bit card masks.
    void setBoard(const std::string& boardText);
    const std::string& boardText() const { return board; }
    void setDeadCards(const std::vector<unsigned long long>& cards);

    // While set, the owners of the line don't open their selection dialogs for it.
    void setReadOnlyMode(bool readOnly) { readOnlyMode = readOnly; }
    bool isReadOnlyMode() const { return readOnlyMode; }
    void setHoverEnabled(bool enabled);
    bool isHoverEnabled() const { return hoverEnabled; }
    void setHoverShowsSuits(bool showSuits) { hoverShowsSuits = showSuits; }
    bool hoverShowsSuitsEnabled() const { return hoverShowsSuits; }
    // The hover while it is shown, else null.
    HandRangeHover* currentHover() const;

    // Compact text of the bound range; empty without one.
    std::string rangeText() const;

    // The note about what the last validation dropped; empty when it dropped nothing.
    QString note() const { return dropNote.text(); }
    // Ends the note (a change of the range from elsewhere is an edit too).
    void clearNote() { dropNote.clear(); }

signals:
    void doubleClicked(QMouseEvent* event);
    void RangeChanged();

public slots:
    // Unbinds the range and group tree and empties the field; no signal.
    void clear();
    // Parses the field into the range, writes the canonical text back, and emits
    // RangeChanged when the range's text changed.
    void validateRange();
    // Closes the hover when the pointer has left the line.
    void testHoverPosition();

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private slots:
    void onTextEdited(const QString& text);

private:
    void showHover(const QPoint& globalPosition);
    void closeHover();
    void placeHover(const QPoint& globalPosition);
    // Gives an open hover the range, board and dead cards as they are now.
    void refreshHover();
    // Whether the group tree names a range node to show instead of the bare range.
    bool showsGroup() const;
    // The name box of the group at the left edge; empty rectangle without groups.
    QString groupName() const;

    bool readOnlyMode = false;
    bool hoverEnabled = true;
    bool hoverShowsSuits = false;
    std::string board;
    std::vector<unsigned long long> deadCards;
    Range::HandRange* range = nullptr;
    Range::Tree* groups = nullptr;
    unsigned int group = 0;
    QPointer<HandRangeHover> hover;
    int groupBoxWidth = 0;
    FieldNote dropNote;
    // The range's text when the note was made: shown again unchanged, the note stays.
    std::string noteRangeText;
};
