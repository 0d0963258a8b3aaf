#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <optional>
#include <vector>

namespace lexiquill {

/// Random access to a dictzip file: a gzip file whose header lists chunks that can be unpacked alone.
class DictZip {
public:
    /// `packed` must outlive the object. Nothing when the header or the table is missing or damaged.
    static std::optional<DictZip> open(QByteArrayView packed);

    /// `size` bytes of unpacked data from `offset` on; nothing when they are not there or do not unpack.
    std::optional<QByteArray> read(quint64 offset, quint32 size) const;

private:
    QByteArrayView m_packed;
    qint64 m_chunkSize = 0;
    /// Where each chunk begins in m_packed, and the end of the last.
    std::vector<qint64> m_chunkStarts;
};

} // namespace lexiquill
