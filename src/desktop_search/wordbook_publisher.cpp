#include "desktop_search/wordbook_publisher.h"

#include "desktop_search/spotlight_manager.h"
#include "storage/storage_manager.h"

#include <QSet>

namespace lexiquill {

namespace {

/// The words of `former` that are not in `present`.
QStringList goneWords(const QList<WordRecord> &former, const QList<WordRecord> &present) {
    QSet<QString> keys;
    for (const WordRecord &record : present)
        keys.insert(record.word.toLower());
    QStringList gone;
    for (const WordRecord &record : former) {
        if (!keys.contains(record.word.toLower()))
            gone += record.word;
    }
    return gone;
}

} // namespace

WordbookPublisher::WordbookPublisher(StorageManager &storage, const SpotlightManager &spotlight,
                                     QObject *parent)
    : QObject(parent) {
    connect(&storage, &StorageManager::recordsChanged, this,
            [&spotlight](const QList<WordRecord> &records) { spotlight.indexWordsBatch(records); });
    connect(&storage, &StorageManager::recordsRemoved, this,
            [&spotlight](const QStringList &words) { spotlight.removeWords(words); });
    connect(&storage, &StorageManager::wordsReplaced, this,
            [&storage, &spotlight](const QList<WordRecord> &former) {
                if (const QStringList gone = goneWords(former, storage.words()); !gone.isEmpty())
                    spotlight.removeWords(gone);
                spotlight.indexWordsBatch(storage.words());
            });
}

} // namespace lexiquill
