#pragma once

#include "model/word_record.h"
#include "storage/deleted_words.h"
#include "storage/wordbook_change.h"
#include "storage/wordbook_file.h"
#include "support/calendar.h"

#include <QObject>
#include <QSet>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace lexiquill {

/// The single owner of the user's words: holds them in memory, and changes them there and on disk. Other
/// processes may work on the same file, so every change is applied to the current content of the file, under
/// a lock. A failed write is silent; the words in memory then stay valid and are written with the next
/// change. Other components, such as the weekly plan and the desktop search, follow the changes through the
/// signals.
class StorageManager : public QObject {
    Q_OBJECT

public:
    struct Dependencies {
        QString storageFile; ///< path of "vocabulary.json"
        DeletedWords &deletedWords;
        /// The first records of a new wordbook.
        std::function<QList<WordRecord>()> firstWords;
        Clock clock = Instant::now;
        std::function<Calendar()> calendar = Calendar::current;
    };

    /// Loads the wordbook; on the first run it gets its first words.
    explicit StorageManager(Dependencies dependencies, QObject *parent = nullptr);

    /// "$XDG_DATA_HOME/Lexiquill/vocabulary.json"
    static QString standardStorageFile();

    /// The words in the file of a wordbook, without deleted ones; for processes that only read it. Empty when
    /// there is no readable file.
    static QList<WordRecord> recordedWords(const QString &storageFile, const DeletedWords &deleted,
                                           Instant now);

    /// Most recently added first.
    const QList<WordRecord> &words() const { return m_words; }

    /// The clock and the calendar of the wordbook.
    Instant now() const { return m_dependencies.clock(); }
    Calendar calendar() const { return m_dependencies.calendar(); }

    /// Trimmed and lower-cased.
    QSet<QString> deletedWords() const { return m_dependencies.deletedWords.words(); }

    void loadData();
    /// Loads the file if another process has replaced it. The file is read on another thread, so the words
    /// change after the call has returned. If a change made meanwhile has loaded the file, the result is
    /// dropped.
    void followFile();
    /// Saves the words. Waits for other processes at most `patience`.
    void saveData(std::chrono::milliseconds patience = usualPatience);

    /// Records a successful lookup and returns the record as stored.
    WordRecord addOrUpdateSearch(const DictionaryEntry &entry);
    /// Applies one review answer and returns the value that undoes it; no value when there is no such word.
    std::optional<ReviewUndone> recordReview(QUuid wordId, ReviewFeedback feedback);
    /// Undoes an answer: review state and history become what they would be without it. Does nothing when the
    /// answer is not in the word's history.
    void undoReview(const ReviewUndone &undo);
    /// Deletes a word; an unknown id is ignored.
    void deleteWord(QUuid wordId);
    /// Deletes every record of the word, ignoring case, and stores the word as deleted.
    void deleteWord(const QString &wordText);
    /// Deletes, in one change, every record of the words with these ids, like deleteWord(). Returns the
    /// argument for restoreWords().
    WordsRestored deleteWords(const QList<QUuid> &wordIds);
    /// Undoes a deletion: restores the records with all their history, and removes the words from the deleted
    /// ones. A word that was searched again meanwhile is combined with its new record.
    void restoreWords(const WordsRestored &deleted);
    /// Stores the user's note on a word; an unknown id is ignored.
    Q_INVOKABLE void setUserNotes(QUuid wordId, const QString &notes);
    /// Merges the server's records, under the lock like every change; see lexiquill::mergeCloudWords().
    /// Nothing is saved when none of them contains anything new.
    void mergeCloudWords(const QList<WordRecord> &cloudWords);
    /// Whether the words are still this list, which words() returned earlier, and no other process has
    /// replaced the file.
    bool areStill(const QList<WordRecord> &words) const;
    /// Replaces all words with those of a backup. Before that, keeps the current words as another backup.
    /// Words that were deleted since the backup are restored. False, with nothing changed, when another
    /// process holds the lock, or when one of the two files could not be written.
    bool restoreBackup(const QList<WordRecord> &backup);

    /// The path of the file itself, with symbolic links resolved.
    const QString &storageFile() const { return m_file.path(); }
    /// Whether a change is in memory only.
    bool hasUnsavedChanges() const { return !m_unsavedChanges.isEmpty(); }

    static constexpr std::chrono::seconds usualPatience{5};

Q_SIGNALS:
    /// The list is about to change. Objects that share it should release it, because otherwise the whole list
    /// is copied.
    void aboutToChangeWords();
    /// These records have changed, or are new. Emitted before they are saved.
    void recordsChanged(const QList<WordRecord> &records);
    /// Every record of these words is about to be removed. Emitted before that is saved.
    void recordsRemoved(const QStringList &words);
    /// A backup has replaced all words; `former` are the previous ones.
    void wordsReplaced(const QList<WordRecord> &former);
    void wordsChanged();
    /// The user deleted a word; `word` is trimmed, its case as given.
    void wordDeleted(const QString &word);

private:
    void adopt(QList<WordRecord> &words);
    void takeReading(WordbookFile::Reading &reading);
    void seed();
    std::unique_ptr<FileLock> lock(std::chrono::milliseconds patience);
    bool catchUp();
    bool change(const WordbookChange &change, const std::function<void()> &prepare = {});
    void tellOfRecords(const WordbookChange &change);
    WordsRestored remove(const QStringList &words);
    bool replaceFile(FileLock &held, const QList<WordRecord> &backup);
    void write(FileLock &held);

    Dependencies m_dependencies;
    WordbookFile m_file;
    QList<WordRecord> m_words;
    QList<WordbookChange> m_unsavedChanges;
    bool m_hasWaitedInVain = false;
    bool m_isReading = false; ///< on another thread
};

} // namespace lexiquill
