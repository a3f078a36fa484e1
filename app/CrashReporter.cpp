#include "app/CrashReporter.h"

#include "app/Platform.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHttpMultiPart>
#include <QMainWindow>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QPixmap>
#include <QStandardPaths>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstring>
#include <ctime>
#include <cwchar>
#include <fcntl.h>
#include <unistd.h>

namespace {

// Everything the crash handlers need is prepared at installation as plain zero-terminated
// bytes: after a crash nothing may allocate.
struct PreparedReportData {
    bool installed = false;
    char folder[PATH_MAX] = {};
    char applicationName[256] = {};
    char applicationVersion[64] = {};
    char receiverUrl[1024] = {};
    unsigned flags = 0;
    bool screenshot = false;
    int screenshotQuality = 95;
};
PreparedReportData prepared;
std::wstring lastError = L"No error.";

int fail(const std::wstring& message) {
    lastError = message;
    return 1;
}

bool copyInto(char* target, std::size_t capacity, const QByteArray& text) {
    if (static_cast<std::size_t>(text.size()) >= capacity)
        return false;
    std::memcpy(target, text.constData(), static_cast<std::size_t>(text.size()));
    target[text.size()] = '\0';
    return true;
}

QByteArray utf8Of(const std::wstring& text) {
    return QString::fromStdWString(text).toUtf8();
}

// ---- Async-signal-safe text building: a fixed buffer, no allocation. -------------------

class ReportLine {
public:
    ReportLine& text(const char* part) {
        while (*part && length < buffer.size() - 1)
            buffer[length++] = *part++;
        return *this;
    }
    ReportLine& number(unsigned long long value, unsigned base = 10, int minimumDigits = 1) {
        char digits[32];
        int count = 0;
        do {
            digits[count++] = "0123456789ABCDEF"[value % base];
            value /= base;
        } while (value && count < 32);
        while (count < minimumDigits && count < 32)
            digits[count++] = '0';
        while (count > 0 && length < buffer.size() - 1)
            buffer[length++] = digits[--count];
        return *this;
    }
    const char* data() const { return buffer.data(); }
    std::size_t size() const { return length; }
    void clear() { length = 0; }

private:
    std::array<char, PATH_MAX + 256> buffer{};
    std::size_t length = 0;
};

void writeAll(int fd, const char* data, std::size_t size) {
    while (size > 0) {
        const ssize_t written = write(fd, data, size);
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return;
        data += written;
        size -= static_cast<std::size_t>(written);
    }
}

void writeLine(int fd, ReportLine& line) {
    line.text("\n");
    writeAll(fd, line.data(), line.size());
    line.clear();
}

// Civil date of a count of days since 1970-01-01 (proleptic Gregorian), pure arithmetic.
void civilFromDays(long long days, long long& year, unsigned& month, unsigned& day) {
    days += 719468;
    const long long era = (days >= 0 ? days : days - 146096) / 146097;
    const unsigned dayOfEra = static_cast<unsigned>(days - era * 146097);
    const unsigned yearOfEra =
        (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const unsigned dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const unsigned shiftedMonth = (5 * dayOfYear + 2) / 153;
    day = dayOfYear - (153 * shiftedMonth + 2) / 5 + 1;
    month = shiftedMonth < 10 ? shiftedMonth + 3 : shiftedMonth - 9;
    year = static_cast<long long>(yearOfEra) + era * 400 + (month <= 2 ? 1 : 0);
}

// Writes the text report. `basePath` receives the report's path without extension.
// Async-signal-safe: open, write, fsync, close, time, getpid only.
bool writeReport(const char* cause, ReportLine& basePath) {
    const time_t now = time(nullptr);
    const long long seconds = static_cast<long long>(now);
    basePath.clear();
    basePath.text(prepared.folder)
        .text("/crash-")
        .number(static_cast<unsigned long long>(seconds))
        .text("-")
        .number(static_cast<unsigned long long>(getpid()));
    ReportLine reportPath = basePath;
    reportPath.text(".txt");
    const int fd = open(reportPath.data(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (fd < 0)
        return false;

    long long year = 0;
    unsigned month = 0, day = 0;
    const long long days = seconds >= 0 ? seconds / 86400 : (seconds - 86399) / 86400;
    const long long secondOfDay = seconds - days * 86400;
    civilFromDays(days, year, month, day);

    ReportLine line;
    writeLine(fd, line.text("Application: ").text(prepared.applicationName));
    writeLine(fd, line.text("Version: ").text(prepared.applicationVersion));
    writeLine(fd, line.text("Time: ")
                      .number(static_cast<unsigned long long>(year), 10, 4)
                      .text("-")
                      .number(month, 10, 2)
                      .text("-")
                      .number(day, 10, 2)
                      .text(" ")
                      .number(static_cast<unsigned long long>(secondOfDay / 3600), 10, 2)
                      .text(":")
                      .number(static_cast<unsigned long long>(secondOfDay / 60 % 60), 10, 2)
                      .text(":")
                      .number(static_cast<unsigned long long>(secondOfDay % 60), 10, 2)
                      .text(" UTC"));
    writeLine(fd, line.text("Process: ").number(static_cast<unsigned long long>(getpid())));
    writeLine(fd, line.text("Cause: ").text(cause));
    writeLine(fd, line.text("Flags: 0x").number(prepared.flags, 16));
    writeLine(fd, line.text("Receiver: ").text(prepared.receiverUrl));
    writeLine(fd, line.text("Stack trace:"));
    Platform::writeStackTrace(fd);
    writeLine(fd, line.text("End of stack trace."));
    fsync(fd);
    close(fd);
    return true;
}

void onFatalSignal(int signalNumber, const char* signalName) {
    ReportLine cause;
    cause.text("signal ").number(static_cast<unsigned>(signalNumber)).text(" (");
    cause.text(signalName).text(")");
    ReportLine basePath;
    writeReport(cause.data(), basePath);
}

// The window a picture is taken of: the visible main window, else the active window.
QWidget* mainWindowForScreenshot() {
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (widget->isVisible() && qobject_cast<QMainWindow*>(widget))
            return widget;
    return QApplication::activeWindow();
}

void onUncaughtException(const char* description) {
    ReportLine basePath;
    if (!writeReport(description, basePath))
        return;
    // The text is safe on disk. A picture needs the widgets, so only the main thread of a
    // widget application may take it.
    if (!prepared.screenshot || !qobject_cast<QApplication*>(QCoreApplication::instance()) ||
        QThread::currentThread() != QCoreApplication::instance()->thread())
        return;
    QWidget* window = mainWindowForScreenshot();
    if (!window)
        return;
    const QString picturePath = QString::fromUtf8(basePath.data()) + QStringLiteral(".jpg");
    if (!window->grab().save(picturePath, "JPG", prepared.screenshotQuality))
        return;
    QFile report(QString::fromUtf8(basePath.data()) + QStringLiteral(".txt"));
    if (report.open(QIODevice::Append))
        report.write("Screenshot: " + QFileInfo(picturePath).fileName().toUtf8() + "\n");
}

} // namespace

namespace CrashReporter {
QString reportFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           QStringLiteral("/Velmara/Quorvane/crashReports");
}
} // namespace CrashReporter

int crInstall(const CrashReporterInstallInfo* info) {
    if (!info)
        return fail(L"The installation record is missing.");
    if (info->size != sizeof(CrashReporterInstallInfo))
        return fail(L"The installation record has the wrong size.");
    if (info->applicationName.empty())
        return fail(L"The application name is empty.");
    if (prepared.installed)
        return fail(L"The crash reporter is installed already.");

    PreparedReportData data;
    const QString folder = CrashReporter::reportFolder();
    if (!QDir().mkpath(folder))
        return fail(L"The crash report folder " + folder.toStdWString() + L" cannot be created.");
    if (!copyInto(data.folder, sizeof data.folder, QFile::encodeName(folder)) ||
        !copyInto(data.applicationName, sizeof data.applicationName,
                  utf8Of(info->applicationName)) ||
        !copyInto(data.applicationVersion, sizeof data.applicationVersion,
                  utf8Of(info->applicationVersion)) ||
        !copyInto(data.receiverUrl, sizeof data.receiverUrl, utf8Of(info->reportReceiverUrl)))
        return fail(L"A text of the installation record is too long.");
    data.flags = info->flags;
    data.installed = true;

    prepared = data; // before the hooks: they read it
    std::string error;
    if (!Platform::installCrashHooks({&onFatalSignal, &onUncaughtException}, error)) {
        prepared = PreparedReportData();
        return fail(QString::fromStdString(error).toStdWString());
    }
    lastError = L"No error.";
    return 0;
}

int crGetLastErrorMessage(wchar_t* buffer, unsigned bufferLength) {
    if (!buffer || bufferLength == 0)
        return -1;
    const std::size_t count = std::min<std::size_t>(lastError.size(), bufferLength - 1);
    std::wmemcpy(buffer, lastError.data(), count);
    buffer[count] = L'\0';
    return static_cast<int>(count);
}

int crAddScreenshot(unsigned flags, int quality) {
    if (!prepared.installed)
        return fail(L"The crash reporter is not installed.");
    if (!(flags & crScreenshotMainWindow))
        return fail(L"Only pictures of the main window are supported.");
    if (!(flags & crScreenshotJpeg))
        return fail(L"Only JPEG pictures are supported.");
    if (quality < 0 || quality > 100)
        return fail(L"The picture quality must lie between 0 and 100.");
    prepared.screenshot = true;
    prepared.screenshotQuality = quality;
    return 0;
}

int crUninstall() {
    if (!prepared.installed)
        return fail(L"The crash reporter is not installed.");
    Platform::uninstallCrashHooks();
    prepared = PreparedReportData();
    return 0;
}

// ---------------------------------------------------------------------------------------

CrashReportSender::CrashReportSender(const QString& receiverUrl, QObject* parent)
    : QObject(parent), receiverUrl(receiverUrl), network(new QNetworkAccessManager(this)) {
    connect(network, &QNetworkAccessManager::finished, this, &CrashReportSender::onReplyFinished);
}

CrashReportSender::~CrashReportSender() = default;

int CrashReportSender::sendPendingReports() {
    const QDir folder(CrashReporter::reportFolder());
    const QStringList reports =
        receiverUrl.isEmpty()
            ? QStringList()
            : folder.entryList({QStringLiteral("crash-*.txt")}, QDir::Files, QDir::Name);
    for (const QString& name : reports) {
        QFile report(folder.filePath(name));
        if (!report.open(QIODevice::ReadOnly))
            continue;
        auto* form = new QHttpMultiPart(QHttpMultiPart::FormDataType);
        const auto addField = [form](const QString& field, const QByteArray& value,
                                     const QString& fileName, const QByteArray& type) {
            QHttpPart part;
            QString disposition = QStringLiteral("form-data; name=\"%1\"").arg(field);
            if (!fileName.isEmpty())
                disposition += QStringLiteral("; filename=\"%1\"").arg(fileName);
            part.setHeader(QNetworkRequest::ContentDispositionHeader, disposition);
            if (!type.isEmpty())
                part.setHeader(QNetworkRequest::ContentTypeHeader, type);
            part.setBody(value);
            form->append(part);
        };
        const QByteArray text = report.readAll();
        const auto valueOf = [&text](const QByteArray& key) {
            for (const QByteArray& line : text.split('\n'))
                if (line.startsWith(key + ": "))
                    return line.mid(key.size() + 2);
            return QByteArray();
        };
        addField(QStringLiteral("application"), valueOf("Application"), QString(), QByteArray());
        addField(QStringLiteral("version"), valueOf("Version"), QString(), QByteArray());
        addField(QStringLiteral("report"), text, name, "text/plain; charset=utf-8");
        const QString pictureName = QFileInfo(name).completeBaseName() + QStringLiteral(".jpg");
        QFile picture(folder.filePath(pictureName));
        if (picture.open(QIODevice::ReadOnly))
            addField(QStringLiteral("screenshot"), picture.readAll(), pictureName, "image/jpeg");

        QNetworkRequest request{QUrl(receiverUrl)};
        request.setAttribute(QNetworkRequest::User, folder.filePath(name));
        request.setTransferTimeout(30000);
        QNetworkReply* reply = network->post(request, form);
        form->setParent(reply);
        ++outstanding;
    }
    if (outstanding == 0)
        QTimer::singleShot(0, this, [this] { emit finished(sent, kept); });
    return outstanding;
}

void CrashReportSender::onReplyFinished(QNetworkReply* reply) {
    reply->deleteLater();
    const QString reportPath = reply->request().attribute(QNetworkRequest::User).toString();
    const bool accepted = reply->error() == QNetworkReply::NoError &&
                          reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt() == 200;
    if (accepted) {
        QFile::remove(reportPath);
        QFile::remove(QFileInfo(reportPath).path() + QLatin1Char('/') +
                      QFileInfo(reportPath).completeBaseName() + QStringLiteral(".jpg"));
        ++sent;
    } else {
        ++kept;
    }
    if (--outstanding == 0)
        emit finished(sent, kept);
}
