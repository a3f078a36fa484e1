#include "app/Platform.h"

#include <QProcess>
#include <QString>

#include <array>
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <dirent.h>
#include <exception>
#include <execinfo.h>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <unistd.h>

namespace Platform {
namespace {

bool isProcessIdText(const char* text) {
    if (!*text)
        return false;
    for (; *text; ++text)
        if (*text < '0' || *text > '9')
            return false;
    return true;
}

std::string fileNameOf(const std::string& path) {
    const auto cut = path.find_last_of("/\\");
    return cut == std::string::npos ? path : path.substr(cut + 1);
}

std::optional<std::string> readWholeFile(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    if (!stream)
        return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

std::vector<std::string> executableFileNamesOf(const std::string& processFolder) {
    std::vector<std::string> names;
    const auto addName = [&names](const std::string& name) {
        if (!name.empty())
            names.push_back(name);
    };

    std::array<char, 4096> target{};
    const ssize_t length =
        readlink((processFolder + "/exe").c_str(), target.data(), target.size() - 1);
    if (length > 0) {
        std::string path(target.data(), static_cast<std::size_t>(length));
        const std::string deleted = " (deleted)";
        if (path.size() > deleted.size() &&
            path.compare(path.size() - deleted.size(), deleted.size(), deleted) == 0)
            path.resize(path.size() - deleted.size());
        addName(fileNameOf(path));
    }
    if (const auto commandLine = readWholeFile(processFolder + "/cmdline"))
        addName(fileNameOf(std::string(commandLine->c_str()))); // up to the first NUL
    if (auto shortName = readWholeFile(processFolder + "/comm")) {
        if (!shortName->empty() && shortName->back() == '\n')
            shortName->pop_back();
        addName(*shortName);
    }
    return names;
}

} // namespace

std::optional<std::vector<ProcessEntry>> processSnapshot() {
    DIR* folder = opendir("/proc");
    if (!folder)
        return std::nullopt;
    std::vector<ProcessEntry> entries;
    while (const dirent* item = readdir(folder)) {
        if (!isProcessIdText(item->d_name))
            continue;
        ProcessEntry entry;
        entry.processId = std::strtol(item->d_name, nullptr, 10);
        entry.executableFileNames = executableFileNamesOf(std::string("/proc/") + item->d_name);
        if (!entry.executableFileNames.empty()) // empty: the process ended meanwhile
            entries.push_back(std::move(entry));
    }
    closedir(folder);
    return entries;
}

bool startElevatedDetached(const QString& program) {
    return QProcess::startDetached(program, QStringList());
}

// ---------------------------------------------------------------------------------------
// Crash hooks.

namespace {

struct FatalSignal {
    int number;
    const char* name;
};
constexpr std::array<FatalSignal, 5> fatalSignals{{{SIGSEGV, "SIGSEGV"},
                                                   {SIGABRT, "SIGABRT"},
                                                   {SIGFPE, "SIGFPE"},
                                                   {SIGILL, "SIGILL"},
                                                   {SIGBUS, "SIGBUS"}}};

CrashHooks installedHooks;
std::array<struct sigaction, fatalSignals.size()> previousActions{};
std::terminate_handler previousTerminate = nullptr;
bool hooksInstalled = false;
// Set by the first crash of the process; later ones (the abort after a reported exception,
// a second thread faulting meanwhile) only let the process die.
std::atomic<bool> crashReported{false};

// An alternate stack, so that a stack overflow can still be reported.
constexpr std::size_t alternateStackSize = 64 * 1024;
alignas(16) char alternateStack[alternateStackSize];

const char* nameOfSignal(int number) {
    for (const auto& fatal : fatalSignals)
        if (fatal.number == number)
            return fatal.name;
    return "signal";
}

void dieOf(int signalNumber) {
    signal(signalNumber, SIG_DFL);
    raise(signalNumber); // delivered when the handler returns, or at once if unblocked
}

void onSignal(int signalNumber) {
    if (!crashReported.exchange(true) && installedHooks.onFatalSignal)
        installedHooks.onFatalSignal(signalNumber, nameOfSignal(signalNumber));
    dieOf(signalNumber);
}

std::string describeCurrentException() {
    const std::exception_ptr current = std::current_exception();
    if (!current)
        return "std::terminate called without an active exception";
    try {
        std::rethrow_exception(current);
    } catch (const std::exception& exception) {
        return std::string("uncaught exception: ") + exception.what();
    } catch (const std::string& text) {
        return "uncaught exception (text): " + text;
    } catch (const char* text) {
        return std::string("uncaught exception (text): ") + (text ? text : "");
    } catch (...) {
        return "uncaught exception of unknown type";
    }
}

[[noreturn]] void onTerminate() {
    if (!crashReported.exchange(true) && installedHooks.onUncaughtException)
        installedHooks.onUncaughtException(describeCurrentException().c_str());
    std::abort(); // the SIGABRT handler sees crashReported and lets the process go
}

} // namespace

bool installCrashHooks(const CrashHooks& hooks, std::string& error) {
    if (hooksInstalled) {
        error = "The crash hooks are installed already.";
        return false;
    }
    // backtrace() loads the unwinder on first use, which allocates: do it now, not in a
    // signal handler.
    void* frames[4];
    backtrace(frames, 4);

    stack_t alternate{};
    alternate.ss_sp = alternateStack;
    alternate.ss_size = alternateStackSize;
    if (sigaltstack(&alternate, nullptr) != 0) {
        error = "The alternate signal stack cannot be set.";
        return false;
    }

    struct sigaction action {};
    action.sa_handler = &onSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_ONSTACK | SA_RESETHAND;
    for (std::size_t i = 0; i < fatalSignals.size(); ++i) {
        if (sigaction(fatalSignals[i].number, &action, &previousActions[i]) != 0) {
            for (std::size_t j = 0; j < i; ++j)
                sigaction(fatalSignals[j].number, &previousActions[j], nullptr);
            error = std::string("The handler for ") + fatalSignals[i].name + " cannot be set.";
            return false;
        }
    }
    installedHooks = hooks;
    previousTerminate = std::set_terminate(&onTerminate);
    crashReported = false;
    hooksInstalled = true;
    return true;
}

void uninstallCrashHooks() {
    if (!hooksInstalled)
        return;
    for (std::size_t i = 0; i < fatalSignals.size(); ++i)
        sigaction(fatalSignals[i].number, &previousActions[i], nullptr);
    std::set_terminate(previousTerminate);
    installedHooks = CrashHooks();
    hooksInstalled = false;
}

void writeStackTrace(int fileDescriptor) {
    constexpr int maximumFrames = 128;
    void* frames[maximumFrames];
    const int count = backtrace(frames, maximumFrames);
    backtrace_symbols_fd(frames, count, fileDescriptor);
}

} // namespace Platform
