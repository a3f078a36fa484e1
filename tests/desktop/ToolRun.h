#pragma once

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

// A command line tool run to its end: its exit code and what it wrote.
struct ToolRun {
    int exitCode = -1; // -1 when it did not start, crashed or ran out of time
    QString output;    // standard output and standard error together

    bool succeeded() const { return exitCode == 0; }
};

// Runs `program` (a path, or a name looked up in PATH) with `arguments`, waiting at most
// `limitMs`. `environment` empty: the test's own.
ToolRun runTool(const QString& program, const QStringList& arguments, int limitMs = 120000,
                const QProcessEnvironment& environment = QProcessEnvironment());

// The path of a tool in PATH, empty when it is not installed.
QString findTool(const QString& name);
