#pragma once

#include "model/word_record.h"
#include "platform/file_lock.h"
#include "platform/file_snapshot.h"

#include <QDate>
#include <QList>
#include <QString>

#include <memory>
#include <optional>

namespace lexiquill {

/// The wordbook on disk: a JSON array of records that several processes share. Beside it stand its lock
/// file and, in "backups", the last good file of each of the last ten days of use.
class WordbookFile {
public:
    /// The directory is created when it is missing; a failure shows in the operations below.
    explicit WordbookFile(const QString &path);

    bool exists() const;
    /// The records; nothing when the file cannot be read or is no JSON array of objects.
    std::optional<QList<WordRecord>> load(Instant now);
    /// Whether there is a file that is not the one last loaded or saved through this object.
    bool isReplaced() const;
    /// Takes the lock that changes are made under; null when it is not to be had within five seconds.
    std::unique_ptr<FileLock> lock() const;
    /// Replaces the file durably and atomically; the caller holds the lock. The first save of the day
    /// `today` keeps the good file that it replaces. False when the file could not be written.
    bool save(const QList<WordRecord> &words, std::optional<QDate> today);

private:
    void keepBackup(QDate today) const;

    QString m_path;
    std::unique_ptr<FileSnapshot> m_current; ///< the last good file; null when there is none
};

} // namespace lexiquill
