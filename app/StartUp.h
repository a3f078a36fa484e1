#pragma once

// The free functions of the program's start-up and shutdown, all for the main thread.

#include <functional>

class QString;

// The 2,000 ms timer's slot: while "PokerStars.exe" runs, every top-level widget is
// disabled and one BlockedWindow stands over them; when it is gone, all are enabled again
// and the BlockedWindow is removed.
void watchBlockingProcess();

// One pass over the process list: true when a process whose executable file name is
// exactly `processFileName` (case counts) runs.
bool isProcessRunning(const QString& processFileName);

// Installs the crash reporter ("Velmara Quorvane", the program version, the product
// server's report receiver) and asks for a main window picture in each report; then sends
// the reports that earlier runs left behind. On failure shows the warning "crInstall
// error" with the reporter's message and returns false.
bool installCrashReporter();

class QMessageBox;
class QWidget;
class ReleaseNoteDialog;

// The updater, a separate program installed beside this one where the program updates
// itself ("QuorvaneUpdater" in the program's folder). A distribution's package has none.
QString updaterPath();
bool updaterAvailable();

// Starts the updater, detached. When it cannot be started, shows the critical box
// "QuorvaneUpdater not found", which names the download page.
void launchUpdater();

// Where no updater is installed: the box "Update available" with a link to the download
// page and the button Ok; the start goes on after it.
void announceUpdate();

// After a failed version check, once the main window is up: the warning "Update Check
// Failed" over `window`, naming the download page, with the buttons Ok and Ignore (Ignore
// sets `PreStarter/ignoreInternetWarning`). It does not wait for the answer. Null when the
// user chose Ignore before.
QMessageBox* warnOfFailedUpdateCheck(QWidget* window);

// Moves `box` where it covers nothing of `other` (below it, else above it, else beside it,
// within the screen), for two windows of the start that are open at once. Left where it is
// when there is no such place.
void keepClearOf(QWidget& box, const QWidget& other);

// Once per program version (settings key `releaseNoteVersion`): ReleaseNoteDialog over
// `window`, without waiting for it to be closed; the version counts as shown from then on.
// Null when this version's notes were shown before.
ReleaseNoteDialog* showReleaseNotesIfNew(QWidget* window);

// Runs `action` once, right after `window` has been drawn for the first time: what the
// start has to say comes over a window that is already there.
void whenFirstDrawn(QWidget& window, std::function<void()> action);

// Test hook for end-to-end runs: when the environment variable QUORVANE_SCREENSHOT_AND_QUIT
// names a file, `window` is saved there as PNG once the event loop has shown it, and the
// event loop then ends with exit code 0 (3 when the picture cannot be written). Beside the
// picture go "<file>.screen.png", the whole screen, and "<file>.windows.txt", one block per
// visible top-level window: its class and title, then the text it shows (a message box's
// text, the release notes as plain text). Without the variable nothing happens.
void screenshotAndQuitIfAsked(QWidget& window);
