#pragma once

#include "platform/linux/stardict/lookup_table.h"

namespace lexiquill::stardict {

// The cache file: one page with the header, the payload, and a CRC-32 for every page of the payload. The
// payload is the unpacked index (when it is kept), then the words as 64-bit numbers (hash above index
// offset), then the synonyms as such a number (hash above offset among the synonyms) and a 32-bit index
// offset; words and synonyms are sorted. Numbers have the byte order of the machine: the file never leaves
// it, and the magic number gives a foreign one away.

inline constexpr quint64 tableMagic = 0x4c58'5144'4943'5401;
inline constexpr quint32 tableVersion = 1;
inline constexpr qint64 pageSize = 4096;
inline constexpr qint64 wordRecordSize = 8;
inline constexpr qint64 synonymRecordSize = 12;

struct TableHeader {
    quint64 magic;
    quint32 version;
    quint32 broken;
    char identity[24];
    SourceStamps stamps;
    qint64 indexSize;
    qint64 wordCount;
    qint64 synonymCount;
    quint32 pageSumsCrc;
    /// Of all fields above.
    quint32 headerCrc;
};
static_assert(sizeof(TableHeader) == 8 + 8 + 24 + 64 + 24 + 8);

quint32 crcOf(QByteArrayView bytes);

/// Where the parts of the payload lie, in bytes from its start.
struct TableLayout {
    qint64 wordStart;
    qint64 synonymStart;
    qint64 payloadSize;
    qint64 pageCount;
};
TableLayout layoutOf(qint64 indexSize, qint64 wordCount, qint64 synonymCount);

/// The complete cache file for a dictionary; when the index is unusable, one that says so.
QByteArray buildTable(const TableSource &source, const QByteArray &identity, const SourceStamps &stamps);

} // namespace lexiquill::stardict
