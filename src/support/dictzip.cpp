#include "support/dictzip.h"

#include "support/gzip.h"

#include <QtEndian>

#include <algorithm>
#include <limits>
#include <utility>

namespace lexiquill {

namespace {

enum HeaderFlag { HeaderChecksum = 2, ExtraField = 4, OriginalName = 8, Comment = 16 };

quint16 little16(QByteArrayView bytes, qsizetype at) {
    return qFromLittleEndian<quint16>(bytes.data() + at);
}

/// The dictzip table within the extra field of a gzip header: a version, the chunk size, the number of
/// chunks and their packed sizes, each of 16 bits. Empty when there is none.
QByteArrayView findChunkTable(QByteArrayView extra) {
    while (extra.size() >= 4) {
        const qsizetype length = little16(extra, 2);
        if (length > extra.size() - 4)
            return {};
        if (extra[0] == 'R' && extra[1] == 'A')
            return extra.sliced(4, length);
        extra = extra.sliced(4 + length);
    }
    return {};
}

/// The position of the compressed data, after the header fields that follow the extra field; -1 when these
/// are truncated.
qsizetype skipHeaderRest(QByteArrayView packed, qsizetype at, int flags) {
    for (const int flag : {OriginalName, Comment}) {
        if ((flags & flag) == 0)
            continue;
        const qsizetype end = packed.indexOf('\0', at);
        if (end < 0)
            return -1;
        at = end + 1;
    }
    if ((flags & HeaderChecksum) != 0)
        at += 2;
    return at <= packed.size() ? at : -1;
}

} // namespace

std::optional<DictZip> DictZip::open(Source source) {
    constexpr qsizetype fixedHeader = 10;
    // The extra field may have 64 KB; nobody writes long names or comments.
    constexpr qint64 longestHeader = qint64(80) * 1024;
    QByteArray packed(std::min(source.size, longestHeader), Qt::Uninitialized);
    if (!source.read(0, packed.data(), packed.size()))
        return std::nullopt;
    if (packed.size() < fixedHeader + 2 || !packed.startsWith("\x1f\x8b\x08"))
        return std::nullopt;
    const int flags = static_cast<unsigned char>(packed[3]);
    const qsizetype extraSize = little16(packed, fixedHeader);
    const qsizetype extraStart = fixedHeader + 2;
    if ((flags & ExtraField) == 0 || extraSize > packed.size() - extraStart)
        return std::nullopt;
    const QByteArrayView table = findChunkTable(QByteArrayView(packed).sliced(extraStart, extraSize));
    if (table.size() < 6 || little16(table, 0) != 1)
        return std::nullopt;

    DictZip zip;
    zip.m_source = std::move(source);
    zip.m_chunkSize = little16(table, 2);
    const qsizetype count = little16(table, 4);
    qint64 at = skipHeaderRest(packed, extraStart + extraSize, flags);
    if (zip.m_chunkSize == 0 || table.size() < 6 + count * 2 || at < 0)
        return std::nullopt;
    zip.m_chunkStarts.reserve(static_cast<size_t>(count) + 1);
    zip.m_chunkStarts.push_back(at);
    for (qsizetype i = 0; i < count; ++i) {
        at += little16(table, 6 + i * 2);
        zip.m_chunkStarts.push_back(at);
    }
    return zip;
}

std::optional<QByteArray> DictZip::read(quint64 offset, quint32 size) const {
    const auto chunkCount = static_cast<quint64>(m_chunkStarts.size() - 1);
    const auto chunkSize = static_cast<quint64>(m_chunkSize);
    if (offset > chunkCount * chunkSize || size > chunkCount * chunkSize - offset)
        return std::nullopt;
    QByteArray result;
    if (size == 0)
        return result;
    Inflater inflater(Inflater::Format::Raw);
    result.reserve(size);
    QByteArray chunk(m_chunkSize, Qt::Uninitialized);
    QByteArray packed;
    const quint64 end = offset + size;
    for (quint64 index = offset / chunkSize; index * chunkSize < end; ++index) {
        const qint64 from = m_chunkStarts[index];
        const qint64 to = m_chunkStarts[index + 1];
        packed.resize(to - from);
        if (!m_source.read(from, packed.data(), packed.size()) || !inflater.restart())
            return std::nullopt;
        QByteArrayView in = packed;
        const quint64 start = index * chunkSize;
        const quint64 wantedFrom = std::max(offset, start) - start;
        const quint64 wantedTo = std::min(end - start, chunkSize);
        char *out = chunk.data();
        auto space = static_cast<qsizetype>(wantedTo);
        while (!in.isEmpty() && space > 0 && inflater.run(in, out, space) == Inflater::Step::Going) {
        }
        if (space > 0)
            return std::nullopt;
        result.append(chunk.constData() + wantedFrom, static_cast<qsizetype>(wantedTo - wantedFrom));
    }
    return result;
}

} // namespace lexiquill
