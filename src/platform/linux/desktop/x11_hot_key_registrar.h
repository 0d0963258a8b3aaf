#pragma once

#include "platform/hot_key_registrar.h"
#include "platform/linux/desktop/x11_keyboard.h"

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

#include <memory>
#include <optional>

namespace lexiquill {

/// A hotkey that uses key grabs on the root windows of an X server, over its own connection. A failure has
/// the server's error number, such as 10 (BadAccess) for a combination that another program has grabbed.
class X11HotKeyRegistrar final : public QObject, public HotKeyRegistrar {
public:
    /// `display`: the server in the format of $DISPLAY; empty means $DISPLAY itself.
    explicit X11HotKeyRegistrar(QByteArray display = {});
    ~X11HotKeyRegistrar() override;

    qint32 installHandler(PressHandler handler) override;
    void registerHotKey(quint32 keyCode, quint32 carbonModifiers, StatusHandler report) override;
    bool isFree(quint32 keyCode, quint32 carbonModifiers) override;
    void unregisterHotKey() override;

private:
    struct Combination {
        quint32 keyCode;
        quint32 carbonModifiers;
        StatusHandler report;
    };
    /// A key with a state of the modifiers.
    struct Grab {
        xcb_keycode_t key;
        quint16 modifiers;

        friend bool operator==(const Grab &, const Grab &) = default;
    };

    bool connectToServer();
    void loseConnection();
    bool isConnectionBroken() const;
    void processEvents();
    void processEvent(const xcb_generic_event_t &event);
    void takeUpLayout();
    qint32 grab();
    /// Grabs all of them, or none and returns the server's error number.
    qint32 grab(const QList<Grab> &grabs);
    void ungrab();
    void ungrab(const QList<Grab> &grabs);
    QList<Grab> neededGrabs(quint32 keyCode, quint32 carbonModifiers) const;

    QByteArray m_display;
    PressHandler m_handler;
    xcb_connection_t *m_connection = nullptr;
    std::unique_ptr<X11Keyboard> m_keyboard;
    QList<xcb_window_t> m_roots;
    QSocketNotifier *m_notifier = nullptr;
    QTimer m_soon; ///< for events that have been read already
    std::optional<Combination> m_combination;
    QList<Grab> m_grabs; ///< all active grabs; empty when the last attempt failed
    QList<xcb_keycode_t> m_heldKeys;
    bool m_hasLayoutChanged = false;
};

} // namespace lexiquill
