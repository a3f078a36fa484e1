#pragma once

#include <QDialog>
#include <QNetworkAccessManager>
#include <QString>

class QNetworkReply;
class QWebView;
namespace Ui {
class ReleaseNoteDialog;
}

// The release notes: the page /changeLogContent.php of the product's web server, or the
// notes of this version that come with the program. Shown once per program version at
// start-up (showReleaseNotesIfNew) and from the Help menu.
//
// The bundled notes are shown at once; the server's page replaces them when it arrives
// with status 200 within pageTimeoutMs. A network error, another status or the time-out
// leave the bundled notes, so that the window never shows an error page.
class ReleaseNoteDialog : public QDialog {
    Q_OBJECT
public:
    // How long the server's page may take, in ms, before the bundled notes stay for good.
    static constexpr int pageTimeoutMs = 5000;

    enum class Source { Bundled, Server };

    explicit ReleaseNoteDialog(QWidget* parent = nullptr);
    ~ReleaseNoteDialog() override;

    QWebView* webView() const;
    Source source() const { return shown; }
    // False while the server's page is still awaited.
    bool settled() const { return done; }

    // The notes that come with the program (HTML).
    static QString bundledNotes();

signals:
    // The server's page arrived and is shown, or the bundled notes stay.
    void settledOn(ReleaseNoteDialog::Source source);

private:
    void onPageReply(QNetworkReply* reply);

    Ui::ReleaseNoteDialog* ui;
    QNetworkAccessManager network;
    Source shown = Source::Bundled;
    bool done = false;
};
