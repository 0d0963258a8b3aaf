#pragma once

#include "hotkey/hot_key_windows.h"
#include "platform/application_endpoint.h"

#include <QWindow>

class QQuickItem;

namespace lexiquill {

class AppDelegate;
class ContentView;

/// Whether the window could be the main one: an ordinary top-level window, not a dialog or tool window.
bool canBecomeMainWindow(const QWindow &window);

/// The windows of this process.
class ApplicationWindows : public HotKeyWindows {
public:
    /// `delegate` holds the main window; `content` knows whether a sheet or menu is open. Both must outlive
    /// the instance.
    ApplicationWindows(AppDelegate &delegate, ContentView &content)
        : m_delegate(delegate),
          m_content(content) {}

    /// The tokens that allow the next activated window to take the focus.
    void setTokens(const ActivationTokens &tokens) { m_tokens = tokens; }

    void activateApplication(const HotKeyPress &press) override;
    QList<Window> windows() const override;
    QObject *mainWindow() const override;
    void setMainWindow(QObject *window) override;
    void disallowTabbing(QObject *) override {} // Windows here never have tabs.
    void orderOut(QObject *window) override;
    void close(QObject *window) override;
    bool isMiniaturized(QObject *window) const override;
    void deminiaturize(QObject *window) override;
    void setAlpha(QObject *window, double alpha) override;
    void setOpaque(QObject *) override {} // The window is always opaque.
    void setVisible(QObject *window) override;
    void makeKeyAndOrderFront(QObject *window) override;
    void orderFrontRegardless(QObject *window) override;
    void setContentNeedsDisplay(QObject *window) override;
    void postFocusSearchInput() override;
    QObject *keyWindowContent() const override;
    QList<QObject *> subviews(QObject *view) const override;
    bool isEditableTextField(QObject *view) const override;
    /// Also selects the text of the field if that did not have the keyboard, so that typing replaces it.
    void makeFirstResponder(QObject *view) override;

    /// Selects the text of a one-line field; does nothing for other items.
    static void selectText(QQuickItem *item);
    /// Whether the item is an editable text of several lines.
    static bool isNoteEditor(const QQuickItem *item);

private:
    AppDelegate &m_delegate;
    ContentView &m_content;
    ActivationTokens m_tokens;
    quint64 m_timestamp = 0; ///< of the key press that caused the activation
};

} // namespace lexiquill
