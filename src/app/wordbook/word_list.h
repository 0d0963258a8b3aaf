#pragma once

#include "model/word_record.h"

#include <QHash>
#include <QList>
#include <QString>

#include <memory>

namespace lexiquill {

/// A record with what filters and orders need of it, worked out once. Two rows are the same when they share
/// one of these.
struct ListedWord {
    WordRecord record;
    QString searchText;         ///< word, glosses and note, case-folded, in lines
    QString alphabetKey;        ///< the word, case-folded
    quint64 alphabetPrefix = 0; ///< the beginning of the key as a number that orders alike
};

using ListedWordPointer = std::shared_ptr<const ListedWord>;

/// Which records are listed.
enum class WordFilter { All, New, Learning, Reviewing, Mastered, Due };

/// In what order. Dates: the newest first, but the next review that comes first; counts: the largest first.
/// Records that are alike keep the order of the wordbook.
enum class WordOrder { LastSearched, FirstSearched, NextReview, SearchCount, Alphabet };

/// The records of a wordbook for a list that filters and orders them.
class WordList {
public:
    /// Takes in the state of the wordbook; a record that has not changed keeps its ListedWord.
    void setRecords(const QList<WordRecord> &records);
    void setOrder(WordOrder order);

    qsizetype size() const { return m_words.size(); }
    /// The records whose text holds `text`, whatever its case, and that `filter` lets pass, in order.
    QList<ListedWordPointer> select(const QString &text, WordFilter filter, Instant now);

private:
    void sort();
    QList<ListedWordPointer> wordsWith(const QString &folded);

    QList<ListedWordPointer> m_words; ///< as in the wordbook
    QList<ListedWordPointer> m_sorted;
    /// The texts of the sorted records one behind the other, for one search goes through them far quicker
    /// than one for each; made when first needed.
    QString m_texts;
    QList<qsizetype> m_textEnds;
    WordOrder m_order = WordOrder::LastSearched;
};

} // namespace lexiquill
