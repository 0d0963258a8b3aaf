#include "platform/durable_file.h"
#include "platform/linux/file_descriptor.h"
#include "platform/linux/file_problem.h"

#include <QFile>
#include <QFileInfo>
#include <QUuid>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdio>

namespace lexiquill {

DurableFile::Problem problemOf(int error) {
    using Problem = DurableFile::Problem;
    switch (error) {
    case 0:
        return Problem::None;
    case EACCES:
    case EPERM:
    case EROFS:
        return Problem::NoPermission;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return Problem::NoSpace;
    case ENOENT:
    case ENOTDIR:
        return Problem::NoDirectory;
    default:
        return Problem::Other;
    }
}

namespace {

using Problem = DurableFile::Problem;

constexpr mode_t privateMode = 0600;
constexpr mode_t ordinaryMode = 0666;
constexpr mode_t ownerBits = 0700;
constexpr mode_t allBits = 07777;

class LinuxDurableFile final : public DurableFile {
public:
    LinuxDurableFile(const QString &destination, const Options &options)
        : m_destination(QFile::encodeName(destination)),
          m_newFileMode(options.access == Access::Ordinary ? ordinaryMode : privateMode),
          m_isSynced(options.durability == Durability::Synced),
          m_descriptor(open(options.access == Access::OwnerOnly ? ownerBits : allBits)) {}

    ~LinuxDurableFile() override {
        if (!m_temporary.isEmpty())
            ::unlink(m_temporary.constData());
    }

    LinuxDurableFile(const LinuxDurableFile &) = delete;
    LinuxDurableFile &operator=(const LinuxDurableFile &) = delete;

    bool isOpen() const { return m_descriptor.isOpen(); }
    Problem problem() const override { return m_problem; }

    bool write(QByteArrayView bytes) override {
        while (m_problem == Problem::None && !bytes.isEmpty()) {
            const ssize_t written =
                ::write(m_descriptor.get(), bytes.data(), static_cast<std::size_t>(bytes.size()));
            if (written < 0 && errno == EINTR)
                continue;
            if (written <= 0) {
                m_problem = written < 0 ? problemOf(errno) : Problem::Other;
                break;
            }
            bytes = bytes.sliced(written);
            // The disk writes while the next bytes are produced. commit() reports a failure.
            if (m_isSynced)
                ::sync_file_range(m_descriptor.get(), m_position, written, SYNC_FILE_RANGE_WRITE);
            m_position += written;
        }
        return m_problem == Problem::None;
    }

    bool commit() override {
        if (m_problem == Problem::None && !moveIntoPlace())
            m_problem = problemOf(errno);
        return m_problem == Problem::None;
    }

private:
    int open(mode_t keptBits) {
        struct stat existing {};
        const bool isReplacement = ::lstat(m_destination.constData(), &existing) == 0;
        if (isReplacement && !S_ISREG(existing.st_mode)) {
            m_problem = Problem::Other;
            return -1;
        }
        const int descriptor = openUnnamed();
        const bool isReady =
            descriptor >= 0 && (!isReplacement || ::fchmod(descriptor, existing.st_mode & keptBits) == 0);
        if (!isReady)
            m_problem = problemOf(errno);
        return descriptor;
    }

    /// A file without a name leaves nothing behind if the process crashes. Not every file system supports
    /// this.
    int openUnnamed() {
        const int descriptor =
            ::open(directory().constData(), O_WRONLY | O_TMPFILE | O_CLOEXEC, m_newFileMode);
        if (descriptor >= 0 || errno == EACCES || errno == ENOENT || errno == ENOTDIR || errno == EROFS)
            return descriptor;
        m_temporary = temporaryName();
        const int named =
            ::open(m_temporary.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, m_newFileMode);
        if (named < 0)
            m_temporary.clear();
        return named;
    }

    bool moveIntoPlace() {
        if (m_isSynced && ::fsync(m_descriptor.get()) != 0)
            return false;
        if (m_temporary.isEmpty() && !giveName())
            return false;
        if (!m_descriptor.close() || std::rename(m_temporary.constData(), m_destination.constData()) != 0)
            return false;
        m_temporary.clear();
        // The content is safe under the temporary or the final name, so failing to sync the directory is not
        // an error.
        if (m_isSynced) {
            const FileDescriptor descriptor(
                ::open(directory().constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
            if (descriptor.isOpen())
                ::fsync(descriptor.get());
        }
        return true;
    }

    /// Gives the file a temporary name, because only a file with a name can replace another one.
    bool giveName() {
        const QByteArray name = temporaryName();
        const QByteArray open = "/proc/self/fd/" + QByteArray::number(m_descriptor.get());
        if (::linkat(AT_FDCWD, open.constData(), AT_FDCWD, name.constData(), AT_SYMLINK_FOLLOW) != 0)
            return false;
        m_temporary = name;
        return true;
    }

    QByteArray directory() const {
        const qsizetype slash = m_destination.lastIndexOf('/');
        return slash < 0 ? QByteArray(".") : m_destination.first(slash + 1);
    }

    QByteArray temporaryName() const {
        return m_destination + '.' + QUuid::createUuid().toByteArray(QUuid::Id128).first(12) + ".tmp";
    }

    QByteArray m_destination;
    QByteArray m_temporary; ///< the temporary name; empty while the file has none
    mode_t m_newFileMode;
    off64_t m_position = 0;
    bool m_isSynced;
    Problem m_problem = Problem::None;
    FileDescriptor m_descriptor;
};

} // namespace

std::unique_ptr<DurableFile> DurableFile::create(const QString &destination, const Options &options) {
    auto file = std::make_unique<LinuxDurableFile>(destination, options);
    if (options.problem != nullptr)
        *options.problem = file->problem();
    if (!file->isOpen())
        return nullptr;
    return file;
}

DurableFile::Problem replaceFile(const QString &destination, QByteArrayView content,
                                 DurableFile::Options options) {
    Problem problem = Problem::None;
    options.problem = &problem;
    const auto file = DurableFile::create(destination, options);
    if (!file)
        return problem;
    if (file->write(content))
        file->commit();
    return file->problem();
}

QString resolvedFile(const QString &path) {
    // Follow each link here, so that a relative path stays relative: the path of the working directory may
    // not be valid text.
    constexpr int mostLinks = 40;
    QByteArray file = QFile::encodeName(path);
    for (int i = 0; i < mostLinks; ++i) {
        char target[PATH_MAX];
        const ssize_t size = ::readlink(file.constData(), target, sizeof target);
        if (size <= 0)
            break;
        const QByteArray next(target, size);
        file = next.startsWith('/') ? next : file.first(file.lastIndexOf('/') + 1) + next;
    }
    return QFile::decodeName(file);
}

bool keepFileAs(const QString &from, const QString &to) {
    const QByteArray source = QFile::encodeName(from);
    const QByteArray target = QFile::encodeName(to);
    // AT_SYMLINK_FOLLOW: the file itself must be kept, not a symbolic link to it.
    if (::linkat(AT_FDCWD, source.constData(), AT_FDCWD, target.constData(), AT_SYMLINK_FOLLOW) == 0)
        return true;
    if (errno == EEXIST)
        return false;
    QFile original(from);
    const auto copy = original.open(QIODevice::ReadOnly) ? DurableFile::create(to) : nullptr;
    if (!copy)
        return false;
    constexpr qint64 chunkSize = qint64{1} << 20;
    while (!original.atEnd()) {
        const QByteArray chunk = original.read(chunkSize);
        if (chunk.isEmpty() || !copy->write(chunk))
            return false;
    }
    return copy->commit();
}

} // namespace lexiquill
