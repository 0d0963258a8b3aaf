#include "app/notices/background_notice.h"

#include "app/notices/tray_menu.h"
#include "app/shell/app_delegate.h"
#include "app/shell/services.h"
#include "hotkey/hot_key_manager.h"
#include "platform/notifier.h"
#include "settings/user_defaults.h"

namespace lexiquill {

namespace {

const QString reopenAction = QStringLiteral("reopen");
const QString quitAction = QStringLiteral("quit");

} // namespace

const QString BackgroundNotice::toldKey = QStringLiteral("lexiquill_background_told");

BackgroundNotice::BackgroundNotice(Services &services, const TrayMenu &tray, AppDelegate &delegate)
    : m_services(services),
      m_tray(tray),
      m_delegate(delegate) {
    connect(&delegate, &AppDelegate::mainWindowClosed, this, &BackgroundNotice::tell);
}

void BackgroundNotice::tell() {
    UserDefaults &defaults = m_services.defaults;
    if (!defaults.string(toldKey).isEmpty())
        return;
    defaults.set(toldKey, QStringLiteral("true"));
    const DesktopNotification notification{.id = QStringLiteral("background"),
                                           .title = QStringLiteral("Lexiquill 仍在后台运行"),
                                           .text = waysBack(),
                                           .action = reopenAction,
                                           .buttons = {{quitAction, QStringLiteral("退出")}}};
    m_services.notifier.show(notification, [this](const QString &action, const ActivationTokens &tokens) {
        if (action == quitAction)
            m_delegate.terminate();
        else if (action == reopenAction)
            m_delegate.applicationShouldHandleReopen(tokens);
    });
}

QString BackgroundNotice::waysBack() const {
    const HotKeyManager &hotKeys = m_services.hotKeys;
    QString text = QStringLiteral("要再次打开窗口，请");
    if (!hotKeys.hasFailed())
        text += QStringLiteral("按 %1，或").arg(hotKeys.currentShortcut().symbolString);
    text += m_tray.isShown() ? QStringLiteral("点击托盘中的图标。") : QStringLiteral("再次点击程序的图标。");
    return text;
}

} // namespace lexiquill
