#include "app/wordbook/word_deletions.h"

#include "storage/storage_manager.h"

namespace lexiquill {

QString WordDeletions::remove(const QList<QUuid> &ids) {
    constexpr qsizetype mostDeletions = 100;
    const WordsRestored undo = m_storage.deleteWords(ids);
    if (undo.records.isEmpty())
        return {};
    if (m_deletions.size() == mostDeletions)
        m_deletions.removeFirst();
    m_deletions += undo;
    return ids.size() == 1 ? QStringLiteral("已删除“%1”").arg(undo.records.constFirst().word)
                           : QStringLiteral("已删除 %1 个单词").arg(ids.size());
}

QList<QUuid> WordDeletions::undo() {
    if (m_deletions.isEmpty())
        return {};
    const WordsRestored undo = m_deletions.takeLast();
    m_storage.restoreWords(undo);
    QList<QUuid> ids;
    for (const WordRecord &record : undo.records)
        ids += record.id;
    return ids;
}

} // namespace lexiquill
