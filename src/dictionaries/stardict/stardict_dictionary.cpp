#include "dictionaries/stardict/stardict_dictionary.h"

#include "dictionaries/article/article_reader.h"
#include "dictionaries/article/text_scan.h"
#include "dictionaries/index/folding.h"
#include "dictionaries/stardict/article_parts.h"
#include "dictionaries/stardict/index_reader.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <limits>
#include <new>

namespace lexiquill::stardict {

namespace {

/// The maximum number of articles in one entry, so that a hostile index cannot make it endless.
constexpr size_t maxArticles = 64;

std::optional<IfoInfo> readIfo(const QString &path) {
    QFile file(path);
    if (!stampOf(path).exists() || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray text = file.read(maxIfoSize + 1);
    if (text.size() > maxIfoSize)
        return std::nullopt;
    return parseIfo(text);
}

QString cacheFileName(const QString &dictionaryPath) {
    const QByteArray hash = QCryptographicHash::hash(dictionaryPath.toUtf8(), QCryptographicHash::Sha1);
    return QString::fromLatin1(hash.toHex()) + QStringLiteral(".index");
}

} // namespace

StardictDictionary::StardictDictionary(const QString &ifoPath, const QString &cacheDirectory)
    : m_basePath(QFileInfo(ifoPath).absoluteFilePath().chopped(4)),
      m_cachePath(QDir(cacheDirectory).filePath(cacheFileName(m_basePath))) {}

std::unique_ptr<StardictDictionary> StardictDictionary::fromIfo(const QString &ifoPath,
                                                                const QString &cacheDirectory) {
    if (!ifoPath.endsWith(QStringLiteral(".ifo")))
        return nullptr;
    const auto info = readIfo(ifoPath);
    if (!info)
        return nullptr;
    std::unique_ptr<StardictDictionary> dictionary(new StardictDictionary(ifoPath, cacheDirectory));
    dictionary->m_bookName = info->bookName;
    dictionary->m_wordCount = info->wordCount;
    return dictionary;
}

SourceStamps StardictDictionary::currentStamps() const {
    const auto firstOf = [this](QLatin1StringView plain, QLatin1StringView packed) {
        const FileStamp stamp = stampOf(m_basePath + plain);
        return stamp.exists() ? stamp : stampOf(m_basePath + packed);
    };
    return {stampOf(m_basePath + QStringLiteral(".ifo")),
            firstOf(QLatin1StringView(".idx"), QLatin1StringView(".idx.gz")),
            firstOf(QLatin1StringView(".dict"), QLatin1StringView(".dict.dz")),
            stampOf(m_basePath + QStringLiteral(".syn"))};
}

/// Reading a mapped file that has become shorter would crash the program. So the files on disk are compared
/// with the opened ones before every lookup.
bool StardictDictionary::ready() {
    const SourceStamps stamps = currentStamps();
    if (m_state != State::Unopened && stamps == m_stamps)
        return m_state == State::Open;
    close();
    m_stamps = stamps;
    bool opened = false;
    try {
        opened = open();
    } catch (const std::bad_alloc &) {
        opened = false;
    }
    if (!opened)
        close();
    m_state = opened ? State::Open : State::Unusable;
    return opened;
}

void StardictDictionary::close() {
    m_headwords.reset();
    m_table.reset();
    m_packedArticles.reset();
    m_index.close();
    m_articles.close();
    m_synonyms.close();
}

bool StardictDictionary::open() {
    const auto info = readIfo(m_basePath + QStringLiteral(".ifo"));
    if (!info)
        return false;
    m_info = *info;
    if (!openFiles())
        return false;
    openTable(false);
    return !m_table->broken();
}

bool StardictDictionary::openFiles() {
    m_indexIsPacked = !stampOf(m_basePath + QStringLiteral(".idx")).exists();
    const QString indexSuffix = m_indexIsPacked ? QStringLiteral(".idx.gz") : QStringLiteral(".idx");
    if (!m_index.open(m_basePath + indexSuffix, maxIndexSize))
        return false;
    if (m_info.synonymCount == 0 || !m_synonyms.open(m_basePath + QStringLiteral(".syn"), maxIndexSize))
        m_info.synonymCount = 0;
    constexpr qint64 anySize = std::numeric_limits<qint64>::max();
    if (stampOf(m_basePath + QStringLiteral(".dict")).exists())
        return m_articles.open(m_basePath + QStringLiteral(".dict"), anySize);
    if (!m_articles.open(m_basePath + QStringLiteral(".dict.dz"), anySize))
        return false;
    m_packedArticles = DictZip::open(m_articles.data());
    return m_packedArticles.has_value();
}

void StardictDictionary::openTable(bool rebuild) {
    if (!rebuild)
        m_table = LookupTable::load(m_cachePath, m_basePath, m_stamps);
    if (m_table && !rebuild)
        return;
    m_headwords.reset();
    TableContent content = readIndex({.info = m_info,
                                      .index = m_index.data(),
                                      .isPacked = m_indexIsPacked,
                                      .synonyms = m_synonyms.data()});
    content.holdsChinese = articlesHoldChinese(content);
    m_table = LookupTable::build(std::move(content), m_basePath, m_stamps);
    if (!QDir().mkpath(QFileInfo(m_cachePath).path()) || !m_table->save(m_cachePath))
        return;
    // The system can drop the pages of a mapped file when memory is low, but not a table on the heap.
    if (auto saved = LookupTable::load(m_cachePath, m_basePath, m_stamps))
        m_table = std::move(saved);
}

std::optional<IndexEntry> StardictDictionary::indexEntry(quint32 offset) const {
    QByteArrayView bytes;
    if (m_indexIsPacked)
        bytes = m_table->indexBytes(offset, maxEntrySize);
    else if (offset < static_cast<quint64>(m_index.data().size()))
        bytes = m_index.data().sliced(offset);
    return readIndexEntry(bytes, m_info.offsetBytes);
}

/// False when the table does not match the index, so that the table must be rebuilt.
bool StardictDictionary::collectMatches(QByteArrayView word, std::vector<Match> &exact,
                                        std::vector<Match> &folded) {
    const quint32 hash = foldedHash(word);
    const QByteArray foldedWord = foldCase(word);
    for (const quint32 offset : m_table->words(hash)) {
        const auto entry = indexEntry(offset);
        if (!entry || foldedHash(entry->word) != hash)
            return false;
        if (entry->word == word)
            exact.push_back({*entry, entry->word});
        else if (foldCase(entry->word) == foldedWord)
            folded.push_back({*entry, entry->word});
    }
    return !m_table->damaged();
}

bool StardictDictionary::collectSynonyms(QByteArrayView word, std::vector<Match> &exact,
                                         std::vector<Match> &folded) {
    const quint32 hash = foldedHash(word);
    const QByteArray foldedWord = foldCase(word);
    for (const LookupTable::SynonymPlace &place : m_table->synonyms(hash)) {
        const QByteArrayView list = m_synonyms.data();
        const auto synonym = place.synonym < static_cast<quint64>(list.size())
                                 ? readSynonymEntry(list.sliced(place.synonym))
                                 : std::nullopt;
        const auto entry = indexEntry(place.index);
        if (!synonym || !entry || foldedHash(synonym->word) != hash)
            return false;
        if (synonym->word == word)
            exact.push_back({*entry, synonym->word});
        else if (foldCase(synonym->word) == foldedWord)
            folded.push_back({*entry, synonym->word});
    }
    return !m_table->damaged();
}

std::vector<StardictDictionary::Match> StardictDictionary::matches(QByteArrayView word) {
    std::vector<Match> exact;
    std::vector<Match> folded;
    std::vector<Match> exactSynonyms;
    std::vector<Match> foldedSynonyms;
    const auto collect = [&] {
        for (auto *list : {&exact, &folded, &exactSynonyms, &foldedSynonyms})
            list->clear();
        return collectMatches(word, exact, folded) && collectSynonyms(word, exactSynonyms, foldedSynonyms);
    };
    if (!collect()) {
        openTable(true);
        if (m_table->broken() || !collect())
            return {};
    }
    for (auto *list : {&exact, &exactSynonyms, &folded, &foldedSynonyms}) {
        if (list->empty())
            continue;
        std::erase_if(
            *list, [first = list->front().spelling](const Match &match) { return match.spelling != first; });
        return std::move(*list);
    }
    return {};
}

std::optional<QByteArray> StardictDictionary::article(const IndexEntry &entry) const {
    if (entry.size == 0 || entry.size > maxArticleSize)
        return std::nullopt;
    if (m_packedArticles)
        return m_packedArticles->read(entry.offset, entry.size);
    const auto available = static_cast<quint64>(m_articles.data().size());
    if (entry.offset > available || entry.size > available - entry.offset)
        return std::nullopt;
    return m_articles.data().sliced(static_cast<qsizetype>(entry.offset), entry.size).toByteArray();
}

std::optional<DictionaryEntry> StardictDictionary::find(const QString &word) {
    const QByteArray bytes = word.toUtf8();
    if (bytes.isEmpty() || bytes.size() > maxWordSize || bytes.contains('\0') || !ready())
        return std::nullopt;
    QString headword;
    std::vector<article::Article> articles;
    qsizetype total = 0;
    for (const Match &match : matches(bytes)) {
        const auto text = article(match.entry);
        if (!text || articles.size() == maxArticles || total + text->size() > maxArticleSize)
            continue;
        if (articles.empty())
            headword = QString::fromUtf8(match.entry.word);
        total += text->size();
        articles.push_back(splitArticle(*text, m_info.typeSequence));
    }
    return article::readArticles(headword, articles);
}

QByteArrayView StardictDictionary::index() {
    return m_indexIsPacked ? m_table->wholeIndex() : m_index.data();
}

const Headwords *StardictDictionary::headwords() {
    if (!ready())
        return nullptr;
    if (!m_headwords) {
        QByteArrayView words = index();
        if (m_indexIsPacked && m_table->damaged()) {
            openTable(true);
            words = index();
        }
        constexpr int sizeBytes = 4;
        m_headwords.emplace(words, m_info.offsetBytes + sizeBytes);
    }
    return &*m_headwords;
}

QString StardictDictionary::path() const {
    return m_basePath + QStringLiteral(".ifo");
}

bool StardictDictionary::holdsChinese() {
    return ready() && m_table->holdsChinese();
}

/// Checks a few articles, spread over the whole dictionary. Dictionaries of other languages quote some
/// Chinese, in a few articles only.
bool StardictDictionary::articlesHoldChinese(const TableContent &content) const {
    constexpr size_t samples = 24;
    constexpr size_t fewestShare = 8;
    size_t read = 0;
    size_t chinese = 0;
    const QByteArrayView index = m_indexIsPacked ? QByteArrayView(content.index) : m_index.data();
    const size_t step = std::max<size_t>(1, content.words.size() / samples);
    for (size_t i = 0; i < content.words.size(); i += step) {
        const auto place = readIndexEntry(index.sliced(content.words[i].place), m_info.offsetBytes);
        const auto text = place ? article(*place) : std::nullopt;
        if (!text)
            continue;
        ++read;
        const QString word = QString::fromUtf8(place->word);
        const auto entry = article::readArticles(word, {splitArticle(*text, m_info.typeSequence)});
        chinese += article::isChinese(entry ? word + entry->rawText : word) ? 1 : 0;
    }
    return chinese > 0 && chinese * fewestShare >= read;
}

} // namespace lexiquill::stardict
