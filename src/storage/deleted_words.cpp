#include "storage/deleted_words.h"

#include "support/text.h"

namespace lexiquill {

const QString DeletedWords::key = QStringLiteral("lexiquill_deleted_words");

QSet<QString> DeletedWords::words() const {
    const QStringList words = m_defaults.stringList(key);
    return {words.begin(), words.end()};
}

void DeletedWords::set(const QSet<QString> &words) {
    QStringList sorted(words.begin(), words.end());
    sorted.sort();
    m_defaults.set(key, sorted);
}

QSet<QString> DeletedWords::follow(const WordbookChange &change) {
    const QSet<QString> before = words();
    QSet<QString> after = before;
    if (const auto *search = std::get_if<WordSearched>(&change)) {
        // Searching a deleted word again restores it.
        after.remove(wordKey(search->entry.headword));
    } else if (const auto *deletion = std::get_if<WordsDeleted>(&change)) {
        after += deletion->keys;
    } else if (const auto *restoration = std::get_if<WordsRestored>(&change)) {
        for (const WordRecord &record : restoration->records)
            after.remove(record.word.toLower());
    }
    if (after != before)
        set(after);
    return after;
}

void removeDeleted(QList<WordRecord> &words, const QSet<QString> &deleted) {
    if (!deleted.isEmpty())
        words.removeIf([&](const WordRecord &record) { return deleted.contains(record.word.toLower()); });
}

} // namespace lexiquill
