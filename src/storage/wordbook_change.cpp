#include "storage/wordbook_change.h"

#include "review/spaced_repetition_engine.h"
#include "storage/cloud_merge.h"
#include "support/text.h"

#include <algorithm>
#include <limits>

namespace lexiquill {

namespace {

template <typename Matches> qsizetype indexOf(const QList<WordRecord> &words, Matches matches) {
    const auto found = std::find_if(words.cbegin(), words.cend(), matches);
    return found == words.cend() ? -1 : found - words.cbegin();
}

bool apply(QList<WordRecord> &words, const WordSearched &search, const ChangeContext &) {
    const qsizetype index = indexOfWord(words, wordKey(search.entry.headword));
    if (index < 0) {
        words.prepend(newRecord(search));
        return true;
    }
    WordRecord &record = words[index];
    if (record.searchCount < std::numeric_limits<qint64>::max())
        ++record.searchCount;
    record.lastSearchedDate = search.date;
    if (search.entry.phonetic)
        record.phonetic = search.entry.phonetic;
    record.posGroups = search.entry.posGroups;
    record.conciseSummary = search.entry.conciseSummary();
    record.rawDefinition = search.entry.rawText;
    record.examples = search.entry.examples;
    // Counts the search once more, which is wanted: a repeated search weighs two.
    SpacedRepetitionEngine::shared().recordSearch(record, search.date);
    return true;
}

bool apply(QList<WordRecord> &words, const WordReviewed &review, const ChangeContext &context) {
    const qsizetype index = indexOfWord(words, review.wordId, review.word);
    if (index < 0)
        return false;
    SpacedRepetitionEngine::shared().processReview(words[index], review.feedback, review.date,
                                                   context.calendar);
    return true;
}

bool apply(QList<WordRecord> &words, const WordDeleted &deletion, const ChangeContext &) {
    words.removeIf([&](const WordRecord &record) { return record.word.toLower() == deletion.key; });
    return true;
}

bool apply(QList<WordRecord> &words, const CloudWordsMerged &merge, const ChangeContext &context) {
    return mergeCloudWords(words, merge.words, context.deletedWords);
}

} // namespace

WordRecord newRecord(const WordSearched &search) {
    const DictionaryEntry &entry = search.entry;
    return {.id = search.idIfNew,
            .word = entry.headword.trimmed(),
            .phonetic = entry.phonetic,
            .conciseSummary = entry.conciseSummary(),
            .posGroups = entry.posGroups,
            .rawDefinition = entry.rawText,
            .examples = entry.examples,
            .firstSearchedDate = search.date,
            .lastSearchedDate = search.date,
            .searchCount = 1,
            .nextReviewDate = search.date,
            .easeFactor = SpacedRepetitionEngine::defaultEaseFactor,
            .reviewHistory = {},
            .userNotes = QStringLiteral("")};
}

qsizetype indexOfWord(const QList<WordRecord> &words, const QString &key) {
    return indexOf(words, [&](const WordRecord &record) { return record.word.toLower() == key; });
}

qsizetype indexOfWord(const QList<WordRecord> &words, const QUuid &id) {
    return indexOf(words, [&](const WordRecord &record) { return record.id == id; });
}

qsizetype indexOfWord(const QList<WordRecord> &words, const QUuid &id, const QString &word) {
    const qsizetype index = indexOfWord(words, id);
    return index >= 0 ? index : indexOfWord(words, word.toLower());
}

bool apply(QList<WordRecord> &words, const WordbookChange &change, const ChangeContext &context) {
    return std::visit([&](const auto &each) { return apply(words, each, context); }, change);
}

} // namespace lexiquill
