#pragma once

#include "session_bus.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QDBusVirtualObject>

namespace lexiquill {

/// A desktop's tray: the service that programs ask, and the host that shows their icons.
class DesktopTray : public QDBusVirtualObject {
public:
    inline static const QString menu = u"com.canonical.dbusmenu"_s;
    inline static const QString item = u"org.kde.StatusNotifierItem"_s;

    explicit DesktopTray(const SessionBus &bus) : connection(bus.connect(u"tray"_s)) {
        connection.registerVirtualObject(u"/StatusNotifierWatcher"_s, this);
    }
    ~DesktopTray() override { QDBusConnection::disconnectFromBus(u"tray"_s); }
    Q_DISABLE_COPY_MOVE(DesktopTray)

    void appear() { connection.registerService(watcherName); }
    void vanish() { connection.unregisterService(watcherName); }
    void setHasHost(bool isThere) {
        hasHost = isThere;
        connection.send(QDBusMessage::createSignal(u"/StatusNotifierWatcher"_s, watcherName,
                                                   isThere ? u"StatusNotifierHostRegistered"_s
                                                           : u"StatusNotifierHostUnregistered"_s));
    }
    /// The answer of an icon to a call.
    QDBusMessage call(const QString &interface, const QString &method, const QVariantList &arguments = {}) {
        const QString path = interface == menu ? u"/MenuBar"_s : u"/StatusNotifierItem"_s;
        QDBusMessage message =
            QDBusMessage::createMethodCall(icons.value(icons.size() - 1), path, interface, method);
        message.setArguments(arguments);
        return ask(message);
    }
    QVariant property(const QString &name) {
        QDBusMessage message =
            QDBusMessage::createMethodCall(icons.value(icons.size() - 1), u"/StatusNotifierItem"_s,
                                           u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
        message.setArguments({item, name});
        return ask(message).arguments().value(0).value<QDBusVariant>().variant();
    }
    bool isOnBus(const QString &name) {
        QDBusMessage message = QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/"_s,
                                                              u"org.freedesktop.DBus"_s, u"NameHasOwner"_s);
        message.setArguments({name});
        return ask(message).arguments().value(0).toBool();
    }

    QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &bus) override {
        if (message.member() == u"RegisterStatusNotifierItem"_s) {
            icons += message.arguments().value(0).toString();
            return bus.send(message.createReply());
        }
        return message.member() == u"Get"_s &&
               bus.send(message.createReply(QVariant::fromValue(QDBusVariant(hasHost))));
    }

    /// The icon lives in this process, so this must not block.
    QDBusMessage ask(const QDBusMessage &message) {
        const QDBusPendingCall pending = connection.asyncCall(message);
        const bool isDone = QTest::qWaitFor([&] { return pending.isFinished(); }, 30'000);
        return isDone ? pending.reply() : QDBusMessage();
    }

    QDBusConnection connection;
    bool hasHost = true;
    QStringList icons; ///< the bus names of the icons, in the order of their appearance

private:
    inline static const QString watcherName = u"org.kde.StatusNotifierWatcher"_s;
};

} // namespace lexiquill
