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

    /// Waits at most `timeout`; null when the lock is not to be had or the lock file cannot be opened.
    static std::unique_ptr<FileLock> acquire(const QString &path, std::chrono::milliseconds timeout);
};

} // namespace lexiquill
