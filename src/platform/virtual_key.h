#pragma once

#include <QStringView>

#include <span>

namespace lexiquill {

/// A key that can be used in a shortcut.
struct VirtualKey {
    quint32 code;         ///< virtual key code, given by the key's position on an ANSI keyboard
    quint32 keysym;       ///< the key's symbol in X11 and Wayland layouts
    QStringView name;     ///< as shown to the user
    const char *position; ///< the XKB name of the key's position
};

/// All keys, in the order in which lists show them.
std::span<const VirtualKey> virtualKeys();

/// Null when no key has this code.
const VirtualKey *findVirtualKey(quint32 code);

} // namespace lexiquill
