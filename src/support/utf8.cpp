#include "support/utf8.h"

#include <QStringDecoder>

#include <iterator>

namespace lexiquill {

QString textFromUtf8(std::string_view utf8) {
    const QString text = QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
    return utf8.starts_with("\xef\xbb\xbf") ? QChar(QChar::ByteOrderMark) + text : text;
}

ShortText::ShortText(std::string_view utf8) {
    // A byte never becomes more than one UTF-16 unit.
    if (utf8.size() <= std::size(m_buffer)) {
        using Converter = QStringConverter;
        QStringDecoder decoder(Converter::Utf8,
                               Converter::Flag::Stateless | Converter::Flag::ConvertInitialBom);
        m_text = {m_buffer,
                  decoder.appendToBuffer(m_buffer, {utf8.data(), static_cast<qsizetype>(utf8.size())})};
    } else {
        m_long = textFromUtf8(utf8);
        m_text = m_long;
    }
}

} // namespace lexiquill
