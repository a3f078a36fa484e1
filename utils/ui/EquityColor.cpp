#include "utils/ui/EquityColor.h"

#include <algorithm>
#include <cmath>

QColor colorForEquity(float v) {
    int red = 255;
    int green = 255;
    if (std::isnan(v) || v == 0.5f) {
        // yellow
    } else if (v > 0.5f) {
        red = std::max(static_cast<int>((1.0f - (v - 0.5f) * 2.0f) * 255.0f), 0);
    } else {
        green = std::max(static_cast<int>(v * 255.0f * 2.0f), 0);
    }
    // Above 1 the formula gives no more than 255; below 0 the max() caught it.
    return QColor(std::min(red, 255), std::min(green, 255), 0, 255);
}

QString equityPercentText(float v) {
    return QString::number(static_cast<double>(v * 100.0f), 'f', 2) + QStringLiteral(" %");
}
