#include "platform/file_lock.h"
#include "platform/linux/file_descriptor.h"

#include <QFile>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <thread>

namespace lexiquill {

namespace {

constexpr qsizetype noteSize = 128;

class LinuxFileLock final : public FileLock {
public:
    explicit LinuxFileLock(int descriptor) : m_descriptor(descriptor) {}

    /// False when another process holds the lock until the time is up.
    bool lockWithin(std::chrono::milliseconds patience) {
        using namespace std::chrono_literals;
        const auto deadline = std::chrono::steady_clock::now() + patience;
        auto pause = 500us;
        while (::flock(m_descriptor.get(), LOCK_EX | LOCK_NB) != 0) {
            // Not every file system has locks.
            if (errno != EWOULDBLOCK && errno != EINTR)
                return true;
            if (std::chrono::steady_clock::now() >= deadline)
                return false;
            std::this_thread::sleep_for(pause);
            pause = std::min(pause * 2, 4000us);
        }
        return true;
    }

    void leaveNote(const QByteArray &note) override {
        // Overwrite the old note in one write, because truncating the file first would wait for the disk.
        // Ignore a failure: nobody uses an incomplete note.
        const QByteArray padded = note.leftJustified(noteSize, ' ', true);
        [[maybe_unused]] const ssize_t written =
            ::pwrite(m_descriptor.get(), padded.constData(), static_cast<std::size_t>(padded.size()), 0);
    }

private:
    FileDescriptor m_descriptor;
};

} // namespace

std::unique_ptr<FileLock> FileLock::acquire(const QString &path, std::chrono::milliseconds patience) {
    const QByteArray name = QFile::encodeName(path);
    int descriptor = ::open(name.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0600);
    if (descriptor < 0)
        descriptor = ::open(name.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    auto lock = std::make_unique<LinuxFileLock>(descriptor);
    if (!lock->lockWithin(patience))
        return nullptr;
    return lock;
}

QByteArray FileLock::noteAt(const QString &path) {
    const FileDescriptor file(::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    QByteArray note(noteSize, '\0');
    const ssize_t size = file.isOpen() ? ::pread(file.get(), note.data(), noteSize, 0) : 0;
    note.truncate(std::max<ssize_t>(size, 0));
    while (note.endsWith(' '))
        note.chop(1);
    return note;
}

} // namespace lexiquill
