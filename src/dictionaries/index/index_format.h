#pragma once

#include "platform/file_stamp.h"

#include <QByteArrayView>

#include <array>

namespace lexiquill {

/// The stamps of the files that an index is made from; unused ones are empty.
using SourceStamps = std::array<FileStamp, 4>;

} // namespace lexiquill

namespace lexiquill::headword_index {

// The cache file: one page with the header, then the payload, then a CRC-32 for every page of the payload.
//
// The payload is the texts, then the entries. Both are sorted: first the headwords without Chinese
// characters, then those with them, each group by its folded key, equal keys in the order of the dictionary.
// A text is the key; if the headword differs from its key, a byte 1 and the headword; for another spelling of
// a headword, always a byte 2 and that spelling; then a zero byte. An entry has a fixed size.
//
// Numbers have the byte order of the machine, because the file never leaves it. A file with another byte
// order has another magic number.

inline constexpr quint64 magicNumber = 0x4c58'5144'4943'5401;
inline constexpr quint32 formatVersion = 5;
inline constexpr qint64 pageSize = 4096;
/// The maximum number of bytes in all texts, and of entries.
inline constexpr qint64 maxTextSize = qint64(512) * 1024 * 1024;
inline constexpr qint64 maxEntries = qint64(16) * 1024 * 1024;

inline constexpr char textEnd = '\0';
inline constexpr char headwordFollows = '\1';
inline constexpr char aliasFollows = '\2';

struct Entry {
    quint32 text; ///< position of its text
    quint32 size; ///< of the article; 0 for an alias
    /// The offset of the article; with `aliasFlag`, the number of the entry of the headword.
    quint64 place;
};
static_assert(sizeof(Entry) == 16);
inline constexpr quint64 aliasFlag = quint64(1) << 63;

struct Header {
    quint64 magic;
    quint32 version;
    quint16 problem; ///< a DictionaryProblem; if there is one, the payload is empty
    quint16 holdsChinese;
    char identity[24];
    SourceStamps stamps;
    qint64 textSize;
    qint64 entryCount;
    qint64 firstChinese; ///< number of the first entry with Chinese characters
    quint32 pageSumsCrc;
    /// CRC-32 of all fields above.
    quint32 headerCrc;
};
static_assert(sizeof(Header) == 8 + 8 + 24 + 96 + 24 + 8);

/// Where the entries begin in the payload, and its size.
struct Layout {
    qint64 entryStart;
    qint64 payloadSize;
};
constexpr Layout layoutOf(qint64 textSize, qint64 entryCount) {
    constexpr qint64 alignment = alignof(Entry);
    const qint64 entryStart = (textSize + alignment - 1) / alignment * alignment;
    return {entryStart, entryStart + entryCount * qint64(sizeof(Entry))};
}
constexpr qint64 pageCountOf(qint64 payloadSize) {
    return (payloadSize + pageSize - 1) / pageSize;
}

quint32 crcOf(QByteArrayView bytes);

} // namespace lexiquill::headword_index
