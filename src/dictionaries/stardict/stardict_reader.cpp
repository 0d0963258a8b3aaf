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
    problem = reader->m_articles.open(reader->m_basePath);
    if (problem != DictionaryProblem::None)
        return {nullptr, problem};
    return {std::move(reader), problem};
}

/// The index file is not kept open: a user may have many dictionaries.
std::optional<QByteArray> StardictReader::wholeIndex(DictionaryProblem &problem) const {
    const QString path = indexPathOf(m_basePath);
    const auto file = FileSnapshot::open(path);
    problem = file ? DictionaryProblem::Damaged : DictionaryProblem::Unreadable;
    if (!file || file->size() > maxIndexSize)
        return std::nullopt;
    auto bytes = file->readAll(0);
    const bool isPacked = path.endsWith(QStringLiteral(".gz"));
    if (!bytes || !isPacked)
        return bytes && bytes->size() == m_info.indexSize ? bytes : std::nullopt;
    QByteArray unpacked;
    if (!unpackGzip(*bytes, m_info.indexSize, unpacked))
        return std::nullopt;
    return unpacked;
}

DictionaryProblem StardictReader::readHeadwords(HeadwordSink &sink) {
    DictionaryProblem problem = DictionaryProblem::None;
    const auto index = wholeIndex(problem);
    if (!index)
        return problem;
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
    const auto file =
        m_info.synonymCount > 0 ? FileSnapshot::open(m_basePath + QStringLiteral(".syn")) : nullptr;
    if (!file || file->size() > maxIndexSize)
        return true;
    const QByteArray bytes = file->readAll(0).value_or(QByteArray());
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
