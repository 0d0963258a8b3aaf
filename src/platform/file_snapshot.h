#pragma once

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>

namespace lexiquill {

/// A file as it stood when it was opened, held open so that it can be told from any later one of that name.
class FileSnapshot {
public:
    virtual ~FileSnapshot() = default;

    enum class Problem {
        None,
        Lasting, ///< there is no such regular file, or it is not for this user
        Passing, ///< the system is short of memory or descriptors, or reports a fault
    };

    /// Null when the file cannot be opened; `problem` then tells why.
    static std::unique_ptr<FileSnapshot> open(const QString &path, Problem *problem = nullptr);

    /// The content, with room for `spare` more bytes behind it; nothing on a read error.
    virtual std::optional<QByteArray> readAll(qsizetype spare) const = 0;

    /// Reads `size` bytes at `offset`; false when not all of them are there.
    virtual bool read(qint64 offset, char *bytes, qsizetype size) const = 0;

    /// Tells the file, as it was when it was opened, from any other and any later state of it.
    virtual QByteArray fingerprint() const = 0;

    /// Whether the file has not been written to since it was opened.
    virtual bool isUnmodified() const = 0;

    /// Whether `path` still names this very file, unmodified.
    virtual bool isStillAt(const QString &path) const = 0;
};

} // namespace lexiquill
