#include "platform/linux/desktop/session_endpoint.h"

#include "platform/linux/activation/bus_names.h"
#include "platform/linux/activation/start_socket.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>

namespace lexiquill {

namespace {

QString bounded(const QString &text) {
    return text.left(ApplicationRequests::longestText);
}

ActivationTokens tokensOf(const QVariantMap &platformData) {
    return {.activationToken = bounded(platformData.value(QStringLiteral("activation-token")).toString()),
            .startupId = bounded(platformData.value(QStringLiteral("desktop-startup-id")).toString())};
}

} // namespace

std::unique_ptr<ApplicationEndpoint> makeApplicationEndpoint() {
    return std::make_unique<SessionEndpoint>();
}

bool SessionEndpoint::claim(ApplicationRequests requests) {
    m_requests = std::move(requests);
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return claimSocket();
    bus.connect({}, QStringLiteral("/org/freedesktop/DBus/Local"),
                QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                SLOT(outliveBus()));
    // Register the object before the name, so that no early call is lost.
    new FreedesktopApplication(this);
    new LookupService(this);
    return bus.registerObject(BusNames::path, this) && bus.registerService(BusNames::service);
}

bool SessionEndpoint::claimSocket() {
    const int listener = StartSocket::listen();
    if (listener < 0)
        return false;
    m_socketNotifier = std::make_unique<QSocketNotifier>(listener, QSocketNotifier::Read);
    QObject::connect(m_socketNotifier.get(), &QSocketNotifier::activated, this,
                     [this, listener] { takeFromSocket(listener); });
    return true;
}

void SessionEndpoint::takeFromSocket(int listener) {
    const QStringList message = StartSocket::receive(listener);
    constexpr qsizetype parts = 3;
    if (message.size() < parts)
        return;
    const ActivationTokens tokens{.activationToken = bounded(message[1]), .startupId = bounded(message[2])};
    if (!message[0].isEmpty())
        m_requests.activateAction(bounded(message[0]), {}, tokens);
    else if (message.size() > parts)
        m_requests.open(ApplicationRequests::acceptable(message.mid(parts)), tokens);
    else
        m_requests.activate(tokens);
}

void SessionEndpoint::refuse(const QString &message) {
    if (calledFromDBus())
        sendErrorReply(QDBusError::InvalidArgs, message);
}

FreedesktopApplication::FreedesktopApplication(SessionEndpoint *endpoint)
    : QDBusAbstractAdaptor(endpoint),
      m_endpoint(*endpoint) {}

void FreedesktopApplication::Activate(const QVariantMap &platformData) {
    m_endpoint.m_requests.activate(tokensOf(platformData));
}

void FreedesktopApplication::Open(const QStringList &uris, const QVariantMap &platformData) {
    m_endpoint.m_requests.open(ApplicationRequests::acceptable(uris), tokensOf(platformData));
}

void FreedesktopApplication::ActivateAction(const QString &name, const QVariantList &parameters,
                                            const QVariantMap &platformData) {
    QVariant parameter = parameters.value(0);
    if (parameter.canConvert<QDBusVariant>())
        parameter = parameter.value<QDBusVariant>().variant();
    // Only a string is a valid parameter.
    const QString text = parameter.typeId() == QMetaType::QString ? parameter.toString() : QString();
    m_endpoint.m_requests.activateAction(bounded(name), bounded(text), tokensOf(platformData));
}

LookupService::LookupService(SessionEndpoint *endpoint)
    : QDBusAbstractAdaptor(endpoint),
      m_endpoint(*endpoint) {}

void LookupService::Lookup(const QString &text) {
    if (const auto error = m_endpoint.m_requests.lookup(text))
        m_endpoint.refuse(*error);
}

} // namespace lexiquill
