#include "platform/application_endpoint.h"
#include "platform/linux/activation/bus_names.h"
#include "platform/linux/activation/start_socket.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDir>
#include <QUrl>

namespace lexiquill {

namespace {

QVariantMap platformData(const ActivationTokens &tokens) {
    QVariantMap data;
    if (!tokens.activationToken.isEmpty())
        data.insert(QStringLiteral("activation-token"), tokens.activationToken);
    if (!tokens.startupId.isEmpty())
        data.insert(QStringLiteral("desktop-startup-id"), tokens.startupId);
    return data;
}

QDBusMessage busMessage(const StartRequest &request, const ActivationTokens &tokens) {
    const auto method = [](const QString &name) {
        QDBusMessage message = QDBusMessage::createMethodCall(BusNames::service, BusNames::path,
                                                              BusNames::applicationInterface, name);
        message.setAutoStartService(false);
        return message;
    };
    QDBusMessage message;
    if (!request.action.isEmpty()) {
        message = method(QStringLiteral("ActivateAction"));
        message << request.action << QVariant(QVariantList());
    } else if (!request.urls.isEmpty()) {
        message = method(QStringLiteral("Open"));
        message << request.urls;
    } else {
        message = method(QStringLiteral("Activate"));
    }
    message << platformData(tokens);
    return message;
}

bool isOwnUrl(const QString &text) {
    return text.startsWith(QLatin1StringView("lexiquill:"), Qt::CaseInsensitive);
}

/// A path as an address, so that its meaning does not depend on this process; addresses are unchanged.
QString urlOf(const QString &argument) {
    if (isOwnUrl(argument) || argument.startsWith(QLatin1StringView("file:"), Qt::CaseInsensitive))
        return argument;
    const QString path = QDir::current().absoluteFilePath(argument);
    return QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded());
}

} // namespace

QStringList ApplicationRequests::acceptable(const QStringList &urls) {
    QStringList accepted;
    for (const QString &url : urls.mid(0, mostUrls)) {
        // Part of a word is still a word, but part of a path is another path.
        if (isOwnUrl(url))
            accepted += url.left(longestText);
        else if (url.size() <= longestUrl)
            accepted += url;
    }
    return accepted;
}

ActivationTokens ActivationTokens::ofThisProcess() {
    return {.activationToken = qEnvironmentVariable("XDG_ACTIVATION_TOKEN"),
            .startupId = qEnvironmentVariable("DESKTOP_STARTUP_ID")};
}

StartRequest StartRequest::fromArguments(const QStringList &arguments) {
    static const QString actionOption = QStringLiteral("--desktop-action=");
    StartRequest request;
    if (arguments.size() < 2)
        return request;
    QStringList urls;
    if (isOwnUrl(arguments[1]))
        urls += arguments[1];
    else if (arguments[1].startsWith(actionOption))
        request.action = arguments[1].mid(actionOption.size());
    if (request.action == QLatin1StringView("open")) {
        request.action.clear();
        for (const QString &argument : arguments.mid(2, ApplicationRequests::mostUrls))
            urls += urlOf(argument);
    }
    request.urls = ApplicationRequests::acceptable(urls);
    return request;
}

bool forwardStart(const StartRequest &request, const ActivationTokens &tokens) {
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return StartSocket::send(QStringList{request.action, tokens.activationToken, tokens.startupId} +
                                 request.urls);
    if (!bus.interface()->isServiceRegistered(BusNames::service).value())
        return false;
    // When the bus answers this second query, it has delivered the message. Do not wait for the application
    // itself, because it may be busy.
    bus.send(busMessage(request, tokens));
    return bus.interface()->isServiceRegistered(BusNames::service).isValid();
}

} // namespace lexiquill
