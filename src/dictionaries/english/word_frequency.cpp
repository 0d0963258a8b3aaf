#include "dictionaries/english/word_frequency.h"

#include "platform/file_snapshot.h"

namespace lexiquill {

WordFrequency::WordFrequency(const QString &path) {
    const auto file = FileSnapshot::open(path);
    m_text = file ? file->readAll(0).value_or(QByteArray()) : QByteArray();
    constexpr qsizetype averageLine = 10;
    m_ranks.reserve(m_text.size() / averageLine);
    const QByteArrayView text = m_text;
    for (qsizetype start = 0; start < text.size();) {
        qsizetype end = text.indexOf('\n', start);
        end = end < 0 ? text.size() : end;
        const QByteArrayView line = text.sliced(start, end - start);
        const qsizetype tab = line.indexOf('\t');
        const int rank = tab >= 0 && line.size() == tab + 2 ? line[tab + 1] - '0' : 0;
        if (rank >= 1 && rank < unknownRank)
            m_ranks.insert(line.first(tab), static_cast<qint8>(rank));
        start = end + 1;
    }
}

int WordFrequency::rank(QByteArrayView key) const {
    return m_ranks.value(key, unknownRank);
}

} // namespace lexiquill
