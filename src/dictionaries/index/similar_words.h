#pragma once

#include <QByteArrayView>
#include <QString>

#include <array>
#include <optional>

namespace lexiquill {

/// A headword that is similar to the typed word.
struct SimilarWord {
    QString word;
    int distance = 0;      ///< number of insertions, deletions, replacements and swaps of adjacent letters
    int frequencyRank = 0; ///< see WordFrequency
    bool startsAlike = false;
    int lengthDifference = 0;

    /// True if this word is more likely to be the intended one.
    bool operator<(const SimilarWord &other) const;
};

/// Compares words with one typed word.
class SimilarityTest {
public:
    explicit SimilarityTest(const QString &typed);

    /// False when the typed word is too short or too long to be compared.
    bool isPossible() const { return m_limit > 0; }

    /// The similarity of a word, if it is close enough but not the same. `key`: its folded form in UTF-8. The
    /// result has neither the word nor its rank.
    std::optional<SimilarWord> compare(QByteArrayView key) const;

private:
    static constexpr qsizetype maxLength = 48;
    static constexpr int maxDistance = 2;

    /// The letters of a word.
    struct Letters {
        std::array<char16_t, static_cast<size_t>(maxLength + maxDistance)> letters;
        qsizetype size = 0;

        quint64 set() const;
    };

    static int editDistance(const Letters &left, const Letters &right, int limit);
    bool hasAlikeSize(qsizetype size) const;
    std::optional<SimilarWord> compare(const Letters &candidate) const;

    Letters m_letters;
    quint64 m_set = 0;
    int m_limit = 0;
    bool m_isAscii = false;
};

} // namespace lexiquill
