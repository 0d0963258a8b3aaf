#pragma once

#include "settings/user_defaults.h"

#include <QString>

#include <optional>

namespace lexiquill {

/// Base URLs of the servers that the program talks to, without a slash at the end. Each has a compiled-in
/// value and can be replaced by a setting; an unacceptable setting is ignored.
struct ServerAddresses {
    QString youdao; ///< setting `youdaoKey`
    QString server; ///< the program's own server; setting `serverKey`

    /// The version record of the newest release, and the URL that the endpoints of the account are appended
    /// to.
    QString versionRecord() const { return server + QStringLiteral("/version.json"); }
    QString accountApi() const { return server + QStringLiteral("/api"); }

    /// Whether there is a server of the program. The usual compiled-in address is a reserved name.
    bool hasServer() const;

    bool operator==(const ServerAddresses &) const = default;

    static ServerAddresses from(const UserDefaults &defaults);
    /// The compiled-in addresses.
    static ServerAddresses builtIn();
    /// The base URL for a text that the user typed; no value when it is not acceptable.
    static std::optional<QString> acceptableBase(const QString &text);

    static const QString youdaoKey; ///< "lexiquill_youdao_base"
    static const QString serverKey; ///< "lexiquill_server_base"
};

} // namespace lexiquill
