#include "app/ReleaseNoteDialog.h"

#include "ui_ReleaseNoteDialog.h"

#include "app/ProductServer.h"

#include <QFile>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QPainter>
#include <QTimer>
#include <QUrl>
#include <QWebView>

ReleaseNoteDialog::ReleaseNoteDialog(QWidget* parent)
    : QDialog(parent), ui(new Ui::ReleaseNoteDialog) {
    ui->setupUi(this);
    setWindowFlags(windowFlags() & ~Qt::WindowContextHelpButtonHint);
    ui->webView->setRenderHint(QPainter::TextAntialiasing, true);
    ui->webView->setHtml(bundledNotes(), QUrl(QStringLiteral("qrc:/releasenotes/")));

    // The page is fetched here rather than by the web view, which would render a server's
    // error page or a blank one as if it were the notes.
    const QUrl page = ProductServer::url(QStringLiteral("/changeLogContent.php"));
    QNetworkRequest request(page);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::NoLessSafeRedirectPolicy);
    QNetworkReply* reply = network.get(request);
    connect(reply, &QNetworkReply::finished, this, [this, reply] { onPageReply(reply); });
    // A hard limit: the transfer time-out of Qt only counts time without progress.
    QTimer::singleShot(pageTimeoutMs, Qt::PreciseTimer, reply, &QNetworkReply::abort);
}

ReleaseNoteDialog::~ReleaseNoteDialog() {
    delete ui;
}

QWebView* ReleaseNoteDialog::webView() const {
    return ui->webView;
}

QString ReleaseNoteDialog::bundledNotes() {
    QFile notes(QStringLiteral(":/releasenotes/release-notes.html"));
    if (!notes.open(QIODevice::ReadOnly))
        return QString();
    return QString::fromUtf8(notes.readAll());
}

void ReleaseNoteDialog::onPageReply(QNetworkReply* reply) {
    reply->deleteLater();
    const bool loaded = reply->error() == QNetworkReply::NoError &&
                        reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt() == 200;
    const QByteArray body = loaded ? reply->readAll() : QByteArray();
    if (!body.trimmed().isEmpty()) {
        ui->webView->setHtml(QString::fromUtf8(body), reply->url());
        shown = Source::Server;
    }
    done = true;
    emit settledOn(shown);
}
