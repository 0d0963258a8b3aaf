#pragma once

#include <QObject>
#include <QString>
#include <QTimer>

namespace lexiquill {

class AppDelegate;
struct ActivationTokens;
struct Services;

/// Tells the user, once for each shortcut, that the system-wide hotkey does not work, and how to change that.
class HotKeyNotice : public QObject {
    Q_OBJECT

public:
    /// All arguments must outlive the instance.
    HotKeyNotice(Services &services, AppDelegate &delegate);

    static const QString toldKey; ///< "lexiquill_hotkey_failures_told"

private:
    void check();
    /// Whether the user has not been told of this shortcut; remembers that now he has.
    bool isFirst(const QString &shortcutId);
    QString text() const;
    void openPreferences(const ActivationTokens &tokens);

    Services &m_services;
    AppDelegate &m_delegate;
    QTimer m_timer; ///< some failures pass at once, when the desktop has started its services
};

} // namespace lexiquill
