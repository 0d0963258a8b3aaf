#pragma once

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>

namespace lexiquill {

/// A file in its state when it was opened. It is kept open, so that it can be distinguished from any later
/// file of that name.
class FileSnapshot {
public:
    virtual ~FileSnapshot() = default;

    enum class Problem {
        None,
        Lasting, ///< there is no such regular file, or this user may not read it
        Passing, ///< the system is short of memory or descriptors, or reports an error
    };

    /// Null when the file cannot be opened; `problem` then receives the reason.
    static std::unique_ptr<FileSnapshot> open(const QString &path, Problem *problem = nullptr);

    /// The content, with capacity for `spare` more bytes; no value on a read error.
    virtual std::optional<QByteArray> readAll(qsizetype spare) const = 0;

    /// The size when it was opened, in bytes.
    virtual qint64 size() const = 0;

    /// Reads `size` bytes at `offset`; false when not all of them are there.
    virtual bool read(qint64 offset, char *bytes, qsizetype size) const = 0;

    /// Identifies this file in its state when it was opened. Other files and later states have other
    /// fingerprints.
    virtual QByteArray fingerprint() const = 0;

    /// Whether the file has not been written to since it was opened.
    virtual bool isUnmodified() const = 0;

    /// Whether `path` still names this file, unmodified.
    virtual bool isStillAt(const QString &path) const = 0;
};

} // namespace lexiquill
