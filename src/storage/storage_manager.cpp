#include "storage/storage_manager.h"

#include "support/text.h"

#include <QDir>
#include <QStandardPaths>

#include <algorithm>

namespace lexiquill {

const QString StorageManager::deletedWordsKey = QStringLiteral("lexiquill_deleted_words");

namespace {

const QStringList &seedWords() {
    static const QStringList words{QStringLiteral("concise"), QStringLiteral("ephemeral"),
                                   QStringLiteral("serendipity"), QStringLiteral("ubiquitous"),
                                   QStringLiteral("eloquent")};
    return words;
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

QSet<QString> StorageManager::deletedWords() const {
    const QStringList words = m_dependencies.defaults.stringList(deletedWordsKey);
    return {words.begin(), words.end()};
}

void StorageManager::setDeletedWords(const QSet<QString> &words) {
    QStringList sorted(words.begin(), words.end());
    sorted.sort();
    m_dependencies.defaults.set(deletedWordsKey, sorted);
}

void StorageManager::loadData() {
    auto words = m_file.exists() ? m_file.load(m_dependencies.clock()) : std::nullopt;
    if (words)
        adopt(std::move(*words));
    else
        seed();
}

/// Makes the words of the file the current ones, and makes again on them what has not been saved yet.
void StorageManager::adopt(QList<WordRecord> words) {
    if (const QSet<QString> deleted = deletedWords(); !deleted.isEmpty())
        words.removeIf([&](const WordRecord &record) { return deleted.contains(record.word.toLower()); });
    m_words = std::move(words);
    const Calendar calendar = m_dependencies.calendar();
    for (const WordbookChange &change : std::as_const(m_unsavedChanges))
        apply(m_words, change, calendar);
    Q_EMIT wordsChanged();
}

void StorageManager::seed() {
    if (!m_words.isEmpty())
        return;
    QList<WordRecord> seeds;
    for (const QString &word : seedWords()) {
        if (const auto entry = m_dependencies.dictionary.lookup(word))
            seeds += newRecord({.entry = *entry, .date = m_dependencies.clock()});
    }
    const auto lock = m_file.lock();
    // Another process may have seeded the wordbook in the meantime.
    auto words = lock && m_file.exists() ? m_file.load(m_dependencies.clock()) : std::nullopt;
    if (words) {
        adopt(std::move(*words));
    } else {
        m_words = std::move(seeds);
        Q_EMIT wordsChanged();
        write(lock);
    }
    refreshWeeklyPlan();
}

void StorageManager::reloadIfReplaced() {
    if (!m_file.isReplaced())
        return;
    // An unreadable file does not take the place of the words in memory.
    if (auto words = m_file.load(m_dependencies.clock()))
        adopt(std::move(*words));
}

void StorageManager::saveData() {
    const auto lock = m_file.lock();
    if (lock)
        reloadIfReplaced();
    write(lock);
}

/// Saves under the lock; without it the changes stay in memory until the next time.
void StorageManager::write(const std::unique_ptr<FileLock> &lock) {
    const auto today = m_dependencies.calendar().date(m_dependencies.clock());
    if (lock && m_file.save(m_words, today))
        m_unsavedChanges.clear();
}

void StorageManager::refreshWeeklyPlan() {
    m_weeklyPlan = WeeklyReviewScheduler::shared().generateWeeklyPlan(m_words, m_dependencies.clock(),
                                                                      m_dependencies.calendar());
    Q_EMIT weeklyPlanChanged();
}

/// Makes a change on the current state of the wordbook, saves it and rebuilds the plan.
void StorageManager::change(const WordbookChange &change) {
    const auto lock = m_file.lock();
    m_dependencies.defaults.refresh();
    if (const auto *search = std::get_if<WordSearched>(&change)) {
        // Searching a deleted word again restores it.
        if (QSet<QString> deleted = deletedWords(); deleted.remove(wordKey(search->entry.headword)))
            setDeletedWords(deleted);
    } else if (const auto *deletion = std::get_if<WordDeleted>(&change)) {
        QSet<QString> deleted = deletedWords();
        deleted.insert(deletion->key);
        setDeletedWords(deleted);
    }
    if (lock)
        reloadIfReplaced();
    apply(m_words, change, m_dependencies.calendar());
    m_unsavedChanges += change;
    write(lock);
    Q_EMIT wordsChanged();
    refreshWeeklyPlan();
}

WordRecord StorageManager::addOrUpdateSearch(const DictionaryEntry &entry) {
    change(WordSearched{.entry = entry, .date = m_dependencies.clock()});
    WordRecord record = m_words.at(indexOfWord(m_words, wordKey(entry.headword)));
    m_dependencies.index.indexWord(record);
    return record;
}

void StorageManager::recordReview(const QUuid &wordId, ReviewFeedback feedback) {
    const auto byId = [&](const WordRecord &record) {
        return record.id == wordId;
    };
    const auto known = std::find_if(m_words.cbegin(), m_words.cend(), byId);
    if (known == m_words.cend())
        return;
    const QString word = known->word;
    change(
        WordReviewed{.wordId = wordId, .word = word, .feedback = feedback, .date = m_dependencies.clock()});
    if (const qsizetype index = indexOfWord(m_words, word.toLower()); index >= 0)
        m_dependencies.index.indexWord(m_words.at(index));
}

void StorageManager::deleteWord(const QUuid &wordId) {
    const auto byId = [&](const WordRecord &record) {
        return record.id == wordId;
    };
    const auto known = std::find_if(m_words.cbegin(), m_words.cend(), byId);
    if (known != m_words.cend())
        deleteWord(QString(known->word));
}

void StorageManager::deleteWord(const QString &wordText) {
    const QString key = wordKey(wordText);
    if (key.isEmpty())
        return;
    m_dependencies.index.removeWord(wordText.trimmed());
    change(WordDeleted{.key = key});
    Q_EMIT wordDeleted(wordText.trimmed());
}

} // namespace lexiquill
