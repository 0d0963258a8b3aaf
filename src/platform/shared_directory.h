#pragma once

#include <QByteArrayView>
#include <QFile>
#include <QString>

#include <memory>
#include <optional>

namespace lexiquill {

/// A directory in which other users, too, may make files, such as /tmp, and this user's files in it. What
/// bears another user's mark is never opened, followed, or removed; what is made here no other user can read,
/// write, replace or remove, unless it says so. Nothing is done in a directory that cannot promise this.
class SharedDirectory {
public:
    enum class Problem {
        NoSpace,
        NoPermission,
        NoDirectory,
        NameTaken,
        OtherOwner,       ///< what bears the name belongs to another user
        Unsafe,           ///< others may remove or replace what this user makes there
        ProgramForbidden, ///< no program may be run from there
        Other,
    };
    /// Why something could not be done; nothing when it was done.
    using Failure = std::optional<Problem>;
    enum class FileKind { Private, Script };

    virtual ~SharedDirectory() = default;

    /// A directory that cannot be used fails at every operation.
    static std::unique_ptr<SharedDirectory> at(const QString &path);

    /// Opens a new, empty file for writing without buffering. It has no name until publish(), and without one
    /// it is gone once this object and `file` are. There is one such file at a time.
    virtual Failure openUnnamed(QFile &file) = 0;
    /// Gives the file of openUnnamed() a name that nothing bears yet.
    virtual Failure publish(const QFile &file, const QString &name) = 0;

    /// Makes a file with this content in the place of any earlier one. A script can be run, and everybody may
    /// read it.
    virtual Failure createFile(const QString &name, FileKind kind, QByteArrayView content) = 0;
    /// Makes an empty directory under a name that nothing bears yet.
    virtual Failure createDirectory(const QString &name) = 0;
    /// Removes what bears the name: a link itself, a directory with all that is in it.
    virtual Failure remove(const QString &name) = 0;
};

} // namespace lexiquill
