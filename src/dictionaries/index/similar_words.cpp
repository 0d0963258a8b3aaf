#include "dictionaries/index/similar_words.h"

#include "dictionaries/index/folding.h"

#include <algorithm>
#include <bit>
#include <tuple>

namespace lexiquill {

namespace {

bool isAscii(QByteArrayView text) {
    return std::none_of(text.begin(), text.end(), [](char c) { return static_cast<signed char>(c) < 0; });
}

} // namespace

bool SimilarWord::operator<(const SimilarWord &other) const {
    return std::tuple(distance, frequencyRank, !startsAlike, lengthDifference) <
           std::tuple(other.distance, other.frequencyRank, !other.startsAlike, other.lengthDifference);
}

/// A bit set of the letters. Two words that are one edit apart differ in at most two bits.
quint64 SimilarityTest::Letters::set() const {
    quint64 bits = 0;
    for (qsizetype i = 0; i < size; ++i)
        bits |= quint64{1} << (letters[static_cast<size_t>(i)] % 64);
    return bits;
}

SimilarityTest::SimilarityTest(const QString &typed) {
    const QByteArray key = foldedKey(typed.toUtf8());
    const QString folded = QString::fromUtf8(key);
    constexpr qsizetype shortest = 2;
    constexpr qsizetype shortestForTwoEdits = 4;
    if (folded.size() < shortest || folded.size() > maxLength)
        return;
    m_limit = folded.size() < shortestForTwoEdits ? 1 : maxDistance;
    m_isAscii = isAscii(key);
    m_letters.size = folded.size();
    std::transform(folded.begin(), folded.end(), m_letters.letters.begin(),
                   [](QChar c) { return c.unicode(); });
    m_set = m_letters.set();
}

/// The number of edits between two words. Stops early if there are more than `limit`; the result is then any
/// larger number.
int SimilarityTest::editDistance(const Letters &left, const Letters &right, int limit) {
    using Row = std::array<int, static_cast<size_t>(maxLength + maxDistance + 1)>;
    std::array<Row, 3> rows;
    const auto leftSize = static_cast<size_t>(left.size);
    const auto rightSize = static_cast<size_t>(right.size);
    for (size_t j = 0; j <= rightSize; ++j)
        rows[0][j] = static_cast<int>(j);
    for (size_t i = 1; i <= leftSize; ++i) {
        Row &row = rows[i % 3];
        const Row &above = rows[(i + 2) % 3];
        const Row &twoAbove = rows[(i + 1) % 3];
        row[0] = static_cast<int>(i);
        int least = row[0];
        for (size_t j = 1; j <= rightSize; ++j) {
            const bool isSame = left.letters[i - 1] == right.letters[j - 1];
            row[j] = std::min({above[j - 1] + (isSame ? 0 : 1), above[j] + 1, row[j - 1] + 1});
            if (i > 1 && j > 1 && left.letters[i - 1] == right.letters[j - 2] &&
                left.letters[i - 2] == right.letters[j - 1])
                row[j] = std::min(row[j], twoAbove[j - 2] + 1);
            least = std::min(least, row[j]);
        }
        if (least > limit)
            return least;
    }
    return rows[leftSize % 3][rightSize];
}

bool SimilarityTest::hasAlikeSize(qsizetype size) const {
    return size > 0 && size + m_limit >= m_letters.size && size <= m_letters.size + m_limit;
}

std::optional<SimilarWord> SimilarityTest::compare(QByteArrayView key) const {
    Letters candidate;
    if (m_isAscii) {
        if (!hasAlikeSize(key.size()) || !isAscii(key))
            return std::nullopt;
        candidate.size = key.size();
        std::transform(key.begin(), key.end(), candidate.letters.begin(),
                       [](char c) { return static_cast<char16_t>(c); });
        return compare(candidate);
    }
    constexpr qsizetype mostBytes = 4 * maxLength;
    if (key.size() > mostBytes || isAscii(key))
        return std::nullopt;
    const QString text = QString::fromUtf8(key);
    if (!hasAlikeSize(text.size()))
        return std::nullopt;
    candidate.size = text.size();
    std::transform(text.begin(), text.end(), candidate.letters.begin(), [](QChar c) { return c.unicode(); });
    return compare(candidate);
}

std::optional<SimilarWord> SimilarityTest::compare(const Letters &candidate) const {
    if (std::popcount(candidate.set() ^ m_set) > 2 * m_limit)
        return std::nullopt;
    const int distance = editDistance(m_letters, candidate, m_limit);
    if (distance == 0 || distance > m_limit)
        return std::nullopt;
    return SimilarWord{.word = {},
                       .distance = distance,
                       .startsAlike = candidate.letters[0] == m_letters.letters[0],
                       .lengthDifference = static_cast<int>(std::abs(candidate.size - m_letters.size))};
}

} // namespace lexiquill
