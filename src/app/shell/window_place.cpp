#include "app/shell/window_place.h"

#include "settings/user_defaults.h"

#include <QGuiApplication>
#include <QRegularExpression>
#include <QScreen>

#include <algorithm>
#include <chrono>

namespace lexiquill {

using namespace std::chrono_literals;

namespace {

const QString geometryKey = QStringLiteral("lexiquill_window_geometry");
/// At least so much of a window's frame must be on a screen, in points.
constexpr QSize reachable{80, 24};

/// Elsewhere the desktop places the windows.
bool knowsPlaces() {
    return QGuiApplication::platformName() == QLatin1StringView("xcb");
}

QList<QRect> availableAreas() {
    QList<QRect> areas;
    for (const QScreen *const screen : QGuiApplication::screens())
        areas += screen->availableGeometry();
    return areas;
}

} // namespace

QString WindowGeometry::text() const {
    QString text = QStringLiteral("%1x%2").arg(size.width()).arg(size.height());
    if (place)
        text += QStringLiteral("+%1+%2").arg(place->x()).arg(place->y());
    return isMaximized ? text + QStringLiteral(" maximized") : text;
}

std::optional<WindowGeometry> WindowGeometry::fromText(const QString &text) {
    static const QRegularExpression form(
        QStringLiteral("\\A(\\d{2,5})x(\\d{2,5})(?:\\+(-?\\d{1,5})\\+(-?\\d{1,5}))?( maximized)?\\z"));
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    WindowGeometry geometry{.size = {match.captured(1).toInt(), match.captured(2).toInt()},
                            .place = std::nullopt,
                            .isMaximized = match.hasCaptured(5)};
    if (match.hasCaptured(3))
        geometry.place = QPoint(match.captured(3).toInt(), match.captured(4).toInt());
    return geometry;
}

WindowGeometry fitted(const WindowGeometry &geometry, const QList<QRect> &screens) {
    const QRect frame(geometry.place.value_or(screens.constFirst().topLeft()), geometry.size);
    const auto screen = std::ranges::find_if(screens, [&](const QRect &area) {
        const QRect visible = area & QRect(frame.topLeft(), QSize(frame.width(), reachable.height()));
        return visible.width() >= reachable.width() && visible.height() >= reachable.height();
    });
    WindowGeometry result = geometry;
    result.size = geometry.size.boundedTo((screen == screens.cend() ? screens.constFirst() : *screen).size());
    if (screen == screens.cend())
        result.place.reset();
    return result;
}

WindowPlace::WindowPlace(UserDefaults &defaults, QObject *parent) : QObject(parent), m_defaults(defaults) {
    // Moving and resizing come in many steps.
    m_pause.setInterval(1s);
    m_pause.setSingleShot(true);
    connect(&m_pause, &QTimer::timeout, this, &WindowPlace::save);
}

void WindowPlace::restore(QQuickWindow &window) {
    m_window = &window;
    const QList<QRect> screens = availableAreas();
    if (screens.isEmpty())
        return;
    const WindowGeometry usual{.size = window.size(), .place = std::nullopt};
    m_last = fitted(WindowGeometry::fromText(m_defaults.string(geometryKey)).value_or(usual), screens);
    window.setMinimumSize(window.minimumSize().boundedTo(m_last.size));
    window.resize(m_last.size);
    if (m_last.place && knowsPlaces())
        window.setFramePosition(*m_last.place);
    if (m_last.isMaximized)
        window.setWindowStates(Qt::WindowMaximized);
    const auto follow = [this] {
        m_pause.start();
    };
    connect(&window, &QWindow::widthChanged, this, follow);
    connect(&window, &QWindow::heightChanged, this, follow);
    connect(&window, &QWindow::xChanged, this, follow);
    connect(&window, &QWindow::yChanged, this, follow);
    connect(&window, &QWindow::windowStateChanged, this, follow);
}

WindowGeometry WindowPlace::current() const {
    if (!m_window || !m_window->isVisible())
        return m_last;
    const Qt::WindowStates states = m_window->windowStates();
    WindowGeometry geometry = m_last;
    if (states == Qt::WindowNoState) {
        geometry.size = m_window->size();
        if (knowsPlaces())
            geometry.place = m_window->framePosition();
    }
    if (!states.testFlag(Qt::WindowMinimized))
        geometry.isMaximized = states.testFlag(Qt::WindowMaximized);
    return geometry;
}

void WindowPlace::save() {
    m_pause.stop();
    const WindowGeometry geometry = current();
    if (!m_window || geometry == m_last)
        return;
    m_last = geometry;
    m_defaults.set(geometryKey, geometry.text());
}

} // namespace lexiquill
