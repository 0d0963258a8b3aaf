#pragma once

#include "hotkey/hot_key_shortcut.h"
#include "hotkey/hot_key_windows.h"
#include "settings/user_defaults.h"

#include <QObject>
#include <QTimer>

#include <chrono>

namespace lexiquill {

/// Keeps the user's choice of the system-wide hotkey, registers it, and brings the main window forward with
/// the caret in the search field when it is pressed. Lives on the main thread.
class HotKeyManager : public QObject {
    Q_OBJECT
    Q_PROPERTY(lexiquill::HotKeyShortcut currentShortcut READ currentShortcut NOTIFY currentShortcutChanged)
    Q_PROPERTY(bool showSettingsSheet READ showSettingsSheet WRITE setShowSettingsSheet NOTIFY
                   showSettingsSheetChanged)
    Q_PROPERTY(QString registerStatusDescription READ registerStatusDescription NOTIFY
                   registerStatusDescriptionChanged)
    Q_PROPERTY(QList<lexiquill::HotKeyShortcut> presets READ presets CONSTANT)

public:
    /// The arguments must outlive the instance.
    HotKeyManager(HotKeyRegistrar &registrar, UserDefaults &defaults, QObject *parent = nullptr);
    ~HotKeyManager() override;

    /// The windows to bring forward, which must outlive the instance or be replaced by null in time. Without
    /// them a press does nothing.
    void setWindows(HotKeyWindows *windows) { m_windows = windows; }

    const HotKeyShortcut &currentShortcut() const { return m_currentShortcut; }
    bool showSettingsSheet() const { return m_showSettingsSheet; }
    void setShowSettingsSheet(bool isShown);
    /// "正常运行" before the first registration, then whether it worked, with the error number if not.
    const QString &registerStatusDescription() const { return m_registerStatusDescription; }
    const QList<HotKeyShortcut> &presets() const { return HotKeyShortcut::presets(); }

    /// Loads the saved shortcut and registers it. To be called once when the application starts.
    void setup();
    /// Takes the default when nothing readable is stored; stores nothing.
    void loadSavedShortcut();
    /// Stores the shortcut and registers it in place of the one before.
    Q_INVOKABLE void updateShortcut(const lexiquill::HotKeyShortcut &shortcut);
    Q_INVOKABLE void resetToDefault();

    /// Brings the window forward and the caret into the search field, after the current event.
    void handleHotKeyPressed(const HotKeyPress &press = {});
    /// Shows the main window in front of everything, and closes any other main window.
    Q_INVOKABLE void reopenMainWindow(const lexiquill::HotKeyPress &press = {});
    /// Puts the keyboard into the first editable field of the key window, after `focusDelay`.
    Q_INVOKABLE void focusSearchField();

    static const QString userDefaultsKey; ///< "lexiquill_custom_global_hotkey"
    static constexpr std::chrono::milliseconds focusDelay{50};

Q_SIGNALS:
    void currentShortcutChanged();
    void showSettingsSheetChanged();
    void registerStatusDescriptionChanged();
    /// The press waits in the event queue.
    void pressTaken(const lexiquill::HotKeyPress &press, QPrivateSignal);

private:
    void react(const HotKeyPress &press);
    void setCurrentShortcut(const HotKeyShortcut &shortcut);
    void registerCurrentHotKey();
    void setRegisterStatus(qint32 status);

    HotKeyRegistrar &m_registrar;
    UserDefaults &m_defaults;
    HotKeyWindows *m_windows = nullptr;
    HotKeyShortcut m_currentShortcut = HotKeyShortcut::defaultShortcut();
    QTimer m_focusTimer;
    bool m_showSettingsSheet = false;
    QString m_registerStatusDescription = QStringLiteral("正常运行");
    bool m_hasAskedForHotKey = false; ///< the registrar holds, or tries to hold, a combination
    bool m_isHandlerInstalled = false;
};

} // namespace lexiquill
