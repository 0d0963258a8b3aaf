#include "dictionaries/stardict/index_entry.h"

#include "dictionaries/dictionary_reader.h"

#include <QtEndian>

#include <algorithm>
#include <cstring>

namespace lexiquill::stardict {

namespace {

/// The zero-terminated word at the start of `bytes`; no value if there is no zero byte within the limit.
std::optional<QByteArrayView> readWord(QByteArrayView bytes) {
    const auto range = static_cast<size_t>(std::min(bytes.size(), maxHeadwordSize + 1));
    const void *end = range > 0 ? std::memchr(bytes.data(), 0, range) : nullptr;
    if (end == nullptr)
        return std::nullopt;
    return bytes.first(static_cast<const char *>(end) - bytes.data());
}

} // namespace

std::optional<IndexEntry> readIndexEntry(QByteArrayView bytes, int offsetBytes) {
    const auto word = readWord(bytes);
    const qsizetype numbers = word ? word->size() + 1 : 0;
    if (!word || bytes.size() - numbers < offsetBytes + 4)
        return std::nullopt;
    const char *at = bytes.data() + numbers;
    IndexEntry entry;
    entry.word = *word;
    entry.offset = offsetBytes == 8 ? qFromBigEndian<quint64>(at) : qFromBigEndian<quint32>(at);
    entry.size = qFromBigEndian<quint32>(at + offsetBytes);
    entry.length = numbers + offsetBytes + 4;
    return entry;
}

std::optional<SynonymEntry> readSynonymEntry(QByteArrayView bytes) {
    const auto word = readWord(bytes);
    if (!word || bytes.size() - word->size() - 1 < 4)
        return std::nullopt;
    return SynonymEntry{*word, qFromBigEndian<quint32>(bytes.data() + word->size() + 1), word->size() + 5};
}

} // namespace lexiquill::stardict
