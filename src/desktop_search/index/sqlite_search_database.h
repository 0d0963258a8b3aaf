#pragma once

#include "desktop_search/index/search_database.h"
#include "support/sqlite/connection.h"

#include <QString>

#include <optional>

namespace lexiquill {

/// The table "item" holds the items; the table "search" holds their searchable texts under the same row ids.
/// Row ids grow with every added item, so a larger id is more recent. The file is open only during a call,
/// because its content cannot be replaced while any process has it open.
class SqliteSearchDatabase final : public SearchDatabase {
public:
    explicit SqliteSearchDatabase(QString path) : m_path(std::move(path)) {}

    Error put(const QList<SearchItem> &items) override;
    Error removeItems(const QStringList &identifiers) override;
    Error removeDomain(const QString &domain) override;
    QList<Match> find(const QStringList &terms, int limit) override;
    QList<SearchItem> items(const QStringList &identifiers) override;
    bool isComplete() override;
    Error complete(const QList<SearchItem> &items) override;
    void tidy() override;

private:
    template <typename Work> Error attempt(Work work) const;
    std::optional<qint64> open(sqlite::Connection &connection) const;
    bool resetFile(std::optional<qint64> damagedGeneration) const;

    QString m_path;
};

} // namespace lexiquill
