#pragma once

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QStringList>
#include <QTest>

using namespace Qt::StringLiterals;

namespace lexiquill {

/// An object that a program shows to assistive tools, at the time of the query.
struct AccessibleObject {
    QString service;
    QString path;
    QString role = {}; ///< such as "push button"
    QString name = {};
    bool isFocused = false;
    bool isSelected = false;
    bool isChecked = false;
    QString text = {}; ///< the content of a text field
};

/// The objects of all programs of a session, as a screen reader sees them.
class AccessibleTree {
public:
    /// Starts the session's accessibility bus.
    explicit AccessibleTree(const QString &sessionBus)
        : m_bus(QDBusConnection::connectToBus(
              addressOfBus(QDBusConnection::connectToBus(sessionBus, u"session"_s)), u"accessibility"_s)) {}
    ~AccessibleTree() {
        for (const char *name : {"session", "accessibility"})
            QDBusConnection::disconnectFromBus(QString::fromLatin1(name));
    }
    AccessibleTree(const AccessibleTree &) = delete;
    AccessibleTree &operator=(const AccessibleTree &) = delete;

    /// All visible objects, parents first.
    QList<AccessibleObject> objects() const {
        QList<AccessibleObject> found;
        QList<AccessibleObject> pending = children({.service = u"org.a11y.atspi.Registry"_s, .path = root});
        while (!pending.isEmpty()) {
            AccessibleObject object = pending.takeLast();
            const quint32 states = statesOf(object);
            constexpr quint32 checked = 1U << 4U;
            constexpr quint32 focused = 1U << 12U;
            constexpr quint32 selected = 1U << 23U;
            constexpr quint32 showing = 1U << 25U;
            if (object.path != root && (states & showing) == 0)
                continue;
            object.isFocused = (states & focused) != 0;
            object.isSelected = (states & selected) != 0;
            object.isChecked = (states & checked) != 0;
            object.role = ask(object, accessible, u"GetRoleName"_s).toString();
            object.name = nameOf(object);
            if (object.role == u"text"_s || object.role == u"password text"_s)
                object.text = ask(object, u"org.a11y.atspi.Text"_s, u"GetText"_s, {0, -1}).toString();
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
    /// Waits for the object and clicks it; false if it does not appear. An object that is found may be gone
    /// before the click, as long as the window is still being built; it is then looked for again.
    bool press(const QString &role, const QString &name) const {
        const auto click = [&] {
            const AccessibleObject object = find(role, name);
            return !object.path.isEmpty() &&
                   ask(object, action, u"DoAction"_s, {indexOfPress(object)}).toBool();
        };
        return QTest::qWaitFor(click, 30'000);
    }
    /// Passes the signals of objects that appear to a slot with the argument QDBusMessage.
    bool listenForAppearance(QObject *receiver, const char *slot) {
        QDBusMessage call =
            QDBusMessage::createMethodCall(u"org.a11y.atspi.Registry"_s, u"/org/a11y/atspi/registry"_s,
                                           u"org.a11y.atspi.Registry"_s, u"RegisterEvent"_s);
        call.setArguments({u"object:state-changed:showing"_s});
        return m_bus.call(call).type() == QDBusMessage::ReplyMessage &&
               m_bus.connect({}, {}, u"org.a11y.atspi.Event.Object"_s, u"StateChanged"_s, receiver, slot);
    }
    /// "ROLE NAME" of the object that sent a signal.
    QString sender(const QDBusMessage &signal) const {
        const AccessibleObject object{.service = signal.service(), .path = signal.path()};
        return ask(object, accessible, u"GetRoleName"_s).toString() + u' ' + nameOf(object);
    }
    /// The name of the innermost object with keyboard focus. The objects around it have the focus state, too.
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
        const QDBusMessage call = QDBusMessage::createMethodCall(u"org.a11y.Bus"_s, u"/org/a11y/bus"_s,
                                                                 u"org.a11y.Bus"_s, u"GetAddress"_s);
        return session.call(call).arguments().value(0).toString();
    }
    QVariant ask(const AccessibleObject &object, const QString &interface, const QString &method,
                 const QVariantList &arguments = {}) const {
        QDBusMessage call = QDBusMessage::createMethodCall(object.service, object.path, interface, method);
        call.setArguments(arguments);
        return m_bus.call(call).arguments().value(0);
    }
    QString nameOf(const AccessibleObject &object) const {
        const QVariant name =
            ask(object, u"org.freedesktop.DBus.Properties"_s, u"Get"_s, {accessible, u"Name"_s});
        return name.value<QDBusVariant>().variant().toString();
    }
    quint32 statesOf(const AccessibleObject &object) const {
        const QVariant answer = ask(object, accessible, u"GetState"_s);
        return qdbus_cast<QList<uint>>(answer).value(0);
    }
    /// The children, the last one first.
    QList<AccessibleObject> children(const AccessibleObject &parent) const {
        QList<AccessibleObject> children;
        const QVariant answer = ask(parent, accessible, u"GetChildren"_s);
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

    /// For some roles, the first action moves the focus. Text fields have no other.
    int indexOfPress(const AccessibleObject &object) const {
        return ask(object, action, u"GetName"_s, {1}) == u"Press"_s ? 1 : 0;
    }

    inline static const QString action = u"org.a11y.atspi.Action"_s;
    inline static const QString accessible = u"org.a11y.atspi.Accessible"_s;
    inline static const QString root = u"/org/a11y/atspi/accessible/root"_s;
    QDBusConnection m_bus;
};

} // namespace lexiquill
