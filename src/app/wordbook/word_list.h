#pragma once

#include "model/word_record.h"

#include <QHash>
#include <QList>
#include <QString>

#include <memory>

namespace lexiquill {

/// A record with precomputed data for filtering and sorting. Two rows are equal if they share the same
/// instance.
struct ListedWord {
    WordRecord record;
    QString searchText;         ///< word, glosses and note, case-folded, one per line
    QString alphabetKey;        ///< the word, case-folded
    quint64 alphabetPrefix = 0; ///< the first 4 characters of the key as a number with the same order
};

using ListedWordPointer = std::shared_ptr<const ListedWord>;

/// Which records are listed.
enum class WordFilter { All, New, Learning, Reviewing, Mastered, Due };

/// The sort order. Dates: newest first, but NextReview: earliest first. Counts: largest first. Equal records
/// keep the order of the wordbook.
enum class WordOrder { LastSearched, FirstSearched, NextReview, SearchCount, Alphabet };

/// The records of a wordbook for a list that filters and orders them.
class WordList {
public:
    /// Updates the list from the wordbook; a record that has not changed keeps its ListedWord.
    void setRecords(const QList<WordRecord> &records);
    void setOrder(WordOrder order);

    qsizetype size() const { return m_words.size(); }
    /// The records that contain `text`, ignoring case, and match `filter`, in the current order.
    QList<ListedWordPointer> select(const QString &text, WordFilter filter, Instant now);

private:
    void sort();
    QList<ListedWordPointer> wordsWith(const QString &folded);

    QList<ListedWordPointer> m_words; ///< in the order of the wordbook
    QList<ListedWordPointer> m_sorted;
    /// The texts of all sorted records as one string, because one search in it is much faster than one search
    /// per record. Built when first needed.
    QString m_texts;
    QList<qsizetype> m_textEnds;
    WordOrder m_order = WordOrder::LastSearched;
};

} // namespace lexiquill
