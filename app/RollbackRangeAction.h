#pragma once

#include <QAction>
#include <QString>

// A menu action that carries the range text it would roll a line back to. Kept for the
// rollback entries of the range lines' menus; nothing in the program creates one yet.
class RollbackRangeAction : public QAction {
    Q_OBJECT

public:
    RollbackRangeAction(QObject* parent, const QString& text, const QString& range)
        : QAction(text, parent), rangeText(range) {}

    const QString& range() const { return rangeText; }

private:
    QString rangeText;
};
