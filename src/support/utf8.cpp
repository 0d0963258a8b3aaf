#include "support/utf8.h"

#include <algorithm>
#include <iterator>

namespace lexiquill {

namespace {

/// Converts UTF-8 to UTF-16 and returns the end of the output; null when the input is not well-formed or has
/// characters beyond the basic plane. There must be room for as many units as there are bytes.
char16_t *convert(std::string_view utf8, char16_t *out) {
    const auto *byte = reinterpret_cast<const unsigned char *>(utf8.data());
    const unsigned char *const end = byte + utf8.size();
    const auto isContinuation = [](unsigned char each) {
        return (each & 0xc0) == 0x80;
    };
    constexpr int block = 16;
    while (byte < end) {
        if (end - byte >= block &&
            std::all_of(byte, byte + block, [](unsigned char each) { return each < 0x80; })) {
            out = std::copy_n(byte, block, out);
            byte += block;
        } else if (*byte < 0x80) {
            *out++ = *byte++;
        } else if ((*byte & 0xf0) == 0xe0 && end - byte >= 3 && isContinuation(byte[1]) &&
                   isContinuation(byte[2])) {
            const auto unit =
                static_cast<char16_t>((byte[0] & 0x0f) << 12 | (byte[1] & 0x3f) << 6 | (byte[2] & 0x3f));
            if (unit < 0x800 || QChar::isSurrogate(unit))
                return nullptr;
            *out++ = unit;
            byte += 3;
        } else if (*byte >= 0xc2 && *byte < 0xe0 && end - byte >= 2 && isContinuation(byte[1])) {
            *out++ = static_cast<char16_t>((byte[0] & 0x1f) << 6 | (byte[1] & 0x3f));
            byte += 2;
        } else {
            return nullptr;
        }
    }
    return out;
}

} // namespace

QString textFromUtf8(std::string_view utf8) {
    constexpr std::size_t shortSize = 1024;
    if (utf8.size() <= shortSize) {
        char16_t buffer[shortSize];
        if (const char16_t *const end = convert(utf8, buffer))
            return QString(reinterpret_cast<const QChar *>(buffer), end - buffer);
    }
    const QString text = QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
    return utf8.starts_with("\xef\xbb\xbf") ? QChar(QChar::ByteOrderMark) + text : text;
}

ShortText::ShortText(std::string_view utf8) {
    const char16_t *const end = utf8.size() <= std::size(m_buffer) ? convert(utf8, m_buffer) : nullptr;
    if (end == nullptr)
        m_long = textFromUtf8(utf8);
    m_text = end != nullptr ? QStringView(m_buffer, end) : QStringView(m_long);
}

} // namespace lexiquill
