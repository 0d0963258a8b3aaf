#pragma once

#include "hotkey/hot_key_windows.h"
#include "platform/application_endpoint.h"

#include <QWindow>

namespace lexiquill {

class AppDelegate;
class ContentView;

/// Whether the window could be the main one: an ordinary window of its own, no dialog, no tool window.
bool canBecomeMainWindow(const QWindow &window);

/// The windows of this process.
class ApplicationWindows : public HotKeyWindows {
public:
    /// `delegate` keeps the main window, `content` knows what lies above the screens. Both must outlive the
    /// instance.
    ApplicationWindows(AppDelegate &delegate, ContentView &content)
        : m_delegate(delegate),
          m_content(content) {}

    /// What the next window to come forward may take the focus with.
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
    void setOpaque(QObject *) override {} // It is drawn opaque always.
    void setVisible(QObject *window) override;
    void makeKeyAndOrderFront(QObject *window) override;
    void orderFrontRegardless(QObject *window) override;
    void setContentNeedsDisplay(QObject *window) override;
    void postFocusSearchInput() override;
    QObject *keyWindowContent() const override;
    QList<QObject *> subviews(QObject *view) const override;
    bool isEditableTextField(QObject *view) const override;
    void makeFirstResponder(QObject *view) override;

private:
    AppDelegate &m_delegate;
    ContentView &m_content;
    ActivationTokens m_tokens;
    quint64 m_timestamp = 0; ///< of the press that the activation is due to
};

} // namespace lexiquill
