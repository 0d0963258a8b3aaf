#pragma once

#include "platform/virtual_key.h"

#include <QList>

#include <xcb/xcb.h>
#include <xkbcommon/xkbcommon.h>

#include <cstdlib>
#include <memory>
#include <optional>

namespace lexiquill {

/// Frees memory that XCB has allocated with malloc.
struct XcbDeleter {
    void operator()(void *memory) const { std::free(memory); }
};
template <typename T> using XcbPointer = std::unique_ptr<T, XcbDeleter>;

/// The keys and modifiers in the current keyboard layout of an X server.
class X11Keyboard {
public:
    /// Asks the server to report changes of the layout, and to send no release events while a key is held
    /// down. Null when the server has no XKB. The connection must outlive the result.
    static std::unique_ptr<X11Keyboard> open(xcb_connection_t *connection);

    /// Handles an event. True when it changes the layout; then call reload().
    bool takeEvent(const xcb_generic_event_t &event);
    /// Reads the layout. False when the server does not answer with a usable one; the previous one is kept.
    bool reload();

    /// The keys that produce the symbol in the active layout, or else in another one that the user can switch
    /// to, or else the key at the position that the code means. Empty when there is none.
    QList<xcb_keycode_t> keyCodes(const VirtualKey &key) const;
    /// The server's modifiers for bits of `CarbonModifier`; no value when the keyboard lacks one of them.
    std::optional<quint16> modifiers(quint32 carbonModifiers) const;
    /// Every combination of the locks (Caps Lock, Num Lock, Scroll Lock) that the keyboard has.
    const QList<quint16> &lockCombinations() const { return m_lockCombinations; }

private:
    template <auto unreference> struct Unreference {
        template <typename T> void operator()(T *object) const { unreference(object); }
    };
    using Context = std::unique_ptr<xkb_context, Unreference<xkb_context_unref>>;
    using Keymap = std::unique_ptr<xkb_keymap, Unreference<xkb_keymap_unref>>;
    using State = std::unique_ptr<xkb_state, Unreference<xkb_state_unref>>;

    explicit X11Keyboard(xcb_connection_t *connection) : m_connection(connection) {}
    void selectEvents() const;
    void readModifiers(const xcb_get_modifier_mapping_reply_t &mapping);
    bool hasSymbol(xcb_keycode_t code, std::initializer_list<xkb_keysym_t> symbols) const;
    int distance(xcb_keycode_t code, xkb_keysym_t symbol) const;

    xcb_connection_t *m_connection;
    quint8 m_firstEvent = 0;
    qint32 m_device = -1;
    Context m_context;
    Keymap m_keymap;
    xkb_layout_index_t m_activeLayout = 0;
    quint16 m_alt = 0;
    quint16 m_super = 0;
    QList<quint16> m_lockCombinations;
};

} // namespace lexiquill
