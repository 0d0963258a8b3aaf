#include "support/gzip.h"

#include <zlib.h>

#include <algorithm>
#include <array>

namespace lexiquill {

namespace {

constexpr int gzipWindow = MAX_WBITS + 16;
constexpr int rawWindow = -MAX_WBITS;

} // namespace

Inflater::Inflater(Format format)
    : m_stream(std::make_unique<z_stream>()),
      m_isReady(inflateInit2(m_stream.get(), format == Format::Gzip ? gzipWindow : rawWindow) == Z_OK) {}

Inflater::~Inflater() {
    if (m_isReady)
        inflateEnd(m_stream.get());
}

Inflater::Step Inflater::run(QByteArrayView &in, char *&out, qsizetype &space) {
    if (!m_isReady)
        return Step::Failed;
    constexpr qsizetype most = qsizetype{1} << 30;
    const auto offered = static_cast<uInt>(std::min(in.size(), most));
    const auto room = static_cast<uInt>(std::min(space, most));
    m_stream->next_in = reinterpret_cast<Bytef *>(const_cast<char *>(in.data()));
    m_stream->avail_in = offered;
    m_stream->next_out = reinterpret_cast<Bytef *>(out);
    m_stream->avail_out = room;
    const int code = inflate(m_stream.get(), Z_NO_FLUSH);
    in = in.sliced(offered - m_stream->avail_in);
    out += room - m_stream->avail_out;
    space -= room - m_stream->avail_out;
    if (code == Z_STREAM_END)
        return Step::Ended;
    return code == Z_OK ? Step::Going : Step::Failed;
}

bool Inflater::restart() {
    return m_isReady && inflateReset(m_stream.get()) == Z_OK;
}

bool GzipReader::feed(QByteArrayView packed, QByteArray &out, qint64 limit) {
    std::array<char, 32768> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init)
    while (!packed.isEmpty() && out.size() <= limit) {
        // A stream may consist of several members.
        if (m_isComplete && !m_inflater.restart())
            return false;
        char *to = buffer.data();
        auto space = static_cast<qsizetype>(buffer.size());
        const Inflater::Step step = m_inflater.run(packed, to, space);
        if (step == Inflater::Step::Failed)
            return false;
        m_isComplete = step == Inflater::Step::Ended;
        out.append(buffer.data(), to - buffer.data());
    }
    return true;
}

bool unpackGzip(QByteArrayView packed, qint64 expectedSize, QByteArray &out) {
    // Deflate cannot compress by more than a factor of about a thousand, so a larger `expectedSize` is wrong.
    constexpr qint64 maxRatio = 1100;
    if (expectedSize < 0 || expectedSize / maxRatio > packed.size())
        return false;
    const qsizetype start = out.size();
    // One byte more than expected, to detect a file that contains too much.
    out.resize(start + expectedSize + 1);
    char *to = out.data() + start;
    qsizetype space = expectedSize + 1;
    Inflater inflater(Inflater::Format::Gzip);
    bool isComplete = false;
    while (space > 0 && !packed.isEmpty()) {
        const Inflater::Step step = inflater.run(packed, to, space);
        isComplete = step == Inflater::Step::Ended;
        if (step == Inflater::Step::Failed)
            break;
        // A gzip file may consist of several members one after the other.
        if (isComplete && (!packed.startsWith("\x1f\x8b") || !inflater.restart()))
            break;
    }
    out.resize(start + expectedSize);
    return isComplete && space == 1;
}

} // namespace lexiquill
