#include "desktop_search/provider/gnome_provider.h"

#include <QDBusMetaType>

namespace lexiquill {

namespace {

/// More than the overview can show.
constexpr int mostResults = 50;

/// The time of the user's action, in the form that GTK programs expect.
QVariantMap platformData(uint timestamp) {
    return {{QStringLiteral("desktop-startup-id"), QStringLiteral("_TIME%1").arg(timestamp)}};
}

} // namespace

GnomeProvider::GnomeProvider(SearchService &service, QObject *parent)
    : QDBusAbstractAdaptor(parent),
      m_service(service) {
    qDBusRegisterMetaType<QList<QVariantMap>>();
}

QStringList GnomeProvider::GetInitialResultSet(const QStringList &terms) {
    Q_EMIT m_service.used();
    QStringList identifiers;
    for (const SearchService::Match &match : m_service.find(terms, mostResults))
        identifiers += match.item.identifier;
    return identifiers;
}

/// Searches again, because that is fast and the previous results were limited.
QStringList GnomeProvider::GetSubsearchResultSet(const QStringList &, const QStringList &terms) {
    return GetInitialResultSet(terms);
}

QList<QVariantMap> GnomeProvider::GetResultMetas(const QStringList &identifiers) {
    Q_EMIT m_service.used();
    QList<QVariantMap> metas;
    for (const SearchItem &item : m_service.items(identifiers.first(qMin(identifiers.size(), mostResults)))) {
        metas += QVariantMap{{QStringLiteral("id"), item.identifier},
                             {QStringLiteral("name"), SearchService::line(item.title)},
                             {QStringLiteral("description"), SearchService::line(item.contentDescription)},
                             {QStringLiteral("gicon"), resultIcon}};
    }
    return metas;
}

void GnomeProvider::ActivateResult(const QString &identifier, const QStringList &, uint timestamp) {
    Q_EMIT m_service.used();
    SearchService::open(identifier, platformData(timestamp));
}

void GnomeProvider::LaunchSearch(const QStringList &terms, uint timestamp) {
    Q_EMIT m_service.used();
    SearchService::launchSearch(terms, platformData(timestamp));
}

} // namespace lexiquill
