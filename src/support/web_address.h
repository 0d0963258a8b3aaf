#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <optional>

namespace lexiquill {

/// The text as it stands in a URL behind "name=": everything that may not occur in a query is percent-encoded
/// UTF-8, but "&", "=", "+" and "?" stay as they are. Nothing for a text that is no valid UTF-16.
std::optional<QByteArray> queryEncoded(const QString &text);

/// Whether the program may send a request there: over HTTPS, or over plain HTTP to this machine. A URL with a
/// user name or password is never acceptable.
bool isAcceptableUrl(const QUrl &url);

/// Whether the host is this machine: "localhost" or a loopback address.
bool isLoopbackHost(const QString &host);

/// Whether the host lies under the top-level domain that is reserved for names that do not exist. Nobody need
/// be asked for it.
bool isReservedHost(const QUrl &url);

} // namespace lexiquill
