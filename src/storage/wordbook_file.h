#pragma once

#include "platform/file_lock.h"
#include "platform/file_snapshot.h"
#include "storage/record_texts.h"

#include <QDateTime>
#include <QList>
#include <QString>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace lexiquill {

class DurableFile;

/// The wordbook on disk: a JSON array of records that several processes share. In the same directory are its
/// lock file, the directory "backups" with the last good file of each of the last ten days of use, and former
/// wordbook files that could not be read ("vocabulary-unreadable-2025-03-14-092653.json").
///
/// A save copies the text of records that have not changed, because creating the text takes longer than all
/// the rest. Only text that this program has written is copied: a note in the lock file identifies the file
/// that it wrote last.
class WordbookFile {
public:
    enum class State {
        Good,       ///< read
        Unreadable, ///< there is no file with a JSON array of objects
        Unknown,    ///< there is a file, but the system cannot read it at the moment
    };
    struct Content {
        State state = State::Unreadable;
        QList<WordRecord> words = {};
    };

    /// The content of the file at one moment, with the data to recognise the file later. May be created on
    /// any thread.
    struct Reading {
        State state = State::Unreadable;
        QList<WordRecord> words = {};
        RecordTexts texts = {};
        std::unique_ptr<FileSnapshot> snapshot = {};

        /// A record equal to one of `known` shares its memory, which makes later comparisons fast.
        static Reading of(const QString &path, Instant now, const QList<WordRecord> &known = {});
    };

    /// A symbolic link is resolved once, here, so that the files beside the wordbook are always in the same
    /// place.
    explicit WordbookFile(const QString &path);

    /// The path, with a symbolic link resolved.
    const QString &path() const { return m_path; }
    bool exists() const;
    Content load(Instant now);
    /// Makes a good reading the last loaded file. `reading` receives the data of the former one.
    void take(Reading &reading);
    /// Counts loads, takes and saves. A reading that was begun at another count is outdated.
    int revision() const { return m_revision; }
    /// Whether there is a file, and it is not the one last loaded or saved through this object.
    bool isReplaced() const;
    /// Acquires the lock for changes; null when that is not possible within `patience`.
    std::unique_ptr<FileLock> lock(std::chrono::milliseconds patience) const;
    /// Replaces the file durably and atomically, under the lock. The first save of the day `today` keeps the
    /// good file that it replaces as a backup. Every save keeps a file that could not be read. False when the
    /// file could not be written.
    bool save(FileLock &held, const QList<WordRecord> &words, std::optional<QDate> today);
    /// The same, but keeps the replaced file as the backup of the moment `now`, local time. False, with the
    /// file unchanged, also when the backup could not be made.
    bool replace(FileLock &held, const QList<WordRecord> &words, const QDateTime &now);

private:
    enum class Outcome { Written, WriteFailed, SourceFailed };
    /// Keeps the current file as a backup. Returns the path of the backup, or a null string.
    using Keep = std::function<QString()>;

    bool put(FileLock &held, const QList<WordRecord> &words, const Keep &keep, bool mustKeep);
    Outcome write(DurableFile &file, const QList<WordRecord> &words, QList<RecordText> &texts);
    bool copy(JsonWriter &writer, qint64 offset, qint64 size) const;
    QString keepBackup(const QString &name) const;
    bool keepUnreadable() const;

    QString m_path;
    std::unique_ptr<FileSnapshot> m_current; ///< the last good file; null when there is none
    RecordTexts m_texts;                     ///< the records of that file
    int m_revision = 0;
};

} // namespace lexiquill
