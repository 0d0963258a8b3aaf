#include "support/json_writer.h"

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
    beginValue();
    append("\"");
    append(name);
    append(m_style == Style::Pretty ? "\": " : "\":");
    m_followsKey = true;
}

void JsonWriter::value(QStringView text) {
    beginValue();
    append("\"");
    const char16_t *unit = text.utf16();
    const char16_t *const end = unit + text.size();
    while (unit != end) {
        const char16_t *const runEnd = unit + std::min<qsizetype>(end - unit, longestRun);
        char *const start = reserve(6 * (longestRun + 1));
        char *out = start;
        while (unit < runEnd) {
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
        m_used += out - start;
    }
    append("\"");
}

void JsonWriter::value(qint64 number) {
    beginValue();
    char *const start = reserve(24);
    m_used += std::to_chars(start, start + 24, number).ptr - start;
}

void JsonWriter::value(double number) {
    beginValue();
    if (!std::isfinite(number)) {
        append("null");
        return;
    }
    char *const start = reserve(32);
    m_used += std::to_chars(start, start + 32, number).ptr - start;
}

void JsonWriter::value(bool boolean) {
    beginValue();
    append(boolean ? "true" : "false");
}

void JsonWriter::finish() {
    if (m_used > 0)
        m_sink(QByteArrayView(m_buffer.constData(), m_used));
    m_used = 0;
}

void JsonWriter::open(char bracket) {
    beginValue();
    append({&bracket, 1});
    ++m_depth;
    m_isFirst = true;
}

void JsonWriter::close(char bracket) {
    --m_depth;
    if (!m_isFirst)
        newLine();
    append({&bracket, 1});
    m_isFirst = false;
}

void JsonWriter::beginValue() {
    if (m_followsKey) {
        m_followsKey = false;
        return;
    }
    if (!m_isFirst)
        append(",");
    m_isFirst = false;
    if (m_depth > 0)
        newLine();
}

void JsonWriter::newLine() {
    if (m_style == Style::Compact)
        return;
    const qsizetype size = 1 + 2 * static_cast<qsizetype>(m_depth);
    char *const out = reserve(size);
    *out = '\n';
    std::memset(out + 1, ' ', static_cast<std::size_t>(size - 1));
    m_used += size;
}

char *JsonWriter::reserve(qsizetype size) {
    if (m_used + size > m_buffer.size())
        finish();
    return m_buffer.data() + m_used;
}

void JsonWriter::append(std::string_view text) {
    const auto size = static_cast<qsizetype>(text.size());
    std::memcpy(reserve(size), text.data(), text.size());
    m_used += size;
}

} // namespace lexiquill
