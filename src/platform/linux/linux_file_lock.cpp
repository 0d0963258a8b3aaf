#include "platform/file_lock.h"
#include "platform/linux/file_descriptor.h"

#include <QFile>

#include <fcntl.h>
#include <sys/file.h>

#include <algorithm>
#include <cerrno>
#include <thread>

namespace lexiquill {

namespace {

class LinuxFileLock final : public FileLock {
public:
    explicit LinuxFileLock(int descriptor) : m_descriptor(descriptor) {}

    bool isOpen() const { return m_descriptor.isOpen(); }

    bool lockWithin(std::chrono::milliseconds timeout) {
        using namespace std::chrono_literals;
        const auto deadline = std::chrono::steady_clock::now() + timeout;
        auto pause = 500us;
        while (::flock(m_descriptor.get(), LOCK_EX | LOCK_NB) != 0) {
            if ((errno != EWOULDBLOCK && errno != EINTR) || std::chrono::steady_clock::now() >= deadline)
                return false;
            std::this_thread::sleep_for(pause);
            pause = std::min(pause * 2, 4000us);
        }
        return true;
    }

private:
    FileDescriptor m_descriptor;
};

} // namespace

std::unique_ptr<FileLock> FileLock::acquire(const QString &path, std::chrono::milliseconds timeout) {
    const QByteArray name = QFile::encodeName(path);
    auto lock = std::make_unique<LinuxFileLock>(
        ::open(name.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
    if (!lock->isOpen() || !lock->lockWithin(timeout))
        return nullptr;
    return lock;
}

} // namespace lexiquill
