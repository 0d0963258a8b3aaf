#pragma once

#include "desktop_search/search_index.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <memory>

namespace lexiquill {

/// The search index: one SQLite file that many processes write and read at once. Every call opens the file
/// and waits for other processes at most `patienceMilliseconds`; a damaged or foreign file is replaced by an
/// empty index. An object belongs to one thread at a time. Nothing is thrown.
class SearchDatabase {
public:
    using Error = SearchIndex::Error;

    static constexpr int patienceMilliseconds = 5000;

    /// How an item was found, best first.
    enum class Rank { Exact, Prefix, Other };
    struct Match {
        SearchItem item; ///< without its keywords
        Rank rank = Rank::Other;
    };

    virtual ~SearchDatabase() = default;

    /// "$XDG_DATA_HOME/Lexiquill/search-index.sqlite"
    static QString standardFilePath();
    /// Records that some items could not be written to the index in this file. The index counts as incomplete
    /// until complete() is called.
    static void noteGap(const QString &path);
    /// The marker file of such a gap. It is a separate file, because the index itself may not be writable.
    static QString gapMarker(const QString &path);

    /// Adds all of the items or none. The first ones count as the most recent.
    virtual Error put(const QList<SearchItem> &items) = 0;
    virtual Error removeItems(const QStringList &identifiers) = 0;
    virtual Error removeDomain(const QString &domain) = 0;

    /// Finds at most `limit` items that match all of the terms: first those whose title equals the terms,
    /// then those whose title begins with them (shorter titles first), then all others; within each group the
    /// most recent first. A Latin term matches the beginning of words, a Chinese one any part of a text.
    /// Empty on failure.
    virtual QList<Match> find(const QStringList &terms, int limit) = 0;
    /// The items with these identifiers, without their keywords; unknown ones are left out.
    virtual QList<SearchItem> items(const QStringList &identifiers) = 0;

    /// False when published items may be missing, because the file has been replaced or could not be written.
    /// An index that cannot be read counts as complete, because nothing can be done about it.
    virtual bool isComplete() = 0;
    /// Adds the items and marks the index as complete.
    virtual Error complete(const QList<SearchItem> &items) = 0;

    /// Moves what has been written lately to where the next process need not read it again.
    virtual void tidy() = 0;
};

} // namespace lexiquill
