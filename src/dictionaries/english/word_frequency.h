#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QHash>
#include <QString>

namespace lexiquill {

/// How common words are, from a file with a line for each word: the folded word, a tab, and its rank from 1
/// (the commonest words) to 5.
class WordFrequency {
public:
    static constexpr int unknownRank = 6;

    /// Knows no word.
    WordFrequency() = default;
    /// Knows the words of the file; a missing or damaged file counts as empty.
    explicit WordFrequency(const QString &path);

    /// The rank of a word in its folded form; unknownRank for a word that is not in the file.
    int rank(QByteArrayView key) const;

private:
    QByteArray m_text;
    QHash<QByteArrayView, qint8> m_ranks;
};

} // namespace lexiquill
