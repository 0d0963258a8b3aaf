#pragma once

#include "session_bus.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusVirtualObject>

namespace lexiquill {

/// A desktop's notifications, which the test sees and answers.
class NotificationService : public QDBusVirtualObject {
public:
    struct Notification {
        uint number = 0;
        QString title;
        QString text;
        QStringList actions; ///< keys and labels in turn
    };

    explicit NotificationService(const SessionBus &bus) : m_connection(bus.connect(connectionName)) {
        m_connection.registerVirtualObject(path, this);
        m_connection.registerService(service);
    }
    ~NotificationService() override { QDBusConnection::disconnectFromBus(connectionName); }
    Q_DISABLE_COPY_MOVE(NotificationService)

    /// The user chooses an action.
    void choose(uint number, const QString &action) {
        send("ActivationToken", {number, u"token"_s});
        send("ActionInvoked", {number, action});
        close(number);
    }
    void close(uint number) { send("NotificationClosed", {number, 2U}); }

    QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override {
        const QVariantList arguments = message.arguments();
        if (message.member() == u"CloseNotification"_s) {
            withdrawn += arguments.value(0).toUInt();
            return connection.send(message.createReply());
        }
        if (message.member() != u"Notify"_s || message.signature() != u"susssasa{sv}i"_s)
            return false;
        const uint replaced = arguments[1].toUInt();
        const uint number = replaced != 0 ? replaced : ++m_last;
        shown += {.number = number,
                  .title = arguments[3].toString(),
                  .text = arguments[4].toString(),
                  .actions = arguments[5].toStringList()};
        return connection.send(message.createReply(number));
    }

    QList<Notification> shown;
    QList<uint> withdrawn;

private:
    void send(const char *name, const QVariantList &arguments) {
        QDBusMessage signal = QDBusMessage::createSignal(path, service, QString::fromLatin1(name));
        signal.setArguments(arguments);
        m_connection.send(signal);
    }

    inline static const QString connectionName = u"notifications"_s;
    inline static const QString service = u"org.freedesktop.Notifications"_s;
    inline static const QString path = u"/org/freedesktop/Notifications"_s;
    QDBusConnection m_connection;
    uint m_last = 0;
};

} // namespace lexiquill
