#pragma once

#include <QDBusConnection>
#include <QDBusError>
#include <QObject>
#include <QString>
#include <QTimer>
#include <QVariantMap>

#include <chrono>

namespace lexiquill {

/// Where the desktop portal is.
namespace Portal {
inline const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
inline const QString path = QStringLiteral("/org/freedesktop/portal/desktop");

/// A name for a new object of the portal that nobody else can guess.
QString makeToken();
/// The path of the object of a kind ("request", "session") that the portal makes for a token of this program.
QString objectPath(const QDBusConnection &connection, QStringView kind, const QString &token);
} // namespace Portal

/// One request to the desktop portal: the call, and the answer that comes as a signal of a request object.
/// One that is destroyed before its answer is taken back.
class PortalRequest : public QObject {
    Q_OBJECT

public:
    explicit PortalRequest(const QDBusConnection &connection, QObject *parent = nullptr);
    ~PortalRequest() override;

    /// Calls a method of the portal's interface; `options` goes behind `arguments`, with this request's
    /// token. To be called once.
    void send(const QString &interface, const QString &method, const QVariantList &arguments,
              QVariantMap options, std::chrono::milliseconds patience);

Q_SIGNALS:
    /// A status of `HotKeyStatus`; after one that says yes, with the results. The only one that another may
    /// follow is that there has been no answer for as long as `patience`.
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
