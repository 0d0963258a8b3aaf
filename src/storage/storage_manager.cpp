#include "storage/storage_manager.h"

#include "support/background_task.h"
#include "support/text.h"

#include <QDateTime>
#include <QDir>
#include <QStandardPaths>

namespace lexiquill {

StorageManager::StorageManager(Dependencies dependencies, QObject *parent)
    : QObject(parent),
      m_dependencies(std::move(dependencies)),
      m_file(m_dependencies.storageFile) {
    loadData();
}

QString StorageManager::standardStorageFile() {
    const QString directory = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return QDir(directory).filePath(QStringLiteral("Lexiquill/vocabulary.json"));
}

QList<WordRecord> StorageManager::recordedWords(const QString &storageFile, const DeletedWords &deleted,
                                                Instant now) {
    auto words = WordbookFile(storageFile).load(now).words;
    removeDeleted(words, deleted.words());
    return words;
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

/// Makes the words of the file the current ones, and applies the unsaved changes to them again. `words`
/// receives the former words.
void StorageManager::adopt(QList<WordRecord> &words) {
    // Deleted words may have been restored before the file was written, so use the newest list.
    m_dependencies.deletedWords.refresh();
    const QSet<QString> deleted = deletedWords();
    removeDeleted(words, deleted);
    Q_EMIT aboutToChangeWords();
    m_words.swap(words);
    const ChangeContext context{.calendar = m_dependencies.calendar(), .deletedWords = deleted};
    for (const WordbookChange &change : std::as_const(m_unsavedChanges))
        apply(m_words, change, context);
}

void StorageManager::seed() {
    if (!m_words.isEmpty())
        return;
    QList<WordRecord> seeds = m_dependencies.firstWords();
    if (const auto held = lock(usualPatience)) {
        // Another process may have seeded the wordbook in the meantime.
        auto content = m_file.load(m_dependencies.clock());
        if (content.state == WordbookFile::State::Good) {
            adopt(content.words);
        } else if (content.state == WordbookFile::State::Unreadable) {
            m_words = std::move(seeds);
            write(*held);
        }
    } else {
        m_words = std::move(seeds);
    }
    Q_EMIT wordsChanged();
}

/// If a process hangs while it holds the lock, only the first operation waits for it, not each one.
std::unique_ptr<FileLock> StorageManager::lock(std::chrono::milliseconds patience) {
    const bool isImpatient = m_hasWaitedInVain && patience == usualPatience;
    auto held = m_file.lock(isImpatient ? std::chrono::milliseconds{0} : patience);
    m_hasWaitedInVain = !held;
    return held;
}

/// Loads a file that another process has put in place; to be called under the lock. False when there is a
/// file that cannot be read at the moment, which must not be overwritten.
bool StorageManager::catchUp() {
    if (!m_file.isReplaced())
        return true;
    auto content = m_file.load(m_dependencies.clock());
    // An unreadable file does not replace the words in memory.
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
        // If the revision differs, a change made meanwhile has loaded this file or a newer one.
        if (m_file.revision() == revision)
            takeReading(*reading);
        followFile();
    });
}

/// Uses a reading that is newer than the loaded file. Needs no lock, because nothing is written.
void StorageManager::takeReading(WordbookFile::Reading &reading) {
    m_file.take(reading);
    adopt(reading.words);
    discardInBackground(std::exchange(reading, {}));
    Q_EMIT wordsChanged();
}

void StorageManager::saveData(std::chrono::milliseconds patience) {
    if (const auto held = lock(patience); held && catchUp())
        write(*held);
    Q_EMIT wordsChanged();
}

/// Saves the words; to be called under the lock.
void StorageManager::write(FileLock &held) {
    if (m_file.save(held, m_words, m_dependencies.calendar().date(m_dependencies.clock())))
        m_unsavedChanges.clear();
}

/// Applies a change to the current state of the wordbook and saves it. A change that cannot be saved stays in
/// memory until the next save. `prepare` is called immediately before the change is applied. False when the
/// change made no difference.
bool StorageManager::change(const WordbookChange &change, const std::function<void()> &prepare) {
    bool isMade = false;
    bool isReplaced = false;
    {
        const auto held = lock(usualPatience);
        DeletedWords &deletedWords = m_dependencies.deletedWords;
        deletedWords.refresh();
        ChangeContext context{.calendar = m_dependencies.calendar(), .deletedWords = {}};
        const bool isDeletion = std::holds_alternative<WordsDeleted>(change);
        if (!isDeletion)
            context.deletedWords = deletedWords.follow(change);
        isReplaced = held && m_file.isReplaced();
        const bool maySave = held && catchUp();
        if (prepare)
            prepare();
        // Mark the words as deleted only here: otherwise catchUp() would drop them from a newly loaded file
        // before `prepare` has seen them, and the deletion could not be undone.
        if (isDeletion)
            context.deletedWords = deletedWords.follow(change);
        Q_EMIT aboutToChangeWords();
        isMade = apply(m_words, change, context);
        if (isMade) {
            m_unsavedChanges += change;
            tellOfRecords(change);
            if (maySave)
                write(*held);
        }
    }
    if (isMade || isReplaced)
        Q_EMIT wordsChanged();
    return isMade;
}

void StorageManager::tellOfRecords(const WordbookChange &change) {
    qsizetype index = -1;
    if (const auto *search = std::get_if<WordSearched>(&change))
        index = indexOfWord(m_words, wordKey(search->entry.headword));
    else if (const auto *review = std::get_if<WordReviewed>(&change))
        index = indexOfWord(m_words, review->wordId, review->word);
    else if (const auto *restoration = std::get_if<WordsRestored>(&change))
        Q_EMIT recordsChanged(restoration->records);
    else if (const auto *undo = std::get_if<ReviewUndone>(&change))
        index = indexOfWord(m_words, undo->before.id, undo->before.word);
    if (index >= 0)
        Q_EMIT recordsChanged({m_words.at(index)});
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
    const bool isMade = change(WordReviewed{.wordId = wordId,
                                            .word = undo.before.word,
                                            .feedback = feedback,
                                            .date = m_dependencies.clock(),
                                            .reviewId = undo.reviewId});
    return isMade ? std::optional(undo) : std::nullopt;
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

/// Deletes words, which must be trimmed, not empty and unique.
WordsRestored StorageManager::remove(const QStringList &words) {
    Q_EMIT recordsRemoved(words);
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
        m_dependencies.deletedWords.refresh();
        if (!held || !catchUp())
            return false;
        // Save changes that are only in memory, so that the backup does not overwrite them.
        if (hasUnsavedChanges() || !m_file.exists() || m_file.isReplaced())
            write(*held);
        if (!hasUnsavedChanges()) {
            replaced = m_words;
            isRestored = replaceFile(*held, backup);
        }
    }
    if (isRestored)
        Q_EMIT wordsReplaced(replaced);
    discardInBackground(std::move(replaced));
    Q_EMIT wordsChanged();
    return isRestored;
}

/// Saves the words of a backup under the lock, and makes them the current ones if that has worked.
bool StorageManager::replaceFile(FileLock &held, const QList<WordRecord> &backup) {
    const QSet<QString> deleted = deletedWords();
    QSet<QString> stillDeleted = deleted;
    for (const WordRecord &record : backup)
        stillDeleted.remove(record.word.toLower());
    // Change the list first: if the process ended in between, the restored words would otherwise stay hidden.
    if (stillDeleted != deleted)
        m_dependencies.deletedWords.set(stillDeleted);
    const auto seconds = static_cast<qint64>(m_dependencies.clock().unixSeconds());
    if (!m_file.replace(held, backup, m_dependencies.calendar().dateTime(seconds * 1000))) {
        if (stillDeleted != deleted)
            m_dependencies.deletedWords.set(deleted);
        return false;
    }
    Q_EMIT aboutToChangeWords();
    m_words = backup;
    return true;
}

} // namespace lexiquill
