#include "support/json_writer.h"

#include "support/secret.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>

namespace lexiquill {

namespace {

constexpr qsizetype bufferSize = qsizetype{1} << 20;
// A UTF-16 unit takes at most six bytes ("\u001f"), so a run of this many always fits into the buffer.
constexpr qsizetype longestRun = qsizetype{1} << 14;

constexpr auto needsEscape = [] {
    std::array<bool, 128> table{};
    for (std::size_t i = 0; i < 0x20; ++i)
        table[i] = true;
    table['"'] = true;
    table['\\'] = true;
    return table;
}();

char *writeEscape(char *out, char16_t unit) {
    *out++ = '\\';
    switch (unit) {
    case u'"':
    case u'\\':
        *out++ = static_cast<char>(unit);
        return out;
    case u'\b':
        *out++ = 'b';
        return out;
    case u'\f':
        *out++ = 'f';
        return out;
    case u'\n':
        *out++ = 'n';
        return out;
    case u'\r':
        *out++ = 'r';
        return out;
    case u'\t':
        *out++ = 't';
        return out;
    default:
        constexpr char digits[] = "0123456789abcdef";
        for (const char character : {'u', '0', '0', digits[unit >> 4], digits[unit & 0xf]})
            *out++ = character;
        return out;
    }
}

constexpr int plainBlock = 16;

/// Whether a block of units is ASCII without a character that needs an escape.
bool isPlain(const char16_t *unit) {
    bool isSpecial = false;
    for (int i = 0; i < plainBlock; ++i)
        isSpecial |= (unit[i] < 0x20) | (unit[i] >= 0x80) | (unit[i] == u'"') | (unit[i] == u'\\');
    return !isSpecial;
}

char *writeCodePoint(char *out, char32_t code) {
    const auto continuation = [](char32_t bits) {
        return static_cast<char>(0x80 | (bits & 0x3f));
    };
    if (code < 0x800) {
        *out++ = static_cast<char>(0xc0 | (code >> 6));
    } else {
        if (code < 0x10000) {
            *out++ = static_cast<char>(0xe0 | (code >> 12));
        } else {
            *out++ = static_cast<char>(0xf0 | (code >> 18));
            *out++ = continuation(code >> 12);
        }
        *out++ = continuation(code >> 6);
    }
    *out++ = continuation(code);
    return out;
}

} // namespace

JsonWriter::JsonWriter(Style style, Sink sink)
    : m_style(style),
      m_sink(std::move(sink)),
      m_buffer(bufferSize, Qt::Uninitialized) {}

void JsonWriter::key(std::string_view name) {
    quote(name, m_style == Style::Pretty ? "\": " : "\":");
    m_followsKey = true;
}

void JsonWriter::value(QStringView text) {
    const char16_t *unit = text.utf16();
    const char16_t *const end = unit + text.size();
    char *out = begin(2);
    *out++ = '"';
    while (unit != end) {
        const char16_t *const runEnd = unit + std::min<qsizetype>(end - unit, longestRun);
        advance(out);
        out = reserve(6 * (longestRun + 1));
        while (unit < runEnd) {
            while (runEnd - unit >= plainBlock && isPlain(unit)) {
                for (int i = 0; i < plainBlock; ++i)
                    out[i] = static_cast<char>(unit[i]);
                unit += plainBlock;
                out += plainBlock;
            }
            const char16_t *const blockEnd = std::min(unit + plainBlock, runEnd);
            while (unit < blockEnd) {
                const char16_t current = *unit++;
                if (current < 0x80) {
                    if (needsEscape[current])
                        out = writeEscape(out, current);
                    else
                        *out++ = static_cast<char>(current);
                } else if (!QChar::isSurrogate(current)) {
                    out = writeCodePoint(out, current);
                } else if (QChar::isHighSurrogate(current) && unit != end && QChar::isLowSurrogate(*unit)) {
                    out = writeCodePoint(out, QChar::surrogateToUcs4(current, *unit++));
                } else {
                    out = writeCodePoint(out, QChar::ReplacementCharacter);
                }
            }
        }
    }
    advance(out);
    out = reserve(1);
    *out++ = '"';
    advance(out);
}

void JsonWriter::plainValue(std::string_view text) {
    quote(text, "\"");
}

void JsonWriter::value(qint64 number) {
    constexpr qsizetype longest = 24;
    char *const start = begin(longest);
    advance(std::to_chars(start, start + longest, number).ptr);
}

void JsonWriter::value(double number) {
    if (!std::isfinite(number))
        return writeToken("null");
    constexpr qsizetype longest = 32;
    char *const start = begin(longest);
    // Some readers reject the whole text if it contains an integer beyond 64 bits. With an exponent the
    // number is not an integer.
    const bool isLarge = std::abs(number) >= 1e18;
    advance((isLarge ? std::to_chars(start, start + longest, number, std::chars_format::scientific)
                     : std::to_chars(start, start + longest, number))
                .ptr);
}

void JsonWriter::value(bool boolean) {
    writeToken(boolean ? "true" : "false");
}

void JsonWriter::startValue() {
    advance(begin(0));
    m_followsKey = true;
}

void JsonWriter::text(QByteArrayView piece) {
    m_followsKey = false;
    if (piece.size() > m_buffer.size() - m_used) {
        finish();
        m_sink(piece);
        m_handedOver += piece.size();
    } else {
        advance(std::copy(piece.begin(), piece.end(), m_buffer.data() + m_used));
    }
}

void JsonWriter::finish() {
    if (m_used > 0)
        m_sink(QByteArrayView(m_buffer.constData(), m_used));
    m_handedOver += m_used;
    m_used = 0;
}

void JsonWriter::wipeBuffer() {
    wipe(m_buffer);
}

void JsonWriter::open(char bracket) {
    char *out = begin(1);
    *out++ = bracket;
    advance(out);
    ++m_depth;
    m_isFirst = true;
}

void JsonWriter::close(char bracket) {
    --m_depth;
    char *out = reserve(lineStartSize() + 1);
    if (!m_isFirst)
        out = startLine(out);
    *out++ = bracket;
    advance(out);
    m_isFirst = false;
}

/// Writes the separators before the next value, and reserves `size` bytes for it. The caller writes the value
/// there and calls advance().
char *JsonWriter::begin(qsizetype size) {
    char *out = reserve(1 + lineStartSize() + size);
    if (m_followsKey) {
        m_followsKey = false;
        return out;
    }
    if (!m_isFirst)
        *out++ = ',';
    m_isFirst = false;
    return m_depth > 0 ? startLine(out) : out;
}

qsizetype JsonWriter::lineStartSize() const {
    return 1 + 2 * static_cast<qsizetype>(m_depth);
}

char *JsonWriter::startLine(char *out) const {
    if (m_style == Style::Compact)
        return out;
    *out++ = '\n';
    for (int i = 0; i < m_depth; ++i) {
        *out++ = ' ';
        *out++ = ' ';
    }
    return out;
}

char *JsonWriter::reserve(qsizetype size) {
    if (m_used + size > m_buffer.size())
        finish();
    return m_buffer.data() + m_used;
}

void JsonWriter::advance(const char *end) {
    m_used = end - m_buffer.constData();
}

void JsonWriter::quote(std::string_view text, std::string_view behind) {
    char *out = begin(1 + static_cast<qsizetype>(text.size()) + static_cast<qsizetype>(behind.size()));
    *out++ = '"';
    out = std::copy(text.begin(), text.end(), out);
    advance(std::copy(behind.begin(), behind.end(), out));
}

void JsonWriter::writeToken(std::string_view token) {
    char *const out = begin(static_cast<qsizetype>(token.size()));
    advance(std::copy(token.begin(), token.end(), out));
}

} // namespace lexiquill
