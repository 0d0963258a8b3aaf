#include "platform/linux/desktop/portal_hot_key_registrar.h"

namespace lexiquill {

PortalHotKeyRegistrar::PortalHotKeyRegistrar(const QDBusConnection &connection, PortalPatience patience)
    : m_connection(connection),
      m_patience(patience),
      m_watcher(Portal::service, connection) {
    connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &oldOwner, const QString &newOwner) {
                takeOwnerChange(oldOwner, newOwner);
            });
    m_connection.connect({}, QStringLiteral("/org/freedesktop/DBus/Local"),
                         QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                         SLOT(loseConnection()));
}

qint32 PortalHotKeyRegistrar::installHandler(PressHandler handler) {
    if (!m_connection.isConnected())
        return HotKeyStatus::unavailable;
    m_handler = std::move(handler);
    return HotKeyStatus::ok;
}

void PortalHotKeyRegistrar::registerHotKey(quint32 keyCode, quint32 carbonModifiers, StatusHandler report) {
    const QString trigger = portalTrigger(keyCode, carbonModifiers);
    // At the start the portal may know the keys; another combination later is a wish of the user.
    if (!m_lastTrigger.isEmpty() && trigger != m_lastTrigger)
        m_known = PortalHotKey::Known::Change;
    m_lastTrigger = trigger;
    m_combination = Combination{trigger, std::move(report)};
    start();
}

void PortalHotKeyRegistrar::unregisterHotKey() {
    m_combination.reset();
    m_hotKey.reset();
}

void PortalHotKeyRegistrar::start() {
    m_hotKey.reset();
    m_status.reset();
    if (!m_handler || !m_connection.isConnected())
        return report(HotKeyStatus::unavailable);
    if (m_combination->trigger.isEmpty())
        return report(HotKeyStatus::keyMissing);
    m_hotKey = std::make_unique<PortalHotKey>(m_connection, m_combination->trigger, m_known, m_patience);
    connect(m_hotKey.get(), &PortalHotKey::statusReported, this, &PortalHotKeyRegistrar::report);
    connect(m_hotKey.get(), &PortalHotKey::pressed, this, m_handler);
}

void PortalHotKeyRegistrar::report(qint32 status) {
    m_status = status;
    if (status == HotKeyStatus::ok)
        m_known = PortalHotKey::Known::Keep;
    const StatusHandler handler = m_combination->report;
    handler(status);
}

void PortalHotKeyRegistrar::loseConnection() {
    if (!m_combination)
        return;
    m_hotKey.reset();
    report(HotKeyStatus::connectionLost);
}

void PortalHotKeyRegistrar::takeOwnerChange(const QString &oldOwner, const QString &newOwner) {
    if (!m_combination)
        return;
    if (newOwner.isEmpty())
        return loseConnection();
    // If the first call has just started the portal, the answer is still to come. Do not start again.
    const bool hasFailed = m_status == HotKeyStatus::unavailable || m_status == HotKeyStatus::connectionLost;
    if (!oldOwner.isEmpty() || hasFailed)
        start();
}

} // namespace lexiquill
