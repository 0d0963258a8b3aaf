#include "app/shell/main_window_delegate.h"

#include "app/shell/app_delegate.h"

#include <QEvent>
#include <QKeyEvent>

namespace lexiquill {

bool MainWindowDelegate::windowShouldClose(QQuickWindow &window) {
    m_application.windowWillHide(window);
    window.hide();
    window.setOpacity(1.0);
    if (&window == m_application.mainWindow())
        Q_EMIT m_application.mainWindowClosed();
    return false;
}

bool MainWindowDelegate::eventFilter(QObject *watched, QEvent *event) {
    // A text field would use Ctrl+U to clear its line, and the search field usually has the focus.
    if (event->type() == QEvent::ShortcutOverride &&
        static_cast<QKeyEvent *>(event)->keyCombination() == (Qt::ControlModifier | Qt::Key_U)) {
        event->ignore();
        return true;
    }
    // Check the type first: other events arrive while the window is being destroyed, when the cast is not
    // valid.
    auto *const window = event->type() == QEvent::Close ? qobject_cast<QQuickWindow *>(watched) : nullptr;
    if (window == nullptr)
        return QObject::eventFilter(watched, event);
    event->setAccepted(windowShouldClose(*window));
    return true;
}

} // namespace lexiquill
