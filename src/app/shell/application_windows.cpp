#include "app/shell/application_windows.h"

#include "app/shell/app_delegate.h"
#include "app/shell/content_view.h"
#include "platform/window_activation.h"

#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickWindow>

#include <utility>

namespace lexiquill {

namespace {

QQuickWindow *asWindow(QObject *window) {
    return qobject_cast<QQuickWindow *>(window);
}

/// The item of the modal sheet that is open above the content; null if there is none.
QQuickItem *openSheet(const QQuickItem &content) {
    for (const QQuickItem *const layer : content.childItems()) {
        if (!layer->inherits("QQuickOverlay"))
            continue;
        for (QQuickItem *const item : layer->childItems()) {
            const QObject *const popup = item->parent();
            if (popup != nullptr && item->isVisible() && popup->property("modal").toBool())
                return item;
        }
    }
    return nullptr;
}

} // namespace

bool canBecomeMainWindow(const QWindow &window) {
    return window.type() == Qt::Window && window.transientParent() == nullptr && window.parent() == nullptr;
}

void ApplicationWindows::activateApplication(const HotKeyPress &press) {
    if (!press.activationToken.isEmpty())
        m_tokens.activationToken = press.activationToken;
    if (press.timestamp != 0)
        m_timestamp = press.timestamp;
    if (QQuickWindow *const window = m_delegate.mainWindow(); window != nullptr && window->isVisible())
        bringForward(window, std::exchange(m_tokens, {}), std::exchange(m_timestamp, 0),
                     m_delegate.isMainWindowNew());
}

QList<HotKeyWindows::Window> ApplicationWindows::windows() const {
    QList<Window> all;
    for (QWindow *const window : QGuiApplication::topLevelWindows())
        all += Window{.window = window,
                      .canBecomeMain = canBecomeMainWindow(*window),
                      .isPanel = window->type() != Qt::Window,
                      .width = static_cast<double>(window->frameGeometry().width())};
    return all;
}

QObject *ApplicationWindows::mainWindow() const {
    return m_delegate.mainWindow();
}

void ApplicationWindows::setMainWindow(QObject *window) {
    m_delegate.setMainWindow(asWindow(window));
}

void ApplicationWindows::orderOut(QObject *window) {
    if (QQuickWindow *const quick = asWindow(window))
        quick->hide();
}

void ApplicationWindows::close(QObject *window) {
    if (QQuickWindow *const quick = asWindow(window))
        quick->close();
}

bool ApplicationWindows::isMiniaturized(QObject *window) const {
    const QQuickWindow *const quick = asWindow(window);
    return quick != nullptr && quick->windowStates().testFlag(Qt::WindowMinimized);
}

void ApplicationWindows::deminiaturize(QObject *window) {
    if (QQuickWindow *const quick = asWindow(window))
        quick->setWindowStates(quick->windowStates() & ~Qt::WindowMinimized);
}

void ApplicationWindows::setAlpha(QObject *window, double alpha) {
    if (QQuickWindow *const quick = asWindow(window))
        quick->setOpacity(alpha);
}

void ApplicationWindows::setVisible(QObject *window) {
    if (window == m_delegate.mainWindow())
        m_delegate.showMainWindow();
}

void ApplicationWindows::makeKeyAndOrderFront(QObject *window) {
    if (QQuickWindow *const quick = asWindow(window))
        quick->raise();
}

// The activation that follows brings the window to the front.
void ApplicationWindows::orderFrontRegardless(QObject *) {}

void ApplicationWindows::setContentNeedsDisplay(QObject *window) {
    if (QQuickWindow *const quick = asWindow(window))
        quick->update();
}

void ApplicationWindows::postFocusSearchInput() {
    m_content.postFocusSearchInput();
}

QObject *ApplicationWindows::keyWindowContent() const {
    if (m_content.hasSheet() || m_content.isMenuOpen())
        return nullptr;
    QQuickWindow *const window = asWindow(QGuiApplication::focusWindow());
    if (window == nullptr)
        return nullptr;
    QQuickItem *const sheet = openSheet(*window->contentItem());
    return sheet != nullptr ? sheet : window->contentItem();
}

QList<QObject *> ApplicationWindows::subviews(QObject *view) const {
    QList<QObject *> children;
    if (const auto *const item = qobject_cast<QQuickItem *>(view)) {
        for (QQuickItem *const child : item->childItems()) {
            if (child->isVisible() && child->isEnabled())
                children += child;
        }
    }
    return children;
}

bool ApplicationWindows::isEditableTextField(QObject *view) const {
    const auto *const item = qobject_cast<QQuickItem *>(view);
    return item != nullptr && item->flags().testFlag(QQuickItem::ItemAcceptsInputMethod) &&
           item->property("readOnly") == QVariant(false);
}

void ApplicationWindows::makeFirstResponder(QObject *view) {
    auto *const item = qobject_cast<QQuickItem *>(view);
    // What has been typed there meanwhile must not be selected, or else the next key replaces it.
    if (item == nullptr || item->hasActiveFocus())
        return;
    item->forceActiveFocus(Qt::ActiveWindowFocusReason);
    selectText(item);
}

void ApplicationWindows::selectText(QQuickItem *item) {
    if (item != nullptr && item->inherits("QQuickTextInput"))
        QMetaObject::invokeMethod(item, "selectAll");
}

bool ApplicationWindows::isNoteEditor(const QQuickItem *item) {
    return item != nullptr && item->inherits("QQuickTextEdit") &&
           item->property("readOnly") == QVariant(false);
}

} // namespace lexiquill
