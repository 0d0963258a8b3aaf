#pragma once

#include "model/word_record.h"

#include <QDateTime>
#include <QList>
#include <QString>

#include <optional>

namespace lexiquill {

/// A backup of the wordbook: its state before a day's first change, or before a backup was restored.
struct WordbookBackup {
    QString path;
    QDateTime date;          ///< local; for the backup of a day only the day counts
    bool isOfMoment = false; ///< made when a backup was restored
    qint64 size = 0;         ///< bytes

    /// The directory of the backups of this wordbook.
    static QString directoryFor(const QString &storageFile);
    /// The file name of a day's backup, "vocabulary-2025-03-14.json".
    static QString dailyName(QDate day);
    /// The file name of the backup of a moment, "vocabulary-2025-03-14-092653.json".
    static QString momentName(const QDateTime &moment);

    /// All backups in the directory, the newest first. Other files are left out.
    static QList<WordbookBackup> list(const QString &directory);
    /// Removes all but the newest ten of each kind.
    static void prune(const QString &directory);

    /// The words; no value when the file is missing or damaged, or when there is not enough memory. Takes
    /// long for a large file. Records equal to one of `known` share its memory and are restored faster.
    std::optional<QList<WordRecord>> read(Instant now, const QList<WordRecord> &known = {}) const;
};

} // namespace lexiquill
