#include "app/ReleaseNoteDialog.h"

#include "ui_ReleaseNoteDialog.h"

#include "app/ProductServer.h"

#include <QPainter>
#include <QUrl>
#include <QWebView>

ReleaseNoteDialog::ReleaseNoteDialog(QWidget* parent)
    : QDialog(parent), ui(new Ui::ReleaseNoteDialog) {
    ui->setupUi(this);
    setWindowFlags(windowFlags() & ~Qt::WindowContextHelpButtonHint);
    ui->webView->setRenderHint(QPainter::TextAntialiasing, true);

    // Without network the page would stay blank: say so instead.
    connect(ui->webView, &QWebView::loadFinished, this, [this](bool loaded) {
        if (!loaded)
            ui->webView->setHtml(QStringLiteral(
                "<html><body style=\"font-family: sans-serif; color: #5b6470; margin: 24px;\">"
                "<p>The release notes could not be loaded. Please check your internet "
                "connection.</p></body></html>"));
    });
    ui->webView->load(ProductServer::url(QStringLiteral("/changeLogContent.php")));
}

ReleaseNoteDialog::~ReleaseNoteDialog() {
    delete ui;
}

QWebView* ReleaseNoteDialog::webView() const {
    return ui->webView;
}
