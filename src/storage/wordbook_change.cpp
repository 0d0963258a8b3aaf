#include "storage/wordbook_change.h"

#include "model/record_merge.h"
#include "review/spaced_repetition_engine.h"
#include "storage/record_healing.h"
#include "support/text.h"

#include <QHash>

#include <algorithm>
#include <iterator>
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
    // Do this before setting the new content, which is stored unchanged.
    healContent(record);
    if (record.searchCount < std::numeric_limits<qint64>::max())
        ++record.searchCount;
    record.lastSearchedDate = search.date;
    if (search.entry.phonetic)
        record.phonetic = search.entry.phonetic;
    record.posGroups = search.entry.posGroups;
    record.conciseSummary = search.entry.conciseSummary();
    record.rawDefinition = search.entry.rawText;
    record.examples = search.entry.examples;
    // This counts the search a second time. That is intended: a repeated search counts twice.
    SpacedRepetitionEngine::recordSearch(record, search.date);
    return true;
}

bool apply(QList<WordRecord> &words, const WordReviewed &review, const ChangeContext &context) {
    const qsizetype index = indexOfWord(words, review.wordId, review.word);
    if (index < 0)
        return false;
    SpacedRepetitionEngine::processReview(words[index], review.feedback, review.date, context.calendar);
    words[index].reviewHistory.last().id = review.reviewId;
    healContent(words[index]);
    return true;
}

bool apply(QList<WordRecord> &words, const ReviewUndone &undo, const ChangeContext &context) {
    const WordRecord &before = undo.before;
    const qsizetype index = indexOfWord(words, before.id, before.word);
    if (index < 0)
        return false;
    const QList<ReviewLog> history = words.at(index).reviewHistory;
    const auto isUndone = [&undo](const ReviewLog &review) {
        return review.id == undo.reviewId;
    };
    // The server's history of the word may have replaced the history that contained the answer.
    if (history.size() <= before.reviewHistory.size() ||
        std::none_of(history.cbegin() + before.reviewHistory.size(), history.cend(), isUndone))
        return false;
    WordRecord &record = words[index];
    takeReviewState(record, before);
    record.reviewHistory = before.reviewHistory;
    for (const ReviewLog &review : history.sliced(before.reviewHistory.size())) {
        if (isUndone(review))
            continue;
        SpacedRepetitionEngine::processReview(record, review.feedback, review.reviewDate, context.calendar);
        record.reviewHistory.last().id = review.id;
    }
    healContent(record);
    return true;
}

bool apply(QList<WordRecord> &words, const WordsDeleted &deletion, const ChangeContext &context) {
    words.removeIf([&](const WordRecord &record) {
        const QString key = record.word.toLower();
        return deletion.keys.contains(key) && context.deletedWords.contains(key);
    });
    return true;
}

/// Combines a restored record with the one that a search has created since its deletion.
WordRecord restored(const WordRecord &record, const WordRecord &newer) {
    WordRecord known = record;
    SpacedRepetitionEngine::recordSearch(known, newer.lastSearchedDate);
    known.searchCount = record.searchCount;
    WordRecord result = united(known, newer);
    healContent(result);
    return result;
}

/// Inserts the restored records with these indexes at their former positions.
void insert(QList<WordRecord> &words, const WordsRestored &restoration, const QList<qsizetype> &indexes) {
    QList<WordRecord> result;
    result.reserve(words.size() + indexes.size());
    auto next = words.cbegin();
    for (const qsizetype index : indexes) {
        while (next != words.cend() && result.size() < restoration.positions.at(index))
            result += *next++;
        result += restoration.records.at(index);
    }
    std::copy(next, words.cend(), std::back_inserter(result));
    words = std::move(result);
}

bool apply(QList<WordRecord> &words, const WordsRestored &restoration, const ChangeContext &context) {
    QSet<QUuid> knownIds;
    QHash<QString, qsizetype> positions; // of the first record of each word, counted from one
    knownIds.reserve(words.size());
    positions.reserve(words.size());
    for (qsizetype i = words.size() - 1; i >= 0; --i) {
        knownIds.insert(words.at(i).id);
        positions.insert(words.at(i).word.toLower(), i + 1);
    }
    QList<qsizetype> absent; // indexes into the restored records
    bool isChanged = false;
    for (qsizetype i = 0; i < restoration.records.size(); ++i) {
        const WordRecord &record = restoration.records.at(i);
        const QString key = record.word.toLower();
        if (knownIds.contains(record.id) || context.deletedWords.contains(key))
            continue;
        isChanged = true;
        // Of several records of one word, the first is combined with the new one.
        if (const qsizetype newer = positions.take(key)) {
            words[newer - 1] = restored(record, words.at(newer - 1));
        } else {
            absent += i;
        }
    }
    insert(words, restoration, absent);
    return isChanged;
}

bool apply(QList<WordRecord> &words, const UserNotesSet &change, const ChangeContext &) {
    const qsizetype index = indexOfWord(words, change.wordId, change.word);
    if (index < 0 || words.at(index).userNotes == change.notes)
        return false;
    words[index].userNotes = change.notes;
    healContent(words[index]);
    return true;
}

bool apply(QList<WordRecord> &words, const CloudWordsMerged &merge, const ChangeContext &context) {
    QList<WordRecord> news;
    if (!mergeCloudWords(words, merge.words, context.deletedWords, &news))
        return false;
    QSet<QString> changed;
    for (const WordRecord &record : std::as_const(news))
        changed += record.word.toLower();
    for (WordRecord &record : words) {
        if (changed.contains(record.word.toLower()))
            healContent(record);
    }
    return true;
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

WordsRestored undoOf(const WordsDeleted &deletion, const QList<WordRecord> &words) {
    WordsRestored undo;
    for (qsizetype i = 0; i < words.size(); ++i) {
        if (deletion.keys.contains(words.at(i).word.toLower())) {
            undo.records += words.at(i);
            undo.positions += i;
        }
    }
    return undo;
}

bool apply(QList<WordRecord> &words, const WordbookChange &change, const ChangeContext &context) {
    return std::visit([&](const auto &each) { return apply(words, each, context); }, change);
}

} // namespace lexiquill
