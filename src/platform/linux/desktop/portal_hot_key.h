#pragma once

#include "platform/hot_key_registrar.h"
#include "platform/linux/desktop/portal_request.h"

#include <QDBusObjectPath>

#include <memory>

namespace lexiquill {

/// How long the desktop portal may take before a timeout is reported.
struct PortalPatience {
    std::chrono::milliseconds answer = std::chrono::seconds(10);
    std::chrono::milliseconds user = std::chrono::minutes(2); ///< while the user is asked to agree
};

/// A shortcut in the portal's notation, such as "LOGO+SHIFT+d"; empty for an unknown key.
QString portalTrigger(quint32 keyCode, quint32 carbonModifiers);

/// The registration of one combination with the desktop portal. It has its own portal session, which ends
/// with this object. The portal remembers a shortcut between sessions; the user is asked only about one that
/// it does not know.
class PortalHotKey : public QObject {
    Q_OBJECT

public:
    /// What to do if the portal knows the shortcut already, perhaps with other keys: use it as it is, or ask
    /// for the new keys.
    enum class Known { Keep, Change };

    /// Starts the registration of `trigger`.
    PortalHotKey(const QDBusConnection &connection, QString trigger, Known known, PortalPatience patience);
    ~PortalHotKey() override;

Q_SIGNALS:
    void statusReported(qint32 status);
    void pressed(const lexiquill::HotKeyPress &press);

private:
    Q_SLOT void takeActivation(const QDBusObjectPath &session, const QString &shortcut, qulonglong timestamp,
                               const QVariantMap &options);
    Q_SLOT void takeClosing();
    void takeSession(const QVariantMap &results);
    void list();
    void bind();
    void takeBinding(const QVariantMap &results);
    void finish(bool isBound);
    /// A request that replaces the one before, which is not waited for any more.
    PortalRequest &newRequest();
    void closeSession();

    QDBusConnection m_connection;
    QString m_trigger;
    Known m_known;
    PortalPatience m_patience;
    QString m_session; ///< path of the session; empty when it has ended
    bool m_isBound = false;
    std::unique_ptr<PortalRequest> m_request;
};

} // namespace lexiquill
