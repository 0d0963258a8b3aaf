#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickWindow>
#include <QRect>
#include <QTimer>

#include <optional>

namespace lexiquill {

class UserDefaults;

/// A window's size, state and (where programs may know it) place, as it is stored.
struct WindowGeometry {
    QSize size;
    std::optional<QPoint> place; ///< of the frame; no value where the desktop places windows
    bool isMaximized = false;

    /// "880x600", "880x600+40+60" or "880x600+40+60 maximized". Numbers may be negative after a "+".
    QString text() const;
    /// No value for another text, and for a size that no screen has.
    static std::optional<WindowGeometry> fromText(const QString &text);

    friend bool operator==(const WindowGeometry &, const WindowGeometry &) = default;
};

/// The geometry with which a window may open: no larger than the available area of a screen, and with a place
/// only if that is on one of the screens. `screens` must not be empty; the first one is the usual one.
WindowGeometry fitted(const WindowGeometry &geometry, const QList<QRect> &screens);

/// Remembers the size and place of the main window over the ends of the program.
class WindowPlace : public QObject {
    Q_OBJECT

public:
    /// `defaults` must outlive the instance.
    explicit WindowPlace(UserDefaults &defaults, QObject *parent = nullptr);

    /// Gives a window that is not visible yet its last geometry, and follows its changes from then on.
    void restore(QQuickWindow &window);
    /// Stores the present geometry if it has changed.
    void save();

private:
    WindowGeometry current() const;

    UserDefaults &m_defaults;
    QPointer<QQuickWindow> m_window;
    WindowGeometry m_last; ///< while the window was neither maximized nor hidden
    QTimer m_pause;
};

} // namespace lexiquill
