#pragma once

#include "settings/user_defaults.h"

#include <QString>

#include <optional>

namespace lexiquill {

/// Base URLs of the servers that the program talks to, without a slash at the end. Each is compiled in and
/// can be replaced by a setting; a setting that is no acceptable base is ignored.
struct ServerAddresses {
    QString youdao; ///< setting `youdaoKey`
    QString server; ///< the program's own server; setting `serverKey`

    static ServerAddresses from(const UserDefaults &defaults);
    /// Those that are compiled in.
    static ServerAddresses builtIn();
    /// The base URL that a text typed by the user means; nothing when it is no acceptable one.
    static std::optional<QString> acceptableBase(const QString &text);

    static const QString youdaoKey; ///< "lexiquill_youdao_base"
    static const QString serverKey; ///< "lexiquill_server_base"
};

} // namespace lexiquill
