#include "app/ProductServer.h"

#include <QString>
#include <QUrl>
#include <QtGlobal>

namespace ProductServer {
namespace {
const char* const builtInBaseUrl = "https://www.quorvane.com";
} // namespace

QString baseUrl() {
    QString base = qEnvironmentVariable("QUORVANE_SERVER");
    if (base.isEmpty())
        base = QString::fromLatin1(builtInBaseUrl);
    while (base.endsWith(QLatin1Char('/')))
        base.chop(1);
    return base;
}

QUrl url(const QString& path) {
    return QUrl(baseUrl() + path);
}

QString webAddress() {
    return QString::fromLatin1(builtInBaseUrl);
}

QString downloadAddress() {
    return webAddress() + QStringLiteral("/download");
}

} // namespace ProductServer
