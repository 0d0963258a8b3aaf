#pragma once

#include "settings/server_addresses.h"

#include <QObject>

namespace lexiquill {

/// The servers' addresses that this process uses. They are read from the settings at the start, and change
/// when they are stored here.
class ServerSettings : public QObject {
    Q_OBJECT

public:
    /// `defaults` must outlive the instance.
    explicit ServerSettings(UserDefaults &defaults, QObject *parent = nullptr);

    const ServerAddresses &addresses() const { return m_addresses; }
    /// The address as stored; empty while the built-in one is used.
    QString stored(const QString &key) const { return m_defaults.string(key); }
    /// Stores an address; blank text restores the built-in one. False when the address is not acceptable.
    /// `key` is one of the keys in ServerAddresses.
    bool store(const QString &key, const QString &text);
    /// Takes over what other processes have stored.
    void reload();

Q_SIGNALS:
    /// At least one address has changed.
    void changed();

private:
    void follow();

    UserDefaults &m_defaults;
    ServerAddresses m_addresses;
};

} // namespace lexiquill
