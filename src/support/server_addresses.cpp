#include "support/server_addresses.h"

#include <QRegularExpression>

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

std::optional<QString> ServerAddresses::acceptableBase(const QString &text) {
    QString base = text.trimmed();
    while (base.endsWith(u'/'))
        base.chop(1);
    const QUrl url(base, QUrl::StrictMode);
    if (!isAcceptableUrl(url) || url.hasQuery() || url.hasFragment())
        return std::nullopt;
    return url.toString(QUrl::FullyEncoded);
}

bool isLoopbackHost(const QString &host) {
    // QUrl has brought every way of writing an address into this form; a number too large makes a name of it,
    // which could lead anywhere.
    static const QRegularExpression address(
        QStringLiteral("\\A127(?:\\.(?:25[0-5]|2[0-4][0-9]|1?[0-9]{1,2})){3}\\z"));
    return host == QLatin1StringView("localhost") || host == QLatin1StringView("::1") ||
           address.match(host).hasMatch();
}

bool isAcceptableUrl(const QUrl &url) {
    if (!url.isValid() || url.host().isEmpty() || !url.userInfo().isEmpty() || url.port() == 0)
        return false;
    return url.scheme() == QLatin1StringView("https") ||
           (url.scheme() == QLatin1StringView("http") && isLoopbackHost(url.host()));
}

bool isReservedHost(const QUrl &url) {
    QString host = url.host();
    if (host.endsWith(u'.'))
        host.chop(1);
    return host == QLatin1StringView("invalid") || host.endsWith(QLatin1StringView(".invalid"));
}

} // namespace lexiquill
