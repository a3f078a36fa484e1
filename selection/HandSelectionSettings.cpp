#include "selection/HandSelectionSettings.h"

#include <QByteArray>
#include <QPoint>
#include <QSettings>
#include <QSize>
#include <QSplitter>
#include <QWidget>

bool HandSelectionSettings::unselectWithRightButton() {
    QSettings settings("Velmara", "Quorvane");
    settings.beginGroup("optionmenu");
    return settings.value("unselectCardWithRightButton", true).toBool();
}

void HandSelectionSettings::setUnselectWithRightButton(bool unselect) {
    QSettings settings("Velmara", "Quorvane");
    settings.beginGroup("optionmenu");
    settings.setValue("unselectCardWithRightButton", unselect);
}

void HandSelectionSettings::restoreWindow(QWidget& window, QSplitter& splitter) {
    QSettings settings("Velmara", "Quorvane");
    settings.beginGroup("handselectiondialog");
    if (settings.contains("pos"))
        window.move(settings.value("pos").toPoint());
    if (settings.contains("size"))
        window.resize(settings.value("size").toSize());
    if (settings.contains("splitterState"))
        splitter.restoreState(settings.value("splitterState").toByteArray());
    if (settings.value("maximized", false).toBool())
        window.setWindowState(window.windowState() | Qt::WindowMaximized);
}

void HandSelectionSettings::saveWindow(const QWidget& window, const QSplitter& splitter) {
    QSettings settings("Velmara", "Quorvane");
    settings.beginGroup("handselectiondialog");
    settings.setValue("pos", window.pos());
    const bool maximized = window.isMaximized();
    if (!maximized)
        settings.setValue("size", window.size());
    settings.setValue("maximized", maximized);
    settings.setValue("splitterState", splitter.saveState());
}
