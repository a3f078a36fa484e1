#pragma once

#include <QColor>
#include <QString>

// The traffic light of the program: an equity, as a fraction between 0 and 1, mapped to a
// colour from red (0) over yellow (0.5) to green (1). Blue is always 0, alpha 255.
//   v == 0.5 or NaN: (255, 255, 0)
//   v >  0.5:        green 255, red = max(int((1 - (v - 0.5) * 2) * 255), 0)
//   v <  0.5:        red 255,   green = max(int(v * 255 * 2), 0)
// Values beyond 0..1 saturate at the ends (the max(..., 0) above); above 1 the other
// channel stays 255. Arithmetic is in single precision, as the callers hand floats.
QColor colorForEquity(float v);

// A fraction as a percent text: v * 100 with two fixed decimals and " %" ("57.31 %").
QString equityPercentText(float v);
