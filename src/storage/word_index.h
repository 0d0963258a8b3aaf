#pragma once

#include "model/word_record.h"

#include <QString>

namespace lexiquill {

/// Publishes wordbook entries to the system's search. The default stands for a system without such an
/// index: it reports indexing as unavailable and does nothing.
class WordIndex {
public:
    virtual ~WordIndex() = default;

    virtual bool isIndexingAvailable() const { return false; }
    /// Publishes a record, in place of an earlier one of the same word.
    virtual void indexWord(const WordRecord &record) { Q_UNUSED(record) }
    virtual void removeWord(const QString &word) { Q_UNUSED(word) }
};

} // namespace lexiquill
