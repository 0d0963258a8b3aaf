#pragma once

#include "desktop_search/provider/search_service.h"

#include <QDBusAbstractAdaptor>
#include <QList>
#include <QStringList>
#include <QVariantMap>

namespace lexiquill {

/// The search of GNOME's overview.
class GnomeProvider final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.gnome.Shell.SearchProvider2")

public:
    GnomeProvider(SearchService &service, QObject *parent);

private:
    SearchService &m_service;

public Q_SLOTS:
    QStringList GetInitialResultSet(const QStringList &terms);
    QStringList GetSubsearchResultSet(const QStringList &previousResults, const QStringList &terms);
    QList<QVariantMap> GetResultMetas(const QStringList &identifiers);
    void ActivateResult(const QString &identifier, const QStringList &terms, uint timestamp);
    void LaunchSearch(const QStringList &terms, uint timestamp);
};

} // namespace lexiquill
