#include "selection/HoverFrame.h"

#include <QString>
#include <QVBoxLayout>
#include <QWidget>

QWidget* buildHoverFrame(QWidget* window, const QString& objectName, const QString& extraRules) {
    window->setObjectName(objectName);
    window->setAttribute(Qt::WA_TranslucentBackground);
    window->setAttribute(Qt::WA_ShowWithoutActivating);
    window->setStyleSheet(
        QStringLiteral("#") + objectName +
        QStringLiteral(
            " { background: rgba(255, 255, 255, 0%); }"
            "#wrapper { border: 1px solid #a0a0a0; border-radius: 9px; background: #fdfdfd; }") +
        extraRules);

    auto* outer = new QVBoxLayout(window);
    outer->setContentsMargins(0, 0, 0, 0);
    auto* wrapper = new QWidget(window);
    wrapper->setObjectName(QStringLiteral("wrapper"));
    wrapper->setAttribute(Qt::WA_StyledBackground);
    outer->addWidget(wrapper);
    return wrapper;
}
