#include "platform/linux/desktop/portal_hot_key_registrar.h"
#include "support/session_bus.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusVirtualObject>

#include <optional>

using namespace lexiquill;

namespace {

constexpr quint32 keyD = 2;
constexpr quint32 keySpace = 49;
const QString portalName = u"portal"_s;

/// A fake portal. Texts set its answers: a response number, optionally followed by a peculiarity; the name of
/// an error; or no answer ("silent", "mute").
class TestPortal : public QDBusVirtualObject {
public:
    explicit TestPortal(const SessionBus &bus) : m_connection(bus.connect(portalName)) {
        m_connection.registerVirtualObject(Portal::path, this, QDBusConnection::SubPath);
        appear();
    }
    ~TestPortal() override { QDBusConnection::disconnectFromBus(portalName); }

    void appear() { m_connection.registerService(Portal::service); }
    void vanish() { m_connection.unregisterService(Portal::service); }
    /// Answers the last request.
    void respond() { send(m_request, "org.freedesktop.portal.Request", "Response", m_response); }
    void activate(const QString &target, const char *shortcut, qulonglong timestamp) {
        send(Portal::path, "org.freedesktop.portal.GlobalShortcuts", "Activated",
             {QVariant::fromValue(QDBusObjectPath(target)), QString::fromLatin1(shortcut), timestamp,
              QVariantMap{{u"activation_token"_s, u"token"_s}}});
    }
    void closeSession() { send(session, "org.freedesktop.portal.Session", "Closed", {QVariantMap()}); }

    QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &) override;

    QString creation = u"0"_s;
    QString listing = u"0"_s;
    QString binding = u"0"_s;
    QStringList tokens;   ///< of the sessions, in the order of their creation
    QStringList calls;    ///< the called methods, with details
    QStringList sessions; ///< the sessions that have not been closed
    QString session;      ///< the last session

private:
    void send(const QString &path, const char *interface, const char *name, const QVariantList &arguments) {
        QDBusMessage signal =
            QDBusMessage::createSignal(path, QString::fromLatin1(interface), QString::fromLatin1(name));
        signal.setArguments(arguments);
        m_connection.send(signal);
    }

    QDBusConnection m_connection;
    QString m_request;
    QVariantList m_response;
};

bool TestPortal::handleMessage(const QDBusMessage &message, const QDBusConnection &) {
    if (message.member() == "Close"_L1) {
        sessions.removeAll(message.path());
        calls += message.path() == m_request ? u"Close request"_s : u"Close session"_s;
        return true;
    }
    const bool isCreation = message.member() == "CreateSession"_L1;
    const auto options = qdbus_cast<QVariantMap>(message.arguments().last());
    const auto newPath = [&](const char *kind, const char *token) {
        QString sender = message.service().mid(1);
        sender.replace(u'.', u'_');
        return QStringList{Portal::path, QString::fromLatin1(kind), sender,
                           options.value(QString::fromLatin1(token)).toString()}
            .join(u'/');
    };
    const auto firstTrigger = [](const QVariant &shortcuts) {
        QString id;
        QVariantMap properties;
        const auto argument = shortcuts.value<QDBusArgument>();
        argument.beginArray();
        argument.beginStructure();
        argument >> id >> properties;
        return u' ' + id + u' ' + properties.value(u"preferred_trigger"_s).toString();
    };
    QString behaviour = binding;
    QVariantMap results;
    calls += message.member();
    if (isCreation) {
        behaviour = creation;
        calls.last() += firstTrigger(options.value(u"shortcuts"_s));
        tokens += options.value(u"session_handle_token"_s).toString();
        session = newPath("session", "session_handle_token");
        QVariant handle = session;
        if (behaviour.contains("as a path"_L1))
            handle = QVariant::fromValue(QDBusObjectPath(session));
        else if (behaviour.contains("bad path"_L1))
            handle = u"/no//path"_s;
        results.insert(u"session_handle"_s, handle);
    } else if (message.member() == "ListShortcuts"_L1) {
        behaviour = listing;
    } else {
        calls.last() += firstTrigger(message.arguments().at(1));
    }
    for (const QString &id : {u"focus-search"_s, u"another"_s, u"nothing"_s}) {
        if (!behaviour.endsWith(id))
            continue;
        QDBusArgument list;
        list.beginArray(QMetaType::fromName("lexiquill::PortalShortcut"));
        if (id != u"nothing"_s) {
            list.beginStructure();
            list << id << QVariantMap();
            list.endStructure();
        }
        list.endArray();
        results.insert(u"shortcuts"_s, QVariant::fromValue(list));
        break;
    }

    if (behaviour == "mute"_L1)
        return true;
    if (behaviour.contains(u'.')) {
        m_connection.send(message.createErrorReply(behaviour, u"no"_s));
        return true;
    }
    m_request = newPath("request", "handle_token");
    m_connection.send(message.createReply(QVariant::fromValue(QDBusObjectPath(m_request))));
    if (isCreation)
        sessions += session;
    m_response = {behaviour.left(1).toUInt(), results};
    if (behaviour != "silent"_L1)
        respond();
    return true;
}

class PortalHotKeyTest : public QObject {
    Q_OBJECT

    void registerHotKey(quint32 keyCode, quint32 modifiers) {
        m_registrar->registerHotKey(keyCode, modifiers, [this](qint32 status) { m_statuses += status; });
    }

    const QString clientName = u"client"_s;
    std::optional<SessionBus> m_bus;
    std::optional<TestPortal> m_portal;
    std::optional<PortalHotKeyRegistrar> m_registrar;
    QList<HotKeyPress> m_presses;
    QList<qint32> m_statuses;

private Q_SLOTS:
    void init() {
        m_bus.emplace();
        m_portal.emplace(*m_bus);
        const PortalPatience patience{.answer = std::chrono::seconds(2), .user = std::chrono::seconds(2)};
        m_registrar.emplace(m_bus->connect(clientName), patience);
        QCOMPARE(m_registrar->installHandler([this](const HotKeyPress &press) { m_presses += press; }),
                 HotKeyStatus::ok);
        m_presses.clear();
        m_statuses.clear();
    }
    void cleanup() {
        m_registrar.reset();
        QDBusConnection::disconnectFromBus(clientName);
        m_portal.reset();
        m_bus.reset();
    }

    /// The portal's answers to the session, to the list and to the shortcut, and the resulting status.
    void answers_data() {
        addRows(R"(
            0           | 0          | 0          | 0
            0           | 0          | 0 with nothing | 0
            0           | 0          | 0 with focus-search | 0
            0           | 0          | 0 with another | -4
            0 with focus-search |    |            | 0
            0 with another | 0 with focus-search | | 0
            0           | 0 with another | 0      | 0
            0           | 2          | 0          | 0
            0           | mute       | 0          | 0
            0           | org.freedesktop.DBus.Error.UnknownMethod | 0 | 0
            0 as a path | 0          | 0          | 0
            0 bad path  |            |            | -6
            1           |            |            | -4
            silent      |            |            | -5
            0           | 0          | 1          | -4
            0           | 0          | 2          | -6
            0           | 0          | mute       | -5
            org.freedesktop.DBus.Error.UnknownMethod    | |  | -1
            org.freedesktop.DBus.Error.AccessDenied     | |  | -6
            0           | 0          | org.freedesktop.portal.Error.Failed | -6)");
    }

    void answers() {
        QFETCH(const QStringList, cells);
        m_portal->creation = cells[0];
        m_portal->listing = cells[1];
        m_portal->binding = cells[2];
        registerHotKey(keyD, CarbonModifier::command | CarbonModifier::shift);
        QCOMPARE(m_statuses, QList<qint32>()); // never at once
        QTRY_COMPARE(m_statuses, QList<qint32>{cells[3].toInt()});
        QStringList calls{u"CreateSession focus-search LOGO+SHIFT+d"_s};
        if (!cells[1].isEmpty())
            calls += u"ListShortcuts"_s;
        if (!cells[2].isEmpty())
            calls += u"BindShortcuts focus-search LOGO+SHIFT+d"_s;
        m_portal->calls.removeIf([](const QString &call) { return call.startsWith(u"Close"_s); });
        QCOMPARE(m_portal->calls, calls);
        m_registrar->unregisterHotKey();
        QTRY_COMPARE(m_portal->sessions, QStringList());
    }

    /// The user's wish for other keys is passed on, although the portal knows the shortcut; the desktop
    /// recognises the program by its token.
    void otherKeys() {
        m_portal->creation = u"0 with focus-search"_s;
        registerHotKey(keySpace, CarbonModifier::option);
        QTRY_COMPARE(m_statuses.size(), 1);
        registerHotKey(keyD, CarbonModifier::option);
        QTRY_COMPARE(m_statuses.size(), 2);
        QCOMPARE(m_portal->calls.last(), u"BindShortcuts focus-search ALT+d"_s);
        m_portal->calls.clear();
        registerHotKey(keyD, CarbonModifier::option);
        QTRY_COMPARE(m_statuses.size(), 3);
        QVERIFY(!m_portal->calls.join(u' ').contains(u"BindShortcuts"_s));
        QCOMPARE(m_portal->tokens, QStringList(3, m_portal->tokens.first()));
        QVERIFY(!m_portal->tokens.first().isEmpty());
    }

    void presses() {
        registerHotKey(keySpace, CarbonModifier::option);
        QTRY_COMPARE(m_statuses, QList<qint32>{HotKeyStatus::ok});
        QCOMPARE(m_portal->calls.last(), u"BindShortcuts focus-search ALT+space"_s);
        m_portal->activate(u"/of/another"_s, "focus-search", 1);
        m_portal->activate(m_portal->session, "another", 2);
        m_portal->activate(m_portal->session, "focus-search", 3);
        const HotKeyPress third{.timestamp = 3, .activationToken = u"token"_s};
        QTRY_COMPARE(m_presses, QList{third});
        // A change creates a new session, and the previous one is closed.
        registerHotKey(keyD, CarbonModifier::control);
        QTRY_COMPARE(m_statuses.size(), 2);
        QCOMPARE(m_portal->sessions, QStringList{m_portal->session});
        m_portal->activate(m_portal->session, "focus-search", 5);
        QTRY_COMPARE(m_presses.size(), 2);
        QCOMPARE(m_presses.last().timestamp, quint64{5});
    }

    void changeWhileTheUserIsAsked() {
        m_portal->binding = u"silent"_s;
        registerHotKey(keySpace, CarbonModifier::option);
        QTRY_COMPARE(m_portal->calls.size(), 3);
        m_portal->binding = u"0"_s;
        registerHotKey(keyD, CarbonModifier::option);
        QTRY_COMPARE(m_statuses, QList<qint32>{HotKeyStatus::ok});
        QCOMPARE(m_portal->calls.mid(3, 2), (QStringList{u"Close request"_s, u"Close session"_s}));
    }

    void lateAnswer() {
        m_portal->binding = u"silent"_s;
        registerHotKey(keyD, CarbonModifier::option);
        QTRY_COMPARE(m_statuses, QList<qint32>{HotKeyStatus::timedOut});
        m_portal->respond();
        QTRY_COMPARE(m_statuses.size(), 2);
    }

    void portalComesAndGoes() {
        registerHotKey(keyD, CarbonModifier::option);
        QTRY_COMPARE(m_statuses, QList<qint32>{HotKeyStatus::ok});
        m_portal->closeSession();
        QTRY_COMPARE(m_statuses.last(), HotKeyStatus::connectionLost);
        registerHotKey(keyD, CarbonModifier::option);
        QTRY_COMPARE(m_statuses.last(), HotKeyStatus::ok);
        m_portal->vanish();
        QTRY_COMPARE(m_statuses.last(), HotKeyStatus::connectionLost);
        registerHotKey(keyD, CarbonModifier::option);
        QTRY_COMPARE(m_statuses.last(), HotKeyStatus::unavailable);
        m_portal->appear();
        QTRY_COMPARE(m_statuses.last(), HotKeyStatus::ok);
        m_bus->stop();
        QTRY_COMPARE(m_statuses.last(), HotKeyStatus::connectionLost);
        registerHotKey(keyD, CarbonModifier::option);
        QCOMPARE(m_statuses.last(), HotKeyStatus::unavailable);
        QCOMPARE(m_statuses.size(), 8);
    }

    void chosenUnderWayland() {
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus->address().toUtf8());
        qputenv("WAYLAND_DISPLAY", "wayland-0");
        qputenv("DISPLAY", ":0");
        const auto registrar = makeHotKeyRegistrar();
        QCOMPARE(registrar->installHandler([](const HotKeyPress &) {}), HotKeyStatus::ok);
        registrar->registerHotKey(keyD, CarbonModifier::option,
                                  [this](qint32 status) { m_statuses += status; });
        QTRY_COMPARE(m_statuses, QList<qint32>{HotKeyStatus::ok});
    }
};

} // namespace

QTEST_GUILESS_MAIN(PortalHotKeyTest)
#include "portal_hot_key_test.moc"
