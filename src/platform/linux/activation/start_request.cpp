#include "platform/application_endpoint.h"
#include "platform/linux/activation/bus_names.h"
#include "platform/linux/activation/start_socket.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>

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
    } else if (!request.url.isEmpty()) {
        message = method(QStringLiteral("Open"));
        message << QStringList{request.url};
    } else {
        message = method(QStringLiteral("Activate"));
    }
    message << platformData(tokens);
    return message;
}

} // namespace

ActivationTokens ActivationTokens::ofThisProcess() {
    return {.activationToken = qEnvironmentVariable("XDG_ACTIVATION_TOKEN"),
            .startupId = qEnvironmentVariable("DESKTOP_STARTUP_ID")};
}

StartRequest StartRequest::fromArguments(const QStringList &arguments) {
    static const QString actionOption = QStringLiteral("--desktop-action=");
    StartRequest request;
    if (arguments.size() < 2)
        return request;
    if (arguments[1].startsWith(QLatin1StringView("lexiquill:"), Qt::CaseInsensitive))
        request.url = arguments[1].left(ApplicationRequests::longestText);
    else if (arguments[1].startsWith(actionOption))
        request.action = arguments[1].mid(actionOption.size());
    return request;
}

bool forwardStart(const StartRequest &request, const ActivationTokens &tokens) {
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return StartSocket::send({request.action, request.url, tokens.activationToken, tokens.startupId});
    if (!bus.interface()->isServiceRegistered(BusNames::service).value())
        return false;
    // When the bus answers this second query, it has delivered the message. Do not wait for the application
    // itself, because it may be busy.
    bus.send(busMessage(request, tokens));
    return bus.interface()->isServiceRegistered(BusNames::service).isValid();
}

} // namespace lexiquill
