#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <optional>
#include <vector>

namespace lexiquill {

/// Random access to a dictzip file: a gzip file whose header lists chunks that can be unpacked separately.
class DictZip {
public:
    /// `packed` must outlive the object. No value when the header or the table is missing or damaged.
    static std::optional<DictZip> open(QByteArrayView packed);

    /// `size` bytes of unpacked data, starting at `offset`; no value when they do not exist or cannot be
    /// unpacked.
    std::optional<QByteArray> read(quint64 offset, quint32 size) const;

private:
    QByteArrayView m_packed;
    qint64 m_chunkSize = 0;
    /// The start of each chunk in m_packed, and the end of the last one.
    std::vector<qint64> m_chunkStarts;
};

} // namespace lexiquill
