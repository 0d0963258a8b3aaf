#pragma once

#include <QStringView>

#include <span>

namespace lexiquill {

/// A key that a shortcut can name.
struct VirtualKey {
    quint32 code;         ///< virtual key code, by the key's place on an ANSI keyboard
    QStringView name;     ///< as shown to the user
    quint32 keysym;       ///< the symbol that X11 and Wayland layouts put on the key
    const char *position; ///< the XKB name of the place that the code stands for
};

/// All keys, in the order in which a list shows them.
std::span<const VirtualKey> virtualKeys();

/// Null when no key has this code.
const VirtualKey *findVirtualKey(quint32 code);

} // namespace lexiquill
