#pragma once

class QSplitter;
class QWidget;

// What the hand selection dialog keeps in the settings store: whether the right mouse button
// takes hands and suits out ("unselectCardWithRightButton" in "optionmenu", default true),
// and the window's "pos", "size", "maximized" and "splitterState" in "handselectiondialog".
class HandSelectionSettings {
public:
    static bool unselectWithRightButton();
    static void setUnselectWithRightButton(bool unselect);

    // Applies the stored place, size and splitter, each only if it was stored.
    static void restoreWindow(QWidget& window, QSplitter& splitter);
    // The size only while the window isn't maximized, so that the next opening unmaximized
    // gets the size it had before.
    static void saveWindow(const QWidget& window, const QSplitter& splitter);
};
