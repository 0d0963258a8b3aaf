#pragma once

#include "platform/linux/search_database.h"
#include "platform/linux/sqlite/connection.h"

#include <QByteArray>

namespace lexiquill::sqlite {

/// The table "item" holds the items, "search" the texts that they are found by, under the same row numbers.
/// The numbers grow with every item put in, so they tell which is the more recent.
class SqliteSearchDatabase final : public SearchDatabase {
public:
    explicit SqliteSearchDatabase(QByteArray path) : m_path(std::move(path)) {}

    Error put(const QList<SearchItem> &items) override;
    Error removeItems(const QStringList &identifiers) override;
    Error removeDomain(const QString &domain) override;
    QList<Match> find(const QStringList &terms, int limit) override;
    QList<SearchItem> items(const QStringList &identifiers) override;
    bool isComplete() override;
    Error complete(const QList<SearchItem> &items) override;
    void tidy() override;

private:
    template <typename Work> Error attempt(Work work);
    void open();
    void createTables();
    bool resetFile();
    void putAll(const QList<SearchItem> &items);
    void keepLogShort();

    QByteArray m_path;
    Connection m_connection;
};

} // namespace lexiquill::sqlite
