#include "app/notices/daily_reminder.h"

#include "app/preferences/window_preferences.h"
#include "app/shell/app_delegate.h"
#include "app/shell/content_view.h"
#include "app/shell/services.h"
#include "platform/notifier.h"
#include "settings/user_defaults.h"
#include "storage/storage_manager.h"

#include <QQuickWindow>

namespace lexiquill {

namespace {

const QString reviewAction = QStringLiteral("review");

} // namespace

const QString DailyReminder::dayKey = QStringLiteral("lexiquill_last_reminder");

DailyReminder::DailyReminder(Services &services, WindowPreferences &preferences, ContentView &content,
                             AppDelegate &delegate)
    : m_services(services),
      m_preferences(preferences),
      m_content(content),
      m_delegate(delegate) {
    connect(&delegate, &AppDelegate::launched, this, [this] {
        m_isLaunched = true;
        check();
    });
    connect(&content, &ContentView::timePassed, this, &DailyReminder::check);
    connect(&content, &ContentView::dueCountChanged, this, &DailyReminder::check);
    connect(&preferences, &WindowPreferences::remindsDailyChanged, this, &DailyReminder::check);
}

void DailyReminder::check() {
    const int count = m_content.dueCount();
    if (!m_isLaunched || !m_preferences.remindsDaily() || count == 0 || isReviewing())
        return;
    const StorageManager &storage = m_services.storage;
    const auto date = storage.calendar().date(storage.now());
    if (!date)
        return;
    const QString day = date->toString(Qt::ISODate);
    UserDefaults &defaults = m_services.defaults;
    if (defaults.string(dayKey) == day)
        return;
    // Another process may have reminded the user.
    defaults.refresh();
    if (defaults.string(dayKey) == day)
        return;
    defaults.set(dayKey, day);
    const DesktopNotification notification{.id = QStringLiteral("reminder"),
                                           .title = QStringLiteral("今日待复习 %1 词").arg(count),
                                           .text = QStringLiteral("趁快要忘记时复习，记得最牢。"),
                                           .action = reviewAction,
                                           .buttons = {{reviewAction, QStringLiteral("开始复习")}}};
    m_services.notifier.show(notification, [this](const QString &action, const ActivationTokens &tokens) {
        if (action != reviewAction)
            return;
        m_delegate.applicationShouldHandleReopen(tokens);
        m_content.showReview();
    });
}

bool DailyReminder::isReviewing() const {
    const QQuickWindow *const window = m_delegate.mainWindow();
    return window != nullptr && window->isVisible() && window->isActive() &&
           m_content.selectedTab() == ContentView::TabItem::WeeklyReview;
}

} // namespace lexiquill
