#pragma once

#include "platform/file_lock.h"
#include "platform/file_snapshot.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <memory>

namespace lexiquill {

/// The user's settings and small state: one file of keys and values in QSettings' INI format, shared by all
/// processes of the user. Each change replaces the file durably and atomically; a failure is silent, and the
/// value then stays in memory and is written with the next change. The file holds secrets: every write leaves
/// it readable by its owner only.
class UserDefaults {
public:
    /// `filePath`: the settings file; it and its directory are created by the first write.
    explicit UserDefaults(const QString &filePath);

    /// "$XDG_CONFIG_HOME/Lexiquill/Lexiquill.conf"
    static QString standardFilePath();

    const QString &filePath() const { return m_path; }

    /// The stored text, or a null string when the key is missing or has a value of another type.
    QString string(const QString &key) const;
    QStringList stringList(const QString &key) const;
    /// The stored bytes, or a null array when the key is missing or has a value of another type.
    QByteArray byteArray(const QString &key) const;
    void set(const QString &key, const QString &value);
    void set(const QString &key, const QStringList &value);
    void set(const QString &key, const QByteArray &value);
    void remove(const QString &key);

    /// Reads what other processes have written since the last read.
    void refresh();

private:
    /// An invalid value removes the key.
    void change(const QString &key, const QVariant &value);
    bool write() const;

    QString m_path;
    std::unique_ptr<FileSnapshot> m_snapshot; ///< the file that the values come from; null without one
    QVariantMap m_values;
    QVariantMap m_unsaved; ///< changes that could not be written yet; an invalid value means removal
};

} // namespace lexiquill
