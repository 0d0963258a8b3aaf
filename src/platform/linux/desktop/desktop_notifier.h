#pragma once

#include "platform/notifier.h"

#include <QDBusConnection>
#include <QHash>
#include <QObject>

namespace lexiquill {

/// Shows notifications by the service org.freedesktop.Notifications of the session bus.
class DesktopNotifier final : public QObject, public Notifier {
    Q_OBJECT

public:
    explicit DesktopNotifier(const QDBusConnection &connection) : m_connection(connection) {}

    void show(const DesktopNotification &notification, const ActionHandler &chosen) override;
    void withdrawAll() override;

private:
    struct Shown {
        uint number = 0;   ///< the service's; 0 before it has answered
        quint64 round = 0; ///< differs for each call of `show`
        QString action;    ///< of a click on the notification itself
        ActionHandler chosen;
        QString token = {};
    };

    Q_SLOT void takeAction(uint number, const QString &action);
    Q_SLOT void takeClosing(uint number, uint reason);
    Q_SLOT void takeToken(uint number, const QString &token);
    void listen();
    QHash<QString, Shown>::iterator find(uint number);

    QDBusConnection m_connection;
    bool m_isListening = false;
    quint64 m_round = 0;
    QHash<QString, Shown> m_shown; ///< by the notification's id
};

} // namespace lexiquill
