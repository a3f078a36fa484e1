#include "app/AboutBox.h"

#include "app/ProductServer.h"
#include "quorvane/Version.h"

#include <QMessageBox>

void AboutBox::show(QWidget* parent) {
    const QString site = ProductServer::webAddress();
    QMessageBox::about(
        parent, QStringLiteral("About Quorvane"),
        QStringLiteral("<h2>Quorvane</h2>"
                       "<p>Equity, board hits and EV of betting lines for two-player "
                       "Texas Hold'em.</p>"
                       "<p><a href=\"%1\">%1</a></p>"
                       "<p>Made by Velmara.</p>"
                       "<p>Version %2</p>")
            .arg(site, QString::fromStdString(Version::aboutText())));
}
