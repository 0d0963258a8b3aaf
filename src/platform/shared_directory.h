#pragma once

#include <QByteArrayView>
#include <QFile>
#include <QString>

#include <memory>
#include <optional>

namespace lexiquill {

/// This user's files in a directory where other users can also create files, such as /tmp. Files of other
/// users are never opened, followed or removed. Files created here cannot be read, written, replaced or
/// removed by other users, unless stated otherwise. Every operation fails in a directory that cannot
/// guarantee this.
class SharedDirectory {
public:
    enum class Problem {
        NoSpace,
        NoPermission,
        NoDirectory,
        NameTaken,
        OtherOwner,       ///< the file of that name belongs to another user
        Unsafe,           ///< other users can remove or replace this user's files there
        ProgramForbidden, ///< programs cannot be run from there
        Other,
    };
    /// The reason of a failure; no value after success.
    using Failure = std::optional<Problem>;
    enum class FileKind { Private, Script };

    virtual ~SharedDirectory() = default;

    /// If the directory cannot be used, every operation fails.
    static std::unique_ptr<SharedDirectory> at(const QString &path);

    /// Opens a new, empty file for unbuffered writing. It has no name until publish(); without a name it is
    /// removed with this object and `file`. There is one such file at a time.
    virtual Failure openUnnamed(QFile &file) = 0;
    /// Gives the file of openUnnamed() a name that does not exist yet.
    virtual Failure publish(const QFile &file, const QString &name) = 0;

    /// Creates a file with this content; replaces an earlier one. A script is executable, and everybody may
    /// read it.
    virtual Failure createFile(const QString &name, FileKind kind, QByteArrayView content) = 0;
    /// Creates an empty directory with a name that does not exist yet.
    virtual Failure createDirectory(const QString &name) = 0;
    /// Removes the file of that name: of a link, the link itself; a directory with its whole content.
    virtual Failure remove(const QString &name) = 0;
};

} // namespace lexiquill
