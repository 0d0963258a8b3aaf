#pragma once

#include <QSettings>
#include <QString>
#include <QStringList>

namespace lexiquill {

/// The user's settings and small state: one file of keys and values, shared by all processes of the user.
/// Writing replaces the file atomically; a failure is silent and the value stays in memory.
class UserDefaults {
public:
    /// `filePath`: the settings file; it and its directory are created by the first write.
    explicit UserDefaults(const QString &filePath);

    /// "$XDG_CONFIG_HOME/Lexiquill/Lexiquill.conf"
    static QString standardFilePath();
    static UserDefaults &shared();

    /// The stored text, or a null string when the key is missing or holds something else.
    QString string(const QString &key) const;
    QStringList stringList(const QString &key) const;
    void set(const QString &key, const QString &value);
    void set(const QString &key, const QStringList &value);

    /// Takes in what other processes have written since the last read.
    void refresh();

private:
    QSettings m_settings;
};

} // namespace lexiquill
