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

/// The common part of the desktops' search protocols: finds items, and passes to the application what the
/// user opens.
class SearchService : public QObject {
    Q_OBJECT

public:
    using Match = SearchDatabase::Match;

    /// `records` returns the words to put into an incomplete index.
    SearchService(std::unique_ptr<SearchDatabase> database, std::function<QList<WordRecord>()> records);
    ~SearchService() override;

    /// See SearchDatabase::find().
    QList<Match> find(const QStringList &terms, int limit);
    QList<SearchItem> items(const QStringList &identifiers);

    /// Asks the application to show an item. `platformData` allows its window to come to the front.
    static void open(const QString &identifier, const QVariantMap &platformData);
    /// Asks the application to search for the terms.
    static void launchSearch(const QStringList &terms, const QVariantMap &platformData);

    /// The text on one line, cut to fit into a list of results.
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
inline const QString resultIcon = QStringLiteral("com.lexiquill.Lexiquill");

} // namespace lexiquill
