#pragma once

#include "app/shell/application_windows.h"
#include "app/shell/dictionary_service_provider.h"
#include "app/shell/main_window_delegate.h"
#include "app/shell/selection_reader.h"
#include "app/shell/window_place.h"
#include "platform/application_endpoint.h"
#include "platform/color_scheme.h"
#include "storage/wordbook_watcher.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QQmlEngine>
#include <QQuickWindow>

#include <memory>
#include <optional>

namespace lexiquill {

class ContentView;
class DesktopAppearance;
class DictionaryImports;
struct Services;

/// Connects the window with the process: starts the services, ensures that there is one main window, handles
/// requests from other programs and the desktop, and ends the process.
class AppDelegate : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// All arguments must outlive the instance.
    AppDelegate(Services &services, ContentView &content, DictionaryImports &imports,
                DesktopAppearance &appearance);

    static AppDelegate *create(QQmlEngine *engine, QJSEngine *scripts);

    /// The main window; null before there is one. It exists until the process ends.
    QQuickWindow *mainWindow() const { return m_mainWindow; }
    void setMainWindow(QQuickWindow *window);
    /// Gives the main window the size and place that it had when the program ended.
    void restoreMainWindow();
    /// Whether the main window has only just been shown.
    bool isMainWindowNew() const;

    /// To be called once, when the window has been made.
    void applicationDidFinishLaunching();
    void applicationDidBecomeActive();
    /// The application was started again, or its icon was clicked.
    void applicationShouldHandleReopen(const ActivationTokens &tokens = {});
    void handleWindowDidBecomeKey(QWindow *window);
    /// Closes every window that could be a second main window.
    void enforceSingleWindowPolicy();

    /// Shows the main window where it was when it was hidden.
    void showMainWindow();
    /// Saves the position of the main window, which is about to be hidden.
    void windowWillHide(const QQuickWindow &window);

    /// The handlers for requests from other processes. They use the windows, so they can be called after
    /// `applicationDidFinishLaunching`.
    ApplicationRequests requests();
    /// Looks up the text selected in any program, or the text on the clipboard if none is selected.
    void lookupSelection();

    /// Saves unsaved changes and ends the process.
    Q_INVOKABLE void terminate();

Q_SIGNALS:
    /// The work that the window does in the background can begin.
    void launched();
    /// The user has closed the main window, which is hidden now.
    void mainWindowClosed();

private:
    void open(const QStringList &urls, const ActivationTokens &tokens);
    void activateAction(const QString &name, const QString &parameter, const ActivationTokens &tokens);
    void takeKeyboard();
    void performLookup(const QString &text);
    void reopen(const ActivationTokens &tokens);

    Services &m_services;
    ContentView &m_content;
    DictionaryImports &m_imports;
    DesktopAppearance &m_appearance;
    QPointer<QQuickWindow> m_mainWindow;
    ApplicationWindows m_windows;
    MainWindowDelegate m_windowDelegate;
    WindowPlace m_place;
    DictionaryServiceProvider m_provider{[this](const QString &text) {
        performLookup(text);
    }};
    SelectionReader m_selection;
    QElapsedTimer m_mainWindowShown; ///< since the main window was last shown
    std::unique_ptr<WordbookWatcher> m_watcher;
    std::unique_ptr<ColorScheme> m_colorScheme;
    std::optional<QPoint> m_hiddenPosition; ///< of the main window's frame, while it is hidden
};

} // namespace lexiquill
