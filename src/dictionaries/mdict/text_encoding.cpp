#include "dictionaries/mdict/text_encoding.h"

#include <QtEndian>

#include <unicode/ucnv.h>

#include <algorithm>
#include <limits>

namespace lexiquill::mdict {

namespace {

bool isAscii(QByteArrayView bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<signed char>(c) >= 0; });
}

QString fromUtf16(QByteArrayView bytes) {
    QString text(bytes.size() / 2, Qt::Uninitialized);
    qFromLittleEndian<char16_t>(bytes.data(), text.size(), text.data());
    return text;
}

} // namespace

std::optional<TextEncoding> encodingByName(QStringView name) {
    QString plain;
    for (const QChar c : name) {
        if (c.isLetterOrNumber())
            plain += c.toUpper();
    }
    if (plain.isEmpty() || plain == u"UTF8")
        return TextEncoding::Utf8;
    if (plain == u"UTF16" || plain == u"UTF16LE")
        return TextEncoding::Utf16;
    if (plain == u"GBK" || plain == u"GB2312" || plain == u"GB18030")
        return TextEncoding::Gb18030;
    if (plain == u"BIG5")
        return TextEncoding::Big5;
    return std::nullopt;
}

QByteArrayView upToZero(QByteArrayView text, TextEncoding encoding, bool *found) {
    qsizetype end = -1;
    if (encoding == TextEncoding::Utf16) {
        for (qsizetype at = 0; at + 1 < text.size() && end < 0; at += 2) {
            if (text[at] == 0 && text[at + 1] == 0)
                end = at;
        }
    } else {
        end = text.indexOf('\0');
    }
    if (found != nullptr)
        *found = end >= 0;
    return end >= 0 ? text.first(end) : text;
}

void TextDecoder::Close::operator()(UConverter *converter) const {
    ucnv_close(converter);
}

TextDecoder::TextDecoder(TextEncoding encoding) : m_encoding(encoding) {
    UErrorCode status = U_ZERO_ERROR;
    if (encoding == TextEncoding::Gb18030)
        m_converter.reset(ucnv_open("gb18030", &status));
    else if (encoding == TextEncoding::Big5)
        m_converter.reset(ucnv_open("Big5", &status));
}

TextDecoder::~TextDecoder() = default;

QString TextDecoder::toText(QByteArrayView bytes) {
    if (m_encoding == TextEncoding::Utf16)
        return fromUtf16(bytes);
    if (!m_converter || isAscii(bytes))
        return QString::fromUtf8(bytes);
    // No byte becomes more than one unit.
    constexpr qsizetype most = std::numeric_limits<int32_t>::max() - 1;
    const auto size = static_cast<int32_t>(std::min(bytes.size(), most));
    QString text(size, Qt::Uninitialized);
    UErrorCode status = U_ZERO_ERROR;
    const int32_t length = ucnv_toUChars(m_converter.get(), reinterpret_cast<UChar *>(text.data()), size,
                                         bytes.data(), size, &status);
    text.truncate(U_SUCCESS(status) ? length : 0);
    return text;
}

QByteArrayView TextDecoder::toUtf8(QByteArrayView bytes) {
    if (m_encoding == TextEncoding::Utf8 || (m_encoding != TextEncoding::Utf16 && isAscii(bytes)))
        return bytes;
    m_utf8 = toText(bytes).toUtf8();
    return m_utf8;
}

} // namespace lexiquill::mdict
