#include "hotkey/hot_key_windows.h"

namespace lexiquill {

namespace {

constexpr double widestSideWindow = 300;

} // namespace

void keepOneMainWindow(HotKeyWindows &windows) {
    const QList<HotKeyWindows::Window> all = windows.windows();
    for (const HotKeyWindows::Window &each : all) {
        // Closing one may have destroyed another.
        QObject *const window = each.window;
        if (!window || !each.canBecomeMain || each.isPanel || each.width <= widestSideWindow)
            continue;
        windows.disallowTabbing(window);
        if (!windows.mainWindow()) {
            windows.setMainWindow(window);
        } else if (window != windows.mainWindow()) {
            windows.orderOut(window);
            windows.close(window);
        }
    }
}

void focusFirstTextField(HotKeyWindows &windows) {
    QObject *const content = windows.keyWindowContent();
    QList<QObject *> pending;
    if (content)
        pending += content;
    while (!pending.isEmpty()) {
        QObject *const view = pending.takeLast();
        if (windows.isEditableTextField(view))
            return windows.makeFirstResponder(view);
        const QList<QObject *> subviews = windows.subviews(view);
        pending.append(QList<QObject *>(subviews.crbegin(), subviews.crend()));
    }
}

} // namespace lexiquill
