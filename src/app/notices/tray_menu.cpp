#include "app/notices/tray_menu.h"

#include "app/preferences/window_preferences.h"
#include "app/shell/app_context.h"
#include "app/shell/app_delegate.h"
#include "app/shell/content_view.h"
#include "app/shell/lent.h"
#include "app/shell/services.h"
#include "app/shell/window_icon.h"
#include "platform/tray.h"

#include <QIcon>

namespace lexiquill {

namespace {

/// The commands of the menu, in their order.
enum Command { LookUp, Review, Quit };

} // namespace

TrayMenu::TrayMenu(Services &services, WindowPreferences &preferences, ContentView &content,
                   AppDelegate &delegate)
    : m_services(services),
      m_preferences(preferences),
      m_content(content),
      m_delegate(delegate) {
    connect(&delegate, &AppDelegate::launched, this, &TrayMenu::start);
    connect(&preferences, &WindowPreferences::showsTrayIconChanged, this, &TrayMenu::update);
    connect(&content, &ContentView::dueCountChanged, this, &TrayMenu::update);
}

TrayMenu *TrayMenu::create(QQmlEngine *, QJSEngine *) {
    return lent(AppContext::current().tray());
}

bool TrayMenu::isAvailable() const {
    return m_services.tray.isThere();
}

bool TrayMenu::isShown() const {
    return isAvailable() && m_preferences.showsTrayIcon();
}

void TrayMenu::start() {
    const auto change = [this] {
        update();
        Q_EMIT isAvailableChanged();
    };
    const auto chosen = [this](qsizetype command, const ActivationTokens &tokens) {
        choose(command, tokens);
    };
    m_services.tray.watch(change, chosen);
    update();
}

void TrayMenu::update() {
    if (!isShown())
        return m_services.tray.hide();
    if (m_images.isEmpty())
        m_images = windowIcon();
    const QString themeIcon = QStringLiteral("com.lexiquill.Lexiquill");
    m_services.tray.show(
        {.title = QStringLiteral("Lexiquill"),
         .iconName = QIcon::hasThemeIcon(themeIcon) ? themeIcon : QString(),
         .images = m_images,
         .commands = {QStringLiteral("查词"), QStringLiteral("今日待复习 %1 词").arg(m_content.dueCount()),
                      QStringLiteral("退出")}});
}

void TrayMenu::choose(qsizetype command, const ActivationTokens &tokens) {
    if (command == Quit)
        return m_delegate.terminate();
    m_delegate.applicationShouldHandleReopen(tokens);
    if (command == Review)
        m_content.showReview();
    else
        m_content.postFocusSearchInput();
}

} // namespace lexiquill
