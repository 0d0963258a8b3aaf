#include "platform/linux/file_descriptor.h"
#include "platform/shared_directory.h"

#include <QUuid>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

namespace lexiquill {

namespace {

constexpr mode_t privateFileMode = 0600;
constexpr mode_t privateDirectoryMode = 0700;
constexpr mode_t scriptMode = 0755;
constexpr int newFileFlags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;

using Failure = SharedDirectory::Failure;
using Problem = SharedDirectory::Problem;

Failure failureOf(int error) {
    switch (error) {
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return Problem::NoSpace;
    case EACCES:
    case EPERM:
    case EROFS:
        return Problem::NoPermission;
    case ENOENT:
    case ENOTDIR:
        return Problem::NoDirectory;
    case EEXIST:
        return Problem::NameTaken;
    default:
        return Problem::Other;
    }
}

/// The failure of the system call that has just returned `result`, if it failed.
Failure failureAfter(int result) {
    return result < 0 ? failureOf(errno) : std::nullopt;
}

bool writeAll(int descriptor, QByteArrayView content) {
    while (!content.isEmpty()) {
        const ssize_t written = ::write(descriptor, content.data(), static_cast<std::size_t>(content.size()));
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        content = content.sliced(written);
    }
    return true;
}

/// Gives this user access to every directory in `path`, because an archive may have set any mode.
void openDirectories(const std::filesystem::path &path) {
    namespace fs = std::filesystem;
    std::error_code error;
    for (fs::recursive_directory_iterator each(path, error), end; !error && each != end;
         each.increment(error)) {
        std::error_code ignored;
        if (each->symlink_status(ignored).type() == fs::file_type::directory)
            fs::permissions(each->path(), fs::perms::owner_all, ignored);
    }
}

class LinuxSharedDirectory final : public SharedDirectory {
public:
    explicit LinuxSharedDirectory(const QString &path)
        : m_path(QFile::encodeName(path)),
          m_directory(::open(m_path.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)),
          m_problem(failureAfter(m_directory.get())) {
        if (!m_problem && !isSafe())
            m_problem = Problem::Unsafe;
    }

    ~LinuxSharedDirectory() override { dropScratch(); }

    LinuxSharedDirectory(const LinuxSharedDirectory &) = delete;
    LinuxSharedDirectory &operator=(const LinuxSharedDirectory &) = delete;

    Failure openUnnamed(QFile &file) override {
        if (m_problem)
            return m_problem;
        dropScratch();
        int descriptor = ::openat(m_directory.get(), ".", O_WRONLY | O_TMPFILE | O_CLOEXEC, privateFileMode);
        if (descriptor < 0) {
            // Not every file system has files without a name.
            m_scratch = "." + QUuid::createUuid().toByteArray(QUuid::WithoutBraces);
            descriptor = ::openat(m_directory.get(), m_scratch.constData(), newFileFlags, privateFileMode);
            if (descriptor < 0) {
                m_scratch.clear();
                return failureOf(errno);
            }
        }
        if (!file.open(descriptor, QIODevice::WriteOnly | QIODevice::Unbuffered,
                       QFileDevice::AutoCloseHandle)) {
            ::close(descriptor);
            return failureOf(EIO);
        }
        return std::nullopt;
    }

    Failure publish(const QFile &file, const QString &name) override {
        if (m_problem)
            return m_problem;
        const QByteArray target = QFile::encodeName(name);
        const QByteArray open = "/proc/self/fd/" + QByteArray::number(file.handle());
        // Unlike a rename, a link never replaces an existing file.
        const int result = m_scratch.isEmpty() ? ::linkat(AT_FDCWD, open.constData(), m_directory.get(),
                                                          target.constData(), AT_SYMLINK_FOLLOW)
                                               : ::linkat(m_directory.get(), m_scratch.constData(),
                                                          m_directory.get(), target.constData(), 0);
        Failure failure = failureAfter(result);
        dropScratch();
        return failure;
    }

    Failure createFile(const QString &name, FileKind kind, QByteArrayView content) override {
        if (Failure failure = remove(name))
            return failure;
        const QByteArray file = QFile::encodeName(name);
        FileDescriptor descriptor(
            ::openat(m_directory.get(), file.constData(), newFileFlags, privateFileMode));
        if (!descriptor.isOpen())
            return failureOf(errno);
        Failure failure;
        if (!writeAll(descriptor.get(), content) ||
            ::fchmod(descriptor.get(), kind == FileKind::Script ? scriptMode : privateFileMode) != 0 ||
            !descriptor.close())
            failure = failureOf(errno);
        // X_OK fails if the file system does not allow programs to run.
        else if (kind == FileKind::Script && ::faccessat(m_directory.get(), file.constData(), X_OK, 0) != 0)
            failure = Problem::ProgramForbidden;
        if (failure)
            ::unlinkat(m_directory.get(), file.constData(), 0);
        return failure;
    }

    Failure createDirectory(const QString &name) override {
        if (m_problem)
            return m_problem;
        return failureAfter(
            ::mkdirat(m_directory.get(), QFile::encodeName(name).constData(), privateDirectoryMode));
    }

    Failure remove(const QString &name) override {
        if (m_problem)
            return m_problem;
        const QByteArray file = QFile::encodeName(name);
        struct stat status {};
        if (::fstatat(m_directory.get(), file.constData(), &status, AT_SYMLINK_NOFOLLOW) != 0)
            return errno == ENOENT ? std::nullopt : failureOf(errno);
        if (status.st_uid != ::geteuid())
            return Problem::OtherOwner;
        if (!S_ISDIR(status.st_mode))
            return failureAfter(::unlinkat(m_directory.get(), file.constData(), 0));
        // After this, nobody else can change its content.
        if (::fchmodat(m_directory.get(), file.constData(), privateDirectoryMode, 0) != 0)
            return failureOf(errno);
        const std::filesystem::path path((m_path + '/' + file).toStdString());
        openDirectories(path);
        std::error_code error;
        std::filesystem::remove_all(path, error);
        return error ? failureOf(error.value()) : std::nullopt;
    }

private:
    /// Whether other users cannot remove or replace this user's files there.
    bool isSafe() const {
        struct stat status {};
        if (::fstat(m_directory.get(), &status) != 0)
            return false;
        const bool hasTrustedOwner = status.st_uid == 0 || status.st_uid == ::geteuid();
        const bool isForOthers = (status.st_mode & (S_IWGRP | S_IWOTH)) != 0;
        return hasTrustedOwner && (!isForOthers || (status.st_mode & S_ISVTX) != 0);
    }

    void dropScratch() {
        if (!m_scratch.isEmpty())
            ::unlinkat(m_directory.get(), m_scratch.constData(), 0);
        m_scratch.clear();
    }

    QByteArray m_path;
    FileDescriptor m_directory;
    Failure m_problem;
    QByteArray m_scratch; ///< the hidden name of the unnamed file, if the file system needs one
};

} // namespace

std::unique_ptr<SharedDirectory> SharedDirectory::at(const QString &path) {
    return std::make_unique<LinuxSharedDirectory>(path);
}

} // namespace lexiquill
