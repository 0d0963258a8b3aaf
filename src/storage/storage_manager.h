#pragma once

#include "lookup/system_dictionary_service.h"
#include "model/word_record.h"
#include "review/weekly_review_scheduler.h"
#include "storage/spotlight_manager.h"
#include "storage/wordbook_change.h"
#include "storage/wordbook_file.h"
#include "support/calendar.h"
#include "support/user_defaults.h"

#include <QObject>
#include <QSet>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace lexiquill {

/// The single owner of the user's wordbook: holds it in memory, keeps it on disk, remembers deleted words,
/// and keeps the weekly plan and the search index in step. Other processes may work on the same file: every
/// change is made under a lock on the current state of the file. A failed write is silent; the words in
/// memory then stay authoritative and are written with the next change.
class StorageManager : public QObject {
    Q_OBJECT

public:
    struct Dependencies {
        QString storageFile; ///< path of "vocabulary.json"
        UserDefaults &defaults;
        SystemDictionaryService &dictionary; ///< for the words of the first run
        SpotlightManager &spotlight;
        Clock clock = Instant::now;
        std::function<Calendar()> calendar = Calendar::current;
    };

    /// Loads the wordbook, or seeds it on the first run, and builds the weekly plan.
    explicit StorageManager(Dependencies dependencies, QObject *parent = nullptr);

    static StorageManager &shared();
    /// "$XDG_DATA_HOME/Lexiquill/vocabulary.json"
    static QString standardStorageFile();

    /// The words of the shared wordbook as its file has them, deleted ones left out, for processes that only
    /// read it. Nothing when there is no readable file.
    static QList<WordRecord> recordedWords();

    /// Most recently added first.
    const QList<WordRecord> &words() const { return m_words; }
    /// The plan as of the last change. It is built when it is first asked for, for most commands never do.
    const std::optional<WeeklyReviewPlan> &weeklyPlan() const;

    /// The time and the calendar that the wordbook goes by.
    Instant now() const { return m_dependencies.clock(); }
    Calendar calendar() const { return m_dependencies.calendar(); }

    /// Deleted words, trimmed and lower-cased.
    QSet<QString> deletedWords() const;
    void setDeletedWords(const QSet<QString> &words);

    void loadData();
    /// Takes in the file if another process has replaced it. It is read on another thread; the words change
    /// after the call has returned, and not at all if a change made meanwhile has taken in the file.
    void followFile();
    /// Waits for other processes at most `patience`.
    void saveData(std::chrono::milliseconds patience = usualPatience);
    void refreshWeeklyPlan();

    /// Records a successful lookup and returns the record as stored.
    WordRecord addOrUpdateSearch(const DictionaryEntry &entry);
    /// Applies one review answer and returns what takes it back; an unknown id is ignored.
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

    static const QString deletedWordsKey; ///< "lexiquill_deleted_words"
    static constexpr std::chrono::seconds usualPatience{5};

Q_SIGNALS:
    void wordsChanged();
    void weeklyPlanChanged();
    /// The user deleted a word; `word` is trimmed, its case as given.
    void wordDeleted(const QString &word);

private:
    void adopt(QList<WordRecord> &words);
    void takeReading(WordbookFile::Reading &reading);
    void seed();
    std::unique_ptr<FileLock> lock(std::chrono::milliseconds patience);
    bool catchUp();
    void updateDeletedWords(const WordbookChange &change, QSet<QString> &deletedWords);
    void change(const WordbookChange &change, const std::function<void()> &prepare = {});
    WordsRestored remove(const QStringList &words);
    void publish(const WordbookChange &change);
    void publishRestored(const QList<WordRecord> &replaced);
    bool replaceFile(const QList<WordRecord> &backup);
    void write();

    Dependencies m_dependencies;
    WordbookFile m_file;
    QList<WordRecord> m_words;
    mutable std::optional<WeeklyReviewPlan> m_weeklyPlan; ///< absent while it waits to be built
    Instant m_planDate;
    QList<WordbookChange> m_unsavedChanges;
    bool m_hasWaitedInVain = false;
    bool m_isReading = false; ///< on another thread
};

} // namespace lexiquill
