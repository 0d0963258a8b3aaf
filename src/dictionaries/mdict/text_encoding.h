#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringView>

#include <memory>
#include <optional>

struct UConverter;

namespace lexiquill::mdict {

enum class TextEncoding {
    Utf8,
    Utf16, ///< little-endian
    Gb18030,
    Big5,
};

/// The encoding that a header names; UTF-8 for an empty name. No value for an unknown one.
std::optional<TextEncoding> encodingByName(QStringView name);

/// Bytes of one unit of text; a zero unit ends a text.
inline qsizetype unitSize(TextEncoding encoding) {
    return encoding == TextEncoding::Utf16 ? 2 : 1;
}

/// `text` up to its first zero unit, or all of it. `found` tells which.
QByteArrayView upToZero(QByteArrayView text, TextEncoding encoding, bool *found = nullptr);

/// Decodes text. Invalid bytes become U+FFFD.
class TextDecoder {
public:
    explicit TextDecoder(TextEncoding encoding);
    ~TextDecoder();
    TextDecoder(const TextDecoder &) = delete;
    TextDecoder &operator=(const TextDecoder &) = delete;

    QString toText(QByteArrayView bytes);
    /// The text in UTF-8; valid until the next call and as long as `bytes`.
    QByteArrayView toUtf8(QByteArrayView bytes);

private:
    struct Close {
        void operator()(UConverter *converter) const;
    };

    TextEncoding m_encoding;
    std::unique_ptr<UConverter, Close> m_converter;
    QByteArray m_utf8;
};

} // namespace lexiquill::mdict
