#include "desktop_search/provider/search_service.h"

#include "desktop_search/spotlight_manager.h"
#include "support/text.h"

#include <QDBusConnection>
#include <QDBusMessage>

#include <utility>

namespace lexiquill {

namespace {

/// Longer than any identifier that this program sends to a desktop.
constexpr qsizetype longestParameter = 1024;
constexpr qsizetype longestLine = 200;

/// If no process owns the name and none can be started for it, the call has no effect.
void activateAction(const QString &name, const QString &parameter, const QVariantMap &platformData) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("com.lexiquill.Lexiquill"), QStringLiteral("/com/lexiquill/Lexiquill"),
        QStringLiteral("org.freedesktop.Application"), QStringLiteral("ActivateAction"));
    call << name << QVariant(QVariantList{parameter.left(longestParameter)}) << platformData;
    QDBusConnection::sessionBus().send(call);
}

} // namespace

SearchService::SearchService(std::unique_ptr<SearchDatabase> database,
                             std::function<QList<WordRecord>()> records)
    : m_database(std::move(database)),
      m_records(std::move(records)) {}

SearchService::~SearchService() {
    m_database->tidy();
}

QList<SearchService::Match> SearchService::find(const QStringList &terms, int limit) {
    complete();
    QList<Match> matches = m_database->find(terms, limit);
    // A damaged file is detected and emptied when it is read. Fill it and search again.
    if (matches.isEmpty() && !m_database->isComplete()) {
        complete();
        matches = m_database->find(terms, limit);
    }
    return matches;
}

QList<SearchItem> SearchService::items(const QStringList &identifiers) {
    return m_database->items(identifiers);
}

/// Fills an incomplete index. After a failure this is not tried again, because it takes long for a large
/// wordbook.
void SearchService::complete() {
    if (m_hasFailedToComplete || m_database->isComplete())
        return;
    QList<SearchItem> items;
    for (const WordRecord &record : m_records())
        items += SpotlightManager::item(record);
    m_hasFailedToComplete = m_database->complete(items).has_value();
}

void SearchService::open(const QString &identifier, const QVariantMap &platformData) {
    activateAction(QStringLiteral("open-search-result"), identifier, platformData);
}

void SearchService::launchSearch(const QStringList &terms, const QVariantMap &platformData) {
    activateAction(QStringLiteral("search"), terms.join(u' '), platformData);
}

QString SearchService::line(const QString &text) {
    const QString whole = text.left(longestLine * 4).simplified();
    const QString cut = leadingCharacters(whole, longestLine);
    return cut == whole ? cut : cut + u'…';
}

} // namespace lexiquill
