#pragma once

#include <QByteArrayView>
#include <QString>

#include <chrono>
#include <cstddef>
#include <optional>
#include <stop_token>
#include <vector>

namespace lexiquill {

/// A headword that differs from what was typed in few places.
struct SimilarWord {
    QString word;
    int distance = 0; ///< insertions, deletions, replacements and swaps of neighbours
    bool startsAlike = false;
    int lengthDifference = 0;

    /// Whether the word is more likely to have been meant.
    bool operator<(const SimilarWord &other) const;
};

/// The words of an index in alphabetical order, without regard to the case of Latin letters. An index is a
/// row of words in UTF-8, each with a zero byte and a fixed number of further bytes behind it. Reads them
/// where they are and keeps only every so many places, unless the index is not in order.
class Headwords {
public:
    /// `index`: all of it; must outlive the instance. `bytesBehindWord`: not counting the zero byte.
    Headwords(QByteArrayView index, int bytesBehindWord);

    /// The shortest of the words that start with `prefix` in UTF-8, the shorter first.
    std::vector<QString> startingWith(QByteArrayView prefix, size_t limit) const;

    /// All words at most two edits away, or one for short ones, as far as they are found before `deadline`.
    std::vector<SimilarWord> similarTo(const QString &word, std::chrono::steady_clock::time_point deadline,
                                       const std::stop_token &stop) const;

private:
    struct Entry;
    std::optional<Entry> entryAt(qsizetype place) const;
    QByteArrayView wordAt(quint32 place) const;
    size_t placeBefore(QByteArrayView prefix) const;

    QByteArrayView m_index;
    int m_bytesBehindWord;
    bool m_isInOrder = true;
    /// Of every entry in alphabetical order, or of every so many of an index that has this order itself.
    std::vector<quint32> m_places;
};

} // namespace lexiquill
