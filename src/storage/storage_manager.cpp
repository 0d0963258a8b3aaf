#include "storage/storage_manager.h"

#include "support/background_task.h"
#include "support/text.h"

#include <QDateTime>
#include <QDir>
#include <QStandardPaths>

namespace lexiquill {

const QString StorageManager::deletedWordsKey = QStringLiteral("lexiquill_deleted_words");

namespace {

const QStringList &seedWords() {
    static const QStringList words{QStringLiteral("concise"), QStringLiteral("ephemeral"),
                                   QStringLiteral("serendipity"), QStringLiteral("ubiquitous"),
                                   QStringLiteral("eloquent")};
    return words;
}

QSet<QString> deletedWordsIn(const UserDefaults &defaults) {
    const QStringList words = defaults.stringList(StorageManager::deletedWordsKey);
    return {words.begin(), words.end()};
}

void removeDeleted(QList<WordRecord> &words, const QSet<QString> &deleted) {
    if (!deleted.isEmpty())
        words.removeIf([&](const WordRecord &record) { return deleted.contains(record.word.toLower()); });
}

} // namespace

StorageManager::StorageManager(Dependencies dependencies, QObject *parent)
    : QObject(parent),
      m_dependencies(std::move(dependencies)),
      m_file(m_dependencies.storageFile) {
    loadData();
    refreshWeeklyPlan();
}

QString StorageManager::standardStorageFile() {
    const QString directory = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return QDir(directory).filePath(QStringLiteral("Lexiquill/vocabulary.json"));
}

QList<WordRecord> StorageManager::recordedWords() {
    auto words = WordbookFile(standardStorageFile()).load(Instant::now()).words;
    removeDeleted(words, deletedWordsIn(UserDefaults(UserDefaults::standardFilePath())));
    return words;
}

QSet<QString> StorageManager::deletedWords() const {
    return deletedWordsIn(m_dependencies.defaults);
}

void StorageManager::setDeletedWords(const QSet<QString> &words) {
    QStringList sorted(words.begin(), words.end());
    sorted.sort();
    m_dependencies.defaults.set(deletedWordsKey, sorted);
}

void StorageManager::loadData() {
    auto content = m_file.load(m_dependencies.clock());
    if (content.state == WordbookFile::State::Unreadable) {
        seed();
    } else if (content.state == WordbookFile::State::Good) {
        adopt(content.words);
        Q_EMIT wordsChanged();
    }
}

/// Makes the words of the file the current ones, and makes again on them what has not been saved yet. The
/// former words take their place in the argument.
void StorageManager::adopt(QList<WordRecord> &words) {
    // Deleted words may have been restored before the file was written, so the newest list counts.
    m_dependencies.defaults.refresh();
    const QSet<QString> deleted = deletedWords();
    removeDeleted(words, deleted);
    m_words.swap(words);
    const ChangeContext context{.calendar = m_dependencies.calendar(), .deletedWords = deleted};
    for (const WordbookChange &change : std::as_const(m_unsavedChanges))
        apply(m_words, change, context);
}

void StorageManager::seed() {
    if (!m_words.isEmpty())
        return;
    QList<WordRecord> seeds;
    for (const QString &word : seedWords()) {
        if (const auto entry = m_dependencies.dictionary.lookup(word))
            seeds += newRecord({.entry = *entry, .date = m_dependencies.clock()});
    }
    if (const auto held = lock(usualPatience)) {
        // Another process may have seeded the wordbook in the meantime.
        auto content = m_file.load(m_dependencies.clock());
        if (content.state == WordbookFile::State::Good) {
            adopt(content.words);
        } else if (content.state == WordbookFile::State::Unreadable) {
            m_words = std::move(seeds);
            write();
        }
    } else {
        m_words = std::move(seeds);
    }
    Q_EMIT wordsChanged();
    refreshWeeklyPlan();
}

/// One operation after another must not each wait for a process that has stopped with the lock.
std::unique_ptr<FileLock> StorageManager::lock(std::chrono::milliseconds patience) {
    const bool isImpatient = m_hasWaitedInVain && patience == usualPatience;
    auto held = m_file.lock(isImpatient ? std::chrono::milliseconds{0} : patience);
    m_hasWaitedInVain = !held;
    return held;
}

/// Takes in a file that another process has put in place, under the lock. False when there is one that
/// cannot be read at the moment and so must not be overwritten.
bool StorageManager::catchUp() {
    if (!m_file.isReplaced())
        return true;
    auto content = m_file.load(m_dependencies.clock());
    // An unreadable file does not take the place of the words in memory.
    if (content.state == WordbookFile::State::Good)
        adopt(content.words);
    return content.state != WordbookFile::State::Unknown;
}

void StorageManager::followFile() {
    if (m_isReading || !m_file.isReplaced())
        return;
    m_isReading = true;
    const auto read = [path = m_file.path(), now = m_dependencies.clock(), known = m_words] {
        return std::make_shared<WordbookFile::Reading>(WordbookFile::Reading::of(path, now, known));
    };
    runInBackground(this, read, [this, revision = m_file.revision()](const auto &reading) {
        m_isReading = false;
        if (reading->state != WordbookFile::State::Good)
            return;
        // A change that was made meanwhile has taken in this file or a newer one.
        if (m_file.revision() == revision)
            takeReading(*reading);
        followFile();
    });
}

/// The reading is newer than what is known of the file. It needs no lock, for nothing is written.
void StorageManager::takeReading(WordbookFile::Reading &reading) {
    m_file.take(reading);
    m_weeklyPlan.reset(); // it shares the former list
    adopt(reading.words);
    discardInBackground(std::exchange(reading, {}));
    Q_EMIT wordsChanged();
    refreshWeeklyPlan();
}

void StorageManager::saveData(std::chrono::milliseconds patience) {
    if (const auto held = lock(patience); held && catchUp())
        write();
    Q_EMIT wordsChanged();
    refreshWeeklyPlan();
}

/// Saves under the lock.
void StorageManager::write() {
    if (m_file.save(m_words, m_dependencies.calendar().date(m_dependencies.clock())))
        m_unsavedChanges.clear();
}

void StorageManager::refreshWeeklyPlan() {
    m_weeklyPlan.reset();
    m_planDate = m_dependencies.clock();
    Q_EMIT weeklyPlanChanged();
}

const std::optional<WeeklyReviewPlan> &StorageManager::weeklyPlan() const {
    if (!m_weeklyPlan)
        m_weeklyPlan = WeeklyReviewScheduler::shared().generateWeeklyPlan(m_words, m_planDate,
                                                                          m_dependencies.calendar());
    return m_weeklyPlan;
}

/// Brings the list of deleted words in step with a change.
void StorageManager::updateDeletedWords(const WordbookChange &change, QSet<QString> &deletedWords) {
    const QSet<QString> before = deletedWords;
    if (const auto *search = std::get_if<WordSearched>(&change)) {
        // Searching a deleted word again restores it.
        deletedWords.remove(wordKey(search->entry.headword));
    } else if (const auto *deletion = std::get_if<WordsDeleted>(&change)) {
        deletedWords += deletion->keys;
    } else if (const auto *restoration = std::get_if<WordsRestored>(&change)) {
        for (const WordRecord &record : restoration->records)
            deletedWords.remove(record.word.toLower());
    }
    if (deletedWords != before)
        setDeletedWords(deletedWords);
}

/// Makes a change on the current state of the wordbook, saves it and rebuilds the plan. What cannot be saved
/// stays in memory until the next time. `prepare` sees the words that the change is made on.
void StorageManager::change(const WordbookChange &change, const std::function<void()> &prepare) {
    bool isDifferent = false;
    {
        const auto held = lock(usualPatience);
        m_dependencies.defaults.refresh();
        ChangeContext context{.calendar = m_dependencies.calendar(), .deletedWords = deletedWords()};
        const bool isDeletion = std::holds_alternative<WordsDeleted>(change);
        if (!isDeletion)
            updateDeletedWords(change, context.deletedWords);
        isDifferent = held && m_file.isReplaced();
        const bool maySave = held && catchUp();
        if (prepare)
            prepare();
        // A file taken in just now must not hide beforehand what is deleted here, or nothing could undo it.
        if (isDeletion)
            updateDeletedWords(change, context.deletedWords);
        m_weeklyPlan.reset(); // or it would keep a copy of the whole list alive
        if (apply(m_words, change, context)) {
            isDifferent = true;
            m_unsavedChanges += change;
            publish(change);
            if (maySave)
                write();
        }
    }
    if (!isDifferent)
        return;
    Q_EMIT wordsChanged();
    refreshWeeklyPlan();
}

/// Publishes the record that a change has left. The index works in the background, beside the save.
void StorageManager::publish(const WordbookChange &change) {
    qsizetype index = -1;
    if (const auto *search = std::get_if<WordSearched>(&change))
        index = indexOfWord(m_words, wordKey(search->entry.headword));
    else if (const auto *review = std::get_if<WordReviewed>(&change))
        index = indexOfWord(m_words, review->wordId, review->word);
    else if (const auto *restoration = std::get_if<WordsRestored>(&change))
        m_dependencies.spotlight.indexWordsBatch(restoration->records);
    else if (const auto *undo = std::get_if<ReviewUndone>(&change))
        index = indexOfWord(m_words, undo->before.id, undo->before.word);
    if (index >= 0)
        m_dependencies.spotlight.indexWord(m_words.at(index));
}

WordRecord StorageManager::addOrUpdateSearch(const DictionaryEntry &entry) {
    change(WordSearched{.entry = entry, .date = m_dependencies.clock()});
    return m_words.at(indexOfWord(m_words, wordKey(entry.headword)));
}

std::optional<ReviewUndone> StorageManager::recordReview(QUuid wordId, ReviewFeedback feedback) {
    const qsizetype known = indexOfWord(m_words, wordId);
    if (known < 0)
        return std::nullopt;
    ReviewUndone undo{.reviewId = QUuid::createUuid(), .before = m_words.at(known)};
    change(WordReviewed{.wordId = wordId,
                        .word = undo.before.word,
                        .feedback = feedback,
                        .date = m_dependencies.clock(),
                        .reviewId = undo.reviewId});
    return undo;
}

void StorageManager::undoReview(const ReviewUndone &undo) {
    change(undo);
}

void StorageManager::deleteWord(QUuid wordId) {
    if (const qsizetype known = indexOfWord(m_words, wordId); known >= 0)
        deleteWord(QString(m_words.at(known).word));
}

void StorageManager::deleteWord(const QString &wordText) {
    if (const QString word = wordText.trimmed(); !word.isEmpty())
        remove({word});
}

WordsRestored StorageManager::deleteWords(const QList<QUuid> &wordIds) {
    const QSet<QUuid> chosen(wordIds.begin(), wordIds.end());
    QSet<QString> keys;
    QStringList words;
    for (const WordRecord &record : std::as_const(m_words)) {
        if (!chosen.contains(record.id))
            continue;
        const QString word = record.word.trimmed();
        if (const QString key = wordKey(word); !key.isEmpty() && !keys.contains(key)) {
            keys += key;
            words += word;
        }
    }
    return words.isEmpty() ? WordsRestored() : remove(words);
}

/// Deletes words that are trimmed and not empty, each only once.
WordsRestored StorageManager::remove(const QStringList &words) {
    m_dependencies.spotlight.removeWords(words);
    WordsDeleted deletion;
    for (const QString &word : words)
        deletion.keys += wordKey(word);
    WordsRestored undo;
    change(deletion, [&] { undo = undoOf(deletion, m_words); });
    for (const QString &word : words)
        Q_EMIT wordDeleted(word);
    return undo;
}

void StorageManager::restoreWords(const WordsRestored &deleted) {
    if (!deleted.records.isEmpty())
        change(deleted);
}

void StorageManager::setUserNotes(QUuid wordId, const QString &notes) {
    const qsizetype known = indexOfWord(m_words, wordId);
    if (known >= 0 && m_words.at(known).userNotes != notes)
        change(UserNotesSet{.wordId = wordId, .word = m_words.at(known).word, .notes = notes});
}

void StorageManager::mergeCloudWords(const QList<WordRecord> &cloudWords) {
    if (!cloudWords.isEmpty())
        change(CloudWordsMerged{.words = cloudWords});
}

bool StorageManager::areStill(const QList<WordRecord> &words) const {
    return words.constData() == m_words.constData() && words.size() == m_words.size() && !m_file.isReplaced();
}

bool StorageManager::restoreBackup(const QList<WordRecord> &backup) {
    QList<WordRecord> replaced;
    bool isRestored = false;
    {
        const auto held = lock(usualPatience);
        m_dependencies.defaults.refresh();
        if (!held || !catchUp())
            return false;
        // What is in memory only must not be lost to the backup either.
        if (hasUnsavedChanges() || !m_file.exists() || m_file.isReplaced())
            write();
        if (!hasUnsavedChanges()) {
            replaced = m_words;
            isRestored = replaceFile(backup);
        }
    }
    if (isRestored)
        publishRestored(replaced);
    discardInBackground(std::move(replaced));
    Q_EMIT wordsChanged();
    refreshWeeklyPlan();
    return isRestored;
}

/// Saves the words of a backup under the lock, and makes them the current ones if that has worked.
bool StorageManager::replaceFile(const QList<WordRecord> &backup) {
    const QSet<QString> deleted = deletedWords();
    QSet<QString> stillDeleted = deleted;
    for (const WordRecord &record : backup)
        stillDeleted.remove(record.word.toLower());
    // First the list, or a process that ends in between would leave the restored words hidden.
    if (stillDeleted != deleted)
        setDeletedWords(stillDeleted);
    const auto seconds = static_cast<qint64>(m_dependencies.clock().unixSeconds());
    if (!m_file.replace(backup, QDateTime::fromSecsSinceEpoch(seconds, m_dependencies.calendar().timeZone))) {
        if (stillDeleted != deleted)
            setDeletedWords(deleted);
        return false;
    }
    m_weeklyPlan.reset(); // or it would keep a copy of the whole list alive
    m_words = backup;
    return true;
}

void StorageManager::publishRestored(const QList<WordRecord> &replaced) {
    QSet<QString> present;
    for (const WordRecord &record : std::as_const(m_words))
        present.insert(record.word.toLower());
    QStringList gone;
    for (const WordRecord &record : replaced) {
        if (!present.contains(record.word.toLower()))
            gone += record.word;
    }
    if (!gone.isEmpty())
        m_dependencies.spotlight.removeWords(gone);
    m_dependencies.spotlight.indexWordsBatch(m_words);
}

} // namespace lexiquill
