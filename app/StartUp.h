#pragma once

// The free functions of the program's start-up and shutdown, all for the main thread.

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

// Starts "QuorvaneUpdater" from the program's folder, detached. When it cannot be
// started, shows the critical box "QuorvaneUpdater.exe not found".
void launchUpdater();

// Runs ReleaseNoteDialog once per program version (settings key `releaseNoteVersion`).
void showReleaseNotesIfNew();

class QWidget;

// Test hook for end-to-end runs: when the environment variable QUORVANE_SCREENSHOT_AND_QUIT
// names a file, `window` is saved there as PNG once the event loop has shown it, and the
// event loop then ends with exit code 0 (3 when the picture cannot be written). Without the
// variable nothing happens.
void screenshotAndQuitIfAsked(QWidget& window);
