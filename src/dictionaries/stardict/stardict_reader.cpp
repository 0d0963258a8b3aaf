#include "dictionaries/stardict/stardict_reader.h"

#include "dictionaries/resource_folder.h"
#include "dictionaries/stardict/article_parts.h"
#include "dictionaries/stardict/index_entry.h"
#include "platform/file_stamp.h"
#include "support/gzip.h"

#include <algorithm>
#include <utility>

namespace lexiquill::stardict {

namespace {

QString basePathOf(const QString &ifoPath) {
    return ifoPath.chopped(4);
}

std::optional<IfoInfo> readIfo(const QString &path, DictionaryProblem &problem) {
    const auto file = FileSnapshot::open(path);
    if (!file) {
        problem = DictionaryProblem::Unreadable;
        return std::nullopt;
    }
    QByteArray text(std::min(file->size(), maxIfoSize), Qt::Uninitialized);
    const bool isRead = file->size() <= maxIfoSize && file->read(0, text.data(), text.size());
    auto info = isRead ? parseIfo(text) : std::nullopt;
    problem = info ? DictionaryProblem::None : DictionaryProblem::UnknownFormat;
    return info;
}

QString indexPathOf(const QString &basePath) {
    QString plain = basePath + QStringLiteral(".idx");
    return stampOf(plain).exists() ? plain : plain + QStringLiteral(".gz");
}

} // namespace

QStringList filesOf(const QString &ifoPath) {
    const QString base = basePathOf(ifoPath);
    return {ifoPath, indexPathOf(base), ArticleFile::pathOf(base), base + QStringLiteral(".syn")};
}

DictionaryDescription describe(const QString &ifoPath) {
    DictionaryDescription description;
    if (const auto info = readIfo(ifoPath, description.problem))
        description.about = info->about;
    return description;
}

OpenedReader StardictReader::open(const QString &ifoPath) {
    DictionaryProblem problem = DictionaryProblem::None;
    const auto info = readIfo(ifoPath, problem);
    if (!info)
        return {nullptr, problem};
    std::unique_ptr<StardictReader> reader(new StardictReader);
    reader->m_info = *info;
    reader->m_basePath = basePathOf(ifoPath);
    const QString indexPath = indexPathOf(reader->m_basePath);
    reader->m_isIndexPacked = indexPath.endsWith(QStringLiteral(".gz"));
    reader->m_index = FileSnapshot::open(indexPath);
    if (!reader->m_index)
        return {nullptr, DictionaryProblem::Unreadable};
    if (info->synonymCount > 0)
        reader->m_synonyms = FileSnapshot::open(reader->m_basePath + QStringLiteral(".syn"));
    problem = reader->m_articles.open(reader->m_basePath);
    if (problem != DictionaryProblem::None)
        return {nullptr, problem};
    return {std::move(reader), problem};
}

std::optional<QByteArray> StardictReader::wholeIndex() const {
    if (m_index->size() > maxIndexSize)
        return std::nullopt;
    auto bytes = m_index->readAll(0);
    if (!bytes || !m_isIndexPacked)
        return bytes && bytes->size() == m_info.indexSize ? bytes : std::nullopt;
    QByteArray unpacked;
    if (!unpackGzip(*bytes, m_info.indexSize, unpacked))
        return std::nullopt;
    return unpacked;
}

DictionaryProblem StardictReader::readHeadwords(HeadwordSink &sink) {
    const auto index = wholeIndex();
    if (!index)
        return DictionaryProblem::Damaged;
    quint32 count = 0;
    for (QByteArrayView rest = *index; !rest.isEmpty(); ++count) {
        const auto entry = readIndexEntry(rest, m_info.offsetBytes);
        if (!entry || count == m_info.wordCount)
            return DictionaryProblem::Damaged;
        if (!sink.addWord(entry->word, {entry->offset, entry->size}))
            return DictionaryProblem::TooLarge;
        rest = rest.sliced(entry->length);
    }
    if (count != m_info.wordCount)
        return DictionaryProblem::Damaged;
    return readSynonyms(sink) ? DictionaryProblem::None : DictionaryProblem::TooLarge;
}

/// A malformed list of synonyms counts as empty. False when there are too many.
bool StardictReader::readSynonyms(HeadwordSink &sink) const {
    if (!m_synonyms || m_synonyms->size() > maxIndexSize)
        return true;
    const QByteArray bytes = m_synonyms->readAll(0).value_or(QByteArray());
    std::vector<SynonymEntry> synonyms;
    for (QByteArrayView rest = bytes; !rest.isEmpty();) {
        const auto entry = readSynonymEntry(rest);
        if (!entry || synonyms.size() == m_info.synonymCount)
            return true;
        synonyms.push_back(*entry);
        rest = rest.sliced(entry->length);
    }
    return synonyms.size() != m_info.synonymCount ||
           std::all_of(synonyms.begin(), synonyms.end(), [&sink](const SynonymEntry &entry) {
               return sink.addAlias(entry.word, entry.target);
           });
}

std::optional<StoredArticle> StardictReader::article(const ArticlePlace &place) {
    const auto bytes = m_articles.read(place);
    if (!bytes)
        return std::nullopt;
    return StoredArticle{.article = splitArticle(*bytes, m_info.typeSequence), .link = {}};
}

std::optional<QByteArray> StardictReader::resource(const QString &name) {
    return readResource(m_basePath.section(u'/', 0, -2) + QStringLiteral("/res"), name);
}

} // namespace lexiquill::stardict
