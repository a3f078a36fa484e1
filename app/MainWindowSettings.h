#pragma once

class QMainWindow;
class QSettings;
namespace Ui {
class QuorvaneClass;
}

// The main window's settings: its place and size in the group `mainwindow`, and the option
// actions in the group `optionmenu`. Read once after the window is built, written when it
// closes; the three options that are written at once on toggling write themselves through
// the window's slots.
//
// Reading sets the actions with their signals blocked, so that no option slot runs for a
// value that merely comes back from the settings.
class MainWindowSettings {
public:
    static void load(QSettings& settings, QMainWindow& window, Ui::QuorvaneClass& ui);
    static void save(QSettings& settings, const QMainWindow& window, const Ui::QuorvaneClass& ui);
};
