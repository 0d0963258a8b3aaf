#pragma once

#include "model/word_record.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <memory>

namespace lexiquill {

/// A record with precomputed data for filtering and sorting. Two rows are equal if they share the same
/// instance.
struct ListedWord {
    WordRecord record;
    QString searchText;         ///< word, glosses and note, case-folded, one per line
    QString alphabetKey;        ///< the word, case-folded
    quint64 alphabetPrefix = 0; ///< the first 4 characters of the key as a number with the same order
    QStringList tags = {};      ///< of the note, as written
    QStringList tagKeys = {};   ///< the same, as they are compared
};

using ListedWordPointer = std::shared_ptr<const ListedWord>;

/// Which records are listed.
enum class WordFilter { All, New, Learning, Reviewing, Mastered, Due };

/// The sort order. Dates: newest first, but NextReview: earliest first. Counts: largest first. Equal records
/// keep the order of the wordbook.
enum class WordOrder { LastSearched, FirstSearched, NextReview, SearchCount, Alphabet };

/// Which records are to be listed: those that meet all conditions.
struct WordChoice {
    /// What the words contain, ignoring case. Tags at its start ("#…") select the words that carry them; if
    /// nothing carries one of them, those with a tag that begins with it.
    QString text = {};
    WordFilter filter = WordFilter::All;
    QString tagKey = {}; ///< see tagKey(); empty for all words
};

/// A tag of the wordbook.
struct TagCount {
    QString key;
    QString name; ///< as it was first written
    int count = 0;

    friend bool operator==(const TagCount &, const TagCount &) = default;
};

/// The records of a wordbook for a list that filters and orders them. A copy can be made and filled on
/// another thread.
class WordList {
public:
    /// Updates the list from the wordbook; a record that has not changed keeps its ListedWord.
    void setRecords(const QList<WordRecord> &records);
    void setOrder(WordOrder order);
    WordOrder order() const { return m_order; }

    qsizetype size() const { return m_words.size(); }
    /// The tags of all records, the most frequent first.
    const QList<TagCount> &tags() const { return m_tags; }
    /// The chosen records in the current order.
    QList<ListedWordPointer> select(const WordChoice &choice, Instant now);
    /// Does in advance what the first search for a text needs.
    void prepareSearch();

private:
    void sort();
    void countTags();
    bool isTag(const QString &key) const;
    QList<ListedWordPointer> wordsWith(const QString &folded);

    QList<ListedWordPointer> m_words; ///< in the order of the wordbook
    QList<ListedWordPointer> m_sorted;
    /// The texts of all sorted records as one string, because one search in it is much faster than one search
    /// per record. Built when first needed.
    QString m_texts;
    QList<qsizetype> m_textEnds;
    QList<TagCount> m_tags;
    WordOrder m_order = WordOrder::LastSearched;
};

} // namespace lexiquill
