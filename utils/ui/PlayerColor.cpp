#include "utils/ui/PlayerColor.h"

#include <QString>

QColor PlayerColor::of(int player) {
    switch (player) {
    case 1:
        return QColor(0x17, 0x80, 0x8f);
    case 2:
        return QColor(0xc2, 0x6a, 0x2a);
    default:
        return QColor();
    }
}

QString PlayerColor::markerStyle(int player) {
    const QColor color = of(player);
    if (!color.isValid())
        return QString();
    return QStringLiteral("border-left: 4px solid %1;").arg(color.name());
}
