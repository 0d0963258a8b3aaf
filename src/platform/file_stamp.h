#pragma once

#include <QString>

namespace lexiquill {

/// Identifies the content of a file or the entries of a directory without reading them.
struct FileStamp {
    /// Bytes; -1 when there is nothing of the wanted kind.
    qint64 size = -1;
    /// Time of the last change, nanoseconds since 1970.
    qint64 changed = 0;
    /// Another file under the same name has another number.
    quint64 number = 0;

    bool exists() const { return size >= 0; }
    bool operator==(const FileStamp &) const = default;
};

/// The stamp of a regular file.
FileStamp stampOf(const QString &path);

/// The stamp of a directory; it changes when entries are added, removed or renamed.
FileStamp stampOfDirectory(const QString &path);

} // namespace lexiquill
