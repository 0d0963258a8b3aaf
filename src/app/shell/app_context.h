#pragma once

#include "app/dictionaries/dictionary_imports.h"
#include "app/dictionaries/removed_dictionaries.h"
#include "app/notices/background_notice.h"
#include "app/notices/daily_reminder.h"
#include "app/notices/hot_key_notice.h"
#include "app/notices/tray_menu.h"
#include "app/preferences/window_preferences.h"
#include "app/shell/app_delegate.h"
#include "app/shell/content_view.h"
#include "app/shell/desktop_appearance.h"
#include "app/shell/services.h"

namespace lexiquill {

/// The objects of the window besides its screens. There is one instance at a time; QML uses its members as
/// singletons.
class AppContext {
public:
    /// Makes `services` the current ones; they must outlive the instance.
    explicit AppContext(Services &services);
    ~AppContext();
    Q_DISABLE_COPY_MOVE(AppContext)

    static AppContext &current();

    WindowPreferences &preferences() { return m_preferences; }
    ContentView &content() { return m_content; }
    DesktopAppearance &appearance() { return m_appearance; }
    AppDelegate &delegate() { return m_delegate; }
    DictionaryImports &imports() { return m_imports; }
    TrayMenu &tray() { return m_tray; }
    RemovedDictionaries &removedDictionaries() { return m_removedDictionaries; }

private:
    WindowPreferences m_preferences;
    DictionaryImports m_imports;
    RemovedDictionaries m_removedDictionaries;
    ContentView m_content;
    DesktopAppearance m_appearance;
    AppDelegate m_delegate;
    TrayMenu m_tray;
    HotKeyNotice m_hotKeyNotice;
    BackgroundNotice m_backgroundNotice;
    DailyReminder m_reminder;
};

} // namespace lexiquill
