#include "dictionaries/headwords.h"

#include <QByteArrayMatcher>

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <tuple>

namespace lexiquill {

namespace {

/// Number of entries from one stored position to the next.
constexpr size_t stride = 32;
/// At most this many words with a common prefix are examined to find the shortest ones.
constexpr size_t maxRange = 4096;
constexpr qsizetype maxWordSize = 4096;
constexpr qsizetype maxSimilarLength = 48;
constexpr size_t maxSimilarWords = 4096;
constexpr int maxDistance = 2;

char16_t folded(char c) {
    return static_cast<unsigned char>(c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c);
}

/// Negative, zero or positive if `left` sorts before, equal to or after `right`.
int compare(QByteArrayView left, QByteArrayView right) {
    const qsizetype common = std::min(left.size(), right.size());
    for (qsizetype i = 0; i < common; ++i) {
        const int difference = folded(left[i]) - folded(right[i]);
        if (difference != 0)
            return difference;
    }
    return left.size() < right.size() ? -1 : left.size() > right.size() ? 1 : 0;
}

bool startsWith(QByteArrayView word, QByteArrayView prefix) {
    return word.size() >= prefix.size() && compare(word.first(prefix.size()), prefix) == 0;
}

bool isAscii(QByteArrayView text) {
    return std::none_of(text.begin(), text.end(), [](char c) { return static_cast<signed char>(c) < 0; });
}

/// A bit set of the letters. Two words that are one edit apart differ in at most two bits.
template <typename Letters> quint64 letterSet(const Letters &letters) {
    quint64 set = 0;
    for (const char16_t c : letters)
        set |= quint64{1} << (c % 64);
    return set;
}

/// The letters of a word, ignoring case.
class Letters {
public:
    explicit Letters(QByteArrayView ascii) : m_size(ascii.size()) {
        std::transform(ascii.begin(), ascii.end(), m_letters.begin(), folded);
    }
    explicit Letters(QStringView text) : m_size(text.size()) {
        std::transform(text.begin(), text.end(), m_letters.begin(), [](QChar c) { return c.unicode(); });
    }

    const char16_t *begin() const { return m_letters.data(); }
    const char16_t *end() const { return m_letters.data() + m_size; }
    size_t size() const { return static_cast<size_t>(m_size); }
    char16_t operator[](size_t i) const { return m_letters[i]; }

private:
    std::array<char16_t, static_cast<size_t>(maxSimilarLength + maxDistance)> m_letters;
    qsizetype m_size;
};

/// The number of edits between two words. Stops early if there are more than `limit`; the result is then any
/// larger number.
int editDistance(const Letters &left, const Letters &right, int limit) {
    using Row = std::array<int, static_cast<size_t>(maxSimilarLength + maxDistance + 1)>;
    std::array<Row, 3> rows;
    for (size_t j = 0; j <= right.size(); ++j)
        rows[0][j] = static_cast<int>(j);
    for (size_t i = 1; i <= left.size(); ++i) {
        Row &row = rows[i % 3];
        const Row &above = rows[(i + 2) % 3];
        const Row &twoAbove = rows[(i + 1) % 3];
        row[0] = static_cast<int>(i);
        int least = row[0];
        for (size_t j = 1; j <= right.size(); ++j) {
            const int change = above[j - 1] + (left[i - 1] == right[j - 1] ? 0 : 1);
            row[j] = std::min({change, above[j] + 1, row[j - 1] + 1});
            if (i > 1 && j > 1 && left[i - 1] == right[j - 2] && left[i - 2] == right[j - 1])
                row[j] = std::min(row[j], twoAbove[j - 2] + 1);
            least = std::min(least, row[j]);
        }
        if (least > limit)
            return least;
    }
    return rows[left.size() % 3][right.size()];
}

} // namespace

bool SimilarWord::operator<(const SimilarWord &other) const {
    return std::tuple(distance, !startsAlike, lengthDifference) <
           std::tuple(other.distance, !other.startsAlike, other.lengthDifference);
}

struct Headwords::Entry {
    QByteArrayView word;
    qsizetype length = 0;
};

/// No value if the entry is truncated or its word is too long.
std::optional<Headwords::Entry> Headwords::entryAt(qsizetype place) const {
    const QByteArrayView rest = m_index.sliced(place);
    const auto range = static_cast<size_t>(std::min(rest.size(), maxWordSize + 1));
    const void *const end = range > 0 ? std::memchr(rest.data(), 0, range) : nullptr;
    if (end == nullptr)
        return std::nullopt;
    const qsizetype size = static_cast<const char *>(end) - rest.data();
    const qsizetype length = size + 1 + m_bytesBehindWord;
    return length <= rest.size() ? std::optional(Entry{rest.first(size), length}) : std::nullopt;
}

Headwords::Headwords(QByteArrayView index, int bytesBehindWord)
    : m_index(index),
      m_bytesBehindWord(bytesBehindWord) {
    QByteArrayView last;
    size_t count = 0;
    qsizetype end = 0;
    for (; end < index.size(); ++count) {
        const auto entry = entryAt(end);
        if (!entry)
            break;
        m_isInOrder = m_isInOrder && (count == 0 || compare(last, entry->word) <= 0);
        last = entry->word;
        if (count % stride == 0)
            m_stridePlaces.push_back(static_cast<quint32>(end));
        end += entry->length;
    }
    m_index = index.first(end);
    if (m_isInOrder)
        return;
    m_sortedPlaces.reserve(count);
    for (qsizetype at = 0; at < end;) {
        m_sortedPlaces.push_back(static_cast<quint32>(at));
        at += wordAt(m_sortedPlaces.back()).size() + 1 + m_bytesBehindWord;
    }
    std::sort(m_sortedPlaces.begin(), m_sortedPlaces.end(), [this](quint32 left, quint32 right) {
        const int order = compare(wordAt(left), wordAt(right));
        return order < 0 || (order == 0 && left < right);
    });
}

QByteArrayView Headwords::wordAt(quint32 place) const {
    const auto entry = entryAt(place);
    return entry ? entry->word : QByteArrayView();
}

/// Index of the last stored position before all words with this prefix.
size_t Headwords::placeBefore(QByteArrayView prefix) const {
    const std::vector<quint32> &places = m_isInOrder ? m_stridePlaces : m_sortedPlaces;
    const auto first = std::partition_point(
        places.begin(), places.end(), [&](quint32 place) { return compare(wordAt(place), prefix) < 0; });
    const auto position = static_cast<size_t>(first - places.begin());
    return m_isInOrder && position > 0 ? position - 1 : position;
}

/// The entry to which the byte at a position belongs.
std::optional<Headwords::Entry> Headwords::entryAround(qsizetype position) const {
    const auto next = std::upper_bound(m_stridePlaces.begin(), m_stridePlaces.end(), position,
                                       [](qsizetype wanted, quint32 place) { return wanted < place; });
    if (next == m_stridePlaces.begin())
        return std::nullopt;
    for (qsizetype at = *std::prev(next);;) {
        const auto entry = entryAt(at);
        if (!entry || position < at + entry->length)
            return entry;
        at += entry->length;
    }
}

namespace {

std::vector<QString> shortest(std::vector<QByteArrayView> words, size_t limit) {
    std::stable_sort(words.begin(), words.end(),
                     [](QByteArrayView left, QByteArrayView right) { return left.size() < right.size(); });
    words.resize(std::min(words.size(), limit));
    std::vector<QString> texts;
    texts.reserve(words.size());
    for (const QByteArrayView word : words)
        texts.push_back(QString::fromUtf8(word));
    return texts;
}

} // namespace

std::vector<QString> Headwords::startingWith(QByteArrayView prefix, size_t limit) const {
    std::vector<QByteArrayView> range;
    // Returns false when no further word is needed.
    const auto visit = [&](QByteArrayView word) {
        if (startsWith(word, prefix)) {
            if (range.empty() || compare(range.back(), word) != 0)
                range.push_back(word);
            return range.size() < maxRange;
        }
        return compare(word, prefix) < 0;
    };
    const size_t start = placeBefore(prefix);
    if (!m_isInOrder) {
        for (size_t i = start; i < m_sortedPlaces.size() && visit(wordAt(m_sortedPlaces[i])); ++i) {
        }
    } else if (start < m_stridePlaces.size()) {
        for (qsizetype at = m_stridePlaces[start]; at < m_index.size();) {
            const auto entry = entryAt(at);
            if (!entry || !visit(entry->word))
                break;
            at += entry->length;
        }
    }
    return shortest(std::move(range), limit);
}

std::vector<QString> Headwords::containing(QByteArrayView part, size_t limit) const {
    std::vector<QByteArrayView> found;
    const QByteArrayMatcher matcher(part);
    for (qsizetype at = matcher.indexIn(m_index, 0); at >= 0 && found.size() < maxRange;) {
        const auto entry = entryAround(at);
        if (!entry)
            break;
        // The bytes behind a word may look like text.
        const qsizetype offset = at - (entry->word.data() - m_index.data());
        const bool isInWord = offset + part.size() <= entry->word.size();
        if (isInWord && (found.empty() || found.back() != entry->word))
            found.push_back(entry->word);
        at = matcher.indexIn(m_index, isInWord ? at - offset + entry->length : at + 1);
    }
    return shortest(std::move(found), limit);
}

std::vector<SimilarWord> Headwords::similarTo(const QString &word,
                                              std::chrono::steady_clock::time_point deadline,
                                              const std::stop_token &stop) const {
    std::vector<SimilarWord> found;
    const QString typed = word.toCaseFolded();
    if (typed.size() < 2 || typed.size() > maxSimilarLength)
        return found;
    const int limit = typed.size() < 4 ? 1 : maxDistance;
    const Letters letters{QStringView(typed)};
    const quint64 set = letterSet(letters);
    const bool isLatin = isAscii(typed.toUtf8());

    const auto consider = [&](const Letters &candidate, QByteArrayView headword) {
        if (std::popcount(letterSet(candidate) ^ set) > 2 * limit)
            return;
        const int distance = editDistance(letters, candidate, limit);
        if (distance > 0 && distance <= limit)
            found.push_back(
                {QString::fromUtf8(headword), distance, candidate[0] == letters[0],
                 std::abs(static_cast<int>(candidate.size()) - static_cast<int>(letters.size()))});
    };
    const auto hasAlikeSize = [&](qsizetype size) {
        return std::abs(size - typed.size()) <= limit && size > 0;
    };

    size_t count = 0;
    for (qsizetype at = 0; at < m_index.size() && found.size() < maxSimilarWords; ++count) {
        constexpr size_t checkEvery = 1024;
        if (count % checkEvery == 0 && (stop.stop_requested() || std::chrono::steady_clock::now() > deadline))
            break;
        const auto entry = entryAt(at);
        if (!entry)
            break;
        at += entry->length;
        if (isLatin) {
            if (hasAlikeSize(entry->word.size()) && isAscii(entry->word))
                consider(Letters(entry->word), entry->word);
        } else if (entry->word.size() <= 4 * maxSimilarLength && !isAscii(entry->word)) {
            const QString other = QString::fromUtf8(entry->word).toCaseFolded();
            if (hasAlikeSize(other.size()))
                consider(Letters(QStringView(other)), entry->word);
        }
    }
    return found;
}

} // namespace lexiquill
