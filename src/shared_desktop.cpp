// The process-wide instances that only the desktop face has.

#include "hotkey/hot_key_manager.h"

namespace lexiquill {

HotKeyManager &HotKeyManager::shared() {
    static auto *const registrar = makeHotKeyRegistrar().release();
    static auto *const instance = new HotKeyManager(*registrar, UserDefaults::shared());
    return *instance;
}

} // namespace lexiquill
