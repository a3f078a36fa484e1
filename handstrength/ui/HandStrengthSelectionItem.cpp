#include "handstrength/ui/HandStrengthSelectionItem.h"

#include <QFont>

HandStrengthSelectionItem::HandStrengthSelectionItem(const std::string& name,
                                                     const HandStrengthKey& key, bool inherited)
    : QListWidgetItem(QString::fromStdString(name) +
                      (inherited ? QStringLiteral(" (Inherited)") : QString())),
      featureName(name), featureKey(key) {
    if (inherited) {
        QFont italic = font();
        italic.setItalic(true);
        setFont(italic);
    }
}
