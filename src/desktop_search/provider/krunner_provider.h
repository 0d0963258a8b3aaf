#pragma once

#include "desktop_search/provider/search_service.h"

#include <QDBusAbstractAdaptor>
#include <QDBusArgument>
#include <QList>
#include <QString>
#include <QVariantMap>

namespace lexiquill {

/// A result in the form "(sssida{sv})".
struct KRunnerMatch {
    QString identifier;
    QString text;
    QString icon;
    int type = 0;         ///< KRunner's match type; higher is better
    double relevance = 0; ///< 0 to 1, within its type
    QVariantMap properties;
};

/// An additional action on a result, in the form "(sss)". This program has none.
struct KRunnerAction {
    QString identifier;
    QString text;
    QString icon;
};

QDBusArgument &operator<<(QDBusArgument &argument, const KRunnerMatch &match);
const QDBusArgument &operator>>(const QDBusArgument &argument, KRunnerMatch &match);
QDBusArgument &operator<<(QDBusArgument &argument, const KRunnerAction &action);
const QDBusArgument &operator>>(const QDBusArgument &argument, KRunnerAction &action);

/// The search of KDE's KRunner and application menu.
class KRunnerProvider final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.krunner1")

public:
    KRunnerProvider(SearchService &service, QObject *parent);

private:
    SearchService &m_service;
    QString m_activationToken;

public Q_SLOTS:
    QList<lexiquill::KRunnerAction> Actions();
    QList<lexiquill::KRunnerMatch> Match(const QString &query);
    void Run(const QString &identifier, const QString &action);
    /// KRunner calls this before the Run call that uses the token.
    void SetActivationToken(const QString &token);
    void Teardown();
};

} // namespace lexiquill
