#pragma once

#include <QString>
#include <QStringView>

#include <string_view>

namespace lexiquill {

/// The text of UTF-8 bytes, with U+FFFD for what is none. Unlike QString::fromUtf8() it keeps a byte order
/// mark, which is text like any other in the middle of a document.
QString textFromUtf8(std::string_view utf8);

/// The same for a text of a few characters that is looked at and forgotten, without memory of its own.
class ShortText {
public:
    explicit ShortText(std::string_view utf8);
    QStringView text() const { return m_text; }

private:
    QChar m_buffer[64];
    QString m_long; ///< of what does not fit
    QStringView m_text;
};

} // namespace lexiquill
