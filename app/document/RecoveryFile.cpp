#include "app/document/RecoveryFile.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QStandardPaths>
#include <QtConcurrent/QtConcurrentRun>

namespace {

constexpr int minimumInterval = 1000; // ms between two writes

QString namePath() {
    return RecoveryFile::folder() + QStringLiteral("/recovery.name");
}

// Atomic: the data lands in a temporary file that replaces the old one only when complete.
bool writeAtomically(const QString& path, const QByteArray& data) {
    QSaveFile file(path);
    // Unbuffered: a short write must show here, not be lost on the way (see the analysis
    // file's save).
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return false;
    if (file.write(data) != data.size()) {
        file.cancelWriting();
        return false;
    }
    return file.commit();
}

} // namespace

RecoveryFile::RecoveryFile(QObject* parent) : QObject(parent) {
    writer.setMaxThreadCount(1);
    delay.setSingleShot(true);
    connect(&delay, &QTimer::timeout, this, &RecoveryFile::write);
}

RecoveryFile::~RecoveryFile() {
    writer.waitForDone();
}

QString RecoveryFile::folder() {
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
}

QString RecoveryFile::path() {
    return folder() + QStringLiteral("/recovery.qva");
}

void RecoveryFile::keep(const Memento& snapshot, const QString& fileName) {
    pendingSnapshot = snapshot;
    pendingName = fileName;
    pending = true;
    if (!sinceWrite.isValid() || sinceWrite.elapsed() >= minimumInterval) {
        delay.stop();
        write();
    } else if (!delay.isActive()) {
        delay.start(static_cast<int>(minimumInterval - sinceWrite.elapsed()));
    }
}

void RecoveryFile::flush() {
    delay.stop();
    if (pending)
        write();
    writer.waitForDone();
}

void RecoveryFile::remove() {
    delay.stop();
    pending = false;
    // A write still under way would bring the files back after this.
    writer.waitForDone();
    // What an earlier run left is not this run's to remove before it was offered.
    if (!wrote)
        return;
    QFile::remove(path());
    QFile::remove(namePath());
}

void RecoveryFile::write() {
    if (!pending)
        return;
    pending = false;
    wrote = true;
    sinceWrite.start();
    // Putting a large analysis's text together and writing it takes tens of milliseconds:
    // off the main thread, on a pool of one thread of its own, so that writes keep their
    // order and never wait behind the equity calculations of the global pool. The snapshot
    // is a copy whose pieces are shared and never change.
    const Memento snapshot = pendingSnapshot;
    const QString name = pendingName;
    QtConcurrent::run(&writer, [snapshot, name] {
        // A recovery file that cannot be written costs only the recovery: the analysis itself
        // is untouched, and the next change tries again.
        if (!QDir().mkpath(folder()))
            return;
        writeAtomically(namePath(), name.toUtf8());
        writeAtomically(path(), QByteArray::fromStdString(snapshot.data()));
    });
}

std::optional<RecoveryFile::Recovered> RecoveryFile::find() {
    QFile file(path());
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    Recovered recovered;
    recovered.text = file.readAll().toStdString();
    QFile name(namePath());
    if (name.open(QIODevice::ReadOnly))
        recovered.fileName = QString::fromUtf8(name.readAll());
    return recovered;
}

void RecoveryFile::discard() {
    QFile::remove(path());
    QFile::remove(namePath());
}
