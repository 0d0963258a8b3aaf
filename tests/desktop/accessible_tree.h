#pragma once

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QStringList>
#include <QTest>

namespace lexiquill {

/// Something that a program tells assistive tools of, at the moment it was asked.
struct AccessibleObject {
    QString service;
    QString path;
    QString role = {}; ///< such as "push button"
    QString name = {};
    bool isFocused = false;
    QString text = {}; ///< in a field to type into
};

/// What the programs of a session show, as a screen reader is told.
class AccessibleTree {
public:
    /// Starts the session's accessibility bus.
    explicit AccessibleTree(const QString &sessionBus)
        : m_bus(QDBusConnection::connectToBus(
              addressOfBus(QDBusConnection::connectToBus(sessionBus, QStringLiteral("session"))),
              QStringLiteral("accessibility"))) {}
    ~AccessibleTree() {
        for (const char *name : {"session", "accessibility"})
            QDBusConnection::disconnectFromBus(QString::fromLatin1(name));
    }
    AccessibleTree(const AccessibleTree &) = delete;
    AccessibleTree &operator=(const AccessibleTree &) = delete;

    /// Everything that can be seen, parents first.
    QList<AccessibleObject> objects() const {
        QList<AccessibleObject> found;
        QList<AccessibleObject> pending =
            children({.service = QStringLiteral("org.a11y.atspi.Registry"), .path = root});
        while (!pending.isEmpty()) {
            AccessibleObject object = pending.takeLast();
            const quint32 states = statesOf(object);
            constexpr quint32 focused = 1U << 12U;
            constexpr quint32 showing = 1U << 25U;
            if (object.path != root && (states & showing) == 0)
                continue;
            object.isFocused = (states & focused) != 0;
            object.role = ask(object, "Accessible", QStringLiteral("GetRoleName")).toString();
            object.name = property(object, QStringLiteral("Name"));
            if (object.role == QStringLiteral("text") || object.role == QStringLiteral("password text"))
                object.text = ask(object, "Text", QStringLiteral("GetText"), {0, -1}).toString();
            pending += children(object);
            found += object;
        }
        return found;
    }
    /// The first such object; with an empty path if there is none.
    AccessibleObject find(const QString &role, const QString &name) const {
        for (const AccessibleObject &object : objects()) {
            if (object.role == role && object.name == name)
                return object;
        }
        return {};
    }
    bool shows(const QString &role, const QString &name) const { return !find(role, name).path.isEmpty(); }
    /// Waits for the object and does what a click on it does; false if it does not come.
    bool press(const QString &role, const QString &name) const {
        AccessibleObject object;
        const auto isThere = [&] {
            object = find(role, name);
            return !object.path.isEmpty();
        };
        return QTest::qWaitFor(isThere, 30'000) &&
               ask(object, "Action", QStringLiteral("DoAction"), {0}).toBool();
    }
    /// The name of what has the keyboard; what it stands in has the keyboard, too.
    QString focusedName() const {
        QString name;
        for (const AccessibleObject &object : objects()) {
            if (object.isFocused)
                name = object.name;
        }
        return name;
    }

private:
    static QString addressOfBus(const QDBusConnection &session) {
        const QDBusMessage call =
            QDBusMessage::createMethodCall(QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
                                           QStringLiteral("org.a11y.Bus"), QStringLiteral("GetAddress"));
        return session.call(call).arguments().value(0).toString();
    }
    QVariant ask(const AccessibleObject &object, const char *interface, const QString &method,
                 const QVariantList &arguments = {}) const {
        QDBusMessage call = QDBusMessage::createMethodCall(
            object.service, object.path, QStringLiteral("org.a11y.atspi.") + QLatin1StringView(interface),
            method);
        call.setArguments(arguments);
        return m_bus.call(call).arguments().value(0);
    }
    QString property(const AccessibleObject &object, const QString &name) const {
        QDBusMessage call = QDBusMessage::createMethodCall(object.service, object.path,
                                                           QStringLiteral("org.freedesktop.DBus.Properties"),
                                                           QStringLiteral("Get"));
        call.setArguments({QStringLiteral("org.a11y.atspi.Accessible"), name});
        return m_bus.call(call).arguments().value(0).value<QDBusVariant>().variant().toString();
    }
    quint32 statesOf(const AccessibleObject &object) const {
        const QVariant answer = ask(object, "Accessible", QStringLiteral("GetState"));
        return qdbus_cast<QList<uint>>(answer).value(0);
    }
    /// The last one first.
    QList<AccessibleObject> children(const AccessibleObject &parent) const {
        QList<AccessibleObject> children;
        const QVariant answer = ask(parent, "Accessible", QStringLiteral("GetChildren"));
        if (!answer.canConvert<QDBusArgument>())
            return children;
        const auto list = answer.value<QDBusArgument>();
        list.beginArray();
        while (!list.atEnd()) {
            QString service;
            QDBusObjectPath path;
            list.beginStructure();
            list >> service >> path;
            list.endStructure();
            children.prepend({.service = service, .path = path.path()});
        }
        list.endArray();
        return children;
    }

    inline static const QString root = QStringLiteral("/org/a11y/atspi/accessible/root");
    QDBusConnection m_bus;
};

} // namespace lexiquill
