#pragma once

// Everything that depends on the operating system, in one place: the process list, starting
// a program detached (and with elevation where the system has it), and the hooks that catch
// a crash. The callers keep the program's own names (`isProcessRunning`, `launchUpdater`,
// `crInstall`); this unit is the Linux side of them.

#include <optional>
#include <string>
#include <vector>

class QString;

namespace Platform {

// One running process as the process list shows it.
struct ProcessEntry {
    long processId = 0;
    // The names the process's executable goes by: the file name of the executable itself,
    // the file name in its first argument (cut at '/' or '\', which is how a Windows program
    // run under a compatibility layer appears) and the kernel's short command name (at most
    // 15 characters). Exact texts, case kept.
    std::vector<std::string> executableFileNames;
};

// One pass over the process list (/proc). Empty optional when the list cannot be read.
// Processes that end during the pass are skipped.
std::optional<std::vector<ProcessEntry>> processSnapshot();

// Starts `program` (an absolute path) with no arguments, detached from this process, so
// that it outlives it. Linux has no elevation request at start: a program that needs
// privileges asks for them itself. False when it cannot be started.
bool startElevatedDetached(const QString& program);

// What a crash calls. `onFatalSignal` runs inside a signal handler, possibly on an
// alternate stack: it may only do async-signal-safe work (open, write, close).
// `onUncaughtException` runs from std::terminate on the thread that threw, with the
// exception described in `description`; the process aborts when it returns.
struct CrashHooks {
    void (*onFatalSignal)(int signalNumber, const char* signalName) = nullptr;
    void (*onUncaughtException)(const char* description) = nullptr;
};

// Installs the hooks for SIGSEGV, SIGABRT, SIGFPE, SIGILL, SIGBUS and for std::terminate.
// Each crash is reported once; after the hook returns the process dies of the original
// signal (or of SIGABRT), so a debugger or core dump still sees it. False with `error` set
// when the handlers cannot be set; nothing is left half installed then.
bool installCrashHooks(const CrashHooks& hooks, std::string& error);

// Puts back the handlers that were there before installCrashHooks. Safe to call twice.
void uninstallCrashHooks();

// Writes the calling thread's stack, one frame per line, to the file descriptor.
// Async-signal-safe once installCrashHooks has run (the unwinder is loaded then).
void writeStackTrace(int fileDescriptor);

} // namespace Platform
