#include "utils/ui/NoPaintFilter.h"

#include <QEvent>

namespace Utils {
namespace UI {

NoPaintFilter::NoPaintFilter(QObject* parent) : QObject(parent) {}

bool NoPaintFilter::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Paint)
        return true;
    return QObject::eventFilter(watched, event);
}

} // namespace UI
} // namespace Utils
