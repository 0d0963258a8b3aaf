#pragma once

#include <QDBusConnection>
#include <QDBusError>
#include <QObject>
#include <QString>
#include <QTimer>
#include <QVariantMap>

#include <chrono>

namespace lexiquill {

/// The D-Bus address of the desktop portal.
namespace Portal {
inline const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
inline const QString path = QStringLiteral("/org/freedesktop/portal/desktop");

/// A name for a new object of the portal. Other programs cannot guess it.
QString makeToken();
/// The path of the object that the portal creates for a token of this program. `kind`: "request" or
/// "session".
QString objectPath(const QDBusConnection &connection, QStringView kind, const QString &token);
} // namespace Portal

/// One request to the desktop portal: a call, and its answer, which arrives as a signal of a request object.
/// Destroying this object before the answer cancels the request.
class PortalRequest : public QObject {
    Q_OBJECT

public:
    explicit PortalRequest(const QDBusConnection &connection, QObject *parent = nullptr);
    ~PortalRequest() override;

    /// Calls a method of the portal's interface. `options` is passed after `arguments`, with this request's
    /// token. To be called once.
    void send(const QString &interface, const QString &method, const QVariantList &arguments,
              QVariantMap options, std::chrono::milliseconds patience);

Q_SIGNALS:
    /// `status` is one of `HotKeyStatus`; `results` is set if it is `ok`. Emitted once, except that another
    /// status may follow `timedOut`, which means that there was no answer within `patience`.
    void finished(qint32 status, const QVariantMap &results);

private:
    Q_SLOT void takeResponse(uint response, const QVariantMap &results);
    void takeError(const QDBusError &error);
    void finish(qint32 status, const QVariantMap &results = {});

    QDBusConnection m_connection;
    QString m_token;
    QString m_path; ///< of the request object
    QTimer m_timer;
    bool m_isPending = false;
};

} // namespace lexiquill
