#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace lexiquill {

/// One thing to be found by the system's search: a piece of plain text that never expires.
struct SearchItem {
    QString identifier; ///< unique; a later item takes the place of an earlier one with the same identifier
    QString domain;     ///< groups the items that can be deleted together
    QString title;
    QString displayName;
    QString contentDescription;
    QStringList keywords = {};

    friend bool operator==(const SearchItem &, const SearchItem &) = default;
};

/// Why something could not be done with the search index.
struct SearchIndexError {
    enum class Kind {
        Unavailable, ///< the component that works on the index cannot be loaded
        Busy,
        ReadOnly,
        DiskFull,
        CannotOpen,
        Damaged,
        ReadWrite,
        TooLong,
        OutOfMemory,
        Other,
    };
    Kind kind = Kind::Other;
    int code = 0; ///< the database's own, for what is not known otherwise

    friend bool operator==(const SearchIndexError &, const SearchIndexError &) = default;
};

/// The operating system's search index. Everything submitted is done in the background, in order; a
/// completion is called on the index's own thread, with the error or, when all went well, with nothing. This
/// default stands for a system without such an index.
class SearchIndex {
public:
    using Error = std::optional<SearchIndexError>;
    using ItemSource = std::function<QList<SearchItem>()>;
    using Completion = std::function<void(const Error &error)>;

    virtual ~SearchIndex() = default;

    virtual bool isIndexingAvailable() const { return false; }

    /// Publishes all of the items or, on failure, none. The first ones count as the most recent. `makeItems`
    /// is called on the index's thread, when it is its turn.
    virtual void indexItems(const ItemSource &makeItems, const Completion &completion) {
        Q_UNUSED(makeItems)
        Q_UNUSED(completion)
    }
    virtual void deleteItems(const QStringList &identifiers, const Completion &completion) {
        Q_UNUSED(identifiers)
        Q_UNUSED(completion)
    }
    virtual void deleteDomain(const QString &domain, const Completion &completion) {
        Q_UNUSED(domain)
        Q_UNUSED(completion)
    }

    /// Waits until everything submitted is done, but not for ever; costs nothing when nothing was.
    virtual void finish() {}
};

} // namespace lexiquill
