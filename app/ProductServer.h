#pragma once

// The product's web server: version check, release notes, crash reports, help pages.

class QString;
class QUrl;

namespace ProductServer {

// Base address of the server, without a trailing slash. The environment variable
// QUORVANE_SERVER replaces the built-in address when set and not empty (tests point it at
// a local server, e.g. "http://127.0.0.1:40123").
QString baseUrl();

// `path` (starting with '/') on the server, e.g. url("/Downloadables/version.php").
QUrl url(const QString& path);

// The address shown to users in messages ("... download it at <address>").
QString webAddress();

// The page where the newest version can be downloaded, on the public address: what the
// program names where it has no updater to start.
QString downloadAddress();

} // namespace ProductServer
