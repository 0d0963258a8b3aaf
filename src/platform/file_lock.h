#pragma once

#include <QByteArray>
#include <QString>

#include <chrono>
#include <memory>

namespace lexiquill {

/// An exclusive advisory lock on a lock file, held until destruction. The kernel releases it when the
/// process ends in whatever way.
class FileLock {
public:
    virtual ~FileLock() = default;

    /// Waits at most `patience`; null when another process still holds the lock then. Where the lock file
    /// cannot be used at all there is nobody to exclude, and the result is a lock in name only.
    static std::unique_ptr<FileLock> acquire(const QString &path, std::chrono::milliseconds patience);

    /// Leaves at most 128 bytes in the lock file for whoever looks there later. They may get lost at any
    /// time, and blanks at their end do.
    virtual void leaveNote(const QByteArray &note) = 0;
    /// The note in a lock file; it may be of any content.
    static QByteArray noteAt(const QString &path);
};

} // namespace lexiquill
