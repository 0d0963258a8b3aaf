#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <optional>

namespace lexiquill {

/// The text as it is written in a URL after "name=": everything that may not occur in a query is
/// percent-encoded UTF-8, but "&", "=", "+" and "?" are unchanged. No value for a text that is not valid
/// UTF-16.
std::optional<QByteArray> queryEncoded(const QString &text);

/// Whether the program may send a request to this URL: over HTTPS, or over plain HTTP to this machine. A URL
/// with a user name or password is never acceptable.
bool isAcceptableUrl(const QUrl &url);

/// Whether the host is this machine: "localhost" or a loopback address.
bool isLoopbackHost(const QString &host);

/// Whether both URLs lead to the same server: scheme, host and port are equal.
bool isSameOrigin(const QUrl &a, const QUrl &b);

/// Whether the host is in the top-level domain "invalid", which is reserved for names that do not exist. Such
/// a host need not be looked up.
bool isReservedHost(const QUrl &url);

} // namespace lexiquill
