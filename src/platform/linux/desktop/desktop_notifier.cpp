#include "platform/linux/desktop/desktop_notifier.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <utility>

namespace lexiquill {

namespace {

const QString service = QStringLiteral("org.freedesktop.Notifications");
const QString path = QStringLiteral("/org/freedesktop/Notifications");
const QString programId = QStringLiteral("com.lexiquill.Lexiquill");
/// What the service calls a click on the notification itself.
const QString clickKey = QStringLiteral("default");

QDBusMessage method(const char *name) {
    return QDBusMessage::createMethodCall(service, path, service, QString::fromLatin1(name));
}

} // namespace

std::unique_ptr<Notifier> makeNotifier() {
    return std::make_unique<DesktopNotifier>(QDBusConnection::sessionBus());
}

void DesktopNotifier::listen() {
    if (std::exchange(m_isListening, true))
        return;
    const auto connectSignal = [this](const char *name, const char *slot) {
        m_connection.connect(service, path, service, QString::fromLatin1(name), this, slot);
    };
    connectSignal("ActionInvoked", SLOT(takeAction(uint, QString)));
    connectSignal("NotificationClosed", SLOT(takeClosing(uint, uint)));
    connectSignal("ActivationToken", SLOT(takeToken(uint, QString)));
}

void DesktopNotifier::show(const DesktopNotification &notification, const ActionHandler &chosen) {
    if (!m_connection.isConnected())
        return;
    listen();
    const QString id = notification.id;
    const quint64 round = ++m_round;
    const uint replaced = m_shown.value(id).number;
    m_shown.insert(id, {.number = replaced, .round = round, .action = notification.action, .chosen = chosen});

    QStringList actions{clickKey, notification.title};
    for (const auto &button : notification.buttons)
        actions += {button.action, button.label};
    const QVariantMap hints{{QStringLiteral("desktop-entry"), programId}};
    constexpr int untilTheServiceDecides = -1;
    QDBusMessage call = method("Notify");
    call << QStringLiteral("Lexiquill") << replaced << programId << notification.title
         << notification.text.toHtmlEscaped() << actions << hints << untilTheServiceDecides;
    auto *const watcher = new QDBusPendingCallWatcher(m_connection.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, id, round] {
        watcher->deleteLater();
        const QDBusPendingReply<uint> reply = *watcher;
        const auto found = m_shown.find(id);
        if (found == m_shown.end() || found->round != round)
            return;
        if (reply.isValid())
            found->number = reply.value();
        else
            m_shown.erase(found);
    });
}

void DesktopNotifier::withdrawAll() {
    for (const Shown &shown : std::as_const(m_shown)) {
        QDBusMessage call = method("CloseNotification");
        call << shown.number;
        if (shown.number != 0)
            m_connection.send(call);
    }
    m_shown.clear();
}

QHash<QString, DesktopNotifier::Shown>::iterator DesktopNotifier::find(uint number) {
    auto found = m_shown.begin();
    while (found != m_shown.end() && (number == 0 || found->number != number))
        ++found;
    return found;
}

void DesktopNotifier::takeAction(uint number, const QString &action) {
    const auto found = find(number);
    if (found == m_shown.end())
        return;
    const Shown shown = *found;
    m_shown.erase(found);
    shown.chosen(action == clickKey ? shown.action : action.left(ApplicationRequests::longestText),
                 {.activationToken = shown.token, .startupId = {}});
}

void DesktopNotifier::takeClosing(uint number, uint) {
    if (const auto found = find(number); found != m_shown.end())
        m_shown.erase(found);
}

void DesktopNotifier::takeToken(uint number, const QString &token) {
    if (const auto found = find(number); found != m_shown.end())
        found->token = token.left(ApplicationRequests::longestText);
}

} // namespace lexiquill
