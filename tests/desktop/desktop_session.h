#pragma once

#include "desktop/accessible_tree.h"
#include "e2e/program.h"
#include "hotkey/x_server.h"

#include <QImage>
#include <QTest>

#include <optional>

namespace lexiquill {

/// A desktop of its own with a home for the program: an X server, a window manager and a session bus. The
/// program is driven from outside, by keys and calls.
class DesktopSession {
public:
    DesktopSession() {
        m_windowManager = m_x.start(QStringLiteral("openbox"));
        QProcessEnvironment &environment = home.environment;
        environment.insert(QStringLiteral("DISPLAY"), m_x.display());
        environment.insert(QStringLiteral("QT_QUICK_BACKEND"), QStringLiteral("software"));
        environment.insert(QStringLiteral("QT_LINUX_ACCESSIBILITY_ALWAYS_ON"), QStringLiteral("1"));
        environment.insert(QStringLiteral("LANG"), QStringLiteral("C.UTF-8"));
        m_bus.setProcessEnvironment(environment);
        m_bus.start(QStringLiteral("dbus-daemon"), {QStringLiteral("--session"), QStringLiteral("--nofork"),
                                                    QStringLiteral("--print-address=1")});
        m_bus.waitForReadyRead(30'000);
        const QString address = QString::fromLatin1(m_bus.readLine().trimmed());
        environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), address);
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), home.path(QStringLiteral("run")));
        m_tree.emplace(address);
        setServer({});
    }
    ~DesktopSession() {
        m_tree.reset();
        for (QProcess *const process : {application.get(), m_windowManager.get(), &m_bus}) {
            if (process == nullptr)
                continue;
            process->kill();
            process->waitForFinished();
        }
    }
    DesktopSession(const DesktopSession &) = delete;
    DesktopSession &operator=(const DesktopSession &) = delete;

    /// The program's own server; there is none at first.
    void setServer(const QString &base) const {
        home.setOnlineBase(
            {}, QStringLiteral("dictionarySourceMode=appleOffline\nlexiquill_server_base=%1\n").arg(base));
    }

    bool isRunning() const { return m_x.isRunning() && m_bus.state() == QProcess::Running; }
    const AccessibleTree &tree() const { return *m_tree; }

    /// Starts the program and waits until its window has the keyboard.
    void startApplication() {
        application = home.start({});
        QTRY_VERIFY_WITH_TIMEOUT(isActive(), 30'000);
    }
    Outcome run(const QStringList &arguments = {},
                const QString &program = QStringLiteral(LEXIQUILL_PROGRAM)) const {
        return Home::finish(*home.start(arguments, program));
    }
    /// Calls the program's own method on the bus; `text` has the form that dbus-send wants.
    Outcome callLookup(const QString &text) const {
        return run({QStringLiteral("--session"), QStringLiteral("--print-reply"),
                    QStringLiteral("--dest=com.lexiquill.Lexiquill"),
                    QStringLiteral("/com/lexiquill/Lexiquill"),
                    QStringLiteral("com.lexiquill.Lexiquill.Lookup"), QStringLiteral("string:") + text},
                   QStringLiteral("dbus-send"));
    }

    QString xdotool(const QStringList &arguments) const {
        return run(arguments, QStringLiteral("xdotool")).output;
    }
    QStringList visibleWindows() const {
        return xdotool({QStringLiteral("search"), QStringLiteral("--onlyvisible"), QStringLiteral("--name"),
                        QStringLiteral("^Lexiquill$")})
            .split(u'\n', Qt::SkipEmptyParts);
    }
    /// Whether the window is on the screen and has the keyboard.
    bool isActive() const {
        const QString window = visibleWindows().value(0);
        return !window.isEmpty() && xdotool({QStringLiteral("getactivewindow")}).trimmed() == window;
    }
    /// Presses keys, given by their names with "+" between those that are held down, one after the other.
    void press(const QString &keys) const { xdotool(QStringList(QStringLiteral("key")) + keys.split(u' ')); }
    void type(const QString &text) const {
        xdotool({QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("20"), text});
    }
    void closeWindow() const {
        QTRY_VERIFY_WITH_TIMEOUT(isActive(), 30'000);
        press(QStringLiteral("ctrl+w"));
        QTRY_VERIFY_WITH_TIMEOUT(visibleWindows().isEmpty(), 30'000);
    }

    /// Leaves a picture of the screen in the build tree.
    bool takePicture(const QString &name) const {
        xcb_connection_t *const connection = xcb_connect(m_x.display().toLatin1().constData(), nullptr);
        const xcb_screen_t *const screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
        xcb_get_image_reply_t *const reply =
            xcb_get_image_reply(connection,
                                xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, screen->root, 0, 0,
                                              screen->width_in_pixels, screen->height_in_pixels, ~0U),
                                nullptr);
        const QString directory = QStringLiteral(LEXIQUILL_BUILD_TREE "/tests/screenshots");
        const bool isSaved = reply != nullptr && QDir().mkpath(directory) &&
                             QImage(xcb_get_image_data(reply), screen->width_in_pixels,
                                    screen->height_in_pixels, QImage::Format_RGB32)
                                 .save(directory + u'/' + name + QStringLiteral(".png"));
        std::free(reply);
        xcb_disconnect(connection);
        return isSaved;
    }

    Home home;
    std::unique_ptr<QProcess> application;

private:
    // A key that is held for long because the machine is busy must not repeat.
    XServer m_x{{}, QStringLiteral("-r")};
    std::unique_ptr<QProcess> m_windowManager;
    QProcess m_bus;
    std::optional<AccessibleTree> m_tree;
};

} // namespace lexiquill
