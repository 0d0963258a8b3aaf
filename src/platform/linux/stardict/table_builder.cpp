#include "platform/linux/stardict/compressed.h"
#include "platform/linux/stardict/index_entry.h"
#include "platform/linux/stardict/table_format.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <vector>

namespace lexiquill::stardict {

namespace {

struct SynonymRecord {
    quint64 key;
    quint32 index;
};

quint64 keyOf(QByteArrayView word, qsizetype offset) {
    return quint64(foldedHash(word)) << 32 | static_cast<quint32>(offset);
}

/// Reads every entry of the index; false when they are not exactly as many as announced.
bool collectWords(QByteArrayView index, const IfoInfo &info, std::vector<quint64> &keys,
                  std::vector<quint32> &places) {
    keys.reserve(std::min<size_t>(info.wordCount, static_cast<size_t>(index.size()) / 9));
    for (qsizetype at = 0; at < index.size();) {
        const auto entry = readIndexEntry(index.sliced(at), info.offsetBytes);
        if (!entry || keys.size() == info.wordCount)
            return false;
        keys.push_back(keyOf(entry->word, at));
        if (info.synonymCount > 0)
            places.push_back(static_cast<quint32>(at));
        at += entry->length;
    }
    return keys.size() == info.wordCount;
}

/// Synonyms are an extra: when their list is faulty the dictionary does without it.
std::vector<SynonymRecord> collectSynonyms(QByteArrayView list, const IfoInfo &info,
                                           const std::vector<quint32> &places) {
    std::vector<SynonymRecord> records;
    quint32 count = 0;
    for (qsizetype at = 0; at < list.size(); ++count) {
        const auto entry = readSynonymEntry(list.sliced(at));
        if (!entry || count == info.synonymCount)
            return {};
        if (entry->target < places.size())
            records.push_back({keyOf(entry->word, at), places[entry->target]});
        at += entry->length;
    }
    if (count != info.synonymCount)
        return {};
    return records;
}

template <typename Number> char *append(char *to, Number number) {
    std::memcpy(to, &number, sizeof number);
    return to + sizeof number;
}

/// Fills in the sums of the pages and the header; the payload is already in place.
void seal(QByteArray &image, TableHeader header, const TableLayout &layout) {
    char *to = image.data() + pageSize + layout.payloadSize;
    const QByteArrayView payload(image.constData() + pageSize, layout.payloadSize);
    for (qint64 page = 0; page < layout.pageCount; ++page) {
        const qint64 start = page * pageSize;
        to = append(to, crcOf(payload.sliced(start, std::min(pageSize, payload.size() - start))));
    }
    header.pageSumsCrc = crcOf(QByteArrayView(image).sliced(pageSize + layout.payloadSize));
    header.headerCrc = crcOf({reinterpret_cast<const char *>(&header), offsetof(TableHeader, headerCrc)});
    std::memcpy(image.data(), &header, sizeof header);
}

} // namespace

TableLayout layoutOf(qint64 indexSize, qint64 wordCount, qint64 synonymCount) {
    TableLayout layout{};
    layout.wordStart = (indexSize + wordRecordSize - 1) / wordRecordSize * wordRecordSize;
    layout.synonymStart = layout.wordStart + wordCount * wordRecordSize;
    layout.payloadSize = layout.synonymStart + synonymCount * synonymRecordSize;
    layout.pageCount = (layout.payloadSize + pageSize - 1) / pageSize;
    return layout;
}

QByteArray buildTable(const TableSource &source, const QByteArray &identity, const SourceStamps &stamps) {
    TableHeader header{};
    header.magic = tableMagic;
    header.version = tableVersion;
    header.stamps = stamps;
    std::memcpy(header.identity, identity.constData(),
                std::min(sizeof header.identity, static_cast<size_t>(identity.size())));

    QByteArray image(pageSize, '\0');
    bool sound = true;
    QByteArrayView index = source.index;
    if (source.indexIsPacked) {
        sound = unpackGzip(source.index, source.info.indexSize, image);
        index = QByteArrayView(image).sliced(pageSize);
        header.indexSize = index.size();
    }
    std::vector<quint64> keys;
    std::vector<quint32> places;
    sound = sound && index.size() == source.info.indexSize && collectWords(index, source.info, keys, places);
    if (!sound) {
        image.resize(pageSize);
        header.broken = 1;
        header.indexSize = 0;
        seal(image, header, layoutOf(0, 0, 0));
        return image;
    }
    std::sort(keys.begin(), keys.end());
    std::vector<SynonymRecord> synonyms = collectSynonyms(source.synonyms, source.info, places);
    std::sort(synonyms.begin(), synonyms.end(),
              [](const auto &left, const auto &right) { return left.key < right.key; });

    header.wordCount = static_cast<qint64>(keys.size());
    header.synonymCount = static_cast<qint64>(synonyms.size());
    const TableLayout layout = layoutOf(header.indexSize, header.wordCount, header.synonymCount);
    image.resize(pageSize + layout.payloadSize + layout.pageCount * qint64(sizeof(quint32)), '\0');
    char *to = image.data() + pageSize + layout.wordStart;
    for (const quint64 key : keys)
        to = append(to, key);
    for (const SynonymRecord &record : synonyms)
        to = append(append(to, record.key), record.index);
    seal(image, header, layout);
    return image;
}

} // namespace lexiquill::stardict
