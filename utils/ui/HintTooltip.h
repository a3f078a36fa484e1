#pragma once

#include <QWidget>

class QLabel;
class QString;
class QTimer;

// A frameless, always-on-top tip window that closes itself after a given time and deletes
// itself on close. Callers create it with `new`, optionally move/resize it and call show();
// whether hints are wanted at all is asked first through hintsWanted().
class HintTooltip : public QWidget {
    Q_OBJECT
public:
    // `text` is rich text; `milliseconds` until the tip closes. The timer runs from
    // construction, so a tip that is never shown still goes away (and is deleted) on time.
    HintTooltip(const QString& text, QWidget* parent, int milliseconds);

    // Whether a mouse press closes the tip (default true).
    void SetCloseByClick(bool closeByClick);
    bool closesByClick() const { return closeByClick; }

    QLabel* label() const { return textLabel; }

    // The user's choice "Show Hint Tooltips". Read from the group "optionMenu" (capital M)
    // under `showHintTooltips`, default true. Note that the menu action writes the group
    // "optionmenu": the two are different keys, and so a choice made in the menu is not
    // seen here. That is how the program has always behaved.
    static bool hintsWanted();

public slots:
    void timeout();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    QLabel* textLabel;
    QTimer* timer;
    bool closeByClick = true;
};
