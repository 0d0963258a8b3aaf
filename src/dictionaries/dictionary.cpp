#include "dictionaries/dictionary.h"

#include "dictionaries/article/article_reader.h"
#include "dictionaries/article/text_scan.h"
#include "dictionaries/index/folding.h"
#include "dictionaries/index/index_builder.h"
#include "platform/durable_file.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <new>
#include <utility>

namespace lexiquill {

namespace {

/// The maximum number of articles in one entry, so that a hostile index cannot make it endless.
constexpr size_t maxArticles = 64;
/// A link leads to a word that may itself be a link.
constexpr int maxLinks = 5;
/// Links may branch, so their number is limited, too.
constexpr int maxReads = 256;

QByteArray identityOf(const QString &path) {
    return QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Sha1);
}

qsizetype sizeOf(const article::Article &article) {
    qsizetype size = 0;
    for (const article::Part &part : article)
        size += part.text.size();
    return size;
}

} // namespace

Dictionary::Dictionary(const DictionaryFormat &format, const QString &path, const QString &cacheDirectory)
    : m_format(format),
      m_path(QFileInfo(path).absoluteFilePath()),
      m_identity(identityOf(m_path)),
      m_cachePath(indexFile(m_path, cacheDirectory)),
      m_description(format.describe(m_path)) {}

/// Its name is made from the path, so that each dictionary has one.
QString Dictionary::indexFile(const QString &path, const QString &cacheDirectory) {
    return QDir(cacheDirectory)
        .filePath(QString::fromLatin1(identityOf(path).toHex()) + QStringLiteral(".index"));
}

DictionaryProblem Dictionary::knownProblem() const {
    return m_problem != DictionaryProblem::None ? m_problem : m_description.problem;
}

DictionaryProblem Dictionary::prepare() {
    ready();
    return m_problem;
}

SourceStamps Dictionary::currentStamps() const {
    SourceStamps stamps;
    const QStringList files = m_format.files(m_path);
    std::transform(files.begin(), files.begin() + std::min<qsizetype>(files.size(), stamps.size()),
                   stamps.begin(), stampOf);
    return stamps;
}

/// Compares the files on disk with the opened ones before every lookup. Builds an index that turned out to be
/// damaged again.
bool Dictionary::ready() {
    const SourceStamps stamps = currentStamps();
    const bool isDamaged = m_index && m_index->isDamaged();
    if (m_isOpened && stamps == m_stamps && !isDamaged)
        return m_problem == DictionaryProblem::None;
    m_stamps = stamps;
    try {
        open(!isDamaged);
    } catch (const std::bad_alloc &) {
        m_problem = DictionaryProblem::TooLarge;
    }
    if (m_problem != DictionaryProblem::None)
        close();
    m_isOpened = true;
    return m_problem == DictionaryProblem::None;
}

void Dictionary::close() {
    m_index.reset();
    m_reader.reset();
    m_isOpened = false;
}

void Dictionary::open(bool mayLoadIndex) {
    close();
    auto opened = m_format.open(m_path);
    m_reader = std::move(opened.reader);
    m_problem = opened.problem;
    if (!m_reader)
        return;
    if (mayLoadIndex)
        m_index = HeadwordIndex::load(m_cachePath, m_identity, m_stamps);
    if (!m_index)
        buildIndex();
    m_problem = m_index ? m_index->problem() : DictionaryProblem::Damaged;
}

void Dictionary::buildIndex() {
    QByteArray image;
    {
        IndexBuilder builder;
        DictionaryProblem problem = m_reader->readHeadwords(builder);
        Sample sample;
        if (problem == DictionaryProblem::None) {
            sample = sampleOf(*m_reader, builder);
            problem = sample.isReadable ? problem : DictionaryProblem::Damaged;
        }
        image = builder.file(m_identity, m_stamps, sample.holdsChinese, problem);
    }
    if (QDir().mkpath(QFileInfo(m_cachePath).path()) &&
        replaceFile(m_cachePath, image, {.durability = DurableFile::Durability::Cached}) ==
            DurableFile::Problem::None)
        m_index = HeadwordIndex::load(m_cachePath, m_identity, m_stamps);
    if (!m_index)
        m_index = HeadwordIndex::fromImage(image);
}

struct Dictionary::Search {
    Articles found = {};
    qsizetype size = 0;
    int readsLeft = maxReads;
};

/// Adds the articles of a word, and of the words that they lead to. Does not look at the files on disk, so
/// that the reader stays the same.
void Dictionary::collect(const QString &word, int linksLeft, Search &search) const {
    std::vector<article::Article> &articles = search.found.articles;
    const QByteArray bytes = word.toUtf8();
    if (bytes.isEmpty() || bytes.size() > maxHeadwordSize)
        return;
    for (const HeadwordIndex::Match &match : m_index->find(bytes)) {
        if (articles.size() == maxArticles || search.readsLeft == 0)
            return;
        --search.readsLeft;
        auto stored = m_reader->article(match.place);
        if (!stored)
            continue;
        if (!stored->link.isEmpty()) {
            if (linksLeft > 0)
                collect(stored->link, linksLeft - 1, search);
            continue;
        }
        const qsizetype size = sizeOf(stored->article);
        if (search.size + size > maxArticleSize)
            continue;
        search.size += size;
        if (articles.empty()) {
            const bool isSpelledOtherwise =
                foldedKey(stored->headword.toUtf8()) == foldedKey(match.headword.toUtf8());
            search.found.headword = isSpelledOtherwise ? stored->headword : match.headword;
        }
        articles.push_back(std::move(stored->article));
    }
}

Dictionary::Articles Dictionary::articles(const QString &word) {
    if (headwords() == nullptr)
        return {};
    Search search;
    collect(word, maxLinks, search);
    // Damage shows only when a page is read.
    if (m_index->isDamaged() && headwords() != nullptr) {
        search = Search();
        collect(word, maxLinks, search);
    }
    return std::move(search.found);
}

std::optional<DictionaryEntry> Dictionary::find(const QString &word) {
    const Articles found = articles(word);
    return found.articles.empty() ? std::nullopt : article::readArticles(found.headword, found.articles);
}

const HeadwordIndex *Dictionary::headwords() {
    ready();
    return m_index.get();
}

bool Dictionary::holdsChinese() {
    return ready() && m_index->holdsChinese();
}

std::optional<QByteArray> Dictionary::resource(const QString &name) {
    return ready() ? m_reader->resource(name) : std::nullopt;
}

/// Checks a few articles, spread over the whole dictionary. Dictionaries of other languages quote some
/// Chinese, in a few articles only. If most of the articles are missing, the file has been cut off.
Dictionary::Sample Dictionary::sampleOf(DictionaryReader &reader, const IndexBuilder &words) {
    constexpr qsizetype samples = 24;
    constexpr int fewestShare = 8;
    int tried = 0;
    int missing = 0;
    int read = 0;
    int chinese = 0;
    const qsizetype step = std::max<qsizetype>(1, words.wordCount() / samples);
    for (qsizetype i = 0; i < words.wordCount(); i += step) {
        const auto stored = reader.article(words.place(i));
        ++tried;
        missing += stored ? 0 : 1;
        if (!stored || !stored->link.isEmpty())
            continue;
        ++read;
        const QString word = QString::fromUtf8(words.word(i));
        const auto entry = article::readArticles(word, {stored->article});
        chinese += article::isChinese(entry ? word + entry->rawText : word) ? 1 : 0;
    }
    return {.isReadable = 2 * missing <= tried, .holdsChinese = chinese > 0 && chinese * fewestShare >= read};
}

} // namespace lexiquill
