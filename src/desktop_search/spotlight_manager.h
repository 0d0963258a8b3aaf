#pragma once

#include "desktop_search/search_index.h"
#include "model/word_record.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

namespace lexiquill {

/// Publishes wordbook entries to the desktop search. Best effort: only finish() waits, and no error is
/// returned. A failed submission prints one line to standard output; a failed removal is silent.
class SpotlightManager {
public:
    using BatchCompletion = std::function<void(qsizetype count)>;

    explicit SpotlightManager(SearchIndex &index) : m_index(index) {}

    /// "com.lexiquill.vocabulary": set in every item, so that all can be removed at once.
    static const QString domainIdentifier;
    /// 492 common academic English words in alphabetical order.
    static const QStringList &commonHighFrequencyWords();
    /// "word:" and the word lower-cased: one item per word, ignoring case.
    static QString itemIdentifier(const QString &word);
    /// The search item of a record.
    static SearchItem item(const WordRecord &record);

    bool isIndexingAvailable() const { return m_index.isIndexingAvailable(); }

    /// Publishes a record; replaces an earlier one of the same word.
    void indexWord(const WordRecord &record) const;
    /// Publishes many records at once. `completion` gets the number of items submitted; 0 when there are
    /// none, when indexing is not available or when the submission failed. It is called on the index's
    /// thread, or at once when nothing is submitted.
    void indexWordsBatch(const QList<WordRecord> &records, BatchCompletion completion = {}) const;
    void removeWord(const QString &word) const { removeWords({word}); }
    /// Removes many words in one step.
    void removeWords(const QStringList &words) const;
    void clearAll() const;

    /// Waits until everything published is in the index, at most a few seconds; for a process that is about
    /// to end.
    void finish() const { m_index.finish(); }

private:
    SearchIndex &m_index;
};

} // namespace lexiquill
