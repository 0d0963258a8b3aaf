#include "platform/linux/desktop/portal_request.h"

#include "platform/hot_key_registrar.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QUuid>

namespace lexiquill {

namespace {

const QString requestInterface = QStringLiteral("org.freedesktop.portal.Request");

/// The status for a response code of the portal.
qint32 statusOf(uint response) {
    constexpr uint granted = 0;
    constexpr uint cancelledByUser = 1;
    if (response == granted)
        return HotKeyStatus::ok;
    return response == cancelledByUser ? HotKeyStatus::refused : HotKeyStatus::serviceError;
}

bool saysThatNobodyIsThere(const QDBusError &error) {
    switch (error.type()) {
    case QDBusError::ServiceUnknown:
    case QDBusError::UnknownObject:
    case QDBusError::UnknownInterface:
    case QDBusError::UnknownMethod:
        return true;
    default:
        return error.name().startsWith(QLatin1StringView("org.freedesktop.DBus.Error.Spawn."));
    }
}

} // namespace

QString Portal::makeToken() {
    return QStringLiteral("lexiquill_") + QUuid::createUuid().toString(QUuid::Id128);
}

QString Portal::objectPath(const QDBusConnection &connection, QStringView kind, const QString &token) {
    QString sender = connection.baseService().mid(1);
    sender.replace(u'.', u'_');
    return QStringList{path, kind.toString(), sender, token}.join(u'/');
}

PortalRequest::PortalRequest(const QDBusConnection &connection, QObject *parent)
    : QObject(parent),
      m_connection(connection),
      m_token(Portal::makeToken()),
      m_path(Portal::objectPath(connection, u"request", m_token)) {
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, [this] { Q_EMIT finished(HotKeyStatus::timedOut, {}); });
}

PortalRequest::~PortalRequest() {
    if (!m_isPending)
        return;
    m_connection.send(
        QDBusMessage::createMethodCall(Portal::service, m_path, requestInterface, QStringLiteral("Close")));
}

void PortalRequest::send(const QString &interface, const QString &method, const QVariantList &arguments,
                         QVariantMap options, std::chrono::milliseconds patience) {
    m_isPending = true;
    // Connect before the call, because the answer may arrive before the reply of the call.
    m_connection.connect(Portal::service, m_path, requestInterface, QStringLiteral("Response"), this,
                         SLOT(takeResponse(uint, QVariantMap)));
    m_timer.start(patience);

    options.insert(QStringLiteral("handle_token"), m_token);
    QDBusMessage call = QDBusMessage::createMethodCall(Portal::service, Portal::path, interface, method);
    call.setArguments(arguments + QVariantList{options});
    auto *const watcher = new QDBusPendingCallWatcher(m_connection.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        if (m_isPending && watcher->isError())
            takeError(watcher->error());
    });
}

void PortalRequest::takeError(const QDBusError &error) {
    // The timer handles a portal that does not answer, and the registrar one that has gone.
    if (error.type() != QDBusError::NoReply && error.type() != QDBusError::Timeout)
        finish(saysThatNobodyIsThere(error) ? HotKeyStatus::unavailable : HotKeyStatus::serviceError);
}

void PortalRequest::takeResponse(uint response, const QVariantMap &results) {
    if (m_isPending)
        finish(statusOf(response), results);
}

void PortalRequest::finish(qint32 status, const QVariantMap &results) {
    m_isPending = false;
    m_timer.stop();
    Q_EMIT finished(status, results);
}

} // namespace lexiquill
