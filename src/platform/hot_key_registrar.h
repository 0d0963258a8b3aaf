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
inline constexpr qint32 connectionLost = -3; ///< the service that held the registration has gone
inline constexpr qint32 refused = -4;        ///< the user refused
inline constexpr qint32 timedOut = -5;       ///< no answer yet; a late one is still reported
inline constexpr qint32 serviceError = -6;   ///< the desktop's service answered with an error
} // namespace HotKeyStatus

/// One press of the hotkey, with the data that allows a window to take the focus.
struct HotKeyPress {
    quint64 timestamp = 0;   ///< time of the key event, in the display server's milliseconds; 0 if unknown
    QString activationToken; ///< Wayland's token for the activation; empty without one

    friend bool operator==(const HotKeyPress &, const HotKeyPress &) = default;
};

/// The operating system's service for a system-wide hotkey; one hotkey at a time. Everything happens on the
/// thread that created it. No function, including the destructor, waits for the user or for a decision of
/// another program.
class HotKeyRegistrar {
public:
    using PressHandler = std::function<void(const HotKeyPress &)>;
    using StatusHandler = std::function<void(qint32)>;

    virtual ~HotKeyRegistrar() = default;

    /// Sets the function that is called once per key press, even if the key is held down. Returns
    /// `HotKeyStatus::ok`, or the reason of a failure; then nothing is installed.
    virtual qint32 installHandler(PressHandler handler) = 0;

    /// Registers a combination instead of the previous one. `report` gets the outcome, at once or later, and
    /// again whenever it changes: with another keyboard layout, or when the service goes away or returns. It
    /// must not call the registrar.
    virtual void registerHotKey(quint32 keyCode, quint32 carbonModifiers, StatusHandler report) = 0;

    /// Whether the combination could be registered now; nothing stays registered. False where that cannot be
    /// known without asking the user.
    virtual bool isFree(quint32, quint32) { return false; }

    /// Releases the combination; its outcome and its presses are not reported any more.
    virtual void unregisterHotKey() = 0;
};

/// The registrar that fits the user's session; never null.
std::unique_ptr<HotKeyRegistrar> makeHotKeyRegistrar();

} // namespace lexiquill
