#pragma once

#include <QByteArray>
#include <QString>

#include <chrono>
#include <memory>

namespace lexiquill {

/// An exclusive advisory lock on a lock file, held until destruction. The kernel releases it when the process
/// ends in any way.
class FileLock {
public:
    virtual ~FileLock() = default;

    /// Waits at most `patience`. Null when another process still holds the lock then. If the lock file cannot
    /// be used at all, no process can lock it, and the result is an object that locks nothing.
    static std::unique_ptr<FileLock> acquire(const QString &path, std::chrono::milliseconds patience);

    /// Stores at most 128 bytes in the lock file for later readers. They may get lost at any time; blanks at
    /// their end always do.
    virtual void leaveNote(const QByteArray &note) = 0;
    /// The note in a lock file; it may have any content.
    static QByteArray noteAt(const QString &path);
};

} // namespace lexiquill
