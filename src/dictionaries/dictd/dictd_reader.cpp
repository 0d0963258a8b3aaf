#include "dictionaries/dictd/dictd_reader.h"

#include "dictionaries/dictd/index_line.h"
#include "platform/file_snapshot.h"
#include "platform/file_stamp.h"

#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace lexiquill::dictd {

namespace {

constexpr qint64 maxIndexSize = qint64(512) * 1024 * 1024;

QString basePathOf(const QString &indexPath) {
    return indexPath.chopped(6);
}

/// Calls `visit` with every well-formed line until it returns false.
template <typename Visit> void readLines(QByteArrayView index, Visit visit) {
    while (!index.isEmpty()) {
        const qsizetype end = index.indexOf('\n');
        const QByteArrayView line = end < 0 ? index : index.first(end);
        index = end < 0 ? QByteArrayView() : index.sliced(end + 1);
        if (const auto read = readIndexLine(line); read && !visit(*read))
            return;
    }
}

/// Most dictionaries are in UTF-8, also those that do not say so; old ones are in Latin-1.
QString decoded(QByteArrayView bytes) {
    return bytes.isValidUtf8() ? QString::fromUtf8(bytes) : QString::fromLatin1(bytes);
}

/// The entries about a dictionary repeat their name in the first line.
QString withoutTitle(const QString &text) {
    const qsizetype lineEnd = text.indexOf(u'\n');
    const QString first = text.first(std::max<qsizetype>(lineEnd, 0)).trimmed();
    const bool hasTitle = first.startsWith(QStringLiteral("00"));
    return hasTitle ? text.sliced(lineEnd + 1) : text;
}

} // namespace

bool hasArticles(const QString &indexPath) {
    return stampOf(ArticleFile::pathOf(basePathOf(indexPath))).exists();
}

QStringList filesOf(const QString &indexPath) {
    return {indexPath, ArticleFile::pathOf(basePathOf(indexPath))};
}

DictionaryDescription describe(const QString &indexPath) {
    const auto opened = DictdReader::open(indexPath);
    DictionaryDescription description{.about = {}, .problem = opened.problem};
    if (opened.reader)
        description.about = static_cast<const DictdReader &>(*opened.reader).about();
    if (description.about.name.isEmpty())
        description.about.name = QFileInfo(indexPath).completeBaseName();
    return description;
}

OpenedReader DictdReader::open(const QString &indexPath) {
    std::unique_ptr<DictdReader> reader(new DictdReader);
    reader->m_indexPath = indexPath;
    const DictionaryProblem problem = reader->m_articles.open(basePathOf(indexPath));
    if (problem != DictionaryProblem::None)
        return {nullptr, problem};
    if (reader->about().name.contains(QStringLiteral("WordNet"), Qt::CaseInsensitive))
        reader->m_form = article::Form::WordNet;
    return {std::move(reader), problem};
}

QString DictdReader::text(const ArticlePlace &place) const {
    const auto bytes = m_articles.read(place);
    return bytes ? decoded(*bytes) : QString();
}

DictionaryAbout DictdReader::about() const {
    // These entries come first, among the numbers.
    constexpr qint64 enough = qint64(64) * 1024;
    constexpr qsizetype maxDescription = 2000;
    const auto index = FileSnapshot::open(m_indexPath);
    QByteArray start(index ? std::min(index->size(), enough) : 0, Qt::Uninitialized);
    if (!index || !index->read(0, start.data(), start.size()))
        return {};
    DictionaryAbout about;
    readLines(start, [&](const IndexLine &line) {
        const QByteArrayView field = databaseField(line.word);
        if (field == "short")
            about.name = withoutTitle(text(line.place)).simplified();
        else if (field == "info")
            about.description = withoutTitle(text(line.place)).trimmed().left(maxDescription);
        return about.name.isEmpty() || about.description.isEmpty();
    });
    return about;
}

DictionaryProblem DictdReader::readHeadwords(HeadwordSink &sink) {
    // It is not kept open: a user may have many dictionaries.
    const auto file = FileSnapshot::open(m_indexPath);
    if (file && file->size() > maxIndexSize)
        return DictionaryProblem::TooLarge;
    const auto index = file ? file->readAll(0) : std::nullopt;
    if (!index)
        return DictionaryProblem::Unreadable;
    bool fits = true;
    quint32 count = 0;
    readLines(*index, [&](const IndexLine &line) {
        if (!databaseField(line.word).isEmpty())
            return true;
        const QByteArray word =
            decoded(line.spelling.isEmpty() ? line.word : line.spelling).simplified().toUtf8();
        fits = sink.addWord(word, line.place);
        if (fits && !line.spelling.isEmpty() && line.spelling != line.word)
            fits = sink.addAlias(decoded(line.word).toUtf8(), count);
        ++count;
        return fits;
    });
    if (!fits)
        return DictionaryProblem::TooLarge;
    return count > 0 ? DictionaryProblem::None : DictionaryProblem::UnknownFormat;
}

std::optional<StoredArticle> DictdReader::article(const ArticlePlace &place) {
    const auto bytes = m_articles.read(place);
    if (!bytes)
        return std::nullopt;
    const QString text = decoded(*bytes);
    return StoredArticle{.article = {{m_form, text}},
                         .link = {},
                         .headword = text.first(std::max<qsizetype>(text.indexOf(u'\n'), 0)).trimmed()};
}

} // namespace lexiquill::dictd
