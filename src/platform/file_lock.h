#pragma once

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
};

} // namespace lexiquill
