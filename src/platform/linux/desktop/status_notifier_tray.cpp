#include "platform/linux/desktop/status_notifier_tray.h"

#include "platform/linux/desktop/status_notifier_item.h"
#include "platform/linux/desktop/tray_menu_service.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <utility>

namespace lexiquill {

namespace {

const QString watcherService = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");
const QString itemPath = QStringLiteral("/StatusNotifierItem");
const QString menuPath = QStringLiteral("/MenuBar");
const QString connectionName = QStringLiteral("lexiquill_tray");

} // namespace

/// The icon's objects on a connection of its own: when that ends, every tray removes the icon.
struct StatusNotifierTray::Icon {
    Icon(const QString &address, const std::function<void(qsizetype)> &chosen,
         std::function<void(const QString &)> tokenGiven)
        : connection(address.isEmpty()
                         ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName)
                         : QDBusConnection::connectToBus(address, connectionName)),
          menu(chosen),
          item(new StatusNotifierItem(
              &object, QDBusObjectPath(menuPath), [chosen] { chosen(0); }, std::move(tokenGiven))) {
        new TrayMenuAdaptor(&menu);
        connection.registerObject(itemPath, &object);
        connection.registerObject(menuPath, &menu);
    }
    ~Icon() { QDBusConnection::disconnectFromBus(connectionName); }
    Q_DISABLE_COPY_MOVE(Icon)

    QDBusConnection connection;
    QObject object;
    TrayMenuService menu;
    StatusNotifierItem *item; ///< belongs to `object`
};

std::unique_ptr<Tray> makeTray() {
    return std::make_unique<StatusNotifierTray>(QDBusConnection::sessionBus());
}

StatusNotifierTray::StatusNotifierTray(const QDBusConnection &connection, QString address)
    : m_connection(connection),
      m_address(std::move(address)) {}

StatusNotifierTray::~StatusNotifierTray() = default;

void StatusNotifierTray::watch(const std::function<void()> &changed, const CommandHandler &chosen) {
    m_changed = changed;
    m_chosen = chosen;
    if (!m_connection.isConnected())
        return;
    m_watcher = std::make_unique<QDBusServiceWatcher>(watcherService, m_connection);
    connect(m_watcher.get(), &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &, const QString &newOwner) {
                setIsThere(false);
                if (!newOwner.isEmpty())
                    askForHost();
            });
    for (const char *signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"})
        m_connection.connect(watcherService, watcherPath, watcherService, QString::fromLatin1(signal), this,
                             SLOT(askForHost()));
    askForHost();
}

void StatusNotifierTray::askForHost() {
    QDBusMessage call = QDBusMessage::createMethodCall(watcherService, watcherPath,
                                                       QStringLiteral("org.freedesktop.DBus.Properties"),
                                                       QStringLiteral("Get"));
    call << watcherService << QStringLiteral("IsStatusNotifierHostRegistered");
    call.setAutoStartService(false);
    auto *const watcher = new QDBusPendingCallWatcher(m_connection.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        setIsThere(reply.isValid() && reply.value().variant().toBool());
    });
}

void StatusNotifierTray::setIsThere(bool isThere) {
    if (isThere == m_isThere)
        return;
    m_isThere = isThere;
    // A service that has started again does not know the icon.
    m_icon.reset();
    publish();
    m_changed();
}

void StatusNotifierTray::show(const TrayContent &content) {
    if (m_content == content)
        return;
    m_content = content;
    publish();
}

void StatusNotifierTray::hide() {
    m_content.reset();
    m_icon.reset();
}

void StatusNotifierTray::publish() {
    if (!m_isThere || !m_content)
        return;
    const bool isNew = m_icon == nullptr;
    if (isNew)
        m_icon = std::make_unique<Icon>(
            m_address, [this](qsizetype command) { choose(command); },
            [this](const QString &token) { m_token = token; });
    m_icon->item->setContent(*m_content);
    m_icon->menu.setCommands(m_content->commands);
    if (isNew)
        announce();
}

void StatusNotifierTray::announce() {
    QDBusMessage call = QDBusMessage::createMethodCall(watcherService, watcherPath, watcherService,
                                                       QStringLiteral("RegisterStatusNotifierItem"));
    call << m_icon->connection.baseService();
    call.setAutoStartService(false);
    m_icon->connection.send(call);
}

void StatusNotifierTray::choose(qsizetype command) {
    m_chosen(command, {.activationToken = std::exchange(m_token, {}), .startupId = {}});
}

} // namespace lexiquill
