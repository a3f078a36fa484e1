#include "app/Quorvane.h"

Quorvane::Quorvane(QWidget* parent) : QMainWindow(parent) {
    setObjectName(QStringLiteral("QuorvaneClass"));
    setWindowTitle(QStringLiteral("untitled.qva - Quorvane "));
}
