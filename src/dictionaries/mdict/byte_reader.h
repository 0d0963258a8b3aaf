#pragma once

#include <QByteArrayView>

namespace lexiquill::mdict {

/// Takes big-endian numbers and bytes from the start of its input. At a truncated end it gives zeros and
/// empty views, and failed() is then true.
class ByteReader {
public:
    explicit ByteReader(QByteArrayView input) : m_rest(input) {}

    /// A number of 1, 2, 4 or 8 bytes.
    quint64 number(int width) {
        const QByteArrayView bytes = take(static_cast<quint64>(width));
        quint64 value = 0;
        for (const char byte : bytes)
            value = value << 8 | static_cast<unsigned char>(byte);
        return value;
    }

    QByteArrayView take(quint64 size) {
        if (size > static_cast<quint64>(m_rest.size())) {
            m_failed = true;
            m_rest = {};
            return {};
        }
        const QByteArrayView bytes = m_rest.first(static_cast<qsizetype>(size));
        m_rest = m_rest.sliced(bytes.size());
        return bytes;
    }

    QByteArrayView rest() const { return m_rest; }
    bool atEnd() const { return m_rest.isEmpty(); }
    bool failed() const { return m_failed; }

private:
    QByteArrayView m_rest;
    bool m_failed = false;
};

} // namespace lexiquill::mdict
