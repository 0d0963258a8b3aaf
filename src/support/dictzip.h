#pragma once

#include <QByteArray>

#include <functional>
#include <optional>
#include <vector>

namespace lexiquill {

/// Random access to a dictzip file: a gzip file whose header lists chunks that can be unpacked separately.
class DictZip {
public:
    /// A file that is read by position.
    struct Source {
        qint64 size = 0;
        /// Reads `size` bytes at `offset`; false when not all of them are there.
        std::function<bool(qint64 offset, char *to, qsizetype size)> read;
    };

    /// No value when the header or the table is missing or damaged.
    static std::optional<DictZip> open(Source source);

    /// `size` bytes of unpacked data, starting at `offset`; no value when they do not exist or cannot be
    /// unpacked.
    std::optional<QByteArray> read(quint64 offset, quint32 size) const;

private:
    Source m_source;
    qint64 m_chunkSize = 0;
    /// The start of each chunk in the file, and the end of the last one.
    std::vector<qint64> m_chunkStarts;
};

} // namespace lexiquill
