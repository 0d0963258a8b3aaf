#include "app/notices/hot_key_notice.h"

#include "app/shell/app_delegate.h"
#include "app/shell/services.h"
#include "hotkey/hot_key_manager.h"
#include "platform/notifier.h"
#include "settings/user_defaults.h"

#include <QQuickWindow>

#include <algorithm>
#include <chrono>

namespace lexiquill {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds delay = 1s;
/// Of the told shortcuts, so many are remembered.
constexpr qsizetype mostTold = 50;

const QString preferencesAction = QStringLiteral("preferences");
const QString offerAction = QStringLiteral("use-offer");

} // namespace

const QString HotKeyNotice::toldKey = QStringLiteral("lexiquill_hotkey_failures_told");

HotKeyNotice::HotKeyNotice(Services &services, AppDelegate &delegate)
    : m_services(services),
      m_delegate(delegate) {
    m_timer.setSingleShot(true);
    m_timer.setInterval(delay);
    connect(&m_timer, &QTimer::timeout, this, &HotKeyNotice::check);
    connect(&services.hotKeys, &HotKeyManager::registerStatusDescriptionChanged, &m_timer,
            qOverload<>(&QTimer::start));
    // Another combination may fail in the same way.
    connect(&services.hotKeys, &HotKeyManager::currentShortcutChanged, &m_timer, qOverload<>(&QTimer::start));
}

void HotKeyNotice::check() {
    const HotKeyManager &hotKeys = m_services.hotKeys;
    const QString problem = text();
    if (problem.isEmpty() || !isFirst(hotKeys.currentShortcut().id))
        return;
    // The user reads it there.
    const QQuickWindow *const window = m_delegate.mainWindow();
    if (hotKeys.showSettingsSheet() && window != nullptr && window->isActive())
        return;
    const HotKeyShortcut offer = hotKeys.offeredShortcut();
    DesktopNotification notification{.id = QStringLiteral("hotkey"),
                                     .title = QStringLiteral("全局快捷键未生效"),
                                     .text = problem,
                                     .action = preferencesAction};
    if (!offer.id.isEmpty())
        notification.buttons += {offerAction, QStringLiteral("改用 ") + offer.symbolString};
    notification.buttons += {preferencesAction, QStringLiteral("打开偏好设置")};
    m_services.notifier.show(notification,
                             [this, offer](const QString &action, const ActivationTokens &tokens) {
                                 if (action == preferencesAction)
                                     openPreferences(tokens);
                                 else if (action == offerAction && !offer.id.isEmpty())
                                     m_services.hotKeys.updateShortcut(offer);
                             });
}

QString HotKeyNotice::text() const {
    const HotKeyManager &hotKeys = m_services.hotKeys;
    const QString &symbols = hotKeys.currentShortcut().symbolString;
    switch (hotKeys.registerStatus()) {
    case HotKeyStatus::ok:
    case HotKeyStatus::connectionLost:
    case HotKeyStatus::refused:
    case HotKeyStatus::timedOut:
        return {};
    case HotKeyStatus::unavailable:
        return QStringLiteral("这个桌面不支持程序自己设置全局快捷键，可以在桌面的键盘设置中添加。");
    case HotKeyStatus::keyMissing:
        return QStringLiteral("键盘上没有快捷键 %1 的按键，请换一个。").arg(symbols);
    case HotKeyStatus::serviceError:
        return QStringLiteral("桌面没有接受快捷键 %1。").arg(symbols);
    default:
        return QStringLiteral("快捷键 %1 被其他程序占用，按下它不会打开查词窗口。").arg(symbols);
    }
}

bool HotKeyNotice::isFirst(const QString &shortcutId) {
    UserDefaults &defaults = m_services.defaults;
    QStringList told = defaults.stringList(toldKey);
    if (told.contains(shortcutId))
        return false;
    told += shortcutId;
    defaults.set(toldKey, told.mid(std::max<qsizetype>(0, told.size() - mostTold)));
    return true;
}

void HotKeyNotice::openPreferences(const ActivationTokens &tokens) {
    m_delegate.applicationShouldHandleReopen(tokens);
    m_services.hotKeys.setShowSettingsSheet(true);
}

} // namespace lexiquill
