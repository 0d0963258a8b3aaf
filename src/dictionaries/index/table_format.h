#pragma once

#include "dictionaries/index/lookup_table.h"

namespace lexiquill::table {

// The cache file: one page with the header, the payload, and a CRC-32 for every page of the payload. The
// payload is the index (when it is kept), then the words as 64-bit numbers (hash above index
// offset), then the synonyms as such a number (hash above offset among the synonyms) and a 32-bit index
// offset; words and synonyms are sorted. Numbers have the byte order of the machine: the file never leaves
// it, and the magic number gives a foreign one away.

inline constexpr quint64 magicNumber = 0x4c58'5144'4943'5401;
inline constexpr quint32 formatVersion = 2;
/// Most entries of a part, and most bytes of an index.
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
    /// Of all fields above.
    quint32 headerCrc;
};
static_assert(sizeof(Header) == 8 + 8 + 24 + 64 + 24 + 8);

quint32 crcOf(QByteArrayView bytes);

/// Where the parts of the payload lie, in bytes from its start.
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
