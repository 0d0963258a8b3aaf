#include "platform/window_activation.h"

#include <QGuiApplication>

#include <xcb/xcb.h>

#include <cstdlib>
#include <cstring>
#include <memory>

namespace lexiquill {

namespace {

constexpr const char *tokenVariable = "XDG_ACTIVATION_TOKEN";
const QString timeMark = QStringLiteral("_TIME");

bool isWayland() {
    return QGuiApplication::platformName().startsWith(QLatin1StringView("wayland"));
}

/// The time of the user's action, which is part of the start-up id; 0 if it has none.
quint32 timeOf(const QString &startupId) {
    const qsizetype position = startupId.lastIndexOf(timeMark);
    return position < 0 ? 0 : startupId.mid(position + timeMark.size()).toUInt();
}

xcb_atom_t atom(xcb_connection_t *connection, const char *name) {
    const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
        xcb_intern_atom_reply(connection,
                              xcb_intern_atom(connection, 0, static_cast<quint16>(std::strlen(name)), name),
                              nullptr),
        &std::free);
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

xcb_window_t rootOf(xcb_connection_t *connection) {
    return xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
}

/// Tells the desktop that the start has finished, so that it stops showing the start. The text is sent in
/// pieces.
void endStartUp(xcb_connection_t *connection, quint32 window, QString startupId) {
    startupId.replace(u'\\', QStringLiteral("\\\\")).replace(u'"', QStringLiteral("\\\""));
    QByteArray message = QByteArrayLiteral("remove: ID=\"") + startupId.toUtf8() + QByteArrayLiteral("\"");
    message += '\0';
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 8;
    event.window = window;
    event.type = atom(connection, "_NET_STARTUP_INFO_BEGIN");
    constexpr qsizetype pieceSize = sizeof(event.data.data8);
    for (qsizetype start = 0; start < message.size(); start += pieceSize) {
        const QByteArray piece = message.mid(start, pieceSize).leftJustified(pieceSize, '\0');
        std::memcpy(event.data.data8, piece.constData(), pieceSize);
        xcb_send_event(connection, 0, rootOf(connection), XCB_EVENT_MASK_PROPERTY_CHANGE,
                       reinterpret_cast<const char *>(&event));
        event.type = atom(connection, "_NET_STARTUP_INFO");
    }
    xcb_flush(connection);
}

/// Asks the window manager on behalf of the user, because it may refuse a request from the program itself.
void activateX11Window(xcb_connection_t *connection, quint32 window, quint32 timestamp) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = atom(connection, "_NET_ACTIVE_WINDOW");
    constexpr quint32 sourceUser = 2;
    event.data.data32[0] = sourceUser;
    event.data.data32[1] = timestamp;
    xcb_send_event(connection, 0, rootOf(connection),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char *>(&event));
    xcb_flush(connection);
}

void bringForwardByToken(QWindow *window, const QString &token, bool isNew) {
    // A compositor refuses the focus to a visible window without a token, but not to a new one.
    if (token.isEmpty() && isWayland() && !isNew && !window->isActive()) {
        window->hide();
        window->show();
    }
    // The Wayland backend reads the token from the environment when it requests the activation.
    if (!token.isEmpty())
        qputenv(tokenVariable, token.toUtf8());
    window->raise();
    window->requestActivate();
    qunsetenv(tokenVariable);
}

} // namespace

QString waylandToken(const ActivationTokens &tokens) {
    if (!tokens.activationToken.isEmpty())
        return tokens.activationToken;
    return tokens.startupId.startsWith(timeMark) ? QString() : tokens.startupId;
}

void offerTokens(const ActivationTokens &tokens) {
    if (isWayland() && qEnvironmentVariableIsEmpty(tokenVariable))
        qputenv(tokenVariable, waylandToken(tokens).toUtf8());
}

void bringForward(QWindow *window, const ActivationTokens &tokens, quint64 timestamp, bool isNew) {
    auto *const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr)
        return bringForwardByToken(window, waylandToken(tokens), isNew);
    window->raise();
    window->requestActivate();
    const auto id = static_cast<quint32>(window->winId());
    activateX11Window(x11->connection(), id,
                      timestamp != 0 ? static_cast<quint32>(timestamp) : timeOf(tokens.startupId));
    if (!tokens.startupId.isEmpty())
        endStartUp(x11->connection(), id, tokens.startupId);
}

bool isSelectionForFocusOnly() {
    return isWayland();
}

} // namespace lexiquill
