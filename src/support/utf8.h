#pragma once

#include <QString>
#include <QStringView>

#include <string_view>

namespace lexiquill {

/// The text of UTF-8 bytes, with U+FFFD for invalid bytes. Unlike QString::fromUtf8() it keeps a byte order
/// mark, which is ordinary text in the middle of a document.
QString textFromUtf8(std::string_view utf8);

/// The same for a short text that is used only briefly. Allocates no memory for a text of a few characters.
class ShortText {
public:
    explicit ShortText(std::string_view utf8);
    QStringView text() const { return m_text; }

private:
    QChar m_buffer[64];
    QString m_long; ///< the text if it does not fit into the buffer
    QStringView m_text;
};

} // namespace lexiquill
