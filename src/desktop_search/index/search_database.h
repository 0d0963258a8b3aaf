#pragma once

#include "desktop_search/search_index.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <memory>

namespace lexiquill {

/// The search index: one SQLite file that many processes write and read at once. Every call opens the file if
/// need be and waits for other processes at most `patienceMilliseconds`; a damaged or foreign file is
/// replaced by an empty index. An object belongs to one thread at a time. Nothing is thrown.
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
    /// Remembers that something which belongs into the index of this file could not be put there: it is not
    /// complete until complete() is called.
    static void noteGap(const QString &path);
    /// The file whose presence says so: the index itself may be what could not be written.
    static QString gapMarker(const QString &path);

    /// Puts in all of the items or none. The first ones count as the most recent.
    virtual Error put(const QList<SearchItem> &items) = 0;
    virtual Error removeItems(const QStringList &identifiers) = 0;
    virtual Error removeDomain(const QString &domain) = 0;

    /// Finds at most `limit` items that match all of the terms: first those whose title is the terms, then
    /// those whose title begins with them, the shorter first, then all others; otherwise the most recent
    /// first. A Latin term matches the beginning of words, a Chinese one any part of a text. Nothing on
    /// failure.
    virtual QList<Match> find(const QStringList &terms, int limit) = 0;
    /// The items with these identifiers, without their keywords; unknown ones are left out.
    virtual QList<SearchItem> items(const QStringList &identifiers) = 0;

    /// False when the index may lack items that were published to a file that has been replaced since.
    /// An index that cannot be read counts as complete, for nothing can be done about it.
    virtual bool isComplete() = 0;
    /// Puts in the items and declares the index complete.
    virtual Error complete(const QList<SearchItem> &items) = 0;

    /// Moves what has been written lately to where the next process need not read it again.
    virtual void tidy() = 0;
};

} // namespace lexiquill
