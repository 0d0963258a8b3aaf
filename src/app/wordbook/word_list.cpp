#include "app/wordbook/word_list.h"

#include <QStringMatcher>

#include <algorithm>
#include <limits>
#include <vector>

namespace lexiquill {

namespace {

quint64 prefixOf(const QString &text) {
    constexpr qsizetype unitCount = 4;
    constexpr int unitBits = 16;
    quint64 prefix = 0;
    for (qsizetype i = 0; i < unitCount; ++i)
        prefix = prefix << unitBits | (i < text.size() ? text.at(i).unicode() : 0U);
    return prefix;
}

ListedWordPointer listed(const WordRecord &record) {
    QString text = record.word;
    // The gloss lines of old records may be all that there is.
    text += u'\n' + record.conciseSummary;
    for (const PartOfSpeechGroup &group : record.posGroups) {
        for (const SenseItem &sense : group.senses)
            text += u'\n' + sense.chineseMeaning;
    }
    text += u'\n' + record.userNotes;
    const QString key = record.word.toCaseFolded();
    return std::make_shared<const ListedWord>(ListedWord{.record = record,
                                                         .searchText = text.toCaseFolded(),
                                                         .alphabetKey = key,
                                                         .alphabetPrefix = prefixOf(key)});
}

/// What most comparisons are decided by: the smaller comes first.
double sortNumber(const WordRecord &record, WordOrder order) {
    switch (order) {
    case WordOrder::LastSearched:
        return -record.lastSearchedDate.seconds;
    case WordOrder::FirstSearched:
        return -record.firstSearchedDate.seconds;
    case WordOrder::NextReview:
        // A mastered word has no next review.
        return record.isMastered ? std::numeric_limits<double>::infinity() : record.nextReviewDate.seconds;
    case WordOrder::SearchCount:
        return -static_cast<double>(record.searchCount);
    case WordOrder::Alphabet:
        break;
    }
    return 0;
}

bool passes(const WordRecord &record, WordFilter filter, Instant now) {
    switch (filter) {
    case WordFilter::New:
        return record.memoryStatus == MemoryStatus::New;
    case WordFilter::Learning:
        return record.memoryStatus == MemoryStatus::Learning;
    case WordFilter::Reviewing:
        return record.memoryStatus == MemoryStatus::Reviewing;
    case WordFilter::Mastered:
        return record.memoryStatus == MemoryStatus::Mastered;
    case WordFilter::Due:
        return record.isDue(now);
    case WordFilter::All:
        break;
    }
    return true;
}

} // namespace

void WordList::setRecords(const QList<WordRecord> &records) {
    QHash<QUuid, ListedWordPointer> known;
    known.reserve(m_words.size());
    for (const ListedWordPointer &word : std::as_const(m_words))
        known.insert(word->record.id, word);
    QList<ListedWordPointer> words;
    words.reserve(records.size());
    for (const WordRecord &record : records) {
        const auto former = known.constFind(record.id);
        const bool isUnchanged = former != known.constEnd() && haveSameContent((*former)->record, record);
        words += isUnchanged ? *former : listed(record);
    }
    m_words = std::move(words);
    sort();
}

void WordList::setOrder(WordOrder order) {
    m_order = order;
    sort();
}

void WordList::sort() {
    struct Key {
        double number = 0;
        quint64 prefix = 0;
        const ListedWord *word = nullptr;
        qsizetype position = 0;
    };
    const bool isAlphabetic = m_order == WordOrder::Alphabet;
    std::vector<Key> keys(static_cast<std::size_t>(m_words.size()));
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const auto position = static_cast<qsizetype>(i);
        const ListedWord &word = *m_words.at(position);
        keys[i] = {.number = sortNumber(word.record, m_order),
                   .prefix = isAlphabetic ? word.alphabetPrefix : 0,
                   .word = &word,
                   .position = position};
    }
    std::sort(keys.begin(), keys.end(), [isAlphabetic](const Key &a, const Key &b) {
        if (a.number != b.number)
            return a.number < b.number;
        if (a.prefix != b.prefix)
            return a.prefix < b.prefix;
        if (isAlphabetic) {
            if (const int order = a.word->alphabetKey.compare(b.word->alphabetKey); order != 0)
                return order < 0;
        }
        return a.position < b.position;
    });
    m_sorted.clear();
    m_sorted.reserve(m_words.size());
    for (const Key &key : keys)
        m_sorted += m_words.at(key.position);
}

QList<ListedWordPointer> WordList::select(const QString &text, WordFilter filter, Instant now) const {
    const QString folded = text.trimmed().toCaseFolded();
    if (folded.isEmpty() && filter == WordFilter::All)
        return m_sorted;
    const QStringMatcher matcher(folded);
    QList<ListedWordPointer> result;
    for (const ListedWordPointer &word : m_sorted) {
        if (passes(word->record, filter, now) && (folded.isEmpty() || matcher.indexIn(word->searchText) >= 0))
            result += word;
    }
    return result;
}

} // namespace lexiquill
