#include "utils/ui/EvaluationTabOptions.h"

#include <QSettings>

bool EvaluationTabOptions::hidesEmptyLines() {
    const QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
    const QString current = QStringLiteral("optionmenu/removeEmptyLinesFromBoardEvaluationTabs");
    const QString older = QStringLiteral("optionMenu/removeEmptyLinesFromBoardEvaluationTabs");
    if (settings.contains(current))
        return settings.value(current).toBool();
    return settings.value(older, true).toBool();
}
