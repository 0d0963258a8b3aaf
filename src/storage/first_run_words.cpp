#include "storage/first_run_words.h"

#include "storage/wordbook_change.h"

namespace lexiquill {

QList<WordRecord> firstRunWords(const std::function<std::optional<DictionaryEntry>(const QString &)> &lookUp,
                                Instant now) {
    QList<WordRecord> records;
    for (const QString &word :
         {QStringLiteral("concise"), QStringLiteral("ephemeral"), QStringLiteral("serendipity"),
          QStringLiteral("ubiquitous"), QStringLiteral("eloquent")}) {
        if (const auto entry = lookUp(word))
            records += newRecord({.entry = *entry, .date = now});
    }
    return records;
}

} // namespace lexiquill
