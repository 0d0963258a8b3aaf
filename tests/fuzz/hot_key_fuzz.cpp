#include "check.h"
#include "hotkey/hot_key_shortcut.h"

#include <cstddef>
#include <cstdint>

using namespace lexiquill;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const QByteArray json(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const auto shortcut = decodeHotKeyShortcut(json);
    // A value that has been read once does not change when it is written and read again.
    check(!shortcut || decodeHotKeyShortcut(encodeHotKeyShortcut(*shortcut)) == shortcut);
    return 0;
}
