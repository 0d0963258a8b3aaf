#include "desktop_search/provider/krunner_provider.h"

#include <QDBusMetaType>

#include <utility>

namespace lexiquill {

namespace {

/// KRunner shows the results of many programs in one list.
constexpr int mostResults = 10;

/// KRunner's match types.
constexpr int possibleMatch = 30;
constexpr int exactMatch = 100;

double relevance(SearchDatabase::Rank rank, qsizetype position) {
    // The position lowers the relevance within a rank, but not as far as the next rank.
    const double best = rank == SearchDatabase::Rank::Exact    ? 1.0
                        : rank == SearchDatabase::Rank::Prefix ? 0.8
                                                               : 0.5;
    return best - 0.01 * static_cast<double>(position);
}

} // namespace

QDBusArgument &operator<<(QDBusArgument &argument, const KRunnerMatch &match) {
    argument.beginStructure();
    argument << match.identifier << match.text << match.icon << match.type << match.relevance
             << match.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, KRunnerMatch &match) {
    argument.beginStructure();
    argument >> match.identifier >> match.text >> match.icon >> match.type >> match.relevance >>
        match.properties;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const KRunnerAction &action) {
    argument.beginStructure();
    argument << action.identifier << action.text << action.icon;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, KRunnerAction &action) {
    argument.beginStructure();
    argument >> action.identifier >> action.text >> action.icon;
    argument.endStructure();
    return argument;
}

KRunnerProvider::KRunnerProvider(SearchService &service, QObject *parent)
    : QDBusAbstractAdaptor(parent),
      m_service(service) {
    qDBusRegisterMetaType<KRunnerMatch>();
    qDBusRegisterMetaType<QList<KRunnerMatch>>();
    qDBusRegisterMetaType<KRunnerAction>();
    qDBusRegisterMetaType<QList<KRunnerAction>>();
}

QList<KRunnerAction> KRunnerProvider::Actions() {
    Q_EMIT m_service.used();
    return {};
}

QList<KRunnerMatch> KRunnerProvider::Match(const QString &query) {
    Q_EMIT m_service.used();
    QList<KRunnerMatch> matches;
    for (const SearchService::Match &match : m_service.find({query}, mostResults)) {
        matches += KRunnerMatch{
            .identifier = match.item.identifier,
            .text = SearchService::line(match.item.title),
            .icon = resultIcon,
            .type = match.rank == SearchDatabase::Rank::Exact ? exactMatch : possibleMatch,
            .relevance = relevance(match.rank, matches.size()),
            .properties = {{QStringLiteral("subtext"), SearchService::line(match.item.contentDescription)}}};
    }
    return matches;
}

void KRunnerProvider::Run(const QString &identifier, const QString &) {
    Q_EMIT m_service.used();
    QVariantMap platformData;
    if (const QString token = std::exchange(m_activationToken, {}); !token.isEmpty())
        platformData = {{QStringLiteral("activation-token"), token}};
    SearchService::open(identifier, platformData);
}

void KRunnerProvider::SetActivationToken(const QString &token) {
    Q_EMIT m_service.used();
    m_activationToken = token;
}

void KRunnerProvider::Teardown() {
    Q_EMIT m_service.used();
}

} // namespace lexiquill
