#include "platform/linux/desktop/portal_hot_key_registrar.h"
#include "platform/linux/desktop/x11_hot_key_registrar.h"

namespace lexiquill {

namespace {

/// For a session without a display server.
class NoHotKeyRegistrar final : public HotKeyRegistrar {
public:
    qint32 installHandler(PressHandler) override { return HotKeyStatus::unavailable; }
    void registerHotKey(quint32, quint32, StatusHandler report) override {
        report(HotKeyStatus::unavailable);
    }
    void unregisterHotKey() override {}
};

} // namespace

std::unique_ptr<HotKeyRegistrar> makeHotKeyRegistrar() {
    // Under Wayland the X server serves only X programs and does not see keys pressed in other programs.
    if (!qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        return std::make_unique<PortalHotKeyRegistrar>(QDBusConnection::sessionBus());
    if (!qEnvironmentVariableIsEmpty("DISPLAY"))
        return std::make_unique<X11HotKeyRegistrar>();
    return std::make_unique<NoHotKeyRegistrar>();
}

} // namespace lexiquill
