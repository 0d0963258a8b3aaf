#include "hotkey/hot_key_manager.h"

#include <QPointer>

namespace lexiquill {

const QString HotKeyManager::userDefaultsKey = QStringLiteral("lexiquill_custom_global_hotkey");

HotKeyManager::HotKeyManager(HotKeyRegistrar &registrar, UserDefaults &defaults, QObject *parent)
    : QObject(parent),
      m_registrar(registrar),
      m_defaults(defaults) {
    connect(this, &HotKeyManager::pressTaken, this, &HotKeyManager::react, Qt::QueuedConnection);
    m_offerTimer.setSingleShot(true);
    connect(&m_offerTimer, &QTimer::timeout, this, &HotKeyManager::findOffer);
    m_focusTimer.setSingleShot(true);
    connect(&m_focusTimer, &QTimer::timeout, this, [this] {
        if (m_windows)
            focusFirstTextField(*m_windows);
    });
}

HotKeyManager::~HotKeyManager() {
    if (m_hasAskedForHotKey)
        m_registrar.unregisterHotKey();
}

void HotKeyManager::setShowSettingsSheet(bool isShown) {
    if (isShown == m_showSettingsSheet)
        return;
    m_showSettingsSheet = isShown;
    Q_EMIT showSettingsSheetChanged();
}

void HotKeyManager::setup() {
    loadSavedShortcut();
    if (!m_isHandlerInstalled) {
        m_isHandlerInstalled = m_registrar.installHandler([self = QPointer(this)](const HotKeyPress &press) {
            if (self)
                self->handleHotKeyPressed(press);
        }) == HotKeyStatus::ok;
    }
    registerCurrentHotKey();
}

void HotKeyManager::loadSavedShortcut() {
    const auto saved = decodeHotKeyShortcut(m_defaults.byteArray(userDefaultsKey));
    setCurrentShortcut(saved.value_or(HotKeyShortcut::defaultShortcut()));
}

void HotKeyManager::updateShortcut(const HotKeyShortcut &shortcut) {
    setCurrentShortcut(shortcut);
    m_defaults.set(userDefaultsKey, encodeHotKeyShortcut(m_currentShortcut));
    registerCurrentHotKey();
}

void HotKeyManager::resetToDefault() {
    updateShortcut(HotKeyShortcut::defaultShortcut());
}

void HotKeyManager::setCurrentShortcut(const HotKeyShortcut &shortcut) {
    if (shortcut == m_currentShortcut)
        return;
    m_currentShortcut = shortcut;
    Q_EMIT currentShortcutChanged();
}

void HotKeyManager::registerCurrentHotKey() {
    if (m_hasAskedForHotKey)
        m_registrar.unregisterHotKey();
    m_hasAskedForHotKey = true;
    m_registrar.registerHotKey(m_currentShortcut.keyCode, m_currentShortcut.carbonModifiers,
                               [this](qint32 status) { setRegisterStatus(status); });
}

void HotKeyManager::setRegisterStatus(qint32 status) {
    const QString description = status == HotKeyStatus::ok
                                    ? QStringLiteral("已监听 [%1]").arg(m_currentShortcut.symbolString)
                                    : QStringLiteral("注册失败 (错误码: %1)").arg(status);
    m_offerTimer.start(0);
    if (description == m_registerStatusDescription)
        return;
    m_registerStatus = status;
    m_registerStatusDescription = description;
    Q_EMIT registerStatusDescriptionChanged();
}

void HotKeyManager::findOffer() {
    const bool isUnusable = m_registerStatus > 0 || m_registerStatus == HotKeyStatus::keyMissing;
    HotKeyShortcut offer;
    if (isUnusable) {
        for (const HotKeyShortcut &preset : presets()) {
            const bool isCurrent = preset.keyCode == m_currentShortcut.keyCode &&
                                   preset.carbonModifiers == m_currentShortcut.carbonModifiers;
            if (isCurrent || !m_registrar.isFree(preset.keyCode, preset.carbonModifiers))
                continue;
            offer = preset;
            break;
        }
    }
    if (offer == m_offeredShortcut)
        return;
    m_offeredShortcut = offer;
    Q_EMIT offeredShortcutChanged();
}

void HotKeyManager::handleHotKeyPressed(const HotKeyPress &press) {
    Q_EMIT pressTaken(press, {});
}

void HotKeyManager::react(const HotKeyPress &press) {
    if (!m_windows)
        return;
    m_windows->activateApplication(press);
    reopenMainWindow(press);
    m_windows->postFocusSearchInput();
    focusSearchField();
}

void HotKeyManager::reopenMainWindow(const HotKeyPress &press) {
    if (!m_windows)
        return;
    keepOneMainWindow(*m_windows);
    QObject *const window = m_windows->mainWindow();
    if (!window)
        return m_windows->activateApplication(press);
    if (m_windows->isMiniaturized(window))
        m_windows->deminiaturize(window);
    m_windows->setAlpha(window, 1.0);
    m_windows->setOpaque(window);
    m_windows->setVisible(window);
    m_windows->makeKeyAndOrderFront(window);
    m_windows->orderFrontRegardless(window);
    m_windows->activateApplication(press);
    m_windows->setContentNeedsDisplay(window);
}

void HotKeyManager::focusSearchField() {
    m_focusTimer.start(focusDelay);
}

} // namespace lexiquill
