#include "platform/durable_file.h"
#include "platform/linux/file_descriptor.h"

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace lexiquill {

namespace {

constexpr mode_t newFileMode = 0600;
constexpr mode_t ownerBits = 0700;
constexpr mode_t allBits = 07777;

bool syncDirectoryOf(const QByteArray &path) {
    const QByteArray directory = path.first(path.lastIndexOf('/') + 1);
    const FileDescriptor descriptor(::open(directory.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return descriptor.isOpen() && ::fsync(descriptor.get()) == 0;
}

class LinuxDurableFile final : public DurableFile {
public:
    LinuxDurableFile(const QString &destination, Access access)
        : m_destination(QFile::encodeName(destination)),
          m_temporary(m_destination + ".tmp"),
          m_descriptor(openTemporary(access == Access::OwnerOnly ? ownerBits : allBits)) {}

    ~LinuxDurableFile() override {
        if (m_exists)
            ::unlink(m_temporary.constData());
    }

    LinuxDurableFile(const LinuxDurableFile &) = delete;
    LinuxDurableFile &operator=(const LinuxDurableFile &) = delete;

    bool isOpen() const { return m_descriptor.isOpen(); }

    bool write(QByteArrayView bytes) override {
        while (m_isWhole && !bytes.isEmpty()) {
            const ssize_t written =
                ::write(m_descriptor.get(), bytes.data(), static_cast<std::size_t>(bytes.size()));
            if (written < 0 && errno == EINTR)
                continue;
            m_isWhole = written > 0;
            if (!m_isWhole)
                break;
            bytes = bytes.sliced(written);
            // The disk works while the next bytes are made. A failure shows again in commit().
            ::sync_file_range(m_descriptor.get(), m_position, written, SYNC_FILE_RANGE_WRITE);
            m_position += written;
        }
        return m_isWhole;
    }

    bool commit() override {
        if (!m_isWhole || ::fsync(m_descriptor.get()) != 0 || !m_descriptor.close())
            return false;
        if (std::rename(m_temporary.constData(), m_destination.constData()) != 0)
            return false;
        m_exists = false;
        // The content is safe under either name; a directory that cannot be synced makes it no worse.
        syncDirectoryOf(m_destination);
        return true;
    }

private:
    int openTemporary(mode_t keptBits) {
        struct stat existing {};
        const bool isReplacement = ::lstat(m_destination.constData(), &existing) == 0;
        if (isReplacement && !S_ISREG(existing.st_mode))
            return -1;
        // What a killed writer left behind; never written through, whatever it is.
        ::unlink(m_temporary.constData());
        const int descriptor =
            ::open(m_temporary.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, newFileMode);
        m_exists = descriptor >= 0;
        if (m_exists && isReplacement)
            m_isWhole = ::fchmod(descriptor, existing.st_mode & keptBits) == 0;
        return descriptor;
    }

    QByteArray m_destination;
    QByteArray m_temporary;
    off64_t m_position = 0;
    bool m_exists = false;
    bool m_isWhole = true;
    FileDescriptor m_descriptor;
};

} // namespace

std::unique_ptr<DurableFile> DurableFile::create(const QString &destination, Access access) {
    auto file = std::make_unique<LinuxDurableFile>(QFileInfo(destination).absoluteFilePath(), access);
    if (!file->isOpen())
        return nullptr;
    return file;
}

QString resolvedFile(const QString &path) {
    const QFileInfo info(path);
    if (!info.isSymLink())
        return info.absoluteFilePath();
    const QString target = info.canonicalFilePath();
    return target.isEmpty() ? info.symLinkTarget() : target;
}

bool keepFileAs(const QString &from, const QString &to) {
    const QByteArray source = QFile::encodeName(from);
    const QByteArray target = QFile::encodeName(to);
    // AT_SYMLINK_FOLLOW: the file itself, not a link to it, is what must be kept.
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
