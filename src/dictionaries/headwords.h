#pragma once

#include <QByteArrayView>
#include <QString>

#include <chrono>
#include <cstddef>
#include <optional>
#include <stop_token>
#include <vector>

namespace lexiquill {

/// A headword that is similar to the typed word.
struct SimilarWord {
    QString word;
    int distance = 0; ///< number of insertions, deletions, replacements and swaps of adjacent letters
    bool startsAlike = false;
    int lengthDifference = 0;

    /// True if this word is more likely to be the intended one.
    bool operator<(const SimilarWord &other) const;
};

/// The words of an index in alphabetical order, ignoring the case of Latin letters. An index is a sequence of
/// words in UTF-8, each followed by a zero byte and a fixed number of further bytes. The words are read in
/// place. If the index is sorted, only every 32nd position is stored, else all positions, too.
class Headwords {
public:
    /// `index`: the whole index; must outlive the instance. `bytesBehindWord`: bytes after the zero byte.
    Headwords(QByteArrayView index, int bytesBehindWord);

    /// At most `limit` words that start with `prefix` (UTF-8), the shortest first.
    std::vector<QString> startingWith(QByteArrayView prefix, size_t limit) const;

    /// At most `limit` words that contain `part` (UTF-8, not empty), the shortest first.
    std::vector<QString> containing(QByteArrayView part, size_t limit) const;

    /// The words found before `deadline` that are at most two edits away; at most one edit if `word` has less
    /// than 4 characters.
    std::vector<SimilarWord> similarTo(const QString &word, std::chrono::steady_clock::time_point deadline,
                                       const std::stop_token &stop) const;

private:
    struct Entry;
    std::optional<Entry> entryAt(qsizetype place) const;
    QByteArrayView wordAt(quint32 place) const;
    size_t placeBefore(QByteArrayView prefix) const;
    std::optional<Entry> entryAround(qsizetype position) const;

    QByteArrayView m_index;
    int m_bytesBehindWord;
    bool m_isInOrder = true;
    /// Positions in `m_index` of every 32nd entry.
    std::vector<quint32> m_stridePlaces;
    /// The positions of all entries in alphabetical order, if the index is not sorted.
    std::vector<quint32> m_sortedPlaces;
};

} // namespace lexiquill
