#pragma once

#include "dictionaries/article/article.h"
#include "dictionaries/dictionary_problem.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <memory>
#include <optional>

namespace lexiquill {

/// Longest headword, in bytes of UTF-8; longer ones cannot be found.
inline constexpr qsizetype maxHeadwordSize = 4096;
/// Largest article that is read, in bytes.
inline constexpr quint32 maxArticleSize = 4 * 1024 * 1024;

/// What a dictionary says about itself. Text without markup; empty where it says nothing.
struct DictionaryAbout {
    QString name;
    QString author;
    /// Licence or description, at most a few thousand characters.
    QString description;
    qint64 wordCount = 0; ///< number of headwords; 0 if unknown
};

/// Where an article lies in the unpacked articles of a dictionary, in bytes.
struct ArticlePlace {
    quint64 offset = 0;
    quint32 size = 0;

    friend bool operator==(const ArticlePlace &, const ArticlePlace &) = default;
};

/// Receives the headwords of a dictionary.
class HeadwordSink {
public:
    virtual ~HeadwordSink() = default;
    /// `word`: UTF-8. A word that is empty or too long counts, but cannot be found. False when there are more
    /// words than can be stored; the dictionary is then too large.
    virtual bool addWord(QByteArrayView word, const ArticlePlace &place) = 0;
    /// Another spelling for the headword number `target`, counted from 0 in the order of addWord().
    virtual bool addAlias(QByteArrayView word, quint32 target) = 0;
};

/// What lies at a place: an article, or the headword whose article is meant.
struct StoredArticle {
    article::Article article;
    QString link; ///< empty for an article
    /// The headword as the article itself spells it; empty if the index has the right spelling.
    QString headword = {};
};

/// The opened files of one dictionary. Files are read by position and never mapped, so that they may become
/// shorter or change at any time. To be used by one thread at a time.
class DictionaryReader {
public:
    virtual ~DictionaryReader() = default;

    /// Passes all headwords to `sink`. Takes linear time.
    virtual DictionaryProblem readHeadwords(HeadwordSink &sink) = 0;

    /// No value when the place does not exist, its article is larger than maxArticleSize, or it is damaged.
    virtual std::optional<StoredArticle> article(const ArticlePlace &place) = 0;

    /// A file that comes with the dictionary, such as a picture or a sound, by the path that articles use
    /// ("images/apple.png"). No value when there is none.
    virtual std::optional<QByteArray> resource(const QString &) { return std::nullopt; }
};

/// A reader, or the reason why there is none.
struct OpenedReader {
    std::unique_ptr<DictionaryReader> reader;
    DictionaryProblem problem = DictionaryProblem::None;
};

} // namespace lexiquill
