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

/// The single owner of the user's words: holds them in memory and changes them, there and on disk. Other
/// processes may work on the same file, so every change is made under a lock on the current state of the
/// file. A failed write is silent; the words in memory then stay authoritative and are written with the next
/// change. What follows from a change elsewhere, such as in the weekly plan or the system's search, listens
/// to the signals.
class StorageManager : public QObject {
    Q_OBJECT

public:
    struct Dependencies {
        QString storageFile; ///< path of "vocabulary.json"
        DeletedWords &deletedWords;
        /// The records that a new wordbook begins with.
        std::function<QList<WordRecord>()> firstWords;
        Clock clock = Instant::now;
        std::function<Calendar()> calendar = Calendar::current;
    };

    /// Loads the wordbook; on the first run it gets its first words.
    explicit StorageManager(Dependencies dependencies, QObject *parent = nullptr);

    /// "$XDG_DATA_HOME/Lexiquill/vocabulary.json"
    static QString standardStorageFile();

    /// The words of a wordbook as its file has them, deleted ones left out, for processes that only read it.
    /// Nothing when there is no readable file.
    static QList<WordRecord> recordedWords(const QString &storageFile, const DeletedWords &deleted,
                                           Instant now);

    /// Most recently added first.
    const QList<WordRecord> &words() const { return m_words; }

    /// The time and the calendar that the wordbook goes by.
    Instant now() const { return m_dependencies.clock(); }
    Calendar calendar() const { return m_dependencies.calendar(); }

    /// Trimmed and lower-cased.
    QSet<QString> deletedWords() const { return m_dependencies.deletedWords.words(); }

    void loadData();
    /// Takes in the file if another process has replaced it. It is read on another thread; the words change
    /// after the call has returned, and not at all if a change made meanwhile has taken in the file.
    void followFile();
    /// Waits for other processes at most `patience`.
    void saveData(std::chrono::milliseconds patience = usualPatience);

    /// Records a successful lookup and returns the record as stored.
    WordRecord addOrUpdateSearch(const DictionaryEntry &entry);
    /// Applies one review answer and returns what takes it back; nothing when there is no such word, or not
    /// any more.
    std::optional<ReviewUndone> recordReview(QUuid wordId, ReviewFeedback feedback);
    /// Takes an answer back: review state and history become what they would be without it. Ignored when the
    /// answer is no longer in the word's history.
    void undoReview(const ReviewUndone &undo);
    /// Deletes a word; an unknown id is ignored.
    void deleteWord(QUuid wordId);
    /// Deletes every record of the word, whatever its case, and remembers it as deleted.
    void deleteWord(const QString &wordText);
    /// Deletes, in one change, every record of the words that the ids name, like deleteWord(), and returns
    /// what restoreWords() takes.
    WordsRestored deleteWords(const QList<QUuid> &wordIds);
    /// Undoes a deletion: the records come back with all their history, and the words are not deleted any
    /// longer. One that was searched for since is united with its new record.
    void restoreWords(const WordsRestored &deleted);
    /// Keeps the user's note on a word; an unknown id is ignored.
    Q_INVOKABLE void setUserNotes(QUuid wordId, const QString &notes);
    /// Takes in the server's records, under the same rule as every change; see lexiquill::mergeCloudWords().
    /// Nothing is saved when none of them has anything new.
    void mergeCloudWords(const QList<WordRecord> &cloudWords);
    /// Whether the words are still this list that words() gave, and no other process has replaced their file.
    bool areStill(const QList<WordRecord> &words) const;
    /// Puts the words of a backup in the place of all words, and keeps those among the backups before. What
    /// was deleted since is there again. False, with everything as it was, when another process does not let
    /// go of the wordbook or when the one or the other could not be written.
    bool restoreBackup(const QList<WordRecord> &backup);

    /// The file itself, not a link to it: what stands beside it and is replaced.
    const QString &storageFile() const { return m_file.path(); }
    /// Whether a change is in memory only.
    bool hasUnsavedChanges() const { return !m_unsavedChanges.isEmpty(); }

    static constexpr std::chrono::seconds usualPatience{5};

Q_SIGNALS:
    /// The list is about to change: whoever shares it should let go, or it would be copied as a whole.
    void aboutToChangeWords();
    /// These records have changed, or are new. Comes before they are saved.
    void recordsChanged(const QList<WordRecord> &records);
    /// Every record of these words is about to go. Comes before that is saved.
    void recordsRemoved(const QStringList &words);
    /// A backup has taken the place of all words; `former` are those that were there before.
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
