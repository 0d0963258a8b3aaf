#include "platform/linux/desktop/portal_hot_key.h"

#include "platform/virtual_key.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QStringList>

#include <xkbcommon/xkbcommon.h>

#include <algorithm>

namespace lexiquill {

/// A shortcut in the portal's D-Bus format.
struct PortalShortcut {
    QString id;
    QVariantMap properties;
};

QDBusArgument &operator<<(QDBusArgument &argument, const PortalShortcut &shortcut) {
    argument.beginStructure();
    argument << shortcut.id << shortcut.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, PortalShortcut &shortcut) {
    argument.beginStructure();
    argument >> shortcut.id >> shortcut.properties;
    argument.endStructure();
    return argument;
}

namespace {

const QString shortcutsInterface = QStringLiteral("org.freedesktop.portal.GlobalShortcuts");
const QString sessionInterface = QStringLiteral("org.freedesktop.portal.Session");
const QString shortcutId = QStringLiteral("focus-search");
const QString shortcutsKey = QStringLiteral("shortcuts");
/// Always the same, because some desktops keep the shortcuts of a program by this name.
const QString sessionToken = QStringLiteral("lexiquill_hotkey");

/// The shortcuts in an answer; none if there are none or they have another form.
QList<PortalShortcut> shortcutsOf(const QVariantMap &results) {
    const QVariant shortcuts = results.value(shortcutsKey);
    if (!shortcuts.canConvert<QDBusArgument>())
        return {};
    const auto argument = shortcuts.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1StringView("a(sa{sv})"))
        return {};
    return qdbus_cast<QList<PortalShortcut>>(argument);
}

bool hasShortcut(const QList<PortalShortcut> &shortcuts) {
    return std::ranges::find(shortcuts, shortcutId, &PortalShortcut::id) != shortcuts.cend();
}

QVariant wantedShortcuts(const QString &trigger) {
    const PortalShortcut shortcut{shortcutId,
                                  {{QStringLiteral("description"), QStringLiteral("显示词典窗口并输入单词")},
                                   {QStringLiteral("preferred_trigger"), trigger}}};
    return QVariant::fromValue(QList{shortcut});
}

} // namespace

QString portalTrigger(quint32 keyCode, quint32 carbonModifiers) {
    const VirtualKey *const key = findVirtualKey(keyCode);
    char symbol[64];
    if (!key || xkb_keysym_get_name(key->keysym, symbol, sizeof symbol) <= 0)
        return {};
    QStringList parts;
    const auto add = [&](quint32 modifier, const char *name) {
        if ((carbonModifiers & modifier) != 0)
            parts += QString::fromLatin1(name);
    };
    add(CarbonModifier::command, "LOGO");
    add(CarbonModifier::control, "CTRL");
    add(CarbonModifier::option, "ALT");
    add(CarbonModifier::shift, "SHIFT");
    parts += QString::fromLatin1(symbol);
    return parts.join(u'+');
}

PortalHotKey::PortalHotKey(const QDBusConnection &connection, QString trigger, Known known,
                           PortalPatience patience)
    : m_connection(connection),
      m_trigger(std::move(trigger)),
      m_known(known),
      m_patience(patience) {
    qDBusRegisterMetaType<PortalShortcut>();
    qDBusRegisterMetaType<QList<PortalShortcut>>();

    m_session = Portal::objectPath(m_connection, u"session", sessionToken);
    PortalRequest &request = newRequest();
    connect(&request, &PortalRequest::finished, this, [this](qint32 status, const QVariantMap &results) {
        if (status == HotKeyStatus::ok)
            takeSession(results);
        else
            Q_EMIT statusReported(status);
    });
    // Some portals take the shortcuts here.
    request.send(
        shortcutsInterface, QStringLiteral("CreateSession"), {},
        {{QStringLiteral("session_handle_token"), sessionToken}, {shortcutsKey, wantedShortcuts(m_trigger)}},
        m_patience.answer);
}

PortalHotKey::~PortalHotKey() {
    m_request.reset();
    closeSession();
}

PortalRequest &PortalHotKey::newRequest() {
    // The signal of the previous request may have called this function.
    if (m_request) {
        m_request->disconnect(this);
        m_request.release()->deleteLater();
    }
    m_request = std::make_unique<PortalRequest>(m_connection);
    return *m_request;
}

void PortalHotKey::takeSession(const QVariantMap &results) {
    // For historical reasons this is a string, although it is a path.
    const QVariant handle = results.value(QStringLiteral("session_handle"));
    const QDBusObjectPath session(
        handle.canConvert<QDBusObjectPath>() ? handle.value<QDBusObjectPath>().path() : handle.toString());
    if (session.path().isEmpty())
        return Q_EMIT statusReported(HotKeyStatus::serviceError);
    m_session = session.path();
    m_connection.connect(Portal::service, m_session, sessionInterface, QStringLiteral("Closed"), this,
                         SLOT(takeClosing()));
    m_connection.connect(Portal::service, Portal::path, shortcutsInterface, QStringLiteral("Activated"), this,
                         SLOT(takeActivation(QDBusObjectPath, QString, qulonglong, QVariantMap)));
    if (m_known == Known::Change)
        bind();
    else if (hasShortcut(shortcutsOf(results)))
        finish(true);
    else
        list();
}

void PortalHotKey::list() {
    PortalRequest &request = newRequest();
    connect(&request, &PortalRequest::finished, this, [this](qint32, const QVariantMap &results) {
        if (hasShortcut(shortcutsOf(results)))
            finish(true);
        else
            bind();
    });
    request.send(shortcutsInterface, QStringLiteral("ListShortcuts"),
                 {QVariant::fromValue(QDBusObjectPath(m_session))}, {}, m_patience.answer);
}

void PortalHotKey::bind() {
    PortalRequest &request = newRequest();
    connect(&request, &PortalRequest::finished, this, [this](qint32 status, const QVariantMap &results) {
        if (status == HotKeyStatus::ok)
            takeBinding(results);
        else
            Q_EMIT statusReported(status);
    });
    const QString noWindow;
    request.send(shortcutsInterface, QStringLiteral("BindShortcuts"),
                 {QVariant::fromValue(QDBusObjectPath(m_session)), wantedShortcuts(m_trigger), noWindow}, {},
                 m_patience.user);
}

void PortalHotKey::takeBinding(const QVariantMap &results) {
    // Some portals name no shortcuts when they agree; others let the user remove one of them.
    const QList<PortalShortcut> shortcuts = shortcutsOf(results);
    finish(shortcuts.isEmpty() || hasShortcut(shortcuts));
}

void PortalHotKey::finish(bool isBound) {
    m_isBound = isBound;
    Q_EMIT statusReported(m_isBound ? HotKeyStatus::ok : HotKeyStatus::refused);
}

void PortalHotKey::takeActivation(const QDBusObjectPath &session, const QString &shortcut,
                                  qulonglong timestamp, const QVariantMap &options) {
    if (m_isBound && session.path() == m_session && shortcut == shortcutId)
        Q_EMIT pressed({.timestamp = timestamp,
                        .activationToken = options.value(QStringLiteral("activation_token")).toString()});
}

void PortalHotKey::takeClosing() {
    m_isBound = false;
    m_session.clear();
    newRequest();
    Q_EMIT statusReported(HotKeyStatus::connectionLost);
}

void PortalHotKey::closeSession() {
    if (!m_session.isEmpty())
        m_connection.send(QDBusMessage::createMethodCall(Portal::service, m_session, sessionInterface,
                                                         QStringLiteral("Close")));
}

} // namespace lexiquill
