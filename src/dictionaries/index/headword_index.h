#pragma once

#include "dictionaries/dictionary_reader.h"
#include "dictionaries/english/word_frequency.h"
#include "dictionaries/index/checked_pages.h"
#include "dictionaries/index/index_format.h"
#include "dictionaries/index/similar_words.h"

#include <QByteArray>
#include <QString>

#include <chrono>
#include <memory>
#include <optional>
#include <stop_token>
#include <vector>

namespace lexiquill {

/// The headwords of a dictionary in any format, sorted, with the places of their articles. Stored in a cache
/// file, of which only the required pages are read. After isDamaged() becomes true, results are incomplete
/// and the index should be built again.
class HeadwordIndex {
public:
    /// An article that belongs to a word.
    struct Match {
        QString headword; ///< for another spelling, the word that it stands for
        ArticlePlace place;
    };

    /// A word with what decides about its place among suggestions; the better one is less.
    struct RankedWord {
        bool isOther = false; ///< not exactly what was typed
        bool isAlias = false; ///< another spelling or a form of a headword
        int frequency = 0;    ///< see WordFrequency
        qsizetype length = 0;
        QByteArray word;

        bool operator<(const RankedWord &other) const;
    };

    /// Opens a cache file. Null when it is missing or damaged, or was built for another dictionary or from
    /// other versions of its files. `identity`: at most 24 bytes that identify the dictionary.
    static std::unique_ptr<HeadwordIndex> load(const QString &path, const QByteArray &identity,
                                               const SourceStamps &stamps);
    /// Takes a file made by IndexBuilder.
    static std::unique_ptr<HeadwordIndex> fromImage(const QByteArray &image);

    /// Why the dictionary cannot be used. This is stored, so that the dictionary is not read again.
    DictionaryProblem problem() const { return m_problem; }
    /// Whether at least a part of the articles is in Chinese.
    bool holdsChinese() const { return m_holdsChinese; }
    /// Number of headwords and other spellings.
    qint64 size() const { return m_entryCount; }
    bool isDamaged() const { return m_pages.isDamaged(); }

    /// The articles of the headword with exactly this spelling; otherwise of the first other spelling for a
    /// headword, then of the first headword that differs in case only, then in accents.
    std::vector<Match> find(QByteArrayView word) const;

    /// At most `limit` words that start with `prefix`, ignoring case and accents: the exact word, then
    /// headwords, then common words, then shorter ones.
    std::vector<RankedWord> startingWith(QByteArrayView prefix, size_t limit,
                                         const WordFrequency &frequency) const;

    /// At most `limit` words with Chinese characters that contain `part`, ignoring case: the exact word, then
    /// the shortest ones.
    std::vector<RankedWord> containing(QByteArrayView part, size_t limit) const;

    /// The words found before `deadline` that are at most two edits away; at most one edit if `word` has less
    /// than 4 characters.
    std::vector<SimilarWord> similarTo(const QString &word, const WordFrequency &frequency,
                                       std::chrono::steady_clock::time_point deadline,
                                       const std::stop_token &stop) const;

private:
    /// A word of the texts.
    struct Text {
        QByteArrayView key;
        QByteArrayView headword;
        bool isAlias = false;
    };
    class BestWords;
    class Scan;

    explicit HeadwordIndex(CheckedPages pages, const headword_index::Header &header);
    static std::unique_ptr<HeadwordIndex> adopt(const QByteArray &head, std::unique_ptr<FileSnapshot> file,
                                                const QByteArray &image);
    static Text divided(QByteArrayView text);
    std::optional<headword_index::Entry> entry(qint64 number) const;
    QByteArray textOf(const headword_index::Entry &entry) const;
    int compare(QByteArrayView key, qint64 number) const;
    qint64 lowerBound(QByteArrayView key, qint64 first, qint64 last) const;
    qint64 textStart(qint64 number) const;

    CheckedPages m_pages;
    DictionaryProblem m_problem;
    bool m_holdsChinese;
    qint64 m_textSize;
    qint64 m_entryStart;
    qint64 m_entryCount;
    qint64 m_firstChinese;
};

} // namespace lexiquill
