#include "platform/linux/file_descriptor.h"
#include "platform/linux/file_problem.h"
#include "platform/scratch_directory.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUuid>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace lexiquill {

namespace {

using Problem = ScratchDirectory::Problem;

constexpr mode_t privateMode = 0700;
constexpr mode_t fileMode = 0644;
constexpr qint64 largeFile = qint64{256} * 1024;

int openDirectory(const QByteArray &path) {
    return ::open(path.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
}

/// Holds the lock of its directory, which the kernel releases when the process ends in any way.
class LinuxScratchDirectory final : public ScratchDirectory {
public:
    LinuxScratchDirectory(QString path, int descriptor) : m_path(std::move(path)), m_directory(descriptor) {}

    ~LinuxScratchDirectory() override {
        m_file.close();
        QDir(m_path).removeRecursively();
    }

    LinuxScratchDirectory(const LinuxScratchDirectory &) = delete;
    LinuxScratchDirectory &operator=(const LinuxScratchDirectory &) = delete;

    QString path() const override { return m_path; }

    Problem startFile(const QString &name, qint64 size) override {
        m_file.close();
        const QString file = pathOf(name);
        if (!QDir().mkpath(QFileInfo(file).path()))
            return problemOf(errno != 0 ? errno : EIO);
        m_file.reset(::open(QFile::encodeName(file).constData(),
                            O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, fileMode));
        if (!m_file.isOpen())
            return problemOf(errno);
        // Without support for this, writing still reports a full disk.
        if (size >= largeFile && ::fallocate(m_file.get(), 0, 0, size) != 0 &&
            problemOf(errno) == Problem::NoSpace)
            return Problem::NoSpace;
        return Problem::None;
    }

    Problem write(qint64 offset, QByteArrayView bytes) override {
        while (!bytes.isEmpty()) {
            const ssize_t written =
                ::pwrite(m_file.get(), bytes.data(), static_cast<std::size_t>(bytes.size()), offset);
            if (written < 0 && errno == EINTR)
                continue;
            if (written <= 0)
                return written < 0 ? problemOf(errno) : Problem::Other;
            bytes = bytes.sliced(written);
            offset += written;
        }
        return Problem::None;
    }

    Problem finishFile(qint64 size) override {
        if (::ftruncate(m_file.get(), size) != 0)
            return problemOf(errno);
        // The disk writes while the next file is produced. For small files, that would only take time.
        if (size >= largeFile)
            ::sync_file_range(m_file.get(), 0, 0, SYNC_FILE_RANGE_WRITE);
        return m_file.close() ? Problem::None : problemOf(errno);
    }

    Problem moveOut(const QString &name, const QString &destination) override {
        // One call instead of one for each of many files.
        if (::syncfs(m_directory.get()) != 0)
            return problemOf(errno);
        if (const Problem problem = move(pathOf(name), destination); problem != Problem::None)
            return problem;
        const FileDescriptor parent(openDirectory(QFile::encodeName(QFileInfo(destination).path())));
        if (parent.isOpen())
            ::fsync(parent.get());
        return Problem::None;
    }

    Problem moveIn(const QString &path, const QString &name) override { return move(path, pathOf(name)); }

private:
    static Problem move(const QString &from, const QString &to) {
        const QByteArray source = QFile::encodeName(from);
        const QByteArray target = QFile::encodeName(to);
        if (::renameat2(AT_FDCWD, source.constData(), AT_FDCWD, target.constData(), RENAME_NOREPLACE) == 0)
            return Problem::None;
        if (errno != EINVAL && errno != ENOSYS)
            return problemOf(errno);
        // The file system cannot refuse to replace. A directory replaces only an empty one.
        struct stat existing {};
        if (::lstat(target.constData(), &existing) == 0)
            return Problem::Other;
        return std::rename(source.constData(), target.constData()) == 0 ? Problem::None : problemOf(errno);
    }

    QString pathOf(const QString &name) const { return m_path + u'/' + name; }

    QString m_path;
    FileDescriptor m_directory;
    FileDescriptor m_file;
};

} // namespace

std::unique_ptr<ScratchDirectory> ScratchDirectory::create(const QString &parent, const QString &prefix,
                                                           Problem *problem) {
    errno = 0;
    bool isMade = QDir().mkpath(parent);
    constexpr int mostAttempts = 8;
    for (int i = 0; isMade && i < mostAttempts; ++i) {
        const QString path = parent + u'/' + prefix +
                             QString::fromLatin1(QUuid::createUuid().toByteArray(QUuid::Id128).first(12));
        const QByteArray name = QFile::encodeName(path);
        isMade = ::mkdir(name.constData(), privateMode) == 0 || errno == EEXIST;
        FileDescriptor directory(isMade ? openDirectory(name) : -1);
        // Until it is locked, another process may take the new directory for an abandoned one.
        struct stat locked {};
        struct stat named {};
        if (!directory.isOpen() ||
            (::flock(directory.get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) ||
            ::fstat(directory.get(), &locked) != 0 || ::lstat(name.constData(), &named) != 0 ||
            locked.st_ino != named.st_ino)
            continue;
        return std::make_unique<LinuxScratchDirectory>(path, directory.release());
    }
    if (problem != nullptr)
        *problem = problemOf(errno != 0 ? errno : EIO);
    return nullptr;
}

QString ScratchDirectory::freePath(const QString &path) {
    QString free = path;
    for (int number = 2; QFileInfo::exists(free) || QFileInfo(free).isSymLink(); ++number)
        free = path + u' ' + QString::number(number);
    return free;
}

void ScratchDirectory::removeAbandoned(const QString &parent, const QString &prefix) {
    const QStringList names = QDir(parent).entryList(
        {prefix + u'*'}, QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot | QDir::NoSymLinks);
    for (const QString &name : names) {
        const QString path = parent + u'/' + name;
        const FileDescriptor directory(openDirectory(QFile::encodeName(path)));
        if (directory.isOpen() && ::flock(directory.get(), LOCK_EX | LOCK_NB) == 0)
            QDir(path).removeRecursively();
    }
}

} // namespace lexiquill
