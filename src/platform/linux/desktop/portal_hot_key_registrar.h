#pragma once

#include "platform/linux/desktop/portal_hot_key.h"

#include <QDBusServiceWatcher>

#include <memory>
#include <optional>

namespace lexiquill {

/// A hotkey that uses the global shortcuts of the desktop portal, as needed under Wayland. The user may be
/// asked to agree, and may choose other keys than those proposed.
class PortalHotKeyRegistrar final : public QObject, public HotKeyRegistrar {
    Q_OBJECT

public:
    /// `connection`: the user's session bus; if it is not connected, every registration fails.
    explicit PortalHotKeyRegistrar(const QDBusConnection &connection, PortalPatience patience = {});

    qint32 installHandler(PressHandler handler) override;
    void registerHotKey(quint32 keyCode, quint32 carbonModifiers, StatusHandler report) override;
    void unregisterHotKey() override;

private:
    struct Combination {
        QString trigger;
        StatusHandler report;
    };

    Q_SLOT void loseConnection();
    void start();
    void report(qint32 status);
    void takeOwnerChange(const QString &oldOwner, const QString &newOwner);

    QDBusConnection m_connection;
    PortalPatience m_patience;
    QDBusServiceWatcher m_watcher;
    PressHandler m_handler;
    std::optional<Combination> m_combination;
    QString m_lastTrigger;
    PortalHotKey::Known m_known = PortalHotKey::Known::Keep;
    std::optional<qint32> m_status; ///< the last reported status; no value before the portal has answered
    std::unique_ptr<PortalHotKey> m_hotKey;
};

} // namespace lexiquill
