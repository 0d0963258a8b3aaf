#pragma once

#include <QByteArrayView>
#include <QFile>
#include <QString>

namespace lexiquill {

/// Identifies the content of a file without reading it.
struct FileStamp {
    /// Bytes; -1 when there is no readable regular file.
    qint64 size = -1;
    /// Time of the last change, nanoseconds since 1970.
    qint64 changed = 0;

    bool exists() const { return size >= 0; }
    bool operator==(const FileStamp &) const = default;
};

FileStamp stampOf(const QString &path);

/// A regular file mapped into memory for reading. Holds no file descriptor while mapped.
class MappedFile {
public:
    /// False when the file cannot be read or is larger than `maxSize` bytes.
    bool open(const QString &path, qint64 maxSize);

    /// Ends the mapping; views of the data are no longer valid.
    void close();

    /// The content; empty before open() and for an empty file.
    QByteArrayView data() const { return m_data; }

private:
    QFile m_file;
    QByteArrayView m_data;
};

} // namespace lexiquill
