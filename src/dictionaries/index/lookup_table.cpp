#include "dictionaries/index/lookup_table.h"

#include "dictionaries/index/table_format.h"
#include "platform/durable_file.h"

#include <QCryptographicHash>

#include <zlib.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>

namespace lexiquill {

using namespace table;

namespace {

/// No real dictionary has nearly so many words with the same hash. The limit keeps hostile files from costing
/// time.
constexpr qint64 maxCandidates = 4096;

QByteArray identityOf(const QString &dictionaryPath) {
    return QCryptographicHash::hash(dictionaryPath.toUtf8(), QCryptographicHash::Sha1)
        .leftJustified(24, '\0');
}

template <typename Number> Number numberAt(QByteArrayView bytes, qint64 offset) {
    Number number{};
    std::memcpy(&number, bytes.data() + offset, sizeof number);
    return number;
}

/// The first of `count` sorted positions whose key is not less than `key`.
template <typename KeyAt> qint64 lowerBound(qint64 count, quint64 key, KeyAt keyAt) {
    qint64 low = 0;
    while (count > 0) {
        const qint64 half = count / 2;
        if (keyAt(low + half) < key) {
            low += half + 1;
            count -= half + 1;
        } else {
            count = half;
        }
    }
    return low;
}

} // namespace

quint32 table::crcOf(QByteArrayView bytes) {
    return static_cast<quint32>(
        crc32_z(0, reinterpret_cast<const Bytef *>(bytes.data()), static_cast<z_size_t>(bytes.size())));
}

std::unique_ptr<LookupTable> LookupTable::load(const QString &path, const QString &dictionaryPath,
                                               const SourceStamps &stamps) {
    std::unique_ptr<LookupTable> table(new LookupTable);
    if (!table->m_file.open(path, std::numeric_limits<qint64>::max()) ||
        !table->adopt(table->m_file.data(), identityOf(dictionaryPath), stamps))
        return nullptr;
    return table;
}

std::unique_ptr<LookupTable> LookupTable::build(TableContent content, const QString &dictionaryPath,
                                                const SourceStamps &stamps) {
    std::unique_ptr<LookupTable> table(new LookupTable);
    const QByteArray identity = identityOf(dictionaryPath);
    table->m_image = buildTable(std::move(content), identity, stamps);
    table->adopt(table->m_image, identity, stamps);
    return table;
}

bool LookupTable::save(const QString &path) const {
    return replaceFile(path, m_image, {.durability = DurableFile::Durability::Cached}) ==
           DurableFile::Problem::None;
}

/// Takes the content of a cache file if its header and its list of checksums are valid. The pages themselves
/// are checked when they are read.
bool LookupTable::adopt(QByteArrayView file, const QByteArray &identity, const SourceStamps &stamps) {
    if (file.size() < pageSize)
        return false;
    const auto header = numberAt<Header>(file, 0);
    if (header.magic != magicNumber || header.version != formatVersion ||
        header.headerCrc != crcOf(file.first(offsetof(Header, headerCrc))) ||
        QByteArrayView(header.identity, sizeof header.identity) != identity || header.stamps != stamps)
        return false;
    // No part is larger than that. This also keeps the sums below from overflowing.
    for (const qint64 number : {header.indexSize, header.wordCount, header.synonymCount}) {
        if (number < 0 || number > table::maxPartSize)
            return false;
    }
    const Layout layout = layoutOf(header.indexSize, header.wordCount, header.synonymCount);
    const qint64 sumsStart = pageSize + layout.payloadSize;
    if (file.size() != sumsStart + layout.pageCount * qint64(sizeof(quint32)) ||
        header.pageSumsCrc != crcOf(file.sliced(sumsStart)))
        return false;
    m_payload = file.sliced(pageSize, layout.payloadSize);
    m_pageSums = file.sliced(sumsStart);
    m_indexSize = header.indexSize;
    m_wordStart = layout.wordStart;
    m_wordCount = header.wordCount;
    m_synonymStart = layout.synonymStart;
    m_synonymCount = header.synonymCount;
    m_broken = header.broken != 0;
    m_holdsChinese = header.holdsChinese != 0;
    m_verified.assign(static_cast<size_t>(layout.pageCount), false);
    return true;
}

/// Bytes of the payload, after comparing their pages with the checksums; empty if a page differs.
QByteArrayView LookupTable::payload(qint64 offset, qint64 size) const {
    if (offset < 0 || size <= 0 || size > m_payload.size() || offset > m_payload.size() - size)
        return {};
    for (qint64 page = offset / pageSize; page <= (offset + size - 1) / pageSize; ++page) {
        if (m_verified[static_cast<size_t>(page)])
            continue;
        const qint64 start = page * pageSize;
        const QByteArrayView bytes = m_payload.sliced(start, std::min(pageSize, m_payload.size() - start));
        if (crcOf(bytes) != numberAt<quint32>(m_pageSums, page * qint64(sizeof(quint32)))) {
            m_damaged = true;
            return {};
        }
        m_verified[static_cast<size_t>(page)] = true;
    }
    return m_payload.sliced(offset, size);
}

QByteArrayView LookupTable::indexBytes(quint64 offset, qint64 size) const {
    if (offset >= static_cast<quint64>(m_indexSize))
        return {};
    const auto at = static_cast<qint64>(offset);
    return payload(at, std::min(size, m_indexSize - at));
}

quint64 LookupTable::wordKey(qint64 position) const {
    const QByteArrayView bytes = payload(m_wordStart + position * wordRecordSize, wordRecordSize);
    return bytes.isEmpty() ? 0 : numberAt<quint64>(bytes, 0);
}

quint64 LookupTable::synonymKey(qint64 position) const {
    const QByteArrayView bytes = payload(m_synonymStart + position * synonymRecordSize, synonymRecordSize);
    return bytes.isEmpty() ? 0 : numberAt<quint64>(bytes, 0);
}

std::vector<quint32> LookupTable::words(quint32 hash) const {
    std::vector<quint32> found;
    const qint64 first =
        lowerBound(m_wordCount, quint64(hash) << 32, [this](qint64 position) { return wordKey(position); });
    for (qint64 position = first; position < std::min(m_wordCount, first + maxCandidates); ++position) {
        const quint64 key = wordKey(position);
        if (key >> 32 != hash || m_damaged)
            break;
        found.push_back(static_cast<quint32>(key));
    }
    return found;
}

std::vector<LookupTable::SynonymPlace> LookupTable::synonyms(quint32 hash) const {
    std::vector<SynonymPlace> found;
    const qint64 first = lowerBound(m_synonymCount, quint64(hash) << 32,
                                    [this](qint64 position) { return synonymKey(position); });
    for (qint64 position = first; position < std::min(m_synonymCount, first + maxCandidates); ++position) {
        const QByteArrayView bytes =
            payload(m_synonymStart + position * synonymRecordSize, synonymRecordSize);
        if (bytes.isEmpty() || numberAt<quint64>(bytes, 0) >> 32 != hash)
            break;
        found.push_back({static_cast<quint32>(numberAt<quint64>(bytes, 0)), numberAt<quint32>(bytes, 8)});
    }
    return found;
}

} // namespace lexiquill
