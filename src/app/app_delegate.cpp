#include "app/app_delegate.h"

#include "app/content_view.h"
#include "app/desktop_appearance.h"
#include "app/main_window_delegate.h"
#include "app/services.h"
#include "hotkey/hot_key_manager.h"
#include "lookup/system_dictionary_service.h"
#include "storage/spotlight_manager.h"
#include "storage/storage_manager.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QQuickItem>
#include <QTimer>

#include <cstdlib>

namespace lexiquill {

AppDelegate &AppDelegate::shared() {
    static auto *const instance = new AppDelegate;
    return *instance;
}

AppDelegate *AppDelegate::create(QQmlEngine *, QJSEngine *) {
    QJSEngine::setObjectOwnership(&shared(), QJSEngine::CppOwnership);
    return &shared();
}

void AppDelegate::applicationDidFinishLaunching() {
    Services &services = Services::current();
    services.hotKeys().setWindows(&m_windows);
    services.hotKeys().setup();
    services.offlineDictionaries().ensureDictionariesConfigured();
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, &AppDelegate::handleWindowDidBecomeKey);
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive)
            applicationDidBecomeActive();
    });
    m_watcher = std::make_unique<WordbookWatcher>(services.storage(), services.storage().storageFile());
    m_colorScheme = watchColorScheme(
        [](std::optional<bool> isDark) { DesktopAppearance::shared().setPreference(isDark); });
    QTimer::singleShot(0, this, &AppDelegate::enforceSingleWindowPolicy);
}

void AppDelegate::applicationDidBecomeActive() {
    enforceSingleWindowPolicy();
    // Who was typing a note before goes on there.
    const QQuickWindow *const window = mainWindow();
    if (window == nullptr || !m_windows.isEditableTextField(window->activeFocusItem()))
        Services::current().hotKeys().focusSearchField();
}

void AppDelegate::applicationShouldHandleReopen(const ActivationTokens &tokens) {
    reopen(tokens);
}

void AppDelegate::handleWindowDidBecomeKey(QWindow *window) {
    auto *const quick = qobject_cast<QQuickWindow *>(window);
    if (quick == nullptr || !canBecomeMainWindow(*quick))
        return;
    if (!m_mainWindow)
        m_mainWindow = quick;
    if (quick != m_mainWindow) {
        quick->hide();
        quick->close();
        return;
    }
    // Installed anew it is the first to see an event, and never twice there.
    quick->installEventFilter(&MainWindowDelegate::shared());
}

void AppDelegate::enforceSingleWindowPolicy() {
    keepOneMainWindow(m_windows);
    if (m_mainWindow)
        m_mainWindow->installEventFilter(&MainWindowDelegate::shared());
}

void AppDelegate::showMainWindow() {
    if (m_mainWindow->isVisible())
        return;
    if (m_hiddenPosition)
        m_mainWindow->setFramePosition(*m_hiddenPosition);
    m_mainWindow->show();
}

void AppDelegate::windowWillHide(const QQuickWindow &window) {
    if (&window == m_mainWindow && window.windowStates() == Qt::WindowNoState)
        m_hiddenPosition = window.framePosition();
}

ApplicationRequests AppDelegate::requests() {
    return {
        .activate = [this](const ActivationTokens &tokens) { applicationShouldHandleReopen(tokens); },
        .open = [this](const QStringList &urls, const ActivationTokens &tokens) { open(urls, tokens); },
        .activateAction = [this](const QString &name, const QString &parameter,
                                 const ActivationTokens &tokens) { activateAction(name, parameter, tokens); },
        .lookup = [this](const QString &text) { return m_provider.lookup(text); },
    };
}

void AppDelegate::open(const QStringList &urls, const ActivationTokens &tokens) {
    reopen(tokens);
    for (const QString &url : urls) {
        if (url.startsWith(QLatin1StringView("lexiquill:"), Qt::CaseInsensitive))
            ContentView::shared().openUrl(url);
    }
}

void AppDelegate::activateAction(const QString &name, const QString &parameter,
                                 const ActivationTokens &tokens) {
    if (name == QLatin1StringView("quit"))
        return terminate();
    m_windows.setTokens(tokens);
    if (name == QLatin1StringView("lookup-selection"))
        return lookupSelection();
    reopen(tokens);
    if (name == QLatin1StringView("open-search-result"))
        ContentView::shared().continueSearchActivity(parameter);
    else if (name == QLatin1StringView("search"))
        ContentView::shared().handleExternalWordLookup(parameter);
}

void AppDelegate::lookupSelection() {
    const QClipboard *const clipboard = QGuiApplication::clipboard();
    QString text = clipboard->supportsSelection() ? clipboard->text(QClipboard::Selection) : QString();
    if (text.trimmed().isEmpty())
        text = clipboard->text(QClipboard::Clipboard);
    // Without any text the window still comes forward, for the user has asked for it.
    if (m_provider.lookup(text))
        reopen({});
}

void AppDelegate::performLookup(const QString &text) {
    reopen({});
    ContentView::shared().postPerformExternalLookup(text);
}

void AppDelegate::reopen(const ActivationTokens &tokens) {
    if (!tokens.activationToken.isEmpty() || !tokens.startupId.isEmpty())
        m_windows.setTokens(tokens);
    Services::current().hotKeys().reopenMainWindow();
}

void AppDelegate::terminate() {
    StorageManager &storage = Services::current().storage();
    if (storage.hasUnsavedChanges())
        storage.saveData();
    Services::current().spotlight().finish();
    // Not quit(), which asks the windows first, and ours never closes.
    QCoreApplication::exit(EXIT_SUCCESS);
}

} // namespace lexiquill
