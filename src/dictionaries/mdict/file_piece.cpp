#include "dictionaries/mdict/file_piece.h"

#include <zlib.h>

#include <limits>

namespace lexiquill::mdict {

bool hasBytes(const FileSnapshot &file, quint64 size) {
    char last = 0;
    return size <= quint64(std::numeric_limits<qint64>::max()) &&
           (size == 0 || file.read(static_cast<qint64>(size) - 1, &last, 1));
}

std::optional<QByteArray> readPiece(const FileSnapshot &file, quint64 offset, quint64 size, quint64 limit) {
    if (size > limit || offset > quint64(std::numeric_limits<qint64>::max()) - size ||
        !hasBytes(file, offset + size))
        return std::nullopt;
    QByteArray bytes(static_cast<qsizetype>(size), Qt::Uninitialized);
    if (!file.read(static_cast<qint64>(offset), bytes.data(), bytes.size()))
        return std::nullopt;
    return bytes;
}

quint32 checksumOf(QByteArrayView bytes) {
    return static_cast<quint32>(adler32_z(adler32_z(0, nullptr, 0),
                                          reinterpret_cast<const Bytef *>(bytes.data()),
                                          static_cast<z_size_t>(bytes.size())));
}

} // namespace lexiquill::mdict
