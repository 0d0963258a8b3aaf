#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace lexiquill {

/// One item for the desktop search: plain text that never expires.
struct SearchItem {
    QString identifier; ///< unique; a later item replaces an earlier one with the same identifier
    QString domain;     ///< groups the items that can be deleted together
    QString title;
    QString displayName;
    QString contentDescription;
    QStringList keywords = {};

    friend bool operator==(const SearchItem &, const SearchItem &) = default;
};

/// Why an operation on the search index failed.
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
    int code = 0; ///< the database's own error code

    friend bool operator==(const SearchIndexError &, const SearchIndexError &) = default;
};

/// The search index of the desktop. Submitted work is done in the background, in order. A completion is
/// called on the index's own thread with the error, or with no value after success. This base class stands
/// for a system without such an index.
class SearchIndex {
public:
    using Error = std::optional<SearchIndexError>;
    using ItemSource = std::function<QList<SearchItem>()>;
    using Completion = std::function<void(const Error &error)>;

    virtual ~SearchIndex() = default;

    virtual bool isIndexingAvailable() const { return false; }

    /// Publishes all of the items or, on failure, none. The first ones count as the most recent. `makeItems`
    /// is called later, on the index's thread.
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

    /// Waits for a limited time until all submitted work is done. Returns at once if there is none.
    virtual void finish() {}
};

} // namespace lexiquill
