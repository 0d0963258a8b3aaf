#pragma once

#include "dictionaries/index/lookup_table.h"

namespace lexiquill::table {

// The cache file: one page with the header, then the payload, then a CRC-32 for every page of the payload.
// The payload is the index (if it is stored), then the words, then the synonyms, both sorted. A word is a
// 64-bit number: the hash in the upper half, the index offset in the lower half. A synonym is such a number,
// with the offset in the list of synonyms, and a 32-bit index offset. Numbers have the byte order of the
// machine, because the file never leaves it. A file with another byte order has another magic number.

inline constexpr quint64 magicNumber = 0x4c58'5144'4943'5401;
inline constexpr quint32 formatVersion = 3;
/// The maximum number of entries in a part, and of bytes in an index.
inline constexpr qint64 maxPartSize = qint64(512) * 1024 * 1024;
inline constexpr qint64 pageSize = 4096;
inline constexpr qint64 wordRecordSize = 8;
inline constexpr qint64 synonymRecordSize = 12;

struct Header {
    quint64 magic;
    quint32 version;
    quint16 broken;
    quint16 holdsChinese;
    char identity[24];
    SourceStamps stamps;
    qint64 indexSize;
    qint64 wordCount;
    qint64 synonymCount;
    quint32 pageSumsCrc;
    /// CRC-32 of all fields above.
    quint32 headerCrc;
};
static_assert(sizeof(Header) == 8 + 8 + 24 + 64 + 24 + 8);

quint32 crcOf(QByteArrayView bytes);

/// The positions of the parts of the payload, in bytes from its start.
struct Layout {
    qint64 wordStart;
    qint64 synonymStart;
    qint64 payloadSize;
    qint64 pageCount;
};
Layout layoutOf(qint64 indexSize, qint64 wordCount, qint64 synonymCount);

/// The complete cache file for a dictionary.
QByteArray buildTable(TableContent content, const QByteArray &identity, const SourceStamps &stamps);

} // namespace lexiquill::table
