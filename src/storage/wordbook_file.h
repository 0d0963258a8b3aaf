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

/// The wordbook on disk: a JSON array of records that several processes share. Beside it stand its lock
/// file, in "backups" the last good file of each of the last ten days of use, and files of that name that
/// could not be read ("vocabulary-unreadable-2025-03-14-092653.json").
///
/// A save takes over the text of a record that has not changed, for making it anew takes longer than all the
/// rest. Only text that this program has written is taken over: a note in the lock file says which file that
/// is.
class WordbookFile {
public:
    enum class State {
        Good,       ///< read
        Unreadable, ///< no file that holds a JSON array of objects
        Unknown,    ///< there is a file, but the means to read it are lacking at the moment
    };
    struct Content {
        State state = State::Unreadable;
        QList<WordRecord> words = {};
    };

    /// The file as it stood at one moment, with what knowing it takes. To be made on any thread.
    struct Reading {
        State state = State::Unreadable;
        QList<WordRecord> words = {};
        RecordTexts texts = {};
        std::unique_ptr<FileSnapshot> snapshot = {};

        /// A record that is the same as one of `known` shares its memory, and so is quickly seen to be the
        /// same.
        static Reading of(const QString &path, Instant now, const QList<WordRecord> &known = {});
    };

    /// A symbolic link is followed once and for all, so that everything beside the file has one place.
    explicit WordbookFile(const QString &path);

    /// What the link leads to, if the path was one.
    const QString &path() const { return m_path; }
    bool exists() const;
    Content load(Instant now);
    /// Makes a good reading the file that was loaded last, and puts what was kept of the former one into it.
    void take(Reading &reading);
    /// Counts what has been loaded, taken and saved: a reading begun at another count is outdated.
    int revision() const { return m_revision; }
    /// Whether there is a file that is not the one last loaded or saved through this object.
    bool isReplaced() const;
    /// Takes the lock that changes are made under; null when it is not to be had within `patience`.
    std::unique_ptr<FileLock> lock(std::chrono::milliseconds patience) const;
    /// Replaces the file durably and atomically, under the lock. The first save of the day `today` keeps the
    /// good file that it replaces, and every save one that could not be read. False when the file could not
    /// be written.
    bool save(FileLock &held, const QList<WordRecord> &words, std::optional<QDate> today);
    /// The same, but keeps the file that it replaces among the backups as that of the moment `now`, local
    /// time. False, with the file as it was, also when it could not be kept.
    bool replace(FileLock &held, const QList<WordRecord> &words, const QDateTime &now);

private:
    enum class Outcome { Written, WriteFailed, SourceFailed };
    /// Keeps the current file among the backups; its path there, or a null string.
    using Keep = std::function<QString()>;

    bool put(FileLock &held, const QList<WordRecord> &words, const Keep &keep, bool mustKeep);
    Outcome write(DurableFile &file, const QList<WordRecord> &words, QList<RecordText> &texts);
    bool copy(JsonWriter &writer, qint64 offset, qint64 size) const;
    QString keepBackup(const QString &name) const;
    bool keepUnreadable() const;

    QString m_path;
    std::unique_ptr<FileSnapshot> m_current; ///< the last good file; null when there is none
    RecordTexts m_texts;                     ///< what that file holds
    int m_revision = 0;
};

} // namespace lexiquill
