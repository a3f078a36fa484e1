#pragma once

class QWidget;

// "Save Screenshot...": a picture of the active window (or of `fallback` when no window is
// active), taken before the file dialog opens so that the dialog is not in it, then saved
// as PNG under the name the user gives. A cancelled dialog saves nothing.
class Screenshot {
public:
    static void saveActiveWindow(QWidget* fallback);
};
