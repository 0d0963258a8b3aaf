#pragma once

#include "platform/tray.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>

#include <memory>
#include <optional>

namespace lexiquill {

/// Shows an icon by the StatusNotifier service of the session bus.
class StatusNotifierTray final : public QObject, public Tray {
    Q_OBJECT

public:
    /// `connection`: for the questions to the service; the icon gets a connection of its own to the bus at
    /// `address`, or to the user's session bus if it is empty.
    explicit StatusNotifierTray(const QDBusConnection &connection, QString address = {});
    ~StatusNotifierTray() override;

    void watch(const std::function<void()> &changed, const CommandHandler &chosen) override;
    bool isThere() const override { return m_isThere; }
    void show(const TrayContent &content) override;
    void hide() override;

private:
    struct Icon;

    Q_SLOT void askForHost();
    void setIsThere(bool isThere);
    void publish();
    void announce();
    void choose(qsizetype command);

    QDBusConnection m_connection;
    QString m_address;
    std::unique_ptr<QDBusServiceWatcher> m_watcher;
    std::function<void()> m_changed;
    CommandHandler m_chosen;
    bool m_isThere = false;
    std::optional<TrayContent> m_content; ///< what is to be shown
    std::unique_ptr<Icon> m_icon;
    QString m_token; ///< for the next activation
};

} // namespace lexiquill
