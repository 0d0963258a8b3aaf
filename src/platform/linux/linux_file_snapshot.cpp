#include "platform/file_snapshot.h"
#include "platform/linux/file_descriptor.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <ctime>

namespace lexiquill {

namespace {

bool areEqual(const timespec &a, const timespec &b) {
    return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

class LinuxFileSnapshot final : public FileSnapshot {
public:
    explicit LinuxFileSnapshot(int descriptor) : m_descriptor(descriptor) {}

    /// False when there is no regular file behind the descriptor.
    bool take() {
        return m_descriptor.isOpen() && ::fstat(m_descriptor.get(), &m_state) == 0 &&
               S_ISREG(m_state.st_mode);
    }

    std::optional<QByteArray> readAll(qsizetype spare) const override {
        QByteArray bytes;
        bytes.reserve(static_cast<qsizetype>(m_state.st_size) + spare);
        bytes.resize(static_cast<qsizetype>(m_state.st_size));
        const auto count = readUpTo(0, bytes.data(), bytes.size());
        if (!count)
            return std::nullopt;
        bytes.truncate(*count);
        return bytes;
    }

    qint64 size() const override { return m_state.st_size; }

    bool read(qint64 offset, char *bytes, qsizetype size) const override {
        return readUpTo(offset, bytes, size) == size;
    }

    QByteArray fingerprint() const override {
        QByteArrayList numbers;
        for (const auto number : {qint64(m_state.st_ino), qint64(m_state.st_size),
                                  qint64(m_state.st_mtim.tv_sec), qint64(m_state.st_mtim.tv_nsec)})
            numbers += QByteArray::number(number);
        return numbers.join(' ');
    }

    bool isUnmodified() const override {
        struct stat current {};
        return ::fstat(m_descriptor.get(), &current) == 0 && isThisFile(current);
    }

    bool isStillAt(const QString &path) const override {
        struct stat current {};
        return ::stat(QFile::encodeName(path).constData(), &current) == 0 && isThisFile(current);
    }

private:
    /// The number of bytes read, less than `size` only at the end of the file; no value on a read error.
    std::optional<qsizetype> readUpTo(qint64 offset, char *bytes, qsizetype size) const {
        qsizetype position = 0;
        while (position < size) {
            const ssize_t count = ::pread(m_descriptor.get(), bytes + position,
                                          static_cast<std::size_t>(size - position), offset + position);
            if (count < 0 && errno == EINTR)
                continue;
            if (count < 0)
                return std::nullopt;
            if (count == 0)
                break;
            position += count;
        }
        return position;
    }

    bool isThisFile(const struct stat &current) const {
        return current.st_dev == m_state.st_dev && current.st_ino == m_state.st_ino &&
               current.st_size == m_state.st_size && areEqual(current.st_mtim, m_state.st_mtim);
    }

    FileDescriptor m_descriptor;
    struct stat m_state {};
};

} // namespace

std::unique_ptr<FileSnapshot> FileSnapshot::open(const QString &path, Problem *problem) {
    // O_NONBLOCK: a pipe of that name must not block the program.
    const int flags = O_RDONLY | O_CLOEXEC | O_NONBLOCK;
    const int descriptor = ::open(QFile::encodeName(path).constData(), flags);
    const int reason = descriptor < 0 ? errno : 0;
    auto snapshot = std::make_unique<LinuxFileSnapshot>(descriptor);
    if (snapshot->take())
        return snapshot;
    if (problem != nullptr) {
        const bool isPassing =
            reason == EMFILE || reason == ENFILE || reason == ENOMEM || reason == EIO || reason == EINTR;
        *problem = isPassing ? Problem::Passing : Problem::Lasting;
    }
    return nullptr;
}

} // namespace lexiquill
