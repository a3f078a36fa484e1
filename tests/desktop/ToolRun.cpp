#include "ToolRun.h"

#include <QProcess>
#include <QStandardPaths>

ToolRun runTool(const QString& program, const QStringList& arguments, int limitMs,
                const QProcessEnvironment& environment) {
    ToolRun run;
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    if (!environment.isEmpty())
        process.setProcessEnvironment(environment);
    process.start(program, arguments);
    if (!process.waitForStarted(10000)) {
        run.output = QStringLiteral("cannot start %1: %2").arg(program, process.errorString());
        return run;
    }
    if (!process.waitForFinished(limitMs)) {
        process.kill();
        process.waitForFinished();
        run.output = QString::fromUtf8(process.readAll()) +
                     QStringLiteral("\n(stopped after %1 ms)").arg(limitMs);
        return run;
    }
    run.output = QString::fromUtf8(process.readAll());
    if (process.exitStatus() == QProcess::NormalExit)
        run.exitCode = process.exitCode();
    return run;
}

QString findTool(const QString& name) {
    return QStandardPaths::findExecutable(name);
}
