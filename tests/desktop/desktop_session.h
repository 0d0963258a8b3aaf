#pragma once

#include "desktop/accessible_tree.h"
#include "e2e/program.h"
#include "hotkey/x_server.h"
#include "support/notification_service.h"

#include <QImage>

#include <optional>

namespace lexiquill {

/// A separate desktop with a home for the program: an X server, a window manager and a session bus. The
/// program is controlled from outside, by keys and calls.
class DesktopSession {
public:
    DesktopSession() {
        m_windowManager = m_x.start(u"openbox"_s);
        QProcessEnvironment &environment = home.environment;
        environment.insert(u"DISPLAY"_s, m_x.display());
        environment.insert(u"QT_QUICK_BACKEND"_s, u"software"_s);
        environment.insert(u"QT_LINUX_ACCESSIBILITY_ALWAYS_ON"_s, u"1"_s);
        environment.insert(u"LANG"_s, u"C.UTF-8"_s);
        environment.insert(u"XDG_RUNTIME_DIR"_s, home.path(u"run"_s));
        writeFile(home.path(u"services/program.service"_s),
                  u"[D-BUS Service]\nName=%1\nExec=\"%2\" --desktop-service\n"_s
                      .arg(serviceName, QStringLiteral(LEXIQUILL_PROGRAM))
                      .toUtf8());
        // The accessibility bus is one of the system's services.
        m_bus.emplace(environment, QStringList{home.path(u"services"_s), u"/usr/share/dbus-1/services"_s});
        environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, m_bus->address());
        m_tree.emplace(m_bus->address());
        setServer({});
    }
    ~DesktopSession() {
        m_tree.reset();
        for (QProcess *const process : {application.get(), m_windowManager.get()}) {
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
        home.setOnlineBase({}, u"dictionarySourceMode=appleOffline\nlexiquill_server_base=%1\n"_s.arg(base));
    }

    void stopBus() {
        m_tree.reset();
        m_bus->stop();
    }
    bool isRunning() const { return m_x.isRunning() && !m_bus->address().isEmpty(); }
    const AccessibleTree &tree() const { return *m_tree; }
    AccessibleTree &tree() { return *m_tree; }
    const SessionBus &bus() const { return *m_bus; }

    /// Calls a method of the program in the way of a desktop: the bus starts the program if it does not run,
    /// and the method is its first call.
    void send(const QString &interface, const QString &method, const QVariantList &arguments) const {
        QDBusMessage message =
            QDBusMessage::createMethodCall(serviceName, u"/com/lexiquill/Lexiquill"_s, interface, method);
        message.setArguments(arguments);
        QVERIFY(m_bus->connect(u"session"_s).send(message));
    }

    /// Starts the program and waits until its window has the focus.
    void startApplication() {
        application = home.start({});
        QTRY_VERIFY(isActive());
    }
    Outcome run(const QStringList &arguments = {},
                const QString &program = QStringLiteral(LEXIQUILL_PROGRAM)) const {
        return Home::finish(*home.start(arguments, program));
    }
    /// Calls the program's own method on the bus; `text` has the form that dbus-send expects.
    Outcome callLookup(const QString &text) const {
        return run({u"--session"_s, u"--print-reply"_s, u"--dest=com.lexiquill.Lexiquill"_s,
                    u"/com/lexiquill/Lexiquill"_s, u"com.lexiquill.Lexiquill.Lookup"_s, u"string:"_s + text},
                   u"dbus-send"_s);
    }

    QString xdotool(const QStringList &arguments) const { return run(arguments, u"xdotool"_s).output; }
    QStringList visibleWindows() const {
        return xdotool({u"search"_s, u"--onlyvisible"_s, u"--name"_s, u"^Lexiquill$"_s})
            .split(u'\n', Qt::SkipEmptyParts);
    }
    /// Whether the window is visible and has the focus.
    bool isActive() const {
        const QString window = visibleWindows().value(0);
        return !window.isEmpty() && xdotool({u"getactivewindow"_s}).trimmed() == window;
    }
    /// Presses keys one after the other. They are given by their names; "+" joins keys that are held down
    /// together.
    void press(const QString &keys) const { xdotool(QStringList(u"key"_s) + keys.split(u' ')); }
    void type(const QString &text) const { xdotool({u"type"_s, u"--delay"_s, u"20"_s, text}); }
    /// Another program's window takes the focus for a moment.
    void leaveAndComeBack() const {
        xcb_connection_t *const connection = xcb_connect(m_x.display().toLatin1().constData(), nullptr);
        const xcb_screen_t *const screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
        const xcb_window_t window = xcb_generate_id(connection);
        xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screen->root, 0, 0, 200, 100, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, 0, nullptr);
        xcb_map_window(connection, window);
        xcb_flush(connection);
        // The window manager would not give it the focus unasked.
        const QStringList activate{u"windowactivate"_s, QString::number(window)};
        QTRY_VERIFY((xdotool(activate), !isActive()));
        // The toolkit ignores a loss of the focus that is shorter.
        QTest::qWait(500);
        xcb_disconnect(connection); // destroys the window
        QTRY_VERIFY(isActive());
        // The keyboard moves a moment after the activation.
        QTest::qWait(300);
    }
    void closeWindow() const {
        QTRY_VERIFY(isActive());
        press(u"ctrl+w"_s);
        QTRY_VERIFY(visibleWindows().isEmpty());
    }

    /// A property of the program's window; empty if the window does not have it.
    QByteArray property(const char *name) const {
        xcb_connection_t *const connection = xcb_connect(m_x.display().toLatin1().constData(), nullptr);
        const auto window = static_cast<xcb_window_t>(visibleWindows().value(0).toULong());
        auto *const atom = xcb_intern_atom_reply(
            connection, xcb_intern_atom(connection, 1, static_cast<quint16>(qstrlen(name)), name), nullptr);
        auto *const reply = xcb_get_property_reply(
            connection,
            xcb_get_property(connection, 0, window, atom->atom, XCB_GET_PROPERTY_TYPE_ANY, 0, 100'000),
            nullptr);
        QByteArray value;
        if (reply != nullptr)
            value = QByteArray(static_cast<const char *>(xcb_get_property_value(reply)),
                               xcb_get_property_value_length(reply));
        std::free(reply);
        std::free(atom);
        xcb_disconnect(connection);
        return value;
    }

    /// Saves a picture of the screen in the build tree.
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
                                 .save(directory + u'/' + name + u".png"_s);
        std::free(reply);
        xcb_disconnect(connection);
        return isSaved;
    }

    inline static const QString serviceName = u"com.lexiquill.Lexiquill"_s;
    Home home;
    std::unique_ptr<QProcess> application;

private:
    // A key that is held for long because the machine is busy must not repeat.
    XServer m_x{{}, u"-r"_s};
    std::unique_ptr<QProcess> m_windowManager;
    std::optional<SessionBus> m_bus;
    std::optional<AccessibleTree> m_tree;
};

} // namespace lexiquill
