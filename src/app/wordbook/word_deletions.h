#pragma once

#include "storage/wordbook_change.h"

#include <QList>
#include <QString>
#include <QUuid>

namespace lexiquill {

class StorageManager;

/// Deletes words for the user, and undoes deletions, the last one first.
class WordDeletions {
public:
    /// `storage` must outlive the instance.
    explicit WordDeletions(StorageManager &storage) : m_storage(storage) {}

    /// Deletes the words with these ids and returns a message for the user, e.g. "已删除“apple”" or "已删除 3
    /// 个单词"; empty when there was none.
    QString remove(const QList<QUuid> &ids);
    /// Undoes the last deletion that has not been undone, and returns the ids of its records.
    QList<QUuid> undo();

private:
    StorageManager &m_storage;
    QList<WordsRestored> m_deletions;
};

} // namespace lexiquill
