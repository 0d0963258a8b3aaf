#include "dictionaries/stardict/index_reader.h"

#include "dictionaries/index/folding.h"
#include "dictionaries/stardict/index_entry.h"
#include "support/gzip.h"

#include <algorithm>

namespace lexiquill::stardict {

namespace {

TableContent::Word wordOf(QByteArrayView word, qsizetype place) {
    return {.hash = foldedHash(word), .place = static_cast<quint32>(place)};
}

/// False unless there are exactly as many valid entries as announced.
bool readWords(QByteArrayView index, const IfoInfo &info, std::vector<TableContent::Word> &words) {
    constexpr size_t shortestEntry = 9;
    words.reserve(std::min<size_t>(info.wordCount, static_cast<size_t>(index.size()) / shortestEntry));
    for (qsizetype at = 0; at < index.size();) {
        const auto entry = readIndexEntry(index.sliced(at), info.offsetBytes);
        if (!entry || words.size() == info.wordCount)
            return false;
        words.push_back(wordOf(entry->word, at));
        at += entry->length;
    }
    return words.size() == info.wordCount;
}

std::vector<TableContent::Synonym> readSynonyms(QByteArrayView list, const IfoInfo &info,
                                                const std::vector<TableContent::Word> &words) {
    std::vector<TableContent::Synonym> synonyms;
    quint32 count = 0;
    for (qsizetype at = 0; at < list.size(); ++count) {
        const auto entry = readSynonymEntry(list.sliced(at));
        if (!entry || count == info.synonymCount)
            return {};
        if (entry->target < words.size())
            synonyms.push_back({wordOf(entry->word, at), words[entry->target].place});
        at += entry->length;
    }
    if (count != info.synonymCount)
        return {};
    return synonyms;
}

} // namespace

TableContent readIndex(const IndexFiles &files) {
    TableContent content;
    QByteArrayView index = files.index;
    if (files.isPacked) {
        if (!unpackGzip(files.index, files.info.indexSize, content.index))
            return {};
        index = content.index;
    }
    content.isSound = index.size() == files.info.indexSize && readWords(index, files.info, content.words);
    if (content.isSound && files.info.synonymCount > 0)
        content.synonyms = readSynonyms(files.synonyms, files.info, content.words);
    return content;
}

} // namespace lexiquill::stardict
