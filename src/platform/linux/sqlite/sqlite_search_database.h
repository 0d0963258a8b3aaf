#pragma once

#include "platform/linux/search_database.h"
#include "platform/linux/sqlite/connection.h"

#include <QByteArray>

namespace lexiquill::sqlite {

/// The table "item" holds the items, "search" the texts that they are found by, under the same row numbers.
/// The numbers grow with every item put in, so they tell which is the more recent. The file is open only
/// during a call: while anybody has it open, nobody can replace its content.
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
    template <typename Work> Error attempt(Work work) const;
    void open(Connection &connection) const;
    bool resetFile() const;
    QString gapMarker() const;

    QByteArray m_path;
};

} // namespace lexiquill::sqlite
