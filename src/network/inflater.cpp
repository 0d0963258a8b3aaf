#include "network/inflater.h"

#include <zlib.h>

#include <array>

namespace lexiquill {

namespace {

constexpr int gzipOnly = 16 + MAX_WBITS;

} // namespace

Inflater::Inflater() : m_stream(std::make_unique<z_stream>()) {
    inflateInit2(m_stream.get(), gzipOnly);
}

Inflater::~Inflater() {
    inflateEnd(m_stream.get());
}

bool Inflater::feed(const QByteArray &packed, QByteArray &out, qint64 limit) {
    std::array<char, 32768> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init)
    m_stream->next_in = reinterpret_cast<Bytef *>(const_cast<char *>(packed.constData()));
    m_stream->avail_in = static_cast<uInt>(packed.size());
    while (m_stream->avail_in > 0 && out.size() <= limit) {
        // A stream may consist of several members.
        if (m_isComplete && inflateReset(m_stream.get()) != Z_OK)
            return false;
        m_stream->next_out = reinterpret_cast<Bytef *>(buffer.data());
        m_stream->avail_out = static_cast<uInt>(buffer.size());
        const int status = inflate(m_stream.get(), Z_NO_FLUSH);
        if (status != Z_OK && status != Z_STREAM_END)
            return false;
        m_isComplete = status == Z_STREAM_END;
        out.append(buffer.data(), static_cast<qsizetype>(buffer.size() - m_stream->avail_out));
    }
    return true;
}

} // namespace lexiquill
