#pragma once

#include "hotkey/hot_key_shortcut.h"
#include "hotkey/hot_key_windows.h"
#include "settings/user_defaults.h"

#include <QObject>
#include <QTimer>

#include <chrono>

namespace lexiquill {

/// Stores the user's choice of the system-wide hotkey and registers it. When it is pressed, brings the main
/// window to the front with the cursor in the search field. Lives on the main thread.
class HotKeyManager : public QObject {
    Q_OBJECT
    Q_PROPERTY(lexiquill::HotKeyShortcut currentShortcut READ currentShortcut NOTIFY currentShortcutChanged)
    Q_PROPERTY(bool showSettingsSheet READ showSettingsSheet WRITE setShowSettingsSheet NOTIFY
                   showSettingsSheetChanged)
    Q_PROPERTY(QString registerStatusDescription READ registerStatusDescription NOTIFY
                   registerStatusDescriptionChanged)
    Q_PROPERTY(bool hasFailed READ hasFailed NOTIFY registerStatusDescriptionChanged)
    Q_PROPERTY(bool isUnsupported READ isUnsupported NOTIFY registerStatusDescriptionChanged)
    Q_PROPERTY(lexiquill::HotKeyShortcut offeredShortcut READ offeredShortcut NOTIFY offeredShortcutChanged)
    Q_PROPERTY(QList<lexiquill::HotKeyShortcut> presets READ presets CONSTANT)

public:
    /// The arguments must outlive the instance.
    HotKeyManager(HotKeyRegistrar &registrar, UserDefaults &defaults, QObject *parent = nullptr);
    ~HotKeyManager() override;

    /// Sets the windows to bring to the front. They must outlive the instance, or be reset to null before
    /// they are destroyed. Without them a press does nothing.
    void setWindows(HotKeyWindows *windows) { m_windows = windows; }

    const HotKeyShortcut &currentShortcut() const { return m_currentShortcut; }
    bool showSettingsSheet() const { return m_showSettingsSheet; }
    void setShowSettingsSheet(bool isShown);
    /// "正常运行" before the first registration, then the result of the last one, with the error number of a
    /// failure.
    const QString &registerStatusDescription() const { return m_registerStatusDescription; }
    /// One of `HotKeyStatus`, or an error number; `ok` before the first registration.
    qint32 registerStatus() const { return m_registerStatus; }
    bool hasFailed() const { return m_registerStatus != HotKeyStatus::ok; }
    /// Whether this desktop has no system-wide hotkeys at all.
    bool isUnsupported() const { return m_registerStatus == HotKeyStatus::unavailable; }
    /// The first preset that is free while the current shortcut is held by another program or not on the
    /// keyboard; without an id otherwise. Known soon after the failure.
    const HotKeyShortcut &offeredShortcut() const { return m_offeredShortcut; }
    const QList<HotKeyShortcut> &presets() const { return HotKeyShortcut::presets(); }

    /// Loads the saved shortcut and registers it. To be called once when the application starts.
    void setup();
    /// Loads the stored shortcut, or the default if none is stored or it is unreadable. Stores nothing.
    void loadSavedShortcut();
    /// Stores the shortcut and registers it instead of the previous one.
    Q_INVOKABLE void updateShortcut(const lexiquill::HotKeyShortcut &shortcut);
    Q_INVOKABLE void resetToDefault();

    /// Brings the window to the front and puts the cursor into the search field, after the current event.
    void handleHotKeyPressed(const HotKeyPress &press = {});
    /// Shows the main window in front of everything, and closes any other main window.
    Q_INVOKABLE void reopenMainWindow(const lexiquill::HotKeyPress &press = {});
    /// Focuses the first editable field of the active window, after `focusDelay`.
    Q_INVOKABLE void focusSearchField();

    static const QString userDefaultsKey; ///< "lexiquill_custom_global_hotkey"
    static constexpr std::chrono::milliseconds focusDelay{50};

Q_SIGNALS:
    void currentShortcutChanged();
    void showSettingsSheetChanged();
    void registerStatusDescriptionChanged();
    void offeredShortcutChanged();
    /// The press has been put into the event queue.
    void pressTaken(const lexiquill::HotKeyPress &press, QPrivateSignal);

private:
    void react(const HotKeyPress &press);
    void setCurrentShortcut(const HotKeyShortcut &shortcut);
    void registerCurrentHotKey();
    void setRegisterStatus(qint32 status);
    void findOffer();

    HotKeyRegistrar &m_registrar;
    UserDefaults &m_defaults;
    HotKeyWindows *m_windows = nullptr;
    HotKeyShortcut m_currentShortcut = HotKeyShortcut::defaultShortcut();
    QTimer m_focusTimer;
    bool m_showSettingsSheet = false;
    QTimer m_offerTimer; ///< the registrar must not be called while it reports
    HotKeyShortcut m_offeredShortcut;
    qint32 m_registerStatus = HotKeyStatus::ok;
    QString m_registerStatusDescription = QStringLiteral("正常运行");
    bool m_hasAskedForHotKey = false; ///< the registrar has registered a combination, or is trying to
    bool m_isHandlerInstalled = false;
};

} // namespace lexiquill
