#include "support/server_addresses.h"

#include <QRegularExpression>

#include <optional>

namespace lexiquill {

namespace {

std::optional<QString> acceptableBase(const QString &text) {
    QString base = text.trimmed();
    while (base.endsWith(u'/'))
        base.chop(1);
    const QUrl url(base, QUrl::StrictMode);
    if (!isAcceptableUrl(url) || url.hasQuery() || url.hasFragment())
        return std::nullopt;
    return url.toString(QUrl::FullyEncoded);
}

QString base(const UserDefaults &defaults, const QString &key, const char *compiledIn) {
    if (const auto replacement = acceptableBase(defaults.string(key)))
        return *replacement;
    return acceptableBase(QString::fromUtf8(compiledIn)).value_or(QString());
}

} // namespace

ServerAddresses ServerAddresses::from(const UserDefaults &defaults) {
    return {.youdao = base(defaults, QStringLiteral("lexiquill_youdao_base"), LEXIQUILL_YOUDAO_BASE),
            .server = base(defaults, QStringLiteral("lexiquill_server_base"), LEXIQUILL_SERVER_BASE)};
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
