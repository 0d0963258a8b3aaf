#include "app/wordbook/word_list.h"

#include "model/note_tags.h"

#include <QStringMatcher>

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

namespace lexiquill {

namespace {

constexpr QChar separator = u'\0'; ///< between the texts of two records

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
    // Old records may have no other glosses than this line.
    text += u'\n' + record.conciseSummary;
    for (const PartOfSpeechGroup &group : record.posGroups) {
        for (const SenseItem &sense : group.senses)
            text += u'\n' + sense.chineseMeaning;
    }
    text += u'\n' + record.userNotes;
    const QString key = record.word.toCaseFolded();
    ListedWord word{.record = record,
                    .searchText = text.toCaseFolded(),
                    .alphabetKey = key,
                    .alphabetPrefix = prefixOf(key),
                    .tags = noteTags(record.userNotes)};
    for (const QString &tag : std::as_const(word.tags))
        word.tagKeys += tagKey(tag);
    return std::make_shared<const ListedWord>(std::move(word));
}

/// The primary sort key: smaller values come first.
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
    const QList<ListedWordPointer> former = std::exchange(m_words, {});
    QHash<QUuid, qsizetype> places; // built only if the order has changed
    qsizetype next = 0;
    const auto find = [&](const QUuid &id) {
        if (next < former.size() && former.at(next)->record.id == id)
            return next;
        if (places.isEmpty()) {
            places.reserve(former.size());
            for (qsizetype i = 0; i < former.size(); ++i)
                places.insert(former.at(i)->record.id, i);
        }
        return places.value(id, former.size());
    };
    m_words.reserve(records.size());
    for (const WordRecord &record : records) {
        const qsizetype place = find(record.id);
        const bool isKnown = place < former.size();
        if (isKnown)
            next = place + 1;
        const bool isUnchanged = isKnown && haveSameContent(former.at(place)->record, record);
        m_words += isUnchanged ? former.at(place) : listed(record);
    }
    sort();
    countTags();
}

void WordList::countTags() {
    m_tags.clear();
    QHash<QString, qsizetype> places;
    for (const ListedWordPointer &word : std::as_const(m_words)) {
        for (qsizetype i = 0; i < word->tags.size(); ++i) {
            const QString &key = word->tagKeys.at(i);
            const auto place = places.constFind(key);
            if (place != places.cend()) {
                ++m_tags[*place].count;
                continue;
            }
            places.insert(key, m_tags.size());
            m_tags += {.key = key, .name = word->tags.at(i), .count = 1};
        }
    }
    std::ranges::sort(m_tags, [](const TagCount &a, const TagCount &b) {
        return a.count != b.count ? a.count > b.count : a.key < b.key;
    });
}

bool WordList::isTag(const QString &key) const {
    return std::ranges::any_of(m_tags, [&](const TagCount &tag) { return tag.key == key; });
}

void WordList::setOrder(WordOrder order) {
    m_order = order;
    sort();
}

void WordList::sort() {
    m_texts.clear();
    m_textEnds.clear();
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

QList<ListedWordPointer> WordList::select(const WordChoice &choice, Instant now) {
    const TagQuery query = TagQuery::of(choice.text);
    const QString folded = query.text.toCaseFolded();
    QList<ListedWordPointer> words = folded.isEmpty() ? m_sorted : wordsWith(folded);
    const auto keep = [&words](auto holds) {
        words.removeIf([&](const ListedWordPointer &word) { return !holds(*word); });
    };
    if (choice.filter != WordFilter::All)
        keep([&](const ListedWord &word) { return passes(word.record, choice.filter, now); });
    if (!choice.tagKey.isEmpty())
        keep([&](const ListedWord &word) { return word.tagKeys.contains(choice.tagKey); });
    for (const QString &key : query.keys) {
        const bool isWhole = isTag(key);
        keep([&](const ListedWord &word) {
            return std::ranges::any_of(word.tagKeys, [&](const QString &each) {
                return isWhole ? each == key : each.startsWith(key);
            });
        });
    }
    return words;
}

void WordList::prepareSearch() {
    if (!m_textEnds.isEmpty())
        return;
    qsizetype size = 0;
    for (const ListedWordPointer &word : std::as_const(m_sorted))
        size += word->searchText.size() + 1;
    m_texts.reserve(size);
    m_textEnds.reserve(m_sorted.size());
    for (const ListedWordPointer &word : std::as_const(m_sorted)) {
        m_texts += word->searchText;
        m_texts += separator;
        m_textEnds += m_texts.size();
    }
}

QList<ListedWordPointer> WordList::wordsWith(const QString &folded) {
    prepareSearch();
    QList<ListedWordPointer> words;
    if (folded.contains(separator))
        return words;
    words.reserve(m_sorted.size());
    const QStringMatcher matcher(folded);
    // indexOf() is faster for a single character.
    const auto find = [&](qsizetype from) {
        return folded.size() == 1 ? m_texts.indexOf(folded.front(), from) : matcher.indexIn(m_texts, from);
    };
    auto end = m_textEnds.cbegin();
    for (qsizetype found = find(0); found >= 0; found = find(*end++)) {
        // If there are many matches, the next one is near.
        while (*end <= found)
            ++end;
        words += m_sorted.at(end - m_textEnds.cbegin());
    }
    return words;
}

} // namespace lexiquill
