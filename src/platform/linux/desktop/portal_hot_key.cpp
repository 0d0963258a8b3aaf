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

PortalHotKey::PortalHotKey(const QDBusConnection &connection, QString trigger, PortalPatience patience)
    : m_connection(connection),
      m_trigger(std::move(trigger)),
      m_patience(patience),
      m_creation(std::make_unique<PortalRequest>(connection)) {
    qDBusRegisterMetaType<PortalShortcut>();
    qDBusRegisterMetaType<QList<PortalShortcut>>();

    const QString token = Portal::makeToken();
    m_session = Portal::objectPath(m_connection, u"session", token);
    connect(m_creation.get(), &PortalRequest::finished, this,
            [this](qint32 status, const QVariantMap &results) {
                if (status == HotKeyStatus::ok)
                    bind(results);
                else
                    Q_EMIT statusReported(status);
            });
    m_creation->send(shortcutsInterface, QStringLiteral("CreateSession"), {},
                     {{QStringLiteral("session_handle_token"), token}}, m_patience.answer);
}

PortalHotKey::~PortalHotKey() {
    m_creation.reset();
    m_binding.reset();
    closeSession();
}

void PortalHotKey::bind(const QVariantMap &results) {
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

    const PortalShortcut shortcut{shortcutId,
                                  {{QStringLiteral("description"), QStringLiteral("显示词典窗口并输入单词")},
                                   {QStringLiteral("preferred_trigger"), m_trigger}}};
    m_binding = std::make_unique<PortalRequest>(m_connection);
    connect(m_binding.get(), &PortalRequest::finished, this,
            [this](qint32 status, const QVariantMap &binding) {
                if (status == HotKeyStatus::ok)
                    takeBinding(binding);
                else
                    Q_EMIT statusReported(status);
            });
    const QString noWindow;
    m_binding->send(shortcutsInterface, QStringLiteral("BindShortcuts"),
                    {QVariant::fromValue(session), QVariant::fromValue(QList{shortcut}), noWindow}, {},
                    m_patience.user);
}

void PortalHotKey::takeBinding(const QVariantMap &results) {
    // Some portals let the user remove the shortcut and still agree.
    m_isBound = true;
    const QVariant shortcuts = results.value(QStringLiteral("shortcuts"));
    if (shortcuts.canConvert<QDBusArgument>()) {
        const auto argument = shortcuts.value<QDBusArgument>();
        if (argument.currentSignature() == QLatin1StringView("a(sa{sv})")) {
            const auto bound = qdbus_cast<QList<PortalShortcut>>(argument);
            m_isBound = std::ranges::find(bound, shortcutId, &PortalShortcut::id) != bound.cend();
        }
    }
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
    m_binding.reset();
    Q_EMIT statusReported(HotKeyStatus::connectionLost);
}

void PortalHotKey::closeSession() {
    if (!m_session.isEmpty())
        m_connection.send(QDBusMessage::createMethodCall(Portal::service, m_session, sessionInterface,
                                                         QStringLiteral("Close")));
}

} // namespace lexiquill
