#pragma once

#include <QString>

#include <functional>
#include <memory>

namespace lexiquill {

/// The bits of a shortcut's modifier mask.
namespace CarbonModifier {
inline constexpr quint32 command = 0x100; ///< the Super key on Linux
inline constexpr quint32 shift = 0x200;
inline constexpr quint32 option = 0x800; ///< the Alt key on Linux
inline constexpr quint32 control = 0x1000;
} // namespace CarbonModifier

/// Outcomes of a registration. A positive number is an error number of the X server.
namespace HotKeyStatus {
inline constexpr qint32 ok = 0;
inline constexpr qint32 unavailable = -1;    ///< nothing here can register a hotkey
inline constexpr qint32 keyMissing = -2;     ///< the keyboard has no such key or modifier
inline constexpr qint32 connectionLost = -3; ///< what held the registration has gone away
inline constexpr qint32 refused = -4;        ///< the user said no
inline constexpr qint32 timedOut = -5;       ///< no answer yet; a late one is still reported
inline constexpr qint32 serviceError = -6;   ///< the desktop's service answered with an error
} // namespace HotKeyStatus

/// One press of the hotkey, and what lets a window take the focus because of it.
struct HotKeyPress {
    quint64 timestamp = 0;   ///< time of the key event, in the display server's milliseconds; 0 if unknown
    QString activationToken; ///< Wayland's token for the activation; empty without one

    friend bool operator==(const HotKeyPress &, const HotKeyPress &) = default;
};

/// The operating system's service for a system-wide hotkey: one at a time. Everything happens on the thread
/// that made it; neither a call nor its destructor ever waits for a person or another program's decision.
class HotKeyRegistrar {
public:
    using PressHandler = std::function<void(const HotKeyPress &)>;
    using StatusHandler = std::function<void(qint32)>;

    virtual ~HotKeyRegistrar() = default;

    /// Sets what is called for each press: once per press, however long the key is held. Returns
    /// `HotKeyStatus::ok`, or why it failed; nothing is installed then.
    virtual qint32 installHandler(PressHandler handler) = 0;

    /// Registers a combination in place of the one before. `report` gets the outcome, at once or later, and
    /// again whenever it changes: with another keyboard layout, or when the service goes away or returns. It
    /// must not call the registrar.
    virtual void registerHotKey(quint32 keyCode, quint32 carbonModifiers, StatusHandler report) = 0;

    /// Gives the combination up; its outcome is no longer reported, nor its presses.
    virtual void unregisterHotKey() = 0;
};

/// The one that fits the user's session; never null.
std::unique_ptr<HotKeyRegistrar> makeHotKeyRegistrar();

} // namespace lexiquill
