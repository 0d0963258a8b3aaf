#pragma once

#include "desktop_search/index/search_database.h"
#include "model/word_record.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <functional>
#include <memory>

namespace lexiquill {

/// What the desktops' search protocols have in common: finding items, and handing over to the application
/// what the user opens.
class SearchService : public QObject {
    Q_OBJECT

public:
    using Match = SearchDatabase::Match;

    /// `records` gives the words that belong into an index which has been made anew.
    SearchService(std::unique_ptr<SearchDatabase> database, std::function<QList<WordRecord>()> records);
    ~SearchService() override;

    /// See SearchDatabase::find().
    QList<Match> find(const QStringList &terms, int limit);
    QList<SearchItem> items(const QStringList &identifiers);

    /// Has the application show an item. `platformData`: what lets its window come to the front.
    static void open(const QString &identifier, const QVariantMap &platformData);
    /// Has the application search for the terms.
    static void launchSearch(const QStringList &terms, const QVariantMap &platformData);

    /// The text on one line, cut to what a list of results has room for.
    static QString line(const QString &text);

Q_SIGNALS:
    /// A desktop has made a call.
    void used();

private:
    void complete();

    std::unique_ptr<SearchDatabase> m_database;
    std::function<QList<WordRecord>()> m_records;
    bool m_hasFailedToComplete = false;
};

/// The icon of a result, by its name in the icon theme.
inline const QString resultIcon = QStringLiteral("accessories-dictionary");

} // namespace lexiquill
