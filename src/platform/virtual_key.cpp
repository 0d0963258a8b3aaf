#include "platform/virtual_key.h"

#include <algorithm>

namespace lexiquill {

namespace {

constexpr VirtualKey keys[] = {
    {0, u"A", 0x61, "AC01"},
    {11, u"B", 0x62, "AB05"},
    {8, u"C", 0x63, "AB03"},
    {2, u"D", 0x64, "AC03"},
    {14, u"E", 0x65, "AD03"},
    {3, u"F", 0x66, "AC04"},
    {5, u"G", 0x67, "AC05"},
    {4, u"H", 0x68, "AC06"},
    {34, u"I", 0x69, "AD08"},
    {38, u"J", 0x6a, "AC07"},
    {40, u"K", 0x6b, "AC08"},
    {37, u"L", 0x6c, "AC09"},
    {46, u"M", 0x6d, "AB07"},
    {45, u"N", 0x6e, "AB06"},
    {31, u"O", 0x6f, "AD09"},
    {35, u"P", 0x70, "AD10"},
    {12, u"Q", 0x71, "AD01"},
    {15, u"R", 0x72, "AD04"},
    {1, u"S", 0x73, "AC02"},
    {17, u"T", 0x74, "AD05"},
    {32, u"U", 0x75, "AD07"},
    {9, u"V", 0x76, "AB04"},
    {13, u"W", 0x77, "AD02"},
    {7, u"X", 0x78, "AB02"},
    {16, u"Y", 0x79, "AD06"},
    {6, u"Z", 0x7a, "AB01"},
    {29, u"0", 0x30, "AE10"},
    {18, u"1", 0x31, "AE01"},
    {19, u"2", 0x32, "AE02"},
    {20, u"3", 0x33, "AE03"},
    {21, u"4", 0x34, "AE04"},
    {23, u"5", 0x35, "AE05"},
    {22, u"6", 0x36, "AE06"},
    {26, u"7", 0x37, "AE07"},
    {28, u"8", 0x38, "AE08"},
    {25, u"9", 0x39, "AE09"},
    {122, u"F1", 0xffbe, "FK01"},
    {120, u"F2", 0xffbf, "FK02"},
    {99, u"F3", 0xffc0, "FK03"},
    {118, u"F4", 0xffc1, "FK04"},
    {96, u"F5", 0xffc2, "FK05"},
    {97, u"F6", 0xffc3, "FK06"},
    {98, u"F7", 0xffc4, "FK07"},
    {100, u"F8", 0xffc5, "FK08"},
    {101, u"F9", 0xffc6, "FK09"},
    {109, u"F10", 0xffc7, "FK10"},
    {103, u"F11", 0xffc8, "FK11"},
    {111, u"F12", 0xffc9, "FK12"},
    {49, u"Space", 0x20, "SPCE"},
    {36, u"Return", 0xff0d, "RTRN"},
    {48, u"Tab", 0xff09, "TAB"},
    {51, u"Delete", 0xff08, "BKSP"},
    {117, u"Forward Delete", 0xffff, "DELE"},
    {53, u"Esc", 0xff1b, "ESC"},
    {123, u"←", 0xff51, "LEFT"},
    {124, u"→", 0xff53, "RGHT"},
    {126, u"↑", 0xff52, "UP"},
    {125, u"↓", 0xff54, "DOWN"},
    {115, u"Home", 0xff50, "HOME"},
    {119, u"End", 0xff57, "END"},
    {116, u"Page Up", 0xff55, "PGUP"},
    {121, u"Page Down", 0xff56, "PGDN"},
    {27, u"-", 0x2d, "AE11"},
    {24, u"=", 0x3d, "AE12"},
    {33, u"[", 0x5b, "AD11"},
    {30, u"]", 0x5d, "AD12"},
    {42, u"\\", 0x5c, "BKSL"},
    {41, u";", 0x3b, "AC10"},
    {39, u"'", 0x27, "AC11"},
    {43, u",", 0x2c, "AB08"},
    {47, u".", 0x2e, "AB09"},
    {44, u"/", 0x2f, "AB10"},
    {50, u"`", 0x60, "TLDE"},
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
