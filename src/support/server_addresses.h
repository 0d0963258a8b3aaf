#pragma once

#include "support/user_defaults.h"

#include <QString>
#include <QUrl>

namespace lexiquill {

/// Base URLs of the servers that the program talks to, without a slash at the end. Each is compiled in and
/// can be replaced by a setting; a setting that is no acceptable base is ignored.
struct ServerAddresses {
    QString youdao; ///< setting "lexiquill_youdao_base"
    QString server; ///< the program's own server; setting "lexiquill_server_base"

    static ServerAddresses from(const UserDefaults &defaults);
};

/// Whether the program may send a request there: over HTTPS, or over plain HTTP to this machine. A URL with a
/// user name or password is never acceptable.
bool isAcceptableUrl(const QUrl &url);

/// Whether the host is this machine: "localhost" or a loopback address.
bool isLoopbackHost(const QString &host);

/// Whether the host lies under the top-level domain that is reserved for names that do not exist. Nobody need
/// be asked for it.
bool isReservedHost(const QUrl &url);

} // namespace lexiquill
