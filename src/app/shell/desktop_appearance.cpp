#include "app/shell/desktop_appearance.h"

#include "app/shell/app_context.h"
#include "app/shell/lent.h"
#include "platform/window_frame.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPalette>

#include <utility>

namespace lexiquill {

namespace {

bool isPaletteDark() {
    const QPalette palette = QGuiApplication::palette();
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

} // namespace

DesktopAppearance::DesktopAppearance(QGuiApplication &application) {
    application.installEventFilter(this);
    update();
}

DesktopAppearance *DesktopAppearance::create(QQmlEngine *, QJSEngine *) {
    return lent(AppContext::current().appearance());
}

void DesktopAppearance::setPreference(std::optional<bool> isDark) {
    // The frames' colours are part of the palette, which the guess uses.
    if (std::exchange(m_preference, isDark) != isDark)
        paintWindowFrames(isDark);
    update();
}

bool DesktopAppearance::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::ApplicationPaletteChange && watched == qGuiApp)
        update();
    return QObject::eventFilter(watched, event);
}

void DesktopAppearance::update() {
    const bool isDark = m_preference.value_or(isPaletteDark());
    if (isDark == m_isDark)
        return;
    m_isDark = isDark;
    Q_EMIT isDarkChanged();
}

} // namespace lexiquill
