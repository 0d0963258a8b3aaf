#include "app/main_window_delegate.h"

#include "app/app_delegate.h"

#include <QEvent>

namespace lexiquill {

MainWindowDelegate &MainWindowDelegate::shared() {
    static auto *const instance = new MainWindowDelegate;
    return *instance;
}

bool MainWindowDelegate::windowShouldClose(QQuickWindow &window) {
    AppDelegate::shared().windowWillHide(window);
    window.hide();
    window.setOpacity(1.0);
    return false;
}

bool MainWindowDelegate::eventFilter(QObject *watched, QEvent *event) {
    auto *const window = qobject_cast<QQuickWindow *>(watched);
    if (event->type() != QEvent::Close || window == nullptr)
        return QObject::eventFilter(watched, event);
    event->setAccepted(windowShouldClose(*window));
    return true;
}

} // namespace lexiquill
