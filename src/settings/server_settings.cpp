#include "settings/server_settings.h"

#include <utility>

namespace lexiquill {

ServerSettings::ServerSettings(UserDefaults &defaults, QObject *parent)
    : QObject(parent),
      m_defaults(defaults),
      m_addresses(ServerAddresses::from(defaults)) {}

bool ServerSettings::store(const QString &key, const QString &text) {
    const QString base = ServerAddresses::acceptableBase(text).value_or(QString());
    if (base.isEmpty() && !text.trimmed().isEmpty())
        return false;
    if (base.isEmpty())
        m_defaults.remove(key);
    else if (base != stored(key))
        m_defaults.set(key, base);
    follow();
    return true;
}

void ServerSettings::reload() {
    m_defaults.refresh();
    follow();
}

void ServerSettings::follow() {
    const ServerAddresses now = ServerAddresses::from(m_defaults);
    if (std::exchange(m_addresses, now) != now)
        Q_EMIT changed();
}

} // namespace lexiquill
