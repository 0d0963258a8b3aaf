#include "platform/window_activation.h"

#include <QGuiApplication>

#include <xcb/xcb.h>

#include <cstdlib>
#include <cstring>
#include <memory>

namespace lexiquill {

namespace {

/// The time of the user's action that is part of the identifier; 0 without one.
quint32 timeOf(const QString &startupId) {
    static const QString mark = QStringLiteral("_TIME");
    const qsizetype position = startupId.lastIndexOf(mark);
    return position < 0 ? 0 : startupId.mid(position + mark.size()).toUInt();
}

xcb_atom_t atom(xcb_connection_t *connection, const char *name) {
    const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
        xcb_intern_atom_reply(connection,
                              xcb_intern_atom(connection, 0, static_cast<quint16>(std::strlen(name)), name),
                              nullptr),
        &std::free);
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

/// Asks the window manager in the name of the user: it may refuse a program of its own accord.
void activateX11Window(xcb_connection_t *connection, quint32 window, quint32 timestamp) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = atom(connection, "_NET_ACTIVE_WINDOW");
    constexpr quint32 sourceUser = 2;
    event.data.data32[0] = sourceUser;
    event.data.data32[1] = timestamp;
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    xcb_send_event(connection, 0, root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char *>(&event));
    xcb_flush(connection);
}

} // namespace

void bringForward(QWindow *window, const ActivationTokens &tokens, quint64 timestamp) {
    // The Wayland backend takes the token from there when it asks for the activation.
    if (!tokens.activationToken.isEmpty())
        qputenv("XDG_ACTIVATION_TOKEN", tokens.activationToken.toUtf8());
    window->raise();
    window->requestActivate();
    if (auto *const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>())
        activateX11Window(x11->connection(), static_cast<quint32>(window->winId()),
                          timestamp != 0 ? static_cast<quint32>(timestamp) : timeOf(tokens.startupId));
    else
        qunsetenv("XDG_ACTIVATION_TOKEN");
}

} // namespace lexiquill
