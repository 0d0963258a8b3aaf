#include "settings/server_addresses.h"

#include "support/web_address.h"

#include <QUrl>

namespace lexiquill {

const QString ServerAddresses::youdaoKey = QStringLiteral("lexiquill_youdao_base");
const QString ServerAddresses::serverKey = QStringLiteral("lexiquill_server_base");

namespace {

QString compiledIn(const char *base) {
    return ServerAddresses::acceptableBase(QString::fromUtf8(base)).value_or(QString());
}

} // namespace

ServerAddresses ServerAddresses::from(const UserDefaults &defaults) {
    const ServerAddresses usual = builtIn();
    return {.youdao = acceptableBase(defaults.string(youdaoKey)).value_or(usual.youdao),
            .server = acceptableBase(defaults.string(serverKey)).value_or(usual.server)};
}

ServerAddresses ServerAddresses::builtIn() {
    return {.youdao = compiledIn(LEXIQUILL_YOUDAO_BASE), .server = compiledIn(LEXIQUILL_SERVER_BASE)};
}

bool ServerAddresses::hasServer() const {
    return !server.isEmpty() && !isReservedHost(QUrl(server));
}

std::optional<QString> ServerAddresses::acceptableBase(const QString &text) {
    QString base = text.trimmed();
    while (base.endsWith(u'/'))
        base.chop(1);
    const QUrl url(base, QUrl::StrictMode);
    if (!isAcceptableUrl(url) || url.hasQuery() || url.hasFragment())
        return std::nullopt;
    return url.toString(QUrl::FullyEncoded);
}

} // namespace lexiquill
