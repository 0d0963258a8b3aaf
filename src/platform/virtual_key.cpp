#include "platform/virtual_key.h"

#include <algorithm>

namespace lexiquill {

namespace {

constexpr VirtualKey keys[] = {
    {0, 0x61, u"A", "AC01"},
    {11, 0x62, u"B", "AB05"},
    {8, 0x63, u"C", "AB03"},
    {2, 0x64, u"D", "AC03"},
    {14, 0x65, u"E", "AD03"},
    {3, 0x66, u"F", "AC04"},
    {5, 0x67, u"G", "AC05"},
    {4, 0x68, u"H", "AC06"},
    {34, 0x69, u"I", "AD08"},
    {38, 0x6a, u"J", "AC07"},
    {40, 0x6b, u"K", "AC08"},
    {37, 0x6c, u"L", "AC09"},
    {46, 0x6d, u"M", "AB07"},
    {45, 0x6e, u"N", "AB06"},
    {31, 0x6f, u"O", "AD09"},
    {35, 0x70, u"P", "AD10"},
    {12, 0x71, u"Q", "AD01"},
    {15, 0x72, u"R", "AD04"},
    {1, 0x73, u"S", "AC02"},
    {17, 0x74, u"T", "AD05"},
    {32, 0x75, u"U", "AD07"},
    {9, 0x76, u"V", "AB04"},
    {13, 0x77, u"W", "AD02"},
    {7, 0x78, u"X", "AB02"},
    {16, 0x79, u"Y", "AD06"},
    {6, 0x7a, u"Z", "AB01"},
    {29, 0x30, u"0", "AE10"},
    {18, 0x31, u"1", "AE01"},
    {19, 0x32, u"2", "AE02"},
    {20, 0x33, u"3", "AE03"},
    {21, 0x34, u"4", "AE04"},
    {23, 0x35, u"5", "AE05"},
    {22, 0x36, u"6", "AE06"},
    {26, 0x37, u"7", "AE07"},
    {28, 0x38, u"8", "AE08"},
    {25, 0x39, u"9", "AE09"},
    {122, 0xffbe, u"F1", "FK01"},
    {120, 0xffbf, u"F2", "FK02"},
    {99, 0xffc0, u"F3", "FK03"},
    {118, 0xffc1, u"F4", "FK04"},
    {96, 0xffc2, u"F5", "FK05"},
    {97, 0xffc3, u"F6", "FK06"},
    {98, 0xffc4, u"F7", "FK07"},
    {100, 0xffc5, u"F8", "FK08"},
    {101, 0xffc6, u"F9", "FK09"},
    {109, 0xffc7, u"F10", "FK10"},
    {103, 0xffc8, u"F11", "FK11"},
    {111, 0xffc9, u"F12", "FK12"},
    {49, 0x20, u"Space", "SPCE"},
    {36, 0xff0d, u"Return", "RTRN"},
    {48, 0xff09, u"Tab", "TAB"},
    {51, 0xff08, u"Delete", "BKSP"},
    {117, 0xffff, u"Forward Delete", "DELE"},
    {53, 0xff1b, u"Esc", "ESC"},
    {123, 0xff51, u"←", "LEFT"},
    {124, 0xff53, u"→", "RGHT"},
    {126, 0xff52, u"↑", "UP"},
    {125, 0xff54, u"↓", "DOWN"},
    {115, 0xff50, u"Home", "HOME"},
    {119, 0xff57, u"End", "END"},
    {116, 0xff55, u"Page Up", "PGUP"},
    {121, 0xff56, u"Page Down", "PGDN"},
    {27, 0x2d, u"-", "AE11"},
    {24, 0x3d, u"=", "AE12"},
    {33, 0x5b, u"[", "AD11"},
    {30, 0x5d, u"]", "AD12"},
    {42, 0x5c, u"\\", "BKSL"},
    {41, 0x3b, u";", "AC10"},
    {39, 0x27, u"'", "AC11"},
    {43, 0x2c, u",", "AB08"},
    {47, 0x2e, u".", "AB09"},
    {44, 0x2f, u"/", "AB10"},
    {50, 0x60, u"`", "TLDE"},
};

} // namespace

std::span<const VirtualKey> virtualKeys() {
    return keys;
}

const VirtualKey *findVirtualKey(quint32 code) {
    const auto *const key = std::ranges::find(keys, code, &VirtualKey::code);
    return key == std::end(keys) ? nullptr : key;
}

} // namespace lexiquill
