#pragma once

#include "model/word_record.h"

#include <QDateTime>
#include <QList>
#include <QString>

#include <optional>

namespace lexiquill {

/// A wordbook that was kept when another took its place: the last one before a day's first change, or the one
/// before a backup was restored.
struct WordbookBackup {
    QString path;
    QDateTime date;          ///< local; the day alone counts for that of a day
    bool isOfMoment = false; ///< kept when a backup was restored
    qint64 size = 0;         ///< bytes

    /// Where the backups of this wordbook lie.
    static QString directoryFor(const QString &storageFile);
    /// The file name of a day's backup, "vocabulary-2025-03-14.json".
    static QString dailyName(QDate day);
    /// That of a moment, "vocabulary-2025-03-14-092653.json".
    static QString momentName(const QDateTime &moment);

    /// All backups in the directory, the newest first. Other files are left out.
    static QList<WordbookBackup> list(const QString &directory);
    /// Removes all but the newest ten of either kind.
    static void prune(const QString &directory);

    /// The words; nothing when the file is gone or damaged, or when there is not enough memory for it. Takes
    /// long for a large one. What is the same among `known` shares its memory, and is quickly restored.
    std::optional<QList<WordRecord>> read(Instant now, const QList<WordRecord> &known = {}) const;
};

} // namespace lexiquill
