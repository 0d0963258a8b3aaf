#include "support/web_address.h"

#include <QRegularExpression>

namespace lexiquill {

std::optional<QByteArray> queryEncoded(const QString &text) {
    if (!text.isValidUtf16())
        return std::nullopt;
    return text.toUtf8().toPercentEncoding("!$&'()*+,/:;=?@");
}

bool isLoopbackHost(const QString &host) {
    // QUrl converts every notation of an address into this form. With a number that is too large the text is
    // a host name, which could belong to any machine.
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

bool isSameOrigin(const QUrl &a, const QUrl &b) {
    const auto port = [](const QUrl &url) {
        return url.port(url.scheme() == QLatin1StringView("https") ? 443 : 80);
    };
    return a.scheme() == b.scheme() && a.host() == b.host() && port(a) == port(b);
}

bool isReservedHost(const QUrl &url) {
    QString host = url.host();
    if (host.endsWith(u'.'))
        host.chop(1);
    return host == QLatin1StringView("invalid") || host.endsWith(QLatin1StringView(".invalid"));
}

} // namespace lexiquill
