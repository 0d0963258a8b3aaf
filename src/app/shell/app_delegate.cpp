#include "app/shell/app_delegate.h"

#include "app/dictionaries/dictionary_imports.h"
#include "app/dictionaries/removed_dictionaries.h"
#include "app/shell/app_context.h"
#include "app/shell/content_view.h"
#include "app/shell/desktop_appearance.h"
#include "app/shell/lent.h"
#include "app/shell/services.h"
#include "app/shell/window_icon.h"
#include "desktop_search/spotlight_manager.h"
#include "dictionaries/system_dictionary_service.h"
#include "hotkey/hot_key_manager.h"
#include "platform/notifier.h"
#include "platform/window_activation.h"
#include "storage/storage_manager.h"
#include "support/background_task.h"

#include <QGuiApplication>
#include <QIcon>
#include <QPixmap>
#include <QQuickItem>
#include <QTimer>

#include <cstdlib>

namespace lexiquill {

namespace {

/// A desktop has given the focus to a new window by then, or has refused it.
constexpr qint64 newWindowMilliseconds = 1000;

} // namespace

AppDelegate::AppDelegate(Services &services, ContentView &content, DictionaryImports &imports,
                         DesktopAppearance &appearance)
    : m_services(services),
      m_content(content),
      m_imports(imports),
      m_appearance(appearance),
      m_windows(*this, content),
      m_windowDelegate(*this),
      m_place(services.defaults),
      m_selection(isSelectionForFocusOnly() ? SelectionReader::Access::WithFocus
                                            : SelectionReader::Access::Always) {}

AppDelegate *AppDelegate::create(QQmlEngine *, QJSEngine *) {
    return lent(AppContext::current().delegate());
}

void AppDelegate::setMainWindow(QQuickWindow *window) {
    m_mainWindow = window;
    if (window == nullptr)
        return;
    connect(window, &QWindow::visibleChanged, this, [this](bool isVisible) {
        if (isVisible)
            m_mainWindowShown.start();
    });
    // The icon can wait until the first frame is shown.
    const auto setIcon = [] {
        QIcon icon;
        for (const QImage &image : windowIcon())
            icon.addPixmap(QPixmap::fromImage(image));
        QGuiApplication::setWindowIcon(icon);
    };
    connect(window, &QQuickWindow::frameSwapped, this, setIcon,
            static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
}

bool AppDelegate::isMainWindowNew() const {
    return m_mainWindowShown.isValid() && !m_mainWindowShown.hasExpired(newWindowMilliseconds);
}

void AppDelegate::applicationDidFinishLaunching() {
    m_services.hotKeys.setWindows(&m_windows);
    m_services.hotKeys.setup();
    m_services.offlineDictionaries.ensureDictionariesConfigured();
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, &AppDelegate::handleWindowDidBecomeKey);
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive)
            applicationDidBecomeActive();
    });
    m_watcher = std::make_unique<WordbookWatcher>(m_services.storage, m_services.storage.storageFile());
    m_colorScheme =
        watchColorScheme([this](std::optional<bool> isDark) { m_appearance.setPreference(isDark); });
    QTimer::singleShot(0, this, &AppDelegate::enforceSingleWindowPolicy);
    startInBackground([] { RemovedDictionaries::deleteLeftOvers(); });
    Q_EMIT launched();
}

void AppDelegate::applicationDidBecomeActive() {
    enforceSingleWindowPolicy();
    // The window gets its focus back only after the application has become active.
    QTimer::singleShot(0, this, &AppDelegate::takeKeyboard);
}

void AppDelegate::takeKeyboard() {
    // A note that is being typed keeps the keyboard.
    QQuickItem *const focused = m_mainWindow ? m_mainWindow->activeFocusItem() : nullptr;
    if (ApplicationWindows::isNoteEditor(focused))
        return;
    ApplicationWindows::selectText(focused);
    m_services.hotKeys.focusSearchField();
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
    // Installing the filter again moves it to the front, so it sees every event first. It is never added
    // twice.
    quick->installEventFilter(&m_windowDelegate);
}

void AppDelegate::enforceSingleWindowPolicy() {
    keepOneMainWindow(m_windows);
    if (m_mainWindow)
        m_mainWindow->installEventFilter(&m_windowDelegate);
}

void AppDelegate::restoreMainWindow() {
    m_place.restore(*m_mainWindow);
}

void AppDelegate::showMainWindow() {
    if (m_mainWindow->isVisible())
        return;
    if (m_hiddenPosition)
        m_mainWindow->setFramePosition(*m_hiddenPosition);
    m_mainWindow->show();
}

void AppDelegate::windowWillHide(const QQuickWindow &window) {
    if (&window != m_mainWindow)
        return;
    m_place.save();
    if (window.windowStates() == Qt::WindowNoState)
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
            m_content.openUrl(url);
    }
    m_imports.ask(DictionaryImports::localPaths(urls));
}

void AppDelegate::activateAction(const QString &name, const QString &parameter,
                                 const ActivationTokens &tokens) {
    if (name == QLatin1StringView("quit"))
        return terminate();
    m_windows.setTokens(tokens);
    if (name == QLatin1StringView("lookup-selection"))
        return lookupSelection();
    if (name == QLatin1StringView("focus-search"))
        return m_services.hotKeys.handleHotKeyPressed();
    reopen(tokens);
    if (name == QLatin1StringView("open-search-result"))
        m_content.continueSearchActivity(parameter);
    else if (name == QLatin1StringView("search"))
        m_content.handleExternalWordLookup(parameter);
}

void AppDelegate::lookupSelection() {
    if (m_selection.needsFocus())
        reopen({});
    m_selection.read([this](const QString &text) {
        // Without any text the window is still shown, because the user asked for it.
        if (m_provider.lookup(text))
            reopen({});
    });
}

void AppDelegate::performLookup(const QString &text) {
    reopen({});
    m_content.postPerformExternalLookup(text);
}

void AppDelegate::reopen(const ActivationTokens &tokens) {
    if (!tokens.activationToken.isEmpty() || !tokens.startupId.isEmpty())
        m_windows.setTokens(tokens);
    m_services.hotKeys.reopenMainWindow();
}

void AppDelegate::terminate() {
    m_place.save();
    StorageManager &storage = m_services.storage;
    if (storage.hasUnsavedChanges())
        storage.saveData();
    m_services.spotlight.finish();
    m_services.notifier.withdrawAll();
    // Not quit(): that asks all windows to close first, and this one only hides.
    QCoreApplication::exit(EXIT_SUCCESS);
}

} // namespace lexiquill
