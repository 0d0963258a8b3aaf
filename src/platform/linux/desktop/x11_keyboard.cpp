#include "platform/linux/desktop/x11_keyboard.h"

#include "platform/hot_key_registrar.h"
#include "platform/linux/desktop/xcb_xkb.h"

#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon-x11.h>

#include <algorithm>
#include <limits>

namespace lexiquill {

namespace {

constexpr int modifierCount = 8;
constexpr int firstNumberedModifier = 3; // after Shift, Lock and Control
constexpr int unreachable = std::numeric_limits<int>::max();

quint8 typeOf(const xcb_generic_event_t &event) {
    return event.response_type & 0x7f;
}

} // namespace

std::unique_ptr<X11Keyboard> X11Keyboard::open(xcb_connection_t *connection) {
    std::unique_ptr<X11Keyboard> keyboard(new X11Keyboard(connection));
    if (!xkb_x11_setup_xkb_extension(connection, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
                                     XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr,
                                     &keyboard->m_firstEvent, nullptr))
        return nullptr;
    keyboard->m_context.reset(xkb_context_new(XKB_CONTEXT_NO_FLAGS));
    keyboard->m_device = xkb_x11_get_core_keyboard_device_id(connection);
    if (!keyboard->m_context || keyboard->m_device < 0)
        return nullptr;
    keyboard->selectEvents();
    return keyboard->reload() ? std::move(keyboard) : nullptr;
}

void X11Keyboard::selectEvents() const {
    constexpr quint16 events = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY |
                               XCB_XKB_EVENT_TYPE_STATE_NOTIFY;
    constexpr quint16 mapParts = XCB_XKB_MAP_PART_KEY_TYPES | XCB_XKB_MAP_PART_KEY_SYMS |
                                 XCB_XKB_MAP_PART_MODIFIER_MAP | XCB_XKB_MAP_PART_VIRTUAL_MODS |
                                 XCB_XKB_MAP_PART_VIRTUAL_MOD_MAP;
    constexpr quint16 keyboardParts = XCB_XKB_NKN_DETAIL_KEYCODES | XCB_XKB_NKN_DETAIL_DEVICE_ID;
    xcb_xkb_select_events_details_t details{};
    details.affectNewKeyboard = keyboardParts;
    details.newKeyboardDetails = keyboardParts;
    details.affectState = XCB_XKB_STATE_PART_GROUP_STATE;
    details.stateDetails = XCB_XKB_STATE_PART_GROUP_STATE;
    const auto device = static_cast<xcb_xkb_device_spec_t>(m_device);
    xcb_xkb_select_events_aux(m_connection, device, events, 0, 0, mapParts, mapParts, &details);

    constexpr quint32 detectableRepeat = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    const auto cookie =
        xcb_xkb_per_client_flags(m_connection, device, detectableRepeat, detectableRepeat, 0, 0, 0);
    xcb_discard_reply(m_connection, cookie.sequence);
}

bool X11Keyboard::takeEvent(const xcb_generic_event_t &event) {
    if (typeOf(event) == XCB_MAPPING_NOTIFY)
        return reinterpret_cast<const xcb_mapping_notify_event_t &>(event).request != XCB_MAPPING_POINTER;
    // All events of the extension have the same type; the next byte is the kind.
    return typeOf(event) == m_firstEvent &&
           (event.pad0 == XCB_XKB_NEW_KEYBOARD_NOTIFY || event.pad0 == XCB_XKB_MAP_NOTIFY ||
            event.pad0 == XCB_XKB_STATE_NOTIFY);
}

bool X11Keyboard::reload() {
    const auto cookie = xcb_get_modifier_mapping(m_connection);
    Keymap keymap(
        xkb_x11_keymap_new_from_device(m_context.get(), m_connection, m_device, XKB_KEYMAP_COMPILE_NO_FLAGS));
    const State state(keymap ? xkb_x11_state_new_from_device(keymap.get(), m_connection, m_device) : nullptr);
    const XcbPointer<xcb_get_modifier_mapping_reply_t> mapping(
        xcb_get_modifier_mapping_reply(m_connection, cookie, nullptr));
    if (!state || !mapping)
        return false;
    m_keymap = std::move(keymap);
    m_activeLayout = xkb_state_serialize_layout(state.get(), XKB_STATE_LAYOUT_EFFECTIVE);
    readModifiers(*mapping);
    return true;
}

void X11Keyboard::readModifiers(const xcb_get_modifier_mapping_reply_t &mapping) {
    m_alt = 0;
    m_super = 0;
    quint16 numLock = 0;
    quint16 scrollLock = 0;
    const xcb_keycode_t *const codes = xcb_get_modifier_mapping_keycodes(&mapping);
    for (int modifier = firstNumberedModifier; modifier < modifierCount; ++modifier) {
        const auto bit = static_cast<quint16>(1 << modifier);
        for (int i = 0; i < mapping.keycodes_per_modifier; ++i) {
            const xcb_keycode_t code = codes[modifier * mapping.keycodes_per_modifier + i];
            if (m_alt == 0 && hasSymbol(code, {XKB_KEY_Alt_L, XKB_KEY_Alt_R}))
                m_alt = bit;
            if (m_super == 0 && hasSymbol(code, {XKB_KEY_Super_L, XKB_KEY_Super_R}))
                m_super = bit;
            if (hasSymbol(code, {XKB_KEY_Num_Lock}))
                numLock = bit;
            if (hasSymbol(code, {XKB_KEY_Scroll_Lock}))
                scrollLock = bit;
        }
    }
    m_lockCombinations = {0};
    for (const quint16 lock : {quint16{XCB_MOD_MASK_LOCK}, numLock, scrollLock}) {
        // A lock that shares its modifier bit with Alt or Super cannot be distinguished from that key.
        if (lock == 0 || lock == m_alt || lock == m_super || m_lockCombinations.contains(lock))
            continue;
        const QList<quint16> without = m_lockCombinations;
        for (const quint16 combination : without)
            m_lockCombinations += combination | lock;
    }
}

bool X11Keyboard::hasSymbol(xcb_keycode_t code, std::initializer_list<xkb_keysym_t> symbols) const {
    return std::ranges::any_of(symbols,
                               [&](xkb_keysym_t symbol) { return distance(code, symbol) != unreachable; });
}

/// How directly a key produces the symbol: 0 when pressed alone, 1 with Shift or a similar key, 2 and 3 the
/// same in another layout.
int X11Keyboard::distance(xcb_keycode_t code, xkb_keysym_t symbol) const {
    int shortest = unreachable;
    const xkb_layout_index_t layouts = xkb_keymap_num_layouts_for_key(m_keymap.get(), code);
    for (xkb_layout_index_t layout = 0; layout < layouts; ++layout) {
        const xkb_level_index_t levels = xkb_keymap_num_levels_for_key(m_keymap.get(), code, layout);
        for (xkb_level_index_t level = 0; level < levels; ++level) {
            const xkb_keysym_t *found = nullptr;
            const int count = xkb_keymap_key_get_syms_by_level(m_keymap.get(), code, layout, level, &found);
            if (count == 1 && *found == symbol)
                shortest =
                    std::min(shortest, (layout == m_activeLayout % layouts ? 0 : 2) + (level > 0 ? 1 : 0));
        }
    }
    return shortest;
}

QList<xcb_keycode_t> X11Keyboard::keyCodes(const VirtualKey &key) const {
    QList<xcb_keycode_t> nearest;
    int shortest = unreachable;
    const auto last = std::min<xkb_keycode_t>(xkb_keymap_max_keycode(m_keymap.get()), 255);
    for (xkb_keycode_t code = xkb_keymap_min_keycode(m_keymap.get()); code <= last; ++code) {
        const int current = distance(static_cast<xcb_keycode_t>(code), key.keysym);
        if (current < shortest)
            nearest.clear();
        if (current != unreachable && current <= shortest)
            nearest += static_cast<xcb_keycode_t>(code);
        shortest = std::min(shortest, current);
    }
    if (nearest.isEmpty()) {
        const xkb_keycode_t code = xkb_keymap_key_by_name(m_keymap.get(), key.position);
        if (code != XKB_KEYCODE_INVALID && code <= last)
            nearest += static_cast<xcb_keycode_t>(code);
    }
    return nearest;
}

std::optional<quint16> X11Keyboard::modifiers(quint32 carbonModifiers) const {
    const struct {
        quint32 carbon;
        quint16 x11;
    } pairs[] = {{CarbonModifier::command, m_super},
                 {CarbonModifier::option, m_alt},
                 {CarbonModifier::control, XCB_MOD_MASK_CONTROL},
                 {CarbonModifier::shift, XCB_MOD_MASK_SHIFT}};
    quint16 mask = 0;
    for (const auto &pair : pairs) {
        if ((carbonModifiers & pair.carbon) == 0)
            continue;
        if (pair.x11 == 0)
            return std::nullopt;
        mask |= pair.x11;
    }
    return mask;
}

} // namespace lexiquill
