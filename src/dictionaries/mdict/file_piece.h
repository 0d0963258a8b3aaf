#pragma once

#include "platform/file_snapshot.h"

#include <QByteArray>
#include <QByteArrayView>

#include <optional>

namespace lexiquill::mdict {

/// `size` bytes of a file at `offset`; no value when not all of them are there, or when there are more than
/// `limit`. Takes no memory for bytes that the file does not have.
std::optional<QByteArray> readPiece(const FileSnapshot &file, quint64 offset, quint64 size, quint64 limit);

/// Whether the file has at least `size` bytes.
bool hasBytes(const FileSnapshot &file, quint64 size);

/// ADLER32.
quint32 checksumOf(QByteArrayView bytes);

} // namespace lexiquill::mdict
