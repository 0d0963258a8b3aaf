#pragma once

#include "platform/color_scheme.h"

#include <QDBusVariant>
#include <QObject>

namespace lexiquill {

/// Reports the colour scheme from the desktop portal.
class PortalColorScheme : public QObject, public ColorScheme {
    Q_OBJECT

public:
    explicit PortalColorScheme(std::function<void(std::optional<bool>)> report);

private Q_SLOTS:
    void takeChange(const QString &space, const QString &key, const QDBusVariant &value);

private:
    std::function<void(std::optional<bool>)> m_report;
};

} // namespace lexiquill
