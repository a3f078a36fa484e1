#pragma once

// The crash reporter. When the program dies of a fatal signal or an exception that nobody
// catches, it writes a report into the user's data folder
// (<XDG_DATA_HOME>/Velmara/Quorvane/crashReports/crash-<seconds since 1970>-<pid>.txt):
// application name, version, time, cause and stack trace, written with async-signal-safe
// calls only, so that no crash loses its report. On an uncaught exception on the main
// thread it then adds a JPEG of the main window (same name, .jpg). Reports are sent to the
// receiver URL at the next start (CrashReportSender) and deleted once the server took them.
//
// The four operations keep the roles and the calling conventions the program has always
// used: install, last error message, add screenshot, uninstall. All return 0 on success.

#include <QObject>
#include <QString>

#include <string>

class QNetworkAccessManager;
class QNetworkReply;

// Filled by the caller and handed to crInstall. Set `size` to the size of the record.
struct CrashReporterInstallInfo {
    unsigned size = 0;
    std::wstring applicationName;
    std::wstring applicationVersion;
    // Where reports go (HTTP POST, multipart form); may be empty: then nothing is sent.
    std::wstring reportReceiverUrl;
    // Which failures to catch. The Linux reporter catches every fatal signal and every
    // uncaught exception whatever the bits say; they are kept for the report.
    unsigned flags = 0;
    std::wstring privacyPolicyUrl;
};

// Flags of crAddScreenshot.
constexpr unsigned crScreenshotMainWindow = 0x1;
constexpr unsigned crScreenshotJpeg = 0x8;

// Installs the handlers. Fails when the record is malformed, when the reporter is
// installed already, or when the report folder cannot be created; crGetLastErrorMessage
// then tells why.
int crInstall(const CrashReporterInstallInfo* info);

// Copies the message of the last failed operation (or "No error.") into `buffer`, zero
// terminated, cut to `bufferLength` - 1 characters. Returns the length copied, or -1 when
// there is no room at all.
int crGetLastErrorMessage(wchar_t* buffer, unsigned bufferLength);

// Asks for a picture of the main window in each report: flags crScreenshotMainWindow |
// crScreenshotJpeg, `quality` 0..100 for the JPEG coder.
int crAddScreenshot(unsigned flags, int quality);

// Removes the handlers. Reports already written stay for the next start.
int crUninstall();

namespace CrashReporter {
// The folder reports go to; created by crInstall.
QString reportFolder();
} // namespace CrashReporter

// Posts the reports waiting in the report folder, one request each, to the receiver URL:
// multipart form with the fields "application", "version", "report" (the text file) and,
// when there is one, "screenshot" (the JPEG). A report the server answered with status 200
// is deleted; any other answer keeps it for the next time. Lives on the main thread.
class CrashReportSender : public QObject {
    Q_OBJECT
public:
    CrashReportSender(const QString& receiverUrl, QObject* parent = nullptr);
    ~CrashReportSender() override;

    // Starts sending; returns the number of reports that are on their way (0: nothing to
    // send, `finished` comes anyway, queued).
    int sendPendingReports();

signals:
    void finished(int sentCount, int keptCount);

private:
    void onReplyFinished(QNetworkReply* reply);

    QString receiverUrl;
    QNetworkAccessManager* network;
    int outstanding = 0;
    int sent = 0;
    int kept = 0;
};
