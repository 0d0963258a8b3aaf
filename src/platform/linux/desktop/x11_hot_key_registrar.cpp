#include "platform/linux/desktop/x11_hot_key_registrar.h"

#include <algorithm>

namespace lexiquill {

X11HotKeyRegistrar::X11HotKeyRegistrar(QByteArray display) : m_display(std::move(display)) {
    m_soon.setSingleShot(true);
    connect(&m_soon, &QTimer::timeout, this, &X11HotKeyRegistrar::processEvents);
}

X11HotKeyRegistrar::~X11HotKeyRegistrar() {
    m_combination.reset();
    ungrab();
    loseConnection();
}

qint32 X11HotKeyRegistrar::installHandler(PressHandler handler) {
    if (!connectToServer())
        return HotKeyStatus::unavailable;
    m_handler = std::move(handler);
    return HotKeyStatus::ok;
}

void X11HotKeyRegistrar::registerHotKey(quint32 keyCode, quint32 carbonModifiers, StatusHandler report) {
    ungrab();
    m_combination = Combination{keyCode, carbonModifiers, std::move(report)};
    const StatusHandler handler = m_combination->report;
    handler(grab());
}

bool X11HotKeyRegistrar::isFree(quint32 keyCode, quint32 carbonModifiers) {
    if (!connectToServer())
        return false;
    const QList<Grab> grabs = neededGrabs(keyCode, carbonModifiers);
    const bool isOwn =
        std::ranges::any_of(grabs, [this](const Grab &each) { return m_grabs.contains(each); });
    if (grabs.isEmpty() || isOwn || grab(grabs) != HotKeyStatus::ok)
        return false;
    ungrab(grabs);
    return true;
}

void X11HotKeyRegistrar::unregisterHotKey() {
    m_combination.reset();
    ungrab();
}

bool X11HotKeyRegistrar::connectToServer() {
    if (m_connection && isConnectionBroken())
        loseConnection();
    if (m_connection)
        return true;
    m_connection = xcb_connect(m_display.isEmpty() ? nullptr : m_display.constData(), nullptr);
    if (!isConnectionBroken())
        m_keyboard = X11Keyboard::open(m_connection);
    if (!m_keyboard) {
        loseConnection();
        return false;
    }
    const xcb_setup_t *const setup = xcb_get_setup(m_connection);
    for (auto screen = xcb_setup_roots_iterator(setup); screen.rem > 0; xcb_screen_next(&screen))
        m_roots += screen.data->root;
    m_notifier = new QSocketNotifier(xcb_get_file_descriptor(m_connection), QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &X11HotKeyRegistrar::processEvents);
    return true;
}

void X11HotKeyRegistrar::loseConnection() {
    m_keyboard.reset();
    m_roots.clear();
    m_grabs.clear();
    m_heldKeys.clear();
    m_hasLayoutChanged = false;
    if (m_notifier) {
        // The notifier's own signal may have called this function.
        m_notifier->setEnabled(false);
        m_notifier->deleteLater();
        m_notifier = nullptr;
    }
    xcb_disconnect(m_connection);
    m_connection = nullptr;
}

bool X11HotKeyRegistrar::isConnectionBroken() const {
    return xcb_connection_has_error(m_connection) != 0;
}

void X11HotKeyRegistrar::processEvents() {
    while (m_connection) {
        const XcbPointer<xcb_generic_event_t> event(xcb_poll_for_event(m_connection));
        if (event)
            processEvent(*event);
        else if (m_hasLayoutChanged && !isConnectionBroken())
            takeUpLayout();
        else
            break;
    }
    if (!m_connection || !isConnectionBroken())
        return;
    loseConnection();
    if (m_combination) {
        const StatusHandler report = m_combination->report;
        report(HotKeyStatus::connectionLost);
    }
}

void X11HotKeyRegistrar::processEvent(const xcb_generic_event_t &event) {
    const int type = event.response_type & 0x7f;
    if (type == XCB_KEY_PRESS) {
        const auto &press = reinterpret_cast<const xcb_key_press_event_t &>(event);
        // A key that is held repeats its press.
        if (m_heldKeys.contains(press.detail))
            return;
        m_heldKeys += press.detail;
        if (std::ranges::find(m_grabs, press.detail, &Grab::key) != m_grabs.cend() && m_handler)
            m_handler({.timestamp = press.time, .activationToken = {}});
    } else if (type == XCB_KEY_RELEASE) {
        m_heldKeys.removeAll(reinterpret_cast<const xcb_key_release_event_t &>(event).detail);
    } else if (m_keyboard->takeEvent(event)) {
        m_hasLayoutChanged = true;
    }
}

void X11HotKeyRegistrar::takeUpLayout() {
    m_hasLayoutChanged = false;
    if (!m_keyboard->reload() || !m_combination)
        return;
    // Most changes, such as another keyboard of the same layout, do not move the keys.
    if (!m_grabs.isEmpty() && m_grabs == neededGrabs(m_combination->keyCode, m_combination->carbonModifiers))
        return;
    ungrab();
    const StatusHandler report = m_combination->report;
    report(grab());
}

QList<X11HotKeyRegistrar::Grab> X11HotKeyRegistrar::neededGrabs(quint32 keyCode,
                                                                quint32 carbonModifiers) const {
    const VirtualKey *const key = findVirtualKey(keyCode);
    const auto modifiers = m_keyboard->modifiers(carbonModifiers);
    if (!key || !modifiers)
        return {};
    QList<Grab> grabs;
    for (const xcb_keycode_t code : m_keyboard->keyCodes(*key)) {
        for (const quint16 locks : m_keyboard->lockCombinations())
            grabs += {code, static_cast<quint16>(*modifiers | locks)};
    }
    return grabs;
}

qint32 X11HotKeyRegistrar::grab() {
    if (!m_handler || !connectToServer())
        return HotKeyStatus::unavailable;
    const QList<Grab> grabs = neededGrabs(m_combination->keyCode, m_combination->carbonModifiers);
    if (grabs.isEmpty())
        return HotKeyStatus::keyMissing;
    const qint32 status = grab(grabs);
    if (status == HotKeyStatus::ok)
        m_grabs = grabs;
    return status;
}

qint32 X11HotKeyRegistrar::grab(const QList<Grab> &grabs) {
    QList<xcb_void_cookie_t> cookies;
    for (const xcb_window_t root : std::as_const(m_roots)) {
        for (const Grab &each : grabs)
            cookies += xcb_grab_key_checked(m_connection, 0, root, each.modifiers, each.key,
                                            XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    }
    qint32 status = HotKeyStatus::ok;
    for (const xcb_void_cookie_t cookie : std::as_const(cookies)) {
        const XcbPointer<xcb_generic_error_t> error(xcb_request_check(m_connection, cookie));
        if (error && status == HotKeyStatus::ok)
            status = error->error_code;
    }
    if (isConnectionBroken()) {
        loseConnection();
        return HotKeyStatus::connectionLost;
    }
    if (status != HotKeyStatus::ok)
        ungrab(grabs);
    // Events that arrived with the answers are already in memory, where the notifier does not see them.
    m_soon.start();
    return status;
}

void X11HotKeyRegistrar::ungrab() {
    if (m_connection && !m_grabs.isEmpty())
        ungrab(m_grabs);
    m_grabs.clear();
}

void X11HotKeyRegistrar::ungrab(const QList<Grab> &grabs) {
    for (const xcb_window_t root : std::as_const(m_roots)) {
        for (const Grab &each : grabs)
            xcb_ungrab_key(m_connection, each.key, root, each.modifiers);
    }
    // When this answer arrives, the server has released the keys for other programs.
    const auto cookie = xcb_get_input_focus(m_connection);
    const XcbPointer<xcb_get_input_focus_reply_t> done(
        xcb_get_input_focus_reply(m_connection, cookie, nullptr));
    m_soon.start();
}

} // namespace lexiquill
