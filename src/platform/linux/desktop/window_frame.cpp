#include "platform/window_frame.h"

#include <QGuiApplication>
#include <QPalette>
#include <QWindow>

namespace lexiquill {

namespace {

QPalette framePalette(bool isDark) {
    const QColor ground(isDark ? 0x2b2b2e : 0xf2f2f5);
    const QColor text(isDark ? 0xf2f2f5 : 0x1d1d1f);
    QPalette palette(ground);
    palette.setColor(QPalette::Window, ground);
    palette.setColor(QPalette::WindowText, text);
    const QColor inactive((ground.red() + text.red()) / 2, (ground.green() + text.green()) / 2,
                          (ground.blue() + text.blue()) / 2);
    palette.setColor(QPalette::Disabled, QPalette::WindowText, inactive);
    return palette;
}

} // namespace

void paintWindowFrames(std::optional<bool> isDark) {
    if (!QGuiApplication::platformName().startsWith(QLatin1StringView("wayland")))
        return;
    QGuiApplication::setPalette(isDark ? framePalette(*isDark) : QPalette());
    // A frame takes its colours when it is made.
    for (QWindow *const window : QGuiApplication::topLevelWindows()) {
        if (window->type() != Qt::Window || window->handle() == nullptr)
            continue;
        const Qt::WindowFlags flags = window->flags();
        window->setFlags(flags | Qt::FramelessWindowHint);
        window->setFlags(flags);
    }
}

} // namespace lexiquill
